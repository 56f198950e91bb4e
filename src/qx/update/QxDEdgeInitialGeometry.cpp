// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// The record of an edge that has to follow a move: how it is taken, how the path is worked out from
// it, and how the edge is put back.
//
// Everything is worked out from what was saved, so that a drag in many steps ends as one in a
// single step would, and where it began if it leads back there.

#include "qx/update/QxDEdgeInitialGeometry.h"

#include <algorithm>
#include <cmath>

#include "qx/drawing/QxPEdge.h"
#include "qx/drawing/connectors/internal/ConnectorPlace.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/foundation/util/internal/Ref.h"
#include "qx/update/internal/EdgeEnds.h"
#include "qx/update/internal/InitialPath.h"
#include "qx/update/internal/Route.h"

using qx::internal::assignAt;
using qx::internal::bendsOf;
using qx::internal::calculatedAt;
using qx::internal::connectorAt;
using qx::internal::endAt;
using qx::internal::InitialPath;
using qx::internal::nodeAt;
using qx::internal::Ref;
using qx::internal::Route;

namespace {

const double TwoDegrees = std::sin(0.03490658503988659);

bool isAlongX(QxDirectionEnum direction) {
    return direction == QxDirectionRight || direction == QxDirectionLeft;
}

}  // namespace

QxDEdgeInitialGeometry::QxDEdgeInitialGeometry(QxDEdge* edge) : m_eps(TwoDegrees) {
    init(edge);
}

QxDEdgeInitialGeometry::QxDEdgeInitialGeometry(QxPEdge* segment) : m_eps(TwoDegrees) {
    init(segment);
    m_status = QxGeometryOfSegment;
}

QxDEdgeInitialGeometry::QxDEdgeInitialGeometry(QxPNode* bend) : m_eps(TwoDegrees) {
    if (bend != nullptr && bend->outDegree() != 0) {
        init(static_cast<QxPEdge*>(bend->pFirstOutEdge()));
    }
    m_status = QxGeometryOfBend;
}

QxDEdgeInitialGeometry::QxDEdgeInitialGeometry(const QxDEdgeInitialGeometry& source)
    : QxObject(), m_eps(source.m_eps) {
    *this = source;
}

QxDEdgeInitialGeometry& QxDEdgeInitialGeometry::operator=(const QxDEdgeInitialGeometry& source) {
    if (this != &source) {
        m_edge = source.m_edge;
        m_points = source.m_points;
        m_from = source.m_from;
        m_to = source.m_to;
        m_eps = source.m_eps;
        m_delta = source.m_delta;
        m_index = source.m_index;
        m_status = source.m_status;
        m_isOrthogonal = source.m_isOrthogonal;
        m_isHorizontal = source.m_isHorizontal;
        m_isMultiEdge = source.m_isMultiEdge;
        m_path = source.m_path ? std::make_unique<InitialPath>(*source.m_path) : nullptr;
    }
    return *this;
}

QxDEdgeInitialGeometry::~QxDEdgeInitialGeometry() = default;

// --- Taking the record ------------------------------------------------------------------------

void QxDEdgeInitialGeometry::init(QxPEdge* segment) {
    QxDEdge* edge = segment != nullptr ? segment->pOwnerEdge() : nullptr;
    m_index = edge != nullptr ? edge->indexOfPathEdge(segment) : 1;
    init(edge);
}

void QxDEdgeInitialGeometry::init(QxDEdge* edge) {
    m_edge = edge;
    m_delta = 1;
    m_eps = TwoDegrees;
    m_points.discardAllPoints();
    m_from = End();
    m_to = End();
    m_path = std::make_unique<InitialPath>();
    if (edge == nullptr) {
        return;
    }
    m_points.appendPoint(endAt(*edge, true));
    m_path->known = bendsOf(*edge);
    initPath();
    m_points.appendPoint(endAt(*edge, false));
    initEnd(true);
    initEnd(false);
    initAxes();
}

/// The points and origins of the bends, after that of the source.
void QxDEdgeInitialGeometry::initPath() {
    m_path->origins.assign(1, {});
    for (const InitialPath::Bend& bend : m_path->known) {
        m_points.appendPoint(bend.at);
        m_path->origins.push_back({bend.bend, false});
    }
    m_path->origins.emplace_back();
}

void QxDEdgeInitialGeometry::initEnd(bool atSource) {
    End& saved = end(atSource);
    if (const QxConnector* connector = calculatedAt(*m_edge, atSource)) {
        saved.isSaved = 1;
        saved.perMil = connector->getPerMil();
        saved.offset = connector->ntOffset();
        saved.newOffset = saved.offset;
        saved.direction = connector->routingDirection();
    } else {
        saved.specified = connectorAt(*m_edge, atSource);
    }
    saved.seenAt = endAt(*m_edge, atSource);
    if (const QxDNode* node = nodeAt(*m_edge, atSource)) {
        saved.node = node;
        saved.nodeRect = *node->pIRect();
        saved.seenRect = qx::internal::rectFor(*m_edge, *node);
    }
}

void QxDEdgeInitialGeometry::initAxes() {
    m_isOrthogonal = 0;
    m_isHorizontal = 0;
    if (connectorAt(*m_edge, true) == nullptr || connectorAt(*m_edge, false) == nullptr ||
        m_edge->desiredOrthogonalRouting() == 0) {
        return;
    }
    const bool isKnown = m_from.isSaved != 0 && m_from.direction != QxDirectionNone;
    bool isHorizontal = isKnown && isAlongX(m_from.direction);
    auto index = static_cast<std::size_t>(m_index);
    Route route = savedRoute();
    if (!qx::internal::alternate(route, isKnown, isHorizontal, index)) {
        return;
    }
    m_isOrthogonal = 1;
    m_isHorizontal = isHorizontal ? 1 : 0;
    m_index = static_cast<std::int32_t>(index);
    m_points.discardAllPoints();
    m_path->origins.clear();
    for (std::size_t k = 1; k <= route.count(); ++k) {
        m_points.appendPoint(route.at(k));
        const bool isEnd = k == 1 || k == route.count();
        m_path->origins.push_back(
            {Ref<QxPNode>(route[k].bend), !isEnd && route[k].bend == nullptr});
    }
}

Route QxDEdgeInitialGeometry::savedRoute() const {
    std::vector<qx::internal::RoutePoint> points;
    const auto count = static_cast<std::size_t>(m_points.count());
    points.reserve(count);
    const bool isComplete = m_path->origins.size() == count;  // else a client has changed the list
    for (const QxDListCell* cell = m_points.pFirstCell(); cell; cell = cell->pNextCell()) {
        QxPNode* bend = isComplete ? m_path->origins[points.size()].bend.get() : nullptr;
        points.push_back({*QxPointDList::pPoint(cell), bend});
    }
    return Route(std::move(points));
}

// --- What has happened since ------------------------------------------------------------------

bool QxDEdgeInitialGeometry::isUsable() const {
    return m_edge != nullptr && m_points.count() >= 2 && qx::internal::isActive(*m_edge) &&
           nodeAt(*m_edge, true) != nullptr && nodeAt(*m_edge, false) != nullptr;
}

bool QxDEdgeInitialGeometry::isBack(bool atSource) const {
    const End& saved = end(atSource);
    const QxDNode* node = nodeAt(*m_edge, atSource);
    const QxConnector* connector = connectorAt(*m_edge, atSource);
    const bool isSpecified = connector != nullptr && connector->specified() != 0;
    return node == saved.node && *node->pIRect() == saved.nodeRect &&
           qx::internal::rectFor(*m_edge, *node) == saved.seenRect &&
           (isSpecified ? connector : nullptr) == saved.specified &&
           (!isSpecified || endAt(*m_edge, atSource) == saved.seenAt);
}

bool QxDEdgeInitialGeometry::isPathEdited() const {
    const auto now = bendsOf(*m_edge);
    return !std::equal(now.begin(), now.end(), m_path->known.begin(), m_path->known.end(),
                       [](const InitialPath::Bend& a, const InitialPath::Bend& b) {
                           return a.bend.get() == b.bend.get() && a.at == b.at;
                       });
}

void QxDEdgeInitialGeometry::adoptEditedPath() {
    const QxPoint first = *m_points.pFirstPoint();
    const QxPoint last = *m_points.pLastPoint();
    m_points.discardAllPoints();
    m_points.appendPoint(first);
    m_path->known = bendsOf(*m_edge);
    initPath();
    m_points.appendPoint(last);
    m_index = 1;
    m_status = QxGeometryOfEdge;
    initAxes();
}

// --- Working the path out ---------------------------------------------------------------------

QxPoint QxDEdgeInitialGeometry::endPoint(bool atSource) const {
    QxPoint point = endAt(*m_edge, atSource);
    if (calculatedAt(*m_edge, atSource) != nullptr) {
        const QxRect rect = qx::internal::rectFor(*m_edge, *nodeAt(*m_edge, atSource));
        point.moveTo(std::clamp(point.x(), rect.left(), rect.right()),
                     std::clamp(point.y(), rect.bottom(), rect.top()));
    }
    return point;
}

void QxDEdgeInitialGeometry::resetConnector(bool atSource) {
    QxConnector* connector = savedConnector(atSource);
    const End& saved = end(atSource);
    if (connector != nullptr) {
        connector->ntSetOffset(saved.newOffset);
        connector->ntSetPerMil(saved.perMil);
        connector->routingDirection(saved.direction);
    }
}

/// The calculated connector that the end had, or a new one in its place when that has gone; null
/// when it had none, or has a specified one now.
QxConnector* QxDEdgeInitialGeometry::savedConnector(bool atSource) {
    QxConnector* connector = connectorAt(*m_edge, atSource);
    if (end(atSource).isSaved == 0 || end(atSource).node != nodeAt(*m_edge, atSource) ||
        (connector != nullptr && connector->specified() != 0)) {
        return nullptr;
    }
    if (connector == nullptr) {
        QxDNode* node = nodeAt(*m_edge, atSource);
        connector = node != nullptr ? node->ntAddConnector(0, 0, 0, 0) : nullptr;
        if (connector != nullptr) {
            assignAt(*m_edge, connector, atSource);
        }
    }
    return connector;
}

QxSize QxDEdgeInitialGeometry::correction(bool atSource, const Route& route,
                                          const QxPoint& now) const {
    const auto fromEnd = [&](std::size_t k) { return atSource ? k : route.mirrored(k); };
    if (connectorAt(*m_edge, atSource) == nullptr) {
        return {};
    }
    const QxPoint& start = route.at(fromEnd(1));
    bool isHorizontal = isAlongX(start.direction(route.at(fromEnd(2))));
    if (start == route.at(fromEnd(2))) {
        const QxDirectionEnum next =
            route.count() > 2 ? start.direction(route.at(fromEnd(3))) : QxDirectionNone;
        if (next == QxDirectionNone) {
            return {};
        }
        isHorizontal = !isAlongX(next);  // the segment without length comes first
    }
    return isHorizontal ? QxSize(0, qx::saturatingSub(now.y(), start.y()))
                        : QxSize(qx::saturatingSub(now.x(), start.x()), 0);
}

void QxDEdgeInitialGeometry::reroute() {
    if (!isUsable()) {
        return;
    }
    const Ref record(*this);
    const Ref alive(*m_edge);
    if (isPathEdited()) {
        adoptEditedPath();
    }
    if (isBack(true) && isBack(false)) {
        restorePath();
        return;
    }
    if (m_points.count() == 2 && m_isOrthogonal == 0 && m_edge->hasBends() == 0 &&
        calculatedAt(*m_edge, true) == nullptr && calculatedAt(*m_edge, false) == nullptr) {
        return;  // nothing but its ends
    }
    Route route = savedRoute();
    for (const bool atSource : {true, false}) {
        if (m_isOrthogonal != 0) {
            resetConnector(atSource);
        } else if (calculatedAt(*m_edge, atSource) != nullptr) {
            assignAt(*m_edge, nullptr, atSource);
        }
    }
    const QxPoint source = endPoint(true);
    const QxPoint target = endPoint(false);
    QxSize atSource;
    QxSize atTarget;
    if (m_isOrthogonal != 0) {
        atSource = correction(true, route, source);
        atTarget = correction(false, route, target);
        if (route.count() == 2) {
            const QxPoint middle(
                static_cast<std::int32_t>((std::int64_t{route.at(1).x()} + route.at(2).x()) / 2),
                static_cast<std::int32_t>((std::int64_t{route.at(1).y()} + route.at(2).y()) / 2));
            route.insertBefore(2, middle);
            route.insertBefore(2, middle);
        }
    }
    route.at(1) = source;
    route.at(route.count()) = target;
    if (route.count() > 2) {
        route.at(2) = route.at(2) + QxPoint(atSource.width(), atSource.height());
        QxPoint& last = route.at(route.count() - 1);
        last = last + QxPoint(atTarget.width(), atTarget.height());
    }
    finish(route);
}

void QxDEdgeInitialGeometry::finish(Route& route) {
    simplifyAfterMove(route);
    layPath(route);
}

void QxDEdgeInitialGeometry::layPath(const Route& route) {
    qx::internal::layBends(*m_edge, route);
    if (m_edge != nullptr) {
        m_path->known = bendsOf(*m_edge);
    }
}

void QxDEdgeInitialGeometry::simplifyAfterMove(Route& route) {
    if (m_isOrthogonal == 0) {
        qx::internal::dropStraightPoints(route, m_eps);
        return;
    }
    cutWithin(route, true);
    cutWithin(route, false);
    qx::internal::joinShortSegments(route, qx::internal::startsAlongX(route), m_delta);
    placeConnector(route, true);
    placeConnector(route, false);
}

void QxDEdgeInitialGeometry::cutWithin(Route& route, bool atSource) const {
    const QxDNode* node = nodeAt(*m_edge, atSource);
    if (calculatedAt(*m_edge, atSource) == nullptr || node == nullptr) {
        return;
    }
    const auto fromEnd = [&](std::size_t k) { return atSource ? k : route.mirrored(k); };
    std::size_t inside = 1;
    while (inside < route.count()) {
        QxPoint point = route.at(fromEnd(inside + 1));
        qx::internal::toNode(*m_edge, *node, point);
        if (node->within(point, 1) == 0) {
            break;
        }
        ++inside;
    }
    if (inside == 1 || inside == route.count()) {
        return;
    }
    if (atSource) {
        route.remove(1, inside - 1);
    } else {
        route.remove(route.mirrored(inside) + 1, route.count());
    }
}

bool QxDEdgeInitialGeometry::placeConnector(const Route& route, bool atSource) {
    QxConnector* connector = calculatedAt(*m_edge, atSource);
    const QxDNode* node = nodeAt(*m_edge, atSource);
    if (connector == nullptr || node == nullptr) {
        return false;
    }
    const QxPoint& here = route.at(atSource ? 1 : route.count());
    QxPoint next = route.at(atSource ? 2 : route.count() - 1);
    const QxDirectionEnum direction = here == next ? QxDirectionDown : here.direction(next);
    if (direction == QxDirectionNone) {
        return false;
    }
    qx::internal::toNode(*m_edge, *node, next);
    const bool isInside = node->within(next, 1) != 0;
    const auto travel = static_cast<QxDirectionEnum>(isInside ? (direction + 2) % 4 : direction);
    if (node->computeProjection(next, travel) == 0) {
        return false;
    }
    qx::internal::placeOnNode(*m_edge, *node->pIRect(), next, qx::internal::Thousandths::Nearest)
        .giveTo(*connector);
    connector->routingDirection(direction);
    return true;
}

// --- Putting back -----------------------------------------------------------------------------

void QxDEdgeInitialGeometry::restoreConnector(bool atSource) {
    const End& saved = end(atSource);
    if (QxConnector* connector = savedConnector(atSource)) {
        connector->ntSetPerMil(saved.perMil);
        connector->ntSetOffset(saved.offset);
        connector->routingDirection(saved.direction);
    } else if (saved.isSaved == 0 && calculatedAt(*m_edge, atSource) != nullptr) {
        assignAt(*m_edge, nullptr, atSource);
    }
}

void QxDEdgeInitialGeometry::restorePath() {
    restoreConnector(true);
    restoreConnector(false);
    const Route route = savedRoute();
    Route original;
    for (std::size_t k = 1; k <= route.count(); ++k) {
        if (k > m_path->origins.size() || !m_path->origins[k - 1].isAdded) {
            original.append(route.at(k));
            original[original.count()].bend = route[k].bend;
        }
    }
    layPath(original);
}

void QxDEdgeInitialGeometry::restoreEdge() {
    const Ref record(*this);
    QxDEdge* const edge = m_edge;
    if (edge == nullptr) {
        return;
    }
    const Ref alive(*edge);
    if (isUsable()) {
        restorePath();
    }
    if (edge->pEdgeInitialGeometry() == this) {
        edge->pEdgeInitialGeometry(nullptr);
    }
}
