// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

#include "qx/foundation/geometry/internal/QxPlacedFrame.h"

/// Closed polygons given by at least 3 points in a frame from -1000 to 1000, convex or not. Equal
/// neighbouring points and turns that run back along themselves do no harm. All are O(points).
namespace qx::internal {

using QxOutlinePoints = std::vector<QxDTuple>;

/// Inside by the even-odd rule, or on the outline.
bool polygonContains(const QxOutlinePoints& points, const QxPlacedFrame& frame, const QxPoint& p);
/// Whether the outline comes through the unit square around `p`.
bool polygonPassesAt(const QxOutlinePoints& points, const QxPlacedFrame& frame, const QxPoint& p);
/// The first point of the outline on the segment; false when there is none.
bool clipAtPolygon(const QxOutlinePoints& points, const QxPlacedFrame& frame, const QxPoint& from,
                   const QxPoint& to, QxPoint& result);
QxPoint nearestOnPolygon(const QxOutlinePoints& points, const QxPlacedFrame& frame,
                         const QxPoint& p);
/// Length of the chord through the center in the direction (dx, dy), not both 0; 0 when the center
/// is not inside.
double polygonChord(const QxOutlinePoints& points, const QxPlacedFrame& frame, double dx,
                    double dy);
/// The largest k for which the square from -k to k of the frame lies in the polygon, truncated; 0
/// when the frame's center is not inside.
std::int32_t polygonInnerHalf(const QxOutlinePoints& points);
/// Whether the outline runs along the frame's border and encloses all of the frame.
bool isFrameItself(const QxOutlinePoints& points);

}  // namespace qx::internal
