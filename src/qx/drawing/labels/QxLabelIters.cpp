// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/drawing/QxLabelIters.h"

namespace qx::internal {

void AllLabelsWalk::init(const QxDGraph* graph, QxIterDirectionEnum) {
    m_edges.init(graph);
    m_nodes.init(graph);
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
    for (; pCell() == nullptr && m_nodes; ++m_nodes) {
        QxDListIter::init(m_nodes.pNode()->pLabelList());
    }
}

}  // namespace qx::internal
