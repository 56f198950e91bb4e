// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/util/QxApi.h"

class QxConnector;
class QxDEdge;
class QxDGraph;
class QxDNode;
class QxLabel;
class QxPEdge;
class QxPNode;

namespace qx::internal {

enum class IndexKind : unsigned;

/// The door through which the drawing keeps spatial indexes up to date. Without an index, or with
/// one that has not been asked for since it was discarded, each call is a test or two.
class IndexUpkeep {
public:
    /// The object covers something else, or has come to count or ceased to; nodes and connectors
    /// with their labels.
    static void changed(QxDNode& node);
    static void changed(QxConnector& connector);
    static void changed(QxLabel& label);
    static void changed(QxPNode& bend);
    static void changed(QxPEdge& segment);
    /// The segments at the ends of the edge.
    static void endsChanged(QxDEdge& edge);
    /// The edge, with all parts of its path.
    static void countChanged(QxDEdge& edge);
    /// The labels of an edge, or of a graph itself, may have moved.
    static void labelsChanged(QxDEdge& edge);
    static void labelsChanged(QxDGraph& graph);
    /// The object leaves its graph, its owner or its path.
    static void ended(QxDNode& node);
    static void ended(QxConnector& connector);
    static void ended(QxLabel& label);
    static void ended(QxPNode& bend);
    static void ended(QxPEdge& segment);
    static void ended(QxDEdge& edge);
    /// Asks the memory for what the index has of a node and the straight edges at it, which are
    /// about to go.
    static void fetchAt(const QxDNode& node);
    /// A segment takes the place of the straight edge that stood for it.
    static void segmentMade(QxDEdge& edge, QxPEdge& segment);
    /// The segment that a straight edge stood for.
    static void impliedSegmentEnded(QxDEdge& edge);

private:
    template <class Object>
    static void tell(Object& object, IndexKind kind);
    template <class Object>
    static void tellEnded(Object& object, IndexKind kind);
    template <class Owner>
    static void tellLabels(Owner& owner);
};

}  // namespace qx::internal
