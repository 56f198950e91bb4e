// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <cstddef>
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

/// Up to 64 records of one tree node, each property in an array of its own, so that one
/// instruction compares many of them.
struct alignas(64) QuadBlock {
    static constexpr std::uint32_t Capacity = 64;

    std::array<std::int32_t, Capacity> minX;
    std::array<std::int32_t, Capacity> minY;
    std::array<std::int32_t, Capacity> maxX;
    std::array<std::int32_t, Capacity> maxY;
    std::array<std::uint64_t, Capacity> payload;
    std::array<std::uint32_t, Capacity> slot;
    std::array<std::uint8_t, Capacity> bits;
    /// Encloses all boxes; tight but for changes in place.
    QuadBox bounds;
    /// Where the block stands in the order of its list.
    std::uint32_t key;
    /// The tree node whose list it is in.
    std::uint32_t node;
    std::uint32_t count;

    bool isFull() const { return count == Capacity; }
    QuadBox box(std::size_t at) const { return {minX[at], minY[at], maxX[at], maxY[at]}; }
    QuadShape shape(std::size_t at) const {
        return {box(at), static_cast<QuadForm>(bits[at] & QuadBits::Form)};
    }
    QuadRecord record(std::size_t at) const { return {box(at), bits[at], slot[at], payload[at]}; }
    void setShape(std::size_t at, const QuadShape& shape) {
        setBox(at, shape.box);
        bits[at] = static_cast<std::uint8_t>((bits[at] & ~QuadBits::Form) |
                                             static_cast<unsigned>(shape.form));
    }
    void setRecord(std::size_t at, const QuadRecord& record) {
        setBox(at, record.box);
        bits[at] = record.bits;
        slot[at] = record.slot;
        payload[at] = record.payload;
    }
    QuadBox unionOfBoxes() const {
        QuadBox all = QuadBox::nothing();
        for (std::size_t at = 0; at < count; ++at) {
            all.unite(box(at));
        }
        return all;
    }

private:
    void setBox(std::size_t at, const QuadBox& box) {
        minX[at] = box.minX;
        minY[at] = box.minY;
        maxX[at] = box.maxX;
        maxY[at] = box.maxY;
    }
};

}  // namespace qx::internal
