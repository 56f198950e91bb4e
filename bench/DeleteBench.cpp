// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Taking a drawing apart, object by object, in random order.

#include "BenchDrawing.h"
#include "BenchMeasure.h"

namespace {

using qx::bench::BenchDrawing;
using qx::bench::shuffled;
using qx::bench::StepTimer;

/// Nodes one by one, each with the edges that are still at it.
void DiscardNodes(benchmark::State& state) {
    StepTimer discarding;
    for (auto _ : state) {
        BenchDrawing drawing(state.range(0));
        drawing.build();
        const auto order = shuffled(drawing.nodes);
        state.SetIterationTime(discarding.time(drawing.nodeCount(), [&] {
            for (QxDNode* node : order) {
                drawing.graph().discardNode(node);
            }
        }));
    }
    discarding.tell(state, "ns/node");
}
BENCHMARK(DiscardNodes)
    ->ArgName("nodes")
    ->RangeMultiplier(10)
    ->Range(1'000, 1'000'000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

/// All edges first, then the nodes, which stand alone then.
void DiscardEdgesThenNodes(benchmark::State& state) {
    StepTimer edges;
    StepTimer nodes;
    for (auto _ : state) {
        BenchDrawing drawing(state.range(0));
        drawing.build();
        const auto edgeOrder = shuffled(drawing.edges);
        const auto nodeOrder = shuffled(drawing.nodes);
        const double forEdges = edges.time(drawing.edgeCount(), [&] {
            for (QxDEdge* edge : edgeOrder) {
                drawing.graph().discardEdge(edge);
            }
        });
        const double forNodes = nodes.time(drawing.nodeCount(), [&] {
            for (QxDNode* node : nodeOrder) {
                drawing.graph().discardNode(node);
            }
        });
        state.SetIterationTime(forEdges + forNodes);
    }
    edges.tell(state, "ns/edge");
    nodes.tell(state, "ns/node");
}
BENCHMARK(DiscardEdgesThenNodes)
    ->ArgName("nodes")
    ->RangeMultiplier(10)
    ->Range(1'000, 1'000'000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
