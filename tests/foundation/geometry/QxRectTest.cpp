// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <set>
#include <utility>

#include "foundation/geometry/GeometryRandom.h"
#include "qx/foundation/geometry/QxPerMil.h"

namespace {

/// The stretch of a line's parameter that lies in the rectangle, the plain way.
struct Stretch {
    long double first = -std::numeric_limits<long double>::infinity();
    long double last = std::numeric_limits<long double>::infinity();

    void narrow(long double from, long double delta, long double low, long double high) {
        if (delta == 0) {
            if (from < low || from > high) {
                last = -std::numeric_limits<long double>::infinity();
            }
            return;
        }
        first = std::max(first, std::min((low - from) / delta, (high - from) / delta));
        last = std::min(last, std::max((low - from) / delta, (high - from) / delta));
    }
};

Stretch stretchIn(const QxRect& rect, const QxPoint& from, const QxPoint& to) {
    Stretch stretch;
    const long double x = from.x();
    const long double y = from.y();
    stretch.narrow(x, to.x() - x, rect.left(), rect.right());
    stretch.narrow(y, to.y() - y, rect.bottom(), rect.top());
    return stretch;
}

/// `p` is on the border and at most a rounding away from the line's point at t.
void expectCrossing(const QxRect& rect, const QxPoint& p, const QxPoint& from, const QxPoint& to,
                    long double t) {
    EXPECT_EQ(rect.onBoundary(p), 1) << p.x() << ' ' << p.y();
    const long double x = from.x() + t * (static_cast<long double>(to.x()) - from.x());
    const long double y = from.y() + t * (static_cast<long double>(to.y()) - from.y());
    EXPECT_LE(std::abs(x - p.x()), 0.51L);
    EXPECT_LE(std::abs(y - p.y()), 0.51L);
}

}  // namespace

TEST(QxRect, CenterIsTheInverseOfPlacingByCenter) {
    EXPECT_EQ(QxRect(QxPoint(0, 0), QxSize(5, 5)), QxRect(-2, -2, 3, 3));
    for (std::int32_t extent = 0; extent < 6; ++extent) {
        for (std::int32_t center = -7; center < 8; ++center) {
            QxRect rect(QxPoint(center, -center), QxSize(extent, extent));
            ASSERT_EQ(rect.center(), QxPoint(center, -center));
            ASSERT_EQ(rect.size(), QxSize(extent, extent));
            ASSERT_EQ(rect.x() - rect.leftHalfWidth(), rect.left());
            ASSERT_EQ(rect.y() + rect.topHalfHeight(), rect.top());
            ASSERT_EQ(rect.size({extent + 3, extent + 4}), QxSize(extent + 3, extent + 4));
            ASSERT_EQ(rect.center(), QxPoint(center, -center));
            ASSERT_EQ(rect.center({3, 4}), QxPoint(3, 4));
            ASSERT_EQ(rect, QxRect(QxPoint(3, 4), QxSize(extent + 3, extent + 4)));
        }
    }
}

TEST(QxRect, ExtremesClampInsteadOfWrapping) {
    const QxRect all(qx::MinInt32, qx::MinInt32, qx::MaxInt32, qx::MaxInt32);
    EXPECT_EQ(all.width(), qx::MaxInt32);
    EXPECT_EQ(all.center(), QxPoint(-1, -1));
    QxRect moved = all;
    moved.center({qx::MaxInt32, 0});
    EXPECT_EQ(moved.right(), qx::MaxInt32);
    EXPECT_EQ(moved.left(), 0);
    EXPECT_EQ(QxRect(QxPoint(qx::MaxInt32, qx::MinInt32), QxSize(10, 10)),
              QxRect(qx::MaxInt32 - 5, qx::MinInt32, qx::MaxInt32, qx::MinInt32 + 5));
    QxSize offset;
    all.setOffset({qx::MaxInt32, qx::MaxInt32}, offset);
    EXPECT_EQ(offset, QxSize(qx::MaxInt32, qx::MaxInt32));
}

/// Rectangles are held against the sets of their points, inverted ones, which have none, too.
TEST(QxRect, RelationsAreThoseOfSetsOfPoints) {
    using Points = std::set<std::pair<std::int32_t, std::int32_t>>;
    const auto pointsOf = [](const QxRect& rect) {
        Points points;
        for (std::int32_t x = rect.left(); x <= rect.right(); ++x) {
            for (std::int32_t y = rect.bottom(); y <= rect.top(); ++y) {
                points.emplace(x, y);
            }
        }
        return points;
    };
    const auto within = [](const Points& part, const Points& whole) {
        return std::includes(whole.begin(), whole.end(), part.begin(), part.end()) ? 1 : 0;
    };
    GeometryRandom random(7);
    for (int round = 0; round < 20000; ++round) {
        const auto next = [&] { return random.between(-4, 4); };
        const QxRect a(next(), next(), next(), next());
        const QxRect b(next(), next(), next(), next());
        SCOPED_TRACE(round);
        const Points inA = pointsOf(a);
        const Points inB = pointsOf(b);
        Points inBoth;
        std::set_intersection(inA.begin(), inA.end(), inB.begin(), inB.end(),
                              std::inserter(inBoth, inBoth.end()));
        ASSERT_EQ(a.isEmpty(), inA.empty() ? 1 : 0);
        ASSERT_EQ(a.intersectsRect(b), inBoth.empty() ? 0 : 1);
        ASSERT_EQ(a.encloses(b), inB.empty() ? 0 : within(inB, inA));
        const QxPoint p(next(), next());
        ASSERT_EQ(a.within(p), inA.count({p.x(), p.y()}) != 0 ? 1 : 0);
        const QxRect interior(a.left() + 1, a.bottom() + 1, a.right() - 1, a.top() - 1);
        ASSERT_EQ(a.withinInterior(p), interior.within(p));
        ASSERT_EQ(a.onBoundary(p), a.within(p) - interior.within(p));
        // The union has the points of both, and no side could be moved inward.
        QxRect both = a;
        ASSERT_EQ(both.updateBounds(&b), within(inB, inA) == 0 ? 1 : 0);
        const Points inUnion = pointsOf(both);
        ASSERT_TRUE(within(inA, inUnion) && within(inB, inUnion));
        if (!inUnion.empty()) {
            const auto reaches = [&](auto side) {
                return (!inA.empty() && (a.*side)() == (both.*side)()) ||
                       (!inB.empty() && (b.*side)() == (both.*side)());
            };
            using Side = std::int32_t (QxRect::*)() const noexcept;
            for (const Side side : {Side(&QxRect::left), Side(&QxRect::right),
                                    Side(&QxRect::bottom), Side(&QxRect::top)}) {
                ASSERT_TRUE(reaches(side));
            }
        }
        QxRect same = a;
        ASSERT_EQ(same |= b, both);
        ASSERT_EQ(same.updateBounds(nullptr), 0);
    }
}

TEST(QxRect, ClosestSideIsNearestInsideAndTheFartherAxisOutside) {
    const QxRect rect(0, 0, 100, 40);
    EXPECT_EQ(rect.closestSide({5, 20}), QxSideLeft);
    EXPECT_EQ(rect.closestSide({50, 30}), QxSideTop);
    EXPECT_EQ(rect.closestSide({50, 20}), QxSideBottom);
    EXPECT_EQ(rect.closestSide({20, 20}), QxSideLeft);
    EXPECT_EQ(rect.closestSide({110, 20}), QxSideRight);
    EXPECT_EQ(rect.closestSide({110, 60}), QxSideTop);
    EXPECT_EQ(rect.closestSide({120, -10}), QxSideRight);
    EXPECT_EQ(rect.closestSide({110, 50}), QxSideRight);
    EXPECT_EQ(rect.closestSide({qx::MaxInt32, qx::MinInt32}), QxSideBottom);
}

TEST(QxRect, RoutesLeaveTowardTheWiderGap) {
    const QxRect rect(0, 0, 10, 10);
    EXPECT_EQ(rect.sideForRouting({30, 15, 40, 25}, 0), QxSideRight);
    EXPECT_EQ(rect.sideForRouting({-30, 15, -12, 45}, 0), QxSideLeft);
    EXPECT_EQ(rect.sideForRouting({2, -30, 4, -20}, 1), QxSideBottom);
    EXPECT_EQ(rect.sideForRouting({20, 20, 30, 30}, 1), QxSideRight);
    EXPECT_EQ(rect.sideForRouting({20, 20, 30, 30}, 0), QxSideTop);
}

/// The point lies just outside, on the way from the center, and not beyond a target outside.
TEST(QxRect, ThePointOutsideLiesOnTheWayJustBeyondTheBorder) {
    for (const std::uint32_t seed : geometry_test::Seeds) {
        GeometryRandom random(seed);
        for (int round = 0; round < 5000; ++round) {
            const bool isSmall = random.between(0, 1) != 0;
            const auto next = [&] { return isSmall ? random.point(9) : random.point(1'000'000); };
            const QxRect rect(next(), next());
            const QxPoint center = rect.center();
            const QxPoint toward = random.between(0, 9) == 0 ? center : next();
            QxPoint outside = next();
            rect.getPointOutsideRect(outside, toward);
            SCOPED_TRACE(testing::Message() << "seed " << seed << " round " << round);
            ASSERT_EQ(rect.within(outside), 0);
            const QxRect around(rect.left() - 1, rect.bottom() - 1, rect.right() + 1,
                                rect.top() + 1);
            ASSERT_EQ(around.within(outside), 1);
            const double dx = toward == center ? 1.0 : 1.0 * toward.x() - center.x();
            const double dy = 1.0 * toward.y() - center.y();
            const double x = 1.0 * outside.x() - center.x();
            const double y = 1.0 * outside.y() - center.y();
            ASSERT_GE(dx * x + dy * y, 0.0);
            ASSERT_LE(std::abs(dx * y - dy * x) / std::hypot(dx, dy), 0.71);
            if (rect.within(toward) == 0) {
                ASSERT_EQ(QxRect(center, toward).within(outside), 1);
            }
        }
    }
    QxPoint outside;
    QxRect(0, 0, qx::MaxInt32, 10).getPointOutsideRect(outside, {qx::MaxInt32, 5});
    EXPECT_EQ(outside, QxPoint(qx::MaxInt32, 5));
}

TEST(QxRect, SegmentsMeetTheBorderOnceTwiceOrNever) {
    const QxRect rect(0, 0, 10, 10);
    const auto crossings = [&](QxPoint a, QxPoint b) { return rect.intersectsSegment(a, b); };
    EXPECT_EQ(crossings({5, 5}, {50, 5}), 1);
    EXPECT_EQ(crossings({-5, 5}, {50, 5}), 2);
    EXPECT_EQ(crossings({2, 2}, {8, 8}), 0);  // all inside: no crossing, but an overlap
    EXPECT_EQ(rect.overlapsSegment(2, 2, 8, 8), 1);
    EXPECT_EQ(crossings({-5, 5}, {5, 15}), 1);  // touches the corner
    EXPECT_EQ(rect.overlapsSegment(-5, 5, 5, 15), 1);
    EXPECT_EQ(crossings({-5, 6}, {5, 16}), 0);
    EXPECT_EQ(rect.overlapsSegment(-5, 6, 5, 16), 0);
    EXPECT_EQ(crossings({2, 0}, {8, 0}), 2);  // along a side
    EXPECT_EQ(crossings({10, 5}, {20, 5}), 1);
    EXPECT_EQ(crossings({10, 5}, {5, 5}), 1);
    EXPECT_EQ(crossings({10, 5}, {0, 5}), 2);
    EXPECT_EQ(crossings({10, 5}, {10, 5}), 1);
    EXPECT_EQ(crossings({5, 5}, {5, 5}), 0);
    EXPECT_EQ(QxRect(4, 0, 2, 10).overlapsSegment(0, 5, 10, 5), 0);
    std::int32_t x1 = 5, y1 = 5, x2 = 6, y2 = 5;
    EXPECT_EQ(rect.intersectsLine(x1, y1, x2, y2), 2);
    EXPECT_EQ(QxPoint(x1, y1), QxPoint(0, 5));
    EXPECT_EQ(QxPoint(x2, y2), QxPoint(10, 5));
}

TEST(QxRect, CrossingsAgreeWithPlainClippingAtAllMagnitudes) {
    for (const std::uint32_t seed : geometry_test::Seeds) {
        GeometryRandom random(seed);
        for (int round = 0; round < 20000 && !testing::Test::HasFailure(); ++round) {
            SCOPED_TRACE(testing::Message() << "seed " << seed << " round " << round);
            const bool isSmall = random.between(0, 1) != 0;
            const auto next = [&] { return isSmall ? random.point(12) : random.point(); };
            const QxRect rect(next(), next());
            const QxPoint from = next();
            const QxPoint to = next();
            if (from == to) {
                continue;
            }
            Stretch stretch = stretchIn(rect, from, to);
            if (std::abs(stretch.first - stretch.last) < 1e-12L) {
                continue;  // touches are decided exactly, which the twin cannot
            }
            QxPoint first = from;
            QxPoint second = to;
            std::int32_t x1 = from.x(), y1 = from.y(), x2 = to.x(), y2 = to.y();
            const int onLine = rect.intersectsLine(x1, y1, x2, y2);
            ASSERT_EQ(onLine, stretch.first < stretch.last ? 2 : 0);
            if (onLine != 0) {
                expectCrossing(rect, {x1, y1}, from, to, stretch.first);
                expectCrossing(rect, {x2, y2}, from, to, stretch.last);
            }
            const long double start = std::max(stretch.first, 0.0L);
            const long double end = std::min(stretch.last, 1.0L);
            const int overlaps = rect.overlapsSegment(from.x(), from.y(), to.x(), to.y());
            ASSERT_EQ(overlaps, start <= end ? 1 : 0);
            const int crossings = rect.intersectsSegment(first, second);
            if (overlaps == 0) {
                ASSERT_EQ(crossings, 0);
            } else if (rect.onBoundary(from) == 0 && rect.onBoundary(to) == 0) {
                ASSERT_EQ(crossings, (stretch.first > 0.0L) + (stretch.last < 1.0L));
                if (crossings > 0) {
                    expectCrossing(rect, first, from, to, stretch.first > 0.0L ? start : end);
                }
                if (crossings == 2) {
                    expectCrossing(rect, second, from, to, end);
                }
            }
        }
    }
}
