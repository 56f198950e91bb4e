// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "model/Drawing.h"
#include "qx/drawing/QxMultiEdgeModeEnum.h"

namespace qxdraw {

struct SpreadingOptions {
    QxMultiEdgeModeEnum bundles = QxMultiEdgeParallel;
    bool orthogonal = false;  ///< all edges run along the axes
};

/// The mode called "overlap", "parallel" or "bend"; the second for any other name.
QxMultiEdgeModeEnum bundleMode(const std::string& name);

/// Spreads edges that would be drawn on top of each other otherwise: the model lays out those
/// between the same two nodes, and loops, which come to stand above their nodes. Edges between the
/// same two ports fan out; those whose ports look away from the other end are led around their
/// nodes. Edges that have bends keep them.
void spreadEdges(Drawing& drawing, const SpreadingOptions& options);

/// The same for the loops of a node, and for an edge that ends at ports.
void spreadLoops(QxDNode& node);
void leadAroundPorts(QxDEdge& edge);

/// Makes the loops at nodes that show graphs anew: labels in these may have made the nodes larger.
void renewLoopsOfBoxes(Drawing& drawing);

}  // namespace qxdraw
