// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/drawing/QxPathIter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "drawing/EdgePathTesting.h"

namespace {

using namespace qxtest;
using testing::ElementsAre;
using testing::IsEmpty;

using Pairs = std::vector<std::pair<const QxPEdge*, const QxPNode*>>;

template <class Walk>
Pairs pairsOf(Walk walk) {
    Pairs pairs;
    for (; walk; ++walk) {
        pairs.emplace_back(walk.pEdge(), walk.pNode());
    }
    EXPECT_EQ(walk.pEdge(), nullptr);
    return pairs;
}

class QxPathIters : public testing::Test {
protected:
    QxFactory factory;
    EdgeDrawing drawing{factory};
    QxDEdge* edge = drawing.edge;
    QxPNode* first = drawing.addBend(edge, 50, 30);
    QxPNode* second = drawing.addBend(edge, 100, 30);
    std::vector<QxPEdge*> segments = segmentsOf(edge);
};

TEST_F(QxPathIters, VisitPairsInBothDirections) {
    const Pairs forward{{segments[0], first}, {segments[1], second}, {segments[2], nullptr}};
    const Pairs backward{{segments[2], second}, {segments[1], first}, {segments[0], nullptr}};
    EXPECT_EQ(pairsOf(QxPathIter(edge)), forward);
    EXPECT_EQ(pairsOf(QxPathIter(edge, QxIterBackward)), backward);
    EXPECT_EQ(pairsOf(QxDisconnectedPathIter(edge)), forward);
    EXPECT_EQ(pairsOf(QxDisconnectedPathIter(edge, QxIterBackward)), backward);
}

TEST_F(QxPathIters, OnlyTheDisconnectedWalkFollowsAPathThatIsNotConnected) {
    const Pairs whole = pairsOf(QxPathIter(edge));
    edge->disconnect();
    EXPECT_THAT(pairsOf(QxPathIter(edge)), IsEmpty());
    EXPECT_EQ(pairsOf(QxDisconnectedPathIter(edge)), whole);
    edge->connect();
    edge->deactivate();
    EXPECT_THAT(pairsOf(QxPathIter(edge)), IsEmpty());
    EXPECT_EQ(pairsOf(QxDisconnectedPathIter(edge)), whole);
}

TEST_F(QxPathIters, TakeNullAndStartAnew) {
    EXPECT_THAT(pairsOf(QxPathIter(nullptr)), IsEmpty());
    EXPECT_THAT(pairsOf(QxDisconnectedPathIter(nullptr)), IsEmpty());
    QxPathIter it;
    EXPECT_FALSE(it);
    ++it;
    it.init(edge, QxIterBackward);
    EXPECT_EQ(it.pEdge(), segments[2]);
}

TEST_F(QxPathIters, VisiblePointsComeWithTheirSegments) {
    struct Visit {
        Place point;
        const QxPEdge* edge;
        const QxPNode* node;
        bool operator==(const Visit&) const = default;
    };
    const auto visit = [this](QxIterDirectionEnum direction) {
        std::vector<Visit> visits;
        for (QxEdgeVisiblePointDListIter it(edge, 0, direction); it; ++it) {
            QxPoint point;
            it.getPoint(point);
            visits.push_back({placeOf(point), it.pEdge(), it.pNode()});
        }
        return visits;
    };
    drawing.addBend(edge, 195, 5);  // within the target: hidden
    EXPECT_THAT(
        visit(QxIterForward),
        ElementsAre(Visit{{10, 6}, segments[0], nullptr}, Visit{{50, 30}, segments[0], first},
                    Visit{{100, 30}, segments[1], second}, Visit{{190, 6}, segments[2], nullptr}));
    EXPECT_THAT(
        visit(QxIterBackward),
        ElementsAre(Visit{{190, 6}, segments[2], nullptr}, Visit{{100, 30}, segments[2], second},
                    Visit{{50, 30}, segments[1], first}, Visit{{10, 6}, segments[0], nullptr}));
}

}  // namespace
