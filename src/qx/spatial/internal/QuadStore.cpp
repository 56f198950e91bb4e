// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/spatial/internal/QuadStore.h"

namespace qx::internal {

namespace {

/// Room for one more; growing by half, since half of a doubled array would lie idle at the worst.
template <class T>
void makeRoom(std::vector<T>& values) {
    if (values.size() == values.capacity()) {
        values.reserve(values.size() + values.size() / 2 + 4);
    }
}

}  // namespace

std::uint32_t QuadStore::acquireSlot() {
    if (!m_freeSlots.empty()) {
        const std::uint32_t slot = m_freeSlots.back();
        m_freeSlots.pop_back();
        return slot;
    }
    makeRoom(m_slots);
    m_slots.push_back(None);
    return static_cast<std::uint32_t>(m_slots.size() - 1);
}

std::uint32_t QuadStore::acquireBlock(std::uint32_t node, std::uint32_t key) {
    if (m_freeBlocks.empty()) {
        m_freeBlocks.push_back(static_cast<std::uint32_t>(m_blocks.size()));
        // Not cleared: what no bit of `taken` stands for counts for nothing.
        m_blocks.emplace_back(new QuadBlock);
    }
    const std::uint32_t index = m_freeBlocks.back();
    m_freeBlocks.pop_back();
    QuadBlock& fresh = block(index);
    fresh.bounds = QuadBox::nothing();
    fresh.key = key;
    fresh.node = node;
    fresh.taken = 0;
    fresh.count = 0;
    return index;
}

void QuadStore::append(std::uint32_t index, const QuadRecord& record) {
    putAt(index, block(index).firstFree(), record);
}

void QuadStore::remove(std::uint32_t slot, Place place) {
    unlink(slot, place);
    block(blockOf(place)).free(positionOf(place));
}

void QuadStore::move(Place place, std::uint32_t toBlock) {
    const QuadRecord moved = record(place);
    QuadBlock& target = block(toBlock);
    const std::uint32_t position = target.firstFree();
    target.put(position, moved);
    repoint(moved.slot, moved.bits, place, placeOf(toBlock, position));
    block(blockOf(place)).free(positionOf(place));
}

void QuadStore::compact(std::uint32_t index) {
    while (block(index).end() > block(index).count) {
        move(placeOf(index, block(index).end() - 1), index);
    }
}

void QuadStore::repoint(std::uint32_t slot, std::uint8_t bits, Place from, Place to) {
    if ((bits & QuadBits::Shared) == 0) {
        m_slots[slot] = to;
        return;
    }
    std::uint32_t cell = m_slots[slot] & ~ChainFlag;
    while (m_cells[cell].place != from) {
        cell = m_cells[cell].next;
    }
    m_cells[cell].place = to;
}

void QuadStore::link(std::uint32_t slot, Place place) {
    std::uint32_t& entry = m_slots[slot];
    if (entry == None) {
        bitsAt(place) &= static_cast<std::uint8_t>(~QuadBits::Shared);
        entry = place;
        return;
    }
    if ((entry & ChainFlag) == 0) {
        bitsAt(entry) |= QuadBits::Shared;
        entry = acquireCell(entry, None) | ChainFlag;
    }
    bitsAt(place) |= QuadBits::Shared;
    entry = acquireCell(place, entry & ~ChainFlag) | ChainFlag;
}

void QuadStore::unlink(std::uint32_t slot, Place place) {
    std::uint32_t& entry = m_slots[slot];
    if ((entry & ChainFlag) == 0) {
        entry = None;
        return;
    }
    std::uint32_t first = entry & ~ChainFlag;
    std::uint32_t* way = &first;
    while (m_cells[*way].place != place) {
        way = &m_cells[*way].next;
    }
    const std::uint32_t gone = *way;
    *way = m_cells[gone].next;
    releaseCell(gone);
    entry = first | ChainFlag;
    if (m_cells[first].next == None) {
        entry = m_cells[first].place;
        bitsAt(entry) &= static_cast<std::uint8_t>(~QuadBits::Shared);
        releaseCell(first);
    }
}

std::uint32_t QuadStore::acquireCell(Place place, std::uint32_t next) {
    std::uint32_t cell = m_freeCell;
    if (cell == None) {
        cell = static_cast<std::uint32_t>(m_cells.size());
        makeRoom(m_cells);
        m_cells.push_back({place, next});
    } else {
        m_freeCell = m_cells[cell].next;
        m_cells[cell] = {place, next};
    }
    return cell;
}

void QuadStore::releaseCell(std::uint32_t cell) {
    m_cells[cell].next = m_freeCell;
    m_freeCell = cell;
}

void QuadStore::clear() {
    *this = QuadStore();
}

std::size_t QuadStore::sizeOf() const {
    return m_blocks.size() * sizeof(QuadBlock) + m_blocks.capacity() * sizeof(m_blocks[0]) +
           m_cells.capacity() * sizeof(Cell) +
           (m_freeBlocks.capacity() + m_slots.capacity() + m_freeSlots.capacity()) *
               sizeof(std::uint32_t);
}

}  // namespace qx::internal
