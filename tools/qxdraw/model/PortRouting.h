// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

#include "model/Drawing.h"

namespace qxdraw {

/// Bends that lead an edge away from the ports at its ends, `distance` in front of them, and around
/// its nodes where the straight way would run back through them. None for an edge that leaves its
/// ports well without.
std::vector<DocumentPoint> wayAroundNodes(const QxDEdge& edge, double distance);

/// Bends that lead an edge from a port of a node around the node to the other end, which is at the
/// same node; an end without a port is reached from the top, or the next side.
std::vector<DocumentPoint> loopBetweenPorts(const QxDEdge& edge, double distance);

}  // namespace qxdraw
