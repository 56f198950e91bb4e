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
    if (!m_isDragging) {  // or it is left to who ends the drag
        enableAndRestoreState();
    }
    if (m_keepsGraph) {
        m_graph->vRelease();
    }
}

void QxGeometricUpdateInfo::storeStateAndDisable(int) {
    if (m_graph == nullptr || m_holdsBounds) {
        return;
    }
    m_needsUpdateGraphBounds = m_graph->needsUpdateGraphBounds() != 0;
    m_foundBoundsOn = m_needsUpdateGraphBounds;
    m_qTree = m_graph->pQuadTree();
    m_needsUpdateQuadTree = m_graph->suspendQuadTree();
    m_needsRecursiveUpdate =
        m_needsRecursiveUpdate || m_needsUpdateGraphBounds || m_needsUpdateQuadTree;
    m_graph->holdBounds();
    m_holdsBounds = true;
    if (m_isDragging) {
        leaveBoundsOff();
    }
}

int QxGeometricUpdateInfo::isDragging(int value) {
    m_isDragging = value != 0;
    if (m_isDragging && m_holdsBounds) {
        leaveBoundsOff();
    }
    return value;
}

void QxGeometricUpdateInfo::leaveBoundsOff() {
    if (m_foundBoundsOn) {
        m_graph->needsUpdateGraphBounds(0);
    }
    m_foundBoundsOn = false;
    m_leftBoundsOff = true;
    m_holdsBounds = false;
    m_graph->letGoOfBounds();
}

void QxGeometricUpdateInfo::enableAndRestoreState() {
    if (!m_holdsBounds && !m_leftBoundsOff) {
        return;
    }
    if (m_needsUpdateQuadTree) {
        m_graph->resumeQuadTree();
        m_needsUpdateQuadTree = false;
    }
    if (m_isDragging) {
        return;
    }
    if (m_leftBoundsOff) {
        m_graph->holdBounds();
    }
    m_holdsBounds = false;
    m_leftBoundsOff = false;
    if (m_needsUpdateGraphBounds != m_foundBoundsOn) {
        m_graph->needsUpdateGraphBounds(m_needsUpdateGraphBounds ? 1 : 0);
    }
    const bool grows =
        m_hasNewBoundingRect &&
        !(m_hasOldBoundingRect && m_graph->retreats(m_oldBoundingRect, m_newBoundingRect));
    m_graph->letGoOfBounds(grows ? &m_newBoundingRect : nullptr);
}
