// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <utility>
#include <vector>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxPNode.h"
#include "qx/foundation/graph/QxGraphChangeEventTypeEnum.h"
#include "qx/foundation/util/internal/Ref.h"

namespace qx::internal {

/// The graph that an edge belongs in: the one place where hiding, folding, and what undoes them,
/// decide it.
///
/// An edge that is not hidden belongs in the graph of both its ends, or, when they lie in different
/// graphs or one of them is hidden, in the graph of the edges between graphs. A hidden edge belongs
/// in the hide graph that holds one of its ends, that of the source first, or else in the one of
/// its source's graph.
class EdgeHome {
public:
    /// Ends outside the manager's graphs do not count.
    EdgeHome(const QxDGraphManager* manager, const QxDNode* source, const QxDNode* target,
             bool isHidden);
    /// Of an edge that stays hidden, or not.
    explicit EdgeHome(const QxDEdge& edge);

    /// Null when it has not been made yet, and when there is none, for want of an end.
    QxDGraph* pQueryGraph() const;
    /// Makes the graph when it is missing.
    QxDGraph* pGraph() const;

    /// Moves the edge to where it belongs; true when it moved. It stays as hidden as it was, and is
    /// reported to nobody as hidden or folded. A hide graph that it leaves empty goes.
    static bool bring(QxDEdge& edge);
    /// The same for all edges at the nodes. O(edges at the nodes).
    static void bringEdgesAt(const Snapshot<QxDNode>& nodes);

private:
    enum Which { Itself, ItsHideGraph, Between };

    QxDGraph* m_at = nullptr;
    Which m_which = Itself;
};

/// An edge on its way from one graph to another, with its ends, and what it is kept alive: whether
/// it is, or will be once it shows, connected, disconnected or deactivated stays as it was.
class MovingEdge {
public:
    explicit MovingEdge(QxDEdge& edge);

    QxDEdge& edge() const { return *m_edge; }
    /// Takes the edge out of its graph; false when it is not there any more or has lost an end.
    bool take();
    /// Inserts it where it belongs; false when a listener has inserted it meanwhile. Where an end
    /// has left its graph, the edge comes back to where it was.
    bool put(bool isHidden);
    /// Whether it could only be brought back, for want of an end.
    bool isStranded() const { return m_isStranded; }

    /// Takes an edge whose graph has become a hide graph into the state of hidden edges.
    static void settleAsHidden(QxDEdge& edge);
    /// Both hidden: the one will come back as the other will.
    static void copyReturn(const QxDEdge& source, QxDEdge& copy);

private:
    static void noteReturn(QxDEdge& edge, QxEdgeStateEnum state);
    const QxDGraphManager* pManager() const;
    void noteBends();
    bool insertInto(QxDGraph& graph);
    void restoreBends(const QxDGraph& graph) const;

    Ref<QxDEdge> m_edge;
    Ref<QxDNode> m_source;
    Ref<QxDNode> m_target;
    Ref<QxDGraph> m_from;
    QxEdgeStateEnum m_state;
    bool m_isStranded = false;
    std::vector<std::pair<Ref<QxPNode>, QxPoint>> m_bends;
};

/// Moves a node to another graph; true when it lies there afterwards. A node that is refused there
/// comes back.
bool moveNode(QxDNode& node, QxDGraph& from, QxDGraph& to);

}  // namespace qx::internal
