// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <algorithm>
#include <cmath>
#include <string>

namespace qxdraw {

/// Pixels of an image, and how many stand for a world unit: at most one.
struct PictureSize {
    int columns;
    int rows;
    double scale;
};

/// The image of a page of that extent; one longer than 8000 pixels is scaled down.
inline PictureSize pngSize(double width, double height) {
    constexpr double LongestSide = 8000;
    const double scale = std::min(1.0, LongestSide / std::max(width, height));
    return {std::max(1, static_cast<int>(std::ceil(width * scale))),
            std::max(1, static_cast<int>(std::ceil(height * scale))), scale};
}

/// The bytes of a PNG image of an SVG text, of the size that pngSize tells. `width` and `height`
/// are the page's extent. Throws PictureError.
std::string writePng(const std::string& svg, double width, double height);

}  // namespace qxdraw
