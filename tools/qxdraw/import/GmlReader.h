// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string_view>

#include "import/GraphDocument.h"

namespace qxdraw {

/// Reads the first `graph` of a GML text: ids, labels, centers, sizes, shapes and polylines.
/// Keys it does not know are passed over. GML counts y downward. Throws ImportError.
GraphDocument readGml(std::string_view text);

}  // namespace qxdraw
