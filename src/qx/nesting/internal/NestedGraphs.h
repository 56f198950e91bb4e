// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/foundation/graph/internal/EachObject.h"

namespace qx::internal {

/// A graph and those nested in it, at any depth, in the order of QxDGraph::buildAllNestedGraphList;
/// they are marked while this exists.
class NestedGraphs {
public:
    explicit NestedGraphs(const QxDGraph& graph) {
        m_graphs.appendGraph(const_cast<QxDGraph*>(&graph));
        graph.buildAllNestedGraphList(m_graphs);
        mark(1);
    }
    ~NestedGraphs() { mark(0); }
    NestedGraphs(const NestedGraphs&) = delete;
    NestedGraphs& operator=(const NestedGraphs&) = delete;

    const QxDGraphDList& graphs() const { return m_graphs; }
    bool holds(const QxDNode* node) const {
        const QxDGraph* graph = node != nullptr ? node->pOwnerGraph() : nullptr;
        return graph != nullptr && (graph->flagWord() & flags::GraphCollected) != 0;
    }
    /// Calls `act` with each connected edge between graphs at one of them, once, and whether both
    /// its ends lie inside: graph by graph, the edges that start there before those that end there.
    template <class Act>
    void eachEdge(const Act& act) const {
        for (const QxDGraph* graph : each<QxDGraph>(m_graphs)) {
            eachEdgeOf(*graph, act);
        }
    }
    template <class Act>
    void eachEdgeOf(const QxDGraph& graph, const Act& act) const {
        for (QxDEdge* edge : each<QxDEdge>(*graph.pLeavingIntergraphEdgeList())) {
            act(*edge, holds(edge->pTargetNode()));
        }
        for (QxDEdge* edge : each<QxDEdge>(*graph.pEnteringIntergraphEdgeList())) {
            if (!holds(edge->pSourceNode())) {
                act(*edge, false);
            }
        }
    }

private:
    void mark(int value) {
        for (QxDGraph* graph : each<QxDGraph>(m_graphs)) {
            graph->setFlag(flags::GraphCollected, value);
        }
    }

    QxDGraphDList m_graphs;
};

}  // namespace qx::internal
