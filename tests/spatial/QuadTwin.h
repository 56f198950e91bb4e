// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "qx/foundation/geometry/QxRect.h"
#include "qx/spatial/internal/QuadEngine.h"

namespace qxtest {

/// The rules of the tree in plain words: nodes with sets of slots, recursion, no handles; and a
/// query that looks at every object.
class QuadTwin {
public:
    using Shape = qx::internal::QuadShape;
    using Box = qx::internal::QuadBox;
    using Wide = std::int64_t;

    struct Object {
        Shape shape;
        unsigned kind;
    };
    const std::map<std::uint32_t, Object>& objects() const { return m_objects; }

    void insert(std::uint32_t slot, const Shape& shape, unsigned kind) {
        m_objects[slot] = {shape, kind};
        growRoot(shape.box);
        insertInto(m_root, slot);
    }
    void remove(std::uint32_t slot) {
        removeFrom(*m_root, slot);
        m_objects.erase(slot);
        if (m_root->isLeaf() && m_root->slots.empty()) {
            m_root.reset();
        }
    }
    /// What can stay in its only node stays, whatever the counts.
    void update(std::uint32_t slot, const Shape& shape) {
        std::vector<Node*> holders;
        findHolders(*m_root, slot, holders);
        Object object = m_objects[slot];
        const Node& first = *holders.front();
        const Wide extent = sizeIn(first, shape);
        if (holders.size() == 1 && encloses(first, shape.box) && extent < first.side &&
            isLarge(first, shape) == isLarge(first, object.shape)) {
            m_objects[slot].shape = shape;
            return;
        }
        remove(slot);
        insert(slot, shape, object.kind);
    }

    std::vector<std::uint32_t> query(const Box& rect, unsigned kinds) const {
        std::vector<std::uint32_t> hits;
        for (const auto& [slot, object] : m_objects) {
            if ((kinds >> object.kind & 1U) != 0 && meets(object.shape, rect)) {
                hits.push_back(slot);
            }
        }
        return hits;
    }
    static bool meets(const Shape& shape, const Box& rect) {
        const QxRect region(QxPoint(rect.minX, rect.minY), QxPoint(rect.maxX, rect.maxY));
        const Box& b = shape.box;
        if (!shape.isSegment()) {
            return region.intersectsRect(QxRect(QxPoint(b.minX, b.minY), QxPoint(b.maxX, b.maxY)));
        }
        const bool falls = shape.form == qx::internal::QuadForm::Falling;
        return region.overlapsSegment(b.minX, falls ? b.maxY : b.minY, b.maxX,
                                      falls ? b.minY : b.maxY) != 0;
    }
    void print(std::ostream& out) const {
        if (m_root != nullptr) {
            print(*m_root, 0, out);
        }
    }

private:
    struct Node {
        Wide left;
        Wide bottom;
        Wide side;
        std::set<std::uint32_t> slots;
        std::array<std::unique_ptr<Node>, 4> children;

        bool isLeaf() const { return children[0] == nullptr; }
    };
    using Owner = std::unique_ptr<Node>;

    static Owner makeNode(Wide left, Wide bottom, Wide side) {
        return Owner(new Node{left, bottom, side, {}, {}});
    }
    static void makeChildren(Node& node) {
        const Wide half = node.side / 2;
        node.children = {makeNode(node.left, node.bottom, half),
                         makeNode(node.left + half, node.bottom, half),
                         makeNode(node.left, node.bottom + half, half),
                         makeNode(node.left + half, node.bottom + half, half)};
    }
    static bool encloses(const Node& node, const Box& b) {
        return b.minX >= node.left && b.minY >= node.bottom && b.maxX < node.left + node.side &&
               b.maxY < node.bottom + node.side;
    }

    void growRoot(const Box& b) {
        if (m_root == nullptr) {
            Wide side = 2048;
            while (side <= Wide{b.maxX} - b.minX || side <= Wide{b.maxY} - b.minY) {
                side *= 2;
            }
            m_root = makeNode(b.minX + (Wide{b.maxX} - b.minX) / 2 - side / 2,
                              b.minY + (Wide{b.maxY} - b.minY) / 2 - side / 2, side);
        }
        while (!encloses(*m_root, b)) {
            const Wide side = m_root->side;
            const bool goesLeft = b.minX < m_root->left;
            const bool goesDown = b.maxY < m_root->bottom + side;
            Owner root = makeNode(m_root->left - (goesLeft ? side : 0),
                                  m_root->bottom - (goesDown ? side : 0), side * 2);
            makeChildren(*root);
            root->children[(goesLeft ? 1U : 0U) + (goesDown ? 2U : 0U)] = std::move(m_root);
            m_root = std::move(root);
        }
    }

    /// The longer extent of the part in the node; of boxes with the last row counted.
    static Wide sizeIn(const Node& node, const Shape& shape) {
        const Box& b = shape.box;
        const Wide right = node.left + node.side;
        const Wide top = node.bottom + node.side;
        if (!shape.isSegment()) {
            return std::max(std::min(right, Wide{b.maxX} + 1) - std::max<Wide>(node.left, b.minX),
                            std::min(top, Wide{b.maxY} + 1) - std::max<Wide>(node.bottom, b.minY));
        }
        const auto dx = static_cast<long double>(Wide{b.maxX} - b.minX);
        const auto dy = static_cast<long double>(Wide{b.maxY} - b.minY);
        const bool falls = shape.form == qx::internal::QuadForm::Falling;
        const Wide low = falls ? b.maxY - top : node.bottom - b.minY;
        const Wide high = falls ? b.maxY - node.bottom : top - b.minY;
        long double from = 0;
        long double to = 1;
        if (dx > 0) {
            from = std::max(from, static_cast<long double>(node.left - b.minX) / dx);
            to = std::min(to, static_cast<long double>(right - b.minX) / dx);
        }
        if (dy > 0) {
            from = std::max(from, static_cast<long double>(low) / dy);
            to = std::min(to, static_cast<long double>(high) / dy);
        }
        return static_cast<Wide>(std::max(dx, dy) * (to - from) + 1e-6L);
    }
    static bool isLarge(const Node& node, const Shape& shape) {
        return sizeIn(node, shape) >= node.side / 2;
    }
    static bool overlaps(const Node& node, const Shape& shape) {
        const Box& b = shape.box;
        const Wide right = node.left + node.side;
        const Wide top = node.bottom + node.side;
        if (b.minX >= right || b.maxX < node.left || b.minY >= top || b.maxY < node.bottom) {
            return false;
        }
        // A segment passes by when all corners of the square are strictly on one side of it.
        const bool falls = shape.form == qx::internal::QuadForm::Falling;
        const __int128 dx = Wide{b.maxX} - b.minX;
        const __int128 dy = falls ? Wide{b.minY} - b.maxY : Wide{b.maxY} - b.minY;
        bool isAbove = false;
        bool isBelow = false;
        for (const Wide x : {node.left, right}) {
            for (const Wide y : {node.bottom, top}) {
                const __int128 turn = dx * (y - (falls ? b.maxY : b.minY)) - dy * (x - b.minX);
                isAbove |= turn >= 0;
                isBelow |= turn <= 0;
            }
        }
        return !shape.isSegment() || (isAbove && isBelow);
    }
    std::size_t countOf(const Node& node) const {
        return static_cast<std::size_t>(std::count_if(
            node.slots.begin(), node.slots.end(),
            [&](std::uint32_t slot) { return !isLarge(node, m_objects.at(slot).shape); }));
    }

    void insertInto(Owner& node, std::uint32_t slot) {
        const Shape& shape = m_objects.at(slot).shape;
        if (node->isLeaf()) {
            node->slots.insert(slot);
            if (node->side >= 4096 && countOf(*node) >= 129) {
                const std::set<std::uint32_t> all = std::move(node->slots);
                node->slots.clear();
                makeChildren(*node);
                for (const std::uint32_t each : all) {
                    insertInto(node, each);
                }
            }
        } else if (isLarge(*node, shape)) {
            node->slots.insert(slot);
        } else {
            for (Owner& child : node->children) {
                if (overlaps(*child, shape)) {
                    insertInto(child, slot);
                }
            }
        }
    }
    /// Whether the slot was found there or below.
    bool removeFrom(Node& node, std::uint32_t slot) {
        if (node.slots.erase(slot) > 0) {
            return true;
        }
        bool isFound = false;
        for (std::size_t i = 0; i < 4 && !node.isLeaf(); ++i) {
            isFound |= removeFrom(*node.children[i], slot);
        }
        if (isFound && !node.isLeaf()) {
            merge(node);
        }
        return isFound;
    }
    void merge(Node& node) const {
        std::size_t count = 0;
        std::set<std::uint32_t> all;
        for (const Owner& child : node.children) {
            if (!child->isLeaf()) {
                return;
            }
            count += countOf(*child);
            all.insert(child->slots.begin(), child->slots.end());
        }
        if (count < 4 && all.size() < 129) {
            node.slots.insert(all.begin(), all.end());
            node.children = {};
        }
    }
    void findHolders(Node& node, std::uint32_t slot, std::vector<Node*>& holders) {
        if (node.slots.count(slot) > 0) {
            holders.push_back(&node);
        }
        for (std::size_t i = 0; i < 4 && !node.isLeaf(); ++i) {
            findHolders(*node.children[i], slot, holders);
        }
    }
    void print(const Node& node, std::size_t depth, std::ostream& out) const {
        out << std::string(depth * 2, ' ') << (node.isLeaf() ? "leaf" : "inner") << " at "
            << node.left << ", " << node.bottom << " side " << node.side;
        if (node.isLeaf()) {
            out << " count " << countOf(node);
        }
        out << ':';
        for (const std::uint32_t slot : node.slots) {
            out << ' ' << slot;
        }
        out << '\n';
        for (std::size_t i = 0; i < 4 && !node.isLeaf(); ++i) {
            print(*node.children[i], depth + 1, out);
        }
    }

    std::map<std::uint32_t, Object> m_objects;
    Owner m_root;
};

}  // namespace qxtest
