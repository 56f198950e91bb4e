// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "model/Drawing.h"

namespace qxdraw {

/// Gives bends to edges that would be drawn on top of each other otherwise: edges between the same
/// two nodes or ports fan out, an edge from a node to itself becomes a loop above it. Edges whose
/// ports look away from the other end are led around their nodes. Edges that have bends keep them.
void spreadEdges(Drawing& drawing);

/// Makes the loops at nodes that show graphs anew: labels in these may have made the nodes larger.
void renewLoopsOfBoxes(Drawing& drawing);

}  // namespace qxdraw
