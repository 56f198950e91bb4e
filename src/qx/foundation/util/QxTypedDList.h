// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <type_traits>

#include "qx/foundation/util/QxDList.h"

/// A list of `T` objects: QxDList with casts. `L` is the named list class that derives from it.
///
/// A named list class is three lines, and needs `T` only where its operations are called:
///
///     class QxNode;
///     class QX_API QxNodeDList : public QxNodesOf<QxNode, QxNodeDList> {
///     public:
///         using QxNodesOf::QxNodesOf;
///     };
///
/// It must add neither fields nor virtual operations: the cross casts do not convert, they
/// reinterpret a list object as one of another named class, which is of the same layout only then.
template <class T, class L>
class QxTypedDList : public QxDList {
public:
    using Element = T;

    QxTypedDList() noexcept = default;
    QxTypedDList(const L& source, QxDeepFlagEnum depth) : QxDList(source, depth) {}

    /// The element at a cell of such a list; null for null.
    static T* pElement(const QxDListCell* cell) {
        return cell != nullptr ? static_cast<T*>(cell->pObject()) : nullptr;
    }

    /// @name QxDList's operations on lists, with lists of this class only
    /// @{
    int transferList(QxDListCell* after, L* list) noexcept {
        return QxDList::transferList(after, list);
    }
    int transferListPart(QxDListCell* after, L* list, QxDListCell* first,
                         QxDListCell* last) noexcept {
        return QxDList::transferListPart(after, list, first, last);
    }
    int copyTransferList(QxDListCell* after, const L* list) {
        return QxDList::copyTransferList(after, list);
    }
    int copyTransferListPart(QxDListCell* after, const L* list, const QxDListCell* first,
                             const QxDListCell* last) {
        return QxDList::copyTransferListPart(after, list, first, last);
    }
    int transferListIfNotInList(QxDListCell* after, L* list) {
        return QxDList::transferListIfNotInList(after, list);
    }
    int transferListPartIfNotInList(QxDListCell* after, L* list, QxDListCell* first,
                                    QxDListCell* last) {
        return QxDList::transferListPartIfNotInList(after, list, first, last);
    }
    int copyTransferListIfNotInList(QxDListCell* after, const L* list) {
        return QxDList::copyTransferListIfNotInList(after, list);
    }
    int copyTransferListPartIfNotInList(QxDListCell* after, const L* list, const QxDListCell* first,
                                        const QxDListCell* last) {
        return QxDList::copyTransferListPartIfNotInList(after, list, first, last);
    }
    int appendList(L* list) noexcept { return QxDList::appendList(list); }
    int prependList(L* list) noexcept { return QxDList::prependList(list); }
    int copyAppendList(const L* list) { return QxDList::copyAppendList(list); }
    int copyPrependList(const L* list) { return QxDList::copyPrependList(list); }
    int appendListIfNotInList(L* list) { return QxDList::appendListIfNotInList(list); }
    int prependListIfNotInList(L* list) { return QxDList::prependListIfNotInList(list); }
    int copyAppendListIfNotInList(const L* list) {
        return QxDList::copyAppendListIfNotInList(list);
    }
    int copyPrependListIfNotInList(const L* list) {
        return QxDList::copyPrependListIfNotInList(list);
    }
    void copyAllCells(const L* source) { QxDList::copyAllCells(source); }
    /// @}

    L* cloneObject() const { return static_cast<L*>(vCloneObject()); }
    L* cloneAttributes() const { return static_cast<L*>(vCloneAttributes()); }

    /// @name Casts
    /// The cross casts see a list of a base (or derived) element class, which its user knows to
    /// hold `T` objects, as this list class. castDown answers null when the object is no such list.
    /// @{
    template <class From>
    static L* castCross(From* list) {
        requireRelated<From>();
        return static_cast<L*>(static_cast<QxDList*>(list));
    }
    template <class From>
    static const L* constCastCross(const From* list) {
        requireRelated<From>();
        return static_cast<const L*>(static_cast<const QxDList*>(list));
    }
    static L* castDown(QxObject* object) { return dynamic_cast<L*>(object); }
    static const L* castDown(const QxObject* object) { return dynamic_cast<const L*>(object); }
    /// @}

protected:
    QxObject* vCloneObject() const override { return cloneOf(QxDeepCopy); }
    QxObject* vCloneAttributes() const override { return cloneOf(QxAttributeCopy); }

private:
    QxObject* cloneOf(QxDeepFlagEnum depth) const {
        return new L(static_cast<const L&>(*this), depth);
    }
    template <class From>
    static constexpr void requireRelated() {
        static_assert(sizeof(L) == sizeof(QxDList), "a named list class adds no fields");
        static_assert(std::is_base_of_v<typename From::Element, T> ||
                          std::is_base_of_v<T, typename From::Element>,
                      "the element classes must be related");
    }
};
