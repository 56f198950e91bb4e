// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

#include "qx/spatial/internal/QuadShape.h"

namespace qx::internal {

/// Up to 64 boxes, side by side; the arrays are readable up to the next multiple of 8.
struct QuadColumns {
    const std::int32_t* minX;
    const std::int32_t* minY;
    const std::int32_t* maxX;
    const std::int32_t* maxY;
    std::uint32_t count;
};

/// One bit for each box that meets `rect`, the first box in the lowest.
using QuadFilter = std::uint64_t (*)(const QuadColumns& boxes, const QuadBox& rect);

/// The fastest filter that this processor runs; `vectorUnit` false: the plain loop.
QuadFilter chooseQuadFilter(bool vectorUnit);

}  // namespace qx::internal
