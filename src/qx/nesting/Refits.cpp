// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/nesting/internal/Refits.h"

#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/nesting/internal/ManagerExtras.h"

namespace qx::internal {

void Refits::request(QxDGraph& graph, int keepNodeInPlace) {
    if (m_held == &graph) {
        return;
    }
    if (!m_waiting.empty() && m_waiting.back().graph.get() == &graph) {
        m_waiting.back().keepNodeInPlace = keepNodeInPlace;
    } else {
        m_waiting.push_back({Ref<QxDGraph>(&graph), keepNodeInPlace});
    }
    if (!m_isServing) {
        const Fit served(*this);
    }
}

void Refits::serve() {
    while (!m_waiting.empty()) {
        const Request request = std::move(m_waiting.front());
        m_waiting.pop_front();
        if (QxDNode* node = request.graph->pNestedWithinNode()) {
            node->fitToNestedGraph(request.keepNodeInPlace, 0, 0);
        }
    }
}

}  // namespace qx::internal

void QxDGraph::refitAround(int keepNodeInPlace) {
    if (pNestedWithinNode() != nullptr) {
        QxDGraphManager* const manager = pOwnerGraphManager();
        if (manager != nullptr && manager->isReading() == 0) {  // a reader fits each node once
            const qx::internal::Ref alive(*manager);
            manager->managerExtras().refits.request(*this, keepNodeInPlace);
        }
    }
}

void QxDGraph::refitToMargins(int keepNodeInPlace) {
    if (QxDNode* node = pNestedWithinNode()) {
        const qx::internal::Ref alive(*this);
        node->fitToNestedGraph(keepNodeInPlace, 0, 1);
    }
}
