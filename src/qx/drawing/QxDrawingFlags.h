// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxGraphObjectStatusEnum.h"
#include "qx/foundation/graph/QxGraphFlags.h"

/// State bits of drawing objects, beside those of the graph layer.
namespace qx::flags {

// Drawing nodes and edges: their QxGraphObjectStatusEnum.
inline constexpr std::uint32_t Status = 0xE00000;
inline constexpr unsigned StatusShift = 21;
constexpr std::uint32_t statusBits(QxGraphObjectStatusEnum status) {
    return (static_cast<std::uint32_t>(status) << StatusShift) & Status;
}
constexpr QxGraphObjectStatusEnum status(std::uint32_t flags) {
    return static_cast<QxGraphObjectStatusEnum>((flags & Status) >> StatusShift);
}

// Drawing nodes.
inline constexpr std::uint32_t NodeForceClipping = 0x40;
inline constexpr std::uint32_t NodeFolder = 0x80;
inline constexpr std::uint32_t NodeCollected = 0x100;  ///< while nodes are collected; bends, too

// Path nodes (bends).
inline constexpr std::uint32_t BendVisible = 0x40;     ///< in the visible part of its edge
inline constexpr std::uint32_t BendNewVisible = 0x80;  ///< in the visible part being computed

// Path edges (segments).
inline constexpr std::uint32_t SegmentVisible = 0x800;
inline constexpr std::uint32_t SegmentNewVisible = 0x1000;

// Drawing edges.
inline constexpr std::uint32_t EdgeFromConnectorValid = 0x200;
inline constexpr std::uint32_t EdgeToConnectorValid = 0x400;
inline constexpr std::uint32_t EdgeHasVisiblePart = 0x800;
inline constexpr std::uint32_t EdgeVisiblePartUpdated = 0x1000;
inline constexpr std::uint32_t EdgePartiallyUpdated = 0x2000;
inline constexpr std::uint32_t EdgeClipSource = 0x4000;
inline constexpr std::uint32_t EdgeClipTarget = 0x8000;
inline constexpr std::uint32_t EdgeMulti = 0x10000;
inline constexpr std::uint32_t EdgeMeta = 0x20000;
inline constexpr std::uint32_t EdgeOrthogonal = 0x40000;
inline constexpr std::uint32_t EdgeIsTracked = 0x100000;   ///< extents or index hold its segments
inline constexpr std::uint32_t EdgePathImplied = 0x80000;  ///< straight, its segment not made yet
inline constexpr std::uint32_t EdgeHasLabels = 0x10000000;
inline constexpr std::uint32_t EdgeCollected = 0x01000000;  ///< while a list of edges is collected
/// What a hidden edge is when it shows again; connected with neither.
inline constexpr std::uint32_t EdgeReturnsDisconnected = 0x02000000;
inline constexpr std::uint32_t EdgeReturnsDeactivated = 0x40;

// Connectors, which are never left out while something is rearranged.
inline constexpr std::uint32_t ConnectorRescaled = 0x8;  ///< calculated, a resize scaled its offset
inline constexpr std::uint32_t ConnectorSpecified = 0x10;
inline constexpr std::uint32_t ConnectorHasDirection = 0x20;
inline constexpr std::uint32_t ConnectorDirectionLow = 0x40;
inline constexpr std::uint32_t ConnectorDirectionHigh = 0x80;
inline constexpr std::uint32_t ConnectorInDiscard = 0x100;

// Drawing graphs.
inline constexpr std::uint32_t GraphNodeLabels = 0x800;  ///< the low of two bits, for each kind
inline constexpr std::uint32_t GraphEdgeLabels = 0x2000;
inline constexpr std::uint32_t GraphConnectorLabels = 0x8000;
inline constexpr std::uint32_t GraphNeedsBounds = 0x20000;
inline constexpr std::uint32_t GraphBoundsInitialized = 0x40000;
inline constexpr std::uint32_t GraphOrthogonal = 0x80000;
inline constexpr std::uint32_t GraphResting = 0x100000;  ///< out of sight: no bounds, no index
inline constexpr std::uint32_t GraphCollected = 0x200;   ///< while a part of the nesting is walked

// Labels.
inline constexpr std::uint32_t LabelMovesWithOwner = 0x10;
inline constexpr std::uint32_t LabelPinned = 0x20;  ///< an edge's label that stays where it is
inline constexpr std::uint32_t LabelNamed = 0x40;   ///< has a text, perhaps an empty one
inline constexpr std::uint32_t LabelGoing = 0x80;   ///< on its way out: LabelRemoved is not told

// Drawing graph managers.
inline constexpr std::uint32_t ManagerReading = 0x10;
inline constexpr std::uint32_t ManagerUpdatingAffected = 0x800;
inline constexpr std::uint32_t ManagerControlStarted = 0x1000;
inline constexpr std::uint32_t ManagerCompressMetaEdges = 0x2000;
inline constexpr std::uint32_t ManagerReplaceReflexive = 0x4000;
inline constexpr std::uint32_t ManagerIgnoreConnectors = 0x8000;
inline constexpr std::uint32_t ManagerStoreClones = 0x10000;
inline constexpr std::uint32_t ManagerUpdatesMetaEdges = 0x20000;

// The bits of each kind of object, those of the layers below included: none means two things.

inline constexpr std::uint32_t EveryObject =
    OwnerValid | Processing | InQuadTree | Discarding | ReadOnly | IsGraph | IsFactory;
static_assert(areDisjoint({OwnerValid, Processing, InQuadTree, Discarding, ReadOnly, IsGraph,
                           IsFactory}));
// Graphs.
static_assert(areDisjoint({EveryObject, TemporarilyInvisible, GraphFileRead, GraphIntergraph,
                           GraphHide, 3 * GraphNodeLabels, 3 * GraphEdgeLabels,
                           3 * GraphConnectorLabels, GraphNeedsBounds, GraphBoundsInitialized,
                           GraphOrthogonal, GraphResting, GraphCollected}));
// Graph managers.
static_assert(areDisjoint({EveryObject, TemporarilyInvisible, ManagerReading,
                           ManagerUpdatingAffected, ManagerControlStarted, ManagerCompressMetaEdges,
                           ManagerReplaceReflexive, ManagerIgnoreConnectors, ManagerStoreClones,
                           ManagerUpdatesMetaEdges}));
// Drawing nodes.
static_assert(areDisjoint({EveryObject, TemporarilyInvisible, PathObject, NodeForceClipping,
                           NodeFolder, NodeCollected, Status}));
// Bends.
static_assert(areDisjoint({EveryObject, TemporarilyInvisible, PathObject, NodeCollected,
                           BendVisible, BendNewVisible}));
// Drawing edges.
static_assert(areDisjoint({EveryObject,
                           TemporarilyInvisible,
                           PathObject,
                           EdgeConnected,
                           EdgeDeactivated,
                           EdgeBeingInserted,
                           EdgeFromConnectorValid,
                           EdgeToConnectorValid,
                           EdgeHasVisiblePart,
                           EdgeVisiblePartUpdated,
                           EdgePartiallyUpdated,
                           EdgeClipSource,
                           EdgeClipTarget,
                           EdgeMulti,
                           EdgeMeta,
                           EdgeOrthogonal,
                           EdgePathImplied,
                           EdgeIsTracked,
                           EdgeHasLabels,
                           EdgeCollected,
                           EdgeReturnsDisconnected,
                           EdgeReturnsDeactivated,
                           Status}));
// Segments.
static_assert(areDisjoint({EveryObject, TemporarilyInvisible, PathObject, EdgeConnected,
                           EdgeDeactivated, EdgeBeingInserted, SegmentVisible, SegmentNewVisible}));
// Connectors.
static_assert(areDisjoint({EveryObject, ConnectorRescaled, ConnectorSpecified,
                           ConnectorHasDirection, ConnectorDirectionLow, ConnectorDirectionHigh,
                           ConnectorInDiscard}));
// Labels.
static_assert(areDisjoint({EveryObject, TemporarilyInvisible, LabelMovesWithOwner, LabelPinned,
                           LabelNamed, LabelGoing}));

}  // namespace qx::flags
