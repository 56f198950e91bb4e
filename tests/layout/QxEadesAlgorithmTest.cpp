// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/layout/QxEadesAlgorithm.h"

#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>

#include "layout/LayoutTestGraph.h"
#include "qx/drawing/QxPNode.h"
#include "qx/layout/QxSpringEmbedderInfo.h"
#include "support/TestRandom.h"

namespace {

using qx::MaxInt32;
using qx::MinInt32;

QxGNodeDList listOf(const std::vector<QxDNode*>& nodes) {
    QxGNodeDList list;
    for (QxDNode* node : nodes) {
        list.appendNode(node);
    }
    return list;
}

/// Makes the rounds up to a given one and counts the nodes it was asked about. Out of turn, it
/// works out each node's forces when it is another one's turn.
class CountedRounds : public QxEadesAlgorithm {
public:
    CountedRounds(const LayoutTestGraph& drawing, QxGNodeDList* constrained,
                  QxGNodeDList* unconstrained, std::int32_t length, std::int32_t rounds)
        : QxEadesAlgorithm(drawing.graph(), constrained, unconstrained, length, 0, 0),
          m_rounds(rounds) {}

    int computed = 0;
    bool isOutOfTurn = false;

protected:
    int terminationCondition() override { return numberOfRounds() >= m_rounds ? 1 : 0; }
    void computeForces(QxGNode* node) override {
        ++computed;
        const QxGNodeDList* const list = pUnconstrainedNodeList();
        const std::int32_t position = isOutOfTurn ? list->positionOfNode(node) : 0;
        QxEadesAlgorithm::computeForces(
            isOutOfTurn ? list->pNodeInPosition(position % list->count() + 1) : node);
    }

private:
    std::int32_t m_rounds;
};

/// What a round makes of a center, in plain words: `ends` are the other ends of the edges there,
/// `others` the centers of all nodes.
QxPoint centerAfterRound(const QxPoint& center, const std::vector<QxPoint>& ends,
                         const std::vector<QxPoint>& others, double length, int round) {
    // Doubles hold all sums here; terms are whole numbers.
    double forceX = 0;
    double forceY = 0;
    const auto add = [&](const QxPoint& other, bool pull) {
        const double dx = static_cast<double>(center.x()) - other.x();
        const double dy = static_cast<double>(center.y()) - other.y();
        const double n = std::floor(std::hypot(dx, dy));
        if (n != 0) {
            const double scale =
                pull ? -100.0 * (n * n) / (length * length) : 100.0 * (length * length) / (n * n);
            forceX += std::trunc(dx * scale);
            forceY += std::trunc(dy * scale);
        }
    };
    for (const QxPoint& end : ends) {
        add(end, true);
    }
    for (const QxPoint& other : others) {
        add(other, false);
    }
    while (std::max(std::abs(forceX), std::abs(forceY)) > MaxInt32) {
        forceX = std::trunc(forceX / 2);
        forceY = std::trunc(forceY / 2);
    }
    const double step = std::max((28 - round) * length * 0.5 / 30.0, 1.41);
    const double size = std::max(std::floor(std::hypot(forceX, forceY)), 1.0);
    return {center.x() + static_cast<std::int32_t>(forceX * step / size),
            center.y() + static_cast<std::int32_t>(forceY * step / size)};
}

/// The other ends of the edges at a node; `bent` has one bend.
std::vector<QxPoint> endsAt(const QxDNode* node, const QxDEdge* bent, const QxPoint& bend) {
    std::vector<QxPoint> ends;
    for (QxInAndOutDEdgeIter it(node); it; ++it) {
        const bool isSource = it.pEdge()->pSourceNode() == node;
        const QxGNode* other = isSource ? it.pEdge()->pTargetNode() : it.pEdge()->pSourceNode();
        ends.push_back(it.pEdge() == bent ? bend : other->iCenter());
    }
    return ends;
}

/// The lists, the constraints, the threads, the order of asking, edges with bends, self-loops and
/// edges of any length: forces beyond 32 bits keep their direction.
TEST(QxEadesAlgorithm, FollowsTheFormulas) {
    for (std::uint32_t seed = qxtest::testSeed(1), last = seed + 60; seed < last; ++seed) {
        SCOPED_TRACE(qxtest::seedTrace(seed));
        qxtest::TestRandom random(seed);
        std::mt19937 engine(seed);
        LayoutTestGraph drawing;
        const std::int32_t length = random.pick(std::vector<std::int32_t>{3, 60, 75, 5'000});
        drawing.addRandomTree(engine, static_cast<std::size_t>(2 + random.below(60)),
                              random.pick(std::vector<std::int32_t>{20, 1'000, 30'000, 4'000'000}));
        const std::vector<QxDNode*>& nodes = drawing.nodes();
        QxDEdge* const bent = drawing.addEdge(nodes[0], nodes.back());
        const QxPoint bend(-300, 2'000);
        bent->ntAddBend(bent->pSourceOrPathEdge(), bend);
        drawing.addEdge(nodes[1], nodes[1]);
        const auto fixedCount =
            random.chance(30) ? random.below(static_cast<int>(nodes.size())) : 0;
        QxGNodeDList fixed = listOf({nodes.begin(), nodes.begin() + fixedCount});
        QxGNodeDList moving = listOf({nodes.begin() + fixedCount, nodes.end()});
        const int round = random.below(31);
        const std::vector<QxPoint> before = drawing.centers();
        std::vector<QxPoint> expected = before;
        CountedRounds algorithm(drawing, &fixed, &moving, length, round + 1);
        algorithm.numberOfRounds(round);
        const int keepsX = random.below(5) / 4;
        const int keepsY = random.below(5) / 4;
        EXPECT_EQ(algorithm.xConstraint(5 * keepsX), keepsX);
        EXPECT_EQ(algorithm.yConstraint(5 * keepsY), keepsY);
        algorithm.isOutOfTurn = random.chance(30);
        algorithm.numberOfThreads(random.below(4));
        for (std::size_t i = static_cast<std::size_t>(fixedCount); i < nodes.size(); ++i) {
            QxPoint& center = expected[i];
            center = centerAfterRound(center, endsAt(nodes[i], bent, bend), before, length, round);
            if (keepsX != 0) {
                center.x(before[i].x());
            } else if (keepsY != 0) {
                center.y(before[i].y());
            }
        }
        algorithm.run();
        EXPECT_EQ(drawing.centers(), expected);
        EXPECT_EQ(algorithm.computed, moving.count());
    }
}

TEST(QxEadesAlgorithm, EmptyAndMissingListsStillMakeAllRounds) {
    LayoutTestGraph drawing;
    const QxDNode* const node = drawing.addNode(5, 6);
    QxGNodeDList empty;
    QxEadesAlgorithm withEmpty(drawing.graph(), &empty, &empty, 50, 0, 0);
    withEmpty.run();
    EXPECT_EQ(withEmpty.numberOfRounds(), 31);
    EXPECT_EQ(withEmpty.numberOfThreads(-4), 0);
    QxEadesAlgorithm withNone(nullptr, nullptr, nullptr, 50, 0, 0);
    withNone.run();
    EXPECT_EQ(withNone.numberOfRounds(), 31);
    // The frame alone makes no round.
    QxGNodeDList nodes = listOf(drawing.nodes());
    QxSpringEmbedderAlgorithm(drawing.graph(), nullptr, &nodes, 50).run();
    EXPECT_EQ(node->iCenter(), QxPoint(5, 6));
}

/// Nodes that a listener discards neither move nor push, in this round and in those after it.
TEST(QxEadesAlgorithm, ARunGoesOnWithoutTheNodesThatAreGone) {
    std::vector<QxPoint> ends;
    for (const int threads : {1, 2}) {
        LayoutTestGraph drawing;
        std::mt19937 random(11);
        drawing.addRandomTree(random, 40, 500);
        const std::vector<QxDNode*> all = drawing.nodes();
        QxGNodeDList moving = listOf({all.begin(), all.begin() + 30});
        QxGNodeDList fixed = listOf({all.begin() + 30, all.end()});
        QxPoint left;
        QxDNode* const gone = all[7];
        gone->vAddRef();
        const QxPoint placeOfGone = gone->iCenter();
        const OnFirstMove listener(drawing, [&](const QxGNode* moved) {
            EXPECT_EQ(moved, all[0]);
            while (drawing.nodes().size() > 1) {
                drawing.discardNode(drawing.nodes().back());
            }
            left = moved->iCenter();
        });
        CountedRounds algorithm(drawing, &fixed, &moving, 50, 31);
        algorithm.numberOfThreads(threads);
        algorithm.run();
        EXPECT_TRUE(listener.hasActed());
        EXPECT_EQ(algorithm.computed, 30 + 30) << "30 nodes in the first round, one in the others";
        EXPECT_EQ(drawing.nodes()[0]->iCenter(), left) << "alone, it stays where it was left";
        EXPECT_EQ(gone->iCenter(), placeOfGone);
        gone->vRelease();
        ends.push_back(left);
    }
    EXPECT_EQ(ends[0], ends[1]);
}

/// Throws out of a round, and asks about a node afterwards, when there is no round any more.
class Interrupted : public QxEadesAlgorithm {
public:
    using QxEadesAlgorithm::QxEadesAlgorithm;
    QxSize pushOn(QxGNode* node) {
        m_throws = false;
        computeForces(node);
        return pSpringEmbedderInfo(node)->displacement();
    }

protected:
    void computeForces(QxGNode* node) override {
        QxEadesAlgorithm::computeForces(node);
        if (m_throws) {
            throw std::runtime_error("interrupted");
        }
    }

private:
    bool m_throws = true;
};

TEST(QxEadesAlgorithm, ARoundThatThrowsIsForgotten) {
    LayoutTestGraph drawing;
    drawing.addNode(0, 0);
    drawing.addNode(100, 0);
    QxGNodeDList nodes = listOf(drawing.nodes());
    Interrupted algorithm(drawing.graph(), nullptr, &nodes, 60, 0, 0);
    EXPECT_THROW(algorithm.run(), std::runtime_error);
    drawing.nodes()[0]->moveTo(QxPoint(100, -70), 1);
    // The pushes of the round, sideways, are gone with it.
    EXPECT_EQ(algorithm.pushOn(drawing.nodes()[0]), QxSize(0, -28));
}

/// Nothing overflows; what is pushed at the end of the range stops there.
TEST(QxEadesAlgorithm, ExtremesAreHarmless) {
    for (const std::int32_t length : {0, -7, MinInt32, MaxInt32}) {
        LayoutTestGraph drawing;
        drawing.addNode(MinInt32, MinInt32);
        drawing.addNode(MaxInt32, MaxInt32);
        drawing.addNode(MaxInt32 - 3, 0);
        drawing.addNode(0, 0);
        drawing.addEdge(drawing.nodes()[0], drawing.nodes()[1]);
        drawing.addEdge(drawing.nodes()[2], drawing.nodes()[3]);
        QxGNodeDList nodes = listOf(drawing.nodes());
        QxEadesAlgorithm(drawing.graph(), nullptr, &nodes, length, 0, 0).run();
    }
}

}  // namespace
