// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/nesting/internal/Collection.h"

#include <algorithm>
#include <type_traits>
#include <utility>

#include "qx/drawing/QxDGraph.h"
#include "qx/foundation/graph/internal/EachObject.h"

namespace qx::internal {

void Collection::addNodes(const QxDList* nodes, const QxDGraph& graph, const QxDNode* except) {
    const QxDListCell* cell = nodes != nullptr ? nodes->pFirstCell() : nullptr;
    for (; cell != nullptr; cell = cell->pNextCell()) {
        auto* node = static_cast<QxDNode*>(cell->pObject());
        if (node != except && node->pOwnerGraph() == &graph && !isMarked(node)) {
            node->setFlag(flags::NodeCollected, 1);
            m_nodes.add(node);
        }
    }
}

void Collection::addAsListed(const std::vector<QxDEdge*>& edges) {
    struct Place {
        int list;
        std::uint64_t stamp;
        QxDEdge* edge;
    };
    std::vector<Place> places;
    places.reserve(edges.size());
    for (QxDEdge* edge : edges) {
        const int list = edge->deactivated() != 0 ? 2 : edge->connected() != 0 ? 0 : 1;
        places.push_back({list, edge->listStamp(), edge});
    }
    std::sort(places.begin(), places.end(), [](const Place& a, const Place& b) {
        return a.list != b.list ? a.list < b.list : a.stamp < b.stamp;
    });
    m_edges.reserve(places.size());
    for (const Place& place : places) {
        m_edges.add(place.edge);
    }
}

void Collection::endMarks() {
    if (!m_isMarked) {
        return;
    }
    m_isMarked = false;
    for (QxDNode* node : m_nodes) {
        node->setFlag(flags::NodeCollected, 0);
    }
    for (QxDEdge* edge : m_edges) {
        edge->setFlag(flags::EdgeCollected, 0);
    }
}

void Collection::forgetLost() {
    const auto keepOwned = [](auto& objects) {
        std::remove_reference_t<decltype(objects)> kept;
        for (auto* object : objects) {
            if (object->ownerValid() != 0) {
                kept.add(object);
            }
        }
        objects = std::move(kept);
    };
    keepOwned(m_nodes);
    keepOwned(m_edges);
}

void Collection::appendTo(QxDNodeDList* nodes, QxDEdgeDList* edges) const {
    const auto append = [](QxDList* list, const auto& objects) {
        if (list == nullptr) {
            return;
        }
        for (auto* object : objects) {
            if (object->ownerValid() != 0) {
                list->appendObject(object);
            }
        }
    };
    append(nodes, m_nodes);
    append(edges, m_edges);
}

void Collection::listInto(QxDNodeDList* nodes, QxDEdgeDList* edges) const {
    for (QxDList* list : {static_cast<QxDList*>(nodes), static_cast<QxDList*>(edges)}) {
        if (list != nullptr) {
            list->deleteAllCells();
        }
    }
    appendTo(nodes, edges);
}

}  // namespace qx::internal
