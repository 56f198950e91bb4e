// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Lengths, positions and extents of paths. Sums are kept in 64 bits and clamped at the end.

#include <cstdint>
#include <limits>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxPathIter.h"

std::int64_t QxDEdge::pathLength() const {
    refreshVisiblePart();
    if (isPathImplied()) {
        return QxGEdge::ntEdgeLength();
    }
    std::int64_t sum = 0;
    for (auto it = madeParts(); it; ++it) {
        sum += it.pEdge()->ntEdgeLength();
    }
    return sum;
}

std::int32_t QxDEdge::ntEdgeLength() const {
    return qx::clampToInt32(pathLength());
}

std::int32_t QxDEdge::edgeLength() const {
    refreshVisiblePart();
    if (isPathImplied()) {
        return QxGEdge::edgeLength();
    }
    std::int64_t sum = 0;
    for (auto it = madeParts(); it; ++it) {
        sum += it.pEdge()->edgeLength();
    }
    return qx::clampToInt32(sum);
}

void QxDEdge::projectionPoint(const QxPoint* point, QxPoint* nearest,
                              std::int32_t* distance) const {
    if (point == nullptr || nearest == nullptr || distance == nullptr) {
        return;
    }
    refreshVisiblePart();
    if (isPathImplied()) {
        QxGEdge::projectionPoint(point, nearest, distance);
        return;
    }
    const QxPoint from = *point;  // the caller may want the result in the same place
    double best = std::numeric_limits<double>::infinity();
    std::int64_t lengthBefore = 0;
    *distance = 0;
    for (auto it = madeParts(); it; ++it) {
        QxPoint candidate;
        std::int32_t along = 0;
        it.pEdge()->projectionPoint(&from, &candidate, &along);
        const double away = from.distance(candidate);
        if (away < best) {
            best = away;
            nearest->moveTo(candidate.x(), candidate.y());
            *distance = qx::clampToInt32(lengthBefore + along);
        }
        lengthBefore += it.pEdge()->ntEdgeLength();
    }
}

void QxDEdge::pointOnEdge(QxPoint* point, std::int16_t perMil) const {
    if (point == nullptr || perMil < 0 || perMil > 1000 ||
        (m_sourcePathEdge == nullptr && !isPathImplied())) {
        return;
    }
    const std::int64_t total = pathLength();
    const std::int64_t wanted = total * perMil / 1000;
    if (isPathImplied()) {
        const std::int64_t local = total > 0 ? wanted * 1000 / total : 0;
        QxGEdge::pointOnEdge(point, static_cast<std::int16_t>(local));
        return;
    }
    const QxPEdge* segment = m_sourcePathEdge;
    std::int64_t length = 0;
    std::int64_t sum = 0;
    for (auto it = madeParts(); it && sum < wanted; ++it) {
        segment = it.pEdge();
        length = segment->ntEdgeLength();
        sum += length;
    }
    const std::int64_t offset = sum < wanted ? 0 : length - (sum - wanted);
    const std::int64_t localPerMil = length > 0 ? offset * 1000 / length : 0;
    segment->pointOnEdge(point, static_cast<std::int16_t>(localPerMil));
}

int QxDEdge::ntIntersectsRect(const QxRect* rect, int clipped) const {
    if (clipped != 0) {
        refreshVisiblePart();
    }
    if (isPathImplied()) {
        return QxGEdge::ntIntersectsRect(rect, clipped);
    }
    for (auto it = madeParts(); it; ++it) {
        if (it.pEdge()->ntIntersectsRect(rect, clipped) != 0) {
            return 1;
        }
    }
    return 0;
}

void QxDEdge::ntBoundingRectWithPathNodes(QxRect& rect) const {
    // The unclipped ends: what the edge covers then does not depend on whether anybody has asked
    // for its visible part.
    ntBoundingRect(rect, 0);
    for (auto it = madeParts(); it && it.pNode() != nullptr; ++it) {
        const QxPNode& bend = *it.pNode();
        const QxRect point(bend.iX(), bend.iY(), bend.iX(), bend.iY());
        rect.updateBounds(&point);
    }
}

void QxDEdge::ntBoundingRectWithPathNodesAndLabels(QxRect& rect) const {
    ntBoundingRectWithPathNodes(rect);
}

int QxDEdge::getBoundingRectWithPathNodes(QxRect& rect, int inOwnGraph) const {
    if (inOwnGraph == 0 && isVisible() == 0) {
        return 0;
    }
    ntBoundingRectWithPathNodes(rect);
    if (const QxDGraph* graph = inOwnGraph == 0 ? pOwnerGraph() : nullptr) {
        graph->expandedTransformRect(rect);
    }
    return 1;
}

int QxDEdge::getBoundingRectWithPathNodesAndLabels(QxRect& rect, int inOwnGraph) const {
    return getBoundingRectWithPathNodes(rect, inOwnGraph);
}

int QxDEdge::getUserBoundingRect(QxRect& rect, int inOwnGraph) const {
    return getBoundingRectWithPathNodesAndLabels(rect, inOwnGraph);
}
