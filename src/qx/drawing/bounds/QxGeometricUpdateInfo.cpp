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
        m_heldGraph = m_graph;
    }
    storeStateAndDisable(notify);
}

QxGeometricUpdateInfo::~QxGeometricUpdateInfo() {
    if (m_heldGraph != nullptr) {
        m_heldGraph->vRelease();
    }
}

void QxGeometricUpdateInfo::storeStateAndDisable(int) {
    if (m_graph == nullptr) {
        return;
    }
    if (m_graph->needsUpdateGraphBounds() != 0) {
        m_needsUpdateGraphBounds = true;
        m_needsRecursiveUpdate = true;
        m_graph->needsUpdateGraphBounds(0);
    } else {
        m_graph->noteEditByListener();
    }
}

void QxGeometricUpdateInfo::enableAndRestoreState() {
    if (m_graph == nullptr || !m_needsUpdateGraphBounds || m_isDragging) {
        return;
    }
    const bool edited = m_graph->wasEditedByListener();
    m_graph->needsUpdateGraphBounds(1);
    if (edited) {
        m_graph->calculateGraphBounds(0);
    } else if (m_hasOldBoundingRect && m_hasNewBoundingRect) {
        m_graph->updateGraphBoundsOnMoveResize(m_oldBoundingRect, m_newBoundingRect);
    } else if (m_hasOldBoundingRect) {
        m_graph->updateGraphBoundsOnRemove(m_oldBoundingRect);
    } else if (m_hasNewBoundingRect) {
        m_graph->updateGraphBoundsOnInsert(m_newBoundingRect);
    }
}
