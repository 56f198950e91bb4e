// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "picture/SceneBuilder.h"

#include <algorithm>

#include "model/TextLayout.h"
#include "qx/drawing/QxEdgeVisiblePointDListIter.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/foundation/geometry/QxPointDList.h"
#include "qx/foundation/geometry/QxShape.h"
#include "qx/foundation/util/QxText.h"

namespace qxdraw {

namespace {

std::string nameOf(const QxGraphObject& object) {
    const wchar_t* name = object.pNameString();
    return name == nullptr ? std::string() : QxText::encodeUtf8(name);
}

DocumentPoint toPlace(const QxPoint& point) {
    return {static_cast<double>(point.x()), static_cast<double>(point.y())};
}

/// Breaks the name, and makes it smaller within limits, until it fits into the node.
void fitName(SceneNode& node, const std::string& name) {
    constexpr double SmallestFont = 8;
    constexpr double Padding = 4;
    constexpr std::size_t MostLines = 12;
    const double width = node.width - Padding;
    const double height = node.height - Padding;
    const auto fits = [&] {
        return widthOf(node.lines, node.fontSize) <= width &&
               heightOf(node.lines, node.fontSize) <= height;
    };
    node.fontSize = NameFontSize;
    node.lines = wrapName(name);
    if (fits()) {
        return;
    }
    for (; node.fontSize >= SmallestFont; node.fontSize -= 1) {
        node.lines = wrapText(name, node.fontSize, std::max(width, 4 * NameFontSize), MostLines);
        if (fits() && widestWord(name, node.fontSize) <= width) {
            return;
        }
    }
    node.fontSize = SmallestFont;
}

/// The corners in world units; the shape tells them in its own frame.
std::vector<DocumentPoint> cornersOf(const QxShape& shape, const SceneNode& node) {
    QxPointDList outline;
    shape.getOutline(outline);
    std::vector<DocumentPoint> corners;
    for (const QxDListCell* cell = outline.pFirstCell(); cell != nullptr;
         cell = cell->pNextCell()) {
        const DocumentPoint corner = toPlace(*QxPointDList::pPoint(cell));
        corners.push_back({node.center.x + corner.x / QxShape::FrameHalf * node.width / 2,
                           node.center.y + corner.y / QxShape::FrameHalf * node.height / 2});
    }
    return corners;
}

SceneNode sceneNode(const QxDNode& source) {
    SceneNode node;
    QxRect rect;
    source.QxGNode::ntBoundingRect(rect);
    node.width = static_cast<double>(rect.right()) - rect.left();
    node.height = static_cast<double>(rect.top()) - rect.bottom();
    node.center = {rect.left() + node.width / 2, rect.bottom() + node.height / 2};
    const QxShape* shape = source.pShape();
    if (shape != nullptr && shape->isRectangular() == 0) {
        node.kind = shape->type() == QxShapeTypeOval ? ShapeKind::Oval : ShapeKind::Polygon;
        node.corners = cornersOf(*shape, node);
    }
    fitName(node, nameOf(source));
    return node;
}

/// Without points when nothing of the edge is seen.
SceneEdge sceneEdge(QxDEdge& source) {
    SceneEdge edge;
    QxPoint point;
    for (QxEdgeVisiblePointDListIter it(&source, 1); it; ++it) {
        it.getPoint(point);
        edge.points.push_back(toPlace(point));
    }
    edge.lines = wrapEdgeLabel(nameOf(source));
    return edge;
}

void includeLabel(Scene& scene, const SceneEdge& edge) {
    constexpr double Gap = 6;
    if (edge.lines.empty()) {
        return;
    }
    const DocumentPoint middle = middleOf(edge.points);
    const double halfWidth = widthOf(edge.lines, EdgeFontSize) / 2 + Gap;
    const double halfHeight = heightOf(edge.lines, EdgeFontSize) / 2 + Gap;
    scene.left = std::min(scene.left, middle.x - halfWidth);
    scene.right = std::max(scene.right, middle.x + halfWidth);
    scene.bottom = std::min(scene.bottom, middle.y - halfHeight);
    scene.top = std::max(scene.top, middle.y + halfHeight);
}

void addHiddenLine(Scene& scene, const QxPoint& from, const QxPoint& to) {
    if (from != to) {
        scene.hiddenLines.push_back({toPlace(from), toPlace(to)});
    }
}

void addHiddenLines(Scene& scene, const QxDEdge& edge) {
    for (QxPathEdgeIter it(&edge); it; ++it) {
        const QxPEdge& segment = *it.pEdge();
        if (segment.inVisiblePart() == 0) {
            addHiddenLine(scene, segment.ntFromPoint(0), segment.ntToPoint(0));
        } else {
            addHiddenLine(scene, segment.ntFromPoint(0), segment.ntFromPoint(1));
            addHiddenLine(scene, segment.ntToPoint(1), segment.ntToPoint(0));
        }
    }
}

void addBends(Scene& scene, const QxDEdge& edge) {
    for (QxPathNodeIter it(&edge); it; ++it) {
        scene.bends.push_back({toPlace(it.pNode()->iCenter()), it.pNode()->inVisiblePart() != 0});
    }
}

}  // namespace

Scene buildScene(const Drawing& drawing, const GraphDocument& document) {
    Scene scene;
    QxRect page;
    drawing.graph().ntMarginBoundingRect(page);
    scene.left = page.left();
    scene.bottom = page.bottom();
    scene.right = page.right();
    scene.top = page.top();
    scene.title = nameOf(drawing.graph());
    for (std::size_t i = 0; i < drawing.numberOfEdges(); ++i) {
        SceneEdge edge = sceneEdge(drawing.edge(i));
        if (edge.points.size() < 2) {
            continue;
        }
        edge.arrowAtSource = document.edges[i].arrowAtSource;
        edge.arrowAtTarget = document.edges[i].arrowAtTarget;
        includeLabel(scene, edge);
        scene.edges.push_back(std::move(edge));
    }
    for (std::size_t i = 0; i < drawing.numberOfNodes(); ++i) {
        scene.nodes.push_back(sceneNode(drawing.node(i)));
        scene.nodes.back().group = document.nodes[i].graph;
    }
    for (const DocumentGraph& graph : document.graphs) {
        if (graph.node >= 0) {
            scene.nodes[static_cast<std::size_t>(graph.node)].isContainer = true;
        }
    }
    return scene;
}

void addPaths(Scene& scene, const Drawing& drawing) {
    for (std::size_t i = 0; i < drawing.numberOfEdges(); ++i) {
        QxDEdge& edge = drawing.edge(i);
        edge.updateVisiblePart();
        addHiddenLines(scene, edge);
        addBends(scene, edge);
    }
}

}  // namespace qxdraw
