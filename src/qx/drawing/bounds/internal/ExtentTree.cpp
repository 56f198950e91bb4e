// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/drawing/bounds/internal/ExtentTree.h"

namespace qx::internal {

std::int32_t ExtentTree::acquire() {
    ++m_used;
    if (!m_free.empty()) {
        const std::int32_t slot = m_free.back();
        m_free.pop_back();
        return slot;
    }
    if (m_levels.empty()) {
        m_levels.resize(1);
    }
    const auto slot = static_cast<std::int32_t>(m_levels[0].size());
    m_levels[0].emplace_back();
    for (std::size_t level = 0; m_levels[level].size() > 1; ++level) {
        if (level + 1 == m_levels.size()) {
            // A new top: it starts as the union of what is below.
            m_levels.emplace_back(1, m_levels[level][0]);
        }
        const std::size_t blocks = (m_levels[level].size() + Fanout - 1) / Fanout;
        if (m_levels[level + 1].size() == blocks) {
            break;
        }
        m_levels[level + 1].emplace_back();
    }
    return slot;
}

void ExtentTree::assign(std::int32_t slot, Box box) {
    auto index = static_cast<std::size_t>(slot);
    for (std::size_t level = 0;; ++level) {
        Box& held = m_levels[level][index];
        const Box before = held;
        held = box;
        if (level + 1 == m_levels.size()) {
            return;
        }
        const std::size_t block = index / Fanout;
        Box merged = m_levels[level + 1][block];
        if (merged.restsOn(before, box)) {
            const std::vector<Box>& members = m_levels[level];
            const std::size_t end = std::min(members.size(), (block + 1) * Fanout);
            merged = Box();
            for (std::size_t i = block * Fanout; i < end; ++i) {
                merged.unite(members[i]);
            }
        } else {
            merged.unite(box);
        }
        if (merged == m_levels[level + 1][block]) {
            return;
        }
        index = block;
        box = merged;
    }
}

std::size_t ExtentTree::sizeOf() const {
    std::size_t bytes = sizeof(*this) + m_free.capacity() * sizeof(std::int32_t);
    for (const std::vector<Box>& level : m_levels) {
        bytes += sizeof(level) + level.capacity() * sizeof(Box);
    }
    return bytes;
}

}  // namespace qx::internal
