// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>
#include <string>

namespace qxdraw {

struct DrawOptions {
    std::string input;
    std::string output;     ///< ends in .svg or .png
    std::string layout;     ///< "none", "spring", or empty: as the file asks for
    double edgeLength = 0;  ///< 0: one that suits the drawing
    bool keepOverlaps = false;
    bool showBends = false;
    bool quiet = false;
};

/// Draws a graph file. Throws ImportError and PictureError; no output file is left behind then.
void runDraw(const DrawOptions& options);

/// Whether a picture can be written to a file of this name.
bool isPictureName(const std::string& path);

}  // namespace qxdraw
