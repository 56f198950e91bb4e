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
