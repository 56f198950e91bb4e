// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <initializer_list>

/// State bits in the flag word of every object, below those that the layers above add.
namespace qx::flags {

inline constexpr std::uint32_t OwnerValid = 0x1;       ///< is in one of its owner's lists
inline constexpr std::uint32_t ReadOnly = 0x80000000;  ///< not for the automation layer to change

/// Whether no bit stands in two of the masks. Where the bits of a kind of object are complete, they
/// are listed once and asked this.
constexpr bool areDisjoint(std::initializer_list<std::uint32_t> masks) {
    std::uint32_t seen = 0;
    for (const std::uint32_t mask : masks) {
        if ((seen & mask) != 0) {
            return false;
        }
        seen |= mask;
    }
    return true;
}

}  // namespace qx::flags
