// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "picture/SceneBuilder.h"

#include <cstddef>
#include <unordered_set>

#include "model/FieldLayout.h"
#include "model/Nesting.h"
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
    source.getBoundingRect(rect, 0);
    node.width = static_cast<double>(rect.right()) - rect.left();
    node.height = static_cast<double>(rect.top()) - rect.bottom();
    node.center = {rect.left() + node.width / 2, rect.bottom() + node.height / 2};
    const QxShape* shape = source.pShape();
    if (shape != nullptr && shape->isRectangular() == 0) {
        node.kind = shape->type() == QxShapeTypeOval ? ShapeKind::Oval : ShapeKind::Polygon;
        node.corners = cornersOf(*shape, node);
    }
    return node;
}

void addLine(std::vector<SceneLine>& lines, const DocumentPoint& offset, const DocumentPoint& from,
             const DocumentPoint& to) {
    lines.push_back({{offset.x + from.x, offset.y + from.y}, {offset.x + to.x, offset.y + to.y}});
}

/// Fields without parts cover the area of them all; a line runs where one ends and another begins.
void addDividers(SceneNode& node, const DocumentNode& source) {
    constexpr double Same = 0.5;
    const std::vector<PlacedField> fields = placeFields(source);
    const bool isFilled = node.kind == ShapeKind::Rectangle;
    for (const PlacedField& field : fields) {
        const PlacedField& all = fields.front();
        if (!field.field->parts.empty()) {
            continue;
        }
        if (field.right < all.right - Same || !isFilled) {
            addLine(node.dividers, node.center, {field.right, field.bottom},
                    {field.right, field.top});
        }
        if (field.bottom > all.bottom + Same || !isFilled) {
            addLine(node.dividers, node.center, {field.left, field.bottom},
                    {field.right, field.bottom});
        }
    }
    if (!isFilled && !fields.empty()) {
        const PlacedField& all = fields.front();
        addLine(node.dividers, node.center, {all.left, all.bottom}, {all.left, all.top});
        addLine(node.dividers, node.center, {all.left, all.top}, {all.right, all.top});
    }
}

/// Without points when nothing of the edge is seen.
SceneEdge sceneEdge(QxDEdge& source) {
    SceneEdge edge;
    QxPoint point;
    for (QxEdgeVisiblePointDListIter it(&source, 0); it; ++it) {
        it.getPoint(point);
        edge.points.push_back(toPlace(point));
    }
    return edge;
}

void addEdges(Scene& scene, const Drawing& drawing, const GraphDocument& document) {
    std::unordered_set<const QxConnector*> inner;
    for (const DrawnPort& port : drawing.ports()) {
        if (port.isInside) {
            inner.insert(port.connector);
        }
    }
    for (std::size_t i = 0; i < drawing.numberOfEdges(); ++i) {
        QxDEdge& source = drawing.edge(i);
        if (source.isVisible() == 0) {
            continue;
        }
        SceneEdge edge = sceneEdge(source);
        if (edge.points.size() < 2) {
            continue;
        }
        edge.arrowAtSource = document.edges[i].arrowAtSource;
        edge.arrowAtTarget = document.edges[i].arrowAtTarget;
        edge.standsFor = document.edges[i].standsFor;
        edge.isOverNodes =
            inner.contains(source.pSourceConnector()) || inner.contains(source.pTargetConnector());
        scene.edges.push_back(std::move(edge));
    }
}

/// Outer boxes before those in them.
void addBoxes(Scene& scene, const Drawing& drawing, const GraphDocument& document) {
    for (const int graph : outsideIn(document)) {
        const auto index = static_cast<std::size_t>(graph);
        const QxDNode* node = drawing.graph(index).pNestedWithinNode();
        if (node != nullptr && node->isVisible() != 0) {
            SceneNode box = sceneNode(*node);
            box.isContainer = true;
            box.group = graph;
            scene.nodes.push_back(std::move(box));
        }
    }
}

void addNodes(Scene& scene, const Drawing& drawing, const GraphDocument& document) {
    for (std::size_t i = 0; i < drawing.numberOfNodes(); ++i) {
        const QxDNode& source = drawing.node(i);
        if (source.isVisible() == 0 || source.expanded() != 0) {
            continue;
        }
        SceneNode node = sceneNode(source);
        node.group = document.nodes[i].graph;
        node.isClosed = source.collapsed() != 0;
        addDividers(node, document.nodes[i]);
        scene.nodes.push_back(std::move(node));
    }
}

void addPortsAndLabels(Scene& scene, const Drawing& drawing, const GraphDocument& document) {
    for (const DrawnPort& port : drawing.ports()) {
        if (document.nodes[port.node].ports[port.port].isMarked) {
            QxPoint center;
            if (port.connector->getCenter(center, 0) == 0) {
                continue;
            }
            scene.ports.push_back({toPlace(center), static_cast<double>(port.connector->ntWidth()),
                                   static_cast<double>(port.connector->ntHeight())});
        }
    }
    for (const DrawnLabel& label : drawing.labels()) {
        QxPoint center;
        if (label.label->getCenter(center, 0) != 0) {
            scene.labels.push_back({toPlace(center), label.text, label.isInside, label.isTitle});
        }
    }
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
    addEdges(scene, drawing, document);
    addBoxes(scene, drawing, document);
    addNodes(scene, drawing, document);
    addPortsAndLabels(scene, drawing, document);
    return scene;
}

void addPaths(Scene& scene, const Drawing& drawing) {
    for (std::size_t i = 0; i < drawing.numberOfEdges(); ++i) {
        QxDEdge& edge = drawing.edge(i);
        if (edge.isVisible() != 0) {
            edge.updateVisiblePart();
            addHiddenLines(scene, edge);
            addBends(scene, edge);
        }
    }
}

}  // namespace qxdraw
