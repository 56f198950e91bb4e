// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Lists of what lies in a rectangle, of one graph and of the whole visible drawing.

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxConnectorManager.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxDrawingIters.h"
#include "qx/drawing/QxLabelIters.h"
#include "qx/drawing/QxPEdge.h"
#include "qx/drawing/QxPNode.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/spatial/QxQTree.h"

using qx::internal::each;

namespace {

template <class List>
void clear(List* list) {
    if (list != nullptr) {
        list->deleteAllCells();
    }
}

/// Which objects are asked for: those that meet the rectangle, or those that do not.
class Region {
public:
    Region(const QxRect& rect, int inside) : m_rect(rect), m_inside(inside != 0 ? 1 : 0) {}

    /// By the rectangle that a user would point at; what is set aside is not part of the answer.
    template <class Object>
    bool takes(const Object& object) const {
        return (object.flagWord() & (qx::flags::Processing | qx::flags::TemporarilyInvisible)) ==
                   0 &&
               takesRect(object);
    }
    template <class Object>
    bool takesRect(const Object& object) const {
        QxRect rect;
        object.getUserBoundingRect(rect, 1);
        return m_rect.intersectsRect(rect) == m_inside;
    }
    bool takes(const QxPNode& bend) const { return m_rect.within(bend.iCenter()) == m_inside; }
    bool takes(const QxPEdge& segment, int clipped) const {
        return segment.ntIntersectsRect(&m_rect, clipped) == m_inside;
    }
    template <class Labels, class List>
    void collectLabels(Labels labels, List* list) const {
        if (list == nullptr) {
            return;
        }
        for (auto* label : labels) {
            if (takes(*label)) {
                list->appendLabel(label);
            }
        }
    }

private:
    QxRect m_rect;
    int m_inside;
};

}  // namespace

// --- One graph

void QxDGraph::buildNodeRelatedListsSourceNodeList(const QxDNodeDList& sourceNodes,
                                                   const QxRect& rect, QxDNodeDList* nodes,
                                                   QxNodeLabelDList* nodeLabels,
                                                   QxConnectorLabelDList* connectorLabels,
                                                   int inside) const {
    collectNodeRelated(sourceNodes, rect, nodes, nodeLabels, connectorLabels, inside);
}

void QxDGraph::collectNodeRelated(const QxDList& sourceNodes, const QxRect& rect,
                                  QxDNodeDList* nodes, QxNodeLabelDList* nodeLabels,
                                  QxConnectorLabelDList* connectorLabels, int inside) const {
    clear(nodes);
    clear(nodeLabels);
    clear(connectorLabels);
    const Region region(rect, inside);
    for (QxDNode* node : each<QxDNode>(sourceNodes)) {
        if (nodes != nullptr && region.takes(*node)) {
            nodes->appendNode(node);
        }
        region.collectLabels(QxNodeLabelIter(node), nodeLabels);
        if (connectorLabels != nullptr && node->hasConnectorLabels() != 0) {
            for (const QxConnector* connector :
                 each<QxConnector>(*node->pQueryConnectorManager())) {
                region.collectLabels(QxConnectorLabelIter(connector), connectorLabels);
            }
        }
    }
}

void QxDGraph::buildEdgeRelatedListsFromEdgeList(const QxDEdgeDList& sourceEdges,
                                                 const QxRect& rect, QxPNodeDList* pathNodes,
                                                 QxPEdgeDList* pathEdges,
                                                 QxEdgeLabelDList* edgeLabels, int inside) const {
    collectEdgeRelated(sourceEdges, rect, pathNodes, pathEdges, edgeLabels, inside);
}

void QxDGraph::collectEdgeRelated(const QxDList& sourceEdges, const QxRect& rect,
                                  QxPNodeDList* pathNodes, QxPEdgeDList* pathEdges,
                                  QxEdgeLabelDList* edgeLabels, int inside) const {
    clear(pathNodes);
    clear(pathEdges);
    clear(edgeLabels);
    const Region region(rect, inside);
    for (QxDEdge* edge : each<QxDEdge>(sourceEdges)) {
        region.collectLabels(QxEdgeLabelIter(edge), edgeLabels);
        if (pathNodes == nullptr && pathEdges == nullptr) {
            continue;
        }
        for (QxPathIter step(edge, QxIterForward); step; ++step) {
            QxPEdge* segment = step.pEdge();
            if (pathEdges != nullptr && segment->isUsable() != 0 &&
                region.takes(*segment, edge->isUpdatedVisiblePart())) {
                pathEdges->appendEdge(segment);
            }
            QxPNode* bend = step.pNode();
            if (pathNodes != nullptr && bend != nullptr && bend->isUsable() != 0 &&
                region.takes(*bend)) {
                pathNodes->appendNode(bend);
            }
        }
    }
}

void QxDGraph::buildNodeRelatedLists(const QxRect& rect, QxDNodeDList* nodes,
                                     QxNodeLabelDList* nodeLabels,
                                     QxConnectorLabelDList* connectorLabels,
                                     int rectInOwnCoordinates, int inside) const {
    QxRect region = rect;
    if (rectInOwnCoordinates == 0) {
        inverseExpandedTransformRect(region);
    }
    if (inside != 0 && canUseQuadTree() != 0) {
        m_quadTree->buildLists(&region, nodes, nodeLabels, nullptr, nullptr, nullptr, nullptr,
                               nullptr, connectorLabels, 0);
    } else {
        collectNodeRelated(*pNodeList(), region, nodes, nodeLabels, connectorLabels, inside);
    }
}

void QxDGraph::buildEdgeRelatedLists(const QxRect& rect, QxPNodeDList* pathNodes,
                                     QxPEdgeDList* pathEdges, QxEdgeLabelDList* edgeLabels,
                                     int rectInOwnCoordinates, int inside) const {
    QxRect region = rect;
    if (rectInOwnCoordinates == 0) {
        inverseExpandedTransformRect(region);
    }
    if (inside != 0 && canUseQuadTree() != 0) {
        m_quadTree->buildLists(&region, nullptr, nullptr, pathNodes, pathEdges, edgeLabels, nullptr,
                               nullptr, nullptr, 0);
    } else {
        collectEdgeRelated(*pEdgeList(), region, pathNodes, pathEdges, edgeLabels, inside);
    }
}

void QxDGraph::buildGraphLabelList(const QxRect& rect, QxGraphLabelDList* graphLabels,
                                   int rectInOwnCoordinates, int inside) const {
    if (graphLabels == nullptr || (rectInOwnCoordinates == 0 && isVisible() == 0)) {
        return;
    }
    clear(graphLabels);
    QxRect mapped = rect;
    if (rectInOwnCoordinates == 0) {
        inverseExpandedTransformRect(mapped);
    }
    const Region region(mapped, inside);
    for (QxGraphLabel* label : QxGraphLabelIter(this)) {
        if (region.takesRect(*label)) {
            graphLabels->appendLabel(label);
        }
    }
}

void QxDGraph::buildLists(const QxRect& rect, QxDNodeDList* nodes, QxPNodeDList* pathNodes,
                          QxPEdgeDList* pathEdges, QxNodeLabelDList* nodeLabels,
                          QxConnectorLabelDList* connectorLabels, QxEdgeLabelDList* edgeLabels,
                          QxGraphLabelDList* graphLabels, int rectInOwnCoordinates,
                          int inside) const {
    if (rectInOwnCoordinates == 0 && isVisible() == 0) {
        return;
    }
    QxRect region = rect;
    if (rectInOwnCoordinates == 0) {
        inverseExpandedTransformRect(region);
    }
    collectNodeRelated(*pNodeList(), region, nodes, nodeLabels, connectorLabels, inside);
    collectEdgeRelated(*pEdgeList(), region, pathNodes, pathEdges, edgeLabels, inside);
    buildGraphLabelList(rect, graphLabels, rectInOwnCoordinates, inside);
}

void QxDGraph::buildIntergraphEdgeRelatedLists(const QxRect& rect, QxPNodeDList* pathNodes,
                                               QxPEdgeDList* pathEdges,
                                               QxEdgeLabelDList* edgeLabels,
                                               int rectInOwnCoordinates, int inside) const {
    const QxDGraphManager* manager = pOwnerGraphManager();
    if ((rectInOwnCoordinates == 0 && isVisible() == 0) || manager == nullptr ||
        manager->pQueryIntergraph() == nullptr ||
        (pathNodes == nullptr && pathEdges == nullptr && edgeLabels == nullptr)) {
        return;
    }
    clear(pathNodes);
    clear(pathEdges);
    clear(edgeLabels);
    if (manager->pAnchorGraph() == nullptr) {
        return;
    }
    QxRect region = rect;
    if (rectInOwnCoordinates != 0 && isAnchorGraph() == 0) {
        expandedTransformRect(region);
    }
    QxDEdgeDList edges;
    buildContainedIntergraphEdgeList(edges);
    collectEdgeRelated(edges, region, pathNodes, pathEdges, edgeLabels, inside);
}

// --- The visible drawing

namespace {

/// Moves what one graph has answered to the end of what is asked for.
template <class List>
class Answer {
public:
    explicit Answer(List* all) : m_all(all) { clear(all); }
    List* list() { return m_all != nullptr ? &m_part : nullptr; }
    void take() {
        for (QxObject* object : each<QxObject>(m_part)) {
            m_all->appendObject(object);
        }
        m_part.deleteAllCells();
    }

private:
    List* m_all;
    List m_part;
};

/// Calls `ask` with each visible graph, the anchor graph first.
template <class Ask>
void askShownGraphs(const QxDGraphManager& manager, const Ask& ask) {
    if (QxDGraph* anchor = manager.pAnchorGraph()) {
        QxDGraphDList graphs;
        graphs.appendGraph(anchor);
        anchor->buildAllNestedGraphList(graphs);
        for (const QxDGraph* graph : each<QxDGraph>(graphs)) {
            ask(*graph);
        }
    }
}

}  // namespace

void QxDGraphManager::buildLists(const QxRect& rect, QxDNodeDList* nodes, QxPNodeDList* pathNodes,
                                 QxPEdgeDList* pathEdges, QxNodeLabelDList* nodeLabels,
                                 QxConnectorLabelDList* connectorLabels,
                                 QxEdgeLabelDList* edgeLabels, QxGraphLabelDList* graphLabels,
                                 int inside) const {
    Answer n(nodes);
    Answer pn(pathNodes);
    Answer pe(pathEdges);
    Answer nl(nodeLabels);
    Answer cl(connectorLabels);
    Answer el(edgeLabels);
    Answer gl(graphLabels);
    askShownGraphs(*this, [&](const QxDGraph& graph) {
        graph.buildLists(rect, n.list(), pn.list(), pe.list(), nl.list(), cl.list(), el.list(),
                         gl.list(), 0, inside);
        n.take();
        pn.take();
        pe.take();
        nl.take();
        cl.take();
        el.take();
        gl.take();
    });
}

void QxDGraphManager::buildNodeRelatedLists(const QxRect& rect, QxDNodeDList* nodes,
                                            QxNodeLabelDList* nodeLabels,
                                            QxConnectorLabelDList* connectorLabels,
                                            int inside) const {
    Answer n(nodes);
    Answer nl(nodeLabels);
    Answer cl(connectorLabels);
    askShownGraphs(*this, [&](const QxDGraph& graph) {
        graph.buildNodeRelatedLists(rect, n.list(), nl.list(), cl.list(), 0, inside);
        n.take();
        nl.take();
        cl.take();
    });
}

void QxDGraphManager::buildEdgeRelatedLists(const QxRect& rect, QxPNodeDList* pathNodes,
                                            QxPEdgeDList* pathEdges, QxEdgeLabelDList* edgeLabels,
                                            int inside) const {
    Answer pn(pathNodes);
    Answer pe(pathEdges);
    Answer el(edgeLabels);
    askShownGraphs(*this, [&](const QxDGraph& graph) {
        graph.buildEdgeRelatedLists(rect, pn.list(), pe.list(), el.list(), 0, inside);
        pn.take();
        pe.take();
        el.take();
    });
}

void QxDGraphManager::buildGraphLabelList(const QxRect& rect, QxGraphLabelDList* graphLabels,
                                          int inside) const {
    Answer gl(graphLabels);
    askShownGraphs(*this, [&](const QxDGraph& graph) {
        graph.buildGraphLabelList(rect, gl.list(), 0, inside);
        gl.take();
    });
}

void QxDGraphManager::buildIntergraphEdgeRelatedLists(const QxRect& rect, QxPEdgeDList* pathEdges,
                                                      QxPNodeDList* pathNodes,
                                                      QxEdgeLabelDList* edgeLabels,
                                                      int inside) const {
    clear(pathEdges);
    clear(pathNodes);
    clear(edgeLabels);
    if (const QxDGraph* anchor = pAnchorGraph()) {
        anchor->buildIntergraphEdgeRelatedLists(rect, pathNodes, pathEdges, edgeLabels, 0, inside);
    }
}
