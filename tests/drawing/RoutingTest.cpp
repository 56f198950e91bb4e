// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <gtest/gtest.h>

#include "drawing/DrawingTesting.h"
#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxConnectorManager.h"
#include "qx/drawing/QxEdgeCoordinateSort.h"
#include "qx/drawing/QxPEdge.h"
#include "qx/drawing/QxPNode.h"

namespace {

using namespace qxtest;
class Routing : public testing::Test {
protected:
    QxFactory factory;
    SmallDrawing drawing{factory};
};

TEST_F(Routing, AStraightEdgeBecomesAStepBetweenTheOutlines) {
    QxDEdge* edge =
        drawing.addEdge(drawing.addNode(0, 0, 20, 20), drawing.addNode(100, 50, 20, 20));
    edge->repairOrthogonalRouting();
    EXPECT_EQ(edge->hasBends(), 0) << "nobody asked for it";
    edge->internalOrthogonalRouting(1);
    EXPECT_EQ(edge->orthogonalRouting(), 0);
    edge->repairOrthogonalRouting();
    EXPECT_EQ(pathOf(*edge), (Points{{10, 5}, {50, 5}, {50, 45}, {90, 45}}));
    EXPECT_EQ(edge->pInternalSourceConnector()->routingDirection(), QxDirectionRight);
    EXPECT_EQ(edge->pInternalTargetConnector()->routingDirection(), QxDirectionLeft);
    EXPECT_EQ(edge->orthogonalRouting(), 1);

    drawing.events.take();
    edge->repairOrthogonalRouting();
    EXPECT_TRUE(drawing.events.take().empty()) << "nothing was left to repair";
    drawing.graph->orthogonalRouting(0);
    EXPECT_EQ(edge->internalOrthogonalRouting(), 0);
    EXPECT_EQ(edge->orthogonalRouting(), 0) << "it need not run so, though it does";
}

TEST_F(Routing, BendsInsideANodeGoAndItsEndFollows) {
    QxDEdge* edge = drawing.addEdge(drawing.addNode(0, 0, 40, 40), drawing.addNode(200, 0, 40, 40));
    drawing.addBend(edge, 10, 0);
    drawing.addBend(edge, 10, 60);
    drawing.addBend(edge, 200, 60);
    drawing.graph->orthogonalRouting(1);
    edge->repairOrthogonalRouting();
    EXPECT_EQ(pathOf(*edge), (Points{{10, 20}, {10, 60}, {200, 60}, {200, 20}}));
    EXPECT_EQ(edge->pInternalSourceConnector()->routingDirection(), QxDirectionUp);
}

TEST_F(Routing, EdgesPlacedOnASideShareItsGaps) {
    QxDNode* node = drawing.addNode(0, 0, 400, 40);
    QxDNode* other = drawing.addNode(0, 300);
    QxPEdgeDList placed;
    QxPEdgeDList added;
    std::vector<QxConnector*> connectors;
    for (const int offset : {0, 100, 130}) {
        QxDEdge* edge = drawing.addEdge(node, other);
        connectors.push_back(node->ntAddConnector(0, 0, offset, 20));
        placed.appendEdge(edge->pSourceOrPathEdge());
        edge->pSourceOrPathEdge()->pIUserField(connectors.back());
        added.appendEdge(edge->pTargetOrPathEdge());
    }
    node->computeDistributionInOrthogonalMove(QxSideTop, &placed, &added);
    std::vector<int> counts;
    for (QxConnector* connector : connectors) {
        auto* counter = static_cast<QxSize*>(connector->pIUserField());
        counts.push_back(counter->width());
        connector->pIUserField(nullptr);
        delete counter;
    }
    EXPECT_EQ(counts, (std::vector<int>{3, 0, 0}));
    for (QxPEdge* segment : objectsOf<QxPEdge>(placed)) {
        segment->pIUserField(nullptr);
    }
}

TEST_F(Routing, EdgesAreSortedByTheirCoordinates) {
    QxDNode* center = drawing.addNode(0, 0, 0, 0);
    const auto edgeTo = [&](int x, int y) {
        return drawing.addEdge(center, drawing.addNode(x, y, 0, 0));
    };
    QxDEdge* left = edgeTo(-40, 0);
    QxDEdge* rightLow = edgeTo(40, -40);
    QxDEdge* rightHigh = edgeTo(40, 40);
    QxDEdgeDList list;
    for (QxDEdge* edge : {rightLow, left, rightHigh}) {
        list.appendEdge(edge);
    }
    QxEdgeCoordinateSort sort;
    sort.sortCoordinate(QxSortByXThenY);
    sort.secondSortType(QxSortDescending);
    for (const auto point : {QxSortByMiddle, QxSortByUnclippedMiddle, QxSortByTo,
                             QxSortByToThenFrom, QxSortByMiddleThenEnds}) {
        QxEdgeCoordinateSort copy(sort);
        copy.sortEdgePoint(point);
        copy.quickSort(&list, 0);
        EXPECT_EQ(objectsOf<QxDEdge>(list), (std::vector<QxDEdge*>{left, rightHigh, rightLow}));
    }
    // The lower left corners: (-40, 0), (0, 0), (0, -40).
    sort.sortType(QxSortAscending);
    sort.sortEdgePoint(QxSortByLeastThenGreatest);
    sort.quickSort(&list, 0);
    EXPECT_EQ(objectsOf<QxDEdge>(list), (std::vector<QxDEdge*>{left, rightLow, rightHigh}));
    sort.firstSortType(QxSortDescending);
    EXPECT_EQ(sort.sortType(), QxSortDescending);
    EXPECT_EQ(sort.secondSortFactor(), 1);
    sort.quickSort(&list, 0);
    EXPECT_EQ(objectsOf<QxDEdge>(list), (std::vector<QxDEdge*>{rightLow, rightHigh, left}));
}

TEST_F(Routing, ParallelEdgesLieASpacingApart) {
    QxDNode* a = drawing.addNode(0, 0, 40, 100);
    QxDNode* b = drawing.addNode(300, 0, 40, 100);
    drawing.graph->diagrammingMultiEdgeSpacing(10);
    std::vector<QxDEdge*> edges;
    for (int i = 0; i < 3; ++i) {
        edges.push_back(i == 1 ? drawing.addEdge(b, a) : drawing.addEdge(a, b));
    }
    const auto heights = [&] {
        std::vector<int> found;
        for (const QxDEdge* edge : edges) {
            EXPECT_EQ(edge->ntFromPoint(0).y(), edge->ntToPoint(0).y());
            found.push_back(edge->ntFromPoint(0).y());
        }
        return found;
    };
    drawing.addBend(edges[0], 150, 80);
    drawing.graph->reorganizeMultiEdges(QxMultiEdgeUntouched);
    EXPECT_EQ(edges[0]->numberOfBends(), 1);
    drawing.graph->reorganizeMultiEdges(QxMultiEdgeParallel);
    EXPECT_EQ(heights(), (std::vector<int>{0, -10, 10}));
    EXPECT_EQ(edges[0]->pInternalSourceConnector()->ntOffset(), QxSize(20, 0));
    EXPECT_EQ(edges[1]->pInternalSourceConnector()->routingDirection(), QxDirectionLeft);

    edges.push_back(drawing.addEdge(a, b));
    const QxConnector* first = edges[0]->pInternalSourceConnector();
    drawing.graph->reorganizeMultiEdges(QxMultiEdgeParallel);
    EXPECT_EQ(heights(), (std::vector<int>{5, -5, 15, -15}));
    EXPECT_EQ(edges[0]->pInternalSourceConnector(), first) << "it has only moved";
    EXPECT_EQ(a->numberOfAllConnectors(), 4);

    drawing.graph->reorganizeMultiEdges(QxMultiEdgeOverlap);
    EXPECT_EQ(heights(), (std::vector<int>{0, 0, 0, 0}));
    EXPECT_EQ(a->numberOfAllConnectors(), 0);
    a->resize(40, 0, 1);
    drawing.graph->reorganizeMultiEdges(QxMultiEdgeParallel);
    EXPECT_EQ(edges[0]->multiEdgeSpacingForParallelBundles(4), -1);
    EXPECT_EQ(a->numberOfAllConnectors(), 0) << "there is no room";
}

TEST_F(Routing, BentEdgesStandToBothSides) {
    QxDNode* a = drawing.addNode(0, 0, 20, 20);
    QxDNode* b = drawing.addNode(0, 200, 20, 20);
    std::vector<QxDEdge*> edges;
    for (int i = 0; i < 3; ++i) {
        edges.push_back(drawing.addEdge(a, b));
    }
    drawing.graph->diagrammingMultiEdgeSpacing(12);
    const auto bendsOf = [&] {
        Points bends;
        for (const QxDEdge* edge : edges) {
            bends.push_back(pathOf(*edge)[1]);
        }
        return bends;
    };
    drawing.graph->reorganizeMultiEdges(QxMultiEdgeOneBend);
    EXPECT_EQ(bendsOf(), (Points{{0, 100}, {12, 100}, {-12, 100}}));
    edges.push_back(drawing.addEdge(b, a));
    drawing.graph->reorganizeMultiEdges(QxMultiEdgeOneBend);
    EXPECT_EQ(bendsOf(), (Points{{12, 100}, {-12, 100}, {24, 100}, {-24, 100}}));
}

TEST_F(Routing, EdgesIntoAnEnclosingNodeRunStraightOn) {
    QxDNode* outer = drawing.addNode(0, 0, 400, 400);
    QxDNode* inner = drawing.addNode(100, 0, 40, 40);
    QxDEdge* out = drawing.addEdge(outer, inner);
    QxDEdge* in = drawing.addEdge(inner, outer);
    drawing.graph->reorganizeMultiEdges(QxMultiEdgeParallel);
    EXPECT_EQ(pathOf(*out), (Points{{200, 4}, {120, 4}}));
    EXPECT_EQ(pathOf(*in), (Points{{120, -4}, {200, -4}}));
}

TEST_F(Routing, SelfLoopsStandAboveTheirNodeOneWithinTheOther) {
    QxDNode* node = drawing.addNode(0, 0, 120, 40);
    const QxShape oval(QxShapeTypeOval);
    QxDEdge* fixed = drawing.addEdge(node, node);
    QxConnector* connector = node->addConnector(1000, 0, 0, 0, 1, 0);
    fixed->pSourceConnector(connector);
    QxDEdge* inner = drawing.addEdge(node, node);
    QxDEdge* outer = drawing.addEdge(node, node);
    drawing.graph->diagrammingMultiEdgeSpacing(8);
    drawing.graph->reorganizeReflexiveEdges();
    EXPECT_EQ(pathOf(*inner), (Points{{15, 20}, {15, 39}, {-15, 39}, {-15, 20}}));
    EXPECT_EQ(pathOf(*outer), (Points{{30, 20}, {30, 43}, {-30, 43}, {-30, 20}}));
    EXPECT_EQ(inner->pInternalSourceConnector()->routingDirection(), QxDirectionUp);
    EXPECT_EQ(fixed->hasBends(), 0);

    node->pShape(&oval, 0);
    node->reorganizeReflexiveEdges();
    EXPECT_LT(pathOf(*outer).front().y(), 20) << "it ends on the outline";
    EXPECT_EQ(pathOf(*outer)[1], QxPoint(30, 43));
    drawing.graph->orthogonalRouting(1);
    const Points before = pathOf(*outer);
    outer->repairOrthogonalRouting();
    EXPECT_EQ(pathOf(*outer), before) << "it runs along the axes already";
}

TEST_F(Routing, AChangeOfShapeUnderControlSpreadsTheBundleAgain) {
    QxDNode* a = drawing.addNode(0, 0, 40, 100);
    QxDNode* b = drawing.addNode(300, 0, 40, 100);
    QxDEdge* edges[] = {drawing.addEdge(a, b), drawing.addEdge(a, b)};
    drawing.graph->reorganizeMultiEdges(QxMultiEdgeParallel);
    drawing.manager->controlStarted(1);
    const QxShape oval(QxShapeTypeOval);
    a->pShape(&oval, 0);
    for (const QxDEdge* edge : edges) {
        EXPECT_EQ(oval.onBoundary(edge->ntFromPoint(0), a->iCenter(), a->iSize()), 1);
        EXPECT_EQ(edge->marked(), 0);
    }
    EXPECT_EQ(edges[0]->ntFromPoint(0).y() - edges[1]->ntFromPoint(0).y(), 8);
}

TEST_F(Routing, OnlyStraightUnboundEdgesFormAStraightBundle) {
    QxDNode* a = drawing.addNode(0, 0);
    QxDNode* b = drawing.addNode(100, 0);
    QxDEdge* straight = drawing.addEdge(a, b);
    QxDEdge* reversed = drawing.addEdge(b, a);
    drawing.addBend(drawing.addEdge(a, b), 50, 50);
    drawing.addEdge(a, b)->pSourceConnector(a->addConnector(1000, 0, 0, 0, 1, 0));
    drawing.addEdge(a, b)->internalOrthogonalRouting(1);
    drawing.addEdge(a, b)->disconnect();
    QxDEdgeDList list;
    straight->collectStraightMultiEdges(&list);
    EXPECT_EQ(objectsOf<QxDEdge>(list), (std::vector<QxDEdge*>{straight, reversed}));
    drawing.graph->discardEdge(reversed);
    straight->collectStraightMultiEdges(&list);
    EXPECT_EQ(list.count(), 0);
}

}  // namespace
