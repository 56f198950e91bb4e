// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace qxdraw {

/// Reads a whole file. Throws ImportError when it cannot be read or is larger than
/// ImportLimits::FileBytes.
std::string readSourceFile(const std::string& path);

/// Line of the byte at `offset`, counted from 1.
int lineOfOffset(std::string_view text, std::size_t offset);

/// Offset of the first byte that is not well-formed UTF-8 (overlong forms and surrogates
/// included), or std::string_view::npos.
std::size_t findInvalidUtf8(std::string_view text);

/// Throws ImportError with the line of the first byte that is not UTF-8, or is NUL.
void requireUtf8Text(std::string_view text);

std::string latin1ToUtf8(std::string_view text);

/// Appends a character in UTF-8; what is no Unicode scalar value becomes U+FFFD.
void appendUtf8(std::string& text, std::uint32_t character);

std::string_view withoutByteOrderMark(std::string_view text);

std::string toLowerAscii(std::string_view text);

}  // namespace qxdraw
