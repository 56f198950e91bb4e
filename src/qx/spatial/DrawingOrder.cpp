// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Graphs stamp what they append to their lists, so that the order of what was found is a matter of
// sorting it, O(k log k). Only of an edge of which several parts were found is the path walked.

#include "qx/spatial/internal/DrawingOrder.h"

#include <algorithm>
#include <unordered_map>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxPathIter.h"

namespace qx::internal {

namespace {

struct Place {
    std::uint64_t stamp;
    const QxDEdge* edge;
    FoundObject found;
};

/// The node or edge that the graph lists, of which the object is a part.
Place placeOf(const FoundObject& found) {
    const QxDEdge* edge = nullptr;
    if (found.kind == IndexKind::PathEdge) {
        edge = static_cast<const QxPEdge*>(found.object)->pOwnerEdge();
    } else if (found.kind == IndexKind::PathNode) {
        edge = static_cast<const QxPNode*>(found.object)->pOwnerEdge();
    }
    const auto* member = edge != nullptr ? static_cast<const QxGraphMember*>(edge)
                                         : static_cast<const QxGraphMember*>(found.object);
    return {member->listStamp(), edge, found};
}

void orderAlongPath(const QxDEdge& edge, std::vector<Place>::iterator first,
                    std::vector<Place>::iterator last) {
    std::unordered_map<const QxGraphObject*, std::int32_t> position;
    for (auto at = first; at != last; ++at) {
        position.emplace(at->found.object, 0);
    }
    std::int32_t index = 0;
    const auto number = [&](const QxGraphObject* part) {
        if (const auto at = position.find(part); at != position.end()) {
            at->second = ++index;
        }
    };
    for (QxPathIter part(&edge); part; ++part) {
        number(part.pEdge());
        number(part.pNode());
    }
    std::sort(first, last, [&](const Place& a, const Place& b) {
        return position[a.found.object] < position[b.found.object];
    });
}

}  // namespace

void putInDrawingOrder(std::vector<FoundObject>& found) {
    std::vector<Place> places;
    places.reserve(found.size());
    for (const FoundObject& object : found) {
        places.push_back(placeOf(object));
    }
    std::sort(places.begin(), places.end(),
              [](const Place& a, const Place& b) { return a.stamp < b.stamp; });
    for (auto first = places.begin(); first != places.end();) {
        const auto last = std::find_if(
            first, places.end(), [&](const Place& place) { return place.edge != first->edge; });
        if (first->edge != nullptr && last - first > 1) {
            orderAlongPath(*first->edge, first, last);
        }
        first = last;
    }
    for (std::size_t i = 0; i < places.size(); ++i) {
        found[i] = places[i].found;
    }
}

}  // namespace qx::internal
