// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "picture/SvgWriter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "picture/SvgText.h"

namespace qxdraw {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

SceneNode box(double x, double y) {
    SceneNode node;
    node.center = {x, y};
    node.width = 40;
    node.height = 20;
    return node;
}

Scene page() {
    Scene scene;
    scene.left = -100;
    scene.right = 100;
    scene.bottom = -50;
    scene.top = 50;
    return scene;
}

TEST(SvgText, EscapesMarkupAndDropsWhatXmlForbids) {
    EXPECT_EQ(escapeXml("<a href=\"x\">&</a>"), "&lt;a href=&quot;x&quot;&gt;&amp;&lt;/a&gt;");
    EXPECT_EQ(escapeXml(std::string("a\0\x01\x1F\x7F\tb", 7)), "a\x7F\tb");
    EXPECT_EQ(escapeXml("x\uFFFEy\uFFFFz\uFFFD"), "xyz\uFFFD");
    EXPECT_EQ(escapeXml("العربية 👩‍🔬 𝔘"), "العربية 👩‍🔬 𝔘");
}

TEST(SvgText, WritesNumbersShort) {
    EXPECT_EQ(svgNumber(12), "12");
    EXPECT_EQ(svgNumber(-0.001), "0");
    EXPECT_EQ(svgNumber(0.125), "0.12");
    EXPECT_EQ(svgNumber(-3.5), "-3.5");
    EXPECT_EQ(svgNumber(1e9), "1000000000");
}

TEST(SvgWriter, FlipsYAndStartsAtThePageCorner) {
    Scene scene = page();
    scene.nodes.push_back(box(-60, 30));
    const std::string svg = writeSvg(scene);
    EXPECT_THAT(svg, HasSubstr("width=\"200\" height=\"100\" viewBox=\"0 0 200 100\""));
    EXPECT_THAT(svg, HasSubstr("<rect x=\"20\" y=\"10\" width=\"40\" height=\"20\""));
}

TEST(SvgWriter, PaintsEdgesUnderNodesAndPortsAndLabelsOverThem) {
    Scene scene = page();
    scene.nodes.push_back(box(0, 0));
    scene.edges.push_back({{{-50, 0}, {50, 0}}, false, false, false});
    scene.edges.push_back({{{0, 0}, {90, 0}}, false, false, true});
    scene.ports.push_back({{20, 0}, 8, 8});
    scene.labels.push_back({{0, 5}, {{"over & under"}, 11}, false});
    const std::string svg = writeSvg(scene);
    const std::size_t node = svg.find("<rect x=");
    EXPECT_LT(svg.find("M50 50"), node);
    EXPECT_LT(node, svg.find("M100 50")) << "an edge that ends within a node";
    EXPECT_LT(svg.find("M100 50"), svg.find("M116 54L124 54")) << "the mark of a port";
    EXPECT_LT(svg.find("M116 54L124 54"), svg.find("over &amp; under"));
}

TEST(SvgWriter, PutsArrowHeadsWhereEdgesEnd) {
    Scene scene = page();
    scene.edges.push_back({{{-50, 0}, {50, 0}}, false, true, false});
    EXPECT_THAT(writeSvg(scene), HasSubstr("<path d=\"M150 50L")) << "the tip is the end point";
    scene.edges.front().arrowAtTarget = false;
    EXPECT_THAT(writeSvg(scene), Not(HasSubstr("Z\"")));
    scene.edges.front().points = {{5, 5}, {5, 5}};
    scene.edges.front().arrowAtTarget = true;
    EXPECT_THAT(writeSvg(scene), Not(HasSubstr("nan"))) << "an edge without length";
}

TEST(SvgWriter, PaintsBendsAndHiddenLinesOverNodes) {
    Scene scene = page();
    scene.nodes.push_back(box(0, 0));
    const std::string plain = writeSvg(scene);
    scene.hiddenLines.push_back({{0, 0}, {20, 5}});
    scene.bends = {{{10, 0}, false}, {{50, 20}, true}};
    const std::string svg = writeSvg(scene);
    const std::size_t added = plain.find("</svg>");
    ASSERT_TRUE(svg.starts_with(plain.substr(0, added))) << "the rest is as it is without";
    const std::string over = svg.substr(added);
    EXPECT_THAT(over, HasSubstr("stroke-dasharray=\"4 3\""));
    EXPECT_THAT(over, HasSubstr("<path d=\"M100 50L120 45\"/>"));
    EXPECT_THAT(over, HasSubstr("<circle cx=\"110\" cy=\"50\" r=\"2.5\" fill=\"#ffffff\"/>"));
    EXPECT_THAT(over, HasSubstr("<circle cx=\"150\" cy=\"30\" r=\"2.5\" fill=\"#c2341d\"/>"));
}

}  // namespace
}  // namespace qxdraw
