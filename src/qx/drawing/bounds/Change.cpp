// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/drawing/bounds/internal/Change.h"

#include "qx/drawing/QxDGraphManager.h"

namespace qx::internal {

QxDGraph* BetweenHold::between(const QxDGraph& graph) {
    const QxDGraphManager* manager = graph.pOwnerGraphManager();
    return manager != nullptr ? manager->pQueryIntergraph() : nullptr;
}

}  // namespace qx::internal
