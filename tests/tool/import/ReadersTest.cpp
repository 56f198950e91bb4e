// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// The readers of all formats: what they read, what they refuse, and how they fail.

#include "import/SourceText.h"
#include "tool/import/ImportTesting.h"

namespace qxdraw::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

std::string read(const std::string& text) {
    const std::string error = errorOf(text, "text.dot");
    return error.empty() ? described(readDocumentText(text, "text.dot")) : error;
}

/// GraphML with the keys that the rows below use.
std::string xml(const std::string& content) {
    return "<graphml xmlns='http://graphml.graphdrawing.org/xmlns'>"
           "<key id='d0' for='node' attr.name='label'><default>unnamed</default></key>"
           "<key id='d1' for='node' attr.name='x'/><key id='d2' for='node' attr.name='y'/>"
           "<key id='d3' for='all' attr.name='width'/><key id='d4' for='node' attr.name='name'/>"
           "<key id='d5' for='node'/>\n<graph edgedefault='directed'>" +
           content + "</graph></graphml>";
}

struct Row {
    std::string text;
    std::string expected;
};

TEST(Readers, ReadWhatAFileSaysAndLeaveTheRestOpen) {
    const Row rows[] = {
        // Labels and their escapes.
        {"digraph { n }", "n oval"},
        {R"(digraph g { n [label="\N of \G\nsecond\lthird\r"] })",
         "n 'n of g\nsecond\nthird' oval"},
        {R"(digraph { n [label=""] })", "n '' oval"},
        {R"(digraph { n [label="a\\nb"] })", "n 'a\\nb' oval"},
        {R"(digraph { n [label="&eacute;&#x416;&#9786; &unknown; &amp;"] })",
         "n 'éЖ☺ &unknown; &' oval"},
        {"digraph { n [label=<<b>bold</b> and<br/>&lt;two&gt;>] }", "n 'bold and\n<two>' oval"},
        {R"(digraph { n [shape=record label="<f0> left|{ a | <p>b }|x\|y\nz"] })",
         "n 'left | a | b | x|y\nz'"},
        {R"(digraph { n [shape=box label="a|b"] })", "n 'a|b'"},
        {R"(graph g { a -- b [label="\E: \T to \H"] })", "a oval; b oval; a--b 'a--b: a to b'"},
        {"digraph { graph [charset=latin1]; a [label=\"\xE9\"] }", "a 'é' oval"},
        {"digraph { a [label=\"" + std::string(600, '{') + "\\\"{\" fontname=x] }",
         "a '" + std::string(600, '{') + "\"{' oval"},
        {"# {{\ndigraph { /*{{*/ a }", "a oval"},
        // Places, sizes, shapes: DOT in points and inches, the others with y downward.
        {"digraph { n [width=1]; f [width=1 fixedsize=true] }", "n 96x0+ oval; f 96x0 oval"},
        {R"(digraph { a [pos="72,144" width=1 height=0.5]; b [pos="-36,1.5e2,0!"] })",
         "a @96,192 96x48 oval; b @-48,200 oval"},
        {"digraph { c [shape=doublecircle]; d [shape=Mdiamond]; u [shape=nosuchshape] }",
         "c square oval; d <0,-1> <1,0> <0,1> <-1,0>; u"},
        {"digraph { p [shape=polygon sides=5]; h [shape=hexagon] }",
         "p <0.6,-1> <1,0.2> <0,1> <-1,0.2> <-0.6,-1>; "
         "h <-0.7,-1> <0.7,-1> <1,0> <0.7,1> <-0.7,1> <-1,0>"},
        {readSourceFile(dataPath("made/mixed.gml")),
         "10 'café & bar' @0,0 80x40; 20 'oval' @200,0 60x60 oval; "
         "30 'polygon' @100,-150 90x60 <-1,-1> <0,1> <1,-1>; 10->20 'straight'; "
         "10->20 'bent' 100,60; 20->20 'loop'; 30->10 '1e-3 spacing'"},
        {"graph [ node [ id 7 ] node [ id 8 label \"\" ] ]", "7; 8 ''"},
        {"graph [ node [ id 1 graphics [ x 1 y 2 w 3 h 0 ] ] ]", "1 @1,-2 3x0"},
        {"graph [ node [ id 1 graphics [ y 2 ] ] ]", "1"},
        {xml("<node id='a'><data key='d5'><S xmlns='urn:x'><Geometry x='10' y='20' width='40' "
             "height='30'/><NodeLabel>first</NodeLabel><Shape type='ellipse'/></S></data></node>"
             "<edge source='a' target='a'><data key='d5'><L xmlns='urn:x'><Path sx='0' sy='0'>"
             "<Point x='5' y='6'/><Point x='7' y='8'/></Path><Arrows source='standard' "
             "target='none'/><EdgeLabel>loop</EdgeLabel></L></data></edge>"),
         "a 'first' @30,-35 40x30 oval; a<-a 'loop' 5,-6 7,-8"},
        {xml("<node id='a'><data key='d4'>name</data><data key='d0'>label</data></node>"
             "<node id='b'><data key='d4'>name</data></node><node id='c'/>"
             "<node id='d'><data key='d0'>label</data><data key='d4'>name</data></node>"),
         "a 'label'; b 'name'; c 'unnamed'; d 'label'"},
        {"<graphml><graph edgedefault='directed'><node id='c'/></graph></graphml>", "c"},
        // Ends of edges and nested graphs.
        {R"(digraph { a -> b; a -> c [dir=back]; a -> d [dir=both]
            a -> e [dir=none]; a -> f [arrowhead=none] })",
         "a oval; b oval; c oval; d oval; e oval; f oval; a->b; a<-c; a<>d; a--e; a--f"},
        {"graph { a -- b }", "a oval; b oval; a--b"},
        {"graph [ edge [ source 2 target 1 ] node [ id 1 ] node [ id 2 ] ]", "1; 2; 2--1"},
        {xml("<node id='a'/><edge source='a' target='a' directed='false'/>"), "a 'unnamed'; a--a"},
        {R"(digraph { label=top; x
            subgraph cluster_a { label=A; a subgraph { m } subgraph cluster_b { label=B; b } }
            subgraph cluster_c { label=C; b; x } })",
         "x oval in 3; a oval in 1; m oval in 1; b oval in 2; 1 A in 0; 2 B in 1; 3 C in 0"},
        {readSourceFile(dataPath("made/ports-nested.graphml")),
         "psu 'Power supply' @0,0 120x60; cpu 'Processor' @300,0 240x180; "
         "alu 'ALU' @250,0 60x40 in 1; regs 'Registers' @350,0 60x40 in 1; "
         "ram 'Memory' @300,-260 160x60; 1 inside in 0; alu->regs 'result'; "
         "regs->alu 'operands'; regs->regs 'shift'; psu->cpu '5 V'; psu->cpu '0 V'; "
         "cpu->ram 'address'; cpu->ram 'data'; cpu->cpu 'clock'; ram->regs 'load'; "
         "alu->cpu 'flags'"},
        {"graph { a } graph { b }", "a oval"},
        {xml("<desc>x<node id='no'/></desc><node id='a'><data key='none'>x</data></node>"
             "<hyperedge><endpoint node='a'/></hyperedge>") +
             "\n",
         "a 'unnamed'"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(read(row.text), row.expected) << row.text;
    }
}

/// "a:port@x,y|field -> b" of every edge, with its further labels, then what stands beside nodes.
std::string endsOf(const std::string& text) {
    const GraphDocument document = readDocumentText(text, "text.dot");
    std::ostringstream out;
    const auto describe = [&](int index, int port) {
        const DocumentNode& node = document.nodes[static_cast<std::size_t>(index)];
        out << node.id;
        if (port >= 0) {
            const DocumentPort& at = node.ports[static_cast<std::size_t>(port)];
            out << ':' << at.label << (at.place ? "@" + described(*at.place) : "")
                << (at.field.empty() ? "" : "|" + at.field);
        }
    };
    for (const DocumentEdge& edge : document.edges) {
        describe(edge.source, edge.sourcePort);
        out << " -> ";
        describe(edge.target, edge.targetPort);
        for (const DocumentEdgeLabel& label : edge.moreLabels) {
            out << ' ' << static_cast<int>(label.place) << label.text;
        }
        out << "; ";
    }
    for (const DocumentNode& node : document.nodes) {
        out << (node.outerLabel.empty() ? "" : node.outerLabel + "; ");
    }
    for (const DocumentWarning& warning : document.warnings) {
        out << warning.text << "; ";
    }
    return out.str();
}

TEST(Readers, ReadPortsAndLabelsAtTheEndsOfEdges) {
    const std::string record = R"(a [shape=record label="<f>x|<n>y"] b )";
    const auto port = [](const std::string& data) {
        return xml("<node id='a'><port name='p'>" + data +
                   "</port></node><edge source='a' target='a' targetport='p'/>");
    };
    const std::string keys =
        "<graphml><key id='x' for='port' attr.name='per-mil-x'/>"
        "<key id='y' for='port' attr.name='per-mil-y'/>"
        "<key id='l' for='port' attr.name='label'/><graph>"
        "<node id='a'><port name='p'>";
    const std::string rest =
        "</port></node><edge source='a' sourceport='p' target='a'/></graph>"
        "</graphml>";
    const Row rows[] = {
        {"digraph {" + record + "a:f -> b:ne; a:n:s -> b:_; a:e -> b }",
         "a:|f -> b:@1,1; a:@0,-1|n -> b; a:@1,0 -> b; "},
        {"digraph {" + record + "a -> b [tailport=f headport=w]; a:q -> b; a:f:q -> b; a:q -> b }",
         "a:|f -> b:@-1,0; a -> b; a -> b; a -> b; "
         "node 'a' has no port 'q'; edges there end at the node; "
         "node 'a' has no port 'f:q'; edges there end at the node; "},
        {"digraph { a [label=<<table port='t'><tr><td port='c'>x</td></tr></table>>] "
         "a:t -> a:c:n }",
         "a:|t -> a:@0,1|c; "},
        {R"(digraph { a [shape=record label="{a|"] a:f -> a })",
         "a -> a; the label of node 'a' is no record; it is shown as plain text; "
         "node 'a' has no port 'f'; edges there end at the node; "},
        {R"(digraph { a [xlabel="\N out"] a -> a [taillabel=t headlabel="\H" xlabel=x] })",
         "a -> a 0t 1a 2x; a out; "},
        {port("<data key='d0'>in</data>"), "a -> a:in; "},
        {port("<port name='q'/>"), "a -> a:p; "},
        {keys + "<data key='x'>500</data><data key='y'>-200</data><data key='l'/>" + rest,
         "a:@1,0.4 -> a; "},
        {keys + "<data key='y'>9000</data>" + rest, "a:p@0,-1 -> a; "},
        {"graph [ node [ id 1 port [ name \"p\" x 0.5 y 7 ] graphics [ port [ name 2 ] ] ] "
         "edge [ source 1 target 1 sourcePort \"p\" targetPort 2 ] "
         "edge [ source 1 target 1 edgeAnchor [ xTarget 1 yTarget 0.5 ] ] ]",
         "1:p@0.5,-1 -> 1:2; 1 -> 1:@1,-0.5; "},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(endsOf(row.text), row.expected) << row.text;
    }
}

TEST(Readers, NameTheLineOfAnError) {
    const std::string gml = "graph [\n node [ id 1 ]\n";
    const auto graphics = [](const std::string& text) {
        return "graph [\n node [ id 1 graphics [ " + text + " ] ] ]";
    };
    std::string graphs;
    std::string elements;
    std::string lists;
    for (int i = 0; i < 100000; ++i) {
        graphs +=
            i < 600 ? "<node id='" + std::to_string(i) + "'><graph edgedefault='directed'>" : "";
        elements += "<a>";
        lists += "a [ ";
    }
    const std::string braces(600, '{');
    const Row rows[] = {
        {"digraph g {\n a -> b\n c -> ; d }", "3: syntax error near ';'"},
        {"graph {\n 1a -- 2b\n ] }", "3: syntax error near ']'"},  // behind warnings
        {"digraph g {\n\n a [label=<b<>] }", "3: an HTML label"},
        {"digraph g {\n /* \n\n }", "2: a comment"},
        {"digraph g {\n a [width=2]\n b [width=-1] }", "3: width is neg"},
        {"digraph g {\n a [width=\"nan\"] }", "2: width is not a finite"},
        {"digraph g {\n a [pos=\"1e12,0\"] }", "2: pos is out of range"},
        {"digraph g {\n a [pos=\"1\"] }", "2: the pos of node 'a'"},
        {"digraph g {\n a -> b [pos=\"1,2 3,4\"] }", "2: the pos of edge"},
        {std::string("digraph g {\n a\0 }", 16), "2: a NUL byte"},
        {"digraph {\n a [label=\"\xE9\"] }", "2: bytes that are not UTF"},
        {"digraph {\n" + braces, "2: more than 500 braces"},
        {gml + "node [ id 1 ] ]", "3: node id 1 is used twice"},
        {gml + "node [ ] ]", "3: a node without id"},
        {gml + "node [ id 99999999999999999999 ] ]", "3: 'id' is not"},
        {gml + "node [ id 1.5 ] ]", "3: 'id' is not"},
        {gml + "edge [ source 1 ] ]", "3: an edge without target"},
        {gml + "edge [ source 1\ntarget 7 ] ]", "4: an edge names node 7"},
        {gml + "edge [\nsource 1", "3: '[' of 'edge' is never closed"},
        {gml + "label \"open\n", "3: a string is never closed"},
        {gml + "]\n5", "4: a key was expected"},
        {"Creator \"nobody\"", "0: there is no graph"},
        {"graph [\n" + lists, "2: more than 500 lists"},
        {gml + "node [ id 2\nport [ x 1 ] ] ]", "4: a port without name"},
        {gml + "node [ id 2 port [ name 1 ]\nport [ name 1 ] ] ]", "4: port '1' stands twice"},
        {gml + "edge [ source 1 target 1\ntargetPort 3 ] ]", "4: an edge names port '3'"},
        {graphics("x 1e999 y 0"), "2: the value of 'x'"},
        {graphics("x nan y 0"), "2: the value of 'x'"},
        {graphics("x 0 y -inf"), "2: the value of 'y'"},
        {graphics("x 1e300 y 0"), "2: x is out of range"},
        {graphics("w -5"), "2: w is negative"},
        {graphics("h 1e9"), "2: h is out of range"},
        {graphics("w \"wide\""), "2: w is not a finite number"},
        {xml("<node id='a'/>\n<node id='a'/>"), "3: node id 'a' is used twice"},
        {xml("<node/>"), "2: a node without id"},
        {xml("<node id='a'/><edge source='a'/>"), "2: an edge without target"},
        {xml("<edge source='a' target='a'/>\n\n"), "2: an edge names node 'a'"},
        {xml("<node id='a'/><edge source='a' target='a' sourceport='p'/>"),
         "2: an edge names port 'p'"},
        {xml("<node id='a'><data key='d1'>inf</data></node>"), "2: x is not"},
        {xml("<node id='a'><data key='d3'>-1</data></node>"), "2: width is neg"},
        {xml("<node id='a'><data key='d3'>1px</data></node>"), "2: width is not"},
        {xml("<node id='a'>"), "2: "},
        {xml("<node id='\xFF'/>"), "1: invalid byte"},
        {xml(graphs), "2: more than 500 graphs"},
        {xml(elements), "2: elements nested too deep"},
        {"<qxdraw version='1'/>", "1: a drawing document, which only `check` and `convert` read"},
        {"<html><body/></html>", "1: the document element is 'html', not 'graphml'"},
        {"<graphml/>", "0: there is no graph"},
    };
    for (const Row& row : rows) {
        EXPECT_THAT(errorOf(row.text, "text.dot"), StartsWith(row.expected))
            << row.text.substr(0, 200);
    }
}

TEST(Readers, FailCleanlyWhenAFileIsCutAnywhere) {
    for (const char* name : {"made/shop-architecture.dot", "graphviz-epl/structs.gv",
                             "made/mixed.gml", "made/ports-nested.graphml"}) {
        const std::string text = readSourceFile(dataPath(name));
        std::size_t refused = 0;
        for (std::size_t length = 0; length < text.size(); ++length) {
            refused += errorOf(text.substr(0, length), name).empty() ? 0 : 1;
        }
        EXPECT_GT(refused, text.size() / 2) << name;
    }
}

TEST(Readers, ReadAGoodFileAfterAnyBadOne) {
    for (const char* bad : {"digraph {{{{", "digraph { a [", "digraph { a -> ", "digraph { \"",
                            "graph { a -> b }", "digraph { a [label=\"\xE9\"] }"}) {
        EXPECT_NE(errorOf(bad), "") << bad;
        EXPECT_EQ(errorOf("digraph { a -> b }"), "") << bad;
    }
}

TEST(Readers, KeepLabelsOfAnyScriptByteForByte) {
    const std::string labels = described(readDocument(dataPath("made/i18n-labels.graphml")));
    for (const char* label :
         {"Ελληνικά", "العربية", "👩‍🔬 lab", "𝔘𝔫𝔦𝔠𝔬𝔡𝔢 (beyond the BMP)", "",
          "tab\tand \"quotes\" <b>&amp;</b>", "line 1\nline 2\nline 3", "   ", "Русский"}) {
        EXPECT_THAT(labels, HasSubstr(" '" + std::string(label) + "'"));
    }
    EXPECT_THAT(described(readDocument(dataPath("graphviz-epl/Latin1.gv"))), HasSubstr("'áâ"));
}

TEST(Readers, WarnOfWhatTheyPassOver) {
    const auto warnings = [](const std::string& text) {
        std::string all;
        for (const DocumentWarning& warning : readDocumentText(text, "text.dot").warnings) {
            all += std::to_string(warning.line) + ": " + warning.text + '\n';
        }
        return all;
    };
    EXPECT_THAT(warnings("graph { a } // end\n\ngraph { b c }"), StartsWith("3: "));
    EXPECT_EQ(warnings("graph { a } /* end */ \n // end\n;"), "");
    EXPECT_THAT(warnings("graph {\n 1a }"), StartsWith("2: syntax ambiguity"));
    EXPECT_THAT(warnings(xml("<hyperedge><endpoint node='a'/></hyperedge>")),
                HasSubstr("hyperedges"));
}

TEST(Readers, ReadSplinesOfDotAsBends) {
    const GraphDocument document = readDocumentText(R"(digraph {
        a -> b [pos="e,0,0 0,0 24,0 48,0 72,0"]
        a -> c [pos="s,9,9 0,0 0,36 0,72 36,72 54,72 72,72 90,72"] })",
                                                    "text.dot");
    EXPECT_THAT(document.edges[0].bends, IsEmpty()) << "a straight spline needs no bend";
    const auto& bends = document.edges[1].bends;
    ASSERT_GE(bends.size(), 3U);
    for (const DocumentPoint& bend : bends) {  // the curve turns within its control polygon
        EXPECT_TRUE(bend.x >= 0 && bend.x <= 48.01 && bend.y > 0 && bend.y <= 96.01);
    }
    EXPECT_THAT(bends.back(), IsNear(48, 96)) << "the joint where the straight piece starts";
}

TEST(Readers, RefuseDocumentTypesOfXmlAndReadNoOtherFile) {
    const std::string canary = dataPath("bad/canary.txt");
    for (const std::string& type :
         {"<!DOCTYPE graphml SYSTEM '" + canary + "'>",
          "<!DOCTYPE graphml [<!ENTITY % e SYSTEM '" + canary + "'> %e;]>",
          "<!DOCTYPE graphml [<!ENTITY e SYSTEM '" + canary + "'>]>"}) {
        EXPECT_THAT(errorOf(type + xml("<node id='&e;'/>")),
                    StartsWith("1: document types (DOCTYPE) are refused"))
            << type;
    }
    EXPECT_THAT(errorOf(xml("<node id='&e;'/>")), Not(HasSubstr("CANARY")));
}

}  // namespace
}  // namespace qxdraw::testing
