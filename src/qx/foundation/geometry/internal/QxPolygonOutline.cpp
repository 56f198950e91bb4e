// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/geometry/internal/QxPolygonOutline.h"

#include <cmath>
#include <limits>

#include "qx/foundation/geometry/QxShape.h"

// Points and segments are brought into the frame of the outline, so that the loops over the outline
// read its points as they are stored. Whether an outline edge crosses a line is decided by the
// signs of its ends' cross products with the line; both edges at an outline point use the same
// product, so that a line through the point cannot slip between them.

namespace qx::internal {

namespace {

constexpr double FrameHalf = QxShape::FrameHalf;
constexpr double Infinity = std::numeric_limits<double>::infinity();

double cross(const QxDTuple& a, const QxDTuple& b) noexcept {
    return a.x() * b.y() - a.y() * b.x();
}

double dot(const QxDTuple& a, const QxDTuple& b) noexcept {
    return a.x() * b.x() + a.y() * b.y();
}

QxDTuple difference(const QxDTuple& a, const QxDTuple& b) noexcept {
    return {a.x() - b.x(), a.y() - b.y()};
}

/// The point at share t of the way from a to b.
QxDTuple between(const QxDTuple& a, const QxDTuple& b, double t) noexcept {
    return {a.x() + (b.x() - a.x()) * t, a.y() + (b.y() - a.y()) * t};
}

QxDTuple toFrame(const QxPlacedFrame& frame, const QxPoint& p) noexcept {
    const QxDTuple v = frame.relative(p);
    return {v.x() / frame.halfX() * FrameHalf, v.y() / frame.halfY() * FrameHalf};
}

QxPoint fromFrame(const QxPlacedFrame& frame, const QxDTuple& v) noexcept {
    return frame.rounded(v.x() * frame.halfX() / FrameHalf, v.y() * frame.halfY() / FrameHalf);
}

/// Calls visit(a, b) for every edge of the closed outline.
template <class Visit>
void forEachEdge(const QxOutlinePoints& points, const Visit& visit) {
    const QxDTuple* previous = &points.back();
    for (const QxDTuple& point : points) {
        visit(*previous, point);
        previous = &point;
    }
}

/// Calls visit(first, last) for every stretch of parameters t at which the line origin + t *
/// direction runs on the outline: single values at crossings, longer ones along edges.
template <class Visit>
void forEachCrossing(const QxOutlinePoints& points, const QxDTuple& origin,
                     const QxDTuple& direction, const Visit& visit) {
    const double length2 = dot(direction, direction);
    const auto parameterOf = [&](const QxDTuple& p) {
        return dot(difference(p, origin), direction) / length2;
    };
    const QxDTuple* a = &points.back();
    double sideA = cross(direction, difference(*a, origin));
    for (const QxDTuple& b : points) {
        const double sideB = cross(direction, difference(b, origin));
        if (sideA == 0.0 && sideB == 0.0) {
            const double ta = parameterOf(*a);
            const double tb = parameterOf(b);
            visit(std::min(ta, tb), std::max(ta, tb));
        } else if ((sideA <= 0.0 && sideB >= 0.0) || (sideA >= 0.0 && sideB <= 0.0)) {
            const double t = parameterOf(between(*a, b, sideA / (sideA - sideB)));
            visit(t, t);
        }
        a = &b;
        sideA = sideB;
    }
}

/// Whether p lies on the edge from a to b.
bool isOnEdge(const QxDTuple& a, const QxDTuple& b, const QxDTuple& p) noexcept {
    constexpr double slack = 1e-7;
    const QxDTuple edge = difference(b, a);
    const QxDTuple toPoint = difference(p, a);
    const double along = dot(toPoint, edge);
    return std::abs(cross(edge, toPoint)) <= slack && -slack <= along &&
           along <= dot(edge, edge) + slack &&
           (dot(edge, edge) > 0.0 || dot(toPoint, toPoint) <= slack);
}

bool containsInFrame(const QxOutlinePoints& points, const QxDTuple& p) {
    bool isOn = false;
    bool isInside = false;
    forEachEdge(points, [&](const QxDTuple& a, const QxDTuple& b) {
        isOn = isOn || isOnEdge(a, b, p);
        if ((a.y() > p.y()) != (b.y() > p.y()) &&
            p.x() < a.x() + (b.x() - a.x()) * ((p.y() - a.y()) / (b.y() - a.y()))) {
            isInside = !isInside;
        }
    });
    return isOn || isInside;
}

/// Narrows [first, last], shares of an edge, to where its coordinate a to b lies in [low, high].
void narrow(double a, double b, double low, double high, double& first, double& last) noexcept {
    if (a == b) {
        if (a < low || a > high) {
            last = -Infinity;
        }
        return;
    }
    const double t0 = (low - a) / (b - a);
    const double t1 = (high - a) / (b - a);
    first = std::max(first, std::min(t0, t1));
    last = std::min(last, std::max(t0, t1));
}

/// The smallest max(|x|, |y|) on the edge: at an end or where the edge crosses an axis or diagonal.
double squareDistance(const QxDTuple& a, const QxDTuple& b) noexcept {
    const auto sizeAt = [&](double t) {
        const QxDTuple p = between(a, b, std::clamp(t, 0.0, 1.0));
        return std::max(std::abs(p.x()), std::abs(p.y()));
    };
    const QxDTuple d = difference(b, a);
    double smallest = std::min(sizeAt(0.0), sizeAt(1.0));
    const double numerators[] = {-a.x(), -a.y(), a.y() - a.x(), -a.y() - a.x()};
    const double denominators[] = {d.x(), d.y(), d.x() - d.y(), d.x() + d.y()};
    for (int i = 0; i < 4; ++i) {
        if (denominators[i] != 0.0) {
            smallest = std::min(smallest, sizeAt(numerators[i] / denominators[i]));
        }
    }
    return smallest;
}

}  // namespace

bool polygonContains(const QxOutlinePoints& points, const QxPlacedFrame& frame, const QxPoint& p) {
    return containsInFrame(points, toFrame(frame, p));
}

bool polygonPassesAt(const QxOutlinePoints& points, const QxPlacedFrame& frame, const QxPoint& p) {
    constexpr double half = 0.5 + 1e-6;
    const QxDTuple center = toFrame(frame, p);
    const double reachX = half / frame.halfX() * FrameHalf;
    const double reachY = half / frame.halfY() * FrameHalf;
    bool passes = false;
    forEachEdge(points, [&](const QxDTuple& a, const QxDTuple& b) {
        double first = 0.0;
        double last = 1.0;
        narrow(a.x(), b.x(), center.x() - reachX, center.x() + reachX, first, last);
        narrow(a.y(), b.y(), center.y() - reachY, center.y() + reachY, first, last);
        passes = passes || first <= last;
    });
    return passes;
}

bool clipAtPolygon(const QxOutlinePoints& points, const QxPlacedFrame& frame, const QxPoint& from,
                   const QxPoint& to, QxPoint& result) {
    if (from == to) {
        return false;
    }
    const QxDTuple origin = toFrame(frame, from);
    const QxDTuple direction = difference(toFrame(frame, to), origin);
    const double slack = QxPlacedFrame::parameterSlack(from, to);
    double nearest = Infinity;
    forEachCrossing(points, origin, direction, [&](double first, double last) {
        if (last >= -slack && first <= 1.0 + slack) {
            nearest = std::min(nearest, std::clamp(first, 0.0, 1.0));
        }
    });
    if (nearest > 1.0) {
        return false;
    }
    result = fromFrame(frame, {origin.x() + nearest * direction.x(),  //
                               origin.y() + nearest * direction.y()});
    return true;
}

QxPoint nearestOnPolygon(const QxOutlinePoints& points, const QxPlacedFrame& frame,
                         const QxPoint& p) {
    // Distances are not the same in the frame: compare them in units.
    const auto inUnits = [&](const QxDTuple& v) {
        return QxDTuple(v.x() * frame.halfX() / FrameHalf, v.y() * frame.halfY() / FrameHalf);
    };
    const QxDTuple point = frame.relative(p);
    QxDTuple nearest;
    double smallest = Infinity;
    forEachEdge(points, [&](const QxDTuple& a, const QxDTuple& b) {
        const QxDTuple start = inUnits(a);
        const QxDTuple edge = difference(inUnits(b), start);
        const double length2 = dot(edge, edge);
        const double t = length2 > 0.0 ? dot(difference(point, start), edge) / length2 : 0.0;
        const double share = std::clamp(t, 0.0, 1.0);
        const QxDTuple foot(start.x() + share * edge.x(), start.y() + share * edge.y());
        const QxDTuple gap = difference(point, foot);
        if (dot(gap, gap) < smallest) {
            smallest = dot(gap, gap);
            nearest = foot;
        }
    });
    return frame.rounded(nearest.x(), nearest.y());
}

double polygonChord(const QxOutlinePoints& points, const QxPlacedFrame& frame, double dx,
                    double dy) {
    const QxDTuple center;
    if (!containsInFrame(points, center)) {
        return 0.0;
    }
    double before = -Infinity;
    double behind = Infinity;
    forEachCrossing(points, center, {dx / frame.halfX(), dy / frame.halfY()},
                    [&](double first, double last) {
                        if (last <= 0.0) {
                            before = std::max(before, last);
                        }
                        if (first >= 0.0) {
                            behind = std::min(behind, first);
                        }
                    });
    const double chord = (behind - before) / FrameHalf * std::hypot(dx, dy);
    return chord < Infinity ? chord : 0.0;
}

std::int32_t polygonInnerHalf(const QxOutlinePoints& points) {
    if (!containsInFrame(points, QxDTuple())) {
        return 0;
    }
    double half = Infinity;
    forEachEdge(points, [&](const QxDTuple& a, const QxDTuple& b) {
        half = std::min(half, squareDistance(a, b));
    });
    return truncToInt32(half);
}

bool isFrameItself(const QxOutlinePoints& points) {
    double doubleArea = 0.0;
    bool isOnBorder = true;
    forEachEdge(points, [&](const QxDTuple& a, const QxDTuple& b) {
        doubleArea += cross(a, b);
        isOnBorder = isOnBorder && std::max(std::abs(b.x()), std::abs(b.y())) == FrameHalf;
    });
    return isOnBorder && std::abs(doubleArea) == 8.0 * FrameHalf * FrameHalf;
}

}  // namespace qx::internal
