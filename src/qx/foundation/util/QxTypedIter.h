// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <iterator>
#include <utility>

#include "qx/foundation/util/QxIterSources.h"

/// Answers the object of a walk's current cell as a `T`; null when the walk is over. A function
/// object rather than a function, for that needs `T` only when it is called.
template <class T>
struct QxCurrentAs {
    T* operator()(const QxDListIter& walk) const { return static_cast<T*>(walk.pObject()); }
};

/// The facade of all iterators: a walk over `Source` that yields `T` pointers, made of the current
/// place by `ElementOf`, a function of the source.
///
/// In a range-for the walk has read its next links before the body runs, so that the body may take
/// the current object out of any list, the walked one too, and discard it:
///
///     for (QxNode* node : QxNodeDListIter(&list)) { graph->discardNode(node); }
///
/// What hangs on the object may go with it. The places that follow and yield the same object again
/// (the second end of a self-loop, parallel edges that lead to one node) are yielded if they are
/// still there, and passed over if they went with the object. The next other object must stay, and
/// so must the owner of the walked list. Range-for consumes the walk; init starts it anew.
///
/// Named iterators are three lines, on a list or on what an owner keeps (QxIterSources.h):
///
///     class QX_API QxNodeDListIter : public QxNodeIterOf<QxNode, QxTypedListIter<QxNodeDList>> {
///     public:
///         using QxNodeIterOf::QxNodeIterOf;
///     };
///
///     class QX_API QxNodeIter
///         : public QxNodeIterOf<QxNode, QxOwnerListIter<QxGraph, &QxGraph::pNodeList>> {
///     public:
///         using QxNodeIterOf::QxNodeIterOf;
///     };
///
/// In place of the member function, a free one that takes the owner names its list as well.
template <class T, class Source, auto ElementOf = QxCurrentAs<T>{}>
class QxTypedIter : public Source {
public:
    using Element = T;
    using Source::Source;

    T* pElement() const { return ElementOf(*this); }

    QxTypedIter& operator++() final {
        Source::operator++();
        return *this;
    }

    /// Behind the walk it reads from by one object: by one place, or by all the places next to
    /// each other that yield that object.
    class Cursor {
    public:
        explicit Cursor(QxTypedIter* walk) : m_walk(walk) { ++*this; }
        Cursor(const Cursor&) = delete;
        Cursor& operator=(const Cursor&) = delete;
        ~Cursor() { forgetRepetitions(); }

        T* operator*() const { return m_element; }
        Cursor& operator++() {
            if (m_repetitions > 0 && repetitionsStand()) {
                --m_repetitions;
                return *this;
            }
            forgetRepetitions();
            if (!*m_walk) {
                m_walk = nullptr;
                return *this;
            }
            m_element = m_walk->pElement();
            ++*m_walk;
            while (m_element != nullptr && *m_walk && m_walk->pElement() == m_element) {
                noteRepetition();
                ++*m_walk;
            }
            if (m_last != nullptr) {
                m_kept = m_last->pObject();
                m_kept->vAddRef();
            }
            return *this;
        }
        bool operator==(std::default_sentinel_t) const { return m_walk == nullptr; }

    private:
        void noteRepetition() {
            ++m_repetitions;
            m_last = m_walk->pCell();
            m_afterLast = m_walk->direction() == QxIterBackward ? m_last->pPreviousCell()
                                                                : m_last->pNextCell();
            m_list = m_walk->pList();
        }
        /// Asks the neighbour of the last repetition: what is beyond it must stay, whereas its own
        /// cell may be gone. The object there is kept, so that no new one takes its address.
        bool repetitionsStand() const {
            if (m_walk->direction() == QxIterBackward) {
                return (m_afterLast != nullptr ? m_afterLast->pNextCell() : m_list->pFirstCell()) ==
                       m_last;
            }
            return (m_afterLast != nullptr ? m_afterLast->pPreviousCell() : m_list->pLastCell()) ==
                   m_last;
        }
        void forgetRepetitions() {
            m_repetitions = 0;
            m_last = nullptr;
            if (QxObject* const kept = std::exchange(m_kept, nullptr)) {
                kept->vRelease();
            }
        }

        QxTypedIter* m_walk;
        T* m_element = nullptr;
        std::int32_t m_repetitions = 0;
        const QxDListCell* m_last = nullptr;
        const QxDListCell* m_afterLast = nullptr;
        const QxDList* m_list = nullptr;
        QxObject* m_kept = nullptr;
    };
    Cursor begin() { return Cursor(this); }
    std::default_sentinel_t end() const { return {}; }
};

/// @name The facade with the accessor named after what it yields
/// @{
template <class N, class Source, auto ElementOf = QxCurrentAs<N>{}>
class QxNodeIterOf : public QxTypedIter<N, Source, ElementOf> {
public:
    using QxTypedIter<N, Source, ElementOf>::QxTypedIter;
    N* pNode() const { return this->pElement(); }
};

template <class E, class Source, auto ElementOf = QxCurrentAs<E>{}>
class QxEdgeIterOf : public QxTypedIter<E, Source, ElementOf> {
public:
    using QxTypedIter<E, Source, ElementOf>::QxTypedIter;
    E* pEdge() const { return this->pElement(); }
};

template <class G, class Source, auto ElementOf = QxCurrentAs<G>{}>
class QxGraphIterOf : public QxTypedIter<G, Source, ElementOf> {
public:
    using QxTypedIter<G, Source, ElementOf>::QxTypedIter;
    G* pGraph() const { return this->pElement(); }
};

template <class M, class Source, auto ElementOf = QxCurrentAs<M>{}>
class QxGraphManagerIterOf : public QxTypedIter<M, Source, ElementOf> {
public:
    using QxTypedIter<M, Source, ElementOf>::QxTypedIter;
    M* pGraphManager() const { return this->pElement(); }
};
/// @}
