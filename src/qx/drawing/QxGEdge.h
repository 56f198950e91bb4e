// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/geometry/QxPoint.h"
#include "qx/foundation/geometry/QxRect.h"
#include "qx/foundation/graph/QxEdge.h"

class QxDGraph;
class QxGNode;
class QxPEdge;

/// An edge with a source and a target point: drawing edges and the segments of their paths.
/// Coordinates as for QxGNode.
class QX_API QxGEdge : public QxEdge {
public:
    explicit QxGEdge(QxOwnedObject* owner) : QxEdge(owner) {}

    int vIsVisible() const override;

    virtual int getUserBoundingRect(QxRect& rect, int inOwnGraph) const;
    /// @name End points in owner-graph coordinates; `clipped` nonzero: where the drawn part ends
    /// @{
    virtual void ntFromPoint(QxPoint& point, int clipped) const = 0;
    virtual QxPoint ntFromPoint(int clipped) const = 0;
    virtual void ntToPoint(QxPoint& point, int clipped) const = 0;
    virtual QxPoint ntToPoint(int clipped) const = 0;
    /// @}
    /// Whether an end point lies in the rectangle or the edge meets it.
    virtual int ntIntersectsRect(const QxRect* rect, int clipped) const;
    /// The straight distance between the ends, truncated, in owner-graph coordinates (in those of
    /// the anchor graph).
    virtual std::int32_t ntEdgeLength() const;
    virtual std::int32_t edgeLength() const;
    /// The segment itself, or the first (last) segment of an edge's path.
    virtual QxPEdge* pSourceOrPathEdge() = 0;
    virtual const QxPEdge* pSourceOrPathEdge() const = 0;
    virtual QxPEdge* pTargetOrPathEdge() = 0;
    virtual const QxPEdge* pTargetOrPathEdge() const = 0;
    /// The point of the edge nearest to `point`, and how far along the edge it lies. Nothing when
    /// an output is null.
    virtual void projectionPoint(const QxPoint* point, QxPoint* nearest,
                                 std::int32_t* distance) const;
    /// The point `perMil` thousandths along the edge. Nothing for null or beyond 1000.
    virtual void pointOnEdge(QxPoint* point, std::int16_t perMil) const;

    QxGNode* pSourceNode() const;
    QxGNode* pTargetNode() const;
    QxDGraph* pOwnerGraph() const;
    /// The clipped end points; 1.
    int getSourcePoint(QxPoint& point, int inOwnGraph) const;
    int getTargetPoint(QxPoint& point, int inOwnGraph) const;
    std::int32_t ntFromX() const { return ntFromPoint(1).x(); }
    std::int32_t ntFromY() const { return ntFromPoint(1).y(); }
    std::int32_t ntToX() const { return ntToPoint(1).x(); }
    std::int32_t ntToY() const { return ntToPoint(1).y(); }
    /// The rectangle that the end points span, in owner-graph coordinates.
    void ntBoundingRect(QxRect& rect, int clipped) const;
    int getBoundingRect(QxRect& rect, int inOwnGraph) const;
    int hidden() const;
    /// Whether the visible part may be used: the edge is connected, active, and has one that is
    /// up to date.
    int canUseVisiblePart() const;
};
