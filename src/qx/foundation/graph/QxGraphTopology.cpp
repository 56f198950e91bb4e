// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Insertion, removal, discarding and transfer of nodes and edges: who lists and who owns them.

#include <vector>

#include "qx/foundation/graph/QxAFactory.h"
#include "qx/foundation/graph/QxChildGraphForest.h"
#include "qx/foundation/graph/QxChildGraphForestEdge.h"
#include "qx/foundation/graph/QxEdge.h"
#include "qx/foundation/graph/QxGraph.h"
#include "qx/foundation/graph/QxGraphManager.h"
#include "qx/foundation/graph/QxNode.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/foundation/util/internal/KeepAlive.h"

using qx::internal::each;

namespace {

/// The forest that has to hear what happens to a member of `graph`; null when nothing is nested in
/// the member.
QxChildGraphForest* forestFor(const QxGraphMember* member, const QxGraph* graph) {
    const QxChildGraphForestEdge* relation = member->pChildGraphForestEdge();
    if (relation == nullptr) {
        return nullptr;
    }
    const QxGraphManager* manager = graph->pOwnerGraphManager();
    return manager != nullptr ? manager->pChildGraphForest() : relation->pForest();
}

/// The connected and deactivated edges at a node; gathered first, for a self-loop that changes its
/// state leaves a list with two cells at once.
std::vector<QxEdge*> attachedEdgesAt(const QxNode* node) {
    std::vector<QxEdge*> edges;
    for (const QxEdgeDList* list :
         {node->pInEdgeList(), node->pOutEdgeList(), node->pDeactivatedEdgeList()}) {
        for (QxEdge* edge : each<QxEdge>(*list)) {
            edges.push_back(edge);
        }
    }
    return edges;
}

}  // namespace

QxNode* QxGraph::vNewNode(int) {
    return new QxNode(this);
}

QxEdge* QxGraph::vNewEdge(int) {
    return new QxEdge(this);
}

QxNode* QxGraph::vAddNode(int type) {
    QxNode* node = vNewNode(type);
    if (node != nullptr && vInsertNode(node) == nullptr) {
        node->vRelease();
        return nullptr;
    }
    return node;
}

QxEdge* QxGraph::vAddEdge(QxNode* source, QxNode* target, int type) {
    QxEdge* edge = source != nullptr && target != nullptr ? vNewEdge(type) : nullptr;
    if (edge != nullptr && vInsertEdge(edge, source, target) == nullptr) {
        edge->vRelease();
        return nullptr;
    }
    return edge;
}

QxNode* QxGraph::vInsertNode(QxNode* node) {
    if (canInsertNode(node) == 0) {
        return nullptr;
    }
    adopt(node, m_nodes);
    tellGraphsOfIntergraphEdgesAt(node);
    if (QxChildGraphForest* forest = forestFor(node, this)) {
        forest->actOnInsertGraphMember(node);
    }
    return node;
}

QxNode* QxGraph::vRemoveNode(QxNode* node) {
    if (node == nullptr || node->pOwnerGraph() != this || node->isPathNode() != 0) {
        return nullptr;
    }
    disconnectOwnEdgesAt(node);
    if (QxChildGraphForest* forest = forestFor(node, this)) {
        forest->actOnRemoveGraphMember(node);
    }
    dismiss(node, m_nodes);
    tellGraphsOfIntergraphEdgesAt(node);
    return node;
}

int QxGraph::vDiscardNode(QxNode* node) {
    if (node == nullptr || node->pOwnerGraph() != this || node->isPathNode() != 0) {
        return 0;
    }
    if (QxChildGraphForest* forest = forestFor(node, this)) {
        forest->actOnDiscardGraphMember(node);
    }
    const qx::internal::KeepAlive alive(*node);
    discardEdgesAt(node);
    if (node->pOwnerGraph() != this || removeNode(node) == nullptr) {
        return 0;  // a listener has been quicker
    }
    node->actOnDiscard();
    node->vRelease();
    return 1;
}

QxEdge* QxGraph::vInsertEdge(QxEdge* edge, QxNode* source, QxNode* target) {
    if (source == nullptr || target == nullptr || canInsertEdge(edge) == 0 ||
        edge->canEnd(source) == 0 || edge->canEnd(target) == 0) {
        return nullptr;
    }
    edge->initEndNodes(source, target);
    edge->setFlag(QxEdge::BeingInserted, 1);
    adopt(edge, m_edges);
    actAfterInsertEdgeBeforeConnect(edge);
    if (edge->vConnect() == 0) {
        edge->changeState(0, qx::flags::EdgeConnected);
        edge->updateGraphCells();
    }
    if (QxChildGraphForest* forest = forestFor(edge, this)) {
        forest->actOnInsertGraphMember(edge);
    }
    return edge;
}

QxEdge* QxGraph::vRemoveEdge(QxEdge* edge) {
    if (edge == nullptr || edge->pOwnerGraph() != this || edge->isPathEdge() != 0) {
        return nullptr;
    }
    if (QxChildGraphForest* forest = forestFor(edge, this)) {
        forest->actOnRemoveGraphMember(edge);
    }
    QxEdgeDList& list = listOfState(edge);
    edge->loseEnds();
    dismiss(edge, list);
    actAfterRemoveEdge(edge);
    return edge;
}

int QxGraph::vDiscardEdge(QxEdge* edge) {
    if (edge == nullptr || edge->pOwnerGraph() != this || edge->isPathEdge() != 0) {
        return 0;
    }
    if (QxChildGraphForest* forest = forestFor(edge, this)) {
        forest->actOnDiscardGraphMember(edge);
    }
    if (removeEdge(edge) == nullptr) {
        return 0;
    }
    edge->actOnDiscard();
    edge->vRelease();
    return 1;
}

void QxGraph::actAfterInsertEdgeBeforeConnect(QxEdge*) {}

void QxGraph::actAfterRemoveEdge(QxEdge*) {}

int QxGraph::vTransferTopology(QxGraph* graph) {
    if (graph == nullptr || graph == this || pUnverifiedFactory() != graph->pUnverifiedFactory() ||
        isIntergraph() != graph->isIntergraph()) {
        return 0;
    }
    takeOverMembers(graph->m_nodes, m_nodes);
    takeOverMembers(graph->m_edges, m_edges);
    takeOverMembers(graph->m_disconnectedEdges, m_disconnectedEdges);
    takeOverMembers(graph->m_deactivatedEdges, m_deactivatedEdges);
    if (isIntergraph() != 0) {
        for (const QxEdgeDList* list : {&m_edges, &m_deactivatedEdges}) {
            for (QxEdge* edge : each<QxEdge>(*list)) {
                edge->settleBetweenManagers();
            }
        }
    }
    for (QxEdgeDList QxGraph::*list :
         {&QxGraph::m_enteringIntergraphEdges, &QxGraph::m_leavingIntergraphEdges,
          &QxGraph::m_unconnectedIntergraphEdges}) {
        // All nodes are here now, so every edge leaves these lists, perhaps with both its cells.
        while (QxObject* object = (graph->*list).pFirstObject()) {
            auto* edge = static_cast<QxEdge*>(object);
            edge->settleBetweenManagers();
            edge->updateGraphCells();
        }
    }
    return 1;
}

int QxGraph::transferSelectedPartOfGraph(QxGraph* graph, const QxNodeDList* nodes,
                                         const QxEdgeDList* edges) {
    if (graph == nullptr || graph == this || pUnverifiedFactory() != graph->pUnverifiedFactory() ||
        isIntergraph() != graph->isIntergraph()) {
        return 0;
    }
    // Copies, for the lists may be those of the graph, and these change underway.
    QxNodeDList movingNodes;
    QxEdgeDList movingEdges;
    movingNodes.copyAppendList(nodes);
    movingEdges.copyAppendList(edges);
    for (QxNode* node : each<QxNode>(movingNodes)) {
        if (node->pOwnerGraph() == graph) {
            graph->removeNode(node);
            insertNode(node);
        }
    }
    for (QxEdge* edge : each<QxEdge>(movingEdges)) {
        QxNode* source = edge->pSourceNode();
        QxNode* target = edge->pTargetNode();
        if (edge->pOwnerGraph() == graph && source != nullptr && target != nullptr) {
            graph->removeEdge(edge);
            insertEdge(edge, source, target);
        }
    }
    return 1;
}

QxEdgeDList& QxGraph::listOfState(const QxEdge* edge) {
    if (edge->deactivated() != 0) {
        return m_deactivatedEdges;
    }
    const bool active = edge->connected() != 0 || edge->hasFlag(QxEdge::BeingInserted) != 0;
    return active ? m_edges : m_disconnectedEdges;
}

void QxGraph::adopt(QxGraphMember* member, QxDList& list) {
    if (member->m_ownerCell.isLinked() != 0) {
        member->pUnverifiedOwnerGraph()->m_detachedMembers.removeCell(&member->m_ownerCell);
    }
    list.appendCell(&member->m_ownerCell);
    member->m_listStamp = nextListStamp();
    member->actOnChangeOwner(this, 1);
}

void QxGraph::dismiss(QxGraphMember* member, QxDList& list) {
    m_detachedMembers.transferCell(&member->m_ownerCell, &list);
    member->actOnChangeOwner(this, 0);
}

void QxGraph::disconnectOwnEdgesAt(QxNode* node) {
    for (QxEdge* edge : attachedEdgesAt(node)) {
        if (edge->pOwnerGraph() == this) {
            edge->settleAsDisconnected();
        }
    }
}

void QxGraph::tellGraphsOfIntergraphEdgesAt(QxNode* node) {
    for (QxEdge* edge : attachedEdgesAt(node)) {
        edge->settleBetweenManagers();
    }
    for (const QxEdgeDList* list : {node->pInEdgeList(), node->pOutEdgeList(),
                                    node->pDisconnectedEdgeList(), node->pDeactivatedEdgeList()}) {
        for (QxEdge* edge : each<QxEdge>(*list)) {
            if (edge->intergraphEdge() == 0) {
                continue;
            }
            if (node->ownerValid() != 0) {
                actOnInitNodeAtIntergraphEdge(edge, node);
            } else {
                edge->updateGraphCells();
            }
        }
    }
}

void QxGraph::discardEdgesAt(QxNode* node) {
    for (const QxEdgeDList* list : {node->pInEdgeList(), node->pOutEdgeList(),
                                    node->pDisconnectedEdgeList(), node->pDeactivatedEdgeList()}) {
        while (QxObject* edge = list->pFirstObject()) {
            static_cast<QxEdge*>(edge)->pOwnerGraph()->discardEdge(static_cast<QxEdge*>(edge));
        }
    }
}

void QxGraph::leaveMembersToHeir() {
    QxOwnedObject* heir = pUnverifiedFactory();
    while (QxDListCell* cell = m_detachedMembers.pFirstCell()) {
        m_detachedMembers.removeCell(cell);
        static_cast<QxGraphMember*>(cell->pObject())->actOnChangeOwner(heir, 0);
    }
}

void QxGraph::takeOverMembers(QxDList& from, QxDList& to) {
    for (QxGraphMember* member : each<QxGraphMember>(from)) {
        member->m_listStamp = nextListStamp();
        member->actOnChangeOwner(this, 1);
        if (QxChildGraphForest* forest = forestFor(member, this)) {
            forest->actOnInsertGraphMember(member);
        }
    }
    to.appendList(&from);
}
