// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

class QxConnector;
class QxDEdge;
class QxDGraph;
class QxDNode;
class QxLabelManager;

namespace qx::internal {

/// Counts the labels in a graph as they and their owners come and go, so that nobody has to search
/// for them. The labels of an edge count while it is connected and active,
/// those of a connector while it is a specified one.
///
/// What the graph says it knows follows: something has come: there are some; something has gone:
/// unknown, until somebody asks.
class LabelPresence {
public:
    /// The owner has other labels, or has come to count; a node with its connectors.
    static void changed(const QxDNode& node);
    static void changed(QxDEdge& edge);
    static void changed(const QxConnector& connector);
    /// The node has other labels of its own.
    static void ownChanged(const QxDNode& node);
    /// The owner is about to leave its graph.
    static void ended(const QxDNode& node);
    static void ended(const QxDEdge& edge);
    static void ended(const QxConnector& connector);

private:
    enum class Kind { Node, Edge, Connector };
    static void settle(QxDGraph* graph, Kind kind, QxLabelManager* labels, std::int32_t count);
};

}  // namespace qx::internal
