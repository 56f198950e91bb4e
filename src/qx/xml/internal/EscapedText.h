// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>

namespace qx::internal {

/// What the name of the attribute beside ends with.
inline constexpr std::u16string_view EscapedSuffix = u"Escaped";

/// A text as XML can hold it. Characters that it cannot (most control characters, lone surrogates,
/// U+FFFE and U+FFFF, values beyond U+10FFFF) become U+FFFD; then there is an escaped form of the
/// whole, too, in which such a character is \hex; and a backslash \\.
class EscapedText {
public:
    explicit EscapedText(std::wstring_view text);
    const std::u16string& plain() const { return m_plain; }
    /// Empty when the plain form holds everything.
    const std::u16string& escaped() const { return m_escaped; }

private:
    std::u16string m_plain;
    std::u16string m_escaped;
};

/// The text that was escaped; what is no escape stands for itself.
std::wstring unescaped(std::u16string_view text);
std::wstring toWide(std::u16string_view text);

}  // namespace qx::internal
