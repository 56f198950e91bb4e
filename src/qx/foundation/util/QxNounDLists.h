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
