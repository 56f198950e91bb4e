// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/geometry/QxSpacing.h"

#include <cmath>

std::int32_t QxSpacing::calculateOuterSize(const QxSpacing& lower, const QxSpacing& upper,
                                           std::int32_t inner) noexcept {
    const double constants = static_cast<double>(lower.m_constant) + upper.m_constant;
    const double share = (lower.m_proportional + upper.m_proportional) / 1000.0;
    if (share >= 1.0) {
        return qx::clampToInt32(std::int64_t{inner} + lower.spacing(inner) + upper.spacing(inner));
    }
    // Truncation takes less than one unit off each spacing, so the answer lies between the exact
    // outer extents of inner - 2 and of inner + 2. One unit more of outer extent leaves at most
    // one unit more inside: the first extent that leaves enough leaves exactly `inner`.
    auto outer = qx::truncToInt32(std::floor((inner - 2.0 + constants) / (1.0 - share)));
    while (outer < qx::MaxInt32 &&
           std::int64_t{outer} - lower.spacing(outer) - upper.spacing(outer) < inner) {
        ++outer;
    }
    return outer;
}
