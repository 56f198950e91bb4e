// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/geometry/QxPerMil.h"
#include "qx/foundation/geometry/QxShapeResource.h"

namespace qx::internal {

/// A rectangle with a shape in it: the outline of a node or connector where it is seen, in the
/// coordinates of the rectangle. A value to be made for one question; the shape is not owned.
///
/// Rectangular shapes are answered by the rectangle alone, in integers; others by the shape placed
/// at the rectangle's center and size. Where the two differ, the contracts say so.
class QX_API PlacedOutline {
public:
    /// Null: an object without a shape, which has the outline of its rectangle.
    PlacedOutline(const QxRect& rect, const QxShape* shape) noexcept
        : m_rect(rect), m_shape(shape) {}
    /// Of an object that shows `resource`; `standard` is the resource that it shows without one:
    /// the default of its factory for a node, an oval for a connector. Both may be null.
    PlacedOutline(const QxRect& rect, const QxShapeResource* resource,
                  const QxShapeResource* standard) noexcept
        : PlacedOutline(rect, shapeOf(resource != nullptr ? resource : standard)) {}

    const QxRect& rect() const noexcept { return m_rect; }
    /// Null without a shape.
    const QxShape* pShape() const noexcept { return m_shape; }
    /// The shape when its outline differs from the rectangle, else null.
    const QxShape* pShapeWithinRect() const noexcept {
        return m_shape != nullptr && m_shape->isRectangular() == 0 ? m_shape : nullptr;
    }

    /// Whether the point lies within the outline or on it.
    bool contains(const QxPoint& point) const {
        if (m_rect.within(point) == 0) {
            return false;
        }
        const QxShape* shape = pShapeWithinRect();
        return shape == nullptr || shape->within(point, m_rect.center(), m_rect.size()) != 0;
    }

    /// Moves `from` to where the segment from there to `to` crosses the outline: of several
    /// crossings the nearest to `to` on a rectangle, the nearest to `from` on any other shape.
    /// Equal points ask whether the point lies on the outline. False, and no change, without a
    /// crossing.
    bool clip(QxPoint& from, const QxPoint& to) const;

    /// Projects the point onto the outline from the closest side of the rectangle. Returns the
    /// direction used; QxDirectionNone, and no change, for a point outside both ranges.
    QxDirectionEnum project(QxPoint& point) const;
    /// The same travelling in a direction: onto the side of a rectangle that is left last; onto any
    /// other shape where the way to the point meets it first, from the side that is entered first
    /// or, when that way misses, from the opposite one. False, and no change, for a point outside
    /// both ranges and for no direction.
    bool project(QxPoint& point, QxDirectionEnum direction) const;

    /// Moves an offset from the center that lies on a side of the rectangle onto the outline; in
    /// thousandths of the half extents or in units. Of thousandths only the one across that side
    /// changes. Other offsets stay, and so do all on a rectangle.
    void moveOffsetOntoOutline(std::int32_t& x, std::int32_t& y, bool isPerMil) const;

    /// Moves the point in a direction by the larger extent of the rectangle, and on by steps that
    /// double until it lies outside the shape; it stops at the end of the coordinate range.
    void moveOutside(QxPoint& point, QxDirectionEnum direction) const;

private:
    static const QxShape* shapeOf(const QxShapeResource* resource) noexcept {
        return resource != nullptr ? resource->pShape() : nullptr;
    }
    bool firstCrossing(QxPoint& crossing, const QxPoint& from, const QxPoint& to) const;

    QxRect m_rect;
    const QxShape* m_shape;
};

}  // namespace qx::internal
