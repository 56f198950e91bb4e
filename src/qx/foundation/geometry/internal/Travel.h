// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/geometry/QxArithmetic.h"
#include "qx/foundation/geometry/QxDirectionEnum.h"
#include "qx/foundation/geometry/QxPoint.h"
#include "qx/foundation/geometry/QxRect.h"
#include "qx/foundation/geometry/QxSideEnum.h"

namespace qx::internal {

/// The direction toward the other side.
inline QxDirectionEnum opposite(int sideOrDirection) {
    return static_cast<QxDirectionEnum>((sideOrDirection + 2) % 4);
}

/// The point moved straight onto the line of one side; a direction names the side entered first.
inline QxPoint ontoSide(const QxRect& rect, const QxPoint& point, int side) {
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

/// The point so far along in the direction; it stays within the coordinate range.
inline QxPoint travelled(const QxPoint& point, QxDirectionEnum direction, std::int64_t distance) {
    switch (direction) {
        case QxDirectionRight:
            return {clampToInt32(point.x() + distance), point.y()};
        case QxDirectionUp:
            return {point.x(), clampToInt32(point.y() + distance)};
        case QxDirectionLeft:
            return {clampToInt32(point.x() - distance), point.y()};
        case QxDirectionDown:
            return {point.x(), clampToInt32(point.y() - distance)};
        default:
            return point;
    }
}

}  // namespace qx::internal
