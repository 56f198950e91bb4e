// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "qx/foundation/util/QxApi.h"

namespace qx::internal {

/// A rectangle as force-scan sees it; y grows upward.
struct Extent {
    std::int32_t left;
    std::int32_t bottom;
    std::int32_t right;
    std::int32_t top;
};

/// The rectangles that force-scan has placed already, in the order of their placing.
class QX_API PlacedRects {
public:
    /// The distance that a pushed rectangle keeps, in world units.
    static constexpr std::int32_t Gap = 12;

    /// Drops for good the rectangles that lie more than the gap below or left of `corner`, the
    /// smaller of the left and bottom coordinates of the next rectangle to place. They cannot meet
    /// it, nor any that come later when corners ascend. O(number placed), and O(1) when none does.
    void dropBefore(std::int32_t corner);

    /// Pushes the rectangle right or up past every placed one that it overlaps, until it overlaps
    /// none or is stopped at the end of the coordinate range. O(number placed) for each sweep.
    void pushClear(Extent& rect) const;

    /// Appends a rectangle as placed; one of negative width or height, which can meet nothing, is
    /// passed over. Amortized O(1).
    void add(const Extent& rect);

    std::size_t count() const { return m_left.size(); }

private:
    std::size_t firstOverlap(const Extent& rect, std::size_t from, std::size_t to) const;
    bool pushPast(Extent& rect, std::size_t index) const;

    std::vector<std::int32_t> m_left;
    std::vector<std::int32_t> m_bottom;
    std::vector<std::int32_t> m_right;
    std::vector<std::int32_t> m_top;
    /// No placed rectangle has a smaller right or top.
    std::int32_t m_nearestEnd = std::numeric_limits<std::int32_t>::max();
};

}  // namespace qx::internal
