// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "model/Drawing.h"

namespace qxdraw {

/// Leads edges of a drawing that shows nested graphs, straight ones and those of bundles, around
/// nodes and boxes in their way,
/// with one or two bends at the corners of one of these, where that is shorter than what it costs
/// the reader to follow a line behind them. Drawings with very many edges stay as they are: there
/// is no way around everything.
void leadAroundNodes(Drawing& drawing);

}  // namespace qxdraw
