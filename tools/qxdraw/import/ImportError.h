// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <stdexcept>
#include <string>

namespace qxdraw {

/// A document that cannot be read: the reason, and the line where there is one.
class ImportError : public std::runtime_error {
public:
    /// `line` counts from 1; 0 when the reason belongs to no line.
    explicit ImportError(const std::string& reason, int line = 0)
        : std::runtime_error(reason), m_line(line) {}

    int line() const { return m_line; }

private:
    int m_line;
};

}  // namespace qxdraw
