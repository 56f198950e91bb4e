// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// The self-loops of a node: nested frames above it, the first one innermost. Each leaves the top on
// the right, where the outline is met from above, and returns on the left. The feet of k loops
// share the half of the node on their side evenly.

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/drawing/bundles/internal/Siblings.h"
#include "qx/drawing/clipping/internal/ShownShape.h"
#include "qx/drawing/path/internal/TakeBends.h"
#include "qx/foundation/graph/internal/EachObject.h"

using qx::internal::Change;
using qx::internal::each;
using qx::internal::Ref;
using qx::internal::Siblings;
using qx::internal::Snapshot;

namespace {

/// How far the innermost loop rises above the node.
constexpr std::int32_t LoopRise = 19;

Siblings loopsAt(const QxDNode& node) {
    Siblings loops;
    for (QxDEdge* edge : each<QxDEdge>(*node.pOutEdgeList())) {
        if (edge->reflexive() != 0 && edge->deactivated() == 0) {
            loops.push_back(edge);
        }
    }
    qx::internal::sortByStamp(loops);
    return loops;
}

/// Where a way straight down from a bend above the node meets its outline.
QxPoint footBelow(const QxDNode& node, const QxPoint& bend) {
    const QxRect& rect = *node.pIRect();
    QxPoint foot;
    const bool isMet =
        qx::internal::shownShape(node).intersectsSegment(
            foot, bend, QxPoint(bend.x(), rect.bottom()), rect.center(), rect.size()) != 0;
    return isMet ? foot : QxPoint(bend.x(), rect.top());
}

}  // namespace

void QxDNode::reorganizeReflexiveEdges() {
    QxDGraph* graph = pOwnerGraph();
    const Siblings found = graph != nullptr ? loopsAt(*this) : Siblings();
    if (found.empty()) {
        return;
    }
    Snapshot<QxDEdge> loops;
    for (QxDEdge* edge : found) {
        loops.add(edge);
    }
    const Ref alive(*this);
    const QxRect rect = m_rect;
    const std::int64_t half = (std::int64_t{rect.right()} - rect.left()) / 2;
    const double step = static_cast<double>(half) / (static_cast<double>(found.size()) + 1.0);
    const std::int64_t spacing = graph->diagrammingMultiEdgeSpacing();
    Change::inGraph(*graph, [&] {
        int number = 0;
        for (QxDEdge* loop : loops) {
            const bool isHere = loop->pSourceNode() == this && loop->pTargetNode() == this &&
                                loop->connected() != 0 && loop->deactivated() == 0;
            if (!isHere || qx::internal::hasSpecifiedConnector(*loop)) {
                continue;
            }
            ++number;
            const std::int32_t y =
                qx::clampToInt32(rect.top() + LoopRise + (number - 1) * spacing / 2);
            const QxPoint right(qx::truncToInt32(rect.x() + number * step), y);
            const QxPoint left(qx::truncToInt32(rect.x() - number * step), y);
            qx::internal::holdEnd(*loop, true, footBelow(*this, right), QxDirectionUp);
            qx::internal::holdEnd(*loop, false, footBelow(*this, left), QxDirectionUp);
            qx::internal::takeBends(*loop, {right, left});
        }
    });
}

int QxDNode::storeMultiEdgeList(const QxDEdge* edge, QxDEdgeDList& list) const {
    list.deleteAllCells();
    if (edge == nullptr || edge->reflexive() != 0) {
        return 0;
    }
    const QxDNode* source = edge->pSourceNode();
    const QxDNode* target = edge->pTargetNode();
    const QxDNode* there = source == this ? target : source;
    if (there == nullptr || (source != this && target != this)) {
        return 0;
    }
    // In the same order, whichever of the two nodes has the shorter lists.
    const bool isWalkedHere = qx::internal::degreeOf(*this) <= qx::internal::degreeOf(*there);
    for (const QxEdgeDList* edges : {isWalkedHere ? pInEdgeList() : there->pOutEdgeList(),
                                     isWalkedHere ? pOutEdgeList() : there->pInEdgeList()}) {
        for (QxDEdge* other : each<QxDEdge>(*edges)) {
            const bool isAlong = other->pSourceNode() == source && other->pTargetNode() == target;
            const bool isAgainst = other->pSourceNode() == target && other->pTargetNode() == source;
            const bool isFree = other->graphObjectStatus() == QxStatusUnchanged &&
                                other->pOwnerGraph() == edge->pOwnerGraph() &&
                                other->hasBends() == 0 && other->desiredOrthogonalRouting() == 0;
            if ((isAlong && isFree) || isAgainst) {
                list.appendEdge(other);
            }
        }
    }
    if (list.count() < 2) {
        list.deleteAllCells();
        return 0;
    }
    return 1;
}
