// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// The tree of many objects at once. Single insertions would go down the tree for each object, split
// leaves and blocks again and again and leave the blocks a third empty. Instead the objects'
// numbers are dealt out to the quadrants, level by level, as long as the rules would have split the
// leaf; what arrives at a leaf is sorted along the curve of its list and written into full blocks.
//
// It is the tree of the insertions in the order of the items: the root is the one that would have
// grown, squares that were roots on the way are inner nodes, and nothing is removed in between, so
// a leaf is split in the end when its count ever got that far. The one exception: a box exactly as
// wide as a root that then doubled would have stayed in there, and is large for the doubled one.
//
// Cost: O(depth) a object for the dealing, O(log r) for the sorting of a list of r records; 4 bytes
// for each object and level of memory, given back in the end.

#include <algorithm>
#include <bit>

#include "qx/spatial/internal/QuadEngine.h"

namespace qx::internal {

class QuadBulkBuild {
public:
    QuadBulkBuild(QuadEngine& engine, const std::vector<QuadItem>& items)
        : m_engine(engine), m_items(items) {}

    void run() {
        m_engine.clear();
        if (m_items.empty()) {
            return;
        }
        m_engine.m_store.acquireSlots(m_items.size());
        m_engine.m_root = m_engine.acquireNode(growRoot(), QuadEngine::None);
        std::vector<std::uint32_t> all(m_items.size());
        for (std::size_t i = 0; i < all.size(); ++i) {
            all[i] = static_cast<std::uint32_t>(i);
        }
        fill(m_engine.m_root, all);
    }

private:
    using Indices = std::vector<std::uint32_t>;

    QuadSquare growRoot() {
        QuadSquare root = QuadSquare::around(m_items.front().shape.box);
        for (const QuadItem& item : m_items) {
            while (const auto quadrant = root.quadrantWhenGrowing(item.shape.box)) {
                root = root.doubled(*quadrant);
                m_doubled.push_back(root);
            }
        }
        return root;
    }

    void fill(std::uint32_t node, const Indices& items) {
        const QuadSquare square = m_engine.m_nodes[node].square;
        const bool splits = isSplit(square, items);
        Indices here;
        std::array<Indices, 4> quadrants;
        for (const std::uint32_t item : items) {
            const QuadShape& shape = m_items[item].shape;
            if (!splits || square.holdsAsLarge(shape)) {
                here.push_back(item);
            } else {
                deal(item, shape, square, quadrants);
            }
        }
        fillList(node, here);
        if (splits) {
            m_engine.makeChildren(node);
            for (unsigned quadrant = 0; quadrant < 4; ++quadrant) {
                fill(m_engine.m_nodes[node].children[quadrant], quadrants[quadrant]);
                quadrants[quadrant] = {};
            }
        }
    }

    static void deal(std::uint32_t item, const QuadShape& shape, const QuadSquare& square,
                     std::array<Indices, 4>& quadrants) {
        const unsigned met = square.quadrantsOf(shape.box);
        if (std::has_single_bit(met)) {
            quadrants[static_cast<std::size_t>(std::countr_zero(met))].push_back(item);
            return;
        }
        for (unsigned quadrant = 0; quadrant < 4; ++quadrant) {
            if ((met >> quadrant & 1U) != 0 && square.quadrant(quadrant).overlaps(shape)) {
                quadrants[quadrant].push_back(item);
            }
        }
    }

    bool isSplit(const QuadSquare& square, const Indices& items) const {
        if (std::find(m_doubled.begin(), m_doubled.end(), square) != m_doubled.end()) {
            return true;
        }
        if (square.side < QuadEngine::SmallestToSplit) {
            return false;
        }
        std::uint32_t count = 0;
        for (std::size_t i = 0; i < items.size() && count < QuadEngine::CountToSplit; ++i) {
            count += square.holdsAsLarge(m_items[items[i]].shape) ? 0 : 1;
        }
        return count >= QuadEngine::CountToSplit;
    }

    void fillList(std::uint32_t node, const Indices& items) {
        sortAlongCurve(m_engine.m_nodes[node].square, items);
        QuadEngine::Node& target = m_engine.m_nodes[node];
        m_records.clear();
        for (const std::uint64_t entry : m_order) {
            const auto slot = static_cast<std::uint32_t>(entry);
            const QuadItem& item = m_items[slot];
            const bool isLarge = target.square.holdsAsLarge(item.shape);
            const auto bits = static_cast<std::uint8_t>((item.kind & QuadBits::Kind) |
                                                        static_cast<unsigned>(item.shape.form) |
                                                        (isLarge ? QuadBits::Large : 0U));
            m_records.push_back({item.shape.box, bits, slot, item.payload});
            target.count += target.isLeaf() && !isLarge ? 1 : 0;
        }
        for (std::size_t at = 0; at < m_records.size(); at += QuadBlock::Capacity) {
            const std::size_t count =
                std::min<std::size_t>(m_records.size() - at, QuadBlock::Capacity);
            target.list.appendBlock(m_engine.m_store, node, {m_records.data() + at, count},
                                    static_cast<std::uint32_t>(m_order[at] >> 32U));
        }
    }

    void sortAlongCurve(const QuadSquare& square, const Indices& items) {
        m_order.clear();
        for (const std::uint32_t item : items) {
            const std::uint64_t key = QuadList::keyOf(square, m_items[item].shape.box);
            m_order.push_back(key << 32U | item);
        }
        if (items.size() > QuadBlock::Capacity) {
            std::sort(m_order.begin(), m_order.end());
        }
    }

    QuadEngine& m_engine;
    const std::vector<QuadItem>& m_items;
    /// The squares that the root had after each time it grew.
    std::vector<QuadSquare> m_doubled;
    /// Keys and, below them, the items of the list at hand.
    std::vector<std::uint64_t> m_order;
    /// Its records in that order.
    std::vector<QuadRecord> m_records;
};

void QuadEngine::build(const std::vector<QuadItem>& items) {
    QuadBulkBuild(*this, items).run();
}

}  // namespace qx::internal
