// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/drawing/path/internal/TakeBends.h"

#include <cstddef>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxPNode.h"
#include "qx/drawing/bounds/internal/Change.h"

namespace qx::internal {

Snapshot<QxPNode> heldBends(const QxDEdge& edge) {
    QxPNodeDList list;
    edge.buildPathNodeList(list);
    return Snapshot<QxPNode>(&list);
}

void takeBends(QxDEdge& edge, const std::vector<QxPoint>& points) {
    const Snapshot<QxPNode> bends = heldBends(edge);
    if (bends.size() != points.size()) {
        QxPointDList route;
        for (const QxPoint& point : points) {
            route.appendPoint(point);
        }
        edge.reroute(route, 1);
        return;
    }
    Change::run(edge, [&] {
        for (std::size_t i = 0; i < bends.size(); ++i) {
            if (bends[i]->pOwnerEdge() == &edge && bends[i]->iCenter() != points[i]) {
                bends[i]->ntMoveTo(points[i]);
            }
        }
    });
}

}  // namespace qx::internal
