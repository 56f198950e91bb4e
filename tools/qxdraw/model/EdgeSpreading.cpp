// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "model/EdgeSpreading.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <utility>

#include "model/AxisRouting.h"
#include "model/PortRouting.h"
#include "qx/drawing/QxDrawingIters.h"
#include "qx/drawing/QxPNode.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/foundation/geometry/QxPointDList.h"

namespace qxdraw {

namespace {

constexpr double Spacing = 22;       // between the edges of a bundle: room for a label
constexpr double BentSpacing = 14;   // of bends: on both sides of the way, at twice as much
constexpr double LeastSpacing = 12;  // of many edges on a short way: the label can be read still

void bendAt(QxDEdge& edge, const std::vector<DocumentPoint>& places) {
    QxPointDList bends;
    for (const DocumentPoint& place : places) {
        bends.appendPoint(toPoint(place));
    }
    edge.reroute(bends, 1);
}

/// Leads the edges of a bundle around their nodes, one farther out than the other, where their
/// ports look the wrong way. False when these do not.
bool leadAround(const std::vector<QxDEdge*>& bundle) {
    constexpr double Distance = 16;
    constexpr double Step = 10;
    double distance = Distance;
    for (QxDEdge* edge : bundle) {
        const std::vector<DocumentPoint> way = wayAroundNodes(*edge, distance);
        if (way.empty()) {
            return false;
        }
        bendAt(*edge, way);
        distance += Step;
    }
    return true;
}

/// A fan of edges between the same two ports, which the model leaves alone: one bend an edge, on
/// the line that halves the way, to both sides in turn.
void fanOut(const std::vector<QxDEdge*>& bundle) {
    const QxDEdge& first = *bundle.front();
    const DocumentPoint a = toPlace(first.ntFromPoint(0));
    const DocumentPoint b = toPlace(first.ntToPoint(0));
    const double length = std::hypot(b.x - a.x, b.y - a.y);
    if (length <= 0) {
        return;
    }
    const auto count = static_cast<double>(bundle.size());
    const double spacing = std::clamp(length / count, LeastSpacing, Spacing);
    for (std::size_t i = 0; i < bundle.size(); ++i) {
        const double offset = (static_cast<double>(i) - (count - 1) / 2) * spacing;
        if (offset != 0) {
            bendAt(*bundle[i], {{(a.x + b.x) / 2 - (b.y - a.y) / length * offset,
                                 (a.y + b.y) / 2 + (b.x - a.x) / length * offset}});
        }
    }
}

void makePortLoops(const std::vector<QxDEdge*>& loops) {
    constexpr double Rise = 22;
    double distance = Rise;
    for (QxDEdge* loop : loops) {
        bendAt(*loop, loopBetweenPorts(*loop, distance));
        distance += Rise / 2;
    }
}

bool hasPort(const QxDEdge& edge) {
    return edge.pSourceConnector() != nullptr || edge.pTargetConnector() != nullptr;
}

/// The straight edges between the same two nodes or ports, in the order of the first of each.
class Bundles {
public:
    void add(QxDEdge& edge) {
        const std::size_t source = numberOf(edge.pSourceConnector(), edge.pSourceNode());
        const std::size_t target = numberOf(edge.pTargetConnector(), edge.pTargetNode());
        const std::pair<std::size_t, std::size_t> key = std::minmax(source, target);
        const auto [bundle, isNew] = m_indexOf.emplace(key, m_bundles.size());
        if (isNew) {
            m_bundles.emplace_back();
        }
        m_bundles[bundle->second].push_back(&edge);
    }

    const std::vector<std::vector<QxDEdge*>>& all() const { return m_bundles; }

private:
    std::size_t numberOf(const QxGraphObject* port, const QxGraphObject* node) {
        return m_numbers.emplace(port != nullptr ? port : node, m_numbers.size()).first->second;
    }

    std::map<const QxGraphObject*, std::size_t> m_numbers;
    std::map<std::pair<std::size_t, std::size_t>, std::size_t> m_indexOf;
    std::vector<std::vector<QxDEdge*>> m_bundles;
};

/// Lays the loops of a node out above it; those that have bends keep them.
void makeLoops(QxDNode& node) {
    struct BentLoop {
        QxDEdge* edge;
        QxPointDList bends;
    };
    std::vector<BentLoop> bent;
    for (QxOutDEdgeIter it(&node); it; ++it) {
        QxDEdge* edge = it.pEdge();
        if (edge->reflexive() != 0 && edge->hasBends() != 0) {
            bent.push_back({edge, {}});
            for (QxPathNodeIter bend(edge); bend; ++bend) {
                bent.back().bends.appendPoint(bend.pNode()->iCenter());
            }
        }
    }
    node.reorganizeReflexiveEdges();
    for (const BentLoop& loop : bent) {
        if (!hasPort(*loop.edge)) {
            loop.edge->pSourceConnector(nullptr);
            loop.edge->pTargetConnector(nullptr);
        }
        loop.edge->reroute(loop.bends, 1);
    }
}

/// Lets the model lay out the edges between two nodes.
void layOut(const std::vector<QxDEdge*>& bundle, QxMultiEdgeModeEnum mode) {
    QxDEdgeDList list;
    for (QxDEdge* edge : bundle) {
        list.appendEdge(edge);
    }
    bundle.front()->reorganizeMultiEdgeBundle(mode, &list);
}

/// How many graphs are around an edge; the most for the innermost ones, -1 between graphs.
int depthOf(const QxDEdge& edge) {
    int depth = -1;
    for (const QxDGraph* graph = edge.intergraphEdge() != 0 ? nullptr : edge.pOwnerGraph();
         graph != nullptr; graph = graph->pNestedWithinGraph()) {
        ++depth;
    }
    return depth;
}

void spread(const std::vector<QxDEdge*>& bundle, QxMultiEdgeModeEnum mode) {
    QxDEdge& first = *bundle.front();
    QxDNode& source = *first.pSourceNode();
    const QxDNode& target = *first.pTargetNode();
    const bool isLoop = &source == &target;
    if (!hasPort(first)) {
        isLoop ? makeLoops(source) : layOut(bundle, mode);
    } else if (isLoop) {
        makePortLoops(bundle);
    } else if (!isShownIn(source, target) && !isShownIn(target, source) && leadAround(bundle)) {
        return;
    } else if (bundle.size() > 1) {
        fanOut(bundle);
    }
}

void setSpacing(const Drawing& drawing, std::int32_t spacing) {
    for (std::size_t i = 0; i < drawing.numberOfGraphs(); ++i) {
        drawing.graph(i).diagrammingMultiEdgeSpacing(spacing);
    }
    if (QxDGraph* between = drawing.manager().pQueryIntergraph()) {
        between->diagrammingMultiEdgeSpacing(spacing);
    }
}

}  // namespace

QxMultiEdgeModeEnum bundleMode(const std::string& name) {
    if (name == "overlap") {
        return QxMultiEdgeOverlap;
    }
    return name == "bend" ? QxMultiEdgeOneBend : QxMultiEdgeParallel;
}

void spreadEdges(Drawing& drawing, const SpreadingOptions& options) {
    setSpacing(drawing, static_cast<std::int32_t>(
                            options.bundles == QxMultiEdgeOneBend ? BentSpacing : Spacing));
    Bundles bundles;
    for (std::size_t i = 0; i < drawing.numberOfEdges(); ++i) {
        if (drawing.edge(i).isVisible() != 0 && drawing.edge(i).hasBends() == 0) {
            bundles.add(drawing.edge(i));
        }
    }
    // What sticks out in a nested graph makes its node larger, around which edges are led.
    std::map<int, std::vector<const std::vector<QxDEdge*>*>, std::greater<>> byDepth;
    for (const std::vector<QxDEdge*>& bundle : bundles.all()) {
        byDepth[depthOf(*bundle.front())].push_back(&bundle);
    }
    for (const auto& [depth, together] : byDepth) {
        const BoundsRest rest(drawing);
        for (const std::vector<QxDEdge*>* bundle : together) {
            spread(*bundle, options.bundles);
        }
    }
    routeAlongAxes(drawing, options.orthogonal);
}

void spreadLoops(QxDNode& node) {
    makeLoops(node);
}

void leadAroundPorts(QxDEdge& edge) {
    leadAround({&edge});
}

void renewLoopsOfBoxes(Drawing& drawing) {
    Bundles bundles;
    for (std::size_t i = 0; i < drawing.numberOfEdges(); ++i) {
        QxDEdge& edge = drawing.edge(i);
        if (edge.isVisible() != 0 && edge.pSourceNode() == edge.pTargetNode() &&
            edge.pSourceNode()->expanded() != 0 && !hasPort(edge)) {
            bundles.add(edge);
        }
    }
    const BoundsRest rest(drawing);
    for (const std::vector<QxDEdge*>& bundle : bundles.all()) {
        makeLoops(bundle);
    }
}

}  // namespace qxdraw
