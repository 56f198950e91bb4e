// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "import/GraphDocument.h"

namespace qxdraw {

/// The cells of the table that an HTML label of DOT consists of: the text of each, in rows, with
/// the names of its PORT attributes. What the tags say about looks, and cells that span several
/// rows or columns, are passed over. Nothing for a label without a table, and for one whose tags
/// do not match.
std::optional<DocumentField> parseHtmlTable(std::string_view label);

/// The text of an HTML label without its tags.
std::string plainHtmlLabel(std::string_view label);

}  // namespace qxdraw
