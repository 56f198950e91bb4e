// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "import/SourceText.h"
#include "tool/import/ImportTesting.h"

namespace qxdraw::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

constexpr const char* Keys =
    "<key id='d0' for='node' attr.name='label'><default>unnamed</default></key>"
    "<key id='d1' for='node' attr.name='x'/><key id='d2' for='node' attr.name='y'/>"
    "<key id='d3' for='all' attr.name='width'/><key id='d4' for='node' attr.name='name'/>"
    "<key id='d5' for='node'/>\n";

std::string document(const std::string& content, const std::string& keys = "") {
    return "<graphml xmlns='http://graphml.graphdrawing.org/xmlns'>" + keys +
           "<graph edgedefault='directed'>" + content + "</graph></graphml>";
}

TEST(GraphMLReader, KeepsLabelsOfAnyScriptByteForByte) {
    const GraphDocument labels = readDocument(dataPath("made/i18n-labels.graphml"));
    const auto label = [&](const char* id) { return nodeOf(labels, id).label; };
    EXPECT_EQ(label("n0"), "Ελληνικά");
    EXPECT_EQ(label("n5"), "العربية");
    EXPECT_EQ(label("n11"), "👩‍🔬 lab");
    EXPECT_EQ(label("n12"), "𝔘𝔫𝔦𝔠𝔬𝔡𝔢 (beyond the BMP)");
    EXPECT_EQ(label("n13"), "tab\tand \"quotes\" <b>&amp;</b>");
    EXPECT_EQ(label("n14"), "line 1\nline 2\nline 3");
    EXPECT_EQ(label("n16"), "");
    EXPECT_EQ(label("n17"), "   ");
    EXPECT_EQ(labels.edges.back().label, "Русский");
    EXPECT_FALSE(labels.edges.back().arrowAtTarget);
}

TEST(GraphMLReader, PlacesNestedNodesWithinTheirContainer) {
    const GraphDocument board = readDocument(dataPath("made/ports-nested.graphml"));
    EXPECT_EQ(board.ports, 9);
    EXPECT_THAT(*nodeOf(board, "ram").center, IsNear(300, -260)) << "GraphML counts y downward";
    EXPECT_THAT(*nodeOf(board, "alu").center, IsNear(250, 0));
    EXPECT_EQ(nodeOf(board, "alu").graph, 1);
    EXPECT_EQ(nodeOf(board, "cpu").width, 240);
    EXPECT_EQ(board.edges.back().label, "flags");
}

TEST(GraphMLReader, NamesNodesByLabelNameDefaultOrId) {
    const GraphDocument named = readDocumentText(
        document("<node id='a'><data key='d4'>name</data><data key='d0'>label</data></node>"
                 "<node id='b'><data key='d4'>name</data></node><node id='c'/>",
                 Keys),
        "text");
    EXPECT_EQ(nodeOf(named, "a").label, "label");
    EXPECT_EQ(nodeOf(named, "b").label, "name");
    EXPECT_EQ(nodeOf(named, "c").label, "unnamed");
    EXPECT_EQ(readDocumentText(document("<node id='c'/>"), "text").nodes.front().label, "c");
}

TEST(GraphMLReader, ReadsGeometryShapesAndPathsInsideData) {
    const GraphDocument drawing = readDocumentText(
        document(
            "<node id='a'><data key='d5'><S xmlns='urn:x'><Geometry x='10' y='20' width='40' "
            "height='30'/><NodeLabel>first</NodeLabel><Shape type='ellipse'/></S></data></node>"
            "<edge source='a' target='a'><data key='d5'><L xmlns='urn:x'><Path sx='0' sy='0'>"
            "<Point x='5' y='6'/><Point x='7' y='8'/></Path><Arrows source='standard' "
            "target='none'/><EdgeLabel>loop</EdgeLabel></L></data></edge>",
            Keys),
        "text");
    const DocumentNode& node = drawing.nodes.front();
    EXPECT_THAT(*node.center, IsNear(30, -35));
    EXPECT_EQ(node.label, "first");
    EXPECT_EQ(node.shape.kind, ShapeKind::Oval);
    const DocumentEdge& edge = drawing.edges.front();
    EXPECT_THAT(edge.bends, ElementsAre(IsNear(5, -6), IsNear(7, -8)));
    EXPECT_TRUE(edge.arrowAtSource);
    EXPECT_FALSE(edge.arrowAtTarget);
    EXPECT_EQ(edge.label, "loop");
}

TEST(GraphMLReader, NamesTheLineOfAnError) {
    const auto error = [](const std::string& content) { return errorOf(document(content, Keys)); };
    EXPECT_EQ(error("<node id='a'/><edge source='a' target='a' directed='false'/>"), "");
    EXPECT_THAT(error("<node id='a'/>\n<node id='a'/>"),
                StartsWith("3: node id 'a' is used twice"));
    EXPECT_THAT(error("<node/>"), StartsWith("2: a node without id"));
    EXPECT_THAT(error("<node id='a'/><edge source='a'/>"), StartsWith("2: an edge without target"));
    EXPECT_THAT(error("<edge source='a' target='a'/>\n\n"),
                StartsWith("2: an edge names node 'a'"));
    EXPECT_THAT(error("<node id='a'/><edge source='a' target='a' sourceport='p'/>"),
                StartsWith("2: an edge names port 'p'"));
    EXPECT_THAT(error("<node id='a'><data key='d1'>inf</data></node>"), StartsWith("2: x is not"));
    EXPECT_THAT(error("<node id='a'><data key='d3'>-1</data></node>"),
                StartsWith("2: width is neg"));
    EXPECT_THAT(error("<node id='a'>"), StartsWith("2: "));
    EXPECT_THAT(errorOf("<html><body/></html>"), HasSubstr("'html', not 'graphml'"));
    EXPECT_THAT(errorOf("<graphml/>"), HasSubstr("no graph"));
    EXPECT_NE(errorOf(document("<node id='\xFF'/>")), "");
}

TEST(GraphMLReader, RefusesDocumentTypesAndReadsNoOtherFile) {
    const std::string canary = dataPath("bad/canary.txt");
    for (const std::string& type :
         {"<!DOCTYPE graphml SYSTEM '" + canary + "'>",
          "<!DOCTYPE graphml [<!ENTITY % e SYSTEM '" + canary + "'> %e;]>",
          "<!DOCTYPE graphml [<!ENTITY e SYSTEM '" + canary + "'>]>"}) {
        const std::string error = errorOf(type + document("<node id='&e;'/>"));
        EXPECT_THAT(error, StartsWith("1: document types (DOCTYPE) are refused")) << type;
    }
    EXPECT_THAT(errorOf(document("<node id='&e;'/>")), Not(HasSubstr("CANARY")));
}

TEST(GraphMLReader, LimitsNesting) {
    std::string graphs;
    for (int i = 0; i < 600; ++i) {
        graphs += "<node id='" + std::to_string(i) + "'><graph edgedefault='directed'>";
    }
    EXPECT_THAT(errorOf(document(graphs)), HasSubstr("more than 500 graphs"));
    std::string elements;
    for (int i = 0; i < 100000; ++i) {
        elements += "<a>";
    }
    EXPECT_THAT(errorOf(document(elements)), HasSubstr("nested too deep"));
}

TEST(GraphMLReader, PassesOverWhatItDoesNotKnow) {
    const GraphDocument read = readDocumentText(
        document("<desc>x<node id='no'/></desc><node id='a'><data key='none'>x</data></node>"
                 "<hyperedge><endpoint node='a'/></hyperedge>") +
            "\n",
        "text");
    EXPECT_EQ(read.nodes.size(), 1U);
    ASSERT_EQ(read.warnings.size(), 1U);
    EXPECT_THAT(read.warnings.front().text, HasSubstr("hyperedges"));
}

TEST(GraphMLReader, FailsCleanlyWhenCutAnywhere) {
    expectCleanWhenCutAnywhere(readSourceFile(dataPath("made/ports-nested.graphml")), "text");
}

}  // namespace
}  // namespace qxdraw::testing
