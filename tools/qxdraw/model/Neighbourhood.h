// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

#include "import/GraphDocument.h"

namespace qxdraw {

/// Marks (1) the nodes that are reached from the start nodes over at most `depth` edges, along them
/// (`children`), against them (`parents`) or both, also from graph to graph. A node with a nested
/// graph stands for all in it, at the start as well as where an edge leads to it. What shows graphs
/// around what is reached is marked, too. Linear in the document, with the depth of the nesting.
std::vector<char> neighbourhoodOf(const GraphDocument& document, const std::vector<int>& start,
                                  int depth, bool children, bool parents);

}  // namespace qxdraw
