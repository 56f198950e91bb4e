// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "model/Arranging.h"
#include "picture/Scene.h"

namespace qxdraw {

struct DrawOptions {
    std::string input;
    std::string output;  ///< ends in .svg or .png
    ArrangingOptions arranging;
    bool showBends = false;
    bool quiet = false;
};

/// Draws a graph file. Throws ImportError and PictureError; no output file is left behind then.
void runDraw(const DrawOptions& options);

/// Throws PictureError when the output would replace the input, perhaps by another name.
void requireOtherFile(const std::string& input, const std::string& output);

/// Writes a picture, SVG or PNG by the name of the file. Throws PictureError.
void writePicture(const Scene& scene, const std::string& path);

/// Whether a picture can be written to a file of this name.
bool isPictureName(const std::string& path);

}  // namespace qxdraw
