// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "import/GraphDocument.h"

namespace qxdraw {

/// Reads the first graph of a GraphML text through Xerces-C: labels, centers, sizes, ports and
/// nested graphs, from data whose keys are called label or name, x, y, width, height, and from the
/// common elements for geometry, shapes, paths and labels inside data. GraphML counts y downward;
/// x and y data of a nested node count from the center of the node around it, per-mil-x and
/// per-mil-y data of a port, in thousandths of the node's extent, from the node's. Document types
/// are refused, and no other file is ever read. Throws ImportError.
GraphDocument readGraphML(const std::string& text);

}  // namespace qxdraw
