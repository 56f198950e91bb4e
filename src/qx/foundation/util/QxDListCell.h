// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

#include "qx/foundation/util/QxApi.h"

class QxObject;

/// One place in a QxDList: the links to both neighbours and the object that stands there.
///
/// A cell is either made on the heap by a list (newCell), which then frees it, or embedded in the
/// object that it stands for: such a cell costs no allocation, its list never frees it, and it has
/// to leave the list before its host is destroyed. Two spare bits of the previous link tell the
/// kinds apart and show whether the cell stands in a list, so that illegal calls can be refused.
class QX_API QxDListCell {
public:
    /// A cell outside any list, to be embedded; lists refuse cells whose object is null.
    explicit QxDListCell(QxObject* object) noexcept : m_object(object) {}
    QxDListCell(const QxDListCell&) = delete;
    QxDListCell& operator=(const QxDListCell&) = delete;

    /// A cell on the heap, freed by the list it stands in; outside a list its holder deletes it.
    static QxDListCell* newCell(QxObject* object) {
        auto* cell = new QxDListCell(object);
        cell->m_previous = HeapBit;
        return cell;
    }

    QxDListCell* pNextCell() const noexcept { return m_next; }
    QxDListCell* pPreviousCell() const noexcept {
        return reinterpret_cast<QxDListCell*>(m_previous & ~TagBits);
    }
    QxObject* pObject() const noexcept { return m_object; }

    /// 1 while the cell stands in a list.
    int isLinked() const noexcept { return (m_previous & LinkedBit) != 0 ? 1 : 0; }
    /// 1 when a list frees the cell, 0 for an embedded one.
    int isHeapCell() const noexcept { return (m_previous & HeapBit) != 0 ? 1 : 0; }

private:
    friend class QxDList;

    static constexpr std::uintptr_t HeapBit = 1;
    static constexpr std::uintptr_t LinkedBit = 2;
    static constexpr std::uintptr_t TagBits = HeapBit | LinkedBit;

    void link(QxDListCell* previous, QxDListCell* next) noexcept {
        m_previous =
            reinterpret_cast<std::uintptr_t>(previous) | (m_previous & HeapBit) | LinkedBit;
        m_next = next;
    }
    void unlink() noexcept {
        m_previous &= HeapBit;
        m_next = nullptr;
    }
    void setPrevious(QxDListCell* previous) noexcept {
        m_previous = reinterpret_cast<std::uintptr_t>(previous) | (m_previous & TagBits);
    }

    std::uintptr_t m_previous = 0;
    QxDListCell* m_next = nullptr;
    QxObject* m_object;
};

static_assert(sizeof(void*) != 8 || sizeof(QxDListCell) == 24, "every graph member embeds cells");
static_assert(alignof(QxDListCell) >= 4, "the previous link needs two spare bits");
