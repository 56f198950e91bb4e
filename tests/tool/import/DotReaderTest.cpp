// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "import/SourceText.h"
#include "tool/import/ImportTesting.h"

namespace qxdraw::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

GraphDocument read(const std::string& text) {
    return readDocumentText(text, "text.dot");
}

std::string labelOf(const std::string& attributes) {
    return read("digraph g { n [" + attributes + "] }").nodes.front().label;
}

TEST(DotReader, ExpandsLabelEscapes) {
    EXPECT_EQ(labelOf(""), "n");
    EXPECT_EQ(labelOf(R"(label="")"), "");
    EXPECT_EQ(labelOf(R"(label="\N of \G\nsecond\lthird\r")"), "n of g\nsecond\nthird");
    EXPECT_EQ(labelOf(R"(label="a\\nb")"), "a\\nb");
    EXPECT_EQ(labelOf(R"(label="&eacute;&#x416;&#9786; &unknown; &amp;")"), "éЖ☺ &unknown; &");
    EXPECT_EQ(labelOf("label=<<b>bold</b> and<br/>&lt;two&gt;>"), "bold and\n<two>");
}

TEST(DotReader, FlattensRecordLabels) {
    EXPECT_EQ(labelOf(R"(shape=record label="<f0> left|{ a | <p>b }|x\|y\nz")"),
              "left | a | b | x|y\nz");
    EXPECT_EQ(labelOf(R"(shape=box label="a|b")"), "a|b");
}

TEST(DotReader, ExpandsEdgeLabelEscapes) {
    const GraphDocument document = read(R"(graph g { a -- b [label="\E: \T to \H"] })");
    EXPECT_EQ(document.edges.front().label, "a--b: a to b");
}

TEST(DotReader, ConvertsPointsAndInchesToPixels) {
    const GraphDocument document =
        read(R"(digraph { a [pos="72,144" width=1 height=0.5]; b [pos="-36,1.5e2,0!"]; c })");
    EXPECT_THAT(*nodeOf(document, "a").center, IsNear(96, 192));
    EXPECT_EQ(nodeOf(document, "a").width, 96);
    EXPECT_EQ(nodeOf(document, "a").height, 48);
    EXPECT_FALSE(nodeOf(document, "a").growsWithLabel);
    EXPECT_THAT(*nodeOf(document, "b").center, IsNear(-48, 200));
    EXPECT_FALSE(nodeOf(document, "c").center.has_value());
    EXPECT_TRUE(nodeOf(document, "c").growsWithLabel);
}

TEST(DotReader, ReadsSplinesAsBends) {
    const GraphDocument document = read(R"(digraph {
        a -> b [pos="e,0,0 0,0 24,0 48,0 72,0"]
        a -> c [pos="s,9,9 0,0 0,36 0,72 36,72 54,72 72,72 90,72"] })");
    EXPECT_THAT(document.edges[0].bends, IsEmpty()) << "a straight spline needs no bend";
    const auto& bends = document.edges[1].bends;
    ASSERT_GE(bends.size(), 3U);
    for (const DocumentPoint& bend : bends) {  // the curve turns within its control polygon
        EXPECT_GE(bend.x, 0);
        EXPECT_LE(bend.x, 48.01);
        EXPECT_GT(bend.y, 0);
        EXPECT_LE(bend.y, 96.01);
    }
    EXPECT_THAT(bends.back(), IsNear(48, 96)) << "the joint where the straight piece starts";
}

TEST(DotReader, ReadsArrowDirections) {
    const GraphDocument document = read(R"(digraph { a -> b; a -> c [dir=back]; a -> d [dir=both]
        a -> e [dir=none]; a -> f [arrowhead=none] })");
    std::vector<std::string> arrows;
    for (const DocumentEdge& edge : document.edges) {
        arrows.push_back(std::string(edge.arrowAtSource ? "<" : "-") +
                         (edge.arrowAtTarget ? ">" : "-"));
    }
    EXPECT_THAT(arrows, ElementsAre("->", "<-", "<>", "--", "--"));
    EXPECT_FALSE(read("graph { a -- b }").edges.front().arrowAtTarget);
}

TEST(DotReader, MapsShapes) {
    const GraphDocument document =
        read(R"(digraph { plain; c [shape=doublecircle]; d [shape=Mdiamond]
        r [shape=record]; u [shape=nosuchshape]; p [shape=polygon sides=6]; h [shape=hexagon] })");
    EXPECT_EQ(nodeOf(document, "plain").shape.kind, ShapeKind::Oval);
    EXPECT_TRUE(nodeOf(document, "c").shape.square);
    EXPECT_EQ(nodeOf(document, "d").shape.outline.size(), 4U);
    EXPECT_EQ(nodeOf(document, "r").shape.kind, ShapeKind::Rectangle);
    EXPECT_EQ(nodeOf(document, "u").shape.kind, ShapeKind::Rectangle);
    EXPECT_EQ(nodeOf(document, "p").shape.outline.size(), 6U);
    EXPECT_EQ(nodeOf(document, "h").shape.outline.size(), 6U);
}

TEST(DotReader, PutsNodesIntoTheInnermostClusterThatNamesThemFirst) {
    const GraphDocument document = read(R"(digraph { label=top; x
        subgraph cluster_a { label=A; a subgraph { m } subgraph cluster_b { label=B; b } }
        subgraph cluster_c { label=C; b; x } })");
    ASSERT_EQ(document.graphs.size(), 4U);
    EXPECT_EQ(document.graphs[2].label, "B");
    EXPECT_EQ(document.graphs[2].parent, 1);
    EXPECT_EQ(nodeOf(document, "a").graph, 1);
    EXPECT_EQ(nodeOf(document, "m").graph, 1);
    EXPECT_EQ(nodeOf(document, "b").graph, 2);
    EXPECT_EQ(nodeOf(document, "x").graph, 3);
}

TEST(DotReader, TakesLatin1OnlyWhereTheFileSaysSo) {
    const std::string bytes = "digraph { graph [charset=latin1]; a [label=\"\xE9\"] }";
    EXPECT_EQ(read(bytes).nodes.front().label, "é");
    EXPECT_THAT(errorOf("digraph {\n a [label=\"\xE9\"] }"),
                StartsWith("2: bytes that are not UTF"));
    EXPECT_EQ(readDocument(dataPath("graphviz-epl/Latin1.gv")).nodes.front().label.substr(0, 4),
              "áâ");
}

TEST(DotReader, NamesTheLineOfAnError) {
    EXPECT_EQ(errorOf("digraph g {\n a -> b\n c -> ; d }"), "3: syntax error near ';'");
    EXPECT_THAT(errorOf("digraph g {\n\n a [label=<b<>] }"), StartsWith("3: an HTML label"));
    EXPECT_THAT(errorOf("digraph g {\n /* \n\n }"), StartsWith("2: a comment"));
    EXPECT_THAT(errorOf("digraph g {\n a [width=2]\n b [width=-1] }"),
                StartsWith("3: width is neg"));
    EXPECT_THAT(errorOf("digraph g {\n a [width=\"nan\"] }"),
                StartsWith("2: width is not a finite"));
    EXPECT_THAT(errorOf("digraph g {\n a [pos=\"1e12,0\"] }"),
                StartsWith("2: pos is out of range"));
    EXPECT_THAT(errorOf("digraph g {\n a [pos=\"1\"] }"), HasSubstr("'a'"));
    EXPECT_THAT(errorOf("digraph g {\n a -> b [pos=\"1,2 3,4\"] }"),
                StartsWith("2: the pos of edge"));
    EXPECT_THAT(errorOf(std::string("digraph g {\n a\0 }", 16)), StartsWith("2: a NUL byte"));
}

TEST(DotReader, WarnsOfFurtherGraphs) {
    const GraphDocument document = read("graph { a } // end\n\ngraph { b c }");
    EXPECT_EQ(document.nodes.size(), 1U);
    ASSERT_EQ(document.warnings.size(), 1U);
    EXPECT_EQ(document.warnings.front().line, 3);
    EXPECT_THAT(read("graph { a } /* end */ \n // end\n;").warnings, IsEmpty());
}

TEST(DotReader, IgnoresBracesThatAreText) {
    const std::string braces(600, '{');
    EXPECT_EQ(errorOf("digraph { a [label=\"" + braces + "\\\"{\"] }"), "");
    EXPECT_EQ(errorOf("# " + braces + "\ndigraph { /*" + braces + "*/ }"), "");
    EXPECT_THAT(errorOf("digraph {\n" + braces), StartsWith("2: more than 500 braces"));
}

TEST(DotReader, ReadsAGoodFileAfterAnyBadOne) {
    for (const char* bad : {"bad/too-deep.dot", "bad/open-quote.dot", "bad/bad-utf8.dot"}) {
        EXPECT_THROW(readDocument(dataPath(bad)), ImportError) << bad;
        EXPECT_EQ(readDocument(dataPath("made/order-process.dot")).edges.size(), 18U) << bad;
    }
    for (const char* bad :
         {"digraph {{{{", "digraph { a [", "digraph { a -> ", "graph { a -> b }"}) {
        EXPECT_NE(errorOf(bad), "") << bad;
        EXPECT_EQ(errorOf("digraph { a -> b }"), "") << bad;
    }
}

TEST(DotReader, FailsCleanlyWhenCutAnywhere) {
    for (const char* name : {"made/shop-architecture.dot", "graphviz-epl/structs.gv"}) {
        expectCleanWhenCutAnywhere(readSourceFile(dataPath(name)), "text.dot");
    }
}

}  // namespace
}  // namespace qxdraw::testing
