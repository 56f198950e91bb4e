// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// What becomes of a path whose ends, a bend or a segment have moved.
//
// A path along the axes is kept as points between which horizontal and vertical segments alternate;
// where two segments run the same way, a repeated point between them stands for a segment without
// length. So position and axis of a segment follow from each other by their parity, and whatever is
// merged takes two points away. Any other path only loses points that lie straight between their
// neighbours. Everything is linear in the points, but for the removal of points from the middle.

#include "qx/update/internal/Route.h"

#include <cmath>
#include <cstdlib>

namespace qx::internal {

namespace {

struct Unit {
    double x = 0.0;
    double y = 0.0;
};

Unit unitFrom(const QxPoint& a, const QxPoint& b) {
    const double x = static_cast<double>(b.x()) - a.x();
    const double y = static_cast<double>(b.y()) - a.y();
    const double length = std::hypot(x, y);
    return length > 0.0 ? Unit{x / length, y / length} : Unit{};
}

std::int64_t away(std::int32_t a, std::int32_t b) {
    return std::llabs(std::int64_t{a} - b);
}

/// The position of the first point behind `position` that is a different one; beyond the end when
/// there is none.
std::size_t nextDistinct(const Route& route, std::size_t position) {
    std::size_t next = position + 1;
    while (next <= route.count() && route.at(next) == route.at(position)) {
        ++next;
    }
    return next;
}

}  // namespace

bool goesStraightOn(const QxPoint& a, const QxPoint& b, const QxPoint& c, double eps) {
    const Unit u = unitFrom(a, b);
    const Unit v = unitFrom(b, c);
    const double sumX = u.x + v.x;
    const double sumY = u.y + v.y;
    return std::abs(v.y * u.x - v.x * u.y) < eps && sumX * sumX + sumY * sumY > 2.1715728752538;
}

std::int64_t wayAlongAxes(const QxPoint& a, const QxPoint& b) {
    return away(a.x(), b.x()) + away(a.y(), b.y());
}

bool alternate(Route& route, bool isKnown, bool& isHorizontal, std::size_t& index) {
    std::size_t here = 1;
    std::size_t next = nextDistinct(route, here);
    if (next > route.count()) {
        return false;
    }
    bool wasHorizontal = isHorizontal;
    for (bool isFirst = true; next <= route.count(); isFirst = false) {
        const bool isVertical = route.at(here).x() == route.at(next).x();
        if (!isVertical && route.at(here).y() != route.at(next).y()) {
            return false;
        }
        const bool isOdd = (next - here) % 2 != 0;
        bool isMissing = false;
        if (!isFirst) {
            isMissing = isOdd == (isVertical != wasHorizontal);
        } else if (isKnown) {
            isMissing = isOdd != (isVertical != isHorizontal);
        } else {
            isHorizontal = isVertical != isOdd;
        }
        if (isMissing) {
            route.insertBefore(next, QxPoint(route.at(here)));
            index += index + 1 >= next ? 1U : 0U;
            ++next;
        }
        wasHorizontal = !isVertical;
        here = next;
        next = nextDistinct(route, here);
    }
    return true;
}

bool startsAlongX(const Route& route) {
    const std::size_t next = nextDistinct(route, 1);
    if (next > route.count()) {
        return true;
    }
    const bool isHorizontal = route.at(next).y() == route.at(1).y();
    return isHorizontal == (next % 2 == 0);
}

namespace {

/// Takes a segment without length out: both its points go, the one behind or before takes over the
/// coordinate across.
void takeSegmentOut(Route& route, std::size_t k, bool isHorizontal) {
    QxPoint& before = route.at(k - 1);
    QxPoint& after = route.at(k + 2);
    const bool movesBefore = k + 3 >= route.count();
    QxPoint& moved = movesBefore ? before : after;
    const QxPoint& still = movesBefore ? after : before;
    if (isHorizontal) {
        moved.x(still.x());
    } else {
        moved.y(still.y());
    }
    route.remove(k, k + 1);
}

}  // namespace

void joinShortSegments(Route& route, bool isFirstHorizontal, std::int64_t delta) {
    if (delta > 0 && route.count() >= 5) {
        for (std::size_t k = 2; k + 2 <= route.count();) {
            if (wayAlongAxes(route.at(k), route.at(k + 1)) < delta) {
                takeSegmentOut(route, k, (k % 2 != 0) == isFirstHorizontal);
                k = k > 2 ? k - 1 : 2;
            } else {
                ++k;
            }
        }
    }
    if (route.count() == 4 && route.at(2) == route.at(3)) {
        route.remove(2, 3);
    }
    // What still coincides are segments without length at the ends.
    for (std::size_t k = 2; k < route.count();) {
        if (route.at(k) == route.at(k - 1) || route.at(k) == route.at(k + 1)) {
            route.remove(k);
        } else {
            ++k;
        }
    }
}

void dropStraightPoints(Route& route, double eps) {
    std::vector<RoutePoint> kept;
    kept.reserve(route.count());
    for (std::size_t k = 1; k <= route.count(); ++k) {
        const bool isInner = k > 1 && k < route.count();
        if (!isInner || !goesStraightOn(kept.back().at, route.at(k), route.at(k + 1), eps)) {
            kept.push_back(route[k]);
        }
    }
    route = Route(std::move(kept));
}

void mergeAtSegment(Route& route, std::size_t& index, bool isHorizontal, std::int64_t delta) {
    const std::size_t count = route.count();
    if (count < 4 || delta <= 0) {
        return;
    }
    const std::size_t a = index;
    const std::size_t b = index + 1;
    const auto along = [&](const QxPoint& point) { return isHorizontal ? point.x() : point.y(); };
    if (count == 4) {
        // Nothing may bring both ends of the path together.
        const std::size_t other = a == 1 ? count : (b == count ? 1 : 0);
        const bool mayMerge = other != 0 ? along(route.at(a == 1 ? a : b)) != along(route.at(other))
                                         : !(route.at(a) == route.at(b));
        if (!mayMerge) {
            return;
        }
    }
    if (b + 1 < count && wayAlongAxes(route.at(b), route.at(b + 1)) < delta) {
        if (isHorizontal) {
            route.at(a).y(route.at(b + 1).y());
        } else {
            route.at(a).x(route.at(b + 1).x());
        }
        route.remove(b, b + 1);
    } else if (a > 2 && wayAlongAxes(route.at(a - 1), route.at(a)) < delta) {
        if (isHorizontal) {
            route.at(a - 1).x(route.at(b).x());
        } else {
            route.at(a - 1).y(route.at(b).y());
        }
        route.remove(a, b);
        index -= 2;
    }
}

void mergeAtBend(Route& route, std::size_t& index, bool isHorizontal, std::int64_t delta) {
    if (route.count() < 4 || delta <= 0) {
        return;
    }
    bool hasMerged = false;
    for (const bool alongX : {true, false}) {
        // The neighbour joined by the segment across, and the point beyond it.
        const bool isBehind = isHorizontal != alongX;
        const std::size_t count = route.count();
        if (isBehind ? index + 3 > count : index < 4) {
            continue;
        }
        const std::size_t first = isBehind ? index + 1 : index - 1;
        const std::size_t second = isBehind ? index + 2 : index - 2;
        QxPoint& bend = route.at(index);
        const QxPoint& beyond = route.at(second);
        if (alongX && away(beyond.x(), route.at(first).x()) < delta) {
            bend.x(beyond.x());
        } else if (!alongX && away(beyond.y(), route.at(first).y()) < delta) {
            bend.y(beyond.y());
        } else {
            continue;
        }
        route.remove(isBehind ? first : second, isBehind ? second : first);
        index -= isBehind ? 0U : 2U;
        hasMerged = true;
    }
    if (hasMerged || index < 3 || index + 2 > route.count()) {
        return;
    }
    const QxPoint p = route.at(isHorizontal ? index - 1 : index + 1);
    const QxPoint q = route.at(isHorizontal ? index + 1 : index - 1);
    QxPoint& bend = route.at(index);
    if (away(q.x(), bend.x()) < delta || away(p.y(), bend.y()) < delta) {
        bend.moveTo(q.x(), p.y());
        route.remove(index + 1);
        route.remove(index - 1);
        --index;
    }
}

}  // namespace qx::internal
