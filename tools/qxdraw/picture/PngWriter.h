// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

namespace qxdraw {

/// The bytes of a PNG image of an SVG text, one pixel a world unit; pages larger than the image may
/// be are scaled down. `width` and `height` are the page's extent. Throws PictureError.
std::string writePng(const std::string& svg, double width, double height);

}  // namespace qxdraw
