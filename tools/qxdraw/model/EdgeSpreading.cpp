// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "model/EdgeSpreading.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

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
void spread(const std::vector<QxDEdge*>& bundle, QxMultiEdgeModeEnum mode) {
    QxDEdgeDList list;
    for (QxDEdge* edge : bundle) {
        list.appendEdge(edge);
    }
    bundle.front()->reorganizeMultiEdgeBundle(mode, &list);
}

/// An edge along the axes that turns twice on its way, as seen along the first segment.
struct Step {
    QxDEdge* edge;
    bool isUpright;  ///< its middle segment
    std::int32_t start;
    std::int32_t end;    ///< along the way
    std::int32_t level;  ///< across it, at the end with the smaller place along the way
    std::int32_t otherLevel;
    std::int32_t middle;
};

/// Without an edge when it does not turn twice.
Step stepOf(QxDEdge& edge) {
    QxPointDList list;
    edge.buildEdgePointList(list);
    if (list.count() != 4) {
        return {};
    }
    const auto pointAt = [&](std::int32_t position) { return *list.pPointInPosition(position); };
    const bool isUpright = pointAt(2).x() == pointAt(3).x();
    const auto along = [&](const QxPoint& p) { return isUpright ? p.x() : p.y(); };
    const auto across = [&](const QxPoint& p) { return isUpright ? p.y() : p.x(); };
    const bool isForward = along(pointAt(1)) < along(pointAt(4));
    const QxPoint& first = isForward ? pointAt(1) : pointAt(4);
    const QxPoint& last = isForward ? pointAt(4) : pointAt(1);
    return {&edge,         isUpright,    along(first),     along(last),
            across(first), across(last), along(pointAt(2))};
}

/// Lets edges between the same two nodes that turn twice at the same place turn one after the
/// other, so that they neither meet nor cross.
void partMiddles(const std::vector<QxDEdge*>& bundle) {
    std::vector<Step> steps;
    for (QxDEdge* edge : bundle) {
        const Step step = edge->reflexive() == 0 ? stepOf(*edge) : Step{};
        if (step.edge != nullptr && step.start < step.middle && step.middle < step.end &&
            (steps.empty() || steps.front().isUpright == step.isUpright)) {
            steps.push_back(step);
        }
    }
    if (steps.size() < 2) {
        return;
    }
    const bool rises = steps.front().otherLevel > steps.front().level;
    std::sort(steps.begin(), steps.end(), [&](const Step& a, const Step& b) {
        return rises ? a.level > b.level : a.level < b.level;
    });
    const auto count = static_cast<double>(steps.size());
    const double room = steps.front().end - steps.front().start;
    const double spacing = std::min(BentSpacing, room / (count + 1));
    for (std::size_t i = 0; i < steps.size(); ++i) {
        const Step& step = steps[i];
        const double place =
            steps.front().middle + (static_cast<double>(i) - (count - 1) / 2) * spacing;
        for (QxPathNodeIter bend(step.edge); bend; ++bend) {
            const QxPoint at = bend.pNode()->iCenter();
            const auto moved = static_cast<std::int32_t>(std::lround(place));
            bend.pNode()->ntMoveTo(step.isUpright ? QxPoint(moved, at.y())
                                                  : QxPoint(at.x(), moved));
        }
    }
}

template <class Act>
void eachGraph(const Drawing& drawing, const Act& act) {
    for (std::size_t i = 0; i < drawing.numberOfGraphs(); ++i) {
        act(drawing.graph(i));
    }
    if (QxDGraph* between = drawing.manager().pQueryIntergraph()) {
        act(*between);
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
    const BoundsRest rest(drawing);
    const double spacing = options.bundles == QxMultiEdgeOneBend ? BentSpacing : Spacing;
    eachGraph(drawing, [&](QxDGraph& graph) {
        graph.diagrammingMultiEdgeSpacing(static_cast<std::int32_t>(spacing));
    });
    Bundles bundles;
    for (std::size_t i = 0; i < drawing.numberOfEdges(); ++i) {
        if (drawing.edge(i).isVisible() != 0 && drawing.edge(i).hasBends() == 0) {
            bundles.add(drawing.edge(i));
        }
    }
    for (const std::vector<QxDEdge*>& bundle : bundles.all()) {
        QxDEdge& first = *bundle.front();
        const bool isLoop = first.reflexive() != 0;
        if (!hasPort(first)) {
            isLoop ? makeLoops(*first.pSourceNode()) : spread(bundle, options.bundles);
        } else if (isLoop) {
            makePortLoops(bundle);
        } else if (!leadAround(bundle) && bundle.size() > 1) {
            fanOut(bundle);
        }
    }
    routeAlongAxes(drawing, options.orthogonal);
}

void spreadLoops(QxDNode& node) {
    makeLoops(node);
}

void leadAroundNodes(QxDEdge& edge) {
    leadAround({&edge});
}

void routeAlongAxes(Drawing& drawing, bool isWanted) {
    const BoundsRest rest(drawing);
    eachGraph(drawing, [&](QxDGraph& graph) { graph.orthogonalRouting(isWanted ? 1 : 0); });
    Bundles bundles;
    for (std::size_t i = 0; i < drawing.numberOfEdges(); ++i) {
        drawing.edge(i).repairOrthogonalRouting();
        if (isWanted && drawing.edge(i).isVisible() != 0) {
            bundles.add(drawing.edge(i));
        }
    }
    for (const std::vector<QxDEdge*>& bundle : bundles.all()) {
        partMiddles(bundle);
    }
}

}  // namespace qxdraw
