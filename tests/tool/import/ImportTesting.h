// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <sstream>
#include <string>

#include "import/DocumentReader.h"
#include "import/ImportError.h"

namespace qxdraw::testing {

inline std::string dataPath(const std::string& name) {
    return std::string(QXDRAW_TEST_DATA) + "/" + name;
}

/// "line: reason" of the error that reading `text` ends with; empty when it is read.
inline std::string errorOf(const std::string& text, const std::string& path = "text") {
    try {
        readDocumentText(text, path);
        return {};
    } catch (const ImportError& error) {
        return std::to_string(error.line()) + ": " + error.what();
    }
}

inline std::string described(const DocumentPoint& point) {
    std::ostringstream out;
    const auto tenths = [](double value) { return std::round(value * 10) / 10 + 0.0; };  // no -0
    out << tenths(point.x) << ',' << tenths(point.y);
    return out.str();
}

/// What a document says, in short: "a 'label' @x,y wxh+ oval in 1; a->b 'label' x,y x,y". Left out
/// are labels equal to the id, places and sizes that the file leaves open, rectangular outlines and
/// the outermost graph; a plus stands at a size that grows with the label.
inline std::string described(const GraphDocument& document) {
    std::ostringstream out;
    for (const DocumentNode& node : document.nodes) {
        out << (&node == &document.nodes.front() ? "" : "; ") << node.id;
        out << (node.label != node.id ? " '" + node.label + "'" : "");
        out << (node.center ? " @" + described(*node.center) : "");
        if (node.width != 0 || node.height != 0) {
            out << ' ' << node.width << 'x' << node.height << (node.growsWithLabel ? "+" : "");
        }
        out << (node.shape.square ? " square" : "");
        out << (node.shape.kind == ShapeKind::Oval ? " oval" : "");
        for (const DocumentPoint& corner : node.shape.outline) {
            out << " <" << described(corner) << '>';
        }
        out << (node.graph != 0 ? " in " + std::to_string(node.graph) : "");
    }
    for (std::size_t i = 1; i < document.graphs.size(); ++i) {
        const DocumentGraph& graph = document.graphs[i];
        out << "; " << i << ' ' << (graph.label.empty() ? graph.id : graph.label) << " in "
            << graph.parent;
    }
    for (const DocumentEdge& edge : document.edges) {
        out << "; " << document.nodes[static_cast<std::size_t>(edge.source)].id
            << (edge.arrowAtSource ? "<" : "-") << (edge.arrowAtTarget ? ">" : "-")
            << document.nodes[static_cast<std::size_t>(edge.target)].id;
        out << (edge.label.empty() ? "" : " '" + edge.label + "'");
        for (const DocumentPoint& bend : edge.bends) {
            out << ' ' << described(bend);
        }
    }
    return out.str();
}

/// How many pairs of nodes overlap.
inline int overlaps(const GraphDocument& document) {
    int count = 0;
    for (std::size_t i = 0; i < document.nodes.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            const DocumentNode& a = document.nodes[i];
            const DocumentNode& b = document.nodes[j];
            count += std::abs(a.center->x - b.center->x) < (a.width + b.width) / 2 &&
                             std::abs(a.center->y - b.center->y) < (a.height + b.height) / 2
                         ? 1
                         : 0;
        }
    }
    return count;
}

MATCHER_P2(IsNear, x, y, "") {
    return std::abs(arg.x - x) < 0.01 && std::abs(arg.y - y) < 0.01;
}

}  // namespace qxdraw::testing
