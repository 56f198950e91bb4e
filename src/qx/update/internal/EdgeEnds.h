// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"

/// What moves look at in an edge. "At the source" false means at the target.
namespace qx::internal {

inline QxDNode* nodeAt(const QxDEdge& edge, bool atSource) {
    return atSource ? edge.pSourceNode() : edge.pTargetNode();
}

inline QxConnector* connectorAt(const QxDEdge& edge, bool atSource) {
    return atSource ? edge.pInternalSourceConnector() : edge.pInternalTargetConnector();
}

/// The connector of that end when it is a calculated one; else null.
inline QxConnector* calculatedAt(const QxDEdge& edge, bool atSource) {
    QxConnector* connector = connectorAt(edge, atSource);
    return connector != nullptr && connector->specified() == 0 ? connector : nullptr;
}

inline void assignAt(QxDEdge& edge, QxConnector* connector, bool atSource) {
    if (atSource) {
        edge.pSourceConnector(connector);
    } else {
        edge.pTargetConnector(connector);
    }
}

inline QxPoint endAt(const QxDEdge& edge, bool atSource) {
    return atSource ? edge.ntFromPoint(0) : edge.ntToPoint(0);
}

/// From the coordinates of the edge into those of the node's graph.
inline void toNode(const QxDEdge& edge, const QxDNode& node, QxPoint& point) {
    const QxDGraph* graph = edge.intergraphEdge() != 0 ? node.pOwnerGraph() : nullptr;
    if (graph != nullptr) {
        graph->inverseExpandedTransformPoint(point);
    }
}
/// And back.
inline void fromNode(const QxDEdge& edge, const QxDNode& node, QxPoint& point) {
    const QxDGraph* graph = edge.intergraphEdge() != 0 ? node.pOwnerGraph() : nullptr;
    if (graph != nullptr) {
        graph->expandedTransformPoint(point);
    }
}

/// The node's rectangle in the coordinates of the edge.
inline QxRect rectFor(const QxDEdge& edge, const QxDNode& node) {
    QxRect rect = *node.pIRect();
    node.getBoundingRect(rect, edge.intergraphEdge() != 0 ? 0 : 1);
    return rect;
}

inline bool isActive(const QxDEdge& edge) {
    return edge.connected() != 0 && edge.deactivated() == 0;
}

}  // namespace qx::internal
