// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// A region quadtree (R. A. Finkel, J. L. Bentley, "Quad trees", Acta Informatica 4, 1974) whose
// inner nodes keep what is large for them, so that nothing is recorded in many leaves.
//
// Nodes stand in one pool and refer to each other by number. Their records lie in lists of blocks
// (QuadList), and each slot knows its records' places (QuadStore). Removal starts there and goes
// upward for merges; nothing is searched from the root. Only the node from whose list a record was
// taken and those above it are looked at for merges.
//
// An object may be recorded in several nodes. The squares of these do not overlap, and whether a
// record meets the query's rectangle is the same for all of them. So a query needs no marks to
// report the object once: a record reports it when no record before it in the slot's chain lies in
// a square that the rectangle overlaps, too. Chains are short: what is not large for a node lies in
// at most four of its quadrants, and its parts there soon are large, or small and alone.
//
// Cost: insertion O(depth) plus the list's, removal and changes in place without the depth, at most
// 23 whatever the coordinates. A query visits the nodes that overlap it and filters their lists.
// Without the exception for merges that are followed by a split, records of half a leaf's size
// would be copied up and down all together with each change.

#include "qx/spatial/internal/QuadEngine.h"

#include <algorithm>

namespace qx::internal {

QuadEngine::QuadEngine(bool vectorUnit) : m_filter(QuadFilter::choose(vectorUnit)) {}

std::uint32_t QuadEngine::insert(const QuadShape& shape, unsigned kind, std::uint64_t payload) {
    const std::uint32_t slot = m_store.acquireSlot();
    const auto bits = static_cast<std::uint8_t>((kind & QuadBits::Kind) |  //
                                                static_cast<unsigned>(shape.form));
    insertAnywhere({shape.box, bits, slot, payload});
    return slot;
}

void QuadEngine::update(std::uint32_t slot, const QuadShape& shape) {
    const QuadStore::Place place = m_store.firstPlace(slot);
    if (!m_store.isShared(slot) && rewrite(place, shape)) {
        return;
    }
    QuadRecord record = m_store.record(place);
    removeRecords(slot);
    record.box = shape.box;
    record.bits = static_cast<std::uint8_t>((record.bits & QuadBits::Kind) |
                                            static_cast<unsigned>(shape.form));
    insertAnywhere(record);
}

void QuadEngine::rename(std::uint32_t slot, std::uint64_t payload) {
    m_store.findPlace(slot, [&](QuadStore::Place place) {
        m_store.block(QuadStore::blockOf(place)).payload[QuadStore::positionOf(place)] = payload;
        return false;
    });
}

void QuadEngine::remove(std::uint32_t slot) {
    removeRecords(slot);
    m_store.releaseSlot(slot);
}

void QuadEngine::clear() {
    m_store.clear();
    m_nodes = {};
    m_freeNodes = {};
    m_root = None;
    m_lastLeaf = None;
}

void QuadEngine::collect(const QuadBox& rect, unsigned kinds, std::vector<QuadHit>& hits) const {
    visitBlocks(rect, kinds, [&](std::uint32_t index, std::uint64_t met, std::uint64_t shared) {
        // By way of an array, which spares the vector's question for room at each hit.
        std::array<QuadHit, QuadBlock::Capacity> found;
        auto end = found.begin();
        const QuadBlock& block = m_store.block(index);
        for (met ^= metBefore(index, shared, rect); met != 0; met &= met - 1) {
            *end++ = hitAt(block, index, static_cast<std::uint32_t>(std::countr_zero(met)));
        }
        hits.insert(hits.end(), found.begin(), end);
        return false;
    });
}

bool QuadEngine::overlaps(const QuadBox& rect, unsigned kinds) const {
    return visitBlocks(rect, kinds,
                       [](std::uint32_t, std::uint64_t, std::uint64_t) { return true; });
}

/// Those of a block's shared records whose objects are reported by another record.
std::uint64_t QuadEngine::metBefore(std::uint32_t index, std::uint64_t shared,
                                    const QuadBox& rect) const {
    const auto isMet = [&](QuadStore::Place place) {
        return m_nodes[nodeOf(place)].square.overlaps(rect);
    };
    std::uint64_t before = 0;
    for (; shared != 0; shared &= shared - 1) {
        const auto at = static_cast<std::uint32_t>(std::countr_zero(shared));
        const std::uint32_t slot = m_store.block(index).slot[at];
        const bool isFirst = m_store.findPlace(slot, isMet) == QuadStore::placeOf(index, at);
        before |= std::uint64_t{!isFirst} << at;
    }
    return before;
}

// Nodes

std::uint32_t QuadEngine::acquireNode(const QuadSquare& square, std::uint32_t parent) {
    if (m_freeNodes.empty()) {
        m_freeNodes.push_back(static_cast<std::uint32_t>(m_nodes.size()));
        m_nodes.emplace_back();
    }
    const std::uint32_t index = m_freeNodes.back();
    m_freeNodes.pop_back();
    Node fresh;
    fresh.square = square;
    fresh.parent = parent;
    m_nodes[index] = std::move(fresh);
    return index;
}

void QuadEngine::makeChildren(std::uint32_t node) {
    for (unsigned quadrant = 0; quadrant < 4; ++quadrant) {
        const std::uint32_t child = acquireNode(m_nodes[node].square.quadrant(quadrant), node);
        m_nodes[node].children[quadrant] = child;
    }
}

void QuadEngine::growRootOver(const QuadBox& box) {
    if (m_root == None) {
        m_root = acquireNode(QuadSquare::around(box), None);
    }
    while (const auto quadrant = m_nodes[m_root].square.quadrantWhenGrowing(box)) {
        const std::uint32_t old = m_root;
        m_root = acquireNode(m_nodes[old].square.doubled(*quadrant), None);
        makeChildren(m_root);
        std::uint32_t& child = m_nodes[m_root].children[*quadrant];
        releaseNode(child);
        child = old;
        m_nodes[old].parent = m_root;
    }
}

void QuadEngine::curtailRoot() {
    const Node& root = m_nodes[m_root];
    if (root.isLeaf() && root.list.recordCount() == 0) {
        releaseNode(m_root);
        m_root = None;
    }
}

// Putting in

void QuadEngine::insertAnywhere(const QuadRecord& record) {
    const QuadShape shape = record.shape();
    if (m_lastLeaf != None) {
        const Node& last = m_nodes[m_lastLeaf];
        if (last.isLeaf() && last.isPlaceOf(shape.box, shape.extent())) {
            insertHere(m_lastLeaf, record, last.square.holdsAsLarge(shape));
            return;
        }
    }
    growRootOver(record.box);
    insertFrom(m_root, record);
}

void QuadEngine::insertFrom(std::uint32_t node, const QuadRecord& record) {
    const QuadShape shape = record.shape();
    for (;;) {
        const Node& here = m_nodes[node];
        const bool isLarge = here.square.holdsAsLarge(shape);
        if (isLarge || here.isLeaf()) {
            m_lastLeaf = node;
            insertHere(node, record, isLarge);
            return;
        }
        const unsigned quadrants = here.square.quadrantsOf(shape.box);
        if ((quadrants & (quadrants - 1)) != 0) {
            insertIntoQuadrants(node, record);
            return;
        }
        node = here.children[static_cast<unsigned>(std::countr_zero(quadrants))];
    }
}

void QuadEngine::insertIntoQuadrants(std::uint32_t node, const QuadRecord& record) {
    const std::array<std::uint32_t, 4> children = m_nodes[node].children;
    for (const std::uint32_t child : children) {
        if (m_nodes[child].square.overlaps(record.shape())) {
            insertFrom(child, record);
        }
    }
}

void QuadEngine::insertHere(std::uint32_t node, QuadRecord record, bool isLarge) {
    record.bits = static_cast<std::uint8_t>((record.bits & ~QuadBits::Large) |
                                            (isLarge ? QuadBits::Large : 0));
    Node& here = m_nodes[node];
    here.list.insert(m_store, {here.square, node}, record);
    if (here.isLeaf()) {
        here.count += isLarge ? 0 : 1;
        if (here.hasToSplit()) {
            split(node);
        }
    }
}

/// The large records stay where they are.
void QuadEngine::split(std::uint32_t node) {
    const std::vector<QuadRecord> moving = takeSmallRecords(node);
    makeChildren(node);
    for (const QuadRecord& record : moving) {
        insertIntoQuadrants(node, record);
    }
}

std::vector<QuadRecord> QuadEngine::takeSmallRecords(std::uint32_t node) {
    Node& here = m_nodes[node];
    std::vector<QuadRecord> small;
    std::vector<QuadRecord> large;
    here.list.visitAll(m_store, [&](const QuadRecord& record, QuadStore::Place place) {
        m_store.unlink(record.slot, place);
        ((record.bits & QuadBits::Large) != 0 ? large : small).push_back(record);
    });
    here.list.dropBlocks(m_store);
    here.count = 0;
    for (const QuadRecord& record : large) {
        here.list.insert(m_store, homeOf(node), record);
    }
    return small;
}

// Taking out

void QuadEngine::removeRecords(std::uint32_t slot) {
    for (;;) {
        const QuadStore::Place place = m_store.firstPlace(slot);
        if (place == None) {
            break;
        }
        const QuadBlock& block = m_store.block(QuadStore::blockOf(place));
        const std::uint32_t index = block.node;
        const bool isLarge = (block.bits[QuadStore::positionOf(place)] & QuadBits::Large) != 0;
        Node& node = m_nodes[index];
        node.list.remove(m_store, slot, place);
        if (node.isLeaf()) {
            node.count -= isLarge ? 0 : 1;
            if (node.count < CountToKeep) {
                mergeUpward(node.parent);
            }
        }
    }
    curtailRoot();
}

void QuadEngine::mergeUpward(std::uint32_t node) {
    while (node != None && shouldMerge(m_nodes[node])) {
        merge(node);
        node = m_nodes[node].parent;
    }
}

bool QuadEngine::shouldMerge(const Node& node) const {
    std::uint32_t count = 0;
    std::size_t records = 0;
    std::size_t most = 0;
    for (const std::uint32_t child : node.children) {
        if (!m_nodes[child].isLeaf()) {
            return false;
        }
        count += m_nodes[child].count;
        records += m_nodes[child].list.recordCount();
        most = std::max(most, m_nodes[child].list.recordCount());
    }
    return count < CountToKeep &&
           (records < CountToSplit ||
            (most < CountToSplit && countObjectsOfChildren(node) < CountToSplit));
}

std::size_t QuadEngine::countObjectsOfChildren(const Node& node) const {
    std::vector<std::uint32_t> slots;
    for (const std::uint32_t child : node.children) {
        m_nodes[child].list.visitAll(m_store, [&](const QuadRecord& record, QuadStore::Place) {
            slots.push_back(record.slot);
        });
    }
    std::sort(slots.begin(), slots.end());
    return static_cast<std::size_t>(std::unique(slots.begin(), slots.end()) - slots.begin());
}

/// The node becomes a leaf, with its children's records beside its own large ones.
void QuadEngine::merge(std::uint32_t node) {
    const std::array<std::uint32_t, 4> children = m_nodes[node].children;
    m_nodes[node].children.fill(None);
    for (const std::uint32_t child : children) {
        QuadList& list = m_nodes[child].list;
        list.visitAll(m_store, [&](const QuadRecord& record, QuadStore::Place place) {
            m_store.unlink(record.slot, place);
            takeOver(node, record);
        });
        list.dropBlocks(m_store);
        releaseNode(child);
    }
}

/// An object that several children held is recorded once.
void QuadEngine::takeOver(std::uint32_t node, const QuadRecord& record) {
    if (!holds(node, record.slot)) {
        insertHere(node, record, m_nodes[node].square.holdsAsLarge(record.shape()));
    }
}

bool QuadEngine::holds(std::uint32_t node, std::uint32_t slot) const {
    return m_store.findPlace(slot, [&](QuadStore::Place place) { return nodeOf(place) == node; }) !=
           None;
}

// Changing in place

/// Whether the object could stay where its only record is, and so has.
bool QuadEngine::rewrite(QuadStore::Place place, const QuadShape& shape) {
    const QuadBlock& block = m_store.block(QuadStore::blockOf(place));
    Node& node = m_nodes[block.node];
    const std::int64_t extent = shape.extent();
    const bool wasLarge = (block.bits[QuadStore::positionOf(place)] & QuadBits::Large) != 0;
    const bool isLarge = extent * 2 >= node.square.side;
    if (isLarge != wasLarge || !node.isPlaceOf(shape.box, extent)) {
        return false;
    }
    node.list.reshape(m_store, {node.square, block.node}, place, shape);
    return true;
}

}  // namespace qx::internal
