// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <vector>

#include "import/GraphDocument.h"

namespace qxdraw {

/// A node as it is painted. Places are in world units, y upward.
struct SceneNode {
    DocumentPoint center;
    double width = 0;
    double height = 0;
    ShapeKind kind = ShapeKind::Rectangle;
    std::vector<DocumentPoint> corners;  ///< polygons: in world units
    std::vector<std::string> lines;
    double fontSize = 0;
    bool isContainer = false;  ///< other nodes lie in it; its name stands at the top
    int group = 0;             ///< nodes of one group share their colours; 0: of none
};

/// An edge as it is painted: from outline to outline.
struct SceneEdge {
    std::vector<DocumentPoint> points;  ///< at least two
    bool arrowAtSource = false;
    bool arrowAtTarget = false;
    std::vector<std::string> lines;  ///< its label
};

/// A bend of an edge, painted as a dot.
struct SceneBend {
    DocumentPoint center;
    bool isVisible = false;  ///< it lies on the part of the edge that is painted
};

struct SceneLine {
    DocumentPoint from;
    DocumentPoint to;
};

/// The point halfway along a polyline of at least two points.
DocumentPoint middleOf(const std::vector<DocumentPoint>& points);

/// Everything in a picture, and its page.
struct Scene {
    double left = 0;
    double bottom = 0;
    double right = 0;
    double top = 0;
    std::string title;
    std::vector<SceneEdge> edges;
    std::vector<SceneNode> nodes;        ///< later ones over earlier ones
    std::vector<SceneLine> hiddenLines;  ///< what the outlines of nodes cut off from edges
    std::vector<SceneBend> bends;

    double width() const { return right - left; }
    double height() const { return top - bottom; }
};

}  // namespace qxdraw
