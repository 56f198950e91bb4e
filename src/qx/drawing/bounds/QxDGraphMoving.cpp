// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Moving the whole contents of a graph.

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxPNode.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/drawing/path/internal/TakeBends.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/foundation/util/internal/Ref.h"

using qx::internal::each;
using qx::internal::Snapshot;

void QxDGraph::ntMove(std::int32_t dx, std::int32_t dy, int hooks) {
    if (dx == 0 && dy == 0) {
        return;
    }
    const qx::internal::Ref alive(*this);
    const qx::internal::BetweenHold held(*this);
    for (QxDNode* node : Snapshot<QxDNode>(pNodeList())) {
        if (node->pOwnerGraph() != this) {
            continue;  // a listener has taken it out meanwhile
        }
        const QxPoint oldCenter = node->iCenter();
        node->ntMove(dx, dy);
        if (hooks != 0) {
            node->actOnMoveTo(oldCenter);
        }
    }
    QxEdgeDList edges;
    buildAllEdgeList(&edges);
    for (const QxDEdge* edge : Snapshot<QxDEdge>(&edges)) {
        for (QxPNode* bend : qx::internal::heldBends(*edge)) {
            if (bend->pOwnerEdge() == edge && edge->pOwnerGraph() == this) {
                bend->ntMove(dx, dy);
            }
        }
    }
    moveBounds(dx, dy);
    yield();
}

void QxDGraph::moveBounds(std::int32_t dx, std::int32_t dy) {
    if (keepsBounds()) {
        settleBounds();  // what was cut off at the ends of the coordinate range has not moved with
                         // the rest
        return;
    }
    QxRect moved = m_bounds;
    moved.moveTo(qx::saturatingAdd(moved.x(), dx), qx::saturatingAdd(moved.y(), dy));
    vUpdateBoundingRect(moved, 0);
}

void QxDGraph::ntMoveTo(std::int32_t x, std::int32_t y) {
    calculateGraphBounds(0);
    ntMove(qx::saturatingSub(x, m_bounds.x()), qx::saturatingSub(y, m_bounds.y()), 0);
}

void QxDGraph::updateVisiblePartOfEdges() {
    for (QxDEdge* edge : each<QxDEdge>(*pEdgeList())) {
        edge->refreshVisiblePart();
    }
}
