// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <vector>

#include "qx/drawing/QxDEdge.h"
#include "qx/foundation/graph/QxEdgeConnectionEnum.h"
#include "qx/foundation/util/internal/Ref.h"

namespace qx::internal {

/// Edges between the same two nodes.
using Siblings = std::vector<QxDEdge*>;

/// The number of connected edges at the node; self-loops count twice.
std::int64_t degreeOf(const QxDNode& node);

/// Whether the other edge is connected, active, of the same graph, and joins the same two nodes as
/// this one in either direction.
bool isSibling(const QxDEdge& edge, const QxDEdge& other);

/// The siblings of the edge, itself included when it is connected, in the order of their graph's
/// list. Found at the end of lower degree: O(k log k) for k edges there.
Siblings siblingsOf(const QxDEdge& edge);

/// Parts siblings by their specified connectors at each node, in their order, and leaves out parts
/// of a single edge. Linear.
std::vector<Siblings> bundlesOf(const Siblings& edges);

/// Lays out bundles of siblings; each keeps its edges alive, and passes over those that listeners
/// have carried off meanwhile.
void layOutBundles(QxMultiEdgeModeEnum mode, const std::vector<Siblings>& bundles);

/// Lets an end of the edge lie at a point, in the coordinates of the node's graph, by a calculated
/// connector of its own with that direction; that which it has moves there.
void holdEnd(QxDEdge& edge, bool atSource, const QxPoint& at, QxDirectionEnum direction);

inline bool hasSpecifiedConnector(const QxDEdge& edge) {
    return edge.hasSpecifiedSourceConnector() != 0 || edge.hasSpecifiedTargetConnector() != 0;
}

/// Sorts edges of one list by their places there.
void sortByStamp(Siblings& edges);

}  // namespace qx::internal
