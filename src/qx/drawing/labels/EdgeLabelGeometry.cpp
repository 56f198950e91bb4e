// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// How a label of an edge lies at the segments of its path.
//
// A segment runs through a rectangle when a part of it, a chord, lies inside: a segment that only
// touches a side or a corner, or runs along a side, does not. Segments are taken as they are drawn.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <optional>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxEdgeLabel.h"
#include "qx/drawing/QxPEdge.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/drawing/path/internal/Bend.h"

namespace {

/// Where a segment runs inside a rectangle.
struct Chord {
    QxPoint from;
    QxPoint to;
};

bool hasInsideBetween(const QxRect& rect, const QxPoint& a, const QxPoint& b) {
    // Twice the middle: exact.
    const std::int64_t x = std::int64_t{a.x()} + b.x();
    const std::int64_t y = std::int64_t{a.y()} + b.y();
    return 2 * std::int64_t{rect.left()} < x && x < 2 * std::int64_t{rect.right()} &&
           2 * std::int64_t{rect.bottom()} < y && y < 2 * std::int64_t{rect.top()};
}

std::optional<Chord> chordOf(const QxRect& rect, const QxPoint& from, const QxPoint& to) {
    Chord chord{from, to};
    const bool startsInside = rect.withinInterior(from) != 0;
    const bool endsInside = rect.withinInterior(to) != 0;
    QxPoint first = from;
    QxPoint second = to;
    const int crossings = rect.intersectsSegment(first, second);
    if (crossings == 2) {
        chord = {first, second};
    } else if (crossings == 1 && startsInside != endsInside) {
        (startsInside ? chord.to : chord.from) = first;
    } else if (!startsInside || !endsInside) {
        return std::nullopt;
    }
    if (!hasInsideBetween(rect, chord.from, chord.to)) {
        return std::nullopt;
    }
    return chord;
}

bool isOnLeftOrRight(const QxRect& rect, const QxPoint& p) {
    return p.x() == rect.left() || p.x() == rect.right();
}

bool isOnTopOrBottom(const QxRect& rect, const QxPoint& p) {
    return p.y() == rect.bottom() || p.y() == rect.top();
}

/// A rectangle that gets off a slanted chord of it; the chord's line rises or falls, and passes
/// below the rectangle's center ("above") or not.
class GettingOff {
public:
    GettingOff(const QxRect& rect, const Chord& chord) : m_rect(rect), m_chord(chord) {
        const double slope = (static_cast<double>(chord.from.y()) - chord.to.y()) /
                             (static_cast<double>(chord.from.x()) - chord.to.x());
        m_rises = slope > 0;
        const double onLine =
            chord.from.y() + slope * (static_cast<double>(rect.x()) - chord.from.x());
        m_isAbove = rect.y() - onLine > 0;
    }

    QxPoint newCenter() const {
        const QxPoint& a = m_chord.from;
        const QxPoint& b = m_chord.to;
        const auto isFree = [this](const QxPoint& p) {
            return !isOnLeftOrRight(m_rect, p) && !isOnTopOrBottom(m_rect, p);
        };
        if (isFree(a) || isFree(b)) {
            return besideCorner(isFree(a) ? b : a);
        }
        if (joins(m_rect.left(), a.x(), b.x(), m_rect.right()) ||
            joins(m_rect.bottom(), a.y(), b.y(), m_rect.top())) {
            const bool hasLeftEnd = a.x() == m_rect.left() || b.x() == m_rect.left();
            return hasLeftEnd ? acrossSides() : acrossTopAndBottom();
        }
        return outOfCorner(isOnLeftOrRight(m_rect, a) ? a : b, isOnLeftOrRight(m_rect, a) ? b : a);
    }

private:
    static bool joins(std::int32_t low, std::int32_t a, std::int32_t b, std::int32_t high) {
        return (a == low && b == high) || (a == high && b == low);
    }
    static QxPoint at(std::int64_t x, std::int64_t y) {
        return {qx::clampToInt32(x), qx::clampToInt32(y)};
    }
    std::int64_t halfWidth() const { return m_rect.width() / 2; }
    std::int64_t halfHeight() const { return m_rect.height() / 2; }

    /// The segment ends inside: the corner that is nearest to the line goes to its other end, or to
    /// the middle.
    QxPoint besideCorner(const QxPoint& otherEnd) const {
        const QxPoint& a = m_chord.from;
        const QxPoint& b = m_chord.to;
        const QxPoint corner = isOnLeftOrRight(m_rect, otherEnd)
                                   ? otherEnd
                                   : at(a.x() + (std::int64_t{b.x()} - a.x()) / 2,
                                        a.y() + (std::int64_t{b.y()} - a.y()) / 2);
        const int right = m_isAbove == m_rises ? -1 : 1;
        const int up = m_isAbove ? 1 : -1;
        return at(corner.x() + right * halfWidth(), corner.y() + up * halfHeight());
    }
    /// From side to side: straight up or down.
    QxPoint acrossSides() const {
        const auto [low, high] = std::minmax({m_chord.from.y(), m_chord.to.y()});
        const auto [left, right] = std::minmax({m_chord.from.x(), m_chord.to.x()});
        const std::int64_t x = m_isAbove == m_rises ? right - halfWidth() : left + halfWidth();
        return at(x, m_isAbove ? high + halfHeight() : low - halfHeight());
    }
    /// From top to bottom: straight sideways.
    QxPoint acrossTopAndBottom() const {
        const auto [low, high] = std::minmax({m_chord.from.y(), m_chord.to.y()});
        const auto [left, right] = std::minmax({m_chord.from.x(), m_chord.to.x()});
        const std::int64_t x = m_isAbove == m_rises ? left - halfWidth() : right + halfWidth();
        return at(x, m_isAbove ? low + halfHeight() : high - halfHeight());
    }
    /// A corner is cut off: the shorter straight way out of it.
    QxPoint outOfCorner(const QxPoint& side, const QxPoint& edge) const {
        const bool isLow = edge.y() == m_rect.bottom();
        const bool isLeft = side.x() == m_rect.left();
        const std::int64_t dy = isLow ? std::int64_t{side.y()} - m_rect.bottom()
                                      : std::int64_t{side.y()} - m_rect.top();
        const std::int64_t dx = isLeft ? std::int64_t{edge.x()} - m_rect.left()
                                       : std::int64_t{edge.x()} - m_rect.right();
        return std::abs(dy) < std::abs(dx) ? at(m_rect.x(), m_rect.y() + dy)
                                           : at(m_rect.x() + dx, m_rect.y());
    }

    const QxRect& m_rect;
    const Chord& m_chord;
    bool m_rises;
    bool m_isAbove;
};

/// Where the center of a rectangle goes that gets off a chord of it.
QxPoint centerOffChord(const QxRect& rect, const Chord& chord) {
    const QxPoint& a = chord.from;
    const QxPoint& b = chord.to;
    if (a.x() == b.x()) {
        return {rect.x() < a.x() ? qx::saturatingSub(a.x(), rect.rightHalfWidth())
                                 : qx::saturatingAdd(a.x(), rect.leftHalfWidth()),
                rect.y()};
    }
    if (a.y() == b.y()) {
        return {rect.x(), rect.y() < a.y() ? qx::saturatingSub(a.y(), rect.topHalfHeight())
                                           : qx::saturatingAdd(a.y(), rect.bottomHalfHeight())};
    }
    return GettingOff(rect, chord).newCenter();
}

/// Whether the node is a drawing node that was moved; a bend moves with its edge.
bool wasMoved(const QxNode* node) {
    return node != nullptr && !qx::internal::isBend(node) &&
           static_cast<const QxDNode*>(node)->graphObjectStatus() == QxStatusMoved;
}

/// Whether a node around this one was moved.
bool wasCarried(const QxDNode* node) {
    const QxDGraph* graph = node != nullptr ? node->pOwnerGraph() : nullptr;
    const QxDNode* around = graph != nullptr ? graph->pNestedWithinNode() : nullptr;
    return around != nullptr && (wasMoved(around) || wasCarried(around));
}

}  // namespace

void QxEdgeLabel::pointOnEdgeFromDistance(QxPoint* out, std::int32_t x1, std::int32_t y1,
                                          std::int32_t x2, std::int32_t y2, std::int32_t distance) {
    if (out == nullptr) {
        return;
    }
    const double dx = std::abs(static_cast<double>(x1) - x2);
    const double dy = std::abs(static_cast<double>(y1) - y2);
    std::int32_t wayX = 0;
    std::int32_t wayY = 0;
    if (x1 == x2) {
        wayY = distance;
    } else if (y1 == y2) {
        wayX = distance;
    } else {
        const double length = std::sqrt(dx * dx + dy * dy);
        wayX = qx::floorHalfUp(distance * dx / length);
        wayY = qx::floorHalfUp(distance * dy / length);
    }
    out->moveTo(x1 < x2 ? qx::saturatingAdd(x1, wayX) : qx::saturatingSub(x1, wayX),
                y1 < y2 ? qx::saturatingAdd(y1, wayY) : qx::saturatingSub(y1, wayY));
}

std::int32_t QxEdgeLabel::getAngleOfEdgeSegment(const QxPoint& from, const QxPoint& to) {
    const double dx = static_cast<double>(to.x()) - from.x();
    const double dy = static_cast<double>(to.y()) - from.y();
    if (dx == 0) {
        return dy < 0 ? 270 : 90;
    }
    if (dy == 0) {
        return dx < 0 ? 180 : 0;
    }
    constexpr double Pi = 3.141592653589793;
    const std::int32_t steep = qx::floorHalfUp(std::atan2(std::abs(dy), std::abs(dx)) * 180.0 / Pi);
    if (dy > 0) {
        return dx < 0 ? 180 - steep : steep;
    }
    return dx < 0 ? 180 + steep : (360 - steep) % 360;
}

QxEdgeLabelToWhichSideOfEdgeEnum QxEdgeLabel::whichSideOfEdge(const QxPoint& from,
                                                              const QxPoint& to,
                                                              std::int32_t) const {
    const QxPoint center = ntCenter();
    const double dx = static_cast<double>(to.x()) - from.x();
    const double dy = static_cast<double>(to.y()) - from.y();
    const double away = dx * (static_cast<double>(center.y()) - from.y()) -
                        dy * (static_cast<double>(center.x()) - from.x());
    return away > 0 ? QxEdgeLabelLeftSide : QxEdgeLabelRightSide;
}

QxEdgeEndPointMovedEnum QxEdgeLabel::whichEndPointMoved(const QxPEdge* segment) const {
    const QxDEdge* edge = segment != nullptr ? segment->pUnverifiedOwnerEdge() : nullptr;
    if (edge == nullptr) {
        return QxEdgeEndMovedUnknown;
    }
    if (wasMoved(segment->QxEdge::pSourceNode())) {
        return QxEdgeSourceMoved;
    }
    if (wasMoved(segment->QxEdge::pTargetNode())) {
        return QxEdgeTargetMoved;
    }
    const bool canBeCarried = edge->intergraphEdge() != 0;
    if (canBeCarried && wasCarried(edge->pSourceNode())) {
        return QxEdgeSourceMoved;
    }
    return canBeCarried && wasCarried(edge->pTargetNode()) ? QxEdgeTargetMoved
                                                           : QxEdgeEndMovedUnknown;
}

int QxEdgeLabel::labelTouchesPathEdge(const QxPEdge* segment, std::int32_t tolerance) const {
    if (segment == nullptr) {
        return 0;
    }
    QxRect rect;
    ntBoundingRect(rect);
    for (const QxPoint& corner :
         {rect.topLeft(), rect.bottomLeft(), rect.topRight(), rect.bottomRight()}) {
        QxPoint nearest;
        std::int32_t distance = 0;
        segment->projectionPoint(&corner, &nearest, &distance);
        if (corner.distance(nearest) <= std::max(tolerance, 0)) {
            return 1;
        }
    }
    return 0;
}

int QxEdgeLabel::labelOverlapsPathEdge(const QxPEdge* segment) const {
    if (segment == nullptr) {
        return 0;
    }
    QxRect rect;
    ntBoundingRect(rect);
    const QxPoint from = segment->ntFromPoint(1);
    const QxPoint to = segment->ntToPoint(1);
    return rect.within(from) == 0 && rect.within(to) == 0 && chordOf(rect, from, to) ? 1 : 0;
}

int QxEdgeLabel::labelAwayFromPathEdge(const QxPEdge* segment) const {
    if (segment == nullptr) {
        return 1;
    }
    constexpr std::int32_t Room = 5;
    QxRect rect;
    ntBoundingRect(rect);
    rect.setCorners(qx::saturatingSub(rect.left(), Room), qx::saturatingSub(rect.bottom(), Room),
                    qx::saturatingAdd(rect.right(), Room), qx::saturatingAdd(rect.top(), Room));
    const QxPoint from = segment->ntFromPoint(1);
    const QxPoint to = segment->ntToPoint(1);
    return rect.within(from) != 0 || rect.within(to) != 0 ||
                   rect.overlapsSegment(from.x(), from.y(), to.x(), to.y()) == 0
               ? 1
               : 0;
}

int QxEdgeLabel::adjustOnOwnerOverlap() {
    const QxDEdge* edge = pOwnerEdge();
    if (edge == nullptr) {
        return 0;
    }
    QxRect rect;
    ntBoundingRect(rect);
    std::optional<Chord> chord;
    if (edge->hasBends() == 0) {
        chord = chordOf(rect, edge->ntFromPoint(1), edge->ntToPoint(1));
    } else {
        for (QxPathIter it(edge); it && !chord; ++it) {
            chord = chordOf(rect, it.pEdge()->ntFromPoint(1), it.pEdge()->ntToPoint(1));
        }
    }
    return chord ? moveTo(centerOffChord(rect, *chord), 1) : 0;
}
