// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <chrono>
#include <string>
#include <string_view>

namespace qxdraw {

/// Tells on the terminal how far a long work is. Nothing appears in the first second, nor where
/// the messages do not go to a terminal.
class Progress {
public:
    explicit Progress(bool quiet);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// `part` of the work called `what` is done, from 0 to 1.
    void report(std::string_view what, double part);
    /// Takes the message off the terminal.
    void clear();

private:
    std::chrono::steady_clock::time_point m_start;
    std::string m_shown;
    bool m_enabled;
};

}  // namespace qxdraw
