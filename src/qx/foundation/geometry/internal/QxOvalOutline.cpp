// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/geometry/internal/QxOvalOutline.h"

#include <cmath>

// Clipping scales the plane so that the oval becomes the unit circle. The line's point nearest to
// the center (its foot) lies cross / |d| from it, cross being the cross product of a point of the
// line and its direction d; the circle cuts the line sqrt(1 - (cross / |d|)^2) before and behind
// the foot. The cross product is computed exactly in 128-bit integers, so the cut is as precise for
// segments that start far away as for near ones.
//
// The nearest point follows D. Eberly, "Distance from a Point to an Ellipse": it is where a
// decreasing function of one parameter is 0, which bisection finds for every point and proportion.

namespace qx::internal {

namespace {

constexpr double Slack = 1e-12;

double squareSum(double x, double y) noexcept {
    return x * x + y * y;
}

/// The root s of (ratio * z0 / (s + ratio - 1))^2 + (z1 / s)^2 = 1; `isInside` tells whether the
/// sum is below 1 at s = 1. Counting s from the pole keeps points near the center precise.
double bisectNearest(double ratio, double z0, double z1, bool isInside) noexcept {
    const double n0 = ratio * z0;
    double low = z1;
    double high = isInside ? 1.0 : std::sqrt(squareSum(n0, z1));
    for (int step = 0; step < 200; ++step) {
        const double middle = (low + high) / 2.0;
        if (middle == low || middle == high) {
            break;
        }
        const double value = squareSum(n0 / (middle + (ratio - 1.0)), z1 / middle);
        (value > 1.0 ? low : high) = middle;
    }
    return (low + high) / 2.0;
}

/// For an oval with half extents a >= b and a point with coordinates >= 0.
QxDTuple nearestInQuadrant(double a, double b, double x, double y) noexcept {
    if (y > 0.0) {
        if (x <= 0.0) {
            return {0.0, b};
        }
        const bool isInside = squareSum(x / a, y / b) < 1.0;
        const double ratio = (a / b) * (a / b);
        const double s = bisectNearest(ratio, x / a, y / b, isInside);
        return {ratio * x / (s + (ratio - 1.0)), y / s};
    }
    const double focal = a * a - b * b;
    if (a * x < focal) {
        const double share = a * x / focal;
        return {a * share, b * std::sqrt(1.0 - share * share)};
    }
    return {a, 0.0};
}

}  // namespace

bool ovalContains(const QxPlacedFrame& frame, const QxPoint& p) noexcept {
    const QxDTuple v = frame.relative(p);
    return squareSum(v.x() / frame.halfX(), v.y() / frame.halfY()) <= 1.0 + Slack;
}

bool ovalPassesAt(const QxPlacedFrame& frame, const QxPoint& p) noexcept {
    const QxDTuple v = frame.relative(p);
    const double x = std::abs(v.x());
    const double y = std::abs(v.y());
    // The corners (or sides) of the square nearest to and farthest from the center.
    const double nearest =
        squareSum(std::max(x - 0.5, 0.0) / frame.halfX(), std::max(y - 0.5, 0.0) / frame.halfY());
    const double farthest = squareSum((x + 0.5) / frame.halfX(), (y + 0.5) / frame.halfY());
    return nearest <= 1.0 + Slack && farthest >= 1.0 - Slack;
}

bool clipAtOval(const QxPlacedFrame& frame, const QxPoint& from, const QxPoint& to,
                QxPoint& result) noexcept {
    // Twice the coordinates relative to the center are whole numbers.
    const QxRect& rect = frame.rect();
    const std::int64_t x2 = 2 * std::int64_t{from.x()} - rect.left() - rect.right();
    const std::int64_t y2 = 2 * std::int64_t{from.y()} - rect.bottom() - rect.top();
    const std::int64_t stepX = std::int64_t{to.x()} - from.x();
    const std::int64_t stepY = std::int64_t{to.y()} - from.y();
    const __int128 cross2 = static_cast<__int128>(x2) * stepY - static_cast<__int128>(y2) * stepX;

    const double a = frame.halfX();
    const double b = frame.halfY();
    const double dx = static_cast<double>(stepX) / a;
    const double dy = static_cast<double>(stepY) / b;
    const double cross = static_cast<double>(cross2) / (2.0 * a * b);
    const double length2 = squareSum(dx, dy);
    const double chord2 = length2 - cross * cross;
    if (length2 == 0.0 || chord2 < 0.0) {
        return false;
    }
    const double halfChord = std::sqrt(chord2) / length2;
    const double foot =
        -(static_cast<double>(x2) / (2.0 * a) * dx + static_cast<double>(y2) / (2.0 * b) * dy) /
        length2;
    const double slack = QxPlacedFrame::parameterSlack(from, to);
    const auto onSegment = [slack](double t) { return -slack <= t && t <= 1.0 + slack; };
    double shift = -halfChord;
    if (!onSegment(foot + shift)) {
        shift = halfChord;
        if (!onSegment(foot + shift)) {
            return false;
        }
    }
    const double footX = cross * dy / length2;
    const double footY = -cross * dx / length2;
    result = frame.rounded((footX + shift * dx) * a, (footY + shift * dy) * b);
    return true;
}

QxPoint nearestOnOval(const QxPlacedFrame& frame, const QxPoint& p) noexcept {
    const QxDTuple v = frame.relative(p);
    const double x = std::abs(v.x());
    const double y = std::abs(v.y());
    QxDTuple nearest;
    if (frame.halfX() >= frame.halfY()) {
        nearest = nearestInQuadrant(frame.halfX(), frame.halfY(), x, y);
    } else {
        const QxDTuple swapped = nearestInQuadrant(frame.halfY(), frame.halfX(), y, x);
        nearest = QxDTuple(swapped.y(), swapped.x());
    }
    return frame.rounded(std::copysign(nearest.x(), v.x()), std::copysign(nearest.y(), v.y()));
}

double ovalChord(const QxPlacedFrame& frame, double dx, double dy) noexcept {
    return 2.0 * std::sqrt(squareSum(dx, dy)) /
           std::sqrt(squareSum(dx / frame.halfX(), dy / frame.halfY()));
}

}  // namespace qx::internal
