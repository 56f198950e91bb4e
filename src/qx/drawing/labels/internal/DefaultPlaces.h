// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

#include "qx/foundation/geometry/QxPoint.h"

class QxConnector;
class QxConnectorLabel;
class QxDEdge;
class QxDGraph;
class QxDNode;
class QxEdgeLabel;
class QxGraphLabel;
class QxNodeLabel;

/// Where labels go that are in no list yet.
namespace qx::internal {

/// The graph whose coordinates the labels of an owner are in; null when it lies in none.
QxDGraph* graphAround(const QxDNode& owner);
QxDGraph* graphAround(const QxDEdge& owner);
QxDGraph* graphAround(const QxConnector& owner);
QxDGraph* graphAround(QxDGraph& owner);

/// Beside the `count` labels that the owner has already: around a rectangle, ring by ring; in pairs
/// on both sides of the middle of an edge; in rows above and below the bounds of a graph.
void placeByDefault(const QxDNode& owner, QxNodeLabel& label, std::int32_t count);
void placeByDefault(const QxConnector& owner, QxConnectorLabel& label, std::int32_t count);
void placeByDefault(const QxDEdge& owner, QxEdgeLabel& label, std::int32_t count);
void placeByDefault(const QxDGraph& owner, QxGraphLabel& label, std::int32_t count);

/// So that the label of an owner will be centered there, in the coordinates of the owner's graph.
void placeAt(const QxDNode& owner, QxNodeLabel& label, const QxPoint& center);
void placeAt(const QxConnector& owner, QxConnectorLabel& label, const QxPoint& center);
void placeAt(const QxDEdge& owner, QxEdgeLabel& label, const QxPoint& center);
void placeAt(const QxDGraph& owner, QxGraphLabel& label, const QxPoint& center);

}  // namespace qx::internal
