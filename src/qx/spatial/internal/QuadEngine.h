// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <vector>

#include "qx/foundation/util/QxApi.h"
#include "qx/spatial/internal/QuadList.h"
#include "qx/spatial/internal/QuadStore.h"

namespace qx::internal {

/// One object of a bulk build.
struct QuadItem {
    QuadShape shape;
    unsigned kind;  ///< 0 to 7
    std::uint64_t payload;
};

/// One object that a query found.
struct QuadHit {
    std::uint64_t payload;
    std::uint32_t slot;
    unsigned kind;
    /// Where the record lies, until the next change.
    QuadStore::Place place;
};

/// A quadtree over boxes and segments that come, change and go, and knows nothing else about them:
/// each has a slot, which the engine gives out, a kind from 0 to 7, by which queries choose, and a
/// payload for whoever asks.
///
/// The tree. A leaf that is at least 4,096 wide and holds 129 records that are not large for it is
/// split; a record is large where its part in the square extends over half of the square or more,
/// and stays there instead of filling the quadrants. Other records go into each quadrant that they
/// overlap. Four leaves with fewer than 4 such records in all are merged, unless the merged leaf
/// would have to be split again at once. The root doubles toward what lies outside it.
///
/// Queries change nothing, not even a mark: they may be nested, one inside the visit of another.
/// Changes from inside a visit are not allowed. The order of hits depends on the calls before, and
/// on nothing else.
class QX_API QuadEngine {
public:
    static constexpr unsigned AllKinds = 0xFF;

    /// `vectorUnit` false: the plain path, with the same answers.
    explicit QuadEngine(bool vectorUnit = true);

    /// @name Changes
    /// @{

    /// Adds an object; returns its slot, which stays the same until it is removed. O(depth).
    std::uint32_t insert(const QuadShape& shape, unsigned kind, std::uint64_t payload);
    /// Gives an object a new shape. A few stores when it lies in one node and stays there; else it
    /// is taken out and put in again.
    void update(std::uint32_t slot, const QuadShape& shape);
    /// Gives an object another payload.
    void rename(std::uint32_t slot, std::uint64_t payload);
    /// Takes an object out; its slot may be given out again. O(its records).
    void remove(std::uint32_t slot);
    /// Replaces everything by these items, the i-th of which gets slot i: the tree that inserting
    /// them in this order would make, in one pass.
    void build(const std::vector<QuadItem>& items);
    void clear();
    /// @}

    /// @name Objects
    /// @{
    std::size_t objectCount() const { return m_store.slotCount(); }
    bool isEmpty() const { return m_root == None; }
    std::uint64_t payload(std::uint32_t slot) const { return anyRecord(slot).payload; }
    unsigned kind(std::uint32_t slot) const { return anyRecord(slot).bits & QuadBits::Kind; }
    QuadShape shape(std::uint32_t slot) const { return anyRecord(slot).shape(); }
    /// Ask the memory for what changes of the object touch, one before the other.
    void fetchSlot(std::uint32_t slot) const { m_store.fetchSlot(slot); }
    void fetchRecord(std::uint32_t slot) const { m_store.fetchRecord(slot); }
    QuadBox boxAt(QuadStore::Place place) const {
        return m_store.block(QuadStore::blockOf(place)).box(QuadStore::positionOf(place));
    }
    /// @}

    /// @name Queries
    /// `kinds` has bit 1 << k for each kind k that is asked for; `rect` is closed, and an object
    /// counts when they have a point in common. With minX > maxX or minY > maxY it has none.
    /// @{

    /// Calls `visit(const QuadHit&)` once for each object, until a call returns true; whether one
    /// did.
    template <class Visit>
    bool visit(const QuadBox& rect, unsigned kinds, const Visit& visit) const;
    /// Adds the hits to a vector.
    void collect(const QuadBox& rect, unsigned kinds, std::vector<QuadHit>& hits) const;
    /// Whether there is any.
    bool overlaps(const QuadBox& rect, unsigned kinds) const;
    /// Whether there is one for which `test(const QuadHit&)` holds; it may be asked about the same
    /// object more than once.
    template <class Test>
    bool overlaps(const QuadBox& rect, unsigned kinds, const Test& test) const;
    /// @}

    /// @name Diagnostics
    /// @{

    /// Whether every record lies where the rules put it and everything counted and linked is right;
    /// describes the first fault.
    bool checkInvariants(std::ostream& out) const;
    /// The tree, one line for each node: its square, its count, its objects' slots in order.
    void print(std::ostream& out) const;
    /// Bytes of memory it takes.
    std::size_t sizeOf() const;
    /// @}

private:
    friend class QuadBulkBuild;
    friend class QuadCheck;

    static constexpr std::uint32_t None = QuadStore::None;
    static constexpr std::int64_t SmallestToSplit = 4096;
    static constexpr std::uint32_t CountToSplit = 129;
    static constexpr std::uint32_t CountToKeep = 4;
    static constexpr std::size_t MaxDepth = 32;

    struct Node {
        QuadSquare square;
        std::uint32_t parent = None;
        std::array<std::uint32_t, 4> children{None, None, None, None};
        /// Of a leaf: its records that are not large.
        std::uint32_t count = 0;
        QuadList list;

        bool isLeaf() const { return children[0] == None; }
        /// Whether an object lies all within it and is not large for its parent either, which is as
        /// wide as two of it.
        bool isPlaceOf(const QuadBox& box, std::int64_t extent) const {
            return extent < square.side && square.encloses(box);
        }
        bool hasToSplit() const {
            return isLeaf() && square.side >= SmallestToSplit && count >= CountToSplit;
        }
    };

    QuadRecord anyRecord(std::uint32_t slot) const {
        return m_store.record(m_store.firstPlace(slot));
    }
    QuadList::Home homeOf(std::uint32_t node) const { return {m_nodes[node].square, node}; }
    std::uint32_t nodeOf(QuadStore::Place place) const {
        return m_store.block(QuadStore::blockOf(place)).node;
    }

    std::uint32_t acquireNode(const QuadSquare& square, std::uint32_t parent);
    void releaseNode(std::uint32_t node) {
        m_freeNodes.push_back(node);
        m_lastLeaf = None;
    }
    void makeChildren(std::uint32_t node);
    void growRootOver(const QuadBox& box);
    void insertAnywhere(const QuadRecord& record);
    void insertFrom(std::uint32_t node, const QuadRecord& record);
    void insertIntoQuadrants(std::uint32_t node, const QuadRecord& record);
    void insertHere(std::uint32_t node, QuadRecord record, bool isLarge);
    void split(std::uint32_t node);
    std::vector<QuadRecord> takeSmallRecords(std::uint32_t node);
    void removeRecords(std::uint32_t slot);
    void mergeUpward(std::uint32_t node);
    bool shouldMerge(const Node& node) const;
    std::size_t countObjectsOfChildren(const Node& node) const;
    void merge(std::uint32_t node);
    void takeOver(std::uint32_t node, const QuadRecord& record);
    bool holds(std::uint32_t node, std::uint32_t slot) const;
    void curtailRoot();
    bool rewrite(QuadStore::Place place, const QuadShape& shape);
    std::uint64_t metBefore(std::uint32_t index, std::uint64_t shared, const QuadBox& rect) const;
    static QuadHit hitAt(const QuadBlock& block, std::uint32_t index, std::uint32_t at) {
        return {block.payload[at], block.slot[at], block.bits[at] & unsigned{QuadBits::Kind},
                QuadStore::placeOf(index, at)};
    }

    template <class Visit>
    bool visitNodes(const QuadBox& rect, const Visit& visit) const;
    template <class Visit>
    bool visitBlocks(const QuadBox& rect, unsigned kinds, const Visit& visit) const;
    template <class Visit>
    bool visitPositions(std::uint32_t index, std::uint64_t positions, const Visit& visit) const;

    QuadFilter m_filter;
    QuadStore m_store;
    std::vector<Node> m_nodes;
    std::vector<std::uint32_t> m_freeNodes;
    std::uint32_t m_root = None;
    /// The leaf that was inserted into last: the next object is often near.
    std::uint32_t m_lastLeaf = None;
};

template <class Visit>
bool QuadEngine::visitNodes(const QuadBox& rect, const Visit& visit) const {
    if (m_root == None || rect.minX > rect.maxX || rect.minY > rect.maxY ||
        !m_nodes[m_root].square.overlaps(rect)) {
        return false;
    }
    std::array<std::uint32_t, 3 * MaxDepth + 4> waiting;
    std::size_t count = 0;
    waiting[count++] = m_root;
    while (count > 0) {
        const Node& node = m_nodes[waiting[--count]];
        if (visit(node)) {
            return true;
        }
        if (!node.isLeaf()) {
            const unsigned quadrants = node.square.quadrantsOf(rect);
            // Without branches: which quadrants are met is anyone's guess.
            for (unsigned quadrant = 4; quadrant-- > 0;) {
                waiting[count] = node.children[quadrant];
                count += quadrants >> quadrant & 1U;
            }
        }
    }
    return false;
}

template <class Visit>
bool QuadEngine::visitBlocks(const QuadBox& rect, unsigned kinds, const Visit& visit) const {
    return visitNodes(rect, [&](const Node& node) {
        return node.list.visitHits(m_store, m_filter, rect, kinds, visit);
    });
}

template <class Visit>
bool QuadEngine::visit(const QuadBox& rect, unsigned kinds, const Visit& visit) const {
    return visitBlocks(
        rect, kinds, [&](std::uint32_t index, std::uint64_t hits, std::uint64_t shared) {
            return visitPositions(index, hits ^ metBefore(index, shared, rect), visit);
        });
}

template <class Test>
bool QuadEngine::overlaps(const QuadBox& rect, unsigned kinds, const Test& test) const {
    return visitBlocks(rect, kinds, [&](std::uint32_t index, std::uint64_t hits, std::uint64_t) {
        return visitPositions(index, hits, test);
    });
}

template <class Visit>
bool QuadEngine::visitPositions(std::uint32_t index, std::uint64_t positions,
                                const Visit& visit) const {
    const QuadBlock& block = m_store.block(index);
    for (; positions != 0; positions &= positions - 1) {
        const auto at = static_cast<std::uint32_t>(std::countr_zero(positions));
        const QuadHit hit = hitAt(block, index, at);
        if (visit(hit)) {
            return true;
        }
    }
    return false;
}

}  // namespace qx::internal
