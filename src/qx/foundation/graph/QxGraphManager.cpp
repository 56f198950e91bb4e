// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/graph/QxGraphManager.h"

#include <ostream>
#include <vector>

#include "qx/foundation/graph/QxAFactory.h"
#include "qx/foundation/graph/QxChildGraphForest.h"
#include "qx/foundation/graph/QxChildGraphForestEdge.h"
#include "qx/foundation/graph/QxEdge.h"
#include "qx/foundation/graph/QxGraph.h"
#include "qx/foundation/graph/QxNode.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/foundation/graph/internal/GraphChange.h"
#include "qx/foundation/graph/internal/Twins.h"
#include "qx/foundation/util/QxDebugStream.h"
#include "qx/foundation/util/internal/Ref.h"

using qx::internal::each;
using qx::internal::GraphChange;
using qx::internal::Ref;
using qx::internal::Snapshot;

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
        if (discardGraph(static_cast<QxGraph*>(graph)) == 0 && m_graphs.pLastObject() == graph) {
            break;  // a subclass refuses
        }
    }
    if (QxGraph* intergraph = m_intergraph) {
        const Ref alive(*intergraph);
        intergraph->emptyTopology();
        if (m_intergraph == intergraph) {
            intergraph->actOnDiscard();
            intergraph->setFlag(qx::flags::Discarding, 1);
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
            GraphChange(*this, *m_intergraph, GraphInserted).tell();
        }
    }
    return m_intergraph;
}

QxChildGraphForest* QxGraphManager::pChildGraphForest() const {
    if (m_forest == nullptr) {
        auto* self = const_cast<QxGraphManager*>(this);
        m_forest = self->vNewChildGraphForest();
        if (m_forest == nullptr) {
            m_forest = new QxChildGraphForest(self);  // there is no manager without one
        }
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
    const Ref alive(*graph);
    GraphChange change(*this, *graph, GraphInserted);
    m_graphs.appendCell(&graph->m_managerCell);
    graph->pOwner(this);
    graph->ownerValid(1);
    pChildGraphForest()->actOnInsertGraph(graph);
    change.tell();
    return graph;
}

QxGraph* QxGraphManager::vRemoveGraph(QxGraph* graph) {
    if (graph == nullptr || graph == m_intergraph || graph->pOwnerGraphManager() != this) {
        return nullptr;
    }
    const Ref alive(*graph);
    if (!detachBetweenGraphs(graph) || graph->pOwnerGraphManager() != this) {
        return nullptr;  // a listener has been quicker, or insists on an edge
    }
    forgetGraph(graph);
    return graph->ownerValid() == 0 ? graph : nullptr;
}

int QxGraphManager::vDiscardGraph(QxGraph* graph) {
    if (graph == nullptr || graph == m_intergraph || graph->pOwnerGraphManager() != this) {
        return 0;
    }
    const Ref alive(*graph);
    graph->emptyTopology();  // with the edges from here to other graphs
    graph->setFlag(qx::flags::Discarding, 1);
    const bool removed = graph->pOwnerGraphManager() == this && removeGraph(graph) != nullptr;
    graph->setFlag(qx::flags::Discarding, 0);
    if (!removed || graph->ownerValid() != 0) {
        return 0;  // a listener has been quicker
    }
    graph->actOnDiscard();
    graph->vRelease();
    return 1;
}

/// Whether no edge from or to another graph is attached any more.
bool QxGraphManager::detachBetweenGraphs(QxGraph* graph) {
    for (QxEdge* edge :
         Snapshot<QxEdge>{&graph->m_enteringIntergraphEdges, &graph->m_leavingIntergraphEdges,
                          &graph->m_unconnectedIntergraphEdges}) {
        if (edge->disconnected() == 0) {
            edge->settleAsDisconnected();
        }
    }
    return graph->m_enteringIntergraphEdges.isEmpty() != 0 &&
           graph->m_leavingIntergraphEdges.isEmpty() != 0;
}

void QxGraphManager::forgetGraph(QxGraph* graph) {
    if (m_forest != nullptr) {
        m_forest->actOnRemoveGraph(graph);
    }
    const bool going = graph->referenceCount() == 0 || graph->hasFlag(qx::flags::Discarding) != 0;
    GraphChange change(*this, *graph, going ? GraphDiscarded : GraphRemoved);
    if (graph == m_intergraph) {
        m_intergraph = nullptr;
    } else if (graph->m_managerCell.isLinked() != 0) {
        m_graphs.removeCell(&graph->m_managerCell);
    }
    graph->pOwner(pUnverifiedFactory());
    graph->ownerValid(0);
    change.tell();
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
    if (between != nullptr && pIntergraph() == nullptr) {
        return 0;
    }
    manager->pChildGraphForest()->moveGraphsTo(pChildGraphForest());
    std::vector<GraphChange> changes;
    const bool heard = qx::internal::hearsGraphChange(*this, GraphInserted);
    for (QxGraph* graph : each<QxGraph>(manager->m_graphs)) {
        if (heard) {
            changes.emplace_back(*this, *graph, GraphInserted);
        }
        m_graphs.transferCell(&graph->m_managerCell, &manager->m_graphs);
        graph->pOwner(this);
    }
    for (GraphChange& change : changes) {
        change.tell();
    }
    if (between != nullptr && manager->pQueryIntergraph() == between && m_intergraph != nullptr) {
        m_intergraph->transferTopology(between);
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
    if (source == nullptr || source == this) {
        return;
    }
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
    const Ref sourceAlive(*source);
    QxGraph::Twins twins;
    const Snapshot<QxGraph> graphs(&source->m_graphs);
    duplicateGraphs(graphs, twins);
    QxGraph* const between = source->pQueryIntergraph();
    const auto eachTwin = [&](const auto& visit) {
        const auto visitTwin = [&](const QxGraph* graph) {
            if (auto* twin = static_cast<QxGraph*>(graph->pIUserField())) {
                visit(*twin, graph);
            }
        };
        for (const QxGraph* graph : graphs) {
            visitTwin(graph);
        }
        if (between != nullptr) {
            visitTwin(between);
        }
    };
    const Ref<QxGraph> ownBetween(between != nullptr ? pIntergraph() : nullptr);
    if (ownBetween) {
        ownBetween->copyGraph(between, 0);
        twins.link(between, ownBetween.get());
    }
    eachTwin(
        [&](QxGraph& twin, const QxGraph* graph) { twin.duplicateEdgesOf(graph, 1, 1, twins); });
    eachTwin([](QxGraph& twin, const QxGraph* graph) {
        twin.restoreIncidenceOrderOf(graph);
        twin.orderIntergraphEdgesLike(graph);
    });
    duplicateNesting(source);
    twins.unlinkUnless([&](const QxOwnedObject* owner) {
        const bool isGraph = owner != nullptr && (owner->flagWord() & qx::flags::IsGraph) != 0;
        return owner == source ||
               (isGraph && static_cast<const QxGraph*>(owner)->pOwnerGraphManager() == source);
    });
}

/// Without the edges, which need the nodes of all graphs.
void QxGraphManager::duplicateGraphs(const Snapshot<QxGraph>& graphs, QxGraph::Twins& twins) {
    for (QxGraph* graph : graphs) {
        QxGraph* twin = vNewGraph(0);
        if (twin == nullptr) {
            continue;
        }
        twins.keep(twin);
        twin->copyGraph(graph, 0);
        if (vInsertGraph(twin) == nullptr) {
            twin->vRelease();
            continue;
        }
        twins.link(graph, twin);
        twin->duplicateNodesOf(graph, twins);
    }
}

void QxGraphManager::duplicateNesting(const QxGraphManager* source) {
    for (const QxChildGraphForestEdge* relation :
         Snapshot<QxChildGraphForestEdge>(source->pChildGraphForest()->pEdgeList())) {
        const QxGraphMember* original = relation->pGraphMember();
        const QxGraph* nested = relation->pChildGraph();
        if (original == nullptr || nested == nullptr) {
            continue;
        }
        auto* member = static_cast<QxGraphMember*>(original->pIUserField());
        auto* child = static_cast<QxGraph*>(nested->pIUserField());
        if (member != nullptr && child != nullptr) {
            member->pChildGraph(child);
        }
    }
}
