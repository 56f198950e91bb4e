// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/geometry/QxArithmetic.h"
#include "qx/foundation/util/QxApi.h"

/// The spacing on one side of an extent: a constant in world units plus thousandths of the extent.
class QX_API QxSpacing {
public:
    /// No spacing.
    constexpr QxSpacing() noexcept = default;
    /// `constant` in world units, `proportional` in thousandths of the extent.
    constexpr QxSpacing(std::int32_t constant, std::int16_t proportional) noexcept
        : m_constant(constant), m_proportional(proportional) {}

    /// World units.
    constexpr std::int32_t constant() const noexcept { return m_constant; }
    constexpr std::int32_t constant(std::int32_t value) noexcept { return m_constant = value; }
    /// Thousandths of the extent.
    constexpr std::int16_t proportional() const noexcept { return m_proportional; }
    constexpr std::int16_t proportional(std::int16_t value) noexcept {
        return m_proportional = value;
    }

    /// The spacing that an extent gets: constant + extent * proportional / 1000, computed exactly
    /// and truncated once. Clamped to 32 bits.
    constexpr std::int32_t spacing(std::int32_t extent) const noexcept {
        return qx::spacingOf(m_constant, m_proportional, extent);
    }

    /// The smallest outer extent that leaves `inner` between the two spacings, which are taken of
    /// the outer extent. Spacings that together take all of it (1000 or more) are taken of the
    /// inner extent instead, since no outer extent would do. Clamped to 32 bits.
    static std::int32_t calculateOuterSize(const QxSpacing& lower, const QxSpacing& upper,
                                           std::int32_t inner) noexcept;

    friend constexpr bool operator==(const QxSpacing& a, const QxSpacing& b) noexcept {
        return a.m_constant == b.m_constant && a.m_proportional == b.m_proportional;
    }

private:
    std::int32_t m_constant = 0;
    std::int16_t m_proportional = 0;
};
