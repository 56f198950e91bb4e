// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// The engine of the spatial index, without a drawing: boxes of 40 x 30 about 100 apart and segments
// between neighbours, twice as many. Queries have about 50 hits.

#include "BenchMeasure.h"
#include "qx/spatial/internal/QuadEngine.h"

namespace {

using namespace qx::internal;
using qx::bench::keepFreedMemory;
using qx::bench::Round;
using qx::bench::shuffled;
using qx::bench::StepTimer;

/// How the boxes lie.
enum Layout { Grid, OnOneLeaf, WithALongSegment };

class Scene {
public:
    Scene(std::int64_t boxes, Layout layout) : m_isDense(layout == OnOneLeaf) {
        keepFreedMemory();
        for (std::int64_t i = 0; i < boxes; ++i) {
            m_perRow += m_perRow * m_perRow < boxes ? 1 : 0;
        }
        m_pitch = m_isDense ? 2000.0 / static_cast<double>(m_perRow) : 100.0;
        m_extent = static_cast<double>(m_perRow) * m_pitch;
        for (std::int64_t i = 0; i < boxes; ++i) {
            addBox(i);
        }
        for (std::int64_t i = 0; i < boxes && !m_isDense; ++i) {
            addSegment(i, i % m_perRow + 1 < m_perRow && i + 1 < boxes ? i + 1 : i);
            addSegment(i, i + m_perRow < boxes ? i + m_perRow : i);
        }
        if (layout == WithALongSegment) {
            const auto end = static_cast<std::int32_t>(m_extent);
            items.push_back({QuadShape::segment(0, 0, end, end), 1, 0});
        }
    }
    /// About 50 hits, anywhere.
    QuadBox region() {
        const double side = m_isDense ? 7 * m_pitch : 365;
        std::uniform_real_distribution<double> place(0, m_extent - side);
        const auto left = static_cast<std::int32_t>(place(m_random));
        const auto bottom = static_cast<std::int32_t>(place(m_random));
        const auto extent = static_cast<std::int32_t>(side);
        return {left, bottom, left + extent, bottom + extent};
    }
    std::vector<std::uint32_t> slots() const {
        std::vector<std::uint32_t> all(items.size());
        for (std::size_t i = 0; i < all.size(); ++i) {
            all[i] = static_cast<std::uint32_t>(i);
        }
        return all;
    }
    void insertInto(QuadEngine& engine) const {
        for (const QuadItem& item : items) {
            engine.insert(item.shape, item.kind, item.payload);
        }
    }
    std::int64_t count() const { return static_cast<std::int64_t>(items.size()); }

    std::vector<QuadItem> items;

private:
    void addBox(std::int64_t i) {
        std::uniform_real_distribution<double> jitter(-0.2, 0.2);
        const double x = (static_cast<double>(i % m_perRow) + jitter(m_random)) * m_pitch;
        const double y = (static_cast<double>(i / m_perRow) + jitter(m_random)) * m_pitch;
        const auto left = static_cast<std::int32_t>(x);
        const auto bottom = static_cast<std::int32_t>(y);
        const std::int32_t width = m_isDense ? 1 : 40;
        const std::int32_t height = m_isDense ? 1 : 30;
        items.push_back({{{left, bottom, left + width, bottom + height}, QuadForm::Box}, 0, 0});
    }
    void addSegment(std::int64_t from, std::int64_t to) {
        const QuadBox& a = items[static_cast<std::size_t>(from)].shape.box;
        const QuadBox& b = items[static_cast<std::size_t>(to)].shape.box;
        items.push_back({QuadShape::segment(a.maxX, a.maxY, b.minX, b.minY), 1, 0});
    }

    bool m_isDense;
    std::int64_t m_perRow = 0;
    double m_pitch = 100.0;
    double m_extent = 0.0;
    std::mt19937 m_random{7};
};

Scene sceneOf(const benchmark::State& state) {
    return Scene(state.range(0), static_cast<Layout>(state.range(1)));
}

void sizesAndLayouts(benchmark::internal::Benchmark* bench) {
    bench->ArgNames({"boxes", "layout"})
        ->ArgsProduct({{1'000, 10'000, 100'000, 1'000'000}, {Grid}})
        ->Args({100'000, OnOneLeaf})
        ->Args({100'000, WithALongSegment});
}

/// Insertion one by one, then removal in random order, then the same tree at once.
void IndexInsertRemoveBuild(benchmark::State& state) {
    const Scene scene = sceneOf(state);
    const auto order = shuffled(scene.slots());
    StepTimer inserting;
    StepTimer removing;
    StepTimer building;
    QuadEngine built;
    built.build(scene.items);
    for (auto _ : state) {
        QuadEngine engine;
        double time = inserting.time(scene.count(), [&] { scene.insertInto(engine); });
        state.counters["bytes/object"] =
            static_cast<double>(engine.sizeOf()) / static_cast<double>(scene.count());
        time += removing.time(scene.count(), [&] {
            for (const std::uint32_t slot : order) {
                engine.remove(slot);
            }
        });
        time += building.time(scene.count(), [&] { built.build(scene.items); });
        state.SetIterationTime(time);
    }
    inserting.tell(state, "ns/insert");
    removing.tell(state, "ns/remove");
    building.tell(state, "ns/build");
}
BENCHMARK(IndexInsertRemoveBuild)
    ->Apply(sizesAndLayouts)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

void IndexQuery(benchmark::State& state) {
    Scene scene = sceneOf(state);
    QuadEngine engine;
    scene.insertInto(engine);
    std::vector<QuadHit> hits;
    std::size_t found = 0;
    for (auto _ : state) {
        hits.clear();
        engine.collect(scene.region(), QuadEngine::AllKinds, hits);
        found += hits.size();
    }
    state.counters["hits"] = static_cast<double>(found) / static_cast<double>(state.iterations());
}
BENCHMARK(IndexQuery)->Apply(sizesAndLayouts);

void IndexOverlaps(benchmark::State& state) {
    Scene scene = sceneOf(state);
    QuadEngine engine;
    scene.insertInto(engine);
    for (auto _ : state) {
        benchmark::DoNotOptimize(engine.overlaps(scene.region(), QuadEngine::AllKinds));
    }
}
BENCHMARK(IndexOverlaps)->Apply(sizesAndLayouts);

/// Small moves there and back, of one object over and over or of all in random order.
void IndexUpdate(benchmark::State& state) {
    const Scene scene(state.range(0), Grid);
    QuadEngine engine;
    engine.build(scene.items);
    auto order = shuffled(scene.slots());
    if (state.range(1) == 0) {
        order.resize(1);
    }
    Round slots(order);
    std::int32_t by = 3;
    for (auto _ : state) {
        const std::uint32_t slot = slots.next();
        QuadShape shape = scene.items[slot].shape;
        shape.box.minX += by;
        shape.box.maxX += by;
        engine.update(slot, shape);
        by = 3 - by;
    }
}
BENCHMARK(IndexUpdate)
    ->ArgNames({"boxes", "spread"})
    ->ArgsProduct({{1'000, 100'000, 1'000'000}, {0, 1}});

}  // namespace
