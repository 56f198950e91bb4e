// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

#include "import/GraphDocument.h"

namespace qxdraw {

/// The nodes of each connected part of the graph, in document order; parts in the order of their
/// first nodes.
std::vector<std::vector<int>> connectedParts(const GraphDocument& document);

/// Gives every node without a center one, in whole world units, never the same to two nodes, the
/// same in every run. Neighbours come to lie about `edgeLength` apart and far nodes apart, so
/// that a spring embedder has little left to unfold; separate parts lie side by side. When some
/// nodes have centers already, the others come to lie right of them. Nodes need sizes.
void placeNodes(GraphDocument& document, double edgeLength);

/// Moves the given parts, each as a whole, side by side in rows, the large ones first, so that
/// the drawing is compact and somewhat wider than high. All nodes of the parts have centers.
void packParts(GraphDocument& document, const std::vector<std::vector<int>>& parts, double gap);

/// An edge length that leaves room between nodes of the document's sizes.
double comfortableEdgeLength(const GraphDocument& document);

}  // namespace qxdraw
