// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "model/Drawing.h"
#include "model/SpringLayout.h"

namespace qxdraw {

struct NestedLayoutOptions {
    bool spring = true;     ///< else nodes stay where the document has them
    double edgeLength = 0;  ///< 0: in each graph one that suits its nodes
    bool keepOverlaps = false;
    std::function<void(double)> onProgress;
};

/// Gives each shown node of the document a center, and each that shows a graph the size that it
/// needs for it. The drawing, which is not placed yet, tells what is shown.
///
/// The layout goes from the inside out: each graph is laid out with the nodes that show graphs as
/// large as these came out, and with edges that lead into them as springs. Then, from the outside
/// in, the drawing of each nested graph is mirrored and turned by quarter turns where that shortens
/// the edges that lead into it; what has become too large for its place by that is pushed apart.
/// Without `spring` nodes with a center keep it, and the others come to lie beside them.
void layOutNested(GraphDocument& document, const Drawing& drawing,
                  const NestedLayoutOptions& options);

}  // namespace qxdraw
