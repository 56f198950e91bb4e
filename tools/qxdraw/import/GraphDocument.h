// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>
#include <string>
#include <vector>

namespace qxdraw {

/// A position in world units (one unit is one CSS pixel), y upward.
struct DocumentPoint {
    double x = 0;
    double y = 0;
};

enum class ShapeKind { Rectangle, Oval, Polygon };

/// The outline of a node.
struct DocumentShape {
    ShapeKind kind = ShapeKind::Rectangle;
    /// Polygons: the corners within the square from (-1, -1) to (1, 1), y upward.
    std::vector<DocumentPoint> outline;
    /// Width and height stay equal.
    bool square = false;
};

struct DocumentNode {
    std::string id;
    std::string label;  ///< UTF-8, lines separated by '\n'; empty: shown without a name
    std::optional<DocumentPoint> center;
    double width = 0;  ///< 0: the document does not say
    double height = 0;
    bool growsWithLabel = false;  ///< width and height are what the node has at least
    DocumentShape shape;
    int graph = 0;  ///< index into GraphDocument::graphs
    int line = 0;
};

struct DocumentEdge {
    int source = 0;  ///< index into GraphDocument::nodes
    int target = 0;
    std::string label;
    bool arrowAtSource = false;
    bool arrowAtTarget = false;
    std::vector<DocumentPoint> bends;  ///< between the ends, from source to target
};

/// The graph itself (index 0) or one nested in it.
struct DocumentGraph {
    std::string label;
    int parent = -1;  ///< index into GraphDocument::graphs; -1 for the graph itself
    int node = -1;    ///< the node it stands in, index into GraphDocument::nodes; -1: in none
};

/// Something a reader passed over, and the line where there is one.
struct DocumentWarning {
    std::string text;
    int line = 0;
};

/// A graph as a file tells it, whatever the format. Nodes stand in document order, so that a node
/// comes before what is nested in it.
struct GraphDocument {
    std::string format;  ///< "DOT", "GraphML" or "GML"
    bool directed = false;
    std::vector<DocumentGraph> graphs{DocumentGraph{}};
    std::vector<DocumentNode> nodes;
    std::vector<DocumentEdge> edges;
    int ports = 0;
    std::vector<DocumentWarning> warnings;
};

}  // namespace qxdraw
