// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/layout/internal/QxRepulsion.h"

#include <gtest/gtest.h>

#include <ostream>
#include <random>
#include <string>

#include "qx/foundation/geometry/QxArithmetic.h"

namespace {

using qx::MaxInt32;
using qx::MinInt32;
using qx::internal::CenterArrays;
using qx::internal::ForceArrays;
using qx::internal::ForceSum;

/// The distance rounded down, by bisection.
std::int64_t distance(std::int64_t dx, std::int64_t dy) {
    const ForceSum square = ForceSum{dx} * dx + ForceSum{dy} * dy;
    std::int64_t low = 0;
    for (std::int64_t step = std::int64_t{1} << 33U; step > 0; step /= 2) {
        low += ForceSum{low + step} * (low + step) <= square ? step : 0;
    }
    return low;
}

/// The sums worked out apart from the library.
ForceArrays expectedForces(const CenterArrays& moving, const CenterArrays& fixed, double length) {
    ForceArrays result(moving.count());
    for (std::size_t i = 0; i < moving.count(); ++i) {
        for (const CenterArrays* others : {&fixed, &moving}) {
            for (std::size_t j = 0; j < others->count(); ++j) {
                const std::int64_t dx = std::int64_t{moving.x[i]} - others->x[j];
                const std::int64_t dy = std::int64_t{moving.y[i]} - others->y[j];
                if (const auto n = static_cast<double>(distance(dx, dy)); n != 0.0) {
                    const double scale = 100.0 * (length * length) / (n * n);
                    result.x[i] += static_cast<ForceSum>(static_cast<double>(dx) * scale);
                    result.y[i] += static_cast<ForceSum>(static_cast<double>(dy) * scale);
                }
            }
        }
    }
    return result;
}

/// Holds every path, with one thread and with several, against the expected sums.
void expectAllPathsAgree(const CenterArrays& moving, const CenterArrays& fixed,
                         std::int32_t length) {
    const ForceArrays expected = expectedForces(moving, fixed, length);
    const auto expectSame = [&](const ForceArrays& actual, const std::string& path) {
        EXPECT_TRUE(actual.x == expected.x && actual.y == expected.y)
            << path << ", " << moving.count() << " + " << fixed.count() << " nodes, length "
            << length;
    };
    expectSame(qx::internal::repulsionByAllPairs(moving, fixed, length), "all pairs");
    for (const int threads : {0, 1, 2, 3}) {
        for (const bool vectorUnit : {false, true}) {
            expectSame(qx::internal::repulsion(moving, fixed, length, {threads, vectorUnit}),
                       (vectorUnit ? "vector path, threads " : "scalar path, threads ") +
                           std::to_string(threads));
        }
    }
}

/// Nodes in the square of the given extent around (origin, origin), every fourth one placed on
/// an earlier one.
CenterArrays randomCenters(std::mt19937& random, std::size_t count, std::int64_t extent,
                           std::int64_t origin = 0) {
    std::uniform_int_distribution<std::int64_t> coordinate(origin - extent / 2,
                                                           origin + (extent - 1) / 2);
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
            const CenterArrays moving = randomCenters(random, count, extent, 1'000);
            expectAllPathsAgree(moving, {}, 50);
            expectAllPathsAgree(moving, randomCenters(random, count / 2 + 3, extent, -500), 137);
        }
    }
    // Several tiles and a thread each.
    expectAllPathsAgree(randomCenters(random, 1'203, 100'000),
                        randomCenters(random, 1'101, 100'000, 40'000), 80);
}

/// Around the ends of what the vector path and the 64-bit sums serve, and far beyond.
TEST(QxRepulsion, NoLengthAndNoCoordinateIsTooLarge) {
    std::mt19937 random(11);
    for (const std::int32_t length : {0, -50, 4'634, 5'000, 1'000'000, 3'355'443, 3'355'444,
                                      24'000'000, 26'000'000, 300'000'000, MaxInt32, MinInt32}) {
        expectAllPathsAgree(randomCenters(random, 65, 12), randomCenters(random, 10, 100'000),
                            length);
        for (const std::int64_t extent : {(1LL << 25U) - 2, 1LL << 25U, 1LL << 26U, 1LL << 32U}) {
            expectAllPathsAgree(randomCenters(random, 37, extent), randomCenters(random, 9, extent),
                                length);
        }
        CenterArrays corners;
        for (const std::int32_t x : {MinInt32, -1, 0, MaxInt32}) {
            for (const std::int32_t y : {MinInt32, 0, 1, MaxInt32}) {
                corners.add(x, y);
            }
        }
        expectAllPathsAgree(corners, corners, length);
    }
    // Far from the origin, but close together.
    expectAllPathsAgree(randomCenters(random, 50, 2'000, MinInt32 + 1'000LL),
                        randomCenters(random, 5, 2'000, MinInt32 + 1'000LL), 50);
}

/// One unit below a whole distance counts as the next lower one.
TEST(QxRepulsion, DistancesJustBelowAWholeNumberAreRoundedDown) {
    CenterArrays moving;
    for (std::int32_t i = 0; i < 400; ++i) {
        const std::int32_t leg = 3 * (i + 1) * (i + 1);
        moving.add(leg, i % 3 - 1);
        moving.add(0, 4 * (i + 1) * (i + 1) + i % 2);
    }
    expectAllPathsAgree(moving, {}, 3'000);
    // (2k, 2k^2) lies less than a billionth of a unit before 2k^2 + 1: squares that no double
    // holds.
    CenterArrays far;
    for (std::int32_t k = 10'000; k < 10'400; k += 2) {
        far.add(2 * k, 2 * k * k);
    }
    CenterArrays origin;
    origin.add(0, 0);
    expectAllPathsAgree(far, origin, 3'300'000);
}

}  // namespace
