// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Random edits of edges and their end nodes. After every step the paths are compared with lists of
// points, the visible parts with a walk in small steps along the polyline, the bounds with a walk
// over everything, and the events with what has become of the bends.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>

#include "drawing/EdgePathTesting.h"
#include "qx/foundation/geometry/QxShape.h"
#include "support/TestRandom.h"

namespace {

using namespace qxtest;

/// What an edge has to look like.
struct Twin {
    enum State { Connected, Disconnected, Deactivated };

    QxDNode* source;
    QxDNode* target;
    Places bends;
    State state = Connected;
};

class EdgeWorld {
public:
    explicit EdgeWorld(std::uint32_t seed) : m_random(seed) {
        for (int i = 0; i < 5; ++i) {
            m_nodes.push_back(m_drawing.addNode(coordinate(), coordinate(), 40, 30));
        }
        for (int i = 0; i < 6; ++i) {
            addEdge();
        }
        m_drawing.events.take();
    }

    void step() {
        switch (m_random.below(16)) {
            case 0:
                return moveNode(false);
            case 1:
                return moveNode(true);
            case 2:
                return reshapeNode();
            case 3:
                return changeForceClipping();
            case 4:
                return m_random.chance(50) ? discardEdge() : addEdge();
            default:
                return editEdge(*m_random.pick(m_edges));
        }
    }
    void check() {
        for (QxDEdge* edge : m_edges) {
            checkPath(*edge, m_twins.at(edge));
            checkVisiblePart(*edge);
        }
        checkBounds();
        checkEvents();
    }
    const std::string& lastStep() const { return m_lastStep; }

private:
    /// Few different ones, so that points coincide and lie in nodes often.
    std::int32_t coordinate() { return m_random.below(21) * 10 - 100; }
    Place place() {
        if (m_nodes.size() < 5 || m_random.chance(50)) {
            return {coordinate(), coordinate()};
        }
        // In or near a node: many bends are hidden, some in two nodes at once.
        const QxDNode* node = anyNode();
        return {node->iX() + m_random.below(5) * 10 - 20, node->iY() + m_random.below(5) * 10 - 20};
    }
    QxDNode* anyNode() { return m_random.pick(m_nodes); }
    void addEdge() {
        m_lastStep = "add edge";
        QxDNode* source = anyNode();
        QxDNode* target = anyNode();
        QxDEdge* edge = m_drawing.addEdge(source, target);
        m_edges.push_back(edge);
        m_twins[edge] = {source, target, {}};
    }
    void discardEdge() {
        m_lastStep = "discard edge";
        if (m_edges.size() > 3) {
            m_twins.erase(m_edges.front());
            m_drawing.graph->discardEdge(m_edges.front());
            m_edges.erase(m_edges.begin());
        }
    }
    void moveNode(bool raw) {
        m_lastStep = raw ? "raw move" : "move";
        const QxPoint to = pointAt(place());
        if (raw) {
            anyNode()->ntMoveTo(to);
            m_drawing.graph->calculateGraphBounds(1);
        } else {
            anyNode()->moveTo(to, 1);
        }
    }
    void reshapeNode() {
        m_lastStep = "reshape";
        QxDNode* node = anyNode();
        node->resize(m_random.below(9) * 13, m_random.below(9) * 11, 1);
        QxPointDList arrow;
        for (const Place& corner : Places{{-5, -5}, {1, -5}, {1, -2}, {5, 1}, {-1, 5}, {-2, 2}}) {
            arrow.appendPoint(pointAt(corner));
        }
        const QxShape shapes[] = {QxShape(), QxShape(QxShapeTypeOval), QxShape::fromOutline(arrow)};
        node->pShape(&shapes[m_random.below(3)], 0);
    }
    void changeForceClipping() {
        m_lastStep = "force clipping";
        anyNode()->forceClipping(m_random.below(2));
    }
    void editEdge(QxDEdge& edge);
    void editBends(QxDEdge& edge, Twin& twin);
    void editState(QxDEdge& edge, Twin& twin);
    void editEnds(QxDEdge& edge, Twin& twin);
    void discardHidden(QxDEdge& edge, Twin& twin);
    QxPNode* bendAt(const QxDEdge& edge, int index) {
        QxPNodeDList bends;
        edge.buildPathNodeList(bends);
        return bends.pNodeInPosition(index + 1);
    }
    int anyIndex(std::size_t count) { return m_random.below(static_cast<int>(count)); }
    void expectRemovals(std::size_t count) { m_removals += static_cast<int>(count); }
    void checkPath(const QxDEdge& edge, const Twin& twin);
    void checkVisiblePart(QxDEdge& edge);
    void checkBounds();
    void checkEvents();

    TestRandom m_random;
    QxFactory m_factory;
    SmallDrawing m_drawing{m_factory};
    std::vector<QxDNode*> m_nodes;
    std::vector<QxDEdge*> m_edges;
    std::map<const QxDEdge*, Twin> m_twins;
    std::string m_lastStep;
    int m_additions = 0;
    int m_moves = 0;
    int m_removals = 0;
};

void EdgeWorld::editEdge(QxDEdge& edge) {
    Twin& twin = m_twins.at(&edge);
    if (m_random.chance(20)) {
        editState(edge, twin);
    } else if (m_random.chance(20)) {
        editEnds(edge, twin);
    } else {
        editBends(edge, twin);
    }
}

void EdgeWorld::editBends(QxDEdge& edge, Twin& twin) {
    const bool works = twin.state == Twin::Connected;
    Places& bends = twin.bends;
    switch (m_random.below(7)) {
        case 0:
        case 1: {
            m_lastStep = "add bend";
            const int index = anyIndex(bends.size() + 1);
            const Place at = place();
            QxPEdge* segment = segmentsOf(&edge)[static_cast<std::size_t>(index)];
            EXPECT_EQ(edge.addBend(segment, pointAt(at), 1) != nullptr, works);
            if (works) {
                bends.insert(bends.begin() + index, at);
                ++m_additions;
            }
            break;
        }
        case 2: {
            m_lastStep = "discard bend";
            if (!bends.empty()) {
                const int index = anyIndex(bends.size());
                EXPECT_EQ(edge.discardBend(bendAt(edge, index)), works ? 1 : 0);
                if (works) {
                    bends.erase(bends.begin() + index);
                    expectRemovals(1);
                }
            }
            break;
        }
        case 3: {
            m_lastStep = "move bend";
            if (!bends.empty()) {
                const int index = anyIndex(bends.size());
                const Place at = place();
                Place& held = bends[static_cast<std::size_t>(index)];
                m_moves += held != at ? 1 : 0;
                bendAt(edge, index)->moveTo(pointAt(at), 1);
                held = at;
            }
            break;
        }
        case 4: {
            m_lastStep = "reroute";
            Places wanted(static_cast<std::size_t>(m_random.below(6)));
            std::generate(wanted.begin(), wanted.end(), [this] { return place(); });
            EXPECT_EQ(reroute(&edge, wanted), works ? 1 : 0);
            if (works) {
                expectRemovals(bends.size());
                m_additions += static_cast<int>(wanted.size());
                bends = wanted;
            }
            break;
        }
        case 5: {
            m_lastStep = "discard bends";
            const int n = m_random.below(4);
            const int fromSource = m_random.below(2);
            edge.discardBends(n, fromSource);
            if (works) {
                const auto gone = std::min<std::ptrdiff_t>(n, std::ssize(bends));
                expectRemovals(static_cast<std::size_t>(gone));
                bends.erase(fromSource != 0 ? bends.begin() : bends.end() - gone,
                            fromSource != 0 ? bends.begin() + gone : bends.end());
            }
            break;
        }
        default:
            if (m_random.chance(70)) {
                discardHidden(edge, twin);
            } else {
                m_lastStep = "discard all bends";
                edge.discardAllBends();
                expectRemovals(bends.size());
                bends.clear();
            }
    }
}

void EdgeWorld::discardHidden(QxDEdge& edge, Twin& twin) {
    m_lastStep = "discard hidden bends";
    edge.discardOverlappedBendsForClipping(1, 1);
    if (twin.state != Twin::Connected) {
        return;
    }
    const auto hiddenAt = [](const QxDNode* node) {
        return [node](const Place& bend) { return node->within(pointAt(bend), 1) != 0; };
    };
    const auto out = std::find_if_not(twin.bends.begin(), twin.bends.end(), hiddenAt(twin.source));
    expectRemovals(static_cast<std::size_t>(out - twin.bends.begin()));
    twin.bends.erase(twin.bends.begin(), out);
    while (!twin.bends.empty() && hiddenAt(twin.target)(twin.bends.back())) {
        twin.bends.pop_back();
        expectRemovals(1);
    }
}

void EdgeWorld::editState(QxDEdge& edge, Twin& twin) {
    switch (m_random.below(4)) {
        case 0:
            m_lastStep = "disconnect";
            EXPECT_EQ(edge.disconnect(), twin.state == Twin::Connected ? 1 : 0);
            twin.state = twin.state == Twin::Connected ? Twin::Disconnected : twin.state;
            break;
        case 1:
            m_lastStep = "deactivate";
            edge.deactivate();
            twin.state = twin.state == Twin::Connected ? Twin::Deactivated : twin.state;
            break;
        case 2:
            m_lastStep = "remove and insert";
            m_drawing.graph->removeEdge(&edge);
            m_drawing.graph->insertEdge(&edge, twin.source, twin.target);
            twin.state = Twin::Connected;
            break;
        default:
            m_lastStep = "connect and activate";
            edge.activate();
            edge.connect();
            twin.state = Twin::Connected;
    }
}

void EdgeWorld::editEnds(QxDEdge& edge, Twin& twin) {
    switch (m_random.below(5)) {
        case 0:
            m_lastStep = "reverse";
            edge.reverse();
            std::swap(twin.source, twin.target);
            std::reverse(twin.bends.begin(), twin.bends.end());
            break;
        case 1:
            m_lastStep = "change source";
            twin.source = anyNode();
            EXPECT_EQ(edge.changeSourceNode(twin.source), 1);
            break;
        case 2:
            m_lastStep = "change target without connect";
            twin.target = anyNode();
            EXPECT_EQ(edge.changeTargetNodeWithoutConnect(twin.target), 1);
            break;
        case 3:
            m_lastStep = "copy";
            expectRemovals(twin.bends.size());
            edge.copyObject(Ref<QxDEdge>(edge.cloneObject()).get());
            break;
        default:
            m_lastStep = "clipping";
            edge.clipSourceSide(m_random.below(2));
            edge.clipTargetSide(m_random.below(2));
    }
}

void EdgeWorld::checkPath(const QxDEdge& edge, const Twin& twin) {
    ASSERT_EQ(edge.checkInvariants(), 1);
    ASSERT_EQ(bendsOf(&edge), twin.bends);
    ASSERT_EQ(edge.pSourceNode(), twin.source);
    ASSERT_EQ(edge.pTargetNode(), twin.target);
    ASSERT_EQ(edge.ntFromPoint(0), twin.source->iCenter());
    ASSERT_EQ(edge.ntToPoint(0), twin.target->iCenter());
    ASSERT_EQ(edge.connected() != 0 && edge.deactivated() == 0, twin.state == Twin::Connected);
    ASSERT_EQ(edge.numberOfBends(),
              twin.state == Twin::Connected ? static_cast<int>(twin.bends.size()) : -1);
}

/// The way from the center of a clipped end to the center of the other end, walked step by step.
class Walk {
public:
    Walk(const QxDNode& start, const QxDNode& end, Places bends) : m_start(start) {
        m_stations = std::move(bends);
        m_stations.insert(m_stations.begin(), placeOf(start.iCenter()));
        m_stations.push_back(placeOf(end.iCenter()));
    }
    /// The segment, counted from the start, that gets out of the node; -1 when none does.
    int segmentOut() const {
        for (std::size_t i = 1; i < m_stations.size(); ++i) {
            if (!contains(m_stations[i])) {
                return static_cast<int>(i) - 1;
            }
        }
        return -1;
    }
    /// Expects the clip point on the outline, about where the walk gets out on that segment.
    void expectWayOut(int segment, const QxPoint& clip) const {
        const double outside = wayOut(segment, 0);
        if (outside <= 0) {
            return;  // it starts outside, or never comes out
        }
        // Points are outside from half a unit beyond the outline on, measured across it: a slanting
        // way meets them later.
        constexpr double Slack = 12.0;
        const QxPoint from = pointAt(m_stations[static_cast<std::size_t>(segment)]);
        const double clipped = from.distance(clip);
        EXPECT_TRUE(isOnOutline(clip)) << clip.x() << ' ' << clip.y();
        const double wellOutside = wayOut(segment, 1);
        EXPECT_TRUE(wellOutside < 0 || clipped < wellOutside + Slack)
            << clipped << " instead of " << wellOutside;
        // Notches of a polygon may be too narrow for the steps, and a bend may lie on the outline.
        if (isConvex() && clip != from) {
            EXPECT_GT(clipped, outside - Slack);
        }
    }
    /// How far along the segment it is first outside by more than `margin`; negative for never.
    double wayOut(int segment, int margin) const {
        const Place& from = m_stations[static_cast<std::size_t>(segment)];
        const Place& to = m_stations[static_cast<std::size_t>(segment) + 1];
        const double length = std::hypot(to[0] - from[0], to[1] - from[1]);
        constexpr int Steps = 500;
        for (int i = 0; i <= Steps; ++i) {
            const double t = static_cast<double>(i) / Steps;
            if (isOutside(from[0] + t * (to[0] - from[0]), from[1] + t * (to[1] - from[1]),
                          margin)) {
                return t * length;
            }
        }
        return -1;
    }
    bool isConvex() const { return m_start.pShape()->type() != QxShapeTypePolygon; }
    bool isOnOutline(const QxPoint& point) const {
        return m_start.pShape()->onBoundary(point, m_start.iCenter(), m_start.iSize()) != 0;
    }

private:
    /// Also at four points that far away: just grazing the node does not count.
    bool isOutside(double x, double y, int margin) const {
        static constexpr Place Around[] = {{0, 0}, {-1, -1}, {-1, 1}, {1, -1}, {1, 1}};
        const Place at{qx::floorHalfUp(x), qx::floorHalfUp(y)};
        return std::none_of(std::begin(Around), std::end(Around), [&](const Place& step) {
            return contains({at[0] + margin * step[0], at[1] + margin * step[1]});
        });
    }
    bool contains(const Place& place) const { return m_start.within(pointAt(place), 1) != 0; }

    const QxDNode& m_start;
    Places m_stations;
};

/// Checks that the only segment left is seen where the nodes leave a gap between them; not where
/// the steps are too coarse to tell.
void expectSeenInGap(const QxDNode& source, const QxDNode& target, bool seen) {
    const Walk there(source, target, {});
    const Walk back(target, source, {});
    const double out = there.wayOut(0, 0);
    const double in = back.wayOut(0, 0);
    if (!there.isConvex() || !back.isConvex() || out <= 0 || in <= 0 ||
        there.isOnOutline(source.iCenter()) || back.isOnOutline(target.iCenter())) {
        return;
    }
    const double gap = source.iCenter().distance(target.iCenter()) - out - in;
    if (std::abs(gap) > 12.0) {
        EXPECT_EQ(seen, gap > 0);
    }
}

void EdgeWorld::checkVisiblePart(QxDEdge& edge) {
    const Twin& twin = m_twins.at(&edge);
    if (twin.state != Twin::Connected) {
        return;
    }
    const int last = static_cast<int>(twin.bends.size());
    const Walk there(*twin.source, *twin.target, twin.bends);
    const Walk back(*twin.target, *twin.source, Places(twin.bends.rbegin(), twin.bends.rend()));
    const bool clipsThere = edge.clipSourceSide() != 0 || twin.source->forceClipping() != 0;
    const bool clipsBack = edge.clipTargetSide() != 0 || twin.target->forceClipping() != 0;
    const int out = clipsThere ? there.segmentOut() : 0;
    const int in = clipsBack ? last - back.segmentOut() : last;
    const bool reaches = out >= 0 && in <= last && out <= in;

    const QxPoint from = edge.ntFromPoint(1);
    const QxPoint to = edge.ntToPoint(1);
    ASSERT_EQ(edge.isUpdatedVisiblePart(), 1);
    if (!reaches) {
        ASSERT_EQ(edge.hasVisiblePart(), 0);
    } else if (out != in || !clipsThere || !clipsBack) {
        ASSERT_EQ(edge.hasVisiblePart(), 1);
    } else {
        expectSeenInGap(*twin.source, *twin.target, edge.hasVisiblePart() != 0);
    }
    const bool seen = edge.hasVisiblePart() != 0;
    int index = 0;
    for (QxPathIter it(&edge); it; ++it, ++index) {
        ASSERT_EQ(it.pEdge()->inVisiblePart() != 0, seen && index >= out && index <= in);
        if (it.pNode() != nullptr) {
            ASSERT_EQ(it.pNode()->inVisiblePart() != 0, seen && index >= out && index < in);
        }
    }
    if (!seen) {
        ASSERT_EQ(from, twin.source->iCenter());
        ASSERT_EQ(to, twin.target->iCenter());
        ASSERT_TRUE(visiblePointsOf(&edge).empty());
        return;
    }
    if (clipsThere) {
        there.expectWayOut(out, from);
    }
    if (clipsBack) {
        back.expectWayOut(last - in, to);
    }
    Places drawn(twin.bends.begin() + out, twin.bends.begin() + in);
    drawn.insert(drawn.begin(), placeOf(from));
    drawn.push_back(placeOf(to));
    ASSERT_EQ(visiblePointsOf(&edge), drawn);
}

void EdgeWorld::checkBounds() {
    QxRect all;
    ASSERT_TRUE(walkBounds(*m_drawing.graph, all));
    ASSERT_EQ(boundsOf(m_drawing.graph), boxOf(all));
}

void EdgeWorld::checkEvents() {
    const auto types = m_drawing.events.takeTypes();
    const auto heard = [&types](std::int32_t type) {
        return static_cast<int>(std::count(types.begin(), types.end(), type));
    };
    ASSERT_EQ(heard(BendAdded), std::exchange(m_additions, 0));
    ASSERT_EQ(heard(PathNodeMoved), std::exchange(m_moves, 0));
    ASSERT_EQ(heard(PathNodeDiscarded), m_removals);
    ASSERT_EQ(heard(PathNodeRemoved), std::exchange(m_removals, 0));
}

class QxDEdgeRandom : public testing::TestWithParam<std::uint32_t> {};

TEST_P(QxDEdgeRandom, EdgesAgreeWithTheirTwinsAfterEveryStep) {
    const std::uint32_t seed = testSeed(GetParam());
    SCOPED_TRACE(seedTrace(seed));
    EdgeWorld world(seed);
    for (int step = 0; step < 1000; ++step) {
        world.step();
        world.check();
        ASSERT_FALSE(testing::Test::HasFailure()) << "at step " << step << ": " << world.lastStep();
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, QxDEdgeRandom, testing::Range(1U, 7U));

}  // namespace
