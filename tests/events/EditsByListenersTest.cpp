// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// A listener may edit the drawing from inside any event, the object that has just changed and the
// graph around it included. Whoever goes on after the event must cope.

#include <gtest/gtest.h>

#include <functional>

#include "drawing/DrawingTesting.h"

namespace {

using namespace qxtest;

/// Does something once, at the first event of a type.
class OnceOn : public QxDrawingChangeListener {
public:
    using QxDrawingChangeListener::drawingChanged;
    void drawingChanged(QxDrawingChangeEventData* data) override {
        if (data->type() == type && act) {
            std::exchange(act, nullptr)();
        }
    }

    std::int32_t type = 0;
    std::function<void()> act;
};

class EditsByListeners : public testing::Test {
protected:
    EditsByListeners() { factory.pEventManager()->addDrawingChangeListener(&factory, &listener); }
    ~EditsByListeners() override {
        EXPECT_FALSE(listener.act) << "the event did not come";
        EXPECT_EQ(manager->checkInvariants(), 1);
        if (graph != nullptr) {
            QxRect walked;
            walkBounds(*graph, walked);
            EXPECT_EQ(boundsOf(graph), boxOf(walked));
        }
        manager->vRelease();
    }

    void on(std::int32_t type, std::function<void()> act) {
        listener.type = type;
        listener.act = std::move(act);
    }
    void discardGraph() {
        manager->discardGraph(graph);
        graph = nullptr;
    }

    QxFactory factory;
    QxDGraphManager* manager = factory.newDGraphManager();
    QxDGraph* graph = manager->addGraph(0);
    QxDNode* first = graph->addNodeWithCoordinates(0, 0, 40, 40, 1, 0);
    QxDNode* second = graph->addNodeWithCoordinates(300, 0, 40, 40, 1, 0);
    QxDNode* third = graph->addNodeWithCoordinates(0, 300, 40, 40, 1, 0);
    QxDEdge* edge = graph->addEdge(first, second, 0);
    OnceOn listener;
};

TEST_F(EditsByListeners, WhileTheWholeGraphMovesTheNextNodeGoes) {
    on(NodeMoved, [&] { graph->discardNode(second); });
    graph->ntMove(10, 10, 1);
    EXPECT_EQ(third->iX(), 10);
}

TEST_F(EditsByListeners, WhileTheWholeGraphMovesItsBendsGo) {
    QxPNode* bend = edge->addBend(edge->pSourceOrPathEdge(), QxPoint(100, 500), 1);
    edge->addBend(edge->pSourceOrPathEdge(), QxPoint(50, 400), 1);
    on(PathNodeMoved, [&] { edge->discardBend(bend); });
    graph->ntMove(10, 10, 0);
    EXPECT_EQ(edge->numberOfBends(), 1);
}

TEST_F(EditsByListeners, WhileTheWholeGraphMovesItIsDiscarded) {
    on(NodeMoved, [&] { discardGraph(); });
    graph->ntMove(10, 10, 1);
    EXPECT_EQ(manager->numberOfGraphs(), 0);
}

TEST_F(EditsByListeners, ANodeMovesWhileTheBoundsAreSwitchedOn) {
    graph->disableGraphBounds(1, 0);
    first->moveTo(-100, 0, 1);
    on(GraphBoundsChanged, [&] { first->moveTo(-500, 0, 1); });
    graph->disableGraphBounds(0, 0);
}

TEST_F(EditsByListeners, TheGraphGoesWhileItsBoundsAreSwitchedOn) {
    graph->disableGraphBounds(1, 0);
    first->moveTo(-100, 0, 1);
    on(GraphBoundsChanged, [&] { discardGraph(); });
    graph->disableGraphBounds(0, 0);
    EXPECT_EQ(manager->numberOfGraphs(), 0);
}

TEST_F(EditsByListeners, AGraphBeingDiscardedIsDiscarded) {
    QxDGraph* discarded = graph;
    on(GraphBoundsChanged, [&] { discardGraph(); });
    manager->discardGraph(discarded);
    EXPECT_EQ(manager->numberOfGraphs(), 0);
}

TEST_F(EditsByListeners, ANodeBeingDiscardedIsDiscarded) {
    edge->addBend(edge->pSourceOrPathEdge(), QxPoint(150, 900), 1);
    on(GraphBoundsChanged, [&] { EXPECT_EQ(graph->discardNode(first), 0); });
    EXPECT_EQ(graph->discardNode(first), 1);
    EXPECT_EQ(graph->numberOfNodes(), 2);
}

TEST_F(EditsByListeners, AGraphThatIsInsertedIsDiscarded) {
    QxDGraph* other = manager->removeGraph(graph);
    graph = nullptr;
    other->pFirstNode()->ntMoveTo(-999, 0);
    on(GraphBoundsChanged, [&] { manager->discardGraph(other); });
    manager->insertGraph(other);
    EXPECT_EQ(manager->numberOfGraphs(), 0);
    EXPECT_EQ(manager->pAnchorGraph(), nullptr);
}

TEST_F(EditsByListeners, ABendBeingMovedGoesWithItsEdge) {
    QxPNode* bend = edge->addBend(edge->pSourceOrPathEdge(), QxPoint(100, 500), 1);
    on(PathNodeMoved, [&] { graph->discardEdge(edge); });
    bend->moveTo(100, 600, 1);
    EXPECT_EQ(graph->numberOfEdges(), 0);
}

TEST_F(EditsByListeners, ANodeBeingMovedBackIsDiscarded) {
    first->storeMovedNode();
    first->ntMoveTo(50, 50);
    on(NodeMoved, [&] { graph->discardNode(first); });
    first->restoreMovedNode();
    graph->refreshGraphBounds();
    EXPECT_EQ(graph->numberOfNodes(), 2);
}

TEST_F(EditsByListeners, TheAnchorGraphIsTold) {
    QxDGraph* next = manager->addGraph(0);
    QxDGraph* told = nullptr;
    on(AnchorGraphChanged, [&] { told = manager->pAnchorGraph(); });
    discardGraph();
    EXPECT_EQ(told, next);
}

}  // namespace
