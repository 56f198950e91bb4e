// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// A path is completed in two steps. At each end, where the direction is given, a corner is put next
// to the end point: on the way to the next point or, when there are but two points, halfway, so
// that both ends get theirs. Then the points are copied one by one: a slanted segment gets a corner
// that goes on in the direction of the segment before it; one that opens the path, the corner that
// suits the segment behind it, or else its own slope.

#include "qx/drawing/orthogonal/internal/AxisPath.h"

#include <cstddef>
#include <utility>

#include "qx/foundation/geometry/QxArithmetic.h"

namespace qx::internal {

namespace {

std::int32_t middle(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>((std::int64_t{a} + b) / 2);
}

/// Whether an end needs a corner to go on to `next` in the direction asked for.
bool needsCorner(const QxPoint& end, const QxPoint& next, bool isHorizontal) {
    return isHorizontal ? end.y() != next.y() : end.x() != next.x();
}

/// That corner, halfway when `next` is the other end.
QxPoint cornerAtEnd(const QxPoint& end, const QxPoint& next, bool isHorizontal, bool isHalfway) {
    if (isHorizontal) {
        return {isHalfway ? middle(end.x(), next.x()) : next.x(), end.y()};
    }
    return {end.x(), isHalfway ? middle(end.y(), next.y()) : next.y()};
}

/// The corner of a slanted segment from a to b that nothing comes before, with c behind it.
QxPoint openingCorner(const QxPoint& a, const QxPoint& b, const QxPoint& c) {
    const QxPoint horizontalFirst(b.x(), a.y());
    const QxPoint verticalFirst(a.x(), b.y());
    if (b.x() == c.x()) {
        return horizontalFirst;
    }
    if (b.y() == c.y()) {
        return verticalFirst;
    }
    const std::int64_t slope = (std::int64_t{a.y()} - b.y()) / (std::int64_t{a.x()} - b.x());
    return slope <= 1 ? horizontalFirst : verticalFirst;
}

}  // namespace

bool runsAlongAxes(const std::vector<QxPoint>& points) {
    for (std::size_t i = 1; i < points.size(); ++i) {
        if (!isAxisParallel(points[i - 1], points[i])) {
            return false;
        }
    }
    return true;
}

void completeAlongAxes(std::vector<QxPoint>& points, bool startsHorizontal, bool endsHorizontal) {
    if (points.size() < 2) {
        return;
    }
    const bool isHalfway = points.size() == 2;
    const QxPoint first = points.front();
    const QxPoint second = points[1];
    const QxPoint last = points.back();
    const QxPoint lastButOne = points[points.size() - 2];
    if (needsCorner(first, second, startsHorizontal)) {
        points.insert(points.begin() + 1, cornerAtEnd(first, second, startsHorizontal, isHalfway));
    }
    if (needsCorner(last, lastButOne, endsHorizontal)) {
        points.insert(points.end() - 1, cornerAtEnd(last, lastButOne, endsHorizontal, isHalfway));
    }
    if (runsAlongAxes(points)) {
        return;
    }
    std::vector<QxPoint> path{points.front()};
    path.reserve(2 * points.size());
    for (std::size_t i = 1; i + 1 < points.size(); ++i) {
        const QxPoint& here = points[i];
        const QxPoint& next = points[i + 1];
        if (!isAxisParallel(path.back(), here)) {
            path.push_back(openingCorner(path.back(), here, next));
        }
        const bool cameVertically = path.back().x() == here.x();
        path.push_back(here);
        if (!isAxisParallel(here, next)) {
            path.push_back(cameVertically ? QxPoint(here.x(), next.y())
                                          : QxPoint(next.x(), here.y()));
        }
    }
    path.push_back(points.back());
    points = std::move(path);
}

bool dropIdlePoints(std::vector<QxPoint>& points) {
    if (points.size() < 3) {
        return false;
    }
    std::size_t kept = 1;
    for (std::size_t i = 1; i + 1 < points.size(); ++i) {
        const QxPoint& before = points[kept - 1];
        const QxPoint& here = points[i];
        const QxPoint& next = points[i + 1];
        const bool isIdle = (before.x() == here.x() && here.x() == next.x()) ||
                            (before.y() == here.y() && here.y() == next.y()) || before == next;
        if (!isIdle) {
            points[kept++] = here;
        }
    }
    const bool hasDropped = kept + 1 < points.size();
    points[kept++] = points.back();
    points.resize(kept);
    return hasDropped;
}

void straightenStart(std::vector<QxPoint>& points) {
    if (points.size() < 2 || isAxisParallel(points[0], points[1])) {
        return;
    }
    if (points.size() == 2) {
        completeAlongAxes(points, true, true);
    } else if (points[1].x() == points[2].x()) {
        points[1].y(points[0].y());
    } else {
        points[1].x(points[0].x());
    }
}

}  // namespace qx::internal
