// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/geometry/QxPointDList.h"

QxPointDList::QxPointDList(const QxPointDList& source, QxDeepFlagEnum depth) {
    if (depth == QxDeepCopy) {
        copyAllCellsAndObjects(&source);
    }
}

QxPointDList& QxPointDList::operator=(const QxPointDList& source) {
    if (this != &source) {
        discardAllPoints();
        copyAllCellsAndObjects(&source);
    }
    return *this;
}

QxPointDList::~QxPointDList() {
    discardAllPoints();
}

QxDListCell* QxPointDList::appendPoint(const QxPoint& point) {
    return appendObject(new QxPoint(point));
}

QxDListCell* QxPointDList::prependPoint(const QxPoint& point) {
    return prependObject(new QxPoint(point));
}

QxDListCell* QxPointDList::addPoint(QxDListCell* after, const QxPoint& point) {
    return addObject(after, new QxPoint(point));
}

QxPoint* QxPointDList::pPoint(const QxDListCell* cell) {
    return cell != nullptr ? static_cast<QxPoint*>(cell->pObject()) : nullptr;
}

void QxPointDList::discardPoint(QxDListCell* cell) {
    QxObject* point = cell != nullptr ? discardCell(cell) : nullptr;
    if (point != nullptr) {
        point->vRelease();
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
