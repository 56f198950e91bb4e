// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>
#include <string>

#include "commands/Progress.h"
#include "import/GraphDocument.h"
#include "model/Arranging.h"

namespace qxdraw {

/// Reads a graph file and, unless it is to be quiet, tells what was passed over. Throws
/// ImportError.
GraphDocument openDocument(const std::string& input, bool quiet);

/// Makes the drawing of a document and tells how far that is.
std::unique_ptr<Drawing> arrange(GraphDocument& document, const ArrangingOptions& options,
                                 Progress& progress);

}  // namespace qxdraw
