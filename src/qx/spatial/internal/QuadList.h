// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <span>
#include <vector>

#include "qx/spatial/internal/QuadFilter.h"
#include "qx/spatial/internal/QuadSquare.h"
#include "qx/spatial/internal/QuadStore.h"

namespace qx::internal {

/// The records of one tree node: blocks in the order of a curve that fills the square, and a
/// directory of their bounds, which is filtered like a block.
class QuadList {
public:
    /// The tree node that the list belongs to.
    struct Home {
        QuadSquare square;
        std::uint32_t node;
    };

    std::size_t recordCount() const { return m_recordCount; }

    void insert(QuadStore& store, const Home& home, const QuadRecord& record);
    /// Adds a block of records behind all others: what a bulk build calls in order. `key` is that
    /// of the first record, and no record before has a larger one.
    void appendBlock(QuadStore& store, std::uint32_t node, std::span<const QuadRecord> records,
                     std::uint32_t key);
    void remove(QuadStore& store, std::uint32_t slot, QuadStore::Place place);
    /// The record has a new box. Records of large lists may change their block.
    void reshape(QuadStore& store, const Home& home, QuadStore::Place place,
                 const QuadShape& shape);
    /// Gives the blocks back, whose records must have been unlinked.
    void dropBlocks(QuadStore& store);

    /// The place of a box on the curve.
    static std::uint32_t keyOf(const QuadSquare& square, const QuadBox& box);

    /// Calls `visit(blockIndex, hits, shared)` for each block with records of a wanted kind that
    /// meet `rect`, until a call returns true; whether one did. `hits` and, of these, `shared` have
    /// one bit for each position in the block.
    template <class Visit>
    bool visitHits(const QuadStore& store, const QuadFilter& filter, const QuadBox& rect,
                   unsigned kinds, const Visit& visit) const;
    /// Calls `visit(record, place)` for each record. It may unlink the record, but not move it.
    template <class Visit>
    void visitAll(const QuadStore& store, const Visit& visit) const;

    /// Whether the directory says what the blocks say; describes the first fault.
    bool checkInvariants(const QuadStore& store, std::uint32_t node, std::ostream& out) const;
    /// Bytes of memory it takes, beside the object itself.
    std::size_t sizeOf() const { return m_data.capacity() * sizeof(std::int32_t); }

private:
    /// The columns of the directory lie one after the other in one array.
    enum Column : std::size_t { MinX, MinY, MaxX, MaxY, Keys, Blocks, ColumnCount };
    static constexpr std::uint32_t Step = QuadEight::Lanes;

    std::int32_t* column(Column which) { return m_data.data() + which * m_capacity; }
    const std::int32_t* column(Column which) const { return m_data.data() + which * m_capacity; }
    static std::uint64_t passingBy(const QuadBlock& block, std::uint64_t segments,
                                   const QuadBox& rect);
    std::uint32_t blockAt(std::size_t at) const {
        return static_cast<std::uint32_t>(column(Blocks)[at]);
    }
    std::uint32_t keyAt(std::size_t at) const {
        return static_cast<std::uint32_t>(column(Keys)[at]);
    }
    void setBounds(std::size_t at, const QuadBox& bounds);
    void fit(QuadBlock& block, std::size_t at, const QuadBox& box);
    std::size_t find(std::uint32_t key) const;
    std::size_t positionOf(const QuadStore& store, std::uint32_t block) const;
    void reserveOne();
    void openAt(QuadStore& store, std::size_t at, std::uint32_t node, std::uint32_t key);
    void closeAt(QuadStore& store, std::size_t at);
    void place(QuadStore& store, const Home& home, const QuadRecord& record);
    std::size_t splitAt(QuadStore& store, const Home& home, std::size_t at, std::uint32_t key);
    void takeOut(QuadStore& store, std::uint32_t slot, QuadStore::Place place);
    bool joinNeighbour(QuadStore& store, std::size_t at);
    void moveAll(QuadStore& store, std::size_t from, std::size_t to);

    std::vector<std::int32_t> m_data;
    std::uint32_t m_capacity = 0;
    std::uint32_t m_count = 0;
    std::size_t m_recordCount = 0;
};

/// Those of the segments that do not meet the rectangle, though their boxes do.
inline std::uint64_t QuadList::passingBy(const QuadBlock& block, std::uint64_t segments,
                                         const QuadBox& rect) {
    std::uint64_t passing = 0;
    for (; segments != 0; segments &= segments - 1) {
        const auto position = static_cast<std::uint32_t>(std::countr_zero(segments));
        passing |= std::uint64_t{!block.shape(position).diagonalMeets(rect)} << position;
    }
    return passing;
}

template <class Visit>
bool QuadList::visitHits(const QuadStore& store, const QuadFilter& filter, const QuadBox& rect,
                         unsigned kinds, const Visit& visit) const {
    for (std::uint32_t from = 0; from < m_count; from += QuadBlock::Capacity) {
        const auto firstOf = [this, from](std::uint64_t blocks) {
            return blockAt(from + static_cast<std::uint32_t>(std::countr_zero(blocks)));
        };
        const QuadColumns bounds{column(MinX) + from,
                                 column(MinY) + from,
                                 column(MaxX) + from,
                                 column(MaxY) + from,
                                 Step,
                                 std::min(m_count - from, QuadBlock::Capacity)};
        for (std::uint64_t near = filter.meet(bounds, rect); near != 0;) {
            const std::uint32_t index = firstOf(near);
            near &= near - 1;
            if (near != 0) {
                store.block(firstOf(near)).fetchAhead();
            }
            const QuadBlock& block = store.block(index);
            const QuadMatch match = filter.match(block, rect, kinds);
            const std::uint64_t hits = match.hits ^ passingBy(block, match.unsure, rect);
            if (hits != 0 && visit(index, hits, hits & match.shared)) {
                return true;
            }
        }
    }
    return false;
}

template <class Visit>
void QuadList::visitAll(const QuadStore& store, const Visit& visit) const {
    for (std::size_t at = 0; at < m_count; ++at) {
        const QuadBlock& block = store.block(blockAt(at));
        for (std::uint64_t left = block.taken; left != 0; left &= left - 1) {
            const auto position = static_cast<std::uint32_t>(std::countr_zero(left));
            visit(block.record(position), QuadStore::placeOf(blockAt(at), position));
        }
    }
}

}  // namespace qx::internal
