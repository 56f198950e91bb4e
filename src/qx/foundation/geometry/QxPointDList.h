// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/geometry/QxPoint.h"
#include "qx/foundation/util/QxDList.h"

/// A list of points that owns its points: what is appended is copied, copies of the list copy the
/// points, and the destructor destroys them.
///
/// That holds whichever operation of QxDList moves or drops cells. A point belongs to the point
/// list it stands in; while it stands in none, to the one that made it, and lives on until that
/// list is emptied, assigned to or destroyed. A plain QxDList into which cells were moved owns
/// nothing, as ever. Once the list that made a point has gone, whoever takes the point out of its
/// list by an operation of QxDList has to destroy it. Objects that are put in by operations of
/// QxDList have to be points and stay their owner's.
class QX_API QxPointDList : public QxDList {
public:
    QxPointDList() noexcept = default;
    QxPointDList(const QxPointDList& source) : QxPointDList(source, QxDeepCopy) {}
    /// An attribute copy is empty.
    QxPointDList(const QxPointDList& source, QxDeepFlagEnum depth);
    QxPointDList& operator=(const QxPointDList& source);
    ~QxPointDList() override;

    /// Insert a copy at the end, at the front, or behind `after` (null: at the front); return its
    /// cell, or null when `after` stands in no list.
    QxDListCell* appendPoint(const QxPoint& point) { return addPoint(pLastCell(), point); }
    QxDListCell* prependPoint(const QxPoint& point) { return addPoint(nullptr, point); }
    QxDListCell* addPoint(QxDListCell* after, const QxPoint& point);

    /// The point at a cell of such a list; null for null.
    static QxPoint* pPoint(const QxDListCell* cell);
    QxPoint* pFirstPoint() const { return pPoint(pFirstCell()); }
    QxPoint* pLastPoint() const { return pPoint(pLastCell()); }
    /// Null for positions outside 1 to count().
    QxPoint* pPointInPosition(std::int32_t position) const {
        return pPoint(pCellInPosition(position));
    }

    /// Takes the cell out of the list and destroys it and its point; null is ignored.
    void discardPoint(QxDListCell* cell);
    /// Empties the list and destroys its points.
    void discardAllPoints();
    void deleteAllCells() { discardAllPoints(); }
    void deleteAllCellsAndObjects() { discardAllPoints(); }

    /// 1 when both lists hold equal points in the same order.
    int equals(const QxObject* other) const override;
    std::size_t hashCode() const override;
    /// Replaces the points by copies of those of another point list; otherwise nothing.
    void copyObject(const QxObject* source) override;
    QxPointDList* cloneObject() const { return static_cast<QxPointDList*>(vCloneObject()); }
    QxPointDList* cloneAttributes() const { return static_cast<QxPointDList*>(vCloneAttributes()); }

protected:
    QxObject* vCloneObject() const override;
    QxObject* vCloneAttributes() const override;

private:
    class OwnPoint;

    using QxDList::copyAllCells;
    using QxDList::copyAllCellsAndObjects;
    using QxDList::copyAppendList;
    using QxDList::copyAppendListIfNotInList;
    using QxDList::copyPrependList;
    using QxDList::copyPrependListIfNotInList;
    using QxDList::copyTransferList;
    using QxDList::copyTransferListIfNotInList;
    using QxDList::copyTransferListPart;
    using QxDList::copyTransferListPartIfNotInList;

    void appendCopies(const QxPointDList& source);

    /// The points that this list made, wherever they stand, in a chain.
    OwnPoint* m_made = nullptr;
};
