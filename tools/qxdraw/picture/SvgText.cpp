// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "picture/SvgText.h"

#include <charconv>

namespace qxdraw {

std::string escapeXml(std::string_view text) {
    std::string result;
    result.reserve(text.size() + text.size() / 16);
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        if (c == '&') {
            result += "&amp;";
        } else if (c == '<') {
            result += "&lt;";
        } else if (c == '>') {
            result += "&gt;";
        } else if (c == '"') {
            result += "&quot;";
        } else if (text.substr(at).starts_with("\xEF\xBF\xBE") ||  // U+FFFE and U+FFFF
                   text.substr(at).starts_with("\xEF\xBF\xBF")) {
            at += 2;
        } else if (static_cast<unsigned char>(c) >= 0x20 || c == '\n' || c == '\t') {
            result += c;
        }
    }
    return result;
}

std::string svgNumber(double value) {
    char buffer[64];
    const auto end =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, 2).ptr;
    std::string text(buffer, end);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.')) {
        text.pop_back();
    }
    return text == "-0" ? "0" : text;
}

}  // namespace qxdraw
