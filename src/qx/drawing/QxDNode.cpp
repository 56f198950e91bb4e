// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Life, copying and reports of drawing nodes.

#include "qx/drawing/QxDNode.h"

#include <ostream>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/bounds/internal/ExtentTree.h"
#include "qx/drawing/bounds/internal/GeometryBracket.h"
#include "qx/events/internal/FireDrawingChange.h"
#include "qx/foundation/geometry/QxShapeResource.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/foundation/util/QxDebugStream.h"

using qx::internal::each;
using qx::internal::ExtentTree;

/// What few nodes have.
struct QxDNode::Rare {
    QxDNode* clonedNode = nullptr;
    std::unique_ptr<const QxRect> rectBeforeMoveForSelfLoops;
};

QxDNode::QxDNode(QxOwnedObject* owner, int, QxFactory*) : QxGNode(owner) {
    setFlag(qx::flags::NodeForceClipping, 1);
}

QxDNode::QxDNode(const QxDNode& source, QxDeepFlagEnum depth)
    : QxDNode(source.pOwner(), 0, nullptr) {
    QxDNode::copyNode(&source, depth == QxDeepCopy ? 1 : 0);
}

QxDNode::~QxDNode() {
    // The hooks of this class have to run before it is gone.
    if (QxDGraph* graph = pOwnerGraph()) {
        graph->removeNode(this);
    }
    detachEdges();
    discardShapeResource();
    qx::internal::endEventSource(*this);
}

std::size_t QxDNode::sizeOf() const {
    return QxGNode::sizeOf() + sizeof(QxDNode) - sizeof(QxGNode) + (m_rare ? sizeof(Rare) : 0);
}

int QxDNode::checkInvariants() const {
    if (QxGNode::checkInvariants() == 0) {
        return 0;
    }
    if (m_rect.left() > m_rect.right() || m_rect.bottom() > m_rect.top()) {
        qxDebugStream() << "drawing node: the rectangle is inverted\n";
        return 0;
    }
    if ((m_extentSlot != ExtentTree::NoSlot) != (pOwnerGraph() != nullptr)) {
        qxDebugStream() << "drawing node: only a listed node has a place in its graph's extents\n";
        return 0;
    }
    if (m_shapeResource != nullptr && m_shapeResource->isRegistered() != 0 &&
        m_shapeResource->useCount() <= 0) {
        qxDebugStream() << "drawing node: a shared shape does not count its holders\n";
        return 0;
    }
    return 1;
}

int QxDNode::levelNumber() const {
    return 2;
}

void QxDNode::innerDebugOutput(int depth) const {
    QxGNode::innerDebugOutput(depth);
    qxDebugIndent(depth) << "center " << iX() << ' ' << iY() << ", size " << iWidth() << ' '
                         << iHeight() << '\n';
}

void QxDNode::actOnDiscard() {
    discardShapeResource();
    emptyTopology();
    QxGNode::actOnDiscard();
}

void QxDNode::actOnChangeOwner(QxOwnedObject* owner, int valid) {
    QxDGraph* oldGraph = pOwnerGraph();
    if (oldGraph != nullptr && (valid == 0 || owner != oldGraph)) {
        oldGraph->extents().clear(m_extentSlot);
    }
    QxGNode::actOnChangeOwner(owner, valid);
    refreshExtent();
}

void QxDNode::copyNode(const QxNode* source, int deep) {
    if (source == nullptr || source == this) {
        return;
    }
    const qx::internal::KeepAlive alive(const_cast<QxNode&>(*source));
    const bool isDrawn = levelNumber() == source->levelNumber();
    qx::internal::replaceNode(*this, [&] {
        const QxPoint oldCenter = iCenter();
        const QxSize oldSize = iSize();
        if (isDrawn) {
            copyDiagrammingNode(*static_cast<const QxDNode*>(source));
        }
        QxGNode::copyNode(source, deep);
        if (isDrawn && deep != 0) {
            // Of the source this clears the scratch fields, and registers a private shape.
            duplicateTopology(const_cast<QxNode*>(source));
        }
        actOnMoveTo(oldCenter);
        actOnResize(oldSize);
    });
}

void QxDNode::copyDiagrammingNode(const QxDNode& source) {
    setFlag(qx::flags::NodeForceClipping, source.forceClipping());
    const QxDGraph* graph = source.pOwnerGraph();
    const QxDGraphManager* manager = graph != nullptr ? graph->pOwnerGraphManager() : nullptr;
    if (manager != nullptr && manager->storeClones() != 0) {
        const_cast<QxDNode&>(source).pClonedNode(this);
    }
    pClonedNode(nullptr);
    m_status = source.m_status;
    const QxRect* saved = source.pRectBeforeMoveForSelfLoops();
    pRectBeforeMoveForSelfLoops(saved != nullptr ? new QxRect(*saved) : nullptr);
    vMoveTo(source.iCenter());
    vResizeAdjustConnectors(source.iSize());
    if (!(m_rect == source.m_rect)) {
        vMoveTo(source.iCenter());  // near the ends of the coordinate range the old size stuck out
    }
    discardShapeResource();
}

void QxDNode::internalDuplicateTopology(QxNode* source) {
    if (levelNumber() == source->levelNumber()) {
        shareShapeOf(*static_cast<QxDNode*>(source));
    }
    QxGNode::internalDuplicateTopology(source);
}

QxObject* QxDNode::vCloneObject() const {
    return new QxDNode(*this, QxDeepCopy);
}

QxObject* QxDNode::vCloneAttributes() const {
    return new QxDNode(*this, QxAttributeCopy);
}

int QxDNode::forceClipping(int value) {
    if ((value != 0) != (forceClipping() != 0)) {
        qx::internal::replaceNode(*this, [&] {
            setFlag(qx::flags::NodeForceClipping, value);
            invalidateIncidentEdgeEndPoints();
        });
    }
    return value;
}

QxDNode::Rare& QxDNode::rare() {
    if (!m_rare) {
        m_rare = std::make_unique<Rare>();
    }
    return *m_rare;
}

QxDNode* QxDNode::pClonedNode() const {
    return m_rare ? m_rare->clonedNode : nullptr;
}

QxDNode* QxDNode::pClonedNode(QxDNode* node) {
    if (node != pClonedNode()) {
        rare().clonedNode = node;
    }
    return node;
}

const QxRect* QxDNode::pRectBeforeMoveForSelfLoops() const {
    return m_rare ? m_rare->rectBeforeMoveForSelfLoops.get() : nullptr;
}

const QxRect* QxDNode::pRectBeforeMoveForSelfLoops(const QxRect* rect) {
    if (rect != pRectBeforeMoveForSelfLoops()) {
        rare().rectBeforeMoveForSelfLoops.reset(rect);
    }
    return rect;
}

void QxDNode::ntBoundingRectWithSubObjects(QxRect& rect, int, int, int) const {
    rect = m_rect;
}

int QxDNode::getBoundingRectWithSubObjects(QxRect& rect, int labels, int connectors,
                                           int connectorLabels, int inOwnGraph) const {
    const QxDGraph* graph = pOwnerGraph();
    if (inOwnGraph == 0 && (graph == nullptr || isVisible() == 0)) {
        return 0;
    }
    ntBoundingRectWithSubObjects(rect, labels, connectors, connectorLabels);
    if (inOwnGraph == 0) {
        graph->expandedTransformRect(rect);
    }
    return 1;
}

int QxDNode::getBoundingRectWithConnectors(QxRect& rect, int inOwnGraph) const {
    return getBoundingRectWithSubObjects(rect, 0, 1, 0, inOwnGraph);
}

void QxDNode::refreshExtent() {
    if (QxDGraph* graph = pOwnerGraph()) {
        QxRect rect;
        ntBoundingRectWithSubObjects(rect, 1, 1, 1);
        graph->extents().set(m_extentSlot, rect);
    }
}

void QxDNode::invalidateIncidentEdgeEndPoints() {
    for (const QxEdgeDList* list :
         {pInEdgeList(), pOutEdgeList(), pDisconnectedEdgeList(), pDeactivatedEdgeList()}) {
        for (QxDEdge* edge : each<QxDEdge>(*list)) {
            edge->actOnEndObjectChange();
        }
    }
}

/// One of the four moments at which a node reports: where its rectangle goes, and the hook by which
/// its edges report.
struct QxDNode::Phase {
    void (QxGeometricUpdateInfo::*collect)(const QxGraphObject*, const QxRect&);
    void (QxDEdge::*reportEdge)(QxGeometricUpdateInfo*, int, int);
    /// Which edges of the node's own graph have something to do at this moment.
    enum { Bent, Straight, None } edges;

    static const Phase BeforeRemove;
    static const Phase AfterInsert;
    static const Phase BeforeChange;
    static const Phase AfterChange;
};

const QxDNode::Phase QxDNode::Phase::BeforeRemove{&QxGeometricUpdateInfo::updateBeforeRemove,
                                                  &QxDEdge::actBeforeRemove, Bent};
const QxDNode::Phase QxDNode::Phase::AfterInsert{&QxGeometricUpdateInfo::updateAfterInsert,
                                                 &QxDEdge::actAfterInsert, Straight};
const QxDNode::Phase QxDNode::Phase::BeforeChange{
    &QxGeometricUpdateInfo::updateBeforeGeometryChanges, &QxDEdge::actBeforeGeometryChanges, None};
const QxDNode::Phase QxDNode::Phase::AfterChange{&QxGeometricUpdateInfo::updateAfterGeometryChanges,
                                                 &QxDEdge::actAfterGeometryChanges, Straight};

void QxDNode::report(const Phase& phase, QxGeometricUpdateInfo* own,
                     QxGeometricUpdateInfo* intergraph, int labels, int connectorLabels,
                     int connectors, int edges) const {
    const bool isWanted = own->needsRecursiveUpdate() != 0 ||
                          (intergraph != nullptr && intergraph->needsRecursiveUpdate() != 0);
    const QxDGraph* graph = own->pGraph();
    if (graph == nullptr || !isWanted) {
        return;
    }
    QxRect rect;
    ntBoundingRectWithSubObjects(rect, labels, connectors, connectorLabels);
    (own->*phase.collect)(this, rect);
    if (edges != 0) {
        reportEdges(phase, own, intergraph);
    }
}

void QxDNode::reportEdges(const Phase& phase, QxGeometricUpdateInfo* own,
                          QxGeometricUpdateInfo* intergraph) const {
    const QxDGraph* graph = own->pGraph();
    for (const QxEdgeDList* list : {pInEdgeList(), pOutEdgeList()}) {
        for (QxDEdge* edge : each<QxDEdge>(*list)) {
            if (phase.edges == Phase::None) {
                // After the change the far end is asked where it lies; in a large drawing that is
                // far away in memory, too.
                const QxDNode* source = edge->pSourceNode();
                __builtin_prefetch((source == this ? edge->pTargetNode() : source)->pIRect());
            }
            if (edge->pOwnerGraph() == graph) {
                // The ends lie within nodes, and bends stand in the graph's extents on their own.
                // They go when the node goes, for the edge is disconnected; a mere change leaves
                // them alone. A straight edge brings its visible part up to date, which costs
                // nothing; on one with bends that waits until it is asked for.
                if (phase.edges == (edge->hasBends() != 0 ? Phase::Bent : Phase::Straight)) {
                    (edge->*phase.reportEdge)(own, 1, 1);
                }
            } else if (intergraph != nullptr && edge->pOwnerGraph() == intergraph->pGraph()) {
                (edge->*phase.reportEdge)(intergraph, 1, 1);
            }
        }
    }
}

void QxDNode::emptyTopology() {
    qx::internal::UpdateRecords records(pOwnerGraph());
    reportEdges(Phase::BeforeRemove, &records.own, &records.intergraph);
    QxGNode::emptyTopology();
    reportEdges(Phase::AfterInsert, &records.own, &records.intergraph);
}

void QxDNode::actBeforeRemove(QxGeometricUpdateInfo* own, QxGeometricUpdateInfo* intergraph,
                              int labels, int connectorLabels, int connectors, int edges) {
    report(Phase::BeforeRemove, own, intergraph, labels, connectorLabels, connectors, edges);
}

void QxDNode::actAfterInsert(QxGeometricUpdateInfo* own, QxGeometricUpdateInfo* intergraph,
                             int labels, int connectorLabels, int connectors, int edges) {
    report(Phase::AfterInsert, own, intergraph, labels, connectorLabels, connectors, edges);
}

void QxDNode::actBeforeGeometryChanges(QxGeometricUpdateInfo* own,
                                       QxGeometricUpdateInfo* intergraph, int labels,
                                       int connectorLabels, int connectors, int edges) {
    report(Phase::BeforeChange, own, intergraph, labels, connectorLabels, connectors, edges);
}

void QxDNode::actAfterGeometryChanges(QxGeometricUpdateInfo* own, QxGeometricUpdateInfo* intergraph,
                                      int labels, int connectorLabels, int connectors, int edges) {
    report(Phase::AfterChange, own, intergraph, labels, connectorLabels, connectors, edges);
}

void QxDNode::vActBeforeGeometryChanges(QxGeometricUpdateInfo* own,
                                        QxGeometricUpdateInfo* intergraph) {
    actBeforeGeometryChanges(own, intergraph, 1, 1, 1, 1);
}

void QxDNode::vActAfterGeometryChanges(QxGeometricUpdateInfo* own,
                                       QxGeometricUpdateInfo* intergraph) {
    actAfterGeometryChanges(own, intergraph, 1, 1, 1, 1);
}
