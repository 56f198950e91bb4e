// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/geometry/internal/PlacedOutline.h"

#include <gtest/gtest.h>

#include "foundation/geometry/GeometryRandom.h"
#include "qx/foundation/geometry/QxPerMil.h"
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

/// The first covered point on the way, unit by unit, from `start` along an axis to `end`.
bool walk(const PlacedOutline& outline, const QxPoint& start, const QxPoint& end, QxPoint& first) {
    const auto toward = [](std::int32_t a, std::int32_t b) { return (a < b) - (b < a); };
    for (QxPoint p = start;; p = p + QxPoint(toward(p.x(), end.x()), toward(p.y(), end.y()))) {
        if (outline.contains(p)) {
            first = p;
            return true;
        }
        if (p == end) {
            return false;
        }
    }
}

QxPoint onSide(const QxRect& rect, const QxPoint& p, int side) {
    const QxPoint points[] = {
        {rect.left(), p.y()}, {p.x(), rect.bottom()}, {rect.right(), p.y()}, {p.x(), rect.top()}};
    return points[side];
}

QxShape shapeOf(std::initializer_list<QxPoint> points) {
    QxPointDList corners;
    for (const QxPoint& corner : points) {
        corners.appendPoint(corner);
    }
    return QxShape::fromOutline(corners);
}

}  // namespace

/// Whatever is clipped, projected or moved out comes to lie where its name says, and stays on the
/// line that it was to move on.
TEST(PlacedOutline, PointsComeToLieOnTheOutlineOrOutside) {
    const QxShape shapes[] = {QxShape(), QxShape(QxShapeTypeOval),
                              shapeOf({{-1000, -1000}, {1000, -400}, {0, 1000}})};
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

/// What is projected in a direction, and what is moved off a side, stops where a walk by units
/// does. Away from the tips, where the shape is too thin for such a walk.
TEST(PlacedOutline, ProjectionsAgreeWithAWalkAlongTheWay) {
    GeometryRandom random(5);
    const QxShape diamond = shapeOf({{0, -5}, {5, 0}, {0, 5}, {-5, 0}});
    const QxShape angle = shapeOf({{0, 0}, {20, 0}, {20, 10}, {10, 10}, {10, 20}, {0, 20}});
    for (const QxShape& shape : {QxShape(QxShapeTypeOval), diamond, angle}) {
        for (int round = 0; round < 600; ++round) {
            SCOPED_TRACE(testing::Message() << "type " << shape.type() << " round " << round);
            const QxRect rect(random.point(20),
                              QxSize(random.between(20, 109), random.between(20, 109)));
            const PlacedOutline outline(rect, &shape);
            const int side = random.between(0, 3);
            const bool sideways = side % 2 == 0;
            const auto within = [&](int low, int high, int margin) {
                return random.between(low + margin, high - margin);
            };
            const QxPoint from(within(rect.left(), rect.right(), sideways ? -30 : 6),
                               within(rect.bottom(), rect.top(), sideways ? 6 : -30));
            const QxPoint entry = onSide(rect, from, side);
            const QxPoint exit = onSide(rect, from, (side + 2) % 4);
            QxPoint expected = exit;
            const bool met =
                walk(outline, entry, from, expected) || walk(outline, exit, from, expected);
            QxPoint point = from;
            ASSERT_TRUE(outline.project(point, static_cast<QxDirectionEnum>(side)));
            // An end of the way that the outline passes within half a unit counts as met.
            const bool isEndOnOutline = (point == entry || point == from) && liesOn(outline, point);
            ASSERT_TRUE(isEndOnOutline || point.distance(expected) <= 1.0);
            ASSERT_TRUE(!met || liesOn(outline, point));

            const QxPoint along(within(rect.left(), rect.right(), 6),
                                within(rect.bottom(), rect.top(), 6));
            const QxPoint start = onSide(rect, along, side);
            expected = start;
            walk(outline, start, onSide(rect, along, (side + 2) % 4), expected);
            std::int32_t x = start.x() - rect.x();
            std::int32_t y = start.y() - rect.y();
            QxPerMil perMil;
            perMil.compute(x, y, rect);
            outline.moveOffsetOntoOutline(x, y, false);
            const QxPoint moved(x + rect.x(), y + rect.y());
            ASSERT_EQ(sideways ? moved.y() : moved.x(), sideways ? start.y() : start.x());
            ASSERT_LE(moved.distance(expected), 1.0);
            std::int32_t millX = perMil.x();
            std::int32_t millY = perMil.y();
            outline.moveOffsetOntoOutline(millX, millY, true);
            ASSERT_EQ(sideways ? millY : millX, sideways ? perMil.y() : perMil.x());
            perMil = QxPerMil(qx::clampToInt16(millX), qx::clampToInt16(millY));
            const QxPoint place(rect.x() + perMil.getOffsetX(rect),
                                rect.y() + perMil.getOffsetY(rect));
            ASSERT_LE(place.distance(moved), 1.0);
        }
    }
}

TEST(PlacedOutline, WhatLiesElsewhereStays) {
    const QxShape oval(QxShapeTypeOval);
    const QxRect rect(QxPoint(0, 0), QxSize(40, 20));
    const auto moved = [&](const QxRect& around, std::int32_t x, std::int32_t y, bool isPerMil) {
        PlacedOutline(around, &oval).moveOffsetOntoOutline(x, y, isPerMil);
        return QxPoint(x, y);
    };
    EXPECT_EQ(moved(rect, 19, 7, false), QxPoint(19, 7)) << "not on a side";
    EXPECT_EQ(moved(rect, 1000, 1000, true), QxPoint(0, 1000)) << "from a corner to the top";
    EXPECT_EQ(moved(QxRect(), 1000, 1000, true), QxPoint(1000, 1000));
    QxPoint point(21, 11);
    EXPECT_FALSE(PlacedOutline(rect, &oval).project(point, QxDirectionDown));
    EXPECT_FALSE(PlacedOutline(rect, nullptr).project(point, QxDirectionNone));
    EXPECT_EQ(point, QxPoint(21, 11));
    point = QxPoint(3, 4);
    EXPECT_TRUE(PlacedOutline(rect, nullptr).project(point, QxDirectionDown));
    EXPECT_EQ(point, QxPoint(3, -10));

    const auto pushed = [&](const QxRect& around, QxPoint from, QxDirectionEnum direction) {
        PlacedOutline(around, &oval).moveOutside(from, direction);
        return from;
    };
    EXPECT_EQ(pushed(rect, {50, 0}, QxDirectionLeft), QxPoint(-70, 0))
        << "one step ended inside, the next is twice as long";
    EXPECT_EQ(pushed(rect, {2, 1}, QxDirectionNone), QxPoint(2, 1));
    EXPECT_EQ(pushed(QxRect(), {0, 0}, QxDirectionUp), QxPoint()) << "there is no outside";
    const QxRect huge(QxPoint(0, 0), QxSize(qx::MaxInt32, qx::MaxInt32));
    EXPECT_EQ(pushed(huge, {qx::MaxInt32 / 2, 0}, QxDirectionRight).x(), qx::MaxInt32);
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
