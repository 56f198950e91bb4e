// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Where points and segments lie relative to the outline of a drawing node.

#include <algorithm>

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxPEdge.h"
#include "qx/foundation/geometry/QxPerMil.h"
#include "qx/foundation/geometry/QxShapeResource.h"

namespace {

/// The shape of the node when its outline differs from the bounding rectangle; else null. The
/// default shape is a rectangle.
const QxShape* outlineWithinRect(const QxDNode& node) {
    const QxShapeResource* resource = node.pQueryShapeResource();
    const QxShape* shape = resource != nullptr ? resource->pShape() : nullptr;
    return shape != nullptr && shape->isRectangular() == 0 ? shape : nullptr;
}

QxDirectionEnum opposite(int sideOrDirection) {
    return static_cast<QxDirectionEnum>((sideOrDirection + 2) % 4);
}

/// The point moved straight onto the line of one side; a direction names the side entered first.
QxPoint ontoSide(const QxRect& rect, const QxPoint& point, int side) {
    switch (side) {
        case QxSideLeft:
            return {rect.left(), point.y()};
        case QxSideBottom:
            return {point.x(), rect.bottom()};
        case QxSideRight:
            return {rect.right(), point.y()};
        default:
            return {point.x(), rect.top()};
    }
}

QxPoint travelled(const QxPoint& point, QxDirectionEnum direction, std::int64_t distance) {
    switch (direction) {
        case QxDirectionRight:
            return {qx::clampToInt32(point.x() + distance), point.y()};
        case QxDirectionUp:
            return {point.x(), qx::clampToInt32(point.y() + distance)};
        case QxDirectionLeft:
            return {qx::clampToInt32(point.x() - distance), point.y()};
        case QxDirectionDown:
            return {point.x(), qx::clampToInt32(point.y() - distance)};
        default:
            return point;
    }
}

/// The side of an extent that the offset from its center lies on; right before left before top
/// before bottom at corners.
QxSideEnum sideAtOffset(std::int32_t x, std::int32_t y, const QxRect& halves) {
    if (x == halves.right()) {
        return QxSideRight;
    }
    if (x == halves.left()) {
        return QxSideLeft;
    }
    if (y == halves.top()) {
        return QxSideTop;
    }
    return y == halves.bottom() ? QxSideBottom : QxSideNone;
}

}  // namespace

int QxDNode::within(const QxPoint& point, int inOwnGraph) const {
    QxPoint own = point;
    if (inOwnGraph == 0) {
        const QxDGraph* graph = pOwnerGraph();
        if (graph == nullptr || isVisible() == 0) {
            return 0;
        }
        graph->inverseExpandedTransformPoint(own);
    }
    if (m_rect.within(own) == 0) {
        return 0;
    }
    const QxShape* outline = outlineWithinRect(*this);
    return outline != nullptr ? outline->within(own, m_rect.center(), m_rect.size()) : 1;
}

int QxDNode::intersectsSegment(QxPoint& from, const QxPoint& to, int inOwnGraph) const {
    QxRect rect = m_rect;
    if (inOwnGraph == 0 && getBoundingRect(rect, 0) == 0) {
        return 0;
    }
    if (const QxShape* outline = outlineWithinRect(*this)) {
        return from == to ? outline->onBoundary(from, rect.center(), rect.size())
                          : outline->intersectsSegment(from, from, to, rect.center(), rect.size());
    }
    if (from == to) {
        return rect.onBoundary(from);
    }
    QxPoint first = from;
    QxPoint second = to;
    const int crossings = rect.intersectsSegment(first, second);
    if (crossings != 0) {
        from = crossings == 2 ? second : first;
    }
    return crossings != 0 ? 1 : 0;
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
    const bool inXRange = m_rect.withinXRange(point) != 0;
    const bool inYRange = m_rect.withinYRange(point) != 0;
    if (!inXRange && !inYRange) {
        return QxDirectionNone;
    }
    const QxSideEnum side = m_rect.closestSide(point);
    const bool isBeyondSide = (side % 2 == 0 && !inYRange) || (side == QxSideBottom && !inXRange);
    const QxShape* shape = pShape();
    const bool crosses =
        !isBeyondSide && shape != nullptr &&
        (shape->isRectangular() != 0 || shape->within(point, m_rect.center(), m_rect.size()) != 0);
    const auto direction = crosses ? opposite(side) : static_cast<QxDirectionEnum>(side);
    computeProjection(point, direction);
    return direction;
}

int QxDNode::computeProjection(QxPoint& point, QxDirectionEnum direction) const {
    const bool isDirection = direction >= QxDirectionRight && direction <= QxDirectionDown;
    if (!isDirection || (m_rect.withinXRange(point) == 0 && m_rect.withinYRange(point) == 0)) {
        return 0;
    }
    const QxPoint exit = ontoSide(m_rect, point, opposite(direction));
    const QxShape* outline = outlineWithinRect(*this);
    if (outline == nullptr) {
        point = exit;
        return 1;
    }
    const auto meets = [&](const QxPoint& start, QxPoint& crossing) {
        return outline->intersectsSegment(crossing, start, point, m_rect.center(), m_rect.size());
    };
    QxPoint crossing = exit;
    if (meets(ontoSide(m_rect, point, direction), crossing) == 0 && meets(exit, crossing) == 0) {
        QxPoint end = point;
        m_rect.intersectsSegment(crossing, end);
    }
    point = crossing;
    return 1;
}

void QxDNode::computeProjectionAtShapeBorder(std::int32_t& x, std::int32_t& y, int perMil) const {
    const QxShape* outline = outlineWithinRect(*this);
    const QxPoint center = m_rect.center();
    const QxRect halves = perMil != 0 ? QxRect(-1000, -1000, 1000, 1000)
                                      : QxRect(-m_rect.leftHalfWidth(), -m_rect.bottomHalfHeight(),
                                               m_rect.rightHalfWidth(), m_rect.topHalfHeight());
    const QxSideEnum side = sideAtOffset(x, y, halves);
    if (outline == nullptr || side == QxSideNone) {
        return;
    }
    QxPerMil position(qx::clampToInt16(x), qx::clampToInt16(y));
    const QxPoint place =
        center + (perMil != 0 ? QxPoint(position.getOffsetX(m_rect), position.getOffsetY(m_rect))
                              : QxPoint(x, y));
    // From a little outside the side straight through the node.
    const auto inward = static_cast<QxDirectionEnum>(side);
    const QxPoint start = travelled(place, opposite(side), 2);
    const QxPoint end = travelled(ontoSide(m_rect, place, opposite(side)), inward, 2);
    QxPoint crossing = place;
    outline->intersectsSegment(crossing, start, end, center, m_rect.size());
    if (crossing == place) {
        return;
    }
    const QxPoint offset = crossing - center;
    if (perMil == 0) {
        x = offset.x();
        y = offset.y();
        return;
    }
    position.compute(offset.x(), offset.y(), m_rect);
    if (side % 2 == 0) {
        x = position.x();
    } else {
        y = position.y();
    }
}

void QxDNode::moveOutside(QxPoint& point, QxDirectionEnum direction, int inOwnGraph) const {
    QxRect rect;
    if (getBoundingRect(rect, inOwnGraph) == 0) {
        return;
    }
    std::int64_t step = std::max(rect.width(), rect.height());
    point = travelled(point, direction, step);
    const QxShape* outline = outlineWithinRect(*this);
    while (outline != nullptr && outline->within(point, rect.center(), rect.size()) != 0) {
        step *= 2;
        const QxPoint next = travelled(point, direction, step);
        if (next == point) {
            return;  // the end of the coordinate range
        }
        point = next;
    }
}
