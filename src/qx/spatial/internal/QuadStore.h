// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "qx/spatial/internal/QuadBlock.h"

namespace qx::internal {

/// Where records lie: blocks in a pool and, for each slot, the places of its records.
///
/// A slot with one record, as most have, names its place; one with more heads a chain of cells, and
/// its records carry the bit Shared. Whoever moves a record tells its slot in the same breath, so a
/// slot's records are found without a search, in O(their number).
class QuadStore {
public:
    /// A record: its block's index times 64, plus its position in the block.
    using Place = std::uint32_t;
    static constexpr std::uint32_t None = 0xFFFFFFFF;

    static std::uint32_t blockOf(Place place) { return place / QuadBlock::Capacity; }
    static std::uint32_t positionOf(Place place) { return place % QuadBlock::Capacity; }
    static Place placeOf(std::uint32_t block, std::uint32_t position) {
        return block * QuadBlock::Capacity + position;
    }

    /// @name Slots
    /// @{
    std::uint32_t acquireSlot();
    /// The slot must have no records any more.
    void releaseSlot(std::uint32_t slot) { m_freeSlots.push_back(slot); }
    /// Slots 0 to count - 1, all without records; there must be none yet.
    void acquireSlots(std::size_t count) { m_slots.assign(count, None); }
    std::size_t slotCount() const { return m_slots.size() - m_freeSlots.size(); }
    bool isShared(std::uint32_t slot) const { return (m_slots[slot] & ChainFlag) != 0; }
    /// One of the slot's records, None when it has none.
    Place firstPlace(std::uint32_t slot) const {
        const std::uint32_t entry = m_slots[slot];
        return entry != None && (entry & ChainFlag) != 0 ? m_cells[entry & ~ChainFlag].place
                                                         : entry;
    }
    /// Ask the memory for what a change of the slot's record touches: first for where it is, then
    /// for itself.
    void fetchSlot(std::uint32_t slot) const { __builtin_prefetch(&m_slots[slot]); }
    void fetchRecord(std::uint32_t slot) const {
        const Place place = firstPlace(slot);
        if (place != None) {
            block(blockOf(place)).fetchAhead(positionOf(place));
        }
    }
    /// The first of its records for which `test(place)` holds, None when it holds for none.
    template <class Test>
    Place findPlace(std::uint32_t slot, const Test& test) const;
    /// @}

    /// @name Blocks
    /// @{
    std::uint32_t acquireBlock(std::uint32_t node, std::uint32_t key);
    void releaseBlock(std::uint32_t index) { m_freeBlocks.push_back(index); }
    QuadBlock& block(std::uint32_t index) { return *m_blocks[index]; }
    const QuadBlock& block(std::uint32_t index) const { return *m_blocks[index]; }
    QuadRecord record(Place place) const { return block(blockOf(place)).record(positionOf(place)); }
    /// @}

    /// @name Records; the bounds of blocks are the caller's
    /// @{

    /// Adds a record to a block that is not full. The bit Shared is set as due.
    void append(std::uint32_t index, const QuadRecord& record);
    /// The same to that position, which must be free.
    void putAt(std::uint32_t index, std::uint32_t position, const QuadRecord& record) {
        block(index).put(position, record);
        link(record.slot, placeOf(index, position));
    }
    void remove(std::uint32_t slot, Place place);
    /// Moves the record to another block that is not full, or to a free position of its own.
    void move(Place place, std::uint32_t toBlock);
    /// Moves records so that the block's free positions come last.
    void compact(std::uint32_t index);
    /// Takes the record from its slot, but leaves it in its block, which is about to go.
    void unlink(std::uint32_t slot, Place place);
    /// @}

    void clear();
    /// Bytes of memory it takes, beside the object itself.
    std::size_t sizeOf() const;

private:
    static constexpr std::uint32_t ChainFlag = 0x80000000;

    struct Cell {
        Place place;
        std::uint32_t next;
    };

    std::uint8_t& bitsAt(Place place) { return block(blockOf(place)).bits[positionOf(place)]; }
    void link(std::uint32_t slot, Place place);
    std::uint32_t acquireCell(Place place, std::uint32_t next);
    void releaseCell(std::uint32_t cell);
    void repoint(std::uint32_t slot, std::uint8_t bits, Place from, Place to);

    std::vector<std::unique_ptr<QuadBlock>> m_blocks;
    std::vector<std::uint32_t> m_freeBlocks;
    std::vector<std::uint32_t> m_slots;
    std::vector<std::uint32_t> m_freeSlots;
    std::vector<Cell> m_cells;
    std::uint32_t m_freeCell = None;
};

template <class Test>
QuadStore::Place QuadStore::findPlace(std::uint32_t slot, const Test& test) const {
    const std::uint32_t entry = m_slots[slot];
    if (entry == None || (entry & ChainFlag) == 0) {
        return entry != None && test(entry) ? entry : None;
    }
    for (std::uint32_t cell = entry & ~ChainFlag; cell != None; cell = m_cells[cell].next) {
        if (test(m_cells[cell].place)) {
            return m_cells[cell].place;
        }
    }
    return None;
}

}  // namespace qx::internal
