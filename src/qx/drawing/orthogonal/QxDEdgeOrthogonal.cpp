// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/foundation/graph/internal/EachObject.h"

int QxDGraph::orthogonalRouting(int value) {
    if (value == 0 && fileReadRunning() == 0) {
        for (QxDEdge* edge : qx::internal::each<QxDEdge>(*pEdgeList())) {
            edge->internalOrthogonalRouting(0);
        }
    }
    setFlag(qx::flags::GraphOrthogonal, value);
    return value;
}
