// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "import/GraphDocument.h"

namespace qxdraw {

/// One DOT point unit in world units: 72 points and 96 CSS pixels to the inch.
inline constexpr double DotPoint = 96.0 / 72.0;
inline constexpr double DotInch = 96.0;

/// The bends that follow the first spline of an edge's `pos`, close enough for the eye: the ends
/// of its pieces and points between them where it is curved. In world units, without the two
/// ends. Nothing when the text is no spline.
std::optional<std::vector<DocumentPoint>> bendsOfSpline(std::string_view pos);

}  // namespace qxdraw
