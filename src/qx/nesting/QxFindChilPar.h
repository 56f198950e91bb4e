// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <memory>

#include "qx/foundation/graph/QxGraphAlgorithm.h"

class QxDList;
class QxEdge;
class QxFindChilParInfo;

/// The search for the neighbourhood of a node: its children (what its outgoing edges lead to), its
/// parents (what its incoming edges come from), or both, up to a number of levels, in one graph or
/// in a graph and the hide graph that belongs to it.
///
/// The found nodes stand in the node list in the order of a walk in depth, each once; the start
/// node is not among them. The edge list gets an edge each time the walk comes to a collected node
/// by it, or collects one: in both directions that may be twice, and again when a shorter way to a
/// node leads the walk on from it.
///
/// A search pays for the nodes it finds and the edges at them, whatever the size of the graph; one
/// with a limit walks on from a node anew whenever it has come there by a shorter way, at most
/// once per level.
class QX_API QxFindChilPar : public QxGraphAlgorithm {
public:
    /// Which way a search goes; any other value: it finds nothing.
    enum SearchEnum { Children = 0, Parents = 1, Both = 2 };
    static constexpr std::int32_t Unlimited = -2;

    /// Nothing of this is owned, all has to outlive the run. Either list may be null; the run
    /// empties the given ones first. `depth` counts levels: 1 reaches the direct neighbours.
    /// `secondGraph`, normally the hide graph of `graph`, may be null.
    QxFindChilPar(QxGraph* graph, QxNode* startNode, QxDList* nodes, QxDList* edges,
                  std::int32_t depth, const QxGraph* secondGraph, int search);
    ~QxFindChilPar() override;

protected:
    void initialize() override;
    void algorithmBody() override;
    void finalize() override;
    QxGraphAlgInfo* newGraphAlgNodeInfo() override;

    /// Comes to `node` by the edge `via` (null: at the start) with so many levels left, and goes on
    /// from there. Without recursion: depth is no danger.
    void find(QxEdge* via, QxNode* node, std::int32_t depth);
    /// Marks the node and appends it.
    void collectNode(QxNode* node);
    /// Appends the edge, when a list was given and the edge is not null.
    void collectEdge(QxEdge* edge);
    QxFindChilParInfo* pFindChilParInfo(QxNode* node);

    /// @name What the search was given; a setter returns its argument
    /// @{
    using QxGraphAlgorithm::pGraph;
    QxGraph* pGraph(QxGraph* graph) { return QxGraphAlgorithm::pGraph(graph); }
    const QxGraph* pSecondGraph() const { return m_secondGraph; }
    const QxGraph* pSecondGraph(const QxGraph* graph) { return m_secondGraph = graph; }
    int findChildren() const { return m_findChildren; }
    int findChildren(int value) { return m_findChildren = value; }
    int findParents() const { return m_findParents; }
    int findParents(int value) { return m_findParents = value; }
    /// During a run never null: the algorithm makes a list of its own when none was given.
    QxDList* pNewNodeList() const { return m_newNodes; }
    QxDList* pNewNodeList(QxDList* list) { return m_newNodes = list; }
    QxDList* pNewEdgeList() const { return m_newEdges; }
    QxDList* pNewEdgeList(QxDList* list) { return m_newEdges = list; }
    QxNode* pStartNode() const { return m_startNode; }
    QxNode* pStartNode(QxNode* node) { return m_startNode = node; }
    std::int32_t origTraversalDepth() const { return m_origTraversalDepth; }
    std::int32_t origTraversalDepth(std::int32_t depth) { return m_origTraversalDepth = depth; }
    /// Whether a node list was given.
    int findNodes() const { return m_findNodes; }
    int findNodes(int value) { return m_findNodes = value; }
    /// @}

private:
    class Stop;

    bool arrive(QxEdge* via, QxNode* node, std::int32_t depth);
    static bool isMarked(const QxNode* node);
    static void mark(QxNode* node, int value);

    const QxGraph* m_secondGraph;
    int m_findChildren;
    int m_findParents;
    QxDList* m_newNodes;
    QxDList* m_newEdges;
    QxNode* m_startNode;
    std::int32_t m_origTraversalDepth;
    int m_findNodes;
    std::unique_ptr<QxDList> m_ownNodes;
};
