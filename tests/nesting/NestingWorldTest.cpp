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
#include "qx/drawing/QxConnectorLabel.h"
#include "qx/drawing/QxDrawingFlags.h"
#include "qx/drawing/QxEdgeLabel.h"
#include "qx/drawing/QxLabelIters.h"
#include "qx/drawing/QxNodeLabel.h"
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
        switch (random.below(6)) {
            case 0:
                hideSomeOf(*graph, node);
                break;
            case 1:
                graph->unhideAll();
                break;
            case 2:
                if (node->pChildGraph() == nullptr) {
                    foldSomeInto(*node);
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
    void hideSomeOf(QxDGraph& graph, const QxDNode* except) {
        const QxDNodeDList some = someOf(graph, except);
        graph.hide(&some, nullptr, nullptr, nullptr);
    }
    void foldSomeInto(QxDNode& folder) {
        const auto graph = hold(folder.pOwnerGraph());
        const QxDNodeDList some = someOf(*graph, &folder);
        const auto inner = addFoldGraph();
        if (graph->fold(&folder, inner.get(), &some, nullptr, nullptr, 1) == 0) {
            manager->discardGraph(inner.get());
        }
    }
    QxDNodeDList someOf(const QxDGraph& graph, const QxDNode* except) {
        QxDNodeDList some;
        for (QxDNode* one : objectsOf<QxDNode>(*graph.pNodeList())) {
            if (one != except && random.chance(30)) {
                some.appendNode(one);
            }
        }
        return some;
    }
    void unhideEverything() {
        for (bool isHidden = true; isHidden;) {
            isHidden = false;
            for (QxDGraph* graph : graphs()) {
                if (graph->pHideGraph() != nullptr) {
                    graph->unhideAll();  // and a graph of the list goes
                    isHidden = graph->pHideGraph() == nullptr;
                    break;
                }
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
    using Coordinates = std::map<const QxObject*, std::tuple<const char*, int, int, int, int>>;
    Coordinates coordinates() const {
        Coordinates all;
        for (const QxDNode* node : nodes()) {
            all[node] = {"node", node->iX(), node->iY(), node->iWidth(), node->iHeight()};
        }
        for (const auto& [bend, edge] : bends()) {
            all[bend] = {"bend", bend->iX(), bend->iY(), 0, 0};
        }
        const auto note = [&](const char* kind, const auto& one) {
            all[&one] = {kind, one.ntCenter().x(), one.ntCenter().y(), one.ntWidth(),
                         one.ntHeight()};
        };
        const auto noteLabels = [&](const char* kind, auto labels) {
            for (const auto* label : labels) {
                note(kind, *label);
            }
        };
        for (const QxDNode* node : nodes()) {
            noteLabels("node label", QxNodeLabelIter(node));
            for (const QxConnector* connector : connectorsOf(*node)) {
                note("connector", *connector);
                noteLabels("connector label", QxConnectorLabelIter(connector));
            }
        }
        for (const QxDEdge* edge : edges()) {
            noteLabels("edge label", QxEdgeLabelIter(edge));
        }
        return all;
    }
    /// What is not as it was; empty when all is.
    std::string changeSince(const Coordinates& before) const {
        const Coordinates now = coordinates();
        for (const auto& [object, place] : before) {
            const auto found = now.find(object);
            if (found == now.end() || found->second != place) {
                return testing::PrintToString(place) + " is now " +
                       (found == now.end() ? "nowhere" : testing::PrintToString(found->second));
            }
        }
        return now.size() == before.size() ? "" : "there is more than before";
    }
    /// Labels, and calculated connectors at ends of edges.
    void adorn() {
        for (QxDNode* node : nodes()) {
            node->addLabelWithCoordinates(random.below(300), random.below(300), 9, 9, 1, L"", 0);
            for (QxConnector* connector : connectorsOf(*node)) {
                connector->addLabelWithCoordinates(random.below(300), 0, 9, 9, 1, L"", 0);
            }
        }
        for (QxDEdge* edge : edges()) {
            for (int i = random.below(3); i > 0; --i) {
                edge->addLabelWithCoordinates(random.below(300), random.below(300), 9, 9, 1, L"", 0)
                    ->globalOffsetMode(random.below(2));
            }
            if (random.chance(60) && edge->pSourceNode() != nullptr) {
                edge->pSourceConnector(addCalculated(*edge->pSourceNode()));
            }
            if (random.chance(60) && edge->pTargetNode() != nullptr) {
                edge->pTargetConnector(addCalculated(*edge->pTargetNode()));
            }
        }
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
    static std::vector<QxConnector*> connectorsOf(const QxDNode& node) {
        const QxConnectorManager* manager = node.pQueryConnectorManager();
        return manager != nullptr ? objectsOf<QxConnector>(*manager) : std::vector<QxConnector*>();
    }
    QxConnector* addCalculated(QxDNode& node) {
        const bool isAnywhere = random.chance(50);
        return node.ntAddConnector(
            static_cast<std::int16_t>(isAnywhere ? random.below(2000) - 1000 : 0), 0,
            random.below(401) - 200, random.below(401) - 200);
    }
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
    world.unhideEverything();
    world.adorn();
    world.manager->isUpdatingAffectedGraphs(1);  // or edges follow a folder when it is moved
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
        ASSERT_EQ(world.changeSince(start), "") << "in cycle " << i;
    }
}

TEST_P(NestingSeeds, InWhateverOrderThingsAreShutAndOpenedAllComesBack) {
    const std::uint32_t seed = testSeed(GetParam());
    SCOPED_TRACE(seedTrace(seed));
    QxFactory factory;
    NestingWorld world(factory, seed, 3);
    TestRandom& random = world.random;
    for (QxDNode* node : world.nodes()) {
        if (node->pChildGraph() != nullptr) {  // most of them shrink when they are expanded
            node->resize(100 + random.below(1500), 100 + random.below(1500), 1);
        }
    }
    world.adorn();
    world.manager->isUpdatingAffectedGraphs(1);  // or edges follow a folder when it is moved
    const auto start = world.coordinates();
    std::vector<std::pair<QxDNode*, QxPoint>> folders;  // a folder goes where its group is
    std::vector<std::pair<QxDNode*, QxPoint>> places;
    for (int round = 0; round < 20; ++round) {
        for (int i = 0; i < 15; ++i) {
            QxDNode* node = random.pick(world.nodes());
            QxDGraph* graph = node->pOwnerGraph();
            if (graph->nested() != 0) {
                continue;  // what comes or goes in an expanded node may move it
            }
            switch (random.below(5)) {
                case 2:
                    world.hideSomeOf(*graph, nullptr);
                    break;
                case 3:
                    graph->unhideAll();
                    break;
                case 4:
                    if (node->hidden() == 0 && node->pChildGraph() == nullptr) {
                        const QxPoint place = node->iCenter();
                        world.foldSomeInto(*node);
                        folders.emplace_back(node, place);
                    }
                    break;
                default:
                    if (node->collapse() == 0 && node->pChildGraph() != nullptr &&
                        node->pChildGraph()->hasExpandedNodes() == 0) {
                        node->expand();
                    }
            }
        }
        world.manager->collapseAll();
        world.unhideEverything();
        while (!folders.empty()) {
            const auto next = folders.begin() + random.below(static_cast<int>(folders.size()));
            const auto [folder, place] = *next;
            folders.erase(next);
            if (QxDGraph* inner = folder->pFoldGraph()) {
                folder->unfold(nullptr, nullptr, 0);
                folder->setFolderNode(0);
                world.manager->discardGraph(inner);
            }
            places.emplace_back(folder, place);
        }
        for (const auto& [folder, place] : places) {
            folder->ntMoveTo(place);
        }
        places.clear();
        ASSERT_EQ(world.changeSince(start), "") << "in round " << round;
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
