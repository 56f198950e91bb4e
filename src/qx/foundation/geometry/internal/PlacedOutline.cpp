// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/geometry/internal/PlacedOutline.h"

#include "qx/foundation/geometry/internal/Travel.h"

namespace qx::internal {

namespace {

/// What an offset on each side of the rectangle measures.
QxRect offsetsOfSides(const QxRect& rect, bool isPerMil) {
    return isPerMil ? QxRect(-1000, -1000, 1000, 1000)
                    : QxRect(-rect.leftHalfWidth(), -rect.bottomHalfHeight(), rect.rightHalfWidth(),
                             rect.topHalfHeight());
}

/// The side that an offset from the center lies on; right before left before top before bottom at
/// corners.
QxSideEnum sideAtOffset(std::int32_t x, std::int32_t y, const QxRect& sides) {
    if (x == sides.right()) {
        return QxSideRight;
    }
    if (x == sides.left()) {
        return QxSideLeft;
    }
    if (y == sides.top()) {
        return QxSideTop;
    }
    return y == sides.bottom() ? QxSideBottom : QxSideNone;
}

}  // namespace

bool PlacedOutline::clip(QxPoint& from, const QxPoint& to) const {
    if (const QxShape* shape = pShapeWithinRect()) {
        return from == to ? shape->onBoundary(from, m_rect.center(), m_rect.size()) != 0
                          : firstCrossing(from, from, to);
    }
    if (from == to) {
        return m_rect.onBoundary(from) != 0;
    }
    QxPoint first = from;
    QxPoint second = to;
    const int crossings = m_rect.intersectsSegment(first, second);
    if (crossings != 0) {
        from = crossings == 2 ? second : first;
    }
    return crossings != 0;
}

bool PlacedOutline::firstCrossing(QxPoint& crossing, const QxPoint& from, const QxPoint& to) const {
    return m_shape->intersectsSegment(crossing, from, to, m_rect.center(), m_rect.size()) != 0;
}

QxDirectionEnum PlacedOutline::project(QxPoint& point) const {
    const bool inXRange = m_rect.withinXRange(point) != 0;
    const bool inYRange = m_rect.withinYRange(point) != 0;
    if (!inXRange && !inYRange) {
        return QxDirectionNone;
    }
    const QxSideEnum side = m_rect.closestSide(point);
    const bool isBeyondSide = (side % 2 == 0 && !inYRange) || (side == QxSideBottom && !inXRange);
    const bool crosses = !isBeyondSide && m_shape != nullptr &&
                         (m_shape->isRectangular() != 0 ||
                          m_shape->within(point, m_rect.center(), m_rect.size()) != 0);
    const auto direction = crosses ? opposite(side) : static_cast<QxDirectionEnum>(side);
    project(point, direction);
    return direction;
}

bool PlacedOutline::project(QxPoint& point, QxDirectionEnum direction) const {
    const bool isDirection = direction >= QxDirectionRight && direction <= QxDirectionDown;
    if (!isDirection || (m_rect.withinXRange(point) == 0 && m_rect.withinYRange(point) == 0)) {
        return false;
    }
    const QxPoint exit = ontoSide(m_rect, point, opposite(direction));
    if (pShapeWithinRect() == nullptr) {
        point = exit;
        return true;
    }
    QxPoint crossing = exit;
    if (!firstCrossing(crossing, ontoSide(m_rect, point, direction), point) &&
        !firstCrossing(crossing, exit, point)) {
        QxPoint end = point;
        m_rect.intersectsSegment(crossing, end);
    }
    point = crossing;
    return true;
}

void PlacedOutline::moveOffsetOntoOutline(std::int32_t& x, std::int32_t& y, bool isPerMil) const {
    const QxSideEnum side = sideAtOffset(x, y, offsetsOfSides(m_rect, isPerMil));
    if (pShapeWithinRect() == nullptr || side == QxSideNone) {
        return;
    }
    const QxPoint center = m_rect.center();
    QxPerMil position(clampToInt16(x), clampToInt16(y));
    const QxPoint place =
        center + (isPerMil ? QxPoint(position.getOffsetX(m_rect), position.getOffsetY(m_rect))
                           : QxPoint(x, y));
    // From a little outside the side straight through the rectangle.
    const auto inward = static_cast<QxDirectionEnum>(side);
    const QxPoint start = travelled(place, opposite(side), 2);
    const QxPoint end = travelled(ontoSide(m_rect, place, opposite(side)), inward, 2);
    QxPoint crossing = place;
    firstCrossing(crossing, start, end);
    if (crossing == place) {
        return;
    }
    const QxPoint offset = crossing - center;
    if (!isPerMil) {
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

void PlacedOutline::moveOutside(QxPoint& point, QxDirectionEnum direction) const {
    std::int64_t step = std::max(m_rect.width(), m_rect.height());
    point = travelled(point, direction, step);
    const QxShape* shape = pShapeWithinRect();
    while (shape != nullptr && shape->within(point, m_rect.center(), m_rect.size()) != 0) {
        step *= 2;
        const QxPoint next = travelled(point, direction, step);
        if (next == point) {
            return;  // the end of the coordinate range
        }
        point = next;
    }
}

}  // namespace qx::internal
