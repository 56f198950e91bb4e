// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/drawing/QxGNode.h"

#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxPNode.h"
#include "qx/drawing/bounds/internal/ShiftedRect.h"
#include "qx/foundation/util/internal/KeepAlive.h"

QxGNode::~QxGNode() {
    delete m_rectBeforeMove;
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
           (m_rectBeforeMove != nullptr ? sizeof(QxRect) : 0);
}

void QxGNode::copyNode(const QxNode* source, int deep) {
    if (levelNumber() == source->levelNumber()) {
        const QxRect* saved = static_cast<const QxGNode*>(source)->m_rectBeforeMove;
        pRectBeforeMove(saved != nullptr ? new QxRect(*saved) : nullptr);
    }
    QxNode::copyNode(source, deep);
}

void QxGNode::restoreMovedNode() {}

void QxGNode::moveBack() {
    if (m_rectBeforeMove != nullptr) {
        const QxPoint center = m_rectBeforeMove->center();
        pRectBeforeMove(nullptr);
        vMoveTo(center);
    }
}

int QxGNode::getUserBoundingRect(QxRect& rect, int inOwnGraph) const {
    return getBoundingRect(rect, inOwnGraph);
}

void QxGNode::vMoveTo(const QxPoint&) {}

void QxGNode::actOnMoveTo(const QxPoint&) {}

namespace {

/// Takes a value from the node's own coordinates into the asked-for ones; 0 when it is to be in
/// anchor coordinates and the node is invisible.
template <class Value>
int inAskedCoordinates(const QxGNode& node, Value& value, int inOwnGraph,
                       int (QxDGraph::*toAnchor)(Value&) const) {
    if (inOwnGraph != 0) {
        return 1;
    }
    const QxDGraph* graph = node.pOwnerGraph();
    if (graph == nullptr || node.isVisible() == 0) {
        return 0;
    }
    (graph->*toAnchor)(value);
    return 1;
}

}  // namespace

int QxGNode::getCenter(QxPoint& center, int inOwnGraph) const {
    iCenter(center);
    return inAskedCoordinates(*this, center, inOwnGraph, &QxDGraph::expandedTransformPoint);
}

int QxGNode::getSize(QxSize& size, int inOwnGraph) const {
    iSize(size);
    return inAskedCoordinates(*this, size, inOwnGraph, &QxDGraph::expandedTransformSize);
}

int QxGNode::getBoundingRect(QxRect& rect, int inOwnGraph) const {
    ntBoundingRect(rect);
    return inAskedCoordinates(*this, rect, inOwnGraph, &QxDGraph::expandedTransformRect);
}

int QxGNode::moveTo(const QxPoint& center, int inOwnGraph) {
    QxPoint place = center;
    QxDGraph* graph = pOwnerGraph();
    if (inOwnGraph == 0) {
        if (graph == nullptr || isVisible() == 0) {
            return 0;
        }
        graph->inverseExpandedTransformPoint(place);
    }
    if (place == iCenter()) {
        return 1;
    }
    if (graph == nullptr || graph->pOwnerGraphManager() == nullptr) {
        const qx::internal::KeepAlive alive(*this);
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

const QxRect* QxGNode::pRectBeforeMove(const QxRect* rect) {
    if (rect != m_rectBeforeMove) {
        delete m_rectBeforeMove;
        m_rectBeforeMove = rect;
    }
    return rect;
}
