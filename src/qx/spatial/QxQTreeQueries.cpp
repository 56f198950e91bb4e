// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Questions by rectangle.
//
// The engine answers with whatever has a point in common with the rectangle by its stored shape:
// bodies as they are, segments between the centers of their ends. What it names is then asked
// whether it shows there: an edge brings its visible part up to date, and what is cut off does not
// count. A segment that nobody has made yet is made when it is reported.

#include <algorithm>
#include <utility>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxPEdge.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/spatial/QxQTree.h"
#include "qx/spatial/internal/DrawingOrder.h"
#include "qx/spatial/internal/IndexStore.h"

using Answer = qx::internal::IndexStore::Answer;
using qx::internal::bitOf;
using qx::internal::IndexKind;
using qx::internal::QuadBox;
using qx::internal::QuadHit;

namespace {

/// Where to look for objects that show in the rectangle. The drawn part of a segment ends at
/// rounded points, so that it may pass a unit beside the line between the centers, which the engine
/// knows.
QuadBox regionOf(const QxRect& rect, unsigned kinds) {
    const std::int32_t reach = (kinds & bitOf(IndexKind::PathEdge)) != 0 ? 1 : 0;
    return {qx::saturatingSub(rect.left(), reach), qx::saturatingSub(rect.bottom(), reach),
            qx::saturatingAdd(rect.right(), reach), qx::saturatingAdd(rect.top(), reach)};
}

IndexKind kindOf(const QuadHit& hit) {
    return static_cast<IndexKind>(hit.kind);
}

QxGraphObject* objectOf(const QuadHit& hit) {
    return reinterpret_cast<QxGraphObject*>(static_cast<std::uintptr_t>(hit.payload));
}

/// Whether the rectangle itself meets the box: the region is wider for the sake of segments only.
bool isNear(const qx::internal::QuadEngine& engine, const QuadHit& hit, const QxRect& rect) {
    return kindOf(hit) == IndexKind::PathEdge ||
           engine.boxAt(hit.place).meets({rect.left(), rect.bottom(), rect.right(), rect.top()});
}

/// Asks the memory for what showsIn looks at: for the objects, then for the edges of segments.
void fetchObjects(const std::vector<QuadHit>& hits, std::size_t from, std::size_t end) {
    // An object's flags stand at its start, the ends of an edge and the owner of a segment here.
    constexpr std::size_t Farther = 128;
    const auto fetch = [](const void* object) {
        __builtin_prefetch(object);
        __builtin_prefetch(static_cast<const char*>(object) + Farther);
    };
    for (std::size_t i = from; i < end; ++i) {
        fetch(objectOf(hits[i]));
    }
    for (std::size_t i = from; i < end; ++i) {
        const QxGraphObject* object = objectOf(hits[i]);
        if (kindOf(hits[i]) == IndexKind::PathEdge &&
            (object->flagWord() & qx::flags::PathObject) != 0) {
            fetch(static_cast<const QxPEdge*>(object)->pUnverifiedOwnerEdge());
        }
    }
}

/// Finds the objects to report among the hits.
void keepShown(const QxRect& rect, Answer& answer) {
    // In a large drawing the objects are far away: the memory is asked for many at once.
    constexpr std::size_t AtOnce = 64;
    const std::vector<QuadHit>& hits = answer.hits;
    for (std::size_t from = 0; from < hits.size(); from += AtOnce) {
        const std::size_t end = std::min(hits.size(), from + AtOnce);
        fetchObjects(hits, from, end);
        for (std::size_t i = from; i < end; ++i) {
            const IndexKind kind = kindOf(hits[i]);
            if (!qx::internal::showsIn(*objectOf(hits[i]), kind, rect)) {
                continue;
            }
            if (QxGraphObject* object = qx::internal::reportedObject(objectOf(hits[i]), kind)) {
                answer.found.push_back({object, kind});
            }
        }
    }
}

void fillLists(QxDList* const* lists, Answer& answer) {
    for (unsigned kind = 0; kind < 8; ++kind) {
        if (lists[kind] == nullptr) {
            continue;
        }
        answer.objects.clear();
        for (const qx::internal::FoundObject& found : answer.found) {
            if (found.kind == static_cast<IndexKind>(kind)) {
                answer.objects.push_back(found.object);
            }
        }
        lists[kind]->assignObjects(answer.objects.data(), answer.objects.size());
    }
}

}  // namespace

void QxQTree::buildLists(const QxRect* rect, QxDNodeDList* nodes, QxNodeLabelDList* nodeLabels,
                         QxPNodeDList* pathNodes, QxPEdgeDList* pathEdges,
                         QxEdgeLabelDList* edgeLabels, QxGraphLabelDList* graphLabels,
                         QxConnectorDList* connectors, QxConnectorLabelDList* connectorLabels,
                         int drawingOrder) {
    QxDList* const lists[] = {pathEdges,       pathNodes,  nodes,       nodeLabels,
                              connectorLabels, edgeLabels, graphLabels, connectors};
    unsigned kinds = 0;
    for (unsigned kind = 0; kind < 8; ++kind) {
        kinds |= lists[kind] != nullptr ? 1U << kind : 0U;
    }
    Answer answer = m_store->takeScratch();
    if (rect != nullptr && kinds != 0) {
        m_store->settle();
        // Collected first: to report a segment may make it, which changes the tree.
        const qx::internal::QuadEngine& engine = m_store->engine();
        engine.collect(regionOf(*rect, kinds), kinds, answer.hits);
        std::erase_if(answer.hits, [&](const QuadHit& hit) { return !isNear(engine, hit, *rect); });
        keepShown(*rect, answer);
        if (drawingOrder != 0) {
            qx::internal::putInDrawingOrder(answer.found);
        }
    }
    fillLists(lists, answer);
    m_store->giveBack(std::move(answer));
}

int QxQTree::overlaps(const QxRect* rect, int nodes, int pathNodes, int pathEdges, int nodeLabels,
                      int connectorLabels, int edgeLabels, int graphLabels, int connectors) {
    const int wanted[] = {pathEdges,       pathNodes,  nodes,       nodeLabels,
                          connectorLabels, edgeLabels, graphLabels, connectors};
    unsigned kinds = 0;
    for (unsigned kind = 0; kind < 8; ++kind) {
        kinds |= wanted[kind] != 0 ? 1U << kind : 0U;
    }
    if (rect == nullptr || kinds == 0) {
        return 0;
    }
    m_store->settle();
    const auto test = [&](const QuadHit& hit) {
        return isNear(m_store->engine(), hit, *rect) &&
               qx::internal::showsIn(*objectOf(hit), kindOf(hit), *rect);
    };
    return m_store->engine().overlaps(regionOf(*rect, kinds), kinds, test) ? 1 : 0;
}
