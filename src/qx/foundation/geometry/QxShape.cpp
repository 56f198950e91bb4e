// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/geometry/QxShape.h"

#include <cmath>
#include <limits>
#include <ostream>
#include <utility>

#include "qx/foundation/geometry/QxPointDList.h"
#include "qx/foundation/geometry/internal/QxOvalOutline.h"
#include "qx/foundation/geometry/internal/QxPolygonOutline.h"
#include "qx/foundation/util/QxDebugStream.h"

using qx::internal::QxPlacedFrame;
using qx::internal::roundSteadily;

namespace {

QxRect centeredRect(std::int32_t half) noexcept {
    return {-half, -half, half, half};
}

/// Where a coordinate of the frame lies when the frame covers `extent` units from `low` on.
double placed(std::int32_t frameCoordinate, double low, double extent) noexcept {
    return low + (frameCoordinate + QxShape::FrameHalf) / (2.0 * QxShape::FrameHalf) * extent;
}

/// The extent whose inner part, from `low` to `high` of the frame, has the length `inner`.
double extentAround(std::int64_t inner, std::int32_t low, std::int32_t high) noexcept {
    return std::ceil(static_cast<double>(std::max<std::int64_t>(inner, 0)) *
                     (2.0 * QxShape::FrameHalf) / (static_cast<double>(high) - low));
}

/// Where an extent begins whose inner part, from `frameLow` of the frame on, is placed at `inner`.
std::int32_t beginningFor(std::int32_t inner, std::int32_t frameLow, double extent) noexcept {
    // The smallest beginning for which roundSteadily places `frameLow` at `inner` again.
    const double exact = inner - placed(frameLow, 0.0, extent);
    return qx::truncToInt32(std::ceil(exact - 0.5 - qx::internal::RoundingSlack));
}

/// A point on the border of a rectangle nearest to `p`.
QxPoint nearestOnRect(const QxRect& rect, const QxPoint& p) noexcept {
    QxPoint nearest(std::clamp(p.x(), rect.left(), rect.right()),
                    std::clamp(p.y(), rect.bottom(), rect.top()));
    if (rect.withinInterior(nearest) != 0) {
        switch (rect.closestSide(nearest)) {
            case QxSideLeft:
                nearest.x(rect.left());
                break;
            case QxSideRight:
                nearest.x(rect.right());
                break;
            case QxSideBottom:
                nearest.y(rect.bottom());
                break;
            default:
                nearest.y(rect.top());
        }
    }
    return nearest;
}

/// Chord of a rectangle through its center in the direction (dx, dy), not both 0.
double rectChord(const QxRect& rect, double dx, double dy) noexcept {
    constexpr double unlimited = std::numeric_limits<double>::infinity();
    const double limitX = dx == 0.0 ? unlimited : rect.width() / std::abs(dx);
    const double limitY = dy == 0.0 ? unlimited : rect.height() / std::abs(dy);
    return std::hypot(dx, dy) * std::min(limitX, limitY);
}

using Points = std::vector<QxDTuple>;

struct Range {
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();

    void include(double value) noexcept {
        low = std::min(low, value);
        high = std::max(high, value);
    }
    bool liesInFrame() const noexcept {
        return low >= -QxShape::FrameHalf && high <= QxShape::FrameHalf;
    }
    /// The coordinate in the frame whose ends are the ends of this range.
    double stretched(double value) const noexcept {
        if (low == high) {
            return 0.0;
        }
        const double share = (value - low) / (high - low);
        return std::floor(share * 2.0 * QxShape::FrameHalf + 0.5) - QxShape::FrameHalf;
    }
};

/// The bounding box of an outline.
struct Box {
    explicit Box(const Points& points) {
        for (const QxDTuple& point : points) {
            x.include(point.x());
            y.include(point.y());
        }
    }
    bool liesInFrame() const noexcept { return x.liesInFrame() && y.liesInFrame(); }

    Range x;
    Range y;
};

Points pointsOf(const QxPointDList& outline) {
    Points points;
    points.reserve(static_cast<std::size_t>(outline.count()));
    for (const QxDListCell* cell = outline.pFirstCell(); cell; cell = cell->pNextCell()) {
        points.emplace_back(QxPointDList::pPoint(cell)->x(), QxPointDList::pPoint(cell)->y());
    }
    return points;
}

/// Lets the bounding box of the outline become the frame.
Points stretchedToFrame(Points points) {
    const Box box(points);
    for (QxDTuple& point : points) {
        point = QxDTuple(box.x.stretched(point.x()), box.y.stretched(point.y()));
    }
    return points;
}

}  // namespace

QxShape::QxShape(QxShapeTypeEnum type) noexcept
    : m_type(type), m_isRectangular(type != QxShapeTypeOval) {
    if (type == QxShapeTypeOval) {
        m_innerRect = centeredRect(qx::truncToInt32(FrameHalf * std::sqrt(0.5)));
    }
}

QxShape::QxShape(const QxPointDList& outline) : m_type(QxShapeTypePolygon) {
    Points points = pointsOf(outline);
    const bool isInFrame = Box(points).liesInFrame();
    takeOutline(isInFrame ? std::move(points) : stretchedToFrame(std::move(points)));
}

QxShape QxShape::fromOutline(const QxPointDList& outline) {
    QxShape shape(QxShapeTypePolygon);
    shape.takeOutline(stretchedToFrame(pointsOf(outline)));
    return shape;
}

void QxShape::takeOutline(Points points) {
    if (points.size() < 3) {
        return;
    }
    m_points = std::move(points);
    m_isRectangular = qx::internal::isFrameItself(m_points);
    const std::int32_t half = qx::internal::polygonInnerHalf(m_points);
    if (half > 0) {
        m_innerRect = centeredRect(half);
    }
}

void QxShape::getOutline(QxPointDList& points) const {
    points.discardAllPoints();
    for (const QxDTuple& point : m_points) {
        points.appendPoint(QxPoint(qx::truncToInt32(point.x()), qx::truncToInt32(point.y())));
    }
}

int QxShape::within(const QxPoint& p, const QxPoint& center, const QxSize& size) const {
    const QxRect rect(center, size);
    if (rect.within(p) == 0) {
        return 0;
    }
    if (hasSimpleOutlineAt(rect)) {
        return 1;
    }
    const QxPlacedFrame frame(rect);
    return m_type == QxShapeTypeOval ? qx::internal::ovalContains(frame, p)
                                     : qx::internal::polygonContains(m_points, frame, p);
}

int QxShape::within(std::int32_t x, std::int32_t y, std::int32_t centerX, std::int32_t centerY,
                    std::int32_t width, std::int32_t height) const {
    return within(QxPoint(x, y), QxPoint(centerX, centerY), QxSize(width, height));
}

int QxShape::onBoundary(const QxPoint& p, const QxPoint& center, const QxSize& size) const {
    return liesOnOutline(p, QxRect(center, size)) ? 1 : 0;
}

bool QxShape::liesOnOutline(const QxPoint& p, const QxRect& rect) const {
    if (hasSimpleOutlineAt(rect)) {
        return rect.onBoundary(p) != 0;
    }
    if (rect.within(p) == 0) {
        return false;
    }
    const QxPlacedFrame frame(rect);
    return m_type == QxShapeTypeOval ? qx::internal::ovalPassesAt(frame, p)
                                     : qx::internal::polygonPassesAt(m_points, frame, p);
}

int QxShape::intersectsSegment(QxPoint& result, const QxPoint& from, const QxPoint& to,
                               const QxSize& size) const {
    return clip(result, from, to, QxRect(size.width(), size.height()));
}

int QxShape::intersectsSegment(QxPoint& result, const QxPoint& from, const QxPoint& to,
                               const QxPoint& center, const QxSize& size) const {
    return clip(result, from, to, QxRect(center, size));
}

int QxShape::intersectsSegment(std::int32_t& x, std::int32_t& y, std::int32_t toX, std::int32_t toY,
                               std::int32_t centerX, std::int32_t centerY, std::int32_t width,
                               std::int32_t height) const {
    QxPoint point(x, y);
    const QxRect rect(QxPoint(centerX, centerY), QxSize(width, height));
    const int isMet = clip(point, point, QxPoint(toX, toY), rect);
    x = point.x();
    y = point.y();
    return isMet;
}

int QxShape::clip(QxPoint& result, const QxPoint& from, const QxPoint& to,
                  const QxRect& rect) const {
    if (hasSimpleOutlineAt(rect)) {
        QxPoint first = from;
        QxPoint second = to;
        if (rect.intersectsSegment(first, second) == 0) {
            return 0;
        }
        result = first;
        return 1;
    }
    const QxPlacedFrame frame(rect);
    const bool isCut = m_type == QxShapeTypeOval
                           ? qx::internal::clipAtOval(frame, from, to, result)
                           : qx::internal::clipAtPolygon(m_points, frame, from, to, result);
    if (isCut) {
        return 1;
    }
    if (liesOnOutline(from, rect)) {
        result = from;
        return 1;
    }
    if (liesOnOutline(to, rect)) {
        result = to;
        return 1;
    }
    return 0;
}

int QxShape::nearestPoint(QxPoint& result, const QxPoint& p, const QxSize& size) const {
    return nearestPoint(result, p, QxPoint(), size);
}

int QxShape::nearestPoint(QxPoint& result, const QxPoint& p, const QxPoint& center,
                          const QxSize& size) const {
    if (size.width() < 0 || size.height() < 0) {
        return 0;
    }
    const QxRect rect(center, size);
    if (hasSimpleOutlineAt(rect)) {
        result = nearestOnRect(rect, p);
        return 1;
    }
    const QxPlacedFrame frame(rect);
    result = m_type == QxShapeTypeOval ? qx::internal::nearestOnOval(frame, p)
                                       : qx::internal::nearestOnPolygon(m_points, frame, p);
    return 1;
}

QxRect QxShape::usableInnerRect() const noexcept {
    const bool isUsable =
        m_innerRect.left() < m_innerRect.right() && m_innerRect.bottom() < m_innerRect.top();
    return isUsable ? m_innerRect : centeredRect(FrameHalf);
}

void QxShape::getCurrentInnerRect(QxRect& rect, const QxPoint& center, const QxSize& size) const {
    const QxRect outer(center, size);
    const QxRect inner = usableInnerRect();
    const double width = static_cast<double>(outer.right()) - outer.left();
    const double height = static_cast<double>(outer.top()) - outer.bottom();
    rect.setCorners(roundSteadily(placed(inner.left(), outer.left(), width)),
                    roundSteadily(placed(inner.bottom(), outer.bottom(), height)),
                    roundSteadily(placed(inner.right(), outer.left(), width)),
                    roundSteadily(placed(inner.top(), outer.bottom(), height)));
}

void QxShape::fitBoundingRectToInnerRect(QxRect& boundingRect, const QxRect& inner) const {
    const QxRect part = usableInnerRect();
    const double width =
        extentAround(std::int64_t{inner.right()} - inner.left(), part.left(), part.right());
    const double height =
        extentAround(std::int64_t{inner.top()} - inner.bottom(), part.bottom(), part.top());
    const std::int32_t left = beginningFor(inner.left(), part.left(), width);
    const std::int32_t bottom = beginningFor(inner.bottom(), part.bottom(), height);
    boundingRect.setCorners(left, bottom, qx::truncToInt32(left + width),
                            qx::truncToInt32(bottom + height));
}

double QxShape::maxAvailableDiagonalLengthAtShape(const QxPoint& center, const QxPoint& other,
                                                  const QxSize& size) const {
    const QxRect rect(center, size);
    if (rect.left() > rect.right() || rect.bottom() > rect.top()) {
        return 0.0;
    }
    // At a right angle to the way to `other`.
    const double dx = static_cast<double>(center.y()) - other.y();
    const double dy = center == other ? 1.0 : static_cast<double>(other.x()) - center.x();
    if (hasSimpleOutlineAt(rect)) {
        return rectChord(rect, dx, dy);
    }
    const QxPlacedFrame frame(rect);
    return m_type == QxShapeTypeOval ? qx::internal::ovalChord(frame, dx, dy)
                                     : qx::internal::polygonChord(m_points, frame, dx, dy);
}

std::size_t QxShape::valueHash() const noexcept {
    std::size_t hash = mixHash(m_innerRect.valueHash(), m_type);
    for (const QxDTuple& point : m_points) {
        hash = mixHash(hash, static_cast<std::int64_t>(point.x()));
        hash = mixHash(hash, static_cast<std::int64_t>(point.y()));
    }
    return hash;
}

void QxShape::debugOutput(int depth) const {
    qxDebugIndent(depth) << "QxShape type " << m_type << " points " << m_points.size() << '\n';
    m_innerRect.debugOutput(depth + 1);
}
