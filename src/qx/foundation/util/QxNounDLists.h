// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/util/QxTypedDList.h"

/// The named operations of typed lists, one template per noun. Each forwards to the operation of
/// QxDList that has Object in its name; see there for what it does and refuses.

/// Lists of nodes.
template <class N, class L>
class QxNodesOf : public QxTypedDList<N, L> {
public:
    using QxTypedDList<N, L>::QxTypedDList;

    QxDListCell* appendNode(N* node) { return this->appendObject(node); }
    QxDListCell* prependNode(N* node) { return this->prependObject(node); }
    QxDListCell* addNode(QxDListCell* after, N* node) { return this->addObject(after, node); }
    QxDListCell* appendNodeIfNotInList(N* node) { return this->appendObjectIfNotInList(node); }
    QxDListCell* prependNodeIfNotInList(N* node) { return this->prependObjectIfNotInList(node); }
    QxDListCell* addNodeIfNotInList(QxDListCell* after, N* node) {
        return this->addObjectIfNotInList(after, node);
    }
    QxDListCell* searchNode(const N* node) const { return this->searchObject(node); }
    std::int32_t positionOfNode(const N* node) const { return this->positionOfObject(node); }
    N* pNodeInPosition(std::int32_t position) const {
        return this->pElement(this->pCellInPosition(position));
    }
    N* pFirstNode() const { return this->pElement(this->pFirstCell()); }
    N* pLastNode() const { return this->pElement(this->pLastCell()); }
    void copyAllCellsAndNodes(const L* source) { this->copyAllCellsAndObjects(source); }
    void deleteAllCellsAndNodes() { this->deleteAllCellsAndObjects(); }
};

/// Lists of edges.
template <class E, class L>
class QxEdgesOf : public QxTypedDList<E, L> {
public:
    using QxTypedDList<E, L>::QxTypedDList;

    QxDListCell* appendEdge(E* edge) { return this->appendObject(edge); }
    QxDListCell* prependEdge(E* edge) { return this->prependObject(edge); }
    QxDListCell* addEdge(QxDListCell* after, E* edge) { return this->addObject(after, edge); }
    QxDListCell* appendEdgeIfNotInList(E* edge) { return this->appendObjectIfNotInList(edge); }
    QxDListCell* prependEdgeIfNotInList(E* edge) { return this->prependObjectIfNotInList(edge); }
    QxDListCell* addEdgeIfNotInList(QxDListCell* after, E* edge) {
        return this->addObjectIfNotInList(after, edge);
    }
    QxDListCell* searchEdge(const E* edge) const { return this->searchObject(edge); }
    std::int32_t positionOfEdge(const E* edge) const { return this->positionOfObject(edge); }
    E* pEdgeInPosition(std::int32_t position) const {
        return this->pElement(this->pCellInPosition(position));
    }
    E* pFirstEdge() const { return this->pElement(this->pFirstCell()); }
    E* pLastEdge() const { return this->pElement(this->pLastCell()); }
    void copyAllCellsAndEdges(const L* source) { this->copyAllCellsAndObjects(source); }
    void deleteAllCellsAndEdges() { this->deleteAllCellsAndObjects(); }
};

/// Lists of graphs.
template <class G, class L>
class QxGraphsOf : public QxTypedDList<G, L> {
public:
    using QxTypedDList<G, L>::QxTypedDList;

    QxDListCell* appendGraph(G* graph) { return this->appendObject(graph); }
    QxDListCell* prependGraph(G* graph) { return this->prependObject(graph); }
    QxDListCell* addGraph(QxDListCell* after, G* graph) { return this->addObject(after, graph); }
    QxDListCell* appendGraphIfNotInList(G* graph) { return this->appendObjectIfNotInList(graph); }
    QxDListCell* prependGraphIfNotInList(G* graph) { return this->prependObjectIfNotInList(graph); }
    QxDListCell* addGraphIfNotInList(QxDListCell* after, G* graph) {
        return this->addObjectIfNotInList(after, graph);
    }
    QxDListCell* searchGraph(const G* graph) const { return this->searchObject(graph); }
    std::int32_t positionOfGraph(const G* graph) const { return this->positionOfObject(graph); }
    G* pGraphInPosition(std::int32_t position) const {
        return this->pElement(this->pCellInPosition(position));
    }
    G* pFirstGraph() const { return this->pElement(this->pFirstCell()); }
    G* pLastGraph() const { return this->pElement(this->pLastCell()); }
    void copyAllCellsAndGraphs(const L* source) { this->copyAllCellsAndObjects(source); }
    void deleteAllCellsAndGraphs() { this->deleteAllCellsAndObjects(); }
};

/// Lists of graph managers.
template <class M, class L>
class QxGraphManagersOf : public QxTypedDList<M, L> {
public:
    using QxTypedDList<M, L>::QxTypedDList;

    QxDListCell* appendGraphManager(M* manager) { return this->appendObject(manager); }
    QxDListCell* prependGraphManager(M* manager) { return this->prependObject(manager); }
    QxDListCell* addGraphManager(QxDListCell* after, M* manager) {
        return this->addObject(after, manager);
    }
    QxDListCell* appendGraphManagerIfNotInList(M* manager) {
        return this->appendObjectIfNotInList(manager);
    }
    QxDListCell* prependGraphManagerIfNotInList(M* manager) {
        return this->prependObjectIfNotInList(manager);
    }
    QxDListCell* addGraphManagerIfNotInList(QxDListCell* after, M* manager) {
        return this->addObjectIfNotInList(after, manager);
    }
    QxDListCell* searchGraphManager(const M* manager) const { return this->searchObject(manager); }
    std::int32_t positionOfGraphManager(const M* manager) const {
        return this->positionOfObject(manager);
    }
    M* pGraphManagerInPosition(std::int32_t position) const {
        return this->pElement(this->pCellInPosition(position));
    }
    M* pFirstGraphManager() const { return this->pElement(this->pFirstCell()); }
    M* pLastGraphManager() const { return this->pElement(this->pLastCell()); }
    void copyAllCellsAndGraphManagers(const L* source) { this->copyAllCellsAndObjects(source); }
    void deleteAllCellsAndGraphManagers() { this->deleteAllCellsAndObjects(); }
};

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
