// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDNode.h"
#include "qx/foundation/util/internal/Ref.h"

namespace qx::internal {

/// Nodes and edges that are about to be hidden, shown or folded, each once, and kept alive. What
/// has been collected bears a mark until endMarks(), which has to come before anybody hears of
/// anything.
///
/// Edges at the collected nodes are found at these, and put into the order of the lists of their
/// graph by their stamps: O(k log k) for k edges at the nodes, however large the graph.
class Collection {
public:
    Collection() = default;
    ~Collection() { endMarks(); }
    Collection(const Collection&) = delete;
    Collection& operator=(const Collection&) = delete;

    const Snapshot<QxDNode>& nodes() const { return m_nodes; }
    const Snapshot<QxDEdge>& edges() const { return m_edges; }
    bool isEmpty() const { return m_nodes.isEmpty() && m_edges.isEmpty(); }

    static bool isMarked(const QxDNode* node) {
        return (node->flagWord() & flags::NodeCollected) != 0;
    }

    /// Those of the list, in their order: nodes that `graph` owns, edges that suit.
    void addNodes(const QxDList* nodes, const QxDGraph& graph, const QxDNode* except = nullptr);
    template <class Suits>
    void addEdges(const QxDList* edges, const Suits& suits);
    /// Edges of `graph` at the collected nodes: the connected ones first, then those that are
    /// disconnected, then those deactivated.
    template <class Suits>
    void addEdgesAtNodes(const QxDGraph& graph, const Suits& suits);
    void endMarks();
    /// Forgets what has left its graph, so that it goes when nobody else holds it.
    void forgetLost();

    /// Append what still lies in some graph, or empty the lists first; null lists are passed over.
    void appendTo(QxDNodeDList* nodes, QxDEdgeDList* edges) const;
    void listInto(QxDNodeDList* nodes, QxDEdgeDList* edges) const;

private:
    static bool isMarked(const QxDEdge* edge) {
        return (edge->flagWord() & flags::EdgeCollected) != 0;
    }
    static void mark(QxDEdge* edge) { edge->setFlag(flags::EdgeCollected, 1); }
    /// In the order of the lists of their graph.
    void addAsListed(const std::vector<QxDEdge*>& edges);

    Snapshot<QxDNode> m_nodes;
    Snapshot<QxDEdge> m_edges;
    bool m_isMarked = true;
};

template <class Suits>
void Collection::addEdges(const QxDList* edges, const Suits& suits) {
    const QxDListCell* cell = edges != nullptr ? edges->pFirstCell() : nullptr;
    for (; cell != nullptr; cell = cell->pNextCell()) {
        auto* edge = static_cast<QxDEdge*>(cell->pObject());
        if (!isMarked(edge) && suits(*edge)) {
            mark(edge);
            m_edges.add(edge);
        }
    }
}

template <class Suits>
void Collection::addEdgesAtNodes(const QxDGraph& graph, const Suits& suits) {
    std::vector<QxDEdge*> found;
    found.reserve(4 * m_nodes.size());
    for (const QxDNode* node : m_nodes) {
        for (const QxDList* list : {static_cast<const QxDList*>(node->pInEdgeList()),
                                    static_cast<const QxDList*>(node->pOutEdgeList()),
                                    static_cast<const QxDList*>(node->pDisconnectedEdgeList()),
                                    static_cast<const QxDList*>(node->pDeactivatedEdgeList())}) {
            const QxDListCell* cell = list->pFirstCell();
            for (; cell != nullptr; cell = cell->pNextCell()) {
                auto* edge = static_cast<QxDEdge*>(cell->pObject());
                if (edge->pOwnerGraph() == &graph && !isMarked(edge) && suits(*edge)) {
                    mark(edge);
                    found.push_back(edge);
                }
            }
        }
    }
    addAsListed(found);
}

}  // namespace qx::internal
