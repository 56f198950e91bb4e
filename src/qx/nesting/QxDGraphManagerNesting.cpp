// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// The nesting of a whole drawing: its anchor graph, what shows, and what lies in what.

#include <vector>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxPNode.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/drawing/bounds/internal/Coverage.h"
#include "qx/drawing/path/internal/TakeBends.h"
#include "qx/events/internal/FireDrawingChange.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/foundation/util/internal/Ref.h"
#include "qx/nesting/QxDChildGraphForest.h"
#include "qx/nesting/QxDChildGraphForestEdge.h"
#include "qx/nesting/QxDChildGraphForestNode.h"
#include "qx/nesting/QxExpandedNodeExtension.h"
#include "qx/nesting/internal/ManagerExtras.h"

using qx::internal::each;
using qx::internal::ManagerExtras;
using qx::internal::Ref;
using qx::internal::Snapshot;

QxChildGraphForest* QxDGraphManager::vNewChildGraphForest() {
    return new QxDChildGraphForest(this);
}

QxDChildGraphForest* QxDGraphManager::pChildGraphForest() const {
    return static_cast<QxDChildGraphForest*>(QxGraphManager::pChildGraphForest());
}

qx::internal::GraphObjectExtras* QxDGraphManager::vNewExtras() const {
    return new ManagerExtras;
}

ManagerExtras& QxDGraphManager::managerExtras() {
    return static_cast<ManagerExtras&>(extras());
}

const ManagerExtras* QxDGraphManager::pQueryManagerExtras() const {
    return static_cast<const ManagerExtras*>(pQueryExtras());
}

// --- What shows

int QxDGraphManager::nestedInAnchorGraph(const QxDGraph* graph) const {
    // Up to the first graph that knows, then down again: each learns it once for each nesting.
    const QxDGraph* known = graph;
    while (known != nullptr && known != m_anchor && known->m_visibilityStamp != m_nestingStamp) {
        known = known->pNestedWithinGraph();
    }
    const bool shows = known != nullptr && (known == m_anchor || known->m_wasVisible);
    for (; graph != known; graph = graph->pNestedWithinGraph()) {
        graph->m_visibilityStamp = m_nestingStamp;
        graph->m_wasVisible = shows;
    }
    return shows ? 1 : 0;
}

QxDGraph* QxDGraphManager::pNearestCommonNestedGraph(const QxDGraph* first,
                                                     const QxDGraph* second) const {
    if (first == nullptr || second == nullptr) {
        return nullptr;
    }
    const QxDChildGraphForestNode* common = pChildGraphForest()->pLeastCommonNestedAncestor(
        first->pChildGraphForestNode(), second->pChildGraphForestNode());
    return common != nullptr ? common->pGraph() : nullptr;
}

int QxDGraphManager::containsNestedGraphs() const {
    for (const auto* relation : each<QxDChildGraphForestEdge>(*pChildGraphForest()->pEdgeList())) {
        if (relation->hasExpandedNodeExtension() != 0) {
            return 1;
        }
    }
    return 0;
}

int QxDGraphManager::containsHideGraphs() const {
    for (const QxDGraph* graph : each<QxDGraph>(*pGraphList())) {
        if (graph->isHideGraph() != 0) {
            return 1;
        }
    }
    return 0;
}

int QxDGraphManager::containsFoldGraphs() const {
    for (const auto* relation : each<QxDChildGraphForestEdge>(*pChildGraphForest()->pEdgeList())) {
        const QxDNode* node = relation->pNode();
        if (node != nullptr && node->isFolderNode() != 0) {
            return 1;
        }
    }
    return 0;
}

// --- Expanding and collapsing everything

void QxDGraphManager::expandAll() {
    const qx::internal::MetaEdgeHold held(this);
    for (const auto* relation :
         Snapshot<QxDChildGraphForestEdge>(pChildGraphForest()->pEdgeList())) {
        QxDNode* node = relation->pNode();
        if (node != nullptr && node->collapsed() != 0) {
            node->expand();
        }
    }
}

void QxDGraphManager::collapseAll() {
    const qx::internal::MetaEdgeHold held(this);
    for (const auto* relation :
         Snapshot<QxDChildGraphForestEdge>(pChildGraphForest()->pEdgeList())) {
        QxDNode* node = relation->pNode();
        if (node != nullptr && node->expanded() != 0) {
            node->collapse();
        }
    }
}

namespace {

/// The graph, and all child graphs below it.
Snapshot<QxDGraph> withAllChildGraphs(QxDGraph* graph) {
    QxGraphDList graphs;
    graph->buildAllChildGraphList(&graphs);
    QxGraphDList all;
    all.appendGraph(graph);
    for (QxDGraph* child : each<QxDGraph>(graphs)) {
        all.appendGraph(child);
    }
    return Snapshot<QxDGraph>(&all);
}

}  // namespace

void QxDGraphManager::expandAll(QxDGraph* startGraph) {
    const qx::internal::MetaEdgeHold held(this);
    if (startGraph != nullptr && startGraph->pOwnerGraphManager() == this) {
        for (QxDGraph* graph : withAllChildGraphs(startGraph)) {
            graph->expandAll();
        }
    }
}

void QxDGraphManager::collapseAll(QxDGraph* startGraph) {
    const qx::internal::MetaEdgeHold held(this);
    if (startGraph != nullptr && startGraph->pOwnerGraphManager() == this) {
        for (QxDGraph* graph : withAllChildGraphs(startGraph)) {
            graph->collapseAll();
        }
    }
}

namespace {

/// The edges between graphs last, the anchor graph before them, inner graphs before outer ones.
Snapshot<QxDGraph> shownInnerFirst(const QxDGraphManager& manager) {
    QxDGraphDList outerFirst;
    if (QxDGraph* between = manager.pQueryIntergraph()) {
        outerFirst.appendGraph(between);
    }
    if (QxDGraph* anchor = manager.pAnchorGraph()) {
        outerFirst.appendGraph(anchor);
        anchor->buildAllNestedGraphList(outerFirst);
    }
    QxDGraphDList innerFirst;
    for (QxDListCell* cell = outerFirst.pLastCell(); cell != nullptr;
         cell = cell->pPreviousCell()) {
        innerFirst.appendObject(cell->pObject());
    }
    return Snapshot<QxDGraph>(&innerFirst);
}

}  // namespace

void QxDGraphManager::calculateGraphBounds() {
    for (QxDGraph* graph : shownInnerFirst(*this)) {
        if (graph->pOwnerGraphManager() == this) {
            graph->calculateGraphBounds(0);
        }
    }
}

void QxDGraphManager::refreshShownBounds() {
    for (QxDGraph* graph : shownInnerFirst(*this)) {
        if (graph->pOwnerGraphManager() == this) {
            graph->refreshGraphBounds();
        }
    }
}

// --- The anchor graph

QxDGraph* QxDGraphManager::pAnchorGraph(QxDGraph* graph) {
    QxDGraph* const wanted =
        graph != nullptr && graph->isHideGraph() != 0 ? graph->pHideFromGraph() : graph;
    const bool isAccepted =
        wanted == nullptr || (wanted->pOwnerGraphManager() == this && wanted->isIntergraph() == 0);
    if (isAccepted && wanted != m_anchor) {
        showAnchor(wanted);
    }
    return m_anchor;
}

void QxDGraphManager::showAnchor(QxDGraph* graph) {
    if (graph != nullptr && graph->isHideGraph() != 0) {
        graph = graph->pHideFromGraph();
    }
    QxDGraph* const old = m_anchor;
    const Ref alive(*this);
    const Ref<QxDGraph> oldAlive(old);
    const Ref<QxDGraph> newAlive(graph);
    const Ref<QxDGraph> between(pQueryIntergraph());
    {
        const qx::internal::BoundsHold held(between.get());
        if (between && old != nullptr) {
            managerExtras().formerAnchor = old->pOwnerGraphManager() == this ? old : nullptr;
        }
        m_anchor = graph;  // before listeners hear of bends, and may remove the graph
        nestingChanged();
        translateIntergraphCoordinates(graph);
        if (between && graph != nullptr && graph == m_anchor) {
            between->vUpdateTransform(*graph->pTransform());
        }
        if (between) {
            qx::internal::Coverage::allChanged(*between);
        }
    }
    if (old != nullptr && old != graph && old->pOwnerGraphManager() == this) {
        old->disableNestingGraphBoundsAndQuadTree(1, 0);
    }
    if (old == nullptr && graph != nullptr && graph->hasFlag(qx::flags::GraphResting) == 0) {
        refreshShownBounds();  // a first graph, or a copy of a drawing: nothing was out of sight
    } else if (graph != nullptr && m_anchor == graph) {
        graph->disableNestingGraphBoundsAndQuadTree(0, 0);
    }
    if (between) {
        if (isReading() == 0) {
            for (QxDEdge* edge : Snapshot<QxDEdge>(between->pEdgeList())) {
                edge->repairOrthogonalRouting();
            }
        }
        between->refreshGraphBounds();
    }
    if (graph != old && graph == m_anchor) {
        qx::internal::fireDrawingChange(*this, AnchorGraphChanged, [&] {
            return new QxDrawingChangeEventData(this, old, graph);
        });
    }
}

void QxDGraphManager::translateIntergraphCoordinates(QxDGraph* newAnchor) {
    const QxDGraph* between = pQueryIntergraph();
    if (between == nullptr) {
        return;
    }
    QxDGraph* const former = managerExtras().formerAnchor;
    if (newAnchor == nullptr || former == nullptr || newAnchor == former ||
        newAnchor->pOwnerGraphManager() != this) {
        return;
    }
    double offsetX = 0.0;
    double scaleX = 1.0;
    double offsetY = 0.0;
    double scaleY = 1.0;
    newAnchor->getTransformCoef(former, offsetX, scaleX, offsetY, scaleY);
    managerExtras().formerAnchor = nullptr;
    QxEdgeDList edges;
    between->buildAllEdgeList(&edges);
    for (const QxDEdge* edge : Snapshot<QxDEdge>(&edges)) {
        for (QxPNode* bend : qx::internal::heldBends(*edge)) {
            const QxPoint p = bend->iCenter();
            if (bend->pOwnerEdge() == edge && edge->pOwnerGraph() == between) {
                bend->ntMoveTo(qx::floorHalfUp(p.x() * scaleX + offsetX),
                               qx::floorHalfUp(p.y() * scaleY + offsetY));
            }
        }
    }
}

void QxDGraphManager::forgetFormerAnchor() {
    const ManagerExtras* extras = pQueryManagerExtras();
    if (extras != nullptr && extras->formerAnchor != nullptr &&
        extras->formerAnchor->pOwnerGraphManager() != this) {
        managerExtras().formerAnchor = nullptr;
    }
}

QxDGraph* QxDGraphManager::pFindNewAnchorGraph() const {
    if (m_anchor == nullptr || numberOfGraphs() < 2) {
        return nullptr;
    }
    const auto suits = [this](const QxDGraph* graph) {
        return graph != m_anchor && graph->isHideGraph() == 0 && graph->isIntergraph() == 0;
    };
    QxDGraph* around = m_anchor->pNestedWithinGraph();
    if (around != nullptr && suits(around)) {
        return around;
    }
    QxDGraphDList inside;
    m_anchor->buildNestedGraphList(inside);
    for (QxDGraph* graph : each<QxDGraph>(inside)) {
        if (suits(graph)) {
            return graph;
        }
    }
    for (QxDGraph* graph : each<QxDGraph>(*pGraphList())) {
        if (suits(graph) && graph->nested() == 0 && graph->isFoldGraph() == 0) {
            return graph;
        }
    }
    return nullptr;
}

// --- Copies

void QxDGraphManager::duplicateNestingRelations(const QxDGraphManager& source) {
    for (const auto* relation :
         Snapshot<QxDChildGraphForestEdge>(source.pChildGraphForest()->pEdgeList())) {
        const QxDNode* original = relation->pNode();
        const QxDGraph* nested = relation->pChildGraph();
        if (original == nullptr || nested == nullptr || original->expanded() == 0) {
            continue;
        }
        auto* node = static_cast<QxDNode*>(original->pIUserField());
        auto* child = static_cast<QxDGraph*>(nested->pIUserField());
        if (node != nullptr && child != nullptr && node->pChildGraph() == child) {
            node->expandLike(*original, *child);
        }
    }
}
