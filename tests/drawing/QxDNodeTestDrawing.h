// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <vector>

#include "drawing/DrawingTesting.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/foundation/geometry/QxPointDList.h"

namespace qxtest {

/// A drawing with one graph, and what its nodes tell.
class NodeDrawing : public testing::Test {
protected:
    NodeDrawing() {
        factory.pEventManager()->addDrawingChangeListener(
            manager.get(), &recorder, NodeMoved | NodeResized | NodeShapeChanged);
    }
    ~NodeDrawing() override {
        EXPECT_EQ(manager->checkInvariants(), 1);
        factory.pEventManager()->removeAllDrawingChangeListeners(manager.get());
    }

    QxDNode* place(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height) {
        return graph->addNodeWithCoordinates(x, y, width, height, 1, 0);
    }
    QxRect bounds() const {
        QxRect rect;
        graph->ntUpdatedBoundingRect(rect);
        return rect;
    }
    /// The types of all changes so far.
    std::vector<std::int32_t> heardTypes() const {
        std::vector<std::int32_t> types;
        for (const HeardChange& change : recorder.changes) {
            types.push_back(change.type);
        }
        return types;
    }
    const QxShapeResource* defaultResource() {
        return factory.pShapeResourceDB()->pDefaultResource();
    }

    QxFactory factory;
    EventRecorder recorder;
    Ref<QxDGraphManager> manager{factory.newDGraphManager()};
    QxDGraph* graph = manager->addGraph(0);
};

inline QxShape polygon(std::initializer_list<QxPoint> points) {
    QxPointDList outline;
    for (const QxPoint& point : points) {
        outline.appendPoint(point);
    }
    return QxShape::fromOutline(outline);
}

inline QxShape diamond() {
    return polygon({{0, -5}, {5, 0}, {0, 5}, {-5, 0}});
}

/// The upper right quarter of the frame is missing.
inline QxShape angle() {
    return polygon({{0, 0}, {20, 0}, {20, 10}, {10, 10}, {10, 20}, {0, 20}});
}

}  // namespace qxtest
