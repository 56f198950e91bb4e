// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "picture/Scene.h"

namespace qxdraw {

/// The SVG text of a scene: edges under nodes, bends and hidden lines over all, names in
/// a common sans font. The same scene gives
/// the same bytes.
std::string writeSvg(const Scene& scene);

}  // namespace qxdraw
