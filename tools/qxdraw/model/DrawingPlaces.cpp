// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Where nodes and the boxes of nested graphs stand, and how these keep up with what is in them.

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "model/Drawing.h"
#include "model/Nesting.h"

namespace qxdraw {

namespace {

std::int32_t toUnits(double value) {
    return static_cast<std::int32_t>(std::lround(value));
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

}  // namespace

void setMargins(QxDGraph& graph, std::int32_t margin) {
    graph.leftMarginConstantSpacing(margin);
    graph.rightMarginConstantSpacing(margin);
    graph.bottomMarginConstantSpacing(margin);
    graph.topMarginConstantSpacing(margin);
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

}  // namespace qxdraw
