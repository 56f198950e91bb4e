// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>

#include "import/GraphDocument.h"

namespace qxdraw {

/// Reads a graph file of any format qxdraw knows. Throws ImportError.
GraphDocument readDocument(const std::string& path);

/// The same for a text already in memory; `path` serves to tell the format.
GraphDocument readDocumentText(const std::string& text, std::string_view path);

}  // namespace qxdraw
