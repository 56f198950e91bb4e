// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/drawing/QxDNode.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "drawing/WorldFactory.h"
#include "qx/foundation/geometry/QxShape.h"

namespace {

using namespace qxtest;
using testing::ElementsAre;
using testing::IsEmpty;

/// The rectangle that a plain node of this place and size has.
QxRect rectAt(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height) {
    return {QxPoint(x, y), QxSize(width, height)};
}

/// A drawing with one graph, and what its nodes tell.
class Node : public testing::Test {
protected:
    Node() {
        factory.pEventManager()->addDrawingChangeListener(
            manager.get(), &recorder, NodeMoved | NodeResized | NodeShapeChanged);
    }
    ~Node() override { EXPECT_EQ(manager->checkInvariants(), 1); }

    QxDNode* place(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height) {
        return graph->addNodeWithCoordinates(x, y, width, height, 1, 0);
    }
    QxRect bounds() const {
        QxRect rect;
        graph->ntUpdatedBoundingRect(rect);
        return rect;
    }
    const QxShapeResource* defaultResource() {
        return factory.pShapeResourceDB()->pDefaultResource();
    }

    QxFactory factory;
    EventRecorder recorder;
    Ref<QxDGraphManager> manager{factory.newDGraphManager()};
    QxDGraph* graph = manager->addGraph(0);
    const QxShape oval{QxShapeTypeOval};
    const QxShape rectangle;
};

TEST_F(Node, ANewNodeIsCenteredAtTheOriginAndClipsItsEdges) {
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

TEST_F(Node, ReshapingMovesAndResizesWhenItChangesAnything) {
    QxDNode* node = place(0, 0, 10, 10);
    node->updateForDiagramming(rectAt(0, 0, 10, 10));
    EXPECT_THAT(recorder.takeTypes(), IsEmpty());
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

TEST_F(Node, OnlyTheLastSizeOutsideFileReadingIsTheOriginalOne) {
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
    EXPECT_THAT(recorder.takeTypes(), ElementsAre(NodeResized, NodeResized))
        << "the last kept the size";
}

TEST_F(Node, AMoveToTheEndOfTheRangeKeepsTheSize) {
    QxDNode* node = place(0, 0, 40, 40);
    node->moveTo(qx::MaxInt32, 0, 1);
    EXPECT_EQ(*node->pIRect(), QxRect(qx::MaxInt32 - 40, -20, qx::MaxInt32, 20));
    EXPECT_EQ(bounds(), *node->pIRect());
    EXPECT_THAT(recorder.takeTypes(), ElementsAre(NodeMoved));
    node->moveTo(qx::MaxInt32, 0, 1);
    EXPECT_THAT(recorder.takeTypes(), IsEmpty()) << "it is as near as it can be";
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

TEST_F(Node, AStoredPlaceIsRestoredOnce) {
    QxDNode* node = place(3, 4, 10, 10);
    node->restoreMovedNode();
    EXPECT_THAT(recorder.takeTypes(), IsEmpty()) << "nothing was stored";
    node->storeMovedNode();
    node->moveTo(100, 100, 1);
    node->resize(30, 30, 1);
    node->restoreMovedNode();
    EXPECT_EQ(*node->pIRect(), rectAt(3, 4, 30, 30));
    EXPECT_EQ(node->pRectBeforeMove(), nullptr);
}

TEST_F(Node, APlainNodeShowsTheDefaultWithoutHoldingIt) {
    QxDNode* node = place(0, 0, 10, 10);
    EXPECT_EQ(node->pShape(), defaultResource()->pShape());
    EXPECT_EQ(node->pQueryShapeResource(), nullptr);
    EXPECT_EQ(defaultResource()->useCount(), 0);
    EXPECT_EQ(node->pShape(&rectangle, 0), defaultResource()->pShape());
    EXPECT_THAT(recorder.takeTypes(), IsEmpty()) << "it shows a rectangle already";
    EXPECT_EQ(node->pShapeResource(), defaultResource());
    EXPECT_EQ(defaultResource()->useCount(), 1);
    EXPECT_EQ(node->pShapeResource(), defaultResource());
    EXPECT_EQ(defaultResource()->useCount(), 1);
    node->discardShapeResource();
    EXPECT_EQ(defaultResource()->useCount(), 0);

    const Ref<QxDNode> lonely(new QxDNode(nullptr, 0, nullptr));
    EXPECT_EQ(lonely->pShape(), nullptr);
    EXPECT_EQ(lonely->pShapeResource(), nullptr);
    EXPECT_EQ(lonely->pShape(&oval, 0), nullptr);
    EXPECT_EQ(lonely->pChangeShape(&oval, 1), nullptr);
    EXPECT_EQ(lonely->within(QxPoint(20, 20), 1), 1);
}

TEST_F(Node, APrivateResourceIsChangedInPlaceAndSharedAgain) {
    QxDNode* first = place(0, 0, 10, 10);
    QxDNode* second = place(50, 0, 10, 10);
    first->pShape(&oval, 1);
    second->pShape(&oval, 1);
    QxShapeResource* own = second->pChangeableShapeResource();
    EXPECT_NE(own, first->pQueryShapeResource());
    EXPECT_EQ(own->useCount(), 0);
    EXPECT_EQ(first->pQueryShapeResource()->useCount(), 1);
    EXPECT_EQ(second->pChangeableShapeResource(), own) << "it is private already";
    QxShapeResource* only = first->pQueryShapeResource();
    EXPECT_EQ(first->pChangeableShapeResource(), only) << "its last holder keeps it";
    first->updateShapeResource(only);
    second->updateShapeResource(own);
    EXPECT_EQ(second->pQueryShapeResource(), only);
    EXPECT_EQ(only->useCount(), 2);
    second->updateShapeResource(only);
    EXPECT_EQ(only->useCount(), 2) << "a shared resource is updated already";

    const Ref<QxDNode> duplicate(factory.qxNewDNode(&factory, 0));
    first->pChangeableShapeResource();
    duplicate->duplicateTopology(first);
    EXPECT_EQ(duplicate->pQueryShapeResource(), first->pQueryShapeResource());
    EXPECT_EQ(only->useCount(), 3) << "a private source resource is shared first";
}

TEST_F(Node, NoIncidentEdgeStaysMarked) {
    QxDNode* node = place(0, 0, 10, 10);
    QxDEdge* out = graph->addEdge(node, place(50, 0, 10, 10), 0);
    QxDEdge* in = graph->addEdge(place(0, 50, 10, 10), node, 0);
    QxDEdge* loop = graph->insertEdge(factory.qxNewDEdge(graph, 0), node, node);
    for (QxDEdge* edge : {out, in, loop}) {
        edge->marked(1);
    }
    node->pShape(&oval, 0);
    for (const QxDEdge* edge : {out, in, loop}) {
        EXPECT_EQ(edge->marked(), 0);
    }
}

TEST_F(Node, AttributesAreCopiedWithoutTheShape) {
    QxDNode* source = place(10, 20, 30, 41);
    source->nameString(L"source");
    source->forceClipping(0);
    source->pShape(&oval, 1);
    source->storeMovedNode();
    source->pRectBeforeMoveForSelfLoops(new QxRect(1, 2, 3, 4));
    QxDNode* copy = place(-50, 0, 10, 10);
    copy->pShape(&oval, 1);
    copy->copyAttributes(source);
    EXPECT_EQ(*copy->pIRect(), *source->pIRect());
    EXPECT_EQ(copy->originalSize(), QxSize(30, 41));
    EXPECT_EQ(copy->forceClipping(), 0);
    EXPECT_STREQ(copy->pNameString(), L"source");
    EXPECT_EQ(copy->pQueryShapeResource(), nullptr);
    EXPECT_EQ(source->pQueryShapeResource()->useCount(), 1);
    EXPECT_EQ(bounds(), *source->pIRect()) << "the copy has left its old place";
    EXPECT_THAT(recorder.takeTypes(), ElementsAre(NodeMoved, NodeResized));
    ASSERT_NE(copy->pRectBeforeMove(), nullptr);
    EXPECT_EQ(*copy->pRectBeforeMove(), *source->pRectBeforeMove());
    ASSERT_NE(copy->pRectBeforeMoveForSelfLoops(), nullptr);
    EXPECT_EQ(*copy->pRectBeforeMoveForSelfLoops(), QxRect(1, 2, 3, 4));
    EXPECT_NE(copy->pRectBeforeMoveForSelfLoops(), source->pRectBeforeMoveForSelfLoops());
    source->restoreMovedNode();
    EXPECT_NE(copy->pRectBeforeMove(), nullptr);
    EXPECT_EQ(copy->pClonedNode(), nullptr);
    EXPECT_EQ(source->pClonedNode(), nullptr);
}

TEST_F(Node, CopiesIntoAnotherFactoryUseItsDatabase) {
    QxDNode* source = place(10, 20, 30, 40);
    source->pShape(&oval, 1);
    QxFactory otherFactory;
    const Ref<QxDGraphManager> other(otherFactory.newDGraphManager());
    QxDNode* copy = other->addGraph(0)->addNode(0);
    copy->copyObject(source);
    EXPECT_EQ(*copy->pShape(), oval);
    EXPECT_NE(copy->pQueryShapeResource(), source->pQueryShapeResource());
    EXPECT_EQ(copy->pQueryShapeResource()->pShapeResourceDB(), otherFactory.pShapeResourceDB());
    EXPECT_EQ(source->pQueryShapeResource()->useCount(), 1);
}

TEST_F(Node, AChangeOfShapeWithHooksDiscardsCalculatedConnectors) {
    QxDNode* node = place(0, 0, 10, 10);
    for (const int hooks : {0, 1}) {
        node->ntAddConnector(0, 0, 3, 3);
        EXPECT_EQ(*node->pChangeShape(hooks != 0 ? &rectangle : &oval, hooks),
                  hooks != 0 ? rectangle : oval);
        EXPECT_EQ(node->numberOfAllConnectors(), hooks != 0 ? 0 : 1);
    }
    EXPECT_THAT(recorder.takeTypes(), IsEmpty());
}

/// Carries the node that has changed off to another graph.
class CarriesOff : public QxDrawingChangeListener {
public:
    explicit CarriesOff(QxDGraph& to) : m_to(to) {}
    using QxDrawingChangeListener::drawingChanged;
    void drawingChanged(QxDrawingChangeEventData* data) override {
        auto* node = static_cast<QxDNode*>(data->pSourceNode());
        if (node->pOwnerGraph() != &m_to) {
            node->pOwnerGraph()->removeNode(node);
            m_to.insertNode(node);
        }
    }

private:
    QxDGraph& m_to;
};

TEST(NodeInTheMiddleOfAChange, MayGoToAnotherGraphWhereTheRestIsMade) {
    WorldFactory factory;
    SmallDrawing drawing(factory);
    QxDGraph* to = drawing.manager->addGraph(WorldFactory::Shown);
    QxDNode* node = drawing.addNode(0, 0);
    drawing.addNode(100, 0);
    CarriesOff listener(*to);
    factory.pEventManager()->addDrawingChangeListener(&factory, &listener, NodeResized);
    node->updateForDiagramming(rectAt(500, 500, 20, 20));
    EXPECT_EQ(node->pOwnerGraph(), to);
    EXPECT_EQ(boundsOf(drawing.graph), (Box{95, -5, 105, 5}));
    EXPECT_EQ(boundsOf(to), (Box{490, 490, 510, 510}));
}

TEST_F(Node, ProjectsOntoItsOutline) {
    QxDNode* node = place(10, 10, 40, 20);
    node->pShape(&oval, 1);
    QxPoint point(10, 15);
    EXPECT_EQ(node->computeProjection(point), QxDirectionUp);
    EXPECT_EQ(point, QxPoint(10, 0)) << "where the way up enters";
    EXPECT_EQ(node->computeProjection(point, QxDirectionDown), 1);
    EXPECT_EQ(point, QxPoint(10, 20));
    EXPECT_EQ(node->computeProjection(point, QxDirectionNone), 0);
    node->moveOutside(point, QxDirectionLeft, 0);
    EXPECT_EQ(point, QxPoint(-30, 20));
    std::int32_t x = 1000;
    std::int32_t y = 300;
    node->computeProjectionAtShapeBorder(x, y, 1);
    EXPECT_EQ(y, 300);
    EXPECT_NEAR(x, 954, 50) << "the oval recedes by 1 - sqrt(1 - 0.3 * 0.3)";
    EXPECT_LT(x, 1000);
    x = 20;
    node->computeProjectionAtShapeBorder(x, y = 5, 0);
    EXPECT_EQ(QxPoint(x, y), QxPoint(17, 5));
}

}  // namespace
