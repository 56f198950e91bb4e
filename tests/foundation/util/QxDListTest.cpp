// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <random>
#include <sstream>

#include "foundation/util/UtilTestObjects.h"
#include "qx/foundation/util/QxDebugStream.h"

namespace {

using namespace utiltest;

using Numbers = std::vector<int>;

/// The typed operations of each noun under common names, so that one suite tests them all.
template <class L>
struct Ops;

#define QX_LIST_OPS(List, Noun)                                                                \
    template <>                                                                                \
    struct Ops<List> {                                                                         \
        static auto append(List& l, Item* i) { return l.append##Noun(i); }                     \
        static auto prepend(List& l, Item* i) { return l.prepend##Noun(i); }                   \
        static auto add(List& l, QxDListCell* c, Item* i) { return l.add##Noun(c, i); }        \
        static auto appendNew(List& l, Item* i) { return l.append##Noun##IfNotInList(i); }     \
        static auto prependNew(List& l, Item* i) { return l.prepend##Noun##IfNotInList(i); }   \
        static auto addNew(List& l, QxDListCell* c, Item* i) {                                 \
            return l.add##Noun##IfNotInList(c, i);                                             \
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

/// A list and what it ought to hold.
template <class L>
struct Modelled {
    L list;
    Numbers model;

    bool holds(int number) const { return std::ranges::count(model, number) != 0; }
    int count() const { return static_cast<int>(model.size()); }
    QxDListCell* cellAt(int index) { return list.pCellInPosition(index + 1); }
    void insertAfter(int index, int number) { model.insert(model.begin() + (index + 1), number); }
    void erase(int index) { model.erase(model.begin() + index); }
    int indexOf(const QxDListCell* cell) const { return list.positionOfCell(cell) - 1; }

    std::string disagreement() const {
        if (list.checkInvariants() == 0) {
            return "broken links";
        }
        Numbers backward = numbersOf(list, QxIterBackward);
        std::ranges::reverse(backward);
        const bool same = numbersOf(list) == model && backward == model && list.count() == count();
        return same ? ""
                    : "contents differ: " + testing::PrintToString(numbersOf(list)) +
                          " instead of " + testing::PrintToString(model);
    }
};

/// Random operations on two lists beside their models, illegal calls among them. The pool is small,
/// so that objects occur repeatedly, or large, so that whole lists are hashed.
template <class L>
class RandomOperations {
public:
    RandomOperations(unsigned seed, int poolSize) : m_random(seed) {
        for (int i = 0; i < poolSize; ++i) {
            m_pool.emplace_back(i);
        }
        for (int i = 0; i < poolSize; ++i) {
            addObject(any(2), any(2));
        }
    }
    ~RandomOperations() {
        m_side[0].list.deleteAllCells();
        m_side[1].list.deleteAllCells();
    }

    /// Empty when all went well, else the first fault and the operations that led to it.
    std::string run(int steps) {
        for (int step = 0; step < steps && m_fault.empty(); ++step) {
            performAny();
            for (auto& side : m_side) {
                noteUnless(side.disagreement().empty(), side.disagreement());
            }
        }
        return m_fault.empty() ? "" : m_fault + "\nafter:" + m_log.str();
    }

private:
    using Side = Modelled<L>;

    int any(int bound) { return static_cast<int>(m_random() % static_cast<unsigned>(bound)); }
    /// -1 stands for the front, where a null cell inserts.
    int anyPlace(const Side& side) { return any(side.count() + 1) - 1; }
    Item& anyItem() {
        return m_pool[static_cast<std::size_t>(any(static_cast<int>(m_pool.size())))];
    }
    QxDListCell* cellOrFront(Side& side, int index) { return side.cellAt(index); }

    void noteUnless(bool holds, const std::string& what) {
        if (!holds && m_fault.empty()) {
            m_fault = what;
        }
    }
    template <class... Args>
    void log(const char* operation, Args... args) {
        m_log << ' ' << operation << '(';
        ((m_log << args << ' '), ...);
        m_log << ')';
    }

    void performAny() {
        const int from = any(2);
        switch (any(10)) {
            case 0:
            case 1:
                return addObject(from, any(2));
            case 2:
            case 3:
                return addAtEnd(from);
            case 4:
                return dropCell(from);
            case 5:
                return useEmbeddedCell(from);
            case 6:
                return moveCell(from);
            case 7:
                return takeList(from, any(2), any(2), any(3) == 0);
            case 8:
                return illegalCalls(from);
            default:
                return askQuestions(from);
        }
    }

    void addObject(int to, int onlyNew) {
        Side& side = m_side[to];
        Item& item = anyItem();
        const int place = anyPlace(side);
        log("add", to, onlyNew, place, item.number());
        QxDListCell* const after = cellOrFront(side, place);
        const bool expected = onlyNew == 0 || !side.holds(item.number());
        const QxDListCell* cell = onlyNew != 0 ? Ops<L>::addNew(side.list, after, &item)
                                               : Ops<L>::add(side.list, after, &item);
        noteUnless((cell != nullptr) == expected, "add accepted or refused wrongly");
        if (expected) {
            side.insertAfter(place, item.number());
        }
    }

    void addAtEnd(int to) {
        Side& side = m_side[to];
        Item& item = anyItem();
        const int form = any(4);
        log("addAtEnd", to, form, item.number());
        const bool wasThere = side.holds(item.number());
        switch (form) {
            case 0:
                Ops<L>::append(side.list, &item);
                break;
            case 1:
                Ops<L>::prepend(side.list, &item);
                break;
            case 2:
                Ops<L>::appendNew(side.list, &item);
                break;
            default:
                Ops<L>::prependNew(side.list, &item);
        }
        if (form < 2 || !wasThere) {
            side.insertAfter(form % 2 == 0 ? side.count() - 1 : -1, item.number());
        }
    }

    void dropCell(int from) {
        Side& side = m_side[from];
        if (side.count() == 0) {
            return;
        }
        const int index = any(side.count());
        log("drop", from, index);
        const QxObject* object = side.list.discardCell(side.cellAt(index));
        noteUnless(static_cast<const Item*>(object)->number() == side.model[index],
                   "discardCell answers another object");
        side.erase(index);
    }

    /// Puts the embedded cell of an item into a list, or takes it out where it stands.
    void useEmbeddedCell(int to) {
        Item& item = anyItem();
        log("embedded", to, item.number());
        if (item.pCell()->isLinked() == 0) {
            Side& side = m_side[to];
            const int place = anyPlace(side);
            side.list.insertCell(item.pCell(), cellOrFront(side, place));
            side.insertAfter(place, item.number());
            return;
        }
        Side& home = m_side[0].indexOf(item.pCell()) >= 0 ? m_side[0] : m_side[1];
        home.erase(home.indexOf(item.pCell()));
        home.list.removeCell(item.pCell());
        noteUnless(item.pCell()->isLinked() == 0, "a removed cell still counts as linked");
    }

    void moveCell(int from) {
        Side& source = m_side[from];
        Side& target = m_side[any(2)];
        if (source.count() == 0) {
            return;
        }
        const int index = any(source.count());
        log("moveCell", from, index, &target == &source);
        const int number = source.model[static_cast<std::size_t>(index)];
        target.list.transferCell(source.cellAt(index), &source.list);
        source.erase(index);
        target.model.push_back(number);
    }

    /// Moves or copies a part of one list (or all of it) into the other.
    void takeList(int from, int copy, int onlyNew, bool whole) {
        Side& source = m_side[from];
        Side& target = m_side[1 - from];
        if (source.count() == 0 || target.count() > 600) {
            return clear(1 - from);
        }
        const int first = whole ? 0 : any(source.count());
        const int last = whole ? source.count() - 1 : first + any(source.count() - first);
        const int place = anyPlace(target);
        log("take", from, copy, onlyNew, first, last, place);
        QxDListCell* const after = cellOrFront(target, place);
        const int done = whole ? takeWhole(target.list, after, source.list, copy, onlyNew)
                               : takePart(target.list, after, source, first, last, copy, onlyNew);
        noteUnless(done == 1, "a list was refused");
        modelTake(source, target, first, last, place, copy, onlyNew);
    }

    static int takeWhole(L& target, QxDListCell* after, L& source, int copy, int onlyNew) {
        if (after == target.pLastCell()) {
            return copy != 0      ? onlyNew != 0 ? target.copyAppendListIfNotInList(&source)
                                                 : target.copyAppendList(&source)
                        : onlyNew != 0 ? target.appendListIfNotInList(&source)
                                  : target.appendList(&source);
        }
        if (after == nullptr) {
            return copy != 0      ? onlyNew != 0 ? target.copyPrependListIfNotInList(&source)
                                                 : target.copyPrependList(&source)
                        : onlyNew != 0 ? target.prependListIfNotInList(&source)
                                  : target.prependList(&source);
        }
        return copy != 0      ? onlyNew != 0 ? target.copyTransferListIfNotInList(after, &source)
                                             : target.copyTransferList(after, &source)
                    : onlyNew != 0 ? target.transferListIfNotInList(after, &source)
                              : target.transferList(after, &source);
    }

    static int takePart(L& target, QxDListCell* after, Side& source, int first, int last, int copy,
                        int onlyNew) {
        QxDListCell* const begin = source.cellAt(first);
        QxDListCell* const end = source.cellAt(last);
        L* const list = &source.list;
        return copy != 0      ? onlyNew != 0
                                    ? target.copyTransferListPartIfNotInList(after, list, begin, end)
                                    : target.copyTransferListPart(after, list, begin, end)
                    : onlyNew != 0 ? target.transferListPartIfNotInList(after, list, begin, end)
                              : target.transferListPart(after, list, begin, end);
    }

    static void modelTake(Side& source, Side& target, int first, int last, int place, int copy,
                          int onlyNew) {
        Numbers kept(source.model.begin(), source.model.begin() + first);
        for (int i = first; i <= last; ++i) {
            const int number = source.model[static_cast<std::size_t>(i)];
            const bool taken = onlyNew == 0 || !target.holds(number);
            if (taken) {
                target.insertAfter(place++, number);
            }
            if (!taken || copy != 0) {
                kept.push_back(number);
            }
        }
        kept.insert(kept.end(), source.model.begin() + (last + 1), source.model.end());
        source.model = kept;
    }

    void clear(int which) {
        log("clear", which);
        m_side[which].list.deleteAllCells();
        m_side[which].model.clear();
    }

    void illegalCalls(int on) {
        Side& side = m_side[on];
        L& list = side.list;
        log("illegal", on);
        QxDListCell loose(&anyItem());
        QxDListCell blank(nullptr);
        bool refused = Ops<L>::append(list, nullptr) == nullptr &&
                       Ops<L>::prependNew(list, nullptr) == nullptr &&
                       Ops<L>::add(list, &loose, &anyItem()) == nullptr &&
                       list.appendCell(&blank) == nullptr && list.appendCell(nullptr) == nullptr &&
                       list.removeCell(&loose) == nullptr && list.removeCell(nullptr) == nullptr &&
                       list.discardCell(&loose) == nullptr &&
                       list.transferCell(&loose, &list) == nullptr &&
                       list.appendList(nullptr) == 0 && list.appendList(&list) == 0 &&
                       list.copyPrependList(&list) == 0 && list.appendListIfNotInList(&list) == 0 &&
                       list.transferList(&loose, &m_side[1 - on].list) == 0 &&
                       Ops<L>::at(list, 0) == nullptr && Ops<L>::at(list, -3) == nullptr &&
                       Ops<L>::at(list, side.count() + 1) == nullptr &&
                       list.positionOfCell(&loose) == 0 && list.compare(nullptr) == 0;
        if (side.count() > 0) {
            L& other = m_side[1 - on].list;
            QxDListCell* const first = list.pFirstCell();
            QxDListCell* const last = list.pLastCell();
            refused = refused && list.appendCell(last) == nullptr &&
                      list.transferCell(first, &list, first) == nullptr &&
                      other.transferListPart(nullptr, &list, first, nullptr) == 0 &&
                      list.transferListPart(nullptr, &list, first, first) == 0 &&
                      (side.count() == 1 ||
                       (other.transferListPart(nullptr, &list, last, first) == 0 &&
                        other.copyTransferListPart(nullptr, &list, last, first) == 0));
        }
        noteUnless(refused, "an illegal call was accepted");
    }

    void askQuestions(int on) {
        Side& side = m_side[on];
        const Item& item = anyItem();
        const auto found = std::ranges::find(side.model, item.number());
        const int position =
            found == side.model.end() ? 0 : static_cast<int>(found - side.model.begin()) + 1;
        const QxDListCell* cell = Ops<L>::search(side.list, &item);
        noteUnless(Ops<L>::position(side.list, &item) == position &&
                       cell == side.list.pCellInPosition(position) &&
                       Ops<L>::at(side.list, position) == (position != 0 ? &item : nullptr),
                   "search and positions disagree");
        noteUnless(Ops<L>::first(side.list) == Ops<L>::at(side.list, 1) &&
                       Ops<L>::last(side.list) == Ops<L>::at(side.list, side.count()),
                   "the ends disagree");
        const bool same = m_side[0].model == m_side[1].model;
        noteUnless(m_side[0].list.compare(&m_side[1].list) == (same ? 1 : 0), "compare is wrong");
        const L copy(side.list);
        noteUnless(copy.compare(&side.list) == 1 && copy.sizeOf() == side.list.sizeOf(),
                   "a copy differs");
    }

    std::mt19937 m_random;
    std::deque<Item> m_pool;
    Side m_side[2];
    std::string m_fault;
    std::ostringstream m_log;
};

template <class L>
class ListOf : public testing::Test {};

using ListTypes = testing::Types<QxDList, ItemNodes, ItemEdges, ItemGraphs, ItemManagers,
                                 ItemConnectors, ItemLabels, ItemPairs>;
TYPED_TEST_SUITE(ListOf, ListTypes);

TYPED_TEST(ListOf, AgreesWithTheModelOverRandomOperations) {
    for (unsigned seed = 1; seed <= 12; ++seed) {
        const int poolSize = seed % 3 == 0 ? 150 : 7;
        const std::string fault = RandomOperations<TypeParam>(seed, poolSize).run(400);
        ASSERT_EQ(fault, "") << "seed " << seed << ", pool of " << poolSize;
    }
    EXPECT_EQ(Item::alive, 0);
}

TYPED_TEST(ListOf, ClonesKeepClassAndShareTheObjects) {
    Item items[] = {Item(1), Item(2), Item(1)};
    TypeParam list;
    for (Item& item : items) {
        Ops<TypeParam>::append(list, &item);
    }
    TypeParam* const deep = list.cloneObject();
    EXPECT_EQ(deep->compare(&list), 1);
    EXPECT_NE(dynamic_cast<TypeParam*>(static_cast<QxObject*>(deep)), nullptr);
    deep->vRelease();
    TypeParam* const attributes = list.cloneAttributes();
    EXPECT_EQ(attributes->isEmpty(), 1);
    attributes->copyObject(&list);
    EXPECT_EQ(attributes->compare(&list), 1);
    attributes->copyObject(attributes);
    attributes->copyObject(nullptr);
    EXPECT_EQ(attributes->compare(&list), 1);
    attributes->vRelease();
    TypeParam& alias = list;
    list = alias;
    EXPECT_EQ(list.count(), 3);
}

TYPED_TEST(ListOf, ClonedObjectsAreIndependentAndDestroyedOnce) {
    {
        Item one(1);
        Item two(2);
        TypeParam list;
        Ops<TypeParam>::append(list, &one);
        Ops<TypeParam>::append(list, &two);
        TypeParam clones;
        Ops<TypeParam>::append(clones, &one);
        Ops<TypeParam>::cloneAll(clones, list);
        EXPECT_EQ(numbersOf(clones), (Numbers{1, 2}));
        EXPECT_EQ(Ops<TypeParam>::search(clones, &one), nullptr);
        EXPECT_EQ(Item::alive, 4);
        Ops<TypeParam>::append(clones, static_cast<Item*>(clones.pFirstObject()));
        Ops<TypeParam>::destroyAll(clones);
        EXPECT_EQ(clones.count(), 0);
        EXPECT_EQ(Item::alive, 2);
    }
    EXPECT_EQ(Item::alive, 0);
}

TEST(QxDList, DestroysObjectsWhoseOwnCellsStandInIt) {
    QxDList list;
    for (int i = 0; i < 3; ++i) {
        list.appendCell((new Item(i))->pCell());
    }
    list.deleteAllCellsAndObjects();
    EXPECT_EQ(list.checkInvariants(), 1);
    EXPECT_EQ(Item::alive, 0);
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
    EXPECT_EQ(item.pCell()->isLinked(), 0);
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

TEST(QxDList, MergesLongListsWithoutQuadraticWork) {
    constexpr int Count = 200000;
    std::deque<Item> items;
    QxDList list;
    QxDList other;
    for (int i = 0; i < Count; ++i) {
        items.emplace_back(i);
        (i % 2 == 0 ? list : other).appendObject(&items.back());
    }
    list.copyAppendListIfNotInList(&other);
    EXPECT_EQ(list.count(), Count);
    list.copyAppendListIfNotInList(&other);
    EXPECT_EQ(list.count(), Count);
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
