// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxGeometricUpdateInfo.h"
#include "qx/foundation/geometry/QxTransform.h"
#include "qx/foundation/util/internal/Ref.h"
#include "qx/nesting/internal/Refits.h"
#include "qx/update/internal/Reactions.h"

namespace qx::internal {

/// What a QxAffectedObjectInfo holds while its operation runs.
struct AffectedState {
    struct Record {
        Ref<QxDGraph> graph;
        std::unique_ptr<QxGeometricUpdateInfo> info;
    };
    struct SavedConnector {
        Ref<QxConnector> connector;
        QxPerMil perMil;
        QxSize offset;
    };
    /// What of a node the node itself does not save.
    struct SavedNode {
        Ref<QxDNode> node;
        QxSize size;
        QxSize originalSize;
        std::optional<QxTransform> nested;
        std::vector<SavedConnector> calculated;
    };
    struct Fit {
        Ref<QxDNode> node;
        QxRect before;
    };

    Ref<QxDGraphManager> manager;
    int foundControl = 0;
    std::vector<Ref<QxObject>> held;
    /// Graphs with a status while what is affected is found out.
    std::vector<QxDGraph*> marked;
    std::vector<Record> records;
    std::unique_ptr<Refits::Wait> fitsWait;
    std::unique_ptr<Reactions> reactions;
    std::vector<SavedNode> nodes;
    std::vector<Fit> fits;
};

}  // namespace qx::internal
