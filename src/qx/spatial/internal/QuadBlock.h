// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <bit>
#include <cstdint>

#include "qx/spatial/internal/QuadShape.h"

namespace qx::internal {

/// What a record notes in its one byte, beside the QuadForm.
struct QuadBits {
    static constexpr std::uint8_t Kind = 0x07;     ///< the number of the kind
    static constexpr std::uint8_t Form = 0x18;     ///< the QuadForm
    static constexpr std::uint8_t Segment = 0x08;  ///< of the form: not the whole box
    static constexpr std::uint8_t Large = 0x20;    ///< for the tree node it lies in
    static constexpr std::uint8_t Shared = 0x40;   ///< its slot has more records
};

/// One object, or the part of it that lies in one tree node.
struct QuadRecord {
    QuadBox box;
    std::uint8_t bits;
    std::uint32_t slot;
    std::uint64_t payload;

    QuadShape shape() const { return {box, static_cast<QuadForm>(bits & QuadBits::Form)}; }
};

/// Eight boxes side by side, as vector instructions take them.
struct alignas(32) QuadEight {
    static constexpr std::uint32_t Lanes = 8;

    std::array<std::int32_t, Lanes> minX;
    std::array<std::int32_t, Lanes> minY;
    std::array<std::int32_t, Lanes> maxX;
    std::array<std::int32_t, Lanes> maxY;
};

/// Up to 64 records of one tree node. Each has a position, which it keeps while others come and go:
/// a word tells which positions are taken.
struct alignas(64) QuadBlock {
    static constexpr std::uint32_t Capacity = 64;

    std::array<QuadEight, Capacity / QuadEight::Lanes> boxes;
    std::array<std::uint64_t, Capacity> payload;
    std::array<std::uint32_t, Capacity> slot;
    std::array<std::uint8_t, Capacity> bits;
    /// One bit for each position that is taken, the first in the lowest.
    std::uint64_t taken;
    std::uint32_t count;
    /// The tree node whose list it is in.
    std::uint32_t node;
    /// Encloses all boxes; tight but for changes in place.
    QuadBox bounds;
    /// Where the block stands in the order of its list.
    std::uint32_t key;

    bool isFull() const { return count == Capacity; }
    /// The positions from here on are free.
    std::uint32_t end() const {
        return Capacity - static_cast<std::uint32_t>(std::countl_zero(taken));
    }
    std::uint32_t firstFree() const { return static_cast<std::uint32_t>(std::countr_one(taken)); }
    QuadBox box(std::uint32_t at) const {
        const QuadEight& eight = boxes[at / QuadEight::Lanes];
        const std::uint32_t lane = at % QuadEight::Lanes;
        return {eight.minX[lane], eight.minY[lane], eight.maxX[lane], eight.maxY[lane]};
    }
    QuadShape shape(std::uint32_t at) const {
        return {box(at), static_cast<QuadForm>(bits[at] & QuadBits::Form)};
    }
    QuadRecord record(std::uint32_t at) const { return {box(at), bits[at], slot[at], payload[at]}; }

    void setShape(std::uint32_t at, const QuadShape& shape) {
        setBox(at, shape.box);
        bits[at] = static_cast<std::uint8_t>((bits[at] & ~QuadBits::Form) |
                                             static_cast<unsigned>(shape.form));
    }
    /// Takes the position, which must be free, for the record.
    void put(std::uint32_t at, const QuadRecord& record) {
        setBox(at, record.box);
        bits[at] = record.bits;
        slot[at] = record.slot;
        payload[at] = record.payload;
        taken |= std::uint64_t{1} << at;
        ++count;
    }
    void free(std::uint32_t at) {
        taken ^= std::uint64_t{1} << at;
        --count;
    }
    /// Asks the memory for what a filter reads, while the caller is busy with another block.
    void fetchAhead() const {
        for (const QuadEight& eight : boxes) {
            __builtin_prefetch(&eight.minX);
            __builtin_prefetch(&eight.maxX);
        }
        __builtin_prefetch(&bits);
        __builtin_prefetch(&taken);
    }
    /// The same for one record, which is about to change.
    void fetchAhead(std::uint32_t at) const {
        const QuadEight& eight = boxes[at / QuadEight::Lanes];
        __builtin_prefetch(&eight.minX, 1);
        __builtin_prefetch(&eight.maxX, 1);
        __builtin_prefetch(&payload[at]);
        __builtin_prefetch(&bits);
        __builtin_prefetch(&taken);
    }
    QuadBox unionOfBoxes() const {
        QuadBox all = QuadBox::nothing();
        for (std::uint64_t left = taken; left != 0; left &= left - 1) {
            all.unite(box(static_cast<std::uint32_t>(std::countr_zero(left))));
        }
        return all;
    }

private:
    void setBox(std::uint32_t at, const QuadBox& box) {
        QuadEight& eight = boxes[at / QuadEight::Lanes];
        const std::uint32_t lane = at % QuadEight::Lanes;
        eight.minX[lane] = box.minX;
        eight.minY[lane] = box.minY;
        eight.maxX[lane] = box.maxX;
        eight.maxY[lane] = box.maxY;
    }
};

}  // namespace qx::internal
