// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "model/Arranging.h"

namespace qxdraw {

struct EditOptions {
    std::string input;
    std::string output;  ///< ends in .svg or .png
    std::string script;  ///< "-": the standard input
    ArrangingOptions arranging;
    bool showBends = false;
    bool quiet = false;
};

/// Draws a graph file, changes the drawing as a script says, and writes the picture; tells on
/// stdout what each line has changed. Throws ImportError, PictureError, and ScriptError for the
/// first bad line; no output file is left behind then.
void runEdit(const EditOptions& options);

/// The commands of scripts, a line each.
std::string scriptCommands();

}  // namespace qxdraw
