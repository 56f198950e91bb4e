// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "model/StartPlacement.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

#include "import/DocumentReader.h"
#include "model/NodeSizing.h"
#include "tool/import/ImportTesting.h"

namespace qxdraw {
namespace {

constexpr double EdgeLength = 100;

GraphDocument documentOf(const std::string& dot) {
    GraphDocument document = readDocumentText(dot, "text.dot");
    sizeNodes(document);
    return document;
}

double distance(const GraphDocument& document, std::size_t a, std::size_t b) {
    const DocumentPoint& p = *document.nodes[a].center;
    const DocumentPoint& q = *document.nodes[b].center;
    return std::hypot(p.x - q.x, p.y - q.y);
}

void expectDistinctWholePlaces(const GraphDocument& document) {
    std::set<std::pair<double, double>> places;
    for (const DocumentNode& node : document.nodes) {
        ASSERT_TRUE(node.center.has_value());
        EXPECT_EQ(node.center->x, std::floor(node.center->x));
        EXPECT_EQ(node.center->y, std::floor(node.center->y));
        EXPECT_TRUE(places.emplace(node.center->x, node.center->y).second)
            << "two nodes at " << node.center->x << ", " << node.center->y;
    }
}

TEST(StartPlacement, NeverPutsTwoNodesOnOneSpot) {
    std::string isolated = "graph {";
    std::string star = "graph {";
    for (int i = 0; i < 700; ++i) {
        isolated += " n" + std::to_string(i);
        star += " hub -- s" + std::to_string(i);
    }
    for (const std::string& dot : {isolated + "}", star + "}", std::string("graph { a -- b }"),
                                   std::string("graph { a -- a }"), std::string("graph {}")}) {
        for (const double edgeLength : {EdgeLength, 1.0}) {
            GraphDocument document = documentOf(dot);
            placeNodes(document, edgeLength);
            expectDistinctWholePlaces(document);
        }
    }
}

TEST(StartPlacement, UnfoldsAPathAndAGrid) {
    GraphDocument path = documentOf("graph { 0 -- 1 -- 2 -- 3 -- 4 -- 5 -- 6 -- 7 -- 8 -- 9 }");
    placeNodes(path, EdgeLength);
    for (std::size_t i = 1; i < 9; ++i) {
        EXPECT_NEAR(distance(path, i, i + 1), EdgeLength, EdgeLength / 4);
    }
    EXPECT_GT(distance(path, 0, 9), 8 * EdgeLength);
    EXPECT_EQ(path.nodes[3].center->y, path.nodes[6].center->y) << "a path runs straight across";

    constexpr std::size_t Side = 8;
    std::string dot = "graph {";
    for (std::size_t i = 0; i < Side * Side; ++i) {
        dot += " " + std::to_string(i);
    }
    for (std::size_t i = 0; i < Side * Side; ++i) {
        if (i % Side + 1 < Side) {
            dot += " " + std::to_string(i) + "--" + std::to_string(i + 1);
        }
        if (i + Side < Side * Side) {
            dot += " " + std::to_string(i) + "--" + std::to_string(i + Side);
        }
    }
    GraphDocument grid = documentOf(dot + "}");
    placeNodes(grid, EdgeLength);
    const double acrossOne = distance(grid, 0, Side * Side - 1);
    const double acrossOther = distance(grid, Side - 1, Side * (Side - 1));
    EXPECT_GT(acrossOne, 6 * EdgeLength) << "opposite corners are far apart";
    EXPECT_GT(acrossOther, 6 * EdgeLength);
}

TEST(StartPlacement, IsTheSameInEveryRun) {
    GraphDocument runs[2];
    for (GraphDocument& document : runs) {
        document = readDocument(testing::dataPath("facts/lesmis.graphml"));
        sizeNodes(document);
        placeNodes(document, EdgeLength);
    }
    EXPECT_EQ(testing::described(runs[0]), testing::described(runs[1]));
}

TEST(StartPlacement, LeavesGivenPlacesAloneAndKeepsClearOfThem) {
    GraphDocument document = documentOf(
        R"(graph { a [pos="10.5,20"]; b [pos="300,200"]; a -- c -- d; b -- d; e; f -- g })");
    const DocumentPoint given = *document.nodes[0].center;
    placeNodes(document, EdgeLength);
    EXPECT_EQ(document.nodes[0].center->x, given.x);
    EXPECT_EQ(document.nodes[0].center->y, given.y);
    for (std::size_t i = 2; i < document.nodes.size(); ++i) {
        EXPECT_GT(document.nodes[i].center->x, document.nodes[1].center->x);
    }
}

TEST(StartPlacement, LetsDirectedEdgesRunRightAndDown) {
    for (const char* dot : {"digraph { a->b->c->d->e->f; c->g->h }",
                            "digraph { f->e; e->d; d->c; c->b; b->a; g->c; h->g }"}) {
        GraphDocument document = documentOf(dot);
        placeNodes(document, EdgeLength);
        double dx = 0;
        double dy = 0;
        for (const DocumentEdge& edge : document.edges) {
            const auto source = static_cast<std::size_t>(edge.source);
            const auto target = static_cast<std::size_t>(edge.target);
            dx += document.nodes[target].center->x - document.nodes[source].center->x;
            dy += document.nodes[target].center->y - document.nodes[source].center->y;
        }
        EXPECT_GE(dx, 0) << dot;
        EXPECT_LE(dy, 0) << dot;
    }
}

TEST(StartPlacement, PacksPartsWithoutOverlap) {
    GraphDocument document =
        documentOf("graph { a--b--c--d--e--f; g--h--i; j--k; l; m; n; o [label=\"a long name\"] }");
    placeNodes(document, EdgeLength);
    const auto parts = connectedParts(document);
    ASSERT_EQ(parts.size(), 7U);
    packParts(document, parts, 30);
    EXPECT_EQ(testing::overlaps(document), 0);
}

TEST(NodeSizing, GivesNamesRoomInsideTheOutline) {
    GraphDocument document = documentOf(R"(graph { a [shape=box label="some name"]
        b [shape=ellipse label="some name"]; c [shape=diamond label="some name"]
        d [shape=circle label="some name"]; e [shape=box label=""]; f [shape=star label="name"]
        g [width=0.1 height=0.1 label=""]; h [width=3]; i [shape=box width=0.1 fixedsize=true] })");
    const auto& nodes = document.nodes;
    EXPECT_GT(nodes[1].width * nodes[1].height, nodes[0].width * nodes[0].height);
    EXPECT_GT(nodes[2].width * nodes[2].height, nodes[1].width * nodes[1].height);
    EXPECT_EQ(nodes[3].width, nodes[3].height);
    EXPECT_GT(nodes[4].width, 20) << "a node without a name can be seen";
    EXPECT_GT(nodes[5].width, 60);
    EXPECT_EQ(nodes[6].width, 10) << "unless the file wants it small";
    EXPECT_EQ(nodes[7].width, 288) << "what the file says at least";
    EXPECT_EQ(nodes[8].width, 10) << "what the file says";
}

}  // namespace
}  // namespace qxdraw
