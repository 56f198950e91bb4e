// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "model/Arranging.h"

namespace qxdraw {

struct ConvertOptions {
    std::string input;   ///< a drawing document, when it ends in .qxd, else a graph file
    std::string output;  ///< ends in .qxd
    ArrangingOptions arranging;
    bool quiet = false;
};

/// Writes a graph file, laid out as for a picture, or a drawing document as a drawing document.
/// Throws ImportError and PictureError.
void runConvert(const ConvertOptions& options);

/// Whether a file is a drawing document, by its name.
bool isDocumentName(const std::string& path);

}  // namespace qxdraw
