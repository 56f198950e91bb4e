// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/nesting/internal/Refits.h"

#include <algorithm>

#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/nesting/internal/ManagerExtras.h"

namespace qx::internal {

void Refits::request(QxDGraph& graph, int keepNodeInPlace) {
    if (m_held == &graph) {
        return;
    }
    // While fits wait, one for each graph will do.
    const auto first = m_waits != 0 || m_waiting.empty() ? m_waiting.begin() : m_waiting.end() - 1;
    const auto same = std::find_if(first, m_waiting.end(), [&](const Request& request) {
        return request.graph.get() == &graph;
    });
    if (same != m_waiting.end()) {
        same->keepNodeInPlace = keepNodeInPlace;
    } else {
        m_waiting.push_back({Ref<QxDGraph>(&graph), keepNodeInPlace});
    }
    serveUnlessBusy();
}

void Refits::serveUnlessBusy() {
    if (!m_isServing && m_waits == 0) {
        const Fit served(*this);
    }
}

void Refits::serve() {
    while (!m_waiting.empty() && m_waits == 0) {
        const Request request = std::move(m_waiting.front());
        m_waiting.pop_front();
        perform(request);
    }
}

void Refits::serve(const QxDGraph& graph) {
    const auto asked =
        std::find_if(m_waiting.begin(), m_waiting.end(),
                     [&](const Request& request) { return request.graph.get() == &graph; });
    if (asked != m_waiting.end()) {
        const Request request = std::move(*asked);
        m_waiting.erase(asked);
        perform(request);
    }
}

void Refits::perform(const Request& request) {
    if (QxDNode* node = request.graph->pNestedWithinNode()) {
        node->fitToNestedGraph(request.keepNodeInPlace, 0, 0);
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
