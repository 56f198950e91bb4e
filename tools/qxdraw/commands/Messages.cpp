// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "commands/Messages.h"

#include <iostream>

namespace qxdraw {

void tell(const std::string& file, int line, const std::string& text) {
    std::cerr << "qxdraw: " << file << ':';
    if (line > 0) {
        std::cerr << line << ':';
    }
    std::cerr << ' ' << text << '\n';
}

void tellWarnings(const std::string& file, const GraphDocument& document) {
    for (const DocumentWarning& warning : document.warnings) {
        tell(file, warning.line, "warning: " + warning.text);
    }
}

}  // namespace qxdraw
