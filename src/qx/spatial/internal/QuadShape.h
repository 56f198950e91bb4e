// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

namespace qx::internal {

/// A closed box of 32-bit coordinates: the border belongs to it. minX <= maxX and minY <= maxY,
/// but for `nothing()`.
struct QuadBox {
    std::int32_t minX;
    std::int32_t minY;
    std::int32_t maxX;
    std::int32_t maxY;

    /// What meets nothing and adds nothing to a union.
    static constexpr QuadBox nothing() {
        constexpr std::int32_t Low = std::numeric_limits<std::int32_t>::min();
        constexpr std::int32_t High = std::numeric_limits<std::int32_t>::max();
        return {High, High, Low, Low};
    }
    bool meets(const QuadBox& other) const {
        return minX <= other.maxX && other.minX <= maxX && minY <= other.maxY && other.minY <= maxY;
    }
    bool encloses(const QuadBox& other) const {
        return minX <= other.minX && other.maxX <= maxX && minY <= other.minY && other.maxY <= maxY;
    }
    void unite(const QuadBox& other) {
        minX = std::min(minX, other.minX);
        minY = std::min(minY, other.minY);
        maxX = std::max(maxX, other.maxX);
        maxY = std::max(maxY, other.maxY);
    }
    /// Whether this union may rest on a side of `member`.
    bool restsOn(const QuadBox& member) const {
        return minX == member.minX || minY == member.minY || maxX == member.maxX ||
               maxY == member.maxY;
    }
    friend bool operator==(const QuadBox& a, const QuadBox& b) {
        return a.minX == b.minX && a.minY == b.minY && a.maxX == b.maxX && a.maxY == b.maxY;
    }
};

/// What a record stands for: its whole box, or a segment that is a diagonal of the box. The values
/// are bits of a record.
enum class QuadForm : std::uint8_t {
    Box = 0,
    Rising = 0x8,    ///< from (minX, minY) to (maxX, maxY)
    Falling = 0x18,  ///< from (minX, maxY) to (maxX, minY)
};

/// The part of a box's diagonal that lies in a rectangle. Everything is measured from the end of
/// the diagonal on the left, upward or downward as the diagonal goes, so that both forms are one.
/// The rectangle is cut down to the box first, which changes nothing and keeps the products of the
/// test in 64 bits.
class QuadDiagonal {
public:
    /// The closed rectangle has to meet the box. Its sides may lie outside the 32-bit range.
    QuadDiagonal(const QuadBox& box, QuadForm form, std::int64_t left, std::int64_t bottom,
                 std::int64_t right, std::int64_t top)
        : m_dx(std::int64_t{box.maxX} - box.minX),
          m_dy(std::int64_t{box.maxY} - box.minY),
          m_lowX(std::max<std::int64_t>(left, box.minX) - box.minX),
          m_highX(std::min<std::int64_t>(right, box.maxX) - box.minX),
          m_lowY(std::max<std::int64_t>(bottom, box.minY) - box.minY),
          m_highY(std::min<std::int64_t>(top, box.maxY) - box.minY) {
        if (form == QuadForm::Falling) {
            m_lowY = m_dy - m_lowY;
            m_highY = m_dy - m_highY;
            std::swap(m_lowY, m_highY);
        }
    }

    /// Whether there is such a part, be it a point: no corner of the rectangle may lie beyond the
    /// line. Exact.
    bool meets() const {
        return product(m_dx, m_highY) >= product(m_dy, m_lowX) &&
               product(m_dx, m_lowY) <= product(m_dy, m_highX);
    }
    /// Whether the part is at least `length` long in x or in y. Exact; the part has to exist.
    bool spans(std::int64_t length) const {
        return m_dx >= m_dy ? spans(length, m_dx, m_lowX, m_highX, m_dy, m_lowY, m_highY)
                            : spans(length, m_dy, m_lowY, m_highY, m_dx, m_lowX, m_highX);
    }

private:
    static std::uint64_t product(std::int64_t a, std::int64_t b) {
        return static_cast<std::uint64_t>(a) * static_cast<std::uint64_t>(b);
    }
    /// Along the longer axis the part ends at the nearer of two limits, that of its own and that
    /// of the other axis, and begins at the farther of two: each pair has to lie apart.
    static bool spans(std::int64_t length, std::int64_t d, std::int64_t low, std::int64_t high,
                      std::int64_t otherD, std::int64_t otherLow, std::int64_t otherHigh) {
        using Wide = __int128;
        return high - low >= length &&  //
               Wide{high - length} * otherD >= Wide{otherLow} * d &&
               Wide{otherHigh} * d >= Wide{low + length} * otherD &&
               Wide{otherHigh - otherLow} * d >= Wide{length} * otherD;
    }

    std::int64_t m_dx;
    std::int64_t m_dy;
    std::int64_t m_lowX;
    std::int64_t m_highX;
    std::int64_t m_lowY;
    std::int64_t m_highY;
};

/// What an object covers.
struct QuadShape {
    QuadBox box;
    QuadForm form = QuadForm::Box;

    static QuadShape segment(std::int32_t fromX, std::int32_t fromY, std::int32_t toX,
                             std::int32_t toY) {
        const QuadBox box{std::min(fromX, toX), std::min(fromY, toY), std::max(fromX, toX),
                          std::max(fromY, toY)};
        return {box, (fromX <= toX) == (fromY <= toY) ? QuadForm::Rising : QuadForm::Falling};
    }
    bool isSegment() const { return form != QuadForm::Box; }
    /// The longer side: of a box with its last row and column counted, so that a point has 1.
    std::int64_t extent() const {
        const std::int64_t width = std::int64_t{box.maxX} - box.minX;
        const std::int64_t height = std::int64_t{box.maxY} - box.minY;
        return std::max(width, height) + (isSegment() ? 0 : 1);
    }
    /// Whether a segment has a point in the closed rectangle, provided that its box has.
    bool diagonalMeets(const QuadBox& rect) const {
        return QuadDiagonal(box, form, rect.minX, rect.minY, rect.maxX, rect.maxY).meets();
    }
};

}  // namespace qx::internal
