// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// What overlaps a rectangle, answered from the lists of the graph.

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxLabelIters.h"
#include "qx/drawing/QxPEdge.h"
#include "qx/drawing/QxPNode.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/spatial/QxQTree.h"
#include "qx/spatial/internal/IndexedObject.h"

using qx::internal::each;
using qx::internal::IndexKind;
using qx::internal::showsIn;

namespace {

/// Whether one of the labels has a point in common with the region; those of an edge between graphs
/// only while the edge is visible.
template <class Labels>
bool overlapsAny(Labels labels, const QxRect& region) {
    for (const QxLabel* label : labels) {
        const QxDEdge* edge = label->pOwnerEdge();
        if (edge != nullptr && edge->intergraphEdge() != 0 && edge->isVisible() == 0) {
            continue;
        }
        QxRect rect;
        label->ntBoundingRect(rect);
        if (rect.intersectsRect(region) != 0) {
            return true;
        }
    }
    return false;
}

}  // namespace

int QxDGraph::overlaps(const QxRect& rect, int nodes, int pathNodes, int pathEdges, int nodeLabels,
                       int connectorLabels, int edgeLabels, int graphLabels, int inOwnGraph) const {
    if ((nodes | pathNodes | pathEdges | nodeLabels | connectorLabels | edgeLabels | graphLabels) ==
        0) {
        return 0;
    }
    QxRect region = rect;
    if (inOwnGraph == 0) {
        inverseExpandedTransformRect(region);
    }
    if (canUseQuadTree() != 0) {
        return m_quadTree->overlaps(&region, nodes, pathNodes, pathEdges, nodeLabels,
                                    connectorLabels, edgeLabels, graphLabels, 0);
    }
    if (overlapsFromGraphLists(region, nodes, pathNodes, pathEdges) != 0) {
        return 1;
    }
    return (nodeLabels != 0 && overlapsAny(QxAllNodeLabelIter(this), region)) ||
                   (connectorLabels != 0 && overlapsAny(QxAllConnectorLabelIter(this), region)) ||
                   (edgeLabels != 0 && overlapsAny(QxAllEdgeLabelIter(this), region)) ||
                   (graphLabels != 0 && overlapsAny(QxGraphLabelIter(this), region))
               ? 1
               : 0;
}

int QxDGraph::overlapsIntergraphEdges(const QxRect& rect, int pathNodes, int pathEdges,
                                      int edgeLabels, int inOwnGraph) const {
    const QxDGraphManager* manager = pOwnerGraphManager();
    const QxDGraph* between = manager != nullptr ? manager->pQueryIntergraph() : nullptr;
    return between != nullptr
               ? between->overlaps(rect, 0, pathNodes, pathEdges, 0, 0, edgeLabels, 0, inOwnGraph)
               : 0;
}

int QxDGraph::overlapsFromGraphLists(const QxRect& region, int nodes, int pathNodes,
                                     int pathEdges) const {
    const auto shows = [&](const QxGraphObject* object, IndexKind kind) {
        return object != nullptr && showsIn(*object, kind, region);
    };
    if (nodes != 0) {
        for (const QxDNode* node : each<QxDNode>(*pNodeList())) {
            if (node->pIRect()->intersectsRect(region) != 0 && shows(node, IndexKind::Node)) {
                return 1;
            }
        }
    }
    if (pathNodes == 0 && pathEdges == 0) {
        return 0;
    }
    for (QxDEdge* edge : each<QxDEdge>(*pEdgeList())) {
        if (edge->isPathImplied()) {
            if (pathEdges != 0 && shows(edge, IndexKind::PathEdge)) {
                return 1;
            }
            continue;
        }
        for (QxPathIter step(edge, QxIterForward); step; ++step) {
            const QxPNode* bend = pathNodes != 0 ? step.pNode() : nullptr;
            if ((pathEdges != 0 && shows(step.pEdge(), IndexKind::PathEdge)) ||
                (bend != nullptr && region.within(bend->iCenter()) != 0 &&
                 shows(bend, IndexKind::PathNode))) {
                return 1;
            }
        }
    }
    return 0;
}
