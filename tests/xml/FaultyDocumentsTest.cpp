// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Documents that nobody should have written: they are refused as a whole, or read with each repair
// told; the drawing is sound in any case.

#include <gtest/gtest.h>

#include <sstream>

#include "xml/DocumentWorld.h"
#include "xml/DrawingText.h"

namespace {

using namespace qxtest;

/// Reads into a drawing that holds a little already; answers what went wrong.
std::string faultOf(const std::string& bytes, int* isRead = nullptr) {
    QxFactory factory;
    const Ref<QxDGraphManager> manager(factory.newDGraphManager());
    manager->addGraph(0)->addNode(0);
    const std::string before = DrawingText(*manager).text();
    QxDGraphManagerXMLReader reader(bytes.data(), bytes.size());
    const int done = reader.read(manager.get());
    if (isRead != nullptr) {
        *isRead = done;
    }
    if (done == 0 && DrawingText(*manager).text() != before) {
        return "a refused document left traces";
    }
    if (done == 0 && reader.messages().empty()) {
        return "nobody says why it is refused";
    }
    if (manager->isReading() != 0 || manager->checkInvariants() == 0) {
        return "the drawing is not sound";
    }
    return documentOf(*manager).empty() ? "what was read cannot be written" : "";
}

std::string smallDocument() {
    QxFactory factory;
    DocumentWorld world(factory, 3);
    for (int i = 0; i < 60; ++i) {
        world.edit();
    }
    while (world.manager->numberOfGraphs() > 2) {
        world.manager->discardGraph(world.manager->pLastGraph());
    }
    return documentOf(*world.manager, 0);
}

TEST(FaultyDocuments, CutAnywhereAreRefused) {
    const std::string whole = smallDocument();
    ASSERT_LT(whole.size(), 60000U);
    ASSERT_EQ(faultOf(whole), "");
    const std::size_t end = whole.rfind('>');
    for (std::size_t length = 0; length < end; length += 1 + length % 7) {
        int isRead = 1;
        ASSERT_EQ(faultOf(whole.substr(0, length), &isRead), "") << "cut at " << length;
        ASSERT_EQ(isRead, 0) << "cut at " << length;
    }
}

/// A document with one of everything that matters.
const std::string Small = R"(<qxdraw version="1">
<resources><shapes><ovalShape id="s1"/></shapes></resources>
<instances><name value="d"/>
<graph id="g1"><minimumMarginWidth value="3"/><node id="n1"><childGraph id="r1" value="g2"/>
<center x="5" y="-7"/><size width="30" height="20"/><shape resource="s1"/>
<connectors><connector id="c1"><size width="4" height="4"/><proportionalOffset x="0.5" y="0"/>
</connector></connectors></node><node id="n2"><center x="100" y="0"/></node>
<node id="n3"/><edge id="e1" source="n1" target="n2"><sourceConnector value="c1"/>
<targetClipping x="-0.5" y="0.25"/><bends><point x="50" y="50"/></bends>
<edgeLabels><edgeLabel id="l1"><name value="t"/><distanceFromSource value="0.25"/></edgeLabel>
</edgeLabels></edge><edge id="e3" source="n2" target="n3"/></graph>
<graph id="g2"><node id="n4"/></graph>
<intergraph id="g3"><edge id="e2" source="n4" target="n2"><bends><point x="1" y="2"/></bends>
</edge></intergraph>
<complexity><nestingRelations><nestingRelation childGraphRelation="r1"><expanded value="true"/>
<calculatedMargins left="5" right="6" top="7" bottom="8"/></nestingRelation></nestingRelations>
<hiddenObjects><hidden id="n3"/><hidden id="e3"/></hiddenObjects>
<folders><folder id="n1"/></folders><metaEdges><metaEdge id="e2"/></metaEdges></complexity>
<rootGraph value="g1"/></instances></qxdraw>)";

TEST(FaultyDocuments, EverySingleByteChangedIsSurvived) {
    ASSERT_EQ(faultOf(Small), "");
    for (std::size_t at = 0; at < Small.size(); ++at) {
        for (const char c : {'<', '"', '9', 'n', '\x80'}) {
            std::string changed = Small;
            changed[at] = c;
            ASSERT_EQ(faultOf(changed), "") << "byte " << at << " is " << int{c};
        }
    }
}

TEST(FaultyDocuments, MutatedAtRandomAreSurvived) {
    const std::uint32_t seed = testSeed(17);
    SCOPED_TRACE(seedTrace(seed));
    TestRandom random(seed);
    const std::vector<std::string> seeds = {Small, smallDocument()};
    std::vector<std::string> words;  // what may stand for one another
    for (const std::string& one : seeds) {
        for (std::size_t at = one.find('"'); at != std::string::npos; at = one.find('"', at + 1)) {
            const std::size_t end = one.find('"', at + 1);
            words.push_back(one.substr(at, end - at + 1));
            at = end;
        }
    }
    const char* const rounds = std::getenv("QX_TEST_MUTATIONS");
    const int count = rounds != nullptr ? std::atoi(rounds) : 1500;
    for (int i = 0; i < count; ++i) {
        std::string one = random.chance(80) ? seeds[0] : seeds[1];
        for (int k = 1 + random.below(4); k > 0; --k) {
            const auto at = static_cast<std::size_t>(random.below(static_cast<int>(one.size())));
            const std::size_t quote = one.find('"', at);
            const std::size_t tag = one.find('<', at);
            if (random.chance(50) && quote != std::string::npos) {
                const std::size_t end = one.find('"', quote + 1);
                one.replace(quote, end - quote + 1, random.pick(words));
            } else if (random.chance(40) && tag != std::string::npos) {
                const std::size_t end = one.find('>', tag) + 1;
                const std::string element = one.substr(tag, end - tag);
                random.chance(50) ? one.erase(tag, end - tag) : one.insert(tag, element);
            } else {
                one[at] = static_cast<char>(random.below(256));
            }
        }
        ASSERT_EQ(faultOf(one), "") << one;
    }
}

enum Outcome { Refused, Repaired, Clean };

struct Case {
    const char* what;
    const char* from;  ///< replaced in the small document; null: the whole of it
    std::string to;
    Outcome outcome;
    const char* told;  ///< part of the first message
};

std::string nested(int depth) {
    std::string all;
    for (int i = 0; i < depth; ++i) {
        all += "<unknown>";
    }
    for (int i = 0; i < depth; ++i) {
        all += "</unknown>";
    }
    return all;
}

TEST(FaultyDocuments, AreTreatedAsTheTableSays) {
    const std::vector<Case> cases = {
        {"nothing is wrong", "<name", "<name", Clean, ""},
        {"no byte", nullptr, "", Refused, ""},
        {"another document", nullptr, "<svg/>", Refused, "begins with"},
        {"document type", "<qxdraw version", "<!DOCTYPE qxdraw><qxdraw version", Refused, ""},
        {"entities that grow", nullptr,
         "<!DOCTYPE q [<!ENTITY a \"aaaa\"><!ENTITY b \"&a;&a;\">]><qxdraw>&b;</qxdraw>", Refused,
         ""},
        {"outside file", nullptr,
         "<!DOCTYPE q [<!ENTITY a SYSTEM \"file:///etc/passwd\">]><qxdraw>&a;</qxdraw>", Refused,
         ""},
        {"unknown entity", "value=\"d\"", "value=\"&d;\"", Refused, ""},
        {"too deep", "<instances>", "<instances>" + nested(600), Refused, "500 deep"},
        {"deep, but not too deep", "<instances>", "<instances>" + nested(400), Clean, ""},
        {"identifier twice", "id=\"n2\"", "id=\"n1\"", Refused, "stands twice"},
        {"no version", " version=\"1\"", "", Clean, "version"},
        {"newer version", "version=\"1\"", "version=\"7\"", Clean, "newer"},
        {"no instances", nullptr, "<qxdraw version=\"1\"/>", Repaired, "no <instances>"},
        {"no graphs", nullptr, "<qxdraw version=\"1\"><instances/></qxdraw>", Clean, ""},
        {"end that is nothing", "source=\"n4\"", "source=\"n9\"", Repaired, "names no node"},
        {"end of another kind", "source=\"n4\"", "source=\"g1\"", Repaired, "a graph, no node"},
        {"end that is missing", " source=\"n4\"", "", Repaired, "source"},
        {"edge in the wrong graph", "e1\" source=\"n1\"", "e1\" source=\"n4\"", Repaired, "graph"},
        {"connector of another node", "source=\"n1\"", "source=\"n2\"", Repaired, "connector"},
        {"shape that is nothing", "resource=\"s1\"", "resource=\"s2\"", Repaired, "no shape"},
        {"graph in itself", "value=\"g2\"", "value=\"g1\"", Repaired, "nested"},
        {"two owners", "<node id=\"n3\"/>",
         "<node id=\"n3\"><childGraph id=\"r2\" value=\"g2\"/></node>", Repaired, "nested"},
        {"cycle", "<node id=\"n4\"/>",
         "<node id=\"n4\"><childGraph id=\"r2\" value=\"g1\"/></node>", Repaired, "nested"},
        {"relation of nothing", "childGraphRelation=\"r1\"", "childGraphRelation=\"n1\"", Repaired,
         "relation"},
        {"hidden edge between graphs", "<hidden id=\"e3\"/>", "<hidden id=\"e2\"/>", Repaired,
         "cannot be hidden"},
        {"hidden graph", "<hidden id=\"e3\"/>", "<hidden id=\"g2\"/>", Repaired, "no edge"},
        {"folder without a graph", "<folder id=\"n1\"/>", "<folder id=\"n2\"/>", Clean,
         "holds no graph"},
        {"meta-edge that is a node", "<metaEdge id=\"e2\"/>", "<metaEdge id=\"n2\"/>", Repaired,
         "no edge"},
        {"root that is nothing", "<rootGraph value=\"g1\"/>", "<rootGraph value=\"n1\"/>", Repaired,
         "no graph"},
        {"coordinate out of range", "x=\"100\"", "x=\"1e40\"", Repaired, "range"},
        {"coordinate that is none", "x=\"100\"", "x=\"1OO\"", Repaired, "no number"},
        {"infinite coordinate", "x=\"100\"", "x=\"inf\"", Repaired, "no number"},
        {"label beyond its edge", "value=\"0.25\"", "value=\"1.2\"", Repaired, "beyond"},
        {"second graph of edges between", "<complexity>", "<intergraph id=\"g9\"/><complexity>",
         Repaired, "already"},
        {"unknown elements", "<name value=\"d\"/>", "<x y=\"z\"><node/></x>text<!-- c --><?p i?>",
         Clean, ""}};
    for (const Case& one : cases) {
        SCOPED_TRACE(one.what);
        std::string bytes = one.to;
        if (one.from != nullptr) {
            bytes = Small;
            const std::size_t at = bytes.find(one.from);
            ASSERT_NE(at, std::string::npos);
            bytes.replace(at, std::string(one.from).size(), one.to);
        }
        int isRead = -1;
        EXPECT_EQ(faultOf(bytes, &isRead), "");
        EXPECT_EQ(isRead, one.outcome == Refused ? 0 : 1);
        QxFactory factory;
        const Ref<QxDGraphManager> manager(factory.newDGraphManager());
        QxDGraphManagerXMLReader reader(bytes.data(), bytes.size());
        reader.read(manager.get());
        const bool hasRepair =
            std::any_of(reader.messages().begin(), reader.messages().end(),
                        [](const QxXMLMessage& message) { return message.severity == QxXMLError; });
        EXPECT_EQ(hasRepair, one.outcome == Repaired) << toldBy(reader);
        EXPECT_NE(toldBy(reader).find(one.told), std::string::npos) << toldBy(reader);
        EXPECT_EQ(manager->numberOfGraphs() > 0, isRead == 1);
    }
}

TEST(FaultyDocuments, LimitsCanBeSet) {
    const auto refused = [](const QxXMLLimits& limits) {
        QxFactory factory;
        const Ref<QxDGraphManager> manager(factory.newDGraphManager());
        std::istringstream stream(Small);
        QxDGraphManagerXMLReader reader(&stream);
        reader.limits(limits);
        return reader.read(manager.get()) == 0 && manager->numberOfGraphs() == 0;
    };
    QxXMLLimits limits;
    EXPECT_FALSE(refused(limits));
    limits.bytes = Small.size() - 1;
    EXPECT_TRUE(refused(limits));
    limits = {};
    limits.objects = 5;
    EXPECT_TRUE(refused(limits));
    limits = {};
    limits.depth = 4;
    EXPECT_TRUE(refused(limits));
    limits = {};
    limits.attributeLength = 3;
    EXPECT_TRUE(refused(limits));
}

TEST(PlainDocuments, ArePlacedAsTheySay) {
    QxFactory factory;
    const Ref<QxDGraphManager> manager(factory.newDGraphManager());
    QxDGraphManagerXMLReader reader(Small.data(), Small.size());
    ASSERT_EQ(reader.read(manager.get()), 1) << toldBy(reader);
    const QxDNode* const outer = manager->pAnchorGraph()->pFirstNode();
    const QxDGraph* const nested = outer->pNestedGraph();
    ASSERT_NE(nested, nullptr);
    EXPECT_EQ(outer->iCenter(), QxPoint(5, -7));
    EXPECT_EQ(*outer->pExpandedNodeExtension()->pPreExpandSize(), QxSize(30, 20));
    QxRect bounds = *nested->pBoundingRect();
    nested->expandedTransformRect(outer->pOwnerGraph(), bounds);
    const QxRect view = nested->ntViewRectInNodeCoordSystem();
    EXPECT_EQ(bounds.left() - view.left(), 5);
    EXPECT_EQ(view.right() - bounds.right(), 6);
    EXPECT_EQ(view.top() - bounds.top(), 7);
    EXPECT_EQ(bounds.bottom() - view.bottom(), 8);
    const QxDEdge* const edge = manager->pAnchorGraph()->pFirstEdge();
    EXPECT_EQ(edge->pSourceConnector(), outer->pQueryConnectorManager()->pFirstConnector());
    const QxConnector* const end = edge->pInternalTargetConnector();
    ASSERT_NE(end, nullptr);
    EXPECT_EQ(end->ntCenter(), QxPoint(80, 10));
    EXPECT_EQ(end->getPerMil(), QxPerMil(0, 0));  // a constant offset within a graph
    EXPECT_EQ(manager->pQueryIntergraph()->pFirstEdge()->isMetaEdge(), 1);
    EXPECT_EQ(manager->pAnchorGraph()->hasHiddenNodes(), 1);
    EXPECT_EQ(outer->isFolderNode(), 1);
}

}  // namespace
