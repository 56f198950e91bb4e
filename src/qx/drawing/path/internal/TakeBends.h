// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

#include "qx/foundation/geometry/QxPoint.h"

class QxDEdge;

namespace qx::internal {

/// Lets the bends of a connected edge be these, in the coordinates of its path. As many bends as
/// there were stay, and those that lie elsewhere move; otherwise the edge is rerouted. Nothing is
/// told of what stays as it is.
void takeBends(QxDEdge& edge, const std::vector<QxPoint>& points);

}  // namespace qx::internal
