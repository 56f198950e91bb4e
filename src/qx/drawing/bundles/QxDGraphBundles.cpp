// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// All bundles and all self-loops of a graph, each as often as it is there: once. Edges are counted
// by the pair of their nodes, so that neither a node with many neighbours nor a pair with many
// edges costs more than their number.

#include <cstddef>
#include <functional>
#include <unordered_map>
#include <utility>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/drawing/bundles/internal/Siblings.h"
#include "qx/foundation/graph/internal/EachObject.h"

using qx::internal::Change;
using qx::internal::each;
using qx::internal::Siblings;

namespace {

/// Two nodes, in whatever order.
struct Pair {
    explicit Pair(const QxDEdge& edge) : a(edge.pSourceNode()), b(edge.pTargetNode()) {
        if (std::less<>()(b, a)) {
            std::swap(a, b);
        }
    }
    bool operator==(const Pair&) const = default;

    const QxNode* a;
    const QxNode* b;
};

struct PairHash {
    std::size_t operator()(const Pair& pair) const {
        const std::hash<const QxNode*> hash;
        return hash(pair.a) * 0x9E3779B1U + hash(pair.b);
    }
};

/// Every edge at a node of the graph once, node by node, those that come in before those that
/// leave; the edges between graphs, which have no nodes of their own, in the order of their list.
template <class Act>
void eachEdgeAtNodes(const QxDGraph& graph, const Act& act) {
    if (graph.isIntergraph() != 0) {
        for (QxDEdge* edge : each<QxDEdge>(*graph.pEdgeList())) {
            act(edge);
        }
        return;
    }
    for (const QxDNode* node : each<QxDNode>(*graph.pNodeList())) {
        for (const QxEdgeDList* edges : {node->pInEdgeList(), node->pOutEdgeList()}) {
            for (QxDEdge* edge : each<QxDEdge>(*edges)) {
                const QxNode* other = edge->pOtherNode(node);
                const bool isDone =
                    other->pOwnerGraph() == &graph && other->listStamp() < node->listStamp();
                if (!isDone) {
                    act(edge);
                }
            }
        }
    }
}

/// The edges at nodes of the graph that have siblings, by their pairs, each pair in the order of
/// the list of edges.
std::vector<Siblings> siblingsIn(const QxDGraph& graph) {
    constexpr std::size_t Alone = ~std::size_t{0};
    struct Group {
        QxDEdge* first;
        std::size_t number = Alone;
    };
    std::unordered_map<Pair, Group, PairHash> groups;
    groups.reserve(static_cast<std::size_t>(graph.pEdgeList()->count()));
    std::vector<Siblings> siblings;
    eachEdgeAtNodes(graph, [&](QxDEdge* edge) {
        if (edge->reflexive() != 0 || edge->deactivated() != 0) {
            return;
        }
        const auto [at, isNew] = groups.emplace(Pair(*edge), Group{edge});
        if (isNew) {
            return;
        }
        Group& group = at->second;
        if (group.number == Alone) {
            group.number = siblings.size();
            siblings.push_back({group.first});
        }
        siblings[group.number].push_back(edge);
    });
    for (Siblings& edges : siblings) {
        qx::internal::sortByStamp(edges);
    }
    return siblings;
}

}  // namespace

void QxDGraph::reorganizeMultiEdges(QxMultiEdgeModeEnum mode) {
    if (mode == QxMultiEdgeUntouched) {
        return;
    }
    std::vector<Siblings> bundles;
    for (const Siblings& edges : siblingsIn(*this)) {
        for (Siblings& bundle : qx::internal::bundlesOf(edges)) {
            bundles.push_back(std::move(bundle));
        }
    }
    const qx::internal::Ref alive(*this);
    Change::inGraph(*this, [&] { qx::internal::layOutBundles(mode, bundles); });
}

void QxDGraph::reorganizeReflexiveEdges() {
    const qx::internal::Ref alive(*this);
    Change::inGraph(*this, [&] {
        for (QxDNode* node : qx::internal::Snapshot<QxDNode>(pNodeList())) {
            if (node->pOwnerGraph() == this) {
                node->reorganizeReflexiveEdges();
            }
        }
    });
}
