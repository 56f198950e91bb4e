// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "drawing/EdgePathTesting.h"

namespace {

using namespace qxtest;
using testing::ElementsAre;
using testing::IsEmpty;

class QxDEdgePath : public testing::Test {
protected:
    /// Bends at (20, 50), (40, 50), ... in this order.
    void addBends(int count) {
        for (int i = 1; i <= count; ++i) {
            drawing.addBend(edge, 20 * i, 50);
        }
        drawing.events.take();
    }
    QxPNode* bendAt(int index) {
        QxPNodeDList bends;
        edge->buildPathNodeList(bends);
        return bends.pNodeInPosition(index);
    }
    void expectSound() { EXPECT_EQ(edge->checkInvariants(), 1); }

    QxFactory factory;
    EdgeDrawing drawing{factory};
    QxDEdge* edge = drawing.edge;
};

using Xs = std::vector<std::int32_t>;

Xs xsOf(const QxDEdge* edge) {
    Xs xs;
    for (const Place& place : bendsOf(edge)) {
        xs.push_back(place[0]);
    }
    return xs;
}

TEST_F(QxDEdgePath, AStraightEdgeHasOneSegment) {
    QxPEdge* segment = edge->pSourceOrPathEdge();
    ASSERT_NE(segment, nullptr);
    EXPECT_EQ(segment, edge->pTargetOrPathEdge());
    EXPECT_EQ(edge->numberOfBends(), 0);
    EXPECT_EQ(edge->hasBends(), 0);
    EXPECT_EQ(edge->indexOfPathEdge(segment), 1);
    EXPECT_EQ(edge->indexOfPathEdge(nullptr), 0);
    EXPECT_THAT(bendsOf(edge), IsEmpty());
    EXPECT_EQ(segment->pOriginalEdge(), edge);
    EXPECT_EQ(edge->isCurvedEdge() + segment->isCurvedEdge(), 0);
    expectSound();
}

TEST_F(QxDEdgePath, ABendSplitsItsSegment) {
    QxPEdge* whole = edge->pSourceOrPathEdge();
    QxPNode* bend = edge->addBend(whole, QxPoint(100, 50), 1);
    ASSERT_NE(bend, nullptr);
    EXPECT_EQ(edge->pSourceOrPathEdge(), whole);
    QxPEdge* rest = edge->pTargetOrPathEdge();
    EXPECT_NE(rest, whole);
    EXPECT_EQ(bend->pFirstInEdge(), whole);
    EXPECT_EQ(bend->pFirstOutEdge(), rest);
    EXPECT_EQ(edge->hasBends(), 1);
    EXPECT_EQ(edge->indexOfPathEdge(rest), 2);

    QxPNode* later = edge->addBend(rest, QxPoint(150, 50), 1);
    EXPECT_NE(edge->pTargetOrPathEdge(), rest) << "the second half is the last segment";
    QxPNode* between = edge->addBendAfter(bend, QxPoint(120, 50), 1);
    edge->addBendAfter(nullptr, QxPoint(30, 50), 0);
    EXPECT_THAT(xsOf(edge), ElementsAre(30, 100, 120, 150));
    EXPECT_EQ(between->pFirstOutEdge()->pTargetNode(), later);
    EXPECT_EQ(edge->numberOfBends(), 4);
    expectSound();
}

TEST_F(QxDEdgePath, RefusesWhatIsNotItsOwn) {
    QxDEdge* other = drawing.addEdge(drawing.target, drawing.source);
    QxPNode* foreign = drawing.addBend(other, 100, -50);
    EXPECT_EQ(edge->addBend(other->pSourceOrPathEdge(), QxPoint(1, 1), 1), nullptr);
    EXPECT_EQ(edge->addBend(nullptr, QxPoint(1, 1), 1), nullptr);
    EXPECT_EQ(edge->ntAddBend(other->pSourceOrPathEdge(), QxPoint(1, 1)), nullptr);
    EXPECT_EQ(edge->addBendAfter(foreign, QxPoint(1, 1), 1), nullptr);
    EXPECT_EQ(edge->discardBend(foreign), 0);
    EXPECT_EQ(edge->discardBend(nullptr), 0);
    EXPECT_EQ(edge->removePNode(foreign), nullptr);
    EXPECT_EQ(edge->removePEdge(other->pSourceOrPathEdge()), nullptr);
    EXPECT_EQ(edge->insertPNode(foreign), nullptr);
    EXPECT_EQ(edge->insertPEdge(other->pSourceOrPathEdge(), drawing.source, drawing.target),
              nullptr);
    EXPECT_EQ(edge->addPEdge(drawing.source, foreign), nullptr);
    EXPECT_EQ(edge->indexOfPathEdge(other->pSourceOrPathEdge()), 1) << "the number of segments";
    EXPECT_EQ(edge->numberOfBends(), 0);
    EXPECT_EQ(other->numberOfBends(), 1);
    EXPECT_EQ(other->checkInvariants(), 1);
    expectSound();
}

TEST_F(QxDEdgePath, DiscardingABendKeepsTheSegmentThatEntersIt) {
    addBends(3);
    auto segments = segmentsOf(edge);
    EXPECT_EQ(edge->discardBend(bendAt(2)), 1);
    EXPECT_EQ(segmentsOf(edge), (std::vector{segments[0], segments[1], segments[3]}));
    EXPECT_EQ(edge->discardBend(bendAt(2)), 1);
    EXPECT_EQ(edge->pTargetOrPathEdge(), segments[1]);
    EXPECT_EQ(edge->discardBend(bendAt(1)), 1);
    EXPECT_EQ(edge->pTargetOrPathEdge(), segments[0]);
    EXPECT_EQ(edge->hasBends(), 0);
    expectSound();
}

TEST_F(QxDEdgePath, DiscardsBendsFromEitherEnd) {
    addBends(5);
    edge->discardBends(0, 1);
    edge->discardBends(-3, 0);
    EXPECT_EQ(edge->numberOfBends(), 5);
    edge->discardBends(2, 0);
    EXPECT_THAT(xsOf(edge), ElementsAre(20, 40, 60));
    edge->discardBends(2, 1);
    EXPECT_THAT(xsOf(edge), ElementsAre(60));
    edge->discardBends(7, 1);
    EXPECT_EQ(edge->numberOfBends(), 0);
    expectSound();
}

TEST_F(QxDEdgePath, RerouteReplacesAllBends) {
    addBends(2);
    QxPEdge* first = edge->pSourceOrPathEdge();
    EXPECT_EQ(reroute(edge, {{1, 91}, {2, 92}, {3, 93}}), 1);
    EXPECT_EQ(bendsOf(edge), (Places{{1, 91}, {2, 92}, {3, 93}}));
    EXPECT_EQ(edge->pSourceOrPathEdge(), first);
    expectSound();
    EXPECT_EQ(reroute(edge, {}), 1);
    EXPECT_EQ(edge->hasBends(), 0);
    expectSound();
    edge->disconnect();
    EXPECT_EQ(reroute(edge, {{1, 1}}), 0);
    EXPECT_EQ(edge->numberOfBends(), -1);
}

TEST_F(QxDEdgePath, ReverseExchangesTheEndsAndKeepsTheBends) {
    addBends(2);
    const auto segments = segmentsOf(edge);
    EXPECT_EQ(edge->reverse(), 1);
    EXPECT_EQ(edge->pSourceNode(), drawing.target);
    EXPECT_THAT(xsOf(edge), ElementsAre(40, 20));
    EXPECT_EQ(segmentsOf(edge), (std::vector{segments[2], segments[1], segments[0]}));
    expectSound();
    edge->disconnect();
    EXPECT_EQ(edge->reverse(), 1);
    edge->connect();
    EXPECT_EQ(segmentsOf(edge), segments);
    expectSound();
}

TEST_F(QxDEdgePath, FollowsItsEndsToOtherNodes) {
    addBends(1);
    QxDNode* other = drawing.addNode(0, 300, 20, 20);
    EXPECT_EQ(edge->changeSourceNode(other), 1);
    EXPECT_EQ(edge->pSourceOrPathEdge()->pSourceNode(), other);
    EXPECT_EQ(edge->changeTargetNodeWithoutConnect(other), 1);
    EXPECT_EQ(edge->pTargetOrPathEdge()->pTargetNode(), other);
    EXPECT_EQ(edge->ntToPoint(0), QxPoint(0, 300));
    expectSound();
    edge->discardAllBends();
    EXPECT_EQ(edge->changeEndNodes(drawing.source, drawing.target), 1);
    expectSound();
    EXPECT_EQ(edge->ntToPoint(1), QxPoint(190, 0));
}

TEST_F(QxDEdgePath, GoesThroughEveryStateOfItsEdge) {
    addBends(2);
    const auto segments = segmentsOf(edge);
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(edge->disconnect(), 1);
        EXPECT_EQ(edge->disconnect(), 0);
        EXPECT_EQ(segments[1]->connected(), 0);
        EXPECT_EQ(edge->addBend(segments[0], QxPoint(1, 1), 1), nullptr);
        EXPECT_EQ(edge->discardBend(bendAt(1)), 0);
        EXPECT_EQ(edge->ntToPoint(0), QxPoint(200, 0)) << "the geometry is kept";
        EXPECT_EQ(edge->checkInvariants(), 1);
        EXPECT_EQ(edge->connect(), 1);
        expectSound();
        EXPECT_EQ(edge->deactivate(), 1);
        EXPECT_EQ(segments[2]->connected(), 0);
        EXPECT_EQ(edge->checkInvariants(), 1);
        EXPECT_EQ(edge->activate(), 1);
        EXPECT_EQ(edge->activate(), 1);
        expectSound();
    }
    EXPECT_EQ(segmentsOf(edge), segments);
    EXPECT_THAT(xsOf(edge), ElementsAre(20, 40));
}

TEST_F(QxDEdgePath, OnlyConnectedBendsCountInTheBounds) {
    drawing.addBend(edge, 100, 500);
    const Box with{-10, -10, 210, 500};
    const Box without{-10, -10, 210, 10};
    EXPECT_EQ(boundsOf(drawing.graph), with);
    edge->disconnect();
    EXPECT_EQ(boundsOf(drawing.graph), without);
    edge->connect();
    EXPECT_EQ(boundsOf(drawing.graph), with);
    edge->deactivate();
    EXPECT_EQ(boundsOf(drawing.graph), without);
    edge->activate();
    EXPECT_EQ(boundsOf(drawing.graph), with);
    Ref<QxDEdge> removed(drawing.graph->removeEdge(edge));
    EXPECT_EQ(boundsOf(drawing.graph), without);
    EXPECT_THAT(xsOf(removed.get()), ElementsAre(100)) << "a detached edge keeps its bends";
    EXPECT_EQ(removed->checkInvariants(), 1);
    drawing.graph->insertEdge(removed.release(), drawing.target, drawing.source);
    EXPECT_EQ(boundsOf(drawing.graph), with);
    expectSound();
    bendAt(1)->moveTo(QxPoint(100, -500), 1);
    EXPECT_EQ(boundsOf(drawing.graph), (Box{-10, -500, 210, 10}));
    edge->discardBend(bendAt(1));
    EXPECT_EQ(boundsOf(drawing.graph), without);
}

TEST_F(QxDEdgePath, GoesWithItsEdgeToAnotherGraph) {
    addBends(2);
    QxDGraph* other = drawing.manager->addGraph(0);
    other->transferTopology(drawing.graph);
    EXPECT_EQ(bendAt(1)->pOwnerGraph(), other);
    EXPECT_EQ(edge->pTargetOrPathEdge()->pOwnerGraph(), other);
    expectSound();
    QxRect rect;
    EXPECT_EQ(drawing.graph->calculateAndReturnGraphBounds(rect), 0) << "nothing is left behind";
    EXPECT_EQ(other->calculateAndReturnGraphBounds(rect), 1);
    EXPECT_EQ(boxOf(rect), (Box{-10, -10, 210, 50}));
}

TEST_F(QxDEdgePath, SurvivesItsNodesAndItsGraph) {
    addBends(2);
    drawing.graph->removeNode(drawing.source);
    EXPECT_EQ(edge->disconnected(), 1);
    EXPECT_EQ(edge->checkInvariants(), 1);
    drawing.graph->insertNode(drawing.source);
    EXPECT_EQ(edge->connect(), 1);
    expectSound();

    const Ref<QxDEdge> kept = hold(edge);
    drawing.graph->discardNode(drawing.source);
    EXPECT_EQ(kept->ownerValid(), 0);
    drawing.manager->discardGraph(drawing.graph);
    EXPECT_THAT(xsOf(kept.get()), ElementsAre(20, 40));
    EXPECT_EQ(kept->checkInvariants(), 1);

    QxDGraph* later = drawing.manager->addGraph(0);
    QxDNode* a = later->addNodeWithCoordinates(0, 0, 10, 10, 1, 0);
    EXPECT_EQ(later->insertEdge(hold(kept.get()).release(), a, a), kept.get());
    EXPECT_EQ(kept->checkPath(), 1);
}

TEST_F(QxDEdgePath, CopiesAreIndependent) {
    addBends(2);
    bendAt(1)->nameString(L"knee");
    edge->clipTargetSide(0);
    edge->internalOrthogonalRouting(1);
    edge->graphObjectStatus(QxStatusMoved);
    drawing.manager->storeClones(1);
    const Ref<QxDEdge> deep(edge->cloneObject());
    EXPECT_EQ(edge->pClonedEdge(), deep.get());
    EXPECT_EQ(deep->pClonedEdge(), nullptr);
    EXPECT_EQ(deep->internalOrthogonalRouting(), 1);
    EXPECT_EQ(deep->graphObjectStatus(), QxStatusMoved);
    drawing.manager->storeClones(0);
    const Ref<QxDEdge> shallow(edge->cloneAttributes());
    EXPECT_THAT(xsOf(shallow.get()), IsEmpty());
    EXPECT_EQ(shallow->clipTargetSide(), 0);
    edge->discardAllBends();
    EXPECT_THAT(xsOf(deep.get()), ElementsAre(20, 40));
    EXPECT_EQ(deep->checkInvariants(), 1);

    drawing.graph->insertEdge(hold(deep.get()).release(), drawing.target, drawing.source);
    EXPECT_EQ(deep->checkPath(), 1);
    edge->copyObject(deep.get());
    EXPECT_THAT(xsOf(edge), ElementsAre(20, 40));
    EXPECT_STREQ(bendAt(1)->pNameString(), L"knee");
    expectSound();
    edge->copyObject(edge);
    edge->copyObject(nullptr);
    EXPECT_EQ(edge->numberOfBends(), 2);
    edge->disconnect();
    edge->copyObject(shallow.get());
    edge->connect();
    expectSound();
    EXPECT_EQ(edge->numberOfBends(), 0);
}

TEST_F(QxDEdgePath, AGraphIsDuplicatedWithItsPaths) {
    addBends(2);
    QxDEdge* idle = drawing.addEdge(drawing.target, drawing.source);
    drawing.addBend(idle, 7, 70);
    idle->disconnect();
    QxDGraph* copy = drawing.manager->addGraph(0);
    copy->duplicateTopology(drawing.graph, 1, 1);
    EXPECT_THAT(xsOf(copy->pFirstEdge()), ElementsAre(20, 40));
    EXPECT_EQ(copy->checkInvariants(), 1);
    const auto* idleCopy = static_cast<QxDEdge*>(copy->pDisconnectedEdgeList()->pFirstObject());
    EXPECT_THAT(xsOf(idleCopy), ElementsAre(7));
    EXPECT_EQ(edge->internalUserFieldsInUse(), 0);
    edge->emptyTopology();
    EXPECT_EQ(copy->pFirstEdge()->numberOfBends(), 2);
}

TEST_F(QxDEdgePath, BendsTellWhatHappensToThem) {
    const QxPNode* bend = drawing.addBend(edge, 100, 300);
    EXPECT_THAT(drawing.events.takeTypes(), ElementsAre(BendAdded, GraphBoundsChanged));
    bendAt(1)->moveTo(QxPoint(100, 5), 1);
    const auto moved = drawing.events.take();
    ASSERT_EQ(moved.size(), 2U);
    EXPECT_EQ(moved[0], (HeardChange{PathNodeMoved, bend, {100, 300, 100, 300}, {100, 5, 100, 5}}));
    edge->addBend(edge->pTargetOrPathEdge(), QxPoint(110, 5), 1);
    edge->addBend(edge->pTargetOrPathEdge(), QxPoint(120, 5), 1);
    drawing.events.take();
    edge->discardBend(bendAt(1));
    EXPECT_THAT(drawing.events.takeTypes(), ElementsAre(PathNodeDiscarded, PathNodeRemoved));
    edge->discardAllBends();
    EXPECT_THAT(drawing.events.takeTypes(), ElementsAre(PathNodeDiscarded, PathNodeRemoved,
                                                        PathNodeDiscarded, PathNodeRemoved));
    edge->discardAllBends();
    reroute(edge, {});
    EXPECT_THAT(drawing.events.takeTypes(), IsEmpty());
}

/// Discards the edge as soon as something happens to it.
class EdgeDiscarder : public QxDrawingChangeListener {
public:
    using QxDrawingChangeListener::drawingChanged;
    void drawingChanged(QxDrawingChangeEventData*) override {
        if (QxDEdge* gone = std::exchange(edge, nullptr)) {
            gone->pOwnerGraph()->discardEdge(gone);
        }
    }
    QxDEdge* edge = nullptr;
};

TEST_F(QxDEdgePath, AListenerMayDiscardTheEdge) {
    using Edit = void (*)(QxDEdge*);
    const Edit edits[] = {
        [](QxDEdge* e) {
            EXPECT_EQ(e->addBend(e->pSourceOrPathEdge(), QxPoint(1, 80), 1), nullptr);
        },
        [](QxDEdge* e) {
            EXPECT_EQ(e->ntAddBend(e->pSourceOrPathEdge(), QxPoint(1, 80)), nullptr);
        },
        [](QxDEdge* e) { e->discardBend(QxPathIter(e).pNode()); },
        [](QxDEdge* e) { e->discardAllBends(); },
        [](QxDEdge* e) { e->discardBends(3, 0); },
        [](QxDEdge* e) {
            reroute(e, {{1, 80}, {2, 80}});
        },
        [](QxDEdge* e) { e->discardOverlappedBendsForClipping(1, 1); },
    };
    for (const Edit edit : edits) {
        EdgeDiscarder discarder;
        discarder.edge = drawing.addEdge(drawing.source, drawing.target);
        reroute(discarder.edge, {{3, 3}, {50, 50}, {198, 3}});
        factory.pEventManager()->addDrawingChangeListener(discarder.edge, &discarder);
        edit(discarder.edge);
        EXPECT_EQ(drawing.graph->numberOfAllEdges(), 1);
    }
}

TEST_F(QxDEdgePath, AListenerToTheBoundsMayDiscardTheEdge) {
    using Edit = void (*)(QxDEdge*);
    // Each of them moves the upper bound of the graph, which is at the second bend.
    const Edit edits[] = {
        [](QxDEdge* e) {
            EXPECT_EQ(e->addBend(e->pSourceOrPathEdge(), QxPoint(1, 900), 1), nullptr);
        },
        [](QxDEdge* e) { e->discardBend(QxPathIter(e, QxIterBackward).pNode()); },
        [](QxDEdge* e) { e->discardBends(2, 0); },
        [](QxDEdge* e) { e->discardAllBends(); },
        [](QxDEdge* e) {
            reroute(e, {{1, 80}, {2, 80}});
        },
        [](QxDEdge* e) { e->copyEdge(Ref<QxDEdge>(e->cloneAttributes()).get(), 1); },
        [](QxDEdge* e) { e->duplicateTopology(Ref<QxDEdge>(e->cloneAttributes()).get()); },
        [](QxDEdge* e) { e->changeEndNodes(e->pTargetNode(), e->pSourceNode()); },
        [](QxDEdge* e) { e->disconnect(); },
        [](QxDEdge* e) { e->deactivate(); },
    };
    for (const Edit edit : edits) {
        EdgeDiscarder discarder;
        QxDNode* end = drawing.addNode(200, 0, 20, 20);
        discarder.edge = drawing.addEdge(drawing.source, end);
        reroute(discarder.edge, {{50, 50}, {100, 700}});
        factory.pEventManager()->addDrawingChangeListener(drawing.graph, &discarder);
        edit(discarder.edge);
        factory.pEventManager()->removeDrawingChangeListener(drawing.graph, &discarder);
        EXPECT_EQ(drawing.graph->numberOfAllEdges(), 1) << "discarded in the middle";
        drawing.graph->discardNode(end);
        EXPECT_EQ(drawing.graph->checkInvariants(), 1);
    }
}

/// Discards the first edge while the second takes over its path.
TEST_F(QxDEdgePath, AListenerMayDiscardTheEdgeThatIsCopied) {
    using Edit = void (*)(QxDEdge*, QxDEdge*);
    const Edit edits[] = {
        [](QxDEdge* e, QxDEdge* source) { e->copyEdge(source, 1); },
        [](QxDEdge* e, QxDEdge* source) { e->duplicateTopology(source); },
    };
    for (const Edit edit : edits) {
        reroute(edge, {{50, 50}, {60, 60}});
        EdgeDiscarder discarder;
        discarder.edge = drawing.addEdge(drawing.source, drawing.target);
        reroute(discarder.edge, {{3, 33}});
        factory.pEventManager()->addDrawingChangeListener(edge, &discarder);
        edit(edge, discarder.edge);
        factory.pEventManager()->removeDrawingChangeListener(edge, &discarder);
        EXPECT_EQ(drawing.graph->numberOfAllEdges(), 1);
        expectSound();
    }
}

TEST_F(QxDEdgePath, AListenerMayDiscardANewBend) {
    class BendDiscarder : public QxDrawingChangeListener {
    public:
        using QxDrawingChangeListener::drawingChanged;
        void drawingChanged(QxDrawingChangeEventData*) override { edge->discardAllBends(); }
        QxDEdge* edge = nullptr;
    };
    BendDiscarder discarder;
    discarder.edge = edge;
    for (QxGraphObject* heard :
         {static_cast<QxGraphObject*>(edge), static_cast<QxGraphObject*>(drawing.graph)}) {
        factory.pEventManager()->addDrawingChangeListener(heard, &discarder);
        EXPECT_EQ(drawing.addBend(edge, 50, 500), nullptr);
        factory.pEventManager()->removeDrawingChangeListener(heard, &discarder);
        EXPECT_EQ(edge->numberOfBends(), 0);
        expectSound();
    }
}

TEST_F(QxDEdgePath, ABendTakesItsListenersWithIt) {
    Ref<QxPNode> loose(edge->addPNode(QxPoint(1, 1)));
    edge->removePNode(loose.get());
    EventRecorder ear;
    factory.pEventManager()->addDrawingChangeListener(loose.get(), &ear);
    const QxPNode* place = loose.get();
    loose = Ref<QxPNode>();
    EXPECT_EQ(
        factory.pEventManager()->removeDrawingChangeListener(const_cast<QxPNode*>(place), &ear), 0)
        << "nothing is left to take away";
}

TEST_F(QxDEdgePath, ABendReturnsToWhereItWasStored) {
    addBends(1);
    bendAt(1)->storeMovedNode();
    bendAt(1)->ntMoveTo(QxPoint(-5, -6));
    bendAt(1)->restoreMovedNode();
    EXPECT_EQ(bendAt(1)->iCenter(), QxPoint(20, 50));
    EXPECT_EQ(bendAt(1)->pRectBeforeMove(), nullptr);
}

TEST_F(QxDEdgePath, PartsCanBeTakenOutAndPutBack) {
    addBends(2);
    QxPEdge* segment = segmentsOf(edge)[1];
    QxPNode* from = bendAt(1);
    QxPNode* to = bendAt(2);
    edge->removePEdge(segment);
    EXPECT_EQ(segment->pOwnerEdge(), nullptr);
    EXPECT_EQ(segment->pSourceNode(), nullptr);
    EXPECT_EQ(edge->checkPath(), 0);
    EXPECT_EQ(edge->insertPEdge(segment, from, to), segment);
    expectSound();
    segment->copyObject(edge->pSourceOrPathEdge());
    expectSound();

    Ref<QxPEdge> spare(new QxPEdge(&factory));
    EXPECT_EQ(edge->insertPEdge(spare.get(), drawing.source, drawing.target), nullptr)
        << "there are a first and a last segment";
    expectSound();

    Ref<QxPNode> loose(edge->addPNode(QxPoint(1, 1)));
    EXPECT_EQ(loose->pOwnerEdge(), edge);
    EXPECT_EQ(segment->canConnect(loose.get()), 1);
    EXPECT_EQ(segment->canConnect(drawing.source), 1);
    EXPECT_EQ(segment->canEnd(drawing.source), 0) << "only the first and last end at a node";
    EXPECT_EQ(edge->removePNode(loose.get()), loose.get());
    EXPECT_EQ(segment->canConnect(loose.get()), 0);
    EXPECT_EQ(loose->isUsable(), 0);
    expectSound();
}

TEST_F(QxDEdgePath, AnOpenPathIsNoSoundStateOfAnIdleEdge) {
    addBends(2);
    QxPEdge* segment = segmentsOf(edge)[1];
    edge->disconnect();
    expectSound();
    QxPNode* from = bendAt(1);
    QxPNode* to = bendAt(2);
    edge->removePEdge(segment);
    EXPECT_EQ(edge->checkInvariants(), 0);
    EXPECT_EQ(edge->insertPEdge(segment, from, to), segment);
    expectSound();
}

TEST_F(QxDEdgePath, AnEdgeBetweenGraphsOwnsItsPathToo) {
    QxDGraph* other = drawing.manager->addGraph(0);
    QxDNode* far = other->addNodeWithCoordinates(50, 50, 10, 10, 1, 0);
    QxDEdge* between = drawing.manager->addEdge(drawing.source, far, 0);
    QxPNode* bend = drawing.addBend(between, 30, 900);
    ASSERT_NE(bend, nullptr);
    EXPECT_EQ(bend->pOwnerGraph(), drawing.manager->pIntergraph());
    EXPECT_EQ(bend->intergraphNode(), 1);
    EXPECT_EQ(between->checkInvariants(), 1);
    EXPECT_EQ(boundsOf(drawing.graph), (Box{-10, -10, 210, 10}));
    other->discardNode(far);
    EXPECT_EQ(drawing.manager->pIntergraph()->numberOfAllEdges(), 0);
}

TEST_F(QxDEdgePath, ALongPathCostsNoStack) {
    constexpr std::int32_t Count = 100000;
    for (std::int32_t i = 0; i < Count; ++i) {
        edge->addBend(edge->pTargetOrPathEdge(), QxPoint(i % 100, 100 + i % 50), 1);
    }
    EXPECT_EQ(edge->numberOfBends(), Count);
    EXPECT_GT(edge->ntEdgeLength(), Count);
    edge->reverse();
    edge->disconnect();
    edge->connect();
    for (std::int32_t i = 0; i < Count / 2; ++i) {
        edge->discardBend(static_cast<QxPNode*>(edge->pTargetOrPathEdge()->QxEdge::pSourceNode()));
    }
    expectSound();
    const Ref<QxDEdge> copy(edge->cloneObject());
    EXPECT_EQ(bendsOf(copy.get()).size(), static_cast<std::size_t>(Count / 2));
    EXPECT_EQ(drawing.graph->discardEdge(edge), 1);
    EXPECT_EQ(boundsOf(drawing.graph), (Box{-10, -10, 210, 10}));
}

}  // namespace
