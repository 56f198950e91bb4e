// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>
#include <string_view>

#include "import/GraphDocument.h"

namespace qxdraw {

/// The fields of a DOT record label: `a|b` lie side by side, `{a|b}` under each other (with
/// `isStacked` the other way round), and so on inside; `<name>` makes a field a port. Escapes that
/// are not of records stay in the texts. Nothing for a label that is no record: braces that do not
/// match or stand in the middle of a field, a port that is not closed or comes second, fields
/// nested too deep.
std::optional<DocumentField> parseRecordLabel(std::string_view label, bool isStacked);

}  // namespace qxdraw
