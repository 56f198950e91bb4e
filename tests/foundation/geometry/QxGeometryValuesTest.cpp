// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <map>
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
            // Differences of coordinates have a bit more.
            const std::int64_t x = std::int64_t{random.coordinate()} - random.coordinate();
            const std::int64_t y = std::int64_t{random.coordinate()} - random.coordinate();
            const auto length = static_cast<unsigned __int128>(qx::lengthOf(x, y));
            const auto square = static_cast<unsigned __int128>(static_cast<__int128>(x) * x +
                                                               static_cast<__int128>(y) * y);
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
    const QxTuple tuple(3, 4);
    EXPECT_EQ(point.equals(&tuple), 1);
    EXPECT_EQ(tuple.equals(&point), 1);
    EXPECT_EQ(tuple.hashCode(), point.hashCode());
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

TEST(QxPerMil, OffsetsComeBackFromExtentsThatTheResolutionCovers) {
    QxPerMil perMil;
    for (std::int32_t extent = 1; extent <= 1999; extent += 7) {
        const QxSize size(extent, extent + 1);
        const QxRect rect(QxPoint(10, -10), size);
        for (std::int32_t offset = -2 * extent; offset <= 2 * extent; ++offset) {
            rect.setPerMil(rect.center() + QxPoint(offset, offset), perMil);
            const bool hasHalf = offset >= 0 || size.leftHalfWidth() > 0;
            ASSERT_EQ(perMil.getOffsetX(size), hasHalf ? offset : 0) << extent << ' ' << offset;
            ASSERT_EQ(perMil.getOffsetY(rect), offset) << extent << ' ' << offset;
        }
        rect.setPerMil(rect.topRight(), perMil);
        ASSERT_EQ(perMil, QxPerMil(1000, 1000));
        rect.setPerMil(rect.bottomLeft(), perMil);
        ASSERT_EQ(perMil, QxPerMil(extent > 1 ? -1000 : 0, -1000));
    }
    perMil.computeX(qx::MinInt32, QxSize(1, 1));
    EXPECT_EQ(perMil.x(), -1000);
    perMil.computeY(qx::MaxInt32, QxSize(2, 2));
    EXPECT_EQ(perMil.y(), 32767);
    EXPECT_EQ(QxPerMil(32767, 0).getOffsetX(QxSize(qx::MaxInt32, 0)), qx::MaxInt32);
}

TEST(QxSpacing, IsTheExactSumTruncatedOnce) {
    EXPECT_EQ(QxSpacing(0, 500).spacing(7), 3);
    EXPECT_EQ(QxSpacing(0, -500).spacing(7), -3);
    EXPECT_EQ(QxSpacing(2, -500).spacing(7), -1);
    EXPECT_EQ(QxSpacing(1, -500).spacing(1), 0);
    EXPECT_EQ(QxSpacing(qx::MaxInt32, 32767).spacing(qx::MaxInt32), qx::MaxInt32);
    for (std::int16_t share = -2000; share <= 2000; ++share) {
        for (const std::int32_t tenths : {0, 1, 7, 13, 10'000'000}) {
            // Whole results are whole: 290 thousandths of 100 are 29.
            const auto tenfold = static_cast<std::int16_t>(share / 10 * 10);
            ASSERT_EQ(QxSpacing(tenths, tenfold).spacing(100 * tenths),
                      tenths + tenfold / 10 * tenths)
                << share << " of " << tenths;
        }
    }
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

TEST(QxTransform, ScalesAroundTheOriginsAndBack) {
    const QxTransform half({10, 20}, {100, 200}, {1000, 1000}, {500, 3000});
    QxSize size(7, -7);
    half.transformSize(size, size);
    EXPECT_EQ(size, QxSize(3, -21));
    QxPoint truncated(13, 21);
    half.transformPoint(truncated, truncated);
    EXPECT_EQ(truncated, QxPoint(101, 203));  // 100 + 1.5, 200 + 3
    GeometryRandom random(3);
    for (int round = 0; round < 8000; ++round) {
        const auto origin = [&] {
            return QxDTuple(random.between(-500, 500), random.between(-9, 9));
        };
        const QxDTuple from = origin();
        const QxDTuple to = origin();
        const double extent = random.between(1, 3000);
        const int scaleX = random.between(1, 9);
        const int scaleY = random.between(1, 9);
        const QxTransform transform(from, to, {extent, extent}, {extent * scaleX, extent * scaleY});
        const QxPoint point = random.point(1'000'000);
        QxPoint there;
        transform.transformPoint(point, there);
        ASSERT_EQ(there.x(), (point.x() - from.x()) * scaleX + to.x()) << round;
        ASSERT_EQ(there.y(), (point.y() - from.y()) * scaleY + to.y()) << round;
        transform.inverseTransformPoint(there, there);
        ASSERT_EQ(there, point) << round;
        QxSize extents(point.x(), point.y());
        transform.transformSize(extents, extents);
        ASSERT_EQ(extents, QxSize(point.x() * scaleX, point.y() * scaleY)) << round;
        transform.inverseTransformSize(extents, extents);
        ASSERT_EQ(extents, QxSize(point.x(), point.y())) << round;
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

TEST(QxPointDList, HoldsCopiesOfPoints) {
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
    EXPECT_EQ(QxPointDList(list, QxAttributeCopy).count(), 0);
}

namespace {

/// Point lists and a plain list that get at each other's cells through the operations of QxDList.
/// One more reference to every point shows whether the lists dropped theirs, and dropped it once.
class PointListWorld {
public:
    explicit PointListWorld(std::uint32_t seed) : m_random(seed) {
        for (std::unique_ptr<QxPointDList>& list : m_lists) {
            list = std::make_unique<QxPointDList>();
        }
    }
    void step() {
        QxPointDList& list = *anyList();
        QxDList& base = list;
        QxDList& other = m_random.between(0, 3) == 0 ? m_plain : *anyList();
        QxDListCell* cell = base.pCellInPosition(m_random.between(1, base.count() + 1));
        switch (m_random.between(0, 12)) {
            case 0:
                return base.deleteAllCells();
            case 1:
                return static_cast<void>(base.discardCell(cell));
            case 2:
                return list.discardPoint(cell);
            case 3:
                return static_cast<void>(other.transferCell(cell, &base));
            case 4:
                return static_cast<void>(other.appendList(&base));
            case 5:
                return base.copyAllCells(&other);
            case 6:
                return static_cast<void>(base.appendObject(&m_foreign));
            case 7:
                list = *anyList();
                return hold(list);
            case 8:
                return replace(anyList());
            default:
                list.addPoint(cell, QxPoint());
                hold(list);
        }
    }
    void expectAllReleased() {
        m_plain.deleteAllCells();
        m_lists = {};
        for (const auto& [point, maker] : m_made) {
            ASSERT_LE(point->referenceCount(), maker != nullptr ? 1U : 2U);
            while (point->referenceCount() > 1) {
                point->vRelease();
            }
            point->vRelease();
        }
        EXPECT_EQ(m_foreign.referenceCount(), 1U);
    }

private:
    std::unique_ptr<QxPointDList>& anyList() {
        return m_lists[static_cast<std::size_t>(m_random.between(0, 2))];
    }
    /// Destroys a list. Those of its points that stand elsewhere are from now on their takers'.
    void replace(std::unique_ptr<QxPointDList>& list) {
        for (auto& [point, maker] : m_made) {
            maker = maker != list.get() ? maker : nullptr;
        }
        list = std::make_unique<QxPointDList>();
    }
    void hold(const QxPointDList& list) {
        for (const QxDListCell* cell = list.pFirstCell(); cell != nullptr;
             cell = cell->pNextCell()) {
            QxPoint* const point = QxPointDList::pPoint(cell);
            if (point != &m_foreign && m_made.emplace(point, &list).second) {
                point->vAddRef();
            }
        }
    }

    GeometryRandom m_random;
    QxPoint m_foreign;
    /// With the list that made them, null when that has gone.
    std::map<QxPoint*, const QxPointDList*> m_made;
    std::array<std::unique_ptr<QxPointDList>, 3> m_lists;
    QxDList m_plain;
};

}  // namespace

TEST(QxPointDList, OwnsItsPointsWhicheverOperationMovesTheirCells) {
    for (const std::uint32_t seed : geometry_test::Seeds) {
        SCOPED_TRACE(seed);
        PointListWorld world(seed);
        for (int i = 0; i < 2000; ++i) {
            world.step();
        }
        world.expectAllReleased();
    }
    // Points outlive their maker in the list that they were moved to, which then owns them.
    auto holder = std::make_unique<QxPointDList>();
    QxPoint* point = nullptr;
    {
        QxPointDList maker;
        point = QxPointDList::pPoint(maker.appendPoint({3, 4}));
        point->vAddRef();
        holder->appendList(&maker);
    }
    EXPECT_EQ(*point, QxPoint(3, 4));
    holder.reset();
    EXPECT_EQ(point->referenceCount(), 1U);
    point->vRelease();
    // Anybody may release a point that was taken out.
    QxPointDList list;
    static_cast<QxDList&>(list).discardCell(list.appendPoint({5, 6}))->vRelease();
    list.appendPoint({7, 8});
    // A list may outlive the points that its cells were copied from.
    QxPointDList copy;
    QxPointDList source;
    source.appendPoint({1, 2});
    static_cast<QxDList&>(copy).copyAllCells(&source);
    source.discardAllPoints();
}
