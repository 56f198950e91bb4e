// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/geometry/QxPoint.h"

#include <cmath>
#include <cstdlib>
#include <ostream>

#include "qx/foundation/util/QxDebugStream.h"

double QxPoint::distance(const QxPoint& other) const noexcept {
    const double dx = static_cast<double>(other.x()) - x();
    const double dy = static_cast<double>(other.y()) - y();
    return std::sqrt(dx * dx + dy * dy);
}

QxDirectionEnum QxPoint::direction(const QxPoint& other) const noexcept {
    return other.x() == x() || other.y() == y() ? roughDirection(other) : QxDirectionNone;
}

QxDirectionEnum QxPoint::roughDirection(const QxPoint& other) const noexcept {
    const std::int64_t dx = std::int64_t{other.x()} - x();
    const std::int64_t dy = std::int64_t{other.y()} - y();
    if (dx == 0 && dy == 0) {
        return QxDirectionNone;
    }
    if (std::abs(dx) >= std::abs(dy)) {
        return dx > 0 ? QxDirectionRight : QxDirectionLeft;
    }
    return dy > 0 ? QxDirectionUp : QxDirectionDown;
}

void QxPoint::debugOutput(int depth) const {
    qxDebugIndent(depth) << "QxPoint " << x() << ' ' << y() << '\n';
}
