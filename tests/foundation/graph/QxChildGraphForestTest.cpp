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
using testing::IsEmpty;

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

TEST_F(QxChildGraphForestNesting, CyclesSecondParentsAndForeignGraphsAreRefused) {
    EXPECT_EQ(nodes[3]->pChildGraph(graphs[0]), nullptr) << "a cycle of four";
    EXPECT_EQ(nodes[4]->pChildGraph(graphs[4]), nullptr) << "itself";
    EXPECT_EQ(nodes[4]->pChildGraph(graphs[2]), nullptr) << "nested already";
    EXPECT_EQ(nodes[4]->pChildGraph(manager->pIntergraph()), nullptr);
    const Ref<QxGraphManager> other(factory.newManager());
    EXPECT_EQ(nodes[0]->pChildGraph(other->addGraph(0)), graphs[1]) << "the old relation stays";
    EXPECT_EQ(graphs[1]->pParentNode(), nodes[0]);
    EXPECT_EQ(nodes[0]->pChildGraph(graphs[4]), graphs[4]);
    EXPECT_EQ(graphs[1]->isChildGraph(), 0);
}

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

TEST_F(QxChildGraphForestNesting, AMemberThatComesIntoItsOwnChildGraphLosesIt) {
    graphs[1]->removeNode(nodes[1]);
    graphs[3]->insertNode(nodes[1]);
    EXPECT_EQ(nodes[1]->pChildGraph(), nullptr);
    EXPECT_EQ(graphs[2]->isChildGraph(), 0);
    EXPECT_NE(graphs[3]->transferTopology(graphs[2]), 0) << "node 2 comes into what it contains";
    EXPECT_EQ(nodes[2]->pChildGraph(), nullptr);
}

TEST_F(QxChildGraphForestNesting, ACycleCannotBeClosedWhileAMemberIsOut) {
    graphs[0]->removeNode(nodes[0]);
    EXPECT_EQ(nodes[3]->pChildGraph(graphs[0]), graphs[0]);
    graphs[0]->insertNode(nodes[0]);
    EXPECT_EQ(nodes[0]->pChildGraph(), nullptr);
    EXPECT_THAT(allChildren(graphs[1]), ElementsAre(graphs[2], graphs[3], graphs[0]));
}

TEST_F(QxChildGraphForestNesting, TransferredMembersTakeTheirChildGraphsAlong) {
    EXPECT_NE(graphs[4]->transferTopology(graphs[0]), 0);
    EXPECT_THAT(allChildren(graphs[0]), IsEmpty());
    EXPECT_THAT(allChildren(graphs[4]), ElementsAre(graphs[1], graphs[2], graphs[3]));
    manager->discardGraph(graphs[0]);
    EXPECT_EQ(nodes[0]->pChildGraph(), graphs[1]);

    const Ref<QxGraphManager> other(factory.newManager());
    QxGraph* elsewhere = other->addGraph(0);
    elsewhere->transferTopology(graphs[4]);
    EXPECT_EQ(nodes[0]->pChildGraph(), nullptr) << "its child graph stayed with the old manager";
    EXPECT_NE(other->checkInvariants(), 0);
}

TEST_F(QxChildGraphForestNesting, ARemovedGraphLosesItsRelationsUpwardAndDownward) {
    const Ref<QxGraph> removed(manager->removeGraph(graphs[1]));
    EXPECT_EQ(nodes[0]->pChildGraph(), nullptr);
    EXPECT_EQ(nodes[1]->pChildGraph(), nullptr);
    EXPECT_EQ(graphs[2]->isChildGraph(), 0);
    EXPECT_THAT(allChildren(graphs[2]), ElementsAre(graphs[3]));
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

TEST_F(QxChildGraphForestNesting, AManagersGraphsMoveWithAllTheirRelations) {
    QxEdge* between = manager->addEdge(nodes[0], nodes[3], 0);
    QxNode* out = graphs[0]->addNode(0);
    between->pChildGraph(graphs[4]);
    QxGraph* sixth = manager->addGraph(0);
    out->pChildGraph(sixth);
    graphs[0]->removeNode(out);

    const Ref<QxGraphManager> other(factory.newManager());
    ASSERT_NE(other->transferTopology(manager.get()), 0);
    EXPECT_NE(other->checkInvariants(), 0);
    EXPECT_EQ(manager->numberOfGraphs(), 0);
    EXPECT_NE(between->connected(), 0);
    EXPECT_EQ(graphs[4]->pParentEdge(), between);
    EXPECT_THAT(allChildren(other->pIntergraph()), ElementsAre(graphs[4]));
    EXPECT_THAT(allChildren(graphs[0]), ElementsAre(graphs[1], graphs[2], graphs[3]))
        << "the one of the node that is out stays out";
    graphs[2]->insertNode(out);
    EXPECT_THAT(allChildren(graphs[2]), ElementsAre(graphs[3], sixth));
}

}  // namespace
