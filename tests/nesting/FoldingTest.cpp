// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <tuple>

#include "nesting/ComplexityTesting.h"
#include "qx/events/QxComplexityChangeEvent.h"
#include "support/TestRandom.h"

namespace {

using namespace qxtest;

using Heard = ComplexityRecorder::Heard;

/// Three nodes to fold and one that stays, with edges in each state, some hidden.
class Folding : public testing::Test, public FoldableDrawing {
public:
    ~Folding() override { EXPECT_EQ(manager->checkInvariants(), 1); }

    int foldAll(int keepHidden) {
        const QxDNodeDList list = nodeList({a, folder, b, foreign, c, a});
        return graph->fold(folder, foldGraph, &list, &nodes, &edges, keepHidden);
    }
    int unfold(int keepHidden) { return folder->unfold(&nodes, &edges, keepHidden); }
    using Place =
        std::tuple<const QxObject*, std::int32_t, std::int32_t, std::int32_t, std::int32_t>;
    /// Owner, state and coordinates of each node, edge and bend.
    std::vector<Place> places() const {
        std::vector<Place> all;
        for (const QxDNode* node : {a, b, c, d, foreign}) {
            all.emplace_back(node->pOwnerGraph(), node->iX(), node->iY(), node->iWidth(), 0);
        }
        for (const QxDEdge* edge : {ab, bc, cd, da, idle, loose, hidden, hiddenOut, folderA}) {
            QxPNodeDList bends;
            edge->buildPathNodeList(bends);
            const auto* bend = static_cast<const QxPNode*>(bends.pFirstObject());
            // A hide graph goes with what it hides; the next one is another.
            const QxDGraph* owner = edge->pOwnerGraph();
            owner = edge->hidden() != 0 ? owner->pHideFromGraph() : owner;
            all.emplace_back(owner, edge->connected() - edge->hidden(), edge->deactivated(),
                             bend != nullptr ? bend->iX() : 0, bend != nullptr ? bend->iY() : 0);
        }
        return all;
    }

    QxDNode* a = addNode(0, 0);
    QxDNode* b = addNode(100, 0);
    QxDNode* c = addNode(100, 80);
    QxDNode* d = addNode(300, 0);
    QxDGraph* elsewhere = manager->addGraph(0);
    QxDNode* foreign = addNode(0, 0, elsewhere);
    QxDEdge* loose = addDisconnected(c, a);
    QxDEdge* idle = addDeactivated(c, d);
    QxDEdge* ab = addBentEdge(a, b, 50, 50);
    QxDEdge* bc = addEdge(b, c);
    QxDEdge* cd = addBentEdge(c, d, 200, 90);
    QxDEdge* da = addEdge(d, a);
    QxDEdge* folderA = addEdge(folder, a);
    QxDEdge* hidden = addEdge(b, a);
    QxDEdge* hiddenOut = addBentEdge(d, b, 250, -40);
    QxDEdge* toForeign = addEdge(a, foreign);
    QxDNodeDList nodes;
    QxDEdgeDList edges;
};

TEST_F(Folding, TellsOfEachObjectAsItMoves) {
    hide({hidden, hiddenOut});
    events.take();
    events.react = [&] {
        EXPECT_EQ(b->pOwnerGraph(), graph) << "the first node is told of before the second moves";
        EXPECT_EQ(ab->pOwnerGraph(), nullptr);
        EXPECT_EQ(graph->needsUpdateGraphBounds(), 0);
        events.react = nullptr;
    };
    EXPECT_EQ(foldAll(1), 1);
    EXPECT_EQ(graph->needsUpdateGraphBounds(), 1);
    EXPECT_EQ(objectsOf<QxDNode>(nodes), (DNodes{a, b, c}));
    const DEdges expected{ab, bc, cd, da, folderA, loose, idle, hidden, hiddenOut};
    EXPECT_EQ(objectsOf<QxDEdge>(edges), expected);
    Heard heard{{NodeFolded, a}, {NodeFolded, b}, {NodeFolded, c}};
    for (const QxDEdge* edge : expected) {
        heard.emplace_back(EdgeFolded, edge);
    }
    EXPECT_EQ(events.take(), heard);
    for (const QxDEdge* edge : {ab, bc, loose}) {
        EXPECT_EQ(edge->pOwnerGraph(), foldGraph);
    }
    for (const QxDEdge* edge : {cd, da, folderA, idle, toForeign}) {
        EXPECT_EQ(edge->pOwnerGraph(), manager->pIntergraph());
    }
    EXPECT_EQ(cd->connected() + idle->deactivated() + loose->disconnected(), 3);
    EXPECT_EQ(hidden->pOwnerGraph(), foldGraph->pHideGraph());
    EXPECT_EQ(hiddenOut->pOwnerGraph(), graph->pHideGraph()) << "its source is there";
    EXPECT_EQ(folder->pFoldGraph(), foldGraph);
    EXPECT_EQ(foldGraph->pFolderNode(), folder);
    EXPECT_EQ(placeOf(folder), (std::pair{50, 40}));
    QxDGraphDList folds;
    graph->buildAllFoldGraphList(folds);
    EXPECT_EQ(objectsOf<QxDGraph>(folds), std::vector{foldGraph});
    EXPECT_EQ(foldAll(1), 0) << "the fold graph is not empty";
}

TEST_F(Folding, UnfoldBringsEverythingBackAroundTheFolder) {
    hide({hidden, hiddenOut});
    const auto before = places();
    foldAll(1);
    for (const int keepHidden : {1, 0}) {
        hide({c});  // from the fold graph
        events.take();
        EXPECT_EQ(unfold(keepHidden), 1);
        EXPECT_EQ(objectsOf<QxDNode>(nodes), (DNodes{a, b, c}));
        EXPECT_EQ(foldGraph->pHideGraph(), nullptr);
        EXPECT_EQ(folder->isFolderNode() + foldGraph->numberOfNodes(), 1);
        if (keepHidden != 0) {
            EXPECT_EQ(c->hidden() + bc->hidden() + hidden->hidden() + hiddenOut->hidden(), 4);
            graph->unhideAll();
            hide({hidden, hiddenOut});
            EXPECT_EQ(places(), before);
            foldAll(1);
        }
    }
    const Heard heard = events.take();
    const auto first = std::find_if(heard.begin(), heard.end(),
                                    [](const auto& event) { return event.first == NodeUnfolded; });
    EXPECT_EQ(first->second, a);
    EXPECT_TRUE(std::all_of(heard.begin(), first, [](const auto& event) {
        return event.first == EdgeUnhidden || event.first == NodeUnhidden;
    }));
    EXPECT_EQ(hidden->connected(), 1) << "it was hidden in the fold graph";
    EXPECT_EQ(hiddenOut->hidden(), 1);
    graph->unhideAll();
    EXPECT_EQ(manager->numberOfGraphs(), 3);
    for (const QxDEdge* edge : {ab, bc, cd, da, folderA, hidden, hiddenOut, loose, idle}) {
        EXPECT_EQ(edge->pOwnerGraph(), graph);
    }
}

TEST_F(Folding, WithoutKeepingThemHiddenEdgesShowAgain) {
    hide({hidden, hiddenOut});
    foldAll(0);
    EXPECT_EQ(graph->pHideGraph(), nullptr);
    EXPECT_EQ(foldGraph->pHideGraph(), nullptr);
    EXPECT_EQ(hidden->pOwnerGraph(), foldGraph);
    EXPECT_EQ(hiddenOut->pOwnerGraph(), manager->pIntergraph());
    EXPECT_EQ(hidden->connected() + hiddenOut->connected(), 2);
}

TEST_F(Folding, RefusesWhatCannotBe) {
    const QxDNodeDList one = nodeList({a});
    const QxDNodeDList none = nodeList({foreign, folder});
    QxDGraph* const used = manager->addGraph(0);
    const Ref<QxDGraphManager> other(factory.newDGraphManager());
    d->pChildGraph(used);
    const auto fold = [&](QxDNode* node, QxDGraph* in, const QxDNodeDList* list) {
        return graph->fold(node, in, list, nullptr, nullptr, 0);
    };
    EXPECT_EQ(fold(nullptr, foldGraph, &one) + fold(folder, nullptr, &one), 0);
    EXPECT_EQ(fold(folder, foldGraph, nullptr) + fold(folder, foldGraph, &none), 0);
    EXPECT_EQ(fold(foreign, foldGraph, &one) + fold(folder, elsewhere, &one), 0);
    EXPECT_EQ(fold(folder, used, &one) + fold(folder, manager->pIntergraph(), &one), 0);
    EXPECT_EQ(fold(folder, other->addGraph(0), &one) + fold(folder, graph, &one), 0);
    EXPECT_EQ(unfold(0) + graph->unfold(nullptr, nullptr, nullptr, 0), 0);
    folder->setFolderNode(1);
    EXPECT_EQ(unfold(0), 0) << "there is no fold graph";
    EXPECT_TRUE(events.take().empty());
}

TEST_F(Folding, AMovedFolderTakesTheGroupAlong) {
    QxDNode* const nest = addNode(40, 40);
    QxDGraph* const nested = manager->addGraph(0);
    QxDNode* const deep = addNode(7, 7, nested);
    nest->pChildGraph(nested);
    QxDEdge* const within = addBentEdge(b, deep, 60, 60);
    const QxDNodeDList all = nodeList({a, b, c, nest});
    graph->fold(folder, foldGraph, &all, nullptr, nullptr, 0);
    EXPECT_EQ(within->pOwnerGraph(), manager->pIntergraph());
    const auto before = placeOf(folder);
    folder->moveTo(1050, -2000, 1);
    const int dx = 1050 - before.first;
    const int dy = -2000 - before.second;
    unfold(0);
    EXPECT_EQ(placeOf(b), (std::pair{100 + dx, dy}));
    EXPECT_EQ(bendOf(ab), (std::pair{50 + dx, 50 + dy}));
    EXPECT_EQ(bendOf(within), (std::pair{60 + dx, 60 + dy}));
    EXPECT_EQ(bendOf(cd), (std::pair{200, 90})) << "it led out";
    EXPECT_EQ(placeOf(deep), (std::pair{7, 7}));
}

TEST_F(Folding, AnExpandedFolderUnfoldsWhatIsSeenWhereItIsSeen) {
    foldAll(0);
    folder->expand();
    folder->moveTo(700, 300, 1);
    QxPoint seen;
    b->getCenter(seen, 0);
    unfold(0);
    EXPECT_EQ(placeOf(b), (std::pair{seen.x(), seen.y()}));
    EXPECT_EQ(placeOf(folder), (std::pair{700, 300}));
    EXPECT_EQ(folder->expanded(), 1);
    const auto before = places();
    foldAll(0);
    EXPECT_EQ(bendOf(ab).first - placeOf(a).first, 50) << "bends stay with the ends";
    unfold(0);
    EXPECT_EQ(places(), before);
}

TEST_F(Folding, AroundANode) {
    EXPECT_EQ(a->foldChildren(folder, foldGraph, -2, &nodes, nullptr, 1, 0, 0), 1);
    EXPECT_EQ(objectsOf<QxDNode>(nodes), (DNodes{b, c, d, a}));
    EXPECT_EQ(placeOf(folder), (std::pair{0, 0})) << "where the node was";
    unfold(0);
    EXPECT_EQ(d->foldParents(folder, foldGraph, 1, &nodes, nullptr, 0, 0, 0), 1);
    EXPECT_EQ(objectsOf<QxDNode>(nodes), (DNodes{c}));
}

TEST_F(Folding, ListenersMayEditMeanwhile) {
    events.react = [&] {
        events.react = nullptr;
        graph->discardNode(c);
        graph->discardNode(d);
        addNode(-900, 0);
    };
    EXPECT_EQ(foldAll(0), 1);
    EXPECT_EQ(objectsOf<QxDNode>(nodes), (DNodes{a, b}));
    EXPECT_EQ(objectsOf<QxDEdge>(edges), (DEdges{ab, folderA, hidden}));
    EXPECT_EQ(graph->numberOfAllEdges() + foldGraph->numberOfAllEdges(), 2)
        << "the edges of discarded nodes have gone with them";
    EXPECT_EQ(graph->pBoundingRect()->left(), -905);
    events.react = [&] {
        events.react = nullptr;
        manager->discardGraph(graph);
    };
    EXPECT_EQ(unfold(0), 1);
    EXPECT_EQ(manager->numberOfGraphs(), 2);
}

TEST_F(Folding, CyclesChangeNothing) {
    const auto before = places();
    TestRandom random(20260711);
    for (int round = 0; round < 100; ++round) {
        const bool hidesFirst = random.chance(50);
        if (hidesFirst) {
            hide({random.pick(DNodes{b, d})});
        }
        foldAll(random.chance(50));
        if (random.chance(50)) {
            folder->expand();
            folder->collapse();
        }
        if (random.chance(50)) {
            hide({random.pick(DNodes{a, b, c})});  // from the fold graph
        }
        if (random.chance(30)) {
            graph->unhideAll();
        }
        unfold(random.chance(50));
        graph->unhideAll();
        ASSERT_EQ(places(), before) << round;
        ASSERT_EQ(manager->checkInvariants(), 1) << round;
    }
}

}  // namespace
