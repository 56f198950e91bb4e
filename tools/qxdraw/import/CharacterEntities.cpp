// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "import/CharacterEntities.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <optional>

#include "import/SourceText.h"

namespace qxdraw {

namespace {

/// The names of U+00A0 to U+00FF, in order.
constexpr std::array<std::string_view, 96> Latin1Names = {
    "nbsp",   "iexcl",  "cent",   "pound",  "curren", "yen",    "brvbar", "sect",   "uml",
    "copy",   "ordf",   "laquo",  "not",    "shy",    "reg",    "macr",   "deg",    "plusmn",
    "sup2",   "sup3",   "acute",  "micro",  "para",   "middot", "cedil",  "sup1",   "ordm",
    "raquo",  "frac14", "frac12", "frac34", "iquest", "Agrave", "Aacute", "Acirc",  "Atilde",
    "Auml",   "Aring",  "AElig",  "Ccedil", "Egrave", "Eacute", "Ecirc",  "Euml",   "Igrave",
    "Iacute", "Icirc",  "Iuml",   "ETH",    "Ntilde", "Ograve", "Oacute", "Ocirc",  "Otilde",
    "Ouml",   "times",  "Oslash", "Ugrave", "Uacute", "Ucirc",  "Uuml",   "Yacute", "THORN",
    "szlig",  "agrave", "aacute", "acirc",  "atilde", "auml",   "aring",  "aelig",  "ccedil",
    "egrave", "eacute", "ecirc",  "euml",   "igrave", "iacute", "icirc",  "iuml",   "eth",
    "ntilde", "ograve", "oacute", "ocirc",  "otilde", "ouml",   "divide", "oslash", "ugrave",
    "uacute", "ucirc",  "uuml",   "yacute", "thorn",  "yuml"};

std::optional<std::uint32_t> numberedCharacter(std::string_view digits) {
    int base = 10;
    if (digits.starts_with('x') || digits.starts_with('X')) {
        base = 16;
        digits.remove_prefix(1);
    }
    std::uint32_t value = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value, base);
    if (digits.empty() || stop != end || error != std::errc{}) {
        return std::nullopt;
    }
    return value;
}

std::optional<std::uint32_t> namedCharacter(std::string_view name) {
    struct XmlName {
        std::string_view name;
        char character;
    };
    constexpr std::array<XmlName, 5> XmlNames = {
        {{"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}}};
    for (const XmlName& entry : XmlNames) {
        if (entry.name == name) {
            return static_cast<unsigned char>(entry.character);
        }
    }
    const auto found = std::find(Latin1Names.begin(), Latin1Names.end(), name);
    if (found == Latin1Names.end()) {
        return std::nullopt;
    }
    return 0xA0 + static_cast<std::uint32_t>(found - Latin1Names.begin());
}

}  // namespace

std::string decodeCharacterEntities(std::string_view text) {
    constexpr std::size_t LongestName = 10;
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        std::size_t length = 0;
        std::optional<std::uint32_t> character;
        if (text[at] == '&' &&
            (length = text.substr(at, LongestName).find(';')) != std::string_view::npos) {
            const std::string_view name = text.substr(at + 1, length - 1);
            character =
                name.starts_with('#') ? numberedCharacter(name.substr(1)) : namedCharacter(name);
        }
        if (character) {
            appendUtf8(result, *character);
            at += length + 1;
        } else {
            result.push_back(text[at++]);
        }
    }
    return result;
}

}  // namespace qxdraw
