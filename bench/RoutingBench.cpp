// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Routes along the axes, bundles of parallel edges, self-loops.

#include "BenchDrawing.h"

namespace {

using qx::bench::BenchDrawing;

/// Makes straight edges run along the axes, one by one (0), or finds each of them in order (1).
void RepairOrthogonal(benchmark::State& state) {
    BenchDrawing drawing(10'000, BenchDrawing::Anywhere);
    drawing.build();
    for (QxDEdge* edge : drawing.edges) {
        edge->internalOrthogonalRouting(1);
        if (state.range(0) != 0) {
            edge->repairOrthogonalRouting();
        }
    }
    std::size_t at = 0;
    for (auto _ : state) {
        if (at == drawing.edges.size()) {
            state.PauseTiming();
            for (QxDEdge* edge : drawing.edges) {
                if (state.range(0) == 0) {
                    edge->discardAllBends();
                    edge->pSourceConnector(nullptr);
                    edge->pTargetConnector(nullptr);
                }
            }
            at = 0;
            state.ResumeTiming();
        }
        drawing.edges[at++]->repairOrthogonalRouting();
    }
}
BENCHMARK(RepairOrthogonal)->ArgName("again")->Arg(0)->Arg(1);

/// Spreads edges between two nodes; time per edge.
void SpreadParallelEdges(benchmark::State& state) {
    BenchDrawing drawing(2);
    drawing.addNodes();
    QxDGraph& graph = *drawing.nodes[0]->pOwnerGraph();
    drawing.nodes[0]->resize(100'000, 1'000'000, 1);
    drawing.nodes[1]->resize(100'000, 1'000'000, 1);
    drawing.nodes[1]->moveTo(QxPoint(1'000'000, 0), 1);
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        graph.addEdge(drawing.nodes[0], drawing.nodes[1], 0);
    }
    bool isSpread = false;
    for (auto _ : state) {
        isSpread = !isSpread;
        graph.reorganizeMultiEdges(isSpread ? QxMultiEdgeParallel : QxMultiEdgeOverlap);
    }
    state.counters["ns/edge"] = benchmark::Counter(
        static_cast<double>(state.range(0)) * 1e-9,
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(SpreadParallelEdges)
    ->ArgName("edges")
    ->RangeMultiplier(10)
    ->Range(1000, 100'000)
    ->Unit(benchmark::kMillisecond);

/// Looks for bundles in a drawing that has none.
void FindNoBundles(benchmark::State& state) {
    BenchDrawing drawing(state.range(0), BenchDrawing::Neighbours);
    drawing.build();
    for (auto _ : state) {
        drawing.nodes[0]->pOwnerGraph()->reorganizeMultiEdges(QxMultiEdgeParallel);
    }
}
BENCHMARK(FindNoBundles)->ArgName("nodes")->Arg(100'000)->Unit(benchmark::kMillisecond);

}  // namespace
