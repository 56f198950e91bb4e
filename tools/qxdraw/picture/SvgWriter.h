// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "picture/Scene.h"

namespace qxdraw {

/// The SVG text of a scene: edges under nodes, then ports and labels, bends and hidden lines over
/// all, texts in a common sans font. The same scene gives the same bytes.
std::string writeSvg(const Scene& scene);

}  // namespace qxdraw
