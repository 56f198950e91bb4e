// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/drawing/QxGNode.h"

#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxPNode.h"
#include "qx/drawing/bounds/internal/ShiftedRect.h"
#include "qx/drawing/internal/AskedCoordinates.h"
#include "qx/drawing/internal/Extras.h"
#include "qx/foundation/util/internal/Ref.h"

using qx::internal::Ref;

using qx::internal::NodeExtras;

qx::internal::GraphObjectExtras* QxGNode::vNewExtras() const {
    return new NodeExtras;
}

const NodeExtras* QxGNode::pQueryNodeExtras() const {
    return static_cast<const NodeExtras*>(pQueryExtras());
}

NodeExtras& QxGNode::nodeExtras() {
    return static_cast<NodeExtras&>(extras());
}

QxDGraph* QxGNode::pOwnerGraph() const {
    return static_cast<QxDGraph*>(QxNode::pOwnerGraph());
}

int QxGNode::vIsVisible() const {
    const QxDGraph* graph = pOwnerGraph();
    return graph != nullptr ? graph->isVisible() : 0;
}

int QxGNode::hidden() const {
    const QxDGraph* graph = pOwnerGraph();
    return graph != nullptr ? graph->isHideGraph() : 0;
}

std::size_t QxGNode::sizeOf() const {
    return QxNode::sizeOf() + sizeof(QxGNode) - sizeof(QxNode) +
           (pRectBeforeMove() != nullptr ? sizeof(QxRect) : 0);
}

void QxGNode::copyNode(const QxNode* source, int deep) {
    if (source == nullptr || source == this) {
        return;
    }
    if (levelNumber() == source->levelNumber()) {
        const QxRect* saved = static_cast<const QxGNode*>(source)->pRectBeforeMove();
        pRectBeforeMove(saved != nullptr ? new QxRect(*saved) : nullptr);
    }
    QxNode::copyNode(source, deep);
}

void QxGNode::restoreMovedNode() {}

void QxGNode::moveBack() {
    if (const QxRect* saved = pRectBeforeMove()) {
        const QxPoint center = saved->center();
        pRectBeforeMove(nullptr);
        vMoveTo(center);
    }
}

int QxGNode::getUserBoundingRect(QxRect& rect, int inOwnGraph) const {
    return getBoundingRect(rect, inOwnGraph);
}

void QxGNode::vMoveTo(const QxPoint&) {}

void QxGNode::actOnMoveTo(const QxPoint&) {}

int QxGNode::getCenter(QxPoint& center, int inOwnGraph) const {
    iCenter(center);
    return qx::internal::toAsked(*this, center, inOwnGraph);
}

int QxGNode::getSize(QxSize& size, int inOwnGraph) const {
    iSize(size);
    return qx::internal::toAsked(*this, size, inOwnGraph);
}

int QxGNode::getBoundingRect(QxRect& rect, int inOwnGraph) const {
    ntBoundingRect(rect);
    return qx::internal::toAsked(*this, rect, inOwnGraph);
}

int QxGNode::moveTo(const QxPoint& center, int inOwnGraph) {
    QxPoint place = center;
    if (qx::internal::fromAsked(*this, place, inOwnGraph) == 0) {
        return 0;
    }
    const QxDGraph* graph = pOwnerGraph();
    if (place == iCenter()) {
        return 1;
    }
    if (graph == nullptr || graph->pOwnerGraphManager() == nullptr) {
        const Ref alive(*this);
        const QxPoint oldCenter = iCenter();
        vMoveTo(place);
        actOnMoveTo(oldCenter);
    } else if (isPathNode() != 0) {
        static_cast<QxPNode*>(this)->updateForDiagramming(place);
    } else {
        const QxRect rect = qx::internal::shiftedRect(place, iSize());
        static_cast<QxDNode*>(this)->updateForDiagramming(rect);
    }
    return 1;
}

int QxGNode::move(std::int32_t dx, std::int32_t dy, int inOwnGraph) {
    QxPoint center;
    const int known = getCenter(center, inOwnGraph);
    if (known != 0 && (dx != 0 || dy != 0)) {
        moveTo(qx::saturatingAdd(center.x(), dx), qx::saturatingAdd(center.y(), dy), inOwnGraph);
    }
    return known;
}

void QxGNode::ntMove(std::int32_t dx, std::int32_t dy) {
    if (dx != 0 || dy != 0) {
        vMoveTo(QxPoint(qx::saturatingAdd(iX(), dx), qx::saturatingAdd(iY(), dy)));
    }
}

void QxGNode::storeMovedNode() {
    auto* rect = new QxRect;
    ntBoundingRect(*rect);
    pRectBeforeMove(rect);
}

const QxRect* QxGNode::pRectBeforeMove() const {
    const NodeExtras* extras = pQueryNodeExtras();
    return extras != nullptr ? extras->rectBeforeMove.get() : nullptr;
}

const QxRect* QxGNode::pRectBeforeMove(const QxRect* rect) {
    if (rect != pRectBeforeMove()) {
        nodeExtras().rectBeforeMove.reset(rect);
    }
    return rect;
}
