// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Each graph is laid out for itself, as a document of its own with one node for each of its
// members. An edge counts in one graph alone: the innermost one around both ends, where it joins
// two members (or one with itself). So all layouts together see each edge once, and the costs of a
// graph are those of its own members.
//
// While the layout runs, centers are those within each graph. The middle of its box, which is what
// its node stands for in the graph around, is kept beside it, and the way from the middles outward
// gives the places in the whole drawing. Turning needs these once for each level of the nesting.

#include "model/NestedLayout.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

#include "model/Compaction.h"
#include "model/Nesting.h"
#include "model/StartPlacement.h"
#include "model/Turning.h"

namespace qxdraw {

namespace {

std::size_t at(int index) {
    return static_cast<std::size_t>(index);
}

class NestedLayout {
public:
    NestedLayout(GraphDocument& document, const Drawing& drawing,
                 const NestedLayoutOptions& options)
        : m_document(document),
          m_drawing(drawing),
          m_options(options),
          m_order(outsideIn(document)),
          m_depths(depthsOf(document)),
          m_graphIn(graphsInNodes(document)),
          m_members(document.graphs.size()),
          m_edges(document.graphs.size()),
          m_crossings(document.graphs.size()),
          m_middles(document.graphs.size()),
          m_given(document.graphs.size()),
          m_isPlaced(document.graphs.size(), 0) {}

    void run() {
        for (std::size_t i = 1; i < m_document.graphs.size(); ++i) {
            m_isNested = m_isNested || isShown(static_cast<int>(i));
        }
        findMembers();
        findEdges();
        if (m_options.spring) {
            forgetCenters();
        } else {
            findGivenBoxes();
        }
        for (auto graph = m_order.rbegin(); graph != m_order.rend(); ++graph) {
            if (isShown(*graph)) {
                layOutGraph(*graph);
                fitBox(*graph);
            }
        }
        if (m_options.spring) {
            turnAll();
        }
        makeAbsolute();
    }

private:
    struct Edge {
        std::size_t index;
        int source;
        int target;
    };
    struct CrossingEnd {
        std::size_t edge;
        int member;
        bool atSource;
    };

    DocumentNode& nodeAt(int index) { return m_document.nodes[at(index)]; }
    bool isShown(int graph) const { return m_drawing.graph(at(graph)).isVisible() != 0; }
    /// The graph that a node shows; -1 for none, and for a closed node.
    int shownIn(int node) const {
        return m_drawing.node(at(node)).expanded() != 0 ? m_graphIn[at(node)] : -1;
    }

    void findMembers() {
        for (std::size_t i = 0; i < m_document.nodes.size(); ++i) {
            if (m_drawing.node(i).isVisible() != 0) {
                m_members[at(m_document.nodes[i].graph)].push_back(static_cast<int>(i));
            }
        }
    }

    void findEdges() {
        constexpr std::size_t MostCrossings = 4000;  // more of them do not tell more
        for (std::size_t i = 0; i < m_document.edges.size(); ++i) {
            if (m_drawing.edge(i).isVisible() == 0) {
                continue;
            }
            const DocumentEdge& edge = m_document.edges[i];
            const CommonView view =
                commonViewOf(m_document, m_depths, edge.source, edge.target,
                             [&](int graph, int member, bool atSource) {
                                 if (m_crossings[at(graph)].size() < MostCrossings) {
                                     m_crossings[at(graph)].push_back({i, member, atSource});
                                 }
                             });
            const bool joinsOuterWithInner =
                view.source == view.target && edge.source != edge.target;
            if (!joinsOuterWithInner) {
                m_edges[at(view.graph)].push_back({i, view.source, view.target});
            }
        }
    }

    void forgetCenters() {
        for (DocumentNode& node : m_document.nodes) {
            node.center.reset();
        }
        for (DocumentGraph& graph : m_document.graphs) {
            graph.box.reset();
        }
    }

    /// What the file says of the place of graphs, also of those that are not shown.
    void findGivenBoxes() {
        const auto include = [](std::optional<DocumentBox>& box, const DocumentBox& more) {
            box = united(box, more);
        };
        for (const DocumentNode& node : m_document.nodes) {
            if (node.center) {
                include(m_given[at(node.graph)], boxOf(node));
            }
        }
        for (auto graph = m_order.rbegin(); graph + 1 != m_order.rend(); ++graph) {
            std::optional<DocumentBox>& given = m_given[at(*graph)];
            if (m_document.graphs[at(*graph)].box) {
                include(given, *m_document.graphs[at(*graph)].box);
            }
            if (given) {
                DocumentNode& node = nodeAt(m_document.graphs[at(*graph)].node);
                node.center = node.center ? node.center : given->center();
                include(m_given[at(m_document.graphs[at(*graph)].parent)], *given);
            }
        }
    }

    /// Whether what is in the graph has its place in the whole drawing already.
    bool isGiven(int graph) const {
        return !m_options.spring &&
               std::any_of(m_members[at(graph)].begin(), m_members[at(graph)].end(),
                           [&](int member) { return m_document.nodes[at(member)].center; });
    }

    /// What is left free between the members of a graph: where graphs are nested drawings get
    /// close, and edges and their labels need some room.
    double roomAround(int graph) {
        constexpr double LabelPart = 0.6;
        if (!m_isNested) {
            return 0;
        }
        double widths = 0;
        for (const Edge& edge : m_edges[at(graph)]) {
            widths += widthOf(wrapEdgeLabel(m_document.edges[edge.index].label), EdgeFontSize);
        }
        const auto count = static_cast<double>(m_edges[at(graph)].size());
        return BoxSpacing::Neighbour + (count > 0 ? LabelPart * widths / count : 0);
    }

    /// The members of a graph and the edges between them.
    GraphDocument membersOf(int graph) {
        GraphDocument part;
        part.directed = m_document.directed;
        std::unordered_map<int, int> numberOf;
        const double room = roomAround(graph);
        for (const int member : m_members[at(graph)]) {
            numberOf.emplace(member, static_cast<int>(part.nodes.size()));
            DocumentNode& copy = part.nodes.emplace_back(nodeAt(member));
            copy.graph = 0;
            copy.width += room;
            copy.height += room;
        }
        for (const Edge& edge : m_edges[at(graph)]) {
            DocumentEdge& copy = part.edges.emplace_back();
            copy.source = numberOf.at(edge.source);
            copy.target = numberOf.at(edge.target);
            copy.label = m_document.edges[edge.index].label;
        }
        return part;
    }

    void takeCenters(int graph, const GraphDocument& part) {
        const std::vector<int>& members = m_members[at(graph)];
        for (std::size_t i = 0; i < members.size(); ++i) {
            nodeAt(members[i]).center = part.nodes[i].center;
        }
    }

    void layOutGraph(int graph) {
        if (m_members[at(graph)].empty()) {
            return;
        }
        m_isPlaced[at(graph)] = isGiven(graph) ? 1 : 0;
        GraphDocument part = membersOf(graph);
        SpringLayoutOptions options;
        options.edgeLength =
            m_options.edgeLength > 0 ? m_options.edgeLength : comfortableEdgeLength(part);
        options.keepOverlaps = m_options.keepOverlaps;
        if (m_options.edgeLength <= 0 && hasMetaEdges(graph)) {
            constexpr double ForWideLines = 1.5;
            options.edgeLength *= ForWideLines;
        }
        const double own =
            static_cast<double>(part.nodes.size()) * static_cast<double>(part.nodes.size());
        if (m_options.onProgress) {
            options.onProgress = [this, own](double share) {
                m_options.onProgress((m_done + share * own) / allWork());
            };
        }
        placeNodes(part, options.edgeLength);
        if (m_options.spring) {
            layOut(part, options);
            if (m_isNested && !m_options.keepOverlaps) {
                compact(part);
            }
        }
        m_done += own;
        takeCenters(graph, part);
    }

    bool hasMetaEdges(int graph) const {
        return std::any_of(
            m_edges[at(graph)].begin(), m_edges[at(graph)].end(),
            [&](const Edge& edge) { return m_document.edges[edge.index].standsFor > 0; });
    }

    double allWork() {
        if (m_all == 0) {
            for (const std::vector<int>& members : m_members) {
                m_all += static_cast<double>(members.size()) * static_cast<double>(members.size());
            }
        }
        return m_all;
    }

    /// The node that shows the graph becomes as large as its box; the same sum that the fit of the
    /// drawing does.
    void fitBox(int graph) {
        if (graph == 0) {
            return;
        }
        const TextBlock title = titleOf(m_document, graph);
        const bool hasTitle = !title.lines.empty();
        std::optional<DocumentBox> box;
        for (const int member : m_members[at(graph)]) {
            box = united(box, boxOf(nodeAt(member)));
        }
        DocumentBox all = box.value_or(DocumentBox{});
        all.right = std::max(all.right, all.left + title.width() * BoldTimesAsWide);
        all.top += hasTitle ? title.height() + BoxSpacing::TitleGap : 0;
        constexpr double P = BoxSpacing::Padding;
        all = {all.left - P, all.bottom - P, all.right + P, all.top + P};
        if (const auto& given = m_document.graphs[at(graph)].box) {
            if (!isPlaced(graph)) {
                const double dx = given->center().x - all.center().x;
                const double dy = given->center().y - all.center().y;
                moveMembers(graph, dx, dy);
                all = {all.left + dx, all.bottom + dy, all.right + dx, all.top + dy};
            }
            all = united(all, *given);
            m_isPlaced[at(graph)] = 1;
        }
        m_middles[at(graph)] = all.center();
        DocumentNode& node = nodeAt(m_document.graphs[at(graph)].node);
        node.width = std::ceil(all.width());
        node.height = std::ceil(all.height());
        if (!m_options.spring && isPlaced(graph)) {
            node.center = all.center();
        }
    }

    bool isPlaced(int graph) const { return m_isPlaced[at(graph)] != 0; }

    void moveMembers(int graph, double dx, double dy) {
        for (const int member : m_members[at(graph)]) {
            DocumentPoint& center = *nodeAt(member).center;
            center = {center.x + dx, center.y + dy};
        }
    }

    // --- Turning

    /// How far what is in each graph lies from its place in the whole drawing.
    std::vector<DocumentPoint> shifts() {
        std::vector<DocumentPoint> shifts(m_document.graphs.size());
        for (const int graph : m_order) {
            if (graph != 0 && isShown(graph)) {
                shifts[at(graph)] = shiftOf(graph, shifts);
            }
        }
        return shifts;
    }

    DocumentPoint shiftOf(int graph, const std::vector<DocumentPoint>& shifts) {
        const DocumentGraph& source = m_document.graphs[at(graph)];
        const DocumentPoint& around = shifts[at(source.parent)];
        const DocumentPoint& node = *nodeAt(source.node).center;
        const DocumentPoint& middle = m_middles[at(graph)];
        return {around.x + node.x - middle.x, around.y + node.y - middle.y};
    }

    void turnAll() {
        std::vector<DocumentPoint> shift = shifts();
        std::vector<char> isTurned(m_document.graphs.size(), 0);
        bool anyQuarter = false;
        for (const int graph : m_order) {
            if (graph == 0 || !isShown(graph)) {
                continue;
            }
            shift[at(graph)] = shiftOf(graph, shift);  // what is around may have been turned
            const Turn turn = bestTurn(crossingsOf(graph, shift));
            if (!turn.isNone()) {
                turnMembers(graph, turn);
                anyQuarter = anyQuarter || turn.isQuarter();
                isTurned[at(graph)] = 1;
            }
        }
        if (std::find(isTurned.begin(), isTurned.end(), 1) != isTurned.end()) {
            settle(anyQuarter);
        }
    }

    std::vector<Crossing> crossingsOf(int graph, const std::vector<DocumentPoint>& shift) {
        std::vector<Crossing> crossings;
        const DocumentPoint& middle = m_middles[at(graph)];
        const auto placeOf = [&](int node) {
            const DocumentPoint& center = *nodeAt(node).center;
            const DocumentPoint& by = shift[at(nodeAt(node).graph)];
            return DocumentPoint{center.x + by.x, center.y + by.y};
        };
        for (const CrossingEnd& crossing : m_crossings[at(graph)]) {
            const DocumentEdge& edge = m_document.edges[crossing.edge];
            const DocumentPoint end = placeOf(crossing.atSource ? edge.source : edge.target);
            const DocumentPoint other = placeOf(crossing.atSource ? edge.target : edge.source);
            const DocumentPoint member = placeOf(crossing.member);
            const DocumentPoint center{middle.x + shift[at(graph)].x,
                                       middle.y + shift[at(graph)].y};
            crossings.push_back({{member.x - center.x, member.y - center.y},
                                 {end.x - member.x, end.y - member.y},
                                 {other.x - center.x, other.y - center.y}});
        }
        return crossings;
    }

    void turnMembers(int graph, const Turn& turn) {
        const DocumentPoint& middle = m_middles[at(graph)];
        for (const int member : m_members[at(graph)]) {
            DocumentPoint& center = *nodeAt(member).center;
            const DocumentPoint turned = turn({center.x - middle.x, center.y - middle.y});
            center = {std::round(middle.x + turned.x), std::round(middle.y + turned.y)};
        }
    }

    /// Boxes have their titles at the top still, and after a quarter turn other sizes: they are
    /// fitted anew from the inside out, and members pushed apart that have come too close.
    void settle(bool anyQuarter) {
        for (auto graph = m_order.rbegin(); graph != m_order.rend(); ++graph) {
            if (!isShown(*graph)) {
                continue;
            }
            if (anyQuarter && !m_options.keepOverlaps && m_members[at(*graph)].size() > 1) {
                GraphDocument part = membersOf(*graph);
                pushApart(part);
                takeCenters(*graph, part);
            }
            fitBox(*graph);
        }
    }

    void makeAbsolute() {
        for (const int graph : m_order) {
            if (graph == 0 || !isShown(graph)) {
                continue;
            }
            const DocumentPoint& center = *nodeAt(m_document.graphs[at(graph)].node).center;
            if (!isPlaced(graph)) {
                moveMembers(graph, std::round(center.x - m_middles[at(graph)].x),
                            std::round(center.y - m_middles[at(graph)].y));
            }
        }
    }

    GraphDocument& m_document;
    const Drawing& m_drawing;
    const NestedLayoutOptions& m_options;
    const std::vector<int> m_order;
    const std::vector<int> m_depths;
    const std::vector<int> m_graphIn;
    std::vector<std::vector<int>> m_members;  ///< the shown nodes of each graph
    std::vector<std::vector<Edge>> m_edges;   ///< as seen in each graph
    std::vector<std::vector<CrossingEnd>> m_crossings;
    std::vector<DocumentPoint> m_middles;  ///< of the boxes, in the coordinates of their graphs
    std::vector<std::optional<DocumentBox>> m_given;
    std::vector<char> m_isPlaced;  ///< graphs with coordinates of the whole drawing
    bool m_isNested = false;       ///< any nested graph is shown
    double m_done = 0;
    double m_all = 0;
};

}  // namespace

void layOutNested(GraphDocument& document, const Drawing& drawing,
                  const NestedLayoutOptions& options) {
    NestedLayout(document, drawing, options).run();
}

}  // namespace qxdraw
