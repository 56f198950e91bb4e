// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

/// What happened to an object of the drawing: one bit each, so that a mask names several.
enum QxDrawingChangeEventTypeEnum : std::int32_t {
    AnchorGraphChanged = 0x1,          ///< manager: old and new object are the anchor graphs
    LabelInserted = 0x2,               ///< label: new object is its owner
    BendAdded = 0x4,                   ///< path node: new object is the edge
    ConnectorInserted = 0x8,           ///< connector: new object is the node
    LabelRemoved = 0x10,               ///< label: old object is its former owner
    PathNodeRemoved = 0x20,            ///< path node: old object is the edge
    ConnectorRemoved = 0x40,           ///< connector: old object is the node
    LabelDiscarded = 0x80,             ///< as LabelRemoved, and the label goes
    PathNodeDiscarded = 0x100,         ///< as PathNodeRemoved, and the path node goes
    ConnectorDiscarded = 0x200,        ///< as ConnectorRemoved, and the connector goes
    ConnectorNameChanged = 0x400,      ///< old and new name
    LabelTextChanged = 0x800,          ///< old and new name
    NodeMoved = 0x1000,                ///< old and new bounds
    LabelOffsetChanged = 0x2000,       ///< old and new bounds
    PathNodeMoved = 0x4000,            ///< old and new bounds
    ConnectorMoved = 0x8000,           ///< old and new bounds
    NodeResized = 0x20000,             ///< old and new bounds
    LabelResized = 0x40000,            ///< old and new bounds
    ConnectorResized = 0x80000,        ///< old and new bounds
    NodeShapeChanged = 0x100000,       ///< new shape
    ConnectorShapeChanged = 0x200000,  ///< new shape
    EdgeConnectorChanged = 0x400000,   ///< edge: old and new object are the connectors of one end
    MarginsChanged = 0x800000,         ///< graph
    GraphBoundsChanged = 0x1000000     ///< graph: old and new bounds
};
