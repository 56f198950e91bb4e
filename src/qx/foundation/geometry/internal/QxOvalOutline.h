// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/geometry/internal/QxPlacedFrame.h"

/// The oval that touches the sides of its frame in their middles.
namespace qx::internal {

bool ovalContains(const QxPlacedFrame& frame, const QxPoint& p) noexcept;
/// Whether the oval's line comes through the unit square around `p`.
bool ovalPassesAt(const QxPlacedFrame& frame, const QxPoint& p) noexcept;
/// The first point of the line on the segment; false when there is none.
bool clipAtOval(const QxPlacedFrame& frame, const QxPoint& from, const QxPoint& to,
                QxPoint& result) noexcept;
QxPoint nearestOnOval(const QxPlacedFrame& frame, const QxPoint& p) noexcept;
/// Length of the chord through the center in the direction (dx, dy), not both 0.
double ovalChord(const QxPlacedFrame& frame, double dx, double dy) noexcept;

}  // namespace qx::internal
