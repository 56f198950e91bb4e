// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "qx/foundation/graph/QxChildGraphForest.h"
#include "qx/foundation/graph/QxChildGraphForestEdge.h"
#include "support/GraphTesting.h"

namespace {

using namespace qxtest;
using testing::ElementsAre;

/// Graphs 0 to 4 of one manager, each with one node; graph i + 1 is nested in node i for i < 3.
class QxChildGraphForestNesting : public testing::Test {
protected:
    QxChildGraphForestNesting() {
        for (int i = 0; i < 5; ++i) {
            graphs.push_back(manager->addGraph(0));
            nodes.push_back(graphs.back()->addNode(0));
        }
        for (std::size_t i = 0; i < 3; ++i) {
            nodes[i]->pChildGraph(graphs[i + 1]);
        }
    }
    ~QxChildGraphForestNesting() override { EXPECT_NE(manager->checkInvariants(), 0); }

    Graphs allChildren(const QxGraph* graph) const {
        QxGraphDList list;
        graph->buildAllChildGraphList(&list);
        return objectsOf<QxGraph>(list);
    }
    QxChildGraphForest& forest() const { return *manager->pChildGraphForest(); }

    GraphFactory factory;
    Ref<QxGraphManager> manager{factory.newManager()};
    Graphs graphs;
    Nodes nodes;
};

TEST_F(QxChildGraphForestNesting, ARemovedMemberKeepsItsChildGraphAndComesBackWithIt) {
    graphs[1]->removeNode(nodes[1]);
    EXPECT_THAT(allChildren(graphs[0]), ElementsAre(graphs[1]));
    EXPECT_EQ(nodes[1]->pChildGraph(), graphs[2]);
    EXPECT_EQ(nodes[4]->pChildGraph(graphs[2]), nullptr) << "it has a parent, though that is out";
    EXPECT_EQ(forest().pNearestCommonGraph(graphs[0], graphs[2]), nullptr);
    graphs[4]->insertNode(nodes[1]);
    EXPECT_THAT(allChildren(graphs[4]), ElementsAre(graphs[2], graphs[3]));
    EXPECT_EQ(forest().pNearestCommonGraph(graphs[4], graphs[3]), graphs[4]);
}

// Climbing to the top for every relation would be quadratic.
TEST_F(QxChildGraphForestNesting, LongChainsAreNestedAtTheCostOfTheirLength) {
    QxNode* inner = nodes[4];
    QxGraph* outer = graphs[0];
    for (int i = 0; i < 100'000; ++i) {
        QxGraph* next = manager->addGraph(0);
        if (i % 2 == 0) {
            ASSERT_NE(inner->pChildGraph(next), nullptr);
            inner = next->addNode(0);
        } else {
            ASSERT_NE(next->addNode(0)->pChildGraph(outer), nullptr);
            outer = next;
        }
    }
    inner->pChildGraph(outer);
    QxNode* deepest = nodes[3];
    EXPECT_EQ(manager->addEdge(inner, deepest, 0)->pNearestCommonGraph(), inner->pOwnerGraph());
    EXPECT_EQ(deepest->pChildGraph(graphs[4]), nullptr) << "a ring";
    manager->discardGraph(outer);
}

TEST_F(QxChildGraphForestNesting, ADiscardedMemberFreesItsChildGraphEvenWhenSomebodyHoldsIt) {
    const Ref<QxNode> held = hold(nodes[0]);
    const Ref<QxChildGraphForestEdge> relation = hold(nodes[0]->pChildGraphForestEdge());
    graphs[0]->discardNode(nodes[0]);
    EXPECT_EQ(held->pChildGraph(), nullptr);
    EXPECT_EQ(relation->pGraphMember(), nullptr);
    EXPECT_EQ(nodes[4]->pChildGraph(graphs[1]), graphs[1]);
}

TEST_F(QxChildGraphForestNesting, NearestCommonGraphsOfEdges) {
    QxEdge* up = manager->addEdge(nodes[3], nodes[0], 0);
    EXPECT_EQ(up->pNearestCommonGraph(), graphs[0]);
    QxNode* sibling = graphs[1]->addNode(0);
    sibling->pChildGraph(graphs[4]);
    EXPECT_EQ(manager->addEdge(nodes[4], nodes[3], 0)->pNearestCommonGraph(), graphs[1]);
    EXPECT_EQ(manager->addEdge(sibling, nodes[1], 0)->pNearestCommonGraph(), graphs[1]);
    sibling->pChildGraph(nullptr);
    EXPECT_EQ(manager->addEdge(nodes[4], nodes[3], 0)->pNearestCommonGraph(), nullptr);
}

TEST_F(QxChildGraphForestNesting, ChildGraphListsFollowTheRelationsLevelByLevel) {
    QxNode* second = graphs[0]->addNode(0);
    second->pChildGraph(graphs[4]);
    QxGraphDList direct;
    graphs[0]->buildChildGraphList(&direct);
    EXPECT_THAT(objectsOf<QxGraph>(direct), ElementsAre(graphs[1], graphs[4]));
    EXPECT_THAT(allChildren(graphs[0]), ElementsAre(graphs[1], graphs[4], graphs[2], graphs[3]));
}

}  // namespace
