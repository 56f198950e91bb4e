// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// What a move of a selection affects.
//
// It is found at what moves: the edges at the moved connectors and nodes, and the edges between
// graphs at the graphs that move along inside a node; the graphs around what moves, on the way from
// each to the outermost. Nothing else of the drawing is looked at.

#include <algorithm>
#include <unordered_map>
#include <vector>

#include "qx/drawing/QxConnectorLabel.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxEdgeLabel.h"
#include "qx/drawing/QxGraphLabel.h"
#include "qx/drawing/QxNodeLabel.h"
#include "qx/drawing/QxPEdge.h"
#include "qx/drawing/QxPNode.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/update/QxAffectedObjectInfo.h"
#include "qx/update/internal/AffectedState.h"
#include "qx/update/internal/EdgeEnds.h"

using qx::internal::each;

void QxAffectedObjectInfo::hold(QxObject& object) {
    m_state->held.emplace_back(object);
}

void QxAffectedObjectInfo::clearLists() {
    clearStatuses();
    for (QxDList* list :
         {static_cast<QxDList*>(&m_movedNodes), static_cast<QxDList*>(&m_movedConnectors),
          static_cast<QxDList*>(&m_movedEdges), static_cast<QxDList*>(&m_movedEdgeLabels),
          static_cast<QxDList*>(&m_movedNodeLabels), static_cast<QxDList*>(&m_movedConnectorLabels),
          static_cast<QxDList*>(&m_movedGraphLabels), static_cast<QxDList*>(&m_affectedGraphs),
          static_cast<QxDList*>(&m_reroutedEdges), static_cast<QxDList*>(&m_resizedNodes)}) {
        list->deleteAllCells();
    }
    m_processed.clear(0);
    m_state->held.clear();
}

void QxAffectedObjectInfo::computeAffectedObjectLists() {
    clearLists();
    if (!m_state->manager) {
        return;
    }
    markInputGraphs();
    collectMoved();
    collectEdges();
    collectLabels<QxEdgeLabelDList, QxEdgeLabel>(m_inputs.edgeLabels, m_movedEdgeLabels);
    collectLabels<QxNodeLabelDList, QxNodeLabel>(m_inputs.nodeLabels, m_movedNodeLabels);
    collectLabels<QxConnectorLabelDList, QxConnectorLabel>(m_inputs.connectorLabels,
                                                           m_movedConnectorLabels);
    collectLabels<QxGraphLabelDList, QxGraphLabel>(m_inputs.graphLabels, m_movedGraphLabels);
    computeAffectedGraphs();
}

namespace {

/// Calls `act` with the single object, if there is one, and with those of the list.
template <class T, class Act>
void eachInput(T* single, const QxDList* list, const Act& act) {
    if (single != nullptr) {
        act(*single);
    }
    if (list != nullptr) {
        for (T* object : each<T>(*list)) {
            act(*object);
        }
    }
}

QxDEdge* ownerOf(const QxPNode* bend, const QxPEdge* segment) {
    return bend != nullptr ? bend->pOwnerEdge()
                           : (segment != nullptr ? segment->pOwnerEdge() : nullptr);
}

}  // namespace

void QxAffectedObjectInfo::markGraph(QxDGraph* graph) {
    if (graph != nullptr && graph->isIntergraph() == 0 && graph->isVisible() != 0 &&
        graph->pOwnerGraphManager() == m_state->manager.get() &&
        graph->graphObjectStatus() == QxStatusUnchanged) {
        graph->graphObjectStatus(QxStatusGraphContentsMoved);
        m_state->marked.push_back(graph);
    }
}

void QxAffectedObjectInfo::markSuccessors(QxDGraph& nested) {
    QxDGraphDList inside;
    inside.appendGraph(&nested);
    nested.buildAllNestedGraphList(inside);
    for (QxDGraph* graph : each<QxDGraph>(inside)) {
        if (graph->graphObjectStatus() == QxStatusUnchanged) {
            m_state->marked.push_back(graph);
        }
        graph->graphObjectStatus(QxStatusMoved);
    }
}

void QxAffectedObjectInfo::markInputGraphs() {
    eachInput(m_inputNode, m_inputs.nodes,
              [this](const QxDNode& node) { markGraph(node.pOwnerGraph()); });
    eachInput(m_inputConnector, m_inputs.connectors,
              [this](const QxConnector& connector) { markGraph(connector.pGraph()); });
    eachInput(ownerOf(m_inputBend, m_inputSegment), m_inputs.edges,
              [this](const QxDEdge& edge) { markGraph(edge.pOwnerGraph()); });
    for (const QxDList* labels : {static_cast<const QxDList*>(m_inputs.edgeLabels),
                                  static_cast<const QxDList*>(m_inputs.nodeLabels),
                                  static_cast<const QxDList*>(m_inputs.connectorLabels),
                                  static_cast<const QxDList*>(m_inputs.graphLabels)}) {
        eachInput<QxLabel>(nullptr, labels,
                           [this](const QxLabel& label) { markGraph(label.pGraph()); });
    }
    markGraph(m_inputLabel != nullptr ? m_inputLabel->pGraph() : m_inputGraph);
    eachInput(m_inputNode, m_inputs.nodes, [this](const QxDNode& node) {
        QxDGraph* nested = node.isVisible() != 0 ? node.pNestedGraph() : nullptr;
        if (nested != nullptr) {
            markSuccessors(*nested);
        }
    });
}

void QxAffectedObjectInfo::collectMoved() {
    const auto isAffected = [](const QxDGraph* graph) {
        return graph != nullptr && graph->graphObjectStatus() == QxStatusGraphContentsMoved;
    };
    eachInput(m_inputNode, m_inputs.nodes, [&](QxDNode& node) {
        if (isAffected(node.pOwnerGraph()) && node.graphObjectStatus() == QxStatusUnchanged) {
            node.graphObjectStatus(QxStatusMoved);
            m_movedNodes.appendNode(&node);
            hold(node);
        }
    });
    eachInput(m_inputConnector, m_inputs.connectors, [&](QxConnector& connector) {
        const QxDNode* node = connector.pOwnerNode();
        if (node != nullptr && connector.graphObjectStatus() == QxStatusUnchanged &&
            (node->graphObjectStatus() == QxStatusMoved || isAffected(connector.pGraph()))) {
            connector.graphObjectStatus(QxStatusMoved);
            m_movedConnectors.appendConnector(&connector);
            hold(connector);
        }
    });
}

void QxAffectedObjectInfo::collectEdges() {
    if (m_onlySelected == 0) {
        for (const QxConnector* connector : each<QxConnector>(m_movedConnectors)) {
            QxDEdgeDList users;
            connector->buildIncidentEdgeList(&users, QxEdgeDirectionBoth,
                                             QxEdgeConnectionConnected);
            for (QxDEdge* edge : each<QxDEdge>(users)) {
                testAndAddAffectedEdge(*edge);
            }
        }
        for (const QxDNode* node : each<QxDNode>(m_movedNodes)) {
            for (const QxEdgeDList* list : {node->pInEdgeList(), node->pOutEdgeList()}) {
                for (QxDEdge* edge : each<QxDEdge>(*list)) {
                    testAndAddAffectedEdge(*edge);
                }
            }
        }
        collectNestedEdges();
    }
    const auto collect = [this](QxDEdge& edge, bool mayLeadBetween) {
        const QxDGraph* graph = edge.pOwnerGraph();
        const bool isAffected =
            edge.intergraphEdge() != 0
                ? mayLeadBetween
                : graph != nullptr && graph->graphObjectStatus() == QxStatusGraphContentsMoved;
        if (isAffected && edge.isVisible() != 0 && edge.graphObjectStatus() == QxStatusUnchanged) {
            collectInputEdge(edge);
        }
    };
    if (QxDEdge* edge = ownerOf(m_inputBend, m_inputSegment)) {
        collect(*edge, true);
    }
    eachInput<QxDEdge>(nullptr, m_inputs.edges, [&](QxDEdge& edge) { collect(edge, false); });
}

void QxAffectedObjectInfo::collectInputEdge(QxDEdge& edge) {
    edge.graphObjectStatus(QxStatusRerouted);
    m_reroutedEdges.appendEdge(&edge);
    m_processed.add(&edge);
    hold(edge);
}

/// Edges between graphs of which an end moves along inside a node, in the order of their list.
void QxAffectedObjectInfo::collectNestedEdges() {
    const QxDGraph* between = m_state->manager->pQueryIntergraph();
    if (between == nullptr || between->numberOfEdges() == 0) {
        return;
    }
    std::vector<QxDEdge*> found;
    for (const QxDGraph* graph : m_state->marked) {
        if (graph->graphObjectStatus() == QxStatusMoved) {
            for (const QxEdgeDList* list :
                 {static_cast<const QxEdgeDList*>(graph->pLeavingIntergraphEdgeList()),
                  static_cast<const QxEdgeDList*>(graph->pEnteringIntergraphEdgeList())}) {
                for (QxDEdge* edge : each<QxDEdge>(*list)) {
                    found.push_back(edge);
                }
            }
        }
    }
    std::sort(found.begin(), found.end(),
              [](const QxDEdge* a, const QxDEdge* b) { return a->listStamp() < b->listStamp(); });
    for (QxDEdge* edge : found) {
        testAndAddAffectedEdge(*edge);
    }
}

int QxAffectedObjectInfo::endMoves(const QxDEdge& edge, bool atSource) const {
    const QxDNode* node = qx::internal::nodeAt(edge, atSource);
    const QxConnector* connector = qx::internal::connectorAt(edge, atSource);
    const QxDGraph* graph = node != nullptr ? node->pOwnerGraph() : nullptr;
    const bool moves = node != nullptr && (node->graphObjectStatus() == QxStatusMoved ||
                                           (edge.intergraphEdge() != 0 && graph != nullptr &&
                                            graph->graphObjectStatus() == QxStatusMoved) ||
                                           (connector != nullptr && connector->specified() != 0 &&
                                            connector->graphObjectStatus() == QxStatusMoved));
    return moves ? 1 : 0;
}

void QxAffectedObjectInfo::testAndAddAffectedEdge(QxDEdge& edge) {
    if (m_processed.contains(&edge) != 0 || edge.isVisible() == 0) {
        return;
    }
    switch (endMoves(edge, true) + endMoves(edge, false)) {
        case 2:
            edge.graphObjectStatus(QxStatusMoved);
            m_movedEdges.appendEdge(&edge);
            m_processed.add(&edge);
            hold(edge);
            break;
        case 1:
            collectInputEdge(edge);
            break;
        default:
            break;
    }
}

template <class List, class Label>
void QxAffectedObjectInfo::collectLabels(const QxDList* inputs, List& moved) {
    auto* single = dynamic_cast<Label*>(m_inputLabel);
    QxHashSet listed;
    eachInput(single, inputs, [&](Label& label) {
        const QxDGraph* graph = label.pGraph();
        if (label.isVisible() != 0 && graph->pOwnerGraphManager() == m_state->manager.get() &&
            graph->graphObjectStatus() != QxStatusMoved && listed.add(&label) != 0) {
            label.graphObjectStatus(QxStatusMoved);
            moved.appendLabel(&label);
            hold(label);
        }
    });
}

/// The graphs around those that hold what moves, up to the outermost.
void QxAffectedObjectInfo::markGraphsAround() {
    auto& marked = m_state->marked;
    const QxDGraph* const root = m_state->manager->pAnchorGraph();
    for (std::size_t i = marked.size(); i-- > 0;) {
        QxDGraph* graph = marked[i];
        if (graph->graphObjectStatus() != QxStatusGraphContentsMoved) {
            continue;
        }
        while (graph->graphObjectStatus() != QxStatusGraphRefitted) {
            if (graph->graphObjectStatus() == QxStatusUnchanged) {
                marked.push_back(graph);
            }
            graph->graphObjectStatus(QxStatusGraphRefitted);
            if (graph == root || graph->nested() == 0) {
                break;
            }
            graph = graph->pNestedWithinGraph();
        }
    }
}

namespace {

bool isAffected(const QxDGraph* graph) {
    return graph->graphObjectStatus() == QxStatusGraphRefitted;
}

using Inside = std::unordered_map<const QxDGraph*, std::vector<QxDGraph*>>;

/// The affected graphs that are nested in a graph itself, in the order of the nesting.
std::vector<QxDGraph*> affectedInside(const QxDGraph& graph, const Inside& inside) {
    const auto found = inside.find(&graph);
    if (found == inside.end() || found->second.size() == 1) {
        return found == inside.end() ? std::vector<QxDGraph*>() : found->second;
    }
    std::vector<QxDGraph*> inOrder;
    QxDGraphDList all;
    graph.buildNestedGraphList(all);
    for (QxDGraph* one : each<QxDGraph>(all)) {
        if (isAffected(one)) {
            inOrder.push_back(one);
        }
    }
    return inOrder;
}

}  // namespace

void QxAffectedObjectInfo::computeAffectedGraphs() {
    markGraphsAround();
    if (QxDGraph* between = m_state->manager->pQueryIntergraph()) {
        m_affectedGraphs.appendGraph(between);
    }
    QxDGraph* const root = m_state->manager->pAnchorGraph();
    std::vector<QxDGraph*> toOpen;
    if (root != nullptr && isAffected(root)) {
        m_affectedGraphs.appendGraph(root);
        toOpen.push_back(root);
    }
    Inside inside;
    for (QxDGraph* one : m_state->marked) {
        if (isAffected(one) && one != root) {
            inside[one->pNestedWithinGraph()].push_back(one);
        }
    }
    while (!toOpen.empty()) {
        const QxDGraph* const graph = toOpen.back();
        toOpen.pop_back();
        const auto found = affectedInside(*graph, inside);
        for (QxDGraph* one : found) {
            m_affectedGraphs.appendGraph(one);
        }
        toOpen.insert(toOpen.end(), found.rbegin(), found.rend());
    }
    for (QxDGraph* graph : m_state->marked) {
        graph->graphObjectStatus(QxStatusUnchanged);
    }
    m_state->marked.clear();
    for (QxDGraph* graph : each<QxDGraph>(m_affectedGraphs)) {
        hold(*graph);
    }
}
