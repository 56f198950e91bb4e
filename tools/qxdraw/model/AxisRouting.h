// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "model/Drawing.h"

namespace qxdraw {

/// Lets all edges run along the axes, those between the same two nodes beside each other; or lets
/// them run as they like from now on.
void routeAlongAxes(Drawing& drawing, bool isWanted);

}  // namespace qxdraw
