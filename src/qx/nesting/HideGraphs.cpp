// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Hide graphs: how they come, and how they go.
//
// A graph and its hide graph belong together. They come into a manager and leave it as a pair; who
// takes one out owns the ordinary graph, and that owns its hide graph. A hide graph comes with the
// first hidden object and goes with the last one; listeners hear of neither.

#include <utility>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/foundation/util/internal/Ref.h"
#include "qx/nesting/internal/Complexity.h"
#include "qx/nesting/internal/EdgeHome.h"
#include "qx/nesting/internal/MetaEdgeUpkeep.h"

using qx::internal::each;
using qx::internal::EdgeHome;
using qx::internal::MovingEdge;
using qx::internal::Ref;
using qx::internal::Silence;
using qx::internal::Snapshot;

// --- The link

QxDGraph* QxDGraph::pNewHideGraph() {
    QxDGraphManager* const manager = pOwnerGraphManager();
    if (isHideGraph() != 0 || isIntergraph() != 0 || manager == nullptr) {
        return nullptr;
    }
    if (m_hideLink == nullptr) {
        const Silence silent(*this);
        QxDGraph* const copy = pClonedGraph();
        QxDGraph* const graph = cloneAttributes();
        pClonedGraph(copy);  // this is none
        if (manager->insertGraph(graph) == nullptr) {
            graph->vRelease();
        } else {
            setHideLink(graph);
        }
    } else if (m_hideLink->pOwnerGraphManager() != manager) {
        manager->insertGraph(m_hideLink);
    }
    const bool isThere = m_hideLink != nullptr && m_hideLink->pOwnerGraphManager() == manager;
    return isThere ? m_hideLink : nullptr;
}

namespace {

/// Whether `graph` is `around` or lies, hidden or not, somewhere in it.
bool liesIn(const QxDGraph* graph, const QxDGraph& around) {
    while (graph != nullptr && graph != &around) {
        const QxGraphMember* parent = graph->pParentGraphMember();
        graph = parent != nullptr ? static_cast<const QxDGraph*>(parent->pOwnerGraph())
                                  : graph->pHideFromGraph();
    }
    return graph != nullptr;
}

/// Whether the graph may hide what comes from `shown`.
bool canHideFor(const QxDGraph& shown, const QxDGraph& graph) {
    return graph.pHideGraph() == nullptr && graph.isHideGraph() == 0 && graph.isIntergraph() == 0 &&
           graph.isChildGraph() == 0 && !liesIn(&shown, graph) &&
           graph.pUnverifiedFactory() == shown.pUnverifiedFactory() &&
           (graph.pOwnerGraphManager() == nullptr ||
            graph.pOwnerGraphManager() == shown.pOwnerGraphManager());
}

}  // namespace

void QxDGraph::setHideLink(QxDGraph* hideGraph) {
    if (hideGraph == nullptr || hideGraph == this || isHideGraph() != 0 || isIntergraph() != 0 ||
        m_hideLink != nullptr || !canHideFor(*this, *hideGraph)) {
        return;
    }
    const Ref alive(*this);
    const Ref hideGraphAlive(*hideGraph);
    m_hideLink = hideGraph;
    hideGraph->m_hideLink = this;
    hideGraph->setFlag(qx::flags::GraphHide, 1);
    if (pOwnerGraphManager() != nullptr && hideGraph->numberOfNodes() > 0) {
        qx::internal::MetaEdgeUpkeep::everythingChanged(*pOwnerGraphManager());
    }
    hideGraph->needsUpdateGraphBounds(0);
    hideGraph->disableQuadTree(1);
    QxEdgeDList edges;
    hideGraph->buildAllEdgeList(&edges);
    for (QxDEdge* edge : Snapshot<QxDEdge>(&edges)) {
        if (edge->pOwnerGraph() == hideGraph) {
            MovingEdge::settleAsHidden(*edge);
        }
    }
    if (hideGraph->isAnchorGraph() != 0) {
        pOwnerGraphManager()->pAnchorGraph(this);
    }
}

void QxDGraph::endHideLink() {
    if (QxDGraph* const linked = std::exchange(m_hideLink, nullptr)) {
        linked->m_hideLink = nullptr;
    }
}

void QxDGraph::discardEmptyHideGraph() {
    QxDGraphManager* const manager = pOwnerGraphManager();
    if (pHideFromGraph() == nullptr || manager == nullptr || numberOfNodes() > 0 ||
        numberOfAllEdges() > 0) {
        return;
    }
    const Ref alive(*this);
    const Silence silent(*this);
    endHideLink();
    setFlag(qx::flags::GraphHide, 0);
    manager->discardGraph(this);
}

void QxDGraph::partFromHideLink() {
    QxDGraph* const hidden = pHideGraph();
    endHideLink();
    if (hidden == nullptr) {
        return;
    }
    if (QxDGraphManager* const manager = hidden->pOwnerGraphManager()) {
        manager->discardGraph(hidden);
    } else {
        hidden->actOnDiscard();
        hidden->vRelease();
    }
}

// --- What happens to a graph happens to its hide graph

QxDGraph* QxDGraphManager::partnerHere(const QxDGraph& graph) const {
    QxDGraph* const shown = graph.pHideFromGraph();
    return shown != nullptr && shown->pOwnerGraphManager() == this ? shown : nullptr;
}

void QxDGraphManager::insertHideGraphOf(const QxDGraph& graph) {
    QxDGraph* const hidden = graph.pHideGraph();
    if (hidden == nullptr || hidden->pOwnerGraphManager() == this) {
        return;
    }
    if (QxDGraphManager* const other = hidden->pOwnerGraphManager()) {
        other->QxGraphManager::vRemoveGraph(hidden);
    }
    QxGraphManager::vInsertGraph(hidden);
}

/// Edges between the graphs of others leave the hide graph before it goes.
void QxDGraphManager::bringHiddenEdgesHome(const QxDGraph& graph) {
    const Ref hidden(graph.pHideGraph());
    if (hidden && hidden->pOwnerGraphManager() == this) {
        for (QxDEdge* edge : Snapshot<QxDEdge>(hidden->pDisconnectedEdgeList())) {
            if (edge->pOwnerGraph() == hidden.get()) {
                EdgeHome::bring(*edge);
            }
        }
    }
}

void QxDGraphManager::removeHideGraphOf(const QxDGraph& graph) {
    QxDGraph* const hidden = graph.pHideGraph();
    if (hidden != nullptr && hidden->pOwnerGraphManager() == this) {
        QxGraphManager::vRemoveGraph(hidden);
    }
}

void QxDGraphManager::discardHideGraphOf(const QxDGraph& graph) {
    QxDGraph* const hidden = graph.pHideGraph();
    if (hidden != nullptr && hidden->pOwnerGraphManager() == this) {
        hidden->endHideLink();
        QxGraphManager::vDiscardGraph(hidden);
    }
}

void QxDGraphManager::duplicateHideLinks(const QxDGraphManager& source) {
    for (const QxDGraph* graph : Snapshot<QxDGraph>(source.pGraphList())) {
        const QxDGraph* const hidden = graph->pHideGraph();
        auto* const twin = static_cast<QxDGraph*>(graph->pIUserField());
        auto* const hiddenTwin =
            hidden != nullptr ? static_cast<QxDGraph*>(hidden->pIUserField()) : nullptr;
        if (twin == nullptr || hiddenTwin == nullptr) {
            continue;
        }
        twin->setHideLink(hiddenTwin);
        for (const QxDEdge* edge : each<QxDEdge>(*hidden->pDisconnectedEdgeList())) {
            auto* const edgeTwin = static_cast<QxDEdge*>(edge->pIUserField());
            if (edgeTwin != nullptr && edgeTwin->hidden() != 0) {
                MovingEdge::copyReturn(*edge, *edgeTwin);
            }
        }
    }
}
