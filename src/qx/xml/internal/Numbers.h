// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace qx::internal {

/// The number that the whole text is, white space around it aside; infinities are none.
std::optional<double> parseNumber(std::u16string_view text);
/// Whether the text is a number within the 32-bit range.
bool isPlainNumber(std::u16string_view text);
/// What is to be told of a text that is not.
std::string numberFault(std::u16string_view attribute, std::u16string_view text);

}  // namespace qx::internal
