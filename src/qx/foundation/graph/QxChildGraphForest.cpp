// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/graph/QxChildGraphForest.h"

#include <ostream>
#include <vector>

#include "qx/foundation/graph/QxChildGraphForestEdge.h"
#include "qx/foundation/graph/QxChildGraphForestNode.h"
#include "qx/foundation/graph/QxGraphManager.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/foundation/graph/internal/GraphChange.h"
#include "qx/foundation/graph/internal/GraphObjectExtras.h"
#include "qx/foundation/util/QxDebugStream.h"
#include "qx/foundation/util/internal/Ref.h"

using qx::internal::each;
using qx::internal::GraphChange;
using qx::internal::Snapshot;

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
            around->m_forestNode != relation->pSourceNode()) {
            qxDebugStream() << "forest: a relation does not fit its member\n";
            return 0;
        }
    }
    if (!isAcyclic()) {
        qxDebugStream() << "forest: relations close a cycle\n";
        return 0;
    }
    return QxTreeGraph::checkInvariants();
}

/// Whether walks down from the graphs that are nested nowhere lead to all others.
bool QxChildGraphForest::isAcyclic() const {
    std::vector<const QxNode*> reached;
    for (const QxNode* node : each<QxNode>(*pNodeList())) {
        if (node->inDegree() == 0) {
            reached.push_back(node);
        }
    }
    for (std::size_t i = 0; i < reached.size(); ++i) {
        for (const QxEdge* relation : each<QxEdge>(*reached[i]->pOutEdgeList())) {
            reached.push_back(relation->pTargetNode());
        }
    }
    return reached.size() == static_cast<std::size_t>(numberOfNodes());
}

QxNode* QxChildGraphForest::vNewNode(int) {
    return new QxChildGraphForestNode(this);
}

QxEdge* QxChildGraphForest::vNewEdge(int) {
    return new QxChildGraphForestEdge(this);
}

void QxChildGraphForest::actOnInsertGraph(QxGraph* graph) {
    if (auto* node = static_cast<QxChildGraphForestNode*>(addNode(0))) {
        node->m_graph = graph;
        graph->m_forestNode = node;
    }
}

void QxChildGraphForest::actOnRemoveGraph(QxGraph* graph) {
    QxChildGraphForestNode* const node = graph->m_forestNode;
    if (node == nullptr) {
        return;
    }
    for (QxChildGraphForestEdge* relation : Snapshot<QxChildGraphForestEdge>{
             node->pInEdgeList(), node->pOutEdgeList(), node->pDisconnectedEdgeList()}) {
        if (relation->pGraphMember() != nullptr) {
            endRelation(relation->pGraphMember());
        }
    }
    if (graph->m_forestNode == node) {
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
    GraphChange change(*m_manager, *member, ChildGraphChanged);
    discardRelation(member);
    if (graph != nullptr) {
        auto* relation = static_cast<QxChildGraphForestEdge*>(
            addEdge(member->pOwnerGraph()->m_forestNode, graph->m_forestNode, 0));
        if (relation == nullptr) {
            return 0;
        }
        relation->m_member = member;
        member->extras().forestEdge = relation;
    }
    change.tell();
    return 1;
}

bool QxChildGraphForest::canNest(const QxGraphMember* member, const QxGraph* graph) const {
    const QxGraph* around = member->pOwnerGraph();
    if (around == nullptr || around->pOwnerGraphManager() != m_manager ||
        graph->pOwnerGraphManager() != m_manager || graph->canBeChildGraph() == 0 ||
        around->m_forestNode == nullptr || graph->m_forestNode == nullptr ||
        pParentRelation(graph) != nullptr) {
        return false;
    }
    return !isNestedIn(around, graph);
}

QxGraph* QxChildGraphForest::vHidePartner(const QxGraph*) const {
    return nullptr;
}

bool QxChildGraphForest::isNestedIn(const QxGraph* graph, const QxGraph* around) const {
    const auto isElsewhere = [graph](const QxGraph* one) {
        return one == nullptr || (graph != one && (one->m_forestNode == nullptr ||
                                                   one->m_forestNode->outDegree() == 0));
    };
    if (around == nullptr || (isElsewhere(around) && isElsewhere(vHidePartner(around)))) {
        return false;  // nothing is nested there: a chain that grows at its end needs no climb
    }
    // Climbs the connected relations: the owner graphs of members on their way are new already.
    while (graph != nullptr && graph != around) {
        const QxChildGraphForestNode* node = graph->m_forestNode;
        const QxEdge* relation = node != nullptr ? node->pFirstInEdge() : nullptr;
        if (relation != nullptr) {
            graph = static_cast<const QxChildGraphForestNode*>(relation->pSourceNode())->m_graph;
        } else {
            graph = graph->isHideGraph() != 0 ? vHidePartner(graph) : nullptr;
        }
    }
    return graph != nullptr;
}

void QxChildGraphForest::endCycle(QxGraphMember* member, const QxGraph* graph) {
    const QxChildGraphForestEdge* relation = member->pChildGraphForestEdge();
    if (relation != nullptr && relation->pForest() == this &&
        isNestedIn(graph, relation->pChildGraph())) {
        endRelation(member);
    }
}

void QxChildGraphForest::endRelation(QxGraphMember* member) {
    GraphChange change(*m_manager, *member, ChildGraphChanged);
    discardRelation(member);
    change.tell();
}

void QxChildGraphForest::discardRelation(QxGraphMember* member) {
    if (QxChildGraphForestEdge* relation = member->pChildGraphForestEdge()) {
        relation->pForest()->vDiscardChildGraphForestEdge(relation);
    }
}

void QxChildGraphForest::vDiscardChildGraphForestEdge(QxChildGraphForestEdge* edge) {
    discardEdge(edge);
}

void QxChildGraphForest::actOnDestroyAllChildGraphRelations() {
    for (QxChildGraphForestEdge* relation :
         Snapshot<QxChildGraphForestEdge>{pEdgeList(), pDisconnectedEdgeList()}) {
        if (relation->pOwnerGraph() == this) {
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
    std::int32_t depth = depthOf(first) - depthOf(second);
    for (; depth > 0; --depth) {
        first = pParentGraph(first);
    }
    for (; depth < 0; ++depth) {
        second = pParentGraph(second);
    }
    while (first != second) {
        first = pParentGraph(first);
        second = pParentGraph(second);
    }
    return first;
}

/// How many graphs lie around the graph; -1 for null.
std::int32_t QxChildGraphForest::depthOf(const QxGraph* graph) const {
    std::int32_t depth = -1;
    for (; graph != nullptr; graph = pParentGraph(graph)) {
        ++depth;
    }
    return depth;
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
        if (node != nullptr) {
            node->transferOutEdges(forest->m_manager->pIntergraph()->m_forestNode);
            forest->removeNode(node);
            insertNode(node);
        }
    }
}
