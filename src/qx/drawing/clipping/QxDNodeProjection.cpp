// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Where points and segments lie relative to the outline of a drawing node.

#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/clipping/internal/EdgeEnd.h"
#include "qx/drawing/internal/AskedCoordinates.h"

using qx::internal::outlineOf;
using qx::internal::PlacedOutline;

int QxDNode::within(const QxPoint& point, int inOwnGraph) const {
    QxPoint own = point;
    if (qx::internal::fromAsked(*this, own, inOwnGraph) == 0) {
        return 0;
    }
    return outlineOf(*this, m_rect).contains(own) ? 1 : 0;
}

int QxDNode::intersectsSegment(QxPoint& from, const QxPoint& to, int inOwnGraph) const {
    if (inOwnGraph != 0) {
        return outlineOf(*this, m_rect).clip(from, to) ? 1 : 0;
    }
    QxRect rect;
    return getBoundingRect(rect, 0) != 0 && outlineOf(*this, rect).clip(from, to) ? 1 : 0;
}

QxSideEnum QxDNode::closestSide(const QxPoint& point) const {
    return pOwnerGraph() != nullptr ? m_rect.closestSide(point) : QxSideNone;
}

QxDirectionEnum QxDNode::computeProjection(QxPoint& point) const {
    return PlacedOutline(m_rect, pShape()).project(point);
}

int QxDNode::computeProjection(QxPoint& point, QxDirectionEnum direction) const {
    return outlineOf(*this, m_rect).project(point, direction) ? 1 : 0;
}

void QxDNode::computeProjectionAtShapeBorder(std::int32_t& x, std::int32_t& y, int perMil) const {
    outlineOf(*this, m_rect).moveOffsetOntoOutline(x, y, perMil != 0);
}

void QxDNode::moveOutside(QxPoint& point, QxDirectionEnum direction, int inOwnGraph) const {
    QxRect rect;
    if (getBoundingRect(rect, inOwnGraph) != 0) {
        outlineOf(*this, rect).moveOutside(point, direction);
    }
}
