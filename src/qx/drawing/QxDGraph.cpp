// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/drawing/QxDGraph.h"

#include <ostream>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxGraphLabel.h"
#include "qx/drawing/QxPNode.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/drawing/bounds/internal/ExtentTree.h"
#include "qx/drawing/internal/CloneLinks.h"
#include "qx/drawing/internal/Extras.h"
#include "qx/events/internal/FireDrawingChange.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/foundation/util/QxDebugStream.h"

using qx::internal::Change;
using qx::internal::each;
using qx::internal::GraphExtras;

QxDGraph::QxDGraph(QxOwnedObject* owner, int, QxFactory*)
    : QxGraph(owner), m_extents(std::make_unique<qx::internal::ExtentTree>()) {
    init();
}

QxDGraph::QxDGraph(const QxDGraph& source, QxDeepFlagEnum depth)
    : QxDGraph(source.pUnverifiedFactory(), 0, nullptr) {
    QxDGraph::copyGraph(&source, depth == QxDeepCopy ? 1 : 0);
}

QxDGraph::~QxDGraph() {
    partFromHideLink();
    discardQuadTree();
    needsUpdateGraphBounds(0);
    QxDGraph::emptyTopology();
    dropLabels();
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
    pClonedGraph(nullptr);
    setFlag(qx::flags::GraphBoundsInitialized, 0);
    m_bounds = QxRect();
    m_status = QxStatusUnchanged;
    pGeometricUpdateInfo(nullptr);
}

QxDGraphManager* QxDGraph::pOwnerGraphManager() const {
    return static_cast<QxDGraphManager*>(QxGraph::pOwnerGraphManager());
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
    return checkOwnLabels() & checkLabelCounts();
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

qx::internal::GraphObjectExtras* QxDGraph::vNewExtras() const {
    return new GraphExtras;
}

GraphExtras& QxDGraph::graphExtras() {
    return static_cast<GraphExtras&>(extras());
}

const GraphExtras* QxDGraph::pQueryGraphExtras() const {
    return static_cast<const GraphExtras*>(pQueryExtras());
}

QxDEdgeDList* QxDGraph::pAffectedEdgeList() {
    return &graphExtras().affectedEdges;
}

QxGeometricUpdateInfo* QxDGraph::pGeometricUpdateInfo() const {
    const GraphExtras* extras = pQueryGraphExtras();
    return extras != nullptr ? extras->updateInfo : nullptr;
}

QxGeometricUpdateInfo* QxDGraph::pGeometricUpdateInfo(QxGeometricUpdateInfo* info) {
    if (info != pGeometricUpdateInfo()) {
        graphExtras().updateInfo = info;
    }
    return info;
}

QxDGraph* QxDGraph::pClonedGraph() const {
    const GraphExtras* extras = pQueryGraphExtras();
    return extras != nullptr ? extras->clone : nullptr;
}

QxDGraph* QxDGraph::pClonedGraph(QxDGraph* graph) {
    if (graph != pClonedGraph()) {
        graphExtras().clone = graph;
    }
    return graph;
}

QxObject* QxDGraph::vCloneObject() const {
    return new QxDGraph(*this, QxDeepCopy);
}

QxObject* QxDGraph::vCloneAttributes() const {
    return new QxDGraph(*this, QxAttributeCopy);
}

void QxDGraph::copyGraph(const QxGraph* source, int deep) {
    if (source == nullptr || source == this) {
        return;
    }
    const qx::internal::Ref sourceAlive(*source);
    Change::ofWholeGraph(*this, [&] {
        resetLabelStates();
        const bool isDrawn = levelNumber() == source->levelNumber();
        if (isDrawn) {
            copySpacings(static_cast<const QxDGraph&>(*source));
        }
        QxGraph::copyGraph(source, deep);
        if (isDrawn) {
            copyDiagramming(static_cast<const QxDGraph&>(*source));
        }
    });
}

void QxDGraph::copySpacings(const QxDGraph& source) {
    disableQuadTree(1);
    m_leftMargin = source.m_leftMargin;
    m_rightMargin = source.m_rightMargin;
    m_bottomMargin = source.m_bottomMargin;
    m_topMargin = source.m_topMargin;
    m_nestedViewLeft = source.m_nestedViewLeft;
    m_nestedViewRight = source.m_nestedViewRight;
    m_nestedViewTop = source.m_nestedViewTop;
    m_nestedViewBottom = source.m_nestedViewBottom;
    m_minSize = source.m_minSize;
    m_multiEdgeSpacing = source.m_multiEdgeSpacing;
    m_transform = source.m_transform;
}

void QxDGraph::copyDiagramming(const QxDGraph& source) {
    m_status = source.m_status;
    pGeometricUpdateInfo(nullptr);  // a record is about one graph
    qx::internal::linkClone(source, *this, source.pOwnerGraphManager(),
                            [](QxDGraph& graph, QxDGraph* clone) { graph.pClonedGraph(clone); });
    orthogonalRouting(source.orthogonalRouting());
    needsUpdateGraphBounds(source.hasFlag(qx::flags::GraphNeedsBounds));
    disableQuadTree(source.needsUpdateQuadTree() != 0 ? 0 : 1);
    disableQuadTreeUpdates(source.disableQuadTreeUpdates());
}

void QxDGraph::internalDuplicateTopology(QxGraph* source, int disconnected, int deactivated) {
    if (source == nullptr || source == this) {
        return;
    }
    Change::ofWholeGraph(*this, [&] {
        QxGraph::internalDuplicateTopology(source, disconnected, deactivated);
        if (levelNumber() == source->levelNumber()) {
            duplicateLabelsOf(static_cast<const QxDGraph&>(*source));
        }
    });
}

void QxDGraph::actOnDiscard() {
    discardQuadTree();
    initDiagramming();
    emptyTopology();
    partFromHideLink();
    QxGraph::actOnDiscard();
}
