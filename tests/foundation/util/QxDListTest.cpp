// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <memory>
#include <sstream>

#include "foundation/util/UtilTestObjects.h"
#include "qx/foundation/util/QxDebugStream.h"
#include "support/TestRandom.h"

namespace {

using namespace utiltest;

using Numbers = std::vector<int>;

/// The typed operations of each noun under common names, so that one suite tests them all.
template <class L>
struct Ops;

#define QX_LIST_OPS(List, Noun)                                                                \
    template <>                                                                                \
    struct Ops<List> {                                                                         \
        static QxDListCell* insert(List& l, int way, QxDListCell* after, Item* i) {            \
            return way == 0   ? l.append##Noun(i)                                              \
                   : way == 1 ? l.prepend##Noun(i)                                             \
                   : way == 2 ? l.add##Noun(after, i)                                          \
                   : way == 3 ? l.append##Noun##IfNotInList(i)                                 \
                   : way == 4 ? l.prepend##Noun##IfNotInList(i)                                \
                              : l.add##Noun##IfNotInList(after, i);                            \
        }                                                                                      \
        static auto search(List& l, const Item* i) { return l.search##Noun(i); }               \
        static auto position(List& l, const Item* i) { return l.positionOf##Noun(i); }         \
        static QxObject* at(List& l, int position) { return l.p##Noun##InPosition(position); } \
        static QxObject* first(List& l) { return l.pFirst##Noun(); }                           \
        static QxObject* last(List& l) { return l.pLast##Noun(); }                             \
        static void cloneAll(List& l, const List& s) { l.copyAllCellsAnd##Noun##s(&s); }       \
        static void destroyAll(List& l) { l.deleteAllCellsAnd##Noun##s(); }                    \
    }
QX_LIST_OPS(QxDList, Object);
QX_LIST_OPS(ItemNodes, Node);
QX_LIST_OPS(ItemEdges, Edge);
QX_LIST_OPS(ItemGraphs, Graph);
QX_LIST_OPS(ItemManagers, GraphManager);
QX_LIST_OPS(ItemConnectors, Connector);
QX_LIST_OPS(ItemLabels, Label);
QX_LIST_OPS(ItemPairs, NodePair);
#undef QX_LIST_OPS

using Cell = QxDListCell;

/// The ways to take a list: at the end, at the front, behind a cell, or only a part of it; of each
/// the plain one, IfNotInList, the copy, and the copy IfNotInList.
template <class L>
constexpr int (*Takes[])(L& l, Cell* c, L* s, Cell* a, Cell* b) = {
    [](L& l, Cell*, L* s, Cell*, Cell*) { return l.appendList(s); },
    [](L& l, Cell*, L* s, Cell*, Cell*) { return l.appendListIfNotInList(s); },
    [](L& l, Cell*, L* s, Cell*, Cell*) { return l.copyAppendList(s); },
    [](L& l, Cell*, L* s, Cell*, Cell*) { return l.copyAppendListIfNotInList(s); },
    [](L& l, Cell*, L* s, Cell*, Cell*) { return l.prependList(s); },
    [](L& l, Cell*, L* s, Cell*, Cell*) { return l.prependListIfNotInList(s); },
    [](L& l, Cell*, L* s, Cell*, Cell*) { return l.copyPrependList(s); },
    [](L& l, Cell*, L* s, Cell*, Cell*) { return l.copyPrependListIfNotInList(s); },
    [](L& l, Cell* c, L* s, Cell*, Cell*) { return l.transferList(c, s); },
    [](L& l, Cell* c, L* s, Cell*, Cell*) { return l.transferListIfNotInList(c, s); },
    [](L& l, Cell* c, L* s, Cell*, Cell*) { return l.copyTransferList(c, s); },
    [](L& l, Cell* c, L* s, Cell*, Cell*) { return l.copyTransferListIfNotInList(c, s); },
    [](L& l, Cell* c, L* s, Cell* a, Cell* b) { return l.transferListPart(c, s, a, b); },
    [](L& l, Cell* c, L* s, Cell* a, Cell* b) { return l.transferListPartIfNotInList(c, s, a, b); },
    [](L& l, Cell* c, L* s, Cell* a, Cell* b) { return l.copyTransferListPart(c, s, a, b); },
    [](L& l, Cell* c, L* s, Cell* a, Cell* b) {
        return l.copyTransferListPartIfNotInList(c, s, a, b);
    }};

/// Random operations on two lists beside their models, illegal calls among them. The pool is small,
/// so that objects occur repeatedly, or large, so that whole lists are hashed.
template <class L>
class RandomLists {
public:
    RandomLists(std::uint32_t seed, int poolSize) : m_random(seed) {
        for (int i = 0; i < poolSize; ++i) {
            m_pool.emplace_back(i);
        }
        for (int i = 0; i < poolSize; ++i) {
            insert(anySide());
        }
    }

    void perform() {
        const int operation = m_random.below(8);
        SCOPED_TRACE(operation);
        Side& side = anySide();
        switch (operation) {
            case 0:
                return discard(side);
            case 1:
                return useEmbeddedCell(side);
            case 2:
                return moveCell(side);
            case 3:
                return take(side, &side == &m_side[0] ? m_side[1] : m_side[0]);
            case 4:
                return makeIllegalCalls(side, &side == &m_side[0] ? m_side[1] : m_side[0]);
            default:
                return insert(side);
        }
    }
    void compare() {
        for (Side& side : m_side) {
            Numbers backward = numbersOf(side.list, QxIterBackward);
            std::ranges::reverse(backward);
            ASSERT_EQ(side.list.checkInvariants(), 1);
            ASSERT_EQ(numbersOf(side.list), side.model);
            ASSERT_EQ(backward, side.model);
            ASSERT_EQ(side.list.count(), side.count());
            askQuestions(side);
        }
        EXPECT_EQ(m_side[0].list.compare(&m_side[1].list), m_side[0].model == m_side[1].model);
    }

private:
    struct Side {
        L list;
        Numbers model;

        int count() const { return static_cast<int>(model.size()); }
        int number(int index) const { return model[static_cast<std::size_t>(index)]; }
        bool holds(int number) const { return std::ranges::count(model, number) != 0; }
        /// Null for -1, behind which is the front.
        Cell* cellAt(int index) { return list.pCellInPosition(index + 1); }
        void insertAfter(int index, int number) {
            model.insert(model.begin() + (index + 1), number);
        }
        void erase(int index) { model.erase(model.begin() + index); }
    };

    Side& anySide() { return m_side[m_random.below(2)]; }
    int anyPlace(const Side& side) { return m_random.below(side.count() + 1) - 1; }
    Item& anyItem() {
        return m_pool[static_cast<std::size_t>(m_random.below(static_cast<int>(m_pool.size())))];
    }

    void insert(Side& side) {
        Item& item = anyItem();
        const int way = m_random.below(6);
        const int end = side.count() - 1;
        const int place = way % 3 == 0 ? end : way % 3 == 1 ? -1 : anyPlace(side);
        const bool accepted = way < 3 || !side.holds(item.number());
        const Cell* const cell = Ops<L>::insert(side.list, way, side.cellAt(place), &item);
        if (accepted) {
            side.insertAfter(place, item.number());
        }
        EXPECT_EQ(cell, accepted ? side.cellAt(place + 1) : nullptr) << way;
    }
    void discard(Side& side) {
        if (side.count() > 0) {
            const int index = m_random.below(side.count());
            const auto* object = static_cast<Item*>(side.list.discardCell(side.cellAt(index)));
            EXPECT_EQ(object->number(), side.number(index));
            side.erase(index);
        }
    }
    /// Puts the embedded cell of an item into a list, or takes it out where it stands.
    void useEmbeddedCell(Side& side) {
        Item& item = anyItem();
        if (item.pCell()->isLinked() == 0) {
            const int place = anyPlace(side);
            side.list.insertCell(item.pCell(), side.cellAt(place));
            return side.insertAfter(place, item.number());
        }
        Side& home = m_side[0].list.positionOfCell(item.pCell()) > 0 ? m_side[0] : m_side[1];
        home.erase(home.list.positionOfCell(item.pCell()) - 1);
        home.list.removeCell(item.pCell());
        EXPECT_EQ(item.pCell()->isLinked(), 0);
    }
    void moveCell(Side& source) {
        Side& target = anySide();
        if (source.count() > 0) {
            const int index = m_random.below(source.count());
            const int number = source.number(index);
            EXPECT_NE(target.list.transferCell(source.cellAt(index), &source.list), nullptr);
            source.erase(index);
            target.model.push_back(number);
        }
    }
    void take(Side& source, Side& target) {
        if (target.count() > 300) {
            target.model.clear();
            target.list.deleteAllCells();
        }
        const int way = m_random.below(source.count() > 0 ? 16 : 12);
        const bool whole = way < 12;
        const int first = whole ? 0 : m_random.below(source.count());
        const int last =
            whole ? source.count() - 1 : first + m_random.below(source.count() - first);
        int place = way < 4 ? target.count() - 1 : way < 8 ? -1 : anyPlace(target);
        EXPECT_EQ(Takes<L>[way](target.list, target.cellAt(place), &source.list,
                                source.cellAt(first), source.cellAt(last)),
                  1);
        Numbers kept;
        for (int i = 0; i < source.count(); ++i) {
            const int number = source.number(i);
            const bool meant = i >= first && i <= last && (way % 2 == 0 || !target.holds(number));
            if (meant) {
                target.insertAfter(place++, number);
            }
            if (!meant || way % 4 >= 2) {
                kept.push_back(number);
            }
        }
        source.model = kept;
    }

    void makeIllegalCalls(Side& side, Side& otherSide) {
        L& list = side.list;
        L& other = otherSide.list;
        Cell loose(&anyItem());
        Cell blank(nullptr);
        for (int way = 0; way < 6; ++way) {
            EXPECT_EQ(Ops<L>::insert(list, way, list.pFirstCell(), nullptr), nullptr) << way;
        }
        EXPECT_EQ(Ops<L>::insert(list, 2, &loose, &anyItem()), nullptr);
        EXPECT_EQ(Ops<L>::insert(list, 5, &loose, &anyItem()), nullptr);
        for (Cell* const cell : {&blank, list.pLastCell(), static_cast<Cell*>(nullptr)}) {
            EXPECT_EQ(list.appendCell(cell), nullptr);
        }
        for (Cell* const cell : {&loose, static_cast<Cell*>(nullptr)}) {
            EXPECT_EQ(list.removeCell(cell), nullptr);
            EXPECT_EQ(list.discardCell(cell), nullptr);
            EXPECT_EQ(list.transferCell(cell, &other), nullptr);
            EXPECT_EQ(list.positionOfCell(cell), 0);
        }
        Cell* const first = list.pFirstCell();
        Cell* const last = list.pLastCell();
        EXPECT_EQ(list.transferCell(first, &list, first), nullptr);
        EXPECT_EQ(list.transferCell(first, &list, &loose), nullptr);
        EXPECT_EQ(list.transferCell(first, nullptr), nullptr);
        for (int way = 0; way < 16; ++way) {
            const auto take = Takes<L>[way];
            EXPECT_EQ(take(list, nullptr, &list, first, last), 0) << way;
            EXPECT_EQ(take(list, nullptr, nullptr, first, last), 0) << way;
            EXPECT_TRUE(way < 8 || take(other, &loose, &list, first, last) == 0) << way;
            EXPECT_TRUE(way < 12 || take(other, nullptr, &list, first, nullptr) == 0) << way;
            EXPECT_TRUE(way < 12 || take(other, nullptr, &list, &loose, &loose) == 0) << way;
            EXPECT_TRUE(way < 12 || first == last || take(other, nullptr, &list, last, first) == 0);
        }
        EXPECT_EQ(list.compare(nullptr), 0);
    }

    void askQuestions(Side& side) {
        const Item& item = anyItem();
        const auto found = std::ranges::find(side.model, item.number());
        const int position =
            found == side.model.end() ? 0 : static_cast<int>(found - side.model.begin()) + 1;
        EXPECT_EQ(Ops<L>::position(side.list, &item), position);
        EXPECT_EQ(Ops<L>::search(side.list, &item), side.list.pCellInPosition(position));
        EXPECT_EQ(Ops<L>::at(side.list, position), position != 0 ? &item : nullptr);
        EXPECT_EQ(Ops<L>::at(side.list, side.count() + 1), nullptr);
        EXPECT_EQ(Ops<L>::at(side.list, -3), nullptr);
        EXPECT_EQ(Ops<L>::first(side.list), Ops<L>::at(side.list, 1));
        EXPECT_EQ(Ops<L>::last(side.list), Ops<L>::at(side.list, side.count()));
        EXPECT_EQ(side.list.isEmpty(), side.model.empty());
    }

    qxtest::TestRandom m_random;
    std::deque<Item> m_pool;
    Side m_side[2];
};

template <class L>
class ListOf : public testing::Test {};

using ListTypes = testing::Types<QxDList, ItemNodes, ItemEdges, ItemGraphs, ItemManagers,
                                 ItemConnectors, ItemLabels, ItemPairs>;
TYPED_TEST_SUITE(ListOf, ListTypes);

TYPED_TEST(ListOf, AgreesWithVectorsOverRandomOperations) {
    for (std::uint32_t run = 0; run < 12; ++run) {
        const std::uint32_t seed = qxtest::testSeed(1) + run;
        SCOPED_TRACE(qxtest::seedTrace(seed));
        RandomLists<TypeParam> lists(seed, run % 3 == 0 ? 150 : 7);
        for (int step = 0; step < 400 && !this->HasFailure(); ++step) {
            SCOPED_TRACE(step);
            lists.perform();
            lists.compare();
        }
        ASSERT_FALSE(this->HasFailure());
    }
    EXPECT_EQ(Item::alive, 0);
}

TYPED_TEST(ListOf, CopiesKeepClassAndShareObjectsUnlessThoseAreClonedToo) {
    {
        Item items[] = {Item(1), Item(2)};
        TypeParam list;
        for (Item& item : items) {
            Ops<TypeParam>::insert(list, 0, nullptr, &item);
        }
        const std::unique_ptr<TypeParam> deep(list.cloneObject());
        const std::unique_ptr<TypeParam> attributes(list.cloneAttributes());
        EXPECT_EQ(deep->compare(&list), 1);
        EXPECT_NE(dynamic_cast<TypeParam*>(static_cast<QxObject*>(deep.get())), nullptr);
        EXPECT_EQ(deep->sizeOf(), list.sizeOf());
        EXPECT_EQ(attributes->isEmpty(), 1);
        attributes->copyObject(&list);
        attributes->copyObject(attributes.get());
        attributes->copyObject(nullptr);
        attributes->copyAllCells(nullptr);
        EXPECT_EQ(attributes->compare(&list), 1);
        const TypeParam& alias = list;
        list = alias;
        EXPECT_EQ(list.count(), 2);

        Ops<TypeParam>::cloneAll(*deep, list);
        Ops<TypeParam>::cloneAll(*deep, *deep);
        EXPECT_EQ(numbersOf(*deep), (Numbers{1, 2}));
        EXPECT_EQ(Ops<TypeParam>::search(*deep, &items[0]), nullptr);
        EXPECT_EQ(Item::alive, 4);
        Ops<TypeParam>::insert(*deep, 0, nullptr, static_cast<Item*>(deep->pFirstObject()));
        deep->appendCell((new Item(3))->pCell());
        Ops<TypeParam>::destroyAll(*deep);
        EXPECT_EQ(deep->checkInvariants() + deep->isEmpty(), 2);
    }
    EXPECT_EQ(Item::alive, 0) << "each object is destroyed once, with its own cell too";
}

TEST(QxDList, LeavesEmbeddedCellsUsableWhenItIsDestroyed) {
    Item item(5);
    QxDList survivor;
    {
        QxDList list;
        list.appendCell(item.pCell());
        list.appendObject(&item);
    }
    EXPECT_EQ(survivor.appendCell(item.pCell()), item.pCell());
    EXPECT_EQ(survivor.discardCell(item.pCell()), &item);
}

TEST(QxDList, SaysWhatIsBroken) {
    Item items[] = {Item(1), Item(2)};
    QxDList right;
    QxDList wrong;
    right.appendCell(items[0].pCell());
    right.appendCell(items[1].pCell());
    wrong.removeCell(items[1].pCell());
    std::ostringstream said;
    qxSetDebugStream(&said);
    EXPECT_EQ(right.checkInvariants(), 0);
    qxSetDebugStream(nullptr);
    EXPECT_NE(said.str().find("fewer cells"), std::string::npos) << said.str();
}

TEST(QxDList, MergesLongListsInLinearTime) {
    const auto merge = [](int count) {
        std::deque<Item> items;
        QxDList list;
        QxDList other;
        for (int i = 0; i < count; ++i) {
            items.emplace_back(i);
            (i % 2 == 0 ? list : other).appendObject(&items.back());
        }
        list.copyAppendListIfNotInList(&other);
        list.appendListIfNotInList(&other);
        EXPECT_EQ(list.count() + other.count(), count + count / 2);
    };
    EXPECT_LT(growth(merge, 1000), 100);
}

class Special : public Item {};
class Specials : public QxNodesOf<Special, Specials> {
public:
    using QxNodesOf::QxNodesOf;
};

TEST(QxTypedDList, CastsAcrossAndDown) {
    Special special;
    ItemNodes items;
    items.appendNode(&special);
    Special* const same = Specials::castCross(&items)->pFirstNode();
    EXPECT_EQ(same, &special);
    const ItemNodes& constant = items;
    EXPECT_EQ(Specials::constCastCross(&constant)->positionOfNode(&special), 1);
    QxObject* const object = &items;
    EXPECT_EQ(ItemNodes::castDown(object), &items);
    EXPECT_EQ(ItemEdges::castDown(object), nullptr);
}

}  // namespace
