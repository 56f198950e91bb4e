// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/foundation/geometry/internal/PlacedOutline.h"

namespace qx::internal {

/// The outline of the node in one of its rectangles. A node that was given no shape shows the
/// default, a rectangle, which has nothing to add.
inline PlacedOutline outlineOf(const QxDNode& node, const QxRect& rect) {
    return {rect, node.pQueryShapeResource(), nullptr};
}

/// Whether the point lies in the node's shape, as that is seen in the node's graph or, `inOwnGraph`
/// 0, in the anchor graph: where the node is cut, not where it would be in finer coordinates. No
/// point does there when the node is not visible.
inline bool nodeContains(const QxDNode& node, const QxPoint& point, int inOwnGraph) {
    QxRect rect;
    return node.getBoundingRect(rect, inOwnGraph) != 0 && outlineOf(node, rect).contains(point);
}

/// The object at one end of an edge: its center is where the path starts or ends, its outline is
/// where the drawn part is cut off. The connector of that end, when there is one, else the node.
///
/// Everything is in the coordinates of the edge: those of its graph, and those of the anchor graph
/// for an edge between graphs.
class EdgeEnd {
public:
    EdgeEnd(const QxDEdge& edge, bool atSource)
        : m_node(atSource ? edge.pSourceNode() : edge.pTargetNode()),
          m_connector(atSource ? edge.pInternalSourceConnector() : edge.pInternalTargetConnector()),
          m_inOwnGraph(edge.intergraphEdge() != 0 ? 0 : 1) {}

    explicit operator bool() const { return m_node != nullptr; }

    QxPoint center() const {
        QxPoint center =
            m_connector == nullptr ? m_node->pIRect()->center() : m_connector->ntCenter();
        const QxDGraph* graph = m_inOwnGraph == 0 ? m_node->pOwnerGraph() : nullptr;
        if (graph != nullptr) {
            graph->expandedTransformPoint(center);
        }
        return center;
    }
    bool contains(const QxPoint& point) const {
        return m_connector == nullptr ? nodeContains(*m_node, point, m_inOwnGraph)
                                      : m_connector->within(point, m_inOwnGraph) != 0;
    }
    /// Moves `from` to where the way from there to `toward` leaves the object; it stays where it
    /// is when it does not.
    void clip(QxPoint& from, const QxPoint& toward) const {
        if (m_connector == nullptr) {
            m_node->intersectsSegment(from, toward, m_inOwnGraph);
        } else {
            m_connector->intersectsSegment(from, toward, m_inOwnGraph);
        }
    }
    bool forcesClipping() const { return m_node->forceClipping() != 0; }

private:
    const QxDNode* m_node;
    const QxConnector* m_connector;
    int m_inOwnGraph;
};

}  // namespace qx::internal
