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

std::optional<std::size_t> Drawing::findIndex(const QxGraphMember& member) const {
    const auto found = m_indexOf.find(&member);
    return found != m_indexOf.end() ? std::optional(found->second) : std::nullopt;
}

void Drawing::discardLabels(QxDNode& node) {
    std::erase_if(m_labels, [&](const DrawnLabel& label) {
        const bool goes = label.isInside && label.label->pOwnerNode() == &node;
        return goes && node.discardLabel(static_cast<QxNodeLabel*>(label.label)) != 0;
    });
}

void Drawing::discardLabels(QxDEdge& edge) {
    std::erase_if(m_labels, [&](const DrawnLabel& label) {
        return label.label->pOwnerEdge() == &edge &&
               edge.discardLabel(static_cast<QxEdgeLabel*>(label.label)) != 0;
    });
}

void Drawing::forgetEdges(const QxDEdgeDList& edges, GraphDocument& document) {
    for (QxDEdgeDListIter it(&edges); it; ++it) {
        const std::optional<std::size_t> index = findIndex(*it.pEdge());
        if (!index) {
            continue;
        }
        discardLabels(*it.pEdge());
        m_edges.erase(m_edges.begin() + static_cast<std::ptrdiff_t>(*index));
        document.edges.erase(document.edges.begin() + static_cast<std::ptrdiff_t>(*index));
        m_indexOf.erase(it.pEdge());
        for (std::size_t i = *index; i < m_edges.size(); ++i) {
            m_indexOf[m_edges[i]] = i;
        }
    }
}

void Drawing::addMetaEdges(GraphDocument& document) {
    QxDNodePairDList needed;
    QxDEdgeDList outdated;
    QxDEdgeDList added;
    m_manager->checkMetaEdges(needed, outdated);
    forgetEdges(outdated, document);
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
