// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <iterator>

#include "foundation/util/UtilTestObjects.h"
#include "support/TestRandom.h"

namespace {

using namespace utiltest;

using Numbers = std::vector<int>;

/// Something that keeps two lists of items, as a node keeps its edges.
class Keeper : public QxObject {
public:
    const QxDList* pIn() const { return &in; }

    ItemNodes in;
    ItemNodes out;
};

class Keepers : public QxNodesOf<Keeper, Keepers> {
public:
    using QxNodesOf::QxNodesOf;
};

const QxDList* outOf(const Keeper& keeper) {
    return &keeper.out;
}
const QxDList* keepersIn(const Keepers& keepers) {
    return &keepers;
}
/// What an iterator over the other ends of edges does: the phase decides what it answers.
Item* endOfList(const QxTwoListIter<Keeper, &Keeper::pIn, &outOf>& walk) {
    const QxDList* list = walk.pList();
    return static_cast<Item*>(walk.phase() == 0 ? list->pFirstObject() : list->pLastObject());
}

using InIter = QxNodeIterOf<Item, QxOwnerListIter<Keeper, &Keeper::pIn>>;
using InAndOut = QxTwoListIter<Keeper, &Keeper::pIn, &outOf>;
using InAndOutIter = QxEdgeIterOf<Item, InAndOut>;
using EndsIter = QxNodeIterOf<Item, InAndOut, &endOfList>;
using OddIter = QxConnectorIterOf<Item, QxFilteredIter<Item, InAndOut, &Item::isOdd>>;
using KeeperIter = QxNodeIterOf<Keeper, QxOwnerListIter<Keepers, &keepersIn>>;
using AllOut = QxNestedListIter<KeeperIter, &outOf>;
using AllOutIter = QxLabelIterOf<Item, AllOut>;
using AllOddOutIter = QxLabelIterOf<Item, QxFilteredIter<Item, AllOut, &Item::isOdd>>;

/// Walks through the base class, and past the end, then through range-for.
template <class Iter>
void expectUniform(Iter iter, const Numbers& expected) {
    Iter typed = iter;
    QxDListIter& walk = typed;
    for (const int number : expected) {
        ASSERT_TRUE(walk);
        EXPECT_EQ(typed.pElement()->number(), number);
        ++walk;
    }
    EXPECT_FALSE(walk);
    ++walk;
    EXPECT_FALSE(walk) << "a walk that was over went on";
    Numbers ranged;
    for (const auto* item : iter) {
        ranged.push_back(item->number());
    }
    EXPECT_EQ(ranged, expected);
}

/// The numbers from a place on.
Numbers from(std::size_t place, const Numbers& numbers) {
    return {numbers.begin() + static_cast<std::ptrdiff_t>(place), numbers.end()};
}
Numbers odd(Numbers numbers) {
    std::erase_if(numbers, [](int n) { return n % 2 == 0; });
    return numbers;
}

class Iterators : public testing::Test {
protected:
    Iterators() {
        for (int i = 0; i < 10; ++i) {
            m_items.emplace_back(i);
        }
    }
    Numbers fill(ItemNodes& list, int count) {
        list.deleteAllCells();
        for (int i = 0; i < count; ++i) {
            list.appendNode(&m_items[static_cast<std::size_t>(m_random.below(10))]);
        }
        return numbersOf(list);
    }

    qxtest::TestRandom m_random{qxtest::testSeed(1)};
    std::deque<Item> m_items;
    Keeper m_keeper;
};

TEST_F(Iterators, WalkWhatPlainVectorsHold) {
    Keeper keepers[5];
    Keepers list;
    for (Keeper& keeper : keepers) {
        list.appendNode(&keeper);
    }
    for (int run = 0; run < 300; ++run) {
        const Numbers in = fill(m_keeper.in, m_random.below(5));
        Numbers both = in;
        std::ranges::copy(fill(m_keeper.out, m_random.below(5)), std::back_inserter(both));
        const Numbers back(in.rbegin(), in.rend());
        expectUniform(ItemNodesIter(&m_keeper.in), in);
        expectUniform(ItemNodesIter(&m_keeper.in, QxIterBackward), back);
        expectUniform(InAndOutIter(&m_keeper), both);
        expectUniform(InAndOutIter(&m_keeper, QxIterBackward), both);
        expectUniform(OddIter(&m_keeper), odd(both));
        for (std::size_t i = 0; i < both.size(); ++i) {
            const bool first = i < in.size();
            QxDListCell* const cell =
                (first ? m_keeper.in : m_keeper.out)
                    .pCellInPosition(static_cast<int>(first ? i : i - in.size()) + 1);
            expectUniform(InAndOutIter(&m_keeper, cell), from(i, both));
            expectUniform(OddIter(&m_keeper, cell), odd(from(i, both)));
            if (first) {
                expectUniform(ItemNodesIter(&m_keeper.in, cell), from(i, in));
                expectUniform(InIter(&m_keeper, cell), from(i, in));
                expectUniform(ItemNodesIter(&m_keeper.in, cell, QxIterBackward),
                              from(in.size() - 1 - i, back));
            }
        }
        Numbers ends(in.size(), in.empty() ? 0 : in.front());
        ends.resize(both.size(), both.empty() ? 0 : both.back());
        expectUniform(EndsIter(&m_keeper), ends);
        Numbers all;
        for (Keeper& keeper : keepers) {
            std::ranges::copy(fill(keeper.out, m_random.below(6) % 4), std::back_inserter(all));
        }
        expectUniform(AllOutIter(&list), all);
        expectUniform(AllOddOutIter(&list), odd(all));
        ASSERT_FALSE(HasFailure()) << "run " << run;
    }
}

TEST_F(Iterators, NothingToWalkYieldsNothing) {
    QxDListCell loose(&m_items[0]);
    QxDListCell* const none = nullptr;
    EXPECT_EQ(ItemNodesIter().pNode(), nullptr);
    EXPECT_EQ(ItemNodesIter().direction(), QxIterForward);
    expectUniform(ItemNodesIter(nullptr), {});
    expectUniform(ItemNodesIter(nullptr, &loose), {});
    expectUniform(ItemNodesIter(&m_keeper.in, &loose), {});
    expectUniform(InAndOutIter(nullptr), {});
    fill(m_keeper.out, 1);
    expectUniform(InAndOutIter(&m_keeper, none), {});
    expectUniform(InAndOutIter(&m_keeper, &loose), {});
    expectUniform(OddIter(nullptr), {});
    expectUniform(AllOutIter(nullptr), {});
    expectUniform(AllOddOutIter(), {});
}

TEST_F(Iterators, TellWhereTheyAreAndStartAnew) {
    Keepers list;
    list.appendNode(&m_keeper);
    fill(m_keeper.out, 2);
    InAndOutIter both(&m_keeper);
    EXPECT_EQ(both.phase(), 1) << "the first list is empty";
    EXPECT_EQ(AllOutIter(&list).pCurrentOwner(), &m_keeper);
    fill(m_keeper.in, 2);
    both.init(&m_keeper);
    EXPECT_EQ(both.phase(), 0);
    EXPECT_EQ(both.pEdge(), m_keeper.in.pFirstNode());
    ItemNodesIter iter;
    iter.init(&m_keeper.in, QxIterBackward);
    EXPECT_EQ(iter.pNode(), m_keeper.in.pLastNode());
    EXPECT_EQ(static_cast<int>(iter), 1);
}

TEST_F(Iterators, TheCurrentObjectMayLeaveOtherListsAndInRangeForItsOwn) {
    const Numbers numbers = fill(m_keeper.in, 3);
    m_keeper.out.copyAllCells(&m_keeper.in);
    for (ItemNodesIter it(&m_keeper.in); it; ++it) {
        m_keeper.out.discardCell(m_keeper.out.searchNode(it.pNode()));
    }
    EXPECT_EQ(m_keeper.out.count(), 0);
    Numbers seen;
    for (Item* item : ItemNodesIter(&m_keeper.in)) {
        seen.push_back(item->number());
        m_keeper.in.discardCell(m_keeper.in.searchNode(item));
    }
    EXPECT_EQ(seen, numbers);
    EXPECT_EQ(m_keeper.in.count(), 0);
}

}  // namespace
