// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/layout/internal/QxRepulsion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <ostream>
#include <random>
#include <string>
#include <vector>

namespace {

using qx::internal::CenterArrays;
using qx::internal::ForceArrays;
using qx::internal::RepulsionOptions;

constexpr std::int32_t Lowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t Highest = std::numeric_limits<std::int32_t>::max();

/// One component of a push, worked out apart from the library: the root by bisection, the limits
/// in integers.
std::int64_t pushComponent(std::int64_t d, std::int64_t otherComponent, double length) {
    const auto square = static_cast<std::uint64_t>(d * d) +
                        static_cast<std::uint64_t>(otherComponent * otherComponent);
    std::uint64_t low = 0;
    std::uint64_t high = std::uint64_t{1} << 32U;
    while (high - low > 1) {
        const std::uint64_t middle = low + (high - low) / 2;
        (middle * middle <= square ? low : high) = middle;
    }
    if (low == 0) {
        return 0;
    }
    const auto n = static_cast<double>(std::min<std::uint64_t>(low, Highest));
    const double scale = 100.0 * (length * length) / (n * n);
    const double push = static_cast<double>(d) * scale;
    if (push >= static_cast<double>(Highest)) {
        return Highest;
    }
    return push <= static_cast<double>(Lowest) ? Lowest : static_cast<std::int64_t>(push);
}

std::int64_t difference(std::int32_t a, std::int32_t b) {
    return std::clamp<std::int64_t>(std::int64_t{a} - b, Lowest, Highest);
}

ForceArrays expectedForces(const CenterArrays& moving, const CenterArrays& fixed,
                           std::int32_t length) {
    ForceArrays result(moving.count());
    for (std::size_t i = 0; i < moving.count(); ++i) {
        for (const CenterArrays* others : {&fixed, &moving}) {
            for (std::size_t j = 0; j < others->count(); ++j) {
                const std::int64_t dx = difference(moving.x[i], others->x[j]);
                const std::int64_t dy = difference(moving.y[i], others->y[j]);
                result.x[i] += pushComponent(dx, dy, length);
                result.y[i] += pushComponent(dy, dx, length);
            }
        }
    }
    return result;
}

void expectSameForces(const ForceArrays& actual, const ForceArrays& expected,
                      const std::string& what) {
    ASSERT_EQ(actual.x.size(), expected.x.size()) << what;
    for (std::size_t i = 0; i < expected.x.size(); ++i) {
        ASSERT_EQ(actual.x[i], expected.x[i]) << what << ": x of node " << i;
        ASSERT_EQ(actual.y[i], expected.y[i]) << what << ": y of node " << i;
    }
}

/// Holds every path, with one thread and with several, against the expected sums.
void expectAllPathsAgree(const CenterArrays& moving, const CenterArrays& fixed,
                         std::int32_t length) {
    const ForceArrays expected = expectedForces(moving, fixed, length);
    expectSameForces(qx::internal::repulsionByAllPairs(moving, fixed, length), expected,
                     "all pairs");
    for (const bool vectorUnit : {false, true}) {
        for (const int threads : {0, 1, 2, 3}) {
            const std::string what =
                std::string(vectorUnit ? "vector" : "scalar") + " path, " +
                std::to_string(threads) + " threads, " + std::to_string(moving.count()) + " + " +
                std::to_string(fixed.count()) + " nodes, length " + std::to_string(length);
            const RepulsionOptions options{threads, vectorUnit};
            expectSameForces(qx::internal::repulsion(moving, fixed, length, options), expected,
                             what);
        }
    }
}

/// Nodes in the square of the given extent around (origin, origin), every fourth one placed on
/// an earlier one.
CenterArrays randomCenters(std::mt19937& random, std::size_t count, std::int64_t origin,
                           std::int64_t extent) {
    std::uniform_int_distribution<std::int64_t> coordinate(origin - extent / 2,
                                                           origin + extent / 2 - 1);
    CenterArrays centers;
    for (std::size_t i = 0; i < count; ++i) {
        if (i % 4 == 3) {
            centers.add(centers.x[random() % i], centers.y[random() % i]);
        } else {
            centers.add(static_cast<std::int32_t>(coordinate(random)),
                        static_cast<std::int32_t>(coordinate(random)));
        }
    }
    return centers;
}

TEST(QxRepulsion, EveryPathGivesTheSumsOfThePlainLoop) {
    std::mt19937 random(20260101);
    for (const std::size_t count : {0U, 1U, 2U, 3U, 4U, 5U, 7U, 8U, 9U, 33U, 500U}) {
        for (const std::int64_t extent : {2LL, 20LL, 3'000LL, 1LL << 24U}) {
            const CenterArrays moving = randomCenters(random, count, 1'000, extent);
            const CenterArrays fixed = randomCenters(random, count / 2 + 3, -500, extent);
            SCOPED_TRACE("extent " + std::to_string(extent));
            expectAllPathsAgree(moving, {}, 50);
            expectAllPathsAgree(moving, fixed, 137);
        }
    }
}

TEST(QxRepulsion, SeveralTilesAndAThreadEachAgree) {
    std::mt19937 random(7);
    const CenterArrays moving = randomCenters(random, 1'203, 0, 100'000);
    const CenterArrays fixed = randomCenters(random, 1'101, 40'000, 100'000);
    expectAllPathsAgree(moving, fixed, 80);
}

TEST(QxRepulsion, LongEdgesPushAtTheLimitOf32Bits) {
    std::mt19937 random(11);
    const CenterArrays moving = randomCenters(random, 65, 0, 12);
    const CenterArrays fixed = randomCenters(random, 10, 0, 100'000);
    for (const std::int32_t length : {4'633, 4'634, 5'000, 1'000'000, Highest, Lowest, 0, -50}) {
        expectAllPathsAgree(moving, fixed, length);
    }
    // The opposite of the largest push is one unit short of the smallest one.
    CenterArrays pair;
    pair.add(0, 0);
    pair.add(1, 0);
    const ForceArrays forces = qx::internal::repulsion(pair, {}, Highest, {});
    EXPECT_EQ(forces.x[0], Lowest);
    EXPECT_EQ(forces.x[1], Highest);
}

TEST(QxRepulsion, CoordinatesAtTheEndsOfTheRangeAgree) {
    std::mt19937 random(13);
    // Around the extent up to which the vector path serves, and over the whole range.
    for (const std::int64_t extent : {(1LL << 25U) - 2, 1LL << 25U, 1LL << 26U, 1LL << 32U}) {
        const CenterArrays moving = randomCenters(random, 37, 0, extent);
        expectAllPathsAgree(moving, randomCenters(random, 9, 0, extent), 1'000'000);
    }
    CenterArrays corners;
    for (const std::int32_t x : {Lowest, -1, 0, Highest}) {
        for (const std::int32_t y : {Lowest, 0, 1, Highest}) {
            corners.add(x, y);
        }
    }
    expectAllPathsAgree(corners, corners, 50);
    expectAllPathsAgree(corners, corners, Highest);
    // Far from the origin, but close together.
    expectAllPathsAgree(randomCenters(random, 50, Lowest + 1'000LL, 2'000),
                        randomCenters(random, 5, Lowest + 1'000LL, 2'000), 50);
}

/// The distance is rounded down: one unit below a whole distance counts as the next lower one.
TEST(QxRepulsion, DistancesJustBelowAWholeNumberAreRoundedDown) {
    CenterArrays moving;
    for (std::int32_t i = 0; i < 400; ++i) {
        const std::int32_t leg = 3 * (i + 1) * (i + 1);
        moving.add(leg, i % 3 - 1);
        moving.add(0, 4 * (i + 1) * (i + 1) + i % 2);
    }
    expectAllPathsAgree(moving, {}, 3'000);
}

TEST(QxRepulsion, PushIsAHundredSquaredLengthsOverTheDistance) {
    CenterArrays moving;
    moving.add(0, 0);
    CenterArrays fixed;
    fixed.add(3, 4);
    const ForceArrays forces = qx::internal::repulsion(moving, fixed, 10, {});
    EXPECT_EQ(forces.x[0], -1'200);  // -3 * 100 * 10^2 / 5^2
    EXPECT_EQ(forces.y[0], -1'600);
}

}  // namespace
