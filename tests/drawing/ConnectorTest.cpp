// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <gtest/gtest.h>

#include "drawing/EdgePathTesting.h"
#include "qx/foundation/geometry/QxShape.h"

namespace {

using namespace qxtest;

using Types = std::vector<std::int32_t>;
using Connectors = std::vector<QxConnector*>;

class Connector : public testing::Test {
protected:
    ~Connector() override { EXPECT_EQ(drawing.manager->checkInvariants(), 1); }

    QxFactory factory;
    EdgeDrawing drawing{factory};
    QxDNode* node = drawing.source;
    QxDEdge* edge = drawing.edge;
};

TEST_F(Connector, TheEdgeIsCutOffAtItsOutlineWhateverWasAsked) {
    QxConnector* connector = node->addConnector(0, 1000, 0, 0, 1, 0);
    connector->resize(20, 20, 1);
    edge->pSourceConnector(connector);
    drawing.target->moveTo(200, 210, 1);
    const Places oval{{7, 17}, {191, 201}};
    EXPECT_EQ(visiblePointsOf(edge).front(), oval.front()) << "an oval, not a square";
    connector->pShapeResource();
    edge->invalidateEndPoints();
    EXPECT_EQ(visiblePointsOf(edge).front(), oval.front());
    drawing.events.take();
    connector->pShape(nullptr);
    EXPECT_EQ(drawing.events.takeTypes(), Types{ConnectorShapeChanged});
    EXPECT_EQ(visiblePointsOf(edge).front(), (Place{10, 20})) << "a square";
    QxConnector bare(nullptr, 0, nullptr);
    EXPECT_EQ(bare.pShape(), nullptr);
}

TEST_F(Connector, EventsTellOfSpecifiedOnesOnly) {
    QxConnector* calculated = node->ntAddConnector(500, 0, 0, 0);
    edge->pSourceConnector(calculated);
    calculated->moveTo(3, 3, 1);
    EXPECT_EQ(drawing.events.takeTypes(), Types{});
    QxConnector* connector = node->addConnector(0, 0, 0, 0, 1, 0);
    edge->pSourceConnector(connector);
    EXPECT_EQ(node->numberOfAllConnectors(), 1) << "the unused calculated one has gone";
    edge->pSourceConnector(connector);
    connector->resize(4, 4, 1);
    connector->nameString(L"port");
    EXPECT_EQ(drawing.events.takeTypes(), (Types{ConnectorInserted, EdgeConnectorChanged,
                                                 ConnectorResized, ConnectorNameChanged}));
    node->discardConnector(connector);
    EXPECT_EQ(drawing.events.takeTypes(), (Types{EdgeConnectorChanged, ConnectorDiscarded}));
    EXPECT_EQ(edge->ntFromPoint(0), QxPoint(0, 0));
    edge->pSourceConnector(node->addConnector(0, 0, 0, 0, 1, 0));
    QxDNode* other = drawing.addNode(50, 50);
    drawing.events.take();
    EXPECT_EQ(edge->changeSourceNode(other), 1);
    EXPECT_EQ(drawing.events.takeTypes(), Types{EdgeConnectorChanged}) << "it has lost it";
}

/// Assigns an end again from inside the event that it is free.
class Reassigner : public QxDrawingChangeListener {
public:
    using QxDrawingChangeListener::drawingChanged;
    void drawingChanged(QxDrawingChangeEventData* data) override {
        if (data->type() == EdgeConnectorChanged && data->pNewEndConnector() == nullptr) {
            data->pSourceEdge()->pSourceConnector(data->pOldEndConnector());
        }
    }
};

TEST_F(Connector, LeavesItsEdgesForGoodWhateverAListenerAssigns) {
    QxConnector* connector = node->addConnector(0, 0, 0, 0, 1, 0);
    edge->pSourceConnector(connector);
    Reassigner listener;
    factory.pEventManager()->addDrawingChangeListener(&factory, &listener);
    const Ref<QxConnector> removed(node->removeConnector(connector));
    EXPECT_EQ(removed.get(), connector);
    EXPECT_EQ(edge->pInternalSourceConnector(), nullptr);
    const auto kept = hold(node->addConnector(0, 0, 0, 0, 1, 0));
    kept->inDiscard(1);
    drawing.graph->discardNode(node);
    EXPECT_EQ(kept->pOwnerNode(), nullptr) << "whatever state it was said to be in";
}

TEST_F(Connector, ListsNameASelfLoopOnceInTheOrderOfTheNode) {
    QxConnector* connector = node->addConnector(0, 0, 0, 0, 1, 0);
    QxDEdge* loop = drawing.addEdge(node, node);
    loop->pTargetConnector(connector);
    loop->pSourceConnector(connector);
    edge->pSourceConnector(connector);
    const auto edges = [&](QxEdgeDirectionEnum direction, QxEdgeConnectionEnum connection) {
        QxDEdgeDList list;
        connector->buildIncidentEdgeList(&list, direction, connection);
        return objectsOf<QxDEdge>(list);
    };
    using Edges = std::vector<QxDEdge*>;
    EXPECT_EQ(edges(QxEdgeDirectionOut, QxEdgeConnectionConnected), Edges{edge});
    QxConnector* last = node->ntAddConnector(0, 0, 0, 0);
    QxDListCell* start = node->pConnectorManager()->pLastCell();
    EXPECT_FALSE(QxConnectorIter(node, start)) << "the specified ones only";
    EXPECT_EQ(QxInternalConnectorIter(node, start).pConnector(), last);
    EXPECT_EQ(edges(QxEdgeDirectionBoth, QxEdgeConnectionConnected), (Edges{loop, edge}));
    QxPEdgeDList segments;
    connector->buildIncidentPEdgeList(&segments);
    EXPECT_EQ(segments.count(), 2);
    loop->deactivate();
    EXPECT_EQ(edges(QxEdgeDirectionBoth, QxEdgeConnectionDeactivated), Edges{loop});
    EXPECT_EQ(edges(QxEdgeDirectionBoth, QxEdgeConnectionNotDeactivated), Edges{edge});
}

TEST_F(Connector, DirectionsAreThoseInWhichEdgesLeave) {
    QxConnector* connector = node->ntAddConnector(0, 0, -2, 8);
    edge->pSourceConnector(connector);
    edge->internalOrthogonalRouting(1);
    drawing.graph->updateCalculatedConnectors();
    EXPECT_EQ(connector->routingDirection(), QxDirectionUp) << "through the top, which is closest";
    connector->routingDirection(QxDirectionNone);
    drawing.target->ntMoveTo(200, 8);
    drawing.graph->updateCalculatedConnectors();
    EXPECT_EQ(connector->routingDirection(), QxDirectionRight);
    QxPoint leaving;
    EXPECT_EQ(node->findProjection(edge, connector, leaving, nullptr), 1);
    EXPECT_EQ(leaving, QxPoint(10, 8)) << "straight on from the far end";
    edge->internalOrthogonalRouting(0);
    drawing.graph->updateCalculatedConnectors();
    EXPECT_EQ(connector->routingDirection(), QxDirectionNone);
}

TEST_F(Connector, AnotherShapeOfTheNodeReleasesOrReplacesCalculatedOnes) {
    const QxShape oval(QxShapeTypeOval);
    edge->pSourceConnector(node->ntAddConnector(0, 0, 10, 8));
    edge->pTargetConnector(drawing.target->addConnector(0, 0, 0, 0, 1, 0));
    node->pShape(&oval, 0);
    EXPECT_EQ(edge->pInternalSourceConnector(), nullptr);
    EXPECT_EQ(edge->pInternalTargetConnector(), nullptr) << "both ends are released";
    QxConnector* connector = node->ntAddConnector(0, 0, 10, 8);
    connector->routingDirection(QxDirectionRight);
    edge->pSourceConnector(connector);
    edge->internalOrthogonalRouting(1);
    drawing.target->ntMoveTo(200, 8);
    drawing.manager->controlStarted(1);
    node->pShape(nullptr, 0);
    node->pShape(&oval, 0);
    ASSERT_EQ(edge->pInternalSourceConnector(), connector);
    EXPECT_EQ(connector->ntOffset(), QxSize(6, 8)) << "on the outline, level with the far end";
}

TEST_F(Connector, CopiesOfAGraphHaveConnectorsOfTheirOwn) {
    QxConnector* connector = node->addConnector(0, 500, 3, 0, 1, 0);
    connector->nameString(L"a");
    connector->routingDirection(QxDirectionDown);
    edge->pSourceConnector(connector);
    edge->pTargetConnector(drawing.target->ntAddConnector(-1000, 0, 0, 0));
    QxDGraph* copy = drawing.manager->addGraph(0);
    copy->copyGraph(drawing.graph, 1);
    const QxDEdge* twin = copy->pFirstEdge();
    ASSERT_NE(twin->pSourceConnector(), nullptr);
    EXPECT_NE(twin->pSourceConnector(), connector);
    EXPECT_EQ(twin->pSourceConnector()->pOwnerNode(), copy->pFirstNode());
    EXPECT_EQ(twin->pSourceConnector()->routingDirection(), QxDirectionDown);
    EXPECT_STREQ(twin->pSourceConnector()->pNameString(), L"a");
    EXPECT_EQ(twin->ntFromPoint(0), QxPoint(3, 5));
    EXPECT_EQ(twin->ntToPoint(0), QxPoint(190, 0));
    EXPECT_EQ(connector->pIUserField(), nullptr);
}

}  // namespace
