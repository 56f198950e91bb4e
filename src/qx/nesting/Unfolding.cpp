// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Unfolding: the contents of the fold graph, and what is hidden from it, move into the graph of the
// folder as they are, then by the shift that centers them on the folder. Edges that led out of the
// fold graph come home last, when their ends lie where they will stay.

#include <cmath>

#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/nesting/internal/Complexity.h"
#include "qx/nesting/internal/Folding.h"
#include "qx/nesting/internal/Hiding.h"

namespace qx::internal {

namespace {

bool lieIn(const QxDNode* node, const QxDGraph* graph) {
    return node != nullptr && graph != nullptr && node->pOwnerGraph() == graph;
}

template <class T>
void addListed(const QxDList* list, std::vector<T*>& objects);

}  // namespace

Unfolding::Unfolding(QxDGraph& graph, QxDNode& folder, QxDGraph& foldGraph, bool keepHidden)
    : m_graph(graph), m_folder(folder), m_foldGraph(foldGraph), m_keepsHidden(keepHidden) {}

Unfolding::~Unfolding() = default;

void Unfolding::collect() {
    collectEdgesToOutside();
    m_outsideEdges = m_collected.edges().size();
    collectContents(*m_foldGraph);
    if (const QxDGraph* const hidden = m_foldGraph->pHideGraph()) {
        collectContents(*hidden);
    }
    for (std::size_t i = m_outsideEdges; i < m_collected.edges().size(); ++i) {
        QxDEdge* const edge = m_collected.edges()[i];
        const auto isInside = [](const QxDNode* end) {
            return end != nullptr && Collection::isMarked(end);
        };
        if (isInside(edge->pSourceNode()) && isInside(edge->pTargetNode())) {
            m_insideEdges.add(edge);
        }
    }
    m_collected.endMarks();
}

/// Those that lead to other nodes of the graph than the folder, and hidden ones that lead to what is
/// hidden from it.
void Unfolding::collectEdgesToOutside() {
    const QxDGraphManager* const manager = m_graph->pOwnerGraphManager();
    const auto leadsTo = [&](const QxDNode* end) {
        return end != m_folder.get() && lieIn(end, m_graph.get());
    };
    const auto isBetween = [&](const QxDEdge& edge) {
        return edge.pOwnerGraph() == manager->pQueryIntergraph();
    };
    m_collected.addEdges(m_foldGraph->pEnteringIntergraphEdgeList(), [&](const QxDEdge& edge) {
        return isBetween(edge) && leadsTo(edge.pSourceNode());
    });
    m_collected.addEdges(m_foldGraph->pLeavingIntergraphEdgeList(), [&](const QxDEdge& edge) {
        return isBetween(edge) && leadsTo(edge.pTargetNode());
    });
    if (const QxDGraph* const hidden = m_graph->pHideGraph()) {
        for (const QxDNode* node : each<QxDNode>(*m_foldGraph->pNodeList())) {
            m_collected.addEdges(node->pDisconnectedEdgeList(), [&](const QxDEdge& edge) {
                return lieIn(edge.pOtherNode..., hidden);
            });
        }
    }
}

void Unfolding::collectContents(const QxDGraph& graph) {
    m_collected.addNodes(graph.pNodeList(), graph);
    for (const QxEdgeDList* list :
         {graph.pEdgeList(), graph.pDisconnectedEdgeList(), graph.pDeactivatedEdgeList()}) {
        m_collected.addEdges(list, [](const QxDEdge&) { return true; });
    }
}
