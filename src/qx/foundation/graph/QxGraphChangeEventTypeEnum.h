// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

/// What happened to the topology: one bit each, so that a mask names several.
///
/// Each operation is told once, after the change, by its own type: an edge that is inserted
/// connected, or removed while it was, tells no connection or disconnection besides, and a
/// discarded object no removal. What an operation does to other objects they tell themselves,
/// before it: the edges that are disconnected because their node is removed, or discarded with it.
enum QxGraphChangeEventTypeEnum : std::int32_t {
    GraphInserted = 0x1,          ///< graph: its new manager
    NodeInserted = 0x2,           ///< node: its new graph
    EdgeInserted = 0x4,           ///< edge: its new graph, ends and state
    GraphRemoved = 0x8,           ///< graph: its former manager
    NodeRemoved = 0x10,           ///< node: its former graph
    EdgeRemoved = 0x20,           ///< edge: its former graph, ends and state
    GraphDiscarded = 0x40,        ///< as GraphRemoved, and the graph goes
    NodeDiscarded = 0x80,         ///< as NodeRemoved, and the node goes
    EdgeDiscarded = 0x100,        ///< as EdgeRemoved, and the edge goes
    EdgeConnected = 0x200,        ///< edge: from disconnected to connected
    EdgeDisconnected = 0x400,     ///< edge: from connected or deactivated to disconnected
    EdgeActivated = 0x800,        ///< edge: from deactivated to connected
    EdgeDeactivated = 0x1000,     ///< edge: from connected to deactivated
    EdgeEndsChanged = 0x2000,     ///< edge: old and new ends
    EdgeReversed = 0x4000,        ///< edge: old and new ends, exchanged
    ChildGraphChanged = 0x8000,   ///< node or edge: old and new child graph
    GraphOrderChanged = 0x10000,  ///< manager, graph or node: one of its lists, in its new order
    NameChanged = 0x20000         ///< manager, graph, node or edge: old and new name
};

/// The three states of an edge. In each it stands in a list of its own, of the graph and of each
/// end.
enum QxEdgeStateEnum : std::int32_t {
    QxEdgeIsDisconnected = 0,
    QxEdgeIsConnected = 1,
    QxEdgeIsDeactivated = 2
};

/// The lists of a node, a graph or a manager whose order can change by itself.
enum QxGraphListEnum : std::int32_t {
    QxNoList = 0,
    QxListOfInEdges = 1,
    QxListOfOutEdges = 2,
    QxListOfDisconnectedEdges = 3,  ///< of the node or graph
    QxListOfDeactivatedEdges = 4,   ///< of the node or graph
    QxListOfEnteringEdges = 5,      ///< edges between graphs, of a graph
    QxListOfLeavingEdges = 6,
    QxListOfUnconnectedEdges = 7
};
