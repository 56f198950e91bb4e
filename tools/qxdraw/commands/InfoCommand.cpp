// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "commands/InfoCommand.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <nlohmann/json.hpp>
#include <optional>

#include "commands/Messages.h"
#include "import/DocumentCounts.h"
#include "import/DocumentReader.h"
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

void printJson(const InfoOptions& options, const GraphDocument& document,
               const DocumentCounts& counts, const std::optional<Bounds>& bounds) {
    Json json;
    json["file"] = options.input;
    json["format"] = document.format;
    json["kind"] = kindOf(document);
    json["nodes"] = document.nodes.size();
    json["edges"] = document.edges.size();
    json["graphs_nested"] = counts.nestedGraphs;
    json["nesting_depth"] = counts.nestingDepth;
    json["ports"] = document.ports;
    json["self_loops"] = counts.selfLoops;
    json["extra_parallel_edges"] = counts.extraParallelEdges;
    json["bounds"] = nullptr;
    if (bounds) {
        json["bounds"] = {{"left", rounded(bounds->left)},
                          {"bottom", rounded(bounds->bottom)},
                          {"right", rounded(bounds->right)},
                          {"top", rounded(bounds->top)}};
    }
    std::cout << json.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

void printText(const InfoOptions& options, const GraphDocument& document,
               const DocumentCounts& counts, const std::optional<Bounds>& bounds) {
    std::cout << "file:           " << options.input << '\n'
              << "kind:           " << kindOf(document) << " (" << document.format << ")\n"
              << "nodes:          " << document.nodes.size() << '\n'
              << "edges:          " << document.edges.size() << '\n'
              << "self-loops:     " << counts.selfLoops << '\n'
              << "parallel edges: " << counts.extraParallelEdges << '\n'
              << "nested graphs:  " << counts.nestedGraphs << " (depth " << counts.nestingDepth
              << ")\n"
              << "ports:          " << document.ports << '\n'
              << "bounds:         ";
    if (bounds) {
        std::cout << "x " << rounded(bounds->left) << " to " << rounded(bounds->right) << ", y "
                  << rounded(bounds->bottom) << " to " << rounded(bounds->top) << '\n';
    } else {
        std::cout << "none, the file gives no positions\n";
    }
}

}  // namespace

void runInfo(const InfoOptions& options) {
    GraphDocument document = readDocument(options.input);
    if (!options.quiet) {
        for (const DocumentWarning& warning : document.warnings) {
            tell(options.input, warning.line, "warning: " + warning.text);
        }
    }
    const DocumentCounts counts = countDocument(document);
    sizeNodes(document);
    (options.json ? printJson : printText)(options, document, counts, boundsOf(document));
}

}  // namespace qxdraw
