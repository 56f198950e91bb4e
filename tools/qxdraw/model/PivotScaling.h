// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

#include "import/GraphDocument.h"

namespace qxdraw {

/// Neighbours of each node, by index.
using Adjacency = std::vector<std::vector<int>>;

/// Places the nodes of a connected graph in the plane so that distances follow the number of
/// edges between nodes; one unit an edge. Nodes with the same neighbours may get the same place.
/// O(nodes + edges) with a large constant.
std::vector<DocumentPoint> scaleByPivots(const Adjacency& adjacency);

}  // namespace qxdraw
