// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/drawing/QxGEdge.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxGNode.h"

namespace {

std::int32_t distanceBetween(const QxPoint& a, const QxPoint& b) {
    const double dx = static_cast<double>(a.x()) - b.x();
    const double dy = static_cast<double>(a.y()) - b.y();
    return qx::truncToInt32(std::sqrt(dx * dx + dy * dy));
}

}  // namespace

QxGNode* QxGEdge::pSourceNode() const {
    return static_cast<QxGNode*>(QxEdge::pSourceNode());
}

QxGNode* QxGEdge::pTargetNode() const {
    return static_cast<QxGNode*>(QxEdge::pTargetNode());
}

QxDGraph* QxGEdge::pOwnerGraph() const {
    return static_cast<QxDGraph*>(QxEdge::pOwnerGraph());
}

int QxGEdge::vIsVisible() const {
    if (connected() == 0 || deactivated() != 0) {
        return 0;
    }
    const QxDGraph* graph = pOwnerGraph();
    if (intergraphEdge() == 0) {
        return graph == nullptr ? 1 : graph->isVisible();
    }
    const auto* whole = static_cast<const QxGEdge*>(pOriginalEdge());
    const QxGNode* source = whole->pSourceNode();
    const QxGNode* target = whole->pTargetNode();
    if (whole->pOwnerGraph() == nullptr || source == nullptr || target == nullptr) {
        return 1;
    }
    return source->isVisible() != 0 && target->isVisible() != 0 ? 1 : 0;
}

int QxGEdge::hidden() const {
    const QxDGraph* graph = pOwnerGraph();
    return graph != nullptr ? graph->isHideGraph() : 0;
}

int QxGEdge::canUseVisiblePart() const {
    const auto* whole = static_cast<const QxDEdge*>(pOriginalEdge());
    return whole->isPathEdge() == 0 && whole->connected() != 0 && whole->deactivated() == 0 &&
                   whole->isUpdatedVisiblePart() != 0 && whole->hasVisiblePart() != 0
               ? 1
               : 0;
}

int QxGEdge::getSourcePoint(QxPoint& point, int inOwnGraph) const {
    ntFromPoint(point, 1);
    if (const QxDGraph* graph = inOwnGraph == 0 ? pOwnerGraph() : nullptr) {
        graph->expandedTransformPoint(point);
    }
    return 1;
}

int QxGEdge::getTargetPoint(QxPoint& point, int inOwnGraph) const {
    ntToPoint(point, 1);
    if (const QxDGraph* graph = inOwnGraph == 0 ? pOwnerGraph() : nullptr) {
        graph->expandedTransformPoint(point);
    }
    return 1;
}

void QxGEdge::ntBoundingRect(QxRect& rect, int clipped) const {
    rect = QxRect(ntFromPoint(clipped), ntToPoint(clipped));
}

int QxGEdge::getBoundingRect(QxRect& rect, int inOwnGraph) const {
    if (inOwnGraph == 0 && isVisible() == 0) {
        return 0;
    }
    ntBoundingRect(rect, 0);
    if (const QxDGraph* graph = inOwnGraph == 0 ? pOwnerGraph() : nullptr) {
        graph->expandedTransformRect(rect);
    }
    return 1;
}

int QxGEdge::getUserBoundingRect(QxRect& rect, int inOwnGraph) const {
    return getBoundingRect(rect, inOwnGraph);
}

int QxGEdge::ntIntersectsRect(const QxRect* rect, int clipped) const {
    const QxPoint from = ntFromPoint(clipped);
    const QxPoint to = ntToPoint(clipped);
    return rect != nullptr ? rect->overlapsSegment(from.x(), from.y(), to.x(), to.y()) : 0;
}

std::int32_t QxGEdge::ntEdgeLength() const {
    return distanceBetween(ntFromPoint(1), ntToPoint(1));
}

std::int32_t QxGEdge::edgeLength() const {
    QxPoint from;
    QxPoint to;
    getSourcePoint(from, 0);
    getTargetPoint(to, 0);
    return distanceBetween(from, to);
}

void QxGEdge::projectionPoint(const QxPoint* point, QxPoint* nearest,
                              std::int32_t* distance) const {
    if (point == nullptr || nearest == nullptr || distance == nullptr) {
        return;
    }
    const QxPoint from = ntFromPoint(1);
    const QxPoint to = ntToPoint(1);
    const double dx = static_cast<double>(to.x()) - from.x();
    const double dy = static_cast<double>(to.y()) - from.y();
    const double square = dx * dx + dy * dy;
    const double along = (static_cast<double>(point->x()) - from.x()) * dx +
                         (static_cast<double>(point->y()) - from.y()) * dy;
    const double t = square > 0.0 ? std::clamp(along / square, 0.0, 1.0) : 0.0;
    nearest->moveTo(qx::floorHalfUp(from.x() + t * dx), qx::floorHalfUp(from.y() + t * dy));
    *distance = distanceBetween(from, *nearest);
}

void QxGEdge::pointOnEdge(QxPoint* point, std::int16_t perMil) const {
    if (point == nullptr || perMil < 0 || perMil > 1000) {
        return;
    }
    const QxPoint from = ntFromPoint(1);
    const QxPoint to = ntToPoint(1);
    const auto between = [perMil](std::int32_t a, std::int32_t b) {
        return qx::clampToInt32(a + (std::int64_t{b} - a) * perMil / 1000);
    };
    point->moveTo(between(from.x(), to.x()), between(from.y(), to.y()));
}
