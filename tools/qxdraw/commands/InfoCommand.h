// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

namespace qxdraw {

struct InfoOptions {
    std::string input;
    bool json = false;
    bool quiet = false;
};

/// Tells on stdout what a graph file holds. Throws ImportError.
void runInfo(const InfoOptions& options);

}  // namespace qxdraw
