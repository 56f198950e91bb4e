// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>

#include "qx/foundation/util/QxDListIter.h"

/// What iterators walk: QxDListIter and the walks here, which derive from it and put together
/// several lists or pass over some of the objects. QxTypedIter makes typed iterators of them.
///
/// `ListOf` stands for anything that std::invoke takes with the owner and that answers a pointer to
/// a list, null counting as empty: a function on `const Owner&`, a const member function, a field.
/// A null owner is walked like an empty one.

/// Walks one list that the owner keeps.
template <class O, auto ListOf>
class QxOwnerListIter : public QxDListIter {
public:
    using Owner = O;

    QxOwnerListIter() noexcept = default;
    explicit QxOwnerListIter(const Owner* owner, QxIterDirectionEnum direction = QxIterForward) {
        init(owner, direction);
    }
    QxOwnerListIter(const Owner* owner, QxDListCell* start,
                    QxIterDirectionEnum direction = QxIterForward) {
        init(owner, start, direction);
    }

    void init(const Owner* owner, QxIterDirectionEnum direction = QxIterForward) {
        QxDListIter::init(listOf(owner), direction);
    }
    void init(const Owner* owner, QxDListCell* start,
              QxIterDirectionEnum direction = QxIterForward) {
        QxDListIter::init(listOf(owner), start, direction);
    }

private:
    static const QxDList* listOf(const Owner* owner) {
        return owner != nullptr ? std::invoke(ListOf, *owner) : nullptr;
    }
};

template <class L>
struct QxListItself {
    const QxDList* operator()(const L& list) const { return &list; }
};

/// Walks a list given as what it is, a list of class `L`.
template <class L>
using QxTypedListIter = QxOwnerListIter<L, QxListItself<L>{}>;

/// Walks one list of the owner, then another, always forward. An object that stands in both is
/// visited twice.
template <class O, auto FirstOf, auto SecondOf>
class QxTwoListIter : public QxDListIter {
public:
    using Owner = O;

    QxTwoListIter() noexcept = default;
    explicit QxTwoListIter(const Owner* owner, QxIterDirectionEnum direction = QxIterForward) {
        init(owner, direction);
    }
    QxTwoListIter(const Owner* owner, QxDListCell* start) { init(owner, start); }

    /// The direction is taken for the sake of uniform calls and has no effect.
    void init(const Owner* owner, QxIterDirectionEnum = QxIterForward) {
        m_owner = owner;
        m_phase = 0;
        QxDListIter::init(owner != nullptr ? std::invoke(FirstOf, *owner) : nullptr);
        goOnInSecondList();
    }
    /// Starts at a cell of either list, O(position): the first cell before it tells which.
    void init(const Owner* owner, QxDListCell* start) {
        m_owner = owner;
        m_phase = 1;
        QxDListIter::init(nullptr);
        if (owner == nullptr || start == nullptr || start->isLinked() == 0) {
            return;
        }
        const QxDListCell* head = start;
        while (head->pPreviousCell() != nullptr) {
            head = head->pPreviousCell();
        }
        const QxDList* second = std::invoke(SecondOf, *owner);
        m_phase = second != nullptr && second->pFirstCell() == head ? 1 : 0;
        QxDListIter::init(m_phase == 1 ? second : std::invoke(FirstOf, *owner), start);
    }

    QxTwoListIter& operator++() override {
        QxDListIter::operator++();
        goOnInSecondList();
        return *this;
    }

    /// 0 in the first list, 1 in the second.
    int phase() const noexcept { return m_phase; }

private:
    void goOnInSecondList() {
        if (this->pCell() == nullptr && m_phase == 0 && m_owner != nullptr) {
            m_phase = 1;
            QxDListIter::init(std::invoke(SecondOf, *m_owner));
        }
    }

    const Owner* m_owner = nullptr;
    int m_phase = 0;
};

/// Walks what `Source` walks, but stops only on objects, seen as `T`, that `Accept` answers with
/// true or nonzero.
template <class T, class Source, auto Accept>
class QxFilteredIter : public Source {
public:
    using Owner = typename Source::Owner;

    QxFilteredIter() noexcept = default;
    explicit QxFilteredIter(const Owner* owner, QxIterDirectionEnum direction = QxIterForward)
        : Source(owner, direction) {
        skipRefused();
    }
    QxFilteredIter(const Owner* owner, QxDListCell* start) : Source(owner, start) { skipRefused(); }

    void init(const Owner* owner, QxIterDirectionEnum direction = QxIterForward) {
        Source::init(owner, direction);
        skipRefused();
    }
    void init(const Owner* owner, QxDListCell* start) {
        Source::init(owner, start);
        skipRefused();
    }

    QxFilteredIter& operator++() override {
        Source::operator++();
        skipRefused();
        return *this;
    }

private:
    void skipRefused() {
        while (this->pCell() != nullptr &&
               !std::invoke(Accept, static_cast<const T&>(*this->pObject()))) {
            Source::operator++();
        }
    }
};

/// Walks, for each owner that the typed iterator `OwnerIter` yields, the list that the owner keeps,
/// always forward; owners whose list is empty are passed over.
template <class OwnerIter, auto ListOf>
class QxNestedListIter : public QxDListIter {
public:
    using Owner = typename OwnerIter::Owner;

    QxNestedListIter() noexcept = default;
    explicit QxNestedListIter(const Owner* owner, QxIterDirectionEnum direction = QxIterForward) {
        init(owner, direction);
    }

    /// The direction is taken for the sake of uniform calls and has no effect.
    void init(const Owner* owner, QxIterDirectionEnum = QxIterForward) {
        m_owners.init(owner, QxIterForward);
        startList();
        goOnToNextOwner();
    }

    QxNestedListIter& operator++() override {
        QxDListIter::operator++();
        goOnToNextOwner();
        return *this;
    }

    /// The owner whose list the walk is in; null when it is over.
    auto* pCurrentOwner() const { return m_owners.pElement(); }

private:
    void goOnToNextOwner() {
        while (this->pCell() == nullptr && m_owners) {
            ++m_owners;
            startList();
        }
    }
    void startList() {
        QxDListIter::init(m_owners ? std::invoke(ListOf, *m_owners.pElement()) : nullptr);
    }

    OwnerIter m_owners;
};
