// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "commands/InfoCommand.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <nlohmann/json.hpp>
#include <optional>
#include <vector>

#include "commands/Explaining.h"
#include "commands/OpenDrawing.h"
#include "commands/Progress.h"
#include "import/DocumentCounts.h"
#include "model/Arranging.h"
#include "model/Nesting.h"
#include "model/NodeSizing.h"

namespace qxdraw {

namespace {

using Json = nlohmann::ordered_json;

struct Bounds {
    double left = 0;
    double bottom = 0;
    double right = 0;
    double top = 0;
};

void include(std::optional<Bounds>& bounds, const DocumentPoint& center, double width,
             double height) {
    const Bounds own{center.x - width / 2, center.y - height / 2, center.x + width / 2,
                     center.y + height / 2};
    bounds = bounds ? Bounds{std::min(bounds->left, own.left), std::min(bounds->bottom, own.bottom),
                             std::max(bounds->right, own.right), std::max(bounds->top, own.top)}
                    : own;
}

/// What the nodes with positions and the bends cover; nothing when the file gives no position.
std::optional<Bounds> boundsOf(const GraphDocument& document) {
    std::optional<Bounds> bounds;
    for (const DocumentNode& node : document.nodes) {
        if (node.center) {
            include(bounds, *node.center, node.width, node.height);
        }
    }
    for (const DocumentEdge& edge : document.edges) {
        for (const DocumentPoint& bend : edge.bends) {
            include(bounds, bend, 0, 0);
        }
    }
    return bounds;
}

std::int64_t rounded(double value) {
    return std::llround(value);
}

std::string kindOf(const GraphDocument& document) {
    return document.directed ? "directed graph" : "undirected graph";
}

/// How much of a document is shown.
struct Shown {
    std::size_t nodes = 0;   ///< that show no graph
    std::size_t graphs = 0;  ///< nested ones
    std::size_t edges = 0;
    std::size_t metaEdges = 0;
    std::size_t representedEdges = 0;  ///< for which meta-edges are shown
};

Shown countShown(const Drawing& drawing, const GraphDocument& document) {
    Shown shown;
    for (std::size_t i = 0; i < drawing.numberOfNodes(); ++i) {
        if (drawing.node(i).isVisible() != 0) {
            ++(drawing.node(i).expanded() != 0 ? shown.graphs : shown.nodes);
        }
    }
    for (std::size_t i = 0; i < drawing.numberOfEdges(); ++i) {
        if (drawing.edge(i).isVisible() != 0) {
            const int standsFor = document.edges[i].standsFor;
            ++(standsFor > 0 ? shown.metaEdges : shown.edges);
            shown.representedEdges += static_cast<std::size_t>(standsFor);
        }
    }
    return shown;
}

/// What there is to tell of a file.
struct Facts {
    DocumentCounts counts;
    std::size_t nodes = 0;
    std::size_t edges = 0;
    std::size_t interGraphEdges = 0;
    std::optional<Bounds> bounds;
    std::optional<Shown> shown;  ///< when less than all was asked for
    std::vector<Explanation> explanations;
};

std::size_t countInterGraphEdges(const GraphDocument& document) {
    const auto graphOf = [&](int node) {
        return document.nodes[static_cast<std::size_t>(node)].graph;
    };
    return static_cast<std::size_t>(std::count_if(
        document.edges.begin(), document.edges.end(),
        [&](const DocumentEdge& edge) { return graphOf(edge.source) != graphOf(edge.target); }));
}

Json jsonOf(const Explanation& explanation) {
    const auto orNull = [](const std::string& text) { return text.empty() ? Json() : Json(text); };
    Json json;
    json["kind"] = explanation.kind;
    json["name"] = explanation.name;
    json["shown"] = explanation.isShown;
    json["collapsed"] = explanation.isClosed;
    json["why"] = orNull(explanation.why);
    json["blame"] = orNull(explanation.blame);
    json["stand_in"] = nullptr;
    if (!explanation.standIn.empty()) {
        json["stand_in"] = {{"kind", explanation.standInKind}, {"name", explanation.standIn}};
        if (explanation.standsFor > 0) {
            json["stand_in"]["stands_for"] = explanation.standsFor;
        }
    }
    return json;
}

void printJson(const InfoOptions& options, const GraphDocument& document, const Facts& facts) {
    Json json;
    json["file"] = options.input;
    json["format"] = document.format;
    json["kind"] = kindOf(document);
    json["nodes"] = facts.nodes;
    json["edges"] = facts.edges;
    json["graphs_nested"] = facts.counts.nestedGraphs;
    json["nesting_depth"] = facts.counts.nestingDepth;
    json["inter_graph_edges"] = facts.interGraphEdges;
    json["ports"] = document.ports;
    json["self_loops"] = facts.counts.selfLoops;
    json["extra_parallel_edges"] = facts.counts.extraParallelEdges;
    json["bounds"] = nullptr;
    if (const auto& bounds = facts.bounds) {
        json["bounds"] = {{"left", rounded(bounds->left)},
                          {"bottom", rounded(bounds->bottom)},
                          {"right", rounded(bounds->right)},
                          {"top", rounded(bounds->top)}};
    }
    if (const auto& shown = facts.shown) {
        json["shown"] = {{"nodes", shown->nodes},
                         {"graphs_nested", shown->graphs},
                         {"edges", shown->edges},
                         {"meta_edges", shown->metaEdges},
                         {"edges_behind_meta_edges", shown->representedEdges}};
    }
    if (!options.explain.empty()) {
        json["explained"] = Json::array();
        for (const Explanation& explanation : facts.explanations) {
            json["explained"].push_back(jsonOf(explanation));
        }
    }
    std::cout << json.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

void printText(const InfoOptions& options, const GraphDocument& document, const Facts& facts) {
    std::cout << "file:           " << options.input << '\n'
              << "kind:           " << kindOf(document) << " (" << document.format << ")\n"
              << "nodes:          " << facts.nodes << '\n'
              << "edges:          " << facts.edges << " (" << facts.interGraphEdges
              << " between nested graphs)\n"
              << "self-loops:     " << facts.counts.selfLoops << '\n'
              << "parallel edges: " << facts.counts.extraParallelEdges << '\n'
              << "nested graphs:  " << facts.counts.nestedGraphs << " (depth "
              << facts.counts.nestingDepth << ")\n"
              << "ports:          " << document.ports << '\n'
              << "bounds:         ";
    if (const auto& bounds = facts.bounds) {
        std::cout << "x " << rounded(bounds->left) << " to " << rounded(bounds->right) << ", y "
                  << rounded(bounds->bottom) << " to " << rounded(bounds->top) << '\n';
    } else {
        std::cout << "none, the file gives no positions\n";
    }
    if (const auto& shown = facts.shown) {
        std::cout << "shown:          " << shown->nodes << " nodes, " << shown->graphs
                  << " nested graphs, " << shown->edges << " edges, " << shown->metaEdges
                  << " meta-edges for " << shown->representedEdges << " edges\n";
    }
    for (const Explanation& explanation : facts.explanations) {
        std::cout << explanation.words() << '\n';
    }
}

/// What the model answers about a drawing with these options. Only edges depend on its places.
void askDrawing(const InfoOptions& options, GraphDocument& document, Facts& facts) {
    const std::vector<std::pair<int, int>> ends = endsOfEdges(document);
    std::vector<Explained> asked;
    bool asksForEdges = false;
    GraphDocument nested = document;
    nestDocument(nested);
    for (const std::string& name : options.explain) {
        asked.push_back(findToExplain(name, nested, ends));
        asksForEdges = asksForEdges || !asked.back().edges.empty();
    }
    ArrangingOptions arranging;
    arranging.view = options.view;
    Progress progress(options.quiet);
    const auto drawing = asksForEdges
                             ? arrange(document, arranging,
                                       [&](double part) { progress.report("laying out", part); })
                             : nestedDrawing(document, options.view);
    progress.clear();
    facts.shown = countShown(*drawing, document);
    for (const Explained& one : asked) {
        for (Explanation& explanation : explain(one, *drawing, document)) {
            facts.explanations.push_back(std::move(explanation));
        }
    }
}

}  // namespace

void runInfo(const InfoOptions& options) {
    GraphDocument document = openDocument(options.input, options.quiet);
    Facts facts;
    facts.counts = countDocument(document);
    facts.nodes = document.nodes.size();
    facts.edges = document.edges.size();
    GraphDocument sized = document;
    sizeNodes(sized);
    facts.bounds = boundsOf(sized);
    nestDocument(sized);
    facts.interGraphEdges = countInterGraphEdges(sized);
    if (!options.view.isEmpty() || !options.explain.empty()) {
        askDrawing(options, document, facts);
    }
    (options.json ? printJson : printText)(options, document, facts);
}

}  // namespace qxdraw
