// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <gmock/gmock.h>

#include <utility>

#include "drawing/QxDNodeTestDrawing.h"
#include "support/TestRandom.h"

namespace {

using qxtest::Ref;
using testing::ElementsAre;
using testing::IsEmpty;

class QxDNodeShape : public qxtest::NodeDrawing {
protected:
    std::size_t shapesInUse() { return factory.pShapeResourceDB()->numberOfResources(); }

    const QxShape oval{QxShapeTypeOval};
    const QxShape rectangle;
};

}  // namespace

TEST_F(QxDNodeShape, APlainNodeShowsTheDefaultWithoutHoldingIt) {
    QxDNode* node = place(0, 0, 10, 10);
    EXPECT_EQ(node->pShape(), defaultResource()->pShape());
    EXPECT_EQ(node->pQueryShapeResource(), nullptr);
    EXPECT_EQ(defaultResource()->useCount(), 0);
    EXPECT_EQ(node->pShape(&rectangle, 0), defaultResource()->pShape());
    EXPECT_THAT(heardTypes(), IsEmpty()) << "it shows a rectangle already";
    EXPECT_EQ(node->pShapeResource(), defaultResource());
    EXPECT_EQ(defaultResource()->useCount(), 1);
    EXPECT_EQ(node->pShapeResource(), defaultResource());
    EXPECT_EQ(defaultResource()->useCount(), 1);
    node->discardShapeResource();
    EXPECT_EQ(defaultResource()->useCount(), 0);

    const Ref<QxDNode> lonely(new QxDNode(nullptr, 0, nullptr));
    EXPECT_EQ(lonely->pShape(), nullptr);
    EXPECT_EQ(lonely->pShapeResource(), nullptr);
    EXPECT_EQ(lonely->pShape(&oval, 0), nullptr);
    EXPECT_EQ(lonely->pChangeShape(&oval, 1), nullptr);
    EXPECT_EQ(lonely->within(QxPoint(20, 20), 1), 1);
}

TEST_F(QxDNodeShape, APrivateResourceIsChangedInPlaceAndSharedAgain) {
    QxDNode* first = place(0, 0, 10, 10);
    QxDNode* second = place(50, 0, 10, 10);
    first->pShape(&oval, 1);
    second->pShape(&oval, 1);
    QxShapeResource* own = second->pChangeableShapeResource();
    EXPECT_NE(own, first->pQueryShapeResource());
    EXPECT_EQ(own->useCount(), 0);
    EXPECT_EQ(first->pQueryShapeResource()->useCount(), 1);
    EXPECT_EQ(second->pChangeableShapeResource(), own) << "it is private already";
    QxShapeResource* only = first->pQueryShapeResource();
    EXPECT_EQ(first->pChangeableShapeResource(), only) << "its last holder keeps it";
    first->updateShapeResource(only);
    second->updateShapeResource(own);
    EXPECT_EQ(second->pQueryShapeResource(), only);
    EXPECT_EQ(only->useCount(), 2);
    second->updateShapeResource(only);
    EXPECT_EQ(only->useCount(), 2) << "a shared resource is updated already";

    const Ref<QxDNode> duplicate(factory.qxNewDNode(&factory, 0));
    first->pChangeableShapeResource();
    duplicate->duplicateTopology(first);
    EXPECT_EQ(duplicate->pQueryShapeResource(), first->pQueryShapeResource());
    EXPECT_EQ(only->useCount(), 3) << "a private source resource is shared first";
}

TEST_F(QxDNodeShape, NoIncidentEdgeStaysMarked) {
    QxDNode* node = place(0, 0, 10, 10);
    QxDEdge* out = graph->addEdge(node, place(50, 0, 10, 10), 0);
    QxDEdge* in = graph->addEdge(place(0, 50, 10, 10), node, 0);
    QxDEdge* loop = graph->addEdge(node, node, 0);
    for (QxDEdge* edge : {out, in, loop}) {
        edge->marked(1);
    }
    node->pShape(&oval, 0);
    for (const QxDEdge* edge : {out, in, loop}) {
        EXPECT_EQ(edge->marked(), 0);
    }
}

TEST_F(QxDNodeShape, AttributesAreCopiedWithoutTheShape) {
    QxDNode* source = place(10, 20, 30, 41);
    source->nameString(L"source");
    source->forceClipping(0);
    source->pShape(&oval, 1);
    source->storeMovedNode();
    source->pRectBeforeMoveForSelfLoops(new QxRect(1, 2, 3, 4));
    QxDNode* copy = place(-50, 0, 10, 10);
    copy->pShape(&oval, 1);
    copy->copyAttributes(source);
    EXPECT_EQ(*copy->pIRect(), *source->pIRect());
    EXPECT_EQ(copy->originalSize(), QxSize(30, 41));
    EXPECT_EQ(copy->forceClipping(), 0);
    EXPECT_STREQ(copy->pNameString(), L"source");
    EXPECT_EQ(copy->pQueryShapeResource(), nullptr);
    EXPECT_EQ(source->pQueryShapeResource()->useCount(), 1);
    EXPECT_EQ(bounds(), *source->pIRect()) << "the copy has left its old place";
    EXPECT_THAT(heardTypes(), ElementsAre(NodeMoved, NodeResized));
    ASSERT_NE(copy->pRectBeforeMove(), nullptr);
    EXPECT_EQ(*copy->pRectBeforeMove(), *source->pRectBeforeMove());
    ASSERT_NE(copy->pRectBeforeMoveForSelfLoops(), nullptr);
    EXPECT_EQ(*copy->pRectBeforeMoveForSelfLoops(), QxRect(1, 2, 3, 4));
    EXPECT_NE(copy->pRectBeforeMoveForSelfLoops(), source->pRectBeforeMoveForSelfLoops());
    source->restoreMovedNode();
    EXPECT_NE(copy->pRectBeforeMove(), nullptr);
    EXPECT_EQ(copy->pClonedNode(), nullptr);
    EXPECT_EQ(source->pClonedNode(), nullptr);
}

TEST_F(QxDNodeShape, CopiesIntoAnotherFactoryUseItsDatabase) {
    QxDNode* source = place(10, 20, 30, 40);
    source->pShape(&oval, 1);
    QxFactory otherFactory;
    const Ref<QxDGraphManager> other(otherFactory.newDGraphManager());
    QxDNode* copy = other->addGraph(0)->addNode(0);
    copy->copyObject(source);
    EXPECT_EQ(*copy->pShape(), oval);
    EXPECT_NE(copy->pQueryShapeResource(), source->pQueryShapeResource());
    EXPECT_EQ(copy->pQueryShapeResource()->pShapeResourceDB(), otherFactory.pShapeResourceDB());
    EXPECT_EQ(source->pQueryShapeResource()->useCount(), 1);
}

TEST_F(QxDNodeShape, RandomChangesLeaveNoReferenceBehind) {
    const std::uint32_t seed = qxtest::testSeed(11);
    SCOPED_TRACE(qxtest::seedTrace(seed));
    qxtest::TestRandom random(seed);
    const std::vector<QxShape> choice = {rectangle, oval, qxtest::diamond(), qxtest::angle()};
    std::vector<QxDNode*> nodes;
    for (int i = 0; i < 6; ++i) {
        nodes.push_back(place(i * 20, 0, 10, 10));
    }
    for (int round = 0; round < 1000; ++round) {
        QxDNode* node = random.pick(nodes);
        switch (random.below(6)) {
            case 0:
                node->pShape(&random.pick(choice), random.below(2));
                break;
            case 1:
                node->pChangeShape(&random.pick(choice), random.below(2));
                break;
            case 2:
                node->copyObject(random.pick(nodes));
                break;
            case 3:
                node->duplicateTopology(random.pick(nodes));
                break;
            case 4:
                node->discardShapeResource();
                break;
            default:
                node->pShapeResource();
        }
        for (const QxDNode* counted : nodes) {
            const QxShapeResource* resource = counted->pQueryShapeResource();
            if (resource != nullptr) {
                const auto holders = std::count_if(nodes.begin(), nodes.end(), [&](auto* n) {
                    return n->pQueryShapeResource() == resource;
                });
                ASSERT_EQ(resource->useCount(), holders) << "round " << round;
            }
        }
    }
    graph->emptyTopology();
    EXPECT_EQ(shapesInUse(), 1U);
    EXPECT_EQ(defaultResource()->useCount(), 0);
}
