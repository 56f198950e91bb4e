// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <algorithm>

#include "qx/foundation/geometry/QxPoint.h"
#include "qx/foundation/geometry/QxSideEnum.h"
#include "qx/foundation/geometry/QxSize.h"

class QxPerMil;

/// An axis-parallel rectangle; y grows upward, so top is the larger y.
///
/// Its center is the point around which an object of its size lies: left + leftHalfWidth(), so
/// that reading the center and placing by it are inverse for odd sizes and negative coordinates
/// too. Extents that exceed 32 bits are clamped when read; a move or a resize near the ends of the
/// coordinate range clamps the sides; setters return what was stored. A rectangle with right < left
/// or top < bottom is empty: it contains nothing, meets nothing and lies in nothing.
class QX_API QxRect : public QxValueObject<QxRect> {
public:
    /// All sides 0.
    QxRect() noexcept = default;
    /// A rectangle of this size centered at the origin; (0, 0) is the origin alone.
    QxRect(std::int32_t width, std::int32_t height) noexcept { place(0, 0, width, height); }
    QxRect(std::int32_t left, std::int32_t bottom, std::int32_t right, std::int32_t top) noexcept
        : m_left(left), m_top(top), m_right(right), m_bottom(bottom) {}
    /// The smallest rectangle with both points.
    QxRect(const QxPoint& a, const QxPoint& b) noexcept
        : QxRect(std::min(a.x(), b.x()), std::min(a.y(), b.y()), std::max(a.x(), b.x()),
                 std::max(a.y(), b.y())) {}
    /// A rectangle of this size placed by its center.
    QxRect(const QxPoint& center, const QxSize& size) noexcept {
        place(center.x(), center.y(), size.width(), size.height());
    }
    QxRect(const QxRect& other, QxDeepFlagEnum) noexcept : QxRect(other) {}

    /// @name Sides and corners
    /// @{
    std::int32_t left() const noexcept { return m_left; }
    std::int32_t top() const noexcept { return m_top; }
    std::int32_t right() const noexcept { return m_right; }
    std::int32_t bottom() const noexcept { return m_bottom; }
    std::int32_t left(std::int32_t value) noexcept { return m_left = value; }
    std::int32_t top(std::int32_t value) noexcept { return m_top = value; }
    std::int32_t right(std::int32_t value) noexcept { return m_right = value; }
    std::int32_t bottom(std::int32_t value) noexcept { return m_bottom = value; }
    /// Sets all sides, in the order left, bottom, right, top: the lower left corner comes first.
    void setCorners(std::int32_t left, std::int32_t bottom, std::int32_t right,
                    std::int32_t top) noexcept {
        setLeftRight(left, right);
        setBottomTop(bottom, top);
    }
    void setLeftRight(std::int32_t left, std::int32_t right) noexcept {
        m_left = left;
        m_right = right;
    }
    void setBottomTop(std::int32_t bottom, std::int32_t top) noexcept {
        m_bottom = bottom;
        m_top = top;
    }
    /// 1 when the sides are inverted.
    int isEmpty() const noexcept { return 1 - all(m_left <= m_right, m_bottom <= m_top); }
    QxPoint topLeft() const noexcept { return {m_left, m_top}; }
    QxPoint topRight() const noexcept { return {m_right, m_top}; }
    QxPoint bottomLeft() const noexcept { return {m_left, m_bottom}; }
    QxPoint bottomRight() const noexcept { return {m_right, m_bottom}; }
    /// @}

    /// @name Extent: the setters keep the center
    /// @{
    std::int32_t width() const noexcept { return qx::clampToInt32(exactWidth()); }
    std::int32_t height() const noexcept { return qx::clampToInt32(exactHeight()); }
    std::int32_t width(std::int32_t value) noexcept {
        placeX(x(), value);
        return width();
    }
    std::int32_t height(std::int32_t value) noexcept {
        placeY(y(), value);
        return height();
    }
    QxSize size() const noexcept { return {width(), height()}; }
    QxSize size(const QxSize& value) noexcept {
        resize(value);
        return size();
    }
    void resize(const QxSize& value) noexcept { resize(value.width(), value.height()); }
    void resize(std::int32_t newWidth, std::int32_t newHeight) noexcept {
        place(x(), y(), newWidth, newHeight);
    }
    std::int32_t leftHalfWidth() const noexcept {
        return qx::clampToInt32(qx::lowerHalf(exactWidth()));
    }
    std::int32_t rightHalfWidth() const noexcept {
        return qx::clampToInt32(qx::upperHalf(exactWidth()));
    }
    std::int32_t topHalfHeight() const noexcept {
        return qx::clampToInt32(qx::upperHalf(exactHeight()));
    }
    std::int32_t bottomHalfHeight() const noexcept {
        return qx::clampToInt32(qx::lowerHalf(exactHeight()));
    }
    /// @}

    /// @name Center: the setters and moves keep the size
    /// @{
    std::int32_t x() const noexcept { return qx::clampToInt32(m_left + exactWidth() / 2); }
    std::int32_t y() const noexcept { return qx::clampToInt32(m_bottom + exactHeight() / 2); }
    std::int32_t x(std::int32_t value) noexcept {
        placeX(value, exactWidth());
        return x();
    }
    std::int32_t y(std::int32_t value) noexcept {
        placeY(value, exactHeight());
        return y();
    }
    QxPoint center() const noexcept { return {x(), y()}; }
    QxPoint center(const QxPoint& value) noexcept {
        moveTo(value);
        return center();
    }
    void moveTo(const QxPoint& newCenter) noexcept { moveTo(newCenter.x(), newCenter.y()); }
    void moveTo(std::int32_t centerX, std::int32_t centerY) noexcept {
        place(centerX, centerY, exactWidth(), exactHeight());
    }
    /// @}

    /// @name Union
    /// An empty `other` changes nothing; an empty rectangle becomes `other`.
    /// @{
    QxRect& operator|=(const QxRect& other) noexcept;
    /// Enlarges this rectangle to include `other`; 1 when that changed it; 0 for null and
    /// for an empty `other`.
    int updateBounds(const QxRect* other) noexcept;
    /// @}

    /// @name Points and rectangles
    /// @{
    int withinXRange(const QxPoint& p) const noexcept {
        return all(m_left <= p.x(), p.x() <= m_right);
    }
    int withinYRange(const QxPoint& p) const noexcept {
        return all(m_bottom <= p.y(), p.y() <= m_top);
    }
    /// Containment, the border included; withinInterior: without it; onBoundary: only it.
    int within(const QxPoint& p) const noexcept { return withinXRange(p) & withinYRange(p); }
    int withinInterior(const QxPoint& p) const noexcept {
        return all(m_left < p.x(), p.x() < m_right, m_bottom < p.y(), p.y() < m_top);
    }
    int onBoundary(const QxPoint& p) const noexcept { return within(p) & (1 - withinInterior(p)); }
    /// 1 when `other` lies in this rectangle, common borders allowed; 0 when either is empty.
    int encloses(const QxRect& other) const noexcept {
        return all(m_left <= other.m_left, other.m_left <= other.m_right, other.m_right <= m_right,
                   m_bottom <= other.m_bottom, other.m_bottom <= other.m_top, other.m_top <= m_top);
    }
    /// 1 when the two have a point in common, one on the border included.
    int intersectsRect(const QxRect& other) const noexcept {
        return all(std::max(m_left, other.m_left) <= std::min(m_right, other.m_right),
                   std::max(m_bottom, other.m_bottom) <= std::min(m_top, other.m_top));
    }
    /// @}

    /// @name Segments and lines
    /// Crossings are points of the border: exact in the coordinate of their side, rounded to the
    /// nearest integer along it.
    /// @{

    /// How often the segment meets the border, as the ends of the part that lies in the closed
    /// rectangle: 0, 1 or 2. A segment strictly inside meets it nowhere; one that starts on the
    /// border meets it there. With one crossing `from` receives it; with two, `from` receives the
    /// one nearer to it and `to` the other.
    int intersectsSegment(QxPoint& from, QxPoint& to) const noexcept;
    int intersectsSegment(std::int32_t& fromX, std::int32_t& fromY, std::int32_t& toX,
                          std::int32_t& toY) const noexcept;
    /// The same for the unbounded line through the two points; the crossings are ordered in the
    /// direction of the line. Equal points stand for that point alone.
    int intersectsLine(std::int32_t& fromX, std::int32_t& fromY, std::int32_t& toX,
                       std::int32_t& toY) const noexcept;
    /// 1 when the segment has a point in the closed rectangle, even when it lies all inside.
    int overlapsSegment(std::int32_t fromX, std::int32_t fromY, std::int32_t toX,
                        std::int32_t toY) const noexcept;
    /// @}

    /// @name Sides for routing
    /// @{

    /// The side nearest to the point. Equal distances: beyond a corner the side of the axis along
    /// which the point is farther out; otherwise the first of left, bottom, right, top.
    QxSideEnum closestSide(const QxPoint& p) const noexcept;
    /// The side through which a route toward `other` leaves this rectangle: that of the axis with
    /// the wider gap between the two (or the lesser overlap), toward the center of `other`. On
    /// equal gaps the left or right side when `preferHorizontalRoute` is nonzero, else the bottom
    /// or top side.
    QxSideEnum sideForRouting(const QxRect& other, int preferHorizontalRoute) const noexcept;
    /// Sets `outside` to the point where the way from the center toward `toward` has just left the
    /// rectangle, one unit beyond the side it leaves through: on the way when `toward` lies
    /// outside, and straight on beyond `toward` when that lies inside (to the right for the center
    /// itself). Only a rectangle that reaches the end of the coordinate range keeps it inside.
    void getPointOutsideRect(QxPoint& outside, const QxPoint& toward) const noexcept;
    /// @}

    /// The position of `p` relative to the center, in thousandths of the half extents.
    void setPerMil(const QxPoint& p, QxPerMil& result) const noexcept;
    /// The same in units, clamped to 32 bits: the width is the offset in x, the height that in y.
    void setOffset(const QxPoint& p, QxSize& result) const noexcept;

    friend bool operator==(const QxRect& a, const QxRect& b) noexcept {
        return a.m_left == b.m_left && a.m_top == b.m_top && a.m_right == b.m_right &&
               a.m_bottom == b.m_bottom;
    }
    std::size_t valueHash() const noexcept {
        return mixHash(mixHash(mixHash(mixHash(2, m_left), m_top), m_right), m_bottom);
    }

    void debugOutput(int depth) const override;

private:
    /// 1 when all conditions hold, asked without branches.
    template <class... Conditions>
    static constexpr int all(Conditions... conditions) noexcept {
        return (static_cast<int>(conditions) & ...);
    }
    std::int64_t exactWidth() const noexcept { return std::int64_t{m_right} - m_left; }
    std::int64_t exactHeight() const noexcept { return std::int64_t{m_top} - m_bottom; }
    void placeX(std::int32_t center, std::int64_t width) noexcept {
        m_left = qx::clampToInt32(center - qx::lowerHalf(width));
        m_right = qx::clampToInt32(center + qx::upperHalf(width));
    }
    void placeY(std::int32_t center, std::int64_t height) noexcept {
        m_bottom = qx::clampToInt32(center - qx::lowerHalf(height));
        m_top = qx::clampToInt32(center + qx::upperHalf(height));
    }
    void place(std::int32_t centerX, std::int32_t centerY, std::int64_t width,
               std::int64_t height) noexcept {
        placeX(centerX, width);
        placeY(centerY, height);
    }

    std::int32_t m_left = 0;
    std::int32_t m_top = 0;
    std::int32_t m_right = 0;
    std::int32_t m_bottom = 0;
};

static_assert(sizeof(QxRect) == 32);
