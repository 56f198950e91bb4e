// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cmath>
#include <cstdint>
#include <limits>

/// The rounding and overflow rules of all coordinate arithmetic: 32-bit coordinates, 64-bit or
/// double intermediates, results clamped to the range of their type. Nothing here is undefined
/// for any argument.
namespace qx {

inline constexpr std::int32_t MaxInt32 = std::numeric_limits<std::int32_t>::max();
inline constexpr std::int32_t MinInt32 = std::numeric_limits<std::int32_t>::min();

constexpr std::int32_t clampToInt32(std::int64_t value) noexcept {
    if (value > MaxInt32) {
        return MaxInt32;
    }
    return value < MinInt32 ? MinInt32 : static_cast<std::int32_t>(value);
}

constexpr std::int16_t clampToInt16(std::int64_t value) noexcept {
    if (value > std::numeric_limits<std::int16_t>::max()) {
        return std::numeric_limits<std::int16_t>::max();
    }
    return value < std::numeric_limits<std::int16_t>::min()
               ? std::numeric_limits<std::int16_t>::min()
               : static_cast<std::int16_t>(value);
}

/// a + b and a - b, clamped.
constexpr std::int32_t saturatingAdd(std::int32_t a, std::int32_t b) noexcept {
    return clampToInt32(std::int64_t{a} + b);
}
constexpr std::int32_t saturatingSub(std::int32_t a, std::int32_t b) noexcept {
    return clampToInt32(std::int64_t{a} - b);
}

/// Cuts the fraction off (toward zero), clamps, and turns NaN into 0.
constexpr std::int32_t truncToInt32(double value) noexcept {
    if (value >= 2147483647.0) {
        return MaxInt32;
    }
    if (value > -2147483648.0) {
        return static_cast<std::int32_t>(value);
    }
    return value <= -2147483648.0 ? MinInt32 : 0;
}

/// The same into 16 bits.
constexpr std::int16_t truncToInt16(double value) noexcept {
    return clampToInt16(truncToInt32(value));
}

/// floor(value + 0.5), clamped; NaN becomes 0.
inline std::int32_t floorHalfUp(double value) noexcept {
    return truncToInt32(std::floor(value + 0.5));
}

/// The part of an extent that lies left of (below) an object's center: half of it, truncated.
template <class Int>
constexpr Int lowerHalf(Int extent) noexcept {
    return extent / 2;
}
/// The part right of (above) the center: the other half, the odd unit included.
template <class Int>
constexpr Int upperHalf(Int extent) noexcept {
    return extent / 2 + extent % 2;
}

/// A spacing of `constant` units and `proportional` thousandths of `extent`: their exact sum,
/// truncated.
constexpr std::int32_t spacingOf(std::int32_t constant, std::int16_t proportional,
                                 std::int32_t extent) noexcept {
    return clampToInt32((constant * std::int64_t{1000} + std::int64_t{proportional} * extent) /
                        1000);
}

/// The length of the vector (x, y), truncated to an integer. Exact for coordinates and for their
/// differences, of up to 33 bits.
inline std::int64_t lengthOf(std::int64_t x, std::int64_t y) noexcept {
    using Square = unsigned __int128;
    const Square square = static_cast<Square>(static_cast<__int128>(x) * x) +
                          static_cast<Square>(static_cast<__int128>(y) * y);
    const auto floatX = static_cast<double>(x);
    const auto floatY = static_cast<double>(y);
    // The square has up to 67 bits, a double 53: the root may be one off.
    auto root = static_cast<std::uint64_t>(
        static_cast<std::int64_t>(std::sqrt(floatX * floatX + floatY * floatY)));
    while (static_cast<Square>(root) * root > square) {
        --root;
    }
    while (static_cast<Square>(root + 1) * (root + 1) <= square) {
        ++root;
    }
    return static_cast<std::int64_t>(root);
}

}  // namespace qx
