// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "model/Drawing.h"

namespace qxdraw {

/// Gives the drawing the labels of its document: names and fields within nodes, texts beside nodes
/// and ports, texts along edges. They stand where the model places them. What is not shown gets
/// none, nor do nodes that show a graph: that has a title.
void addLabels(Drawing& drawing, const GraphDocument& document);

/// Gives a node that shows no graph its name, and an edge its label, in place of what was there.
void nameNode(Drawing& drawing, std::size_t index, const GraphDocument& document);
void nameEdge(Drawing& drawing, std::size_t index, const GraphDocument& document);

/// Gives the shown graphs their titles, for which room is left when the drawing is placed.
void addTitles(Drawing& drawing, const GraphDocument& document);

}  // namespace qxdraw
