// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/geometry/internal/PlacedOutline.h"

#include <gtest/gtest.h>

#include "foundation/geometry/GeometryRandom.h"
#include "qx/foundation/geometry/QxPointDList.h"

using qx::internal::PlacedOutline;

namespace {

bool liesOn(const PlacedOutline& outline, QxPoint point) {
    return outline.clip(point, point);
}

QxPoint step(const QxPoint& from, int direction, int length) {
    const int sign = direction < 2 ? length : -length;
    return from + (direction % 2 == 0 ? QxPoint(sign, 0) : QxPoint(0, sign));
}

}  // namespace

/// Whatever is clipped, projected or moved out comes to lie where its name says, and stays on the
/// line that it was to move on.
TEST(PlacedOutline, PointsComeToLieOnTheOutlineOrOutside) {
    QxPointDList corners;
    for (const QxPoint& corner : {QxPoint(-1000, -1000), QxPoint(1000, -400), QxPoint(0, 1000)}) {
        corners.appendPoint(corner);
    }
    const QxShape shapes[] = {QxShape(), QxShape(QxShapeTypeOval), QxShape(corners)};
    for (const std::uint32_t seed : geometry_test::Seeds) {
        GeometryRandom random(seed);
        for (int round = 0; round < 5000; ++round) {
            SCOPED_TRACE(testing::Message() << "seed " << seed << " round " << round);
            const int kind = random.between(0, 3);
            const QxShape* shape = kind < 3 ? &shapes[kind] : nullptr;
            const bool isRectangle = shape == nullptr || shape->isRectangular() != 0;
            const QxRect rect(random.point(40),
                              QxSize(random.between(9, 90), random.between(9, 90)));
            const PlacedOutline outline(rect, shape);
            const QxPoint p = random.point(90);
            ASSERT_EQ(
                outline.contains(p),
                rect.within(p) && (isRectangle || shape->within(p, rect.center(), rect.size())));
            // Of two crossings of a rectangle the one nearer to the end, of another shape the
            // first.
            const QxPoint to = random.point(90);
            QxPoint crossing = p;
            if (outline.clip(crossing, to)) {
                ASSERT_TRUE(liesOn(outline, crossing));
                QxPoint back = to;
                ASSERT_TRUE(p == to || outline.clip(back, p));
                const QxPoint& near = isRectangle ? to : p;
                ASSERT_TRUE(p == to || crossing.distance(near) <= back.distance(near));
            } else {
                ASSERT_EQ(crossing, p);
            }
            QxPoint projected = p;
            QxPoint nearest;
            shapes[0].nearestPoint(nearest, p, rect.center(), rect.size());
            const QxDirectionEnum direction = outline.project(projected);
            const bool isBeside = rect.withinXRange(p) == 0 && rect.withinYRange(p) == 0;
            ASSERT_EQ(direction == QxDirectionNone, isBeside);
            if (isBeside) {
                ASSERT_EQ(projected, p);
            } else if (kind == 0 && rect.within(p) != 0) {
                ASSERT_EQ(direction, (rect.closestSide(p) + 2) % 4);
                ASSERT_TRUE(liesOn(outline, projected));
                ASSERT_EQ(projected.distance(p), nearest.distance(p));
            }
            QxPoint away = p;
            const int outward = random.between(0, 3);
            outline.moveOutside(away, static_cast<QxDirectionEnum>(outward));
            const int moved = std::abs(away.x() - p.x()) + std::abs(away.y() - p.y());
            ASSERT_EQ(away, step(p, outward, moved));
            ASSERT_GE(moved, std::max(rect.width(), rect.height()));
            ASSERT_TRUE(isRectangle || !outline.contains(away));
            // From the middle of a side an offset moves straight inward onto the outline.
            std::int32_t x = outward == 0 ? rect.rightHalfWidth() : 0;
            std::int32_t y = outward == 1 ? rect.topHalfHeight() : 0;
            outline.moveOffsetOntoOutline(x, y, false);
            ASSERT_TRUE(outward > 1 || liesOn(outline, rect.center() + QxPoint(x, y)));
            ASSERT_TRUE(x >= 0 && y >= 0);
        }
    }
}

TEST(PlacedOutline, AnObjectWithoutAResourceShowsTheStandard) {
    const QxRect rect(-10, -10, 10, 10);
    const QxShapeResource oval(nullptr, QxShape(QxShapeTypeOval));
    const QxShapeResource rectangle(nullptr);
    EXPECT_FALSE(PlacedOutline(rect, nullptr, &oval).contains({10, 10}));
    EXPECT_TRUE(PlacedOutline(rect, &rectangle, &oval).contains({10, 10}));
    EXPECT_TRUE(PlacedOutline(rect, nullptr, nullptr).contains({10, 10}));
    EXPECT_EQ(PlacedOutline(rect, nullptr, nullptr).pShape(), nullptr);
}
