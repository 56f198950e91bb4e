// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

#include "qx/foundation/geometry/QxPoint.h"
#include "qx/foundation/geometry/QxRect.h"

class QxConnector;
class QxDEdge;
class QxDGraph;
class QxDNode;
class QxShape;

namespace qx::internal {

/// One end of an edge that is being made to run along the axes: its node, and the connector that
/// holds the end on the outline of the node. Points are in the coordinates of the edge's path. Made
/// for one repair; the node must be there and be kept alive.
class RouteEnd {
public:
    RouteEnd(QxDEdge& edge, bool atSource);

    /// Where the path starts (ends).
    QxPoint point() const;
    /// Whether it leaves through the left or right side of the node.
    bool isHorizontal() const;
    /// Gives an end without a connector a calculated one, on the outline of the node on the way to
    /// `next`, and brings one that lies outside the node back to the outline. Specified ones stay.
    void repairConnector(const QxPoint& next);
    /// Cuts a path that starts here where it leaves the outline of the node for the last time, and
    /// moves the calculated connector there. Whether it did.
    bool cut(std::vector<QxPoint>& points);

private:
    QxConnector* pConnector() const;
    QxPoint toNode(QxPoint point) const;
    /// Places the connector, a new one for null, at a point in the node's graph.
    void place(QxConnector* connector, const QxPoint& at);
    bool clip(QxPoint& result, const QxPoint& from, const QxPoint& to) const;

    QxDEdge& m_edge;
    QxDNode& m_node;
    bool m_atSource;
    /// Of the node; null for an edge that lies in it, too.
    const QxDGraph* m_graph;
    const QxShape& m_shape;
    QxRect m_rect;
};

}  // namespace qx::internal
