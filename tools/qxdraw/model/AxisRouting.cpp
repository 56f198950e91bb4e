// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "model/AxisRouting.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

#include "qx/drawing/QxPNode.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/foundation/geometry/QxPointDList.h"

namespace qxdraw {

namespace {

constexpr double Spacing = 14;  // between middle segments

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
    const double spacing = std::min(Spacing, room / (count + 1));
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

/// The shown edges between the same two nodes, in the order of the first of each.
std::map<std::pair<std::size_t, std::size_t>, std::vector<QxDEdge*>> bundlesOf(
    const Drawing& drawing) {
    std::map<std::pair<std::size_t, std::size_t>, std::vector<QxDEdge*>> bundles;
    for (std::size_t i = 0; i < drawing.numberOfEdges(); ++i) {
        QxDEdge& edge = drawing.edge(i);
        if (edge.isVisible() != 0 && edge.reflexive() == 0) {
            const std::pair<std::size_t, std::size_t> key = std::minmax(
                drawing.indexOf(*edge.pSourceNode()), drawing.indexOf(*edge.pTargetNode()));
            bundles[key].push_back(&edge);
        }
    }
    return bundles;
}

}  // namespace

void routeAlongAxes(Drawing& drawing, bool isWanted) {
    const BoundsRest rest(drawing);
    for (std::size_t i = 0; i < drawing.numberOfGraphs(); ++i) {
        drawing.graph(i).orthogonalRouting(isWanted ? 1 : 0);
    }
    if (!isWanted) {
        return;
    }
    for (std::size_t i = 0; i < drawing.numberOfEdges(); ++i) {
        drawing.edge(i).repairOrthogonalRouting();
    }
    for (const auto& [nodes, bundle] : bundlesOf(drawing)) {
        partMiddles(bundle);
    }
}

}  // namespace qxdraw
