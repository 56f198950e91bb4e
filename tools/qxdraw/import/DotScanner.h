// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <string_view>

namespace qxdraw {

/// What a look over a DOT text tells before it is parsed.
struct DotScan {
    std::size_t graphEnd = 0;  ///< offset behind the first graph's closing brace
    int lineAfterGraph = 0;    ///< line of text behind the first graph; 0 when there is none
};

/// Checks what Graphviz's parser does not survive: braces nested deeper than
/// ImportLimits::NestingDepth, strings, comments and HTML labels that never end. Throws
/// ImportError with the line; leaves everything else to the parser.
DotScan scanDot(std::string_view text);

}  // namespace qxdraw
