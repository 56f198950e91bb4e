// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Where everything was when a move of a selection began, the way back, and what the move has come
// to cover.

#include "qx/drawing/QxConnectorManager.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxEdgeLabel.h"
#include "qx/drawing/QxGraphLabel.h"
#include "qx/drawing/QxPEdge.h"
#include "qx/drawing/QxPNode.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/drawing/bounds/internal/ShiftedRect.h"
#include "qx/drawing/internal/AskedCoordinates.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/update/QxAffectedObjectInfo.h"
#include "qx/update/QxDEdgeInitialGeometry.h"
#include "qx/update/internal/AffectedState.h"
#include "qx/update/internal/EdgeEnds.h"

using qx::internal::AffectedState;
using qx::internal::each;
using qx::internal::Reactions;
using qx::internal::Ref;
using qx::internal::Snapshot;

namespace {

/// Puts the nested graph of a node back to where it was seen, and what leads into it with it.
void restoreNested(QxDNode& node, const QxTransform& saved) {
    QxDGraph* nested = node.pNestedGraph();
    if (nested == nullptr) {
        return;
    }
    const QxDTuple now = nested->pTransform()->targetOrigin();
    const QxDTuple then = saved.targetOrigin();
    const QxPoint way(qx::floorHalfUp(then.x() - now.x()), qx::floorHalfUp(then.y() - now.y()));
    node.actOnMoveTo(node.iCenter() - way);
    if (nested->pChangeableTransform() != nullptr) {
        *nested->pChangeableTransform() = saved;  // to the last bit
    }
}

/// The rectangle of a label of that graph with its center there, in anchor coordinates.
QxRect seenRect(const QxLabel& label, const QxDGraph& graph, const QxPoint& center) {
    QxRect rect = qx::internal::shiftedRect(center, label.ntSize());
    graph.expandedTransformRect(rect);
    return rect;
}

QxRect seenRect(const QxDNode& node) {
    QxRect rect;
    node.ntBoundingRectWithSubObjects(rect, 1, 1, 1);
    if (const QxDGraph* graph = node.pOwnerGraph()) {
        graph->expandedTransformRect(rect);
    }
    return rect;
}

void forgetPlaces(const QxDList& labels) {
    for (QxLabel* label : each<QxLabel>(labels)) {
        label->restoreMovedLabel(0);
    }
}

void savePlaces(const QxDList& labels) {
    for (QxLabel* label : each<QxLabel>(labels)) {
        label->storeMovedLabel();
    }
}

/// Puts the labels back and saves their places again.
void restorePlaces(const QxDList& labels) {
    for (QxLabel* label : Snapshot<QxLabel>(&labels)) {
        if (label->pStoredCenter() != nullptr) {
            label->restoreMovedLabel(1);
            label->storeMovedLabel();
        }
    }
}

}  // namespace

void QxAffectedObjectInfo::saveNode(QxDNode& node) {
    node.storeMovedNode();
    AffectedState::SavedNode saved{Ref(node), node.iSize(), node.originalSize(), {}, {}};
    if (const QxDGraph* nested = node.pNestedGraph()) {
        saved.nested = *nested->pTransform();
    }
    if (node.numberOfAllConnectors() != node.numberOfConnectors()) {
        for (QxConnector* connector : each<QxConnector>(*node.pQueryConnectorManager())) {
            if (connector->specified() == 0) {
                saved.calculated.push_back(
                    {Ref(*connector), connector->getPerMil(), connector->ntOffset()});
            }
        }
    }
    m_state->nodes.push_back(std::move(saved));
}

void QxAffectedObjectInfo::storeInitialPositions() {
    if (!m_state->manager) {
        return;
    }
    m_state->nodes.clear();
    for (QxDNode* node : each<QxDNode>(m_movedNodes)) {
        saveNode(*node);
    }
    for (QxConnector* connector : each<QxConnector>(m_movedConnectors)) {
        connector->storeMovedConnector();
    }
    storeMovedEdges();
    savePlaces(m_movedEdgeLabels);
    savePlaces(m_movedNodeLabels);
    savePlaces(m_movedConnectorLabels);
    savePlaces(m_movedGraphLabels);
    storeReroutedEdges();
    storeAffectedGraphLabels();
}

void QxAffectedObjectInfo::restoreNodes() {
    for (std::size_t i = 0; i < m_state->nodes.size(); ++i) {
        const AffectedState::SavedNode saved = m_state->nodes[i];
        QxDNode& node = *saved.node;
        if (node.pRectBeforeMove() == nullptr) {
            continue;
        }
        if (!(node.iSize() == saved.size)) {
            node.ntResize(saved.size);
            node.originalSize(saved.originalSize);
        }
        node.restoreMovedNode();
        node.storeMovedNode();
        if (saved.nested) {
            restoreNested(node, *saved.nested);
        }
        for (const auto& one : saved.calculated) {
            if (one.connector->pOwnerNode() == &node) {
                one.connector->ntSetPerMil(one.perMil);
                one.connector->ntSetOffset(one.offset);
            }
        }
    }
}

void QxAffectedObjectInfo::restoreInitialPositions() {
    restoreNodes();
    for (QxConnector* connector : Snapshot<QxConnector>(&m_movedConnectors)) {
        if (connector->pRectBeforeMove() != nullptr) {
            connector->restoreMovedConnector();
            connector->storeMovedConnector();
        }
    }
    restoreMovedEdges();
    restorePlaces(m_movedEdgeLabels);
    restorePlaces(m_movedNodeLabels);
    restorePlaces(m_movedConnectorLabels);
    restorePlaces(m_movedGraphLabels);
}

void QxAffectedObjectInfo::deleteInitialPositions() {
    cleanUpLabelInfo();
    for (QxDNode* node : each<QxDNode>(m_movedNodes)) {
        node->pRectBeforeMove(nullptr);
    }
    m_state->nodes.clear();
    for (QxConnector* connector : each<QxConnector>(m_movedConnectors)) {
        connector->pRectBeforeMove(nullptr);
    }
    for (QxDEdge* edge : each<QxDEdge>(m_movedEdges)) {
        edge->deleteMovedEdgeInitialPosition();
    }
    forgetPlaces(m_movedEdgeLabels);
    forgetPlaces(m_movedNodeLabels);
    forgetPlaces(m_movedConnectorLabels);
    forgetPlaces(m_movedGraphLabels);
    deleteInfoAffectedGraphLabels();
    if (m_state->reactions && !m_state->reactions->isRunning()) {
        m_state->reactions.reset();
    }
}

void QxAffectedObjectInfo::storeMovedEdges() {
    for (QxDEdge* edge : each<QxDEdge>(m_movedEdges)) {
        edge->storeMovedEdge();
    }
}

void QxAffectedObjectInfo::restoreMovedEdges() {
    for (QxDEdge* edge : Snapshot<QxDEdge>(&m_movedEdges)) {
        edge->restoreMovedEdge();
        edge->storeMovedEdge();
    }
}

// --- Edges that follow ------------------------------------------------------------------------

void QxAffectedObjectInfo::setDrag(QxDEdge& edge) {
    if (edge.pEdgeInitialGeometry() == nullptr && qx::internal::isActive(edge)) {
        m_state->reactions->add(edge, m_inputBend != nullptr
                                          ? new QxDEdgeInitialGeometry(m_inputBend)
                                          : new QxDEdgeInitialGeometry(m_inputSegment));
    }
}

void QxAffectedObjectInfo::storeReroutedEdges() {
    if (!m_state->manager) {
        return;
    }
    if (!m_state->reactions) {
        m_state->reactions = std::make_unique<Reactions>(*m_state->manager);
    }
    for (QxDEdge* edge : each<QxDEdge>(m_reroutedEdges)) {
        if (m_inputBend != nullptr || m_inputSegment != nullptr) {
            setDrag(*edge);
        } else {
            m_state->reactions->add(*edge);
        }
    }
}

void QxAffectedObjectInfo::restoreReroutedEdges() {
    if (m_state->reactions) {
        m_state->reactions->restore();
    }
}

void QxAffectedObjectInfo::performRouting(const QxDEdgeDList* edges) {
    if (edges == nullptr || !m_state->reactions) {
        return;
    }
    const Snapshot<QxDEdge> some(edges);
    for (QxDEdge* edge : some) {
        setInvisibleEdge(edge, 0);
        m_state->reactions->add(*edge);
    }
    m_state->reactions->run();
    for (const QxDEdge* edge : some) {
        QxRect rect;
        if (edge->getBoundingRectWithPathNodesAndLabels(rect, 0) != 0) {
            grow(m_currentRect, m_hasCurrentRect, rect);
        }
    }
}

void QxAffectedObjectInfo::setInvisibleEdge(QxDEdge* edge, int invisible) {
    const int value = invisible != 0 ? 1 : 0;
    if (edge == nullptr || edge->temporarilyInvisible() == value) {
        return;
    }
    if (edge->hasBends() != 0) {
        for (QxPathIter part(edge); part; ++part) {
            part.pEdge()->temporarilyInvisible(value);
            part.pEdge()->inVisiblePart(1 - value);
            if (part.pNode() != nullptr) {
                part.pNode()->temporarilyInvisible(value);
                part.pNode()->inVisiblePart(1 - value);
            }
        }
    } else {
        edge->pSourceOrPathEdge()->temporarilyInvisible(value);
        edge->pSourceOrPathEdge()->inVisiblePart(1 - value);
    }
    edge->temporarilyInvisible(value);
    edge->usePartiallyUpdated(value);
    if (edge->pLabelList() != nullptr) {
        for (QxEdgeLabel* label : each<QxEdgeLabel>(*edge->pLabelList())) {
            label->temporarilyInvisible(value);
        }
    }
    if (value == 0) {
        edge->updateVisiblePart();
    }
}

void QxAffectedObjectInfo::getInfoForLabelsEdgeMoved() {
    for (const QxDEdge* edge : each<QxDEdge>(m_reroutedEdges)) {
        if (edge->pLabelList() != nullptr) {
            for (QxEdgeLabel* label : each<QxEdgeLabel>(*edge->pLabelList())) {
                label->collectInfoOwnerEdgeMoved();
            }
        }
    }
}

void QxAffectedObjectInfo::cleanUpLabelInfo() {
    for (const QxDEdge* edge : each<QxDEdge>(m_reroutedEdges)) {
        if (edge->pLabelList() != nullptr) {
            for (QxEdgeLabel* label : each<QxEdgeLabel>(*edge->pLabelList())) {
                label->cleanUpLabelMoveControlInfo();
            }
        }
    }
}

// --- Labels of graphs -------------------------------------------------------------------------

void QxAffectedObjectInfo::storeGraphLabels(QxDGraph* graph) {
    if (graph != nullptr && graph->numberOfGraphLabels() != 0) {
        for (QxGraphLabel* label : each<QxGraphLabel>(*graph->pLabelList())) {
            if (label->pStoredCenter() == nullptr) {
                label->storeMovedLabel();
            }
        }
    }
}

void QxAffectedObjectInfo::storeAffectedGraphLabels() {
    for (QxDGraph* graph : each<QxDGraph>(m_affectedGraphs)) {
        storeGraphLabels(graph);
    }
}

void QxAffectedObjectInfo::deleteInfoAffectedGraphLabels() {
    for (const QxDGraph* graph : each<QxDGraph>(m_affectedGraphs)) {
        if (graph->numberOfGraphLabels() != 0) {
            forgetPlaces(*graph->pLabelList());
        }
    }
}

// --- What the move covers ---------------------------------------------------------------------

const QxRect& QxAffectedObjectInfo::pInitialAffectedRect(const QxRect& rect) {
    m_hasInitialRect = true;
    return m_initialRect = rect;
}

const QxRect& QxAffectedObjectInfo::pCurrentAffectedRect(const QxRect& rect) {
    m_hasCurrentRect = true;
    return m_currentRect = rect;
}

void QxAffectedObjectInfo::grow(QxRect& all, bool& has, const QxRect& rect) {
    if (has) {
        all.updateBounds(&rect);
    } else {
        all = rect;
        has = true;
    }
}

void QxAffectedObjectInfo::noteFits() {
    m_state->fits.clear();
    m_resizedNodes.deleteAllCells();
    for (const QxDGraph* graph : each<QxDGraph>(m_affectedGraphs)) {
        QxDNode* node = graph->pNestedWithinNode();
        if (node != nullptr && graph->isAnchorGraph() == 0) {
            m_state->fits.push_back({Ref(*node), seenRect(*node)});
        }
    }
}

void QxAffectedObjectInfo::forceFits() {
    for (std::size_t i = m_state->fits.size(); i-- > 0;) {
        const Ref node(*m_state->fits[i].node);
        node->fitToNestedGraph(0, 0, 1);
    }
}

void QxAffectedObjectInfo::tellAffectedRects() {
    for (const AffectedState::Fit& fit : m_state->fits) {
        const QxRect now = seenRect(*fit.node);
        if (fit.node->isVisible() != 0 && !(now == fit.before)) {
            m_resizedNodes.appendNode(fit.node.get());
            hold(*fit.node);
            grow(m_initialRect, m_hasInitialRect, fit.before);
            grow(m_currentRect, m_hasCurrentRect, now);
        }
    }
    m_state->fits.clear();
    for (const QxDEdge* edge : each<QxDEdge>(m_reroutedEdges)) {
        QxRect rect;
        if (edge->getBoundingRectWithPathNodesAndLabels(rect, 0) != 0) {
            grow(m_currentRect, m_hasCurrentRect, rect);
        }
    }
    for (const QxGraphLabel* label : each<QxGraphLabel>(m_movedGraphLabels)) {
        const QxDGraph* graph = label->pGraph();
        const QxPoint* before = label->pStoredCenter();
        if (graph != nullptr && before != nullptr && *before != label->ntCenter()) {
            grow(m_initialRect, m_hasInitialRect, seenRect(*label, *graph, *before));
            grow(m_currentRect, m_hasCurrentRect, seenRect(*label, *graph, label->ntCenter()));
        }
    }
}
