// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>

#include "foundation/geometry/GeometryRandom.h"
#include "qx/foundation/geometry/QxPerMil.h"
#include "qx/foundation/geometry/QxPointDList.h"
#include "qx/foundation/geometry/QxRotatedRect.h"
#include "qx/foundation/geometry/QxSpacing.h"
#include "qx/foundation/geometry/QxTransform.h"

TEST(QxArithmetic, ConversionsClampTruncateAndSwallowNaN) {
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(qx::truncToInt32(-3.9), -3);
    EXPECT_EQ(qx::truncToInt32(2147483647.5), qx::MaxInt32);
    EXPECT_EQ(qx::truncToInt32(-2147483648.5), qx::MinInt32);
    EXPECT_EQ(qx::truncToInt32(-2147483647.9), -2147483647);
    EXPECT_EQ(qx::truncToInt32(infinity), qx::MaxInt32);
    EXPECT_EQ(qx::truncToInt32(-infinity), qx::MinInt32);
    EXPECT_EQ(qx::truncToInt32(std::nan("")), 0);
    EXPECT_EQ(qx::floorHalfUp(std::nan("")), 0);
    EXPECT_EQ(qx::floorHalfUp(-2.5), -2);
    EXPECT_EQ(qx::floorHalfUp(2.5), 3);
    EXPECT_EQ(qx::saturatingAdd(qx::MaxInt32, 1), qx::MaxInt32);
    EXPECT_EQ(qx::saturatingSub(qx::MinInt32, 1), qx::MinInt32);
    EXPECT_EQ(qx::truncToInt16(-40000.0), -32768);
}

TEST(QxTuple, LengthIsTheExactTruncatedRootOverTheWholeRange) {
    EXPECT_EQ(QxTuple(3, -4).norm(), 5);
    EXPECT_EQ(QxTuple(1, 1).norm(), 1);
    EXPECT_EQ(QxTuple(qx::MinInt32, qx::MinInt32).norm(), qx::MaxInt32);
    for (const std::uint32_t seed : geometry_test::Seeds) {
        GeometryRandom random(seed);
        for (int round = 0; round < 5000; ++round) {
            const std::int32_t x = random.coordinate();
            const std::int32_t y = random.coordinate();
            const auto length = static_cast<unsigned __int128>(qx::lengthOf(x, y));
            const auto square = static_cast<unsigned __int128>(std::int64_t{x} * x) +
                                static_cast<unsigned __int128>(std::int64_t{y} * y);
            ASSERT_TRUE(length * length <= square && square < (length + 1) * (length + 1))
                << "seed " << seed << " x " << x << " y " << y;
        }
    }
}

TEST(QxTuple, ScalingTruncatesTowardZeroAndClamps) {
    QxPoint point(7, -7);
    point *= 0.5;
    EXPECT_EQ(point, QxPoint(3, -3));
    point *= 1e12;
    EXPECT_EQ(point, QxPoint(qx::MaxInt32, qx::MinInt32));
    point -= QxPoint(-1, 1);
    EXPECT_EQ(point, QxPoint(qx::MaxInt32, qx::MinInt32));
}

TEST(QxPoint, DirectionsNeedAnAxisUnlessRough) {
    const QxPoint origin;
    EXPECT_EQ(origin.direction({5, 0}), QxDirectionRight);
    EXPECT_EQ(origin.direction({0, -5}), QxDirectionDown);
    EXPECT_EQ(origin.direction({5, 1}), QxDirectionNone);
    EXPECT_EQ(origin.direction(origin), QxDirectionNone);
    EXPECT_EQ(origin.roughDirection({5, 1}), QxDirectionRight);
    EXPECT_EQ(origin.roughDirection({-5, 5}), QxDirectionLeft);
    EXPECT_EQ(origin.roughDirection({4, 5}), QxDirectionUp);
    EXPECT_EQ(QxPoint(qx::MaxInt32, 0).roughDirection({qx::MinInt32, 0}), QxDirectionLeft);
    EXPECT_DOUBLE_EQ(QxPoint(qx::MinInt32, 0).distance({qx::MaxInt32, 0}), 4294967295.0);
}

TEST(QxValueObject, CopiesAndComparesByValueAndClass) {
    const QxPoint point(3, 4);
    const std::unique_ptr<QxPoint> clone(point.cloneObject());
    EXPECT_EQ(point.equals(clone.get()), 1);
    EXPECT_EQ(point.hashCode(), clone->hashCode());
    EXPECT_NE(point.hashCode(), QxPoint(4, 3).hashCode());
    EXPECT_EQ(point.equals(nullptr), 0);
    const QxSize size(3, 4);
    EXPECT_EQ(point.equals(&size), 0);
    QxPoint target(9, 9);
    target.copyObject(&size);
    EXPECT_EQ(target, QxPoint(9, 9));
    static_cast<QxObject&>(target).copyAttributes(&point);
    EXPECT_EQ(target, point);
    // Assignment must not touch the target's references.
    target.vAddRef();
    target = QxPoint(1, 2);
    EXPECT_EQ(target.referenceCount(), 2U);
}

TEST(QxPerMil, BordersAreExactOnBothSidesOfOddExtents) {
    const QxRect rect(QxPoint(10, -10), QxSize(5, 8));
    QxPerMil perMil;
    rect.setPerMil({rect.right(), rect.bottom()}, perMil);
    EXPECT_EQ(perMil, QxPerMil(1000, -1000));
    EXPECT_EQ(perMil.getOffsetX(rect), rect.rightHalfWidth());
    EXPECT_EQ(perMil.getOffsetY(rect), -rect.bottomHalfHeight());
    rect.setPerMil({rect.left(), rect.top()}, perMil);
    EXPECT_EQ(perMil, QxPerMil(-1000, 1000));
}

TEST(QxPerMil, OffsetsComeBackFromExtentsThatTheResolutionCovers) {
    for (std::int32_t extent = 1; extent <= 1999; extent += 7) {
        const QxSize size(extent, extent);
        for (std::int32_t offset = -2 * extent; offset <= 2 * extent; ++offset) {
            QxPerMil perMil;
            perMil.computeX(offset, size);
            const bool hasHalf = offset >= 0 || size.leftHalfWidth() > 0;
            ASSERT_EQ(perMil.getOffsetX(size), hasHalf ? offset : 0)
                << "extent " << extent << " offset " << offset;
        }
    }
    QxPerMil perMil;
    perMil.computeX(qx::MinInt32, QxSize(1, 1));
    EXPECT_EQ(perMil.x(), -1000);
    perMil.computeY(qx::MaxInt32, QxSize(2, 2));
    EXPECT_EQ(perMil.y(), 32767);
    EXPECT_EQ(QxPerMil(32767, 0).getOffsetX(QxSize(qx::MaxInt32, 0)), qx::MaxInt32);
}

TEST(QxSpacing, TruncatesTheSumOnce) {
    EXPECT_EQ(QxSpacing(0, 500).spacing(7), 3);
    EXPECT_EQ(QxSpacing(0, -500).spacing(7), -3);
    EXPECT_EQ(QxSpacing(2, 500).spacing(7), 5);
    EXPECT_EQ(QxSpacing(qx::MaxInt32, 32767).spacing(qx::MaxInt32), qx::MaxInt32);
}

TEST(QxSpacing, OuterSizeLeavesExactlyTheInnerExtent) {
    for (const std::uint32_t seed : geometry_test::Seeds) {
        GeometryRandom random(seed);
        for (int round = 0; round < 3000; ++round) {
            const auto share = [&] { return static_cast<std::int16_t>(random.between(0, 499)); };
            const QxSpacing lower(random.between(0, 100), share());
            const QxSpacing upper(random.between(0, 100), share());
            const std::int32_t inner = random.between(0, 100'000);
            const std::int32_t outer = QxSpacing::calculateOuterSize(lower, upper, inner);
            ASSERT_EQ(outer - lower.spacing(outer) - upper.spacing(outer), inner)
                << "seed " << seed << " round " << round;
            const std::int32_t less = outer - 1;
            ASSERT_LT(less - lower.spacing(less) - upper.spacing(less), inner);
        }
    }
    EXPECT_EQ(QxSpacing::calculateOuterSize({20, 0}, {30, 0}, 100), 150);
    EXPECT_EQ(QxSpacing::calculateOuterSize({0, 500}, {0, 500}, 100), 200);
    EXPECT_EQ(QxSpacing::calculateOuterSize({qx::MaxInt32, 0}, {1, 0}, 5), qx::MaxInt32);
    EXPECT_EQ(QxSpacing::calculateOuterSize({}, {}, qx::MinInt32), qx::MinInt32);
    EXPECT_EQ(QxSpacing::calculateOuterSize({10, 0}, {5, 0}, qx::MinInt32), qx::MinInt32 + 15);
}

TEST(QxTransform, ScalesAroundTheOriginsAndTruncates) {
    const QxTransform transform({10, 20}, {100, 200}, {1000, 1000}, {500, 3000});
    QxPoint point(13, 21);
    transform.transformPoint(point, point);
    EXPECT_EQ(point, QxPoint(101, 203));  // 100 + 1.5, 200 + 3
    QxSize size(7, -7);
    transform.transformSize(size, size);
    EXPECT_EQ(size, QxSize(3, -21));
    EXPECT_DOUBLE_EQ(transform.scaleX(), 0.5);
    EXPECT_DOUBLE_EQ(transform.scaleY(), 3.0);
}

TEST(QxTransform, InverseUndoesEveryScaleThatIsAWholeNumber) {
    for (const std::uint32_t seed : geometry_test::Seeds) {
        GeometryRandom random(seed);
        for (int round = 0; round < 2000; ++round) {
            const double extent = random.between(1, 3000);
            const QxTransform transform(
                {1.0 * random.between(-500, 500), 1.0 * random.between(-500, 500)},
                {1.0 * random.between(-500, 500), 1.0 * random.between(-500, 500)},
                {extent, extent}, {extent * random.between(1, 9), extent * random.between(1, 9)});
            const QxPoint point = random.point(1'000'000);
            QxPoint there;
            QxPoint back;
            transform.transformPoint(point, there);
            transform.inverseTransformPoint(there, back);
            ASSERT_EQ(back, point) << "seed " << seed << " round " << round;
            QxDTuple exact(point.x() + 0.25, point.y() - 0.75);
            const QxDTuple before = exact;
            transform.transformPoint(exact, exact);
            transform.inverseTransformPoint(exact, exact);
            ASSERT_NEAR(exact.x(), before.x(), 1e-6);
            ASSERT_NEAR(exact.y(), before.y(), 1e-6);
        }
    }
}

TEST(QxTransform, DegenerateExtentsMeanScaleOne) {
    QxTransform transform({1, 1}, {2, 2}, {0, 5}, {7, 0});
    QxPoint point(qx::MaxInt32, 5);
    transform.transformPoint(point, point);
    EXPECT_EQ(point, QxPoint(qx::MaxInt32, 6));
    transform.normalizeExt();
    EXPECT_DOUBLE_EQ(transform.scaleX(), 1.0);
    EXPECT_DOUBLE_EQ(transform.scaleY(), 1.0);
    EXPECT_TRUE(transform == QxTransform({1, 1}, {2, 2}));
}

TEST(QxRotatedRect, ContainsWhatItsBoundsContainAcrossTheSegmentOnly) {
    const QxRotatedRect rect({0, 0}, {100, 100}, 20);
    EXPECT_EQ(rect.within({50, 50}), 1);
    EXPECT_EQ(rect.within({55, 45}), 1);
    EXPECT_EQ(rect.within({60, 40}), 0);
    EXPECT_EQ(rect.within({-1, -1}), 0);
    QxRect bounds;
    rect.getBoundingRect(bounds);
    EXPECT_EQ(bounds, QxRect(-8, -8, 108, 108));
    QxRotatedRect({5, 5}, {5, 5}, 9).getBoundingRect(bounds);
    EXPECT_EQ(bounds, QxRect(5, 5, 5, 5));
}

TEST(QxPointDList, OwnsCopiesOfItsPoints) {
    QxPointDList list;
    QxPoint point(1, 1);
    QxDListCell* first = list.appendPoint(point);
    point.x(9);
    list.appendPoint({3, 3});
    list.addPoint(first, {2, 2});
    list.prependPoint({0, 0});
    QxPointDList copy(list);
    ASSERT_EQ(copy.count(), 4);
    copy.pFirstPoint()->x(7);
    for (std::int32_t i = 1; i <= 4; ++i) {
        EXPECT_EQ(*list.pPointInPosition(i), QxPoint(i - 1, i - 1));
    }
    EXPECT_EQ(list.equals(&copy), 0);
    copy = list;
    EXPECT_EQ(list.equals(&copy), 1);
    EXPECT_EQ(list.hashCode(), copy.hashCode());
    list.discardPoint(first);
    EXPECT_EQ(list.count(), 3);
    EXPECT_EQ(list.equals(&copy), 0);
}
