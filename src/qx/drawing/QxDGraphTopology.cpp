// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Insertion and removal: the steps of the abstract graph as changes of the drawing.

#include <initializer_list>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxFactory.h"
#include "qx/drawing/QxGraphLabel.h"
#include "qx/drawing/QxPEdge.h"
#include "qx/drawing/QxPNode.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/drawing/bounds/internal/Moment.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/foundation/util/internal/Ref.h"
#include "qx/spatial/internal/IndexUpkeep.h"

using qx::internal::Change;
using qx::internal::each;
using qx::internal::Moment;

QxNode* QxDGraph::vNewNode(int type) {
    auto* factory = static_cast<QxFactory*>(pUnverifiedFactory());
    return factory != nullptr ? factory->qxNewDNode(this, type) : nullptr;
}

QxEdge* QxDGraph::vNewEdge(int type) {
    auto* factory = static_cast<QxFactory*>(pUnverifiedFactory());
    return factory != nullptr ? factory->qxNewDEdge(this, type) : nullptr;
}

QxNode* QxDGraph::vInsertNode(QxNode* node) {
    QxNode* inserted = nullptr;
    Change::inGraph(*this, [&] { inserted = QxGraph::vInsertNode(node); });
    return inserted;
}

QxNode* QxDGraph::vRemoveNode(QxNode* node) {
    QxNode* removed = nullptr;
    Change::inGraph(*this, [&] { removed = QxGraph::vRemoveNode(node); });
    return removed;
}

int QxDGraph::vDiscardNode(QxNode* node) {
    const qx::internal::Ref alive(*this);
    if (node != nullptr && m_quadTree != nullptr && node->isPathNode() == 0) {
        qx::internal::IndexUpkeep::fetchAt(*static_cast<QxDNode*>(node));
    }
    int discarded = 0;
    Change::inGraph(*this, [&] { discarded = QxGraph::vDiscardNode(node); });
    discardEmptyHideGraph();
    return discarded;
}

QxEdge* QxDGraph::vInsertEdge(QxEdge* edge, QxNode* source, QxNode* target) {
    using qx::internal::Ref;
    const Ref<QxDEdge> alive(static_cast<QxDEdge*>(edge));
    const Ref<QxDGraph> former(alive ? static_cast<QxDGraph*>(edge->pUnverifiedOwnerGraph())
                                     : nullptr);
    QxEdge* inserted = nullptr;
    Change::inGraph(*this, [&] {
        inserted = QxGraph::vInsertEdge(edge, source, target);
        QxDGraphManager* const manager = inserted != nullptr ? pOwnerGraphManager() : nullptr;
        if (manager != nullptr && former && former.get() != this) {
            manager->convertEdgeFromOldOwnerGraph(alive.get(), former.get());
        }
    });
    return inserted;
}

void QxDGraph::actAfterInsertEdgeBeforeConnect(QxEdge* edge) {
    QxGraph::actAfterInsertEdgeBeforeConnect(edge);
    auto& inserted = static_cast<QxDEdge&>(*edge);
    inserted.updatePathOwnership();
    inserted.settleConnector(true);
    inserted.settleConnector(false);
}

QxEdge* QxDGraph::vRemoveEdge(QxEdge* edge) {
    if (edge == nullptr || edge->pOwnerGraph() != this || edge->isPathEdge() != 0) {
        return nullptr;
    }
    QxEdge* removed = nullptr;
    auto& drawn = static_cast<QxDEdge&>(*edge);
    const qx::internal::Ref alive(drawn);
    Change::inGraph(*this, [&] {
        removed = QxGraph::vRemoveEdge(edge);
        drawn.updatePathOwnership();
    });
    drawn.setFlag(qx::flags::EdgeReturnsDisconnected | qx::flags::EdgeReturnsDeactivated, 0);
    return removed;
}

int QxDGraph::vDiscardEdge(QxEdge* edge) {
    const qx::internal::Ref alive(*this);
    const int discarded = QxGraph::vDiscardEdge(edge);
    discardEmptyHideGraph();
    return discarded;
}

// Segments tell the graph what happens to them as edges do; what they cover, the bends tell.

void QxDGraph::actOnConnectEdge(QxEdge* edge) {
    if (edge->isPathEdge() == 0) {
        QxGraph::actOnConnectEdge(edge);
    }
}

void QxDGraph::actOnDisconnectEdge(QxEdge* edge) {
    if (edge->isPathEdge() == 0) {
        QxGraph::actOnDisconnectEdge(edge);
    }
}

void QxDGraph::actOnActivateEdge(QxEdge* edge) {
    if (edge->isPathEdge() == 0) {
        QxGraph::actOnActivateEdge(edge);
    }
}

void QxDGraph::actOnDeactivateEdge(QxEdge* edge) {
    if (edge->isPathEdge() == 0) {
        QxGraph::actOnDeactivateEdge(edge);
    }
}

namespace {

using Info = QxGeometricUpdateInfo;

/// Calls `report` with every listed object and the record of the graph that owns it.
template <class T, class Report>
void reportToOwnersRecord(const QxDGraph* graph, const QxDList* list, Info* own, Info* between,
                          const Report& report) {
    if (list == nullptr) {
        return;
    }
    for (T* object : each<T>(*list)) {
        const QxDGraph* owner = qx::internal::graphOf(*object);
        if (owner == graph) {
            report(object, own);
        } else if (owner != nullptr && between != nullptr && owner == between->pGraph()) {
            report(object, between);
        }
    }
}

}  // namespace

void QxDGraph::report(Moment moment, QxGeometricUpdateInfo* own, QxGeometricUpdateInfo* between,
                      const QxDNodeDList* nodes, const QxPNodeDList* bends,
                      const QxDEdgeDList* edges, const QxPEdgeDList* segments) {
    reportToOwnersRecord<QxDNode>(this, nodes, own, nullptr, [&](QxDNode* node, Info*) {
        node->report(moment, own, between, 1, 1, 1, 1);
    });
    if (own == nullptr || own->needsRecursiveUpdate() == 0) {
        return;
    }
    reportToOwnersRecord<QxPNode>(this, bends, own, between, [&](QxPNode* bend, Info* info) {
        bend->report(moment, info, 0);
    });
    reportToOwnersRecord<QxDEdge>(this, edges, own, between,
                                  [&](QxDEdge* edge, Info* info) { edge->report(moment, info); });
    reportToOwnersRecord<QxPEdge>(this, segments, own, between, [&](QxPEdge* segment, Info* info) {
        segment->report(moment, info);
    });
}

void QxDGraph::reportLabels(Moment moment, QxGeometricUpdateInfo* own,
                            const QxDList* labels) const {
    reportToOwnersRecord<QxLabel>(this, labels, own, nullptr, [&](const QxLabel* label, Info*) {
        if (moment == Moment::AfterInsert) {
            label->actAfterInsert(own);
        } else {
            label->actBeforeRemove(own);
        }
    });
}

void QxDGraph::actAfterInsert(QxGeometricUpdateInfo* own, QxGeometricUpdateInfo* intergraph,
                              const QxDNodeDList* nodes, const QxPNodeDList* pathNodes,
                              const QxDEdgeDList* edges, const QxPEdgeDList* pathEdges,
                              const QxNodeLabelDList* nodeLabels,
                              const QxConnectorLabelDList* connectorLabels,
                              const QxEdgeLabelDList* edgeLabels) {
    report(Moment::AfterInsert, own, intergraph, nodes, pathNodes, edges, pathEdges);
    for (const QxDList* list :
         std::initializer_list<const QxDList*>{nodeLabels, connectorLabels, edgeLabels}) {
        reportLabels(Moment::AfterInsert, own, list);
    }
}

void QxDGraph::actBeforeRemove(QxGeometricUpdateInfo* own, QxGeometricUpdateInfo* intergraph,
                               const QxDNodeDList* nodes, const QxPNodeDList* pathNodes,
                               const QxDEdgeDList* edges, const QxPEdgeDList* pathEdges,
                               const QxNodeLabelDList* nodeLabels,
                               const QxConnectorLabelDList* connectorLabels,
                               const QxEdgeLabelDList* edgeLabels) {
    report(Moment::BeforeRemove, own, intergraph, nodes, pathNodes, edges, pathEdges);
    for (const QxDList* list :
         std::initializer_list<const QxDList*>{nodeLabels, connectorLabels, edgeLabels}) {
        reportLabels(Moment::BeforeRemove, own, list);
    }
}

int QxDGraph::vTransferTopology(QxGraph* graph) {
    auto* other = static_cast<QxDGraph*>(graph);
    if (other == nullptr || other->pUnverifiedFactory() == nullptr) {
        return 0;
    }
    int moved = 0;
    Change::inGraph(*this, [&] {
        Change::inGraph(*other, [&] {
            moved = QxGraph::vTransferTopology(other);
            if (moved != 0) {
                moved = takeOverGraphLabels(*other);
            }
        });
    });
    return moved;
}

void QxDGraph::emptyTopology() {
    Change::ofWholeGraph(*this, [&] {
        discardAllGraphLabels();
        QxGraph::emptyTopology();
    });
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
    node->place(place, extent);
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
