// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <vector>

#include "import/GraphDocument.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxFactory.h"

namespace qxdraw {

/// A document as a drawing: one graph with the document's nodes and edges, in its order. Nested
/// graphs are flat in it.
class Drawing {
public:
    /// Every node of the document has a center and a size.
    explicit Drawing(const GraphDocument& document);
    ~Drawing();
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;

    QxDGraph& graph() const { return *m_graph; }
    QxDNode& node(std::size_t index) const { return *m_nodes[index]; }
    QxDEdge& edge(std::size_t index) const { return *m_edges[index]; }
    std::size_t numberOfNodes() const { return m_nodes.size(); }
    std::size_t numberOfEdges() const { return m_edges.size(); }

private:
    void addNode(const DocumentNode& source);
    void addEdge(const DocumentEdge& source);

    QxFactory m_factory;
    QxDGraphManager* m_manager;
    QxDGraph* m_graph;
    std::vector<QxDNode*> m_nodes;
    std::vector<QxDEdge*> m_edges;
};

/// The nearest point of the drawing's grid of whole units.
QxPoint toPoint(const DocumentPoint& point);

}  // namespace qxdraw
