// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/util/QxObjectFlags.h"

/// State bits in the flag word of graph objects. A bit may mean different things on different
/// kinds of objects; every kind lists its own here or in its layer's flag header.
namespace qx::flags {

// Every graph object.
inline constexpr std::uint32_t Processing = 0x2;            ///< mark of a running algorithm
inline constexpr std::uint32_t InQuadTree = 0x4;            ///< registered in a spatial index
inline constexpr std::uint32_t TemporarilyInvisible = 0x8;  ///< left out while being rearranged

inline constexpr std::uint32_t Discarding = 0x08000000;  ///< about to go, once it is removed

// Nodes and edges.
inline constexpr std::uint32_t PathObject = 0x20;  ///< belongs to the path of an edge

// Edges.
inline constexpr std::uint32_t EdgeConnected = 0x10;
inline constexpr std::uint32_t EdgeDeactivated = 0x100;
inline constexpr std::uint32_t EdgeBeingInserted = 0x04000000;  ///< listed, not connected yet

// Graphs.
inline constexpr std::uint32_t GraphFileRead = 0x80;     ///< a file is being read into it
inline constexpr std::uint32_t GraphIntergraph = 0x100;  ///< holds the edges between graphs
inline constexpr std::uint32_t GraphHide = 0x400;        ///< holds hidden objects

// Kinds of owners, so that climbing from owner to owner needs no virtual calls.
inline constexpr std::uint32_t IsGraph = 0x20000000;
inline constexpr std::uint32_t IsFactory = 0x40000000;

}  // namespace qx::flags
