// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "model/Drawing.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

#include "model/Nesting.h"
#include "model/NodeSizing.h"
#include "qx/drawing/QxDrawingIters.h"
#include "qx/foundation/geometry/QxPointDList.h"
#include "qx/foundation/geometry/QxShape.h"
#include "qx/foundation/util/QxText.h"
#include "qx/nesting/QxDNodePair.h"
#include "qx/spatial/QxQTree.h"

namespace qxdraw {

namespace {

constexpr std::int32_t Margin = 24;  // of the page

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

void setMargins(QxDGraph& graph, std::int32_t margin) {
    graph.leftMarginConstantSpacing(margin);
    graph.rightMarginConstantSpacing(margin);
    graph.bottomMarginConstantSpacing(margin);
    graph.topMarginConstantSpacing(margin);
}

void moveWithContents(QxDNode& node, const QxPoint& center) {
    const QxPoint before = node.iCenter();
    node.ntMoveTo(center);
    node.actOnMoveTo(before);
}

/// Moves a node that shows a graph to where what is in the graph has the coordinates of the whole
/// drawing.
void alignWithContents(const QxDGraph& graph, QxDNode& node) {
    double offsetX = 0;
    double offsetY = 0;
    double scale = 1;
    graph.getExpandedTransformCoef(node.pOwnerGraph(), offsetX, scale, offsetY, scale);
    const QxPoint center = node.iCenter();
    moveWithContents(node, QxPoint(center.x() - toUnits(offsetX), center.y() - toUnits(offsetY)));
}

DocumentBox toBox(const QxRect& rect) {
    return {static_cast<double>(rect.left()), static_cast<double>(rect.bottom()),
            static_cast<double>(rect.right()), static_cast<double>(rect.top())};
}

DocumentBox united(const DocumentBox& a, const DocumentBox& b) {
    return {std::min(a.left, b.left), std::min(a.bottom, b.bottom), std::max(a.right, b.right),
            std::max(a.top, b.top)};
}

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

void Drawing::DrawingFactory::sizeTitle(const TextBlock& text) {
    m_labelSize = QxSize(toUnits(std::ceil(text.width() * BoldTimesAsWide)),
                         toUnits(std::ceil(text.height())));
}

QxGraphLabel* Drawing::DrawingFactory::vNewGraphLabel(QxOwnedObject* owner, int type) {
    QxGraphLabel* label = QxFactory::vNewGraphLabel(owner, type);
    label->ntResize(m_labelSize);
    return label;
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

Drawing::Drawing(const GraphDocument& document) : m_manager(m_factory.newDGraphManager()) {
    m_manager->reflexiveMetaEdgeReplacement(0);  // a loop would say nothing of what is inside
    for (const DocumentGraph& graph : document.graphs) {
        addGraph(graph);
    }
    for (const DocumentNode& node : document.nodes) {
        addNode(node);
    }
    nestGraphs(document);
    for (const DocumentEdge& edge : document.edges) {
        addEdge(edge);
    }
    graph().disableGraphBounds(0, 1);
}

Drawing::~Drawing() {
    m_manager->vRelease();
}

void Drawing::addGraph(const DocumentGraph& source) {
    QxDGraph* graph = m_manager->addGraph(0);
    graph->disableGraphBounds(1, 0);
    setMargins(*graph, m_graphs.empty() ? Margin : static_cast<std::int32_t>(BoxSpacing::Padding));
    setName(*graph, source.label);
    m_graphs.push_back(graph);
    m_boxes.emplace_back();
}

void Drawing::addNode(const DocumentNode& source) {
    const QxSize size(toUnits(source.width), toUnits(source.height));
    QxDGraph* graph = m_graphs[static_cast<std::size_t>(source.graph)];
    QxDNode* node =
        graph->addNodeWithCoordinates(toPoint(source.center.value_or(DocumentPoint{})), size, 1, 0);
    const QxShape shape = toShape(source.shape);
    node->pChangeShape(&shape, 0);
    setName(*node, source.label);
    m_indexOf.emplace(node, m_nodes.size());
    m_nodes.push_back(node);
}

void Drawing::nestGraphs(const GraphDocument& document) {
    for (std::size_t i = 1; i < document.graphs.size(); ++i) {
        QxDNode* node = m_nodes[static_cast<std::size_t>(document.graphs[i].node)];
        node->pChildGraph(m_graphs[i]);
        node->expand();
    }
}

void Drawing::addEdge(const DocumentEdge& source) {
    QxDNode* from = m_nodes[static_cast<std::size_t>(source.source)];
    QxDNode* to = m_nodes[static_cast<std::size_t>(source.target)];
    QxDEdge* edge = from->pOwnerGraph() == to->pOwnerGraph()
                        ? from->pOwnerGraph()->addEdge(from, to, 0)
                        : m_manager->addEdge(from, to, 0);
    if (!source.bends.empty()) {
        QxPointDList bends;
        for (const DocumentPoint& bend : source.bends) {
            bends.appendPoint(toPoint(bend));
        }
        edge->reroute(bends, 1);
    }
    setName(*edge, source.label);
    m_indexOf.emplace(edge, m_edges.size());
    m_edges.push_back(edge);
}

void Drawing::place(GraphDocument& document) {
    for (QxDGraph* graph : m_graphs) {
        graph->disableGraphBounds(1, 0);
    }
    for (std::size_t i = 0; i < m_nodes.size(); ++i) {
        if (m_nodes[i]->expanded() == 0 && document.nodes[i].center) {
            m_nodes[i]->ntMoveTo(toPoint(*document.nodes[i].center));
        }
    }
    const std::vector<int> order = outsideIn(document);
    for (auto next = order.rbegin(); next != order.rend(); ++next) {
        const auto i = static_cast<std::size_t>(*next);
        if (m_graphs[i]->nested() != 0 && m_graphs[i]->isVisible() != 0) {
            placeNested(i, document);
        }
    }
    graph().disableGraphBounds(0, 1);
}

void Drawing::placeNested(std::size_t index, GraphDocument& document) {
    QxDGraph& graph = *m_graphs[index];
    QxDNode& node = *graph.pNestedWithinNode();
    DocumentNode& place = document.nodes[indexOf(node)];
    const std::optional<DocumentBox>& box = document.graphs[index].box;
    graph.disableGraphBounds(0, 0);
    if (graph.boundsInitialized() == 0) {
        if (box) {
            graph.setMinSizeOfMarginBoundingRect(
                QxSize(toUnits(box->width()), toUnits(box->height())));
        }
        node.fitToNestedGraph(1, 0, 1);
        moveWithContents(node, toPoint(place.center.value_or(DocumentPoint{})));
    } else {
        node.fitToNestedGraph(0, 0, 1);
        alignWithContents(graph, node);
        m_boxes[index] = box;
        fitToBox(index);
    }
    const DocumentBox shown = toBox(*node.pIRect());
    place.center = shown.center();
    place.width = shown.width();
    place.height = shown.height();
}

/// Titles stand right above the contents, or at the top of the box.
void Drawing::standTitles(const QxDGraph& graph, const DocumentBox* box) const {
    for (const DrawnLabel& drawn : m_labels) {
        if (!drawn.isTitle || drawn.label->pOwnerGraph() != &graph) {
            continue;
        }
        auto& label = static_cast<QxGraphLabel&>(*drawn.label);
        if (box != nullptr) {
            label.ntMoveTo(
                QxPoint(toUnits(box->left + BoxSpacing::Padding + label.ntWidth() / 2.0),
                        toUnits(box->top - BoxSpacing::Padding - label.ntHeight() / 2.0)));
            continue;
        }
        const bool isWhole = &graph == m_graphs.front();
        label.ntSetPerMil(isWhole ? 0 : -1000, 1000);
        label.ntSetOffset(QxSize(isWhole ? 0 : label.ntWidth() / 2,
                                 toUnits(BoxSpacing::TitleGap + label.ntHeight() / 2.0)));
    }
}

/// A node whose graph has a box in the file is as large as that, or as large as the contents need.
/// Margins make up for what lies between.
void Drawing::fitToBox(std::size_t index) const {
    QxDGraph& graph = *m_graphs[index];
    QxDNode* node = graph.pNestedWithinNode();
    if (!m_boxes[index] || node == nullptr || graph.boundsInitialized() == 0) {
        return;
    }
    standTitles(graph, nullptr);
    setMargins(graph, static_cast<std::int32_t>(BoxSpacing::Padding));
    node->fitToNestedGraph(0, 0, 1);
    alignWithContents(graph, *node);
    const DocumentBox box = united(toBox(*node->pIRect()), *m_boxes[index]);
    standTitles(graph, &box);
    QxRect inner = *graph.pBoundingRect();
    if (QxRect labels; graph.calculateGraphLabelBounds(labels) != 0) {
        inner |= labels;
    }
    graph.leftMarginConstantSpacing(inner.left() - toUnits(box.left));
    graph.rightMarginConstantSpacing(toUnits(box.right) - inner.right());
    graph.bottomMarginConstantSpacing(inner.bottom() - toUnits(box.bottom));
    graph.topMarginConstantSpacing(toUnits(box.top) - inner.top());
    node->fitToNestedGraph(0, 0, 1);
    alignWithContents(graph, *node);
}

void Drawing::fold(const std::vector<int>& nodes, const std::string& name,
                   GraphDocument& document) {
    DocumentNode folder;
    folder.id = folder.label = name;
    folder.graph = document.nodes[static_cast<std::size_t>(nodes.front())].graph;
    sizeNode(folder);
    addNode(folder);
    addGraph({});
    QxDNodeDList list;
    for (const int index : nodes) {
        list.appendNode(m_nodes[static_cast<std::size_t>(index)]);
    }
    QxDNode& node = *m_nodes.back();
    node.pOwnerGraph()->fold(&node, m_graphs.back(), &list, nullptr, nullptr, 0);
    const int foldGraph = static_cast<int>(document.graphs.size());
    for (const int index : nodes) {
        document.nodes[static_cast<std::size_t>(index)].graph = foldGraph;
    }
    for (DocumentGraph& graph : document.graphs) {
        if (graph.node >= 0) {
            graph.parent = document.nodes[static_cast<std::size_t>(graph.node)].graph;
        }
    }
    document.graphs.push_back(
        {name, folder.graph, static_cast<int>(document.nodes.size()), name, {}});
    document.nodes.push_back(std::move(folder));
}

void Drawing::addTitle(std::size_t graph, const std::string& text, TextBlock painted) {
    m_factory.sizeTitle(painted);
    QxGraphLabel* label = m_graphs[graph]->addLabel(QxText::decodeUtf8(text).c_str(), 0);
    m_labels.push_back({label, std::move(painted), false, true});
    standTitles(*m_graphs[graph], nullptr);
}

void Drawing::addMetaEdges(GraphDocument& document) {
    QxDNodePairDList needed;
    QxDEdgeDList outdated;
    QxDEdgeDList added;
    m_manager->checkMetaEdges(needed, outdated);
    m_manager->updateMetaEdges(&needed, &outdated, &added, 0);
    const std::size_t first = m_edges.size();
    std::map<std::pair<QxGraphObject*, QxGraphObject*>, std::size_t> edgeBetween;
    for (QxDEdgeDListIter it(&added); it; ++it) {
        QxDEdge& edge = *it.pEdge();
        edgeBetween.emplace(std::pair(edge.pSourceNode(), edge.pTargetNode()), m_edges.size());
        m_indexOf.emplace(&edge, m_edges.size());
        m_edges.push_back(&edge);
        DocumentEdge& described = document.edges.emplace_back();
        described.source = static_cast<int>(indexOf(*edge.pSourceNode()));
        described.target = static_cast<int>(indexOf(*edge.pTargetNode()));
    }
    for (std::size_t i = 0; i < first && !edgeBetween.empty(); ++i) {
        const auto found =
            m_edges[i]->isVisible() != 0
                ? edgeBetween.end()
                : edgeBetween.find({m_manager->pVisibleRepresentative(m_edges[i]->pSourceNode()),
                                    m_manager->pVisibleRepresentative(m_edges[i]->pTargetNode())});
        if (found != edgeBetween.end()) {
            DocumentEdge& described = document.edges[found->second];
            ++described.standsFor;
            described.arrowAtSource |= document.edges[i].arrowAtSource;
            described.arrowAtTarget |= document.edges[i].arrowAtTarget;
        }
    }
    for (std::size_t i = first; i < m_edges.size(); ++i) {
        document.edges[i].label = std::to_string(document.edges[i].standsFor);
    }
}

bool isShownIn(const QxDNode& inner, const QxDNode& outer) {
    const QxDGraph* nested = outer.pNestedGraph();
    return nested != nullptr && inner.pOwnerGraph()->recursivelyNestedWithin(nested) != 0;
}

BoundsRest::BoundsRest(const Drawing& drawing) : m_drawing(drawing) {
    for (std::size_t i = 0; i < drawing.numberOfGraphs(); ++i) {
        drawing.graph(i).disableGraphBounds(1, 0);
    }
}

BoundsRest::~BoundsRest() {
    // Inner graphs first, so that each node is fitted once.
    std::vector<std::pair<int, std::size_t>> order;
    for (std::size_t i = 0; i < m_drawing.numberOfGraphs(); ++i) {
        int depth = 0;
        for (const QxDGraph* graph = &m_drawing.graph(i); graph != nullptr;
             graph = graph->pNestedWithinGraph()) {
            ++depth;
        }
        order.emplace_back(-depth, i);
    }
    std::sort(order.begin(), order.end());
    for (const auto& [depth, index] : order) {
        m_drawing.graph(index).disableGraphBounds(0, index == 0 ? 1 : 0);
        m_drawing.fitToBox(index);
    }
}

QxConnector& Drawing::addConnector(QxDNode& node, const DocumentPoint& center, const QxSize& size) {
    QxConnector* connector = node.addConnector(0, 0, 0, 0, 1, 0);
    const QxShape rectangle(QxShapeTypeRectangle);
    connector->pShape(&rectangle);
    connector->resize(size, 1);
    const QxRect& rect = *node.pIRect();  // rounding must not lead out of it
    const QxPoint place = toPoint(center);
    connector->moveTo(std::clamp(place.x(), rect.left(), rect.right()),
                      std::clamp(place.y(), rect.bottom(), rect.top()), 1);
    return *connector;
}

QxConnector& Drawing::addPort(std::size_t node, std::size_t port, const DocumentPoint& center,
                              const QxSize& size, bool isInside) {
    QxConnector& connector = addConnector(*m_nodes[node], center, size);
    m_ports.push_back({&connector, node, port, isInside});
    return connector;
}

}  // namespace qxdraw
