// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Unfolding: the contents of the fold graph, and what is hidden from it, get the coordinates that
// they will have, and then move into the graph of the folder as they are. Edges that led out of the
// fold graph come home last, when their ends lie where they will stay.

#include <unordered_map>

#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/drawing/internal/Extras.h"
#include "qx/drawing/path/internal/TakeBends.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/nesting/internal/Complexity.h"
#include "qx/nesting/internal/Folding.h"
#include "qx/nesting/internal/Frame.h"
#include "qx/nesting/internal/Hiding.h"
#include "qx/nesting/internal/MetaEdgeUpkeep.h"
#include "qx/nesting/internal/NestingMove.h"

namespace qx::internal {

namespace {

bool lieIn(const QxDNode* node, const QxDGraph* graph) {
    return node != nullptr && graph != nullptr && node->pOwnerGraph() == graph;
}

}  // namespace

Unfolding::Unfolding(QxDGraph& graph, QxDNode& folder, QxDGraph& foldGraph, bool keepHidden)
    : m_graph(graph), m_folder(folder), m_foldGraph(foldGraph), m_keepsHidden(keepHidden) {}

Unfolding::~Unfolding() = default;

void Unfolding::collect() {
    collectEdgesToOutside();
    m_outsideEdges = m_collected.edges().size();
    collectContents(*m_foldGraph);
    if (const QxDGraph* const hidden = m_foldGraph->pHideGraph()) {
        collectContents(*hidden);
    }
    for (std::size_t i = m_outsideEdges; i < m_collected.edges().size(); ++i) {
        QxDEdge* const edge = m_collected.edges()[i];
        const auto isInside = [](const QxDNode* end) {
            return end != nullptr && Collection::isMarked(end);
        };
        if (isInside(edge->pSourceNode()) && isInside(edge->pTargetNode())) {
            m_insideEdges.add(edge);
        }
    }
    m_collected.endMarks();
}

/// Those that lead to other nodes of the graph than the folder, and hidden ones that lead to what
/// is hidden from it.
void Unfolding::collectEdgesToOutside() {
    const QxDGraphManager* const manager = m_graph->pOwnerGraphManager();
    const auto leadsTo = [&](const QxDNode* end) {
        return end != m_folder.get() && lieIn(end, m_graph.get());
    };
    const auto isBetween = [&](const QxDEdge& edge) {
        return edge.pOwnerGraph() == manager->pQueryIntergraph();
    };
    m_collected.addEdges(m_foldGraph->pEnteringIntergraphEdgeList(), [&](const QxDEdge& edge) {
        return isBetween(edge) && leadsTo(edge.pSourceNode());
    });
    m_collected.addEdges(m_foldGraph->pLeavingIntergraphEdgeList(), [&](const QxDEdge& edge) {
        return isBetween(edge) && leadsTo(edge.pTargetNode());
    });
    if (const QxDGraph* const hidden = m_graph->pHideGraph()) {
        for (const QxDNode* node : each<QxDNode>(*m_foldGraph->pNodeList())) {
            m_collected.addEdges(node->pDisconnectedEdgeList(), [&](const QxDEdge& edge) {
                return lieIn(edge.pSourceNode(), hidden) || lieIn(edge.pTargetNode(), hidden);
            });
        }
    }
}

void Unfolding::collectContents(const QxDGraph& graph) {
    m_collected.addNodes(graph.pNodeList(), graph);
    for (const QxEdgeDList* list :
         {graph.pEdgeList(), graph.pDisconnectedEdgeList(), graph.pDeactivatedEdgeList()}) {
        m_collected.addEdges(list, [](const QxDEdge&) { return true; });
    }
}

void Unfolding::unfold() {
    const MetaEdgeHold heldMetaEdges(*m_graph);
    const Folding::Places places(*m_graph, *m_folder, m_collected.nodes());
    {
        const BoundsHold held(m_graph.get(), BoundsHold::OfAll);
        const BoundsHold heldInside(m_foldGraph.get(), BoundsHold::OfAll);
        const BetweenHold heldBetween(*m_graph);
        centerOnFolder();
        if (isStillPossible()) {
            moveHidden();
            m_graph->transferTopology(m_foldGraph.get());
        }
        bringEdgesHome();
    }
    m_foldGraph->refitAround(1);  // an expanded folder shows an empty graph now
    tell();
}

/// Listeners have heard of moves.
bool Unfolding::isStillPossible() const {
    return m_folder->pOwnerGraph() == m_graph.get() &&
           m_folder->pFoldGraph() == m_foldGraph.get() && Hiding::isPossible(*m_graph);
}

/// Gives everything in the fold graph the coordinates that it will have in the graph around: those
/// at which it is seen in an expanded folder, or such that it surrounds a collapsed one. Where
/// nothing has moved since it was folded, what has been hidden meanwhile counts, too: the group
/// comes back as it was.
void Unfolding::centerOnFolder() {
    QxRect covered;
    const bool isCovered = m_foldGraph->calculateGraphBounds(covered) != 0;
    QxPoint from = covered.center();
    QxPoint to = from;
    const auto folded = std::move(m_foldGraph->graphExtras().folded);
    if (m_folder->expanded() != 0) {
        m_foldGraph->expandedTransformPoint(m_graph.get(), to);
        if (m_foldGraph->isAnchorGraph() == 0) {
            m_foldGraph->vUpdateTransform(QxTransform());
        }
    } else if (folded != nullptr && folded->places == sumOfPlaces(*m_foldGraph)) {
        from = folded->center;
        to = m_folder->iCenter();
    } else if (isCovered) {
        to = m_folder->iCenter();
    }
    const std::int32_t dx = qx::saturatingSub(to.x(), from.x());
    const std::int32_t dy = qx::saturatingSub(to.y(), from.y());
    if (dx != 0 || dy != 0) {
        shiftEdgesBetween(dx, dy);
        shift(dx, dy);
    }
}

namespace {

void moveBends(const QxDEdge& edge, std::int32_t dx, std::int32_t dy) {
    const QxDGraph* const graph = edge.pOwnerGraph();
    for (QxPNode* bend : heldBends(edge)) {
        if (bend->pOwnerEdge() == &edge && edge.pOwnerGraph() == graph) {
            bend->ntMove(dx, dy);
        }
    }
}

/// Everything in a graph, seen from there: which of its nodes, hidden or not, holds a node that may
/// lie deeper.
class TopNodes {
public:
    explicit TopNodes(QxDGraph& graph) : m_graph(graph) {
        appendContents(graph, m_contents);
        for (const QxDGraph* inside : m_contents) {
            m_tops[inside] = topOf(*inside);
        }
    }
    const std::vector<QxDGraph*>& contents() const { return m_contents; }
    bool holds(const QxDNode* node) const {
        return node != nullptr && m_tops.count(node->pOwnerGraph()) != 0;
    }
    /// Whether both lie deeper, in one of its nodes.
    bool areInOneNode(const QxDNode& a, const QxDNode& b) const {
        const QxGraphMember* const top = m_tops.at(a.pOwnerGraph());
        return top != nullptr && top == m_tops.at(b.pOwnerGraph());
    }

private:
    /// Null for the graph itself.
    const QxGraphMember* topOf(const QxDGraph& inside) const {
        const QxDGraph* const shown = frameOf(&inside);
        if (shown == &m_graph) {
            return nullptr;
        }
        const QxGraphMember* const parent = shown->pParentGraphMember();
        const QxGraphMember* const top = m_tops.at(static_cast<QxDGraph*>(parent->pOwnerGraph()));
        return top != nullptr ? top : parent;
    }

    const QxDGraph& m_graph;
    std::vector<QxDGraph*> m_contents;
    std::unordered_map<const QxDGraph*, const QxGraphMember*> m_tops;
};

}  // namespace

/// Edges between graphs that lie in what unfolds move with it. Those within one of its nodes are
/// taken along by that.
void Unfolding::shiftEdgesBetween(std::int32_t dx, std::int32_t dy) const {
    const QxDGraph* const between = m_graph->pOwnerGraphManager()->pQueryIntergraph();
    if (between == nullptr || between->numberOfAllEdges() == 0) {
        return;
    }
    Snapshot<QxDEdge> edges;
    const TopNodes tops(*m_foldGraph);
    for (const QxDGraph* graph : tops.contents()) {
        for (const QxEdgeDList* list :
             {graph->pLeavingIntergraphEdgeList(), graph->pUnconnectedIntergraphEdgeList()}) {
            for (QxDEdge* edge : each<QxDEdge>(*list)) {
                if (lieIn(edge->pSourceNode(), graph) && tops.holds(edge->pTargetNode()) &&
                    !tops.areInOneNode(*edge->pSourceNode(), *edge->pTargetNode())) {
                    edges.add(edge);
                }
            }
        }
    }
    const FrameMap outward(m_graph.get(), between);
    for (const QxDEdge* edge : edges) {
        if (edge->pOwnerGraph() == between) {
            moveBends(*edge, roundedShift(dx * outward.scaleX()),
                      roundedShift(dy * outward.scaleY()));
        }
    }
}

void Unfolding::shift(std::int32_t dx, std::int32_t dy) const {
    for (QxDNode* node : m_collected.nodes()) {
        if (frameOf(node->pOwnerGraph()) == m_foldGraph.get()) {
            const QxPoint oldCenter = node->iCenter();
            node->ntMove(dx, dy);
            node->actOnMoveTo(oldCenter);
        }
    }
    for (const QxDEdge* edge : m_insideEdges) {
        if (frameOf(edge->pOwnerGraph()) == m_foldGraph.get()) {
            moveBends(*edge, dx, dy);
        }
    }
}

void Unfolding::moveHidden() {
    const Ref hidden(m_foldGraph->pHideGraph());
    if (!hidden) {
        return;
    }
    if (!m_keepsHidden) {
        // Listeners hear of it when all is over.
        m_unhiding = std::make_unique<Hiding>(*m_foldGraph);
        m_unhiding->collectToShow(hidden->pNodeList(), hidden->pDisconnectedEdgeList(), true);
        m_tellsShown = m_unhiding->show();
    }
    // What cannot show, for want of an end, stays hidden.
    const bool isLeft = hidden->numberOfNodes() > 0 || hidden->numberOfAllEdges() > 0;
    QxDGraph* const hideGraph = isLeft ? m_graph->pNewHideGraph() : nullptr;
    if (hideGraph != nullptr) {
        hideGraph->disableQuadTree(1);
        hideGraph->transferTopology(hidden.get());
    }
    hidden->discardEmptyHideGraph();
}

void Unfolding::bringEdgesHome() const {
    for (std::size_t i = 0; i < m_outsideEdges; ++i) {
        EdgeHome::bring(*m_collected.edges()[i]);
    }
    EdgeHome::bringEdgesAt(m_collected.nodes());
}

void Unfolding::tell() const {
    const auto hasArrived = [&](const QxDGraph* graph) {
        return graph != nullptr && graph != m_foldGraph.get();
    };
    if (m_tellsShown) {
        m_unhiding->tellShown();
    }
    for (QxDNode* node : m_collected.nodes()) {
        if (hasArrived(node->pOwnerGraph())) {
            fireComplexityChange(*node, NodeUnfolded);
        }
    }
    for (QxDEdge* edge : m_collected.edges()) {
        if (hasArrived(edge->pOwnerGraph())) {
            fireComplexityChange(*edge, EdgeUnfolded);
        }
    }
}

}  // namespace qx::internal
