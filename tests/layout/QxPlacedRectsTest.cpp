// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/layout/internal/QxPlacedRects.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace {

using qx::internal::Extent;
using qx::internal::PlacedRects;

constexpr std::int32_t Highest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t Lowest = std::numeric_limits<std::int32_t>::min();

bool meet(const Extent& a, const Extent& b) {
    return std::max(a.left, b.left) <= std::min(a.right, b.right) &&
           std::max(a.bottom, b.bottom) <= std::min(a.top, b.top);
}

std::vector<Extent> inScanOrder(std::vector<Extent> rects) {
    std::stable_sort(rects.begin(), rects.end(), [](const Extent& a, const Extent& b) {
        return std::min(a.left, a.bottom) < std::min(b.left, b.bottom);
    });
    return rects;
}

/// The scan in its plainest form: whole passes over a list of placed rectangles.
std::vector<Extent> scannedByPasses(const std::vector<Extent>& rects) {
    std::vector<Extent> placed;
    std::vector<Extent> result;
    for (Extent rect : rects) {
        const int corner = std::min(rect.left, rect.bottom);
        for (bool moved = true; moved;) {
            moved = false;
            for (std::size_t i = 0; i < placed.size();) {
                const Extent& other = placed[i];
                if (other.right < corner - 12 || other.top < corner - 12) {
                    placed.erase(placed.begin() + static_cast<std::ptrdiff_t>(i));
                    continue;
                }
                ++i;
                if (!meet(rect, other)) {
                    continue;
                }
                const int dx = other.right - rect.left + 12;
                const int dy = other.top - rect.bottom + 12;
                if (dx >= 1 && (dy <= 0 || dx <= dy)) {
                    rect.left += dx;
                    rect.right += dx;
                    moved = true;
                } else if (dy >= 1 && (dx <= 0 || dy < dx)) {
                    rect.bottom += dy;
                    rect.top += dy;
                    moved = true;
                }
            }
        }
        placed.push_back(rect);
        result.push_back(rect);
    }
    return result;
}

std::vector<Extent> scanned(const std::vector<Extent>& rects) {
    PlacedRects placed;
    std::vector<Extent> result;
    for (Extent rect : rects) {
        placed.dropBefore(std::min(rect.left, rect.bottom));
        placed.pushClear(rect);
        placed.add(rect);
        result.push_back(rect);
    }
    return result;
}

std::vector<Extent> randomRects(std::mt19937& random, std::size_t count, int range, int size) {
    std::uniform_int_distribution<int> position(0, range);
    std::uniform_int_distribution<int> extent(0, size);
    std::vector<Extent> rects;
    for (std::size_t i = 0; i < count; ++i) {
        const int left = position(random);
        const int bottom = position(random);
        rects.push_back({left, bottom, left + extent(random), bottom + extent(random)});
    }
    return inScanOrder(rects);
}

void expectEqual(const Extent& actual, const Extent& expected, std::size_t index) {
    EXPECT_EQ(actual.left, expected.left) << "rectangle " << index;
    EXPECT_EQ(actual.bottom, expected.bottom) << "rectangle " << index;
    EXPECT_EQ(actual.right, expected.right) << "rectangle " << index;
    EXPECT_EQ(actual.top, expected.top) << "rectangle " << index;
}

TEST(QxPlacedRects, PlacesLikePassesOverAList) {
    for (std::uint32_t seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        const std::size_t count = 1 + random() % 200;
        const int range = 1 + static_cast<int>(random() % 3'000);
        const std::vector<Extent> rects = randomRects(random, count, range, 60);
        const std::vector<Extent> actual = scanned(rects);
        const std::vector<Extent> expected = scannedByPasses(rects);
        ASSERT_EQ(actual.size(), expected.size());
        for (std::size_t i = 0; i < actual.size(); ++i) {
            expectEqual(actual[i], expected[i], i);
        }
        for (std::size_t i = 0; i < actual.size(); ++i) {
            for (std::size_t j = 0; j < i; ++j) {
                EXPECT_FALSE(meet(actual[i], actual[j])) << i << " and " << j;
            }
        }
    }
}

TEST(QxPlacedRects, PushesTheShorterWayAndOnlyOnContact) {
    PlacedRects placed;
    placed.add({0, 0, 40, 40});
    Extent right{35, 10, 75, 50};
    placed.pushClear(right);
    expectEqual(right, {52, 10, 92, 50}, 0);
    Extent up{10, 35, 50, 75};
    placed.pushClear(up);
    expectEqual(up, {10, 52, 50, 92}, 1);
    Extent touching{40, 0, 80, 40};
    placed.pushClear(touching);
    expectEqual(touching, {52, 0, 92, 40}, 2);
    Extent near{41, 0, 81, 40};
    placed.pushClear(near);
    expectEqual(near, {41, 0, 81, 40}, 3);
}

TEST(QxPlacedRects, ForgetsOnlyWhatLiesMoreThanTheGapBefore) {
    PlacedRects placed;
    placed.add({0, 0, 40, 40});
    placed.add({0, 100, 200, 140});
    placed.dropBefore(52);
    EXPECT_EQ(placed.count(), 2U);
    placed.dropBefore(53);
    EXPECT_EQ(placed.count(), 1U);
    placed.dropBefore(Highest);
    EXPECT_EQ(placed.count(), 0U);
}

TEST(QxPlacedRects, StopsAtTheEndOfTheRange) {
    PlacedRects placed;
    placed.add({Lowest, Lowest, Highest, Highest});
    placed.add({Highest - 40, Highest - 40, Highest, Highest});
    Extent rect{Highest - 60, Highest - 60, Highest - 20, Highest - 20};
    placed.pushClear(rect);
    expectEqual({rect.right - rect.left, rect.top - rect.bottom, rect.right, 0},
                {40, 40, Highest, 0}, 0);
    placed.dropBefore(Lowest);
    EXPECT_EQ(placed.count(), 2U);
    Extent whole{Lowest, Lowest, Highest, Highest};
    placed.pushClear(whole);
    expectEqual(whole, {Lowest, Lowest, Highest, Highest}, 1);
    // The longest way there is.
    Extent atTheOtherEnd{Lowest, Lowest, Lowest, Lowest};
    placed.pushClear(atTheOtherEnd);
    expectEqual(atTheOtherEnd, {Highest, Lowest, Highest, Lowest}, 2);
}

TEST(QxPlacedRects, RectanglesOfNegativeSizeMeetNothing) {
    PlacedRects placed;
    placed.add({40, 0, 0, 40});
    Extent rect{10, 10, 30, 30};
    placed.pushClear(rect);
    expectEqual(rect, {10, 10, 30, 30}, 0);
    placed.add(rect);
    Extent inside{30, 12, 20, 20};
    placed.pushClear(inside);
    expectEqual(inside, {30, 12, 20, 20}, 1);
}

}  // namespace
