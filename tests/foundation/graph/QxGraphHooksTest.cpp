// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Which hooks run, on whom, and in which order.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "foundation/graph/RecordingGraph.h"

namespace {

using namespace qxtest;
using testing::ElementsAre;
using testing::IsEmpty;

/// Graph G with nodes a and b, graph H with node c; the intergraph is I.
class QxGraphHooks : public testing::Test {
protected:
    QxGraphHooks() {
        log().name(g, "G");
        log().name(h, "H");
        log().name(manager->pIntergraph(), "I");
        log().name(a, "a");
        log().name(b, "b");
        log().name(c, "c");
        log().take();
    }

    CallLog& log() { return m_factory.log; }

    QxEdge* newEdge(const char* name) {
        auto* edge = new RecordingEdge(&m_factory, log());
        log().name(edge, name);
        return edge;
    }
    /// An edge e that is in place already.
    QxEdge* place(QxNode* source, QxNode* target) {
        QxEdge* edge = manager->insertEdge(newEdge("e"), source, target);
        log().take();
        return edge;
    }

private:
    RecordingFactory m_factory;

protected:
    Ref<QxGraphManager> manager{m_factory.newManager()};
    QxGraph* g = manager->addGraph(0);
    QxGraph* h = manager->addGraph(0);
    QxNode* a = g->addNode(0);
    QxNode* b = g->addNode(0);
    QxNode* c = h->addNode(0);
};

TEST_F(QxGraphHooks, InsertingAnEdgeSetsItsEndsListsItAndThenConnectsIt) {
    g->insertEdge(newEdge("e"), a, b);
    EXPECT_THAT(log().take(),
                ElementsAre("G.vInsertEdge(e)", "a.init(e)", "b.init(e)", "G.afterInsert(e)",
                            "G.connect(e)", "a.connect(e)", "b.connect(e)"));
}

TEST_F(QxGraphHooks, AnEdgeBetweenGraphsTellsTheGraphsOfItsEnds) {
    QxEdge* e = manager->insertEdge(newEdge("e"), a, c);
    EXPECT_THAT(log().take(), ElementsAre("I.vInsertEdge(e)", "a.init(e)", "c.init(e)",
                                          "I.afterInsert(e)", "G.connectBetween(e)",
                                          "H.connectBetween(e)", "a.connect(e)", "c.connect(e)"));
    e->deactivate();
    EXPECT_THAT(log().take(), ElementsAre("G.deactivateBetween(e)", "H.deactivateBetween(e)",
                                          "a.deactivate(e)", "c.deactivate(e)"));
    e->activate();
    EXPECT_THAT(log().take(), ElementsAre("G.activateBetween(e)", "H.activateBetween(e)",
                                          "a.activate(e)", "c.activate(e)"));
    e->disconnect();
    EXPECT_THAT(log().take(), ElementsAre("G.disconnectBetween(e)", "H.disconnectBetween(e)",
                                          "a.disconnect(e)", "c.disconnect(e)"));
}

TEST_F(QxGraphHooks, AGraphWithBothEndsOfAnIntergraphEdgeIsToldOnce) {
    QxEdge* e = place(a, c);
    e->changeTargetNodeWithoutConnect(b);
    EXPECT_THAT(log().take(), ElementsAre("c.changeTarget(e)", "b.changeTarget(e)",
                                          "H.changeTargetBetween(e)", "G.changeTargetBetween(e)"));
    e->changeSourceNodeWithoutConnect(b);
    EXPECT_THAT(log().take(),
                ElementsAre("a.changeSource(e)", "b.changeSource(e)", "G.changeSourceBetween(e)"));
    e->disconnect();
    EXPECT_THAT(log().take(),
                ElementsAre("G.disconnectBetween(e)", "b.disconnect(e)", "b.disconnect(e)"));
}

TEST_F(QxGraphHooks, EveryChangeOfStateTellsTheGraphAndThenBothEnds) {
    QxEdge* e = place(a, b);
    e->disconnect();
    EXPECT_THAT(log().take(), ElementsAre("G.disconnect(e)", "a.disconnect(e)", "b.disconnect(e)"));
    e->connect();
    EXPECT_THAT(log().take(), ElementsAre("G.connect(e)", "a.connect(e)", "b.connect(e)"));
    e->deactivate();
    EXPECT_THAT(log().take(), ElementsAre("G.deactivate(e)", "a.deactivate(e)", "b.deactivate(e)"));
    e->activate();
    EXPECT_THAT(log().take(), ElementsAre("G.activate(e)", "a.activate(e)", "b.activate(e)"));
}

TEST_F(QxGraphHooks, AChangeThatIsNoneOrIsRefusedTellsNobody) {
    QxEdge* e = place(a, b);
    EXPECT_EQ(e->connect(), 0);
    EXPECT_NE(e->activate(), 0);
    EXPECT_EQ(e->changeTargetNode(c), 0);
    EXPECT_EQ(e->changeSourceNode(nullptr), 0);
    EXPECT_NE(e->changeEndNodes(a, b), 0);
    e->deactivate();
    log().take();
    EXPECT_NE(e->deactivate(), 0);
    EXPECT_EQ(e->disconnect(), 0);
    EXPECT_EQ(e->connect(), 0);
    EXPECT_EQ(e->changeEndNodes(b, c), 0) << "the first end would do, the second would not";
    EXPECT_EQ(e->pSourceNode(), a);
    EXPECT_THAT(log().take(), IsEmpty());
}

TEST_F(QxGraphHooks, ChangingAnEndReconnectsAndReversingTellsBothEnds) {
    QxEdge* e = place(a, b);
    e->changeTargetNode(a);
    EXPECT_THAT(log().take(), ElementsAre("G.disconnect(e)", "a.disconnect(e)", "b.disconnect(e)",
                                          "b.changeTarget(e)", "a.changeTarget(e)", "G.connect(e)",
                                          "a.connect(e)", "a.connect(e)"));
    e->changeSourceNodeWithoutConnect(b);
    EXPECT_THAT(log().take(), ElementsAre("a.changeSource(e)", "b.changeSource(e)"));
    e->reverse();
    EXPECT_THAT(log().take(), ElementsAre("a.changeSource(e)", "b.changeTarget(e)"));
}

TEST_F(QxGraphHooks, RemovingAnEdgeUnlinksItAndThenTellsTheGraph) {
    const Ref<QxEdge> e(g->removeEdge(place(a, b)));
    EXPECT_THAT(log().take(), ElementsAre("G.vRemoveEdge(e)", "G.disconnect(e)", "a.disconnect(e)",
                                          "b.disconnect(e)", "G.afterRemove(e)"));
    EXPECT_EQ(e->pSourceNode(), nullptr);
}

TEST_F(QxGraphHooks, DiscardingRemovesThenTellsTheObjectThenDestroysIt) {
    g->discardEdge(place(a, b));
    EXPECT_THAT(log().take(), ElementsAre("G.vDiscardEdge(e)", "G.vRemoveEdge(e)",
                                          "G.disconnect(e)", "a.disconnect(e)", "b.disconnect(e)",
                                          "G.afterRemove(e)", "e.actOnDiscard", "e.destroyed"));
    place(a, c);
    g->discardNode(a);
    EXPECT_THAT(log().take(),
                ElementsAre("G.vDiscardNode(a)", "I.vDiscardEdge(e)", "I.vRemoveEdge(e)",
                            "G.disconnectBetween(e)", "H.disconnectBetween(e)", "a.disconnect(e)",
                            "c.disconnect(e)", "I.afterRemove(e)", "e.actOnDiscard", "e.destroyed",
                            "G.vRemoveNode(a)", "a.actOnDiscard", "a.destroyed"));
}

TEST_F(QxGraphHooks, RemovingANodeDisconnectsItsEdgesAndLeavesThoseBetweenGraphsAttached) {
    QxEdge* e = place(a, b);
    QxEdge* f = newEdge("f");
    manager->insertEdge(f, c, a);
    log().take();
    g->removeNode(a);
    EXPECT_THAT(log().take(), ElementsAre("G.vRemoveNode(a)", "G.disconnect(e)", "a.disconnect(e)",
                                          "b.disconnect(e)"));
    EXPECT_NE(f->connected(), 0);
    g->insertNode(a);
    EXPECT_THAT(log().take(), ElementsAre("G.vInsertNode(a)", "G.initNodeBetween(f)"));
    EXPECT_NE(e->connect(), 0);
}

TEST_F(QxGraphHooks, TransferKeepsStatesAndTellsOnlyOfEdgesThatLoseAnEnd) {
    QxEdge* e = place(a, b);
    Ref<QxGraph> alone(manager->removeGraph(h));
    EXPECT_NE(alone->transferTopology(g), 0);
    EXPECT_THAT(log().take(), IsEmpty());
    EXPECT_NE(e->connected(), 0);
    EXPECT_EQ(e->pOwnerGraph(), alone.get());

    manager->insertGraph(alone.release());
    QxNode* d = g->addNode(0);
    log().name(d, "d");
    QxEdge* f = newEdge("f");
    manager->insertEdge(f, a, d);
    alone.reset(manager->removeGraph(h));
    log().take();
    manager->insertGraph(alone.release());
    EXPECT_THAT(log().take(), IsEmpty()) << "the edges are ready, but nobody connects them";
    EXPECT_NE(f->connect(), 0);
}

TEST_F(QxGraphHooks, DiscardingAGraphDiscardsTheEdgesToOtherGraphsWithIt) {
    place(a, c);
    manager->discardGraph(h);
    EXPECT_THAT(log().take(),
                ElementsAre("H.vDiscardNode(c)", "I.vDiscardEdge(e)", "I.vRemoveEdge(e)",
                            "G.disconnectBetween(e)", "H.disconnectBetween(e)", "a.disconnect(e)",
                            "c.disconnect(e)", "I.afterRemove(e)", "e.actOnDiscard", "e.destroyed",
                            "H.vRemoveNode(c)", "c.actOnDiscard", "c.destroyed", "H.actOnDiscard"));
}

}  // namespace
