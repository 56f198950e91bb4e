// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qxdraw {

/// One `key value` of a GML file. A list's members stand in `members`, a number or string in
/// `text` (strings with their character entities replaced).
struct GmlEntry {
    enum class Kind { Number, String, List };

    std::string key;
    Kind kind = Kind::List;
    std::string text;
    std::vector<GmlEntry> members;
    int line = 0;  ///< where the value starts

    /// The first member called `name`; null when there is none, or this is no list.
    const GmlEntry* find(std::string_view name) const;
};

/// Reads a whole GML text into one list without a key. Throws ImportError with the line for
/// anything that is not GML, numbers too large for a double, lists nested deeper than
/// ImportLimits::NestingDepth, and text that is not UTF-8.
GmlEntry parseGml(std::string_view text);

}  // namespace qxdraw
