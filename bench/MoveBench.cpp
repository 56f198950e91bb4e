// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Moving and resizing nodes that have four edges each. An iteration is one move, so that the time
// shown is that of a move. "spread": 0 moves one node over and over, which stays in the caches; 1
// takes another node each time, in random order, as a layout does.

#include <memory>

#include "BenchDrawing.h"
#include "BenchMeasure.h"
#include "qx/drawing/QxDrawingIters.h"
#include "qx/events/QxDEventManager.h"
#include "qx/events/QxDrawingChangeListener.h"

namespace {

using qx::bench::BenchDrawing;
using qx::bench::Round;
using qx::bench::shuffled;

/// A built drawing and the inner nodes to move, going to and fro by one unit.
class MovingNodes {
public:
    MovingNodes(std::int64_t nodeCount, bool spread) : m_drawing(nodeCount) {
        m_drawing.build();
        m_nodes = spread ? shuffled(m_drawing.innerNodes())
                         : std::vector<QxDNode*>{&m_drawing.middleNode()};
    }
    BenchDrawing& drawing() { return m_drawing; }
    QxDNode& next() {
        QxDNode& node = *m_round.next();
        if (&node == m_nodes.front()) {
            m_step = -m_step;
        }
        return node;
    }
    /// Where to put the node: one unit from where it is.
    QxPoint place(const QxDNode& node) const { return {node.iX() + m_step, node.iY()}; }
    std::int32_t step() const { return m_step; }

private:
    BenchDrawing m_drawing;
    std::vector<QxDNode*> m_nodes;
    Round<QxDNode*> m_round{m_nodes};
    std::int32_t m_step = -1;
};

void arguments(benchmark::internal::Benchmark* bench) {
    bench->ArgNames({"nodes", "spread"})
        ->ArgsProduct({{1'000, 10'000, 100'000, 1'000'000}, {0, 1}});
}

void RawMove(benchmark::State& state) {
    MovingNodes moving(state.range(0), state.range(1) != 0);
    for (auto _ : state) {
        QxDNode& node = moving.next();
        node.ntMoveTo(moving.place(node));
    }
}
BENCHMARK(RawMove)->Apply(arguments);

void FullMove(benchmark::State& state) {
    MovingNodes moving(state.range(0), state.range(1) != 0);
    for (auto _ : state) {
        QxDNode& node = moving.next();
        node.moveTo(moving.place(node), 1);
    }
}
BENCHMARK(FullMove)->Apply(arguments);

/// A full move after which the visible parts of the edges are up to date and all their clipped ends
/// are read, as for drawing them.
void FullMoveWithVisibleParts(benchmark::State& state) {
    MovingNodes moving(state.range(0), state.range(1) != 0);
    moving.drawing().graph().updateVisiblePartOfEdges();
    for (auto _ : state) {
        QxDNode& node = moving.next();
        node.moveTo(moving.place(node), 1);
        for (QxDEdge* edge : QxInAndOutDEdgeIter(&node)) {
            if (edge->isUpdatedVisiblePart() == 0) {
                edge->updateVisiblePart();
            }
            benchmark::DoNotOptimize(edge->ntFromPoint(1));
            benchmark::DoNotOptimize(edge->ntToPoint(1));
        }
    }
}
BENCHMARK(FullMoveWithVisibleParts)->Apply(arguments);

void Resize(benchmark::State& state) {
    MovingNodes moving(state.range(0), state.range(1) != 0);
    for (auto _ : state) {
        QxDNode& node = moving.next();
        node.resize(BenchDrawing::Width + moving.step(), BenchDrawing::Height, 1);
    }
}
BENCHMARK(Resize)->Apply(arguments);

/// A corner node goes out of the drawing and comes back; the bounds are read after each step, and
/// have to be exact. An iteration is one step.
void BorderNodeOutAndBack(benchmark::State& state) {
    BenchDrawing drawing(state.range(0));
    drawing.build();
    QxDNode& node = *drawing.nodes.front();
    bool out = false;
    for (auto _ : state) {
        out = !out;
        node.moveTo(out ? -500 : 0, 0, 1);
        const std::int32_t expected = (out ? -500 : 0) - BenchDrawing::Width / 2;
        if (drawing.graph().pBoundingRect()->left() != expected) {
            state.SkipWithError("the bounds are not exact");
            break;
        }
    }
}
BENCHMARK(BorderNodeOutAndBack)->ArgName("nodes")->RangeMultiplier(10)->Range(1'000, 1'000'000);

/// The same with the only node that reaches so far: every other node lies inside by a grid step.
void OutermostNodeInAndOut(benchmark::State& state) {
    BenchDrawing drawing(state.range(0));
    drawing.build();
    QxDNode& node = drawing.middleNode();
    const QxPoint home = node.iCenter();
    bool out = false;
    for (auto _ : state) {
        out = !out;
        node.moveTo(out ? -500 : home.x(), home.y(), 1);
        const std::int32_t expected = (out ? -500 : 0) - BenchDrawing::Width / 2;
        if (drawing.graph().pBoundingRect()->left() != expected) {
            state.SkipWithError("the bounds are not exact");
            break;
        }
    }
}
BENCHMARK(OutermostNodeInAndOut)->ArgName("nodes")->RangeMultiplier(10)->Range(1'000, 1'000'000);

/// Computing the bounds anew and storing them.
void CalculateGraphBounds(benchmark::State& state) {
    BenchDrawing drawing(state.range(0));
    drawing.build();
    for (auto _ : state) {
        drawing.graph().calculateGraphBounds(0);
        benchmark::DoNotOptimize(*drawing.graph().pBoundingRect());
    }
}
BENCHMARK(CalculateGraphBounds)->ArgName("nodes")->RangeMultiplier(10)->Range(1'000, 1'000'000);

/// The walks over all nodes and all edges that the bounds would otherwise cost.
void WalkForBounds(benchmark::State& state) {
    BenchDrawing drawing(state.range(0));
    drawing.build();
    for (auto _ : state) {
        QxRect rect;
        drawing.graph().calculateNodeBoundsWithLabelsAndConnectors(rect);
        benchmark::DoNotOptimize(rect);
        drawing.graph().calculateEdgeBoundsWithLabels(rect);
        benchmark::DoNotOptimize(rect);
    }
}
BENCHMARK(WalkForBounds)
    ->ArgName("nodes")
    ->RangeMultiplier(10)
    ->Range(1'000, 1'000'000)
    ->Unit(benchmark::kMicrosecond);

class CountingListener : public QxDrawingChangeListener {
public:
    using QxDrawingChangeListener::drawingChanged;
    void drawingChanged(QxDrawingChangeEventData*) override { ++count; }
    std::int64_t count = 0;
};

/// A raw move that a number of listeners at the graph hear. With none, the event manager is there
/// but listens to nothing.
void RawMoveWithListeners(benchmark::State& state) {
    MovingNodes moving(1'000, false);
    QxDEventManager& events = *moving.drawing().factory().pEventManager();
    std::vector<std::unique_ptr<CountingListener>> listeners;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        listeners.push_back(std::make_unique<CountingListener>());
        events.addDrawingChangeListener(&moving.drawing().graph(), listeners.back().get());
    }
    for (auto _ : state) {
        QxDNode& node = moving.next();
        node.ntMoveTo(moving.place(node));
    }
    for (const auto& listener : listeners) {
        if (listener->count != state.iterations()) {
            state.SkipWithError("a listener missed moves");
        }
        events.removeDrawingChangeListener(&moving.drawing().graph(), listener.get());
    }
}
BENCHMARK(RawMoveWithListeners)->ArgName("listeners")->Arg(0)->Arg(1)->Arg(100);

}  // namespace
