// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "model/Nesting.h"

#include <algorithm>
#include <numeric>

namespace qxdraw {

namespace {

std::size_t at(int index) {
    return static_cast<std::size_t>(index);
}

/// A node for a graph that stands in none.
void addContainer(GraphDocument& document, DocumentGraph& graph) {
    graph.node = static_cast<int>(document.nodes.size());
    DocumentNode& node = document.nodes.emplace_back();
    node.id = graph.id;
    node.label = graph.label;
    node.graph = graph.parent;
}

/// What the file says of the node is about the box that shows the graph.
void takeOverBox(DocumentGraph& graph, DocumentNode& node) {
    graph.label = node.label;
    if (node.center && node.width > 0 && node.height > 0) {
        graph.box = boxOf(node);
    }
    node.width = node.height = 0;
    node.fields = nullptr;
    node.shape = {};
}

}  // namespace

void nestDocument(GraphDocument& document) {
    for (std::size_t i = 1; i < document.graphs.size(); ++i) {
        DocumentGraph& graph = document.graphs[i];
        if (graph.node < 0) {
            addContainer(document, graph);
        } else {
            takeOverBox(graph, document.nodes[at(graph.node)]);
        }
    }
    for (DocumentEdge& edge : document.edges) {
        if (edge.sourceGraph >= 0) {
            edge.source = document.graphs[at(edge.sourceGraph)].node;
            edge.sourcePort = -1;
        }
        if (edge.targetGraph >= 0) {
            edge.target = document.graphs[at(edge.targetGraph)].node;
            edge.targetPort = -1;
        }
    }
}

DocumentBox boxOf(const DocumentNode& node) {
    return {node.center->x - node.width / 2, node.center->y - node.height / 2,
            node.center->x + node.width / 2, node.center->y + node.height / 2};
}

DocumentBox united(const std::optional<DocumentBox>& box, const DocumentBox& more) {
    return box ? DocumentBox{std::min(box->left, more.left), std::min(box->bottom, more.bottom),
                             std::max(box->right, more.right), std::max(box->top, more.top)}
               : more;
}

std::vector<int> depthsOf(const GraphDocument& document) {
    constexpr int Unknown = -1;
    std::vector<int> depths(document.graphs.size(), Unknown);
    depths.front() = 0;
    std::vector<int> way;
    for (std::size_t i = 1; i < depths.size(); ++i) {
        for (int graph = static_cast<int>(i); depths[at(graph)] == Unknown;
             graph = document.graphs[at(graph)].parent) {
            way.push_back(graph);
        }
        for (; !way.empty(); way.pop_back()) {
            const int graph = way.back();
            depths[at(graph)] = depths[at(document.graphs[at(graph)].parent)] + 1;
        }
    }
    return depths;
}

std::vector<int> outsideIn(const GraphDocument& document) {
    const std::vector<int> depths = depthsOf(document);
    std::vector<int> order(document.graphs.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [&](int a, int b) { return depths[at(a)] < depths[at(b)]; });
    return order;
}

std::vector<int> graphsInNodes(const GraphDocument& document) {
    std::vector<int> graphs(document.nodes.size(), -1);
    for (std::size_t i = 1; i < document.graphs.size(); ++i) {
        if (document.graphs[i].node >= 0) {
            graphs[at(document.graphs[i].node)] = static_cast<int>(i);
        }
    }
    return graphs;
}

CommonView commonViewOf(const GraphDocument& document, const std::vector<int>& depths, int source,
                        int target,
                        const std::function<void(int graph, int member, bool atSource)>& onCross) {
    int here = document.nodes[at(source)].graph;
    int there = document.nodes[at(target)].graph;
    const auto leave = [&](int& graph, int& member, bool atSource) {
        if (onCross) {
            onCross(graph, member, atSource);
        }
        member = document.graphs[at(graph)].node;
        graph = document.graphs[at(graph)].parent;
    };
    while (here != there) {
        if (depths[at(here)] >= depths[at(there)]) {
            leave(here, source, true);
        } else {
            leave(there, target, false);
        }
    }
    return {here, source, target};
}

TextBlock titleOf(const GraphDocument& document, int graph) {
    constexpr double Widest = 240;
    constexpr std::size_t MostLines = 2;
    const std::string& label = document.graphs[at(graph)].label;
    TextBlock title{wrapText(label, TitleFontSize, Widest, MostLines), TitleFontSize};
    if (title.width() <= 0) {
        title.lines.clear();
    }
    return title;
}

}  // namespace qxdraw
