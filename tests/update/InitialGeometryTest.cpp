// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Single edges that follow a move, point by point.

#include <gtest/gtest.h>

#include "update/MovingWorld.h"

namespace {

using namespace qxtest;
using Points = std::vector<QxPoint>;

class FollowingEdge : public testing::Test {
protected:
    Points bends() const {
        Points places;
        for (const QxPNode* bend : pathBends(*edge)) {
            places.push_back(bend->iCenter());
        }
        return places;
    }
    void lay(const Points& points) {
        QxPointDList list;
        for (const QxPoint& point : points) {
            list.appendPoint(point);
        }
        edge->reroute(list, 1);
    }
    QxPEdge* segment(int index) const {
        QxPathIter part(edge);
        while (--index > 0) {
            ++part;
        }
        return part.pEdge();
    }
    /// Between calculated connectors on the facing sides of the nodes.
    void runAlongAxes() {
        edge->internalOrthogonalRouting(1);
        edge->repairOrthogonalRouting();
    }

    QxFactory factory;
    SmallDrawing drawing{factory};
    QxDNode* source = drawing.addNode(0, 0, 40, 40);
    QxDNode* target = drawing.addNode(300, 100, 40, 40);
    QxDEdge* edge = drawing.addEdge(source, target);
};

TEST_F(FollowingEdge, KeepsItsBendsButThoseThatTurnNowhere) {
    lay({{100, 0}, {100, 100}, {200, 101}});
    QxPNode* const first = pathBends(*edge)[0];
    drawing.events.take();
    target->moveTo(300, 200, 1);
    EXPECT_EQ(bends(), (Points{{100, 0}, {100, 100}, {200, 101}}));
    for (const HeardChange& change : drawing.events.take()) {
        EXPECT_TRUE(change.type == NodeMoved || change.type == GraphBoundsChanged) << change.type;
    }
    target->moveTo(300, 102, 1);
    EXPECT_EQ(bends(), (Points{{100, 0}, {100, 100}})) << "within 2 degrees";
    EXPECT_EQ(pathBends(*edge)[0], first);
}

TEST_F(FollowingEdge, KeepsToTheAxes) {
    runAlongAxes();
    ASSERT_EQ(bends().size(), 2u);
    const Points before = bends();
    QxPNode* const first = pathBends(*edge)[0];
    source->move(0, 30, 1);
    EXPECT_EQ(bends(), (Points{{before[0].x(), before[0].y() + 30}, before[1]}));
    EXPECT_EQ(pathBends(*edge)[0], first);
    EXPECT_TRUE(MovingWorld::isAlongAxes(*edge));
    target->resize(40, 120, 1);
    EXPECT_TRUE(MovingWorld::isAlongAxes(*edge));
}

TEST_F(FollowingEdge, StepsAsideInTheMiddleWhenItWasStraight) {
    target->ntMoveTo(300, 0);
    runAlongAxes();
    ASSERT_EQ(bends(), Points{});
    target->move(0, 50, 1);
    EXPECT_EQ(bends(), (Points{{150, 0}, {150, 50}}));
    EXPECT_EQ(edge->ntToPoint(0), QxPoint(280, 50));
    target->move(0, -50, 1);
    EXPECT_EQ(bends(), Points{});
}

TEST_F(FollowingEdge, CarriesTheBendsOfALoopAndLabelsThatStay) {
    QxDEdge* loop = drawing.addEdge(source, source);
    drawing.addBend(loop, -50, 60);
    drawing.addBend(loop, 50, 60);
    QxEdgeLabel* stays = edge->addLabel(L"stays", 0);
    stays->moveLabelOnOwnerMove(0);
    const QxPoint place = stays->ntCenter();
    source->move(7, 9, 1);
    EXPECT_EQ(pathBends(*loop)[0]->iCenter(), QxPoint(-43, 69));
    EXPECT_EQ(pathBends(*loop)[1]->iCenter(), QxPoint(57, 69));
    EXPECT_EQ(stays->ntCenter(), place);
}

TEST_F(FollowingEdge, ABendThatIsDraggedTakesItsNeighboursAlong) {
    runAlongAxes();
    lay({{80, edge->ntFromPoint(0).y()}, {80, 50}, {200, 50}, {200, edge->ntToPoint(0).y()}});
    QxPNode* const bend = pathBends(*edge)[1];
    const Points before = bends();
    ASSERT_EQ(bend->moveTo(95, 40, 1), 1);
    EXPECT_EQ(bends(), (Points{{95, before[0].y()}, {95, 40}, {200, 40}, before[3]}));
    EXPECT_EQ(pathBends(*edge)[1], bend);
    edge->internalOrthogonalRouting(0);
    source->discardAllConnectors();
    lay({{100, 50}, {200, 90}});
    pathBends(*edge)[0]->moveTo(100, 80, 1);
    EXPECT_EQ(bends(), (Points{{100, 80}, {200, 90}}));
    pathBends(*edge)[1]->moveTo(200, 160, 1);
    EXPECT_EQ(bends(), (Points{{200, 160}})) << "the other one has come to lie on the way";
}

TEST_F(FollowingEdge, ASegmentIsDraggedAcrossAndBack) {
    runAlongAxes();
    const Points before = bends();
    const QxPoint from = edge->ntFromPoint(0);
    QxAffectedObjectInfo drag;
    drag.init(segment(2));
    drag.actBeforeGeometryChange();
    ASSERT_NE(edge->pEdgeInitialGeometry(), nullptr);
    edge->pEdgeInitialGeometry()->moveBy(10, 7);
    EXPECT_EQ(bends(),
              (Points{{before[0].x() + 10, before[0].y()}, {before[1].x() + 10, before[1].y()}}));
    edge->pEdgeInitialGeometry()->moveBy(0, 0);
    EXPECT_EQ(bends(), before);
    drag.actAfterGeometryChange(0);
    EXPECT_EQ(edge->pEdgeInitialGeometry(), nullptr);
    EXPECT_EQ(edge->ntFromPoint(0), from);

    // The first segment, up beyond the node: the edge leaves the node sideways.
    QxAffectedObjectInfo up;
    up.init(segment(1));
    up.actBeforeGeometryChange();
    edge->pEdgeInitialGeometry()->moveBy(0, 60);
    up.actAfterGeometryChange(0);
    EXPECT_TRUE(MovingWorld::isAlongAxes(*edge));
    EXPECT_EQ(edge->ntFromPoint(0).y(), 20) << "through the top";
    EXPECT_EQ(edge->pInternalSourceConnector()->routingDirection(), QxDirectionUp);
}

TEST_F(FollowingEdge, GoesBackWithItsConnectors) {
    runAlongAxes();
    QxConnector* const connector = edge->pInternalSourceConnector();
    const QxSize offset = connector->ntOffset();
    const Points before = bends();
    edge->pEdgeInitialGeometry(new QxDEdgeInitialGeometry(edge));
    edge->discardAllBends();
    edge->pSourceConnector(nullptr);
    edge->pEdgeInitialGeometry()->restoreEdge();
    EXPECT_EQ(edge->pEdgeInitialGeometry(), nullptr);
    EXPECT_EQ(bends(), before);
    ASSERT_NE(edge->pInternalSourceConnector(), nullptr);
    EXPECT_EQ(edge->pInternalSourceConnector()->ntOffset(), offset);
    EXPECT_EQ(edge->pInternalSourceConnector()->routingDirection(), QxDirectionRight);
}

TEST_F(FollowingEdge, ParallelOnesAreSpreadAgain) {
    std::vector<QxDEdge*> bundle = {edge, drawing.addEdge(target, source),
                                    drawing.addEdge(source, target)};
    target->moveTo(300, 0, 1);
    std::set<std::int32_t> levels;
    for (const QxDEdge* one : bundle) {
        EXPECT_EQ(one->ntFromPoint(0).y(), one->ntToPoint(0).y());
        EXPECT_EQ(one->multiEdge(), 0);
        levels.insert(one->ntFromPoint(0).y());
    }
    EXPECT_EQ(levels.size(), 3u);
}

}  // namespace
