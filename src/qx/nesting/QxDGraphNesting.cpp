// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// What is nested in a graph, and whether it shows.

#include <algorithm>
#include <cstddef>
#include <vector>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxGeometricUpdateInfo.h"
#include "qx/drawing/bounds/internal/Coverage.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/foundation/util/internal/Ref.h"
#include "qx/nesting/QxDChildGraphForest.h"
#include "qx/nesting/QxDChildGraphForestEdge.h"
#include "qx/nesting/QxDChildGraphForestNode.h"

using qx::internal::each;
using qx::internal::Ref;
using qx::internal::Snapshot;

namespace {

using Relation = QxDChildGraphForestEdge;

/// Calls `act` with each nesting relation of a member of the graph, in their order.
template <class Act>
void eachRelation(const QxDGraph& graph, const Act& act) {
    if (const QxDChildGraphForestNode* node = graph.pChildGraphForestNode()) {
        for (const Relation* relation : each<Relation>(*node->pOutEdgeList())) {
            act(*relation);
        }
    }
}

/// The nodes of the graph that own a child graph.
Snapshot<QxDNode> parentNodes(const QxDGraph& graph) {
    QxDNodeDList nodes;
    eachRelation(graph, [&](const Relation& relation) {
        if (QxDNode* node = relation.pNode()) {
            nodes.appendNode(node);
        }
    });
    return Snapshot<QxDNode>(&nodes);
}

/// The graph, and after it those nested in it, outer ones first.
void appendShown(QxDGraph& graph, QxDGraphDList& list) {
    QxDListCell* cell = list.appendGraph(&graph);
    for (; cell != nullptr; cell = cell->pNextCell()) {
        eachRelation(*static_cast<QxDGraph*>(cell->pObject()), [&](const Relation& relation) {
            if (relation.hasExpandedNodeExtension() != 0) {
                list.appendGraph(relation.pChildGraph());
            }
        });
    }
}

}  // namespace

QxDChildGraphForestNode* QxDGraph::pChildGraphForestNode() const {
    return static_cast<QxDChildGraphForestNode*>(QxGraph::pChildGraphForestNode());
}

int QxDGraph::vIsVisible() const {
    const QxDGraphManager* manager = pOwnerGraphManager();
    return manager == nullptr || isIntergraph() != 0 ? 1 : manager->nestedInAnchorGraph(this);
}

int QxDGraph::recursivelyNestedWithin(const QxDGraph* graph) const {
    if (graph == nullptr) {
        return 0;
    }
    const QxDGraph* around = this;
    while (around != nullptr && around != graph) {
        around = around->pNestedWithinGraph();
    }
    return around == graph ? 1 : 0;
}

void QxDGraph::buildNestedGraphList(QxDGraphDList& list) const {
    list.deleteAllCells();
    eachRelation(*this, [&](const Relation& relation) {
        if (relation.hasExpandedNodeExtension() != 0) {
            list.appendGraph(relation.pChildGraph());
        }
    });
}

void QxDGraph::buildAllNestedGraphList(QxDGraphDList& list) const {
    // The graphs nested directly, then those in the first of them, and so on: what is to be opened
    // next stands at the end, so that depth costs no stack.
    std::vector<const QxDGraph*> toOpen = {this};
    while (!toOpen.empty()) {
        const QxDGraph* const graph = toOpen.back();
        toOpen.pop_back();
        const std::size_t first = toOpen.size();
        eachRelation(*graph, [&](const Relation& relation) {
            if (relation.hasExpandedNodeExtension() != 0) {
                list.appendGraph(relation.pChildGraph());
                toOpen.push_back(relation.pChildGraph());
            }
        });
        std::reverse(toOpen.begin() + static_cast<std::ptrdiff_t>(first), toOpen.end());
    }
}

int QxDGraph::hasExpandedNodes() const {
    int any = 0;
    eachRelation(*this,
                 [&](const Relation& relation) { any |= relation.hasExpandedNodeExtension(); });
    return any;
}

void QxDGraph::expandAll() {
    for (QxDNode* node : parentNodes(*this)) {
        if (node->pOwnerGraph() == this && node->collapsed() != 0) {
            node->expand();
        }
    }
}

void QxDGraph::collapseAll() {
    for (QxDNode* node : parentNodes(*this)) {
        if (node->pOwnerGraph() == this && node->expanded() != 0) {
            node->collapse();
        }
    }
}

void QxDGraph::rest() {
    setFlag(qx::flags::GraphResting, 1);
    disableQuadTree(1);
}

void QxDGraph::resume() {
    const Ref alive(*this);
    setFlag(qx::flags::GraphResting, 0);
    if (keepsBounds()) {
        calculateGraphBounds(1);  // nothing has kept them up to date meanwhile
        refitAround(1);           // what counts for its margins depends on the anchor graph
    }
    disableQuadTree(0);
}

void QxDGraph::disableNestingGraphBoundsAndQuadTree(int wasVisible, int force) {
    if (force == 0 && isVisible() == (wasVisible != 0 ? 1 : 0)) {
        return;
    }
    const Ref alive(*this);
    QxDGraphDList outerFirst;
    appendShown(*this, outerFirst);
    QxDGraphDList innerFirst;
    for (QxDListCell* cell = outerFirst.pLastCell(); cell != nullptr;
         cell = cell->pPreviousCell()) {
        innerFirst.appendObject(cell->pObject());
    }
    for (QxDGraph* graph : Snapshot<QxDGraph>(&innerFirst)) {
        if (force == 0 && graph->isVisible() == (wasVisible != 0 ? 1 : 0)) {
            continue;
        }
        if (wasVisible != 0) {
            graph->rest();
        } else {
            graph->resume();
        }
    }
}

void QxDGraph::tellContainedEdges() {
    const QxDGraphManager* manager = pOwnerGraphManager();
    const QxDGraph* between = manager != nullptr ? manager->pQueryIntergraph() : nullptr;
    if (between == nullptr || between->pEdgeList()->isEmpty() != 0) {
        return;
    }
    QxDGraphDList shown;
    appendShown(*this, shown);
    for (const QxDGraph* graph : each<QxDGraph>(shown)) {
        for (const QxEdgeDList* list :
             {graph->pLeavingIntergraphEdgeList(), graph->pEnteringIntergraphEdgeList()}) {
            for (QxDEdge* edge : each<QxDEdge>(*list)) {
                qx::internal::Coverage::countChanged(*edge);
            }
        }
    }
}

namespace {

/// The edges that a change of nesting concerns: those given, or all that the graph contains.
class NestingReport {
public:
    NestingReport(const QxDGraph& graph, QxGeometricUpdateInfo* info, QxDEdgeDList* edges)
        : m_isActive(info != nullptr && info->needsRecursiveUpdate() != 0 &&
                     graph.isAnchorGraph() == 0),
          m_edges(edges != nullptr ? *edges : m_own) {}
    bool isActive() const { return m_isActive; }
    QxDEdgeDList& edges() { return m_edges; }

private:
    bool m_isActive;
    QxDEdgeDList m_own;
    QxDEdgeDList& m_edges;
};

}  // namespace

void QxDGraph::actBeforeNestingChange(QxGeometricUpdateInfo* info, QxDEdgeDList* edges) {
    NestingReport report(*this, info, edges);
    if (report.isActive()) {
        buildContainedIntergraphEdgeList(report.edges(), 1, 1);
        actBeforeRemove(info, info, nullptr, nullptr, &report.edges(), nullptr, nullptr, nullptr,
                        nullptr);
    }
}

void QxDGraph::actAfterNestingChange(QxGeometricUpdateInfo* info, QxDEdgeDList* edges) {
    NestingReport report(*this, info, edges);
    if (report.isActive()) {
        if (edges == nullptr) {
            buildContainedIntergraphEdgeList(report.edges(), 1, 1);
        }
        actAfterInsert(info, info, nullptr, nullptr, &report.edges(), nullptr, nullptr, nullptr,
                       nullptr);
    }
}
