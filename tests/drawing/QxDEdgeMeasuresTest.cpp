// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "drawing/EdgePathTesting.h"

namespace {

using namespace qxtest;
using testing::ElementsAre;

class QxDEdgeMeasures : public testing::Test {
protected:
    Place along(std::int16_t perMil) {
        QxPoint point(-1, -1);
        edge->pointOnEdge(&point, perMil);
        return placeOf(point);
    }
    /// The nearest point of the path, and how far along it lies.
    std::pair<Place, std::int32_t> project(std::int32_t x, std::int32_t y) {
        const QxPoint from(x, y);
        QxPoint nearest;
        std::int32_t distance = -1;
        edge->projectionPoint(&from, &nearest, &distance);
        return {placeOf(nearest), distance};
    }
    int meets(const QxRect& rect, int clipped = 1) {
        return edge->ntIntersectsRect(&rect, clipped);
    }

    QxFactory factory;
    EdgeDrawing drawing{factory};
    QxDEdge* edge = drawing.edge;
};

using Projection = std::pair<Place, std::int32_t>;

TEST_F(QxDEdgeMeasures, LengthsAreSumsOverTheSegments) {
    EXPECT_EQ(edge->ntEdgeLength(), 180);
    reroute(edge, {{0, 100}, {200, 100}});
    EXPECT_EQ(edge->ntEdgeLength(), 90 + 200 + 90);
    EXPECT_EQ(edge->edgeLength(), 380);
    drawing.source->ntResize(20, 40);
    EXPECT_EQ(edge->ntEdgeLength(), 80 + 200 + 90) << "also right after a raw change";
}

TEST_F(QxDEdgeMeasures, PositionsInThousandthsOfTheLength) {
    reroute(edge, {{0, 110}, {200, 110}});  // segments of 100, 200 and 100
    EXPECT_EQ(along(0), (Place{0, 10}));
    EXPECT_EQ(along(125), (Place{0, 60}));
    EXPECT_EQ(along(250), (Place{0, 110}));
    EXPECT_EQ(along(500), (Place{100, 110}));
    EXPECT_EQ(along(875), (Place{200, 60}));
    EXPECT_EQ(along(1000), (Place{200, 10}));
    for (const int outside : {1001, -1, -32768}) {
        EXPECT_EQ(along(static_cast<std::int16_t>(outside)), (Place{-1, -1}));
    }
    edge->pointOnEdge(nullptr, 500);
}

TEST_F(QxDEdgeMeasures, APathWithoutLengthHasOnePoint) {
    drawing.target->moveTo(0, 0, 1);
    reroute(edge, {{0, 0}, {0, 0}});
    EXPECT_EQ(along(0), (Place{0, 0}));
    EXPECT_EQ(along(1000), (Place{0, 0}));
    EXPECT_EQ(project(3, 4), (Projection{{0, 0}, 0}));
}

TEST_F(QxDEdgeMeasures, OfARemovedEdgeTheBendsAreLeft) {
    reroute(edge, {{100, 50}, {100, 150}});
    EXPECT_EQ(edge->hasVisiblePart(), 1);
    const Ref<QxDEdge> removed(drawing.graph->removeEdge(edge));
    EXPECT_EQ(edge->hasVisiblePart(), 0);
    EXPECT_EQ(edge->ntEdgeLength(), 100);
    EXPECT_EQ(along(500), (Place{100, 100}));
    EXPECT_EQ(project(0, 0), Projection({100, 50}, 0));
}

TEST_F(QxDEdgeMeasures, ProjectsOntoTheNearestSegment) {
    reroute(edge, {{0, 110}, {200, 110}});
    EXPECT_EQ(project(-5, 60), (Projection{{0, 60}, 50}));
    EXPECT_EQ(project(120, 300), (Projection{{120, 110}, 220}));
    EXPECT_EQ(project(210, 100), (Projection{{200, 100}, 310}));
    EXPECT_EQ(project(100, 10), (Projection{{0, 10}, 0})) << "a tie goes to the source";
    QxPoint point(7, 115);
    std::int32_t distance = 0;
    edge->projectionPoint(&point, &point, &distance);
    EXPECT_EQ(point, QxPoint(7, 110));
    edge->projectionPoint(&point, nullptr, &distance);
    edge->projectionPoint(nullptr, &point, &distance);
}

TEST_F(QxDEdgeMeasures, MeetsRectanglesWithAnyPart) {
    reroute(edge, {{0, 100}, {200, 100}});
    EXPECT_EQ(meets({90, 90, 110, 110}), 1);
    EXPECT_EQ(meets({90, 101, 110, 110}), 0);
    EXPECT_EQ(meets({-1, 99, 1, 101}), 1);
    EXPECT_EQ(meets({-1, -1, 1, 1}), 0) << "cut off there";
    EXPECT_EQ(meets({-1, -1, 1, 1}, 0), 1);
    EXPECT_EQ(meets({10, 10, 190, 90}), 0) << "surrounded, not met";
}

TEST_F(QxDEdgeMeasures, CoversItsEndsAndBends) {
    drawing.addBend(edge, 50, -300);
    drawing.addBend(edge, 500, 7);
    QxRect rect;
    edge->ntBoundingRectWithPathNodes(rect);
    EXPECT_EQ(boxOf(rect), (Box{0, -300, 500, 7}));
    EXPECT_EQ(edge->getBoundingRectWithPathNodesAndLabels(rect, 0), 1);
    EXPECT_EQ(boxOf(rect), (Box{0, -300, 500, 7}));
    EXPECT_EQ(edge->getUserBoundingRect(rect, 1), 1);
    EXPECT_EQ(edge->getBoundingRect(rect, 1), 1);
    EXPECT_EQ(boxOf(rect), (Box{0, 0, 200, 0})) << "the ends alone";
    EXPECT_EQ(segmentsOf(edge)[1]->getUserBoundingRect(rect, 0), 1);
    EXPECT_EQ(boxOf(rect), (Box{50, -300, 500, 7}));
    edge->disconnect();
    EXPECT_EQ(edge->getBoundingRectWithPathNodes(rect, 0), 0) << "invisible";
    EXPECT_EQ(edge->getBoundingRectWithPathNodes(rect, 1), 1);
}

class QxDEdgeExtremes : public QxDEdgeMeasures {
protected:
    static constexpr std::int32_t Min = qx::MinInt32;
    static constexpr std::int32_t Max = qx::MaxInt32;
    /// The step of positions within such a segment.
    static constexpr std::int32_t Thousandth = 4294968;

    QxDEdgeExtremes() {
        drawing.source->resize(0, 0, 1);
        drawing.target->resize(0, 0, 1);
        drawing.source->moveTo(Min, Min, 1);
        drawing.target->moveTo(Max, Max, 1);
    }
};

TEST_F(QxDEdgeExtremes, APathAcrossTheWholeRange) {
    EXPECT_EQ(edge->hasVisiblePart(), 1);
    EXPECT_EQ(edge->ntEdgeLength(), Max) << "clamped";
    EXPECT_EQ(along(0), (Place{Min, Min}));
    EXPECT_NEAR(along(500)[0], 0, Thousandth);
    EXPECT_EQ(along(1000), (Place{Max, Max}));
    EXPECT_EQ(project(Max, Min).second, Max);
    EXPECT_EQ(meets({-10, -10, 10, 10}), 1);
    EXPECT_EQ(boundsOf(drawing.graph), (Box{Min, Min, Max, Max}));
}

}  // namespace
