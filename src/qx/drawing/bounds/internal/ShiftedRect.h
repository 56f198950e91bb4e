// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <algorithm>

#include "qx/foundation/geometry/QxRect.h"

namespace qx::internal {

/// Where an extent (0 or more) of that center begins, so that all of it lies in the coordinate
/// range.
constexpr std::int32_t shiftedStart(std::int32_t center, std::int32_t extent) noexcept {
    const std::int64_t start = std::int64_t{center} - lowerHalf(extent);
    return clampToInt32(std::min(start, std::int64_t{MaxInt32} - extent));
}

/// The rectangle of this size (no side below 0) with that center. One that would reach beyond the
/// coordinate range is shifted back inside it, so that it keeps its size.
inline QxRect shiftedRect(const QxPoint& center, const QxSize& size) noexcept {
    const std::int32_t left = shiftedStart(center.x(), size.width());
    const std::int32_t bottom = shiftedStart(center.y(), size.height());
    return {left, bottom, left + size.width(), bottom + size.height()};
}

}  // namespace qx::internal
