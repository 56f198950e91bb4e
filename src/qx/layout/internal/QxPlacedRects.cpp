// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// A rectangle is held against all placed ones in the order of their placing, again and again, until
// it has passed each of them since it was pushed last. What counts is the order of the pushes, for
// each decides about the next; whatever does not overlap may be skipped.
//
// So the next one to push it is the first overlapping one from the present position on. It mostly
// comes soon, where rectangles pile up, and is found by a short sweep over the arrays, which is
// vector code. Else a grid answers: every rectangle stands in the cells that it touches, on the
// level whose cells are just larger than itself. A place that touches more cells than there are
// rectangles to go through is swept.
//
// In a pile every rectangle is pushed past nearly all placed before it. Equal ones go the same way
// as far as the first of them has gone, since what is placed is only appended to: it is noted how
// far they have come. So n rectangles of k different extents on one spot take O(k n) pushes, and
// n^2 / 2 only where all differ.
//
// Rectangles to be dropped meet nothing that is still to come while corners ascend. They are taken
// away when the arrays have doubled, or when a corner descends, since from then on they would be
// met.

#include "qx/layout/internal/QxPlacedRects.h"

#include <algorithm>
#include <bit>

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

/// The number of the cell, on an axis, that a coordinate lies in.
std::int64_t cellAt(std::int64_t coordinate, int level) {
    return coordinate >> level;
}

}  // namespace

void ExtentGrid::reset(std::size_t capacity) {
    m_levels = 0;
    m_slots.assign(std::bit_ceil(2 * capacity), None);
    m_entries.clear();
}

std::size_t ExtentGrid::slotOf(int level, std::int64_t x, std::int64_t y) const {
    const std::uint64_t key = static_cast<std::uint64_t>(x) * 0x9E3779B97F4A7C15U +
                              static_cast<std::uint64_t>(y) * 0xC2B2AE3D27D4EB4FU +
                              static_cast<std::uint64_t>(level);
    return (key ^ (key >> 32U)) & (m_slots.size() - 1);
}

template <class Visit>
void ExtentGrid::eachSlot(const Extent& place, int level, const Visit& visit) const {
    for (std::int64_t x = cellAt(place.left, level); x <= cellAt(place.right, level); ++x) {
        for (std::int64_t y = cellAt(place.bottom, level); y <= cellAt(place.top, level); ++y) {
            visit(slotOf(level, x, y));
        }
    }
}

void ExtentGrid::add(const Extent& rect, std::size_t index) {
    const std::int64_t extent = std::max(std::int64_t{rect.right} - rect.left,  //
                                         std::int64_t{rect.top} - rect.bottom);
    const int level =
        std::clamp(static_cast<int>(std::bit_width(static_cast<std::uint64_t>(extent))),
                   LowestLevel, Levels - 1);
    m_levels |= std::uint64_t{1} << static_cast<unsigned>(level);
    eachSlot(rect, level, [&](std::size_t slot) {
        m_entries.push_back({static_cast<std::uint32_t>(index), m_slots[slot]});
        m_slots[slot] = static_cast<std::uint32_t>(m_entries.size() - 1);
    });
}

template <class Visit>
void ExtentGrid::eachLevel(const Visit& visit) const {
    for (std::uint64_t rest = m_levels; rest != 0; rest &= rest - 1) {
        visit(std::countr_zero(rest));
    }
}

double ExtentGrid::cellsIn(const Extent& place) const {
    double cells = 0;
    eachLevel([&](int level) {
        const std::int64_t columns = cellAt(place.right, level) - cellAt(place.left, level) + 1;
        const std::int64_t rows = cellAt(place.top, level) - cellAt(place.bottom, level) + 1;
        cells += static_cast<double>(columns) * static_cast<double>(rows);
    });
    return cells;
}

template <class Visit>
void ExtentGrid::searchEachCell(const Extent& place, const Visit& visit) const {
    eachLevel([&](int level) {
        eachSlot(place, level, [&](std::size_t slot) {
            std::uint32_t entry = m_slots[slot];
            while (entry != None && visit(std::size_t{m_entries[entry].index})) {
                entry = m_entries[entry].next;
            }
        });
    });
}

void PlacedRects::dropBefore(std::int32_t corner) {
    const bool isDescent = corner < m_corner;
    if (isDescent || count() >= m_countToTidyAt) {
        dropBelow(std::max(corner, m_corner));
        rebuildGrid();
    }
    if (corner != m_corner) {
        m_progress.clear();  // equal rectangles have equal corners
    }
    m_corner = corner;
}

void PlacedRects::dropBelow(std::int32_t corner) {
    const std::int64_t limit = std::int64_t{corner} - Gap;
    std::size_t kept = 0;
    for (std::size_t i = 0; i < count(); ++i) {
        if (std::min(m_right[i], m_top[i]) >= limit) {
            m_left[kept] = m_left[i];
            m_bottom[kept] = m_bottom[i];
            m_right[kept] = m_right[i];
            m_top[kept] = m_top[i];
            ++kept;
        }
    }
    if (kept == count()) {
        return;
    }
    for (std::vector<std::int32_t>* side : {&m_left, &m_bottom, &m_right, &m_top}) {
        side->resize(kept);
    }
    m_progress.clear();
}

void PlacedRects::rebuildGrid() {
    m_countToTidyAt = std::max<std::size_t>(64, 2 * count());
    m_grid.reset(m_countToTidyAt);
    for (std::size_t i = 0; i < count(); ++i) {
        m_grid.add({m_left[i], m_bottom[i], m_right[i], m_top[i]}, i);
    }
}

void PlacedRects::add(const Extent& rect) {
    if (!isUpright(rect)) {
        return;
    }
    m_left.push_back(rect.left);
    m_bottom.push_back(rect.bottom);
    m_right.push_back(rect.right);
    m_top.push_back(rect.top);
    m_grid.add(rect, count() - 1);
}

void PlacedRects::pushClear(Extent& rect) {
    if (!isUpright(rect)) {
        return;
    }
    const auto known = m_progress.find(rect);
    Progress progress = known != m_progress.end() ? known->second : Progress{rect, 0, 0};
    goOn(progress, count());
    if (progress.behindLastPush == 0) {
        return;
    }
    m_progress.insert_or_assign(rect, progress);
    // Round again, as far as there is anything that has not been passed since the last push.
    while (progress.behindLastPush != 0) {
        const std::size_t toPass = progress.behindLastPush;
        progress.passed = 0;
        progress.behindLastPush = 0;
        goOn(progress, toPass);
        if (progress.behindLastPush != 0) {
            goOn(progress, count());
        }
    }
    rect = progress.rect;
}

/// Holds the rectangle against the next placed ones before `end`, and lets those that it overlaps
/// push it.
void PlacedRects::goOn(Progress& progress, std::size_t end) const {
    while ((progress.passed = firstOverlap(progress.rect, progress.passed, end)) != end) {
        const bool isPushed = pushPast(progress.rect, progress.passed);
        ++progress.passed;
        if (isPushed) {
            progress.behindLastPush = progress.passed;
        }
    }
}

/// The first of the placed rectangles [from, to) that overlaps the given one or touches it; `to`
/// when there is none.
std::size_t PlacedRects::firstOverlap(const Extent& rect, std::size_t from, std::size_t to) const {
    constexpr std::size_t Near = 64;
    constexpr double SweptInTheTimeOfACell = 32;
    const std::size_t near = std::min(to, from + Near);
    const std::size_t hit = firstOverlapInSweep(rect, from, near);
    if (hit != near || near == to) {
        return hit;
    }
    const bool sweeps =
        m_grid.cellsIn(rect) * SweptInTheTimeOfACell > static_cast<double>(to - near);
    return sweeps ? firstOverlapInSweep(rect, near, to) : firstOverlapInGrid(rect, near, to);
}

int PlacedRects::overlaps(const Extent& rect, std::size_t index) const {
    return static_cast<int>(m_left[index] <= rect.right) &
           static_cast<int>(m_right[index] >= rect.left) &
           static_cast<int>(m_bottom[index] <= rect.top) &
           static_cast<int>(m_top[index] >= rect.bottom);
}

/// Blocks of a fixed size are tested without short cuts, as vector code.
std::size_t PlacedRects::firstOverlapInSweep(const Extent& rect, std::size_t from,
                                             std::size_t to) const {
    constexpr std::size_t Block = 32;
    for (; to - from >= Block; from += Block) {
        int any = 0;
        for (std::size_t i = 0; i < Block; ++i) {
            any |= overlaps(rect, from + i);
        }
        if (any != 0) {
            break;
        }
    }
    while (from < to && overlaps(rect, from) == 0) {
        ++from;
    }
    return from;
}

std::size_t PlacedRects::firstOverlapInGrid(const Extent& rect, std::size_t from,
                                            std::size_t to) const {
    std::size_t first = to;
    m_grid.searchEachCell(rect, [&](std::size_t index) {
        if (index >= from && index < first && overlaps(rect, index) != 0) {
            first = index;
        }
        return index > from;
    });
    return first;
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
