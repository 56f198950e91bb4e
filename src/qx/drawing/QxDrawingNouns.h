// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/util/QxNounDLists.h"
#include "qx/foundation/util/QxTypedIter.h"

/// The named operations of typed lists and iterators for what only drawings have: connectors,
/// labels and pairs of nodes. Each list operation forwards to the one of QxDList that has Object in
/// its name.

/// Lists of connectors.
template <class C, class L>
class QxConnectorsOf : public QxTypedDList<C, L> {
public:
    using QxTypedDList<C, L>::QxTypedDList;

    QxDListCell* appendConnector(C* connector) { return this->appendObject(connector); }
    QxDListCell* prependConnector(C* connector) { return this->prependObject(connector); }
    QxDListCell* addConnector(QxDListCell* after, C* connector) {
        return this->addObject(after, connector);
    }
    QxDListCell* appendConnectorIfNotInList(C* connector) {
        return this->appendObjectIfNotInList(connector);
    }
    QxDListCell* prependConnectorIfNotInList(C* connector) {
        return this->prependObjectIfNotInList(connector);
    }
    QxDListCell* addConnectorIfNotInList(QxDListCell* after, C* connector) {
        return this->addObjectIfNotInList(after, connector);
    }
    QxDListCell* searchConnector(const C* connector) const { return this->searchObject(connector); }
    std::int32_t positionOfConnector(const C* connector) const {
        return this->positionOfObject(connector);
    }
    C* pConnectorInPosition(std::int32_t position) const {
        return this->pElement(this->pCellInPosition(position));
    }
    C* pFirstConnector() const { return this->pElement(this->pFirstCell()); }
    C* pLastConnector() const { return this->pElement(this->pLastCell()); }
    void copyAllCellsAndConnectors(const L* source) { this->copyAllCellsAndObjects(source); }
    void deleteAllCellsAndConnectors() { this->deleteAllCellsAndObjects(); }
};

/// Lists of labels.
template <class B, class L>
class QxLabelsOf : public QxTypedDList<B, L> {
public:
    using QxTypedDList<B, L>::QxTypedDList;

    QxDListCell* appendLabel(B* label) { return this->appendObject(label); }
    QxDListCell* prependLabel(B* label) { return this->prependObject(label); }
    QxDListCell* addLabel(QxDListCell* after, B* label) { return this->addObject(after, label); }
    QxDListCell* appendLabelIfNotInList(B* label) { return this->appendObjectIfNotInList(label); }
    QxDListCell* prependLabelIfNotInList(B* label) { return this->prependObjectIfNotInList(label); }
    QxDListCell* addLabelIfNotInList(QxDListCell* after, B* label) {
        return this->addObjectIfNotInList(after, label);
    }
    QxDListCell* searchLabel(const B* label) const { return this->searchObject(label); }
    std::int32_t positionOfLabel(const B* label) const { return this->positionOfObject(label); }
    B* pLabelInPosition(std::int32_t position) const {
        return this->pElement(this->pCellInPosition(position));
    }
    B* pFirstLabel() const { return this->pElement(this->pFirstCell()); }
    B* pLastLabel() const { return this->pElement(this->pLastCell()); }
    void copyAllCellsAndLabels(const L* source) { this->copyAllCellsAndObjects(source); }
    void deleteAllCellsAndLabels() { this->deleteAllCellsAndObjects(); }
};

/// Lists of node pairs.
template <class P, class L>
class QxNodePairsOf : public QxTypedDList<P, L> {
public:
    using QxTypedDList<P, L>::QxTypedDList;

    QxDListCell* appendNodePair(P* pair) { return this->appendObject(pair); }
    QxDListCell* prependNodePair(P* pair) { return this->prependObject(pair); }
    QxDListCell* addNodePair(QxDListCell* after, P* pair) { return this->addObject(after, pair); }
    QxDListCell* appendNodePairIfNotInList(P* pair) { return this->appendObjectIfNotInList(pair); }
    QxDListCell* prependNodePairIfNotInList(P* pair) {
        return this->prependObjectIfNotInList(pair);
    }
    QxDListCell* addNodePairIfNotInList(QxDListCell* after, P* pair) {
        return this->addObjectIfNotInList(after, pair);
    }
    QxDListCell* searchNodePair(const P* pair) const { return this->searchObject(pair); }
    std::int32_t positionOfNodePair(const P* pair) const { return this->positionOfObject(pair); }
    P* pNodePairInPosition(std::int32_t position) const {
        return this->pElement(this->pCellInPosition(position));
    }
    P* pFirstNodePair() const { return this->pElement(this->pFirstCell()); }
    P* pLastNodePair() const { return this->pElement(this->pLastCell()); }
    void copyAllCellsAndNodePairs(const L* source) { this->copyAllCellsAndObjects(source); }
    void deleteAllCellsAndNodePairs() { this->deleteAllCellsAndObjects(); }
};

/// @name Iterators with the accessor named after what they yield
/// @{
template <class C, class Source, auto ElementOf = QxCurrentAs<C>{}>
class QxConnectorIterOf : public QxTypedIter<C, Source, ElementOf> {
public:
    using QxTypedIter<C, Source, ElementOf>::QxTypedIter;
    C* pConnector() const { return this->pElement(); }
};

template <class B, class Source, auto ElementOf = QxCurrentAs<B>{}>
class QxLabelIterOf : public QxTypedIter<B, Source, ElementOf> {
public:
    using QxTypedIter<B, Source, ElementOf>::QxTypedIter;
    B* pLabel() const { return this->pElement(); }
};

template <class P, class Source, auto ElementOf = QxCurrentAs<P>{}>
class QxNodePairIterOf : public QxTypedIter<P, Source, ElementOf> {
public:
    using QxTypedIter<P, Source, ElementOf>::QxTypedIter;
    P* pNodePair() const { return this->pElement(); }
};
/// @}
