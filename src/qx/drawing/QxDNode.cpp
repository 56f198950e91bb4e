// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Life, copying and reports of drawing nodes.

#include "qx/drawing/QxDNode.h"

#include <ostream>

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxConnectorManager.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxNodeLabel.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/drawing/bounds/internal/Coverage.h"
#include "qx/drawing/bounds/internal/ExtentTree.h"
#include "qx/drawing/bounds/internal/Moment.h"
#include "qx/drawing/internal/AskedCoordinates.h"
#include "qx/drawing/internal/CloneLinks.h"
#include "qx/drawing/internal/Extras.h"
#include "qx/drawing/labels/internal/LabelPresence.h"
#include "qx/events/internal/FireDrawingChange.h"
#include "qx/foundation/geometry/QxShapeResource.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/foundation/util/QxDebugStream.h"

using qx::internal::Change;
using qx::internal::Coverage;
using qx::internal::each;
using qx::internal::ExtentTree;
using qx::internal::LabelPresence;
using qx::internal::Moment;
using qx::internal::Ref;

namespace {

qx::internal::Each<QxConnector> connectorsOf(const QxDNode& node) {
    static const QxConnectorDList none;
    const QxConnectorManager* connectors = node.pQueryConnectorManager();
    return each<QxConnector>(connectors != nullptr ? *connectors : none);
}

}  // namespace

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
    dropLabels();
    releaseConnectors();
    discardShapeResource();
    qx::internal::endEventSource(*this);
}

std::size_t QxDNode::sizeOf() const {
    return QxGNode::sizeOf() + sizeof(QxDNode) - sizeof(QxGNode);
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
    std::int32_t specified = 0;
    for (const QxConnector* connector : connectorsOf(*this)) {
        specified += connector->specified();
        if (connector->pOwnerNode() != this || connector->checkInvariants() == 0) {
            qxDebugStream() << "drawing node: a connector is not sound\n";
            return 0;
        }
    }
    if (specified != numberOfConnectors()) {
        qxDebugStream() << "drawing node: the specified connectors are not counted right\n";
        return 0;
    }
    return checkOwnLabels();
}

int QxDNode::userFieldsInUse() const {
    int used = QxGNode::userFieldsInUse() | labelUserFieldsInUse(false);
    for (const QxConnector* connector : connectorsOf(*this)) {
        used |= connector->userFieldsInUse();
    }
    return used;
}

void QxDNode::nullUserFields() {
    QxGNode::nullUserFields();
    nullLabelUserFields(false);
    for (QxConnector* connector : connectorsOf(*this)) {
        connector->nullUserFields();
    }
}

int QxDNode::internalUserFieldsInUse() const {
    int used = QxGNode::internalUserFieldsInUse() | labelUserFieldsInUse(true);
    for (const QxConnector* connector : connectorsOf(*this)) {
        used |= connector->internalUserFieldsInUse();
    }
    return used;
}

void QxDNode::nullInternalUserFields() {
    QxGNode::nullInternalUserFields();
    nullLabelUserFields(true);
    for (QxConnector* connector : connectorsOf(*this)) {
        connector->nullInternalUserFields();
    }
}

int QxDNode::levelNumber() const {
    return 2;
}

void QxDNode::innerDebugOutput(int depth) const {
    QxGNode::innerDebugOutput(depth);
    qxDebugIndent(depth) << "center " << iX() << ' ' << iY() << ", size " << iWidth() << ' '
                         << iHeight() << '\n';
    debugOutputConnectors(depth + 1);
}

void QxDNode::debugOutputConnectors(int depth) const {
    for (const QxConnector* connector : connectorsOf(*this)) {
        connector->debugOutput(depth);
    }
}

void QxDNode::actOnDiscard() {
    discardShapeResource();
    emptyTopology();
    QxGNode::actOnDiscard();
}

void QxDNode::actOnChangeOwner(QxOwnedObject* owner, int valid) {
    if (valid == 0 || owner != pOwner()) {
        Coverage::ended(*this);
        if (pQueryExtras() != nullptr) {
            LabelPresence::ended(*this);
        }
    }
    QxGNode::actOnChangeOwner(owner, valid);
    graphObjectStatus(QxStatusUnchanged);  // a copy may bring that of a move along
    if (pQueryExtras() != nullptr) {
        LabelPresence::changed(*this);
    }
    Coverage::changed(*this);
    Coverage::ownerChanged(*this);
    if (expanded() != 0) {
        tellNestedGraphOfOwner();
    }
}

void QxDNode::copyNode(const QxNode* source, int deep) {
    if (source == nullptr || source == this) {
        return;
    }
    const Ref alive(*source);
    const bool isDrawn = levelNumber() == source->levelNumber();
    Change::run(*this, [&] {
        exchangeLook();  // what is copied is how nodes look while they are collapsed
        const QxPoint oldCenter = iCenter();
        const QxSize oldSize = iSize();
        if (isDrawn) {
            copyDiagrammingNode(*static_cast<const QxDNode*>(source));
        }
        QxGNode::copyNode(source, deep);
        if (isDrawn && deep != 0) {
            emptyTopology();
            // Of the source this clears the scratch fields, and registers a private shape.
            duplicateTopology(const_cast<QxNode*>(source));
        }
        actOnMoveTo(oldCenter);
        actOnResize(oldSize);
        exchangeLook();
    });
}

void QxDNode::copyDiagrammingNode(const QxDNode& source) {
    setFlag(qx::flags::NodeForceClipping, source.collapsedForceClipping());
    qx::internal::linkClone(source, *this, qx::internal::managerOf(source),
                            [](QxDNode& node, QxDNode* clone) { node.pClonedNode(clone); });
    graphObjectStatus(source.graphObjectStatus());
    const QxRect* saved = source.pRectBeforeMoveForSelfLoops();
    pRectBeforeMoveForSelfLoops(saved != nullptr ? new QxRect(*saved) : nullptr);
    place(source.iCenter(), source.collapsedSize());
    discardShapeResource();
}

void QxDNode::internalDuplicateTopology(QxNode* source) {
    if (source == nullptr || source == this) {
        return;
    }
    if (levelNumber() == source->levelNumber()) {
        shareShapeOf(*static_cast<QxDNode*>(source));
    }
    QxGNode::internalDuplicateTopology(source);
    if (levelNumber() == source->levelNumber()) {
        duplicateLabelsOf(*static_cast<QxDNode*>(source));
        duplicateConnectorsOf(*static_cast<QxDNode*>(source));
    }
}

QxObject* QxDNode::vCloneObject() const {
    return new QxDNode(*this, QxDeepCopy);
}

QxObject* QxDNode::vCloneAttributes() const {
    return new QxDNode(*this, QxAttributeCopy);
}

int QxDNode::forceClipping(int value) {
    if ((value != 0) != (forceClipping() != 0)) {
        Change::run(*this, [&] {
            setFlag(qx::flags::NodeForceClipping, value);
            invalidateIncidentEdgeEndPoints();
        });
    }
    return forceClipping();
}

QxDNode* QxDNode::pClonedNode() const {
    const auto* extras = pQueryNodeExtras();
    return extras != nullptr ? extras->clone : nullptr;
}

QxDNode* QxDNode::pClonedNode(QxDNode* node) {
    if (node != pClonedNode()) {
        nodeExtras().clone = node;
    }
    return node;
}

const QxRect* QxDNode::pRectBeforeMoveForSelfLoops() const {
    const auto* extras = pQueryNodeExtras();
    return extras != nullptr ? extras->rectBeforeMoveForSelfLoops.get() : nullptr;
}

const QxRect* QxDNode::pRectBeforeMoveForSelfLoops(const QxRect* rect) {
    if (rect != pRectBeforeMoveForSelfLoops()) {
        nodeExtras().rectBeforeMoveForSelfLoops.reset(rect);
    }
    return rect;
}

namespace {

void uniteLabels(QxRect& rect, const QxDList* labels) {
    if (labels == nullptr) {
        return;
    }
    for (const QxLabel* label : each<QxLabel>(*labels)) {
        QxRect one;
        label->ntBoundingRect(one);
        rect.updateBounds(&one);
    }
}

}  // namespace

void QxDNode::ntBoundingRectWithSubObjects(QxRect& rect, int labels, int connectors,
                                           int connectorLabels) const {
    rect = m_rect;
    if (pQueryExtras() == nullptr) {
        return;
    }
    if (labels != 0) {
        uniteLabels(rect, pLabelList());
    }
    if ((connectors == 0 && connectorLabels == 0) || hasConnectors() == 0) {
        return;
    }
    for (const QxConnector* connector : connectorsOf(*this)) {
        if (connector->specified() == 0) {
            continue;
        }
        if (connectors != 0) {
            QxRect extent;
            connector->ntBoundingRect(extent);
            rect.updateBounds(&extent);
        }
        if (connectorLabels != 0) {
            uniteLabels(rect, connector->pLabelList());
        }
    }
}

int QxDNode::getBoundingRectWithSubObjects(QxRect& rect, int labels, int connectors,
                                           int connectorLabels, int inOwnGraph) const {
    if (qx::internal::hasAsked(*this, inOwnGraph) == 0) {
        return 0;
    }
    ntBoundingRectWithSubObjects(rect, labels, connectors, connectorLabels);
    return qx::internal::toAsked(*this, rect, inOwnGraph);
}

int QxDNode::getBoundingRectWithConnectors(QxRect& rect, int inOwnGraph) const {
    return getBoundingRectWithSubObjects(rect, 0, 1, 0, inOwnGraph);
}

/// Asks the memory for the edges at the node, all at once.
void QxDNode::fetchEdges() const {
    constexpr int Most = 8;  // those of a hub stand one behind the other
    constexpr std::size_t Farther = 128;
    for (const QxEdgeDList* list : {pInEdgeList(), pOutEdgeList()}) {
        int count = 0;
        const QxDListCell* cell = list->pFirstCell();
        for (; cell != nullptr && count < Most; cell = cell->pNextCell(), ++count) {
            const auto* edge = static_cast<const QxDEdge*>(cell->pObject());
            __builtin_prefetch(edge, 1);
            __builtin_prefetch(reinterpret_cast<const char*>(edge) + Farther, 1);
        }
    }
}

void QxDNode::invalidateIncidentEdgeEndPoints() {
    if (isPlainlyBare()) {
        return;
    }
    fetchEdges();
    for (const QxEdgeDList* list :
         {pInEdgeList(), pOutEdgeList(), pDisconnectedEdgeList(), pDeactivatedEdgeList()}) {
        for (QxDEdge* edge : each<QxDEdge>(*list)) {
            edge->actOnEndObjectChange();
        }
    }
}

void QxDNode::report(Moment moment, QxGeometricUpdateInfo* own, QxGeometricUpdateInfo* intergraph,
                     int labels, int connectorLabels, int connectors, int edges) const {
    if (own == nullptr) {
        return;
    }
    const bool isWanted = own->needsRecursiveUpdate() != 0 ||
                          (intergraph != nullptr && intergraph->needsRecursiveUpdate() != 0);
    if (own->pGraph() == nullptr || !isWanted) {
        return;
    }
    QxRect rect;
    ntBoundingRectWithSubObjects(rect, labels, connectors, connectorLabels);
    qx::internal::collect(*own, moment, *this, rect);
    if (edges != 0) {
        reportEdges(moment, own, intergraph);
    }
}

void QxDNode::reportEdges(Moment moment, QxGeometricUpdateInfo* own,
                          QxGeometricUpdateInfo* intergraph) const {
    for (const QxEdgeDList* list : {pInEdgeList(), pOutEdgeList()}) {
        for (QxDEdge* edge : each<QxDEdge>(*list)) {
            if (edge->pOwnerGraph() == own->pGraph()) {
                edge->report(moment, own);
            } else if (intergraph != nullptr && edge->pOwnerGraph() == intergraph->pGraph()) {
                edge->report(moment, intergraph);
            }
        }
    }
}

void QxDNode::emptyTopology() {
    Change::run(*this, [&] {
        discardAllNodeLabels();
        discardAllConnectors();
        QxGNode::emptyTopology();
    });
}

void QxDNode::actBeforeRemove(QxGeometricUpdateInfo* own, QxGeometricUpdateInfo* intergraph,
                              int labels, int connectorLabels, int connectors, int edges) {
    report(Moment::BeforeRemove, own, intergraph, labels, connectorLabels, connectors, edges);
}

void QxDNode::actAfterInsert(QxGeometricUpdateInfo* own, QxGeometricUpdateInfo* intergraph,
                             int labels, int connectorLabels, int connectors, int edges) {
    report(Moment::AfterInsert, own, intergraph, labels, connectorLabels, connectors, edges);
}

void QxDNode::actBeforeGeometryChanges(QxGeometricUpdateInfo* own,
                                       QxGeometricUpdateInfo* intergraph, int labels,
                                       int connectorLabels, int connectors, int edges) {
    report(Moment::BeforeChange, own, intergraph, labels, connectorLabels, connectors, edges);
}

void QxDNode::actAfterGeometryChanges(QxGeometricUpdateInfo* own, QxGeometricUpdateInfo* intergraph,
                                      int labels, int connectorLabels, int connectors, int edges) {
    report(Moment::AfterChange, own, intergraph, labels, connectorLabels, connectors, edges);
}

void QxDNode::vActBeforeGeometryChanges(QxGeometricUpdateInfo* own,
                                        QxGeometricUpdateInfo* intergraph) {
    actBeforeGeometryChanges(own, intergraph, 1, 1, 1, 1);
}

void QxDNode::vActAfterGeometryChanges(QxGeometricUpdateInfo* own,
                                       QxGeometricUpdateInfo* intergraph) {
    actAfterGeometryChanges(own, intergraph, 1, 1, 1, 1);
}
