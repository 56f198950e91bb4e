// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/util/QxApi.h"

class QxConnector;
class QxDEdge;
class QxDGraph;
class QxDNode;
class QxPEdge;
class QxLabel;
class QxLabelManager;
class QxPNode;

namespace qx::internal {

/// What objects cover, told to their graphs here and nowhere else: every raw step that changes what
/// an object covers, or whether it counts, ends in changed(). The spatial index of the graph hears
/// of it through here, too.
///
/// A graph keeps the extents of its nodes, of their specified connectors and of the bends of its
/// connected edges; straight edges lie within the rectangles of their nodes and these connectors.
/// Of an edge with a calculated connector, which may lie anywhere, it keeps the ends. The graph of
/// the edges between graphs, which has no nodes, keeps those of its visible edges: the ends, and
/// the bends one by one.
///
/// Labels have extents of their own while their owners count, so that a change of one costs nothing
/// for the others. Those of edges follow the drawn part of the edge, which is computed when
/// somebody asks: a change only lists the edge as outdated, and whoever reads the extents brings
/// the listed ones up to date first: all labels, or the only one that has changed. Labels of graphs
/// do not count.
class Coverage {
public:
    static void changed(QxDNode& node);
    static void changed(QxConnector& connector);
    static void changed(QxPNode& bend);
    static void changed(QxPEdge& segment);
    /// The ends of an edge.
    static void changed(QxDEdge& edge);
    /// An edge that has come to count, or has ceased to: its ends and its bends.
    static void countChanged(QxDEdge& edge);
    /// The edges between graphs at a node that has come to a graph or left one.
    static void ownerChanged(QxDNode& node);
    /// All edges of the graph of the edges between graphs.
    static void allChanged(QxDGraph& between);
    /// A label covers something else.
    static void changed(QxLabel& label);
    /// All labels of the owner may have moved.
    static void labelsChanged(QxDEdge& edge);
    static void labelsChanged(QxDGraph& graph);
    /// Labels of the graph itself have come, gone, or moved: its margins have to hold them.
    static void ownLabelsChanged(QxDGraph& graph);
    /// Brings the extents of the labels of edges up to date.
    static void refreshLabels(const QxDGraph& graph);
    /// The object leaves its graph.
    static void ended(QxDNode& node);
    static void ended(QxConnector& connector);
    static void ended(QxPNode& bend);
    static void ended(QxPEdge& segment);
    static void ended(QxDEdge& edge);
    /// The segment that a straight edge stood for has been made, or is no more.
    static void segmentMade(QxDEdge& edge, QxPEdge& segment);
    static void impliedSegmentEnds(QxDEdge& edge);
    /// The label leaves its owner.
    static void ended(QxLabel& label);

    /// Whether the graph's extents hold what the edge covers beyond the rectangles of its nodes.
    static bool counts(const QxDEdge& edge);

private:
    static void placeEnds(QxDEdge& edge);
    static void endsEnded(QxDEdge& edge);
    template <class Owner, class Act>
    static void eachLabelOf(const Owner& owner, const Act& act);
    static void place(QxDGraph& graph, QxLabel& label);
    /// Of one label of the edge, or (null) of all of them.
    static void outdateLabels(QxDEdge& edge, QxLabel* one);
    static void labelsEnded(QxDEdge& edge);
    static void forgetOutdated(const QxDEdge& edge, QxLabelManager& labels);
};

}  // namespace qx::internal
