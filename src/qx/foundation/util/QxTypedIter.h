// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <iterator>

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
/// In a range-for the walk has read its next link before the body runs, so that the body may take
/// the current object out of any list, the walked one too:
///
///     for (QxNode* node : QxNodeDListIter(&list)) { graph->discardNode(node); }
///
/// The object that comes next must stay. Range-for consumes the walk; init starts it anew.
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

    /// One step behind the walk it reads from.
    class Cursor {
    public:
        explicit Cursor(QxTypedIter* walk) : m_walk(walk) { ++*this; }
        T* operator*() const { return m_element; }
        Cursor& operator++() {
            if (*m_walk) {
                m_element = m_walk->pElement();
                ++*m_walk;
            } else {
                m_walk = nullptr;
            }
            return *this;
        }
        bool operator==(std::default_sentinel_t) const { return m_walk == nullptr; }

    private:
        QxTypedIter* m_walk;
        T* m_element = nullptr;
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
