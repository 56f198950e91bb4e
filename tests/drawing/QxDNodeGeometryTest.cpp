// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <gmock/gmock.h>

#include "drawing/QxDNodeTestDrawing.h"
#include "support/TestRandom.h"

namespace {

using qxtest::boxOf;
using qxtest::HeardChange;
using qxtest::Ref;
using testing::ElementsAre;
using testing::IsEmpty;

class QxDNodeGeometry : public qxtest::NodeDrawing {
protected:
    /// The rectangle that a plain node of this place and size has.
    static QxRect rectAt(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height) {
        return {QxPoint(x, y), QxSize(width, height)};
    }
};

}  // namespace

TEST_F(QxDNodeGeometry, ANewNodeIsCenteredAtTheOriginAndClipsItsEdges) {
    const Ref<QxDNode> node(factory.qxNewDNode(&factory, 0));
    EXPECT_EQ(node->iCenter(), QxPoint(0, 0));
    EXPECT_EQ(node->iSize(), QxSize(40, 40));
    EXPECT_EQ(node->originalSize(), QxSize(40, 40));
    EXPECT_EQ(node->forceClipping(), 1);
    EXPECT_EQ(node->isFolderNode(), 0);
    EXPECT_EQ(node->pQueryShapeResource(), nullptr);
    EXPECT_EQ(node->pClonedNode(), nullptr);
    EXPECT_EQ(node->checkInvariants(), 1);
}

TEST_F(QxDNodeGeometry, TheRawMoveFiresOnceAndLeavesTheBoundsAlone) {
    QxDNode* node = place(0, 0, 10, 20);
    node->ntMoveTo(100, -50);
    EXPECT_EQ(node->iCenter(), QxPoint(100, -50));
    EXPECT_EQ(node->iSize(), QxSize(10, 20));
    EXPECT_EQ(bounds(), rectAt(0, 0, 10, 20));
    EXPECT_THAT(recorder.changes,
                ElementsAre(HeardChange{NodeMoved, node, boxOf(rectAt(0, 0, 10, 20)),
                                        boxOf(rectAt(100, -50, 10, 20))}));
    node->ntMoveTo(100, -50);
    EXPECT_THAT(heardTypes(), ElementsAre(NodeMoved, NodeMoved)) << "the raw move always tells";
    graph->calculateGraphBounds(0);
    EXPECT_EQ(bounds(), rectAt(100, -50, 10, 20));
}

TEST_F(QxDNodeGeometry, TheFullMoveKeepsTheBoundsAndIsSilentWithoutAChange) {
    QxDNode* node = place(0, 0, 10, 20);
    QxDEdge* edge = graph->addEdge(node, place(50, 0, 10, 10), 0);
    EXPECT_EQ(node->moveTo(0, 0, 1), 1);
    EXPECT_EQ(node->move(0, 0, 0), 1);
    EXPECT_THAT(heardTypes(), IsEmpty());
    EXPECT_EQ(node->moveTo(-30, 7, 0), 1);
    EXPECT_EQ(bounds(), QxRect(-35, -5, 55, 17));
    EXPECT_EQ(node->move(70, 0, 1), 1);
    EXPECT_EQ(bounds(), QxRect(35, -5, 55, 17)) << "bounds shrink, too";
    edge->addBend(edge->pSourceOrPathEdge(), QxPoint(500, 0), 1);
    node->moveTo(-30, 7, 1);
    EXPECT_EQ(bounds(), QxRect(-35, -5, 500, 17));
    EXPECT_THAT(heardTypes(), ElementsAre(NodeMoved, NodeMoved, NodeMoved));
}

TEST_F(QxDNodeGeometry, ReshapingMovesAndResizesWhenItChangesAnything) {
    QxDNode* node = place(0, 0, 10, 10);
    node->updateForDiagramming(rectAt(0, 0, 10, 10));
    EXPECT_THAT(heardTypes(), IsEmpty());
    node->updateForDiagramming(rectAt(0, 0, 30, 11));
    EXPECT_THAT(recorder.takeTypes(), ElementsAre(NodeResized, NodeMoved)) << "the center stays";
    node->updateForDiagramming(rectAt(5, 5, 30, 11));
    EXPECT_THAT(recorder.takeTypes(), ElementsAre(NodeMoved));
    node->updateForDiagramming(rectAt(9, 4, 6, 7));
    EXPECT_THAT(recorder.takeTypes(), ElementsAre(NodeResized, NodeMoved));
    EXPECT_EQ(*node->pIRect(), rectAt(9, 4, 6, 7));
    EXPECT_EQ(bounds(), rectAt(9, 4, 6, 7));
    node->updateForDiagramming(QxRect(10, 10, -10, -10));
    EXPECT_EQ(node->iSize(), QxSize(0, 0)) << "an inverted rectangle has no size";
}

TEST_F(QxDNodeGeometry, TheFullResizeKeepsTheCenterAndTheBounds) {
    QxDNode* node = place(5, 5, 10, 10);
    EXPECT_EQ(node->resize(10, 10, 0), 1);
    EXPECT_THAT(heardTypes(), IsEmpty());
    EXPECT_EQ(node->resize(21, 30, 0), 1);
    EXPECT_EQ(node->iCenter(), QxPoint(5, 5));
    EXPECT_EQ(*node->pIRect(), QxRect(-5, -10, 16, 20)) << "the odd unit lies to the right";
    EXPECT_EQ(bounds(), *node->pIRect());
    EXPECT_EQ(node->originalSize(), QxSize(21, 30));
    EXPECT_THAT(recorder.changes,
                ElementsAre(HeardChange{NodeResized, node, boxOf(rectAt(5, 5, 10, 10)),
                                        boxOf(QxRect(-5, -10, 16, 20))}));
    EXPECT_EQ(node->resize(-7, 0, 1), 1);
    EXPECT_EQ(*node->pIRect(), QxRect(5, 5, 5, 5));
    EXPECT_EQ(node->originalSize(), QxSize(0, 0));
    EXPECT_EQ(node->resize(-1, -1, 1), 1);
    EXPECT_EQ(heardTypes().size(), 2U) << "both sizes count as 0";
}

TEST_F(QxDNodeGeometry, OnlyTheLastSizeOutsideFileReadingIsTheOriginalOne) {
    QxDNode* node = place(0, 0, 30, 20);
    graph->fileReadRunning(1);
    node->ntResize(90, 80);
    EXPECT_EQ(node->iSize(), QxSize(90, 80));
    EXPECT_EQ(node->originalSize(), QxSize(30, 20));
    graph->fileReadRunning(0);
    node->internalResize(50, 50);
    EXPECT_EQ(node->iSize(), QxSize(50, 50));
    EXPECT_EQ(node->originalSize(), QxSize(30, 20));
    EXPECT_EQ(node->originalHeight(7), 7);
    node->ntResize(50, 50);
    EXPECT_EQ(node->originalSize(), QxSize(50, 50));
    EXPECT_THAT(heardTypes(), ElementsAre(NodeResized, NodeResized)) << "the last kept the size";
}

TEST_F(QxDNodeGeometry, DetachedAndInvisibleNodesChangeOnlyInTheirOwnCoordinates) {
    const Ref<QxDNode> detached(factory.qxNewDNode(graph, 0));
    EXPECT_EQ(detached->moveTo(5, 5, 0), 0);
    EXPECT_EQ(detached->resize(9, 9, 0), 0);
    EXPECT_EQ(detached->within(QxPoint(0, 0), 0), 0);
    QxRect rect;
    EXPECT_EQ(detached->getBoundingRectWithConnectors(rect, 0), 0);
    EXPECT_EQ(*detached->pIRect(), rectAt(0, 0, 40, 40));
    EXPECT_EQ(detached->moveTo(5, 5, 1), 1);
    EXPECT_EQ(detached->resize(9, 9, 1), 1);
    EXPECT_EQ(detached->getBoundingRectWithSubObjects(rect, 1, 1, 1, 1), 1);
    EXPECT_EQ(rect, rectAt(5, 5, 9, 9));

    QxDNode* unseen = manager->addGraph(0)->addNode(0);
    ASSERT_EQ(unseen->isVisible(), 0);
    EXPECT_EQ(unseen->moveTo(5, 5, 0), 0);
    EXPECT_EQ(unseen->resize(9, 9, 0), 0);
    EXPECT_EQ(unseen->getBoundingRectWithConnectors(rect, 0), 0);
    QxPoint point(1, 1);
    unseen->moveOutside(point, QxDirectionLeft, 0);
    EXPECT_EQ(point, QxPoint(1, 1));
    EXPECT_EQ(unseen->intersectsSegment(point, QxPoint(100, 0), 0), 0);
    EXPECT_EQ(*unseen->pIRect(), rectAt(0, 0, 40, 40));
    EXPECT_THAT(heardTypes(), IsEmpty());
}

TEST_F(QxDNodeGeometry, ExtremePlacesAndSizesAreClamped) {
    QxDNode* node = place(0, 0, 10, 10);
    for (const std::int32_t extreme : {qx::MinInt32, qx::MaxInt32}) {
        node->ntMoveTo(extreme, extreme);
        EXPECT_EQ(node->checkInvariants(), 1);
        EXPECT_TRUE(node->iX() >= qx::MaxInt32 - 5 || node->iX() <= qx::MinInt32 + 5);
        node->move(extreme, extreme, 0);
        EXPECT_EQ(node->checkInvariants(), 1);
        node->resize(extreme, qx::MaxInt32, 0);
        EXPECT_EQ(node->checkInvariants(), 1);
        node->moveTo(0, 0, 0);
        EXPECT_EQ(node->checkInvariants(), 1);
    }
    node->updateForDiagramming(QxRect(qx::MinInt32, qx::MinInt32, qx::MaxInt32, qx::MaxInt32));
    EXPECT_EQ(node->iWidth(), qx::MaxInt32);
    node->updateForDiagramming(rectAt(3, 4, 10, 12));
    EXPECT_EQ(*node->pIRect(), rectAt(3, 4, 10, 12));
    EXPECT_EQ(bounds(), rectAt(3, 4, 10, 12));
}

TEST_F(QxDNodeGeometry, AMoveToTheEndOfTheRangeKeepsTheSize) {
    QxDNode* node = place(0, 0, 40, 40);
    node->moveTo(qx::MaxInt32, 0, 1);
    EXPECT_EQ(*node->pIRect(), QxRect(qx::MaxInt32 - 40, -20, qx::MaxInt32, 20));
    EXPECT_EQ(bounds(), *node->pIRect());
    EXPECT_THAT(recorder.takeTypes(), ElementsAre(NodeMoved));
    node->moveTo(qx::MaxInt32, 0, 1);
    EXPECT_THAT(heardTypes(), IsEmpty()) << "it is as near as it can be";
    node->ntMoveTo(3, qx::MinInt32);
    EXPECT_EQ(*node->pIRect(), QxRect(-17, qx::MinInt32, 23, qx::MinInt32 + 40));
    node->moveTo(0, 0, 1);
    EXPECT_EQ(*node->pIRect(), rectAt(0, 0, 40, 40));
    EXPECT_EQ(node->originalSize(), QxSize(40, 40));

    const QxRect corner(qx::MaxInt32 - 10, qx::MinInt32, qx::MaxInt32, qx::MinInt32 + 10);
    node->updateForDiagramming(corner);
    EXPECT_EQ(*node->pIRect(), corner);
    node->resize(41, 7, 1);
    EXPECT_EQ(node->iSize(), QxSize(41, 7));
    node->updateForDiagramming(corner);
    QxDNode* copy = place(0, 0, 40, 40);
    copy->copyAttributes(node);
    EXPECT_EQ(*copy->pIRect(), corner);
    node->updateForDiagramming(rectAt(0, 0, 40, 40));
    EXPECT_EQ(*node->pIRect(), rectAt(0, 0, 40, 40));
    EXPECT_EQ(*place(qx::MaxInt32 - 5, qx::MinInt32 + 5, 10, 10)->pIRect(), corner);
}

TEST_F(QxDNodeGeometry, BendsStayInTheBoundsWhileTheEndsMove) {
    const std::uint32_t seed = qxtest::testSeed(11);
    SCOPED_TRACE(qxtest::seedTrace(seed));
    qxtest::TestRandom random(seed);
    const auto coordinate = [&] { return random.below(400) - 200; };
    const std::vector<QxDNode*> nodes{place(0, 0, 20, 20), place(90, 0, 20, 20)};
    QxDEdge* edge = graph->addEdge(nodes[0], nodes[1], 0);
    for (int i = 0; i < 30; ++i) {
        edge->addBendAfter(nullptr, QxPoint(coordinate() / 2, coordinate() / 2), 1);
    }
    for (int round = 0; round < 200; ++round) {
        QxDNode* node = random.pick(nodes);
        switch (random.below(4)) {
            case 0:
                node->resize(random.below(300), random.below(300), 1);
                break;
            case 1:
                edge->discardBends(1, random.below(2));
                edge->addBendAfter(nullptr, QxPoint(coordinate() / 2, coordinate() / 2), 1);
                break;
            default:
                node->moveTo(coordinate(), coordinate(), random.below(2));
        }
        QxRect expected;
        ASSERT_TRUE(qxtest::walkBounds(*graph, expected));
        ASSERT_EQ(bounds(), expected) << "round " << round;
        QxPoint seen = edge->ntFromPoint(1);
        edge->updateVisiblePart();
        edge->invalidateEndPoints();
        ASSERT_EQ(seen, edge->ntFromPoint(1)) << "round " << round;
    }
}

TEST_F(QxDNodeGeometry, AStoredPlaceIsRestoredOnce) {
    QxDNode* node = place(3, 4, 10, 10);
    node->restoreMovedNode();
    EXPECT_THAT(heardTypes(), IsEmpty()) << "nothing was stored";
    node->storeMovedNode();
    node->moveTo(100, 100, 1);
    node->resize(30, 30, 1);
    node->restoreMovedNode();
    EXPECT_EQ(*node->pIRect(), rectAt(3, 4, 30, 30));
    EXPECT_EQ(node->pRectBeforeMove(), nullptr);
}

TEST_F(QxDNodeGeometry, EveryChangeOfAnEndIsSeenByItsEdges) {
    QxDNode* from = place(0, 0, 10, 10);
    QxDNode* to = place(100, 0, 10, 10);
    QxDEdge* edge = graph->addEdge(from, to, 0);
    graph->needsUpdateGraphBounds(0);  // no record that is interested, so no reports
    EXPECT_EQ(edge->ntFromPoint(1), QxPoint(5, 0));
    from->ntResize(20, 20);
    EXPECT_EQ(edge->ntFromPoint(1), QxPoint(10, 0));
    from->internalResize(30, 30);
    EXPECT_EQ(edge->ntFromPoint(1), QxPoint(15, 0));
    from->ntMoveTo(20, 0);
    EXPECT_EQ(edge->ntFromPoint(1), QxPoint(35, 0));
    to->moveTo(200, 0, 1);
    EXPECT_EQ(edge->ntToPoint(1), QxPoint(195, 0));
    to->ntMoveTo(20, 200);
    EXPECT_EQ(edge->ntFromPoint(1), QxPoint(20, 15)) << "the other end is clipped anew, too";
    edge->clipSourceSide(0);
    edge->updateVisiblePart();
    ASSERT_EQ(edge->isUpdatedVisiblePart(), 1);
    from->forceClipping(0);
    EXPECT_EQ(edge->isUpdatedVisiblePart(), 0);
    EXPECT_EQ(edge->ntFromPoint(1), QxPoint(20, 0));
    from->forceClipping(1);
    EXPECT_EQ(edge->ntFromPoint(1), QxPoint(20, 15));
    to->ntMoveTo(20, -200);
    EXPECT_EQ(edge->ntFromPoint(1), QxPoint(20, -15));
    const QxShape narrow = qxtest::polygon({{0, 0}, {5, 1}, {10, 0}, {5, 10}});
    from->pShape(&narrow, 1);
    EXPECT_EQ(edge->ntFromPoint(1).x(), 20);
    EXPECT_GT(edge->ntFromPoint(1).y(), -15) << "the notch at the bottom of the shape";
}

TEST_F(QxDNodeGeometry, BoundsFollowNodesBetweenGraphs) {
    QxDGraph* other = manager->addGraph(0);
    QxDNode* node = place(0, 0, 10, 10);
    place(50, 50, 10, 10);
    graph->removeNode(node);
    EXPECT_EQ(bounds(), rectAt(50, 50, 10, 10));
    node->ntMoveTo(-80, 0);
    EXPECT_EQ(bounds(), rectAt(50, 50, 10, 10)) << "a detached node counts nowhere";
    other->insertNode(node);
    QxRect rect;
    EXPECT_EQ(other->calculateGraphBounds(rect), 1);
    EXPECT_EQ(rect, rectAt(-80, 0, 10, 10));
    EXPECT_EQ(graph->transferTopology(other), 1);
    EXPECT_EQ(other->calculateGraphBounds(rect), 0);
    EXPECT_EQ(graph->calculateGraphBounds(rect), 1);
    EXPECT_EQ(rect, QxRect(-85, -5, 55, 55));
    node->vAddRef();
    graph->discardNode(node);
    EXPECT_EQ(bounds(), rectAt(50, 50, 10, 10));
    EXPECT_EQ(node->checkInvariants(), 1);
    node->vRelease();
    graph->pFirstNode()->vRelease();
    EXPECT_EQ(graph->numberOfNodes(), 0) << "a node that is destroyed leaves its graph";
    EXPECT_EQ(graph->calculateGraphBounds(rect), 0);
}

TEST_F(QxDNodeGeometry, RandomChangesKeepBoundsEqualToTheUnion) {
    const std::uint32_t seed = qxtest::testSeed(7);
    SCOPED_TRACE(qxtest::seedTrace(seed));
    qxtest::TestRandom random(seed);
    const auto coordinate = [&] { return random.below(400) - 200; };
    for (int i = 0; i < 8; ++i) {
        place(coordinate(), coordinate(), random.below(60), random.below(60));
    }
    const auto nodes = qxtest::objectsOf<QxDNode>(*graph->pNodeList());
    for (int i = 0; i < 8; ++i) {
        graph->addEdge(random.pick(nodes), random.pick(nodes), 0);
    }
    for (int round = 0; round < 400; ++round) {
        QxDNode* node = random.pick(nodes);
        switch (random.below(4)) {
            case 0:
                node->moveTo(coordinate(), coordinate(), random.below(2));
                break;
            case 1:
                node->resize(random.below(90) - 10, random.below(90), random.below(2));
                break;
            case 2:
                node->updateForDiagramming(
                    rectAt(coordinate(), coordinate(), random.below(50), random.below(50)));
                break;
            default:
                node->forceClipping(random.below(2));
        }
        QxRect expected;
        graph->calculateNodeBoundsWithLabelsAndConnectors(expected);
        ASSERT_EQ(bounds(), expected) << "round " << round;
        ASSERT_EQ(graph->checkInvariants(), 1) << "round " << round;
    }
}
