// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>

#include "import/GraphDocument.h"

namespace qxdraw {

struct SpringLayoutOptions {
    double edgeLength = 0;
    bool keepOverlaps = false;
    /// Hears from time to time what part of the work is done, from 0 to 1; may be empty.
    std::function<void(double)> onProgress;
};

/// Gives the nodes of a document, which have centers and sizes, new centers: the spring embedder
/// lays out each connected part for itself, so that the parts do not drift apart, the parts are set
/// side by side, and overlaps are removed.
void layOut(GraphDocument& document, const SpringLayoutOptions& options);

/// Removes overlaps of nodes, which have centers and sizes.
void pushApart(GraphDocument& document);

}  // namespace qxdraw
