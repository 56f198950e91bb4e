// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <random>

#include "qx/foundation/geometry/QxRect.h"

/// Random coordinates of all magnitudes; a failure prints the seed and round it happened in.
class GeometryRandom {
public:
    explicit GeometryRandom(std::uint32_t seed) : m_engine(seed) {}

    std::int32_t between(std::int32_t low, std::int32_t high) {
        return std::uniform_int_distribution<std::int32_t>(low, high)(m_engine);
    }
    /// Small, medium, large or extreme.
    std::int32_t coordinate() {
        static constexpr std::int32_t Reach[] = {4, 60, 5000, 100'000'000, qx::MaxInt32};
        const std::int32_t reach = Reach[between(0, 4)];
        if (between(0, 40) == 0) {
            return between(0, 1) != 0 ? qx::MaxInt32 : qx::MinInt32;
        }
        return between(-reach, reach);
    }
    QxPoint point() { return {coordinate(), coordinate()}; }
    QxPoint point(std::int32_t reach) { return {between(-reach, reach), between(-reach, reach)}; }

private:
    std::mt19937 m_engine;
};

namespace geometry_test {
inline constexpr std::uint32_t Seeds[] = {1, 20, 300, 4001};
}
