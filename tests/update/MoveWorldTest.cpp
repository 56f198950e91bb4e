// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Random moves of single objects and of selections in a nested drawing, with and without a listener
// that edits it meanwhile.

#include <gtest/gtest.h>

#include "qx/foundation/util/internal/Ref.h"
#include "update/MovingWorld.h"

namespace {

using namespace qxtest;

/// Whether c lies straight on from a over b, up to 2 degrees.
bool isStraightOn(const QxPoint& a, const QxPoint& b, const QxPoint& c) {
    if (a == b || b == c) {
        return false;
    }
    const double in = std::atan2(b.y() - a.y(), b.x() - a.x());
    const double out = std::atan2(c.y() - b.y(), c.x() - b.x());
    return std::abs(std::remainder(out - in, 2 * std::acos(-1.0))) < std::acos(-1.0) / 90;
}

/// What is left of the bends between two ends.
Points plainly(const QxPoint& source, const Points& bends, const QxPoint& target) {
    Points left;
    for (std::size_t i = 0; i < bends.size(); ++i) {
        const QxPoint& next = i + 1 < bends.size() ? bends[i + 1] : target;
        if (!isStraightOn(left.empty() ? source : left.back(), bends[i], next)) {
            left.push_back(bends[i]);
        }
    }
    return left;
}

Points placesOf(const QxDEdge& edge) {
    Points places;
    for (const QxPNode* bend : pathBends(edge)) {
        places.push_back(bend->iCenter());
    }
    return places;
}

/// A selection of everything there is, and what a person does with it.
class Drag {
public:
    explicit Drag(MovingWorld& world) : m_world(world) {
        TestRandom& random = world.random;
        for (QxDNode* node : world.nodes()) {
            if (random.chance(12)) {
                nodes.appendNode(node);
            }
            if (random.chance(5) && node->hasConnectors() != 0) {
                connectors.appendConnector(node->pQueryConnectorManager()->pFirstConnector());
            }
            for (QxNodeLabelIter label(node); label && random.chance(20); ++label) {
                nodeLabels.appendLabel(label.pLabel());
            }
        }
        for (QxDEdge* edge : world.edges()) {
            if (random.chance(10)) {
                edges.appendEdge(edge);
            }
            for (QxEdgeLabelIter label(edge); label && random.chance(20); ++label) {
                edgeLabels.appendLabel(label.pLabel());
            }
        }
        for (const QxDGraph* graph : world.graphs()) {
            for (QxGraphLabelIter label(graph); label && random.chance(20); ++label) {
                graphLabels.appendLabel(label.pLabel());
            }
        }
        info.init(world.manager.get(), &nodes, &edges, &connectors, &edgeLabels, &nodeLabels,
                  nullptr, &graphLabels, random.chance(20) ? 1 : 0);
    }

    void moveAll(const QxPoint& way, bool withLabels) {
        for (QxDNode* node : objectsOf<QxDNode>(*info.pMovedNodeList())) {
            if (node->expanded() != 0 || m_world.random.chance(50)) {
                node->move(way.x(), way.y(), 1);
            } else {
                node->ntMove(way.x(), way.y());
            }
        }
        for (QxDEdge* edge : objectsOf<QxDEdge>(*info.pMovedEdgeList())) {
            QxPNodeDList bends;
            edge->buildPathNodeList(bends);
            for (QxPNode* bend : qx::internal::Snapshot<QxPNode>(&bends)) {
                bend->ntMove(way.x(), way.y());  // listeners may have taken it out
            }
        }
        for (const QxDList* labels : {static_cast<const QxDList*>(info.pMovedNodeLabelList()),
                                      static_cast<const QxDList*>(info.pMovedGraphLabelList())}) {
            for (QxLabel* label : objectsOf<QxLabel>(*labels)) {
                if (withLabels) {
                    label->ntMoveTo(label->ntCenter() + way);
                }
            }
        }
    }

    QxDNodeDList nodes;
    QxDEdgeDList edges;
    QxConnectorDList connectors;
    QxEdgeLabelDList edgeLabels;
    QxNodeLabelDList nodeLabels;
    QxGraphLabelDList graphLabels;
    QxAffectedObjectInfo info;

private:
    MovingWorld& m_world;
};

class MoveSeeds : public testing::TestWithParam<std::uint32_t> {};

TEST_P(MoveSeeds, EverythingStandsAfterEveryMove) {
    const std::uint32_t seed = testSeed(GetParam());
    SCOPED_TRACE(seedTrace(seed));
    QxFactory factory;
    MovingWorld world(factory, seed);
    ASSERT_EQ(world.fault(), "");
    for (int i = 0; i < 250; ++i) {
        const auto straight = world.alongAxes();
        if (world.random.chance(15)) {
            world.random.chance(50) ? world.decorate() : world.step();
        } else {
            world.move();
            for (const QxDEdge* edge : world.activeEdges()) {
                ASSERT_TRUE(straight.count(edge) == 0 || MovingWorld::isAlongAxes(*edge))
                    << "at step " << i;
            }
        }
        ASSERT_EQ(world.fault(), "") << "at step " << i;
    }
}

TEST_P(MoveSeeds, BendsStayWhereTheyAreUnlessTheWayGoesStraightOn) {
    const std::uint32_t seed = testSeed(GetParam());
    SCOPED_TRACE(seedTrace(seed));
    QxFactory factory;
    MovingWorld world(factory, seed);
    int followed = 0;
    QxDGraph* const anchor = world.manager->pAnchorGraph();
    for (int i = 0; i < 4; ++i) {
        QxDNode* const added = anchor->addNodeWithCoordinates(i * 120, i * 70, 20, 20, 1, 0);
        QxDEdge* const edge = world.manager->addEdge(anchor->pFirstNode(), added, 0);
        for (int bends = 0; edge != nullptr && bends < 3; ++bends) {
            edge->addBend(edge->pTargetOrPathEdge(), world.anywhere(), 1);
        }
    }
    for (int i = 0; i < 150; ++i) {
        QxDNode* node = world.random.pick(i % 3 == 0 ? objectsOf<QxDNode>(*anchor->pNodeList())
                                                     : world.nodes());
        const auto straight = world.alongAxes();
        std::map<QxDEdge*, Points> before;
        std::map<QxDEdge*, QxDNode*> other;
        for (QxDEdge* edge : QxInAndOutDEdgeIter(node)) {
            if (edge->reflexive() == 0 && edge->intergraphEdge() == 0 && node->isVisible() != 0 &&
                straight.count(edge) == 0) {
                before[edge] = placesOf(*edge);
            }
        }
        node->move(20 + world.random.below(40), world.random.below(40), 1);
        for (const auto& [edge, bends] : before) {
            const Points expected = plainly(edge->ntFromPoint(0), bends, edge->ntToPoint(0));
            ASSERT_EQ(placesOf(*edge), expected) << "at step " << i;
            followed += bends.empty() ? 0 : 1;
        }
        if (i % 10 == 0) {
            world.decorate();
        }
    }
    EXPECT_GT(followed, 5);
}

TEST_P(MoveSeeds, ADragThatEndsWhereItBeganChangesNothing) {
    const std::uint32_t seed = testSeed(GetParam());
    SCOPED_TRACE(seedTrace(seed));
    QxFactory factory;
    MovingWorld world(factory, seed);
    for (int i = 0; i < 60; ++i) {
        world.move();
        const auto start = world.coordinates();
        {
            Drag drag(world);
            drag.info.actBeforeGeometryChange();
            QxPoint way;
            const bool isTakenBack = world.random.chance(50);  // or moved back, which rounds labels
            for (int steps = world.random.below(4); steps >= 0; --steps) {
                const QxPoint step = world.someWay();
                drag.moveAll(step, isTakenBack);
                way = way + step;
                if (world.random.chance(60)) {
                    drag.info.performRouting(drag.info.pReroutedEdgeList());
                }
                if (world.random.chance(30)) {
                    drag.info.restoreInitialPositions();
                    drag.info.restoreReroutedEdges();
                    ASSERT_EQ(world.changeSince(start), "") << "in drag " << i;
                    way = QxPoint();
                }
            }
            if (isTakenBack) {
                drag.info.restoreInitialPositions();
            } else {
                drag.moveAll(QxPoint(-way.x(), -way.y()), false);
            }
            if (world.random.chance(80)) {
                drag.info.actAfterGeometryChange(0);
            }
        }
        ASSERT_EQ(world.changeSince(start), "") << "in drag " << i;
        ASSERT_EQ(world.fault(), "") << "in drag " << i;
    }
}

TEST_P(MoveSeeds, StepsOfADragLeaveNoTrace) {
    const std::uint32_t seed = testSeed(GetParam());
    SCOPED_TRACE(seedTrace(seed));
    QxFactory factory;
    std::vector<std::vector<std::string>> told;
    for (const bool inSteps : {false, true}) {
        MovingWorld world(factory, seed);
        TestRandom ways(seed);
        for (std::size_t i = 0; i < 30; ++i) {
            {
                Drag drag(world);
                drag.info.actBeforeGeometryChange();
                for (int step = 0; step < 3; ++step) {
                    drag.moveAll({ways.below(90) - 45, ways.below(90) - 45}, true);
                    if (inSteps) {
                        drag.info.performRouting(drag.info.pReroutedEdgeList());
                    }
                }
                drag.info.actAfterGeometryChange(0);
            }
            if (inSteps) {
                ASSERT_EQ(world.changeSince(told[i]), "") << "in drag " << i;
            } else {
                told.push_back(world.coordinates());
            }
            ASSERT_EQ(world.fault(), "") << "in drag " << i;
        }
    }
}

/// What is affected, by asking every edge.
TEST_P(MoveSeeds, ListsAreThoseOfAWalkOverEverything) {
    const std::uint32_t seed = testSeed(GetParam());
    SCOPED_TRACE(seedTrace(seed));
    QxFactory factory;
    MovingWorld world(factory, seed);
    for (int i = 0; i < 80; ++i) {
        Drag drag(world);
        std::set<const QxObject*> moved;
        for (QxDNode* node : objectsOf<QxDNode>(*drag.info.pMovedNodeList())) {
            moved.insert(node);
        }
        for (QxConnector* one : objectsOf<QxConnector>(*drag.info.pMovedConnectorList())) {
            moved.insert(one);
        }
        for (QxDNode* node : objectsOf<QxDNode>(drag.nodes)) {
            QxDGraphDList inside;
            if (node->isVisible() != 0 && node->expanded() != 0) {
                inside.appendGraph(node->pNestedGraph());
                node->pNestedGraph()->buildAllNestedGraphList(inside);
            }
            for (const QxDGraph* graph : objectsOf<QxDGraph>(inside)) {
                moved.insert(graph);
            }
        }
        const auto moves = [&](const QxDEdge& edge, const QxDNode* node, const QxConnector* end) {
            return moved.count(node) != 0 || (end != nullptr && moved.count(end) != 0) ||
                   (edge.intergraphEdge() != 0 && moved.count(node->pOwnerGraph()) != 0);
        };
        const auto movedEdges = objectsOf<QxDEdge>(*drag.info.pMovedEdgeList());
        const auto rerouted = objectsOf<QxDEdge>(*drag.info.pReroutedEdgeList());
        const auto named = objectsOf<QxDEdge>(drag.edges);
        const auto isNamed = [&](const QxDEdge* edge) {
            return std::count(named.begin(), named.end(), edge) != 0;
        };
        for (const QxDEdge* edge : world.activeEdges()) {
            const int ends = moves(*edge, edge->pSourceNode(), edge->pSourceConnector()) +
                             moves(*edge, edge->pTargetNode(), edge->pTargetConnector());
            const bool isMoved = std::count(movedEdges.begin(), movedEdges.end(), edge) != 0;
            const bool isRerouted = std::count(rerouted.begin(), rerouted.end(), edge) != 0;
            if (drag.info.collectOnlySelected() == 0) {
                ASSERT_EQ(isMoved, ends == 2) << "in drag " << i;
                ASSERT_TRUE(isRerouted || ends != 1) << "in drag " << i;
            }
            ASSERT_TRUE(!isRerouted || ends == 1 || isNamed(edge)) << "in drag " << i;
        }
        QxDGraphDList all;
        if (QxDGraph* between = world.manager->pQueryIntergraph()) {
            all.appendGraph(between);
        }
        all.appendGraph(world.manager->pAnchorGraph());
        world.manager->pAnchorGraph()->buildAllNestedGraphList(all);
        const auto affected = objectsOf<QxDGraph>(*drag.info.pAffectedGraphList());
        std::vector<QxDGraph*> inOrder;
        for (QxDGraph* graph : objectsOf<QxDGraph>(all)) {
            if (std::count(affected.begin(), affected.end(), graph) != 0) {
                inOrder.push_back(graph);
            }
        }
        ASSERT_EQ(affected, inOrder) << "in drag " << i;
        for (QxDNode* node : objectsOf<QxDNode>(*drag.info.pMovedNodeList())) {
            for (QxDGraph* graph = node->pOwnerGraph(); graph != nullptr;
                 graph = graph->isAnchorGraph() != 0 ? nullptr : graph->pNestedWithinGraph()) {
                ASSERT_EQ(std::count(affected.begin(), affected.end(), graph), 1);
            }
        }
    }
}

/// Moves, adds and takes away while it is told.
class Meddler : public QxDrawingChangeListener {
public:
    using QxDrawingChangeListener::drawingChanged;
    void drawingChanged(QxDrawingChangeEventData*) override {
        if (world == nullptr || isAtIt || !world->random.chance(15)) {
            return;
        }
        isAtIt = true;
        switch (world->random.below(6)) {
            case 0:
                world->decorate();
                break;
            case 1:
                world->manager->discardEdge(world->random.pick(world->edges()));
                break;
            case 2: {
                QxDEdge* edge = world->random.pick(world->edges());
                edge->reroute(QxPointDList(), 1);
                break;
            }
            case 3:
                if (world->nodes().size() > 12) {
                    QxDNode* node = world->random.pick(world->nodes());
                    node->pOwnerGraph()->discardNode(node);
                }
                break;
            default:
                world->move();
        }
        isAtIt = false;
    }
    MovingWorld* world = nullptr;
    bool isAtIt = false;
};

TEST_P(MoveSeeds, ListenersMayDoWhatTheyLike) {
    const std::uint32_t seed = testSeed(GetParam());
    SCOPED_TRACE(seedTrace(seed));
    QxFactory factory;
    MovingWorld world(factory, seed);
    Meddler meddler;
    factory.pEventManager()->addDrawingChangeListener(world.manager.get(), &meddler);
    for (int i = 0; i < 120; ++i) {
        meddler.world = &world;
        if (world.random.chance(60)) {
            world.move();
        } else {
            Drag drag(world);
            drag.info.actBeforeGeometryChange();
            drag.moveAll(world.someWay(), true);
            drag.info.performRouting(drag.info.pReroutedEdgeList());
            if (world.random.chance(40)) {
                drag.info.restoreInitialPositions();
                drag.info.restoreReroutedEdges();
            }
            drag.moveAll(world.someWay(), true);
            if (world.random.chance(70)) {
                drag.info.actAfterGeometryChange(world.random.below(2));
            }
        }
        meddler.world = nullptr;
        ASSERT_EQ(world.fault(), "") << "at step " << i;
        while (world.edges().size() < 20) {
            world.step();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, MoveSeeds, testing::Range(1U, 7U));

}  // namespace
