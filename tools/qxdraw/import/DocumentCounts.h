// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "import/GraphDocument.h"

namespace qxdraw {

struct DocumentCounts {
    int nestedGraphs = 0;
    int nestingDepth = 0;  ///< 0: flat
    int selfLoops = 0;
    /// Edges to remove so that at most one joins any two nodes, whatever their directions;
    /// self-loops are not among them.
    int extraParallelEdges = 0;
};

DocumentCounts countDocument(const GraphDocument& document);

}  // namespace qxdraw
