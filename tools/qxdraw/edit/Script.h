// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <istream>
#include <stdexcept>
#include <string>
#include <vector>

namespace qxdraw {

/// What is wrong with a line of a script.
class ScriptError : public std::runtime_error {
public:
    explicit ScriptError(const std::string& reason, int line = 0)
        : std::runtime_error(reason), m_line(line) {}

    /// Counted from 1; 0 when not known yet.
    int line() const { return m_line; }

private:
    int m_line;
};

/// A command of a script, in words.
struct ScriptLine {
    int number = 0;
    std::string text;
    std::vector<std::string> words;
};

/// Reads lines of words, separated by blanks. A word in double quotes may hold blanks; in it \" and
/// \\ stand for " and \, \n for a new line. Lines without words and those that start with # are
/// passed over. Throws ScriptError.
std::vector<ScriptLine> readScript(std::istream& in);

}  // namespace qxdraw
