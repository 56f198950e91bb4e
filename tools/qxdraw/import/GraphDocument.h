// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>
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

/// A part of a label that is divided into fields: a text, or further parts side by side or under
/// each other.
struct DocumentField {
    std::string text;
    std::string port;        ///< the name under which edges end here; empty: none do
    bool isStacked = false;  ///< the parts lie under each other
    bool isTable = false;    ///< the parts are rows of cells, whose columns are aligned
    std::vector<DocumentField> parts;
};

/// A place at a node where edges end.
struct DocumentPort {
    std::string name;  ///< as edges know it
    /// The field of the label that it belongs to; empty: the node itself.
    std::string field;
    /// Where on the outline of the node or field, both from -1 to 1, y upward; nothing: where it
    /// suits the edges.
    std::optional<DocumentPoint> place;
    /// Shown as a mark of its own, with this text beside it.
    bool isMarked = false;
    std::string label;
};

struct DocumentNode {
    std::string id;
    std::string label;       ///< UTF-8, lines separated by '\n'; empty: shown without a name
    std::string outerLabel;  ///< a text beside the node
    std::shared_ptr<const DocumentField> fields;  ///< shown in place of the label; null: none
    std::vector<DocumentPort> ports;
    std::optional<DocumentPoint> center;
    double width = 0;  ///< 0: the document does not say
    double height = 0;
    bool growsWithLabel = false;  ///< width and height are what the node has at least
    DocumentShape shape;
    int graph = 0;  ///< index into GraphDocument::graphs
    int line = 0;
};

/// A text at an edge, beside the one in its middle.
struct DocumentEdgeLabel {
    enum class Place { Source, Target, Anywhere };

    Place place = Place::Anywhere;
    std::string text;
};

struct DocumentEdge {
    int source = 0;  ///< index into GraphDocument::nodes
    int target = 0;
    int sourcePort = -1;  ///< index into the ports of that node; -1: the edge ends at the node
    int targetPort = -1;
    std::string label;
    std::vector<DocumentEdgeLabel> moreLabels;
    bool arrowAtSource = false;
    bool arrowAtTarget = false;
    std::vector<DocumentPoint> bends;  ///< between the ends, from source to target
    /// The nested graph around that end at whose border the edge is to be seen ending, index into
    /// GraphDocument::graphs; -1: it ends at the node.
    int sourceGraph = -1;
    int targetGraph = -1;
    int standsFor = 0;  ///< how many edges that cannot be drawn it is drawn for; 0: for itself
};

/// A rectangle in world units, y upward.
struct DocumentBox {
    double left = 0;
    double bottom = 0;
    double right = 0;
    double top = 0;

    double width() const { return right - left; }
    double height() const { return top - bottom; }
    DocumentPoint center() const { return {(left + right) / 2, (bottom + top) / 2}; }
};

/// The graph itself (index 0) or one nested in it. Readers put parents before what is nested in
/// them.
struct DocumentGraph {
    std::string label;
    int parent = -1;  ///< index into GraphDocument::graphs; -1 for the graph itself
    int node = -1;    ///< the node it stands in, index into GraphDocument::nodes; -1: in none
    std::string id;   ///< as the file names it
    std::optional<DocumentBox> box;  ///< where the file shows it
};

/// Something a reader passed over, and the line where there is one.
struct DocumentWarning {
    std::string text;
    int line = 0;
};

/// A graph as a file tells it, whatever the format, nodes and edges in document order.
struct GraphDocument {
    std::string format;  ///< "DOT", "GraphML" or "GML"
    bool directed = false;
    std::vector<DocumentGraph> graphs{DocumentGraph{}};
    std::vector<DocumentNode> nodes;
    std::vector<DocumentEdge> edges;
    int ports = 0;  ///< that the file declares
    std::vector<DocumentWarning> warnings;
};

}  // namespace qxdraw
