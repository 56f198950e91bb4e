// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Who runs beside whom: edges between two nodes are found in the lists of the node of lower degree,
// never in those of the graph, and parted by hashing, so that any number of parallel edges costs no
// more each than a few.

#include "qx/drawing/bundles/internal/Siblings.h"

#include <algorithm>
#include <cstddef>
#include <unordered_map>
#include <utility>

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/connectors/internal/ConnectorPlace.h"
#include "qx/foundation/graph/internal/EachObject.h"

namespace qx::internal {

namespace {

/// The specified connectors of an edge, at a node and at the other one.
struct FixedEnds {
    const QxConnector* here;
    const QxConnector* there;

    FixedEnds(const QxDEdge& edge, const QxNode* node)
        : here(edge.pSourceConnector()), there(edge.pTargetConnector()) {
        if (edge.pSourceNode() != node) {
            std::swap(here, there);
        }
    }
    bool operator==(const FixedEnds&) const = default;
};

struct FixedEndsHash {
    std::size_t operator()(const FixedEnds& ends) const {
        const std::hash<const QxConnector*> hash;
        return hash(ends.here) * 31 + hash(ends.there);
    }
};

}  // namespace

std::int64_t degreeOf(const QxDNode& node) {
    return std::int64_t{node.pInEdgeList()->count()} + node.pOutEdgeList()->count();
}

bool isSibling(const QxDEdge& edge, const QxDEdge& other) {
    const QxNode* source = edge.pSourceNode();
    const QxNode* target = edge.pTargetNode();
    const bool isSameWay = other.pSourceNode() == source && other.pTargetNode() == target;
    const bool isOtherWay = other.pSourceNode() == target && other.pTargetNode() == source;
    return (isSameWay || isOtherWay) && other.connected() != 0 && other.deactivated() == 0 &&
           other.pOwnerGraph() == edge.pOwnerGraph();
}

void sortByStamp(Siblings& edges) {
    const auto isBefore = [](const QxDEdge* a, const QxDEdge* b) {
        return a->listStamp() < b->listStamp();
    };
    if (!std::is_sorted(edges.begin(), edges.end(), isBefore)) {
        std::sort(edges.begin(), edges.end(), isBefore);
    }
}

Siblings siblingsOf(const QxDEdge& edge) {
    Siblings found;
    const QxDNode* source = edge.pSourceNode();
    const QxDNode* target = edge.pTargetNode();
    if (source == nullptr || target == nullptr || edge.pOwnerGraph() == nullptr) {
        return found;
    }
    const QxDNode& node = degreeOf(*source) <= degreeOf(*target) ? *source : *target;
    for (const QxEdgeDList* list : {node.pInEdgeList(), node.pOutEdgeList()}) {
        for (QxDEdge* other : each<QxDEdge>(*list)) {
            if (isSibling(edge, *other) &&
                (other->reflexive() == 0 || list == node.pInEdgeList())) {
                found.push_back(other);
            }
        }
    }
    sortByStamp(found);
    return found;
}

std::vector<Siblings> bundlesOf(const Siblings& edges) {
    std::vector<Siblings> bundles;
    std::unordered_map<FixedEnds, std::size_t, FixedEndsHash> known;
    for (QxDEdge* edge : edges) {
        const FixedEnds ends(*edge, edges.front()->pSourceNode());
        const auto [at, isNew] = known.emplace(ends, bundles.size());
        if (isNew) {
            bundles.emplace_back();
        }
        bundles[at->second].push_back(edge);
    }
    bundles.erase(std::remove_if(bundles.begin(), bundles.end(),
                                 [](const Siblings& bundle) { return bundle.size() < 2; }),
                  bundles.end());
    return bundles;
}

void holdEnd(QxDEdge& edge, bool atSource, const QxPoint& at, QxDirectionEnum direction) {
    QxDNode* node = atSource ? edge.pSourceNode() : edge.pTargetNode();
    if (node == nullptr) {
        return;  // a listener was faster
    }
    const ConnectorPlace place = placeOnNode(edge, *node->pIRect(), at, Thousandths::Truncated);
    QxConnector* connector =
        atSource ? edge.pInternalSourceConnector() : edge.pInternalTargetConnector();
    // What clients have placed stays where it is, and so does what other edges share.
    const bool isOwn = connector != nullptr && connector->specified() == 0;
    if (isOwn && place.isPlaceOf(*connector)) {
        connector->routingDirection(direction);
        return;
    }
    if (isOwn) {
        atSource ? edge.resetFromConnector() : edge.resetToConnector();
    }
    if (isOwn && connector->isUsed() == 0) {
        place.giveTo(*connector);
    } else {
        connector = place.newConnector(*node);
    }
    if (connector != nullptr) {
        connector->routingDirection(direction);
    }
    atSource ? edge.pSourceConnector(connector) : edge.pTargetConnector(connector);
}

}  // namespace qx::internal
