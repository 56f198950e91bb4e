// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <random>
#include <utility>
#include <vector>

#include "BenchMeasure.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxFactory.h"

namespace qx::bench {

/// The drawing that the benchmarks build: nodes on a square grid, and from each an edge to its
/// right and one to its upper neighbour, or two edges to any other nodes. Everything that the
/// benchmark itself needs is allocated before the first object is made.
class BenchDrawing {
public:
    enum Ends { Neighbours, Anywhere };
    /// A managed graph, which is visible and keeps its bounds, or one without a manager that does
    /// not.
    enum Form { Managed, Bare };

    static constexpr std::int32_t Spacing = 100;
    static constexpr std::int32_t Width = 60;
    static constexpr std::int32_t Height = 40;

    /// A plan with a graph, without contents yet.
    explicit BenchDrawing(std::int64_t nodeCount, Ends ends = Neighbours, Form form = Managed)
        : m_side(static_cast<std::size_t>(std::ceil(std::sqrt(static_cast<double>(nodeCount))))),
          m_nodeCount(static_cast<std::size_t>(nodeCount)) {
        keepFreedMemory();
        planEdges(ends);
        nodes.reserve(m_nodeCount);
        edges.reserve(m_ends.size());
        if (form == Managed) {
            m_manager = m_factory.newDGraphManager();
            m_graph = m_manager->addGraph(0);
        } else {
            m_graph = m_factory.qxNewDGraph(&m_factory, 0);
            m_graph->disableGraphBounds(1, 0);
        }
    }
    BenchDrawing(const BenchDrawing&) = delete;
    BenchDrawing& operator=(const BenchDrawing&) = delete;
    ~BenchDrawing() { destroy(); }

    BenchDrawing& build() {
        addNodes();
        addEdges();
        return *this;
    }
    void addNodes() {
        for (std::size_t i = 0; i < m_nodeCount; ++i) {
            nodes.push_back(m_graph->addNodeWithCoordinates(
                static_cast<std::int32_t>(i % m_side) * Spacing,
                static_cast<std::int32_t>(i / m_side) * Spacing, Width, Height, 1, 0));
        }
    }
    void addEdges() {
        for (const auto& [source, target] : m_ends) {
            edges.push_back(m_graph->addEdge(nodes[source], nodes[target], 0));
        }
    }
    /// Destroys manager, graph and contents.
    void destroy() {
        if (m_manager != nullptr) {
            m_manager->vRelease();
        } else if (m_graph != nullptr) {
            m_graph->vRelease();
        }
        m_manager = nullptr;
        m_graph = nullptr;
        nodes.clear();
        edges.clear();
    }

    QxFactory& factory() { return m_factory; }
    QxDGraphManager& manager() { return *m_manager; }
    QxDGraph& graph() { return *m_graph; }
    std::int64_t nodeCount() const { return static_cast<std::int64_t>(m_nodeCount); }
    std::int64_t edgeCount() const { return static_cast<std::int64_t>(m_ends.size()); }
    std::int64_t objectCount() const { return nodeCount() + edgeCount(); }
    /// A node with four edges, far from the bounds of the graph.
    QxDNode& middleNode() { return *nodes[m_side * (m_side / 2) + m_side / 2]; }
    /// All nodes that have neighbours on all four sides.
    std::vector<QxDNode*> innerNodes() const {
        std::vector<QxDNode*> inner;
        for (std::size_t i = m_side; i + m_side < m_nodeCount; ++i) {
            if (i % m_side != 0 && i % m_side != m_side - 1) {
                inner.push_back(nodes[i]);
            }
        }
        return inner;
    }

private:
    void planEdges(Ends ends) {
        std::mt19937_64 random(1);
        for (std::size_t i = 0; i < m_nodeCount; ++i) {
            if (ends == Anywhere) {
                m_ends.emplace_back(i, random() % m_nodeCount);
                m_ends.emplace_back(i, random() % m_nodeCount);
                continue;
            }
            if (i % m_side + 1 < m_side && i + 1 < m_nodeCount) {
                m_ends.emplace_back(i, i + 1);
            }
            if (i + m_side < m_nodeCount) {
                m_ends.emplace_back(i, i + m_side);
            }
        }
    }

    std::size_t m_side;
    std::size_t m_nodeCount;
    std::vector<std::pair<std::size_t, std::size_t>> m_ends;
    QxFactory m_factory;
    QxDGraphManager* m_manager = nullptr;
    QxDGraph* m_graph = nullptr;

public:
    std::vector<QxDNode*> nodes;
    std::vector<QxDEdge*> edges;
};

}  // namespace qx::bench
