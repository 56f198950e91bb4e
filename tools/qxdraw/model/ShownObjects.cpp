// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "model/ShownObjects.h"

#include "qx/drawing/QxDrawingIters.h"
#include "qx/drawing/QxLabelIters.h"
#include "qx/drawing/QxPEdge.h"
#include "qx/spatial/QxQTree.h"

namespace qxdraw {

namespace {

template <class Iter, class List, class Object>
void append(const List& list, std::vector<Object*>& objects) {
    for (auto* object : Iter(&list)) {
        objects.push_back(object);
    }
}

}  // namespace

ShownObjects::ShownObjects(const Drawing& drawing) : m_drawing(drawing) {
    for (std::size_t i = 0; i < drawing.numberOfGraphs(); ++i) {
        if (drawing.graph(i).isVisible() != 0) {
            drawing.graph(i).calculateQuadTree();
        }
    }
    if (QxDGraph* between = drawing.manager().pQueryIntergraph()) {
        between->calculateQuadTree();
    }
}

void ShownObjects::find(const QxRect& region, bool inOrder) {
    for (auto* labels : {&nodeLabels, &edgeLabels, &connectorLabels, &graphLabels}) {
        labels->clear();
    }
    nodes.clear();
    segments.clear();
    connectors.clear();
    findIn(m_drawing.graph(), region, inOrder);
    for (std::size_t i = 0; i < nodes.size(); ++i) {  // the list grows on the way
        if (const QxDGraph* nested = nodes[i]->pNestedGraph()) {
            findIn(*nested, region, inOrder);
        }
    }
    if (const QxDGraph* between = m_drawing.manager().pQueryIntergraph()) {
        findIn(*between, region, inOrder);
    }
}

void ShownObjects::findIn(const QxDGraph& graph, const QxRect& region, bool inOrder) {
    QxRect own = region;
    graph.inverseExpandedTransformRect(own);
    graph.pQuadTree()->buildLists(&own, &m_nodes, &m_nodeLabels, nullptr, &m_segments,
                                  &m_edgeLabels, &m_graphLabels, &m_connectors, &m_connectorLabels,
                                  inOrder ? 1 : 0);
    append<QxDNodeDListIter>(m_nodes, nodes);
    for (QxPEdge* segment : QxPEdgeDListIter(&m_segments)) {
        if (segment->isVisible() != 0) {  // between graphs there are edges with hidden ends
            segments.push_back(segment);
        }
    }
    append<QxConnectorDListIter>(m_connectors, connectors);
    append<QxNodeLabelDListIter>(m_nodeLabels, nodeLabels);
    append<QxEdgeLabelDListIter>(m_edgeLabels, edgeLabels);
    append<QxConnectorLabelDListIter>(m_connectorLabels, connectorLabels);
    append<QxGraphLabelDListIter>(m_graphLabels, graphLabels);
}

std::size_t ShownObjects::count() const {
    return nodes.size() + segments.size() + connectors.size() + nodeLabels.size() +
           edgeLabels.size() + connectorLabels.size() + graphLabels.size();
}

}  // namespace qxdraw
