// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>

namespace qxdraw {

/// Text for XML content or attributes: markup escaped, characters that XML has no place for
/// dropped.
std::string escapeXml(std::string_view text);

/// A number in at most two decimals, the shortest way, the same in every locale.
std::string svgNumber(double value);

}  // namespace qxdraw
