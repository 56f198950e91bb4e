// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>

#include "qx/foundation/util/QxDListCell.h"
#include "qx/foundation/util/QxObject.h"

/// A doubly linked list of objects. It owns neither the objects nor the embedded cells in it; it
/// frees the heap cells that it made, at the latest in its destructor.
///
/// Positions count from 1. Where an operation inserts after a cell, null means at the front. A cell
/// given to a list has to stand in that very list: that is not checked, for it would cost a search.
/// What can be seen at once is refused, with null or 0 and nothing changed: null objects, cells
/// that stand in a list already or in none, a list given to itself.
///
/// The forms IfNotInList insert an object only if this list does not hold it yet. For whole lists
/// they pass over what this list holds and over repetitions, in O(own count + other count).
class QX_API QxDList : public QxObject {
public:
    QxDList() noexcept = default;
    /// Copies refer to the same objects through heap cells of their own.
    QxDList(const QxDList& source) : QxDList(source, QxDeepCopy) {}
    /// An attribute copy is empty, for a list has no attributes besides its contents.
    QxDList(const QxDList& source, QxDeepFlagEnum depth);
    QxDList& operator=(const QxDList& source);
    ~QxDList() override;

    /// @name Contents
    /// @{
    std::int32_t count() const noexcept { return m_count; }
    int isEmpty() const noexcept { return m_first == nullptr ? 1 : 0; }
    QxDListCell* pFirstCell() const noexcept { return m_first; }
    QxDListCell* pLastCell() const noexcept { return m_last; }
    /// Null when the list is empty.
    QxObject* pFirstObject() const noexcept { return objectOf(m_first); }
    QxObject* pLastObject() const noexcept { return objectOf(m_last); }
    /// The first cell that holds the object, or null. O(count).
    QxDListCell* searchObject(const QxObject* object) const noexcept;
    /// 0 when the cell or object is not in the list. O(count).
    std::int32_t positionOfCell(const QxDListCell* cell) const noexcept;
    std::int32_t positionOfObject(const QxObject* object) const noexcept;
    /// Null for positions outside 1 to count(). O(distance to the nearer end).
    QxDListCell* pCellInPosition(std::int32_t position) const noexcept;
    QxObject* pObjectInPosition(std::int32_t position) const noexcept {
        return objectOf(pCellInPosition(position));
    }
    /// 1 when both lists hold the same objects in the same order; 0 otherwise and for null.
    int compare(const QxDList* list) const noexcept;
    /// Bytes that the list and its cells take, its objects not counted.
    std::size_t sizeOf() const noexcept;
    /// 1 when links, ends and count agree; else 0, and the diagnostic stream says what is wrong.
    int checkInvariants() const;
    /// @}

    /// @name Objects in new heap cells
    /// They return the new cell, or null when refused. O(1); the forms IfNotInList O(count).
    /// @{
    QxDListCell* appendObject(QxObject* object) { return addObject(m_last, object); }
    QxDListCell* prependObject(QxObject* object) { return addObject(nullptr, object); }
    QxDListCell* addObject(QxDListCell* after, QxObject* object);
    QxDListCell* appendObjectIfNotInList(QxObject* object) {
        return addObjectIfNotInList(m_last, object);
    }
    QxDListCell* prependObjectIfNotInList(QxObject* object) {
        return addObjectIfNotInList(nullptr, object);
    }
    QxDListCell* addObjectIfNotInList(QxDListCell* after, QxObject* object);
    /// @}

    /// @name Cells, in O(1)
    /// @{
    /// Links a cell that stands in no list; returns it, or null when refused.
    QxDListCell* insertCell(QxDListCell* cell, QxDListCell* after) noexcept;
    QxDListCell* appendCell(QxDListCell* cell) noexcept { return insertCell(cell, m_last); }
    QxDListCell* prependCell(QxDListCell* cell) noexcept { return insertCell(cell, nullptr); }
    /// Takes the cell out without freeing it; returns it, or null when it stands in no list.
    QxDListCell* removeCell(QxDListCell* cell) noexcept;
    /// Takes the cell out and frees it unless it is embedded. Returns the object it held, or null
    /// when it stood in no list.
    QxObject* discardCell(QxDListCell* cell) noexcept;
    /// Moves a cell from the list it stands in (perhaps this one) to the end, or behind `after`.
    QxDListCell* transferCell(QxDListCell* cell, QxDList* from) noexcept;
    QxDListCell* transferCell(QxDListCell* cell, QxDList* from, QxDListCell* after) noexcept;
    /// @}

    /// @name Whole lists and parts
    /// Each keeps the order and returns 1, or 0 when refused. The transfers move the other list's
    /// cells here, O(1) for a whole list; IfNotInList, the cells passed over stay where they are.
    /// The copies make new cells and leave the source as it is. A part reaches from `first` to
    /// `last`; it is refused when `last` does not come after `first` or equal it.
    /// @{
    int transferList(QxDListCell* after, QxDList* list) noexcept;
    int transferListPart(QxDListCell* after, QxDList* list, QxDListCell* first,
                         QxDListCell* last) noexcept;
    int copyTransferList(QxDListCell* after, const QxDList* list);
    int copyTransferListPart(QxDListCell* after, const QxDList* list, const QxDListCell* first,
                             const QxDListCell* last);
    int transferListIfNotInList(QxDListCell* after, QxDList* list);
    int transferListPartIfNotInList(QxDListCell* after, QxDList* list, QxDListCell* first,
                                    QxDListCell* last);
    int copyTransferListIfNotInList(QxDListCell* after, const QxDList* list);
    int copyTransferListPartIfNotInList(QxDListCell* after, const QxDList* list,
                                        const QxDListCell* first, const QxDListCell* last);

    int appendList(QxDList* list) noexcept { return transferList(m_last, list); }
    int prependList(QxDList* list) noexcept { return transferList(nullptr, list); }
    int copyAppendList(const QxDList* list) { return copyTransferList(m_last, list); }
    int copyPrependList(const QxDList* list) { return copyTransferList(nullptr, list); }
    int appendListIfNotInList(QxDList* list) { return transferListIfNotInList(m_last, list); }
    int prependListIfNotInList(QxDList* list) { return transferListIfNotInList(nullptr, list); }
    int copyAppendListIfNotInList(const QxDList* list) {
        return copyTransferListIfNotInList(m_last, list);
    }
    int copyPrependListIfNotInList(const QxDList* list) {
        return copyTransferListIfNotInList(nullptr, list);
    }
    /// @}

    /// @name Replacing and emptying
    /// @{
    /// Replaces the contents by new cells for the same objects; null or this list: no change.
    void copyAllCells(const QxDList* source);
    /// Replaces the contents by clones, which the caller owns; objects that cannot be cloned are
    /// left out. The objects held before are not destroyed. Null or this list: no change.
    void copyAllCellsAndObjects(const QxDList* source);
    /// Replaces the contents by these objects, none of them null, in heap cells. Those that the
    /// list has are used again: a list that is filled anew over and over needs no memory.
    void assignObjects(QxObject* const* objects, std::size_t count);
    /// Empties the list: frees its heap cells, unlinks the embedded ones.
    void deleteAllCells() noexcept;
    /// Empties the list, then drops one reference of each object it held, in order; an object that
    /// stood in it more than once is released once.
    void deleteAllCellsAndObjects();
    /// @}

    /// Like copyAllCells when the source is a list; otherwise nothing.
    void copyObject(const QxObject* source) override;
    void debugOutput(int depth) const override;
    QxDList* cloneObject() const { return static_cast<QxDList*>(vCloneObject()); }
    QxDList* cloneAttributes() const { return static_cast<QxDList*>(vCloneAttributes()); }

protected:
    QxObject* vCloneObject() const override;
    QxObject* vCloneAttributes() const override;

private:
    static QxObject* objectOf(const QxDListCell* cell) noexcept {
        return cell != nullptr ? cell->pObject() : nullptr;
    }
    int accepts(const QxDListCell* after, const QxDList* list) const noexcept;
    void splice(QxDListCell* first, QxDListCell* last, QxDListCell* after) noexcept;
    void cutOut(QxDListCell* first, QxDListCell* last) noexcept;

    QxDListCell* m_first = nullptr;
    QxDListCell* m_last = nullptr;
    std::int32_t m_count = 0;
};

static_assert(sizeof(void*) != 8 || sizeof(QxDList) == 40, "every node keeps four lists");
