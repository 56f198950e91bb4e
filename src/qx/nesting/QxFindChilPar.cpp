// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// A walk in depth whose stack is a vector, so that chains of a million nodes are as good as any
// graph. Each stop on the way remembers where in its node's edges it stands: at a node the walk
// takes the outgoing edges, then the incoming ones, then those that are not connected, which lead
// to and among hidden nodes.
//
// With a limit, a node that has been collected with few levels left may be reached again by a
// shorter way; the walk then goes on from it once more. What it passes a second time it reports a
// second time, but for the nodes.

#include "qx/nesting/QxFindChilPar.h"

#include <vector>

#include "qx/drawing/QxDrawingFlags.h"
#include "qx/foundation/graph/QxEdge.h"
#include "qx/foundation/graph/QxGraph.h"
#include "qx/foundation/graph/QxNode.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/foundation/util/QxDList.h"
#include "qx/nesting/QxFindChilParInfo.h"

using qx::internal::each;

/// A node that the walk goes on from.
class QxFindChilPar::Stop {
public:
    /// `depth` is what is left for the nodes that the walk comes to from here.
    Stop(const QxFindChilPar& search, QxNode* node, std::int32_t depth)
        : m_node(node), m_depth(depth), m_cell(node->pOutEdgeList()->pFirstCell()) {
        const QxGraph* const graph = node->pOwnerGraph();
        m_other = graph == search.pGraph() ? search.pSecondGraph() : search.pGraph();
    }

    std::int32_t depth() const { return m_depth; }

    /// The next edge to follow, and the node at its other end; false when there is none left.
    bool takeNext(const QxFindChilPar& search, QxEdge*& edge, QxNode*& end) {
        for (; m_list != Done; enterNextList(search)) {
            while (m_cell != nullptr) {
                const QxDListCell* const cell = m_cell;
                m_cell = cell->pNextCell();
                edge = static_cast<QxEdge*>(cell->pObject());
                end = endToFollow(search, *cell, *edge);
                if (end != nullptr) {
                    return true;
                }
            }
        }
        return false;
    }

private:
    enum List : unsigned char { Outgoing, Incoming, NotConnected, Done };

    void enterNextList(const QxFindChilPar& search) {
        m_list = static_cast<List>(m_list + 1);
        const QxDList* list = nullptr;
        if (m_list == Incoming) {
            list = m_node->pInEdgeList();
        } else if (m_list == NotConnected && search.pSecondGraph() != nullptr) {
            list = m_node->pDisconnectedEdgeList();
        }
        m_cell = list != nullptr ? list->pFirstCell() : nullptr;
    }

    /// Null when the search does not follow the edge.
    QxNode* endToFollow(const QxFindChilPar& search, const QxDListCell& cell,
                        const QxEdge& edge) const {
        const bool leaves = startsHere(cell, edge);
        if ((leaves ? search.findChildren() : search.findParents()) == 0) {
            return nullptr;
        }
        QxNode* const end = leaves ? edge.pTargetNode() : edge.pSourceNode();
        const QxGraph* const here = m_node->pOwnerGraph();
        const QxGraph* const endGraph = end != nullptr ? end->pOwnerGraph() : nullptr;
        const QxGraph* const edgeGraph = edge.pOwnerGraph();
        if (endGraph == nullptr || edgeGraph == nullptr) {
            return nullptr;
        }
        if (m_list != NotConnected) {
            return edgeGraph == here && endGraph == here ? end : nullptr;
        }
        // A hidden edge leads on whichever graph its ends lie in; what a client has disconnected
        // among the shown nodes does not.
        const bool isBetween = edgeGraph == here && endGraph == m_other;
        const bool isHidden = edgeGraph == m_other || (edgeGraph == here && here->isHideGraph());
        const bool isInside = endGraph == here || endGraph == m_other;
        return isBetween || (isHidden && isInside) ? end : nullptr;
    }

    bool startsHere(const QxDListCell& cell, const QxEdge& edge) const {
        if (m_list != NotConnected) {
            return m_list == Outgoing;
        }
        // A self-loop stands twice in the list, for its source and, right behind, for its target.
        const QxDListCell* const previous = cell.pPreviousCell();
        const bool isSecond = previous != nullptr && previous->pObject() == cell.pObject();
        return edge.pSourceNode() == m_node && !isSecond;
    }

    QxNode* m_node;
    const QxGraph* m_other;
    std::int32_t m_depth;
    List m_list = Outgoing;
    const QxDListCell* m_cell;
};

QxFindChilPar::QxFindChilPar(QxGraph* graph, QxNode* startNode, QxDList* nodes, QxDList* edges,
                             std::int32_t depth, const QxGraph* secondGraph, int search)
    : QxGraphAlgorithm(graph),
      m_secondGraph(secondGraph),
      m_findChildren(search == Children || search == Both ? 1 : 0),
      m_findParents(search == Parents || search == Both ? 1 : 0),
      m_newNodes(nodes),
      m_newEdges(edges != nodes ? edges : nullptr),
      m_startNode(startNode),
      m_origTraversalDepth(depth),
      m_findNodes(nodes != nullptr ? 1 : 0) {}

QxFindChilPar::~QxFindChilPar() = default;

void QxFindChilPar::initialize() {
    QxGraphAlgorithm::initialize();
    if (m_newNodes == nullptr) {
        m_ownNodes = std::make_unique<QxDList>();
        m_newNodes = m_ownNodes.get();
    }
    m_newNodes->deleteAllCells();
    if (m_newEdges != nullptr) {
        m_newEdges->deleteAllCells();
    }
}

void QxFindChilPar::algorithmBody() {
    const QxGraph* const graph = m_startNode != nullptr ? m_startNode->pOwnerGraph() : nullptr;
    if (graph == nullptr || (graph != pGraph() && graph != m_secondGraph)) {
        return;
    }
    find(nullptr, m_startNode, m_origTraversalDepth);
    if (isMarked(m_startNode)) {
        mark(m_startNode, 0);
        m_newNodes->discardCell(m_newNodes->searchObject(m_startNode));
    }
}

void QxFindChilPar::finalize() {
    for (QxNode* node : each<QxNode>(*m_newNodes)) {
        mark(node, 0);
    }
    if (m_ownNodes) {
        m_newNodes = nullptr;
        m_ownNodes.reset();
    }
    QxGraphAlgorithm::finalize();
}

QxGraphAlgInfo* QxFindChilPar::newGraphAlgNodeInfo() {
    return new QxFindChilParInfo;
}

void QxFindChilPar::find(QxEdge* via, QxNode* node, std::int32_t depth) {
    const auto left = [](std::int32_t here) { return here == Unlimited ? here : here - 1; };
    std::vector<Stop> way;
    if (arrive(via, node, depth)) {
        way.emplace_back(*this, node, left(depth));
    }
    while (!way.empty()) {
        const std::int32_t here = way.back().depth();
        if (!way.back().takeNext(*this, via, node)) {
            way.pop_back();
        } else if (arrive(via, node, here)) {
            way.emplace_back(*this, node, left(here));
        }
    }
}

/// Collects what is new; whether the walk goes on from the node.
bool QxFindChilPar::arrive(QxEdge* via, QxNode* node, std::int32_t depth) {
    if (isMarked(node)) {
        collectEdge(via);
        if (depth == Unlimited || pFindChilParInfo(node)->depth() >= depth) {
            return false;
        }
    } else if (depth != Unlimited && depth < 0) {
        return false;
    } else {
        collectNode(node);
        collectEdge(via);
    }
    if (depth != Unlimited) {
        pFindChilParInfo(node)->depth(depth);  // nothing exceeds what has no limit
    }
    return true;
}

void QxFindChilPar::collectNode(QxNode* node) {
    mark(node, 1);
    m_newNodes->appendObject(node);
}

void QxFindChilPar::collectEdge(QxEdge* edge) {
    if (m_newEdges != nullptr && edge != nullptr) {
        m_newEdges->appendObject(edge);
    }
}

QxFindChilParInfo* QxFindChilPar::pFindChilParInfo(QxNode* node) {
    return static_cast<QxFindChilParInfo*>(pGraphAlgNodeInfo(node));
}

bool QxFindChilPar::isMarked(const QxNode* node) {
    return node->hasFlag(qx::flags::NodeCollected) != 0;
}

void QxFindChilPar::mark(QxNode* node, int value) {
    node->setFlag(qx::flags::NodeCollected, value);
}
