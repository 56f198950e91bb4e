// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/foundation/geometry/QxPoint.h"

namespace qx::internal {

/// The bends of an edge between graphs are kept in the coordinates of the anchor graph, and written
/// in those of the innermost graph around both ends. Those of other edges, and where there is no
/// way from the one to the other, are written as they are.
class BetweenGraphs {
public:
    explicit BetweenGraphs(const QxDEdge& edge) {
        const QxDGraph* const graph = edge.pOwnerGraph();
        if (graph == nullptr || graph->isIntergraph() == 0) {
            return;
        }
        const QxDGraph* const common = edge.pNearestCommonNestedGraph();
        QxPoint origin;
        if (common != nullptr &&
            common->expandedTransformPoint(graph->pAnchorGraph(), origin) != 0) {
            m_common = common;
            m_anchor = graph->pAnchorGraph();
        }
    }

    QxPoint toCommon(QxPoint point) const {
        if (m_common != nullptr) {
            m_common->inverseExpandedTransformPoint(m_anchor, point);
        }
        return point;
    }
    QxPoint toAnchor(QxPoint point) const {
        if (m_common != nullptr) {
            m_common->expandedTransformPoint(m_anchor, point);
        }
        return point;
    }

private:
    const QxDGraph* m_common = nullptr;
    const QxDGraph* m_anchor = nullptr;
};

}  // namespace qx::internal
