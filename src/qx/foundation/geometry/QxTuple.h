// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/geometry/QxArithmetic.h"
#include "qx/foundation/geometry/QxValueObject.h"

/// A pair of 32-bit integers. Arithmetic clamps to the 32-bit range.
class QX_API QxTuple : public QxValueObject<QxTuple> {
public:
    QxTuple() noexcept = default;
    QxTuple(std::int32_t x, std::int32_t y) noexcept : m_x(x), m_y(y) {}
    QxTuple(const QxTuple& other, QxDeepFlagEnum) noexcept : QxTuple(other) {}

    std::int32_t x() const noexcept { return m_x; }
    std::int32_t y() const noexcept { return m_y; }
    std::int32_t x(std::int32_t value) noexcept { return m_x = value; }
    std::int32_t y(std::int32_t value) noexcept { return m_y = value; }

    /// The length of the vector, truncated; clamped when it exceeds 32 bits.
    std::int32_t norm() const noexcept { return qx::clampToInt32(qx::lengthOf(m_x, m_y)); }

    /// Scales both components, truncating toward zero.
    QxTuple& operator*=(double factor) noexcept {
        m_x = qx::truncToInt32(m_x * factor);
        m_y = qx::truncToInt32(m_y * factor);
        return *this;
    }
    QxTuple& operator+=(const QxTuple& other) noexcept {
        m_x = qx::saturatingAdd(m_x, other.m_x);
        m_y = qx::saturatingAdd(m_y, other.m_y);
        return *this;
    }
    QxTuple& operator-=(const QxTuple& other) noexcept {
        m_x = qx::saturatingSub(m_x, other.m_x);
        m_y = qx::saturatingSub(m_y, other.m_y);
        return *this;
    }
    friend bool operator==(const QxTuple& a, const QxTuple& b) noexcept {
        return a.m_x == b.m_x && a.m_y == b.m_y;
    }
    std::size_t valueHash() const noexcept { return mixHash(mixHash(0, m_x), m_y); }

    void debugOutput(int depth) const override;

private:
    std::int32_t m_x = 0;
    std::int32_t m_y = 0;
};
