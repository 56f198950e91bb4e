// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxDGraph.h"
#include "qx/nesting/internal/Collection.h"

namespace qx::internal {

/// Moves nodes and edges of a graph into its hide graph, or back: first collects, then performs,
/// then tells. Nobody hears anything of the moves themselves.
class Hiding {
public:
    explicit Hiding(QxDGraph& graph) : m_graph(graph) {}

    /// Whether the graph may hide anything: an ordinary graph of a manager.
    static bool isPossible(const QxDGraph& graph);

    /// What hide, or unhide, would take.
    void collectToHide(const QxDList* nodes, const QxDList* edges);
    void collectToShow(const QxDList* nodes, const QxDList* edges, bool withIncidentEdges);
    const Collection& collected() const { return m_collected; }

    /// The whole operations, after collecting.
    void hide();
    void unhide();

    /// The moves of unhide alone; whether listeners are to be told. The bounds are the caller's.
    bool show();
    void tellShown() const;

private:
    bool conceal(QxDGraph& hideGraph);
    void tellHidden() const;
    void showEdgesOf(const QxDNode& node, Snapshot<QxDEdge>& shown) const;
    /// Brings the bounds to what the graph covers now.
    void settleBounds(bool isEmpty);

    Ref<QxDGraph> m_graph;
    Collection m_collected;
    Snapshot<QxDEdge> m_shownEdges;
};

}  // namespace qx::internal
