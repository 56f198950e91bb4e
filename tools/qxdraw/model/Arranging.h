// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <memory>
#include <string>

#include "model/Drawing.h"

namespace qxdraw {

/// How a document becomes a drawing.
struct ArrangingOptions {
    std::string layout;     ///< "none", "spring", or empty: as the file asks for
    double edgeLength = 0;  ///< 0: one that suits the drawing
    bool keepOverlaps = false;
};

/// Whether the spring embedder places the nodes of the document, which has not been arranged yet.
bool usesSpring(const ArrangingOptions& options, const GraphDocument& document);

/// Makes a drawing of a document, whose nodes get sizes and centers, and whose bends go when a
/// layout moves the nodes: with ports, bends and labels. `onProgress` hears from time to time what
/// part of a layout is done, from 0 to 1.
std::unique_ptr<Drawing> arrange(GraphDocument& document, const ArrangingOptions& options,
                                 std::function<void(double)> onProgress);

}  // namespace qxdraw
