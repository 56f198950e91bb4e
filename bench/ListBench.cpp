// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Lists of drawing objects, and the iterators over what a graph and a node hold.

#include "BenchDrawing.h"
#include "BenchMeasure.h"
#include "qx/drawing/QxDrawingIters.h"

namespace {

using qx::bench::BenchDrawing;
using qx::bench::Round;
using qx::bench::shuffled;
using qx::bench::StepTimer;

/// Fills a list in order, then empties it cell by cell, in random order.
void ListAppendAndDiscard(benchmark::State& state) {
    BenchDrawing drawing(state.range(0));
    drawing.addNodes();
    StepTimer appending;
    StepTimer discarding;
    std::vector<QxDListCell*> cells;
    cells.reserve(drawing.nodes.size());
    for (auto _ : state) {
        QxDNodeDList list;
        cells.clear();
        const double forAppending = appending.time(drawing.nodeCount(), [&] {
            for (QxDNode* node : drawing.nodes) {
                cells.push_back(list.appendNode(node));
            }
        });
        const auto order = shuffled(cells);
        const double forDiscarding = discarding.time(drawing.nodeCount(), [&] {
            for (QxDListCell* cell : order) {
                list.discardCell(cell);
            }
        });
        state.SetIterationTime(forAppending + forDiscarding);
    }
    appending.tell(state, "ns/append");
    discarding.tell(state, "ns/discard");
}
BENCHMARK(ListAppendAndDiscard)
    ->ArgName("nodes")
    ->RangeMultiplier(10)
    ->Range(1'000, 100'000)
    ->UseManualTime();

/// Looks for any of the objects of a list.
void ListSearch(benchmark::State& state) {
    BenchDrawing drawing(state.range(0));
    drawing.addNodes();
    QxDNodeDList list;
    for (QxDNode* node : drawing.nodes) {
        list.appendNode(node);
    }
    const auto order = shuffled(drawing.nodes);
    Round wanted(order);
    for (auto _ : state) {
        benchmark::DoNotOptimize(list.searchNode(wanted.next()));
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(ListSearch)
    ->ArgName("nodes")
    ->RangeMultiplier(10)
    ->Range(1'000, 100'000)
    ->Complexity(benchmark::oN);

/// Walks over all nodes of a graph.
void WalkNodes(benchmark::State& state) {
    BenchDrawing drawing(state.range(0));
    drawing.build();
    StepTimer walking;
    for (auto _ : state) {
        state.SetIterationTime(walking.time(drawing.nodeCount(), [&] {
            for (QxDNode* node : QxDNodeIter(&drawing.graph())) {
                benchmark::DoNotOptimize(node);
            }
        }));
    }
    walking.tell(state, "ns/node");
}
BENCHMARK(WalkNodes)->ArgName("nodes")->RangeMultiplier(10)->Range(1'000, 100'000)->UseManualTime();

/// Walks over the edges at each node of a graph in turn; every edge is met twice.
void WalkEdgesAtNodes(benchmark::State& state) {
    BenchDrawing drawing(state.range(0));
    drawing.build();
    StepTimer walking;
    for (auto _ : state) {
        state.SetIterationTime(walking.time(2 * drawing.edgeCount(), [&] {
            for (QxDNode* node : QxDNodeIter(&drawing.graph())) {
                for (QxDEdge* edge : QxInAndOutDEdgeIter(node)) {
                    benchmark::DoNotOptimize(edge);
                }
            }
        }));
    }
    walking.tell(state, "ns/edge");
}
BENCHMARK(WalkEdgesAtNodes)
    ->ArgName("nodes")
    ->RangeMultiplier(10)
    ->Range(1'000, 100'000)
    ->UseManualTime();

}  // namespace
