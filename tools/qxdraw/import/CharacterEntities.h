// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>

namespace qxdraw {

/// Replaces `&#233;`, `&#xE9;` and the names of the XML and Latin-1 characters (`&amp;`,
/// `&eacute;`, ...) by the characters. Anything else that starts with '&' stays as it is.
std::string decodeCharacterEntities(std::string_view text);

}  // namespace qxdraw
