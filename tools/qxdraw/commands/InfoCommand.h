// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <vector>

#include "model/View.h"

namespace qxdraw {

struct InfoOptions {
    std::string input;
    ViewOptions view;
    std::vector<std::string> explain;  ///< names of nodes, nested graphs and edges
    bool json = false;
    bool quiet = false;
};

/// Tells on stdout what a graph file holds, what is shown of it with the view options, and of what
/// is to be explained whether it is shown. Throws ImportError and NameError.
void runInfo(const InfoOptions& options);

}  // namespace qxdraw
