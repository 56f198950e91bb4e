// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

#include "qx/foundation/geometry/QxDTuple.h"
#include "qx/foundation/geometry/QxRect.h"
#include "qx/foundation/geometry/QxShapeTypeEnum.h"

class QxPointDList;

/// The outline of a node or connector: a rectangle, an oval or a polygon.
///
/// A shape has no place of its own. Its outline lies in a frame from -1000 to 1000 in both axes,
/// and every test takes the center and size at which that frame is placed; operations without a
/// center place the shape around the origin. Placed, the frame is the bounding rectangle
/// QxRect(center, size). With a width or height of 0 only that rectangle is left of any shape; with
/// a negative one the shape is empty: nothing lies within it or meets it.
///
/// Outline points that are computed are rounded to the nearest integers and always lie in the
/// bounding rectangle. A point counts as lying on a curved or slanted outline when the outline
/// comes through the unit square around the point, that is, when it can be such a rounded point.
class QX_API QxShape : public QxValueObject<QxShape> {
public:
    /// The frame reaches from -FrameHalf to FrameHalf.
    static constexpr std::int32_t FrameHalf = 1000;

    /// A rectangle.
    QxShape() noexcept = default;
    /// A shape of the kind; a polygon without points has the outline of the rectangle.
    explicit QxShape(QxShapeTypeEnum type) noexcept;
    /// A polygon. Points in the frame are kept as they are, also when they do not fill it; when any
    /// point lies outside, the outline is stretched as by fromOutline. The outline is closed by
    /// itself; fewer than 3 points mean the outline of the rectangle. Self-intersecting outlines
    /// count as inside what an odd number of their turns surrounds.
    explicit QxShape(const QxPointDList& outline);
    /// A polygon whose outline is given in units of its own, large or small: it is stretched so
    /// that its bounding box becomes the frame (an axis without extent is centered).
    static QxShape fromOutline(const QxPointDList& outline);
    QxShape(const QxShape& other, QxDeepFlagEnum) : QxShape(other) {}

    /// The kind; polygons of all outlines share one.
    QxShapeTypeEnum type() const noexcept { return m_type; }
    /// 1 when the outline is the bounding rectangle, for a polygon with its corners too.
    int isRectangular() const noexcept { return m_isRectangular ? 1 : 0; }
    /// Fills `points` with the outline of a polygon in the frame; leaves it empty for other shapes.
    void getOutline(QxPointDList& points) const;

    /// @name Containment
    /// 1 when the point lies in the placed shape, the outline included; onBoundary: on the outline.
    /// @{
    int within(const QxPoint& p, const QxPoint& center, const QxSize& size) const;
    int within(std::int32_t x, std::int32_t y, std::int32_t centerX, std::int32_t centerY,
               std::int32_t width, std::int32_t height) const;
    int onBoundary(const QxPoint& p, const QxPoint& center, const QxSize& size) const;
    /// @}

    /// @name Clipping
    /// The first point where the segment from `from` to `to` meets the outline goes into `result`
    /// (perhaps `from` itself); returns 1, or 0 with `result` unchanged when there is none. When
    /// nothing but the rounding of an end that lies on the outline makes the segment miss it, that
    /// end is the result. O(points) for polygons, else O(1).
    /// @{

    /// Around the origin.
    int intersectsSegment(QxPoint& result, const QxPoint& from, const QxPoint& to,
                          const QxSize& size) const;
    /// Placed; `result` may be `from`.
    int intersectsSegment(QxPoint& result, const QxPoint& from, const QxPoint& to,
                          const QxPoint& center, const QxSize& size) const;
    /// Placed; x and y are the segment's first point and receive the result.
    int intersectsSegment(std::int32_t& x, std::int32_t& y, std::int32_t toX, std::int32_t toY,
                          std::int32_t centerX, std::int32_t centerY, std::int32_t width,
                          std::int32_t height) const;
    /// @}

    /// @name Nearest outline point
    /// Goes into `result`, which may be `p`; returns 1, or 0 and no change for a negative size.
    /// @{
    int nearestPoint(QxPoint& result, const QxPoint& p, const QxSize& size) const;
    int nearestPoint(QxPoint& result, const QxPoint& p, const QxPoint& center,
                     const QxSize& size) const;
    /// @}

    /// @name Inner rectangle: the region usable for contents
    /// At first the whole frame for a rectangle, and the largest rectangle of the frame's
    /// proportions around its center for others (the whole frame when the center is not inside).
    /// @{
    void getInnerRect(QxRect& rect) const { rect = m_innerRect; }
    /// In the frame's coordinates. One that is empty or a line counts as the whole frame.
    void setInnerRect(const QxRect& rect) noexcept { m_innerRect = rect; }
    /// The inner rectangle placed at a center and size.
    void getCurrentInnerRect(QxRect& rect, const QxPoint& center, const QxSize& size) const;
    /// The smallest bounding rectangle whose inner rectangle covers `inner`. Its size guarantees
    /// that wherever it is placed the inner rectangle is at least as large as `inner`.
    void fitBoundingRectToInnerRect(QxRect& boundingRect, const QxRect& inner) const;
    /// @}

    /// How much room the shape offers across the line from its center toward `other`: the length
    /// of the chord through the center at a right angle to that line (vertical for equal points);
    /// 0 when the center does not lie inside.
    double maxAvailableDiagonalLengthAtShape(const QxPoint& center, const QxPoint& other,
                                             const QxSize& size) const;

    friend bool operator==(const QxShape& a, const QxShape& b) noexcept {
        return a.m_type == b.m_type && a.m_innerRect == b.m_innerRect && a.m_points == b.m_points;
    }
    std::size_t valueHash() const noexcept;

    void debugOutput(int depth) const override;

private:
    bool hasSimpleOutlineAt(const QxRect& rect) const noexcept {
        return m_isRectangular || rect.left() >= rect.right() || rect.bottom() >= rect.top();
    }
    void takeOutline(std::vector<QxDTuple> points);
    QxRect usableInnerRect() const noexcept;
    int clip(QxPoint& result, const QxPoint& from, const QxPoint& to, const QxRect& rect) const;
    bool liesOnOutline(const QxPoint& p, const QxRect& rect) const;

    QxShapeTypeEnum m_type = QxShapeTypeRectangle;
    bool m_isRectangular = true;
    QxRect m_innerRect{-FrameHalf, -FrameHalf, FrameHalf, FrameHalf};
    /// The outline of a polygon in the frame; whole numbers, held as what the tests compute with.
    std::vector<QxDTuple> m_points;
};
