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
