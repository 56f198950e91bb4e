// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/drawing/QxDGraph.h"

#include <ostream>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxPNode.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/drawing/bounds/internal/ExtentTree.h"
#include "qx/events/internal/FireDrawingChange.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/foundation/util/QxDebugStream.h"
#include "qx/foundation/util/internal/KeepAlive.h"

using qx::internal::each;

QxDGraph::QxDGraph(QxOwnedObject* owner, int, QxFactory*)
    : QxGraph(owner), m_extents(std::make_unique<qx::internal::ExtentTree>()) {
    init();
}

QxDGraph::~QxDGraph() {
    needsUpdateGraphBounds(0);
    QxDGraph::emptyTopology();
    qx::internal::endEventSource(*this);
}

void QxDGraph::init() {
    m_transform.normalizeExt();
    for (QxSpacing* margin : {&m_leftMargin, &m_rightMargin, &m_bottomMargin, &m_topMargin}) {
        *margin = QxSpacing(20, 0);
    }
    setFlag(qx::flags::GraphNeedsBounds, 1);
    initDiagramming();
}

void QxDGraph::initDiagramming() {
    m_clonedGraph = nullptr;
    setFlag(qx::flags::GraphBoundsInitialized, 0);
    m_bounds = QxRect();
    m_status = QxStatusUnchanged;
    m_updateInfo = nullptr;
}

QxDGraphManager* QxDGraph::pOwnerGraphManager() const {
    return static_cast<QxDGraphManager*>(QxGraph::pOwnerGraphManager());
}

int QxDGraph::vIsVisible() const {
    const QxDGraphManager* manager = pOwnerGraphManager();
    return manager == nullptr || isIntergraph() != 0 ? 1 : manager->nestedInAnchorGraph(this);
}

std::size_t QxDGraph::sizeOf() const {
    return QxGraph::sizeOf() + sizeof(QxDGraph) - sizeof(QxGraph) + m_extents->sizeOf();
}

int QxDGraph::levelNumber() const {
    return 2;
}

int QxDGraph::canBeChildGraph() const {
    return isHideGraph() != 0 ? 0 : QxGraph::canBeChildGraph();
}

void QxDGraph::innerDebugOutput(int depth) const {
    QxGraph::innerDebugOutput(depth);
    qxDebugIndent(depth) << "bounds " << m_bounds.left() << ' ' << m_bounds.bottom() << ' '
                         << m_bounds.right() << ' ' << m_bounds.top() << '\n';
}

int QxDGraph::checkInvariants() const {
    if (QxGraph::checkInvariants() == 0) {
        return 0;
    }
    for (const QxDEdge* edge : each<QxDEdge>(*pEdgeList())) {
        if (edge->checkPath() == 0) {
            return 0;
        }
    }
    QxRect walked;
    QxRect kept;
    QxRect edges;
    int counts = calculateNodeBoundsWithLabelsAndConnectors(walked);
    if (edgeBounds(edges, 1) != 0) {
        walked = counts != 0 ? walked |= edges : edges;
        counts = 1;
    }
    if (calculateGraphBounds(kept) != counts || (counts != 0 && !(walked == kept))) {
        qxDebugStream() << "graph: the kept extent is not what its contents cover\n";
        return 0;
    }
    return 1;
}

void QxDGraph::debugOutputPathNodes(int depth) const {
    for (const QxDEdge* edge : each<QxDEdge>(*pEdgeList())) {
        for (QxPathNodeIter bend(edge); bend; ++bend) {
            bend.pNode()->innerDebugOutput(depth);
        }
    }
}

void QxDGraph::debugOutputPathEdges(int depth) const {
    for (const QxDEdge* edge : each<QxDEdge>(*pEdgeList())) {
        for (QxPathEdgeIter segment(edge); segment; ++segment) {
            segment.pEdge()->innerDebugOutput(depth);
        }
    }
}

int QxDGraph::vNeedsGeometricUpdate() const {
    return needsUpdateGraphBounds();
}

void QxDGraph::vSetNeedsGeometricUpdate(int value) {
    needsUpdateGraphBounds(value);
}

QxTriStateEnum QxDGraph::labelState(std::uint32_t lowBit) const {
    const int low = hasFlag(lowBit);
    const int high = hasFlag(lowBit << 1);
    if (low != high) {
        return QxTriStateUnknown;
    }
    return low != 0 ? QxTriStateYes : QxTriStateNo;
}

QxTriStateEnum QxDGraph::labelState(std::uint32_t lowBit, QxTriStateEnum state) {
    setFlag(lowBit, state != QxTriStateNo ? 1 : 0);
    setFlag(lowBit << 1, state == QxTriStateYes ? 1 : 0);
    return state;
}

// Without label classes no object has labels: a set that is not known to be empty is empty.
int QxDGraph::hasNodeLabels() const {
    return hasNodeLabelsState() == QxTriStateYes ? 1 : 0;
}

int QxDGraph::hasConnectorLabels() const {
    return hasConnectorLabelsState() == QxTriStateYes ? 1 : 0;
}

int QxDGraph::hasEdgeLabels() const {
    return hasEdgeLabelsState() == QxTriStateYes ? 1 : 0;
}

void QxDGraph::copyGraph(const QxGraph* source, int deep) {
    if (source == nullptr || source == this) {
        return;
    }
    const qx::internal::KeepAlive alive(*this);
    setFlag(LabelStates, 0);
    if (levelNumber() != source->levelNumber()) {
        QxGraph::copyGraph(source, deep);
        return;
    }
    const auto* other = static_cast<const QxDGraph*>(source);
    disableGraphBounds(1, 1);
    disableQuadTree(1);
    QxDGraphManager* manager = pOwnerGraphManager();
    QxDGraph* between = manager != nullptr ? manager->pQueryIntergraph() : nullptr;
    const int keepsBetween =
        between != nullptr && between != this ? between->needsUpdateGraphBounds() : 0;
    if (keepsBetween != 0) {
        between->disableGraphBounds(1, 1);
    }
    m_leftMargin = other->m_leftMargin;
    m_rightMargin = other->m_rightMargin;
    m_bottomMargin = other->m_bottomMargin;
    m_topMargin = other->m_topMargin;
    m_nestedViewLeft = other->m_nestedViewLeft;
    m_nestedViewRight = other->m_nestedViewRight;
    m_nestedViewTop = other->m_nestedViewTop;
    m_nestedViewBottom = other->m_nestedViewBottom;
    m_minSize = other->m_minSize;
    m_multiEdgeSpacing = other->m_multiEdgeSpacing;
    m_transform = other->m_transform;
    QxGraph::copyGraph(source, deep);
    copyDiagramming(other);
    if (keepsBetween != 0) {
        between->disableGraphBounds(0, 0);
    }
}

void QxDGraph::copyDiagramming(const QxDGraph* source) {
    m_status = source->m_status;
    m_updateInfo = source->m_updateInfo;
    const QxDGraphManager* manager = source->pOwnerGraphManager();
    if (manager != nullptr && manager->storeClones() != 0) {
        const_cast<QxDGraph*>(source)->m_clonedGraph = this;
    }
    m_clonedGraph = nullptr;
    orthogonalRouting(source->orthogonalRouting());
    disableGraphBounds(source->needsUpdateGraphBounds() != 0 ? 0 : 1, 0);
}

void QxDGraph::internalDuplicateTopology(QxGraph* source, int disconnected, int deactivated) {
    const qx::internal::KeepAlive alive(*this);
    const int keeps = hasFlag(qx::flags::GraphNeedsBounds);
    disableGraphBounds(1, 1);
    QxGraph::internalDuplicateTopology(source, disconnected, deactivated);
    if (keeps != 0) {
        disableGraphBounds(0, 0);
    }
}

void QxDGraph::actOnDiscard() {
    initDiagramming();
    emptyTopology();
    QxGraph::actOnDiscard();
}
