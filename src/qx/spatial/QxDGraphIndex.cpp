// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// The spatial index of a graph: made, dropped, switched and refreshed. A graph starts without one.

#include <utility>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxLabel.h"
#include "qx/spatial/QxQTree.h"
#include "qx/spatial/internal/IndexStore.h"

QxQTree* QxDGraph::vNewQuadTree(unsigned short excluded) {
    return new QxQTree(this, excluded);
}

void QxDGraph::allocateQuadTree() {
    discardQuadTree();
    m_quadTree = vNewQuadTree(QxQTree::ExcludeConnectors);
    if (m_quadTree != nullptr) {
        m_quadTree->m_store->becomeOwn();
    }
}

void QxDGraph::calculateQuadTree() {
    allocateQuadTree();
    if (m_quadTree != nullptr) {
        m_quadTree->addDGraphInfo();
        m_quadTree->needsUpdate(1);
        m_quadTree->dirty(0);
    }
}

void QxDGraph::discardQuadTree() {
    if (m_quadTree != nullptr) {
        m_quadTree->discardDGraphInfo();  // while it is still the graph's own
        std::exchange(m_quadTree, nullptr)->vRelease();
    }
}

bool QxDGraph::suspendQuadTree() {
    const bool wasOn = needsUpdateQuadTree() != 0;
    if (wasOn) {
        m_quadTree->needsUpdate(0);
    }
    return wasOn;
}

void QxDGraph::resumeQuadTree() {
    if (m_quadTree == nullptr) {
        return;
    }
    if (m_quadTree->isIgnoringGeometryChanges() != 0) {
        m_quadTree->needsUpdateCopy(1);  // a listener has begun to ignore in the middle of a change
    } else {
        m_quadTree->needsUpdate(1);
    }
}

int QxDGraph::disableQuadTree(int disable) {
    if (disable != 0) {
        discardQuadTree();
    } else if (m_quadTree == nullptr) {
        calculateQuadTree();
    } else if (m_quadTree->needsUpdate() == 0) {
        m_quadTree->update();
    }
    return disable;
}

int QxDGraph::useQuadTree() const {
    const QxDGraphManager* manager = pOwnerGraphManager();
    return fileReadRunning() != 0 || (manager != nullptr && manager->isReading() != 0) ? 0 : 1;
}

int QxDGraph::useQuadTree(int value) {
    if (m_quadTree != nullptr && (value != 0) != (canUseQuadTree() != 0)) {
        m_quadTree->useSpecial(value);
    }
    return value;
}

int QxDGraph::canUseQuadTree() const {
    if (fileReadRunning() != 0 || m_quadTree == nullptr) {
        return 0;
    }
    return m_quadTree->updateDisabled() == 0 ? 1 : m_quadTree->useSpecial();
}

int QxDGraph::needsUpdateQuadTree() const {
    return fileReadRunning() == 0 && m_quadTree != nullptr ? m_quadTree->needsUpdate() : 0;
}

void QxDGraph::disableQuadTreeUpdates(int disable) {
    if (m_quadTree != nullptr) {
        m_quadTree->updateDisabled(disable);
    }
}

int QxDGraph::disableQuadTreeUpdates() const {
    return m_quadTree != nullptr ? m_quadTree->updateDisabled() : 1;
}

int QxDGraph::isIgnoredGeometryChanges() const {
    return m_quadTree != nullptr && m_quadTree->isIgnoringGeometryChanges() == 0 ? 0 : 1;
}

void QxDGraph::ignoreGeometryChanges(int ignore) {
    if (m_quadTree != nullptr && (ignore != 0) != (isIgnoredGeometryChanges() != 0)) {
        m_quadTree->ignoreGeometryChanges(ignore);
    }
}

namespace {

QxQTree* treeInUse(const QxDGraph& graph) {
    return graph.useQuadTree() != 0 ? graph.pQuadTree() : nullptr;
}

}  // namespace

int QxDGraph::updateQuadTree() {
    QxQTree* tree = treeInUse(*this);
    if (tree != nullptr) {
        tree->updateDGraphInfo();
    }
    return tree != nullptr ? 1 : 0;
}

int QxDGraph::updateQuadTree(QxDNode* node) {
    QxQTree* tree = node != nullptr && node->pOwnerGraph() == this ? treeInUse(*this) : nullptr;
    if (tree != nullptr) {
        tree->updateDNodeInfo(node);
    }
    return tree != nullptr ? 1 : 0;
}

int QxDGraph::updateQuadTree(QxLabel* label) {
    QxQTree* tree = label != nullptr && label->pGraph() == this ? treeInUse(*this) : nullptr;
    if (tree != nullptr) {
        tree->updateInfo(label);
    }
    return tree != nullptr ? 1 : 0;
}

int QxDGraph::updateQuadTree(QxDEdge* edge) {
    QxQTree* tree = edge != nullptr && edge->pOwnerGraph() == this ? treeInUse(*this) : nullptr;
    if (tree != nullptr) {
        tree->updateDEdgeInfo(edge);
    }
    return tree != nullptr ? 1 : 0;
}
