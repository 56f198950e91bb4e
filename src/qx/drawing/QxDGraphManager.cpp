// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/drawing/QxDGraphManager.h"

#include <ostream>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxFactory.h"
#include "qx/drawing/bounds/internal/Coverage.h"
#include "qx/events/internal/FireDrawingChange.h"
#include "qx/foundation/graph/QxChildGraphForest.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/foundation/util/QxDebugStream.h"
#include "qx/foundation/util/internal/Ref.h"
#include "qx/nesting/internal/MetaEdgeUpkeep.h"

using qx::internal::each;
using qx::internal::MetaEdgeHold;
using qx::internal::MetaEdgeUpkeep;
using qx::internal::Snapshot;

QxDGraphManager::QxDGraphManager(QxOwnedObject* owner, int, QxFactory*) : QxGraphManager(owner) {
    initSwitches();
}

QxDGraphManager::QxDGraphManager(const QxDGraphManager& source, QxDeepFlagEnum depth)
    : QxGraphManager(source.pUnverifiedFactory()) {
    initSwitches();
    if (depth == QxDeepCopy) {
        QxDGraphManager::copyGraphManager(&source, 1);
    } else {
        QxDGraphManager::copyGraphManager(&source, 0);
    }
}

QxDGraphManager::~QxDGraphManager() {
    m_anchor = nullptr;
    updatesMetaEdges(0);
    QxDGraphManager::emptyTopology();
    qx::internal::endEventSource(*this);
}

void QxDGraphManager::initSwitches() {
    compressMetaEdges(1);
    reflexiveMetaEdgeReplacement(1);
    ignoreConnectorsForMetaEdges(1);
}

QxOwnedObject* QxDGraphManager::pOwnerObject() const {
    return nullptr;
}

std::size_t QxDGraphManager::sizeOf() const {
    return QxGraphManager::sizeOf() + sizeof(QxDGraphManager) - sizeof(QxGraphManager);
}

int QxDGraphManager::levelNumber() const {
    return 2;
}

int QxDGraphManager::checkInvariants() const {
    if (QxGraphManager::checkInvariants() == 0) {
        return 0;
    }
    if (m_anchor != nullptr && m_anchor->pOwnerGraphManager() != this) {
        qxDebugStream() << "manager: its anchor graph is not one of its graphs\n";
        return 0;
    }
    return 1;
}

void QxDGraphManager::innerDebugOutput(int depth) const {
    QxGraphManager::innerDebugOutput(depth);
    qxDebugIndent(depth) << (m_anchor != nullptr ? "with an anchor graph\n" : "without anchor\n");
}

QxObject* QxDGraphManager::vCloneObject() const {
    return new QxDGraphManager(*this, QxDeepCopy);
}

QxObject* QxDGraphManager::vCloneAttributes() const {
    return new QxDGraphManager(*this, QxAttributeCopy);
}

QxGraph* QxDGraphManager::vNewGraph(int type) {
    auto* factory = static_cast<QxFactory*>(pFactory());
    QxDGraph* graph = factory != nullptr ? factory->qxNewDGraph(this, type) : nullptr;
    if (graph != nullptr) {
        graph->needsUpdateGraphBounds(0);
    }
    return graph;
}

QxGraph* QxDGraphManager::vNewIntergraph(int type) {
    auto* factory = static_cast<QxFactory*>(pFactory());
    QxDGraph* graph = factory != nullptr ? factory->qxNewInterDGraph(this, type) : nullptr;
    if (graph != nullptr) {
        markAsIntergraph(graph);
        if (m_anchor != nullptr) {
            graph->vUpdateTransform(*m_anchor->pTransform());
            graph->allocateQuadTree();
        }
    }
    return graph;
}

QxGraph* QxDGraphManager::vInsertGraph(QxGraph* graph) {
    if (canInsertGraph(graph) == 0) {
        return nullptr;
    }
    const qx::internal::Ref alive(*graph);
    QxDGraph* const shown = static_cast<QxDGraph*>(graph)->pHideFromGraph();
    if (shown != nullptr && shown->pOwnerGraphManager() == nullptr) {
        insertGraph(shown);  // which takes this one along
        return graph->pOwnerGraphManager() == this ? graph : nullptr;
    }
    const MetaEdgeHold held(this);
    auto* inserted = static_cast<QxDGraph*>(QxGraphManager::vInsertGraph(graph));
    const auto isHere = [&] {
        return inserted != nullptr && inserted->pOwnerGraphManager() == this &&
               inserted->isHideGraph() == 0;
    };
    if (isHere()) {
        MetaEdgeUpkeep::came(*inserted);
    }
    if (isHere() && numberOfGraphs() == 1) {
        showAnchor(inserted);
    }
    if (isHere()) {
        inserted->forgetVisibility();
        // Outside a manager raw moves may have left the bounds behind.
        inserted->disableGraphBounds(1, 0);
        inserted->disableGraphBounds(0, 0);
    }
    if (isHere()) {
        insertHideGraphOf(*inserted);
    }
    return inserted;
}

QxGraph* QxDGraphManager::vRemoveGraph(QxGraph* graph) {
    if (graph == nullptr || graph == pQueryIntergraph() || graph->pOwnerGraphManager() != this) {
        return nullptr;
    }
    auto& drawn = static_cast<QxDGraph&>(*graph);
    const qx::internal::Ref alive(drawn);
    const MetaEdgeHold held(this);
    if (QxDGraph* const shown = partnerHere(drawn)) {
        removeGraph(shown);  // which takes this one along
        return drawn.ownerValid() == 0 ? &drawn : nullptr;
    }
    bringHiddenEdgesHome(drawn);
    if (graph == m_anchor) {
        showAnchor(pFindNewAnchorGraph());
    }
    MetaEdgeUpkeep::leaves(*static_cast<QxDGraph*>(graph));
    QxGraph* const removed = QxGraphManager::vRemoveGraph(graph);
    forgetFormerAnchor();
    if (removed != nullptr) {
        drawn.forgetVisibility();
        removeHideGraphOf(drawn);
    }
    if (removed != nullptr && removed == m_anchor) {
        showAnchor(pFirstGraph());  // a listener had made it the anchor graph again
    }
    if (removed == nullptr && graph->pOwnerGraphManager() == this) {
        MetaEdgeUpkeep::came(*static_cast<QxDGraph*>(graph));  // it stays
    }
    return removed;
}

int QxDGraphManager::vDiscardGraph(QxGraph* graph) {
    if (graph == nullptr || graph == pQueryIntergraph() || graph->pOwnerGraphManager() != this) {
        return 0;
    }
    const auto& drawn = static_cast<const QxDGraph&>(*graph);
    const qx::internal::Ref alive(drawn);
    if (QxDGraph* const shown = partnerHere(drawn)) {
        discardGraph(shown);
        return drawn.pOwnerGraphManager() != this ? 1 : 0;
    }
    discardHideGraphOf(drawn);
    return QxGraphManager::vDiscardGraph(graph);
}

int QxDGraphManager::vTransferTopology(QxGraphManager* manager) {
    auto* other = static_cast<QxDGraphManager*>(manager);
    if (other == nullptr || other == this || pFactory() == nullptr ||
        other->pFactory() != pFactory()) {
        return 0;
    }
    const qx::internal::Ref<QxDGraph> anchor(other->m_anchor);
    const MetaEdgeHold othersHeld(other);
    const MetaEdgeHold held(this);
    MetaEdgeUpkeep::everythingChanged(*other);
    MetaEdgeUpkeep::everythingChanged(*this);
    if (QxGraphManager::vTransferTopology(other) == 0) {
        return 0;
    }
    for (QxDGraph* graph : each<QxDGraph>(*pGraphList())) {
        graph->forgetVisibility();
    }
    other->forgetFormerAnchor();
    other->showAnchor(other->pFirstGraph());  // none, unless a listener has added it
    const bool isHere = anchor && anchor->pOwnerGraphManager() == this;
    showAnchor(m_anchor != nullptr ? m_anchor : isHere ? anchor.get() : pFirstGraph());
    return 1;
}

void QxDGraphManager::copyGraphManager(const QxGraphManager* source, int deep) {
    if (source == nullptr || source == this) {
        return;
    }
    const auto* other = static_cast<const QxDGraphManager*>(source);
    const MetaEdgeHold held(this);
    MetaEdgeUpkeep::everythingChanged(*this);
    compressMetaEdges(other->compressMetaEdges());
    reflexiveMetaEdgeReplacement(other->reflexiveMetaEdgeReplacement());
    ignoreConnectorsForMetaEdges(other->ignoreConnectorsForMetaEdges());
    QxGraphManager::copyGraphManager(source, deep);
    QxDGraph* anchor = nullptr;
    if (deep != 0 && levelNumber() == source->levelNumber()) {
        QxDListCell* mine = pGraphList()->pFirstCell();
        for (const QxDGraph* graph : each<QxDGraph>(*source->pGraphList())) {
            if (graph == other->m_anchor && mine != nullptr) {
                anchor = static_cast<QxDGraph*>(mine->pObject());
            }
            mine = mine != nullptr ? mine->pNextCell() : nullptr;
        }
    }
    showAnchor(anchor != nullptr ? anchor : pFirstGraph());
    updatesMetaEdges(other->updatesMetaEdges());
}

void QxDGraphManager::duplicateNesting(const QxGraphManager* source) {
    // Bounds first: nesting relations look at those of the graphs.
    if (levelNumber() == source->levelNumber()) {
        for (const QxDGraph* original : Snapshot<QxDGraph>(source->pGraphList())) {
            if (auto* twin = static_cast<QxDGraph*>(original->pIUserField())) {
                twin->calculateQuadTree();
                twin->calculateGraphBounds(0);
                // Insertion has switched the upkeep on; a duplicate keeps it as its source does.
                twin->needsUpdateGraphBounds(original->needsUpdateGraphBounds());
            }
        }
    }
    QxGraphManager::duplicateNesting(source);
    if (levelNumber() == source->levelNumber()) {
        const auto& original = static_cast<const QxDGraphManager&>(*source);
        duplicateNestingRelations(original);
        duplicateHideLinks(original);
    }
}

void QxDGraphManager::emptyTopology() {
    const MetaEdgeHold held(this);
    MetaEdgeUpkeep::everythingChanged(*this);
    QxGraphManager::emptyTopology();
    m_anchor = nullptr;
}

void QxDGraphManager::updateQuadTrees() {
    for (QxDGraph* graph : each<QxDGraph>(*pGraphList())) {
        graph->updateQuadTree();
    }
    if (QxDGraph* between = pQueryIntergraph()) {
        between->updateQuadTree();
    }
}

void QxDGraphManager::disableQuadTreeUpdates(int disable) {
    for (QxDGraph* graph : each<QxDGraph>(*pGraphList())) {
        graph->disableQuadTreeUpdates(disable);
    }
    if (QxDGraph* between = pQueryIntergraph()) {
        between->disableQuadTreeUpdates(disable);
    }
}

void QxDGraphManager::nullClonedObjectFields() {
    for (QxDGraph* graph : {m_anchor, pQueryIntergraph()}) {
        if (graph == nullptr) {
            continue;
        }
        graph->pClonedGraph(nullptr);
        for (QxDNode* node : each<QxDNode>(*graph->pNodeList())) {
            node->pClonedNode(nullptr);
        }
        for (const QxEdgeDList* list :
             {graph->pEdgeList(), graph->pDisconnectedEdgeList(), graph->pDeactivatedEdgeList()}) {
            for (QxDEdge* edge : each<QxDEdge>(*list)) {
                edge->pClonedEdge(nullptr);
            }
        }
    }
}

QxDGraph* QxDGraphManager::addGraph(int type) {
    return static_cast<QxDGraph*>(QxGraphManager::addGraph(type));
}

QxDGraph* QxDGraphManager::insertGraph(QxDGraph* graph) {
    return static_cast<QxDGraph*>(QxGraphManager::insertGraph(graph));
}

QxDGraph* QxDGraphManager::removeGraph(QxDGraph* graph) {
    return static_cast<QxDGraph*>(QxGraphManager::removeGraph(graph));
}

int QxDGraphManager::discardGraph(QxDGraph* graph) {
    return QxGraphManager::discardGraph(graph);
}

QxDEdge* QxDGraphManager::addEdge(QxDNode* source, QxDNode* target, int type) {
    return static_cast<QxDEdge*>(QxGraphManager::addEdge(source, target, type));
}

QxDEdge* QxDGraphManager::insertEdge(QxDEdge* edge, QxDNode* source, QxDNode* target) {
    return static_cast<QxDEdge*>(QxGraphManager::insertEdge(edge, source, target));
}

QxDEdge* QxDGraphManager::removeEdge(QxDEdge* edge) {
    return static_cast<QxDEdge*>(QxGraphManager::removeEdge(edge));
}

int QxDGraphManager::discardEdge(QxDEdge* edge) {
    return QxGraphManager::discardEdge(edge);
}

int QxDGraphManager::transferTopology(QxDGraphManager* manager) {
    return QxGraphManager::transferTopology(manager);
}

QxDGraph* QxDGraphManager::pFirstGraph() const {
    return static_cast<QxDGraph*>(QxGraphManager::pFirstGraph());
}

QxDGraph* QxDGraphManager::pLastGraph() const {
    return static_cast<QxDGraph*>(QxGraphManager::pLastGraph());
}

QxDGraph* QxDGraphManager::pIntergraph() {
    return static_cast<QxDGraph*>(QxGraphManager::pIntergraph());
}

QxDGraph* QxDGraphManager::pQueryIntergraph() const {
    return static_cast<QxDGraph*>(QxGraphManager::pQueryIntergraph());
}
