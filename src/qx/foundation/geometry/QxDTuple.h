// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

/// A pair of doubles for transform arithmetic; a plain value.
class QxDTuple {
public:
    constexpr QxDTuple() noexcept = default;
    constexpr QxDTuple(double x, double y) noexcept : m_x(x), m_y(y) {}

    constexpr double x() const noexcept { return m_x; }
    constexpr double y() const noexcept { return m_y; }
    constexpr double x(double value) noexcept { return m_x = value; }
    constexpr double y(double value) noexcept { return m_y = value; }

    friend constexpr bool operator==(const QxDTuple& a, const QxDTuple& b) noexcept {
        return a.m_x == b.m_x && a.m_y == b.m_y;
    }

private:
    double m_x = 0.0;
    double m_y = 0.0;
};
