// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/layout/internal/QxPlacedRects.h"

#include <gtest/gtest.h>

#include "layout/PlainScan.h"
#include "support/TestRandom.h"

namespace {

using qx::internal::Extent;
using qx::internal::PlacedRects;
using qxtest::TestRandom;

Extent placeNext(PlacedRects& placed, Extent rect) {
    placed.dropBefore(std::min(rect.left, rect.bottom));
    placed.pushClear(rect);
    placed.add(rect);
    return rect;
}

/// Where rectangles come from: scattered, on few spots, or on one axis; of few or many extents.
struct Source {
    explicit Source(TestRandom& seeded)
        : random(seeded),
          range(random.pick(std::vector<int>{1, 40, 600, 3'000, 100'000})),
          step(random.pick(std::vector<int>{1, 1, range / 3 + 1})),
          largest(random.pick(std::vector<int>{1, 40, 200, 5'000})),
          sizes(1 + random.below(40)),
          rowAt(random.chance(20) ? random.below(2) : 2),
          origin(random.chance(10) ? qx::MaxInt32 - range - largest - random.below(9'000) : 0) {}

    Extent next() {
        const int left = origin + (rowAt == 0 ? 0 : random.below(range) / step * step);
        const int bottom = origin + (rowAt == 1 ? 0 : random.below(range) / step * step);
        return {left, bottom, left + extent(), bottom + extent()};
    }
    /// Now and then negative: such a rectangle meets nothing.
    int extent() {
        return random.chance(1) ? -1 - random.below(5)
                                : random.below(sizes) * (1 + largest / sizes) % (largest + 1);
    }

    TestRandom& random;
    int range, step, largest, sizes, rowAt, origin;
};

TEST(QxPlacedRects, PlacesLikePassesOverAList) {
    for (std::uint32_t seed = qxtest::testSeed(0), last = seed + 150; seed < last; ++seed) {
        SCOPED_TRACE(qxtest::seedTrace(seed));
        TestRandom random(seed);
        Source source(random);
        std::vector<Extent> rects(1 + static_cast<std::size_t>(random.below(500)));
        std::generate(rects.begin(), rects.end(), [&] { return source.next(); });
        // Corners ascend but for a few, whose nodes were moved when the scan had begun.
        std::stable_sort(rects.begin(), rects.end(), [](const Extent& a, const Extent& b) {
            return std::min(a.left, a.bottom) < std::min(b.left, b.bottom);
        });
        const bool hasMoved = random.chance(30);
        PlacedRects placed;
        PlainScan plain;
        for (std::size_t i = 0; i < rects.size(); ++i) {
            const Extent rect = hasMoved && random.chance(5) ? source.next() : rects[i];
            const Extent expected = plain.place(rect);
            const Extent actual = placeNext(placed, rect);
            ASSERT_TRUE(actual == expected)
                << "rectangle " << i << " comes to " << actual.left << ' ' << actual.bottom
                << " instead of " << expected.left << ' ' << expected.bottom;
        }
    }
}

/// Were the way of each past all others gone through, this would take hours.
TEST(QxPlacedRects, PilesAndRowsOfAMillionTakeNoTime) {
    PlacedRects pile;
    PlacedRects row;
    for (int i = 0; i < 1'000'000; ++i) {
        ASSERT_TRUE(placeNext(pile, {0, 0, 40, 30}) == (Extent{0, 42 * i, 40, 42 * i + 30}));
        const Extent inRow{0, 50 * i, 40, 50 * i + 30};
        ASSERT_TRUE(placeNext(row, inRow) == inRow);
    }
}

TEST(QxPlacedRects, NothingIsTooLarge) {
    PlacedRects placed;
    PlainScan plain;
    for (const Extent& rect :
         {Extent{qx::MinInt32, qx::MinInt32, qx::MaxInt32, qx::MaxInt32},
          Extent{qx::MinInt32, qx::MinInt32, qx::MinInt32, qx::MinInt32},
          Extent{qx::MinInt32, qx::MinInt32, 0, qx::MaxInt32},
          Extent{qx::MinInt32, 0, qx::MaxInt32, 10},
          Extent{qx::MaxInt32 - 60, qx::MaxInt32 - 60, qx::MaxInt32 - 20, qx::MaxInt32 - 20}}) {
        EXPECT_TRUE(placeNext(placed, rect) == plain.place(rect)) << rect.left << ' ' << rect.right;
    }
}

}  // namespace
