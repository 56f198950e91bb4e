// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Folding; what undoes it stands in Unfolding.cpp.
//
// The nodes keep their coordinates, which are those of the graph around as long as the folder is
// collapsed. Edges that are not hidden are out of their graph while the nodes move, so that they
// keep their state; hidden ones are disconnected anyway and follow afterwards.

#include <algorithm>

#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/drawing/internal/Extras.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/nesting/QxDChildGraphForest.h"
#include "qx/nesting/QxDChildGraphForestEdge.h"
#include "qx/nesting/QxDChildGraphForestNode.h"
#include "qx/nesting/internal/Complexity.h"
#include "qx/nesting/internal/Folding.h"
#include "qx/nesting/internal/Frame.h"
#include "qx/nesting/internal/Hiding.h"
#include "qx/nesting/internal/MetaEdgeUpkeep.h"

namespace qx::internal {

namespace {

bool isEmptied(const QxDGraph& graph) {
    return graph.numberOfNodes() == 0 && graph.numberOfAllEdges() == 0 &&
           graph.pHideGraph() == nullptr && graph.hasGraphLabels() == 0;
}

/// Whether `around` is the graph, or lies somewhere around it.
bool liesAround(const QxDGraph* around, const QxDGraph* graph) {
    while (graph != nullptr && graph != around) {
        const QxGraphMember* parent = graph->pParentGraphMember();
        graph = parent != nullptr ? static_cast<const QxDGraph*>(parent->pOwnerGraph()) : nullptr;
    }
    return graph == around;
}

bool hasEndsIn(const QxDGraphManager* manager, const QxDEdge& edge) {
    const auto isThere = [manager](const QxDNode* end) {
        const QxDGraph* const graph = end != nullptr ? end->pOwnerGraph() : nullptr;
        return graph != nullptr && graph->pOwnerGraphManager() == manager;
    };
    return isThere(edge.pSourceNode()) && isThere(edge.pTargetNode());
}

std::uint64_t mixed(const QxPoint& place) {
    std::uint64_t value = (std::uint64_t{static_cast<std::uint32_t>(place.x())} << 32) |
                          static_cast<std::uint32_t>(place.y());
    value = (value ^ (value >> 30)) * 0xbf58476d1ce4e5b9U;
    value = (value ^ (value >> 27)) * 0x94d049bb133111ebU;
    return value ^ (value >> 31);
}

bool isInside(const QxDNode* node, const QxDGraph& foldGraph) {
    return node != nullptr && node->pOwnerGraph() != nullptr &&
           frameOf(node->pOwnerGraph()) == &foldGraph;
}

/// Those of an edge that has both ends in the fold graph, hidden or not.
std::uint64_t sumOfBends(const QxDEdge& edge, const QxDGraph& foldGraph) {
    std::uint64_t sum = 0;
    QxPNodeDList bends;
    if (isInside(edge.pSourceNode(), foldGraph) && isInside(edge.pTargetNode(), foldGraph)) {
        edge.buildPathNodeList(bends);
    }
    for (const QxPNode* bend : each<QxPNode>(bends)) {
        sum += mixed(bend->iCenter());
    }
    return sum;
}

}  // namespace

std::uint64_t sumOfPlaces(const QxDGraph& foldGraph) {
    std::uint64_t sum = 0;
    for (const QxDGraph* graph :
         {&foldGraph, static_cast<const QxDGraph*>(foldGraph.pHideGraph())}) {
        if (graph == nullptr) {
            continue;
        }
        for (const QxDNode* node : each<QxDNode>(*graph->pNodeList())) {
            sum += mixed(node->iCenter());
        }
        for (const QxEdgeDList* edges :
             {graph->pEdgeList(), graph->pDisconnectedEdgeList(), graph->pDeactivatedEdgeList()}) {
            for (const QxDEdge* edge : each<QxDEdge>(*edges)) {
                sum += sumOfBends(*edge, foldGraph);
            }
        }
    }
    return sum;
}

Folding::Places::Places(QxDGraph& graph, QxDNode& folder, const Snapshot<QxDNode>& nodes)
    : m_graph(graph), m_folder(folder), m_nodes(nodes), m_before(isNoted() ? sum() : 0) {}

Folding::Places::~Places() {
    if (isNoted()) {
        auto& noted = m_graph->graphExtras().folded;
        noted = std::make_unique<GraphExtras::FoldedGroup>(
            GraphExtras::FoldedGroup{noted->center, noted->places + sum() - m_before});
    }
}

bool Folding::Places::isNoted() const {
    const GraphExtras* const extras = m_graph->pQueryGraphExtras();
    return extras != nullptr && extras->folded != nullptr;
}

std::uint64_t Folding::Places::sum() const {
    std::uint64_t sum = 0;
    std::vector<const QxDEdge*> edges;
    const auto add = [&](const QxDNode& node) {
        sum += isInside(&node, *m_graph) ? mixed(node.iCenter()) : 0;
        for (const QxEdgeDList* list :
             {node.pInEdgeList(), node.pOutEdgeList(), node.pDisconnectedEdgeList(),
              node.pDeactivatedEdgeList()}) {
            for (const QxDEdge* edge : each<QxDEdge>(*list)) {
                edges.push_back(edge);
            }
        }
    };
    add(*m_folder);
    for (const QxDNode* node : m_nodes) {
        add(*node);
    }
    std::sort(edges.begin(), edges.end());
    edges.erase(std::unique(edges.begin(), edges.end()), edges.end());
    for (const QxDEdge* edge : edges) {
        sum += sumOfBends(*edge, *m_graph);
    }
    return sum;
}

Folding::Folding(QxDGraph& graph, QxDNode& folder, QxDGraph& foldGraph, bool keepHidden)
    : m_graph(graph),
      m_folder(folder),
      m_foldGraph(foldGraph),
      m_hideGraph(graph.pHideGraph()),
      m_keepsHidden(keepHidden) {}

bool Folding::isPossible() const {
    const QxGraphMember* parent = m_foldGraph->pParentGraphMember();
    return Hiding::isPossible(*m_graph) && m_folder->pOwnerGraph() == m_graph.get() &&
           isEmptied(*m_foldGraph) && m_foldGraph->canBeChildGraph() != 0 &&
           m_foldGraph->pOwnerGraphManager() == m_graph->pOwnerGraphManager() &&
           (parent == nullptr || parent == m_folder.get()) &&
           !liesAround(m_foldGraph.get(), m_graph.get());
}

std::size_t Folding::collect(const QxDGraph& graph, const QxDList* nodes, const QxDNode* except,
                             Collection& collected) {
    const auto suits = [manager = graph.pOwnerGraphManager()](const QxDEdge& edge) {
        return hasEndsIn(manager, edge);
    };
    collected.addNodes(nodes, graph, except);
    collected.addEdgesAtNodes(graph, suits);
    const std::size_t shownEdges = collected.edges().size();
    if (const QxDGraph* const hideGraph = graph.pHideGraph()) {
        collected.addEdgesAtNodes(*hideGraph, suits);
    }
    collected.endMarks();
    return shownEdges;
}

void Folding::collect(const QxDList* nodes) {
    m_shownEdges = collect(*m_graph, nodes, m_folder.get(), m_collected);
}

bool Folding::fold() {
    const MetaEdgeHold heldMetaEdges(*m_graph);
    const Places places(*m_graph, *m_folder, m_collected.nodes());
    if (!becomeFolder()) {
        return false;
    }
    {
        const BoundsHold held(m_graph.get(), BoundsHold::OfAll);
        const BoundsHold heldInside(m_foldGraph.get(), BoundsHold::OfAll);
        const BetweenHold heldBetween(*m_graph);
        moveEverything();
        discardStranded();
    }
    m_foldGraph->needsUpdateGraphBounds(1);
    m_foldGraph->calculateGraphBounds(0);
    placeFolder();
    return true;
}

/// Into the middle of what it holds; that is noted, so that the group can be found there again.
void Folding::placeFolder() {
    QxRect covered;
    if (m_foldGraph->calculateGraphBounds(covered) == 0) {
        return;
    }
    m_foldGraph->graphExtras().folded = std::make_unique<GraphExtras::FoldedGroup>(
        GraphExtras::FoldedGroup{covered.center(), sumOfPlaces(*m_foldGraph)});
    if (m_folder->pOwnerGraph() == m_graph.get()) {
        m_folder->moveTo(covered.center(), 1);
    }
}

bool Folding::becomeFolder() {
    if (m_folder->pChildGraph() != m_foldGraph.get() &&
        m_folder->pChildGraph(m_foldGraph.get()) != m_foldGraph.get()) {
        return false;
    }
    m_folder->setFolderNode(1);
    return true;
}

bool Folding::isStillPossible() const {
    const QxDGraphManager* const manager = m_graph->pOwnerGraphManager();
    return manager != nullptr && m_foldGraph->pOwnerGraphManager() == manager;
}

void Folding::moveEverything() {
    std::vector<MovingEdge> moving;
    moving.reserve(m_shownEdges);
    for (std::size_t i = 0; i < m_shownEdges; ++i) {
        if (!moving.emplace_back(*m_collected.edges()[i]).take()) {
            moving.pop_back();
        }
    }
    for (QxDNode* node : m_collected.nodes()) {
        if (isStillPossible() && moveNode(*node, *m_graph, *m_foldGraph)) {
            fireComplexityChange(*node, NodeFolded);
        }
    }
    for (MovingEdge& edge : moving) {
        if (edge.put(false)) {
            fireComplexityChange(edge.edge(), EdgeFolded);
        } else if (edge.isStranded()) {
            m_stranded.emplace_back(edge.edge());
        }
    }
    for (std::size_t i = m_shownEdges; i < m_collected.edges().size(); ++i) {
        moveHiddenEdge(*m_collected.edges()[i]);
    }
    EdgeHome::bringEdgesAt(m_collected.nodes());
    if (m_hideGraph) {
        m_hideGraph->discardEmptyHideGraph();
    }
}

void Folding::moveHiddenEdge(QxDEdge& edge) const {
    if (edge.hidden() == 0) {
        return;  // a listener has been quicker
    }
    if (m_keepsHidden || !hasEndsIn(m_graph->pOwnerGraphManager(), edge)) {
        EdgeHome::bring(edge);
    } else if (MovingEdge moving(edge); moving.take()) {
        moving.put(false);
    }
    if (edge.ownerValid() != 0) {
        fireComplexityChange(edge, EdgeFolded);
    }
}

/// A node that a listener discarded while edges at it were on their way takes them along.
void Folding::discardStranded() {
    if (m_stranded.empty()) {
        return;
    }
    m_collected.forgetLost();
    for (const Ref<QxDEdge>& edge : m_stranded) {
        QxDGraph* const graph = edge->pOwnerGraph();
        if (graph != nullptr &&
            (edge->pSourceNode() == nullptr || edge->pTargetNode() == nullptr)) {
            graph->discardEdge(edge.get());
        }
    }
}

}  // namespace qx::internal

using qx::internal::each;
using qx::internal::Folding;
using qx::internal::Unfolding;

namespace {

/// Calls `act` with the fold graph of each folder node of the graph, in the order of the relations.
template <class Act>
void eachFoldGraph(const QxDGraph& graph, const Act& act) {
    const QxDChildGraphForestNode* const node = graph.pChildGraphForestNode();
    if (node == nullptr) {
        return;
    }
    for (const auto* relation : each<QxDChildGraphForestEdge>(*node->pOutEdgeList())) {
        const QxDNode* const parent = relation->pNode();
        if (parent != nullptr && parent->isFolderNode() != 0) {
            act(relation->pChildGraph());
        }
    }
}

void clear(QxDList* list) {
    if (list != nullptr) {
        list->deleteAllCells();
    }
}

}  // namespace

int QxDGraph::fold(QxDNode* folderNode, QxDGraph* foldGraph, const QxDNodeDList* nodes,
                   QxDNodeDList* foldedNodeList, QxDEdgeDList* foldedEdgeList, int keepHidden) {
    if (folderNode != nullptr && foldGraph != nullptr) {
        Folding folding(*this, *folderNode, *foldGraph, keepHidden != 0);
        if (folding.isPossible()) {
            folding.collect(nodes);
        }
        const bool isDone = !folding.collected().nodes().isEmpty() && folding.fold();
        if (isDone) {
            folding.collected().listInto(foldedNodeList, foldedEdgeList);
            return 1;
        }
    }
    clear(foldedNodeList);
    clear(foldedEdgeList);
    return 0;
}

int QxDGraph::unfold(QxDNode* folderNode, QxDNodeDList* unfoldedNodeList,
                     QxDEdgeDList* unfoldedEdgeList, int keepHidden) {
    clear(unfoldedNodeList);
    clear(unfoldedEdgeList);
    QxDGraph* const foldGraph = folderNode != nullptr && folderNode->pOwnerGraph() == this
                                    ? folderNode->pFoldGraph()
                                    : nullptr;
    if (foldGraph == nullptr || !qx::internal::Hiding::isPossible(*this)) {
        return 0;
    }
    Unfolding unfolding(*this, *folderNode, *foldGraph, keepHidden != 0);
    unfolding.collect();
    unfolding.unfold();
    unfolding.collected().listInto(unfoldedNodeList, unfoldedEdgeList);
    return 1;
}

void QxDGraph::collectListsToBeFolded(const QxDNodeDList* nodes, QxDNodeDList& foldedNodes,
                                      QxDEdgeDList& foldedEdges, QxDEdgeDList& hiddenEdges) const {
    if (!qx::internal::Hiding::isPossible(*this)) {
        return;
    }
    qx::internal::Collection collected;
    const std::size_t shownEdges = Folding::collect(*this, nodes, nullptr, collected);
    collected.appendTo(&foldedNodes, nullptr);
    for (std::size_t i = 0; i < collected.edges().size(); ++i) {
        (i < shownEdges ? foldedEdges : hiddenEdges).appendEdge(collected.edges()[i]);
    }
}

QxDNode* QxDGraph::pFolderNode() const {
    QxDNode* const parent = pParentNode();
    return parent != nullptr && parent->isFolderNode() != 0 ? parent : nullptr;
}

int QxDGraph::hasFolderNodes() const {
    int any = 0;
    eachFoldGraph(*this, [&](const QxDGraph*) { any = 1; });
    return any;
}

void QxDGraph::buildFoldGraphList(QxDGraphDList& list) const {
    if (hasFolderNodes() != 0) {
        list.deleteAllCells();
        eachFoldGraph(*this, [&](QxDGraph* graph) { list.appendGraph(graph); });
    }
}

void QxDGraph::buildAllFoldGraphList(QxDGraphDList& list) const {
    // What is to be opened next stands at the end, so that depth costs no stack.
    std::vector<const QxDGraph*> toOpen = {this};
    while (!toOpen.empty()) {
        const QxDGraph* const graph = toOpen.back();
        toOpen.pop_back();
        const std::size_t first = toOpen.size();
        eachFoldGraph(*graph, [&](QxDGraph* inside) {
            list.appendGraph(inside);
            toOpen.push_back(inside);
        });
        std::reverse(toOpen.begin() + static_cast<std::ptrdiff_t>(first), toOpen.end());
    }
}
