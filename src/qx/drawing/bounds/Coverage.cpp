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
#include "qx/spatial/internal/IndexUpkeep.h"

namespace qx::internal {

void Coverage::changed(QxDNode& node) {
    if (QxDGraph* graph = node.pOwnerGraph()) {
        QxRect rect;
        node.ntBoundingRectWithSubObjects(rect, 1, 1, 1);
        graph->extents().set(node.m_extentSlot, rect);
        IndexUpkeep::changed(node);
    }
}

void Coverage::changed(QxPNode& bend) {
    const QxDEdge* edge = bend.pOwnerEdge();
    if (edge != nullptr && counts(*edge)) {
        const QxPoint point = bend.iCenter();
        bend.pOwnerGraph()->extents().set(bend.m_extentSlot, QxRect(point, point));
    } else if (bend.m_extentSlot != ExtentTree::NoSlot) {
        bend.pOwnerGraph()->extents().clear(bend.m_extentSlot);
    }
    IndexUpkeep::changed(bend);
}

void Coverage::changed(QxPEdge& segment) {
    IndexUpkeep::changed(segment);
}

void Coverage::changed(QxDEdge& edge) {
    placeEnds(edge);
    IndexUpkeep::endsChanged(edge);
}

void Coverage::placeEnds(QxDEdge& edge) {
    const QxDGraph* graph = edge.pOwnerGraph();
    const bool isBetween = graph != nullptr && graph->isIntergraph() != 0;
    if (isBetween && counts(edge)) {
        QxRect rect;
        edge.ntBoundingRect(rect, 0);
        graph->extents().set(edge.m_extentSlot, rect);
    } else if (edge.m_extentSlot != ExtentTree::NoSlot) {
        graph->extents().clear(edge.m_extentSlot);
    }
    const bool isTracked = isBetween || (graph != nullptr && graph->pQuadTree() != nullptr);
    edge.setFlag(flags::EdgeIsTracked, isTracked ? 1 : 0);
}

void Coverage::countChanged(QxDEdge& edge) {
    placeEnds(edge);
    for (auto part = edge.madeParts(); part && part.pNode() != nullptr; ++part) {
        changed(*part.pNode());
    }
    IndexUpkeep::countChanged(edge);
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
        IndexUpkeep::ended(node);
    }
}

void Coverage::ended(QxPNode& bend) {
    if (bend.m_extentSlot != ExtentTree::NoSlot) {
        bend.pOwnerGraph()->extents().clear(bend.m_extentSlot);
    }
    IndexUpkeep::ended(bend);
}

void Coverage::impliedSegmentEnds(QxDEdge& edge) {
    IndexUpkeep::ended(edge);
}

void Coverage::ended(QxPEdge& segment) {
    IndexUpkeep::ended(segment);
}

void Coverage::ended(QxDEdge& edge) {
    if (edge.m_extentSlot != ExtentTree::NoSlot) {
        edge.pOwnerGraph()->extents().clear(edge.m_extentSlot);
    }
    IndexUpkeep::ended(edge);
}

bool Coverage::counts(const QxDEdge& edge) {
    const QxDGraph* graph = edge.pOwnerGraph();
    if (graph == nullptr || edge.connected() == 0 || edge.deactivated() != 0) {
        return false;
    }
    return graph->isIntergraph() == 0 || edge.isVisible() != 0;
}

}  // namespace qx::internal
