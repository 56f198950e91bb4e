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
/// for them. The labels of an edge count while it is connected and active.
///
/// What the graph says it knows follows: something has come: there are some; something has gone:
/// unknown, until somebody asks.
class LabelPresence {
public:
    /// The owner has other labels, or has come to count.
    static void changed(const QxDNode& node);
    static void changed(QxDEdge& edge);
    /// The owner is about to leave its graph.
    static void ended(const QxDNode& node);
    static void ended(const QxDEdge& edge);

private:
    enum class Kind { Node, Edge, Connector };
    static void settle(QxDGraph* graph, Kind kind, QxLabelManager* labels, std::int32_t count);
};

}  // namespace qx::internal
