// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>

namespace qxdraw {

/// Writes a file that appears whole or not at all: it is written beside `path`, flushed to the
/// disk and renamed, while signals that would end the program wait. Of a file that is replaced the
/// permissions stay; one that may not be written, or has a second name (a hard link), is left
/// alone. A device or pipe is written directly. Throws PictureError, and then leaves what stood at
/// `path` before.
void writeOutputFile(const std::string& path, std::string_view bytes);

/// Whether both names, perhaps through links, lead to one file on disk.
bool isSameFile(const std::string& path, const std::string& other);

}  // namespace qxdraw
