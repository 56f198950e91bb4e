// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "qx/foundation/geometry/QxPoint.h"

class QxPNode;

namespace qx::internal {

/// A point of a path while that is worked out, and the bend that it comes from: null for the ends
/// and for points that no bend stands for yet.
struct RoutePoint {
    QxPoint at;
    QxPNode* bend = nullptr;
};

/// A path as it is worked out: the source's end, the bends, the target's end. Positions in it are
/// counted from 1, as those of segments are: segment k runs from point k to point k + 1.
class Route {
public:
    Route() = default;
    explicit Route(std::vector<RoutePoint> points) : m_points(std::move(points)) {}

    std::size_t count() const { return m_points.size(); }
    RoutePoint& operator[](std::size_t position) { return m_points[position - 1]; }
    const RoutePoint& operator[](std::size_t position) const { return m_points[position - 1]; }
    QxPoint& at(std::size_t position) { return m_points[position - 1].at; }
    const QxPoint& at(std::size_t position) const { return m_points[position - 1].at; }
    void insertBefore(std::size_t position, const QxPoint& point) {
        m_points.insert(iteratorAt(position), RoutePoint{point, nullptr});
    }
    void append(const QxPoint& point) { m_points.push_back({point, nullptr}); }
    void remove(std::size_t position) { m_points.erase(iteratorAt(position)); }
    /// Removes the points from one position to another, both included.
    void remove(std::size_t from, std::size_t to) {
        m_points.erase(iteratorAt(from), iteratorAt(to + 1));
    }
    /// The position seen from the other end.
    std::size_t mirrored(std::size_t position) const { return count() + 1 - position; }
    const std::vector<RoutePoint>& points() const { return m_points; }

private:
    std::vector<RoutePoint>::iterator iteratorAt(std::size_t position) {
        return m_points.begin() + static_cast<std::ptrdiff_t>(position - 1);
    }

    std::vector<RoutePoint> m_points;
};

/// Whether the way from a over b to c goes on in its direction, but for an angle with the sine
/// `eps`, and does not turn back.
bool goesStraightOn(const QxPoint& a, const QxPoint& b, const QxPoint& c, double eps);

/// The length of the way from a to b along the axes.
std::int64_t wayAlongAxes(const QxPoint& a, const QxPoint& b);

/// Makes horizontal and vertical segments alternate: between two that run along the same axis, a
/// repeated point stands for one without length. False, and the route is not to be used, when a
/// segment is slanted or there are no two different points.
///
/// `isHorizontal` says whether the first segment is, when `isKnown`; else it becomes the answer.
/// `index` keeps naming the same segment.
bool alternate(Route& route, bool isKnown, bool& isHorizontal, std::size_t& index);

/// Whether the first segment of a route of alternating segments is horizontal, though it may have
/// no length.
bool startsAlongX(const Route& route);

/// Drops the points of a route along the axes that nothing turns at: segments inside it that are
/// shorter than `delta`, both their points with them, and what coincides then.
void joinShortSegments(Route& route, bool isFirstHorizontal, std::int64_t delta);

/// Drops each point where the way goes straight on; the ends stay.
void dropStraightPoints(Route& route, double eps);

/// Merges the dragged segment `index`, or the segments at the dragged bend `index`, of a route
/// along the axes with what lies less than `delta` beside; `index` follows.
void mergeAtSegment(Route& route, std::size_t& index, bool isHorizontal, std::int64_t delta);
void mergeAtBend(Route& route, std::size_t& index, bool isHorizontal, std::int64_t delta);

}  // namespace qx::internal
