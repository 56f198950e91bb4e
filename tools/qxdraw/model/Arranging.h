// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <memory>
#include <string>

#include "model/Drawing.h"
#include "model/View.h"

namespace qxdraw {

/// How a document becomes a drawing.
struct ArrangingOptions {
    std::string layout;     ///< "none", "spring", or empty: as the file asks for
    double edgeLength = 0;  ///< 0: one that suits the drawing
    bool keepOverlaps = false;
    std::string bundles;      ///< "overlap", "parallel", "bend", or empty: parallel
    bool orthogonal = false;  ///< edges run along the axes; bends of the file go
    ViewOptions view;
};

/// Whether the spring embedder places the nodes of the document, which has not been arranged yet.
bool usesSpring(const ArrangingOptions& options, const GraphDocument& document);

/// The drawing of a document that has not been arranged, nothing of it placed yet, of which so much
/// is shown as the options ask for. What the document gets, and what is thrown: see below.
std::unique_ptr<Drawing> nestedDrawing(GraphDocument& document, const ViewOptions& view);

/// Makes a drawing of a document, whose nodes get sizes and centers, and whose bends go when a
/// layout moves the nodes: with nested graphs, ports, bends and labels, and of that what the view
/// options ask for. The document gets a node for each nested graph that stands in none, folder
/// nodes and meta-edges, so that its nodes and edges are those of the drawing. `onProgress` hears
/// from time to time what part of a layout is done, from 0 to 1. Throws NameError.
std::unique_ptr<Drawing> arrange(GraphDocument& document, const ArrangingOptions& options,
                                 std::function<void(double)> onProgress);

}  // namespace qxdraw
