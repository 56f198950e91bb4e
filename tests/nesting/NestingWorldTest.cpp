// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// What holds in a nested drawing whatever is done to it.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <string>
#include <tuple>

#include "drawing/DrawingTesting.h"
#include "nesting/NestedWorld.h"
#include "qx/drawing/QxDrawingFlags.h"
#include "qx/drawing/QxPNode.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/events/QxComplexityChangeListener.h"
#include "qx/events/QxDEventManager.h"
#include "qx/events/QxDrawingChangeListener.h"
#include "qx/foundation/graph/QxGraphChangeListener.h"
#include "qx/nesting/QxDChildGraphForestEdge.h"
#include "qx/nesting/QxDChildGraphForestNode.h"
#include "qx/nesting/QxExpandedNodeExtension.h"

namespace {

using namespace qxtest;

class NestingWorld : public NestedWorld {
public:
    using NestedWorld::NestedWorld;

    void edit() {
        if (nodes().empty() || edges().empty()) {
            return step();
        }
        QxDNode* node = random.pick(nodes());
        QxDEdge* edge = random.pick(edges());
        QxDGraph* graph = random.pick(graphs());
        switch (random.below(6)) {
            case 0:
                node->moveTo(random.below(600), random.below(600), 1);
                break;
            case 1:
                node->resize(random.below(120), random.below(120), 1);
                break;
            case 2:
                edge->addBend(edge->pSourceOrPathEdge(),
                              QxPoint(random.below(400), random.below(400)), 1);
                break;
            case 3:
                spaceOut(*hold(graph));
                break;
            default:
                changeComplexity();
        }
    }
    /// Shows more or less than before.
    void changeComplexity() {
        QxDNode* node = random.pick(nodes());
        QxDGraph* graph = node->pOwnerGraph();
        QxDNodeDList some;
        for (QxDNode* one : objectsOf<QxDNode>(*graph->pNodeList())) {
            if (one != node && random.chance(30)) {
                some.appendNode(one);
            }
        }
        switch (random.below(6)) {
            case 0:
                graph->hide(&some, nullptr, nullptr, nullptr);
                break;
            case 1:
                graph->unhideAll();
                break;
            case 2:
                if (node->pChildGraph() == nullptr) {
                    const auto inner = addFoldGraph();
                    if (graph->fold(node, inner.get(), &some, nullptr, nullptr, 1) == 0) {
                        manager->discardGraph(inner.get());
                    }
                }
                break;
            case 3:
                node->unfold(nullptr, nullptr, 1);
                break;
            default:
                if (node->expand() == 0) {
                    node->collapse();
                }
        }
    }

    std::string fault() const {
        for (const QxDGraph* graph : graphs()) {
            const bool shows = showsPlainly(graph);
            if ((graph->isVisible() != 0) != shows) {
                return "a graph shows that lies inside something shut, or the other way round";
            }
            QxRect walked;
            const bool any = walkBounds(*graph, walked);
            if (shows && (graph->boundsInitialized() != (any ? 1 : 0) ||
                          (any && !(*graph->pBoundingRect() == walked)))) {
                return "the bounds of a graph that shows are not what it covers";
            }
            const QxDNode* node = graph->pNestedWithinNode();
            if (shows && node != nullptr && graph->isAnchorGraph() == 0 && !isFitted(*node)) {
                return "an expanded node has not the size that its graph needs";
            }
        }
        if (const QxDGraph* between = manager->pQueryIntergraph()) {
            QxRect walked;
            const int any = between->calculateEdgeBoundsWithLabels(walked);
            QxRect kept;
            if (between->calculateGraphBounds(kept) != any || (any != 0 && !(kept == walked))) {
                return "the edges between graphs cover something else";
            }
        }
        return manager->checkInvariants() == 1 ? "" : "the drawing is not sound";
    }

    /// Marks that only last while something is done.
    std::string leftover() const {
        const auto bears = [](const auto& objects, std::uint32_t mark) {
            return std::any_of(objects.begin(), objects.end(), [mark](const QxGraphObject* object) {
                return (object->flagWord() & mark) != 0;
            });
        };
        return bears(nodes(), qx::flags::NodeCollected)     ? "a node is marked"
               : bears(edges(), qx::flags::EdgeCollected)   ? "an edge is marked"
               : bears(graphs(), qx::flags::GraphCollected) ? "a graph is marked"
                                                            : "";
    }

    /// Places in the coordinates in which they are kept.
    std::map<const QxObject*, std::tuple<int, int, int, int>> coordinates() const {
        std::map<const QxObject*, std::tuple<int, int, int, int>> all;
        for (const QxDNode* node : nodes()) {
            all[node] = {node->iX(), node->iY(), node->iWidth(), node->iHeight()};
        }
        for (const auto& [bend, edge] : bends()) {
            all[bend] = {bend->iX(), bend->iY(), 0, 0};
        }
        return all;
    }
    /// Where the bends of visible edges are seen.
    std::map<const QxPNode*, QxPoint> seen() const {
        std::map<const QxPNode*, QxPoint> all;
        for (const auto& [bend, edge] : bends()) {
            if (edge->isVisible() != 0) {
                bend->getCenter(all[bend], 0);
            }
        }
        return all;
    }

private:
    void spaceOut(QxDGraph& graph) {
        graph.nestedViewTopConstantSpacing(random.below(30));
        graph.nestedViewLeftProportionalSpacing(static_cast<std::int16_t>(random.below(300)));
    }
    bool showsPlainly(const QxDGraph* graph) const {
        while (graph != nullptr && graph != manager->pAnchorGraph()) {
            const auto* relation = static_cast<const QxDChildGraphForestEdge*>(
                graph->pChildGraphForestNode() != nullptr
                    ? graph->pChildGraphForestNode()->pFirstInEdge()
                    : nullptr);
            const QxDNode* node = relation != nullptr ? relation->pNode() : nullptr;
            graph = node != nullptr && node->expanded() != 0 ? node->pOwnerGraph() : nullptr;
        }
        return graph != nullptr;
    }
    static bool isFitted(const QxDNode& node) {
        QxRect wanted;
        node.getNewBoundingRectOnFitToNestedGraph(wanted, 0, 0);
        return std::abs(wanted.left() - node.pIRect()->left()) < 2 &&
               std::abs(wanted.right() - node.pIRect()->right()) < 2 &&
               std::abs(wanted.bottom() - node.pIRect()->bottom()) < 2 &&
               std::abs(wanted.top() - node.pIRect()->top()) < 2;
    }
    std::map<const QxPNode*, const QxDEdge*> bends() const {
        std::map<const QxPNode*, const QxDEdge*> all;
        for (const QxDEdge* edge : edges()) {
            QxPNodeDList list;
            edge->buildPathNodeList(list);
            for (const QxPNode* bend : objectsOf<QxPNode>(list)) {
                all[bend] = edge;
            }
        }
        return all;
    }
};

class NestingSeeds : public testing::TestWithParam<std::uint32_t> {};

TEST_P(NestingSeeds, EverythingStandsAfterEveryStep) {
    const std::uint32_t seed = testSeed(GetParam());
    SCOPED_TRACE(seedTrace(seed));
    QxFactory factory;
    NestingWorld world(factory, seed);
    ASSERT_EQ(world.fault(), "");
    for (int i = 0; i < 400; ++i) {
        world.random.chance(40) ? world.step() : world.edit();
        ASSERT_EQ(world.fault(), "") << "at step " << i;
    }
}

TEST_P(NestingSeeds, WhatStaysInSightStaysInPlace) {
    const std::uint32_t seed = testSeed(GetParam());
    SCOPED_TRACE(seedTrace(seed));
    QxFactory factory;
    NestingWorld world(factory, seed);
    for (int i = 0; i < 300; ++i) {
        world.edit();
        const auto before = world.seen();
        world.changeComplexity();
        for (const auto& [bend, place] : world.seen()) {
            const auto former = before.find(bend);
            if (former != before.end()) {
                ASSERT_LE(std::abs(place.x() - former->second.x()), 1) << "at step " << i;
                ASSERT_LE(std::abs(place.y() - former->second.y()), 1) << "at step " << i;
            }
        }
    }
}

TEST_P(NestingSeeds, CyclesChangeNoCoordinate) {
    const std::uint32_t seed = testSeed(GetParam());
    SCOPED_TRACE(seedTrace(seed));
    QxFactory factory;
    NestingWorld world(factory, seed);
    for (int i = 0; i < 40; ++i) {
        world.edit();
    }
    world.manager->collapseAll();
    for (bool isHidden = true; isHidden;) {
        isHidden = false;
        for (QxDGraph* graph : world.graphs()) {
            if (graph->pHideGraph() != nullptr) {
                graph->unhideAll();  // and a graph of the list goes
                isHidden = graph->pHideGraph() == nullptr;
                break;
            }
        }
    }
    const auto start = world.coordinates();
    for (int i = 0; i < 100; ++i) {
        QxDNode* outer = world.random.pick(world.nodes());
        const int opened = outer->expand();
        QxDNode* node = world.random.pick(world.nodes());
        QxDGraph* graph = node->pOwnerGraph();
        QxDNodeDList some;
        for (QxDNode* one : objectsOf<QxDNode>(*graph->pNodeList())) {
            if (one != node && one != outer && world.random.chance(40)) {
                some.appendNode(one);
            }
        }
        if (node != outer && node->pChildGraph() == nullptr && world.random.chance(50)) {
            const QxPoint place = node->iCenter();
            QxDGraph* inner = world.manager->addGraph(0);
            if (graph->fold(node, inner, &some, nullptr, nullptr, 1) != 0) {
                node->unfold(nullptr, nullptr, 1);
                node->ntMoveTo(place);  // a folder goes where its group is
                node->setFolderNode(0);
                graph->refreshGraphBounds();
            }
            world.manager->discardGraph(inner);
        } else {
            graph->hide(&some, nullptr, nullptr, nullptr);
            graph->unhideAll();
        }
        if (opened != 0) {
            outer->collapse();
        }
        ASSERT_EQ(world.coordinates(), start) << "in cycle " << i;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, NestingSeeds, testing::Range(1U, 7U));

/// Edits one of some worlds from inside every so many events.
class Saboteur : public QxComplexityChangeListener,
                 public QxDrawingChangeListener,
                 public QxGraphChangeListener {
public:
    Saboteur(QxFactory& factory, std::uint32_t seed, std::vector<NestingWorld*> all)
        : random(seed), worlds(std::move(all)) {
        QxDEventManager* events = factory.pEventManager();
        events->addComplexityChangeListener(&factory, this);
        events->addDrawingChangeListener(&factory, this);
        events->addGraphChangeListener(&factory, this);
    }
    using QxComplexityChangeListener::complexityChanged;
    using QxDrawingChangeListener::drawingChanged;
    using QxGraphChangeListener::graphChanged;
    void complexityChanged(QxComplexityChangeEventData*) override { act(60); }
    void drawingChanged(QxDrawingChangeEventData*) override { act(15); }
    void graphChanged(QxGraphChangeEventData*) override { act(15); }

    void act(int percent) {
        const bool isBusy = std::any_of(worlds.begin(), worlds.end(),
                                        [](const auto* world) { return world->isBusy != 0; });
        if (isBusy || depth > 2 || !random.chance(percent)) {
            return;
        }
        ++depth;
        ++edits;
        editSome();
        --depth;
    }
    void editSome() {
        NestingWorld& world = *random.pick(worlds);
        if (random.chance(5) && !world.nodes().empty()) {
            NestingWorld& other = *random.pick(worlds);
            world.moveNodeTo(*random.pick(other.graphs()));
        } else if (random.chance(2)) {
            world.manager->expandAll();
        } else if (random.chance(40)) {
            world.step();
        } else {
            world.edit();
        }
    }

    TestRandom random;
    std::vector<NestingWorld*> worlds;
    int depth = 0;
    int edits = 0;
};

TEST_P(NestingSeeds, EverythingStandsWhateverListenersDo) {
    const std::uint32_t seed = testSeed(GetParam());
    SCOPED_TRACE(seedTrace(seed));
    QxFactory factory;
    NestingWorld first(factory, seed, 10);
    NestingWorld second(factory, seed + 1000, 3);
    Saboteur saboteur(factory, seed, {&first, &second});
    for (int i = 0; i < 700; ++i) {
        saboteur.editSome();
        for (const NestingWorld* world : saboteur.worlds) {
            ASSERT_EQ(world->fault(), "") << "at step " << i;
            ASSERT_EQ(world->leftover(), "") << "at step " << i;
        }
        ASSERT_EQ(factory.pEventManager()->fireEvents(), 1) << "at step " << i;
    }
    EXPECT_GT(saboteur.edits, 100);
}

TEST(Nesting, GoesAsDeepAsAnyoneLikes) {
    constexpr int Depth = 8000;
    QxFactory factory;
    const Ref<QxDGraphManager> manager(factory.newDGraphManager());
    std::vector<QxDNode*> around;
    QxDGraph* graph = manager->addGraph(0);
    for (int i = 0; i < Depth; ++i) {
        around.push_back(graph->addNodeWithCoordinates(0, 0, 10, 10, 1, 0));
        graph = manager->addGraph(0);
        ASSERT_EQ(around.back()->pChildGraph(graph), graph);
    }
    QxDNode* innermost = graph->addNodeWithCoordinates(7, 9, 10, 10, 1, 0);
    for (auto node = around.rbegin(); node != around.rend(); ++node) {
        ASSERT_EQ((*node)->expand(), 1);
    }
    EXPECT_EQ(innermost->isVisible(), 1);
    QxPoint seen;
    EXPECT_EQ(innermost->getCenter(seen, 0), 1);
    EXPECT_EQ(innermost->moveTo(seen.x() + 100, seen.y(), 0), 1);
    EXPECT_EQ(innermost->iX(), 107);
    EXPECT_EQ(around.front()->collapse(), 1);
    EXPECT_EQ(innermost->isVisible(), 0);
}

}  // namespace
