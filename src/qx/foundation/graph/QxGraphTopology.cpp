// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Insertion, removal, discarding and transfer of nodes and edges: who lists and who owns them.

#include <type_traits>
#include <vector>

#include "qx/foundation/graph/QxAFactory.h"
#include "qx/foundation/graph/QxChildGraphForest.h"
#include "qx/foundation/graph/QxChildGraphForestEdge.h"
#include "qx/foundation/graph/QxEdge.h"
#include "qx/foundation/graph/QxGraph.h"
#include "qx/foundation/graph/QxGraphManager.h"
#include "qx/foundation/graph/QxNode.h"
#include "qx/foundation/graph/internal/GraphChange.h"
#include "qx/foundation/util/internal/Ref.h"

using qx::internal::GraphChange;
using qx::internal::Ref;
using qx::internal::Snapshot;

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

/// The connected and deactivated edges at a node.
Snapshot<QxEdge> attachedEdgesAt(const QxNode* node) {
    return {node->pInEdgeList(), node->pOutEdgeList(), node->pDeactivatedEdgeList()};
}

/// Whether it is about to be destroyed; a member may be by releasing it while it is listed.
bool isGoing(const QxGraphMember& member) {
    return member.referenceCount() == 0 || (member.flagWord() & qx::flags::Discarding) != 0;
}

bool isAt(const QxEdge* edge, const QxNode* node) {
    return edge->pSourceNode() == node || edge->pTargetNode() == node;
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
    const Ref alive(*node);
    if (!endCycleThrough(node)) {
        return nullptr;
    }
    GraphChange change(*this, *node, NodeInserted);
    adopt(node, m_nodes);
    tellGraphsOfIntergraphEdgesAt(node);
    if (QxChildGraphForest* forest = forestFor(node, this)) {
        forest->actOnInsertGraphMember(node);
    }
    change.tell();
    return node;
}

QxNode* QxGraph::vRemoveNode(QxNode* node) {
    if (node == nullptr || node->pOwnerGraph() != this || node->isPathNode() != 0) {
        return nullptr;
    }
    const Ref alive(*node);
    if (!disconnectOwnEdgesAt(node) || node->pOwnerGraph() != this) {
        return nullptr;  // a listener has been quicker, or insists on an edge
    }
    if (QxChildGraphForest* forest = forestFor(node, this)) {
        forest->actOnRemoveGraphMember(node);
    }
    GraphChange change(*this, *node, isGoing(*node) ? NodeDiscarded : NodeRemoved);
    dismiss(node, m_nodes);
    tellGraphsOfIntergraphEdgesAt(node);
    change.tell();
    return node->ownerValid() == 0 ? node : nullptr;
}

int QxGraph::vDiscardNode(QxNode* node) {
    if (node == nullptr || node->pOwnerGraph() != this || node->isPathNode() != 0) {
        return 0;
    }
    if (QxChildGraphForest* forest = forestFor(node, this)) {
        forest->actOnDiscardGraphMember(node);
    }
    const Ref alive(*node);
    discardEdgesAt(node);
    node->setFlag(qx::flags::Discarding, 1);
    const bool removed = node->pOwnerGraph() == this && removeNode(node) != nullptr;
    node->setFlag(qx::flags::Discarding, 0);
    if (!removed || node->ownerValid() != 0) {
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
    const Ref alive(*edge);
    if (!endCycleThrough(edge)) {
        return nullptr;
    }
    GraphChange change(*this, *edge, EdgeInserted);
    edge->initEndNodes(source, target);
    edge->setFlag(QxEdge::BeingInserted, 1);
    adopt(edge, m_edges);
    actAfterInsertEdgeBeforeConnect(edge);
    if (edge->vConnect() == 0 && edge->hasFlag(QxEdge::BeingInserted) != 0) {
        edge->changeState(0, qx::flags::EdgeConnected);
    }
    QxChildGraphForest* forest = edge->pOwnerGraph() == this ? forestFor(edge, this) : nullptr;
    if (forest != nullptr) {
        forest->actOnInsertGraphMember(edge);
    }
    change.tell();
    return edge;
}

QxEdge* QxGraph::vRemoveEdge(QxEdge* edge) {
    if (edge == nullptr || edge->pOwnerGraph() != this || edge->isPathEdge() != 0) {
        return nullptr;
    }
    if (QxChildGraphForest* forest = forestFor(edge, this)) {
        forest->actOnRemoveGraphMember(edge);
    }
    const Ref alive(*edge);
    GraphChange change(*this, *edge, isGoing(*edge) ? EdgeDiscarded : EdgeRemoved);
    edge->loseEnds();
    if (edge->pOwnerGraph() != this) {
        return nullptr;  // a listener has been quicker
    }
    dismiss(edge, listOfState(edge));
    actAfterRemoveEdge(edge);
    change.tell();
    return edge->ownerValid() == 0 ? edge : nullptr;
}

int QxGraph::vDiscardEdge(QxEdge* edge) {
    if (edge == nullptr || edge->pOwnerGraph() != this || edge->isPathEdge() != 0) {
        return 0;
    }
    if (QxChildGraphForest* forest = forestFor(edge, this)) {
        forest->actOnDiscardGraphMember(edge);
    }
    const Ref alive(*edge);
    edge->setFlag(qx::flags::Discarding, 1);
    const bool removed = removeEdge(edge) != nullptr;
    edge->setFlag(qx::flags::Discarding, 0);
    if (!removed || edge->ownerValid() != 0) {
        return 0;  // a listener has been quicker
    }
    edge->actOnDiscard();
    edge->vRelease();
    return 1;
}

void QxGraph::actAfterInsertEdgeBeforeConnect(QxEdge*) {}

void QxGraph::actAfterRemoveEdge(QxEdge*) {}

template <class L>
void QxGraph::takeOverMembers(QxGraph& former, L QxGraph::*list,
                              std::vector<qx::internal::GraphChange>& changes) {
    const bool isNodes = std::is_same_v<L, QxNodeDList>;
    const bool isHeardHere = pFactory() != nullptr;
    const QxGraph& at = isHeardHere ? *this : former;
    const auto type = isHeardHere ? (isNodes ? NodeInserted : EdgeInserted)
                                  : (isNodes ? NodeRemoved : EdgeRemoved);
    const bool heard = qx::internal::hearsGraphChange(at, type);
    for (QxGraphMember* member : Snapshot<QxGraphMember>(&(former.*list))) {
        if (member->pOwnerGraph() != &former || !endCycleThrough(member)) {
            continue;  // a hook has taken it away
        }
        if (heard) {
            changes.emplace_back(at, *member, type);
        }
        (this->*list).transferCell(&member->m_ownerCell, &(former.*list));
        member->m_listStamp = nextListStamp();
        member->actOnChangeOwner(this, 1);
        if (QxChildGraphForest* forest = forestFor(member, this)) {
            forest->actOnInsertGraphMember(member);
        }
    }
}

int QxGraph::vTransferTopology(QxGraph* graph) {
    if (graph == nullptr || graph == this || pUnverifiedFactory() != graph->pUnverifiedFactory() ||
        isIntergraph() != graph->isIntergraph()) {
        return 0;
    }
    const Ref alive(*this);
    const Ref graphAlive(*graph);
    std::vector<GraphChange> changes;
    takeOverMembers(*graph, &QxGraph::m_nodes, changes);
    takeOverMembers(*graph, &QxGraph::m_edges, changes);
    takeOverMembers(*graph, &QxGraph::m_disconnectedEdges, changes);
    takeOverMembers(*graph, &QxGraph::m_deactivatedEdges, changes);
    for (GraphChange& change : changes) {
        change.tell();
    }
    if (isIntergraph() != 0) {
        for (QxEdge* edge : Snapshot<QxEdge>{&m_edges, &m_deactivatedEdges}) {
            edge->settleBetweenManagers();
        }
    }
    // The nodes are here now, so the edges leave these lists, perhaps with both their cells.
    for (QxEdge* edge :
         Snapshot<QxEdge>{&graph->m_enteringIntergraphEdges, &graph->m_leavingIntergraphEdges,
                          &graph->m_unconnectedIntergraphEdges}) {
        edge->settleBetweenManagers();
        edge->updateGraphCells();
    }
    return 1;
}

int QxGraph::transferSelectedPartOfGraph(QxGraph* graph, const QxNodeDList* nodes,
                                         const QxEdgeDList* edges) {
    if (graph == nullptr || graph == this || pUnverifiedFactory() != graph->pUnverifiedFactory() ||
        isIntergraph() != graph->isIntergraph()) {
        return 0;
    }
    // Snapshots, for the lists may be those of the graph, and listeners hear of every step.
    const Ref alive(*this);
    const Ref graphAlive(*graph);
    const Snapshot<QxNode> movingNodes(nodes);
    const Snapshot<QxEdge> movingEdges(edges);
    for (QxNode* node : movingNodes) {
        if (node->pOwnerGraph() == graph && graph->removeNode(node) != nullptr) {
            insertNode(node);
        }
    }
    for (QxEdge* edge : movingEdges) {
        const Ref source(edge->pSourceNode());
        const Ref target(edge->pTargetNode());
        if (edge->pOwnerGraph() == graph && source && target &&
            graph->removeEdge(edge) != nullptr) {
            insertEdge(edge, source.get(), target.get());
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

/// Before a member comes here, for nobody may find it in its own child graph. False when a listener
/// has taken it elsewhere.
bool QxGraph::endCycleThrough(QxGraphMember* member) {
    const QxGraph* const former = member->pOwnerGraph();
    if (QxChildGraphForest* forest = forestFor(member, this)) {
        forest->endCycle(member, this);
    }
    return member->pOwnerGraph() == former;
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

/// Whether none of them is attached any more.
bool QxGraph::disconnectOwnEdgesAt(QxNode* node) {
    if (node->isPlainlyBare()) {
        return true;
    }
    const auto ownEdges = [&](const auto& visit) {
        for (QxEdge* edge : attachedEdgesAt(node)) {
            if (edge->pOwnerGraph() == this && isAt(edge, node) && edge->disconnected() == 0) {
                visit(edge);
            }
        }
    };
    bool any = false;
    ownEdges([&](QxEdge* edge) {
        edge->settleAsDisconnected();
        any = true;
    });
    bool left = false;
    if (any) {
        ownEdges([&](QxEdge*) { left = true; });
    }
    return !left;
}

void QxGraph::tellGraphsOfIntergraphEdgesAt(QxNode* node) {
    if (node->isPlainlyBare()) {
        return;
    }
    for (QxEdge* edge : attachedEdgesAt(node)) {
        edge->settleBetweenManagers();
    }
    const auto isBetween = [](const QxEdge& edge) { return edge.intergraphEdge() != 0; };
    const Snapshot<QxEdge> between({node->pInEdgeList(), node->pOutEdgeList(),
                                    node->pDisconnectedEdgeList(), node->pDeactivatedEdgeList()},
                                   isBetween);
    for (QxEdge* edge : between) {
        if (!isBetween(*edge) || !isAt(edge, node)) {
            continue;
        }
        if (node->pOwnerGraph() == this) {
            actOnInitNodeAtIntergraphEdge(edge, node);
        } else {
            edge->updateGraphCells();
        }
    }
}

void QxGraph::fetchEdgesAt(const QxNode& node) {
    // Few are enough: those of a hub stand one behind the other, and each fetch costs time.
    constexpr int Most = 8;
    const auto fetch = [](const void* what) { __builtin_prefetch(what, 1); };
    for (const QxEdgeDList* list : {&node.m_inEdges, &node.m_outEdges}) {
        int count = 0;
        const QxDListCell* cell = list->pFirstCell();
        for (; cell != nullptr && count < Most; cell = cell->pNextCell(), ++count) {
            const auto* edge = static_cast<const QxEdge*>(cell->pObject());
            fetch(edge);
            fetch(edge->pOtherNode(&node));
            for (const QxDListCell* own :
                 {&edge->m_ownerCell, &edge->m_sourceCell, &edge->m_targetCell}) {
                fetch(own->pPreviousCell());
                fetch(own->pNextCell());
            }
        }
    }
}

void QxGraph::discardEdgesAt(QxNode* node) {
    fetchEdgesAt(*node);
    for (const QxEdgeDList* list : {node->pInEdgeList(), node->pOutEdgeList(),
                                    node->pDisconnectedEdgeList(), node->pDeactivatedEdgeList()}) {
        while (QxObject* object = list->pFirstObject()) {
            auto* edge = static_cast<QxEdge*>(object);
            if (edge->pOwnerGraph()->discardEdge(edge) == 0 && list->pFirstObject() == object) {
                break;  // a subclass refuses
            }
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
