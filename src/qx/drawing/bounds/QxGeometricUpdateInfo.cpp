// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/drawing/QxGeometricUpdateInfo.h"

#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"

QxGeometricUpdateInfo::QxGeometricUpdateInfo(QxDGraph* graph, int selector, int notify) {
    if (graph != nullptr && graph->isVisible() != 0) {
        if (selector == 0) {
            m_graph = graph;
        } else if (const QxDGraphManager* manager = graph->pOwnerGraphManager()) {
            m_graph = manager->pQueryIntergraph();
        }
    }
    if (m_graph != nullptr && m_graph->referenceCount() > 0) {
        m_graph->vAddRef();  // but not one that is being destroyed
        m_keepsGraph = true;
    }
    storeStateAndDisable(notify);
}

QxGeometricUpdateInfo::~QxGeometricUpdateInfo() {
    if (m_holdsBounds && m_isDragging && m_needsUpdateGraphBounds) {
        m_graph->needsUpdateGraphBounds(0);  // left to who ends the drag
    }
    m_isDragging = false;
    enableAndRestoreState();
    if (m_keepsGraph) {
        m_graph->vRelease();
    }
}

void QxGeometricUpdateInfo::storeStateAndDisable(int) {
    if (m_graph == nullptr || m_holdsBounds) {
        return;
    }
    m_needsUpdateGraphBounds = m_graph->needsUpdateGraphBounds() != 0;
    m_qTree = m_graph->pQuadTree();
    m_needsUpdateQuadTree = m_graph->suspendQuadTree();
    m_needsRecursiveUpdate =
        m_needsRecursiveUpdate || m_needsUpdateGraphBounds || m_needsUpdateQuadTree;
    m_graph->holdBounds();
    m_holdsBounds = true;
}

void QxGeometricUpdateInfo::enableAndRestoreState() {
    if (!m_holdsBounds) {
        return;
    }
    if (m_needsUpdateQuadTree) {
        m_graph->resumeQuadTree();
        m_needsUpdateQuadTree = false;
    }
    if (m_isDragging) {
        return;
    }
    m_holdsBounds = false;
    const bool grows =
        m_hasNewBoundingRect &&
        !(m_hasOldBoundingRect && m_graph->retreats(m_oldBoundingRect, m_newBoundingRect));
    m_graph->letGoOfBounds(grows ? &m_newBoundingRect : nullptr);
}
