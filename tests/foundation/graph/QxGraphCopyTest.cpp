// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Copies and duplicates: same order everywhere, nothing shared with the source.

#include <gtest/gtest.h>

#include "foundation/graph/GraphDescription.h"
#include "foundation/graph/TopologyDriver.h"

namespace {

using namespace qxtest;

/// A manager in which edges have come and gone in every state; the others hold the copies.
class QxGraphCopy : public testing::Test, protected TopologyDriver {
protected:
    QxGraphCopy() : TopologyDriver(testSeed(11)) {
        source.reset(factory.newManager());
        addManager(source.get(), &factory);
        for (int i = 0; i < 500; ++i) {
            i % 2 == 0 ? stepState() : stepEdge();
            if (i % 20 == 0) {
                stepNesting();
            }
        }
        for (const ModelEdge* edge : m_model.edges()) {
            if (edge->graph == nullptr) {
                loose.emplace_back(edge->object);
            }
        }
        QxGraph* first = source->pFirstGraph();
        first->nameString(L"first");
        first->addEdge(first->addNode(0), first->addNode(0), 0)->deactivate();
    }

    GraphFactory factory;
    Ref<QxGraphManager> source;
    std::vector<Ref<QxObject>> loose;
};

TEST_F(QxGraphCopy, ACopyOutlivesChangesAndTheEndOfItsSource) {
    const std::string before = describe(*source);
    const Ref<QxGraphManager> copy(factory.newManager());
    copy->duplicateTopology(source.get());
    EXPECT_EQ(describe(*copy), before);
    source->pFirstGraph()->emptyTopology();
    source->pLastGraph()->nameString(L"other");
    source.reset();
    EXPECT_EQ(describe(*copy), before);
    QxGraph* graph = copy->pFirstGraph();
    for (const int deep : {0, 1}) {
        copy->copyGraphManager(copy.get(), deep);
        copy->copyGraphManager(nullptr, deep);
        graph->copyGraph(graph, deep);
        graph->copyGraph(nullptr, deep);
    }
    graph->duplicateTopology(graph, 1, 1);
    copy->duplicateTopology(nullptr);
    EXPECT_EQ(describe(*copy), before);
}

TEST_F(QxGraphCopy, DuplicatesAreAppendedToWhatAManagerHolds) {
    const Ref<QxGraphManager> twice(factory.newManager());
    twice->duplicateTopology(source.get());
    const Ref<QxGraphManager> again(factory.newManager());
    again->copyObject(twice.get());
    twice->duplicateTopology(source.get());
    EXPECT_EQ(twice->numberOfGraphs(), 2 * source->numberOfGraphs());
    EXPECT_EQ(twice->pIntergraph()->numberOfAllEdges(),
              2 * source->pIntergraph()->numberOfAllEdges());
    EXPECT_NE(twice->checkInvariants(), 0);
    for (int i = source->numberOfGraphs(); i > 0; --i) {
        twice->discardGraph(twice->pLastGraph());
    }
    EXPECT_EQ(describe(*twice), describe(*again));
}

TEST_F(QxGraphCopy, OfOneGraphTheEdgesToOthersStayBehindAndTheStatesCanBeChosen) {
    QxGraph* first = source->pFirstGraph();
    const Ref<QxGraphManager> other(factory.newManager());
    QxGraph* copy = other->addGraph(0);
    copy->copyObject(first);
    EXPECT_EQ(copy->numberOfNodes(), first->numberOfNodes());
    EXPECT_EQ(copy->numberOfEdges(), first->numberOfEdges());
    EXPECT_EQ(copy->pDeactivatedEdgeList()->count(), first->pDeactivatedEdgeList()->count());
    EXPECT_STREQ(copy->pNameString(), L"first");

    QxGraph* connectedOnly = other->addGraph(0);
    connectedOnly->duplicateTopology(first, 0, 0);
    EXPECT_EQ(connectedOnly->numberOfAllEdges(), first->numberOfEdges());
    connectedOnly->copyAttributes(first);
    EXPECT_EQ(connectedOnly->numberOfNodes(), first->numberOfNodes());
    EXPECT_STREQ(connectedOnly->pNameString(), L"first");
    EXPECT_NE(other->checkInvariants(), 0);
}

TEST_F(QxGraphCopy, UserFieldsCountForWhatContainsTheObjectAndAreNotCopied) {
    QxGraph* graph = source->pFirstGraph();
    auto* edge = static_cast<QxEdge*>(graph->pDeactivatedEdgeList()->pFirstObject());
    ASSERT_NE(edge, nullptr);
    edge->userField(std::int64_t{1} << 40);
    edge->pIUserField(graph);
    for (const QxGraphObject* object :
         {static_cast<const QxGraphObject*>(edge), static_cast<const QxGraphObject*>(graph),
          static_cast<const QxGraphObject*>(source.get())}) {
        EXPECT_NE(object->userFieldsInUse(), 0);
        EXPECT_NE(object->internalUserFieldsInUse(), 0);
    }
    EXPECT_EQ(source->pLastGraph()->userFieldsInUse(), 0);

    const Ref<QxGraphManager> copy(factory.newManager());
    copy->copyObject(source.get());
    EXPECT_EQ(copy->userFieldsInUse(), 0);
    EXPECT_EQ(source->internalUserFieldsInUse(), 0);
    EXPECT_EQ(edge->userField(), std::int64_t{1} << 40);
    source->nullUserFields();
    EXPECT_EQ(edge->userField(), 0);
}

}  // namespace
