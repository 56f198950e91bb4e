// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/drawing/QxLabelIters.h"

namespace qx::internal {

void SpecifiedConnectorsOfGraph::init(const QxDGraph* graph, QxIterDirectionEnum) {
    m_nodes.init(graph);
    QxDListIter::init(nullptr);
    goOnToNextNode();
}

SpecifiedConnectorsOfGraph& SpecifiedConnectorsOfGraph::operator++() {
    QxDListIter::operator++();
    goOnToNextNode();
    return *this;
}

void SpecifiedConnectorsOfGraph::goOnToNextNode() {
    while (pCell() != nullptr ? pElement()->specified() == 0 : static_cast<bool>(m_nodes)) {
        if (pCell() != nullptr) {
            QxDListIter::operator++();
        } else {
            QxDListIter::init(m_nodes.pNode()->pQueryConnectorManager());
            ++m_nodes;
        }
    }
}

void AllLabelsWalk::init(const QxDGraph* graph, QxIterDirectionEnum) {
    m_edges.init(graph);
    m_nodes.init(graph);
    m_connectors.init(nullptr);
    QxDListIter::init(graph != nullptr ? graph->pLabelList() : nullptr);
    goOnToNextOwner();
}

AllLabelsWalk& AllLabelsWalk::operator++() {
    QxDListIter::operator++();
    goOnToNextOwner();
    return *this;
}

void AllLabelsWalk::goOnToNextOwner() {
    for (; pCell() == nullptr && m_edges; ++m_edges) {
        QxDListIter::init(m_edges.pEdge()->pLabelList());
    }
    while (pCell() == nullptr && (m_connectors || m_nodes)) {
        if (m_connectors) {
            QxDListIter::init(m_connectors.pConnector()->pLabelList());
            ++m_connectors;
        } else {
            QxDListIter::init(m_nodes.pNode()->pLabelList());
            m_connectors.init(m_nodes.pNode());
            ++m_nodes;
        }
    }
}

}  // namespace qx::internal
