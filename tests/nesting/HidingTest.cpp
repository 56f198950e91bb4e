// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <gtest/gtest.h>

#include "nesting/ComplexityTesting.h"
#include "qx/events/QxComplexityChangeEvent.h"

namespace {

using namespace qxtest;

using Heard = ComplexityRecorder::Heard;

/// Two nodes to hide among others, with edges in each state.
class Hiding : public testing::Test, public FoldableDrawing {
public:
    ~Hiding() override { EXPECT_EQ(manager->checkInvariants(), 1); }

    void hideBoth() {
        const QxDNodeDList nodes = nodeList({a, inside, b, a});
        graph->hide(&nodes, nullptr, &hiddenNodes, &hiddenEdges);
    }
    void expectAllShown() {
        EXPECT_EQ(graph->pHideGraph(), nullptr);
        EXPECT_EQ(manager->numberOfGraphs(), 2);
        for (QxDEdge* edge : {ab, ac, idle, loose}) {
            EXPECT_EQ(edge->pOwnerGraph(), graph);
            EXPECT_EQ(edge->connected(), edge != loose);
            EXPECT_EQ(edge->deactivated(), edge == idle);
        }
        EXPECT_EQ(ac->numberOfBends(), 1);
        EXPECT_EQ(boundsOf(graph), bounds);
    }

    QxDNode* a = addNode(0, 0);
    QxDNode* b = addNode(100, 0);
    QxDNode* c = addNode(200, 0);
    QxDNode* inside = addNode(0, 0, foldGraph);
    QxDEdge* idle = addDeactivated(b, c);
    QxDEdge* loose = addDisconnected(c, a);
    QxDEdge* ab = addEdge(a, b);
    QxDEdge* across = addEdge(a, inside);
    QxDEdge* ac = addBentEdge(a, c, 50, -700);
    Box bounds = boundsOf(graph);
    QxDNodeDList hiddenNodes;
    QxDEdgeDList hiddenEdges;
};

TEST_F(Hiding, TakesTheEdgesOfTheGraphAlongAndBringsThemBackInTheirStates) {
    hideBoth();
    EXPECT_EQ(objectsOf<QxDNode>(hiddenNodes), (DNodes{a, b}));
    EXPECT_EQ(objectsOf<QxDEdge>(hiddenEdges), (DEdges{ab, ac, loose, idle}));
    EXPECT_EQ(events.take(), (Heard{{EdgeHidden, ab},
                                    {EdgeHidden, ac},
                                    {EdgeHidden, loose},
                                    {EdgeHidden, idle},
                                    {NodeHidden, a},
                                    {NodeHidden, b}}));
    const QxDGraph* hidden = graph->pHideGraph();
    ASSERT_NE(hidden, nullptr);
    EXPECT_EQ(hidden->pHideFromGraph(), graph);
    EXPECT_EQ(hidden->pDisconnectedEdgeList()->count(), 4);
    EXPECT_EQ(hidden->needsUpdateGraphBounds(), 0);
    EXPECT_EQ(a->hidden() + ab->hidden() + graph->hasHiddenNodes() + graph->hasHiddenEdges(), 4);
    EXPECT_EQ(across->pOwnerGraph(), manager->pIntergraph());
    EXPECT_EQ(across->isVisible(), 0);
    EXPECT_EQ(boundsOf(graph), (Box{195, -5, 505, 505}));

    hideBoth();
    EXPECT_EQ(hiddenNodes.count() + hiddenEdges.count(), 0) << "they are hidden already";
    const QxDNodeDList onlyA = nodeList({a});
    graph->unhide(&onlyA, nullptr, &hiddenNodes, &hiddenEdges, 1);
    EXPECT_EQ(objectsOf<QxDEdge>(hiddenEdges), (DEdges{ac, loose})) << "b is hidden still";
    EXPECT_EQ(events.take(), (Heard{{EdgeUnhidden, ac}, {EdgeUnhidden, loose}, {NodeUnhidden, a}}));
    graph->unhideAll();
    expectAllShown();
}

TEST_F(Hiding, AnEdgeThatComesBackAloneRunsBetweenGraphsUntilItsEndFollows) {
    hideBoth();
    const QxDEdgeDList named = edgeList({ab, ac});
    graph->unhide(nullptr, &named, nullptr, &hiddenEdges, 0);
    EXPECT_EQ(objectsOf<QxDEdge>(hiddenEdges), (DEdges{ac})) << "both ends of the other are hidden";
    EXPECT_EQ(ab->hidden(), 1);
    EXPECT_EQ(ac->pOwnerGraph(), manager->pIntergraph());
    EXPECT_EQ(ac->connected(), 1);
    events.take();
    const QxDNodeDList onlyA = nodeList({a});
    graph->unhide(&onlyA, nullptr, nullptr, nullptr, 0);
    EXPECT_EQ(events.take(), (Heard{{EdgeUnhidden, ac}, {NodeUnhidden, a}}));
    EXPECT_EQ(ac->pOwnerGraph(), graph);
    EXPECT_EQ(b->unhideIncidentEdge(ab), nullptr) << "this end is hidden itself";
    EXPECT_EQ(a->unhideIncidentEdge(ab), ab) << "with its other end";
    EXPECT_EQ(b->pOwnerGraph(), graph);
    graph->unhideAll();
    expectAllShown();
}

TEST_F(Hiding, AHiddenEdgeWithoutAnEndStaysWhereItIs) {
    hide({loose, ac});
    const Ref<QxDNode> removed(graph->removeNode(c));
    QxDEdgeDList found;
    a->buildIncidentHiddenEdgeList(found);
    EXPECT_EQ(objectsOf<QxDEdge>(found), (DEdges{loose, ac}));
    graph->unhideAll();
    EXPECT_EQ(loose->hidden() + ac->hidden(), 2);
    events.take();
    graph->insertNode(removed.get());
    removed->vAddRef();  // the graph's
    idle->activate();
    graph->unhideAll();
    EXPECT_EQ(events.take(), (Heard{{EdgeUnhidden, loose}, {EdgeUnhidden, ac}}));
    EXPECT_EQ(graph->pHideGraph(), nullptr);
}

TEST_F(Hiding, IsDoneInSilenceWhenTheCallerWantsItAndKeepsSwitches) {
    factory.pEventManager()->fireEvents(0);
    hideBoth();
    graph->unhideAll();
    EXPECT_EQ(factory.pEventManager()->fireEvents(), 0);
    EXPECT_TRUE(events.take().empty());
    factory.pEventManager()->fireEvents(1);
    graph->needsUpdateGraphBounds(0);
    hideBoth();
    EXPECT_EQ(graph->needsUpdateGraphBounds(), 0);
    EXPECT_EQ(boundsOf(graph), bounds);
    graph->needsUpdateGraphBounds(1);
    graph->unhideAll();
    expectAllShown();
    const QxDNodeDList nodes = nodeList({a});
    manager->pIntergraph()->hide(&nodes, nullptr, nullptr, nullptr);
    EXPECT_EQ(a->hidden(), 0);
}

TEST_F(Hiding, ListenersMayEditMeanwhile) {
    events.react = [&] {
        events.react = nullptr;
        graph->unhideAll();
        graph->discardNode(a);
        addNode(-5000, 0);
    };
    hideBoth();
    EXPECT_EQ(objectsOf<QxDNode>(hiddenNodes), (DNodes{b})) << "what is left";
    EXPECT_EQ(graph->pHideGraph(), nullptr);
    EXPECT_EQ(graph->needsUpdateGraphBounds(), 1);
    EXPECT_EQ(graph->pBoundingRect()->left(), -5005);
    events.react = [&] {
        events.react = nullptr;
        manager->discardGraph(graph);
    };
    hide({b});
    EXPECT_EQ(manager->numberOfGraphs(), 1) << "the hide graph has gone with the graph";
}

TEST_F(Hiding, TheLastHiddenObjectTakesTheHideGraphAlong) {
    hide({ab});
    graph->discardNode(a);
    EXPECT_EQ(graph->pHideGraph(), nullptr);
    hide({b});
    graph->pHideGraph()->discardNode(b);
    EXPECT_EQ(graph->pHideGraph(), nullptr);
    EXPECT_EQ(manager->numberOfGraphs(), 2);
    hide({c});
    const Ref<QxDGraph> hidden = hold(graph->pHideGraph());
    EXPECT_EQ(manager->discardGraph(hidden.get()), 1) << "and the graph with it";
    EXPECT_EQ(manager->numberOfGraphs(), 1);
    EXPECT_EQ(manager->pAnchorGraph(), foldGraph);
    EXPECT_EQ(hidden->pHideFromGraph(), nullptr);
}

TEST_F(Hiding, AGraphAndItsHideGraphComeAndGoTogether) {
    hideBoth();
    QxDGraph* const hidden = graph->pHideGraph();
    EXPECT_EQ(manager->pAnchorGraph(hidden), graph);
    EXPECT_EQ(manager->removeGraph(hidden), hidden);
    EXPECT_EQ(graph->pOwnerGraphManager(), nullptr);
    EXPECT_EQ(manager->pAnchorGraph(), foldGraph);
    const Ref<QxDGraphManager> other(factory.newDGraphManager());
    EXPECT_EQ(other->insertGraph(graph), graph);
    EXPECT_EQ(hidden->pOwnerGraphManager(), other.get());
    EXPECT_EQ(other->pAnchorGraph(), graph);
    EXPECT_EQ(hidden->needsUpdateGraphBounds(), 0);
    const Ref<QxDGraphManager> copy(other->cloneObject());
    QxDGraph* const twin = copy->pFirstGraph();
    ASSERT_NE(twin->pHideGraph(), nullptr);
    twin->unhideAll();
    EXPECT_EQ(twin->numberOfNodes(), 4);
    EXPECT_EQ(twin->numberOfEdges(), 2);
    EXPECT_EQ(twin->pDisconnectedEdgeList()->count(), 1);
    EXPECT_EQ(twin->pDeactivatedEdgeList()->count(), 1);
    EXPECT_EQ(copy->checkInvariants() + other->checkInvariants(), 2);
    EXPECT_EQ(other->removeGraph(graph), graph);
    graph->vRelease();  // which destroys the hide graph, too
}

TEST_F(Hiding, OnlyAnOrdinaryGraphTakesAHideGraph) {
    QxDGraph* const other = manager->addGraph(0);
    addEdge(addNode(0, 0, other), addNode(50, 0, other));
    QxDEdge* const made = other->pFirstEdge();
    for (QxDGraph* refused : {static_cast<QxDGraph*>(nullptr), graph, manager->pIntergraph()}) {
        graph->setHideLink(refused);
        EXPECT_EQ(graph->pHideGraph(), nullptr);
    }
    graph->setHideLink(other);
    EXPECT_EQ(graph->pHideGraph(), other);
    foldGraph->setHideLink(other);
    other->setHideLink(foldGraph);
    EXPECT_EQ(foldGraph->pHideGraph(), nullptr);
    EXPECT_EQ(manager->containsHideGraphs() + graph->containsHideGraphs(), 2);
    graph->unhideAll();
    EXPECT_EQ(made->pOwnerGraph(), graph);
    EXPECT_EQ(made->connected(), 1);
    expectAllShown();
}

TEST_F(Hiding, AroundANode) {
    a->hideChildren(0, &hiddenNodes, nullptr, 1, 0);
    EXPECT_EQ(graph->pHideGraph(), nullptr);
    a->hideChildren(1, &hiddenNodes, &hiddenEdges, 1, 0);
    EXPECT_EQ(objectsOf<QxDNode>(hiddenNodes), (DNodes{b, c}));
    EXPECT_EQ(objectsOf<QxDEdge>(hiddenEdges), (DEdges{ab, ac, loose, idle}));
    b->unhideParents(1, &hiddenNodes, nullptr, 0);
    EXPECT_EQ(hiddenNodes.count(), 0) << "b is no node of the graph";
    a->unhideChildren(-2, &hiddenNodes, &hiddenEdges, 0);
    EXPECT_EQ(objectsOf<QxDNode>(hiddenNodes), (DNodes{b, c}));
    expectAllShown();
}

}  // namespace
