// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "import/GraphDocument.h"

namespace qxdraw {

/// The text with control characters as \x1b: names of files may hold any.
std::string printable(const std::string& text);

/// Writes `qxdraw: file:line: text` to stderr, without the line when it is 0.
void tell(const std::string& file, int line, const std::string& text);

/// Tells what a reader passed over.
void tellWarnings(const std::string& file, const GraphDocument& document);

}  // namespace qxdraw
