// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>

namespace qxdraw {

/// What a document may ask for; anything beyond is refused with an error that names the limit.
struct ImportLimits {
    static constexpr std::size_t FileBytes = std::size_t{256} * 1024 * 1024;
    /// Subgraphs, lists or graphs inside each other.
    static constexpr int NestingDepth = 500;
    /// Fields of a label inside each other; one that goes deeper is shown as plain text.
    static constexpr int FieldDepth = 50;
    static constexpr std::size_t Objects = 5'000'000;  ///< nodes and edges together
    static constexpr double Coordinate = 500e6;        ///< world units from the origin
    static constexpr double Extent = 100e6;            ///< width and height, world units
};

}  // namespace qxdraw
