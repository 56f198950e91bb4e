// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Insertion and removal: the steps of the abstract graph inside update records.

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxFactory.h"
#include "qx/drawing/QxPEdge.h"
#include "qx/drawing/QxPNode.h"
#include "qx/drawing/bounds/internal/GeometryBracket.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/foundation/util/internal/Ref.h"

using qx::internal::each;
using qx::internal::UpdateRecords;

QxNode* QxDGraph::vNewNode(int type) {
    auto* factory = static_cast<QxFactory*>(pUnverifiedFactory());
    return factory != nullptr ? factory->qxNewDNode(this, type) : nullptr;
}

QxEdge* QxDGraph::vNewEdge(int type) {
    auto* factory = static_cast<QxFactory*>(pUnverifiedFactory());
    return factory != nullptr ? factory->qxNewDEdge(this, type) : nullptr;
}

QxNode* QxDGraph::vInsertNode(QxNode* node) {
    if (canInsertNode(node) == 0) {
        return nullptr;
    }
    const qx::internal::Ref alive(*node);
    UpdateRecords records(this);
    QxNode* inserted = QxGraph::vInsertNode(node);
    if (inserted != nullptr && node->pOwnerGraph() == this) {
        static_cast<QxDNode*>(node)->actAfterInsert(&records.own, &records.intergraph, 1, 1, 1, 1);
    }
    return inserted;
}

QxNode* QxDGraph::vRemoveNode(QxNode* node) {
    if (node == nullptr || node->pOwnerGraph() != this || node->isPathNode() != 0) {
        return nullptr;
    }
    UpdateRecords records(this);
    static_cast<QxDNode*>(node)->actBeforeRemove(&records.own, &records.intergraph, 1, 1, 1, 1);
    return QxGraph::vRemoveNode(node);
}

int QxDGraph::vDiscardNode(QxNode* node) {
    return QxGraph::vDiscardNode(node);
}

QxEdge* QxDGraph::vInsertEdge(QxEdge* edge, QxNode* source, QxNode* target) {
    if (source == nullptr || target == nullptr || canInsertEdge(edge) == 0) {
        return nullptr;
    }
    const qx::internal::Ref alive(*edge);
    QxGeometricUpdateInfo record(this, 0, 1);
    QxEdge* inserted = QxGraph::vInsertEdge(edge, source, target);
    if (inserted != nullptr && edge->pOwnerGraph() == this) {
        static_cast<QxDEdge*>(inserted)->actAfterInsert(&record, 1, 1);
    }
    record.enableAndRestoreState();
    return inserted;
}

void QxDGraph::actAfterInsertEdgeBeforeConnect(QxEdge* edge) {
    QxGraph::actAfterInsertEdgeBeforeConnect(edge);
    static_cast<QxDEdge*>(edge)->updatePathOwnership();
}

QxEdge* QxDGraph::vRemoveEdge(QxEdge* edge) {
    if (edge == nullptr || edge->pOwnerGraph() != this || edge->isPathEdge() != 0) {
        return nullptr;
    }
    auto* drawn = static_cast<QxDEdge*>(edge);
    const qx::internal::Ref alive(*edge);
    QxGeometricUpdateInfo record(this, 0, 1);
    drawn->actBeforeRemove(&record, 1, 1);
    QxEdge* removed = QxGraph::vRemoveEdge(edge);
    drawn->updatePathOwnership();
    record.enableAndRestoreState();
    return removed;
}

bool QxDGraph::reportPathEdge(QxEdge* edge, SegmentHook hook) {
    if (edge->isPathEdge() == 0) {
        return false;
    }
    auto* segment = static_cast<QxPEdge*>(edge);
    const QxDEdge* whole = segment->pOwnerEdge();
    if (whole != nullptr && whole->deactivated() == 0 && !whole->liesWithinItsEnds()) {
        QxGeometricUpdateInfo record(this, 0, 1);
        (segment->*hook)(&record, 1);
        record.enableAndRestoreState();
    }
    return true;
}

void QxDGraph::actOnConnectEdge(QxEdge* edge) {
    if (!reportPathEdge(edge, &QxPEdge::actAfterInsert)) {
        QxGraph::actOnConnectEdge(edge);
    }
}

void QxDGraph::actOnDisconnectEdge(QxEdge* edge) {
    if (!reportPathEdge(edge, &QxPEdge::actBeforeRemove)) {
        QxGraph::actOnDisconnectEdge(edge);
    }
}

void QxDGraph::actOnActivateEdge(QxEdge* edge) {
    if (!reportPathEdge(edge, &QxPEdge::actAfterInsert)) {
        QxGraph::actOnActivateEdge(edge);
    }
}

void QxDGraph::actOnDeactivateEdge(QxEdge* edge) {
    if (!reportPathEdge(edge, &QxPEdge::actBeforeRemove)) {
        QxGraph::actOnDeactivateEdge(edge);
    }
}

namespace {

using Info = QxGeometricUpdateInfo;

/// How the four kinds of objects report at one moment of a change.
struct ManyObjectsHooks {
    void (QxDNode::*node)(Info*, Info*, int, int, int, int);
    void (QxPNode::*bend)(Info*, int, int);
    void (QxDEdge::*edge)(Info*, int, int);
    void (QxPEdge::*segment)(Info*, int);
};

/// Calls `report` with every listed object and the record of the graph that owns it.
template <class T, class Report>
void reportToOwnersRecord(const QxDGraph* graph, const QxDList* list, Info* own, Info* between,
                          const Report& report) {
    if (list == nullptr) {
        return;
    }
    for (T* object : each<T>(*list)) {
        const QxDGraph* owner = object->pOwnerGraph();
        if (owner == graph) {
            report(object, own);
        } else if (owner != nullptr && between != nullptr && owner == between->pGraph()) {
            report(object, between);
        }
    }
}

void reportManyObjects(const QxDGraph* graph, const ManyObjectsHooks& hooks, Info* own,
                       Info* between, const QxDNodeDList* nodes, const QxPNodeDList* bends,
                       const QxDEdgeDList* edges, const QxPEdgeDList* segments) {
    reportToOwnersRecord<QxDNode>(graph, nodes, own, nullptr, [&](QxDNode* node, Info*) {
        (node->*hooks.node)(own, between, 1, 1, 1, 1);
    });
    if (own->needsRecursiveUpdate() == 0) {
        return;
    }
    reportToOwnersRecord<QxPNode>(graph, bends, own, between, [&](QxPNode* bend, Info* info) {
        (bend->*hooks.bend)(info, 0, 0);
    });
    reportToOwnersRecord<QxDEdge>(graph, edges, own, between, [&](QxDEdge* edge, Info* info) {
        (edge->*hooks.edge)(info, 1, 1);
    });
    reportToOwnersRecord<QxPEdge>(graph, segments, own, between, [&](QxPEdge* segment, Info* info) {
        (segment->*hooks.segment)(info, 0);
    });
}

}  // namespace

void QxDGraph::actAfterInsert(QxGeometricUpdateInfo* own, QxGeometricUpdateInfo* intergraph,
                              const QxDNodeDList* nodes, const QxPNodeDList* pathNodes,
                              const QxDEdgeDList* edges, const QxPEdgeDList* pathEdges,
                              const QxNodeLabelDList*, const QxConnectorLabelDList*,
                              const QxEdgeLabelDList*) {
    reportManyObjects(this,
                      {&QxDNode::actAfterInsert, &QxPNode::actAfterInsert, &QxDEdge::actAfterInsert,
                       &QxPEdge::actAfterInsert},
                      own, intergraph, nodes, pathNodes, edges, pathEdges);
}

void QxDGraph::actBeforeRemove(QxGeometricUpdateInfo* own, QxGeometricUpdateInfo* intergraph,
                               const QxDNodeDList* nodes, const QxPNodeDList* pathNodes,
                               const QxDEdgeDList* edges, const QxPEdgeDList* pathEdges,
                               const QxNodeLabelDList*, const QxConnectorLabelDList*,
                               const QxEdgeLabelDList*) {
    reportManyObjects(this,
                      {&QxDNode::actBeforeRemove, &QxPNode::actBeforeRemove,
                       &QxDEdge::actBeforeRemove, &QxPEdge::actBeforeRemove},
                      own, intergraph, nodes, pathNodes, edges, pathEdges);
}

int QxDGraph::vTransferTopology(QxGraph* graph) {
    auto* other = static_cast<QxDGraph*>(graph);
    if (other == nullptr || other == this || other->pUnverifiedFactory() == nullptr ||
        other->pUnverifiedFactory() != pUnverifiedFactory() ||
        other->isIntergraph() != isIntergraph()) {
        return 0;
    }
    QxDNodeDList nodes;
    QxDEdgeDList edges;
    nodes.QxDList::copyAppendList(other->pNodeList());
    edges.QxDList::copyAppendList(other->pEdgeList());
    UpdateRecords here(this);
    UpdateRecords there(other);
    // Graphs of one manager share the intergraph: the outer record collects, if it is not inert.
    const bool shared = there.intergraph.pGraph() == here.intergraph.pGraph();
    QxGeometricUpdateInfo* between = shared ? &here.intergraph : &there.intergraph;
    other->actBeforeRemove(&there.own, between, &nodes, nullptr, &edges, nullptr, nullptr, nullptr,
                           nullptr);
    const int moved = QxGraph::vTransferTopology(other);
    actAfterInsert(&here.own, &here.intergraph, &nodes, nullptr, &edges, nullptr, nullptr, nullptr,
                   nullptr);
    return moved;
}

void QxDGraph::emptyTopology() {
    const int keepsBounds = hasFlag(qx::flags::GraphNeedsBounds);
    disableGraphBounds(1, 1);
    QxGraph::emptyTopology();
    if (keepsBounds != 0) {
        disableGraphBounds(0, 1);
    }
}

QxDNode* QxDGraph::addNode(int type) {
    return static_cast<QxDNode*>(QxGraph::addNode(type));
}

QxDNode* QxDGraph::insertNode(QxDNode* node) {
    return static_cast<QxDNode*>(QxGraph::insertNode(node));
}

QxDNode* QxDGraph::removeNode(QxDNode* node) {
    return static_cast<QxDNode*>(QxGraph::removeNode(node));
}

int QxDGraph::discardNode(QxDNode* node) {
    return QxGraph::discardNode(node);
}

QxDEdge* QxDGraph::addEdge(QxDNode* source, QxDNode* target, int type) {
    return static_cast<QxDEdge*>(QxGraph::addEdge(source, target, type));
}

QxDEdge* QxDGraph::insertEdge(QxDEdge* edge, QxDNode* source, QxDNode* target) {
    return static_cast<QxDEdge*>(QxGraph::insertEdge(edge, source, target));
}

QxDEdge* QxDGraph::removeEdge(QxDEdge* edge) {
    return static_cast<QxDEdge*>(QxGraph::removeEdge(edge));
}

int QxDGraph::discardEdge(QxDEdge* edge) {
    return QxGraph::discardEdge(edge);
}

int QxDGraph::transferTopology(QxDGraph* graph) {
    return QxGraph::transferTopology(graph);
}

QxDNode* QxDGraph::addNodeWithCoordinates(const QxPoint& center, const QxSize& size, int inOwnGraph,
                                          int type) {
    auto* node = isIntergraph() != 0 ? nullptr : static_cast<QxDNode*>(vNewNode(type));
    if (node == nullptr) {
        return nullptr;
    }
    QxPoint place = center;
    QxSize extent = size;
    if (inOwnGraph == 0) {
        inverseExpandedTransformPoint(place);
        inverseExpandedTransformSize(extent);
    }
    node->ntResizeAdjustConnectors(extent);
    node->ntMoveTo(place);
    if (vInsertNode(node) == nullptr) {
        node->vRelease();
        return nullptr;
    }
    return node;
}

QxDNode* QxDGraph::addNodeWithCoordinates(std::int32_t x, std::int32_t y, std::int32_t width,
                                          std::int32_t height, int inOwnGraph, int type) {
    return addNodeWithCoordinates(QxPoint(x, y), QxSize(width, height), inOwnGraph, type);
}

QxDNode* QxDGraph::pFirstNode() const {
    return static_cast<QxDNode*>(pNodeList()->pFirstObject());
}

QxDNode* QxDGraph::pLastNode() const {
    return static_cast<QxDNode*>(pNodeList()->pLastObject());
}

QxDEdge* QxDGraph::pFirstEdge() const {
    return static_cast<QxDEdge*>(pEdgeList()->pFirstObject());
}

QxDEdge* QxDGraph::pLastEdge() const {
    return static_cast<QxDEdge*>(pEdgeList()->pLastObject());
}
