// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/util/QxDList.h"

#include <ostream>
#include <unordered_set>
#include <vector>

#include "qx/foundation/util/QxDebugStream.h"
#include "qx/foundation/util/internal/Ref.h"

namespace {

/// Number of cells from `first` to `last` along the next links; 0 when they do not reach it.
std::int32_t lengthOfPart(const QxDListCell* first, const QxDListCell* last) noexcept {
    if (first == nullptr || last == nullptr || first->isLinked() == 0) {
        return 0;
    }
    std::int32_t length = 1;
    for (; first != last; ++length) {
        first = first->pNextCell();
        if (first == nullptr) {
            return 0;
        }
    }
    return length;
}

/// Answers which of `candidates` objects are new to a list: by searching the list while that is
/// cheap, else by hashing its objects once.
class Newcomers {
public:
    Newcomers(const QxDList& list, std::int32_t candidates)
        : m_list(list), m_hashed(candidates > 4 && list.count() + candidates > 64) {
        if (m_hashed) {
            m_known.reserve(static_cast<std::size_t>(list.count() + candidates));
            for (const QxDListCell* c = list.pFirstCell(); c != nullptr; c = c->pNextCell()) {
                m_known.insert(c->pObject());
            }
        }
    }

    /// True once per object; the caller then inserts it into the list.
    bool admit(const QxObject* object) {
        return m_hashed ? m_known.insert(object).second : m_list.searchObject(object) == nullptr;
    }

private:
    const QxDList& m_list;
    bool m_hashed;
    std::unordered_set<const QxObject*> m_known;
};

}  // namespace

QxDList::QxDList(const QxDList& source, QxDeepFlagEnum depth) : QxObject(source) {
    if (depth == QxDeepCopy) {
        copyAllCells(&source);
    }
}

QxDList& QxDList::operator=(const QxDList& source) {
    copyAllCells(&source);
    return *this;
}

QxDList::~QxDList() {
    deleteAllCells();
}

QxDListCell* QxDList::searchObject(const QxObject* object) const noexcept {
    QxDListCell* cell = m_first;
    while (cell != nullptr && cell->pObject() != object) {
        cell = cell->pNextCell();
    }
    return cell;
}

std::int32_t QxDList::positionOfCell(const QxDListCell* cell) const noexcept {
    return lengthOfPart(m_first, cell);
}

std::int32_t QxDList::positionOfObject(const QxObject* object) const noexcept {
    return positionOfCell(searchObject(object));
}

QxDListCell* QxDList::pCellInPosition(std::int32_t position) const noexcept {
    if (position < 1 || position > m_count) {
        return nullptr;
    }
    QxDListCell* cell = nullptr;
    if (position <= m_count / 2) {
        cell = m_first;
        for (std::int32_t i = 1; i < position; ++i) {
            cell = cell->pNextCell();
        }
    } else {
        cell = m_last;
        for (std::int32_t i = m_count; i > position; --i) {
            cell = cell->pPreviousCell();
        }
    }
    return cell;
}

int QxDList::compare(const QxDList* list) const noexcept {
    if (list == nullptr || list->m_count != m_count) {
        return 0;
    }
    const QxDListCell* mine = m_first;
    const QxDListCell* other = list->m_first;
    while (mine != nullptr && mine->pObject() == other->pObject()) {
        mine = mine->pNextCell();
        other = other->pNextCell();
    }
    return mine == nullptr ? 1 : 0;
}

std::size_t QxDList::sizeOf() const noexcept {
    return sizeof(QxDList) + static_cast<std::size_t>(m_count) * sizeof(QxDListCell);
}

int QxDList::checkInvariants() const {
    const auto broken = [this](const char* what) {
        qxDebugIndent(0) << "list " << static_cast<const void*>(this) << ": " << what << '\n';
        return 0;
    };
    std::int32_t seen = 0;
    const QxDListCell* previous = nullptr;
    for (const QxDListCell* cell = m_first; cell != nullptr; cell = cell->pNextCell()) {
        if (++seen > m_count) {
            return broken("more cells than its count says, or a cycle");
        }
        if (cell->isLinked() == 0) {
            return broken("a cell in it is marked as standing in no list");
        }
        if (cell->pPreviousCell() != previous) {
            return broken("the links of two neighbours disagree");
        }
        if (cell->pObject() == nullptr) {
            return broken("a cell without an object");
        }
        previous = cell;
    }
    if (seen != m_count) {
        return broken("fewer cells than its count says");
    }
    return previous == m_last ? 1 : broken("the last cell is not where the links end");
}

/// Links the chain from `first` to `last`, whose inner links stand, behind `after`.
void QxDList::splice(QxDListCell* first, QxDListCell* last, QxDListCell* after) noexcept {
    QxDListCell* const next = after != nullptr ? after->m_next : m_first;
    first->setPrevious(after);
    last->m_next = next;
    (after != nullptr ? after->m_next : m_first) = first;
    if (next != nullptr) {
        next->setPrevious(last);
    } else {
        m_last = last;
    }
}

/// Closes the list over the chain from `first` to `last`, whose own links stay as they are.
void QxDList::cutOut(QxDListCell* first, QxDListCell* last) noexcept {
    QxDListCell* const previous = first->pPreviousCell();
    QxDListCell* const next = last->m_next;
    (previous != nullptr ? previous->m_next : m_first) = next;
    if (next != nullptr) {
        next->setPrevious(previous);
    } else {
        m_last = previous;
    }
}

QxDListCell* QxDList::insertCell(QxDListCell* cell, QxDListCell* after) noexcept {
    if (cell == nullptr || cell->m_object == nullptr || cell->isLinked() != 0 ||
        (after != nullptr && after->isLinked() == 0)) {
        return nullptr;
    }
    cell->link(after, nullptr);
    splice(cell, cell, after);
    ++m_count;
    return cell;
}

QxDListCell* QxDList::removeCell(QxDListCell* cell) noexcept {
    if (cell == nullptr || cell->isLinked() == 0) {
        return nullptr;
    }
    cutOut(cell, cell);
    cell->unlink();
    --m_count;
    return cell;
}

QxObject* QxDList::discardCell(QxDListCell* cell) noexcept {
    if (removeCell(cell) == nullptr) {
        return nullptr;
    }
    QxObject* const object = cell->pObject();
    if (cell->isHeapCell() != 0) {
        delete cell;
    }
    return object;
}

QxDListCell* QxDList::transferCell(QxDListCell* cell, QxDList* from) noexcept {
    QxDListCell* const before = cell != nullptr && cell == m_last ? cell->pPreviousCell() : m_last;
    return transferCell(cell, from, before);
}

QxDListCell* QxDList::transferCell(QxDListCell* cell, QxDList* from, QxDListCell* after) noexcept {
    if (from == nullptr || cell == after || (after != nullptr && after->isLinked() == 0) ||
        from->removeCell(cell) == nullptr) {
        return nullptr;
    }
    return insertCell(cell, after);
}

QxDListCell* QxDList::addObject(QxDListCell* after, QxObject* object) {
    if (object == nullptr || (after != nullptr && after->isLinked() == 0)) {
        return nullptr;
    }
    return insertCell(QxDListCell::newCell(object), after);
}

QxDListCell* QxDList::addObjectIfNotInList(QxDListCell* after, QxObject* object) {
    return searchObject(object) == nullptr ? addObject(after, object) : nullptr;
}

int QxDList::accepts(const QxDListCell* after, const QxDList* list) const noexcept {
    const bool placed = after == nullptr || after->isLinked() != 0;
    return placed && list != nullptr && list != this ? 1 : 0;
}

int QxDList::transferList(QxDListCell* after, QxDList* list) noexcept {
    if (accepts(after, list) == 0) {
        return 0;
    }
    if (list->m_first != nullptr) {
        splice(list->m_first, list->m_last, after);
        m_count += list->m_count;
        list->m_first = nullptr;
        list->m_last = nullptr;
        list->m_count = 0;
    }
    return 1;
}

int QxDList::transferListPart(QxDListCell* after, QxDList* list, QxDListCell* first,
                              QxDListCell* last) noexcept {
    const std::int32_t length = lengthOfPart(first, last);
    if (accepts(after, list) == 0 || length == 0) {
        return 0;
    }
    list->cutOut(first, last);
    list->m_count -= length;
    splice(first, last, after);
    m_count += length;
    return 1;
}

int QxDList::copyTransferList(QxDListCell* after, const QxDList* list) {
    if (list != nullptr && list->m_first == nullptr) {
        return accepts(after, list);
    }
    return list != nullptr ? copyTransferListPart(after, list, list->m_first, list->m_last) : 0;
}

int QxDList::copyTransferListPart(QxDListCell* after, const QxDList* list, const QxDListCell* first,
                                  const QxDListCell* last) {
    const std::int32_t length = lengthOfPart(first, last);
    if (accepts(after, list) == 0 || length == 0) {
        return 0;
    }
    for (std::int32_t i = 0; i < length; ++i, first = first->pNextCell()) {
        after = addObject(after, first->pObject());
    }
    return 1;
}

int QxDList::transferListIfNotInList(QxDListCell* after, QxDList* list) {
    if (list != nullptr && list->m_first == nullptr) {
        return accepts(after, list);
    }
    return list != nullptr ? transferListPartIfNotInList(after, list, list->m_first, list->m_last)
                           : 0;
}

int QxDList::transferListPartIfNotInList(QxDListCell* after, QxDList* list, QxDListCell* first,
                                         QxDListCell* last) {
    const std::int32_t length = lengthOfPart(first, last);
    if (accepts(after, list) == 0 || length == 0) {
        return 0;
    }
    Newcomers newcomers(*this, length);
    for (std::int32_t i = 0; i < length; ++i) {
        QxDListCell* const next = first->pNextCell();
        if (newcomers.admit(first->pObject())) {
            after = transferCell(first, list, after);
        }
        first = next;
    }
    return 1;
}

int QxDList::copyTransferListIfNotInList(QxDListCell* after, const QxDList* list) {
    if (list != nullptr && list->m_first == nullptr) {
        return accepts(after, list);
    }
    return list != nullptr
               ? copyTransferListPartIfNotInList(after, list, list->m_first, list->m_last)
               : 0;
}

int QxDList::copyTransferListPartIfNotInList(QxDListCell* after, const QxDList* list,
                                             const QxDListCell* first, const QxDListCell* last) {
    const std::int32_t length = lengthOfPart(first, last);
    if (accepts(after, list) == 0 || length == 0) {
        return 0;
    }
    Newcomers newcomers(*this, length);
    for (std::int32_t i = 0; i < length; ++i, first = first->pNextCell()) {
        if (newcomers.admit(first->pObject())) {
            after = addObject(after, first->pObject());
        }
    }
    return 1;
}

void QxDList::copyAllCells(const QxDList* source) {
    if (source != nullptr && source != this) {
        deleteAllCells();
        copyTransferList(nullptr, source);
    }
}

void QxDList::copyAllCellsAndObjects(const QxDList* source) {
    if (source == nullptr || source == this) {
        return;
    }
    deleteAllCells();
    for (const QxDListCell* cell = source->m_first; cell != nullptr; cell = cell->pNextCell()) {
        appendObject(cell->pObject()->cloneObject());
    }
}

void QxDList::assignObjects(QxObject* const* objects, std::size_t count) {
    QxObject* const* const end = objects + count;
    for (QxDListCell* cell = m_first; cell != nullptr;) {
        QxDListCell* const next = cell->m_next;
        if (objects != end && cell->isHeapCell() != 0) {
            cell->m_object = *objects++;
        } else {
            discardCell(cell);
        }
        cell = next;
    }
    for (; objects != end; ++objects) {
        appendObject(*objects);
    }
}

void QxDList::deleteAllCells() noexcept {
    while (m_first != nullptr) {
        discardCell(m_first);
    }
}

void QxDList::deleteAllCellsAndObjects() {
    std::vector<QxObject*> objects;
    objects.reserve(static_cast<std::size_t>(m_count));
    while (m_first != nullptr) {
        objects.push_back(discardCell(m_first));
    }
    qx::internal::releaseOnce(objects);
}

void QxDList::copyObject(const QxObject* source) {
    copyAllCells(dynamic_cast<const QxDList*>(source));
}

void QxDList::debugOutput(int depth) const {
    QxObject::debugOutput(depth);
    qxDebugIndent(depth) << m_count << " objects\n";
    for (const QxDListCell* cell = m_first; cell != nullptr; cell = cell->pNextCell()) {
        cell->pObject()->debugOutput(depth + 1);
    }
}

QxObject* QxDList::vCloneObject() const {
    return new QxDList(*this, QxDeepCopy);
}

QxObject* QxDList::vCloneAttributes() const {
    return new QxDList(*this, QxAttributeCopy);
}
