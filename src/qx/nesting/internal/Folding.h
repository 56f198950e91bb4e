// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>
#include <vector>

#include "qx/drawing/QxDGraph.h"
#include "qx/nesting/internal/Collection.h"
#include "qx/nesting/internal/EdgeHome.h"

namespace qx::internal {

class Hiding;

/// Moves nodes of a graph, and the edges at them, into the fold graph of a folder node. Listeners
/// hear of each object as it moves, so every step asks whether things are still as they were.
class Folding {
public:
    /// While nodes are folded or unfolded in a graph that is a fold graph itself: what it noted
    /// when its own group was folded stays true, so that this can come back as it was in any order.
    /// O(the nodes and their edges), with a logarithm; nothing in other graphs.
    class Places {
    public:
        Places(QxDGraph& graph, QxDNode& folder, const Snapshot<QxDNode>& nodes);
        ~Places();
        Places(const Places&) = delete;
        Places& operator=(const Places&) = delete;

    private:
        bool isNoted() const;
        std::uint64_t sum() const;

        Ref<QxDGraph> m_graph;
        Ref<QxDNode> m_folder;
        const Snapshot<QxDNode>& m_nodes;
        std::uint64_t m_before;
    };

    Folding(QxDGraph& graph, QxDNode& folder, QxDGraph& foldGraph, bool keepHidden);

    /// Whether the fold graph is empty and may be nested in the folder.
    bool isPossible() const;
    void collect(const QxDList* nodes);
    /// Collects nodes of the graph and the edges at them; those that are not hidden come first,
    /// their number is returned.
    static std::size_t collect(const QxDGraph& graph, const QxDList* nodes, const QxDNode* except,
                               Collection& collected);
    const Collection& collected() const { return m_collected; }
    /// True unless the folder refuses the fold graph.
    bool fold();

private:
    bool becomeFolder();
    void placeFolder();
    /// Whether both graphs are still in one drawing.
    bool isStillPossible() const;
    void moveEverything();
    void moveHiddenEdge(QxDEdge& edge) const;
    void discardStranded();

    Ref<QxDGraph> m_graph;
    Ref<QxDNode> m_folder;
    Ref<QxDGraph> m_foldGraph;
    Ref<QxDGraph> m_hideGraph;
    bool m_keepsHidden;
    Collection m_collected;
    std::size_t m_shownEdges = 0;  ///< how many of the collected edges were not hidden
    std::vector<Ref<QxDEdge>> m_stranded;
};

/// A sum over the places of the nodes and bends in a fold graph, hidden or not, in any order.
std::uint64_t sumOfPlaces(const QxDGraph& foldGraph);

/// Moves what lies in the fold graph of a folder node back into the graph of the folder.
class Unfolding {
public:
    Unfolding(QxDGraph& graph, QxDNode& folder, QxDGraph& foldGraph, bool keepHidden);
    ~Unfolding();

    void collect();
    const Collection& collected() const { return m_collected; }
    void unfold();

private:
    void collectEdgesToOutside();
    void collectContents(const QxDGraph& graph);
    bool isStillPossible() const;
    void centerOnFolder();
    void shiftEdgesBetween(std::int32_t dx, std::int32_t dy) const;
    void shift(std::int32_t dx, std::int32_t dy) const;
    void moveHidden();
    void bringEdgesHome() const;
    void tell() const;

    Ref<QxDGraph> m_graph;
    Ref<QxDNode> m_folder;
    Ref<QxDGraph> m_foldGraph;
    bool m_keepsHidden;
    Collection m_collected;
    std::size_t m_outsideEdges = 0;   ///< how many of the collected edges lead out
    Snapshot<QxDEdge> m_insideEdges;  ///< those with both ends among the collected nodes
    std::unique_ptr<Hiding> m_unhiding;
    bool m_tellsShown = false;
};

}  // namespace qx::internal
