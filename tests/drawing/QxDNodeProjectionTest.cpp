// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "drawing/QxDNodeTestDrawing.h"
#include "qx/foundation/geometry/QxPerMil.h"
#include "support/TestRandom.h"

namespace {

class QxDNodeProjection : public qxtest::NodeDrawing {
protected:
    QxDNode* placeShaped(const QxShape& shape, std::int32_t x, std::int32_t y, std::int32_t width,
                         std::int32_t height) {
        QxDNode* node = place(x, y, width, height);
        node->pShape(&shape, 1);
        return node;
    }
    /// Whether a point lies on or in the node, asked of the shape alone.
    static bool covers(const QxDNode& node, const QxPoint& p) {
        return node.pShape()->within(p, node.iCenter(), node.iSize()) != 0;
    }
    static bool onOutline(const QxDNode& node, const QxPoint& p) {
        return node.pShape()->onBoundary(p, node.iCenter(), node.iSize()) != 0;
    }
    /// A coordinate between the two, at least `margin` away from both.
    static int between(qxtest::TestRandom& random, int low, int high, int margin) {
        return low + margin + random.below(high - low - 2 * margin);
    }
    /// The first covered point on the way, unit by unit, from `start` along an axis to `end`.
    static bool walk(const QxDNode& node, const QxPoint& start, const QxPoint& end,
                     QxPoint& first) {
        const auto step = [](std::int32_t a, std::int32_t b) { return (a < b) - (b < a); };
        for (QxPoint p = start;; p = p + QxPoint(step(p.x(), end.x()), step(p.y(), end.y()))) {
            if (covers(node, p)) {
                first = p;
                return true;
            }
            if (p == end) {
                return false;
            }
        }
    }
    static QxPoint ontoSide(const QxRect& rect, const QxPoint& p, int side) {
        const QxPoint onSide[] = {{rect.left(), p.y()},
                                  {p.x(), rect.bottom()},
                                  {rect.right(), p.y()},
                                  {p.x(), rect.top()}};
        return onSide[side];
    }

    const QxShape oval{QxShapeTypeOval};
};

}  // namespace

TEST_F(QxDNodeProjection, SegmentsAreCutAtTheCrossingNearestTheirEndOnARectangle) {
    QxDNode* node = place(0, 0, 20, 10);
    const auto cut = [&](QxPoint from, const QxPoint& to) {
        return node->intersectsSegment(from, to, 0) != 0 ? from : QxPoint(777, 777);
    };
    EXPECT_EQ(cut({0, 0}, {100, 0}), QxPoint(10, 0));
    EXPECT_EQ(cut({100, 0}, {0, 0}), QxPoint(10, 0));
    EXPECT_EQ(cut({-100, 0}, {100, 0}), QxPoint(10, 0));
    EXPECT_EQ(cut({100, 3}, {-100, 3}), QxPoint(-10, 3));
    EXPECT_EQ(cut({0, 100}, {0, -100}), QxPoint(0, -5));
    EXPECT_EQ(cut({1, 1}, {2, 2}), QxPoint(777, 777));
    EXPECT_EQ(cut({10, 3}, {10, 3}), QxPoint(10, 3));
    EXPECT_EQ(cut({9, 3}, {9, 3}), QxPoint(777, 777));

    node->pShape(&oval, 1);
    EXPECT_EQ(cut({0, 0}, {100, 0}), QxPoint(10, 0));
    EXPECT_EQ(cut({-100, 0}, {100, 0}), QxPoint(-10, 0)) << "the crossing met first";
    EXPECT_EQ(cut({10, 0}, {10, 0}), QxPoint(10, 0));
    EXPECT_EQ(cut({10, 5}, {10, 5}), QxPoint(777, 777));
}

TEST_F(QxDNodeProjection, PointsLandOnTheClosestSideOfARectangle) {
    QxDNode* node = place(0, 0, 40, 20);
    const auto expect = [&](const QxPoint& from, int direction, const QxPoint& to) {
        QxPoint point = from;
        EXPECT_EQ(node->computeProjection(point), direction) << from.x() << ' ' << from.y();
        EXPECT_EQ(point, to) << from.x() << ' ' << from.y();
    };
    expect({18, 0}, QxDirectionRight, {20, 0});
    expect({-18, 3}, QxDirectionLeft, {-20, 3});
    expect({5, 9}, QxDirectionUp, {5, 10});
    expect({5, -8}, QxDirectionDown, {5, -10});
    expect({30, 4}, QxDirectionRight, {20, 4});
    expect({5, 90}, QxDirectionUp, {5, 10});
    expect({5, -90}, QxDirectionDown, {5, -10});
    expect({30, 30}, QxDirectionNone, {30, 30});
    expect({-21, -11}, QxDirectionNone, {-21, -11});

    QxPoint point(3, 4);
    EXPECT_EQ(node->computeProjection(point, QxDirectionDown), 1);
    EXPECT_EQ(point, QxPoint(3, -10));
    QxPoint outside(21, 11);
    EXPECT_EQ(node->computeProjection(outside, QxDirectionDown), 0);
    EXPECT_EQ(outside, QxPoint(21, 11));
    EXPECT_EQ(node->computeProjection(point, QxDirectionNone), 0);
    EXPECT_EQ(point, QxPoint(3, -10));
}

TEST_F(QxDNodeProjection, ProjectionsOntoShapesAgreeWithAWalkAlongTheWay) {
    const std::uint32_t seed = qxtest::testSeed(5);
    SCOPED_TRACE(qxtest::seedTrace(seed));
    qxtest::TestRandom random(seed);
    int onOutlineCount = 0;
    for (const QxShape& shape : {oval, qxtest::diamond(), qxtest::angle()}) {
        for (int round = 0; round < 600; ++round) {
            QxDNode* node = placeShaped(shape, random.below(40) - 20, random.below(40) - 20,
                                        20 + random.below(90), 20 + random.below(90));
            const QxRect rect = *node->pIRect();
            // Away from the tips, where the shape is too thin for a walk by units.
            const int d = random.below(4);
            const bool sideways = d % 2 == 0;
            const QxPoint from(between(random, rect.left(), rect.right(), sideways ? -30 : 6),
                               between(random, rect.bottom(), rect.top(), sideways ? 6 : -30));
            SCOPED_TRACE(testing::Message() << "type " << shape.type() << " round " << round);
            const QxPoint entry = ontoSide(rect, from, d);
            const QxPoint exit = ontoSide(rect, from, (d + 2) % 4);
            QxPoint expected = exit;
            const bool met =
                walk(*node, entry, from, expected) || walk(*node, exit, from, expected);
            QxPoint point = from;
            ASSERT_EQ(node->computeProjection(point, static_cast<QxDirectionEnum>(d)), 1);
            // An end of the way that the outline passes within half a unit counts as met.
            const bool isEndOnOutline =
                (point == entry || point == from) && onOutline(*node, point);
            ASSERT_TRUE(isEndOnOutline || point.distance(expected) <= 1.0)
                << "from " << from.x() << ' ' << from.y() << " direction " << d << ": " << point.x()
                << ' ' << point.y() << " instead of " << expected.x() << ' ' << expected.y();
            ASSERT_TRUE(!met || onOutline(*node, point));
            onOutlineCount += met ? 1 : 0;
            graph->discardNode(node);
        }
    }
    EXPECT_GT(onOutlineCount, 1000);
}

TEST_F(QxDNodeProjection, TheClosestSideOfAShapeIsEnteredFromOutsideAndLeftFromWithin) {
    QxDNode* node = placeShaped(oval, 0, 0, 40, 40);
    QxPoint within(0, 15);
    EXPECT_EQ(node->computeProjection(within), QxDirectionUp);
    QxPoint beside(16, 18);
    ASSERT_EQ(node->within(beside, 1), 0);
    EXPECT_EQ(node->computeProjection(beside), static_cast<QxDirectionEnum>(QxSideTop));
    EXPECT_EQ(oval.onBoundary(beside, node->iCenter(), node->iSize()), 1);
    QxPoint diagonal(25, 25);
    EXPECT_EQ(node->computeProjection(diagonal), QxDirectionNone);
}

TEST_F(QxDNodeProjection, OffsetsOnASideMoveStraightOntoTheOutline) {
    const std::uint32_t seed = qxtest::testSeed(9);
    SCOPED_TRACE(qxtest::seedTrace(seed));
    qxtest::TestRandom random(seed);
    for (const QxShape& shape : {oval, qxtest::diamond(), qxtest::angle()}) {
        for (int round = 0; round < 300; ++round) {
            QxDNode* node = placeShaped(shape, random.below(40) - 20, random.below(40) - 20,
                                        20 + random.below(90), 20 + random.below(90));
            const QxRect rect = *node->pIRect();
            const int side = random.below(4);
            const bool sideways = side % 2 == 0;
            SCOPED_TRACE(testing::Message()
                         << "type " << shape.type() << " round " << round << " side " << side);
            const QxPoint along(between(random, rect.left(), rect.right(), 6),
                                between(random, rect.bottom(), rect.top(), 6));
            const QxPoint start = ontoSide(rect, along, side);
            QxPoint expected = start;
            walk(*node, start, ontoSide(rect, along, (side + 2) % 4), expected);

            std::int32_t x = start.x() - node->iX();
            std::int32_t y = start.y() - node->iY();
            node->computeProjectionAtShapeBorder(x, y, 0);
            const QxPoint moved(x + node->iX(), y + node->iY());
            ASSERT_EQ(sideways ? moved.y() : moved.x(), sideways ? start.y() : start.x());
            ASSERT_LE(moved.distance(expected), 1.0);

            QxPerMil perMil;
            perMil.compute(start.x() - node->iX(), start.y() - node->iY(), rect);
            std::int32_t millX = perMil.x();
            std::int32_t millY = perMil.y();
            node->computeProjectionAtShapeBorder(millX, millY, 1);
            ASSERT_EQ(sideways ? millY : millX, sideways ? perMil.y() : perMil.x());
            perMil = QxPerMil(qx::clampToInt16(millX), qx::clampToInt16(millY));
            const QxPoint place(node->iX() + perMil.getOffsetX(rect),
                                node->iY() + perMil.getOffsetY(rect));
            ASSERT_LE(place.distance(moved), 1.0);
            graph->discardNode(node);
        }
    }
}

TEST_F(QxDNodeProjection, OffsetsOffTheSidesAndOnRectanglesStay) {
    QxDNode* node = place(0, 0, 40, 20);
    std::int32_t x = 20;
    std::int32_t y = 7;
    node->computeProjectionAtShapeBorder(x, y, 0);
    EXPECT_EQ(QxPoint(x, y), QxPoint(20, 7));
    node->pShape(&oval, 1);
    x = 19;
    node->computeProjectionAtShapeBorder(x, y, 0);
    EXPECT_EQ(QxPoint(x, y), QxPoint(19, 7));
    x = 1000;
    y = 300;
    node->computeProjectionAtShapeBorder(x, y, 1);
    EXPECT_EQ(y, 300);
    EXPECT_NEAR(x, 954, 50) << "the oval recedes by 1 - sqrt(1 - 0.3 * 0.3)";
    EXPECT_LT(x, 1000);
    x = 1000;
    y = 1000;
    node->computeProjectionAtShapeBorder(x, y, 1);
    EXPECT_EQ(QxPoint(x, y), QxPoint(0, 1000)) << "straight in from a corner touches the top";
    x = 1000;
    node->ntResize(0, 0);
    node->computeProjectionAtShapeBorder(x, y, 1);
    EXPECT_EQ(QxPoint(x, y), QxPoint(1000, 1000));
}

TEST_F(QxDNodeProjection, PointsArePushedOutInTheDirection) {
    QxDNode* node = placeShaped(oval, 10, 10, 40, 20);
    const QxPoint start(12, 9);
    const QxPoint expected[] = {{52, 9}, {12, 49}, {-28, 9}, {12, -31}};
    for (int d = 0; d < 4; ++d) {
        QxPoint point = start;
        node->moveOutside(point, static_cast<QxDirectionEnum>(d), 0);
        EXPECT_EQ(point, expected[d]);
        EXPECT_EQ(node->within(point, 0), 0);
    }
    QxPoint approaching(60, 10);
    node->moveOutside(approaching, QxDirectionLeft, 1);
    EXPECT_EQ(approaching, QxPoint(-60, 10)) << "one step ended inside, the next is twice as long";
    QxPoint still = start;
    node->moveOutside(still, QxDirectionNone, 1);
    EXPECT_EQ(still, start);

    node->ntResize(0, 0);
    QxPoint center(10, 10);
    node->moveOutside(center, QxDirectionUp, 1);
    EXPECT_EQ(center, QxPoint(10, 10)) << "a node without size has no outside to reach";
    node->ntMoveTo(0, 0);
    node->ntResize(qx::MaxInt32, qx::MaxInt32);
    QxPoint far(qx::MaxInt32 / 2, 0);
    node->moveOutside(far, QxDirectionRight, 1);
    EXPECT_EQ(far.x(), qx::MaxInt32);
}
