// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Hiding and unhiding.
//
// Hidden objects move into the hide graph, where edges are disconnected; the bits
// EdgeReturnsDisconnected and EdgeReturnsDeactivated remember what they were besides connected.
// Everything is found at the nodes concerned, never by a walk over the graph or the hide graph.
// Whatever moves, the edges at it end up where EdgeHome puts them, reported or not: so an edge
// whose ends have been hidden, folded and moved in any order comes back when they do.

#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/nesting/internal/Complexity.h"
#include "qx/nesting/internal/EdgeHome.h"
#include "qx/nesting/internal/Hiding.h"
#include "qx/nesting/internal/MetaEdgeUpkeep.h"

namespace qx::internal {

namespace {

bool isEmptyGraph(const QxDGraph& graph) {
    return graph.pNodeList()->isEmpty() != 0 && graph.pEdgeList()->isEmpty() != 0;
}

bool hasEnds(const QxDEdge& edge) {
    return edge.pSourceNode() != nullptr && edge.pTargetNode() != nullptr;
}

/// Whether the end will show, or might: it lies in a graph of the drawing.
bool isPlaced(const QxDNode* end, const QxDGraph& graph) {
    const QxDGraph* const around = end != nullptr ? end->pOwnerGraph() : nullptr;
    return around != nullptr && around->pOwnerGraphManager() == graph.pOwnerGraphManager();
}

bool staysHidden(const QxDNode* end) {
    return end->hidden() != 0 && !Collection::isMarked(end);
}

/// Whether an edge can leave its hide graph; with both ends hidden it would come nowhere.
bool canShow(const QxDEdge& edge, const QxDGraph& graph) {
    return isPlaced(edge.pSourceNode(), graph) && isPlaced(edge.pTargetNode(), graph) &&
           !(staysHidden(edge.pSourceNode()) && staysHidden(edge.pTargetNode()));
}

}  // namespace

bool Hiding::isPossible(const QxDGraph& graph) {
    return graph.pOwnerGraphManager() != nullptr && graph.isHideGraph() == 0 &&
           graph.isIntergraph() == 0;
}

void Hiding::collectToHide(const QxDList* nodes, const QxDList* edges) {
    if (isPossible(*m_graph)) {
        m_collected.addNodes(nodes, *m_graph);
        m_collected.addEdges(edges, [&](const QxDEdge& edge) {
            return edge.pOwnerGraph() == m_graph.get() && hasEnds(edge);
        });
        m_collected.addEdgesAtNodes(*m_graph, hasEnds);
    }
    m_collected.endMarks();
}

void Hiding::collectToShow(const QxDList* nodes, const QxDList* edges, bool withIncidentEdges) {
    const QxDGraph* const hideGraph = isPossible(*m_graph) ? m_graph->pHideGraph() : nullptr;
    if (hideGraph != nullptr) {
        m_collected.addNodes(nodes, *hideGraph);
        m_collected.addEdges(edges, [&](const QxDEdge& edge) {
            return edge.pOwnerGraph() == hideGraph && canShow(edge, *m_graph);
        });
    }
    if (hideGraph != nullptr && withIncidentEdges) {
        m_collected.addEdgesAtNodes(*hideGraph, [&](const QxDEdge& edge) {
            return canShow(edge, *m_graph) && !staysHidden(edge.pSourceNode()) &&
                   !staysHidden(edge.pTargetNode());
        });
    }
    m_collected.endMarks();
}

void Hiding::settleBounds(bool isEmpty) {
    if (m_graph->keepsBounds()) {
        m_graph->calculateGraphBounds(isEmpty && m_graph->isAnchorGraph() == 0 ? 1 : 0);
    }
}

void Hiding::hide() {
    const MetaEdgeHold heldMetaEdges(*m_graph);
    const Ref hideGraph(m_collected.isEmpty() ? nullptr : m_graph->pNewHideGraph());
    if (!hideGraph) {
        return;
    }
    hideGraph->disableQuadTree(1);
    const BoundsHold held(m_graph.get(), BoundsHold::OfAll);
    const BetweenHold heldBetween(*m_graph);
    if (conceal(*hideGraph)) {
        tellHidden();
    }
    settleBounds(isEmptyGraph(*m_graph));
    hideGraph->discardEmptyHideGraph();
}

/// The moves of hide; whether listeners are to be told.
bool Hiding::conceal(QxDGraph& hideGraph) {
    const Silence silent(*m_graph);
    std::vector<MovingEdge> moving;
    moving.reserve(m_collected.edges().size());
    for (QxDEdge* edge : m_collected.edges()) {
        MovingEdge& one = moving.emplace_back(*edge);
        if (!one.take()) {
            moving.pop_back();
        }
    }
    for (QxDNode* node : m_collected.nodes()) {
        moveNode(*node, *m_graph, hideGraph);
    }
    for (MovingEdge& edge : moving) {
        edge.put(true);
    }
    EdgeHome::bringEdgesAt(m_collected.nodes());
    return silent.wasHeard();
}

void Hiding::tellHidden() const {
    for (QxDEdge* edge : m_collected.edges()) {
        if (edge->hidden() != 0) {
            fireComplexityChange(*edge, EdgeHidden);
        }
    }
    for (QxDNode* node : m_collected.nodes()) {
        if (node->hidden() != 0) {
            fireComplexityChange(*node, NodeHidden);
        }
    }
}

void Hiding::unhide() {
    const Ref hideGraph(isPossible(*m_graph) ? m_graph->pHideGraph() : nullptr);
    if (!hideGraph) {
        return;
    }
    const MetaEdgeHold heldMetaEdges(*m_graph);
    const bool wasEmpty = isEmptyGraph(*m_graph);
    {
        const BoundsHold held(m_graph.get(), BoundsHold::OfAll);
        const BetweenHold heldBetween(*m_graph);
        if (show()) {
            tellShown();
        }
        settleBounds(wasEmpty);
    }
    hideGraph->discardEmptyHideGraph();
}

bool Hiding::show() {
    const Ref hideGraph(m_graph->pHideGraph());
    if (!hideGraph) {
        return false;
    }
    const Silence silent(*m_graph);
    std::vector<MovingEdge> moving;
    moving.reserve(m_collected.edges().size());
    for (QxDEdge* edge : m_collected.edges()) {
        moving.emplace_back(*edge);  // before its ends move, which may disconnect it
    }
    for (QxDNode* node : m_collected.nodes()) {
        if (moveNode(*node, *hideGraph, *m_graph)) {
            showEdgesOf(*node, m_shownEdges);
        }
    }
    for (MovingEdge& edge : moving) {
        if (canShow(edge.edge(), *m_graph) && edge.take() && edge.put(false)) {
            m_shownEdges.add(&edge.edge());
        }
    }
    EdgeHome::bringEdgesAt(m_collected.nodes());
    return silent.wasHeard();
}

/// The edges between graphs at a node that has come back which lie within its graph now.
void Hiding::showEdgesOf(const QxDNode& node, Snapshot<QxDEdge>& shown) const {
    const auto isBetween = [](const QxDEdge& edge) { return edge.intergraphEdge() != 0; };
    for (QxDEdge* edge : Snapshot<QxDEdge>({node.pInEdgeList(), node.pOutEdgeList()}, isBetween)) {
        const bool isWithin = isBetween(*edge) && EdgeHome(*edge).pQueryGraph() == m_graph.get();
        if (isWithin && EdgeHome::bring(*edge)) {
            shown.add(edge);
        }
    }
}

void Hiding::tellShown() const {
    for (QxDEdge* edge : m_shownEdges) {
        if (edge->ownerValid() != 0 && edge->hidden() == 0) {
            fireComplexityChange(*edge, EdgeUnhidden);
        }
    }
    for (QxDNode* node : m_collected.nodes()) {
        if (node->ownerValid() != 0 && node->hidden() == 0) {
            fireComplexityChange(*node, NodeUnhidden);
        }
    }
}

}  // namespace qx::internal

using qx::internal::Hiding;

void QxDGraph::collectListsToBeHidden(const QxDNodeDList* nodes, const QxDEdgeDList* edges,
                                      QxDNodeDList& hiddenNodes, QxDEdgeDList& hiddenEdges) const {
    Hiding hiding(const_cast<QxDGraph&>(*this));  // nothing is changed by collecting
    hiding.collectToHide(nodes, edges);
    hiding.collected().appendTo(&hiddenNodes, &hiddenEdges);
}

void QxDGraph::collectListsToBeUnhidden(const QxDNodeDList* nodes, const QxDEdgeDList* edges,
                                        QxDNodeDList& unhiddenNodes, QxDEdgeDList& unhiddenEdges,
                                        int withIncidentEdges) const {
    Hiding hiding(const_cast<QxDGraph&>(*this));
    hiding.collectToShow(nodes, edges, withIncidentEdges != 0);
    hiding.collected().appendTo(&unhiddenNodes, &unhiddenEdges);
}

void QxDGraph::hide(const QxDNodeDList* nodes, const QxDEdgeDList* edges,
                    QxDNodeDList* hiddenNodeList, QxDEdgeDList* hiddenEdgeList) {
    if (nodes != nullptr) {
        for (const QxDNode* node : qx::internal::each<QxDNode>(*nodes)) {
            fetchEdgesAt(*node);
        }
    }
    Hiding hiding(*this);
    hiding.collectToHide(nodes, edges);
    hiding.hide();
    hiding.collected().listInto(hiddenNodeList, hiddenEdgeList);
}

void QxDGraph::unhide(const QxDNodeDList* nodes, const QxDEdgeDList* edges,
                      QxDNodeDList* unhiddenNodeList, QxDEdgeDList* unhiddenEdgeList,
                      int withIncidentEdges) {
    Hiding hiding(*this);
    if (nodes != nullptr || edges != nullptr) {
        hiding.collectToShow(nodes, edges, withIncidentEdges != 0);
        hiding.unhide();
    }
    hiding.collected().listInto(unhiddenNodeList, unhiddenEdgeList);
}

void QxDGraph::unhideAll() {
    if (const QxDGraph* hidden = pHideGraph()) {
        Hiding hiding(*this);
        hiding.collectToShow(hidden->pNodeList(), hidden->pDisconnectedEdgeList(), true);
        hiding.unhide();
    }
}

int QxDGraph::hasHiddenNodes() const {
    const QxDGraph* hidden = pHideGraph();
    return hidden != nullptr && hidden->numberOfNodes() > 0 ? 1 : 0;
}

int QxDGraph::hasHiddenEdges() const {
    const QxDGraph* hidden = pHideGraph();
    return hidden != nullptr && hidden->numberOfAllEdges() > 0 ? 1 : 0;
}

int QxDGraph::containsHideGraphs() const {
    if (pHideGraph() != nullptr) {
        return 1;
    }
    QxDGraphDList nested;
    buildAllNestedGraphList(nested);
    for (const QxDGraph* graph : qx::internal::each<QxDGraph>(nested)) {
        if (graph->pHideGraph() != nullptr) {
            return 1;
        }
    }
    return 0;
}
