// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/graph/internal/GraphObjectExtras.h"
#include "qx/nesting/internal/MetaEdgeUpkeep.h"
#include "qx/nesting/internal/Refits.h"

class QxDGraph;

namespace qx::internal {

class Reactions;

/// What a manager of a nested drawing keeps.
struct ManagerExtras : GraphObjectExtras {
    Refits refits;
    /// In whose coordinates the bends of the edges between graphs are while there is no anchor
    /// graph; null when nobody knows.
    QxDGraph* formerAnchor = nullptr;
    MetaEdgeState metaEdges;
    /// The move that is running, and waits to let the edges follow; null for none.
    Reactions* reactions = nullptr;

    bool isIdle() const override { return false; }
};

}  // namespace qx::internal
