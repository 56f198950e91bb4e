// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/layout/internal/QxPlacedRects.h"

#include <algorithm>

namespace qx::internal {

namespace {

/// Shifts the interval [low, high] up by `shift`, at most to the end of the coordinate range.
/// Returns whether it moved.
bool shiftUp(std::int32_t& low, std::int32_t& high, std::int64_t shift) {
    const std::int64_t room = std::int64_t{std::numeric_limits<std::int32_t>::max()} - high;
    const std::int64_t applied = std::min(shift, room);
    low = static_cast<std::int32_t>(low + applied);
    high = static_cast<std::int32_t>(high + applied);
    return applied != 0;
}

/// A rectangle of negative width or height overlaps nothing.
bool isUpright(const Extent& rect) {
    return rect.left <= rect.right && rect.bottom <= rect.top;
}

}  // namespace

void PlacedRects::dropBefore(std::int32_t corner) {
    const std::int64_t limit = std::int64_t{corner} - Gap;
    if (m_nearestEnd >= limit) {
        return;
    }
    m_nearestEnd = std::numeric_limits<std::int32_t>::max();
    std::size_t kept = 0;
    for (std::size_t i = 0; i < count(); ++i) {
        const std::int32_t end = std::min(m_right[i], m_top[i]);
        if (end >= limit) {
            m_nearestEnd = std::min(m_nearestEnd, end);
            m_left[kept] = m_left[i];
            m_bottom[kept] = m_bottom[i];
            m_right[kept] = m_right[i];
            m_top[kept] = m_top[i];
            ++kept;
        }
    }
    m_left.resize(kept);
    m_bottom.resize(kept);
    m_right.resize(kept);
    m_top.resize(kept);
}

void PlacedRects::add(const Extent& rect) {
    if (!isUpright(rect)) {
        return;
    }
    m_left.push_back(rect.left);
    m_bottom.push_back(rect.bottom);
    m_right.push_back(rect.right);
    m_top.push_back(rect.top);
    m_nearestEnd = std::min({m_nearestEnd, rect.right, rect.top});
}

// Sweeps go over all placed rectangles in order, again and again, until one sweep moves nothing.
// That is known as soon as every rectangle was passed once since the last move.
void PlacedRects::pushClear(Extent& rect) const {
    if (!isUpright(rect)) {
        return;
    }
    std::size_t next = 0;
    for (std::size_t untested = count(); untested != 0;) {
        next = next == count() ? 0 : next;
        const std::size_t end = std::min(count(), next + untested);
        const std::size_t hit = firstOverlap(rect, next, end);
        untested -= hit - next;
        next = hit;
        if (hit != end) {
            ++next;
            untested = pushPast(rect, hit) ? count() : untested - 1;
        }
    }
}

/// The first of the placed rectangles [from, to) that overlaps the given one or touches it; `to`
/// when there is none. Blocks of a fixed size are tested without short cuts, as vector code.
std::size_t PlacedRects::firstOverlap(const Extent& rect, std::size_t from, std::size_t to) const {
    constexpr std::size_t Block = 32;
    const auto overlaps = [&](std::size_t i) {
        return static_cast<int>(m_left[i] <= rect.right) &
               static_cast<int>(m_right[i] >= rect.left) &
               static_cast<int>(m_bottom[i] <= rect.top) &
               static_cast<int>(m_top[i] >= rect.bottom);
    };
    for (; to - from >= Block; from += Block) {
        int any = 0;
        for (std::size_t i = 0; i < Block; ++i) {
            any |= overlaps(from + i);
        }
        if (any != 0) {
            break;
        }
    }
    while (from < to && overlaps(from) == 0) {
        ++from;
    }
    return from;
}

/// Moves the rectangle beyond the placed one along the axis that takes the shorter way. Returns
/// whether it moved.
bool PlacedRects::pushPast(Extent& rect, std::size_t index) const {
    const std::int64_t dx = std::int64_t{m_right[index]} - rect.left + Gap;
    const std::int64_t dy = std::int64_t{m_top[index]} - rect.bottom + Gap;
    if (dx >= 1 && (dy <= 0 || dx <= dy)) {
        return shiftUp(rect.left, rect.right, dx);
    }
    if (dy >= 1) {
        return shiftUp(rect.bottom, rect.top, dy);
    }
    return false;
}

}  // namespace qx::internal
