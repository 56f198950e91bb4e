// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/util/QxDList.h"

enum QxIterDirectionEnum : int {
    QxIterForward = 1,  ///< from the first cell along the next links
    QxIterBackward = 2  ///< from the last cell along the previous links
};

/// Walks one list; true while it has a current cell.
///
///     for (QxDListIter it(&list); it; ++it) { it.pObject()->debugOutput(0); }
///
/// The link onward is read by `++`: the current cell must not leave the walked list before that,
/// though its object may leave other lists. Cells elsewhere in the list may come and go.
class QX_API QxDListIter : public QxObject {
public:
    using Owner = QxDList;

    /// Without a list, forward: a walk that is over.
    QxDListIter() noexcept = default;
    explicit QxDListIter(const QxDList* list,
                         QxIterDirectionEnum direction = QxIterForward) noexcept {
        init(list, direction);
    }
    QxDListIter(const QxDList* list, QxDListCell* start,
                QxIterDirectionEnum direction = QxIterForward) noexcept {
        init(list, start, direction);
    }

    /// Starts anew at the first cell of the walk; a null list is walked like an empty one.
    void init(const QxDList* list, QxIterDirectionEnum direction = QxIterForward) noexcept {
        m_list = list;
        m_direction = direction;
        m_cell = list == nullptr               ? nullptr
                 : direction == QxIterBackward ? list->pLastCell()
                                               : list->pFirstCell();
    }
    /// Starts anew at a cell of the list; null, or a cell that stands in no list: nothing to walk.
    void init(const QxDList* list, QxDListCell* start,
              QxIterDirectionEnum direction = QxIterForward) noexcept {
        m_list = list;
        m_direction = direction;
        m_cell = list != nullptr && start != nullptr && start->isLinked() != 0 ? start : nullptr;
    }

    /// Moves on; a walk that is over stays so. Virtual for walks held by reference: called on an
    /// iterator variable it is inlined.
    virtual QxDListIter& operator++() {
        if (m_cell != nullptr) {
            m_cell = m_direction == QxIterBackward ? m_cell->pPreviousCell() : m_cell->pNextCell();
        }
        return *this;
    }

    explicit operator bool() const noexcept { return m_cell != nullptr; }
    explicit operator int() const noexcept { return m_cell != nullptr ? 1 : 0; }

    QxDListCell* pCell() const noexcept { return m_cell; }
    /// The object of the current cell; null when the walk is over.
    QxObject* pObject() const noexcept { return m_cell != nullptr ? m_cell->pObject() : nullptr; }
    const QxDList* pList() const noexcept { return m_list; }
    QxIterDirectionEnum direction() const noexcept { return m_direction; }

private:
    const QxDList* m_list = nullptr;
    QxDListCell* m_cell = nullptr;
    QxIterDirectionEnum m_direction = QxIterForward;
};
