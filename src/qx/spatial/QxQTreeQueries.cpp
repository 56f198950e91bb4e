// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Questions by rectangle.
//
// The engine answers with whatever has a point in common with the rectangle by its stored shape:
// bodies as they are, segments between the centers of their ends. What it names is then asked
// whether it shows there: an edge brings its visible part up to date, and what is cut off does not
// count. A segment that nobody has made yet is made when it is reported.

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/spatial/QxQTree.h"
#include "qx/spatial/internal/DrawingOrder.h"
#include "qx/spatial/internal/IndexStore.h"

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

QxGraphObject* objectOf(const QuadHit& hit) {
    return reinterpret_cast<QxGraphObject*>(static_cast<std::uintptr_t>(hit.payload));
}

/// The region is wider than the rectangle for the sake of segments only.
bool shows(const qx::internal::QuadEngine& engine, const QuadHit& hit, const QxRect& rect) {
    const QuadBox exact{rect.left(), rect.bottom(), rect.right(), rect.top()};
    if (hit.kind != static_cast<unsigned>(IndexKind::PathEdge) &&
        !engine.shape(hit.slot).box.meets(exact)) {
        return false;
    }
    return qx::internal::showsIn(*objectOf(hit), static_cast<IndexKind>(hit.kind), rect);
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
        if (lists[kind] != nullptr) {
            lists[kind]->deleteAllCells();
            kinds |= 1U << kind;
        }
    }
    if (rect == nullptr || kinds == 0) {
        return;
    }
    m_store->settle();
    // Collected first: to report a segment may make it.
    std::vector<QuadHit> hits;
    m_store->engine().collect(regionOf(*rect, kinds), kinds, hits);
    std::vector<qx::internal::FoundObject> found;
    found.reserve(hits.size());
    for (const QuadHit& hit : hits) {
        if (shows(m_store->engine(), hit, *rect)) {
            const auto kind = static_cast<IndexKind>(hit.kind);
            if (QxGraphObject* object = qx::internal::reportedObject(objectOf(hit), kind)) {
                found.push_back({object, kind});
            }
        }
    }
    if (drawingOrder != 0) {
        qx::internal::putInDrawingOrder(found);
    }
    for (const qx::internal::FoundObject& object : found) {
        lists[static_cast<unsigned>(object.kind)]->appendObject(object.object);
    }
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
    const auto test = [&](const QuadHit& hit) { return shows(m_store->engine(), hit, *rect); };
    return m_store->engine().overlaps(regionOf(*rect, kinds), kinds, test) ? 1 : 0;
}
