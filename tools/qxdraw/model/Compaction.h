// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "import/GraphDocument.h"

namespace qxdraw {

/// Makes the layout of a graph, whose nodes have centers and sizes, small enough for a box: of a
/// few ways to turn and to shrink it, after each of which overlaps are removed, it takes the one
/// with the smallest area, where edges that run through nodes and a long narrow shape count as
/// area, too. A large graph is tried in fewer ways.
void compact(GraphDocument& document);

}  // namespace qxdraw
