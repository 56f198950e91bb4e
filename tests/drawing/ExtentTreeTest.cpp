// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/drawing/bounds/internal/ExtentTree.h"

#include <gtest/gtest.h>

#include "drawing/DrawingTesting.h"
#include "support/TestRandom.h"

namespace {

using namespace qxtest;
using qx::internal::ExtentTree;

/// A tree and, beside it, the plain collection of what it was given.
class TreeAndTwin {
public:
    struct Entry {
        std::int32_t slot = ExtentTree::NoSlot;
        QxRect rect;
    };

    void add(const QxRect& rect) {
        m_entries.push_back({ExtentTree::NoSlot, rect});
        m_tree.set(m_entries.back().slot, rect);
    }
    void change(std::size_t index, const QxRect& rect) {
        const std::int32_t slot = m_entries[index].slot;
        m_entries[index].rect = rect;
        m_tree.set(m_entries[index].slot, rect);
        EXPECT_EQ(m_entries[index].slot, slot);
    }
    void remove(std::size_t index) {
        m_tree.clear(m_entries[index].slot);
        EXPECT_EQ(m_entries[index].slot, ExtentTree::NoSlot);
        m_tree.clear(m_entries[index].slot);
        m_entries.erase(m_entries.begin() + static_cast<std::ptrdiff_t>(index));
    }
    std::size_t size() const { return m_entries.size(); }

    void expectSame() const {
        QxRect rect(7, 7, 7, 7);
        const bool any = m_tree.unite(rect);
        QxRect walked(7, 7, 7, 7);
        for (const Entry& entry : m_entries) {
            if (&entry == &m_entries.front()) {
                walked = entry.rect;
            } else {
                walked |= entry.rect;
            }
        }
        ASSERT_EQ(any, !m_entries.empty());
        ASSERT_EQ(m_tree.isEmpty(), m_entries.empty());
        ASSERT_EQ(boxOf(rect), boxOf(walked));
    }

private:
    ExtentTree m_tree;
    std::vector<Entry> m_entries;
};

/// Sides often coincide, and lie at the ends of the range now and then.
QxRect randomRect(TestRandom& random) {
    const auto side = [&random] {
        return random.chance(3)   ? qx::MinInt32
               : random.chance(3) ? qx::MaxInt32
                                  : random.below(60) - 30;
    };
    return QxRect(QxPoint(side(), side()), QxPoint(side(), side()));
}

TEST(ExtentTree, UnitesWhatItHoldsAfterEveryRandomChange) {
    const std::uint32_t seed = testSeed(11);
    SCOPED_TRACE(seedTrace(seed));
    TestRandom random(seed);
    // Past 256 and 4096 entries the tree gains a level; it has to work the same on the way back.
    for (const int most : {3, 17, 40, 300, 5000}) {
        TreeAndTwin both;
        for (int step = 0; step < 3 * most; ++step) {
            const bool grows = step < 2 * most;
            if (both.size() == 0 || random.chance(grows ? 70 : 10)) {
                both.add(randomRect(random));
            } else if (random.chance(40)) {
                both.change(static_cast<std::size_t>(random.below(static_cast<int>(both.size()))),
                            randomRect(random));
            } else {
                both.remove(static_cast<std::size_t>(random.below(static_cast<int>(both.size()))));
            }
            if (most < 1000 || random.chance(2)) {
                ASSERT_NO_FATAL_FAILURE(both.expectSame()) << "step " << step << " of " << most;
            }
        }
        while (both.size() > 0) {
            both.remove(both.size() - 1);
            if (both.size() < 50) {
                ASSERT_NO_FATAL_FAILURE(both.expectSame());
            }
        }
    }
}

TEST(ExtentTree, UsesFreedSlotsAgain) {
    ExtentTree tree;
    std::int32_t slot = ExtentTree::NoSlot;
    tree.set(slot, QxRect(1, 1, 2, 2));
    const std::size_t bytes = tree.sizeOf();
    for (int i = 0; i < 100; ++i) {
        tree.clear(slot);
        tree.set(slot, QxRect(1, 1, 2, 2));
    }
    EXPECT_EQ(slot, 0);
    EXPECT_LE(tree.sizeOf(), bytes + sizeof(std::int32_t));
}

}  // namespace
