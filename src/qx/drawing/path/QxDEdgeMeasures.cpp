// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Lengths, positions and extents of paths. Sums are kept in 64 bits and clamped at the end.

#include <cstdint>
#include <limits>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxEdgeLabel.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/foundation/graph/internal/EachObject.h"

using qx::internal::each;

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
    const PathSpot spot = spotAtDistance(wanted);
    const std::int64_t local = spot.length > 0 ? spot.along * 1000 / spot.length : 0;
    spot.segment->pointOnEdge(point, static_cast<std::int16_t>(local));
}

QxDEdge::PathSpot QxDEdge::spotAtDistance(std::int64_t distance) const {
    PathSpot spot{m_sourcePathEdge, 0, 0};
    std::int64_t sum = 0;
    for (auto it = madeParts(); it && sum < distance; ++it) {
        spot.segment = it.pEdge();
        spot.length = spot.segment->ntEdgeLength();
        sum += spot.length;
    }
    spot.along = sum < distance ? 0 : spot.length - (sum - distance);
    return spot;
}

QxPEdge* QxDEdge::pPathEdgeAtDistance(std::int32_t distance) const {
    refreshVisiblePart();
    pSourceOrPathEdge();
    return spotAtDistance(distance).segment;
}

std::int16_t QxDEdge::perMilOnSegmentAt(std::int16_t perMil) const {
    if (perMil < 0 || perMil > 1000 || isPathImplied()) {
        return perMil;
    }
    const PathSpot spot = spotAtDistance(pathLength() * perMil / 1000);
    return static_cast<std::int16_t>(spot.length > 0 ? spot.along * 1000 / spot.length : 0);
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
    if (pLabelList() == nullptr) {
        return;
    }
    for (const QxEdgeLabel* label : each<QxEdgeLabel>(*pLabelList())) {
        QxRect one;
        label->ntBoundingRect(one);
        rect.updateBounds(&one);
    }
}

namespace {

/// The rectangle of an edge in the asked-for coordinates.
int toAskedRect(const QxDEdge& edge, QxRect& rect, int inOwnGraph,
                void (QxDEdge::*read)(QxRect&) const) {
    if (inOwnGraph == 0 && edge.isVisible() == 0) {
        return 0;
    }
    (edge.*read)(rect);
    if (const QxDGraph* graph = inOwnGraph == 0 ? edge.pOwnerGraph() : nullptr) {
        graph->expandedTransformRect(rect);
    }
    return 1;
}

}  // namespace

int QxDEdge::getBoundingRectWithPathNodes(QxRect& rect, int inOwnGraph) const {
    return toAskedRect(*this, rect, inOwnGraph, &QxDEdge::ntBoundingRectWithPathNodes);
}

int QxDEdge::getBoundingRectWithPathNodesAndLabels(QxRect& rect, int inOwnGraph) const {
    return toAskedRect(*this, rect, inOwnGraph, &QxDEdge::ntBoundingRectWithPathNodesAndLabels);
}

int QxDEdge::getUserBoundingRect(QxRect& rect, int inOwnGraph) const {
    return getBoundingRectWithPathNodesAndLabels(rect, inOwnGraph);
}
