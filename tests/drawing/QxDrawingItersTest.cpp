// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/drawing/QxDrawingIters.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "drawing/DrawingTesting.h"
#include "qx/drawing/QxPathObjectIters.h"

namespace {

using namespace qxtest;
using testing::ElementsAre;
using testing::IsEmpty;

template <class Iter>
auto walk(Iter iter) {
    std::vector<typename Iter::Element*> visited;
    for (; iter; ++iter) {
        visited.push_back(iter.pElement());
    }
    EXPECT_EQ(iter.pElement(), nullptr);
    return visited;
}

/// a -> b, b -> a, a loop at a, c -> a; then one disconnected and one deactivated a -> b.
class QxDrawingIters : public testing::Test {
protected:
    QxDrawingIters() {
        disconnected->disconnect();
        deactivated->deactivate();
    }

    QxFactory factory;
    SmallDrawing drawing{factory};
    QxDNode* a = drawing.addNode(0, 0);
    QxDNode* b = drawing.addNode(100, 0);
    QxDNode* c = drawing.addNode(0, 100);
    QxDEdge* ab = drawing.addEdge(a, b);
    QxDEdge* ba = drawing.addEdge(b, a);
    QxDEdge* loop = drawing.addEdge(a, a);
    QxDEdge* ca = drawing.addEdge(c, a);
    QxDEdge* disconnected = drawing.addEdge(a, b);
    QxDEdge* deactivated = drawing.addEdge(a, b);
};

TEST_F(QxDrawingIters, WalkWhatAGraphLists) {
    EXPECT_THAT(walk(QxDNodeIter(drawing.graph)), ElementsAre(a, b, c));
    EXPECT_THAT(walk(QxDNodeIter(drawing.graph, QxIterBackward)), ElementsAre(c, b, a));
    EXPECT_THAT(walk(QxDEdgeIter(drawing.graph)), ElementsAre(ab, ba, loop, ca));
    EXPECT_THAT(walk(QxDisconnectedDEdgeIter(drawing.graph)), ElementsAre(disconnected));
    EXPECT_THAT(walk(QxDeactivatedDEdgeIter(drawing.graph)), ElementsAre(deactivated));
    QxDListCell* second = drawing.graph->pNodeList()->pFirstCell()->pNextCell();
    EXPECT_THAT(walk(QxDNodeIter(drawing.graph, second)), ElementsAre(b, c));
    EXPECT_THAT(walk(QxDNodeIter(drawing.graph, second, QxIterBackward)), ElementsAre(b, a));
    QxDGraph* other = drawing.manager->addGraph(0);
    EXPECT_THAT(walk(QxDGraphIter(drawing.manager.get(), QxIterBackward)),
                ElementsAre(other, drawing.graph));
}

TEST_F(QxDrawingIters, WalkTheEdgesAtANodeAndTheirFarEnds) {
    EXPECT_THAT(walk(QxInDEdgeIter(a)), ElementsAre(ba, loop, ca));
    EXPECT_THAT(walk(QxOutDEdgeIter(a)), ElementsAre(ab, loop));
    EXPECT_THAT(walk(QxInAndOutDEdgeIter(a)), ElementsAre(ba, loop, ca, ab, loop));
    EXPECT_THAT(walk(QxInDNodeIter(a)), ElementsAre(b, a, c));
    EXPECT_THAT(walk(QxOutDNodeIter(a)), ElementsAre(b, a));
    EXPECT_THAT(walk(QxInAndOutDNodeIter(a)), ElementsAre(b, a, c, b, a));
    EXPECT_THAT(walk(QxInGNodeIter(a)), ElementsAre(b, a, c));
    EXPECT_THAT(walk(QxOutGNodeIter(a)), ElementsAre(b, a));
    EXPECT_THAT(walk(QxInAndOutGNodeIter(a)), ElementsAre(b, a, c, b, a));
    EXPECT_THAT(walk(QxDisconnectedInAndOutDEdgeIter(b)), ElementsAre(disconnected));
    EXPECT_THAT(walk(QxDeactivatedInAndOutDEdgeIter(b)), ElementsAre(deactivated));
    EXPECT_THAT(walk(QxInDEdgeIter(c)), IsEmpty());
    EXPECT_THAT(walk(QxInAndOutDNodeIter(c)), ElementsAre(a));
}

TEST_F(QxDrawingIters, WalkTheSegmentsAtDrawingNodesAndBends) {
    QxPEdge* last = ca->pTargetOrPathEdge();
    QxPNode* bend = drawing.addBend(ca, 50, 50);
    QxPEdge* first = ca->pSourceOrPathEdge();
    last = ca->pTargetOrPathEdge();
    ASSERT_NE(first, last);
    EXPECT_THAT(walk(QxInPEdgeIter(bend)), ElementsAre(first));
    EXPECT_THAT(walk(QxOutPEdgeIter(bend)), ElementsAre(last));
    EXPECT_THAT(walk(QxInAndOutPEdgeIter(bend)), ElementsAre(first, last));
    EXPECT_THAT(walk(QxInPEdgeIter(a)),
                ElementsAre(ba->pTargetOrPathEdge(), loop->pTargetOrPathEdge(), last));
    EXPECT_THAT(walk(QxOutPEdgeIter(c)), ElementsAre(first));
    EXPECT_THAT(walk(QxInGNodeIter(bend)), ElementsAre(c));
    EXPECT_THAT(walk(QxInAndOutGNodeIter(bend)), ElementsAre(c, a));
}

TEST_F(QxDrawingIters, WalkThePathsOfAllConnectedEdges) {
    QxPNode* second = ba->addBend(ba->pSourceOrPathEdge(), QxPoint(50, 60), 1);
    QxPNode* first = ba->addBend(ba->pSourceOrPathEdge(), QxPoint(60, 50), 1);
    QxPNode* last = ca->addBend(ca->pSourceOrPathEdge(), QxPoint(-50, 50), 1);
    disconnected->connect();
    disconnected->addBend(disconnected->pSourceOrPathEdge(), QxPoint(1, 1), 1);
    disconnected->disconnect();
    std::vector<QxPNode*> bends;
    for (QxPNodeIter it(drawing.graph); it; ++it) {
        bends.push_back(it.pNode());
    }
    EXPECT_THAT(bends, ElementsAre(first, second, last));
    std::vector<QxPEdge*> segments;
    for (QxPEdgeIter it(drawing.graph, QxIterBackward); it; ++it) {
        segments.push_back(it.pEdge());
    }
    EXPECT_EQ(segments.size(), 7U);
    EXPECT_EQ(segments.front(), ca->pSourceOrPathEdge());
    EXPECT_EQ(segments.back(), ab->pTargetOrPathEdge());
    EXPECT_FALSE(static_cast<bool>(QxPNodeIter(nullptr)));
}

}  // namespace
