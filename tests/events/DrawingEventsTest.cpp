// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "drawing/DrawingTesting.h"

namespace {

using namespace qxtest;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

/// Keeps the types of what it hears, and the last data.
class Recorder : public EventRecorder {
public:
    using EventRecorder::drawingChanged;
    void drawingChanged(QxDrawingChangeEventData* data) override {
        EventRecorder::drawingChanged(data);
        last.reset(data->cloneObject());
    }
    Ref<QxDrawingChangeEventData> last;
};

class DrawingEvents : public testing::Test {
protected:
    QxFactory factory;
    SmallDrawing drawing{factory};
    QxDGraph* graph = drawing.graph;
    QxDNode* node = drawing.addNode(0, 0, 40, 40);
    QxDEdge* edge = drawing.addEdge(node, drawing.addNode(200, 0, 40, 40));
    QxDEventManager& events = *factory.pEventManager();
    Recorder recorder;
};

TEST_F(DrawingEvents, TellWhatChangedOnceWhoeverListensAround) {
    for (const QxObject* around :
         std::initializer_list<const QxObject*>{node, graph, drawing.manager.get(), &factory}) {
        events.addDrawingChangeListener(around, &recorder);
    }
    node->ntMoveTo(30, -7);
    EXPECT_THAT(recorder.takeTypes(), ElementsAre(NodeMoved));
    EXPECT_EQ(recorder.last->pSourceNode(), node);
    EXPECT_EQ(recorder.last->pSourceEdge(), nullptr);
    EXPECT_EQ(recorder.last->pSourceGraph(), nullptr);
    EXPECT_EQ(recorder.last->oldCenter(), QxPoint(0, 0));
    EXPECT_EQ(recorder.last->newCenter(), QxPoint(30, -7));
    node->ntMoveTo(30, -7);
    EXPECT_THAT(recorder.takeTypes(), ElementsAre(NodeMoved));
    node->moveTo(30, -7, 1);
    EXPECT_THAT(recorder.takeTypes(), IsEmpty()) << "the full move compares first";
    graph->refreshGraphBounds();
    recorder.take();
    QxPNode* bend = edge->addBendAfter(nullptr, QxPoint(100, 5), 1);
    EXPECT_THAT(recorder.takeTypes(), ElementsAre(BendAdded));
    EXPECT_EQ(recorder.last->pSourceNode(), bend);
    EXPECT_EQ(recorder.last->pNewOwnerEdge(), edge);
    EXPECT_EQ(recorder.last->pOldOwnerEdge(), nullptr);
    edge->discardBend(bend);
    EXPECT_THAT(recorder.takeTypes(), ElementsAre(PathNodeDiscarded, PathNodeRemoved));
    EXPECT_EQ(recorder.last->pOldOwnerEdge(), edge);
}

TEST_F(DrawingEvents, ABatchOutlivesTheObjectsItIsAbout) {
    events.addDrawingChangeListener(graph, &recorder);
    events.coalesce(1);
    events.openBatch();
    QxPNode* bend = edge->addBendAfter(nullptr, QxPoint(100, 50), 1);
    bend->ntMoveTo(110, 40);
    edge->discardBend(bend);
    node->ntMoveTo(5, 5);
    graph->discardNode(node);
    EXPECT_THAT(recorder.takeTypes(), IsEmpty());
    events.closeBatch();
    EXPECT_THAT(recorder.takeTypes(),
                testing::AllOf(Contains(PathNodeDiscarded), Contains(NodeMoved),
                               Not(Contains(NodeResized))));
    EXPECT_NE(recorder.last->pSource(), nullptr);
}

}  // namespace
