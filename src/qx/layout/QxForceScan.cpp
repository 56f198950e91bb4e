// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Force-scan, after K. Misue, P. Eades, W. Lai and K. Sugiyama, "Layout adjustment and the mental
// map", Journal of Visual Languages and Computing 6 (1995): overlaps are removed by a scan that
// pushes nodes away from the lower left corner, so that a user finds the drawing again.
//
// The drawing is moved with its lower left corner to the origin, and the nodes are taken in the
// order of their distance from the two axes, the smaller one counting. Each node is held against
// those placed before it. Whatever it overlaps or touches pushes it right or up, whichever is the
// shorter way to a gap of 12 units, until it is clear of them all; then it is placed, too. Nodes
// are never pushed back, so that a placed node stays, and nodes clear of others do not move.
//
// Placed nodes more than the gap below or left of the present node's corner are forgotten, for
// the nodes still to come begin farther out.
//
// A node moves once, when its place is known. Cost: O(n log n) for the order, and a search among
// the placed nodes near by for each push (see internal/QxPlacedRects). Nodes of equal extents on
// one spot share the way that they are pushed; where n nodes that all differ lie around one small
// place, there are O(n^2) pushes. Limits: at the end of the coordinate range a node cannot be
// pushed on and stays where it overlaps; a drawing of more than 2^31 units is squeezed when it is
// moved to the origin.

#include "qx/layout/QxForceScan.h"

#include <algorithm>

#include "qx/drawing/QxDNode.h"
#include "qx/foundation/util/internal/Ref.h"
#include "qx/layout/QxForceScanSort.h"
#include "qx/layout/internal/QxPlacedRects.h"

namespace {

/// The graph's nodes in scan order, kept alive while listeners to their moves edit the drawing.
qx::internal::Snapshot<QxDNode> scanOrder(const QxDGraph* graph) {
    QxDList nodes;
    nodes.copyAppendList(graph->pNodeList());
    QxForceScanSort().quickSort(&nodes, 0);
    return qx::internal::Snapshot<QxDNode>(&nodes);
}

qx::internal::Extent extentOf(const QxDNode* node) {
    QxRect rect;
    node->getBoundingRect(rect, 1);
    return {rect.left(), rect.bottom(), rect.right(), rect.top()};
}

/// A center coordinate after the move that brings a side from `before` to `after`.
std::int32_t pushed(std::int32_t center, std::int32_t before, std::int32_t after) {
    return qx::clampToInt32(std::int64_t{center} + after - before);
}

void removeOverlaps(const QxDGraph* graph) {
    qx::internal::PlacedRects placed;
    for (QxDNode* node : scanOrder(graph)) {
        if (node->pOwnerGraph() != graph) {
            continue;
        }
        const qx::internal::Extent before = extentOf(node);
        qx::internal::Extent after = before;
        placed.dropBefore(std::min(before.left, before.bottom));
        placed.pushClear(after);
        placed.add(after);
        if (after.left != before.left || after.bottom != before.bottom) {
            node->ntMoveTo(pushed(node->iX(), before.left, after.left),
                           pushed(node->iY(), before.bottom, after.bottom));
        }
    }
}

}  // namespace

void QxForceScan::algorithmBody() {
    QxDGraph* const graph = pGraph();
    if (graph == nullptr) {
        return;
    }
    QxRect bounds;
    graph->calculateAndReturnGraphBounds(bounds);
    const std::int32_t dx = qx::saturatingSub(0, bounds.left());
    const std::int32_t dy = qx::saturatingSub(0, bounds.bottom());
    graph->ntMove(dx, dy, 0);
    removeOverlaps(graph);
    graph->ntMove(-dx, -dy, 0);
    graph->refreshGraphBounds();
}
