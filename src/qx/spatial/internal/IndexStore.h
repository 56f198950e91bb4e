// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <functional>
#include <unordered_map>
#include <utility>
#include <vector>

#include "qx/spatial/internal/DrawingOrder.h"
#include "qx/spatial/internal/IndexedObject.h"
#include "qx/spatial/internal/QuadEngine.h"

namespace qx::internal {

/// What a QxQTree keeps: the engine, and who has which slot in it.
///
/// The tree of a graph may be pending: everything in the graph is to be in it, and nothing is yet.
/// Then changes cost nothing, and the first question builds it in one pass. Objects that have moved
/// since the last question are marked by their slots and given their new places at the next one;
/// when most of the drawing has changed, the tree becomes pending again.
///
/// Objects keep their slots in the tree of their graph themselves; for any other tree a table does.
class IndexStore {
public:
    IndexStore(const QxQTree& tree, QxDGraph& graph, unsigned excluded)
        : m_tree(tree), m_graph(graph), m_excluded(excluded) {}
    IndexStore(const IndexStore&) = delete;
    IndexStore& operator=(const IndexStore&) = delete;

    /// @name Contents
    /// @{
    bool isPending() const { return m_isPending; }
    /// Whether objects have come or changed that it has not taken in, for it does not follow.
    bool isBehind() const { return m_hasMissed; }
    /// Whether it is the tree of the graph.
    bool isOwn() const;
    /// Takes in everything that lies in the graph, now or at the first question.
    void takeAll();
    void clear();
    /// Brings the tree up to date before a question.
    void settle();

    bool holds(QxGraphObject& object, IndexKind kind);
    void add(QxGraphObject& object, IndexKind kind);
    void remove(QxGraphObject& object, IndexKind kind);
    /// @}

    /// @name Upkeep of the tree of a graph
    /// @{

    /// The object covers something else, counts now, or counts no more.
    void changed(QxGraphObject& object, IndexKind kind, bool follows);
    void ended(QxGraphObject& object, IndexKind kind);
    /// The record of one object becomes that of another.
    void replace(QxGraphObject& object, QxGraphObject& by, IndexKind kind);
    /// The tree has become that of the graph: the objects take over what the table says.
    void becomeOwn();
    /// @}

    /// What a question works with: memory that questions hand on from one to the next. A question
    /// inside another gets memory of its own.
    struct Answer {
        std::vector<QuadHit> hits;
        std::vector<FoundObject> found;
        std::vector<QxObject*> objects;
    };
    Answer takeScratch() {
        Answer scratch = std::move(m_scratch);
        scratch.hits.clear();
        scratch.found.clear();
        return scratch;
    }
    void giveBack(Answer&& scratch) { m_scratch = std::move(scratch); }

    const QuadEngine& engine() const { return m_engine; }
    bool isExcluded(IndexKind kind) const { return (m_excluded & bitOf(kind)) != 0; }
    std::int32_t slotOf(QxGraphObject& object, IndexKind kind) const;
    std::size_t sizeOf() const;

    /// Calls `act` with everything in the graph that may be indexed, counting or not.
    void visitAll(const std::function<void(QxGraphObject&, IndexKind)>& act) const;

private:
    template <class Act>
    void eachObject(const Act& act) const;
    void setSlot(QxGraphObject& object, IndexKind kind, std::int32_t slot);
    void markMoved(std::int32_t slot);
    void countChange();
    void build();
    void placeMoved();
    void fetchMoved(std::size_t from) const;

    static constexpr std::size_t FetchedAtOnce = 32;

    const QxQTree& m_tree;
    QxDGraph& m_graph;
    unsigned m_excluded;
    bool m_isPending = false;
    /// Something has come while changes were not taken in.
    bool m_hasMissed = false;
    /// Objects may know a slot of theirs. A tree that was never asked about anything goes without a
    /// walk over its graph.
    bool m_hasGivenSlots = false;
    QuadEngine m_engine;
    Answer m_scratch;
    std::vector<std::uint32_t> m_moved;
    std::vector<bool> m_isMoved;
    std::size_t m_changesSinceQuestion = 0;
    std::unordered_map<const QxGraphObject*, std::int32_t> m_slots;
};

}  // namespace qx::internal
