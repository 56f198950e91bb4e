// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "model/Drawing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "import/DocumentReader.h"
#include "model/EdgeSpreading.h"
#include "model/Labels.h"
#include "model/NodeSizing.h"
#include "model/Ports.h"
#include "model/SpringLayout.h"
#include "model/StartPlacement.h"
#include "picture/SceneBuilder.h"
#include "qx/foundation/geometry/QxShape.h"
#include "tool/import/ImportTesting.h"

namespace qxdraw {
namespace {

using ::testing::ElementsAre;
using testing::IsNear;
using testing::overlaps;

GraphDocument placedDocument(const std::string& dot) {
    GraphDocument document = readDocumentText(dot, "text.dot");
    sizeNodes(document);
    placeNodes(document, 100);
    return document;
}

Scene sceneOf(const GraphDocument& document) {
    Drawing drawing(document);
    spreadEdges(drawing, {});
    addLabels(drawing, document);
    return buildScene(drawing, document);
}

TEST(Drawing, HoldsWhatTheDocumentSays) {
    GraphDocument document = readDocument(testing::dataPath("made/mixed.gml"));
    sizeNodes(document);
    const Drawing drawing(document);
    EXPECT_EQ(drawing.graph().checkInvariants(), 1);
    EXPECT_EQ(drawing.numberOfNodes(), 3U);
    EXPECT_STREQ(drawing.node(0).pNameString(), L"café & bar");
    EXPECT_EQ(drawing.node(1).ntX(), 200);
    EXPECT_EQ(drawing.node(1).pShape()->type(), QxShapeTypeOval);
    EXPECT_EQ(drawing.edge(0).hasBends(), 0);
    EXPECT_EQ(drawing.edge(1).numberOfBends(), 1);
}

TEST(SceneBuilder, ClipsEdgesAtOutlinesAndFramesThePage) {
    const GraphDocument document = placedDocument(R"(digraph {
        a [shape=box pos="0,0" width=1 height=0.5 label=""]
        b [shape=box pos="150,0" width=1 height=0.5 label=""] a -> b })");
    const Scene scene = sceneOf(document);
    ASSERT_EQ(scene.edges.size(), 1U);
    EXPECT_THAT(scene.edges.front().points, ElementsAre(IsNear(48, 0), IsNear(152, 0)));
    EXPECT_TRUE(scene.edges.front().arrowAtTarget);
    EXPECT_EQ(scene.left, -48 - 24);
    EXPECT_EQ(scene.right, 248 + 24);
    EXPECT_EQ(scene.height(), 48 + 2 * 24);
}

TEST(SceneBuilder, FitsNamesIntoNodesOfFixedSize) {
    const GraphDocument document = placedDocument(R"(graph {
        a [shape=box fixedsize=true width=1 height=0.3 label="quite a long name for it"]
        b [shape=box label="quite a long name for it"] })");
    const Scene scene = sceneOf(document);
    const TextBlock& fitted = scene.labels[0].text;
    EXPECT_LT(fitted.fontSize, scene.labels[1].text.fontSize);
    EXPECT_GE(fitted.fontSize, 8);
    EXPECT_GT(fitted.lines.size(), 1U);
    EXPECT_EQ(scene.labels[1].text.lines.size(), 1U);
}

TEST(SceneBuilder, MakesRoomForLabelsBeyondTheBounds) {
    const GraphDocument document = placedDocument(R"(graph {
        a [pos="0,0"]; b [pos="0,100"]; a -- b [label="a label wider than both"] })");
    const Scene scene = sceneOf(document);
    EXPECT_GT(scene.width(), 100);
}

TEST(SceneBuilder, AddsBendsAndWhatOutlinesHideOfEdges) {
    GraphDocument document = placedDocument(R"(digraph {
        a [shape=box pos="0,0" width=1 height=0.5 label=""]
        b [shape=box pos="150,0" width=1 height=0.5 label=""]
        c [shape=box pos="0,3" width=0.5 height=0.25 label=""]
        a -> b; a -> c })");
    document.edges[0].bends = {{20, 10}, {100, 10}};  // one inside the outline of a
    document.edges[1].bends = {{10, 2}};
    const Drawing drawing(document);
    Scene scene = buildScene(drawing, document);
    EXPECT_EQ(scene.edges.size(), 1U) << "nothing of the other is seen";
    addPaths(scene, drawing);

    ASSERT_EQ(scene.bends.size(), 3U);
    EXPECT_FALSE(scene.bends[0].isVisible);
    EXPECT_TRUE(scene.bends[1].isVisible);
    EXPECT_FALSE(scene.bends[2].isVisible);
    std::vector<DocumentPoint> ends;
    for (const SceneLine& line : scene.hiddenLines) {
        ends.push_back(line.from);
        ends.push_back(line.to);
    }
    const std::vector<DocumentPoint>& seen = scene.edges.front().points;
    EXPECT_THAT(ends, ElementsAre(IsNear(0, 0), IsNear(20, 10),                          //
                                  IsNear(20, 10), IsNear(48, 10),                        //
                                  IsNear(seen.back().x, seen.back().y), IsNear(200, 0),  //
                                  IsNear(0, 0), IsNear(10, 2), IsNear(10, 2), IsNear(0, 4)));
}

TEST(EdgeSpreading, LaysBundlesOutInEachModeAndMakesLoopsVisible) {
    const GraphDocument document = placedDocument(R"(digraph { node [width=2 height=1]
        a [pos="0,0"]; b [pos="300,0"]; c [pos="600,0"]
        a -> b; b -> a; a -> b; b -> c; b -> b; b -> b })");
    for (const auto mode : {QxMultiEdgeOverlap, QxMultiEdgeParallel, QxMultiEdgeOneBend}) {
        Drawing drawing(document);
        spreadEdges(drawing, {mode, false});
        EXPECT_EQ(drawing.graph().checkInvariants(), 1);
        const int bend = mode == QxMultiEdgeOneBend ? 1 : 0;
        std::vector<int> bends;
        for (std::size_t i = 0; i < drawing.numberOfEdges(); ++i) {
            bends.push_back(drawing.edge(i).numberOfBends());
        }
        EXPECT_THAT(bends, ElementsAre(bend, bend, bend, 0, 2, 2));
        const Scene scene = buildScene(drawing, document);
        ASSERT_EQ(scene.edges.size(), 6U) << "every edge is seen";
        const auto height = [&](std::size_t edge) { return scene.edges[edge].points[1].y; };
        EXPECT_EQ(height(1) == height(2), mode == QxMultiEdgeOverlap);
        EXPECT_NE(height(4), height(5));
    }
}

TEST(EdgeSpreading, DrawsEdgesAlongTheAxes) {
    const GraphDocument document = placedDocument(R"(digraph { rankdir=LR
        a [shape=record label="<x> x | <y> y" pos="0,0"]; b [pos="300,120"]; c [pos="90,-200"]
        a:x -> b; a:y -> b; a -> c; c -> b; c -> b; b -> b; a:x -> c })");
    Drawing drawing(document);
    connectPorts(drawing, document);
    spreadEdges(drawing, {QxMultiEdgeParallel, true});
    const Scene scene = buildScene(drawing, document);
    ASSERT_EQ(scene.edges.size(), 7U);
    for (const SceneEdge& edge : scene.edges) {
        for (std::size_t i = 1; i < edge.points.size(); ++i) {
            const DocumentPoint& a = edge.points[i - 1];
            const DocumentPoint& b = edge.points[i];
            EXPECT_TRUE(a.x == b.x || a.y == b.y) << &edge - scene.edges.data();
        }
    }
}

TEST(SpringLayout, SeparatesNodesUnlessOverlapsAreKept) {
    for (const char* name :
         {"facts/karate.gml", "made/shop-architecture.dot", "graphviz-epl/switch.gv"}) {
        for (const bool keepOverlaps : {false, true}) {
            GraphDocument document = readDocument(testing::dataPath(name));
            sizeNodes(document);
            SpringLayoutOptions options;
            options.edgeLength = 30;  // so short that nodes crowd
            options.keepOverlaps = keepOverlaps;
            placeNodes(document, options.edgeLength);
            layOut(document, options);
            if (keepOverlaps) {
                EXPECT_GT(overlaps(document), 0) << name;
            } else {
                EXPECT_EQ(overlaps(document), 0) << name;
            }
        }
    }
}

TEST(SpringLayout, GivesBundlesTheRoomOfOneEdge) {
    const auto lengthOf = [](const std::string& dot) {
        GraphDocument document = placedDocument(dot);
        SpringLayoutOptions options;
        options.edgeLength = 100;
        layOut(document, options);
        return std::hypot(document.nodes[0].center->x - document.nodes[1].center->x,
                          document.nodes[0].center->y - document.nodes[1].center->y);
    };
    EXPECT_EQ(lengthOf("graph { a--b a--b b--a a--b a--b a--b a--a}"), lengthOf("graph { a--b }"));
}

TEST(SpringLayout, TellsItsProgressUpToTheEnd) {
    GraphDocument document = placedDocument("graph { a -- b -- c; d -- e; f }");
    std::vector<double> parts;
    SpringLayoutOptions options;
    options.edgeLength = 100;
    options.onProgress = [&](double part) { parts.push_back(part); };
    layOut(document, options);
    ASSERT_FALSE(parts.empty());
    EXPECT_TRUE(std::is_sorted(parts.begin(), parts.end()));
    EXPECT_NEAR(parts.back(), 1, 1e-9);
}

}  // namespace
}  // namespace qxdraw
