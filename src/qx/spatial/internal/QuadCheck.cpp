// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// The tree compared with its rules, and told.

#include <algorithm>
#include <ostream>
#include <string>

#include "qx/spatial/internal/QuadEngine.h"

namespace qx::internal {

class QuadCheck {
public:
    QuadCheck(const QuadEngine& engine, std::ostream& out)
        : m_engine(engine), m_nodes(engine.m_nodes), m_store(engine.m_store), m_out(out) {}

    bool check() {
        const std::uint32_t root = m_engine.m_root;
        if (root == QuadEngine::None) {
            return m_store.slotCount() == 0 || fault("objects, but no root");
        }
        if (m_nodes[root].isLeaf() && m_nodes[root].list.recordCount() == 0) {
            return fault("an empty root");
        }
        return checkNode(root, QuadEngine::None) &&
               (m_objects == m_store.slotCount() || fault("objects without records"));
    }

    void print(std::uint32_t index, std::size_t depth) const {
        const QuadEngine::Node& node = m_nodes[index];
        m_out << std::string(depth * 2, ' ') << (node.isLeaf() ? "leaf" : "inner") << " at "
              << node.square.left << ", " << node.square.bottom << " side " << node.square.side;
        if (node.isLeaf()) {
            m_out << " count " << node.count;
        }
        m_out << ':';
        std::vector<std::uint32_t> slots;
        node.list.visitAll(m_store, [&](const QuadRecord& record, QuadStore::Place) {
            slots.push_back(record.slot);
        });
        std::sort(slots.begin(), slots.end());
        for (const std::uint32_t slot : slots) {
            m_out << ' ' << slot;
        }
        m_out << '\n';
        for (std::size_t i = 0; i < 4 && !node.isLeaf(); ++i) {
            print(node.children[i], depth + 1);
        }
    }

private:
    bool fault(const std::string& what) const {
        m_out << "quadtree: " << what << '\n';
        return false;
    }

    bool checkNode(std::uint32_t index, std::uint32_t parent) {
        const QuadEngine::Node& node = m_nodes[index];
        if (node.parent != parent) {
            return fault("a tree node with a wrong parent");
        }
        if (!node.list.checkInvariants(m_store, index, m_out) || !checkRecords(index)) {
            return false;
        }
        if (node.hasToSplit()) {
            return fault("a leaf that should have been split");
        }
        for (unsigned i = 0; i < 4 && !node.isLeaf(); ++i) {
            if (!(m_nodes[node.children[i]].square == node.square.quadrant(i))) {
                return fault("a child in the wrong place");
            }
            if (!checkNode(node.children[i], index)) {
                return false;
            }
        }
        return true;
    }

    bool checkRecords(std::uint32_t index) {
        const QuadEngine::Node& node = m_nodes[index];
        std::uint32_t small = 0;
        bool isRight = true;
        node.list.visitAll(m_store, [&](const QuadRecord& record, QuadStore::Place place) {
            small += (record.bits & QuadBits::Large) == 0 ? 1 : 0;
            isRight = isRight && checkRecord(record, place, node);
        });
        return isRight && ((node.isLeaf() ? node.count == small : small == 0) ||
                           fault("a tree node that counts wrongly"));
    }

    bool checkRecord(const QuadRecord& record, QuadStore::Place place,
                     const QuadEngine::Node& node) {
        const QuadShape shape = record.shape();
        if (!node.square.overlaps(shape)) {
            return fault("a record outside its square");
        }
        if (node.square.holdsAsLarge(shape) != ((record.bits & QuadBits::Large) != 0)) {
            return fault("a record that is large, or not, against its mark");
        }
        if (node.parent != QuadEngine::None && m_nodes[node.parent].square.holdsAsLarge(shape) &&
            !fills(shape, node.square)) {
            return fault("a record below the node for which it is large");
        }
        const QuadStore::Place found =
            m_store.findPlace(record.slot, [&](QuadStore::Place at) { return at == place; });
        if (found != place ||
            m_store.isShared(record.slot) != ((record.bits & QuadBits::Shared) != 0)) {
            return fault("a record that its slot does not know");
        }
        if (m_store.firstPlace(record.slot) == place) {
            ++m_objects;
            return checkObject(record.slot, shape);
        }
        return true;
    }

    /// What was as wide as a whole root may have stayed in it when the root doubled.
    static bool fills(const QuadShape& shape, const QuadSquare& square) {
        return square.encloses(shape.box) && shape.extent() == square.side;
    }

    /// With all its records where they may be, no two in one node, it is the number that tells
    /// whether one is missing.
    bool checkObject(std::uint32_t slot, const QuadShape& shape) const {
        std::vector<std::uint32_t> nodes;
        m_store.findPlace(slot, [&](QuadStore::Place place) {
            nodes.push_back(m_engine.nodeOf(place));
            return false;
        });
        std::sort(nodes.begin(), nodes.end());
        return (std::adjacent_find(nodes.begin(), nodes.end()) == nodes.end() &&
                nodes.size() == recordsBelow(m_engine.m_root, shape)) ||
               fault("an object with a record too many or too few");
    }

    std::size_t recordsBelow(std::uint32_t index, const QuadShape& shape) const {
        const QuadEngine::Node& node = m_nodes[index];
        if (!node.square.overlaps(shape)) {
            return 0;
        }
        if (node.isLeaf() || node.square.holdsAsLarge(shape)) {
            return 1;
        }
        std::size_t records = 0;
        for (const std::uint32_t child : node.children) {
            records += recordsBelow(child, shape);
        }
        return records;
    }

    const QuadEngine& m_engine;
    const std::vector<QuadEngine::Node>& m_nodes;
    const QuadStore& m_store;
    std::ostream& m_out;
    std::size_t m_objects = 0;
};

bool QuadEngine::checkInvariants(std::ostream& out) const {
    return QuadCheck(*this, out).check();
}

void QuadEngine::print(std::ostream& out) const {
    if (m_root != None) {
        QuadCheck(*this, out).print(m_root, 0);
    }
}

std::size_t QuadEngine::sizeOf() const {
    std::size_t bytes = sizeof(*this) + m_store.sizeOf() + m_nodes.capacity() * sizeof(Node) +
                        m_freeNodes.capacity() * sizeof(std::uint32_t);
    for (const Node& node : m_nodes) {
        bytes += node.list.sizeOf();
    }
    return bytes;
}

}  // namespace qx::internal
