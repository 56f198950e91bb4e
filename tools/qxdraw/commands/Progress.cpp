// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "commands/Progress.h"

#include <unistd.h>

#include <iostream>

namespace qxdraw {

Progress::Progress(bool quiet)
    : m_start(std::chrono::steady_clock::now()),
      m_enabled(!quiet && ::isatty(STDERR_FILENO) != 0) {}

Progress::~Progress() {
    clear();
}

void Progress::report(std::string_view what, double part) {
    if (!m_enabled || std::chrono::steady_clock::now() - m_start < std::chrono::seconds(1)) {
        return;
    }
    const std::string text = std::string("qxdraw: ").append(what) + ' ' +
                             std::to_string(static_cast<int>(part * 100)) + '%';
    if (text != m_shown) {
        clear();
        std::cerr << text << std::flush;
        m_shown = text;
    }
}

void Progress::clear() {
    if (!m_shown.empty()) {
        std::cerr << '\r' << std::string(m_shown.size(), ' ') << '\r' << std::flush;
        m_shown.clear();
    }
}

}  // namespace qxdraw
