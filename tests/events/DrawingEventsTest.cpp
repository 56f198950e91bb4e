// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxFactory.h"
#include "qx/drawing/QxPNode.h"
#include "qx/events/QxDEventManager.h"
#include "qx/events/QxDrawingChangeEventData.h"
#include "qx/events/QxDrawingChangeListener.h"
#include "qx/foundation/geometry/QxShape.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

using Types = std::vector<std::int32_t>;

/// Keeps a copy of all data it hears.
class Recorder : public QxDrawingChangeListener {
public:
    using QxDrawingChangeListener::drawingChanged;
    void drawingChanged(QxDrawingChangeEventData* data) override {
        heard.emplace_back(data->cloneObject());
        if (onEvent) {
            onEvent(*data);
        }
    }
    Types take() {
        Types types;
        for (const auto& data : std::exchange(heard, {})) {
            types.push_back(data->type());
        }
        return types;
    }

    std::vector<std::unique_ptr<QxDrawingChangeEventData>> heard;
    std::function<void(QxDrawingChangeEventData&)> onEvent;
};

class DrawingEvents : public testing::Test {
protected:
    DrawingEvents()
        : manager(factory.newDGraphManager()),
          graph(manager->addGraph(0)),
          node(graph->addNodeWithCoordinates(0, 0, 40, 40, 1, 0)),
          other(graph->addNodeWithCoordinates(200, 0, 40, 40, 1, 0)),
          edge(graph->addEdge(node, other, 0)) {}
    ~DrawingEvents() override { manager->vRelease(); }

    QxDEventManager& events() { return *factory.pEventManager(); }
    void listen(const QxObject& source, std::int32_t mask = -1) {
        events().addDrawingChangeListener(&source, &recorder, mask);
    }

    QxFactory factory;
    QxDGraphManager* manager;
    QxDGraph* graph;
    QxDNode* node;
    QxDNode* other;
    QxDEdge* edge;
    Recorder recorder;
};

TEST_F(DrawingEvents, ARawMoveFiresOneNodeMoved) {
    listen(*node);
    listen(*graph);
    listen(*manager);
    listen(factory);
    node->ntMoveTo(30, -7);
    ASSERT_EQ(recorder.heard.size(), 1U);
    const QxDrawingChangeEventData& data = *recorder.heard.front();
    EXPECT_EQ(data.type(), NodeMoved);
    EXPECT_EQ(data.pSourceNode(), node);
    EXPECT_EQ(data.pSourceEdge(), nullptr);
    EXPECT_EQ(data.pSourceGraph(), nullptr);
    EXPECT_EQ(data.oldCenter(), QxPoint(0, 0));
    EXPECT_EQ(data.newCenter(), QxPoint(30, -7));
    EXPECT_EQ(data.oldSize(), QxSize());
    EXPECT_EQ(data.pNewShape(), nullptr);
    recorder.take();
    node->ntMoveTo(30, -7);
    EXPECT_THAT(recorder.take(), ElementsAre(NodeMoved));
    node->moveTo(30, -7, 1);
    EXPECT_THAT(recorder.take(), IsEmpty()) << "the full move compares first";
}

TEST_F(DrawingEvents, BendsTellOfThemselvesThroughTheirEdge) {
    listen(*graph, BendAdded | PathNodeMoved | PathNodeRemoved | PathNodeDiscarded);
    QxPNode* bend = edge->addBendAfter(nullptr, QxPoint(100, 50), 1);
    ASSERT_NE(bend, nullptr);
    ASSERT_EQ(recorder.heard.size(), 1U);
    EXPECT_EQ(recorder.heard[0]->type(), BendAdded);
    EXPECT_EQ(recorder.heard[0]->pSourceNode(), bend);
    EXPECT_EQ(recorder.heard[0]->pNewOwnerEdge(), edge);
    EXPECT_EQ(recorder.heard[0]->pOldOwnerEdge(), nullptr);
    recorder.take();
    bend->ntMoveTo(120, 60);
    ASSERT_EQ(recorder.heard.size(), 1U);
    EXPECT_EQ(recorder.heard[0]->oldCenter(), QxPoint(100, 50));
    EXPECT_EQ(recorder.heard[0]->newCenter(), QxPoint(120, 60));
    recorder.take();
    recorder.onEvent = [&](QxDrawingChangeEventData& data) {
        EXPECT_EQ(data.pOldOwnerEdge(), edge);
        EXPECT_EQ(data.pSourceNode(), bend);
    };
    edge->discardBend(bend);
    EXPECT_THAT(recorder.take(), ElementsAre(PathNodeDiscarded, PathNodeRemoved));
}

TEST_F(DrawingEvents, ABatchOutlivesTheObjectsItIsAbout) {
    listen(*graph);
    events().coalesce(1);
    events().openBatch();
    QxPNode* bend = edge->addBendAfter(nullptr, QxPoint(100, 50), 1);
    bend->ntMoveTo(110, 40);
    edge->discardBend(bend);
    node->ntMoveTo(5, 5);
    graph->discardNode(node);
    EXPECT_THAT(recorder.take(), IsEmpty());
    recorder.onEvent = [](QxDrawingChangeEventData& data) {
        EXPECT_EQ(data.pSourceNode() != nullptr || data.pSourceGraph() != nullptr, true);
    };
    events().closeBatch();
    const Types told = recorder.take();
    EXPECT_THAT(told, Contains(PathNodeDiscarded));
    EXPECT_THAT(told, Contains(NodeMoved));
    EXPECT_THAT(told, Not(Contains(NodeResized)));
}

}  // namespace
