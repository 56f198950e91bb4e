// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "import/SourceText.h"
#include "tool/import/ImportTesting.h"

namespace qxdraw::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

GraphDocument read(const std::string& text) {
    return readDocumentText(text, "text.gml");
}

TEST(GmlReader, ReadsShapesPolylinesAndEntities) {
    const GraphDocument document = readDocument(dataPath("made/mixed.gml"));
    EXPECT_TRUE(document.directed);
    const DocumentNode& first = nodeOf(document, "10");
    EXPECT_EQ(first.label, "café & bar");
    EXPECT_THAT(*first.center, IsNear(0, 0));
    EXPECT_EQ(first.width, 80);
    EXPECT_EQ(nodeOf(document, "20").shape.kind, ShapeKind::Oval);
    const DocumentNode& polygon = nodeOf(document, "30");
    EXPECT_THAT(*polygon.center, IsNear(100, -150)) << "GML counts y downward";
    EXPECT_THAT(polygon.shape.outline, ElementsAre(IsNear(-1, -1), IsNear(0, 1), IsNear(1, -1)));
    EXPECT_THAT(document.edges[1].bends, ElementsAre(IsNear(100, 60))) << "without the two ends";
}

TEST(GmlReader, KeepsWhatTheFileDoesNotSayOpen) {
    const GraphDocument document = read("graph [ node [ id 7 ] node [ id 8 label \"\" ] ]");
    EXPECT_EQ(document.nodes[0].label, "7");
    EXPECT_EQ(document.nodes[1].label, "");
    EXPECT_FALSE(document.nodes[0].center.has_value());
    EXPECT_EQ(document.nodes[0].width, 0);
    EXPECT_FALSE(document.directed);
}

TEST(GmlReader, ReadsEdgesBeforeTheirNodes) {
    const GraphDocument document =
        read("graph [ edge [ source 2 target 1 ] node [ id 1 ] node [ id 2 ] ]");
    EXPECT_EQ(document.edges.front().source, 1);
    EXPECT_EQ(document.edges.front().target, 0);
}

TEST(GmlReader, NamesTheLineOfAnError) {
    const std::string nodes = "graph [\n node [ id 1 ]\n";
    EXPECT_THAT(errorOf(nodes + "node [ id 1 ] ]"), StartsWith("3: node id 1 is used twice"));
    EXPECT_THAT(errorOf(nodes + "node [ ] ]"), StartsWith("3: a node without id"));
    EXPECT_THAT(errorOf(nodes + "node [ id 99999999999999999999 ] ]"),
                StartsWith("3: 'id' is not"));
    EXPECT_THAT(errorOf(nodes + "node [ id 1.5 ] ]"), StartsWith("3: 'id' is not"));
    EXPECT_THAT(errorOf(nodes + "edge [ source 1 ] ]"), StartsWith("3: an edge without target"));
    EXPECT_THAT(errorOf(nodes + "edge [ source 1\ntarget 7 ] ]"),
                StartsWith("4: an edge names node 7"));
    EXPECT_THAT(errorOf(nodes + "edge [\nsource 1"),
                StartsWith("3: '[' of 'edge' is never closed"));
    EXPECT_THAT(errorOf(nodes + "label \"open\n"), StartsWith("3: a string is never closed"));
    EXPECT_THAT(errorOf(nodes + "]\n5"), StartsWith("4: a key was expected"));
    EXPECT_THAT(errorOf("Creator \"nobody\""), HasSubstr("no graph"));
}

TEST(GmlReader, RefusesNumbersThatAreNoPlaceOrSize) {
    const auto error = [](const std::string& graphics) {
        return errorOf("graph [\n node [ id 1 graphics [ " + graphics + " ] ] ]");
    };
    EXPECT_EQ(error("x 1 y 2 w 3 h 0"), "");
    EXPECT_THAT(error("x 1e999 y 0"), StartsWith("2: the value of 'x'"));
    EXPECT_THAT(error("x nan y 0"), StartsWith("2: the value of 'x'"));
    EXPECT_THAT(error("x 0 y -inf"), StartsWith("2: the value of 'y'"));
    EXPECT_THAT(error("x 1e300 y 0"), StartsWith("2: x is out of range"));
    EXPECT_THAT(error("w -5"), StartsWith("2: w is negative"));
    EXPECT_THAT(error("h 1e9"), StartsWith("2: h is out of range"));
    EXPECT_THAT(error("w \"wide\""), StartsWith("2: w is not a finite number"));
}

TEST(GmlReader, LimitsNesting) {
    std::string lists;
    for (int i = 0; i < 100000; ++i) {
        lists += "a [ ";
    }
    EXPECT_THAT(errorOf("graph [\n" + lists), StartsWith("2: more than 500 lists"));
}

TEST(GmlReader, FailsCleanlyWhenCutAnywhere) {
    expectCleanWhenCutAnywhere(readSourceFile(dataPath("made/mixed.gml")), "text.gml");
}

}  // namespace
}  // namespace qxdraw::testing
