// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// The edges between graphs that belong to one graph and what is nested in it.

#include <algorithm>
#include <vector>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/nesting/internal/NestedGraphs.h"

using qx::internal::each;
using qx::internal::NestedGraphs;

namespace {

bool hasIntergraph(const QxDGraph& graph) {
    const QxDGraphManager* manager = graph.pOwnerGraphManager();
    return manager != nullptr && manager->pQueryIntergraph() != nullptr;
}

}  // namespace

void QxDGraph::buildContainedIntergraphEdgeList(QxDEdgeDList& list, int inner, int crossing) const {
    if (!hasIntergraph(*this) || (inner == 0 && crossing == 0)) {
        return;
    }
    list.deleteAllCells();
    const NestedGraphs inside(*this);
    for (const QxDGraph* graph : each<QxDGraph>(inside.graphs())) {
        if (graph->isVisible() == 0) {
            continue;
        }
        inside.eachEdgeOf(*graph, [&](QxDEdge& edge, bool isInside) {
            if ((isInside ? inner : crossing) != 0 && edge.isVisible() != 0) {
                list.appendEdge(&edge);
            }
        });
    }
}

void QxDGraph::buildAffectedIntergraphEdgeList(QxDEdgeDList& list) const {
    if (!hasIntergraph(*this)) {
        return;
    }
    list.deleteAllCells();
    QxDGraphDList nested;
    buildAllNestedGraphList(nested);
    std::vector<QxDEdge*> edges;
    for (const QxDGraph* graph : each<QxDGraph>(nested)) {
        for (const QxEdgeDList* ends :
             {graph->pLeavingIntergraphEdgeList(), graph->pEnteringIntergraphEdgeList()}) {
            for (QxDEdge* edge : each<QxDEdge>(*ends)) {
                edges.push_back(edge);
            }
        }
    }
    std::sort(edges.begin(), edges.end(),
              [](const QxDEdge* a, const QxDEdge* b) { return a->listStamp() < b->listStamp(); });
    edges.erase(std::unique(edges.begin(), edges.end()), edges.end());
    for (QxDEdge* edge : edges) {
        list.appendEdge(edge);
    }
}

int QxDGraph::getBoundingRectWithContainedIntergraphEdges(QxRect& rect, int inOwnGraph) const {
    ntBoundingRectWithIntergraphEdges(rect);
    if (isVisible() == 0) {
        return 0;
    }
    expandedTransformRect(rect);
    QxDEdgeDList edges;
    buildContainedIntergraphEdgeList(edges);
    for (const QxDEdge* edge : each<QxDEdge>(edges)) {
        QxRect one;
        edge->getBoundingRectWithPathNodesAndLabels(one, inOwnGraph);
        rect |= one;
    }
    return 1;
}
