// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Making and emptying whole drawings: time per object and bytes of heap per object. One drawing is
// made and destroyed before the measured ones, so that they reuse memory the process has already.

#include "BenchDrawing.h"
#include "BenchMeasure.h"

namespace {

using qx::bench::BenchDrawing;
using qx::bench::heapInUse;
using qx::bench::StepTimer;

/// Builds the drawing of the arguments (nodes, ends) and destroys it, over and over.
template <BenchDrawing::Form form>
void BuildDrawing(benchmark::State& state) {
    BenchDrawing drawing(state.range(0), static_cast<BenchDrawing::Ends>(state.range(1)), form);
    drawing.build();
    drawing.destroy();
    StepTimer nodes;
    StepTimer edges;
    StepTimer all;
    for (auto _ : state) {
        BenchDrawing next(state.range(0), static_cast<BenchDrawing::Ends>(state.range(1)), form);
        state.SetIterationTime(all.time(next.objectCount(), [&] {
            nodes.time(next.nodeCount(), [&] { next.addNodes(); });
            edges.time(next.edgeCount(), [&] { next.addEdges(); });
        }));
    }
    all.tell(state, "ns/object");
    nodes.tell(state, "ns/node");
    edges.tell(state, "ns/edge");
}
BENCHMARK_TEMPLATE(BuildDrawing, BenchDrawing::Managed)
    ->ArgNames({"nodes", "anywhere"})
    ->ArgsProduct({{1'000, 10'000, 100'000, 1'000'000}, {0, 1}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(BuildDrawing, BenchDrawing::Bare)
    ->ArgNames({"nodes", "anywhere"})
    ->ArgsProduct({{1'000, 10'000, 100'000, 1'000'000}, {0, 1}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

/// The heap that nodes and edges take.
void HeapOfDrawing(benchmark::State& state) {
    double node = 0.0;
    double edge = 0.0;
    double object = 0.0;
    for (auto _ : state) {
        BenchDrawing drawing(state.range(0));
        const double before = heapInUse();
        drawing.addNodes();
        const double withNodes = heapInUse();
        drawing.addEdges();
        const double after = heapInUse();
        node = (withNodes - before) / static_cast<double>(drawing.nodeCount());
        edge = (after - withNodes) / static_cast<double>(drawing.edgeCount());
        object = (after - before) / static_cast<double>(drawing.objectCount());
    }
    state.counters["bytes/node"] = node;
    state.counters["bytes/edge"] = edge;
    state.counters["bytes/object"] = object;
}
BENCHMARK(HeapOfDrawing)
    ->ArgName("nodes")
    ->Arg(1'000)
    ->Arg(10'000)
    ->Arg(100'000)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

/// A deep copy into another graph of the same manager.
void CopyGraph(benchmark::State& state) {
    BenchDrawing drawing(state.range(0));
    drawing.build();
    StepTimer copying;
    for (auto _ : state) {
        QxDGraph* copy = drawing.manager().addGraph(0);
        state.SetIterationTime(
            copying.time(drawing.objectCount(), [&] { copy->copyGraph(&drawing.graph(), 1); }));
        drawing.manager().discardGraph(copy);
    }
    copying.tell(state, "ns/object");
}
BENCHMARK(CopyGraph)
    ->ArgName("nodes")
    ->Arg(1'000)
    ->Arg(10'000)
    ->Arg(100'000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

/// The manager is released and takes everything with it.
void DestroyDrawing(benchmark::State& state) {
    StepTimer destroying;
    for (auto _ : state) {
        BenchDrawing drawing(state.range(0), static_cast<BenchDrawing::Ends>(state.range(1)));
        drawing.build();
        state.SetIterationTime(destroying.time(drawing.objectCount(), [&] { drawing.destroy(); }));
    }
    destroying.tell(state, "ns/object");
}
BENCHMARK(DestroyDrawing)
    ->ArgNames({"nodes", "anywhere"})
    ->ArgsProduct({{1'000, 10'000, 100'000, 1'000'000}, {0, 1}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
