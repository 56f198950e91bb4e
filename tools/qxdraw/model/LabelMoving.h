// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "model/Drawing.h"

namespace qxdraw {

/// Moves labels of edges and ports, and those beside nodes, off nodes and off each other, and where
/// there is a choice off edges: each to the first place near its owner that is free, or to the one
/// where least is in the way. Asks the spatial indexes of the graphs, which it makes.
void moveLabelsApart(Drawing& drawing);

}  // namespace qxdraw
