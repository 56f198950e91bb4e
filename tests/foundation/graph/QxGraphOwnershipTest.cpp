// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Who may outlive whom. These tests earn their keep under the address sanitizer.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "qx/foundation/graph/QxChildGraphForest.h"
#include "qx/foundation/util/QxTypedIter.h"
#include "support/GraphTesting.h"

namespace {

using namespace qxtest;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class QxGraphOwnership : public testing::Test {
protected:
    GraphFactory factory;
    Ref<QxGraphManager> manager{factory.newManager()};
    QxGraph* g = manager->addGraph(0);
    QxGraph* h = manager->addGraph(0);
    QxNode* a = g->addNode(0);
    QxNode* b = g->addNode(0);
    QxNode* c = h->addNode(0);
};

TEST_F(QxGraphOwnership, ARemovedGraphAndOneThatWasNeverInsertedOutliveTheManager) {
    manager->addEdge(a, c, 0);
    const Ref<QxGraph> removed(manager->removeGraph(g));
    const Ref<QxGraph> neverInserted(factory.newGraph(manager.get(), 0));
    const Ref<QxNode> node(factory.newNode(neverInserted.get(), 0));
    EXPECT_THAT(edgesOf(a->pDisconnectedEdgeList()), testing::SizeIs(1));
    manager.reset();
    EXPECT_THAT(edgesOf(a->pDisconnectedEdgeList()), IsEmpty());
    EXPECT_EQ(removed->pUnverifiedFactory(), &factory);
    EXPECT_EQ(removed->numberOfNodes(), 2);
    manager.reset(factory.newManager());
    EXPECT_NE(manager->insertGraph(hold(neverInserted.get()).release()), nullptr);
    EXPECT_EQ(neverInserted->insertNode(hold(node.get()).release()), node.get());
}

TEST_F(QxGraphOwnership, ReferencesHeldOutsideSurviveADiscardAsDetachedObjects) {
    const Ref<QxGraph> graph = hold(g);
    const Ref<QxNode> node = hold(a);
    const Ref<QxEdge> inside = hold(manager->addEdge(a, b, 0));
    const Ref<QxEdge> between = hold(manager->addEdge(a, c, 0));
    const Ref<QxGraph> intergraph = hold(manager->pIntergraph());
    const Ref<QxChildGraphForest> forest = hold(manager->pChildGraphForest());
    manager.reset();
    EXPECT_EQ(graph->numberOfNodes(), 0);
    EXPECT_EQ(intergraph->numberOfAllEdges(), 0);
    EXPECT_EQ(graph->pOwnerGraphManager(), nullptr);
    for (const QxEdge* edge : {inside.get(), between.get()}) {
        EXPECT_EQ(edge->pOwnerGraph(), nullptr);
        EXPECT_EQ(edge->pSourceNode(), nullptr);
    }
    EXPECT_EQ(node->degree(), 0);
    EXPECT_EQ(graph->insertNode(hold(node.get()).release()), node.get());
}

TEST_F(QxGraphOwnership, ReleasingAnOwnedObjectTakesItOutOfItsLists) {
    QxEdge* edge = g->addEdge(a, b, 0);
    edge->vRelease();
    EXPECT_EQ(a->degree(), 0);
    b->vRelease();
    EXPECT_THAT(objectsOf<QxNode>(*g->pNodeList()), ElementsAre(a));
    h->vRelease();
    EXPECT_THAT(objectsOf<QxGraph>(*manager->pGraphList()), ElementsAre(g));
    EXPECT_NE(manager->checkInvariants(), 0);
}

TEST_F(QxGraphOwnership, SelectedPartsAreMovedAlsoWhenTheListsAreTheGraphsOwn) {
    QxEdge* inside = g->addEdge(a, b, 0);
    QxNode* stays = g->addNode(0);
    QxEdge* cut = g->addEdge(b, stays, 0);
    QxNodeDList nodes;
    nodes.appendNode(a);
    nodes.appendNode(b);
    nodes.appendNode(c);
    EXPECT_NE(h->transferSelectedPartOfGraph(g, &nodes, g->pEdgeList()), 0);
    EXPECT_THAT(objectsOf<QxNode>(*h->pNodeList()), ElementsAre(c, a, b));
    EXPECT_THAT(edgesOf(h->pEdgeList()), ElementsAre(inside));
    EXPECT_THAT(edgesOf(h->pDisconnectedEdgeList()), ElementsAre(cut));
    EXPECT_NE(g->transferSelectedPartOfGraph(h, h->pNodeList(), nullptr), 0);
    EXPECT_THAT(objectsOf<QxNode>(*g->pNodeList()), ElementsAre(stays, c, a, b));
    GraphFactory foreign;
    const Ref<QxGraphManager> stranger(foreign.newManager());
    EXPECT_EQ(stranger->addGraph(0)->transferSelectedPartOfGraph(g, g->pNodeList(), nullptr), 0);
}

TEST_F(QxGraphOwnership, MovingAllEdgesOfANodeSkipsThoseThatCannotFollow) {
    QxEdge* inside = g->addEdge(b, a, 0);
    QxEdge* loop = g->addEdge(a, a, 0);
    QxEdge* between = manager->addEdge(c, a, 0);
    EXPECT_EQ(a->transferInEdges(c), 1) << "only edges between graphs can end in the other graph";
    EXPECT_EQ(between->pTargetNode(), c);
    EXPECT_EQ(a->transferInEdges(b), 2);
    EXPECT_EQ(a->transferOutEdges(b), 1);
    EXPECT_THAT(edgesOf(b->pInEdgeList()), UnorderedElementsAre(inside, loop));
    EXPECT_EQ(a->degree(), 0);
    b->disconnectEdges();
    EXPECT_EQ(b->disconnectedInDegree(), 2);
    EXPECT_EQ(b->connectDisconnectedEdges(), 2);
}

using InAndOutEdges =
    QxEdgeIterOf<QxEdge, QxTwoListIter<QxNode, &QxNode::pInEdgeList, &QxNode::pOutEdgeList>>;
using DisconnectedEdges =
    QxEdgeIterOf<QxEdge, QxOwnerListIter<QxNode, &QxNode::pDisconnectedEdgeList>>;

struct Target {
    QxNode* operator()(const QxDListIter& walk) const {
        return static_cast<QxEdge*>(walk.pObject())->pTargetNode();
    }
};
using OutNodes = QxNodeIterOf<QxNode, QxOwnerListIter<QxNode, &QxNode::pOutEdgeList>, Target{}>;

TEST_F(QxGraphOwnership, ALoopMayDiscardWhatItVisitsThoughItIsMetAgainNextToIt) {
    for (const bool idle : {false, true}) {
        g->addEdge(b, a, 0);
        QxEdge* loop = g->addEdge(a, a, 0);
        g->addEdge(a, b, 0);
        Edges visited;
        if (idle) {
            a->disconnectEdges();
            for (QxEdge* edge : DisconnectedEdges(a)) {
                visited.push_back(edge);
                g->discardEdge(edge);
            }
        } else {
            for (QxEdge* edge : InAndOutEdges(a)) {
                visited.push_back(edge);
                g->discardEdge(edge);
            }
        }
        EXPECT_THAT(visited, testing::SizeIs(3));
        EXPECT_EQ(std::count(visited.begin(), visited.end(), loop), 1);
        EXPECT_EQ(g->numberOfAllEdges(), 0);
    }
    QxNode* d = g->addNode(0);
    QxNode* e = g->addNode(0);
    for (QxNode* end : {b, b, b, d, b, e, e}) {
        g->addEdge(a, end, 0);
    }
    Nodes met;
    for (QxNode* end : OutNodes(a)) {
        met.push_back(end);
    }
    EXPECT_THAT(met, ElementsAre(b, b, b, d, b, e, e)) << "a plain walk misses nothing";
    met.clear();
    for (QxNode* end : OutNodes(a)) {
        met.push_back(end);
        if (end == a) {
            break;
        }
        g->discardNode(end);
        g->addEdge(a, a, 0);  // perhaps where the discarded ones were
    }
    EXPECT_THAT(met, ElementsAre(b, d, e, a));
}

class MakesNothing : public GraphFactory {
public:
    bool dry = false;

protected:
    QxGraph* vNewGraph(QxOwnedObject* owner, int type) override {
        return dry ? nullptr : GraphFactory::vNewGraph(owner, type);
    }
    QxGraph* vNewIntergraph(QxOwnedObject* owner, int type) override {
        return dry ? nullptr : GraphFactory::vNewIntergraph(owner, type);
    }
};

TEST_F(QxGraphOwnership, WhatTheFactoryDoesNotMakeIsLeftOut) {
    MakesNothing poor;
    const Ref<QxGraphManager> source(poor.newManager());
    QxNode* first = source->addGraph(0)->addNode(0);
    QxNode* second = source->addGraph(0)->addNode(0);
    source->addEdge(first, second, 0);
    first->pChildGraph(second->pOwnerGraph());
    poor.dry = true;
    const Ref<QxGraphManager> copy(poor.newManager());
    EXPECT_EQ(copy->addGraph(0), nullptr);
    copy->copyObject(source.get());
    EXPECT_EQ(copy->numberOfGraphs(), 0);
    EXPECT_EQ(copy->transferTopology(source.get()), 0) << "there is no place for the edge";
    EXPECT_EQ(source->numberOfGraphs(), 2);
}

TEST_F(QxGraphOwnership, ListsOfObjectsAreSplitByOwner) {
    QxEdge* edge = g->addEdge(a, b, 0);
    QxDList list;
    QxDList owned;
    for (QxObject* object : {static_cast<QxObject*>(a), static_cast<QxObject*>(c),
                             static_cast<QxObject*>(edge), static_cast<QxObject*>(b)}) {
        list.appendObject(object);
    }
    g->removeNode(b);
    g->splitListIntoOwnedAndOthers(&list, &owned);
    EXPECT_THAT(objectsOf<QxObject>(owned), ElementsAre(a, edge));
    EXPECT_THAT(objectsOf<QxObject>(list), ElementsAre(c, b));
    g->insertNode(b);
}

}  // namespace
