// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxPEdge.h"
#include "qx/drawing/QxPNode.h"
#include "qx/foundation/util/QxDListIter.h"

class QxDEdge;

/// Walks the points of what is drawn of an edge: the clip point at its source, the visible bends,
/// the clip point at its target; backward the other way round. An invisible edge, or one without a
/// visible part, yields nothing.
///
/// `inOwnGraph` nonzero: in owner-graph coordinates; 0: in those of the anchor graph. The visible
/// part is brought up to date first.
class QX_API QxEdgeVisiblePointDListIter : public QxObject {
public:
    QxEdgeVisiblePointDListIter() noexcept = default;
    explicit QxEdgeVisiblePointDListIter(QxDEdge* edge, int inOwnGraph = 1,
                                         QxIterDirectionEnum direction = QxIterForward) {
        init(edge, inOwnGraph, direction);
    }
    void init(QxDEdge* edge, int inOwnGraph = 1, QxIterDirectionEnum direction = QxIterForward);

    QxEdgeVisiblePointDListIter& operator++();
    QxEdgeVisiblePointDListIter& operator--() { return ++*this; }

    explicit operator bool() const noexcept { return m_edge != nullptr; }
    explicit operator int() const noexcept { return m_edge != nullptr ? 1 : 0; }
    /// The current point; no change when the walk is over.
    void getPoint(QxPoint& point) const;
    /// The current bend; null at the clip points.
    QxPNode* pNode() const noexcept { return m_node; }
    /// The segment that the walk came along: it ends (backward: starts) at the bend.
    QxPEdge* pEdge() const noexcept { return m_edge; }

private:
    bool isBackward() const { return m_direction == QxIterBackward; }

    QxPEdge* m_edge = nullptr;
    QxPEdge* m_last = nullptr;
    QxPNode* m_node = nullptr;
    bool m_atStart = false;
    QxIterDirectionEnum m_direction = QxIterForward;
    /// How own coordinates become those asked for.
    double m_offsetX = 0.0;
    double m_scaleX = 1.0;
    double m_offsetY = 0.0;
    double m_scaleY = 1.0;
};
