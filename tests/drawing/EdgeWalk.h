// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <vector>

#include "qx/drawing/QxDEdge.h"

namespace qxtest {

/// Compares what is drawn of a connected edge with these bends with a walk along its path in small
/// steps. Answers what is wrong, or nothing. With the flags of its parts, these become objects.
std::string visiblePartDifference(QxDEdge& edge, const std::vector<QxPoint>& bends, bool withFlags);

}  // namespace qxtest
