// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/graph/QxGraph.h"

#include <ostream>

#include "qx/foundation/graph/QxAFactory.h"
#include "qx/foundation/graph/QxChildGraphForest.h"
#include "qx/foundation/graph/QxEdge.h"
#include "qx/foundation/graph/QxGraphManager.h"
#include "qx/foundation/graph/QxNode.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/foundation/util/QxDebugStream.h"
#include "qx/foundation/util/internal/Ref.h"

using qx::internal::each;
using qx::internal::Ref;

namespace {

template <class Visit>
void eachEdgeInAnyState(const QxGraph& graph, Visit visit) {
    for (const QxEdgeDList* list :
         {graph.pEdgeList(), graph.pDisconnectedEdgeList(), graph.pDeactivatedEdgeList()}) {
        for (QxEdge* edge : each<QxEdge>(*list)) {
            visit(edge);
        }
    }
}

/// Whether `test` holds for any node, or any edge in whatever state.
template <class Test>
int anyMember(const QxGraph& graph, Test test) {
    for (QxNode* node : each<QxNode>(*graph.pNodeList())) {
        if (test(node)) {
            return 1;
        }
    }
    bool found = false;
    eachEdgeInAnyState(graph, [&](QxEdge* edge) { found = found || test(edge); });
    return found ? 1 : 0;
}

template <class Visit>
void eachMember(const QxGraph& graph, Visit visit) {
    for (QxNode* node : each<QxNode>(*graph.pNodeList())) {
        visit(node);
    }
    eachEdgeInAnyState(graph, visit);
}

}  // namespace

QxGraph::QxGraph(QxOwnedObject* owner) : QxExtendableGraphObject(owner), m_managerCell(this) {
    setFlag(qx::flags::IsGraph, 1);
    pOwner(pUnverifiedFactory());  // until a manager lists it, for that one may be destroyed first
}

QxGraph::~QxGraph() {
    QxGraph::emptyTopology();
    if (QxGraphManager* manager = pOwnerGraphManager()) {
        manager->forgetGraph(this);
    }
    leaveMembersToHeir();
}

int QxGraph::isGraph() const {
    return 1;
}

int QxGraph::userFieldsInUse() const {
    return QxExtendableGraphObject::userFieldsInUse() != 0 ||
                   anyMember(*this, [](auto* member) { return member->userFieldsInUse() != 0; })
               ? 1
               : 0;
}

void QxGraph::nullUserFields() {
    QxExtendableGraphObject::nullUserFields();
    eachMember(*this, [](auto* member) { member->nullUserFields(); });
}

int QxGraph::internalUserFieldsInUse() const {
    return QxExtendableGraphObject::internalUserFieldsInUse() != 0 ||
                   anyMember(*this,
                             [](auto* member) { return member->internalUserFieldsInUse() != 0; })
               ? 1
               : 0;
}

void QxGraph::nullInternalUserFields() {
    QxExtendableGraphObject::nullInternalUserFields();
    eachMember(*this, [](auto* member) { member->nullInternalUserFields(); });
}

std::size_t QxGraph::sizeOf() const {
    return QxExtendableGraphObject::sizeOf() + sizeof(QxGraph) - sizeof(QxExtendableGraphObject);
}

void QxGraph::copyObject(const QxObject* source) {
    if (source != nullptr && source != this) {
        copyGraph(static_cast<const QxGraph*>(source), 1);
    }
}

void QxGraph::copyAttributes(const QxObject* source) {
    if (source != nullptr && source != this) {
        copyGraph(static_cast<const QxGraph*>(source), 0);
    }
}

void QxGraph::debugOutput(int depth) const {
    innerDebugOutput(depth);
    debugOutputNodes(depth + 1);
    debugOutputEdges(depth + 1);
}

void QxGraph::innerDebugOutput(int depth) const {
    qxDebugIndent(depth) << "graph: " << numberOfNodes() << " nodes, " << numberOfEdges()
                         << " edges, " << m_disconnectedEdges.count() << " disconnected, "
                         << m_deactivatedEdges.count() << " deactivated\n";
}

void QxGraph::debugOutputNodes(int depth) const {
    for (const QxNode* node : each<QxNode>(m_nodes)) {
        node->innerDebugOutput(depth);
    }
}

void QxGraph::debugOutputEdges(int depth) const {
    eachEdgeInAnyState(*this, [depth](const QxEdge* edge) { edge->innerDebugOutput(depth); });
}

void QxGraph::emptyTopology() {
    // Each step starts anew at the first one, for it may take others along. What refuses to go, in
    // a subclass, ends the work.
    const Ref alive(*this);
    while (QxObject* node = m_nodes.pFirstObject()) {
        if (discardNode(static_cast<QxNode*>(node)) == 0 && m_nodes.pFirstObject() == node) {
            break;
        }
    }
    for (const QxEdgeDList* list : {&m_edges, &m_disconnectedEdges, &m_deactivatedEdges}) {
        while (QxObject* edge = list->pFirstObject()) {
            if (discardEdge(static_cast<QxEdge*>(edge)) == 0 && list->pFirstObject() == edge) {
                break;
            }
        }
    }
}

void QxGraph::yield() {}

int QxGraph::vNeedsGeometricUpdate() const {
    return 0;
}

void QxGraph::vSetNeedsGeometricUpdate(int) {}

int QxGraph::hasNodeLabels() const {
    return 0;
}

int QxGraph::hasConnectorLabels() const {
    return 0;
}

int QxGraph::hasEdgeLabels() const {
    return 0;
}

int QxGraph::hasGraphLabels() const {
    return 0;
}

int QxGraph::canBeChildGraph() const {
    return isIntergraph() != 0 ? 0 : 1;
}

void QxGraph::buildAllNodeList(QxNodeDList* list) const {
    if (list != nullptr) {
        list->deleteAllCells();
        list->copyAppendList(&m_nodes);
    }
}

void QxGraph::buildAllEdgeList(QxEdgeDList* list) const {
    if (list != nullptr) {
        list->deleteAllCells();
        list->copyAppendList(&m_edges);
        list->copyAppendList(&m_disconnectedEdges);
        list->copyAppendList(&m_deactivatedEdges);
    }
}

int QxGraph::fileReadRunning(int value) {
    setFlag(qx::flags::GraphFileRead, value);
    return fileReadRunning();
}

int QxGraph::fileReadRunning() const {
    return hasFlag(qx::flags::GraphFileRead);
}

int QxGraph::canInsertNode(const QxNode* node) const {
    if (node == nullptr || node->ownerValid() != 0 || isIntergraph() != 0 ||
        (node->flagWord() & qx::flags::PathObject) != 0) {
        return 0;
    }
    const QxAFactory* factory = node->pOwner() == this ? nullptr : node->pUnverifiedFactory();
    return factory == nullptr || factory == pUnverifiedFactory() ? 1 : 0;
}

int QxGraph::canInsertEdge(const QxEdge* edge) const {
    if (edge == nullptr || edge->ownerValid() != 0 ||
        (edge->flagWord() & qx::flags::PathObject) != 0) {
        return 0;
    }
    const QxAFactory* factory = edge->pOwner() == this ? nullptr : edge->pUnverifiedFactory();
    return factory == nullptr || factory == pUnverifiedFactory() ? 1 : 0;
}

void QxGraph::actOnConnectEdge(QxEdge*) {}

void QxGraph::actOnDisconnectEdge(QxEdge*) {}

void QxGraph::actOnActivateEdge(QxEdge*) {}

void QxGraph::actOnDeactivateEdge(QxEdge*) {}

void QxGraph::actOnConnectIntergraphEdge(QxEdge* edge) {
    edge->updateGraphCells();
}

void QxGraph::actOnDisconnectIntergraphEdge(QxEdge* edge) {
    edge->updateGraphCells();
}

void QxGraph::actOnActivateIntergraphEdge(QxEdge* edge) {
    edge->updateGraphCells();
}

void QxGraph::actOnDeactivateIntergraphEdge(QxEdge* edge) {
    edge->updateGraphCells();
}

void QxGraph::actOnChangeSourceNodeAtIntergraphEdge(QxEdge* edge, QxNode*, QxNode*) {
    edge->updateGraphCells();
}

void QxGraph::actOnChangeTargetNodeAtIntergraphEdge(QxEdge* edge, QxNode*, QxNode*) {
    edge->updateGraphCells();
}

void QxGraph::actOnInitNodeAtIntergraphEdge(QxEdge* edge, QxNode*) {
    edge->updateGraphCells();
}

void QxGraph::markAllNodesUnTouched() {
    for (QxNode* node : each<QxNode>(m_nodes)) {
        node->marked(0);
    }
}

void QxGraph::markAllEdgesUnTraversed() {
    eachEdgeInAnyState(*this, [](QxEdge* edge) { edge->marked(0); });
}

void QxGraph::actOnDiscard() {}

void QxGraph::vBuildListOfAttachedGraphsForDeepDisable(QxGraphDList* list) {
    if (list != nullptr) {
        list->appendGraphIfNotInList(this);
    }
}

std::int32_t QxGraph::numberOfAllEdges() const {
    return m_edges.count() + m_disconnectedEdges.count() + m_deactivatedEdges.count();
}

void QxGraph::buildExistingEdgeList(QxEdgeDList* list, const QxNode* first,
                                    const QxNode* second) const {
    if (list == nullptr) {
        return;
    }
    list->deleteAllCells();
    const auto runsBetween = [&](const QxNode* a, const QxNode* b) {
        return (first == nullptr || a == first) && (second == nullptr || b == second);
    };
    for (const QxEdgeDList* edges : {&m_edges, &m_disconnectedEdges}) {
        for (QxEdge* edge : each<QxEdge>(*edges)) {
            if (runsBetween(edge->m_source, edge->m_target) ||
                runsBetween(edge->m_target, edge->m_source)) {
                list->appendEdge(edge);
            }
        }
    }
}

void QxGraph::buildChildGraphList(QxGraphDList* list) const {
    if (list != nullptr) {
        list->deleteAllCells();
        if (const QxGraphManager* manager = pOwnerGraphManager()) {
            manager->pChildGraphForest()->appendChildGraphs(this, list);
        }
    }
}

void QxGraph::buildAllChildGraphList(QxGraphDList* list) const {
    buildChildGraphList(list);
    const QxGraphManager* manager = pOwnerGraphManager();
    if (list == nullptr || manager == nullptr) {
        return;
    }
    const QxDListCell* cell = list->pFirstCell();
    for (; cell != nullptr; cell = cell->pNextCell()) {
        manager->pChildGraphForest()->appendChildGraphs(static_cast<QxGraph*>(cell->pObject()),
                                                        list);
    }
}

void QxGraph::splitListIntoOwnedAndOthers(QxDList* list, QxDList* owned) const {
    if (list == nullptr || owned == nullptr || list == owned) {
        return;
    }
    QxDListCell* cell = list->pFirstCell();
    while (cell != nullptr) {
        QxDListCell* next = cell->pNextCell();
        const auto* object = static_cast<const QxGraphObject*>(cell->pObject());
        if (object->pOwner() == this && object->ownerValid() != 0) {
            owned->transferCell(cell, list);
        }
        cell = next;
    }
}

QxGraphManager* QxGraph::pOwnerGraphManager() const {
    return ownerValid() != 0 ? static_cast<QxGraphManager*>(pOwner()) : nullptr;
}

QxGraphMember* QxGraph::pParentGraphMember() const {
    const QxGraphManager* manager = pOwnerGraphManager();
    return manager != nullptr ? manager->pChildGraphForest()->pParentGraphMember(this) : nullptr;
}

QxNode* QxGraph::pParentNode() const {
    QxGraphMember* parent = pParentGraphMember();
    return parent != nullptr && parent->isNode() != 0 ? static_cast<QxNode*>(parent) : nullptr;
}

QxEdge* QxGraph::pParentEdge() const {
    QxGraphMember* parent = pParentGraphMember();
    return parent != nullptr && parent->isEdge() != 0 ? static_cast<QxEdge*>(parent) : nullptr;
}

namespace {

int complain(const char* what) {
    qxDebugStream() << "graph: " << what << '\n';
    return 0;
}

std::int32_t countIntergraphEdges(const QxEdgeDList& list) {
    std::int32_t count = 0;
    for (const QxEdge* edge : each<QxEdge>(list)) {
        count += edge->intergraphEdge();
    }
    return count;
}

/// Every edge between graphs stands in these lists once for each end that it has in the graph.
int checkIntergraphLists(const QxGraph& graph) {
    std::int32_t entering = 0;
    std::int32_t leaving = 0;
    std::int32_t unconnected = 0;
    for (const QxNode* node : each<QxNode>(*graph.pNodeList())) {
        entering += countIntergraphEdges(*node->pInEdgeList());
        leaving += countIntergraphEdges(*node->pOutEdgeList());
        unconnected += countIntergraphEdges(*node->pDisconnectedEdgeList()) +
                       countIntergraphEdges(*node->pDeactivatedEdgeList());
    }
    const auto isSound = [](const QxEdgeDList& list, std::int32_t count, auto belongs) {
        bool sound = list.count() == count && list.checkInvariants() != 0;
        for (const QxEdge* edge : each<QxEdge>(list)) {
            sound = sound && edge->intergraphEdge() != 0 && belongs(edge);
        }
        return sound;
    };
    const auto isHere = [&](const QxNode* end) {
        return end != nullptr && end->pOwnerGraph() == &graph;
    };
    const auto isActive = [](const QxEdge* edge) {
        return edge->connected() != 0 && edge->deactivated() == 0;
    };
    const bool sound =
        isSound(*graph.pEnteringIntergraphEdgeList(), entering,
                [&](const QxEdge* e) { return isActive(e) && isHere(e->pTargetNode()); }) &&
        isSound(*graph.pLeavingIntergraphEdgeList(), leaving,
                [&](const QxEdge* e) { return isActive(e) && isHere(e->pSourceNode()); }) &&
        isSound(*graph.pUnconnectedIntergraphEdgeList(), unconnected, [&](const QxEdge* e) {
            return !isActive(e) && (isHere(e->pSourceNode()) || isHere(e->pTargetNode()));
        });
    return sound ? 1 : complain("a list of edges to other graphs does not fit those at its nodes");
}

}  // namespace

int QxGraph::checkInvariants() const {
    for (const QxDList* list :
         {static_cast<const QxDList*>(&m_nodes), static_cast<const QxDList*>(&m_edges),
          static_cast<const QxDList*>(&m_disconnectedEdges),
          static_cast<const QxDList*>(&m_deactivatedEdges), &m_detachedMembers}) {
        if (list->checkInvariants() == 0) {
            return 0;
        }
    }
    std::int64_t ends = 0;
    for (const QxNode* node : each<QxNode>(m_nodes)) {
        if (node->pOwnerGraph() != this) {
            return complain("a listed node has another owner");
        }
        if (node->checkInvariants() == 0) {
            return 0;
        }
        for (const QxEdgeDList* list : {node->pInEdgeList(), node->pOutEdgeList()}) {
            for (const QxEdge* edge : each<QxEdge>(*list)) {
                ends += edge->pOwnerGraph() == this ? 1 : 0;
            }
        }
    }
    if (isIntergraph() == 0 && ends != 2 * static_cast<std::int64_t>(m_edges.count())) {
        return complain("the edges at its nodes are not the edges that it lists");
    }
    int sound = 1;
    eachEdgeInAnyState(*this, [&](QxEdge* edge) {
        if (edge->pOwnerGraph() != this) {
            sound = complain("a listed edge has another owner");
        } else {
            sound &= edge->checkInvariants();
        }
    });
    for (const QxEdge* edge : each<QxEdge>(m_edges)) {
        sound &= edge->connected() != 0 ? 1 : complain("a listed edge is not connected");
    }
    for (const QxEdge* edge : each<QxEdge>(m_disconnectedEdges)) {
        sound &=
            edge->disconnected() != 0 ? 1 : complain("a disconnected edge is in another state");
    }
    for (const QxEdge* edge : each<QxEdge>(m_deactivatedEdges)) {
        sound &= edge->deactivated() != 0 ? 1 : complain("a deactivated edge is in another state");
    }
    return sound & checkIntergraphLists(*this);
}
