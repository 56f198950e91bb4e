// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <optional>

#include "qx/spatial/internal/QuadShape.h"

namespace qx::internal {

/// The square of a tree node: x in [left, right), y in [bottom, top), for the right and the top
/// border belong to the neighbours. In 64 bits, since a root near the ends of the 32-bit range
/// reaches beyond them. Quadrants count from 0: lower left, lower right, upper left, upper right.
struct QuadSquare {
    static constexpr std::int64_t SmallestRoot = 2048;

    std::int64_t left;
    std::int64_t bottom;
    std::int64_t side;

    std::int64_t right() const { return left + side; }
    std::int64_t top() const { return bottom + side; }

    /// The root for a first box: about its center, strictly wider and higher than it.
    static QuadSquare around(const QuadBox& box) {
        const std::int64_t width = std::int64_t{box.maxX} - box.minX;
        const std::int64_t height = std::int64_t{box.maxY} - box.minY;
        std::int64_t side = SmallestRoot;
        while (side <= std::max(width, height)) {
            side *= 2;
        }
        return {box.minX + width / 2 - side / 2, box.minY + height / 2 - side / 2, side};
    }
    /// The quadrant that this square becomes when it has to double toward the box; none when it
    /// holds the box already.
    std::optional<unsigned> quadrantWhenGrowing(const QuadBox& box) const {
        if (box.minX < left) {
            return box.maxY < top() ? 3U : 1U;
        }
        if (box.maxY >= top()) {
            return 0U;
        }
        if (box.minY < bottom || box.maxX >= right()) {
            return 2U;
        }
        return std::nullopt;
    }
    /// The square of which this one is that quadrant.
    QuadSquare doubled(unsigned quadrant) const {
        return {left - ((quadrant & 1U) != 0 ? side : 0),
                bottom - ((quadrant & 2U) != 0 ? side : 0), side * 2};
    }
    QuadSquare quadrant(unsigned index) const {
        const std::int64_t half = side / 2;
        return {left + ((index & 1U) != 0 ? half : 0), bottom + ((index & 2U) != 0 ? half : 0),
                half};
    }

    bool encloses(const QuadBox& box) const {
        return box.minX >= left && box.maxX < right() && box.minY >= bottom && box.maxY < top();
    }
    bool overlaps(const QuadBox& box) const {
        return box.minX < right() && box.maxX >= left && box.minY < top() && box.maxY >= bottom;
    }
    /// A segment counts as meeting the upper right corner, which is not the square's: that is once
    /// too often, never too rarely, and needs no second kind of test.
    bool overlaps(const QuadShape& shape) const {
        return overlaps(shape.box) && (!shape.isSegment() || diagonalOf(shape).meets());
    }
    /// One bit for each quadrant that the box overlaps, provided that it overlaps the square.
    unsigned quadrantsOf(const QuadBox& box) const {
        const std::int64_t middleX = left + side / 2;
        const std::int64_t middleY = bottom + side / 2;
        const unsigned columns = (box.minX < middleX ? 5U : 0U) | (box.maxX >= middleX ? 10U : 0U);
        const unsigned rows = (box.minY < middleY ? 3U : 0U) | (box.maxY >= middleY ? 12U : 0U);
        return columns & rows;
    }
    /// Whether the part of the shape in this square extends over half of it or more, which keeps
    /// it out of the quadrants. The shape has to overlap the square.
    bool holdsAsLarge(const QuadShape& shape) const {
        const std::int64_t half = side / 2;
        return shape.extent() >= half && holdsPartAsLarge(shape, half);
    }

    friend bool operator==(const QuadSquare& a, const QuadSquare& b) {
        return a.left == b.left && a.bottom == b.bottom && a.side == b.side;
    }

private:
    QuadDiagonal diagonalOf(const QuadShape& shape) const {
        return {shape.box, shape.form, left, bottom, right(), top()};
    }
    bool holdsPartAsLarge(const QuadShape& shape, std::int64_t half) const {
        if (shape.isSegment()) {
            return diagonalOf(shape).spans(half);
        }
        const QuadBox& box = shape.box;
        const std::int64_t width = std::min<std::int64_t>(right(), std::int64_t{box.maxX} + 1) -
                                   std::max<std::int64_t>(left, box.minX);
        const std::int64_t height = std::min<std::int64_t>(top(), std::int64_t{box.maxY} + 1) -
                                    std::max<std::int64_t>(bottom, box.minY);
        return std::max(width, height) >= half;
    }
};

}  // namespace qx::internal
