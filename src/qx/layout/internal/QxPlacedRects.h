// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <vector>

#include "qx/foundation/util/QxApi.h"

namespace qx::internal {

/// A rectangle as force-scan sees it; y grows upward.
struct Extent {
    std::int32_t left;
    std::int32_t bottom;
    std::int32_t right;
    std::int32_t top;

    friend auto operator<=>(const Extent&, const Extent&) = default;
};

/// A hash table of the cells that rectangles touch. What it finds may lie elsewhere: cells share
/// slots.
class ExtentGrid {
public:
    /// Empties it, and makes room for about `capacity` rectangles.
    void reset(std::size_t capacity);
    /// Indices have to ascend.
    void add(const Extent& rect, std::size_t index);
    /// How many cells a search of the place looks at.
    double cellsIn(const Extent& place) const;
    /// Calls `visit(index)` for the rectangles near the place, for each cell in descending order
    /// of the index, until it answers false.
    template <class Visit>
    void searchEachCell(const Extent& place, const Visit& visit) const;

private:
    /// A level holds the rectangles that are narrower than its cells and not than half of them, so
    /// that each of them touches four cells at the most.
    static constexpr int Levels = 34;
    static constexpr int LowestLevel = 6;
    static constexpr std::uint32_t None = std::numeric_limits<std::uint32_t>::max();

    struct Entry {
        std::uint32_t index;
        std::uint32_t next;
    };

    template <class Visit>
    void eachLevel(const Visit& visit) const;
    std::size_t slotOf(int level, std::int64_t x, std::int64_t y) const;
    template <class Visit>
    void eachSlot(const Extent& place, int level, const Visit& visit) const;

    /// One bit for each level in use.
    std::uint64_t m_levels = 0;
    std::vector<std::uint32_t> m_slots;
    std::vector<Entry> m_entries;
};

/// The rectangles that force-scan has placed already, in the order of their placing.
class QX_API PlacedRects {
public:
    PlacedRects() { rebuildGrid(); }

    /// The distance that a pushed rectangle keeps, in world units.
    static constexpr std::int32_t Gap = 12;

    /// Drops for good the rectangles that lie more than the gap below or left of `corner`, the
    /// smaller of the left and bottom coordinates of the next rectangle to place. They cannot meet
    /// it, nor any that come later when corners ascend. Amortized O(1) when corners ascend, else
    /// O(number placed).
    void dropBefore(std::int32_t corner);

    /// Pushes the rectangle right or up past every placed one that it overlaps, until it overlaps
    /// none or is stopped at the end of the coordinate range. O(number placed near it) for each
    /// push; what equal rectangles with the same corner have been pushed past is not gone through
    /// again.
    void pushClear(Extent& rect);

    /// Appends a rectangle as placed; one of negative width or height, which can meet nothing, is
    /// passed over. Amortized O(1).
    void add(const Extent& rect);

private:
    /// Where a rectangle has come to, having been held against the first placed ones in order.
    struct Progress {
        Extent rect;
        std::size_t passed;
        /// Behind the last one that pushed it; 0 when none did.
        std::size_t behindLastPush;
    };

    std::size_t count() const { return m_left.size(); }
    void goOn(Progress& progress, std::size_t end) const;
    std::size_t firstOverlap(const Extent& rect, std::size_t from, std::size_t to) const;
    std::size_t firstOverlapInSweep(const Extent& rect, std::size_t from, std::size_t to) const;
    std::size_t firstOverlapInGrid(const Extent& rect, std::size_t from, std::size_t to) const;
    int overlaps(const Extent& rect, std::size_t index) const;
    bool pushPast(Extent& rect, std::size_t index) const;
    void dropBelow(std::int32_t corner);
    void rebuildGrid();

    std::vector<std::int32_t> m_left;
    std::vector<std::int32_t> m_bottom;
    std::vector<std::int32_t> m_right;
    std::vector<std::int32_t> m_top;
    ExtentGrid m_grid;
    /// What dropBefore was called with last; what is to be dropped for it may still be there.
    std::int32_t m_corner = std::numeric_limits<std::int32_t>::min();
    /// The number of rectangles at which it is time to really drop some and rebuild the grid.
    std::size_t m_countToTidyAt = 0;
    /// How far the rectangles with the present corner have come that were pushed.
    std::map<Extent, Progress> m_progress;
};

}  // namespace qx::internal
