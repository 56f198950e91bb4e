// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "drawing/DrawingTesting.h"
#include "nesting/NestedWorld.h"
#include "qx/drawing/QxEdgeLabel.h"
#include "qx/drawing/QxGraphLabel.h"
#include "qx/drawing/QxNodeLabel.h"
#include "qx/drawing/QxPEdge.h"
#include "qx/drawing/QxPNode.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/update/QxAffectedObjectInfo.h"
#include "qx/update/QxDEdgeInitialGeometry.h"

namespace qxtest {

inline std::vector<QxPNode*> pathBends(const QxDEdge& edge) {
    QxPNodeDList list;
    edge.buildPathNodeList(list);
    return objectsOf<QxPNode>(list);
}

inline bool isInUse(const QxDEdge& edge) {
    return edge.connected() != 0 && edge.deactivated() == 0;
}

/// A nested drawing with bends, labels, parallel edges and routes along the axes, and what has to
/// hold in it after every move.
class MovingWorld : public NestedWorld {
public:
    MovingWorld(QxFactory& factory, std::uint32_t seed) : NestedWorld(factory, seed) {
        for (int i = 0; i < 12; ++i) {
            step();
        }
        manager->expandAll();
        for (int i = 0; i < 30; ++i) {
            QxDNode* node = random.pick(nodes());
            const auto beside = objectsOf<QxDNode>(*node->pOwnerGraph()->pNodeList());
            QxDEdge* edge = manager->addEdge(node, random.pick(beside), 0);
            while (edge != nullptr && random.chance(50)) {
                edge->addBend(edge->pTargetOrPathEdge(), anywhere(), 1);
            }
        }
        for (int i = 0; i < 40; ++i) {
            decorate();
        }
    }

    QxPoint anywhere() { return {random.below(500), random.below(500)}; }
    QxPoint someWay() { return {random.below(121) - 60, random.below(121) - 60}; }
    std::vector<QxDEdge*> activeEdges() const {
        std::vector<QxDEdge*> active;
        for (QxDEdge* edge : edges()) {
            if (isInUse(*edge) && edge->isVisible() != 0) {
                active.push_back(edge);
            }
        }
        return active;
    }

    void decorate() {
        QxDEdge* edge = random.pick(edges());
        QxDNode* node = random.pick(nodes());
        switch (random.below(7)) {
            case 0:
            case 1:
                edge->addBend(edge->pTargetOrPathEdge(), anywhere(), 1);
                break;
            case 2:
                if (QxEdgeLabel* label = edge->addLabel(L"on its way", 0)) {
                    label->moveLabelOnOwnerMove(random.below(2));
                }
                break;
            case 3:
                node->addLabel(L"node", 0);
                break;
            case 4:
                node->pOwnerGraph()->addLabelWithCoordinates(anywhere(), QxSize(30, 10), 1, nullptr,
                                                             0);
                break;
            case 5:
                edge->internalOrthogonalRouting(1);
                edge->repairOrthogonalRouting();
                break;
            default:
                manager->addEdge(edge->pSourceNode(), edge->pTargetNode(), 0);
        }
    }

    /// One full move of something.
    void move() {
        QxDNode* node = random.pick(nodes());
        QxDEdge* edge = random.pick(edges());
        switch (random.below(7)) {
            case 0:
                node->resize(10 + random.below(80), 10 + random.below(80), 1);
                break;
            case 1:
                if (node->hasConnectors() != 0) {
                    node->pQueryConnectorManager()->pFirstConnector()->move(
                        QxSize(random.below(20) - 10, random.below(20) - 10), 1);
                }
                break;
            case 2:
            case 3:
                if (const auto bends = pathBends(*edge); !bends.empty()) {
                    random.pick(bends)->moveTo(anywhere(), 1);
                }
                break;
            case 4:
                if (edge->numberOfLabels() != 0) {
                    QxEdgeLabelIter(edge).pLabel()->moveTo(anywhere(), 1);
                }
                break;
            default:
                node->move(someWay().x(), someWay().y(), 1);
        }
    }

    /// Every coordinate that the drawing keeps, a line for each object.
    std::vector<std::string> coordinates() const {
        std::vector<std::string> all;
        const auto add = [&](const char* what, const auto&... values) {
            std::ostringstream line;
            line << what;
            ((line << ' ' << values), ...);
            all.push_back(line.str());
        };
        const auto addPoint = [&](const char* what, const QxPoint& p) { add(what, p.x(), p.y()); };
        const auto addBox = [&](const char* what, const Box& box) {
            add(what, box[0], box[1], box[2], box[3]);
        };
        const auto addLabels = [&](auto label) {
            for (; label; ++label) {
                addPoint("label", label.pLabel()->ntCenter());
            }
        };
        for (const QxDGraph* graph : graphs()) {
            const QxDTuple origin = graph->pTransform()->targetOrigin();
            add("graph", origin.x(), origin.y(), graph->pTransform()->scaleX());
            if (graph->isVisible() != 0) {
                addBox("bounds", boundsOf(graph));
            }
            addLabels(QxGraphLabelIter(graph));
        }
        for (const QxDNode* node : nodes()) {
            addBox("node", boxOf(*node->pIRect()));
            addLabels(QxNodeLabelIter(node));
            for (const QxConnector* connector : QxConnectorIter(node)) {
                addPoint("connector", connector->ntCenter());
            }
        }
        for (const QxDEdge* edge : edges()) {
            add("edge", edge->numberOfBends(), edge->intergraphEdge(), edge->reflexive());
            for (const QxConnector* one :
                 {edge->pInternalSourceConnector(), edge->pInternalTargetConnector()}) {
                if (one != nullptr) {
                    const QxPoint center = one->ntCenter();
                    add("end", center.x(), center.y(), one->ntOffsetX(), one->ntOffsetY(),
                        one->routingDirection());
                }
            }
            for (const QxPNode* bend : pathBends(*edge)) {
                addPoint("bend", bend->iCenter());
            }
            addLabels(QxEdgeLabelIter(edge));
        }
        return all;
    }
    /// The first line that has changed since, and what it was; nothing when there is none.
    std::string changeSince(const std::vector<std::string>& start) const {
        const auto now = coordinates();
        for (std::size_t i = 0; i < std::min(now.size(), start.size()); ++i) {
            if (now[i] != start[i]) {
                return start[i - std::min<std::size_t>(i, 1)] + "; " + start[i] + " -> " + now[i];
            }
        }
        return now.size() == start.size() ? "" : "something has gone or come";
    }

    /// What is wrong, or nothing: bounds, fits, visible parts, and what an operation leaves behind.
    std::string fault() const {
        if (manager->isUpdatingAffectedGraphs() != 0 || manager->controlStarted() != 0) {
            return "the manager still thinks that something moves";
        }
        for (const QxDGraph* graph : graphs()) {
            QxRect walked;
            const bool any = walkBounds(*graph, walked);
            if (graph->isVisible() != 0 && (graph->boundsInitialized() != (any ? 1 : 0) ||
                                            (any && !(*graph->pBoundingRect() == walked)))) {
                return "the bounds of a graph are not what it covers";
            }
            if (graph->pGeometricUpdateInfo() != nullptr ||
                graph->graphObjectStatus() != QxStatusUnchanged) {
                return "a graph keeps something of a move";
            }
            for (QxGraphLabelIter label(graph); label; ++label) {
                if (label.pLabel()->pStoredCenter() != nullptr) {
                    return "a label of a graph keeps its former place";
                }
            }
        }
        for (const QxDNode* node : nodes()) {
            if (node->pRectBeforeMove() != nullptr || node->marked() != 0 ||
                node->graphObjectStatus() != QxStatusUnchanged) {
                return "a node keeps something of a move";
            }
            for (const QxConnector* connector : QxConnectorIter(node)) {
                if (connector->pRectBeforeMove() != nullptr ||
                    connector->graphObjectStatus() != QxStatusUnchanged) {
                    return "a connector keeps something of a move";
                }
            }
        }
        for (QxDEdge* edge : edges()) {
            if (const char* wrong = faultOf(*edge)) {
                return wrong;
            }
        }
        return manager->checkInvariants() == 1 ? "" : "the drawing is not sound";
    }

    /// Those whose path runs along the axes as it is to.
    std::set<const QxDEdge*> alongAxes() const {
        std::set<const QxDEdge*> all;
        for (const QxDEdge* edge : activeEdges()) {
            if (edge->desiredOrthogonalRouting() != 0 &&
                edge->pInternalSourceConnector() != nullptr &&
                edge->pInternalTargetConnector() != nullptr && isAlongAxes(*edge)) {
                all.insert(edge);
            }
        }
        return all;
    }
    static bool isAlongAxes(const QxDEdge& edge) {
        QxPoint last = edge.ntFromPoint(0);
        const auto goesOn = [&](const QxPoint& next) {
            const bool slants = last.x() != next.x() && last.y() != next.y();
            last = next;
            return !slants;
        };
        for (const QxPNode* bend : pathBends(edge)) {
            if (!goesOn(bend->iCenter())) {
                return false;
            }
        }
        return goesOn(edge.ntToPoint(0));
    }

private:
    static std::vector<int> shownParts(const QxDEdge& edge) {
        std::vector<int> shown = {edge.hasVisiblePart()};
        for (QxPathIter part(&edge); part; ++part) {
            shown.push_back(part.pEdge()->inVisiblePart());
        }
        return shown;
    }
    static const char* faultOf(QxDEdge& edge) {
        if (edge.pEdgeInitialGeometry() != nullptr || edge.marked() != 0 || edge.multiEdge() != 0 ||
            edge.temporarilyInvisible() != 0 || edge.graphObjectStatus() != QxStatusUnchanged) {
            return "an edge keeps something of a move";
        }
        for (const QxPNode* bend : pathBends(edge)) {
            if (bend->pRectBeforeMove() != nullptr || bend->temporarilyInvisible() != 0) {
                return "a bend keeps something of a move";
            }
        }
        for (QxEdgeLabelIter label(&edge); label; ++label) {
            if (label.pLabel()->pStoredCenter() != nullptr ||
                label.pLabel()->graphObjectStatus() != QxStatusUnchanged ||
                label.pLabel()->pFirstMoveInfo() != nullptr) {
                return "a label of an edge keeps something of a move";
            }
        }
        if (isInUse(edge) && edge.isVisible() != 0) {
            const auto shown = shownParts(edge);
            edge.updateVisiblePart();
            if (shown != shownParts(edge)) {
                return "the visible part is not that of the path";
            }
        }
        return nullptr;
    }
};

}  // namespace qxtest
