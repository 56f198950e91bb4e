// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <gtest/gtest.h>

#include <deque>

#include "foundation/util/UtilTestObjects.h"

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

template <class Iter>
Numbers walked(Iter iter) {
    Numbers numbers;
    for (; iter; ++iter) {
        numbers.push_back(iter.pElement()->number());
    }
    ++iter;
    EXPECT_FALSE(iter) << "a walk that was over went on";
    return numbers;
}

/// The same walk through the base class and through range-for.
template <class Iter>
void expectUniform(Iter iter, const Numbers& expected) {
    EXPECT_EQ(walked(iter), expected);
    Iter again = iter;
    std::size_t steps = 0;
    for (QxDListIter& plain = again; plain; ++plain) {
        ++steps;
    }
    EXPECT_EQ(steps, expected.size());
    Numbers ranged;
    for (const auto* item : iter) {
        ranged.push_back(item->number());
    }
    EXPECT_EQ(ranged, expected);
}

class QxDListIterTest : public testing::Test {
protected:
    QxDListIterTest() {
        for (int i = 0; i < 10; ++i) {
            m_items.emplace_back(i);
        }
    }
    void fill(ItemNodes& list, const Numbers& numbers) {
        for (int number : numbers) {
            list.appendNode(&m_items[static_cast<std::size_t>(number)]);
        }
    }

    std::deque<Item> m_items;
    Keeper m_keeper;
};

TEST_F(QxDListIterTest, WalksBothWaysAndFromAnyCell) {
    ItemNodes& list = m_keeper.in;
    fill(list, {4, 5, 6, 7});
    using Iter = ItemNodesIter;
    expectUniform(Iter(&list), {4, 5, 6, 7});
    expectUniform(Iter(&list, QxIterBackward), {7, 6, 5, 4});
    QxDListCell* const third = list.pCellInPosition(3);
    expectUniform(Iter(&list, third), {6, 7});
    expectUniform(Iter(&list, third, QxIterBackward), {6, 5, 4});
    expectUniform(InIter(&m_keeper, third), {6, 7});
    Iter iter;
    EXPECT_EQ(iter.direction(), QxIterForward);
    EXPECT_EQ(static_cast<int>(iter), 0);
    iter.init(&list, QxIterBackward);
    EXPECT_EQ(iter.pNode(), &m_items[7]);
    EXPECT_EQ(static_cast<int>(iter), 1);
}

TEST_F(QxDListIterTest, NothingToWalkYieldsNothing) {
    QxDListCell loose(&m_items[0]);
    QxDListCell* const none = nullptr;
    EXPECT_EQ(ItemNodesIter().pNode(), nullptr);
    expectUniform(ItemNodesIter(nullptr), {});
    expectUniform(ItemNodesIter(nullptr, &loose), {});
    expectUniform(ItemNodesIter(&m_keeper.in, &loose), {});
    expectUniform(InAndOutIter(nullptr), {});
    expectUniform(InAndOutIter(&m_keeper), {});
    fill(m_keeper.out, {1});
    expectUniform(InAndOutIter(&m_keeper, none), {});
    expectUniform(InAndOutIter(&m_keeper, &loose), {});
    expectUniform(OddIter(nullptr), {});
    expectUniform(AllOutIter(nullptr), {});
    expectUniform(AllOddOutIter(), {});
}

TEST_F(QxDListIterTest, CombinedWalkGoesThroughTheFirstListThenTheSecond) {
    fill(m_keeper.in, {1, 2});
    expectUniform(InAndOutIter(&m_keeper), {1, 2});
    fill(m_keeper.out, {2, 3});
    expectUniform(InAndOutIter(&m_keeper), {1, 2, 2, 3});
    expectUniform(InAndOutIter(&m_keeper, QxIterBackward), {1, 2, 2, 3});
    expectUniform(InAndOutIter(&m_keeper, m_keeper.in.pLastCell()), {2, 2, 3});
    expectUniform(InAndOutIter(&m_keeper, m_keeper.out.pLastCell()), {3});
    expectUniform(EndsIter(&m_keeper), {1, 1, 3, 3});
    m_keeper.in.deleteAllCells();
    expectUniform(InAndOutIter(&m_keeper), {2, 3});
    InAndOutIter iter(&m_keeper);
    EXPECT_EQ(iter.phase(), 1);
    EXPECT_EQ(iter.pEdge(), &m_items[2]);
}

TEST_F(QxDListIterTest, FilteredWalkStopsOnlyOnAcceptedObjects) {
    fill(m_keeper.in, {2, 1, 4, 3, 6});
    fill(m_keeper.out, {0, 8});
    expectUniform(OddIter(&m_keeper), {1, 3});
    fill(m_keeper.out, {9});
    expectUniform(OddIter(&m_keeper), {1, 3, 9});
    expectUniform(OddIter(&m_keeper, m_keeper.in.pCellInPosition(3)), {3, 9});
}

TEST_F(QxDListIterTest, NestedWalkPassesOverOwnersWithoutObjects) {
    Keeper keepers[6];
    Keepers list;
    for (Keeper& keeper : keepers) {
        list.appendNode(&keeper);
    }
    expectUniform(AllOutIter(&list), {});
    fill(keepers[1].out, {1, 2});
    fill(keepers[4].out, {3});
    expectUniform(AllOutIter(&list), {1, 2, 3});
    expectUniform(AllOddOutIter(&list), {1, 3});
    fill(keepers[0].out, {5});
    fill(keepers[5].out, {7});
    expectUniform(AllOutIter(&list), {5, 1, 2, 3, 7});
    AllOutIter iter(&list);
    ++iter;
    EXPECT_EQ(iter.pCurrentOwner(), &keepers[1]);
}

TEST_F(QxDListIterTest, TheCurrentObjectMayLeaveOtherListsAndInRangeForItsOwn) {
    fill(m_keeper.in, {1, 2, 3});
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
    EXPECT_EQ(seen, (Numbers{1, 2, 3}));
    EXPECT_EQ(m_keeper.in.count(), 0);
}

}  // namespace
