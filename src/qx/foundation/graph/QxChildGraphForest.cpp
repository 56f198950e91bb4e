// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/graph/QxChildGraphForest.h"

#include <algorithm>
#include <ostream>
#include <vector>

#include "qx/foundation/graph/QxChildGraphForestEdge.h"
#include "qx/foundation/graph/QxChildGraphForestNode.h"
#include "qx/foundation/graph/QxGraphManager.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/foundation/graph/internal/GraphObjectExtras.h"
#include "qx/foundation/util/QxDebugStream.h"

using qx::internal::each;

QxChildGraphForestEdge::~QxChildGraphForestEdge() {
    forgetGraphMember();
}

void QxChildGraphForestEdge::actOnDiscard() {
    forgetGraphMember();
}

void QxChildGraphForestEdge::forgetGraphMember() {
    if (m_member != nullptr) {
        m_member->extras().forestEdge = nullptr;
        m_member = nullptr;
    }
}

QxGraph* QxChildGraphForestEdge::pChildGraph() const {
    const auto* node = static_cast<const QxChildGraphForestNode*>(pTargetNode());
    return node != nullptr ? node->pGraph() : nullptr;
}

QxChildGraphForest* QxChildGraphForestEdge::pForest() const {
    return static_cast<QxChildGraphForest*>(pOwnerGraph());
}

QxChildGraphForest::QxChildGraphForest(QxGraphManager* manager)
    : QxTreeGraph(manager), m_manager(manager) {}

QxChildGraphForest::~QxChildGraphForest() {
    for (QxChildGraphForestNode* node : each<QxChildGraphForestNode>(*pNodeList())) {
        if (node->m_graph != nullptr) {
            node->m_graph->m_forestNode = nullptr;
        }
    }
    QxChildGraphForest::emptyTopology();
}

int QxChildGraphForest::checkInvariants() const {
    for (const QxChildGraphForestNode* node : each<QxChildGraphForestNode>(*pNodeList())) {
        if (node->m_graph == nullptr || node->m_graph->m_forestNode != node ||
            node->m_graph->pOwnerGraphManager() != m_manager || node->inDegree() > 1) {
            qxDebugStream() << "forest: a node does not fit its graph, or has two parents\n";
            return 0;
        }
    }
    for (const QxChildGraphForestEdge* relation : each<QxChildGraphForestEdge>(*pEdgeList())) {
        const QxGraphMember* member = relation->pGraphMember();
        const QxGraph* around = member != nullptr ? member->pOwnerGraph() : nullptr;
        if (around == nullptr || member->pChildGraphForestEdge() != relation ||
            around->m_forestNode != relation->pSourceNode() ||
            isNestedIn(around, relation->pChildGraph())) {
            qxDebugStream() << "forest: a relation does not fit its member, or closes a cycle\n";
            return 0;
        }
    }
    return QxTreeGraph::checkInvariants();
}

QxNode* QxChildGraphForest::vNewNode(int) {
    return new QxChildGraphForestNode(this);
}

QxEdge* QxChildGraphForest::vNewEdge(int) {
    return new QxChildGraphForestEdge(this);
}

void QxChildGraphForest::actOnInsertGraph(QxGraph* graph) {
    auto* node = static_cast<QxChildGraphForestNode*>(addNode(0));
    node->m_graph = graph;
    graph->m_forestNode = node;
}

void QxChildGraphForest::actOnRemoveGraph(QxGraph* graph) {
    if (QxChildGraphForestNode* node = graph->m_forestNode) {
        graph->m_forestNode = nullptr;
        discardNode(node);
    }
}

void QxChildGraphForest::actOnDiscardGraph(QxGraph* graph) {
    actOnRemoveGraph(graph);
}

void QxChildGraphForest::actOnInsertGraphMember(QxGraphMember* member) {
    QxChildGraphForestEdge* relation = member->pChildGraphForestEdge();
    const QxGraph* graph = member->pOwnerGraph();
    if (relation == nullptr || graph == nullptr) {
        return;
    }
    if (relation->pForest() != this || isNestedIn(graph, relation->pChildGraph()) ||
        relation->changeSourceNode(graph->m_forestNode) == 0) {
        endRelation(member);  // it has come to another manager, or into its own child graph
    } else {
        relation->connect();
    }
}

void QxChildGraphForest::actOnRemoveGraphMember(QxGraphMember* member) {
    if (QxChildGraphForestEdge* relation = member->pChildGraphForestEdge()) {
        relation->disconnect();
    }
}

void QxChildGraphForest::actOnDiscardGraphMember(QxGraphMember* member) {
    endRelation(member);
}

int QxChildGraphForest::actOnSetChildGraph(QxGraphMember* member, QxGraph* graph) {
    if (member->pChildGraph() == graph) {
        return 1;
    }
    if (graph != nullptr && !canNest(member, graph)) {
        return 0;
    }
    endRelation(member);
    if (graph != nullptr) {
        auto* relation = static_cast<QxChildGraphForestEdge*>(
            addEdge(member->pOwnerGraph()->m_forestNode, graph->m_forestNode, 0));
        relation->m_member = member;
        member->extras().forestEdge = relation;
    }
    return 1;
}

bool QxChildGraphForest::canNest(const QxGraphMember* member, const QxGraph* graph) const {
    const QxGraph* around = member->pOwnerGraph();
    if (around == nullptr || around->pOwnerGraphManager() != m_manager ||
        graph->pOwnerGraphManager() != m_manager || graph->canBeChildGraph() == 0 ||
        pParentRelation(graph) != nullptr) {
        return false;
    }
    return !isNestedIn(around, graph);
}

bool QxChildGraphForest::isNestedIn(const QxGraph* graph, const QxGraph* around) const {
    // Climbs the connected relations: the owner graphs of members on their way are new already.
    while (graph != nullptr && graph != around) {
        const QxChildGraphForestNode* node = graph->m_forestNode;
        const QxEdge* relation = node != nullptr ? node->pFirstInEdge() : nullptr;
        graph = relation != nullptr
                    ? static_cast<const QxChildGraphForestNode*>(relation->pSourceNode())->m_graph
                    : nullptr;
    }
    return graph != nullptr;
}

void QxChildGraphForest::endRelation(QxGraphMember* member) {
    if (QxChildGraphForestEdge* relation = member->pChildGraphForestEdge()) {
        relation->pForest()->vDiscardChildGraphForestEdge(relation);
    }
}

void QxChildGraphForest::vDiscardChildGraphForestEdge(QxChildGraphForestEdge* edge) {
    discardEdge(edge);
}

void QxChildGraphForest::actOnDestroyAllChildGraphRelations() {
    for (const QxEdgeDList* list : {pEdgeList(), pDisconnectedEdgeList()}) {
        for (QxChildGraphForestEdge* relation : each<QxChildGraphForestEdge>(*list)) {
            vDiscardChildGraphForestEdge(relation);
        }
    }
}

QxChildGraphForestEdge* QxChildGraphForest::pParentRelation(const QxGraph* graph) const {
    const QxChildGraphForestNode* node = graph->pChildGraphForestNode();
    if (node == nullptr) {
        return nullptr;
    }
    QxEdge* relation = node->pFirstInEdge();
    return static_cast<QxChildGraphForestEdge*>(relation != nullptr ? relation
                                                                    : node->pDisconnectedInEdge());
}

QxGraphMember* QxChildGraphForest::pParentGraphMember(const QxGraph* graph) const {
    const QxChildGraphForestEdge* relation = pParentRelation(graph);
    return relation != nullptr ? relation->pGraphMember() : nullptr;
}

QxGraph* QxChildGraphForest::pParentGraph(const QxGraph* graph) const {
    const QxGraphMember* member = pParentGraphMember(graph);
    return member != nullptr ? member->pOwnerGraph() : nullptr;
}

QxGraph* QxChildGraphForest::pNearestCommonGraph(QxGraph* first, QxGraph* second) const {
    std::vector<const QxGraph*> aroundFirst;
    for (QxGraph* g = first; g != nullptr; g = pParentGraph(g)) {
        aroundFirst.push_back(g);
    }
    for (QxGraph* g = second; g != nullptr; g = pParentGraph(g)) {
        if (std::find(aroundFirst.begin(), aroundFirst.end(), g) != aroundFirst.end()) {
            return g;
        }
    }
    return nullptr;
}

void QxChildGraphForest::appendChildGraphs(const QxGraph* graph, QxGraphDList* list) const {
    if (const QxChildGraphForestNode* node = graph->pChildGraphForestNode()) {
        for (QxChildGraphForestEdge* relation :
             each<QxChildGraphForestEdge>(*node->pOutEdgeList())) {
            list->appendGraph(relation->pChildGraph());
        }
    }
}

void QxChildGraphForest::moveGraphsTo(QxChildGraphForest* forest) {
    forest->transferTopology(this);
    if (const QxGraph* between = m_manager->pQueryIntergraph()) {
        QxNode* node = between->m_forestNode;  // the intergraph itself stays; its contents move
        node->transferOutEdges(forest->m_manager->pIntergraph()->m_forestNode);
        forest->removeNode(node);
        insertNode(node);
    }
}
