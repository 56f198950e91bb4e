// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/Arranging.h"
#include "qx/foundation/geometry/QxRect.h"

namespace qxdraw {

struct FindOptions {
    std::string input;
    std::string region;  ///< "LEFT,BOTTOM,RIGHT,TOP"; empty: a point is asked for
    std::string at;      ///< "X,Y"
    ArrangingOptions arranging;
    bool json = false;
    bool quiet = false;
};

/// What is wrong with the text of a region or point; empty for a good one.
std::string regionFault(std::string_view text);
std::string pointFault(std::string_view text);

/// Tells on stdout which nodes, edges, labels and connectors of a graph file lie in a region or at
/// a point of its drawing, what is painted last first. The texts have no fault. Throws ImportError.
void runFind(const FindOptions& options);

}  // namespace qxdraw
