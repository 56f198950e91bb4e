// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Graphs stamp what they append to their lists, so that the order of what was found is a matter of
// sorting it, O(k log k). Only an owner of which several parts were found is walked.

#include "qx/spatial/internal/DrawingOrder.h"

#include <algorithm>
#include <unordered_map>

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxDrawingIters.h"
#include "qx/drawing/QxEdgeLabel.h"
#include "qx/drawing/QxNodeLabel.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/foundation/graph/internal/EachObject.h"

namespace qx::internal {

namespace {

struct Place {
    std::uint64_t stamp;
    /// What the object is a part of: several parts of one owner stand in its own order.
    const QxGraphObject* owner;
    FoundObject found;
};

std::uint64_t stampOf(const QxGraphMember* member) {
    return member != nullptr ? member->listStamp() : 0;
}

Place placeOf(const FoundObject& found) {
    switch (found.kind) {
        case IndexKind::Node: {
            const auto* node = static_cast<const QxDNode*>(found.object);
            return {stampOf(node), node, found};
        }
        case IndexKind::PathEdge: {
            const QxDEdge* edge = static_cast<const QxPEdge*>(found.object)->pOwnerEdge();
            return {stampOf(edge), edge, found};
        }
        case IndexKind::PathNode: {
            const QxDEdge* edge = static_cast<const QxPNode*>(found.object)->pOwnerEdge();
            return {stampOf(edge), edge, found};
        }
        case IndexKind::Connector: {
            const QxDNode* node = static_cast<const QxConnector*>(found.object)->pOwnerNode();
            return {stampOf(node), node, found};
        }
        case IndexKind::ConnectorLabel: {
            const auto* label = static_cast<const QxLabel*>(found.object);
            const QxDNode* node = label->pOwnerConnector()->pOwnerNode();
            return {stampOf(node), node, found};
        }
        case IndexKind::NodeLabel: {
            const QxDNode* node = static_cast<const QxLabel*>(found.object)->pOwnerNode();
            return {stampOf(node), node, found};
        }
        case IndexKind::EdgeLabel: {
            const QxDEdge* edge = static_cast<const QxLabel*>(found.object)->pOwnerEdge();
            return {stampOf(edge), edge, found};
        }
        case IndexKind::GraphLabel:
            break;
    }
    return {0, static_cast<const QxLabel*>(found.object)->pOwnerGraph(), found};
}

template <class Owner, class Act>
void eachLabelOf(const Owner& owner, const Act& act) {
    if (const QxDList* labels = owner.pLabelList()) {
        for (const QxLabel* label : each<QxLabel>(*labels)) {
            act(label);
        }
    }
}

/// Calls `act` with the parts of the owner of that kind, in its own order.
template <class Act>
void eachPartOf(const QxGraphObject& owner, IndexKind kind, const Act& act) {
    if (kind == IndexKind::GraphLabel) {
        eachLabelOf(static_cast<const QxDGraph&>(owner), act);
    } else if (kind == IndexKind::EdgeLabel) {
        eachLabelOf(static_cast<const QxDEdge&>(owner), act);
    } else if (kind == IndexKind::NodeLabel) {
        eachLabelOf(static_cast<const QxDNode&>(owner), act);
    } else if (kind == IndexKind::PathEdge || kind == IndexKind::PathNode) {
        for (QxPathIter part(static_cast<const QxDEdge*>(&owner)); part; ++part) {
            act(part.pEdge());
            act(part.pNode());
        }
    } else {
        for (QxInternalConnectorIter it(static_cast<const QxDNode*>(&owner)); it; ++it) {
            act(it.pConnector());
            eachLabelOf(*it.pConnector(), act);
        }
    }
}

void orderWithinOwner(std::vector<Place>::iterator first, std::vector<Place>::iterator last) {
    std::unordered_map<const QxGraphObject*, std::int32_t> position;
    for (auto at = first; at != last; ++at) {
        position.emplace(at->found.object, 0);
    }
    std::int32_t index = 0;
    eachPartOf(*first->owner, first->found.kind, [&](const QxGraphObject* part) {
        if (const auto at = position.find(part); at != position.end()) {
            at->second = ++index;
        }
    });
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
    std::sort(places.begin(), places.end(), [](const Place& a, const Place& b) {
        return a.found.kind != b.found.kind ? a.found.kind < b.found.kind : a.stamp < b.stamp;
    });
    for (auto first = places.begin(); first != places.end();) {
        const auto last = std::find_if(first, places.end(), [&](const Place& place) {
            return place.owner != first->owner || place.found.kind != first->found.kind;
        });
        if (first->owner != nullptr && last - first > 1) {
            orderWithinOwner(first, last);
        }
        first = last;
    }
    for (std::size_t i = 0; i < places.size(); ++i) {
        found[i] = places[i].found;
    }
}

}  // namespace qx::internal
