// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/drawing/bounds/internal/Coverage.h"

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxPNode.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/drawing/bounds/internal/ExtentTree.h"
#include "qx/foundation/graph/internal/EachObject.h"

namespace qx::internal {

void Coverage::changed(QxDNode& node) {
    if (QxDGraph* graph = node.pOwnerGraph()) {
        QxRect rect;
        node.ntBoundingRectWithSubObjects(rect, 1, 1, 1);
        graph->extents().set(node.m_extentSlot, rect);
    }
}

void Coverage::changed(QxPNode& bend) {
    const QxDEdge* edge = bend.pOwnerEdge();
    if (edge != nullptr && counts(*edge)) {
        const QxPoint point = bend.iCenter();
        bend.pOwnerGraph()->extents().set(bend.m_extentSlot, QxRect(point, point));
    } else {
        ended(bend);
    }
}

void Coverage::changed(QxDEdge& edge) {
    const bool shows = edge.intergraphEdge() != 0 && counts(edge);
    if (shows != (edge.m_extentSlot != ExtentTree::NoSlot)) {
        edge.isUpdatedVisiblePart(0);  // an end that nobody sees cuts nothing off
    }
    if (shows) {
        QxRect rect;
        edge.ntBoundingRect(rect, 0);
        edge.pOwnerGraph()->extents().set(edge.m_extentSlot, rect);
    } else {
        ended(edge);
    }
}

void Coverage::countChanged(QxDEdge& edge) {
    changed(edge);
    for (auto part = edge.madeParts(); part && part.pNode() != nullptr; ++part) {
        changed(*part.pNode());
    }
}

void Coverage::ownerChanged(QxDNode& node) {
    for (const QxEdgeDList* list : {node.pInEdgeList(), node.pOutEdgeList()}) {
        for (QxDEdge* edge : each<QxDEdge>(*list)) {
            if (edge->intergraphEdge() != 0) {
                countChanged(*edge);
            }
        }
    }
}

void Coverage::allChanged(QxDGraph& between) {
    for (QxDEdge* edge : each<QxDEdge>(*between.pEdgeList())) {
        countChanged(*edge);
    }
}

void Coverage::ended(QxDNode& node) {
    if (node.m_extentSlot != ExtentTree::NoSlot) {
        node.pOwnerGraph()->extents().clear(node.m_extentSlot);
    }
}

void Coverage::ended(QxPNode& bend) {
    if (bend.m_extentSlot != ExtentTree::NoSlot) {
        bend.pOwnerGraph()->extents().clear(bend.m_extentSlot);
    }
}

void Coverage::ended(QxDEdge& edge) {
    if (edge.m_extentSlot != ExtentTree::NoSlot) {
        edge.pOwnerGraph()->extents().clear(edge.m_extentSlot);
    }
}

bool Coverage::counts(const QxDEdge& edge) {
    const QxDGraph* graph = edge.pOwnerGraph();
    if (graph == nullptr || edge.connected() == 0 || edge.deactivated() != 0) {
        return false;
    }
    return graph->isIntergraph() == 0 || edge.isVisible() != 0;
}

}  // namespace qx::internal
