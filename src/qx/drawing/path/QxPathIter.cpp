// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/drawing/QxPathIter.h"

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/path/internal/Bend.h"

namespace {

QxPNode* bendAt(QxNode* node) {
    return qx::internal::isBend(node) ? static_cast<QxPNode*>(node) : nullptr;
}

QxPEdge* endSegment(const QxDEdge* edge, QxIterDirectionEnum direction) {
    if (edge == nullptr) {
        return nullptr;
    }
    // A walk hands out what it walks over for change, whether or not it may change the edge.
    return const_cast<QxPEdge*>(direction == QxIterBackward ? edge->pTargetOrPathEdge()
                                                            : edge->pSourceOrPathEdge());
}

}  // namespace

void QxPathIter::init(const QxDEdge* edge, QxIterDirectionEnum direction) {
    m_direction = direction;
    QxPEdge* segment = endSegment(edge, direction);
    goTo(segment != nullptr && segment->connected() != 0 ? segment : nullptr);
}

void QxPathIter::goTo(QxPEdge* edge) {
    m_edge = edge;
    m_node = nullptr;
    if (edge != nullptr) {
        m_node = bendAt(m_direction == QxIterBackward ? edge->QxEdge::pSourceNode()
                                                      : edge->QxEdge::pTargetNode());
    }
}

QxPathIter& QxPathIter::operator++() {
    QxEdge* next = nullptr;
    if (m_node != nullptr) {
        next = m_direction == QxIterBackward ? m_node->pFirstInEdge() : m_node->pFirstOutEdge();
    }
    goTo(static_cast<QxPEdge*>(next));
    return *this;
}

void QxDisconnectedPathIter::init(const QxDEdge* edge, QxIterDirectionEnum direction) {
    m_edge = endSegment(edge, direction);
    m_node = nullptr;
    if (m_edge != nullptr) {
        m_node = bendAt(direction == QxIterBackward ? m_edge->QxEdge::pSourceNode()
                                                    : m_edge->QxEdge::pTargetNode());
    }
}

QxDisconnectedPathIter& QxDisconnectedPathIter::operator++() {
    QxEdge* next = m_node != nullptr ? m_node->pDegreeTwoOrLessNodeOtherEdge(m_edge) : nullptr;
    m_node = next != nullptr ? bendAt(next->pOtherNode(m_node)) : nullptr;
    m_edge = static_cast<QxPEdge*>(next);
    return *this;
}
