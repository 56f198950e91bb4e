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

/// Notes what it was asked to create, and the number that came with it.
class NotingFactory : public QxFactory {
public:
    std::vector<std::string> take() { return std::exchange(m_made, {}); }

protected:
    QxDGraphManager* vNewDGraphManager(QxOwnedObject* owner, int type) override {
        note("manager", type);
        return QxFactory::vNewDGraphManager(owner, type);
    }
    QxDGraph* vNewDGraph(QxOwnedObject* owner, int type) override {
        note("graph", type);
        return QxFactory::vNewDGraph(owner, type);
    }
    QxDGraph* vNewInterDGraph(QxOwnedObject* owner, int type) override {
        note("intergraph", type);
        return QxFactory::vNewInterDGraph(owner, type);
    }
    QxDNode* vNewDNode(QxOwnedObject* owner, int type) override {
        note("node", type);
        return QxFactory::vNewDNode(owner, type);
    }
    QxDEdge* vNewDEdge(QxOwnedObject* owner, int type) override {
        note("edge", type);
        return QxFactory::vNewDEdge(owner, type);
    }
    QxPNode* vNewPNode(QxOwnedObject* owner) override {
        note("bend", 0);
        return QxFactory::vNewPNode(owner);
    }
    QxPEdge* vNewPEdge(QxOwnedObject* owner) override {
        note("segment", 0);
        return QxFactory::vNewPEdge(owner);
    }

private:
    void note(const char* what, int type) {
        m_made.push_back(what + std::string(" ") + std::to_string(type));
    }
    std::vector<std::string> m_made;
};

TEST(QxFactory, MakesAllThatADrawingConsistsOf) {
    NotingFactory factory;
    const Ref<QxDGraphManager> manager(factory.newDGraphManager());
    QxDGraph* graph = manager->addGraph(3);
    QxDGraph* other = manager->addGraph(4);
    EXPECT_THAT(factory.take(), ElementsAre("manager 0", "graph 3", "graph 4"));
    QxDNode* a = graph->addNode(5);
    QxDNode* b = graph->addNodeWithCoordinates(0, 0, 1, 1, 1, 6);
    EXPECT_THAT(factory.take(), ElementsAre("node 5", "node 6"));
    QxDEdge* edge = graph->addEdge(a, b, 7);
    EXPECT_THAT(factory.take(), ElementsAre("edge 7"));
    edge->addBendAfter(nullptr, QxPoint(9, 9), 1);
    EXPECT_THAT(factory.take(), testing::UnorderedElementsAre("bend 0", "segment 0", "segment 0"));
    manager->addEdge(a, other->addNode(0), 8);
    EXPECT_THAT(factory.take(), ElementsAre("node 0", "intergraph 0", "graph 0", "edge 8"));
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
