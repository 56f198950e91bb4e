// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/geometry/QxPointDList.h"

// The cell of a point is embedded in the point, so that no list frees it, and it shows whether the
// point stands in a list at all. That is enough to own the points whatever moves or drops their
// cells: a point list destroys those that stand in it, whoever made them, and of those it made
// the ones that stand nowhere. Cells on the heap were put in by somebody else and own nothing.

/// A point with its cell, and its place among all that the same list made. It leaves both when it
/// is destroyed, so that anybody may release it.
class QxPointDList::OwnPoint : public QxPoint {
public:
    OwnPoint(QxPointDList& maker, const QxPoint& point)
        : QxPoint(point), m_maker(&maker), m_next(maker.m_made) {
        if (m_next != nullptr) {
            m_next->m_previous = this;
        }
        maker.m_made = this;
    }
    OwnPoint(const OwnPoint&) = delete;
    OwnPoint& operator=(const OwnPoint&) = delete;
    ~OwnPoint() override { leaveMaker(); }

    /// The point whose cell this is; null for all other cells.
    static OwnPoint* hostOf(const QxDListCell* cell) {
        return cell->isHeapCell() == 0 ? dynamic_cast<OwnPoint*>(cell->pObject()) : nullptr;
    }
    QxDListCell* pCell() { return &m_cell; }
    OwnPoint* pNext() const { return m_next; }
    /// After this nobody but who holds the point destroys it.
    void leaveMaker() {
        if (m_maker == nullptr) {
            return;
        }
        (m_previous != nullptr ? m_previous->m_next : m_maker->m_made) = m_next;
        if (m_next != nullptr) {
            m_next->m_previous = m_previous;
        }
        m_maker = nullptr;
    }
    void discard() {
        leaveMaker();
        vRelease();
    }

private:
    QxDListCell m_cell{this};
    QxPointDList* m_maker;
    OwnPoint* m_next;
    OwnPoint* m_previous = nullptr;
};

QxPointDList::QxPointDList(const QxPointDList& source, QxDeepFlagEnum depth) {
    if (depth == QxDeepCopy) {
        appendCopies(source);
    }
}

QxPointDList& QxPointDList::operator=(const QxPointDList& source) {
    if (this != &source) {
        discardAllPoints();
        appendCopies(source);
    }
    return *this;
}

QxPointDList::~QxPointDList() {
    discardAllPoints();
    while (m_made != nullptr) {
        m_made->leaveMaker();  // it stands in another list
    }
}

void QxPointDList::appendCopies(const QxPointDList& source) {
    for (const QxDListCell* cell = source.pFirstCell(); cell != nullptr; cell = cell->pNextCell()) {
        appendPoint(*pPoint(cell));
    }
}

QxDListCell* QxPointDList::addPoint(QxDListCell* after, const QxPoint& point) {
    if (after != nullptr && after->isLinked() == 0) {
        return nullptr;
    }
    return insertCell((new OwnPoint(*this, point))->pCell(), after);
}

QxPoint* QxPointDList::pPoint(const QxDListCell* cell) {
    return cell != nullptr ? static_cast<QxPoint*>(cell->pObject()) : nullptr;
}

void QxPointDList::discardPoint(QxDListCell* cell) {
    if (cell == nullptr) {
        return;
    }
    OwnPoint* const point = OwnPoint::hostOf(cell);
    discardCell(cell);
    if (point != nullptr) {
        point->discard();
    }
}

void QxPointDList::discardAllPoints() {
    while (QxDListCell* const cell = pFirstCell()) {
        discardPoint(cell);
    }
    for (OwnPoint* point = m_made; point != nullptr;) {
        OwnPoint* const next = point->pNext();
        if (point->pCell()->isLinked() == 0) {
            point->discard();
        }
        point = next;
    }
}

int QxPointDList::equals(const QxObject* other) const {
    const auto* list = dynamic_cast<const QxPointDList*>(other);
    if (list == nullptr || list->count() != count()) {
        return 0;
    }
    const QxDListCell* mine = pFirstCell();
    const QxDListCell* theirs = list->pFirstCell();
    while (mine != nullptr && *pPoint(mine) == *pPoint(theirs)) {
        mine = mine->pNextCell();
        theirs = theirs->pNextCell();
    }
    return mine == nullptr ? 1 : 0;
}

std::size_t QxPointDList::hashCode() const {
    std::size_t hash = 0;
    for (const QxDListCell* cell = pFirstCell(); cell != nullptr; cell = cell->pNextCell()) {
        hash = hash * 31 + pPoint(cell)->hashCode();
    }
    return hash;
}

void QxPointDList::copyObject(const QxObject* source) {
    const auto* list = dynamic_cast<const QxPointDList*>(source);
    if (list != nullptr) {
        *this = *list;
    }
}

QxObject* QxPointDList::vCloneObject() const {
    return new QxPointDList(*this, QxDeepCopy);
}

QxObject* QxPointDList::vCloneAttributes() const {
    return new QxPointDList(*this, QxAttributeCopy);
}
