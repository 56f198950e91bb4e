// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <set>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "qx/drawing/QxDEdge.h"
#include "qx/nesting/internal/MetaEnds.h"

class QxDGraph;
class QxDGraphManager;

namespace qx::internal {

struct MetaEdgeState;

/// Keeps the meta-edges of a manager current while its switch is on.
///
/// It knows, for every edge between graphs that cannot be drawn, what a meta-edge in its place has
/// to join, and for every meta-edge what it joins, both gathered by these ends. Raw steps of the
/// drawing only note what has changed; when the outermost change is over, the noted edges are
/// looked at anew, and what they have or had to do with is brought to balance. So a change costs
/// what it has touched, with a logarithm for the order, and comes to the result of a full check.
///
/// Meta-edges that a client has inserted in the very change, and that nothing needs, stay until the
/// next one: the client may hold a pointer to them. What listeners undo is not tried again before
/// something else changes.
class MetaEdgeUpkeep {
public:
    explicit MetaEdgeUpkeep(QxDGraphManager& manager) : m_manager(manager) {}
    MetaEdgeUpkeep(const MetaEdgeUpkeep&) = delete;
    MetaEdgeUpkeep& operator=(const MetaEdgeUpkeep&) = delete;

    /// @name What the drawing tells; a flag test while the switch is off
    /// @{

    /// The state, the ends, the connectors or the owner of the edge, or of an end, have changed.
    static void changed(QxDEdge& edge) {
        if (isLookedAfter(edge)) {
            markChanged(edge);
        }
    }
    /// The edge is about to leave its graph, or to cease to be a meta-edge.
    static void leaves(QxDEdge& edge) {
        if (isLookedAfter(edge)) {
            markGone(edge);
        }
    }
    /// The node or edge that holds the graph has come, gone, been expanded or collapsed. O(graphs
    /// in it and the edges between graphs at them).
    static void nestingChanged(const QxDGraph* child);
    /// A graph with all it holds has come to the manager, or is about to leave it.
    static void came(const QxDGraph& graph);
    static void leaves(const QxDGraph& graph);
    /// So much that the next time everything is looked at.
    static void everythingChanged(QxDGraphManager& manager);
    /// Nobody holds the bounds of the edges between graphs any more.
    static void changeEnded(const QxDGraph& between);
    /// @}

    static void switchOn(QxDGraphManager& manager);
    static void switchOff(QxDGraphManager& manager);

private:
    friend class MetaEdgeHold;

    /// What is known of an edge: a meta-edge that is there, or an edge that needs one.
    struct Entry {
        MetaEnds ends;
        std::uint64_t stamp;  ///< its place among the edges between graphs
        std::size_t place;    ///< of a meta-edge: in its group
        bool isMeta;
        bool isNew;  ///< not there when the last balance was made
    };
    /// The edges that need a meta-edge between the same ends, and the meta-edges there.
    struct Group {
        std::set<std::uint64_t> needing;
        std::vector<QxDEdge*> existing;
        bool isOpen = false;  ///< to be balanced
    };
    struct Addition {
        std::uint64_t stamp;  ///< of the edge that it is for
        HeldMetaEnds ends;
    };
    struct Plan {
        std::vector<Addition> additions;
        std::vector<Ref<QxDEdge>> removals;
    };
    using EndsSet = std::unordered_set<MetaEnds, MetaEnds::Hash>;

    static bool isLookedAfter(const QxDEdge& edge) {
        return edge.isMetaEdge() != 0 || edge.intergraphEdge() != 0;
    }
    static void markChanged(QxDEdge& edge);
    static void markGone(QxDEdge& edge);
    static MetaEdgeState& stateOf(QxDGraphManager& manager);
    static MetaEdgeUpkeep* of(const QxDGraphManager* manager);
    static MetaEdgeUpkeep* of(const QxDGraph* graph);
    static void settle(QxDGraphManager& manager, bool dropsArrivals);

    bool isOn() const;
    bool hasWork() const { return m_isStale || !m_changed.empty() || !m_open.empty(); }
    void note(QxDEdge& edge);
    void noteCrossing(const QxDGraph& child);
    void forgetAll();
    void forget(const QxDEdge& edge);
    void look();
    void lookAt(QxDEdge& edge, NeededMetaEnds& needed);
    void enter(QxDEdge& edge, const MetaEnds& ends, bool isMeta, bool isNew);
    Group& open(const MetaEnds& ends);
    Plan plan(bool dropsArrivals);
    void planAdditions(const MetaEnds& ends, const Group& group, std::size_t wanted, Plan& plan);
    void planRemovals(const MetaEnds& ends, Group& group, std::size_t wanted, bool dropsArrivals,
                      Plan& plan);
    void sortAsListed(std::vector<QxDEdge*>& edges);
    void perform(Plan& plan);
    void endSettling();

    QxDGraphManager& m_manager;
    bool m_isStale = true;
    bool m_isSettling = false;
    // Only ever searched: their order depends on addresses.
    std::unordered_map<const QxDEdge*, Entry> m_entries;
    std::unordered_map<MetaEnds, Group, MetaEnds::Hash> m_groups;
    std::unordered_set<const QxDEdge*> m_isChanged;
    /// In the order in which they were noted; those that are not in the set above are over.
    std::vector<QxDEdge*> m_changed;
    std::vector<MetaEnds> m_open;
    std::vector<QxDEdge*> m_arrived;
    /// What has been tried in the running balance, and what was left for the next.
    EndsSet m_added;
    EndsSet m_removed;
    std::vector<MetaEnds> m_left;
};

/// What a manager keeps of it.
struct MetaEdgeState {
    std::shared_ptr<MetaEdgeUpkeep> upkeep;
    std::int32_t holds = 0;
};

/// Postpones the upkeep to the end of an operation of many steps. Holds nest.
class [[nodiscard]] MetaEdgeHold {
public:
    enum ArrivalsEnum { DropsArrivals, KeepsArrivals };

    /// `arrivals` tells whether meta-edges that have come in the meantime, needed by nothing, go at
    /// once. Null holds nothing.
    explicit MetaEdgeHold(QxDGraphManager* manager, ArrivalsEnum arrivals = DropsArrivals);
    explicit MetaEdgeHold(const QxDGraph& graph, ArrivalsEnum arrivals = DropsArrivals);
    ~MetaEdgeHold();
    MetaEdgeHold(const MetaEdgeHold&) = delete;
    MetaEdgeHold& operator=(const MetaEdgeHold&) = delete;

private:
    Ref<QxDGraphManager> m_manager;
    ArrivalsEnum m_arrivals;
};

}  // namespace qx::internal
