// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/util/QxDListSort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <random>
#include <sstream>

#include "foundation/util/UtilTestObjects.h"
#include "qx/foundation/util/QxDebugStream.h"

namespace {

using namespace utiltest;

/// Orders items by their number divided by `m_divisor`, and counts the comparisons.
class NumberSort : public QxDListSort {
public:
    explicit NumberSort(int divisor = 1) : m_divisor(divisor) {}
    long comparisons() const { return m_comparisons; }

protected:
    int virtualCompare(const QxDListCell* first, const QxDListCell* second) override {
        ++m_comparisons;
        return key(first) - key(second);
    }
    void virtualDebugOutputElement(const QxDListCell* cell) override {
        qxDebugStream() << key(cell) << ' ';
    }

private:
    int key(const QxDListCell* cell) const {
        return ItemNodes::pElement(cell)->number() / m_divisor;
    }

    int m_divisor;
    long m_comparisons = 0;
};

/// Answers at random: the worst that a comparison can do without throwing.
class WhimsicalSort : public QxDListSort {
protected:
    int virtualCompare(const QxDListCell*, const QxDListCell*) override {
        return static_cast<int>(m_random() % 3) - 1;
    }

private:
    std::mt19937 m_random{7};
};

class QxDListSortTest : public testing::Test {
protected:
    void fill(const std::vector<int>& numbers) {
        for (int number : numbers) {
            m_list.appendNode(&m_items.emplace_back(number));
        }
    }
    std::deque<Item> m_items;
    ItemNodes m_list;
};

TEST_F(QxDListSortTest, AgreesWithAStableSortAndMovesCells) {
    std::mt19937 random(3);
    for (int count = 0; count < 70; ++count) {
        m_list.deleteAllCells();
        std::vector<int> numbers(static_cast<std::size_t>(count));
        std::ranges::generate(numbers, [&] { return static_cast<int>(random() % 50); });
        fill(numbers);
        QxDListCell* const first = m_list.pFirstCell();
        NumberSort(10).quickSort(&m_list, 0);
        std::ranges::stable_sort(numbers, {}, [](int n) { return n / 10; });
        ASSERT_EQ(numbersOf(m_list), numbers);
        ASSERT_EQ(m_list.checkInvariants(), 1);
        ASSERT_TRUE(first == nullptr || m_list.positionOfCell(first) > 0);
    }
}

TEST_F(QxDListSortTest, NeedsNLogNComparisonsForAnyInput) {
    constexpr int Count = 1 << 15;
    std::vector<int> ascending(Count);
    for (int i = 0; i < Count; ++i) {
        ascending[static_cast<std::size_t>(i)] = i;
    }
    std::vector<int> organPipe = ascending;
    std::ranges::for_each(organPipe, [](int& n) { n = std::min(n, Count - n); });
    const std::vector<int> descending(ascending.rbegin(), ascending.rend());
    for (const auto& input : {ascending, descending, organPipe, std::vector<int>(Count, 1)}) {
        m_list.deleteAllCells();
        fill(input);
        NumberSort sort;
        sort.quickSort(&m_list, 0);
        EXPECT_LE(sort.comparisons(), 15L * Count);
        EXPECT_TRUE(std::ranges::is_sorted(numbersOf(m_list)));
    }
}

TEST_F(QxDListSortTest, ContradictoryComparisonsLoseNothing) {
    std::vector<int> numbers(1000);
    std::ranges::generate(numbers, [n = 0]() mutable { return n++; });
    fill(numbers);
    WhimsicalSort().quickSort(&m_list, 0);
    std::vector<int> sorted = numbersOf(m_list);
    EXPECT_NE(sorted, numbers);
    std::ranges::sort(sorted);
    EXPECT_EQ(sorted, numbers);
    EXPECT_EQ(m_list.checkInvariants(), 1);
}

TEST_F(QxDListSortTest, PrintsTheResultOnDemand) {
    fill({3, 1, 2});
    std::ostringstream printed;
    qxSetDebugStream(&printed);
    NumberSort().quickSort(&m_list, 1);
    NumberSort().quickSort(nullptr, 1);
    qxSetDebugStream(nullptr);
    EXPECT_EQ(printed.str(), "1 2 3 ");
}

}  // namespace
