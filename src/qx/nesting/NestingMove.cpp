// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/nesting/internal/NestingMove.h"

#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxPNode.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/drawing/bounds/internal/Coverage.h"
#include "qx/drawing/path/internal/TakeBends.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/nesting/QxDChildGraphForestEdge.h"
#include "qx/nesting/QxDChildGraphForestNode.h"
#include "qx/nesting/internal/Frame.h"

namespace qx::internal {

void appendContents(QxDGraph& graph, std::vector<QxDGraph*>& graphs) {
    const auto append = [&](QxDGraph* one) {
        graphs.push_back(one);
        if (QxDGraph* hidden = one->pHideGraph()) {
            graphs.push_back(hidden);
        }
    };
    std::size_t next = graphs.size();
    append(graph.isHideGraph() != 0 && graph.pHideFromGraph() != nullptr ? graph.pHideFromGraph()
                                                                         : &graph);
    for (; next < graphs.size(); ++next) {
        if (const QxDChildGraphForestNode* node = graphs[next]->pChildGraphForestNode()) {
            for (const auto* relation : each<QxDChildGraphForestEdge>(*node->pOutEdgeList())) {
                append(relation->pChildGraph());
            }
        }
    }
}

namespace {

/// Whether the place of the graph in the drawing depends on its transform.
bool isPlaced(const QxDGraph& graph) {
    return graph.nested() != 0 && graph.isAnchorGraph() == 0;
}

}  // namespace

NestingMove::NestingMove(QxDGraph& graph)
    : m_graph(&graph),
      m_anchor(graph.pAnchorGraph()),
      m_before(*graph.pTransform()),
      m_held(graph) {
    collect();
}

void NestingMove::collect() {
    const QxDGraphManager* manager = m_graph->pOwnerGraphManager();
    const QxDGraph* between = manager != nullptr ? manager->pQueryIntergraph() : nullptr;
    if (between == nullptr || between->numberOfAllEdges() == 0 || !isPlaced(*m_graph)) {
        return;
    }
    std::vector<QxDGraph*> inside;
    appendContents(*m_graph, inside);
    for (QxDGraph* graph : inside) {
        graph->setFlag(flags::GraphCollected, 1);
    }
    const bool holdsAnchor =
        m_anchor != nullptr && (m_anchor->flagWord() & flags::GraphCollected) != 0;
    const auto isInside = [](const QxDNode* node) {
        const QxDGraph* graph = node != nullptr ? node->pOwnerGraph() : nullptr;
        return graph != nullptr && (graph->flagWord() & flags::GraphCollected) != 0;
    };
    for (const QxDGraph* graph : inside) {
        for (QxDEdge* edge : each<QxDEdge>(*graph->pLeavingIntergraphEdgeList())) {
            m_edges.push_back({Ref<QxDEdge>(edge), !holdsAnchor && isInside(edge->pTargetNode())});
        }
        for (QxDEdge* edge : each<QxDEdge>(*graph->pEnteringIntergraphEdgeList())) {
            if (!isInside(edge->pSourceNode())) {
                m_edges.push_back({Ref<QxDEdge>(edge), false});
            }
        }
        for (QxDEdge* edge : each<QxDEdge>(*graph->pUnconnectedIntergraphEdgeList())) {
            const bool isSource =
                edge->pSourceNode() != nullptr && edge->pSourceNode()->pOwnerGraph() == graph;
            if (isSource && isInside(edge->pTargetNode())) {
                m_edges.push_back({Ref<QxDEdge>(edge), !holdsAnchor});
            }
        }
    }
    for (QxDGraph* graph : inside) {
        graph->setFlag(flags::GraphCollected, 0);
    }
}

NestingMove::~NestingMove() {
    for (const Part& part : m_edges) {
        if (part.edge->intergraphEdge() == 0 || part.edge->pOwnerGraph() == nullptr) {
            continue;  // a listener has taken it away
        }
        if (part.isInside) {
            moveBends(*part.edge);
        }
        part.edge->actOnEndObjectChange();
    }
}

/// From the coordinates of the anchor graph inward by the former transform, outward by the new one.
void NestingMove::moveBends(QxDEdge& edge) const {
    const QxDGraph* around = m_graph->pNestedWithinGraph();
    if (around == nullptr || m_anchor == nullptr) {
        return;
    }
    const FrameMap outward(around, m_anchor);
    const FrameMap inward(m_anchor, around);
    const QxTransform& now = *m_graph->pTransform();
    const bool isShift = m_before.scaleX() == now.scaleX() && m_before.scaleY() == now.scaleY();
    QxDTuple from;
    QxDTuple to;
    m_before.transformPoint(QxDTuple(0.0, 0.0), from);
    now.transformPoint(QxDTuple(0.0, 0.0), to);
    const std::int32_t dx = roundedShift((to.x() - from.x()) * outward.scaleX());
    const std::int32_t dy = roundedShift((to.y() - from.y()) * outward.scaleY());
    for (QxPNode* bend : heldBends(edge)) {
        if (bend->pOwnerEdge() != &edge) {
            continue;
        }
        if (isShift) {
            bend->ntMove(dx, dy);
            continue;
        }
        const QxPoint center = bend->iCenter();
        QxDTuple p = inward.exact(QxDTuple(center.x(), center.y()));
        m_before.inverseTransformPoint(p, p);
        now.transformPoint(p, p);
        p = outward.exact(p);
        bend->ntMoveTo(qx::floorHalfUp(p.x()), qx::floorHalfUp(p.y()));
    }
}

}  // namespace qx::internal
