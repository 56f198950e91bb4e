// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Edges that become edges between graphs, or cease to be, and what leads out of a graph.

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/foundation/util/internal/Ref.h"
#include "qx/nesting/internal/Frame.h"
#include "qx/nesting/internal/NestedGraphs.h"

using qx::internal::Change;
using qx::internal::FrameMap;

namespace {

/// The calculated connectors of an edge between graphs keep their place by proportion, those of
/// any other edge by offset.
void convertConnectors(const QxDEdge& edge, bool toPerMil) {
    const auto convert = [&](QxConnector* connector, QxDNode* node) {
        if (connector == nullptr || node == nullptr || connector->specified() != 0) {
            return;
        }
        if (toPerMil) {
            node->convertConnectorToPerMilOffset(connector);
        } else {
            node->convertConnectorToConstantOffset(connector);
        }
    };
    convert(edge.pInternalSourceConnector(), edge.pSourceNode());
    convert(edge.pInternalTargetConnector(), edge.pTargetNode());
}

}  // namespace

QxDEdge* QxDGraphManager::convertToIntergraphEdge(QxDEdge* edge) {
    if (edge != nullptr && pQueryIntergraph() != nullptr) {
        Change::run(*edge, [&] {
            qx::internal::mapBends(*edge, FrameMap(edge->pOwnerGraph(), pQueryIntergraph()));
            convertConnectors(*edge, true);
        });
    }
    return edge;
}

QxDEdge* QxDGraphManager::convertToNormalEdge(QxDEdge* edge, QxDGraph* graph) {
    if (edge != nullptr && edge->pOwnerGraph() != nullptr && graph != nullptr &&
        graph->isIntergraph() == 0 && graph->pOwnerGraphManager() == this) {
        Change::run(*edge, [&] {
            qx::internal::mapBends(*edge, FrameMap(edge->pOwnerGraph(), graph));
            convertConnectors(*edge, false);
        });
    }
    return edge;
}

QxDEdge* QxDGraphManager::convertEdgeFromOldOwnerGraph(QxDEdge* edge, QxDGraph* oldGraph) {
    QxDGraph* const graph = edge != nullptr ? edge->pOwnerGraph() : nullptr;
    if (graph == nullptr || oldGraph == nullptr || graph == oldGraph ||
        graph->pOwnerGraphManager() != this || oldGraph->pOwnerGraphManager() != this) {
        return edge;
    }
    const bool becomesOther = graph->isIntergraph() != oldGraph->isIntergraph();
    QxPNodeDList bends;
    edge->buildPathNodeList(bends);
    if (bends.isEmpty() != 0 && !becomesOther) {
        return edge;
    }
    Change::run(*edge, [&] {
        if (bends.isEmpty() == 0) {
            qx::internal::mapBends(*edge, FrameMap(oldGraph, graph));
        }
        if (becomesOther) {
            convertConnectors(*edge, graph->isIntergraph() != 0);
        }
    });
    return edge;
}

void QxDGraphManager::buildOutgoingIntergraphEdgeList(QxDGraph* graph, QxDEdgeDList& list) const {
    list.deleteAllCells();
    if (graph == nullptr || pQueryIntergraph() == nullptr) {
        return;
    }
    const qx::internal::NestedGraphs inside(*graph);
    inside.eachEdge([&](QxDEdge& edge, bool isInside) {
        if (!isInside) {
            list.appendEdge(&edge);
        }
    });
}
