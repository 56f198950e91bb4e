// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/geometry/QxPoint.h"
#include "qx/foundation/geometry/QxSize.h"

/// What connectors and labels say of themselves as rectangles about a center, and the forms of
/// their changes that take numbers. Without fields of its own. The object has ntCenter, ntWidth,
/// ntHeight and the changes that take points and sizes.
template <class Object>
class QxPlacedRectOf {
public:
    /// @name In the coordinates of the object's graph; an odd unit lies to the right and above
    /// @{
    QxSize ntSize() const { return {self().ntWidth(), self().ntHeight()}; }
    std::int32_t ntX() const { return self().ntCenter().x(); }
    std::int32_t ntY() const { return self().ntCenter().y(); }
    std::int32_t ntLeftHalfWidth() const { return qx::lowerHalf(self().ntWidth()); }
    std::int32_t ntRightHalfWidth() const { return qx::upperHalf(self().ntWidth()); }
    std::int32_t ntBottomHalfHeight() const { return qx::lowerHalf(self().ntHeight()); }
    std::int32_t ntTopHalfHeight() const { return qx::upperHalf(self().ntHeight()); }
    std::int32_t ntLeft() const { return qx::saturatingSub(ntX(), ntLeftHalfWidth()); }
    std::int32_t ntRight() const { return qx::saturatingAdd(ntX(), ntRightHalfWidth()); }
    std::int32_t ntBottom() const { return qx::saturatingSub(ntY(), ntBottomHalfHeight()); }
    std::int32_t ntTop() const { return qx::saturatingAdd(ntY(), ntTopHalfHeight()); }
    /// @}

    /// @name The full changes
    /// @{
    int moveTo(std::int32_t x, std::int32_t y, int inOwnGraph) {
        return self().moveTo(QxPoint(x, y), inOwnGraph);
    }
    int move(std::int32_t dx, std::int32_t dy, int inOwnGraph) {
        return self().move(QxSize(dx, dy), inOwnGraph);
    }
    int resize(std::int32_t width, std::int32_t height, int inOwnGraph) {
        return self().resize(QxSize(width, height), inOwnGraph);
    }
    int setOffset(std::int32_t x, std::int32_t y, int inOwnGraph) {
        return self().setOffset(QxSize(x, y), inOwnGraph);
    }
    /// @}

    /// @name The raw changes
    /// @{
    void ntMoveTo(std::int32_t x, std::int32_t y) { self().ntMoveTo(QxPoint(x, y)); }
    void ntMove(std::int32_t dx, std::int32_t dy) {
        if (dx != 0 || dy != 0) {
            self().ntMoveTo(self().ntCenter() + QxPoint(dx, dy));
        }
    }
    void ntMove(const QxSize& offset) { ntMove(offset.width(), offset.height()); }
    void ntResize(std::int32_t width, std::int32_t height) {
        self().ntResize(QxSize(width, height));
    }
    void ntSetOffset(std::int32_t x, std::int32_t y) { self().ntSetOffset(QxSize(x, y)); }
    /// @}

protected:
    QxPlacedRectOf() = default;
    QxPlacedRectOf(const QxPlacedRectOf&) = default;
    QxPlacedRectOf& operator=(const QxPlacedRectOf&) = default;
    ~QxPlacedRectOf() = default;

private:
    Object& self() { return static_cast<Object&>(*this); }
    const Object& self() const { return static_cast<const Object&>(*this); }
};
