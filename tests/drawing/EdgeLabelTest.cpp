// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <gtest/gtest.h>

#include <cmath>

#include "drawing/DrawingTesting.h"
#include "qx/drawing/QxEdgeLabel.h"
#include "qx/drawing/QxLabelInfoEdgeMoved.h"

namespace {

using namespace qxtest;

class EdgeLabelTest : public testing::Test {
protected:
    /// An edge between nodes without size: its path is what is given.
    QxDEdge* lineTo(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2) {
        return drawing.addEdge(drawing.addNode(x1, y1, 0, 0), drawing.addNode(x2, y2, 0, 0));
    }
    static QxEdgeLabel* labelAt(QxDEdge* edge, std::int32_t x, std::int32_t y, std::int32_t width,
                                std::int32_t height) {
        return edge->addLabelWithCoordinates(x, y, width, height, 1, nullptr, 0);
    }
    static double distanceFromLine(const QxPoint& p, const QxPoint& a, const QxPoint& b) {
        const double dx = b.x() - a.x();
        const double dy = b.y() - a.y();
        return ((p.y() - a.y()) * dx - (p.x() - a.x()) * dy) / std::sqrt(dx * dx + dy * dy);
    }

    QxFactory factory;
    SmallDrawing drawing{factory};
};

TEST_F(EdgeLabelTest, NewOnesGoInPairsFromTheMiddleOn) {
    QxDEdge* edge = lineTo(0, 0, 2000, 0);
    std::vector<int> perMils;
    for (int i = 0; i < 16; ++i) {
        const QxEdgeLabel* label = edge->addLabel(L"x", 0);
        perMils.push_back(label->perMilDistanceFromSource());
        EXPECT_EQ(i % 2 == 0 ? label->ntTop() : label->ntBottom(), 0);
    }
    EXPECT_EQ(perMils, (std::vector<int>{500, 500, 350, 350, 650, 650, 200, 200, 800, 800, 50, 50,
                                         950, 950, 0, 0}));
    EXPECT_EQ(lineTo(0, 0, 0, 300)->addLabel(L"x", 0)->ntLeft(), 0);
}

TEST_F(EdgeLabelTest, PointsAndAnglesOfSegments) {
    QxPoint point;
    QxEdgeLabel::pointOnEdgeFromDistance(&point, 0, 0, -3, -4, 5);
    EXPECT_EQ(point, QxPoint(-3, -4));
    QxEdgeLabel::pointOnEdgeFromDistance(&point, 0, 0, 0, 9, -5);
    EXPECT_EQ(point, QxPoint(0, -5));
    for (int angle = 0; angle < 360; ++angle) {
        const double radians = angle * 3.141592653589793 / 180;
        const QxPoint to(qx::floorHalfUp(100000 * std::cos(radians)),
                         qx::floorHalfUp(100000 * std::sin(radians)));
        EXPECT_EQ(QxEdgeLabel::getAngleOfEdgeSegment(QxPoint(0, 0), to), angle);
    }
    EXPECT_EQ(QxEdgeLabel::getAngleOfEdgeSegment(QxPoint(0, 0), QxPoint(1, -1)), 315);
}

TEST_F(EdgeLabelTest, PinnedOnesStayWhateverTheEdgeDoes) {
    QxDEdge* edge = lineTo(0, 0, 100, 0);
    QxEdgeLabel* label = labelAt(edge, 30, 20, 40, 20);
    label->perMilDistanceFromSource(1001);
    label->perMilDistanceFromSource(-1);
    EXPECT_EQ(label->perMilDistanceFromSource(), 300);
    label->globalOffsetMode(1);
    edge->pTargetNode()->moveTo(100, 300, 1);
    EXPECT_EQ(label->ntCenter(), QxPoint(30, 20));
    drawing.events.take();
    label->globalOffsetMode(0);
    EXPECT_EQ(label->ntCenter(), QxPoint(30, 20));
    EXPECT_TRUE(drawing.events.take().empty());
    edge->pTargetNode()->moveTo(400, 300, 1);
    EXPECT_NE(label->ntCenter(), QxPoint(30, 20));
}

TEST_F(EdgeLabelTest, GetOffThePathByTheShortWay) {
    for (const bool turned : {false, true}) {
        QxDEdge* edge = turned ? lineTo(-8, -13, -26, -4) : lineTo(-26, -4, -8, -13);
        QxEdgeLabel* label = labelAt(edge, 0, 0, 40, 20);
        EXPECT_EQ(label->adjustOnOwnerOverlap(), 1);
        EXPECT_EQ(label->ntCenter(), QxPoint(0, 3));
        EXPECT_EQ(label->adjustOnOwnerOverlap(), 0);
    }
    QxEdgeLabel* beside = labelAt(lineTo(3, -99, 3, 99), 0, 5, 40, 20);
    EXPECT_EQ(beside->adjustOnOwnerOverlap(), 1);
    EXPECT_EQ(beside->ntCenter(), QxPoint(-17, 5));
    // Straight away from the line, and no farther than needed: for chords from side to side.
    for (int rise = -30; rise <= 30; ++rise) {
        for (int shift = -20; shift <= 20; shift += 3) {
            QxDEdge* edge = lineTo(-100, shift - rise, 100, shift + rise);
            QxEdgeLabel* label = labelAt(edge, 0, 0, 60, 40);
            const bool moved = label->adjustOnOwnerOverlap() != 0;
            EXPECT_EQ(label->adjustOnOwnerOverlap(), 0) << rise << ' ' << shift;
            EXPECT_LE(std::abs(label->ntCenter().y()), 40) << rise << ' ' << shift;
            EXPECT_TRUE(moved || std::abs(shift) + std::abs(rise) * 3 / 10 >= 18);
            drawing.graph->discardEdge(edge);
        }
    }
}

TEST_F(EdgeLabelTest, SlideAlongTheSegmentUntilTheyTouchItOnTheirSide) {
    for (int angle = 0; angle < 360; ++angle) {
        for (const int side : {-1, 1}) {
            const double radians = angle * 3.141592653589793 / 180;
            const QxPoint a(0, 0);
            const QxPoint b(qx::floorHalfUp(1000 * std::cos(radians)),
                            qx::floorHalfUp(1000 * std::sin(radians)));
            QxDEdge* edge = lineTo(a.x(), a.y(), b.x(), b.y());
            const QxPoint start(b.x() / 2 - qx::floorHalfUp(side * 40 * std::sin(radians)),
                                b.y() / 2 + qx::floorHalfUp(side * 40 * std::cos(radians)));
            QxEdgeLabel* label = labelAt(edge, start.x(), start.y(), 60, 24);
            label->collectInitInfoOwnerEdgeMoved();
            label->updateOffsetOfEdgeLabelSmoothly(label->pFirstMoveInfo());
            label->cleanUpLabelMoveControlInfo();
            QxRect rect;
            label->ntBoundingRect(rect);
            double nearest = 1e9;
            for (const QxPoint& corner :
                 {rect.topLeft(), rect.bottomLeft(), rect.topRight(), rect.bottomRight()}) {
                nearest = std::min(nearest, side * distanceFromLine(corner, a, b));
            }
            EXPECT_NEAR(nearest, 0, 2.5) << angle << ' ' << side;
            EXPECT_LE(label->ntCenter().distance(QxPoint(b.x() / 2, b.y() / 2)), 75) << angle;
            drawing.graph->discardEdge(edge);
        }
    }
}

TEST_F(EdgeLabelTest, FollowTheirSegmentThroughAChangeOfThePath) {
    QxDEdge* edge = lineTo(0, 0, 300, 100);
    QxPNode* bend = drawing.addBend(edge, 100, 100);
    QxEdgeLabel* rides = labelAt(edge, 200, 110, 40, 20);
    QxEdgeLabel* stays = labelAt(edge, 200, 90, 40, 20);
    stays->moveLabelOnOwnerMove(0);
    for (QxEdgeLabel* label : {rides, stays}) {
        label->collectInitInfoOwnerEdgeMoved();
    }
    EXPECT_EQ(rides->pFirstMoveInfo()->side(), QxEdgeLabelLeftSide);
    EXPECT_EQ(rides->pFirstMoveInfo()->relation(), QxLabelInfoEdgeMoved::Touches);
    edge->pTargetNode()->ntMoveTo(1100, 100);
    drawing.addBend(edge, 1200, 900);  // after the segment
    for (QxEdgeLabel* label : {rides, stays}) {
        label->actOnLabelEdgeMoved();
        label->cleanUpLabelMoveControlInfo();
    }
    EXPECT_EQ(stays->ntCenter(), QxPoint(200, 90));
    const QxPEdge* segment = static_cast<QxPEdge*>(bend->pFirstOutEdge());
    EXPECT_EQ(rides->pPathEdgeOfAttachmentPoint(), segment);
    EXPECT_NEAR(rides->perMilOfAttachPointOnPathEdge(), 500, 8);
}

TEST_F(EdgeLabelTest, CenterInPairsAboutTheMiddle) {
    QxDEdge* edge = lineTo(0, 0, 1000, 0);
    QxEdgeLabelDList list;
    for (int i = 0; i < 24; ++i) {
        QxEdgeLabel* label = edge->addLabel(nullptr, 0);
        label->resize(100, 20, 1);
        list.appendLabel(label);
    }
    EXPECT_EQ(edge->centerLabels(&list), 1);
    const std::vector<int> places{500, 600, 400, 700, 300, 800, 200, 900, 100, 1000, 0, 510};
    for (std::size_t i = 0; i < 24; ++i) {
        const QxEdgeLabel* label = list.pLabelInPosition(static_cast<int>(i) + 1);
        EXPECT_EQ(label->ntCenter(), QxPoint(places[i / 2], i % 2 == 0 ? 10 : -10)) << i;
    }
    QxDEdge* slanted = lineTo(0, 0, 1000, 10);
    list.deleteAllCells();
    for (int i = 0; i < 6; ++i) {
        list.appendLabel(slanted->addLabel(nullptr, 0));
    }
    EXPECT_EQ(slanted->centerLabels(&list), 1);
    for (const QxEdgeLabel* label : QxEdgeLabelDListIter(&list)) {
        EXPECT_NEAR(std::abs(label->ntCenter().y() - label->ntCenter().x() * 0.01), 10, 1.5);
    }
}

TEST_F(EdgeLabelTest, BoundsFollowTheDrawnPartWithoutBeingAsked) {
    QxDEdge* edge =
        drawing.addEdge(drawing.addNode(0, 0, 100, 100), drawing.addNode(1000, 0, 0, 0));
    QxEdgeLabel* label = labelAt(edge, 60, 500, 10, 10);
    label->perMilDistanceFromSource(0);
    EXPECT_EQ(boundsOf(drawing.graph)[3], label->ntTop());
    edge->pSourceNode()->resize(100, 20, 1);
    edge->pSourceNode()->move(0, 70, 1);
    EXPECT_EQ(boundsOf(drawing.graph)[3], label->ntTop());
    edge->pSourceNode()->forceClipping(0);
    edge->clipSourceSide(0);
    drawing.graph->refreshGraphBounds();
    EXPECT_EQ(label->ntCenter().x(), label->ntOffsetX());
    EXPECT_EQ(boundsOf(drawing.graph)[3], label->ntTop());
    edge->disconnect();
    EXPECT_EQ(boundsOf(drawing.graph)[3], 80);
}

}  // namespace
