// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string_view>

#include "import/GraphDocument.h"

namespace qxdraw {

/// Reads the first `graph` of a GML text: ids, labels, centers, sizes, shapes, polylines and ports.
/// A node has ports as `port [ name label x y ]`, from -1 to 1 across its extent, and an edge names
/// them as `sourcePort` and `targetPort`, or says by `edgeAnchor` where it ends. Keys it does not
/// know are passed over. GML counts y downward. Throws ImportError.
GraphDocument readGml(std::string_view text);

}  // namespace qxdraw
