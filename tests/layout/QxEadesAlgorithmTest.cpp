// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/layout/QxEadesAlgorithm.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

#include "layout/LayoutTestGraph.h"
#include "qx/drawing/QxPNode.h"
#include "qx/layout/QxSpringEmbedderInfo.h"

namespace {

constexpr std::int32_t Highest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t Lowest = std::numeric_limits<std::int32_t>::min();

QxGNodeDList listOf(const std::vector<QxDNode*>& nodes) {
    QxGNodeDList list;
    for (QxDNode* node : nodes) {
        list.appendNode(node);
    }
    return list;
}

/// Makes the rounds up to a given one and counts the nodes it was asked about.
class CountedRounds : public QxEadesAlgorithm {
public:
    CountedRounds(const LayoutTestGraph& drawing, QxGNodeDList* constrained,
                  QxGNodeDList* unconstrained, std::int32_t length, std::int32_t rounds)
        : QxEadesAlgorithm(drawing.graph(), constrained, unconstrained, length, 0, 0),
          m_rounds(rounds) {}

    int computed = 0;

protected:
    int terminationCondition() override { return numberOfRounds() >= m_rounds ? 1 : 0; }
    void computeForces(QxGNode* node) override {
        ++computed;
        QxEadesAlgorithm::computeForces(node);
    }

private:
    std::int32_t m_rounds;
};

/// Works out each node's forces when it is another one's turn.
class OutOfTurn : public QxEadesAlgorithm {
public:
    using QxEadesAlgorithm::QxEadesAlgorithm;

protected:
    void computeForces(QxGNode* node) override {
        const QxGNodeDList* const list = pUnconstrainedNodeList();
        const std::int32_t position = list->positionOfNode(node);
        QxEadesAlgorithm::computeForces(list->pNodeInPosition(position % list->count() + 1));
    }
};

/// What round 0 makes of the centers, in plain words: `ends[i]` are the other ends at node i.
std::vector<QxPoint> centersAfterRound(const std::vector<QxPoint>& centers,
                                       const std::vector<std::vector<QxPoint>>& ends, double length,
                                       int round) {
    std::vector<QxPoint> result;
    for (std::size_t i = 0; i < centers.size(); ++i) {
        std::int64_t forceX = 0;
        std::int64_t forceY = 0;
        const auto add = [&](const QxPoint& other, bool pull) {
            const std::int64_t dx = std::int64_t{centers[i].x()} - other.x();
            const std::int64_t dy = std::int64_t{centers[i].y()} - other.y();
            const double n =
                std::floor(std::hypot(static_cast<double>(dx), static_cast<double>(dy)));
            if (n == 0) {
                return;
            }
            const double scale =
                pull ? 100.0 * (n * n) / (length * length) : 100.0 * (length * length) / (n * n);
            const int sign = pull ? -1 : 1;
            forceX += sign * static_cast<std::int64_t>(static_cast<double>(dx) * scale);
            forceY += sign * static_cast<std::int64_t>(static_cast<double>(dy) * scale);
        };
        for (const QxPoint& end : ends[i]) {
            add(end, true);
        }
        for (const QxPoint& other : centers) {
            add(other, false);
        }
        const double step = std::max((28 - round) * length * 0.5 / 30.0, 1.41);
        const double size =
            std::floor(std::hypot(static_cast<double>(forceX), static_cast<double>(forceY)));
        QxPoint center = centers[i];
        if (size != 0) {
            const double moveX = static_cast<double>(forceX) * step / size;
            const double moveY = static_cast<double>(forceY) * step / size;
            center.moveTo(center.x() + static_cast<std::int32_t>(moveX),
                          center.y() + static_cast<std::int32_t>(moveY));
        }
        result.push_back(center);
    }
    return result;
}

TEST(QxEadesAlgorithm, UnconnectedNodesPartByOneStepARound) {
    LayoutTestGraph drawing;
    const QxDNode* const left = drawing.addNode(0, 0);
    const QxDNode* const right = drawing.addNode(100, 0);
    QxGNodeDList nodes = listOf(drawing.nodes());
    CountedRounds first(drawing, nullptr, &nodes, 60, 1);
    first.run();
    EXPECT_EQ(left->iCenter(), QxPoint(-28, 0));
    EXPECT_EQ(right->iCenter(), QxPoint(128, 0));
    EXPECT_EQ(first.computed, 2);
    // From round 28 on the step is 1.41, a whole unit along an axis.
    CountedRounds last(drawing, nullptr, &nodes, 60, 31);
    last.numberOfRounds(28);
    last.run();
    EXPECT_EQ(left->iCenter(), QxPoint(-31, 0));
    EXPECT_EQ(right->iCenter(), QxPoint(131, 0));
    EXPECT_EQ(last.computed, 6);
}

TEST(QxEadesAlgorithm, ConstrainedNodesPushButStay) {
    LayoutTestGraph drawing;
    QxDNode* const wall = drawing.addNode(0, 0);
    QxDNode* const free = drawing.addNode(0, -10);
    QxGNodeDList constrained = listOf({wall});
    QxGNodeDList unconstrained = listOf({free});
    CountedRounds(drawing, &constrained, &unconstrained, 60, 1).run();
    EXPECT_EQ(wall->iCenter(), QxPoint(0, 0));
    EXPECT_EQ(free->iCenter(), QxPoint(0, -38));
}

TEST(QxEadesAlgorithm, FollowsTheFormulasWithEdgesAndBends) {
    std::mt19937 random(3);
    LayoutTestGraph drawing;
    drawing.addRandomTree(random, 60, 1'000);
    QxDEdge* const bent = drawing.addEdge(drawing.nodes()[0], drawing.nodes()[7]);
    const QxPoint bend(-300, 2'000);
    bent->ntAddBend(bent->pSourceOrPathEdge(), bend);
    drawing.addEdge(drawing.nodes()[5], drawing.nodes()[5]);
    for (int round = 0; round < 31; round += 10) {
        const std::vector<QxPoint> before = drawing.centers();
        std::vector<std::vector<QxPoint>> ends(before.size());
        for (std::size_t i = 0; i < before.size(); ++i) {
            for (QxInAndOutDEdgeIter it(drawing.nodes()[i]); it; ++it) {
                const QxDEdge* const edge = it.pEdge();
                const bool isSource = edge->pSourceNode() == drawing.nodes()[i];
                const QxGNode* const other = isSource ? edge->pTargetNode() : edge->pSourceNode();
                ends[i].push_back(edge == bent ? bend : other->iCenter());
            }
        }
        QxGNodeDList nodes = listOf(drawing.nodes());
        CountedRounds algorithm(drawing, nullptr, &nodes, 75, round + 1);
        algorithm.numberOfRounds(round);
        algorithm.run();
        EXPECT_EQ(drawing.centers(), centersAfterRound(before, ends, 75.0, round));
    }
}

TEST(QxEadesAlgorithm, BatchThreadsAndSingleNodesGiveTheSameDrawing) {
    std::vector<std::vector<QxPoint>> results;
    for (int variant = 0; variant < 4; ++variant) {
        std::mt19937 random(5);
        LayoutTestGraph drawing;
        drawing.addRandomTree(random, 150, 800);
        const std::vector<QxDNode*>& all = drawing.nodes();
        QxGNodeDList fixed = listOf({all.begin(), all.begin() + 20});
        QxGNodeDList moving = listOf({all.begin() + 20, all.end()});
        if (variant == 0) {
            OutOfTurn(drawing.graph(), &fixed, &moving, 50, 0, 0).run();
        } else {
            QxEadesAlgorithm algorithm(drawing.graph(), &fixed, &moving, 50, 0, 0);
            EXPECT_EQ(algorithm.numberOfThreads(-4), 0);
            algorithm.numberOfThreads(variant - 1);
            algorithm.run();
            EXPECT_EQ(algorithm.numberOfRounds(), 31);
        }
        results.push_back(drawing.centers());
        EXPECT_EQ(results.back(), results.front()) << "variant " << variant;
    }
}

TEST(QxEadesAlgorithm, EmptyAndMissingListsStillMakeAllRounds) {
    LayoutTestGraph drawing;
    const QxDNode* const node = drawing.addNode(5, 6);
    QxGNodeDList empty;
    QxEadesAlgorithm withEmpty(drawing.graph(), &empty, &empty, 50, 0, 0);
    withEmpty.run();
    EXPECT_EQ(withEmpty.numberOfRounds(), 31);
    QxEadesAlgorithm withNone(nullptr, nullptr, nullptr, 50, 0, 0);
    withNone.run();
    EXPECT_EQ(withNone.numberOfRounds(), 31);
    EXPECT_EQ(node->iCenter(), QxPoint(5, 6));
    // The frame alone makes no round.
    QxGNodeDList nodes = listOf(drawing.nodes());
    QxSpringEmbedderAlgorithm(drawing.graph(), nullptr, &nodes, 50).run();
    EXPECT_EQ(node->iCenter(), QxPoint(5, 6));
}

TEST(QxEadesAlgorithm, ConstraintsKeepOneAxis) {
    struct Case {
        int x;
        int y;
        bool movesX;
        bool movesY;
    };
    for (const Case& c : {Case{1, 0, false, true}, Case{0, 1, true, false}, Case{1, 1, false, true},
                          Case{0, 0, true, true}}) {
        LayoutTestGraph drawing;
        drawing.addNode(0, 0);
        drawing.addNode(30, 40);
        QxGNodeDList nodes = listOf(drawing.nodes());
        QxEadesAlgorithm(drawing.graph(), nullptr, &nodes, 50, c.x, c.y).run();
        const QxPoint center = drawing.nodes()[1]->iCenter();
        EXPECT_EQ(center.x() != 30, c.movesX) << c.x << c.y;
        EXPECT_EQ(center.y() != 40, c.movesY) << c.x << c.y;
    }
}

TEST(QxEadesAlgorithm, NodesAtOnePlaceStayTogether) {
    LayoutTestGraph drawing;
    drawing.addNode(10, 10);
    drawing.addNode(10, 10);
    drawing.addEdge(drawing.nodes()[0], drawing.nodes()[1]);
    QxGNodeDList nodes = listOf(drawing.nodes());
    QxEadesAlgorithm(drawing.graph(), nullptr, &nodes, 50, 0, 0).run();
    EXPECT_EQ(drawing.nodes()[0]->iCenter(), QxPoint(10, 10));
    EXPECT_EQ(drawing.nodes()[1]->iCenter(), QxPoint(10, 10));
}

TEST(QxEadesAlgorithm, NodesDiscardedByAListenerNeitherMoveNorPush) {
    LayoutTestGraph drawing;
    for (int i = 0; i < 4; ++i) {
        drawing.addNode(30 * i, 0);
    }
    drawing.addEdge(drawing.nodes()[0], drawing.nodes()[1]);
    drawing.addEdge(drawing.nodes()[2], drawing.nodes()[3]);
    QxGNodeDList constrained = listOf({drawing.nodes()[0]});
    QxGNodeDList unconstrained =
        listOf({drawing.nodes()[1], drawing.nodes()[2], drawing.nodes()[3]});
    const QxDNode* const survivor = drawing.nodes()[1];
    int discarded = 0;
    const OnFirstMove listener(drawing, [&](const QxGNode* moved) {
        ASSERT_EQ(moved, survivor);
        for (const std::size_t doomed : {3U, 2U, 0U}) {
            drawing.discardNode(drawing.nodes()[doomed]);
            ++discarded;
        }
    });
    QxEadesAlgorithm algorithm(drawing.graph(), &constrained, &unconstrained, 60, 0, 0);
    CountedRounds first(drawing, &constrained, &unconstrained, 60, 1);
    first.run();
    EXPECT_EQ(discarded, 3);
    ASSERT_EQ(drawing.graph()->numberOfNodes(), 1);
    // Alone, the node stays where the first round left it.
    const QxPoint left = survivor->iCenter();
    QxGNodeDList alone = listOf({drawing.nodes()[0]});
    QxEadesAlgorithm(drawing.graph(), nullptr, &alone, 60, 0, 0).run();
    EXPECT_EQ(survivor->iCenter(), left);
}

/// The rounds after the one in which nodes went must not meet them either.
TEST(QxEadesAlgorithm, ARunGoesOnWithoutTheNodesThatAreGone) {
    std::vector<QxPoint> ends;
    for (const int threads : {1, 2}) {
        LayoutTestGraph drawing;
        std::mt19937 random(11);
        drawing.addRandomTree(random, 40, 500);
        QxGNodeDList all = listOf(drawing.nodes());
        const OnFirstMove listener(drawing, [&](const QxGNode*) {
            while (drawing.nodes().size() > 1) {
                drawing.discardNode(drawing.nodes().back());
            }
        });
        CountedRounds algorithm(drawing, nullptr, &all, 50, 31);
        algorithm.numberOfThreads(threads);
        algorithm.run();
        EXPECT_TRUE(listener.hasActed());
        EXPECT_EQ(algorithm.computed, 40 + 30) << "40 nodes in the first round, one in the others";
        ends.push_back(drawing.nodes()[0]->iCenter());
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
    for (const std::int32_t length : {0, -7, Lowest, Highest}) {
        LayoutTestGraph drawing;
        drawing.addNode(Lowest, Lowest);
        drawing.addNode(Highest, Highest);
        drawing.addNode(Highest - 3, 0);
        drawing.addNode(0, 0);
        drawing.addEdge(drawing.nodes()[0], drawing.nodes()[1]);
        drawing.addEdge(drawing.nodes()[2], drawing.nodes()[3]);
        QxGNodeDList nodes = listOf(drawing.nodes());
        QxEadesAlgorithm(drawing.graph(), nullptr, &nodes, length, 0, 0).run();
    }
}

}  // namespace
