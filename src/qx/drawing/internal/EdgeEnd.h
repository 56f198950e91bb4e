// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"

namespace qx::internal {

/// The object at one end of an edge: its center is where the path starts or ends, its outline is
/// where the drawn part is cut off. Here the node; a connector of that end goes before it.
///
/// Everything is in the coordinates of the edge: those of its graph, and those of the anchor graph
/// for an edge between graphs.
class EdgeEnd {
public:
    EdgeEnd(const QxDEdge& edge, bool atSource)
        : m_node(atSource ? edge.pSourceNode() : edge.pTargetNode()),
          m_inOwnGraph(edge.intergraphEdge() != 0 ? 0 : 1) {}

    explicit operator bool() const { return m_node != nullptr; }

    QxPoint center() const {
        QxPoint center = m_node->iCenter();
        const QxDGraph* graph = m_inOwnGraph == 0 ? m_node->pOwnerGraph() : nullptr;
        if (graph != nullptr) {
            graph->expandedTransformPoint(center);
        }
        return center;
    }
    bool contains(const QxPoint& point) const { return m_node->within(point, m_inOwnGraph) != 0; }
    /// Moves `from` to where the way from there to `toward` leaves the object; it stays where it
    /// is when it does not.
    void clip(QxPoint& from, const QxPoint& toward) const {
        m_node->intersectsSegment(from, toward, m_inOwnGraph);
    }
    bool forcesClipping() const { return m_node->forceClipping() != 0; }

private:
    const QxDNode* m_node;
    int m_inOwnGraph;
};

}  // namespace qx::internal
