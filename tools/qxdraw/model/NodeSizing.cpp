// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "model/NodeSizing.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "model/FieldLayout.h"
#include "model/TextLayout.h"

namespace qxdraw {

namespace {

constexpr double SidePadding = 10;
constexpr double TopPadding = 6;
constexpr double LeastWidth = 36;
constexpr double LeastHeight = 28;

struct Extent {
    double width = 0;
    double height = 0;
};

bool isInside(const std::vector<DocumentPoint>& outline, double x, double y) {
    bool inside = false;
    for (std::size_t i = 0, j = outline.size() - 1; i < outline.size(); j = i++) {
        const DocumentPoint& a = outline[i];
        const DocumentPoint& b = outline[j];
        if ((a.y > y) != (b.y > y) && x < (b.x - a.x) * (y - a.y) / (b.y - a.y) + a.x) {
            inside = !inside;
        }
    }
    return inside;
}

/// Nodes may have outlines that turn inward, so a rectangle is tried at its corners and between.
bool holdsRectangle(const std::vector<DocumentPoint>& outline, double x, double y) {
    for (const double part : {-1.0, -0.5, 0.0, 0.5, 1.0}) {
        if (!isInside(outline, part * x, y) || !isInside(outline, part * x, -y) ||
            !isInside(outline, x, part * y) || !isInside(outline, -x, part * y)) {
            return false;
        }
    }
    return true;
}

Extent nameExtent(const DocumentNode& node) {
    if (node.fields != nullptr) {
        const DocumentSize size = naturalSize(*node.fields);
        return {size.width, size.height};
    }
    const std::vector<std::string> lines = wrapName(node.label);
    return {widthOf(lines, NameFontSize), heightOf(lines, NameFontSize)};
}

/// The smallest placement of the shape, by width plus height, that has room for `text`.
Extent enclosingExtent(const DocumentShape& shape, const Extent& text) {
    Extent best;
    double bestSum = std::numeric_limits<double>::infinity();
    for (double inner = 0.95; inner > 0.2; inner -= 0.05) {
        const double height = innerHeight(shape, inner);
        if (height <= 0) {
            continue;
        }
        const Extent extent{text.width / inner, text.height / height};
        if (extent.width + extent.height < bestSum) {
            best = extent;
            bestSum = extent.width + extent.height;
        }
    }
    return std::isfinite(bestSum) ? best : text;
}

Extent extentForName(const DocumentNode& node) {
    Extent extent = nameExtent(node);
    if (node.shape.kind != ShapeKind::Rectangle && extent.width > 0) {
        extent = enclosingExtent(node.shape, extent);
    }
    if (node.fields != nullptr) {
        return extent;  // fields have padding of their own
    }
    const double padding = node.shape.kind == ShapeKind::Rectangle ? 1.0 : 0.5;
    extent.width = std::max(LeastWidth, extent.width + 2 * padding * SidePadding);
    extent.height = std::max(LeastHeight, extent.height + 2 * padding * TopPadding);
    return extent;
}

}  // namespace

double innerHeight(const DocumentShape& shape, double innerWidth) {
    if (shape.kind == ShapeKind::Rectangle) {
        return 1;
    }
    if (shape.kind == ShapeKind::Oval) {
        return std::sqrt(std::max(0.0, 1 - innerWidth * innerWidth));
    }
    for (double height = 0.95; height > 0.1; height -= 0.05) {
        if (holdsRectangle(shape.outline, innerWidth, height)) {
            return height;
        }
    }
    return 0;
}

void sizeNode(DocumentNode& node) {
    const bool growsWide = node.width <= 0 || node.growsWithLabel;
    const bool growsHigh = node.height <= 0 || node.growsWithLabel;
    // A node that the document makes small and leaves without a name stays that small.
    const bool needsRoom =
        !node.label.empty() || node.fields != nullptr || node.width <= 0 || node.height <= 0;
    if (needsRoom && (growsWide || growsHigh)) {
        const Extent extent = extentForName(node);
        node.width = growsWide ? std::max(node.width, extent.width) : node.width;
        node.height = growsHigh ? std::max(node.height, extent.height) : node.height;
    }
    if (node.shape.square) {
        node.width = node.height = std::max(node.width, node.height);
    }
    node.width = std::ceil(node.width);
    node.height = std::ceil(node.height);
}

void sizeNodes(GraphDocument& document) {
    for (DocumentNode& node : document.nodes) {
        sizeNode(node);
    }
}

}  // namespace qxdraw
