// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>

namespace qxdraw {

/// The names that the escapes of a DOT label stand for.
struct DotLabelNames {
    std::string_view graph;   ///< \G
    std::string_view object;  ///< \N of a node, \E of an edge
    std::string_view tail;    ///< \T
    std::string_view head;    ///< \H
};

/// The text a label shows: escapes and character entities replaced, lines separated by '\n'.
std::string plainDotLabel(std::string_view label, const DotLabelNames& names);

/// The fields of a record label, separated by " | ", without ports and nesting; escapes stay.
std::string flattenRecordLabel(std::string_view label);

}  // namespace qxdraw
