// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// What edges keep while a move is running, and where there is room for one more at a node.

#include <algorithm>
#include <utility>

#include "qx/drawing/QxEdgeLabel.h"
#include "qx/drawing/QxPEdge.h"
#include "qx/drawing/QxPNode.h"
#include "qx/drawing/connectors/internal/RoutingDirection.h"
#include "qx/drawing/internal/Extras.h"
#include "qx/drawing/path/internal/TakeBends.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/foundation/util/internal/Ref.h"
#include "qx/update/QxDEdgeInitialGeometry.h"
#include "qx/update/internal/EdgeEnds.h"
#include "qx/update/internal/FreePlace.h"

using qx::internal::each;
using qx::internal::EdgeExtras;
using qx::internal::Ref;
using qx::internal::Snapshot;

QxDEdgeInitialGeometry* QxDEdge::pEdgeInitialGeometry() const {
    const auto* extras = static_cast<const EdgeExtras*>(pQueryExtras());
    return extras != nullptr ? static_cast<QxDEdgeInitialGeometry*>(extras->initialGeometry.get())
                             : nullptr;
}

QxDEdgeInitialGeometry* QxDEdge::pEdgeInitialGeometry(QxDEdgeInitialGeometry* record) {
    if (record != pEdgeInitialGeometry()) {
        auto& slot = static_cast<EdgeExtras&>(extras()).initialGeometry;
        const auto former = std::exchange(slot, Ref<QxObject>::adopt(record));
    }
    return record;
}

void QxDEdge::storeMovedEdge() {
    for (QxPNode* bend : qx::internal::heldBends(*this)) {
        bend->storeMovedNode();
    }
    for (QxEdgeLabel* label : Snapshot<QxEdgeLabel>(pLabelList())) {
        label->storeMovedLabel();
    }
}

void QxDEdge::restoreMovedEdge() {
    const Ref alive(*this);
    for (QxPNode* bend : qx::internal::heldBends(*this)) {
        if (bend->pOwnerEdge() == this) {
            bend->restoreMovedNode();
        }
    }
    for (QxEdgeLabel* label : Snapshot<QxEdgeLabel>(pLabelList())) {
        label->restoreMovedLabel(1);
    }
}

void QxDEdge::deleteMovedEdgeInitialPosition() {
    for (QxPNode* bend : qx::internal::heldBends(*this)) {
        bend->pRectBeforeMove(nullptr);
    }
    for (QxEdgeLabel* label : Snapshot<QxEdgeLabel>(pLabelList())) {
        label->restoreMovedLabel(0);
    }
}

void QxDEdge::deleteReroutedEdgeInitialPosition() {
    pEdgeInitialGeometry(nullptr);
    for (QxEdgeLabel* label : Snapshot<QxEdgeLabel>(pLabelList())) {
        label->restoreMovedLabel(0);
    }
}

namespace qx::internal {

namespace {

/// In which direction the edge leaves its end at the node.
QxDirectionEnum leavingDirection(const QxDEdge& edge, const QxConnector& connector, bool atSource) {
    if (connector.specified() == 0) {
        return connector.routingDirection();
    }
    // By its end segment, as a calculated connector would have it.
    const QxPEdge* segment = atSource ? edge.pSourceOrPathEdge() : edge.pTargetOrPathEdge();
    if (segment == nullptr) {
        return QxDirectionNone;
    }
    const QxPoint from = segment->ntFromPoint(0);
    const QxPoint to = segment->ntToPoint(0);
    return atSource ? directionLeaving(*connector.pOwnerNode(), edge, from, to)
                    : directionLeaving(*connector.pOwnerNode(), edge, to, from);
}

}  // namespace

std::int32_t firstEdgeOnSide(const QxDNode& node, QxDirectionEnum direction, bool high,
                             const QxDEdge* except) {
    const bool alongY = direction == QxDirectionRight || direction == QxDirectionLeft;
    const QxRect& rect = *node.pIRect();
    std::int32_t free =
        alongY ? (high ? rect.top() : rect.bottom()) : (high ? rect.right() : rect.left());
    for (const bool atSource : {false, true}) {
        for (const QxDEdge* edge :
             each<QxDEdge>(atSource ? *node.pOutEdgeList() : *node.pInEdgeList())) {
            const QxConnector* connector = connectorAt(*edge, atSource);
            if (edge == except || edge->marked() != 0 || connector == nullptr ||
                edge->desiredOrthogonalRouting() == 0 ||
                leavingDirection(*edge, *connector, atSource) != direction) {
                continue;
            }
            const QxPoint place = connector->ntCenter();
            const std::int32_t along = alongY ? place.y() : place.x();
            free = high ? std::min(free, along) : std::max(free, along);
        }
    }
    return free;
}

}  // namespace qx::internal

std::int32_t QxDNode::findFirstEdgeOnSide(QxDirectionEnum direction, int high) const {
    return qx::internal::firstEdgeOnSide(*this, direction, high != 0, nullptr);
}
