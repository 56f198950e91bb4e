// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Dragging a bend or a segment of an edge. What lies beside it on a path along the axes follows
// across; a drag that pulls the end of such a path out of its node adds a segment that leaves the
// node sideways, and a drag of the end of any other path leaves a bend behind.

#include <algorithm>

#include "qx/foundation/util/internal/Ref.h"
#include "qx/update/QxDEdgeInitialGeometry.h"
#include "qx/update/internal/EdgeEnds.h"
#include "qx/update/internal/FreePlace.h"
#include "qx/update/internal/InitialPath.h"
#include "qx/update/internal/Route.h"

using qx::internal::calculatedAt;
using qx::internal::nodeAt;
using qx::internal::Ref;
using qx::internal::Route;

namespace {

bool isAlongY(QxDirectionEnum direction) {
    return direction == QxDirectionUp || direction == QxDirectionDown;
}

/// The other axis than that of `direction`, as a direction.
QxDirectionEnum across(QxDirectionEnum direction) {
    return isAlongY(direction) ? QxDirectionRight : QxDirectionUp;
}

/// To which side of the node an end lies that is left in `direction`; none on its center line.
QxDirectionEnum sideOf(const QxPoint& end, const QxPoint& center, QxDirectionEnum direction) {
    if (isAlongY(direction)) {
        return end.x() == center.x()  ? QxDirectionNone
               : end.x() > center.x() ? QxDirectionRight
                                      : QxDirectionLeft;
    }
    return end.y() == center.y()  ? QxDirectionNone
           : end.y() > center.y() ? QxDirectionUp
                                  : QxDirectionDown;
}

std::int32_t half(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>((std::int64_t{a} + b) / 2);
}

}  // namespace

void QxDEdgeInitialGeometry::moveBy(std::int32_t dx, std::int32_t dy) {
    if (!isUsable() || m_status == QxGeometryOfEdge) {
        return;
    }
    const Ref record(*this);
    const Ref alive(*m_edge);
    if (dx == 0 && dy == 0) {
        restorePath();
    } else if (m_status == QxGeometryOfBend) {
        moveBend(dx, dy);
    } else {
        moveSegment(dx, dy);
    }
}

void QxDEdgeInitialGeometry::moveSegment(std::int32_t dx, std::int32_t dy) {
    Route route = savedRoute();
    auto k = static_cast<std::size_t>(m_index);
    if (m_index < 1 || k >= route.count()) {
        return;
    }
    QxPoint& a = route.at(k);
    QxPoint& b = route.at(k + 1);
    const bool isHorizontal = (k % 2 != 0) == (m_isHorizontal != 0);
    const QxPoint step(m_isOrthogonal != 0 && isHorizontal ? 0 : dx,
                       m_isOrthogonal != 0 && !isHorizontal ? 0 : dy);
    a = a + step;
    b = b + step;
    if (m_isOrthogonal != 0) {
        qx::internal::mergeAtSegment(route, k, isHorizontal, m_delta);
    } else if (route.count() >= 3) {
        const bool dropsA = k > 1 && qx::internal::goesStraightOn(route.at(k - 1), a, b, m_eps);
        if (k + 2 <= route.count() && qx::internal::goesStraightOn(a, b, route.at(k + 2), m_eps)) {
            route.remove(k + 1);
        }
        if (dropsA) {
            route.remove(k);
        }
    }
    if (k == 1) {
        moveEndSegment(route, k, true);
    }
    if (k + 1 == route.count()) {
        moveEndSegment(route, k, false);
    }
    finish(route);
}

void QxDEdgeInitialGeometry::moveBend(std::int32_t dx, std::int32_t dy) {
    Route route = savedRoute();
    auto k = static_cast<std::size_t>(m_index);
    if (m_index < 2 || k >= route.count()) {
        return;
    }
    const QxPoint step(dx, dy);
    if (m_isOrthogonal == 0) {
        route.at(k) = route.at(k) + step;
        if (qx::internal::goesStraightOn(route.at(k - 1), route.at(k), route.at(k + 1), m_eps)) {
            route.remove(k);
        }
        finish(route);
        return;
    }
    QxDirectionEnum before = route.at(k - 1).direction(route.at(k));
    QxDirectionEnum after = route.at(k).direction(route.at(k + 1));
    before = before == QxDirectionNone ? across(after) : before;
    after = after == QxDirectionNone ? across(before) : after;
    const auto follow = [&](QxPoint& point, QxDirectionEnum direction) {
        point = point + (isAlongY(direction) ? QxPoint(dx, 0) : QxPoint(0, dy));
    };
    follow(route.at(k - 1), before);
    follow(route.at(k + 1), after);
    route.at(k) = route.at(k) + step;
    qx::internal::mergeAtBend(route, k, (k % 2 != 0) == (m_isHorizontal != 0), m_delta);
    if (k < 3) {
        moveEndSegment(route, k, true);
    }
    if (k + 1 >= route.count()) {
        moveEndSegment(route, k, false);
    }
    finish(route);
}

bool QxDEdgeInitialGeometry::moveEndSegment(Route& route, std::size_t& index, bool atSource) {
    QxConnector* connector = calculatedAt(*m_edge, atSource);
    QxDNode* node = nodeAt(*m_edge, atSource);
    const auto add = [&](const QxPoint& point) {
        if (atSource) {
            route.insertBefore(1, point);
            ++index;
        } else {
            route.append(point);
        }
    };
    if (m_isOrthogonal == 0 || connector == nullptr) {
        add(atSource ? *m_points.pFirstPoint() : *m_points.pLastPoint());
        return false;
    }
    QxPoint& end = route.at(atSource ? 1 : route.count());
    const QxRect rect = qx::internal::rectFor(*m_edge, *node);
    if (rect.left() <= end.x() && end.x() <= rect.right() && rect.bottom() <= end.y() &&
        end.y() <= rect.top()) {
        return false;
    }
    const QxDirectionEnum onward = end.direction(route.at(atSource ? 2 : route.count() - 1));
    const QxDirectionEnum side = sideOf(end, rect.center(), onward);
    const std::size_t position = atSource ? index : route.mirrored(index);
    if (onward == QxDirectionNone || side == QxDirectionNone || position > 2) {
        return false;
    }
    const bool high = onward == QxDirectionLeft || onward == QxDirectionDown;
    const std::int32_t free = qx::internal::firstEdgeOnSide(*node, side, high, m_edge);
    QxPoint leaves(free, free);
    qx::internal::fromNode(*m_edge, *node, leaves);
    if (isAlongY(onward)) {
        leaves.y(half(onward == QxDirectionDown ? rect.bottom() : rect.top(), leaves.y()));
        end.y(leaves.y());
        leaves.x(side == QxDirectionRight ? rect.right() : rect.left());
    } else {
        leaves.x(half(onward == QxDirectionLeft ? rect.left() : rect.right(), leaves.x()));
        end.x(leaves.x());
        leaves.y(side == QxDirectionUp ? rect.top() : rect.bottom());
    }
    connector->routingDirection(side);
    add(leaves);
    return true;
}
