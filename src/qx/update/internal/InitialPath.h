// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxPNode.h"
#include "qx/foundation/util/internal/Ref.h"
#include "qx/update/internal/Route.h"

namespace qx::internal {

/// What a record knows of the bends behind its points.
struct InitialPath {
    struct Origin {
        Ref<QxPNode> bend;
        /// The point has been added to tell segments of one direction apart.
        bool isAdded = false;
    };
    struct Bend {
        Ref<QxPNode> bend;
        QxPoint at;
    };

    /// One for each point.
    std::vector<Origin> origins;
    /// The bends as the record has found or left them.
    std::vector<Bend> known;
};

/// The bends of the edge, from its source to its target.
std::vector<InitialPath::Bend> bendsOf(const QxDEdge& edge);

/// Makes the inner points of the route the bends of the edge, by the smallest change: the bends
/// that points come from stay, others are moved where points have none, and only what is missing is
/// added, and what is left over discarded. Stops when a listener interferes.
void layBends(QxDEdge& edge, const Route& route);

}  // namespace qx::internal
