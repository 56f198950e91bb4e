// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "import/GraphDocument.h"

namespace qxdraw {

/// Gives every node a size: what the document says, else room for the node's name inside its
/// outline.
void sizeNodes(GraphDocument& document);
void sizeNode(DocumentNode& node);

/// The largest rectangle around the center of the shape, of the given width, that lies inside the
/// outline: its height. All in the shape's frame, where both extents run from 0 to 1.
double innerHeight(const DocumentShape& shape, double innerWidth);

}  // namespace qxdraw
