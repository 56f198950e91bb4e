// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "qx/foundation/geometry/QxArithmetic.h"
#include "qx/layout/internal/QxPlacedRects.h"

/// Force-scan in its plainest form: whole passes over a list of placed rectangles, until one of
/// them moves nothing.
class PlainScan {
public:
    using Extent = qx::internal::Extent;

    static bool meet(const Extent& a, const Extent& b) {
        return std::max(a.left, b.left) <= std::min(a.right, b.right) &&
               std::max(a.bottom, b.bottom) <= std::min(a.top, b.top);
    }

    Extent place(Extent rect) {
        const std::int64_t limit = std::int64_t{std::min(rect.left, rect.bottom)} - 12;
        for (bool moved = true; moved;) {
            std::erase_if(m_placed,
                          [&](const Extent& q) { return q.right < limit || q.top < limit; });
            moved = false;
            for (const Extent& other : m_placed) {
                moved = (meet(rect, other) && pushPast(rect, other)) || moved;
            }
        }
        m_placed.push_back(rect);
        return rect;
    }

private:
    /// As far as the range reaches.
    static bool shift(std::int32_t& low, std::int32_t& high, std::int64_t by) {
        by = std::min(by, std::int64_t{qx::MaxInt32} - high);
        low = static_cast<std::int32_t>(low + by);
        high = static_cast<std::int32_t>(high + by);
        return by > 0;
    }
    static bool pushPast(Extent& rect, const Extent& other) {
        const std::int64_t dx = std::int64_t{other.right} - rect.left + 12;
        const std::int64_t dy = std::int64_t{other.top} - rect.bottom + 12;
        return dx <= dy ? shift(rect.left, rect.right, dx) : shift(rect.bottom, rect.top, dy);
    }

    std::vector<Extent> m_placed;
};
