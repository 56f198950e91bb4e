// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Drawings in which very many things meet in one place, with bounds and spatial index on: all nodes
// on one spot, a star about one hub, one edge with very many bends. Each step is told in
// nanoseconds for one object, which must not grow with their number.

#include "BenchMeasure.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxFactory.h"
#include "qx/drawing/QxPEdge.h"
#include "qx/drawing/QxPNode.h"
#include "qx/spatial/QxQTree.h"

namespace {

using qx::bench::keepFreedMemory;
using qx::bench::shuffled;
using qx::bench::StepTimer;

enum Form { Pile, Star, Bends };

/// A visible graph whose index is built and asked after every hundred changes.
class Crowd {
public:
    explicit Crowd(std::int64_t count) : m_count(count) {
        keepFreedMemory();
        m_graph->disableQuadTree(0);
        ask();
    }
    Crowd(const Crowd&) = delete;
    Crowd& operator=(const Crowd&) = delete;
    ~Crowd() { m_manager->vRelease(); }

    void fill(Form form) {
        switch (form) {
            case Pile:
                repeat([&](std::int32_t) { addNode(0, 0); });
                break;
            case Star:
                addNode(0, 0);
                repeat([&](std::int32_t i) {
                    addNode(100 * (i % 1000), 100 * (1 + i / 1000));
                    m_edges.push_back(i % 2 != 0
                                          ? m_graph->addEdge(m_nodes.back(), m_nodes.front(), 0)
                                          : m_graph->addEdge(m_nodes.front(), m_nodes.back(), 0));
                });
                break;
            case Bends: {
                addNode(0, 0);
                addNode(500, 500);
                QxDEdge* edge = m_graph->addEdge(m_nodes[0], m_nodes[1], 0);
                m_edges.push_back(edge);
                repeat([&](std::int32_t i) {
                    m_bends.push_back(
                        edge->addBend(edge->pTargetOrPathEdge(), QxPoint(i, 100 + i % 7), 1));
                });
                break;
            }
        }
        ask();
    }
    /// There and back.
    void moveSome(Form form) {
        const std::int32_t far = -700;
        for (std::int32_t i = 0; i < Moves; ++i) {
            const std::int32_t to = i % 2 == 0 ? far : 0;
            if (form == Bends) {
                m_bends[m_bends.size() / 2]->moveTo(QxPoint(to, to), 1);
            } else {
                m_nodes[m_nodes.size() / 2]->moveTo(to, to, 1);
            }
            ask();
        }
    }
    void moveHub() {
        m_nodes.front()->moveTo(-700, -700, 1);
        ask();
        m_nodes.front()->moveTo(0, 0, 1);
        ask();
    }
    /// Small regions away from the crowd, and the place where it meets.
    void askSome() {
        for (std::int32_t i = 0; i < Moves; ++i) {
            const QxRect rect(-2000 - i, -2000, -1990 - i, -1990);
            benchmark::DoNotOptimize(m_graph->pQuadTree()->overlaps(&rect, 1, 1, 1, 1, 1, 1, 1, 1));
        }
    }
    void askForAll() {
        QxDNodeDList nodes;
        QxPNodeDList bends;
        QxPEdgeDList segments;
        const QxRect rect(-1000, -1000, 1000000, 1000000);
        m_graph->pQuadTree()->buildLists(&rect, &nodes, nullptr, &bends, &segments, nullptr,
                                         nullptr, nullptr, nullptr, 1);
        benchmark::DoNotOptimize(nodes.count() + segments.count());
    }
    void empty(Form form) {
        if (form == Bends) {
            for (QxPNode* bend : shuffled(m_bends)) {
                m_edges.front()->discardBend(bend);
                change();
            }
        } else if (form == Star) {
            for (QxDEdge* edge : shuffled(m_edges)) {
                m_graph->discardEdge(edge);
                change();
            }
        } else {
            for (QxDNode* node : shuffled(m_nodes)) {
                m_graph->discardNode(node);
                change();
            }
        }
        ask();
    }
    std::int64_t count() const { return m_count; }

    static constexpr std::int32_t Moves = 1000;

private:
    template <class Act>
    void repeat(const Act& act) {
        for (std::int64_t i = 0; i < m_count; ++i) {
            act(static_cast<std::int32_t>(i));
            change();
        }
    }
    void addNode(std::int32_t x, std::int32_t y) {
        m_nodes.push_back(m_graph->addNodeWithCoordinates(x, y, 60, 40, 1, 0));
    }
    void change() {
        if (++m_changes % 100 == 0) {
            ask();
        }
    }
    void ask() {
        const QxRect nowhere(-900000, -900000, -899999, -899999);
        benchmark::DoNotOptimize(m_graph->pQuadTree()->overlaps(&nowhere, 1, 1, 1, 1, 1, 1, 1, 1));
    }

    std::int64_t m_count;
    std::int64_t m_changes = 0;
    QxFactory m_factory;
    QxDGraphManager* m_manager = m_factory.newDGraphManager();
    QxDGraph* m_graph = m_manager->addGraph(0);
    std::vector<QxDNode*> m_nodes;
    std::vector<QxDEdge*> m_edges;
    std::vector<QxPNode*> m_bends;
};

void CrowdWithIndex(benchmark::State& state) {
    const auto form = static_cast<Form>(state.range(1));
    StepTimer filling;
    StepTimer moving;
    StepTimer movingHub;
    StepTimer asking;
    StepTimer askingForAll;
    StepTimer emptying;
    for (auto _ : state) {
        Crowd crowd(state.range(0));
        double time = filling.time(crowd.count(), [&] { crowd.fill(form); });
        time += moving.time(Crowd::Moves, [&] { crowd.moveSome(form); });
        time += movingHub.time(2 * crowd.count(), [&] { crowd.moveHub(); });
        time += asking.time(Crowd::Moves, [&] { crowd.askSome(); });
        time += askingForAll.time(crowd.count(), [&] { crowd.askForAll(); });
        time += emptying.time(crowd.count(), [&] { crowd.empty(form); });
        state.SetIterationTime(time);
    }
    filling.tell(state, "ns/insert");
    moving.tell(state, "ns/move");
    movingHub.tell(state, "ns/hub");
    asking.tell(state, "ns/ask");
    askingForAll.tell(state, "ns/found");
    emptying.tell(state, "ns/discard");
}
BENCHMARK(CrowdWithIndex)
    ->ArgNames({"count", "form"})
    ->ArgsProduct({{25'000, 100'000}, {Pile, Star, Bends}})
    ->Args({200'000, Star})
    ->UseManualTime()
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

}  // namespace
