// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/util/QxDListSort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <sstream>

#include "foundation/util/UtilTestObjects.h"
#include "qx/foundation/util/QxDebugStream.h"
#include "support/TestRandom.h"

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
        return m_random.below(3) - 1;
    }

private:
    qxtest::TestRandom m_random{7};
};

class Sorting : public testing::Test {
protected:
    void fill(const std::vector<int>& numbers) {
        m_list.deleteAllCells();
        m_items.clear();
        for (int number : numbers) {
            m_list.appendCell(m_items.emplace_back(number).pCell());
        }
    }
    std::deque<Item> m_items;
    ItemNodes m_list;
};

TEST_F(Sorting, AgreesWithAStableSortAndMovesCells) {
    qxtest::TestRandom random(qxtest::testSeed(3));
    for (std::size_t count = 0; count < 70; ++count) {
        std::vector<int> numbers(count);
        std::ranges::generate(numbers, [&] { return random.below(50); });
        fill(numbers);
        NumberSort(10).quickSort(&m_list, 0);
        std::ranges::stable_sort(numbers, {}, [](int n) { return n / 10; });
        ASSERT_EQ(numbersOf(m_list), numbers);
        ASSERT_EQ(m_list.checkInvariants(), 1);
        for (Item& item : m_items) {
            ASSERT_EQ(m_list.searchObject(&item), item.pCell());
        }
    }
}

TEST_F(Sorting, NeedsNLogNComparisonsForAnyInput) {
    constexpr int Count = 1 << 15;
    const auto of = [](auto number) {
        std::vector<int> numbers(Count);
        std::ranges::generate(numbers, [&, i = 0]() mutable { return number(i++); });
        return numbers;
    };
    for (const auto& input :
         {of([](int i) { return i; }), of([](int i) { return -i; }), of([](int) { return 1; }),
          of([](int i) { return std::min(i, Count - i); })}) {
        fill(input);
        NumberSort sort;
        sort.quickSort(&m_list, 0);
        EXPECT_LE(sort.comparisons(), 15L * Count);
        EXPECT_TRUE(std::ranges::is_sorted(numbersOf(m_list)));
    }
}

TEST_F(Sorting, ContradictoryComparisonsLoseNothing) {
    std::vector<int> numbers(1000);
    std::ranges::generate(numbers, [n = 0]() mutable { return n++; });
    fill(numbers);
    WhimsicalSort().quickSort(&m_list, 0);
    EXPECT_EQ(m_list.checkInvariants(), 1);
    EXPECT_TRUE(std::ranges::is_permutation(numbersOf(m_list), numbers));
}

TEST_F(Sorting, PrintsTheResultOnDemand) {
    fill({3, 1, 2});
    std::ostringstream printed;
    qxSetDebugStream(&printed);
    NumberSort().quickSort(&m_list, 1);
    NumberSort().quickSort(nullptr, 1);
    qxSetDebugStream(nullptr);
    EXPECT_EQ(printed.str(), "1 2 3 ");
}

}  // namespace
