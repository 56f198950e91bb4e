// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Edges: the heap that segments and bends take, bends that come and go, clipping at the nodes at
// both ends, and measures along the path.

#include <memory>

#include "BenchDrawing.h"
#include "BenchMeasure.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/foundation/geometry/QxPointDList.h"
#include "qx/foundation/geometry/QxShape.h"

namespace {

using qx::bench::BenchDrawing;
using qx::bench::heapInUse;
using qx::bench::shuffled;
using qx::bench::StepTimer;

/// A place for a bend that makes the edge go a way round.
QxPoint besideMiddle(const QxDEdge& edge) {
    const QxPoint from = edge.ntFromPoint(0);
    const QxPoint to = edge.ntToPoint(0);
    return {(from.x() + to.x()) / 2 + 10, (from.y() + to.y()) / 2 + 10};
}

/// The heap that a straight edge takes, and each bend with the segment it adds.
void HeapOfPath(benchmark::State& state) {
    double edge = 0.0;
    double bend = 0.0;
    for (auto _ : state) {
        BenchDrawing drawing(state.range(0));
        drawing.addNodes();
        const double before = heapInUse();
        drawing.addEdges();
        const double straight = heapInUse();
        for (QxDEdge* next : drawing.edges) {
            next->addBendAfter(nullptr, besideMiddle(*next), 1);
        }
        const double bent = heapInUse();
        edge = (straight - before) / static_cast<double>(drawing.edgeCount());
        bend = (bent - straight) / static_cast<double>(drawing.edgeCount());
    }
    state.counters["bytes/edge"] = edge;
    state.counters["bytes/bend"] = bend;
}
BENCHMARK(HeapOfPath)
    ->ArgName("nodes")
    ->Arg(1'000)
    ->Arg(10'000)
    ->Arg(100'000)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

/// Gives each edge of a drawing of about as many edges a bend, and takes it away again; edges in
/// list order ("spread" 0) or in random order (1).
void BendAndUnbend(benchmark::State& state) {
    BenchDrawing drawing(state.range(0) / 2);
    drawing.build();
    const auto order = state.range(1) != 0 ? shuffled(drawing.edges) : drawing.edges;
    StepTimer adding;
    StepTimer discarding;
    std::vector<QxPNode*> bends;
    bends.reserve(order.size());
    for (auto _ : state) {
        bends.clear();
        const double forAdding = adding.time(drawing.edgeCount(), [&] {
            for (QxDEdge* edge : order) {
                bends.push_back(edge->addBend(edge->pSourceOrPathEdge(), besideMiddle(*edge), 1));
            }
        });
        const double forDiscarding = discarding.time(drawing.edgeCount(), [&] {
            for (std::size_t i = 0; i < bends.size(); ++i) {
                order[i]->discardBend(bends[i]);
            }
        });
        state.SetIterationTime(forAdding + forDiscarding);
    }
    adding.tell(state, "ns/addBend");
    discarding.tell(state, "ns/discardBend");
}
BENCHMARK(BendAndUnbend)
    ->ArgNames({"edges", "spread"})
    ->ArgsProduct({{1'000, 10'000, 100'000}, {0, 1}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

/// An edge between two nodes, at a slant, with a number of bends in between.
class OneEdge {
public:
    explicit OneEdge(const QxShape& shape, std::int32_t bendCount = 0)
        : m_manager(m_factory.newDGraphManager()) {
        QxDGraph* graph = m_manager->addGraph(0);
        const std::int32_t length = 300 * (bendCount + 1);
        QxDNode* source = graph->addNodeWithCoordinates(0, 0, 60, 40, 1, 0);
        QxDNode* target = graph->addNodeWithCoordinates(length, 170, 60, 40, 1, 0);
        source->pShape(&shape, 0);
        target->pShape(&shape, 0);
        edge = graph->addEdge(source, target, 0);
        appendBends(bendCount);
        edge->updateVisiblePart();
    }
    OneEdge(const OneEdge&) = delete;
    OneEdge& operator=(const OneEdge&) = delete;
    ~OneEdge() { m_manager->vRelease(); }

    void appendBends(std::int32_t count) {
        QxPNode* last = nullptr;
        for (std::int32_t i = 1; i <= count; ++i) {
            last = edge->addBendAfter(last, bendPlace(i), 1);
        }
    }
    /// Where the bend with the number i, from 1, lies on the way.
    static QxPoint bendPlace(std::int32_t i) { return {300 * i, i % 2 == 0 ? 0 : 170}; }

private:
    QxFactory m_factory;
    QxDGraphManager* m_manager;

public:
    QxDEdge* edge;
};

QxShape hexagon() {
    QxPointDList outline;
    for (const QxPoint& corner : {QxPoint(-1000, 0), QxPoint(-500, -1000), QxPoint(500, -1000),
                                  QxPoint(1000, 0), QxPoint(500, 1000), QxPoint(-500, 1000)}) {
        outline.appendPoint(corner);
    }
    return QxShape(outline);
}

/// Reading the clipped start of an edge whose clip points have been forgotten.
void clipAt(benchmark::State& state, const QxShape& shape) {
    const OneEdge one(shape);
    if (one.edge->ntFromPoint(1) == one.edge->ntFromPoint(0)) {
        state.SkipWithError("the edge is not clipped");
    }
    for (auto _ : state) {
        one.edge->invalidateEndPoints();
        benchmark::DoNotOptimize(one.edge->ntFromPoint(1));
    }
}
void ClipAtRectangle(benchmark::State& state) {
    clipAt(state, QxShape());
}
void ClipAtOval(benchmark::State& state) {
    clipAt(state, QxShape(QxShapeTypeOval));
}
void ClipAtHexagon(benchmark::State& state) {
    clipAt(state, hexagon());
}
BENCHMARK(ClipAtRectangle);
BENCHMARK(ClipAtOval);
BENCHMARK(ClipAtHexagon);

/// Reading it again.
void ClipPointKnown(benchmark::State& state) {
    const OneEdge one((QxShape(QxShapeTypeOval)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(one.edge->ntFromPoint(1));
    }
}
BENCHMARK(ClipPointKnown);

void UpdateVisiblePart(benchmark::State& state) {
    const OneEdge one(QxShape(QxShapeTypeOval), static_cast<std::int32_t>(state.range(0)));
    for (auto _ : state) {
        one.edge->isUpdatedVisiblePart(0);
        one.edge->updateVisiblePart();
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(UpdateVisiblePart)->ArgName("bends")->Arg(0)->Arg(10)->Arg(100);

void ProjectionPoint(benchmark::State& state) {
    const OneEdge one(QxShape(), static_cast<std::int32_t>(state.range(0)));
    const QxPoint point(200, 400);
    QxPoint nearest;
    std::int32_t distance = 0;
    for (auto _ : state) {
        one.edge->projectionPoint(&point, &nearest, &distance);
        benchmark::DoNotOptimize(nearest);
    }
}
BENCHMARK(ProjectionPoint)->ArgName("bends")->Arg(0)->Arg(10)->Arg(100);

void PointOnEdge(benchmark::State& state) {
    const OneEdge one(QxShape(), static_cast<std::int32_t>(state.range(0)));
    QxPoint point;
    for (auto _ : state) {
        one.edge->pointOnEdge(&point, 500);
        benchmark::DoNotOptimize(point);
    }
}
BENCHMARK(PointOnEdge)->ArgName("bends")->Arg(0)->Arg(10)->Arg(100);

/// One edge with very many bends: each step on its own, per bend.
void LongEdge(benchmark::State& state) {
    const auto count = static_cast<std::int32_t>(state.range(0));
    QxPointDList points;
    for (std::int32_t i = 1; i <= count; ++i) {
        points.appendPoint(OneEdge::bendPlace(i));
    }
    StepTimer appending;
    StepTimer rerouting;
    StepTimer walking;
    StepTimer measuring;
    StepTimer updating;
    StepTimer discarding;
    for (auto _ : state) {
        OneEdge one{QxShape()};
        double seconds = appending.time(count, [&] { one.appendBends(count); });
        seconds += walking.time(count, [&] {
            for (QxPathIter it(one.edge); it; ++it) {
                benchmark::DoNotOptimize(it.pNode());
            }
        });
        seconds += updating.time(count, [&] { one.edge->updateVisiblePart(); });
        seconds += measuring.time(count, [&] {
            benchmark::DoNotOptimize(one.edge->ntEdgeLength());
            QxRect rect;
            one.edge->getBoundingRectWithPathNodes(rect, 1);
            benchmark::DoNotOptimize(rect);
        });
        seconds += discarding.time(count, [&] { one.edge->discardAllBends(); });
        seconds += rerouting.time(count, [&] { one.edge->reroute(points, 1); });
        state.SetIterationTime(seconds);
        if (one.edge->numberOfBends() != count) {
            state.SkipWithError("bends are missing");
        }
    }
    appending.tell(state, "ns/append");
    walking.tell(state, "ns/walk");
    updating.tell(state, "ns/visible");
    measuring.tell(state, "ns/measure");
    discarding.tell(state, "ns/discard");
    rerouting.tell(state, "ns/reroute");
}
BENCHMARK(LongEdge)->ArgName("bends")->Arg(1'000)->Arg(100'000)->UseManualTime()->Unit(
    benchmark::kMillisecond);

/// A drawing with such an edge is destroyed.
void DestroyLongEdge(benchmark::State& state) {
    StepTimer destroying;
    for (auto _ : state) {
        auto one = std::make_unique<OneEdge>(QxShape(), static_cast<std::int32_t>(state.range(0)));
        state.SetIterationTime(destroying.time(state.range(0), [&] { one.reset(); }));
    }
    destroying.tell(state, "ns/bend");
}
BENCHMARK(DestroyLongEdge)
    ->ArgName("bends")
    ->Arg(1'000)
    ->Arg(100'000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
