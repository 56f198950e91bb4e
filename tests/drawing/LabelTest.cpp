// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <gtest/gtest.h>

#include "drawing/DrawingTesting.h"
#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxLabelIters.h"

namespace {

using namespace qxtest;

class LabelTest : public testing::Test {
protected:
    static Box boxOfLabel(const QxLabel* label) {
        QxRect rect;
        label->ntBoundingRect(rect);
        return boxOf(rect);
    }

    QxFactory factory;
    SmallDrawing drawing{factory};
    QxDGraph* graph = drawing.graph;
};

TEST_F(LabelTest, NewOnesGoAroundTheirNodeInRings) {
    QxDNode* node = drawing.addNode(0, 0, 100, 60);
    std::vector<QxNodeLabel*> labels;
    for (int i = 0; i < 10; ++i) {
        labels.push_back(node->addLabel(L"x", 0));
    }
    // In the middle, then at the sides and corners, touching the node; then a ring further out.
    const std::vector<QxPoint> centers{{0, 0},     {-70, 0}, {70, 0},   {0, 40},   {0, -40},
                                       {-70, -40}, {70, 40}, {-70, 40}, {70, -40}, {-100, 0}};
    for (std::size_t i = 0; i < 10; ++i) {
        EXPECT_EQ(labels[i]->ntCenter(), centers[i]) << i;
    }
    QxDNode* odd = drawing.addNode(0, 0, 101, 61);
    odd->addLabel(nullptr, 0);
    odd->addLabel(nullptr, 0);
    EXPECT_EQ(odd->addLabel(nullptr, 0)->perMilX(), 1392);
    QxConnector* connector = node->addConnector(1000, 0, 0, 0, 1, 0);
    connector->addLabel(nullptr, 0);
    EXPECT_EQ(connector->addLabel(nullptr, 0)->perMilX(), -3000);  // an owner without extent
}

TEST_F(LabelTest, MovesAreStoredByAxisAndToldOnce) {
    QxDNode* node = drawing.addNode(0, 0, 100, 40);
    QxNodeLabel* label = node->addLabel(L"x", 0);
    drawing.events.take();
    EXPECT_EQ(label->moveTo(25, 100000, 1), 1);
    EXPECT_EQ(QxPerMil(label->perMilX(), label->perMilY()), QxPerMil(500, 1000));
    EXPECT_EQ(label->ntOffset(), QxSize(0, 99980));
    EXPECT_EQ(drawing.events.take(),
              (std::vector<HeardChange>{
                  {LabelOffsetChanged, label, {-20, -10, 20, 10}, {5, 99990, 45, 100010}},
                  {GraphBoundsChanged, graph, {-50, -20, 50, 20}, {-50, -20, 50, 100010}}}));
    EXPECT_EQ(label->moveTo(25, 100000, 1), 1);
    EXPECT_EQ(label->resize(40, 20, 1), 1);
    EXPECT_TRUE(drawing.events.take().empty());
    label->resize(60, -5, 1);
    EXPECT_EQ(boxOfLabel(label), (Box{-5, 100000, 55, 100000}));
    node->moveTo(1000, 0, 1);
    EXPECT_EQ(label->ntCenter(), QxPoint(1025, 100000));
    label->storeMovedLabel();
    label->ntMoveTo(0, 0);
    label->restoreMovedLabel(1);
    EXPECT_EQ(label->ntCenter(), QxPoint(1025, 100000));
    EXPECT_EQ(boundsOf(graph), (Box{950, -20, 1055, 100000}));
}

TEST_F(LabelTest, GraphLabelsStandAboveAndBelowAndCountForMarginsOnly) {
    drawing.addNode(0, 0, 100, 100);
    std::vector<QxGraphLabel*> labels;
    for (int i = 0; i < 7; ++i) {
        labels.push_back(graph->addLabel(L"title", 0));
    }
    EXPECT_EQ(boxOfLabel(labels[0]), (Box{-20, 52, 20, 72}));
    EXPECT_EQ(boxOfLabel(labels[1]), (Box{-20, -68, 20, -48}));
    EXPECT_EQ(labels[2]->ntLeft(), -48);
    EXPECT_EQ(labels[5]->ntRight(), 48);
    EXPECT_EQ(boxOfLabel(labels[6]), (Box{-20, 74, 20, 94}));
    EXPECT_EQ(boundsOf(graph), (Box{-50, -50, 50, 50}));
    QxRect margins;
    graph->ntMarginBoundingRect(margins);
    EXPECT_EQ(boxOf(margins), (Box{-70, -88, 70, 114}));
    EXPECT_EQ(graph->addLabelWithCoordinates(25, 0, 10, 10, 1, nullptr, 0)->perMilX(), 500);
}

TEST_F(LabelTest, StacksItsLabelsAndGrowsAroundThem) {
    QxDNode* node = drawing.addNode(0, 0, 200, 100);
    QxNodeLabel* first = node->addLabel(L"a", 0);
    QxNodeLabel* second = node->addLabel(L"b", 0);
    second->resize(40, 31, 1);
    QxNodeLabel* foreign = drawing.addNode(900, 0)->addLabel(L"c", 0);
    QxNodeLabelDList list;
    for (QxNodeLabel* label : {foreign, first, second}) {
        list.appendLabel(label);
    }
    node->centerLabels(&list);
    EXPECT_EQ(boxOfLabel(first), (Box{-20, 6, 20, 26}));
    EXPECT_EQ(boxOfLabel(second), (Box{-20, -25, 20, 6}));
    second->moveTo(300, 0, 1);
    node->resizeToLabels(1);
    EXPECT_EQ(boxOf(*node->pIRect()), (Box{-20, -15, 320, 26}));
    EXPECT_EQ(second->ntCenter(), QxPoint(300, 0));
}

TEST_F(LabelTest, ListenersHearWhatComesAndGoesAndOfTexts) {
    QxDNode* node = drawing.addNode(0, 0);
    drawing.events.take();
    QxNodeLabel* label = node->addLabelWithCoordinates(0, 0, 4, 4, 1, nullptr, 0);
    label->nameString(L"");
    label->nameString(L"x");
    label->nameString(L"x");
    EXPECT_EQ(drawing.events.takeTypes(),
              (std::vector<std::int32_t>{LabelInserted, LabelTextChanged}));
    EXPECT_EQ(node->insertLabel(label), nullptr);
    EXPECT_EQ(node->removeLabel(label), label);
    EXPECT_EQ(node->removeLabel(label), nullptr);
    QxPoint unchanged(7, 7);
    EXPECT_EQ(label->getCenter(unchanged, 0), 0);
    EXPECT_EQ(unchanged, QxPoint(7, 7));
    node->insertLabel(label);
    label->moveTo(500, 0, 1);
    drawing.events.take();
    EXPECT_EQ(node->discardLabel(label), 1);
    EXPECT_EQ(drawing.events.takeTypes(),
              (std::vector<std::int32_t>{GraphBoundsChanged, LabelDiscarded}));
}

TEST_F(LabelTest, GraphsKnowWhatTheyHaveWithoutSearching) {
    QxDNode* node = drawing.addNode(0, 0);
    QxDEdge* edge = drawing.addEdge(node, drawing.addNode(100, 0));
    node->addConnector(0, 0, 0, 0, 1, 0)->addLabel(nullptr, 0);
    QxNodeLabel* label = node->addLabel(nullptr, 0);
    edge->addLabel(nullptr, 0);
    EXPECT_EQ(graph->hasNodeLabelsState(), QxTriStateYes);
    EXPECT_EQ(graph->numberOfLabels(), 3);
    node->discardLabel(label);
    EXPECT_EQ(graph->hasNodeLabelsState(), QxTriStateUnknown);
    EXPECT_EQ(graph->hasNodeLabels(), 0);
    edge->deactivate();
    EXPECT_EQ(graph->hasEdgeLabels(), 0);
    edge->activate();
    EXPECT_EQ(graph->hasEdgeLabelsState(), QxTriStateYes);
    QxDGraph* other = drawing.manager->addGraph(0);
    graph->addLabel(nullptr, 0);
    EXPECT_EQ(other->transferTopology(graph), 1);
    EXPECT_EQ(graph->numberOfLabels(), 0);
    EXPECT_EQ(other->numberOfLabels(), 3);
    int walked = 0;
    for (QxLabelIter it(other); it; ++it) {
        ++walked;
    }
    EXPECT_EQ(walked, 3);
}

TEST_F(LabelTest, CopiesStandWhereTheirSourcesDo) {
    QxDNode* node = drawing.addNode(0, 0, 100, 40);
    QxDEdge* edge = drawing.addEdge(node, drawing.addNode(400, 0));
    QxNodeLabel* first = node->addLabel(L"first", 0);
    QxNodeLabel* last = node->addLabel(L"last", 0);
    QxEdgeLabel* pinned = edge->addLabel(L"pinned", 0);
    pinned->moveTo(250, 30, 1);
    pinned->globalOffsetMode(1);
    graph->addLabel(L"title", 0);
    QxDGraph* copy = drawing.manager->addGraph(0);
    copy->copyGraph(graph, 1);
    EXPECT_EQ(copy->numberOfLabels(), 4);
    EXPECT_EQ(graph->internalUserFieldsInUse(), 0);
    const QxEdgeLabel* twin = copy->pFirstEdge()->pLabelList()->pFirstLabel();
    EXPECT_EQ(twin->globalOffsetMode(), 0);
    EXPECT_EQ(twin->ntCenter(), pinned->ntCenter());
    EXPECT_STREQ(copy->pFirstNode()->pLabelList()->pLastLabel()->pNameString(), L"last");
    first->copyLabel(last, 0);
    EXPECT_EQ(node->pLabelList()->pFirstLabel(), first);
    EXPECT_EQ(first->ntCenter(), last->ntCenter());
    EXPECT_NE(drawing.manager->checkInvariants(), 0);
    EXPECT_LE(sizeof(QxNodeLabel), 160U);
    EXPECT_LE(sizeof(QxEdgeLabel), 160U);
}

}  // namespace
