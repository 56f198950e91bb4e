// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Moves and what follows them, with bounds and spatial index on and nobody listening. An iteration
// is one move, or one step of a drag. The goals, in a drawing of 10,000 nodes: a node with four
// straight edges 1.0 us (0.6 without reactions), 2.5 us at 100,000 in random order; a step of 1,000
// nodes with their 4,000 edges 2 ms; a move inside nested nodes 10 us a level.

#include <memory>

#include "BenchDrawing.h"
#include "BenchMeasure.h"
#include "qx/drawing/QxDrawingIters.h"
#include "qx/drawing/QxEdgeLabel.h"
#include "qx/drawing/QxPNode.h"
#include "qx/update/QxAffectedObjectInfo.h"

namespace {

using qx::bench::BenchDrawing;
using qx::bench::Round;
using qx::bench::shuffled;

/// A built drawing whose index has been asked.
class IndexedDrawing {
public:
    explicit IndexedDrawing(std::int64_t nodeCount) : drawing(nodeCount) {
        drawing.build();
        drawing.graph().calculateQuadTree();
        ask();
    }
    void ask() {
        benchmark::DoNotOptimize(
            drawing.graph().overlaps(QxRect(-10, -10, -5, -5), 1, 1, 1, 0, 0, 0, 0, 1));
    }

    BenchDrawing drawing;
};

/// Moves nodes with four edges each, without ("reactions" 0) or with what follows.
void MoveOfNode(benchmark::State& state) {
    IndexedDrawing indexed(state.range(0));
    const std::vector<QxDNode*> nodes = shuffled(indexed.drawing.innerNodes());
    indexed.drawing.manager().isUpdatingAffectedGraphs(state.range(1) == 0 ? 1 : 0);
    Round<QxDNode*> round(nodes);
    std::int32_t step = 1;
    for (auto _ : state) {
        QxDNode& node = *round.next();
        step = &node == nodes.front() ? -step : step;
        node.moveTo(node.iX() + step, node.iY(), 1);
    }
    indexed.drawing.manager().isUpdatingAffectedGraphs(0);
}
BENCHMARK(MoveOfNode)->ArgNames({"nodes", "reactions"})->ArgsProduct({{10'000, 100'000}, {0, 1}});

/// The same with edges of two bends each (0), with calculated connectors along the axes (1), and
/// with a label that stays behind (2).
void MoveOfNodeWithFollowers(benchmark::State& state) {
    IndexedDrawing indexed(10'000);
    for (QxDEdge* edge : indexed.drawing.edges) {
        if (state.range(0) == 0) {
            edge->addBend(edge->pTargetOrPathEdge(), edge->ntFromPoint(0) + QxPoint(30, 40), 1);
            edge->addBend(edge->pTargetOrPathEdge(), edge->ntToPoint(0) + QxPoint(40, 30), 1);
        } else if (state.range(0) == 1) {
            edge->internalOrthogonalRouting(1);
            edge->repairOrthogonalRouting();
        } else {
            edge->addLabel(L"label", 0)->moveLabelOnOwnerMove(0);
        }
    }
    indexed.ask();
    QxDNode& node = indexed.drawing.middleNode();
    std::int32_t step = 3;
    for (auto _ : state) {
        step = -step;
        node.moveTo(node.iX() + step, node.iY() + step, 1);
    }
}
BENCHMARK(MoveOfNodeWithFollowers)->ArgName("kind")->DenseRange(0, 2);

/// A block of 1,000 nodes in the middle of the drawing, dragged by one step, its edges shown.
class BlockDrag {
public:
    explicit BlockDrag(std::int64_t nodeCount) : m_indexed(nodeCount) {
        BenchDrawing& drawing = m_indexed.drawing;
        for (QxDNode* node : shuffled(drawing.innerNodes())) {
            if (m_nodes.count() < 1000) {
                m_nodes.appendNode(node);
            }
        }
        m_drag.init(&drawing.manager(), &m_nodes, nullptr, nullptr, nullptr, nullptr, nullptr,
                    nullptr, 0);
        m_drag.actBeforeGeometryChange();
    }
    void step(std::int32_t dx) {
        for (QxDNode* node : QxDNodeDListIter(m_drag.pMovedNodeList())) {
            node->ntMove(dx, 0);
        }
    }
    QxAffectedObjectInfo& drag() { return m_drag; }

private:
    IndexedDrawing m_indexed;
    QxDNodeDList m_nodes;
    QxAffectedObjectInfo m_drag;
};

void DragStep(benchmark::State& state) {
    BlockDrag block(state.range(0));
    std::int32_t step = 1;
    for (auto _ : state) {
        step = -step;
        block.step(step);
        block.drag().performRouting(block.drag().pReroutedEdgeList());
    }
}
BENCHMARK(DragStep)->ArgName("nodes")->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMicrosecond);

void RestoreInitialPositions(benchmark::State& state) {
    BlockDrag block(100'000);
    for (auto _ : state) {
        block.step(5);
        block.drag().restoreInitialPositions();
        block.drag().restoreReroutedEdges();
    }
}
BENCHMARK(RestoreInitialPositions)->Unit(benchmark::kMicrosecond);

/// Moves the outermost node in the innermost of so many graphs, out and back: every level is
/// fitted.
void MoveInsideLevels(benchmark::State& state) {
    QxFactory factory;
    QxDGraphManager* const manager = factory.newDGraphManager();
    QxDGraph* graph = manager->addGraph(0);
    std::vector<QxDNode*> around;
    for (std::int64_t level = 0; level < state.range(0); ++level) {
        around.push_back(graph->addNodeWithCoordinates(0, 0, 60, 40, 1, 0));
        QxDNode* beside = graph->addNodeWithCoordinates(-500, 0, 60, 40, 1, 0);
        manager->addEdge(beside, around.back(), 0);
        graph = manager->addGraph(0);
        around.back()->pChildGraph(graph);
    }
    QxDNode* const inner = graph->addNodeWithCoordinates(0, 0, 60, 40, 1, 0);
    graph->addNodeWithCoordinates(-300, 0, 60, 40, 1, 0);
    for (auto node = around.rbegin(); node != around.rend(); ++node) {
        (*node)->expand();
    }
    bool isOut = false;
    for (auto _ : state) {
        isOut = !isOut;
        inner->moveTo(isOut ? 100 : 0, 0, 1);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    manager->vRelease();
}
BENCHMARK(MoveInsideLevels)->ArgName("levels")->Arg(1)->Arg(10)->Unit(benchmark::kMicrosecond);

}  // namespace
