// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Moving the whole contents of a graph.

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxPNode.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/foundation/graph/internal/EachObject.h"

using qx::internal::each;

void QxDGraph::ntMove(std::int32_t dx, std::int32_t dy, int hooks) {
    if (dx == 0 && dy == 0) {
        return;
    }
    for (QxDNode* node : each<QxDNode>(*pNodeList())) {
        const QxPoint oldCenter = node->iCenter();
        node->ntMove(dx, dy);
        if (hooks != 0) {
            node->actOnMoveTo(oldCenter);
        }
    }
    for (QxDEdge* edge : each<QxDEdge>(*pEdgeList())) {
        for (QxPathNodeIter bend(edge); bend; ++bend) {
            bend.pNode()->ntMove(dx, dy);
        }
    }
    calculateGraphBounds(0);
    yield();
}

void QxDGraph::ntMoveTo(std::int32_t x, std::int32_t y) {
    calculateGraphBounds(0);
    ntMove(qx::saturatingSub(x, m_bounds.x()), qx::saturatingSub(y, m_bounds.y()), 0);
}

void QxDGraph::updateVisiblePartOfEdges() {
    for (QxDEdge* edge : each<QxDEdge>(*pEdgeList())) {
        if (edge->isUpdatedVisiblePart() == 0) {
            edge->updateVisiblePart();
        }
    }
}
