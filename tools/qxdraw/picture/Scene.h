// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <vector>

#include "import/GraphDocument.h"
#include "model/TextLayout.h"

namespace qxdraw {

struct SceneLine {
    DocumentPoint from;
    DocumentPoint to;
};

/// A node as it is painted. Places are in world units, y upward.
struct SceneNode {
    DocumentPoint center;
    double width = 0;
    double height = 0;
    ShapeKind kind = ShapeKind::Rectangle;
    std::vector<DocumentPoint> corners;  ///< polygons: in world units
    std::vector<SceneLine> dividers;     ///< between the fields of its label
    bool isContainer = false;            ///< it shows a graph
    bool isClosed = false;               ///< there is a graph in it, which it does not show
    int group = 0;                       ///< nodes of one group share their colours; 0: of none
};

/// An edge as it is painted: from outline to outline.
struct SceneEdge {
    std::vector<DocumentPoint> points;  ///< at least two
    bool arrowAtSource = false;
    bool arrowAtTarget = false;
    bool isOverNodes = false;  ///< it ends within a node
    int standsFor = 0;         ///< how many edges it is painted for; 0: itself
};

/// The mark of a port.
struct ScenePort {
    DocumentPoint center;
    double width = 0;
    double height = 0;
};

struct SceneLabel {
    DocumentPoint center;
    TextBlock text;
    bool isInNode = false;  ///< any other may have lines behind it
    bool isTitle = false;   ///< of a graph
};

/// A bend of an edge, painted as a dot.
struct SceneBend {
    DocumentPoint center;
    bool isVisible = false;  ///< it lies on the part of the edge that is painted
};

/// Everything in a picture, and its page.
struct Scene {
    double left = 0;
    double bottom = 0;
    double right = 0;
    double top = 0;
    std::string title;
    std::vector<SceneEdge> edges;
    std::vector<SceneNode> nodes;  ///< later ones over earlier ones
    std::vector<ScenePort> ports;
    std::vector<SceneLabel> labels;
    std::vector<SceneLine> hiddenLines;  ///< what the outlines of nodes cut off from edges
    std::vector<SceneBend> bends;

    double width() const { return right - left; }
    double height() const { return top - bottom; }
};

}  // namespace qxdraw
