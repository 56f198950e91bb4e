// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Random routes and bundles against plain walks: lists into which corners are inserted one by one,
// the wish climbing from graph to graph, and bundles grouped pair by pair.

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "drawing/DrawingTesting.h"
#include "nesting/NestedWorld.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxPNode.h"
#include "support/TestRandom.h"

namespace {

using namespace qxtest;
bool isSlanted(const QxPoint& a, const QxPoint& b) {
    return a.x() != b.x() && a.y() != b.y();
}

/// The wish by the long way.
bool wants(const QxDEdge& edge) {
    const QxDNode* source = edge.pSourceNode();
    const QxDNode* target = edge.pTargetNode();
    const QxDGraph* from = source != nullptr ? source->pOwnerGraph() : nullptr;
    const QxDGraph* to = target != nullptr ? target->pOwnerGraph() : nullptr;
    if (from == nullptr || to == nullptr) {
        return false;
    }
    bool isWanted = edge.internalOrthogonalRouting() != 0 || from->orthogonalRouting() != 0 ||
                    to->orthogonalRouting() != 0;
    if (isWanted || edge.intergraphEdge() == 0 || edge.isVisible() == 0) {
        return isWanted;
    }
    std::vector<const QxDGraph*> aroundTarget;
    for (const QxDGraph* graph = to; graph != nullptr; graph = graph->pNestedWithinGraph()) {
        aroundTarget.push_back(graph);
        isWanted = isWanted || graph == source->pNestedGraph();
    }
    std::set<const QxDGraph*> passed(aroundTarget.begin(), aroundTarget.end());
    const QxDGraph* common = from;
    for (; common != nullptr && passed.count(common) == 0; common = common->pNestedWithinGraph()) {
        isWanted = isWanted || common->orthogonalRouting() != 0;
    }
    for (const QxDGraph* graph = from; graph != nullptr; graph = graph->pNestedWithinGraph()) {
        isWanted = isWanted || graph == target->pNestedGraph();
    }
    for (const QxDGraph* graph : aroundTarget) {
        isWanted = isWanted || graph->orthogonalRouting() != 0;
        if (graph == common) {
            break;
        }
    }
    return isWanted;
}

void checkRoute(QxDEdge& edge) {
    const Points path = pathOf(edge);
    ASSERT_EQ(edge.orthogonalRouting(), 1);
    for (std::size_t i = 1; i < path.size(); ++i) {
        ASSERT_FALSE(isSlanted(path[i - 1], path[i]));
    }
    for (const QxConnector* connector :
         {edge.pInternalSourceConnector(), edge.pInternalTargetConnector()}) {
        ASSERT_NE(connector, nullptr);
        const QxRect& rect = *connector->pOwnerNode()->pIRect();
        ASSERT_TRUE(connector->specified() != 0 || rect.within(connector->ntCenter()) != 0);
    }
    ASSERT_EQ(edge.checkPath(), 1);
    ASSERT_EQ(edge.checkInvariants(), 1);
}

class RoutingWorld : public testing::TestWithParam<std::uint32_t> {};

TEST_P(RoutingWorld, RepairedEdgesRunAlongTheAxes) {
    const std::uint32_t seed = testSeed(GetParam());
    SCOPED_TRACE(seedTrace(seed));
    QxFactory factory;
    NestedWorld world(factory, seed);
    TestRandom& random = world.random;
    int repaired = 0;
    for (int step = 0; step < 700; ++step) {
        SCOPED_TRACE("step " + std::to_string(step));
        world.step();
        random.pick(world.graphs())->orthogonalRouting(random.chance(20) ? 1 : 0);
        const QxShape shape(static_cast<QxShapeTypeEnum>(random.below(2)));
        random.pick(world.nodes())->pShape(&shape, 0);
        for (int i = 0; i < 5; ++i) {
            QxDEdge* edge = random.pick(world.edges());
            edge->internalOrthogonalRouting(random.chance(70) ? 1 : 0);
            edge->addBend(edge->pTargetOrPathEdge(),
                          QxPoint(random.below(400) - 50, random.below(400) - 50), 1);
            ASSERT_EQ(edge->desiredOrthogonalRouting() != 0, wants(*edge));
            edge->repairOrthogonalRouting();
            const bool isRouted = edge->connected() != 0 && edge->deactivated() == 0 &&
                                  wants(*edge) &&
                                  (edge->intergraphEdge() == 0 || edge->isVisible() != 0);
            if (isRouted) {
                ++repaired;
                checkRoute(*edge);
                ASSERT_FALSE(testing::Test::HasFatalFailure());
            }
        }
    }
    EXPECT_GT(repaired, 25);
    EXPECT_EQ(world.manager->checkInvariants(), 1);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RoutingWorld, testing::Range(1U, 9U));

/// A list is completed by inserting one point at a time.
void complete(Points& list, bool startsHorizontal, bool endsHorizontal) {
    const std::size_t count = list.size();
    const auto corner = [&](const QxPoint& end, const QxPoint& next, bool isHorizontal) {
        const QxPoint middle((end.x() + next.x()) / 2, (end.y() + next.y()) / 2);
        const QxPoint way = count == 2 ? middle : next;
        return isHorizontal ? QxPoint(way.x(), end.y()) : QxPoint(end.x(), way.y());
    };
    const QxPoint first = list[0];
    const QxPoint second = list[1];
    const QxPoint last = list[count - 1];
    const QxPoint beforeLast = list[count - 2];
    if (startsHorizontal ? first.y() != second.y() : first.x() != second.x()) {
        list.insert(list.begin() + 1, corner(first, second, startsHorizontal));
    }
    if (endsHorizontal ? last.y() != beforeLast.y() : last.x() != beforeLast.x()) {
        list.insert(list.end() - 1, corner(last, beforeLast, endsHorizontal));
    }
    for (std::size_t i = 0; i + 2 < list.size(); ++i) {
        const QxPoint a = list[i];
        const QxPoint b = list[i + 1];
        const QxPoint c = list[i + 2];
        const auto at = list.begin() + static_cast<std::ptrdiff_t>(i);
        if (!isSlanted(a, b)) {
            if (isSlanted(b, c)) {
                list.insert(at + 2, a.x() == b.x() ? QxPoint(b.x(), c.y()) : QxPoint(c.x(), b.y()));
            }
        } else if (b.x() == c.x()) {
            list.insert(at + 1, QxPoint(b.x(), a.y()));
        } else if (b.y() == c.y()) {
            list.insert(at + 1, QxPoint(a.x(), b.y()));
        } else {
            const bool isFlat = (a.y() - b.y()) / (a.x() - b.x()) <= 1;
            list.insert(at + 1, isFlat ? QxPoint(b.x(), a.y()) : QxPoint(a.x(), b.y()));
        }
    }
}

/// It is thinned by erasing one at a time.
void thin(Points& list) {
    for (std::size_t i = 0; i + 2 < list.size();) {
        const QxPoint& a = list[i];
        const QxPoint& b = list[i + 1];
        const QxPoint& c = list[i + 2];
        const bool isIdle =
            (a.x() == b.x() && b.x() == c.x()) || (a.y() == b.y() && b.y() == c.y()) || a == c;
        isIdle ? void(list.erase(list.begin() + static_cast<std::ptrdiff_t>(i) + 1)) : void(++i);
    }
}

TEST(RoutingCorners, AreThoseOfAPlainWalk) {
    const std::uint32_t seed = testSeed(7);
    SCOPED_TRACE(seedTrace(seed));
    TestRandom random(seed);
    QxFactory factory;
    SmallDrawing drawing(factory);
    QxDNode* nodes[] = {drawing.addNode(0, 0, 20, 20), drawing.addNode(60, 40, 20, 20)};
    QxDEdge* edge = drawing.addEdge(nodes[0], nodes[1]);
    edge->internalOrthogonalRouting(1);
    for (int round = 0; round < 3000; ++round) {
        bool isHorizontal[2];
        QxConnector* ends[2];
        for (int i = 0; i < 2; ++i) {
            isHorizontal[i] = random.chance(50);
            const auto perMil = static_cast<std::int16_t>(random.chance(50) ? 1000 : -1000);
            const auto along = static_cast<std::int16_t>(random.below(5) * 100 - 200);
            ends[i] = nodes[i]->addConnector(isHorizontal[i] ? perMil : along,
                                             isHorizontal[i] ? along : perMil, 0, 0, 1, 0);
        }
        edge->pSourceConnector(ends[0]);
        edge->pTargetConnector(ends[1]);
        Points expected{ends[0]->ntCenter()};
        for (int i = random.below(7); i > 0; --i) {
            expected.emplace_back(random.below(12) * 10 - 30, random.below(12) * 10 - 30);
        }
        expected.push_back(ends[1]->ntCenter());
        QxPointDList list;
        for (const QxPoint& point : expected) {
            list.appendPoint(point);
        }
        edge->makePathOrthogonal(list);
        complete(expected, isHorizontal[0], isHorizontal[1]);
        thin(expected);
        Points points;
        for (const QxDListCell* cell = list.pFirstCell(); cell; cell = cell->pNextCell()) {
            points.push_back(*QxPointDList::pPoint(cell));
        }
        ASSERT_EQ(points, expected) << "in round " << round;
        nodes[0]->discardConnector(ends[0]);
        nodes[1]->discardConnector(ends[1]);
    }
}

/// A whole repair by the long way.
class PlainRepair {
public:
    explicit PlainRepair(const QxDEdge& edge) : m_list(pathOf(edge)) {
        const QxPoint second = m_list[1];
        const QxPoint lastButOne = m_list[m_list.size() - 2];
        repairEnd(*edge.pSourceNode(), edge.pInternalSourceConnector(), m_list.front(), second);
        repairEnd(*edge.pTargetNode(), edge.pInternalTargetConnector(), m_list.back(), lastButOne);
        complete(m_list, isAtSide(*edge.pSourceNode(), m_list.front()),
                 isAtSide(*edge.pTargetNode(), m_list.back()));
        if (edge.hasSpecifiedSourceConnector() == 0) {
            cut(*edge.pSourceNode());
        }
        std::reverse(m_list.begin(), m_list.end());
        if (edge.hasSpecifiedTargetConnector() == 0) {
            cut(*edge.pTargetNode());
        }
        std::reverse(m_list.begin(), m_list.end());
        thin(m_list);
    }
    const Points& path() const { return m_list; }

private:
    static bool isAtSide(const QxDNode& node, const QxPoint& point) {
        return node.pIRect()->closestSide(point) % 2 == 0;
    }
    static bool cross(const QxDNode& node, QxPoint& from, const QxPoint& to) {
        const QxRect& rect = *node.pIRect();
        return node.pShape()->intersectsSegment(from, from, to, rect.center(), rect.size()) != 0;
    }
    static void repairEnd(const QxDNode& node, const QxConnector* connector, QxPoint& end,
                          const QxPoint& next) {
        const QxRect& rect = *node.pIRect();
        if (connector == nullptr && !cross(node, end, next)) {
            node.pShape()->nearestPoint(end, next, rect.center(), rect.size());
        } else if (connector != nullptr && connector->specified() == 0 && rect.within(end) == 0) {
            cross(node, end, rect.center());
        }
    }
    void cut(const QxDNode& node) {
        for (std::size_t i = m_list.size() - 1; i > 0; --i) {
            const QxPoint a = m_list[i];
            QxPoint x = a;
            if (!cross(node, x, m_list[i - 1])) {
                continue;
            }
            x = x.x() == a.x() ? QxPoint(x.x(), node.iCenter().y())
                               : QxPoint(node.iCenter().x(), x.y());
            if (cross(node, x, a)) {
                m_list.erase(m_list.begin(), m_list.begin() + static_cast<std::ptrdiff_t>(i));
                m_list.insert(m_list.begin(), x);
                return;
            }
        }
    }

    Points m_list;
};

TEST(RoutingRepair, IsThatOfAPlainWalk) {
    const std::uint32_t seed = testSeed(11);
    SCOPED_TRACE(seedTrace(seed));
    TestRandom random(seed);
    for (int round = 0; round < 1500; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        QxFactory factory;
        SmallDrawing drawing(factory);
        QxDNode* nodes[2];
        for (QxDNode*& node : nodes) {
            node = drawing.addNode(random.below(300), random.below(300), random.below(120),
                                   random.below(120));
            const QxShape shape(random.chance(50) ? QxShapeTypeOval : QxShapeTypeRectangle);
            node->pShape(&shape, 0);
        }
        QxDEdge* edge = drawing.addEdge(nodes[0], nodes[1]);
        edge->internalOrthogonalRouting(1);
        if (random.chance(20)) {
            const auto perMil = static_cast<std::int16_t>(random.below(2000) - 1000);
            edge->pTargetConnector(nodes[1]->addConnector(perMil, 1000, 0, 0, 1, 0));
        }
        for (int again = 0; again < 3; ++again) {
            for (int i = random.below(4); i > 0; --i) {
                drawing.addBend(edge, random.below(400) - 50, random.below(400) - 50);
            }
            const Points expected = PlainRepair(*edge).path();
            edge->repairOrthogonalRouting();
            ASSERT_EQ(pathOf(*edge), expected);
            nodes[0]->moveTo(QxPoint(random.below(300), random.below(300)), 1);
            nodes[0]->resize(QxSize(random.below(120), random.below(120)), 1);
        }
    }
}

/// Bundles by comparing each edge with the first of every bundle.
std::vector<std::vector<QxDEdge*>> plainBundles(const std::vector<QxDEdge*>& edges) {
    std::vector<std::vector<QxDEdge*>> bundles;
    const auto at = [](const QxDEdge* edge, const QxNode* node) {
        return edge->pSourceNode() == node ? edge->pSourceConnector() : edge->pTargetConnector();
    };
    for (QxDEdge* edge : edges) {
        bool isPlaced = false;
        for (auto& bundle : bundles) {
            const QxDEdge* first = bundle.front();
            if (!isPlaced && at(first, first->pSourceNode()) == at(edge, first->pSourceNode()) &&
                at(first, first->pTargetNode()) == at(edge, first->pTargetNode())) {
                bundle.push_back(edge);
                isPlaced = true;
            }
        }
        if (!isPlaced) {
            bundles.push_back({edge});
        }
    }
    std::erase_if(bundles, [](const auto& bundle) { return bundle.size() < 2; });
    return bundles;
}

class BundleWorld : public testing::TestWithParam<std::uint32_t> {};

TEST_P(BundleWorld, EdgesBetweenTwoNodesNeverLieOnTopOfEachOther) {
    const std::uint32_t seed = testSeed(GetParam());
    SCOPED_TRACE(seedTrace(seed));
    TestRandom random(seed);
    for (int round = 0; round < 60; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        QxFactory factory;
        SmallDrawing drawing(factory);
        QxDNode* a = drawing.addNode(random.below(400), random.below(400), 20 + random.below(200),
                                     20 + random.below(200));
        QxDNode* b = drawing.addNode(random.below(400), random.below(400), 20 + random.below(200),
                                     20 + random.below(200));
        const bool areOval = random.chance(50);
        const QxShape shape(areOval ? QxShapeTypeOval : QxShapeTypeRectangle);
        a->pShape(&shape, 0);
        b->pShape(&shape, 0);
        drawing.graph->diagrammingMultiEdgeSpacing(3 + random.below(10));
        std::vector<QxDEdge*> edges;
        QxConnector* fixed[] = {a->addConnector(1000, 0, 0, 0, 1, 0),
                                a->addConnector(0, 1000, 0, 0, 1, 0)};
        std::vector<QxDEdge*> loose;
        std::vector<Points> fixedPaths;
        for (int i = 2 + random.below(12); i > 0; --i) {
            const bool isReversed = random.chance(40);
            edges.push_back(drawing.addEdge(isReversed ? b : a, isReversed ? a : b));
            if (random.chance(40)) {
                drawing.addBend(edges.back(), random.below(300), random.below(300));
            }
            if (random.chance(25)) {
                QxConnector* connector = fixed[random.below(2)];
                isReversed ? edges.back()->pTargetConnector(connector)
                           : edges.back()->pSourceConnector(connector);
                fixedPaths.push_back(pathOf(*edges.back()));
            } else {
                loose.push_back(edges.back());
            }
        }
        QxDList lists;
        edges.front()->collectMultiEdges(lists, nullptr);
        std::vector<std::vector<QxDEdge*>> bundles;
        for (QxDEdgeDList* list : objectsOf<QxDEdgeDList>(lists)) {
            bundles.push_back(objectsOf<QxDEdge>(*list));
            delete list;
        }
        if (a->iCenter() == b->iCenter()) {
            continue;
        }
        ASSERT_EQ(bundles, plainBundles(edges));

        const bool isParallel = random.chance(70);
        drawing.graph->reorganizeMultiEdges(isParallel ? QxMultiEdgeParallel : QxMultiEdgeOneBend);
        std::vector<Points> seen;
        std::size_t nextFixed = 0;
        const int room =
            loose.empty()
                ? 0
                : loose.front()->multiEdgeSpacingForParallelBundles(static_cast<int>(loose.size()));
        for (QxDEdge* edge : edges) {
            const Points path = pathOf(*edge);
            ASSERT_EQ(edge->checkInvariants(), 1);
            if (edge->hasSpecifiedSourceConnector() != 0 ||
                edge->hasSpecifiedTargetConnector() != 0) {
                ASSERT_EQ(path, fixedPaths[nextFixed++]);
            } else if (room >= 3 && isParallel) {
                seen.push_back(edge->pSourceNode() == a ? path
                                                        : Points(path.rbegin(), path.rend()));
            }
        }
        for (std::size_t i = 0; i < seen.size(); ++i) {
            for (std::size_t j = 0; j < i; ++j) {
                ASSERT_TRUE(seen[i].front() != seen[j].front() && seen[i].back() != seen[j].back())
                    << i << " and " << j << " room " << room << " of " << loose.size() << " "
                    << testing::PrintToString(boxOf(*a->pIRect()))
                    << testing::PrintToString(boxOf(*b->pIRect())) << areOval << ' '
                    << seen[i].front().x() << ',' << seen[i].front().y();
            }
        }
        ASSERT_EQ(a->checkInvariants() & b->checkInvariants() & drawing.graph->checkInvariants(),
                  1);
        QxRect bounds;
        walkBounds(*drawing.graph, bounds);
        ASSERT_EQ(boundsOf(drawing.graph), boxOf(bounds));
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, BundleWorld, testing::Range(1U, 5U));

}  // namespace
