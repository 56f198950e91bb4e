// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Bundles and self-loops of random nodes against the plain formulas of their geometry, for nodes
// that do not overlap.

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "drawing/DrawingTesting.h"
#include "qx/drawing/QxPNode.h"
#include "support/TestRandom.h"

namespace {

using namespace qxtest;
int roundHalfUp(double value) {
    return static_cast<int>(std::floor(value + 0.5));
}

double lengthOf(const QxPoint& v) {
    return std::sqrt(double(v.x()) * v.x() + double(v.y()) * v.y());
}

bool overlap(const QxRect& a, const QxRect& b) {
    return a.left() <= b.right() && b.left() <= a.right() && a.bottom() <= b.top() &&
           b.bottom() <= a.top();
}

bool meets(const QxRect& rect, const QxPoint& a, const QxPoint& b) {
    std::int32_t c[] = {a.x(), a.y(), b.x(), b.y()};
    return rect.intersectsLine(c[0], c[1], c[2], c[3]) > 0;
}

/// Two or three nodes with parallel edges in both directions, and self-loops.
class PlainBundles {
public:
    explicit PlainBundles(TestRandom& random)
        : m_random(random), m_drawing(m_factory), m_alignment(random.below(4)) {
        m_nodes = {addNode(), addNode()};
        while (overlap(*m_nodes[0]->pIRect(), *m_nodes[1]->pIRect())) {
            m_nodes[1] = addNode();
        }
        m_drawing.graph->diagrammingMultiEdgeSpacing(random.below(20));
        for (int i = random.below(9); i >= 0; --i) {
            m_edges.push_back(random.chance(40) ? addEdge(1, 0) : addEdge(0, 1));
            m_loops.push_back(addEdge(0, 0));
        }
    }

    void checkParallel();
    void checkOneBend();
    void checkLoops();

private:
    QxDNode* addNode() {
        QxDNode* node = m_drawing.addNode(m_random.below(m_alignment == 0 ? 2 : 900),
                                          m_random.below(m_alignment == 1 ? 2 : 900),
                                          m_random.below(150), m_random.below(150));
        const QxShape shape(m_random.chance(50) ? QxShapeTypeOval : QxShapeTypeRectangle);
        node->pShape(&shape, 0);
        return node;
    }
    /// With bends, and sometimes connectors of a client, for the layouts to take or leave.
    QxDEdge* addEdge(std::size_t from, std::size_t to) {
        QxDEdge* edge = m_drawing.addEdge(m_nodes[from], m_nodes[to]);
        for (int i = m_random.below(4); i > 1; --i) {
            m_drawing.addBend(edge, m_random.below(900), m_random.below(900));
        }
        if (m_random.chance(10)) {
            edge->pTargetConnector(m_nodes[to]->addConnector(1000, 0, 0, 0, 1, 0));
        }
        return edge;
    }
    static bool isFixed(const QxDEdge& edge) { return edge.hasSpecifiedTargetConnector() != 0; }
    std::vector<QxDEdge*> freeEdges() const {
        std::vector<QxDEdge*> edges = m_edges;
        std::erase_if(edges, [](const QxDEdge* edge) { return isFixed(*edge); });
        return edges;
    }
    static QxPoint clip(const QxDNode& node, QxPoint from, const QxPoint& toward) {
        const QxRect& rect = *node.pIRect();
        const QxPoint center = rect.center();
        return node.pShape()->intersectsSegment(from, from, toward, center, rect.size()) != 0
                   ? from
                   : center;
    }
    static QxPoint exitOf(const QxRect& rect, const QxPoint& toward) {
        QxPoint exit = rect.center();
        QxShape().intersectsSegment(exit, exit, toward, rect.center(), rect.size());
        return exit;
    }
    static int plainSpacing(const QxDEdge& edge, int count) {
        const QxDNode* nodes[] = {edge.pSourceNode(), edge.pTargetNode()};
        double least = 1e9;
        for (int i = 0; i < 2; ++i) {
            const QxRect& rect = *nodes[i]->pIRect();
            const QxShape& shape = *nodes[i]->pShape();
            const bool isInside = shape.within(rect.center(), rect.center(), rect.size()) != 0;
            least =
                std::min(least, isInside ? shape.maxAvailableDiagonalLengthAtShape(
                                               rect.center(), nodes[1 - i]->iCenter(), rect.size())
                                         : -1.0);
        }
        const int wanted = edge.pOwnerGraph()->diagrammingMultiEdgeSpacing();
        return least < 1.0 ? -1 : std::min(wanted, static_cast<int>((least - 1.0) / count));
    }

    TestRandom& m_random;
    QxFactory m_factory;
    SmallDrawing m_drawing;
    int m_alignment;  ///< along an axis, where offsets are halves of units
    std::vector<QxDNode*> m_nodes;
    std::vector<QxDEdge*> m_edges;
    std::vector<QxDEdge*> m_loops;
};

void PlainBundles::checkParallel() {
    const auto edges = freeEdges();
    m_drawing.graph->reorganizeMultiEdges(QxMultiEdgeParallel);
    if (edges.size() < 2) {
        return;
    }
    const int count = static_cast<int>(edges.size());
    const QxPoint s = edges[0]->pSourceNode()->iCenter();
    const QxPoint t = edges[0]->pTargetNode()->iCenter();
    const int room = plainSpacing(*edges[0], count);
    const double spacing = std::max(0, room);
    int bx = t.x() < s.x() ? 1 : -1;
    int by = t.y() < s.y() ? 1 : -1;
    if (bx == by) {
        bx = -bx;
        by = -by;
    }
    const double length = lengthOf(t - s);
    const double stepX = spacing * std::abs(t.y() - s.y()) / (2 * length) * bx;
    const double stepY = spacing * std::abs(t.x() - s.x()) / (2 * length) * by;
    for (int i = 1; i <= count; ++i) {
        const int isOdd = i % 2;
        int times = isOdd != 0 ? 1 - 2 * ((i + 1) / 2) : 2 * ((i + 1) / 2) - 1;
        if (count % 2 != 0) {
            times = i == 1 ? 0 : (isOdd != 0 ? -2 : 2) * (i / 2);
        }
        const QxPoint offset(roundHalfUp(times * stepX), roundHalfUp(-times * stepY));
        const QxDEdge& edge = *edges[static_cast<std::size_t>(i - 1)];
        const QxPoint a = edge.pSourceNode()->iCenter();
        const QxPoint b = edge.pTargetNode()->iCenter();
        const bool isHeld = room >= 0 &&
                            meets(*edge.pSourceNode()->pIRect(), a + offset, b + offset) &&
                            meets(*edge.pTargetNode()->pIRect(), a + offset, b + offset);
        const Points expected = isHeld ? Points{clip(*edge.pSourceNode(), a + offset, b + offset),
                                                clip(*edge.pTargetNode(), b + offset, a + offset)}
                                       : Points{a, b};
        ASSERT_EQ(pathOf(edge), expected) << i << " of " << count << " room " << room;
    }
}

void PlainBundles::checkOneBend() {
    const auto edges = freeEdges();
    m_drawing.graph->reorganizeMultiEdges(QxMultiEdgeOneBend);
    if (edges.size() < 2) {
        return;
    }
    const QxDNode& source = *edges[0]->pSourceNode();
    const QxDNode& target = *edges[0]->pTargetNode();
    const QxPoint s = exitOf(*source.pIRect(), target.iCenter());
    const QxPoint t = exitOf(*target.pIRect(), source.iCenter());
    const QxPoint middle((s.x() + t.x()) / 2, (s.y() + t.y()) / 2);
    const QxPoint h = middle - s;
    const int length = roundHalfUp(lengthOf(h));
    int c = edges.size() % 2 != 0 ? 0 : 1;
    for (const QxDEdge* edge : edges) {
        ++c;
        const double d = c / 2 * m_drawing.graph->diagrammingMultiEdgeSpacing();
        Points expected{edge->pSourceNode()->iCenter(), edge->pTargetNode()->iCenter()};
        if (length > 0) {
            const QxPoint o(roundHalfUp(std::trunc(d * h.y() / length)),
                            roundHalfUp(std::trunc(d * h.x() / length)));
            expected.insert(expected.begin() + 1,
                            c % 2 != 0 ? QxPoint(middle.x() - o.x(), middle.y() + o.y())
                                       : QxPoint(middle.x() + o.x(), middle.y() - o.y()));
        }
        ASSERT_EQ(pathOf(*edge), expected);
    }
}

void PlainBundles::checkLoops() {
    m_drawing.graph->reorganizeReflexiveEdges();
    const QxDNode& node = *m_nodes[0];
    const QxRect& rect = *node.pIRect();
    const int half = (rect.right() - rect.left()) / 2;
    const double step = half / (static_cast<double>(m_loops.size()) + 1);
    int i = 0;
    int k = 0;
    for (const QxDEdge* loop : m_loops) {
        if (isFixed(*loop)) {
            continue;
        }
        ++i;
        const int y = rect.top() + 19 + k / 2;
        k += m_drawing.graph->diagrammingMultiEdgeSpacing();
        Points expected;
        for (const int side : {1, -1}) {
            const QxPoint bend(static_cast<int>(rect.x() + side * i * step), y);
            QxPoint foot(bend.x(), rect.top());
            node.pShape()->intersectsSegment(foot, bend, QxPoint(bend.x(), rect.bottom()),
                                             rect.center(), rect.size());
            expected.insert(expected.begin() + (side > 0 ? 0 : 2), {foot, bend});
        }
        std::swap(expected[2], expected[3]);
        ASSERT_EQ(pathOf(*loop), expected);
        ASSERT_EQ(loop->pInternalTargetConnector()->routingDirection(), QxDirectionUp);
    }
}

TEST(PlainBundles, LieWhereTheFormulasSay) {
    const std::uint32_t seed = testSeed(5);
    SCOPED_TRACE(seedTrace(seed));
    TestRandom random(seed);
    for (int round = 0; round < 1500; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        PlainBundles bundles(random);
        bundles.checkLoops();
        for (int again = 0; again < 2; ++again) {
            random.chance(50) ? bundles.checkParallel() : bundles.checkOneBend();
            ASSERT_FALSE(testing::Test::HasFatalFailure());
        }
    }
}

TEST(Bundles, OfAGraphAreThoseAtItsNodes) {
    QxFactory factory;
    SmallDrawing drawing(factory);
    QxDNode* outside = drawing.addNode(0, 0, 50, 50);
    QxDNode* home = drawing.addNode(300, 0, 200, 200);
    QxDGraph* nested = drawing.manager->addGraph(0);
    home->pChildGraph(nested);
    home->expand();
    QxDNode* inside = nested->addNodeWithCoordinates(0, 0, 50, 50, 1, 0);
    QxDEdge* edges[] = {drawing.addEdge(outside, inside), drawing.addEdge(inside, outside)};
    nested->reorganizeMultiEdges(QxMultiEdgeParallel);
    EXPECT_EQ(inside->numberOfAllConnectors(), 2);
    drawing.graph->reorganizeMultiEdges(QxMultiEdgeOverlap);
    EXPECT_EQ(inside->numberOfAllConnectors(), 0);
    drawing.manager->pQueryIntergraph()->reorganizeMultiEdges(QxMultiEdgeParallel);
    EXPECT_EQ(inside->numberOfAllConnectors(), 2);
    EXPECT_NE(edges[0]->ntFromPoint(0), edges[1]->ntToPoint(0));
}

TEST(Bundles, LoopsStayInTheRangeOfCoordinates) {
    QxFactory factory;
    SmallDrawing drawing(factory);
    QxDNode* node = drawing.addNode(0, 2147483640, 40, 10);
    QxDEdge* loop = drawing.addEdge(node, node);
    node->reorganizeReflexiveEdges();
    EXPECT_EQ(pathOf(*loop)[1], QxPoint(10, 2147483647));
}

TEST(Bundles, ConnectorsOfClientsAreNeverMoved) {
    QxFactory factory;
    SmallDrawing drawing(factory);
    QxDNode* a = drawing.addNode(0, 0, 40, 40);
    QxDNode* b = drawing.addNode(200, 0, 40, 40);
    QxDEdge* fixed = drawing.addEdge(a, b);
    QxDEdge* loose = drawing.addEdge(a, b);
    QxConnector* connector = a->addConnector(0, 1000, 0, 0, 1, 0);
    fixed->pSourceConnector(connector);
    QxDEdgeDList list;
    list.appendEdge(fixed);
    list.appendEdge(loose);
    loose->reorganizeMultiEdgeBundleParallel(&list);
    EXPECT_EQ(a->numberOfAllConnectors(), 1) << "the first of the bundle is not free";
    const QxPoint offset(0, 5);
    fixed->assignConnectorsMultiEdgesParallel(&offset);
    EXPECT_EQ(pathOf(*fixed), (Points{{20, 5}, {180, 5}}));
    EXPECT_EQ(connector->ntCenter(), QxPoint(0, 20));
    EXPECT_EQ(connector->isUsed(), 0);
}

class OnBendDiscarded : public QxDrawingChangeListener {
public:
    using QxDrawingChangeListener::drawingChanged;
    void drawingChanged(QxDrawingChangeEventData* data) override {
        if (data->type() == PathNodeDiscarded) {
            std::exchange(act, [] {})();
        }
    }
    std::function<void()> act = [] {};
};

TEST(Bundles, ListenersMayCarryEdgesOffMeanwhile) {
    QxFactory factory;
    OnBendDiscarded listener;
    SmallDrawing drawing(factory);
    factory.pEventManager()->addDrawingChangeListener(drawing.manager.get(), &listener);
    QxDNode* a = drawing.addNode(0, 0, 40, 40);
    std::vector<QxDEdge*> edges;
    for (const int x : {200, 400}) {
        QxDNode* b = drawing.addNode(x, 0, 40, 40);
        edges.insert(edges.end(),
                     {drawing.addEdge(a, b), drawing.addEdge(b, a), drawing.addEdge(a, b)});
    }
    drawing.addBend(edges[1], 100, 100);
    listener.act = [&] { drawing.graph->discardEdge(edges[3]); };
    drawing.graph->reorganizeMultiEdges(QxMultiEdgeParallel);
    EXPECT_EQ(pathOf(*edges[2]), (Points{{20, 8}, {180, 8}}));
    EXPECT_NE(edges[5]->pInternalSourceConnector(), nullptr) << "the first of its bundle has gone";

    // A client's connector that comes in the middle of it stays where it is.
    drawing.addBend(edges[1], 100, 100);
    QxConnector* connector = nullptr;
    listener.act = [&] {
        connector = edges[1]->pSourceNode()->addConnector(0, 1000, 0, 0, 1, 0);
        edges[1]->pSourceConnector(connector);
    };
    drawing.graph->reorganizeMultiEdges(QxMultiEdgeParallel);
    EXPECT_EQ(edges[1]->pSourceConnector(), connector);
    EXPECT_EQ(connector->ntCenter(), QxPoint(200, 20));

    edges[1]->pSourceConnector(nullptr);
    drawing.addBend(edges[2], 100, 100);
    drawing.manager->controlStarted(1);
    listener.act = [&] { drawing.graph->removeEdge(edges[0]); };
    const QxShape oval(QxShapeTypeOval);
    a->pShape(&oval, 0);
    EXPECT_EQ(edges[0]->marked(), 0) << "it was there when the change of shape began";
    edges[0]->vRelease();
}

}  // namespace
