// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Edges that run along the axes: which are to, which do, and what makes one do so.
//
// A repair first pins both ends to the outlines of their nodes by calculated connectors. Which side
// of its node an end lies on says in which direction the path has to leave there. The points of the
// path are completed by corners, cut where they leave the nodes, and freed of corners that turn
// nowhere. All of it is linear in the bends. A path that comes out as it was is left alone, so
// repairing twice costs no event; one with as many bends as before keeps them and moves those that
// have to move.

#include <algorithm>
#include <vector>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxEdgeVisiblePointDListIter.h"
#include "qx/drawing/QxPNode.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/drawing/orthogonal/internal/AxisPath.h"
#include "qx/drawing/orthogonal/internal/RouteEnd.h"
#include "qx/drawing/path/internal/TakeBends.h"
#include "qx/foundation/graph/internal/EachObject.h"

using qx::internal::Change;
using qx::internal::isAxisParallel;
using qx::internal::Ref;
using qx::internal::RouteEnd;

namespace {

using Points = std::vector<QxPoint>;

Points pointsOf(const QxPointDList& list) {
    Points points;
    points.reserve(static_cast<std::size_t>(list.count()));
    for (const QxDListCell* cell = list.pFirstCell(); cell; cell = cell->pNextCell()) {
        points.push_back(*QxPointDList::pPoint(cell));
    }
    return points;
}

/// The ends of the path and, between them, its bends.
Points pathPoints(QxDEdge& edge) {
    Points points{edge.ntFromPoint(0)};
    if (edge.hasBends() != 0) {
        for (QxPathNodeIter it(&edge); it; ++it) {
            points.push_back(it.pNode()->iCenter());
        }
    }
    points.push_back(edge.ntToPoint(0));
    return points;
}

/// Whether `graph`, or one around it up to `last`, wants routes along the axes; up to the outermost
/// when `last` does not lie around it.
bool isWantedAround(const QxDGraph* graph, const QxDGraph* last) {
    while (graph != nullptr && graph->orthogonalRouting() == 0) {
        graph = graph != last ? graph->pNestedWithinGraph() : nullptr;
    }
    return graph != nullptr;
}

bool isNestedIn(const QxDGraph& graph, const QxDNode& node) {
    const QxDGraph* nested = node.pNestedGraph();
    return nested != nullptr && graph.recursivelyNestedWithin(nested) != 0;
}

/// Whether an edge between these ends is to run along the axes because of where they lie.
bool isWantedBetween(const QxDNode& source, const QxDNode& target) {
    const QxDGraph& from = *source.pOwnerGraph();
    const QxDGraph& to = *target.pOwnerGraph();
    if (isNestedIn(to, source) || isNestedIn(from, target)) {
        return true;
    }
    const QxDGraphManager* manager = from.pOwnerGraphManager();
    const QxDGraph* common = &from;
    if (&from != &to) {
        common = manager != nullptr ? manager->pNearestCommonAncestorGraph(&from, &to) : nullptr;
    }
    return isWantedAround(&from, common) || isWantedAround(&to, common);
}

/// Completes the path of an edge with connectors at both ends.
void routeAlongAxes(QxDEdge& edge, Points& points) {
    if (points.size() < 2) {
        return;
    }
    RouteEnd source(edge, true);
    RouteEnd target(edge, false);
    qx::internal::completeAlongAxes(points, source.isHorizontal(), target.isHorizontal());
    // A loop leaves its node and comes back: there is no last time.
    if (edge.reflexive() == 0) {
        if (source.cut(points)) {
            qx::internal::straightenStart(points);
        }
        std::reverse(points.begin(), points.end());
        if (target.cut(points)) {
            qx::internal::straightenStart(points);
        }
        std::reverse(points.begin(), points.end());
    }
    qx::internal::dropIdlePoints(points);
}

bool canRoute(const QxDEdge& edge) {
    return edge.pInternalSourceConnector() != nullptr && edge.pInternalTargetConnector() != nullptr;
}

}  // namespace

int QxDGraph::orthogonalRouting(int value) {
    if (value == 0 && fileReadRunning() == 0) {
        for (QxDEdge* edge : qx::internal::each<QxDEdge>(*pEdgeList())) {
            edge->internalOrthogonalRouting(0);
        }
    }
    setFlag(qx::flags::GraphOrthogonal, value);
    return value;
}

int QxDEdge::desiredOrthogonalRouting() const {
    const QxDNode* source = pSourceNode();
    const QxDNode* target = pTargetNode();
    const QxDGraph* from = source != nullptr ? source->pOwnerGraph() : nullptr;
    const QxDGraph* to = target != nullptr ? target->pOwnerGraph() : nullptr;
    if (from == nullptr || to == nullptr) {
        return 0;
    }
    if (internalOrthogonalRouting() != 0 || from->orthogonalRouting() != 0 ||
        to->orthogonalRouting() != 0) {
        return 1;
    }
    return intergraphEdge() != 0 && isVisible() != 0 && isWantedBetween(*source, *target) ? 1 : 0;
}

int QxDEdge::orthogonalRouting() const {
    if (desiredOrthogonalRouting() == 0) {
        return 0;
    }
    // The walk changes nothing but what is computed on demand.
    QxEdgeVisiblePointDListIter it(const_cast<QxDEdge*>(this));
    QxPoint last;
    it.getPoint(last);
    for (; it; ++it) {
        QxPoint here;
        it.getPoint(here);
        if (!isAxisParallel(last, here)) {
            return 0;
        }
        last = here;
    }
    return 1;
}

void QxDEdge::repairOrthogonalRouting() {
    const bool isLoopWithoutBends = reflexive() != 0 && hasBends() == 0;
    if (!isActive() || desiredOrthogonalRouting() == 0 || isLoopWithoutBends ||
        (intergraphEdge() != 0 && isVisible() == 0)) {
        return;
    }
    const Ref source(pSourceNode());
    const Ref target(pTargetNode());
    Change::run(*this, [&] {
        const Points before = pathPoints(*this);
        RouteEnd(*this, true).repairConnector(before[1]);
        RouteEnd(*this, false).repairConnector(before[before.size() - 2]);
        if (!canRoute(*this)) {
            return;
        }
        Points points = pathPoints(*this);
        routeAlongAxes(*this, points);
        qx::internal::takeBends(*this, {points.begin() + 1, points.end() - 1});
    });
}

void QxDEdge::makePathOrthogonal(QxPointDList& list) {
    if (desiredOrthogonalRouting() == 0 || !canRoute(*this)) {
        return;
    }
    const Points before = pointsOf(list);
    Points points = before;
    const Ref source(pSourceNode());
    const Ref target(pTargetNode());
    Change::run(*this, [&] { routeAlongAxes(*this, points); });
    if (points == before) {
        return;
    }
    list.discardAllPoints();
    for (const QxPoint& point : points) {
        list.appendPoint(point);
    }
}
