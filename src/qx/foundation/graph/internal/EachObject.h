// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/util/QxDList.h"

namespace qx::internal {

/// `for (T* object : each<T>(list))`: walks a list forward. The next link is read before the body
/// runs, so the body may take the current object out of the list.
template <class T>
class Each {
public:
    class Iterator {
    public:
        explicit Iterator(const QxDListCell* cell)
            : m_cell(cell), m_next(cell != nullptr ? cell->pNextCell() : nullptr) {}
        T* operator*() const { return static_cast<T*>(m_cell->pObject()); }
        Iterator& operator++() {
            *this = Iterator(m_next);
            return *this;
        }
        bool operator!=(const Iterator& other) const { return m_cell != other.m_cell; }

    private:
        const QxDListCell* m_cell;
        const QxDListCell* m_next;
    };

    explicit Each(const QxDList& list) : m_list(list) {}
    Iterator begin() const { return Iterator(m_list.pFirstCell()); }
    Iterator end() const { return Iterator(nullptr); }

private:
    const QxDList& m_list;
};

template <class T>
Each<T> each(const QxDList& list) {
    return Each<T>(list);
}

}  // namespace qx::internal
