// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/drawing/QxEdgeVisiblePointDListIter.h"

#include <utility>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"

void QxEdgeVisiblePointDListIter::init(QxDEdge* edge, int inOwnGraph,
                                       QxIterDirectionEnum direction) {
    *this = QxEdgeVisiblePointDListIter();
    m_direction = direction;
    const QxDGraph* graph = edge != nullptr ? edge->pOwnerGraph() : nullptr;
    if (graph == nullptr || edge->isVisible() == 0 || graph->isVisible() == 0) {
        return;
    }
    m_edge = edge->pFromClippingEdge();
    m_last = m_edge != nullptr ? edge->pToClippingEdge() : nullptr;
    if (isBackward()) {
        std::swap(m_edge, m_last);
    }
    m_atStart = true;
    if (inOwnGraph == 0 && graph->isAnchorGraph() == 0 && graph->isIntergraph() == 0) {
        graph->getExpandedTransformCoef(graph->pAnchorGraph(), m_offsetX, m_scaleX, m_offsetY,
                                        m_scaleY);
    }
}

QxEdgeVisiblePointDListIter& QxEdgeVisiblePointDListIter::operator++() {
    if (m_node != nullptr) {
        QxEdge* next = isBackward() ? m_node->pFirstInEdge() : m_node->pFirstOutEdge();
        m_edge = static_cast<QxPEdge*>(next);
    } else if (!m_atStart) {
        m_edge = nullptr;
    }
    m_atStart = false;
    m_node = nullptr;
    if (m_edge != nullptr && m_edge != m_last) {
        QxNode* end = isBackward() ? m_edge->QxEdge::pSourceNode() : m_edge->QxEdge::pTargetNode();
        m_node = static_cast<QxPNode*>(end);
    }
    return *this;
}

void QxEdgeVisiblePointDListIter::getPoint(QxPoint& point) const {
    if (m_edge == nullptr) {
        return;
    }
    if (m_node != nullptr) {
        m_node->iCenter(point);
    } else if (m_atStart != isBackward()) {
        m_edge->ntFromPoint(point, 1);
    } else {
        m_edge->ntToPoint(point, 1);
    }
    point.moveTo(qx::floorHalfUp(point.x() * m_scaleX + m_offsetX),
                 qx::floorHalfUp(point.y() * m_scaleY + m_offsetY));
}
