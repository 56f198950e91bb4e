// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <gtest/gtest.h>

#include <cmath>

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
    const QxRect odd(QxPoint(0, 0), QxSize(5, 5));
    EXPECT_EQ(odd, QxRect(-2, -2, 3, 3));
    for (std::int32_t extent = 0; extent < 6; ++extent) {
        for (std::int32_t center = -7; center < 8; ++center) {
            QxRect rect(QxPoint(center, -center), QxSize(extent, extent));
            ASSERT_EQ(rect.center(), QxPoint(center, -center));
            ASSERT_EQ(rect.size(), QxSize(extent, extent));
            ASSERT_EQ(rect.x() - rect.leftHalfWidth(), rect.left());
            ASSERT_EQ(rect.y() + rect.topHalfHeight(), rect.top());
            rect.resize(extent + 3, extent + 4);
            ASSERT_EQ(rect.center(), QxPoint(center, -center));
            rect.moveTo(3, 4);
            ASSERT_EQ(rect, QxRect(QxPoint(3, 4), QxSize(extent + 3, extent + 4)));
        }
    }
}

TEST(QxRect, ExtremesClampInsteadOfWrapping) {
    QxRect all(qx::MinInt32, qx::MinInt32, qx::MaxInt32, qx::MaxInt32);
    EXPECT_EQ(all.width(), qx::MaxInt32);
    EXPECT_EQ(all.center(), QxPoint(-1, -1));
    QxRect moved = all;
    moved.center({qx::MaxInt32, 0});
    EXPECT_EQ(moved.right(), qx::MaxInt32);
    EXPECT_EQ(moved.left(), 0);
    QxRect small(QxPoint(qx::MaxInt32, qx::MinInt32), QxSize(10, 10));
    EXPECT_EQ(small, QxRect(qx::MaxInt32 - 5, qx::MinInt32, qx::MaxInt32, qx::MinInt32 + 5));
    QxSize offset;
    all.setOffset({qx::MaxInt32, qx::MaxInt32}, offset);
    EXPECT_EQ(offset, QxSize(qx::MaxInt32, qx::MaxInt32));
}

TEST(QxRect, UnionGrowsOnlyWhenNeeded) {
    QxRect rect(0, 0, 10, 10);
    const QxRect inside(0, 3, 10, 4);
    const QxRect outside(-5, 3, 4, 20);
    EXPECT_EQ(rect.updateBounds(&inside), 0);
    EXPECT_EQ(rect.updateBounds(nullptr), 0);
    EXPECT_EQ(rect.updateBounds(&outside), 1);
    EXPECT_EQ(rect, QxRect(-5, 0, 10, 20));
    EXPECT_EQ(QxRect(QxPoint(3, 9), QxPoint(-1, 2)), QxRect(-1, 2, 3, 9));
    for (const QxRect& empty : {QxRect(90, 0, 80, 9), QxRect(0, 90, 9, 80)}) {
        EXPECT_EQ(rect.updateBounds(&empty), 0);
        rect |= empty;
        EXPECT_EQ(rect, QxRect(-5, 0, 10, 20));
    }
}

TEST(QxRect, TouchingRectanglesIntersectButEmptyOnesDoNot) {
    const QxRect rect(0, 0, 10, 10);
    EXPECT_EQ(rect.intersectsRect({10, 10, 20, 20}), 1);
    EXPECT_EQ(rect.intersectsRect({11, 0, 20, 20}), 0);
    EXPECT_EQ(rect.intersectsRect({6, 0, 4, 10}), 0);
    EXPECT_EQ(rect.encloses({0, 0, 10, 10}), 1);
    EXPECT_EQ(rect.encloses({0, 0, 10, 11}), 0);
    EXPECT_EQ(rect.onBoundary({0, 5}), 1);
    EXPECT_EQ(rect.onBoundary({0, 11}), 0);
    EXPECT_EQ(rect.withinInterior({10, 5}), 0);
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

TEST(QxRect, PointsMovedOutsideKeepTheirDirection) {
    for (const std::uint32_t seed : geometry_test::Seeds) {
        GeometryRandom random(seed);
        for (int round = 0; round < 2000; ++round) {
            const QxRect rect(random.point(200), random.point(200));
            const QxPoint start(random.between(rect.left(), rect.right()),
                                random.between(rect.bottom(), rect.top()));
            const QxPoint toward = random.point(300);
            QxPoint moved = start;
            rect.getPointOutsideRect(moved, toward);
            ASSERT_EQ(rect.within(moved), 0) << "seed " << seed << " round " << round;
            ASSERT_GE((std::int64_t{moved.x()} - start.x()) * (toward.x() - start.x()), 0);
            ASSERT_GE((std::int64_t{moved.y()} - start.y()) * (toward.y() - start.y()), 0);
        }
    }
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
