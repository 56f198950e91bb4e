// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/drawing/orthogonal/internal/RouteEnd.h"

#include <algorithm>
#include <cstddef>

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/clipping/internal/ShownShape.h"
#include "qx/drawing/connectors/internal/ConnectorPlace.h"
#include "qx/drawing/connectors/internal/RoutingDirection.h"

namespace qx::internal {

namespace {

/// Whether a segment lies all on one side of the rectangle.
bool passesBy(const QxRect& rect, const QxPoint& a, const QxPoint& b) {
    return std::max(a.x(), b.x()) < rect.left() || std::min(a.x(), b.x()) > rect.right() ||
           std::max(a.y(), b.y()) < rect.bottom() || std::min(a.y(), b.y()) > rect.top();
}

}  // namespace

RouteEnd::RouteEnd(QxDEdge& edge, bool atSource)
    : m_edge(edge),
      m_node(atSource ? *edge.pSourceNode() : *edge.pTargetNode()),
      m_atSource(atSource),
      m_graph(edge.intergraphEdge() != 0 ? m_node.pOwnerGraph() : nullptr),
      m_shape(shownShape(m_node)),
      m_rect(*m_node.pIRect()) {}

QxConnector* RouteEnd::pConnector() const {
    return m_atSource ? m_edge.pInternalSourceConnector() : m_edge.pInternalTargetConnector();
}

QxPoint RouteEnd::point() const {
    return m_atSource ? m_edge.ntFromPoint(0) : m_edge.ntToPoint(0);
}

QxPoint RouteEnd::toNode(QxPoint point) const {
    if (m_graph != nullptr) {
        m_graph->inverseExpandedTransformPoint(point);
    }
    return point;
}

bool RouteEnd::clip(QxPoint& result, const QxPoint& from, const QxPoint& to) const {
    return !passesBy(m_rect, from, to) &&
           m_shape.intersectsSegment(result, from, to, m_rect.center(), m_rect.size()) != 0;
}

bool RouteEnd::isHorizontal() const {
    const QxSideEnum side = m_rect.closestSide(toNode(point()));
    return side == QxSideLeft || side == QxSideRight;
}

void RouteEnd::repairConnector(const QxPoint& next) {
    QxConnector* const connector = pConnector();
    QxPoint at = toNode(point());
    if (connector != nullptr) {
        if (connector->specified() == 0 && m_rect.within(at) == 0) {
            if (!clip(at, at, m_rect.center())) {
                m_shape.nearestPoint(at, at, m_rect.center(), m_rect.size());
            }
            place(connector, at);
        }
        return;
    }
    const QxPoint way = toNode(next);
    if (!clip(at, at, way)) {
        m_shape.nearestPoint(at, way, m_rect.center(), m_rect.size());
    }
    place(nullptr, at);
}

void RouteEnd::place(QxConnector* connector, const QxPoint& at) {
    const ConnectorPlace place = placeOnNode(m_edge, m_rect, at, Thousandths::Nearest);
    if (connector != nullptr) {
        place.giveTo(*connector);
    } else {
        connector = place.newConnector(m_node);
        if (connector == nullptr) {
            return;
        }
    }
    connector->routingDirection(directionThrough(m_rect.closestSide(at)));
    if (m_atSource) {
        m_edge.pSourceConnector(connector);
    } else {
        m_edge.pTargetConnector(connector);
    }
}

bool RouteEnd::cut(std::vector<QxPoint>& points) {
    QxConnector* const connector = pConnector();
    if (connector == nullptr || connector->specified() != 0) {
        return false;
    }
    QxPoint next;
    QxPoint here = points.empty() ? QxPoint() : toNode(points.back());
    for (std::size_t i = points.size(); i-- > 1; here = next) {
        next = toNode(points[i - 1]);
        QxPoint crossing;
        if (!clip(crossing, here, next)) {
            continue;
        }
        // From the middle line of the node outward: on the way into a notch of its shape the
        // outline is crossed more than once.
        if (crossing.x() == here.x()) {
            crossing.y(m_rect.y());
        } else if (crossing.y() == here.y()) {
            crossing.x(m_rect.x());
        }
        if (clip(crossing, crossing, here)) {
            place(connector, crossing);
            points.erase(points.begin(), points.begin() + static_cast<std::ptrdiff_t>(i - 1));
            points.front() = point();
            return true;
        }
    }
    return false;
}

}  // namespace qx::internal
