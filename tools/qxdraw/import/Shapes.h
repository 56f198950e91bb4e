// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string_view>
#include <vector>

#include "import/GraphDocument.h"

namespace qxdraw {

/// The nearest outline to a shape name of DOT, GML or GraphML, letter case ignored; a rectangle
/// for names that are not known.
DocumentShape shapeFromName(std::string_view name);

/// A regular polygon (at least three sides) standing on a side.
DocumentShape regularPolygon(int sides);

/// A polygon from corners in any unit, stretched to fill the shape's square; a rectangle when
/// the corners span no area.
DocumentShape polygonFromCorners(std::vector<DocumentPoint> corners);

}  // namespace qxdraw
