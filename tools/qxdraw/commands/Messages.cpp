// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "commands/Messages.h"

#include <iostream>

namespace qxdraw {

std::string printable(const std::string& text) {
    std::string result;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x20 && byte != 0x7F) {
            result += c;
            continue;
        }
        constexpr const char* Digits = "0123456789abcdef";
        result += {'\\', 'x', Digits[byte >> 4], Digits[byte & 15]};
    }
    return result;
}

void tell(const std::string& file, int line, const std::string& text) {
    std::cerr << "qxdraw: " << printable(file) << ':';
    if (line > 0) {
        std::cerr << line << ':';
    }
    std::cerr << ' ' << printable(text) << '\n';
}

void tellWarnings(const std::string& file, const GraphDocument& document) {
    for (const DocumentWarning& warning : document.warnings) {
        tell(file, warning.line, "warning: " + warning.text);
    }
}

}  // namespace qxdraw
