// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>

namespace qxdraw {

/// Writes a file that appears whole or not at all: it is written beside `path`, flushed to the
/// disk and renamed. A device or pipe is written directly. Throws PictureError, and then leaves
/// what stood at `path` before.
void writeOutputFile(const std::string& path, std::string_view bytes);

}  // namespace qxdraw
