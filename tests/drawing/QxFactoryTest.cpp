// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/drawing/QxFactory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "drawing/DrawingTesting.h"
#include "qx/foundation/geometry/QxPointDList.h"
#include "qx/foundation/geometry/QxShape.h"
#include "qx/foundation/util/QxHashMap.h"

namespace {

using namespace qxtest;
using testing::ElementsAre;

/// Notes the numbers that nodes and edges are asked for with.
class NotingFactory : public QxFactory {
public:
    std::vector<int> types;

protected:
    QxDNode* vNewDNode(QxOwnedObject* owner, int type) override {
        types.push_back(type);
        return QxFactory::vNewDNode(owner, type);
    }
    QxDEdge* vNewDEdge(QxOwnedObject* owner, int type) override {
        types.push_back(type);
        return QxFactory::vNewDEdge(owner, type);
    }
};

TEST(QxFactory, PassesOnTheTypesThatItIsAskedFor) {
    NotingFactory factory;
    const Ref<QxDGraphManager> manager(factory.newDGraphManager());
    QxDGraph* graph = manager->addGraph(0);
    QxDNode* a = graph->addNode(5);
    graph->addEdge(a, graph->addNodeWithCoordinates(0, 0, 1, 1, 1, 6), 7);
    manager->addEdge(a, manager->addGraph(0)->addNode(0), 8);
    EXPECT_THAT(factory.types, ElementsAre(5, 6, 7, 0, 8));
}

TEST(QxFactory, ConvenienceValuesTakeTheirArgumentsInTheirOwnOrder) {
    const QxFactory factory;
    const std::unique_ptr<QxRect> rect(factory.newRect(1, 2, 3, 4));
    EXPECT_EQ(rect->left(), 1);
    EXPECT_EQ(rect->top(), 2);
    EXPECT_EQ(rect->right(), 3);
    EXPECT_EQ(rect->bottom(), 4);
    const std::unique_ptr<QxPoint> point(factory.newPoint(5, 6));
    EXPECT_EQ(*point, QxPoint(5, 6));
    const std::unique_ptr<QxSize> size(factory.newSize(7, 8));
    EXPECT_EQ(*size, QxSize(7, 8));
    const std::unique_ptr<QxShape> oval(factory.newShape(QxShapeTypeOval));
    EXPECT_EQ(oval->type(), QxShapeTypeOval);
    const std::unique_ptr<QxPointDList> points(factory.newPointList());
    for (const QxPoint& corner : {QxPoint(-1000, -1000), QxPoint(1000, -1000), QxPoint(0, 1000)}) {
        points->appendPoint(corner);
    }
    const std::unique_ptr<QxShape> triangle(factory.newCustomShape(*points));
    EXPECT_EQ(triangle->type(), QxShapeTypePolygon);
    EXPECT_EQ(triangle->within(-499, 400, 0, 0, 1000, 1000), 0);
    EXPECT_EQ(triangle->within(-499, -499, 0, 0, 1000, 1000), 1);
    const Ref<QxHashMap> table(factory.newObjectTable());
    const Ref<QxDNodeDList> nodes(factory.newNodeList());
    EXPECT_EQ(nodes->count(), 0);
}

}  // namespace
