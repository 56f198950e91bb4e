// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "model/Drawing.h"

#include <algorithm>
#include <cmath>

#include "qx/foundation/geometry/QxPointDList.h"
#include "qx/foundation/geometry/QxShape.h"
#include "qx/foundation/util/QxText.h"
#include "qx/spatial/QxQTree.h"

namespace qxdraw {

namespace {

constexpr std::int32_t Margin = 24;

std::int32_t toUnits(double value) {
    return static_cast<std::int32_t>(std::lround(value));
}

QxShape toShape(const DocumentShape& source) {
    if (source.kind == ShapeKind::Oval) {
        return QxShape(QxShapeTypeOval);
    }
    if (source.kind == ShapeKind::Rectangle) {
        return QxShape(QxShapeTypeRectangle);
    }
    QxPointDList outline;
    for (const DocumentPoint& corner : source.outline) {
        outline.appendPoint(QxPoint(toUnits(corner.x * QxShape::FrameHalf),
                                    toUnits(corner.y * QxShape::FrameHalf)));
    }
    return QxShape::fromOutline(outline);
}

class IndexedGraph : public QxDGraph {
public:
    using QxDGraph::QxDGraph;

protected:
    QxQTree* vNewQuadTree(unsigned short excluded) override {
        return QxDGraph::vNewQuadTree(excluded & ~QxQTree::ExcludeConnectors & 0xFFFF);
    }
};

void setName(QxGraphObject& object, const std::string& name) {
    if (!name.empty()) {
        object.nameString(QxText::decodeUtf8(name).c_str());
    }
}

}  // namespace

QxPoint toPoint(const DocumentPoint& point) {
    return {toUnits(point.x), toUnits(point.y)};
}

DocumentPoint toPlace(const QxPoint& point) {
    return {static_cast<double>(point.x()), static_cast<double>(point.y())};
}

void Drawing::DrawingFactory::sizeLabels(const TextBlock& text, bool isInside) {
    constexpr double Aside = 6;
    m_labelSize = QxSize(toUnits(std::ceil(text.width() + (isInside ? 0 : Aside))),
                         toUnits(std::ceil(text.height())));
}

QxDGraph* Drawing::DrawingFactory::vNewDGraph(QxOwnedObject* owner, int type) {
    return new IndexedGraph(owner, type, this);
}

QxNodeLabel* Drawing::DrawingFactory::vNewNodeLabel(QxOwnedObject* owner, int type) {
    QxNodeLabel* label = QxFactory::vNewNodeLabel(owner, type);
    label->ntResize(m_labelSize);
    return label;
}

QxConnectorLabel* Drawing::DrawingFactory::vNewConnectorLabel(QxOwnedObject* owner, int type) {
    QxConnectorLabel* label = QxFactory::vNewConnectorLabel(owner, type);
    label->ntResize(m_labelSize);
    return label;
}

QxEdgeLabel* Drawing::DrawingFactory::vNewEdgeLabel(QxOwnedObject* owner, int type) {
    QxEdgeLabel* label = QxFactory::vNewEdgeLabel(owner, type);
    label->ntResize(m_labelSize);
    return label;
}

Drawing::Drawing(const GraphDocument& document)
    : m_manager(m_factory.newDGraphManager()), m_graph(m_manager->addGraph(0)) {
    m_graph->leftMarginConstantSpacing(Margin);
    m_graph->rightMarginConstantSpacing(Margin);
    m_graph->bottomMarginConstantSpacing(Margin);
    m_graph->topMarginConstantSpacing(Margin);
    setName(*m_graph, document.graphs.front().label);
    m_graph->disableGraphBounds(1, 0);
    for (const DocumentNode& node : document.nodes) {
        addNode(node);
    }
    for (const DocumentEdge& edge : document.edges) {
        addEdge(edge);
    }
    m_graph->disableGraphBounds(0, 1);
}

Drawing::~Drawing() {
    m_manager->vRelease();
}

void Drawing::addNode(const DocumentNode& source) {
    const QxSize size(toUnits(source.width), toUnits(source.height));
    QxDNode* node = m_graph->addNodeWithCoordinates(toPoint(*source.center), size, 1, 0);
    const QxShape shape = toShape(source.shape);
    node->pChangeShape(&shape, 0);
    setName(*node, source.label);
    m_nodes.push_back(node);
}

void Drawing::addEdge(const DocumentEdge& source) {
    QxDNode* from = m_nodes[static_cast<std::size_t>(source.source)];
    QxDNode* to = m_nodes[static_cast<std::size_t>(source.target)];
    QxDEdge* edge = m_graph->addEdge(from, to, 0);
    if (!source.bends.empty()) {
        QxPointDList bends;
        for (const DocumentPoint& bend : source.bends) {
            bends.appendPoint(toPoint(bend));
        }
        edge->reroute(bends, 1);
    }
    setName(*edge, source.label);
    m_edges.push_back(edge);
}

QxConnector& Drawing::addPort(std::size_t node, std::size_t port, const DocumentPoint& center,
                              const QxSize& size, bool isInside) {
    QxConnector* connector = m_nodes[node]->addConnector(0, 0, 0, 0, 1, 0);
    const QxShape rectangle(QxShapeTypeRectangle);
    connector->pShape(&rectangle);
    connector->resize(size, 1);
    const QxRect& rect = *m_nodes[node]->pIRect();  // rounding must not lead out of it
    const QxPoint place = toPoint(center);
    connector->moveTo(std::clamp(place.x(), rect.left(), rect.right()),
                      std::clamp(place.y(), rect.bottom(), rect.top()), 1);
    m_ports.push_back({connector, node, port, isInside});
    return *connector;
}

}  // namespace qxdraw
