// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/geometry/QxRect.h"
#include "qx/foundation/geometry/QxSize.h"

/// A position relative to a rectangle or size, measured from its center in thousandths: +1000 is
/// the right (top) border, -1000 the left (bottom) border, values beyond lie outside.
///
/// Thousandths are of the half extent on the side of the position, so that +-1000 lie exactly on
/// the borders of odd extents too. Both conversions round to the nearest value (halves away from
/// zero): an offset within half extents up to 1000 comes back unchanged.
class QX_API QxPerMil : public QxValueObject<QxPerMil> {
public:
    QxPerMil() noexcept = default;
    QxPerMil(std::int16_t x, std::int16_t y) noexcept : m_x(x), m_y(y) {}
    QxPerMil(const QxPerMil& other, QxDeepFlagEnum) noexcept : QxPerMil(other) {}

    std::int16_t x() const noexcept { return m_x; }
    std::int16_t y() const noexcept { return m_y; }
    std::int16_t x(std::int16_t value) noexcept { return m_x = value; }
    std::int16_t y(std::int16_t value) noexcept { return m_y = value; }

    /// Sets the value from an offset measured from the center, clamped to 16 bits. Without a half
    /// extent on its side an offset counts as +-1000, offset 0 as 0.
    void computeX(std::int32_t offset, const QxRect& extent) noexcept {
        m_x = perMilOf(offset, extent.leftHalfWidth(), extent.rightHalfWidth());
    }
    void computeX(std::int32_t offset, const QxSize& extent) noexcept {
        m_x = perMilOf(offset, extent.leftHalfWidth(), extent.rightHalfWidth());
    }
    void computeY(std::int32_t offset, const QxRect& extent) noexcept {
        m_y = perMilOf(offset, extent.bottomHalfHeight(), extent.topHalfHeight());
    }
    void computeY(std::int32_t offset, const QxSize& extent) noexcept {
        m_y = perMilOf(offset, extent.bottomHalfHeight(), extent.topHalfHeight());
    }
    void compute(std::int32_t offsetX, std::int32_t offsetY, const QxRect& extent) noexcept {
        computeX(offsetX, extent);
        computeY(offsetY, extent);
    }

    /// The offset from the center that the value denotes.
    std::int32_t getOffsetX(const QxRect& extent) const noexcept {
        return offsetOf(m_x, extent.leftHalfWidth(), extent.rightHalfWidth());
    }
    std::int32_t getOffsetX(const QxSize& extent) const noexcept {
        return offsetOf(m_x, extent.leftHalfWidth(), extent.rightHalfWidth());
    }
    std::int32_t getOffsetY(const QxRect& extent) const noexcept {
        return offsetOf(m_y, extent.bottomHalfHeight(), extent.topHalfHeight());
    }
    std::int32_t getOffsetY(const QxSize& extent) const noexcept {
        return offsetOf(m_y, extent.bottomHalfHeight(), extent.topHalfHeight());
    }

    friend bool operator==(const QxPerMil& a, const QxPerMil& b) noexcept {
        return a.m_x == b.m_x && a.m_y == b.m_y;
    }
    std::size_t valueHash() const noexcept { return mixHash(mixHash(3, m_x), m_y); }

    void debugOutput(int depth) const override;

private:
    /// a * b / c to the nearest integer, halves away from zero; b and c are not negative.
    static constexpr std::int64_t scale(std::int64_t a, std::int64_t b, std::int64_t c) noexcept {
        const std::int64_t product = a * b;
        return (product + (product < 0 ? -c : c) / 2) / c;
    }
    static constexpr std::int16_t perMilOf(std::int32_t offset, std::int32_t lower,
                                           std::int32_t upper) noexcept {
        const std::int32_t half = offset < 0 ? lower : upper;
        if (half <= 0) {
            return static_cast<std::int16_t>(offset == 0 ? 0 : (offset < 0 ? -1000 : 1000));
        }
        return qx::clampToInt16(scale(offset, 1000, half));
    }
    static constexpr std::int32_t offsetOf(std::int16_t perMil, std::int32_t lower,
                                           std::int32_t upper) noexcept {
        const std::int32_t half = perMil < 0 ? lower : upper;
        return half <= 0 ? 0 : qx::clampToInt32(scale(perMil, half, 1000));
    }

    std::int16_t m_x = 0;
    std::int16_t m_y = 0;
};
