// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/geometry/QxDTuple.h"
#include "qx/foundation/geometry/QxRect.h"

namespace qx::internal {

/// To the nearest integer, halves upward, also halves that the rounding of doubles made a trifle
/// smaller: equal situations at different places come out alike.
inline constexpr double RoundingSlack = 1e-6;
inline std::int32_t roundSteadily(double value) noexcept {
    return floorHalfUp(value + RoundingSlack);
}

/// A bounding rectangle with positive extents as the outlines see it: its exact center, which lies
/// between integers for odd extents, and its exact half extents.
class QxPlacedFrame {
public:
    explicit QxPlacedFrame(const QxRect& rect) noexcept
        : m_rect(rect),
          m_centerX((static_cast<double>(rect.left()) + rect.right()) / 2.0),
          m_centerY((static_cast<double>(rect.bottom()) + rect.top()) / 2.0),
          m_halfX((static_cast<double>(rect.right()) - rect.left()) / 2.0),
          m_halfY((static_cast<double>(rect.top()) - rect.bottom()) / 2.0) {}

    const QxRect& rect() const noexcept { return m_rect; }
    double halfX() const noexcept { return m_halfX; }
    double halfY() const noexcept { return m_halfY; }
    /// A point relative to the exact center.
    QxDTuple relative(const QxPoint& p) const noexcept {
        return {p.x() - m_centerX, p.y() - m_centerY};
    }
    /// The integer point nearest to one relative to the center, within the rectangle.
    QxPoint rounded(double x, double y) const noexcept {
        return {std::clamp(roundSteadily(m_centerX + x), m_rect.left(), m_rect.right()),
                std::clamp(roundSteadily(m_centerY + y), m_rect.bottom(), m_rect.top())};
    }

    /// The share of a segment that counts as no distance: a millionth of a unit, more than the
    /// rounding of doubles makes of any segment.
    static double parameterSlack(const QxPoint& from, const QxPoint& to) noexcept {
        return 1e-6 / std::max(1.0, from.distance(to));
    }

private:
    const QxRect& m_rect;
    double m_centerX;
    double m_centerY;
    double m_halfX;
    double m_halfY;
};

}  // namespace qx::internal
