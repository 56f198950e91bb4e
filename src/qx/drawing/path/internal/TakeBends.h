// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

#include "qx/drawing/QxPNode.h"
#include "qx/foundation/geometry/QxPoint.h"
#include "qx/foundation/util/internal/Ref.h"

class QxDEdge;

namespace qx::internal {

/// The bends of the edge from source to target, kept alive: listeners to their moves may take any
/// of them out, so ask each for its owner.
Snapshot<QxPNode> heldBends(const QxDEdge& edge);

/// Lets the bends of a connected edge be these, in the coordinates of its path. As many bends as
/// there were stay, and those that lie elsewhere move; otherwise the edge is rerouted. Nothing is
/// told of what stays as it is.
void takeBends(QxDEdge& edge, const std::vector<QxPoint>& points);

}  // namespace qx::internal
