// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <vector>

#include "qx/drawing/QxDrawingDLists.h"
#include "qx/foundation/geometry/QxPoint.h"
#include "qx/foundation/util/internal/Ref.h"

class QxConnector;
class QxDEdge;
class QxDEdgeInitialGeometry;
class QxDGraphManager;
class QxDNode;
class QxNode;

namespace qx::internal {

class Refits;

/// Lets edges follow a move of what they are attached to. Before the move the edges are added, each
/// with a record of what it looks like; after it, run() works their paths out, places their labels
/// and spreads bundles of parallel edges; at the end of its life the records go.
///
/// A move that is made while the reactions to another wait for their run, by a listener or by a
/// client that moves a selection, joins them: every edge follows once, from what it looked like at
/// first. Edges of moves that are made while they run are taken up in the same run.
class [[nodiscard]] Reactions {
public:
    enum Extent {
        Whole,
        /// The move only makes room: what does not run along the axes keeps its path, so that it is
        /// back where it was when the room is given back.
        RoomOnly
    };

    explicit Reactions(QxDGraphManager& manager, Extent extent = Whole);
    ~Reactions();
    Reactions(const Reactions&) = delete;
    Reactions& operator=(const Reactions&) = delete;

    /// Those of the drawing that the next move joins; null for none.
    static Reactions* open(const QxDGraphManager& manager);
    /// The fits that a move may have to keep waiting.
    static Refits& refitsOf(QxDGraphManager& manager);
    /// The edges that have been added, in order.
    const std::vector<Ref<QxDEdge>>& edges() const { return m_edges; }

    /// Edges that move with a node as a whole though nobody else moves their bends.
    using Carried = std::vector<Ref<QxDEdge>>;
    /// Whether more than the ends of straight edges may follow a move of the node: a quick answer
    /// for most nodes.
    static bool concern(const QxDNode& node);
    /// Adds what has to follow when the node, or the connector, moves.
    void addAround(const QxDNode& node, Carried& carried);
    /// The same of the edges between graphs that lead into an expanded node; to be called first.
    void addNested(const QxDNode& node, Carried& carried);
    void addAround(const QxConnector& connector);
    /// Adds the edge, unless it is invisible, whatever it looks like.
    void add(QxDEdge& edge);
    /// The same with a record for the drag of a part of the edge, which it takes over.
    void add(QxDEdge& edge, QxDEdgeInitialGeometry* drag);

    /// May be called again and again while the move goes on.
    void run();
    bool isRunning() const { return m_isRunning; }
    /// Puts all edges back as they were added.
    void restore();
    /// Lets all edges follow anew at the next run.
    void askAgain();

private:
    using Neighbours = std::vector<const QxNode*>;

    void addListed(const QxDNode& node, bool atSource, const Neighbours& repeated,
                   Carried& carried);
    void note(QxDEdge& edge, QxDEdgeInitialGeometry* record);
    void ask(QxDEdge& edge);
    /// The steps of a run, each for some of the waiting edges.
    void followPaths(std::size_t from, std::size_t to);
    void spreadBundles(std::size_t from, std::size_t to);
    void placeLabels(std::size_t from, std::size_t to);
    void followPath(QxDEdge& edge) const;
    void placeLabels(QxDEdge& edge, bool isBack) const;
    bool mayFollow(const QxDEdge& edge) const;
    bool isBack(const QxDEdge& edge) const;
    bool isHere(const QxDEdge& edge) const;
    void forget(QxDEdge& edge) const;

    Ref<QxDGraphManager> m_manager;
    Extent m_extent;
    Reactions* m_outer = nullptr;
    /// Those with a record, in order; and those that wait for the run.
    std::vector<Ref<QxDEdge>> m_edges;
    std::vector<Ref<QxDEdge>> m_waiting;
    std::size_t m_next = 0;
    bool m_isRunning = false;
};

}  // namespace qx::internal
