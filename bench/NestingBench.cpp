// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Nested graphs, and the edges between them.

#include "BenchDrawing.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxFactory.h"
#include "qx/nesting/QxDNodePair.h"

using qx::bench::BenchDrawing;

namespace {

/// A graph of groups, nodes that hold a graph of their own, and edges between nodes of any two
/// groups.
class GroupedDrawing {
public:
    GroupedDrawing(std::int64_t groupCount, std::int64_t groupSize, std::int64_t edgeCount)
        : manager(m_factory.newDGraphManager()) {
        qx::bench::keepFreedMemory();
        QxDGraph* const root = manager->addGraph(0);
        std::vector<QxDNode*> nodes;
        for (std::int32_t g = 0; g < groupCount; ++g) {
            groups.push_back(
                root->addNodeWithCoordinates(g % 10 * 1000, g / 10 * 1000, 60, 40, 1, 0));
            QxDGraph* const inside = manager->addGraph(0);
            for (std::int32_t i = 0; i < groupSize; ++i) {
                nodes.push_back(
                    inside->addNodeWithCoordinates(i % 30 * 100, i / 30 * 100, 60, 40, 1, 0));
            }
            groups.back()->pChildGraph(inside);
        }
        std::mt19937 random(1);
        while (edgeCount > 0) {
            QxDNode* const source = nodes[random() % nodes.size()];
            QxDNode* const target = nodes[random() % nodes.size()];
            if (source->pOwnerGraph() != target->pOwnerGraph()) {
                manager->addEdge(source, target, 0);
                --edgeCount;
            }
        }
    }
    GroupedDrawing(const GroupedDrawing&) = delete;
    GroupedDrawing& operator=(const GroupedDrawing&) = delete;
    ~GroupedDrawing() { manager->vRelease(); }

private:
    QxFactory m_factory;

public:
    QxDGraphManager* manager;
    std::vector<QxDNode*> groups;
};

/// A check that finds everything in order: 100 collapsed groups, a meta-edge between any two, and
/// so many edges that they stand for.
void CheckMetaEdges(benchmark::State& state) {
    GroupedDrawing drawing(100, 100, state.range(0));
    QxDNodePairDList pairs;
    QxDEdgeDList edges;
    drawing.manager->checkMetaEdges(pairs, edges);
    drawing.manager->updateMetaEdges(&pairs, &edges, nullptr, 0);
    for (auto _ : state) {
        drawing.manager->checkMetaEdges(pairs, edges);
    }
    if (pairs.count() + edges.count() != 0) {
        state.SkipWithError("the check disagrees with the update");
    }
}
BENCHMARK(CheckMetaEdges)
    ->ArgName("edges")
    ->Arg(10'000)
    ->Arg(100'000)
    ->Unit(benchmark::kMillisecond);

/// Expands and collapses one group of many, with the meta-edges kept current (1) or not (0).
void ExpandAndCollapse(benchmark::State& state) {
    GroupedDrawing drawing(state.range(0), 100, 20 * state.range(0));
    drawing.manager->updatesMetaEdges(static_cast<int>(state.range(1)));
    for (auto _ : state) {
        drawing.groups[0]->expand();
        drawing.groups[0]->collapse();
    }
}
BENCHMARK(ExpandAndCollapse)
    ->ArgNames({"groups", "current"})
    ->ArgsProduct({{100, 1'000}, {0, 1}})
    ->Unit(benchmark::kMicrosecond);

/// 10,000 nodes inside a node that is expanded and collapsed, 100 edges from them to some of the
/// 100,000 nodes around.
void ExpandAndCollapseLarge(benchmark::State& state) {
    BenchDrawing drawing(100'000);
    drawing.build();
    QxDGraph* const inside = drawing.manager().addGraph(0);
    std::vector<QxDNode*> nodes;
    for (std::int32_t i = 0; i < 10'000; ++i) {
        nodes.push_back(inside->addNodeWithCoordinates(i % 100 * 90, i / 100 * 90, 60, 40, 1, 0));
    }
    QxDNode& holder = drawing.middleNode();
    holder.pChildGraph(inside);
    for (std::size_t i = 0; i < 100; ++i) {
        drawing.manager().addEdge(nodes[i * 97], drawing.nodes[i * 971], 0);
    }
    for (auto _ : state) {
        holder.expand();
        holder.collapse();
    }
}
BENCHMARK(ExpandAndCollapseLarge)->Unit(benchmark::kMicrosecond);

/// Hides one node with its four edges, and brings it back.
void HideAndUnhide(benchmark::State& state) {
    BenchDrawing drawing(state.range(0));
    drawing.build();
    const std::vector<QxDNode*> inner = drawing.innerNodes();
    std::size_t next = 0;
    for (auto _ : state) {
        QxDNodeDList nodes;
        nodes.appendNode(inner[next]);
        next = (next + 7919) % inner.size();
        drawing.graph().hide(&nodes, nullptr, nullptr, nullptr);
        drawing.graph().unhide(&nodes, nullptr, nullptr, nullptr, 1);
    }
}
BENCHMARK(HideAndUnhide)->Arg(10'000)->Arg(100'000);

/// Folds 100 neighbours into a node of their own, and unfolds them.
void FoldAndUnfold(benchmark::State& state) {
    BenchDrawing drawing(state.range(0));
    drawing.build();
    const std::vector<QxDNode*> inner = drawing.innerNodes();
    QxDNode* const folder = drawing.graph().addNodeWithCoordinates(-500, -500, 60, 40, 1, 0);
    QxDGraph* const inside = drawing.manager().addGraph(0);
    std::size_t next = 0;
    for (auto _ : state) {
        QxDNodeDList nodes;
        for (std::size_t i = 0; i < 100; ++i) {
            nodes.appendNode(inner[next + i]);
        }
        next = (next + 7919) % (inner.size() - 100);
        drawing.graph().fold(folder, inside, &nodes, nullptr, nullptr, 1);
        drawing.graph().unfold(folder, nullptr, nullptr, 1);
    }
}
BENCHMARK(FoldAndUnfold)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMicrosecond);

}  // namespace
