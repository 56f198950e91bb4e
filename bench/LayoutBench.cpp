// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <random>
#include <vector>

#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxFactory.h"
#include "qx/layout/QxEadesAlgorithm.h"
#include "qx/layout/QxForceScan.h"
#include "qx/layout/internal/QxPlacedRects.h"
#include "qx/layout/internal/QxRepulsion.h"

namespace {

using qx::internal::CenterArrays;
using qx::internal::RepulsionOptions;

constexpr std::int32_t EdgeLength = 50;

/// Nodes at a density as in a drawing: one per square of the edge length, on the average.
CenterArrays scatteredCenters(std::size_t count) {
    std::mt19937 random(1);
    const auto extent = static_cast<std::int32_t>(EdgeLength * std::sqrt(count));
    std::uniform_int_distribution<std::int32_t> coordinate(0, extent);
    CenterArrays centers;
    for (std::size_t i = 0; i < count; ++i) {
        centers.add(coordinate(random), coordinate(random));
    }
    return centers;
}

void measureRepulsion(benchmark::State& state, const RepulsionOptions& options) {
    const CenterArrays centers = scatteredCenters(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(qx::internal::repulsion(centers, {}, EdgeLength, options));
    }
    state.SetComplexityN(state.range(0));
}

void RepulsionAllThreads(benchmark::State& state) {
    measureRepulsion(state, {});
}

void RepulsionOneThread(benchmark::State& state) {
    measureRepulsion(state, {.threads = 1});
}

void RepulsionOneThreadScalar(benchmark::State& state) {
    measureRepulsion(state, {.threads = 1, .vectorUnit = false});
}

void RepulsionByAllPairs(benchmark::State& state) {
    const CenterArrays centers = scatteredCenters(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(qx::internal::repulsionByAllPairs(centers, {}, EdgeLength));
    }
    state.SetComplexityN(state.range(0));
}

/// Overlaps removed between rectangles that cover their place several times over. Sorted by the
/// smaller of left and bottom, as the algorithm sorts them.
void PlacingRects(benchmark::State& state) {
    const CenterArrays centers = scatteredCenters(static_cast<std::size_t>(state.range(0)));
    const std::int32_t size = static_cast<std::int32_t>(state.range(1));
    std::vector<qx::internal::Extent> rects;
    for (std::size_t i = 0; i < centers.count(); ++i) {
        rects.push_back({centers.x[i], centers.y[i], centers.x[i] + size, centers.y[i] + size});
    }
    std::sort(rects.begin(), rects.end(), [](const auto& a, const auto& b) {
        return std::min(a.left, a.bottom) < std::min(b.left, b.bottom);
    });
    for (auto _ : state) {
        qx::internal::PlacedRects placed;
        for (qx::internal::Extent rect : rects) {
            placed.dropBefore(std::min(rect.left, rect.bottom));
            placed.pushClear(rect);
            placed.add(rect);
        }
        benchmark::DoNotOptimize(placed);
    }
}

/// A drawing of scattered nodes, each with an edge to an earlier one.
class ScatteredDrawing {
public:
    ScatteredDrawing(std::size_t count, std::int32_t size)
        : m_manager(m_factory.newDGraphManager()), graph(m_manager->addGraph(0)) {
        const CenterArrays centers = scatteredCenters(count);
        std::mt19937 random(2);
        std::vector<QxDNode*> all;
        for (std::size_t i = 0; i < count; ++i) {
            all.push_back(
                graph->addNodeWithCoordinates(centers.x[i], centers.y[i], size, size, 1, 0));
            nodes.appendNode(all[i]);
            if (i > 0) {
                graph->addEdge(all[random() % i], all[i], 0);
            }
        }
    }
    ScatteredDrawing(const ScatteredDrawing&) = delete;
    ScatteredDrawing& operator=(const ScatteredDrawing&) = delete;
    ~ScatteredDrawing() { m_manager->vRelease(); }

private:
    QxFactory m_factory;
    QxDGraphManager* m_manager;

public:
    QxDGraph* graph;
    QxGNodeDList nodes;
};

/// The 31 rounds of a whole run, moves and all.
void EadesRun(benchmark::State& state) {
    ScatteredDrawing drawing(static_cast<std::size_t>(state.range(0)), 40);
    for (auto _ : state) {
        QxEadesAlgorithm(drawing.graph, nullptr, &drawing.nodes, EdgeLength, 0, 0).run();
    }
}

void ForceScanRun(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        auto drawing = std::make_unique<ScatteredDrawing>(
            static_cast<std::size_t>(state.range(0)), static_cast<std::int32_t>(state.range(1)));
        state.ResumeTiming();
        QxForceScan(drawing->graph).run();
        state.PauseTiming();
        drawing.reset();
        state.ResumeTiming();
    }
}

BENCHMARK(EadesRun)->Arg(1'000)->Arg(10'000)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(ForceScanRun)->ArgsProduct({{1'000, 10'000}, {40, 400}})->Unit(benchmark::kMillisecond);
BENCHMARK(RepulsionAllThreads)
    ->Arg(1'000)
    ->Arg(10'000)
    ->Arg(100'000)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oNSquared);
BENCHMARK(RepulsionOneThread)
    ->Arg(1'000)
    ->Arg(10'000)
    ->Arg(100'000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oNSquared);
BENCHMARK(RepulsionOneThreadScalar)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(PlacingRects)
    ->ArgsProduct({{1'000, 10'000}, {40, 400, 4'000}})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(RepulsionByAllPairs)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond);

}  // namespace
