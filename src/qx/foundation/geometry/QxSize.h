// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/geometry/QxArithmetic.h"
#include "qx/foundation/geometry/QxValueObject.h"

/// The extent of an object in world units. What is centered at x spans
/// x - leftHalfWidth() to x + rightHalfWidth(); likewise in y.
class QX_API QxSize : public QxValueObject<QxSize> {
public:
    /// Both extents 0.
    QxSize() noexcept = default;
    QxSize(std::int32_t width, std::int32_t height) noexcept : m_width(width), m_height(height) {}
    QxSize(const QxSize& other, QxDeepFlagEnum) noexcept : QxSize(other) {}

    std::int32_t width() const noexcept { return m_width; }
    std::int32_t height() const noexcept { return m_height; }
    std::int32_t width(std::int32_t value) noexcept { return m_width = value; }
    std::int32_t height(std::int32_t value) noexcept { return m_height = value; }
    /// Sets both extents.
    void resize(std::int32_t newWidth, std::int32_t newHeight) noexcept {
        m_width = newWidth;
        m_height = newHeight;
    }

    /// @name Halves: what lies on either side of a center
    /// They add up to the extent; of an odd one, the right and the top half get the extra unit.
    /// @{
    std::int32_t leftHalfWidth() const noexcept { return qx::lowerHalf(m_width); }
    std::int32_t rightHalfWidth() const noexcept { return qx::upperHalf(m_width); }
    std::int32_t bottomHalfHeight() const noexcept { return qx::lowerHalf(m_height); }
    std::int32_t topHalfHeight() const noexcept { return qx::upperHalf(m_height); }
    /// @}

    friend bool operator==(const QxSize& a, const QxSize& b) noexcept {
        return a.m_width == b.m_width && a.m_height == b.m_height;
    }
    std::size_t valueHash() const noexcept { return mixHash(mixHash(1, m_width), m_height); }

    void debugOutput(int depth) const override;

private:
    std::int32_t m_width = 0;
    std::int32_t m_height = 0;
};

static_assert(sizeof(QxSize) == 24);
