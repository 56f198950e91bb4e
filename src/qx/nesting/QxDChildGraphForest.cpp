// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/nesting/QxDChildGraphForest.h"

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxFactory.h"
#include "qx/foundation/util/internal/Ref.h"
#include "qx/nesting/QxDChildGraphForestEdge.h"
#include "qx/nesting/QxDChildGraphForestNode.h"
#include "qx/nesting/QxExpandedNodeExtension.h"
#include "qx/nesting/internal/ManagerExtras.h"

using qx::internal::Ref;

// --- Nodes

QxDGraph* QxDChildGraphForestNode::pGraph() const {
    return static_cast<QxDGraph*>(QxChildGraphForestNode::pGraph());
}

QxDChildGraphForestEdge* QxDChildGraphForestNode::pInEdge() const {
    return static_cast<QxDChildGraphForestEdge*>(pFirstInEdge());
}

QxDChildGraphForestEdge* QxDChildGraphForestNode::pOutEdge() const {
    return static_cast<QxDChildGraphForestEdge*>(pFirstOutEdge());
}

QxDChildGraphForestNode* QxDChildGraphForestNode::pInNode() const {
    const QxDChildGraphForestEdge* relation = pInEdge();
    return relation != nullptr ? relation->pSourceNode() : nullptr;
}

QxDChildGraphForestNode* QxDChildGraphForestNode::pOutNode() const {
    const QxDChildGraphForestEdge* relation = pOutEdge();
    return relation != nullptr ? relation->pTargetNode() : nullptr;
}

QxDChildGraphForestEdge* QxDChildGraphForestNode::pDisconnectedInEdge() const {
    return static_cast<QxDChildGraphForestEdge*>(QxChildGraphForestNode::pDisconnectedInEdge());
}

// --- Relations

QxDChildGraphForestEdge::~QxDChildGraphForestEdge() {
    if (m_extension != nullptr) {
        m_extension->vRelease();
    }
}

QxDNode* QxDChildGraphForestEdge::pNode() const {
    QxGraphMember* member = pGraphMember();
    return member != nullptr && member->isNode() != 0 ? static_cast<QxDNode*>(member) : nullptr;
}

QxDEdge* QxDChildGraphForestEdge::pEdge() const {
    QxGraphMember* member = pGraphMember();
    return member != nullptr && member->isEdge() != 0 ? static_cast<QxDEdge*>(member) : nullptr;
}

QxDGraph* QxDChildGraphForestEdge::pChildGraph() const {
    return static_cast<QxDGraph*>(QxChildGraphForestEdge::pChildGraph());
}

QxDChildGraphForestNode* QxDChildGraphForestEdge::pSourceNode() const {
    return static_cast<QxDChildGraphForestNode*>(QxEdge::pSourceNode());
}

QxDChildGraphForestNode* QxDChildGraphForestEdge::pTargetNode() const {
    return static_cast<QxDChildGraphForestNode*>(QxEdge::pTargetNode());
}

QxDChildGraphForest* QxDChildGraphForestEdge::pOwnerGraph() const {
    return static_cast<QxDChildGraphForest*>(QxEdge::pOwnerGraph());
}

QxExpandedNodeExtension* QxDChildGraphForestEdge::allocateExpandedNodeExtension() {
    discardExpandedNodeExtension();
    const QxDChildGraphForest* forest = pOwnerGraph();
    QxDGraphManager* manager = forest != nullptr ? forest->pGraphManager() : nullptr;
    auto* factory =
        manager != nullptr ? static_cast<QxFactory*>(manager->pUnverifiedFactory()) : nullptr;
    if (factory != nullptr) {
        m_extension = factory->qxNewExpandedNodeExtension(pNode(), manager);
        forest->nestingChanged(*this);
    }
    return m_extension;
}

void QxDChildGraphForestEdge::discardExpandedNodeExtension() {
    if (m_extension != nullptr) {
        m_extension->vRelease();
        m_extension = nullptr;
        if (const QxDChildGraphForest* forest = pOwnerGraph()) {
            forest->nestingChanged(*this);
        }
    }
}

void QxDChildGraphForestEdge::vFollowState() {
    if (const QxDChildGraphForest* forest = pOwnerGraph()) {
        forest->nestingChanged(*this);
    }
}

void QxDChildGraphForestEdge::vFollowEnds() {
    vFollowState();
}

// --- The forest

QxDChildGraphForest::QxDChildGraphForest(QxDGraphManager* manager) : QxChildGraphForest(manager) {}

QxDChildGraphForest::~QxDChildGraphForest() = default;

QxNode* QxDChildGraphForest::vNewNode(int) {
    return new QxDChildGraphForestNode(this);
}

QxEdge* QxDChildGraphForest::vNewEdge(int) {
    return new QxDChildGraphForestEdge(this);
}

QxGraph* QxDChildGraphForest::vHidePartner(const QxGraph* graph) const {
    const auto* drawn = static_cast<const QxDGraph*>(graph);
    return drawn->isHideGraph() != 0 ? drawn->pHideFromGraph() : drawn->pHideGraph();
}

QxDGraphManager* QxDChildGraphForest::pGraphManager() const {
    return static_cast<QxDGraphManager*>(QxChildGraphForest::pGraphManager());
}

void QxDChildGraphForest::nestingChanged(const QxDChildGraphForestEdge& relation) const {
    pGraphManager()->nestingChanged();
    qx::internal::MetaEdgeUpkeep::nestingChanged(relation.pChildGraph());
}

namespace {

/// The forest node of the graph in which an expanded node shows this one; null when none does.
QxDChildGraphForestNode* nestedIn(const QxDChildGraphForestNode& node) {
    const QxDChildGraphForestEdge* relation = node.pInEdge();
    return relation != nullptr && relation->hasExpandedNodeExtension() != 0
               ? relation->pSourceNode()
               : nullptr;
}

}  // namespace

QxDChildGraphForestNode* QxDChildGraphForest::pLeastCommonNestedAncestor(
    QxDChildGraphForestNode* a, QxDChildGraphForestNode* b) const {
    if (a == b || a == nullptr || b == nullptr) {
        return a == b ? a : nullptr;
    }
    for (QxDChildGraphForestNode* node = a; node != nullptr; node = nestedIn(*node)) {
        node->marked(1);
    }
    QxDChildGraphForestNode* common = b;
    while (common != nullptr && common->marked() == 0) {
        common = nestedIn(*common);
    }
    for (QxDChildGraphForestNode* node = a; node != nullptr; node = nestedIn(*node)) {
        node->marked(0);
    }
    return common;
}

int QxDChildGraphForest::actOnExpand(QxDNode* node, QxDGraph* childGraph, int adjustConnectors) {
    auto* relation = node != nullptr
                         ? static_cast<QxDChildGraphForestEdge*>(node->pChildGraphForestEdge())
                         : nullptr;
    if (relation == nullptr || childGraph == nullptr || relation->pChildGraph() != childGraph ||
        relation->pOwnerGraph() != this) {
        return 0;
    }
    const Ref<QxDGraph> alive(childGraph);
    const int wasVisible = childGraph->isVisible();
    QxExpandedNodeExtension* extension = relation->allocateExpandedNodeExtension();
    if (extension == nullptr) {
        return 0;
    }
    extension->exchangeContents(adjustConnectors, 0);
    // Whoever expands gives the node its size.
    const qx::internal::Refits::Hold held(pGraphManager()->managerExtras().refits, *childGraph);
    childGraph->disableNestingGraphBoundsAndQuadTree(wasVisible,
                                                     childGraph->isVisible() != wasVisible ? 1 : 0);
    return 1;
}

int QxDChildGraphForest::actOnCollapse(QxDNode* node, int adjustConnectors) {
    auto* relation = node != nullptr
                         ? static_cast<QxDChildGraphForestEdge*>(node->pChildGraphForestEdge())
                         : nullptr;
    if (relation == nullptr || relation->hasExpandedNodeExtension() == 0 ||
        relation->pOwnerGraph() != this) {
        return 0;
    }
    const Ref<QxDGraph> child(relation->pChildGraph());
    const int wasVisible = child ? child->isVisible() : 0;
    relation->pExpandedNodeExtension()->exchangeContents(adjustConnectors, 0);
    relation->discardExpandedNodeExtension();
    if (child) {
        child->disableNestingGraphBoundsAndQuadTree(wasVisible, 0);
    }
    return 1;
}

namespace {

void collapseBeforeDiscard(const QxChildGraphForestEdge* relation) {
    QxDNode* node = static_cast<const QxDChildGraphForestEdge*>(relation)->pNode();
    if (node != nullptr && node->expanded() != 0) {
        node->collapse();
    }
}

}  // namespace

void QxDChildGraphForest::actOnDiscardGraphMember(QxGraphMember* member) {
    const Ref alive(*member);
    if (const QxChildGraphForestEdge* relation = member->pChildGraphForestEdge()) {
        collapseBeforeDiscard(relation);
    }
    QxChildGraphForest::actOnDiscardGraphMember(member);
}

void QxDChildGraphForest::vDiscardChildGraphForestEdge(QxChildGraphForestEdge* edge) {
    const Ref alive(*edge);
    collapseBeforeDiscard(edge);
    if (edge->pForest() == this) {
        QxChildGraphForest::vDiscardChildGraphForestEdge(edge);
    }
}
