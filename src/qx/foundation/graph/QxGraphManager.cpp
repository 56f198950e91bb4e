// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/graph/QxGraphManager.h"

#include <ostream>

#include "qx/foundation/graph/QxAFactory.h"
#include "qx/foundation/graph/QxChildGraphForest.h"
#include "qx/foundation/graph/QxChildGraphForestEdge.h"
#include "qx/foundation/graph/QxEdge.h"
#include "qx/foundation/graph/QxGraph.h"
#include "qx/foundation/graph/QxNode.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/foundation/util/QxDebugStream.h"
#include "qx/foundation/util/internal/KeepAlive.h"

using qx::internal::each;

namespace {

/// Visits the listed graphs and the intergraph, when there is one.
template <class Visit>
void eachGraph(const QxGraphManager& manager, Visit visit) {
    for (QxGraph* graph : each<QxGraph>(*manager.pGraphList())) {
        visit(graph);
    }
    if (QxGraph* intergraph = manager.pQueryIntergraph()) {
        visit(intergraph);
    }
}

}  // namespace

QxGraphManager::QxGraphManager(QxOwnedObject* owner) : QxGraphObject(owner) {
    ownerValid(owner != nullptr ? 1 : 0);
}

QxGraphManager::~QxGraphManager() {
    QxGraphManager::emptyTopology();
    releaseForest();
}

int QxGraphManager::isGraphManager() const {
    return 1;
}

int QxGraphManager::userFieldsInUse() const {
    int inUse = QxGraphObject::userFieldsInUse();
    eachGraph(*this, [&](const QxGraph* graph) { inUse |= graph->userFieldsInUse(); });
    return inUse;
}

void QxGraphManager::nullUserFields() {
    QxGraphObject::nullUserFields();
    eachGraph(*this, [](QxGraph* graph) { graph->nullUserFields(); });
}

int QxGraphManager::internalUserFieldsInUse() const {
    int inUse = QxGraphObject::internalUserFieldsInUse();
    eachGraph(*this, [&](const QxGraph* graph) { inUse |= graph->internalUserFieldsInUse(); });
    return inUse;
}

void QxGraphManager::nullInternalUserFields() {
    QxGraphObject::nullInternalUserFields();
    eachGraph(*this, [](QxGraph* graph) { graph->nullInternalUserFields(); });
}

std::size_t QxGraphManager::sizeOf() const {
    return QxGraphObject::sizeOf() + sizeof(QxGraphManager) - sizeof(QxGraphObject);
}

int QxGraphManager::checkInvariants() const {
    int sound = m_graphs.checkInvariants();
    eachGraph(*this, [&](const QxGraph* graph) {
        if (graph->pOwnerGraphManager() != this) {
            qxDebugStream() << "manager: a listed graph does not belong to it\n";
            sound = 0;
        }
        sound &= graph->checkInvariants();
    });
    return m_forest != nullptr ? sound & m_forest->checkInvariants() : sound;
}

void QxGraphManager::copyObject(const QxObject* source) {
    if (source != nullptr && source != this) {
        copyGraphManager(static_cast<const QxGraphManager*>(source), 1);
    }
}

void QxGraphManager::copyAttributes(const QxObject* source) {
    if (source != nullptr && source != this) {
        copyGraphManager(static_cast<const QxGraphManager*>(source), 0);
    }
}

void QxGraphManager::debugOutput(int depth) const {
    innerDebugOutput(depth);
    debugOutputGraphs(depth + 1);
}

void QxGraphManager::innerDebugOutput(int depth) const {
    qxDebugIndent(depth) << "manager: " << numberOfGraphs() << " graphs"
                         << (m_intergraph != nullptr ? " and an intergraph\n" : "\n");
}

void QxGraphManager::debugOutputGraphs(int depth) const {
    eachGraph(*this, [depth](const QxGraph* graph) { graph->debugOutput(depth); });
}

void QxGraphManager::emptyTopology() {
    while (QxObject* graph = m_graphs.pLastObject()) {
        discardGraph(static_cast<QxGraph*>(graph));
    }
    if (QxGraph* intergraph = m_intergraph) {
        const qx::internal::KeepAlive alive(*intergraph);
        intergraph->emptyTopology();
        if (m_intergraph == intergraph) {
            intergraph->actOnDiscard();
            forgetGraph(intergraph);
            intergraph->vRelease();
        }
    }
}

QxGraph* QxGraphManager::pFirstGraph() const {
    return static_cast<QxGraph*>(m_graphs.pFirstObject());
}

QxGraph* QxGraphManager::pLastGraph() const {
    return static_cast<QxGraph*>(m_graphs.pLastObject());
}

QxGraph* QxGraphManager::pIntergraph() {
    if (m_intergraph == nullptr) {
        m_intergraph = vNewIntergraph(0);
        if (m_intergraph != nullptr) {
            pChildGraphForest()->actOnInsertGraph(m_intergraph);
        }
    }
    return m_intergraph;
}

QxChildGraphForest* QxGraphManager::pChildGraphForest() const {
    if (m_forest == nullptr) {
        m_forest = const_cast<QxGraphManager*>(this)->vNewChildGraphForest();
    }
    return m_forest;
}

QxEventManager* QxGraphManager::pEventManager() const {
    QxAFactory* factory = pFactory();
    return factory != nullptr ? factory->pEventManager() : nullptr;
}

QxChildGraphForest* QxGraphManager::vNewChildGraphForest() {
    return new QxChildGraphForest(this);
}

void QxGraphManager::releaseForest() {
    if (QxChildGraphForest* forest = m_forest) {
        m_forest = nullptr;
        forest->vRelease();
    }
}

QxGraph* QxGraphManager::vNewGraph(int type) {
    QxAFactory* factory = pFactory();
    return factory != nullptr ? factory->newGraph(this, type) : new QxGraph(this);
}

QxGraph* QxGraphManager::vNewIntergraph(int type) {
    QxAFactory* factory = pFactory();
    QxGraph* graph = factory != nullptr ? factory->newIntergraph(this, type) : new QxGraph(this);
    if (graph != nullptr) {
        markAsIntergraph(graph);
    }
    return graph;
}

QxEdge* QxGraphManager::vNewEdge(int type) {
    QxGraph* intergraph = pIntergraph();
    return intergraph != nullptr ? intergraph->vNewEdge(type) : nullptr;
}

void QxGraphManager::markAsIntergraph(QxGraph* graph) {
    graph->setFlag(qx::flags::GraphIntergraph, 1);
    graph->pOwner(this);
    graph->ownerValid(1);
}

int QxGraphManager::canInsertGraph(const QxGraph* graph) const {
    if (graph == nullptr || graph->ownerValid() != 0 || graph->isIntergraph() != 0) {
        return 0;
    }
    const QxAFactory* factory = graph->pUnverifiedFactory();
    return factory == nullptr || factory == pUnverifiedFactory() ? 1 : 0;
}

QxGraph* QxGraphManager::vAddGraph(int type) {
    QxGraph* graph = vNewGraph(type);
    if (graph != nullptr && vInsertGraph(graph) == nullptr) {
        graph->vRelease();
        return nullptr;
    }
    return graph;
}

QxGraph* QxGraphManager::vInsertGraph(QxGraph* graph) {
    if (canInsertGraph(graph) == 0) {
        return nullptr;
    }
    m_graphs.appendCell(&graph->m_managerCell);
    graph->pOwner(this);
    graph->ownerValid(1);
    pChildGraphForest()->actOnInsertGraph(graph);
    return graph;
}

QxGraph* QxGraphManager::vRemoveGraph(QxGraph* graph) {
    if (graph == nullptr || graph == m_intergraph || graph->pOwnerGraphManager() != this) {
        return nullptr;
    }
    detachBetweenGraphs(graph);
    forgetGraph(graph);
    return graph;
}

int QxGraphManager::vDiscardGraph(QxGraph* graph) {
    if (graph == nullptr || graph == m_intergraph || graph->pOwnerGraphManager() != this) {
        return 0;
    }
    const qx::internal::KeepAlive alive(*graph);
    graph->emptyTopology();  // with the edges from here to other graphs
    if (graph->pOwnerGraphManager() != this || removeGraph(graph) == nullptr) {
        return 0;  // a listener has been quicker
    }
    graph->actOnDiscard();
    graph->vRelease();
    return 1;
}

void QxGraphManager::detachBetweenGraphs(QxGraph* graph) {
    for (const QxEdgeDList* list :
         {graph->pEnteringIntergraphEdgeList(), graph->pLeavingIntergraphEdgeList()}) {
        while (QxObject* edge = list->pFirstObject()) {
            static_cast<QxEdge*>(edge)->settleAsDisconnected();
        }
    }
    for (QxEdge* edge : each<QxEdge>(*graph->pUnconnectedIntergraphEdgeList())) {
        if (edge->deactivated() != 0) {
            edge->settleAsDisconnected();
        }
    }
}

void QxGraphManager::forgetGraph(QxGraph* graph) {
    if (m_forest != nullptr) {
        m_forest->actOnRemoveGraph(graph);
    }
    if (graph == m_intergraph) {
        m_intergraph = nullptr;
    } else if (graph->m_managerCell.isLinked() != 0) {
        m_graphs.removeCell(&graph->m_managerCell);
    }
    graph->pOwner(pUnverifiedFactory());
    graph->ownerValid(0);
}

QxEdge* QxGraphManager::vAddEdge(QxNode* source, QxNode* target, int type) {
    if (source == nullptr || target == nullptr) {
        return nullptr;
    }
    QxEdge* edge = vNewEdge(type);
    if (edge != nullptr && vInsertEdge(edge, source, target) == nullptr) {
        edge->vRelease();
        return nullptr;
    }
    return edge;
}

QxEdge* QxGraphManager::vInsertEdge(QxEdge* edge, QxNode* source, QxNode* target) {
    QxGraph* sourceGraph = source != nullptr ? source->pOwnerGraph() : nullptr;
    QxGraph* targetGraph = target != nullptr ? target->pOwnerGraph() : nullptr;
    if (edge == nullptr || sourceGraph == nullptr || targetGraph == nullptr ||
        sourceGraph->pOwnerGraphManager() != this || targetGraph->pOwnerGraphManager() != this) {
        return nullptr;
    }
    QxGraph* place = sourceGraph == targetGraph ? sourceGraph : pIntergraph();
    return place != nullptr ? place->insertEdge(edge, source, target) : nullptr;
}

int QxGraphManager::vDiscardEdge(QxEdge* edge) {
    QxGraph* graph = edge != nullptr ? edge->pOwnerGraph() : nullptr;
    return graph != nullptr && graph->pOwnerGraphManager() == this ? graph->discardEdge(edge) : 0;
}

QxEdge* QxGraphManager::vRemoveEdge(QxEdge* edge) {
    QxGraph* graph = edge != nullptr ? edge->pOwnerGraph() : nullptr;
    return graph != nullptr && graph->pOwnerGraphManager() == this ? graph->removeEdge(edge)
                                                                   : nullptr;
}

int QxGraphManager::vTransferTopology(QxGraphManager* manager) {
    if (manager == nullptr || manager == this ||
        pUnverifiedFactory() != manager->pUnverifiedFactory()) {
        return 0;
    }
    QxGraph* between = manager->pQueryIntergraph();
    manager->pChildGraphForest()->moveGraphsTo(pChildGraphForest());
    for (QxGraph* graph : each<QxGraph>(manager->m_graphs)) {
        graph->pOwner(this);
    }
    m_graphs.appendList(&manager->m_graphs);
    if (between != nullptr) {
        pIntergraph()->transferTopology(between);
    }
    return 1;
}

void QxGraphManager::vBuildListOfGraphsForDeepDisable(QxGraphDList* list) {
    if (list != nullptr) {
        eachGraph(*this, [list](QxGraph* graph) {
            graph->vBuildListOfAttachedGraphsForDeepDisable(list);
        });
    }
}

void QxGraphManager::vBuildListOfAttachedMgrsForDeepDisable(QxDList* list) {
    if (list != nullptr) {
        list->appendObjectIfNotInList(this);
    }
}

void QxGraphManager::copyGraphManager(const QxGraphManager* source, int deep) {
    copyName(*source);
    if (deep != 0) {
        emptyTopology();
        // Only the scratch fields of the source are written, and cleared again.
        auto* scratched = const_cast<QxGraphManager*>(source);
        internalDuplicateTopology(scratched);
        scratched->nullInternalUserFields();
    }
}

void QxGraphManager::duplicateTopology(QxGraphManager* source) {
    if (source != nullptr && source != this) {
        internalDuplicateTopology(source);
        source->nullInternalUserFields();
    }
}

void QxGraphManager::internalDuplicateTopology(QxGraphManager* source) {
    if (source == nullptr || source == this) {
        return;
    }
    const auto twinOf = [](const QxGraph* graph) {
        return static_cast<QxGraph*>(graph->pIUserField());
    };
    for (QxGraph* graph : each<QxGraph>(source->m_graphs)) {
        QxGraph* twin = vNewGraph(0);
        if (twin == nullptr) {
            return;
        }
        twin->copyGraph(graph, 0);
        vInsertGraph(twin);
        graph->pIUserField(twin);
        twin->duplicateNodesOf(graph);
    }
    if (QxGraph* between = source->pQueryIntergraph()) {
        pIntergraph()->copyGraph(between, 0);
        between->pIUserField(pIntergraph());
    }
    eachGraph(*source, [&](const QxGraph* graph) { twinOf(graph)->duplicateEdgesOf(graph, 1, 1); });
    eachGraph(*source, [&](const QxGraph* graph) {
        twinOf(graph)->restoreIncidenceOrderOf(graph);
        twinOf(graph)->orderIntergraphEdgesLike(graph);
    });
    duplicateNesting(source);
}

void QxGraphManager::duplicateNesting(const QxGraphManager* source) {
    for (const QxChildGraphForestEdge* relation :
         each<QxChildGraphForestEdge>(*source->pChildGraphForest()->pEdgeList())) {
        auto* member = static_cast<QxGraphMember*>(relation->pGraphMember()->pIUserField());
        auto* child = static_cast<QxGraph*>(relation->pChildGraph()->pIUserField());
        if (member != nullptr && child != nullptr) {
            member->pChildGraph(child);
        }
    }
}
