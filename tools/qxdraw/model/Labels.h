// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "model/Drawing.h"

namespace qxdraw {

/// Gives the drawing the labels of its document: names and fields within nodes, texts beside nodes
/// and ports, texts along edges. They stand where the model places them; names of nodes that others
/// lie in stand at the top.
void addLabels(Drawing& drawing, const GraphDocument& document);

}  // namespace qxdraw
