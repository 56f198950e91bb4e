// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Random nested documents, of which random parts are shown, against what a plain walk over the
// document says must be seen; and a few documents with trouble in their nesting.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>

#include "import/DocumentReader.h"
#include "model/Arranging.h"
#include "model/Neighbourhood.h"
#include "model/Nesting.h"
#include "model/Turning.h"
#include "tool/import/ImportTesting.h"

namespace qxdraw {
namespace {

using ::testing::ElementsAre;
using testing::errorOf;
using ::testing::HasSubstr;

class RandomWorld {
public:
    explicit RandomWorld(unsigned seed) : m_random(seed) {
        const int graphs = below(9);
        for (int i = 1; i <= graphs; ++i) {
            m_document.graphs.push_back(
                {"title " + std::to_string(i), below(i), -1, "cluster_" + std::to_string(i), {}});
        }
        const int nodes = 1 + below(25);
        for (int i = 0; i < nodes; ++i) {
            DocumentNode& node = m_document.nodes.emplace_back();
            node.id = node.label = "n" + std::to_string(i);
            node.graph = below(graphs + 1);
        }
        std::set<std::pair<int, int>> joined;
        for (int i = below(40); i > 0; --i) {
            const int a = below(nodes);
            const int b = below(nodes);
            if (a != b && joined.emplace(std::minmax(a, b)).second) {
                DocumentEdge& edge = m_document.edges.emplace_back();
                edge.source = a;
                edge.target = b;
                if (m_document.nodes[index(b)].graph != 0 && below(6) == 0) {
                    edge.targetGraph = m_document.nodes[index(b)].graph;
                }
            }
        }
        m_nested = m_document;
        nestDocument(m_nested);
        chooseView();
    }

    GraphDocument document() const { return m_document; }
    /// Folder nodes come after those of the document.
    std::string nameOf(const GraphDocument& shown, int node) const {
        return index(node) < m_nested.nodes.size() ? shown.nodes[index(node)].id : "folder";
    }
    const ViewOptions& view() const { return m_view; }

    /// How many edges each pair of shown things is joined by, stand-ins included.
    std::map<std::pair<std::string, std::string>, int> expectedEdges() const {
        std::map<std::pair<std::string, std::string>, int> edges;
        for (const DocumentEdge& edge : m_nested.edges) {
            const std::string source = standIn(edge.source);
            const std::string target = standIn(edge.target);
            if (!source.empty() && !target.empty() && source != target) {
                ++edges[{source, target}];
            }
        }
        return edges;
    }

    /// What is seen of a node, by the outermost thing in which it disappears; empty: nothing.
    std::string standIn(int node) const {
        std::string seen = m_nested.nodes[index(node)].id;
        bool isOwn = true;
        for (int at = node; at >= 0;
             at = m_nested.graphs[index(m_nested.nodes[index(at)].graph)].node) {
            const std::string& id = m_nested.nodes[index(at)].id;
            if (m_hidden.contains(id)) {
                return {};
            }
            seen = !isOwn && m_collapsed.contains(id) ? id : seen;
            seen = m_folded.contains(id) ? "folder" : seen;
            isOwn = false;
        }
        return seen;
    }

private:
    static std::size_t index(int value) { return static_cast<std::size_t>(value); }
    int below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }

    void chooseView() {
        for (std::size_t i = 1; i < m_nested.graphs.size(); ++i) {
            if (below(4) == 0) {
                m_collapsed.insert(m_nested.graphs[i].id);
                m_view.collapse.push_back(m_nested.graphs[i].id);
            }
        }
        const int graph = below(static_cast<int>(m_nested.graphs.size()));
        std::string folded;
        for (const DocumentNode& node : m_nested.nodes) {
            if (below(12) == 0) {
                m_hidden.insert(node.id);
                m_view.hide.push_back(node.id);
            } else if (node.graph == graph && below(3) == 0) {
                m_folded.insert(node.id);
                folded += (folded.empty() ? "" : ",") + node.id;
            }
        }
        if (!folded.empty()) {
            m_view.fold.push_back(folded);
        }
    }

    std::mt19937 m_random;
    GraphDocument m_document;
    GraphDocument m_nested;
    ViewOptions m_view;
    std::set<std::string> m_collapsed;
    std::set<std::string> m_hidden;
    std::set<std::string> m_folded;
};

bool lieApart(const QxRect& a, const QxRect& b) {
    return a.right() <= b.left() || b.right() <= a.left() || a.top() <= b.bottom() ||
           b.top() <= a.bottom();
}

void checkPlaces(const Drawing& drawing) {
    for (std::size_t i = 0; i < drawing.numberOfNodes(); ++i) {
        const QxDNode& node = drawing.node(i);
        if (node.isVisible() == 0) {
            continue;
        }
        QxRect seen;
        node.getBoundingRect(seen, 0);
        EXPECT_EQ(seen, *node.pIRect()) << "node " << i;
        if (const QxDNode* box = node.pOwnerGraph()->pNestedWithinNode()) {
            const QxRect& around = *box->pIRect();
            EXPECT_TRUE(seen.left() > around.left() && seen.right() < around.right() &&
                        seen.bottom() > around.bottom() && seen.top() < around.top())
                << "node " << i;
        }
        for (std::size_t j = 0; j < i; ++j) {
            const QxDNode& other = drawing.node(j);
            EXPECT_TRUE(other.isVisible() == 0 || other.pOwnerGraph() != node.pOwnerGraph() ||
                        lieApart(seen, *other.pIRect()))
                << "nodes " << j << " and " << i;
        }
    }
}

TEST(NestedDrawing, ShowsWhatAPlainWalkSaysInBoxesThatHoldIt) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const RandomWorld world(seed);
        GraphDocument document = world.document();
        ArrangingOptions options;
        options.view = world.view();
        const auto drawing = arrange(document, options, {});
        EXPECT_EQ(drawing->manager().checkInvariants(), 1);
        ASSERT_EQ(drawing->numberOfNodes(), document.nodes.size());
        ASSERT_EQ(drawing->numberOfEdges(), document.edges.size());
        std::map<std::pair<std::string, std::string>, int> edges;
        for (std::size_t i = 0; i < drawing->numberOfEdges(); ++i) {
            const DocumentEdge& edge = document.edges[i];
            if (drawing->edge(i).isVisible() != 0) {
                edges[{world.nameOf(document, edge.source), world.nameOf(document, edge.target)}] +=
                    std::max(edge.standsFor, 1);
            }
        }
        EXPECT_EQ(edges, world.expectedEdges());
        for (std::size_t i = 0; i < world.document().nodes.size(); ++i) {
            const int node = static_cast<int>(i);
            EXPECT_EQ(drawing->node(i).isVisible() != 0,
                      world.standIn(node) == document.nodes[i].id)
                << document.nodes[i].id;
        }
        checkPlaces(*drawing);
    }
}

TEST(NestedDrawing, KeepsPlacesAndBoxesOfTheFile) {
    GraphDocument document = readDocumentText(R"(graph [
        node [ id 1 isGroup 1 label "g" graphics [ x 100 y 0 w 300 h 200 ] ]
        node [ id 2 gid 1 graphics [ x 60 y 0 w 40 h 30 ] ]
        node [ id 3 gid 1 graphics [ x 290 y 40 w 40 h 30 ] ]
        node [ id 4 graphics [ x 500 y 0 w 40 h 30 ] ]
        node [ id 5 isGroup 1 label "closed" graphics [ x 0 y 400 w 90 h 90 ] ]
        edge [ source 2 target 4 ] ])",
                                              "a.gml");
    ArrangingOptions options;
    options.view.collapse = {"closed"};
    const auto drawing = arrange(document, options, {});
    EXPECT_EQ(drawing->node(1).ntCenter(), QxPoint(60, 0));
    const QxRect& box = *drawing->node(0).pIRect();
    EXPECT_EQ(box.left(), -50);
    EXPECT_EQ(box.top(), 100);
    EXPECT_EQ(box.bottom(), -100);
    EXPECT_GT(box.right(), 310) << "what sticks out makes the box larger";
    EXPECT_EQ(drawing->node(4).ntCenter(), QxPoint(0, -400));
    EXPECT_LT(drawing->node(4).ntWidth(), 90) << "closed it is no larger than its name needs";
    checkPlaces(*drawing);
}

TEST(NestedDrawing, TakesTroubleInTheNesting) {
    EXPECT_EQ(errorOf("graph [ node [ id 1 gid 2 ]\nnode [ id 2 gid 3 ]\nnode [ id 3 gid 2 ] ]"),
              "2: group 2 lies in itself");
    EXPECT_EQ(errorOf("graph [ node [ id 1 gid 1 ] ]"), "1: group 1 lies in itself");
    EXPECT_EQ(errorOf("graph [ node [ id 1\ngid 7 ] ]"),
              "2: node 1 names group 7, which does not exist");
    std::string deep = "graph [ ";
    for (int i = 1; i <= 502; ++i) {
        deep += "node [ id " + std::to_string(i) + (i > 1 ? " gid " + std::to_string(i - 1) : "") +
                " ] ";
    }
    EXPECT_THAT(errorOf(deep + "]"), HasSubstr("more than 500 groups inside each other"));
    const GraphDocument clusters = readDocumentText(
        "digraph { subgraph cluster_a { x y } subgraph cluster_b { x z }"
        "x -> z [lhead=cluster_b] x -> z [lhead=cluster_q] x -> y [ltail=cluster_a] }",
        "a.dot");
    ASSERT_EQ(clusters.warnings.size(), 2U);
    EXPECT_EQ(clusters.warnings[0].text,
              "node 'x' stands in several clusters; it is shown in 'cluster_a'");
    EXPECT_EQ(
        clusters.warnings[1].text,
        "lhead of the edge from 'x' to 'z' is passed over: there is no cluster 'cluster_q' (2 "
        "such edges in all)");
    EXPECT_EQ(clusters.edges[0].targetGraph, 2);
    std::string nested = "digraph {";
    for (int i = 0; i < 499; ++i) {
        nested += " subgraph cluster_" + std::to_string(i) + " { n" + std::to_string(i);
    }
    GraphDocument document =
        readDocumentText(nested + std::string(499, '}') + "n0 -> n498 }", "a.dot");
    checkPlaces(*arrange(document, {}, {}));
}

TEST(Neighbourhood, FollowsEdgesThroughNestedGraphs) {
    GraphDocument document = readDocumentText(
        "digraph { subgraph cluster_a { b c } subgraph cluster_d { e } a -> b -> e -> f; g -> c }",
        "a.dot");
    nestDocument(document);
    const auto names = [&](const std::vector<char>& marks) {
        std::string text;
        for (std::size_t i = 0; i < marks.size(); ++i) {
            text += marks[i] != 0 ? document.nodes[i].id + " " : "";
        }
        return text;
    };
    const auto find = [&](const std::string& id) {
        const auto node = std::find_if(document.nodes.begin(), document.nodes.end(),
                                       [&](const DocumentNode& one) { return one.id == id; });
        return std::vector<int>{static_cast<int>(node - document.nodes.begin())};
    };
    EXPECT_EQ(names(neighbourhoodOf(document, find("b"), 1, true, false)),
              "b e cluster_a cluster_d ");
    EXPECT_EQ(names(neighbourhoodOf(document, find("b"), 2, true, true)),
              "b e a f cluster_a cluster_d ");
    EXPECT_EQ(names(neighbourhoodOf(document, find("cluster_a"), 1, false, true)),
              "b c a g cluster_a ");
    EXPECT_EQ(names(neighbourhoodOf(document, find("e"), 0, true, true)), "e cluster_d ");
}

TEST(Turning, TakesTheTurnThatShortensEdgesMost) {
    const auto turned = [](const DocumentPoint& member, const DocumentPoint& other) {
        // A second member lies across and has the far end across, so that only one turn is best.
        const Turn turn = bestTurn({{member, {}, {100 * other.x, 100 * other.y}},
                                    {{-member.y, member.x}, {}, {-90 * other.y, 90 * other.x}}});
        const DocumentPoint place = turn(member);
        return std::pair(place.x, place.y);
    };
    EXPECT_EQ(turned({10, 2}, {1, 0.2}), std::pair(10.0, 2.0)) << "nothing to gain";
    EXPECT_EQ(turned({10, 2}, {-1, -0.2}), std::pair(-10.0, -2.0));
    EXPECT_EQ(turned({10, 2}, {-0.2, 1}), std::pair(-2.0, 10.0));
}

}  // namespace
}  // namespace qxdraw
