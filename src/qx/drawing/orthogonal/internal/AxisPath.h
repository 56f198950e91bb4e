// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

#include "qx/foundation/geometry/QxPoint.h"

/// Paths along the axes as lists of points, whatever they belong to.
namespace qx::internal {

/// Whether the segment between the points runs along an axis; a point does.
inline bool isAxisParallel(const QxPoint& a, const QxPoint& b) {
    return a.x() == b.x() || a.y() == b.y();
}

/// Whether every segment runs along an axis.
bool runsAlongAxes(const std::vector<QxPoint>& points);

/// Adds corners until every segment runs along an axis: the first and the last one in the direction
/// asked for, those between as their neighbours suggest. Given points stay, in their order. Nothing
/// happens to fewer than two points. Linear.
void completeAlongAxes(std::vector<QxPoint>& points, bool startsHorizontal, bool endsHorizontal);

/// Takes out, in one pass from the start, inner points in the middle of a straight run, and those
/// between two equal points. Whether anything was taken out. Linear.
bool dropIdlePoints(std::vector<QxPoint>& points);

/// Lets a path whose first point has moved by a rounding run along the axes there again; all other
/// segments have to already. Linear.
void straightenStart(std::vector<QxPoint>& points);

}  // namespace qx::internal
