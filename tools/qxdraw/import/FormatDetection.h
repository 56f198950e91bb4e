// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string_view>

namespace qxdraw {

enum class DocumentFormat { Unknown, Empty, Dot, GraphML, Gml };

/// Tells a text's format by its first words; where they leave it open, by the ending of `path`.
DocumentFormat detectFormat(std::string_view text, std::string_view path);

}  // namespace qxdraw
