// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/foundation/geometry/QxDirectionEnum.h"
#include "qx/foundation/geometry/QxSideEnum.h"

/// Which way edges leave connectors. Directions are kept, never sides: an edge that leaves through
/// the right side (2) goes right (0).
namespace qx::internal {

/// The way out through a side.
constexpr QxDirectionEnum directionThrough(QxSideEnum side) {
    return side == QxSideNone ? QxDirectionNone : static_cast<QxDirectionEnum>((side + 2) % 4);
}

/// The direction in which a segment of the edge from `here`, at the node, to `there` leaves: its
/// own when it is straight, that through the closest side of the node when it is slanted.
inline QxDirectionEnum directionLeaving(const QxDNode& node, const QxDEdge& edge,
                                        const QxPoint& here, const QxPoint& there) {
    if (here.x() == there.x() && here.y() != there.y()) {
        return here.y() < there.y() ? QxDirectionUp : QxDirectionDown;
    }
    if (here.y() == there.y() && here.x() != there.x()) {
        return here.x() < there.x() ? QxDirectionRight : QxDirectionLeft;
    }
    QxPoint atNode = here;
    const QxDGraph* graph = edge.intergraphEdge() != 0 ? node.pOwnerGraph() : nullptr;
    if (graph != nullptr) {
        graph->inverseExpandedTransformPoint(atNode);
    }
    return directionThrough(node.pIRect()->closestSide(atNode));
}

}  // namespace qx::internal
