// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Where points and segments lie relative to the outline of a drawing node.

#include <algorithm>

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxPEdge.h"
#include "qx/drawing/clipping/internal/EdgeEnd.h"
#include "qx/drawing/internal/AskedCoordinates.h"
#include "qx/foundation/geometry/internal/Travel.h"

using qx::internal::ontoSide;
using qx::internal::opposite;
using qx::internal::outlineOf;
using qx::internal::PlacedOutline;
using qx::internal::travelled;

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

QxSideEnum QxDNode::closestSide(const QxConnector* connector) const {
    return connector != nullptr ? closestSide(connector->ntCenter()) : QxSideNone;
}

int QxDNode::findProjection(QxDEdge* edge, const QxConnector* connector, QxPoint& point,
                            const QxShape* shape) const {
    QxRect rect;
    if (edge == nullptr || connector == nullptr || connector->hasRoutingDirection() == 0 ||
        getBoundingRect(rect, 0) == 0) {
        return 0;
    }
    const QxDirectionEnum direction = connector->routingDirection();
    QxPoint next;
    if (connector == edge->pInternalTargetConnector()) {
        edge->pTargetOrPathEdge()->getSourcePoint(next, 0);
    } else {
        edge->pSourceOrPathEdge()->getTargetPoint(next, 0);
    }
    // From the next point straight back, to well behind the node: what is met first is where the
    // edge leaves.
    const QxPoint behind = travelled(ontoSide(rect, next, direction), opposite(direction),
                                     std::max(rect.width(), rect.height()));
    if (shape != nullptr &&
        shape->intersectsSegment(point, next, behind, rect.center(), rect.size()) != 0) {
        return 1;
    }
    QxPoint crossing = next;
    QxPoint end = behind;
    point = rect.intersectsSegment(crossing, end) != 0
                ? crossing
                : ontoSide(rect, rect.center(), opposite(direction));
    return 1;
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
