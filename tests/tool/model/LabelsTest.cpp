// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Where ports and labels come to lie in a drawing.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "model/Arranging.h"
#include "picture/SceneBuilder.h"
#include "qx/spatial/QxQTree.h"
#include "tool/import/ImportTesting.h"

namespace qxdraw {
namespace {

using ::testing::ElementsAre;

/// The ends of the edges as they are drawn, and whether they are painted over nodes.
std::vector<std::string> endsOf(const std::string& dot) {
    GraphDocument document = readDocumentText(dot, "text.dot");
    const auto drawing = arrange(document, {}, {});
    EXPECT_EQ(drawing->graph().checkInvariants(), 1);
    std::vector<std::string> ends;
    for (const SceneEdge& edge : buildScene(*drawing, document).edges) {
        ends.push_back(testing::described(edge.points.front()) + " " +
                       testing::described(edge.points.back()) + (edge.isOverNodes ? " over" : ""));
    }
    return ends;
}

TEST(Ports, AreWhereEdgesEnd) {
    // Nodes of 96 by 48; the fields of a are 48 wide, those of d lie within each other.
    EXPECT_THAT(endsOf(R"(digraph {
        node [shape=record width=1 height=0.5 fixedsize=true]
        a [pos="0,0" label="<l>|<r>"]; b [pos="300,0" label=""]; c [pos="0,300" label=""]
        d [pos="300,300" label="|{|<in>|}|"]; o [shape=ellipse pos="0,-300" label=""]
        a:r -> b:w; a:l -> c:s; a:r -> c:sw; a:l:w -> b; d:in -> c; o:ne -> a; b:n -> d:in:s })"),
                ElementsAre("48,0 352,0", "-24,24 0,376", "24,24 -48,376", "-48,0 352,-4",
                            "384,400 48,400 over", "34,-383 2,-24", "400,24 400,392 over"));
}

int hits(const QxRect& rect, const DocumentPoint& a, const DocumentPoint& b) {
    return rect.overlapsSegment(toPoint(a).x(), toPoint(a).y(), toPoint(b).x(), toPoint(b).y());
}

TEST(Ports, AreLeftWithoutCrossingTheirNodes) {
    std::mt19937 random(5);
    const char* const sides[] = {":n", ":e", ":s", ":w", ""};
    for (int round = 0; round < 60; ++round) {
        std::string dot = "digraph { node [shape=box width=1 height=0.5 fixedsize=true] ";
        for (int i = 0; i < 4; ++i) {
            dot += std::to_string(i) + " [pos=\"" + std::to_string(i % 2 * 200 + random() % 40) +
                   "," + std::to_string(i / 2 * 200 + random() % 40) + "\"] ";
        }
        for (int i = 0; i < 6; ++i) {
            dot += std::to_string(random() % 4) + sides[random() % 4] + "->" +
                   std::to_string(random() % 4) + sides[random() % 5] + ";";
        }
        GraphDocument document = readDocumentText(dot + "}", "text.dot");
        const auto drawing = arrange(document, {}, {});
        const Scene scene = buildScene(*drawing, document);
        ASSERT_EQ(scene.edges.size(), 6U) << dot;
        for (std::size_t i = 0; i < scene.edges.size(); ++i) {
            const std::vector<DocumentPoint>& points = scene.edges[i].points;
            for (const QxDNode* node :
                 {drawing->edge(i).pSourceNode(), drawing->edge(i).pTargetNode()}) {
                QxRect inner = *node->pIRect();
                inner.setCorners(inner.left() + 3, inner.bottom() + 3, inner.right() - 3,
                                 inner.top() - 3);
                for (std::size_t p = 1; p < points.size(); ++p) {
                    EXPECT_EQ(hits(inner, points[p - 1], points[p]), 0) << dot << i;
                }
            }
        }
    }
}

QxRect rectOf(const QxLabel& label) {
    QxRect rect;
    label.getBoundingRect(rect, 0);
    return rect;
}

bool holds(const QxRect& around, const QxRect& rect) {
    return around.within(rect.bottomLeft()) != 0 && around.within(rect.topRight()) != 0;
}

bool overlap(const QxRect& a, const QxRect& b) {
    return a.left() < b.right() && b.left() < a.right() && a.bottom() < b.top() &&
           b.bottom() < a.top();
}

TEST(Labels, LieOffNodesAndOffEachOtherOrWithinTheirNodes) {
    for (const char* name :
         {"made/labels.dot", "graphviz-epl/fsm.gv", "made/order-process.dot", "made/mixed.gml",
          "graphviz-epl/ER.gv", "made/shop-architecture.dot"}) {
        GraphDocument document = readDocument(testing::dataPath(name));
        const auto drawing = arrange(document, {}, {});
        EXPECT_EQ(drawing->manager().checkInvariants(), 1);
        EXPECT_EQ(drawing->graph().pQuadTree()->isConsistent(), 1);
        QxRect page;
        drawing->graph().ntMarginBoundingRect(page);
        for (const DrawnLabel& label : drawing->labels()) {
            const QxRect rect = rectOf(*label.label);
            EXPECT_TRUE(holds(page, rect)) << name << ": " << label.text.lines[0];
            for (const DrawnLabel& other : drawing->labels()) {
                EXPECT_FALSE(label.label != other.label && overlap(rect, rectOf(*other.label)))
                    << name << ": " << label.text.lines[0] << ", " << other.text.lines[0];
            }
            for (std::size_t i = 0; i < drawing->numberOfNodes(); ++i) {
                const QxDNode& node = drawing->node(i);
                if (node.expanded() != 0) {
                    continue;  // names in a box and texts at its border
                }
                if (label.isInside && label.label->pOwnerNode() == &node) {
                    EXPECT_TRUE(holds(*node.pIRect(), rect)) << name << ": " << i;
                } else {
                    EXPECT_FALSE(overlap(rect, *node.pIRect()))
                        << name << ": " << label.text.lines[0] << ", " << i;
                }
            }
        }
    }
}

TEST(Labels, StayWhereTheModelPlacesThemWhileThereIsRoom) {
    GraphDocument document = readDocumentText(
        R"(graph { node [shape=box width=1 height=0.5 fixedsize=true label=""]
           a [pos="0,0" label=name]; b [pos="300,0" xlabel=beside]; a -- b [label=text] })",
        "text.dot");
    const auto drawing = arrange(document, {}, {});
    ASSERT_EQ(drawing->labels().size(), 3U);
    EXPECT_EQ(drawing->labels()[0].label->ntCenter(), QxPoint(0, 0));
    EXPECT_NEAR(rectOf(*drawing->labels()[1].label).left(), 400 + 48 + 1, 1)
        << "right of b: on its left is the edge";
    const QxRect edge = rectOf(*drawing->labels()[2].label);
    EXPECT_EQ(edge.top(), 0) << "under the line";
    EXPECT_EQ(edge.center().x(), 200) << "in its middle";
}

}  // namespace
}  // namespace qxdraw
