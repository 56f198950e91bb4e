// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "nesting/ComplexityTesting.h"
#include "nesting/NestedWorld.h"
#include "qx/nesting/QxFindChilPar.h"

namespace {

using namespace qxtest;

/// The search in plain words, by recursion.
struct PlainSearch {
    PlainSearch(QxDNode* start, std::int32_t depth, bool forward, bool backward,
                const QxDGraph* hideGraph)
        : first(start->pOwnerGraph()),
          second(hideGraph),
          findsChildren(forward),
          findsParents(backward) {
        find(nullptr, start, depth);
        nodes.erase(std::remove(nodes.begin(), nodes.end(), start), nodes.end());
    }

    void find(QxDEdge* via, QxDNode* node, std::int32_t depth) {
        const auto known = levelsLeft.find(node);
        const bool isNew = known == levelsLeft.end();
        if (isNew ? depth != -2 && depth < 0 : known->second >= depth) {
            if (!isNew && via != nullptr) {
                edges.push_back(via);
            }
            return;
        }
        if (isNew) {
            nodes.push_back(node);
        }
        if (via != nullptr) {
            edges.push_back(via);
        }
        levelsLeft[node] = depth;
        goOn(*node, depth == -2 ? depth : depth - 1);
    }

    void goOn(const QxDNode& node, std::int32_t depth) {
        const QxDGraph* here = node.pOwnerGraph();
        for (QxDEdge* edge : objectsOf<QxDEdge>(*node.pOutEdgeList())) {
            if (findsChildren && edge->pOwnerGraph() == here) {
                find(edge, edge->pTargetNode(), depth);
            }
        }
        for (QxDEdge* edge : objectsOf<QxDEdge>(*node.pInEdgeList())) {
            if (findsParents && edge->pOwnerGraph() == here) {
                find(edge, edge->pSourceNode(), depth);
            }
        }
        auto idle =
            second != nullptr ? objectsOf<QxDEdge>(*node.pDisconnectedEdgeList()) : DEdges();
        idle.erase(std::unique(idle.begin(), idle.end()), idle.end());
        for (QxDEdge* edge : idle) {
            if (findsChildren && edge->pSourceNode() == &node &&
                leads(*edge, node, edge->pTargetNode())) {
                find(edge, edge->pTargetNode(), depth);
            }
            if (findsParents && edge->pTargetNode() == &node &&
                leads(*edge, node, edge->pSourceNode())) {
                find(edge, edge->pSourceNode(), depth);
            }
        }
    }

    bool leads(const QxDEdge& edge, const QxDNode& from, const QxDNode* end) const {
        const QxDGraph* here = from.pOwnerGraph();
        const QxDGraph* other = here == first ? second : first;
        const QxDGraph* around = end != nullptr ? end->pOwnerGraph() : nullptr;
        const QxDGraph* owner = edge.pOwnerGraph();
        return (owner == here && around == other) ||
               (edge.hidden() != 0 && (owner == here || owner == other) &&
                (around == here || around == other));
    }

    const QxDGraph* first;
    const QxDGraph* second;
    bool findsChildren;
    bool findsParents;
    std::map<const QxDNode*, std::int32_t> levelsLeft;
    DNodes nodes;
    DEdges edges;
};

class FindingSeeds : public testing::TestWithParam<std::uint32_t> {};

TEST_P(FindingSeeds, FindsWhatAPlainSearchFinds) {
    const std::uint32_t seed = testSeed(GetParam());
    SCOPED_TRACE(seedTrace(seed));
    QxFactory factory;
    NestedWorld world(factory, seed);
    TestRandom& random = world.random;
    std::size_t found = 0;
    std::size_t foundHidden = 0;
    for (int i = 0; i < 300; ++i) {
        world.step();
        if (random.chance(20)) {
            const QxDNodeDList some = nodeList({random.pick(world.nodes())});
            some.pFirstNode()->pOwnerGraph()->hide(&some, nullptr, nullptr, nullptr);
        }
        QxDNode* node = random.pick(world.nodes());
        QxDGraph* graph = node->pOwnerGraph();
        for (int edges = 0; edges < 3; ++edges) {
            const auto all = objectsOf<QxDNode>(*random.pick(world.graphs())->pNodeList());
            if (!all.empty()) {
                world.manager->addEdge(random.pick(all), random.pick(all), 0);
            }
        }
        const auto depth = static_cast<std::int32_t>(random.below(8)) - 3;
        const int both = random.below(2);
        const bool isParents = random.chance(50);
        const auto check = [&](const QxDGraph* hidden, bool onlyHidden, auto children,
                               auto parents) {
            PlainSearch plain(node, depth, both != 0 || !isParents, both != 0 || isParents, hidden);
            QxDNodeDList nodes = nodeList({node});
            QxDEdgeDList edges;
            (node->*(isParents ? parents : children))(&nodes, &edges, depth, both);
            if (onlyHidden) {
                const auto drop = [&](auto& objects) {
                    objects.erase(std::remove_if(objects.begin(), objects.end(),
                                                 [](auto* one) { return one->hidden() == 0; }),
                                  objects.end());
                };
                drop(plain.nodes);
                drop(plain.edges);
            }
            if (onlyHidden && hidden == nullptr) {
                plain = PlainSearch(node, -1, false, false, nullptr);
                plain.nodes = {node};  // what was in the list
            }
            ASSERT_EQ(objectsOf<QxDNode>(nodes), plain.nodes) << "at step " << i;
            ASSERT_EQ(objectsOf<QxDEdge>(edges), plain.edges) << "at step " << i;
            QxDEdgeDList edgesAlone;
            (node->*(isParents ? parents : children))(nullptr, &edgesAlone, depth, both);
            ASSERT_EQ(objectsOf<QxDEdge>(edgesAlone), plain.edges) << "at step " << i;
            (onlyHidden && hidden != nullptr ? foundHidden : found) += plain.nodes.size();
        };
        const QxDGraph* hidden = graph->pHideGraph();
        check(nullptr, false, &QxDNode::findChildren, &QxDNode::findParents);
        check(hidden, false, &QxDNode::findHiddenAndUnhiddenChildren,
              &QxDNode::findHiddenAndUnhiddenParents);
        check(hidden, true, &QxDNode::findHiddenChildren, &QxDNode::findHiddenParents);
        for (const QxDNode* one : world.nodes()) {
            ASSERT_EQ(one->flagWord() & qx::flags::NodeCollected, 0U) << "a mark is left";
        }
    }
    EXPECT_GT(found, 500U) << "the world is too thin to tell anything";
    EXPECT_GT(foundHidden, 20U);
}

INSTANTIATE_TEST_SUITE_P(Seeds, FindingSeeds, testing::Range(1U, 6U));

}  // namespace
