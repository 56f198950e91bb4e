// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string_view>

#include "import/GraphDocument.h"

namespace qxdraw {

/// Reads the first graph of a DOT text through Graphviz's cgraph: names, labels, shapes, sizes,
/// positions and splines, clusters. The text is UTF-8 unless its `charset` says Latin-1. Throws
/// ImportError. Graphviz's parser has state of the process: not for two threads at once.
GraphDocument readDot(std::string_view text);

}  // namespace qxdraw
