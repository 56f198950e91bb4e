// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "model/Detours.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <utility>
#include <vector>

#include "model/Nesting.h"
#include "model/ShownObjects.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/foundation/geometry/QxPointDList.h"

namespace qxdraw {

namespace {

using Way = std::vector<DocumentPoint>;

QxRect shrunk(const QxRect& rect) {
    constexpr std::int32_t Touching = 2;  // what only grazes a node does not run through it
    return {rect.left() + Touching, rect.bottom() + Touching, rect.right() - Touching,
            rect.top() - Touching};
}

class Detour {
public:
    explicit Detour(const Drawing& drawing) : m_shown(drawing) {}

    void lead(QxDEdge& edge) {
        const DocumentPoint from = toPlace(edge.ntFromPoint(0));
        const DocumentPoint to = toPlace(edge.ntToPoint(0));
        std::vector<const QxDNode*> obstacles;
        Way best{from, to};
        for (QxPathNodeIter it(&edge); it; ++it) {
            best.insert(best.end() - 1, toPlace(it.pNode()->iCenter()));
        }
        double bestCost = costOf(best, edge, &obstacles);
        const QxDNode* around = nullptr;
        const std::size_t count = std::min(obstacles.size(), MostTried);
        for (std::size_t i = 0; i < count; ++i) {
            const std::array<DocumentPoint, 4> corners = cornersOf(*obstacles[i]);
            for (std::size_t corner = 0; corner < corners.size(); ++corner) {
                const DocumentPoint& here = corners[corner];
                const DocumentPoint& next = corners[(corner + 1) % corners.size()];
                for (const Way& way :
                     {Way{from, here, to}, Way{from, here, next, to}, Way{from, next, here, to}}) {
                    const bool isPossible = lengthOf(way) < bestCost && staysInBox(way, edge);
                    const double cost = isPossible ? costOf(way, edge, nullptr) : bestCost;
                    if (cost < bestCost) {
                        best = way;
                        bestCost = cost;
                        around = obstacles[i];
                    }
                }
            }
        }
        if (around != nullptr) {
            ++m_uses[around];
            QxPointDList bends;
            for (std::size_t i = 1; i + 1 < best.size(); ++i) {
                bends.appendPoint(toPoint(best[i]));
            }
            // A place on the side that faces the other node is none on a way around.
            if (edge.pSourceConnector() == nullptr) {
                edge.pSourceConnector(nullptr);
            }
            if (edge.pTargetConnector() == nullptr) {
                edge.pTargetConnector(nullptr);
            }
            edge.reroute(bends, 1);
        }
    }

private:
    static constexpr std::size_t MostTried = 6;  // obstacles whose corners are tried

    static double lengthOf(const Way& way) {
        double length = 0;
        for (std::size_t i = 1; i < way.size(); ++i) {
            length += std::hypot(way[i].x - way[i - 1].x, way[i].y - way[i - 1].y);
        }
        return length;
    }

    /// An edge within a nested graph must not make its box larger.
    static bool staysInBox(const Way& way, const QxDEdge& edge) {
        const QxDGraph* graph = edge.intergraphEdge() != 0 ? nullptr : edge.pOwnerGraph();
        const QxDNode* box = graph != nullptr ? graph->pNestedWithinNode() : nullptr;
        return box == nullptr ||
               std::all_of(way.begin() + 1, way.end() - 1, [&](const DocumentPoint& bend) {
                   constexpr double P = BoxSpacing::Padding;
                   const QxRect& rect = *box->pIRect();
                   return bend.x >= rect.left() + P && bend.x <= rect.right() - P &&
                          bend.y >= rect.bottom() + P && bend.y <= rect.top() - P;
               });
    }

    /// Places around the node, in turn; further out for each edge that is led around it already.
    std::array<DocumentPoint, 4> cornersOf(const QxDNode& node) const {
        constexpr double Gap = 9;
        constexpr double Step = 6;
        const auto uses = m_uses.find(&node);
        const double out = Gap + Step * (uses == m_uses.end() ? 0 : uses->second);
        const QxRect& rect = *node.pIRect();
        return {{{rect.left() - out, rect.bottom() - out},
                 {rect.right() + out, rect.bottom() - out},
                 {rect.right() + out, rect.top() + out},
                 {rect.left() - out, rect.top() + out}}};
    }

    /// The length, and more for each node and box that it runs through and for each bend.
    double costOf(const Way& way, const QxDEdge& edge, std::vector<const QxDNode*>* obstacles) {
        constexpr double Node = 260;
        constexpr double Box = 90;
        constexpr double Bend = 25;
        double cost = lengthOf(way) + Bend * static_cast<double>(way.size() - 2);
        for (std::size_t i = 1; i < way.size(); ++i) {
            const QxPoint a = toPoint(way[i - 1]);
            const QxPoint b = toPoint(way[i]);
            m_shown.find(QxRect(std::min(a.x(), b.x()), std::min(a.y(), b.y()),
                                std::max(a.x(), b.x()), std::max(a.y(), b.y())),
                         false);
            for (const QxDNode* node : m_shown.nodes) {
                if (isInTheWay(*node, edge) &&
                    shrunk(*node->pIRect()).overlapsSegment(a.x(), a.y(), b.x(), b.y()) != 0) {
                    cost += node->expanded() != 0 ? Box : Node;
                    if (obstacles != nullptr) {
                        obstacles->push_back(node);
                    }
                }
            }
        }
        return cost;
    }

    /// Not its ends, what lies in them, and the boxes around them.
    static bool isInTheWay(const QxDNode& node, const QxDEdge& edge) {
        for (const QxDNode* end : {edge.pSourceNode(), edge.pTargetNode()}) {
            if (&node == end || isShownIn(node, *end) || isShownIn(*end, node)) {
                return false;
            }
        }
        return true;
    }

    ShownObjects m_shown;
    std::map<const QxDNode*, int> m_uses;
};

}  // namespace

void leadAroundNodes(Drawing& drawing) {
    constexpr std::size_t MostEdges = 300;
    std::vector<QxDEdge*> straight;
    std::size_t shown = 0;
    bool isNested = false;
    for (std::size_t i = 1; i < drawing.numberOfGraphs(); ++i) {
        isNested = isNested || drawing.graph(i).isVisible() != 0;
    }
    for (std::size_t i = 0; i < drawing.numberOfEdges(); ++i) {
        QxDEdge& edge = drawing.edge(i);
        shown += edge.isVisible() != 0 ? 1 : 0;
        const bool isFanned = edge.numberOfBends() == 1 && edge.pSourceConnector() == nullptr &&
                              edge.pTargetConnector() == nullptr;
        if (edge.isVisible() != 0 && (edge.hasBends() == 0 || isFanned) &&
            edge.pSourceNode() != edge.pTargetNode()) {
            straight.push_back(&edge);
        }
    }
    if (!isNested || shown > MostEdges) {
        return;
    }
    const BoundsRest rest(drawing);
    Detour detour(drawing);
    for (QxDEdge* edge : straight) {
        detour.lead(*edge);
    }
}

}  // namespace qxdraw
