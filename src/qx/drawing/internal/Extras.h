// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>

#include "qx/drawing/QxDrawingDLists.h"
#include "qx/foundation/geometry/QxRect.h"
#include "qx/foundation/graph/internal/GraphObjectExtras.h"

class QxGeometricUpdateInfo;

namespace qx::internal {

/// What few nodes and bends use.
struct NodeExtras : GraphObjectExtras {
    std::unique_ptr<const QxRect> rectBeforeMove;
    std::unique_ptr<const QxRect> rectBeforeMoveForSelfLoops;
    QxDNode* clone = nullptr;

    bool isIdle() const override {
        return GraphObjectExtras::isIdle() && !rectBeforeMove && !rectBeforeMoveForSelfLoops &&
               clone == nullptr;
    }
};

/// What few edges use.
struct EdgeExtras : GraphObjectExtras {
    QxDEdge* clone = nullptr;
    /// The path objects of the edge in the order in which they came, by their own cells: whatever
    /// is joined to what, the edge knows what it owns.
    QxDList parts;

    bool isIdle() const override {
        return GraphObjectExtras::isIdle() && clone == nullptr && parts.isEmpty() != 0;
    }
};

/// What graphs use during longer changes only.
struct GraphExtras : GraphObjectExtras {
    QxDGraph* clone = nullptr;
    QxGeometricUpdateInfo* updateInfo = nullptr;
    QxDEdgeDList affectedEdges;

    /// The list of affected edges is handed out.
    bool isIdle() const override { return false; }
};

}  // namespace qx::internal
