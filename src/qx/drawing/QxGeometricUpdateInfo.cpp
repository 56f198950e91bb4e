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
    storeStateAndDisable(notify);
}

void QxGeometricUpdateInfo::storeStateAndDisable(int) {
    if (m_graph != nullptr && m_graph->needsUpdateGraphBounds() != 0) {
        m_needsUpdateGraphBounds = true;
        m_needsRecursiveUpdate = true;
        m_graph->needsUpdateGraphBounds(0);
    }
}

void QxGeometricUpdateInfo::enableAndRestoreState() {
    if (!m_needsUpdateGraphBounds || m_isDragging) {
        return;
    }
    m_graph->needsUpdateGraphBounds(1);
    if (m_hasOldBoundingRect && m_hasNewBoundingRect) {
        m_graph->updateGraphBoundsOnMoveResize(m_oldBoundingRect, m_newBoundingRect);
    } else if (m_hasOldBoundingRect) {
        m_graph->updateGraphBoundsOnRemove(m_oldBoundingRect);
    } else if (m_hasNewBoundingRect) {
        m_graph->updateGraphBoundsOnInsert(m_newBoundingRect);
    }
}
