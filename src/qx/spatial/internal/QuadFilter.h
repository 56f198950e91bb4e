// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>

#include "qx/spatial/internal/QuadBlock.h"

namespace qx::internal {

/// Up to 64 boxes in groups of eight; the next group begins `stride` numbers farther. The arrays
/// are readable to the end of the last group.
struct QuadColumns {
    const std::int32_t* minX;
    const std::int32_t* minY;
    const std::int32_t* maxX;
    const std::int32_t* maxY;
    std::size_t stride;
    std::uint32_t count;
};

/// What of a block a query meets; one bit for each record, the first in the lowest.
struct QuadMatch {
    /// Of a wanted kind, and the box meets the rectangle.
    std::uint64_t hits;
    /// Of the hits, segments that do not lie all inside: they may yet pass by the rectangle.
    std::uint64_t unsure;
    /// Of all records, those with the bit Shared.
    std::uint64_t shared;
};

/// Finds what meets a rectangle. `kinds` has bit 1 << k for each wanted kind k.
struct QuadFilter {
    /// One bit for each box that meets `rect`.
    std::uint64_t (*meet)(const QuadColumns& boxes, const QuadBox& rect);
    QuadMatch (*match)(const QuadBlock& block, const QuadBox& rect, unsigned kinds);

    /// The fastest that this processor runs; `vectorUnit` false: the plain loop.
    static QuadFilter choose(bool vectorUnit);
};

}  // namespace qx::internal
