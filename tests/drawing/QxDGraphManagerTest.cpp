// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/drawing/QxDGraphManager.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "drawing/DrawingTesting.h"

namespace {

using namespace qxtest;
using testing::ElementsAre;
using testing::IsEmpty;

class QxDGraphManagerTest : public testing::Test {
protected:
    QxFactory factory;
    SmallDrawing drawing{factory};
    QxDGraphManager* manager = drawing.manager.get();
    QxDGraph* graph = drawing.graph;
};

TEST_F(QxDGraphManagerTest, TheIntergraphIsMadeOnDemandAndStays) {
    EXPECT_EQ(manager->pQueryIntergraph(), nullptr);
    QxDNode* a = drawing.addNode(0, 0);
    QxDNode* b = drawing.addNode(100, 0);
    QxDEdge* inside = manager->addEdge(a, b, 0);
    QxDGraph* between = manager->pQueryIntergraph();
    ASSERT_NE(between, nullptr);
    EXPECT_EQ(inside->pOwnerGraph(), graph) << "it lies within one graph";
    EXPECT_EQ(between->isIntergraph(), 1);
    EXPECT_EQ(between->pOwnerGraphManager(), manager);
    EXPECT_EQ(between->isVisible(), 1);
    QxDNode* c = manager->addGraph(0)->addNode(0);
    QxDEdge* across = manager->addEdge(a, c, 0);
    EXPECT_EQ(across->pOwnerGraph(), between);
    EXPECT_EQ(across->isVisible(), 0) << "its target is not";

    EXPECT_EQ(manager->removeGraph(between), nullptr);
    EXPECT_EQ(manager->discardGraph(between), 0);
    EXPECT_EQ(manager->pQueryIntergraph(), between);
    EXPECT_EQ(manager->removeEdge(nullptr), nullptr);
    EXPECT_EQ(manager->discardEdge(across), 1);
    EXPECT_EQ(manager->discardEdge(inside), 1);
    EXPECT_EQ(manager->addEdge(a, nullptr, 0), nullptr);
}

class OpenGraph : public QxDGraph {
public:
    using QxDGraph::QxDGraph;
    using QxDGraph::vUpdateTransform;
};

class OpenFactory : public QxFactory {
protected:
    QxDGraph* vNewDGraph(QxOwnedObject* owner, int type) override {
        return new OpenGraph(owner, type, this);
    }
};

TEST(QxDGraphManager, TheIntergraphSharesTheTransformOfTheAnchor) {
    OpenFactory factory;
    const Ref<QxDGraphManager> manager(factory.newDGraphManager());
    auto* anchor = static_cast<OpenGraph*>(manager->addGraph(0));
    auto* other = static_cast<OpenGraph*>(manager->addGraph(0));
    const QxTransform first(QxDTuple(1, 2), QxDTuple(3, 4));
    anchor->vUpdateTransform(first);
    QxDGraph* between = manager->pIntergraph();
    EXPECT_EQ(*between->pTransform(), first);
    const QxTransform second(QxDTuple(5, 6), QxDTuple(7, 8));
    anchor->vUpdateTransform(second);
    EXPECT_EQ(*between->pTransform(), second);
    other->vUpdateTransform(first);
    EXPECT_EQ(*between->pTransform(), second);
}

TEST(QxDGraphManager, WithoutAFactoryItMakesNothing) {
    const Ref<QxDGraphManager> manager(new QxDGraphManager(nullptr, 0, nullptr));
    EXPECT_EQ(manager->addGraph(0), nullptr);
    EXPECT_EQ(manager->pIntergraph(), nullptr);
    EXPECT_EQ(manager->pAnchorGraph(), nullptr);
    const Ref<QxDGraphManager> other(new QxDGraphManager(nullptr, 0, nullptr));
    EXPECT_EQ(manager->transferTopology(other.get()), 0);
}

TEST(QxDGraphManager, SwitchesAreIndependent) {
    using Get = int (QxDGraphManager::*)() const;
    using Set = int (QxDGraphManager::*)(int);
    struct Switch {
        Get get;
        Set set;
        int initial;
    };
    const Switch switches[] = {
        {&QxDGraphManager::compressMetaEdges, &QxDGraphManager::compressMetaEdges, 1},
        {&QxDGraphManager::reflexiveMetaEdgeReplacement,
         &QxDGraphManager::reflexiveMetaEdgeReplacement, 1},
        {&QxDGraphManager::ignoreConnectorsForMetaEdges,
         &QxDGraphManager::ignoreConnectorsForMetaEdges, 1},
        {&QxDGraphManager::isUpdatingAffectedGraphs, &QxDGraphManager::isUpdatingAffectedGraphs, 0},
        {&QxDGraphManager::controlStarted, &QxDGraphManager::controlStarted, 0},
        {&QxDGraphManager::storeClones, &QxDGraphManager::storeClones, 0}};
    QxFactory factory;
    const Ref<QxDGraphManager> manager(factory.newDGraphManager());
    EXPECT_EQ(manager->isReading(), 0);
    for (const Switch& changed : switches) {
        EXPECT_EQ((manager.get()->*changed.set)(1 - changed.initial), 1 - changed.initial);
        for (const Switch& each : switches) {
            const int wanted = &each == &changed ? 1 - each.initial : each.initial;
            EXPECT_EQ((manager.get()->*each.get)(), wanted);
        }
        (manager.get()->*changed.set)(changed.initial);
    }
}

TEST_F(QxDGraphManagerTest, ComputesBoundsFromTheInsideOut) {
    QxDNode* a = drawing.addNode(0, 0);
    QxDGraph* between = manager->pIntergraph();
    between->addEdge(a, drawing.addNode(50, 0), 0);
    a->ntMoveTo(0, 300);
    drawing.events.take();
    manager->calculateGraphBounds();
    std::vector<const QxObject*> sources;
    for (const HeardChange& change : drawing.events.take()) {
        sources.push_back(change.source);
    }
    EXPECT_THAT(sources, ElementsAre(graph, between)) << "the intergraph comes last";
    EXPECT_EQ(graph->pBoundingRect()->top(), 305);
    EXPECT_EQ(between->pBoundingRect()->top() > 290, true);
}

using QxDGraphManagerCopy = QxDGraphManagerTest;

TEST_F(QxDGraphManagerCopy, IsAWholeDrawingOfItsOwn) {
    QxDNode* a = drawing.addNode(10, 20, 30, 40);
    QxDNode* b = manager->addGraph(0)->addNodeWithCoordinates(50, 60, 70, 80, 1, 0);
    drawing.addBend(manager->addEdge(a, b, 0), 5, 6);
    manager->compressMetaEdges(0);
    manager->nameString(L"drawing");
    const Ref<QxDGraphManager> copy(manager->cloneObject());
    EXPECT_EQ(copy->pFactory(), &factory);
    EXPECT_EQ(copy->compressMetaEdges(), 0);
    EXPECT_EQ(copy->reflexiveMetaEdgeReplacement(), 1);
    EXPECT_STREQ(copy->pNameString(), L"drawing");
    const QxDEdge* across = copy->pQueryIntergraph()->pFirstEdge();
    ASSERT_NE(across, nullptr);
    EXPECT_EQ(across->pSourceNode(), copy->pFirstGraph()->pFirstNode());
    EXPECT_EQ(across->pTargetNode(), copy->pLastGraph()->pFirstNode());
    EXPECT_EQ(across->numberOfBends(), 1);
    EXPECT_EQ(manager->internalUserFieldsInUse(), 0);
    manager->emptyTopology();
    EXPECT_EQ(manager->pAnchorGraph(), nullptr);
    EXPECT_EQ(copy->pFirstGraph()->numberOfNodes(), 1);
    EXPECT_EQ(copy->checkInvariants(), 1);
}

TEST_F(QxDGraphManagerCopy, OfAttributesHasNoGraphs) {
    manager->reflexiveMetaEdgeReplacement(0);
    manager->ignoreConnectorsForMetaEdges(0);
    manager->storeClones(1);
    const Ref<QxDGraphManager> copy(manager->cloneAttributes());
    EXPECT_EQ(copy->numberOfGraphs(), 0);
    EXPECT_EQ(copy->pAnchorGraph(), nullptr);
    EXPECT_EQ(copy->reflexiveMetaEdgeReplacement(), 0);
    EXPECT_EQ(copy->ignoreConnectorsForMetaEdges(), 0);
    EXPECT_EQ(copy->storeClones(), 0) << "a switch of the moment is not copied";
}

TEST_F(QxDGraphManagerCopy, ReplacesWhatTheManagerHeld) {
    drawing.addNode(1, 1);
    SmallDrawing other(factory);
    other.addNode(2, 2);
    other.manager->addGraph(0);
    manager->copyObject(other.manager.get());
    EXPECT_EQ(manager->numberOfGraphs(), 2);
    ASSERT_NE(manager->pAnchorGraph(), nullptr);
    EXPECT_EQ(manager->pAnchorGraph(), manager->pFirstGraph());
    EXPECT_EQ(manager->pAnchorGraph()->pFirstNode()->iCenter(), QxPoint(2, 2));
    manager->copyObject(nullptr);
    manager->copyObject(manager);
    EXPECT_EQ(manager->numberOfGraphs(), 2);
}

}  // namespace
