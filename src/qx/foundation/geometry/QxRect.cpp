// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/geometry/QxRect.h"

#include <cstdlib>
#include <ostream>

#include "qx/foundation/geometry/QxPerMil.h"
#include "qx/foundation/util/QxDebugStream.h"

// Segments are clipped in their parameter t, 0 at the first point and 1 at the second: each axis
// bounds the stretch of t that lies between its two sides, and what is left of both is the part in
// the rectangle. The bounds are kept as fractions of 64-bit integers and compared through 128-bit
// products, so that whether, and through which sides, a segment passes is exact; only the
// coordinate along a side is rounded.

namespace {

struct Fraction {
    std::int64_t numerator;
    std::int64_t denominator;  // positive

    bool operator<(const Fraction& other) const noexcept {
        return static_cast<__int128>(numerator) * other.denominator <
               static_cast<__int128>(other.numerator) * denominator;
    }
};

/// The coordinate at the share `t` of a way, rounded to the nearest integer.
std::int32_t coordinateAt(const Fraction& t, std::int64_t from, std::int64_t delta) noexcept {
    const double shift = static_cast<double>(delta) * static_cast<double>(t.numerator) /
                         static_cast<double>(t.denominator);
    return qx::floorHalfUp(static_cast<double>(from) + shift);
}

class LineClip {
public:
    LineClip(const QxRect& rect, std::int64_t fromX, std::int64_t fromY, std::int64_t toX,
             std::int64_t toY) noexcept
        : m_rect(rect), m_fromX(fromX), m_fromY(fromY), m_dx(toX - fromX), m_dy(toY - fromY) {}

    /// The whole line, or the segment, as far as it lies in the rectangle; false when it does not.
    bool clipLine() noexcept {
        return clipAxis(m_fromX, m_dx, m_rect.left(), m_rect.right(), QxSideLeft) &&
               clipAxis(m_fromY, m_dy, m_rect.bottom(), m_rect.top(), QxSideBottom);
    }
    bool clipSegment() noexcept {
        m_hasStart = m_hasEnd = true;
        return clipLine();
    }

    bool isPoint() const noexcept { return m_dx == 0 && m_dy == 0; }
    bool isTouch() const noexcept { return !(m_start < m_end); }
    /// The sides through which the line comes in and goes out; none where a segment's own end cuts.
    QxSideEnum startSide() const noexcept { return m_startSide; }
    QxSideEnum endSide() const noexcept { return m_endSide; }
    QxPoint startPoint() const noexcept { return pointAt(m_start, m_startSide); }
    QxPoint endPoint() const noexcept { return pointAt(m_end, m_endSide); }

private:
    bool clipAxis(std::int64_t from, std::int64_t delta, std::int64_t low, std::int64_t high,
                  int lowSide) noexcept {
        if (delta == 0) {
            return low <= from && from <= high;
        }
        const auto lower = static_cast<QxSideEnum>(lowSide);
        const auto upper = static_cast<QxSideEnum>(lowSide + 2);
        if (delta > 0) {
            raiseStart({low - from, delta}, lower);
            lowerEnd({high - from, delta}, upper);
        } else {
            raiseStart({from - high, -delta}, upper);
            lowerEnd({from - low, -delta}, lower);
        }
        return !(m_end < m_start);
    }
    void raiseStart(const Fraction& bound, QxSideEnum side) noexcept {
        // A segment that starts on a side comes in through it.
        if (!m_hasStart || m_start < bound || (m_startSide == QxSideNone && bound.numerator == 0)) {
            m_start = bound;
            m_startSide = side;
            m_hasStart = true;
        }
    }
    void lowerEnd(const Fraction& bound, QxSideEnum side) noexcept {
        if (!m_hasEnd || bound < m_end ||
            (m_endSide == QxSideNone && bound.numerator == bound.denominator)) {
            m_end = bound;
            m_endSide = side;
            m_hasEnd = true;
        }
    }
    QxPoint pointAt(const Fraction& t, QxSideEnum side) const noexcept {
        switch (side) {
            case QxSideLeft:
            case QxSideRight:
                return {side == QxSideLeft ? m_rect.left() : m_rect.right(),
                        std::clamp(coordinateAt(t, m_fromY, m_dy), m_rect.bottom(), m_rect.top())};
            case QxSideBottom:
            case QxSideTop:
                return {std::clamp(coordinateAt(t, m_fromX, m_dx), m_rect.left(), m_rect.right()),
                        side == QxSideBottom ? m_rect.bottom() : m_rect.top()};
            case QxSideNone:
                break;
        }
        const std::int64_t steps = t.numerator;  // 0 or 1, the segment's first or second point
        return {qx::clampToInt32(m_fromX + steps * m_dx), qx::clampToInt32(m_fromY + steps * m_dy)};
    }
    const QxRect& m_rect;
    std::int64_t m_fromX;
    std::int64_t m_fromY;
    std::int64_t m_dx;
    std::int64_t m_dy;
    Fraction m_start{0, 1};
    Fraction m_end{1, 1};
    QxSideEnum m_startSide = QxSideNone;
    QxSideEnum m_endSide = QxSideNone;
    bool m_hasStart = false;
    bool m_hasEnd = false;
};

void store(const QxPoint& p, std::int32_t& x, std::int32_t& y) noexcept {
    x = p.x();
    y = p.y();
}

/// How far a value lies beyond the nearer end of a range; negative inside.
std::int64_t overshoot(std::int64_t low, std::int64_t value, std::int64_t high) noexcept {
    return std::max(low - value, value - high);
}

}  // namespace

QxRect& QxRect::operator|=(const QxRect& other) noexcept {
    updateBounds(&other);
    return *this;
}

int QxRect::updateBounds(const QxRect* other) noexcept {
    if (other == nullptr || other->isEmpty() != 0 || encloses(*other) != 0) {
        return 0;
    }
    if (isEmpty() != 0) {
        *this = *other;
        return 1;
    }
    m_left = std::min(m_left, other->m_left);
    m_right = std::max(m_right, other->m_right);
    m_bottom = std::min(m_bottom, other->m_bottom);
    m_top = std::max(m_top, other->m_top);
    return 1;
}

int QxRect::intersectsSegment(QxPoint& from, QxPoint& to) const noexcept {
    LineClip clip(*this, from.x(), from.y(), to.x(), to.y());
    if (!clip.clipSegment()) {
        return 0;
    }
    const QxPoint start = clip.startPoint();
    const QxPoint end = clip.endPoint();
    // An end of the segment counts where it lies on the border itself, as on a side it runs along.
    const bool startCrosses = clip.startSide() != QxSideNone || onBoundary(start) != 0;
    const bool endCrosses = clip.endSide() != QxSideNone || onBoundary(end) != 0;
    if (!startCrosses && !endCrosses) {
        return 0;
    }
    from = startCrosses ? start : end;
    if (!startCrosses || !endCrosses || clip.isPoint() || clip.isTouch()) {
        return 1;
    }
    to = end;
    return 2;
}

int QxRect::intersectsSegment(std::int32_t& fromX, std::int32_t& fromY, std::int32_t& toX,
                              std::int32_t& toY) const noexcept {
    QxPoint from(fromX, fromY);
    QxPoint to(toX, toY);
    const int crossings = intersectsSegment(from, to);
    store(from, fromX, fromY);
    store(to, toX, toY);
    return crossings;
}

int QxRect::intersectsLine(std::int32_t& fromX, std::int32_t& fromY, std::int32_t& toX,
                           std::int32_t& toY) const noexcept {
    LineClip clip(*this, fromX, fromY, toX, toY);
    if (clip.isPoint()) {
        return onBoundary(QxPoint(fromX, fromY));
    }
    if (!clip.clipLine()) {
        return 0;
    }
    store(clip.startPoint(), fromX, fromY);
    if (clip.isTouch()) {
        return 1;
    }
    store(clip.endPoint(), toX, toY);
    return 2;
}

int QxRect::overlapsSegment(std::int32_t fromX, std::int32_t fromY, std::int32_t toX,
                            std::int32_t toY) const noexcept {
    return LineClip(*this, fromX, fromY, toX, toY).clipSegment() ? 1 : 0;
}

QxSideEnum QxRect::closestSide(const QxPoint& p) const noexcept {
    const std::int64_t beyondX = overshoot(m_left, p.x(), m_right);
    const std::int64_t beyondY = overshoot(m_bottom, p.y(), m_top);
    const QxSideEnum sideX =
        std::int64_t{p.x()} - m_left <= std::int64_t{m_right} - p.x() ? QxSideLeft : QxSideRight;
    const QxSideEnum sideY =
        std::int64_t{p.y()} - m_bottom <= std::int64_t{m_top} - p.y() ? QxSideBottom : QxSideTop;
    if (beyondX != beyondY) {
        return beyondX > beyondY ? sideX : sideY;
    }
    return std::min(sideX, sideY);
}

QxSideEnum QxRect::sideForRouting(const QxRect& other, int preferHorizontalRoute) const noexcept {
    const std::int64_t gapX = std::max(std::int64_t{m_left} - other.m_right,  //
                                       std::int64_t{other.m_left} - m_right);
    const std::int64_t gapY =
        std::max(std::int64_t{m_bottom} - other.m_top, std::int64_t{other.m_bottom} - m_top);
    if (gapX > gapY || (gapX == gapY && preferHorizontalRoute != 0)) {
        return other.x() < x() ? QxSideLeft : QxSideRight;
    }
    return other.y() < y() ? QxSideBottom : QxSideTop;
}

void QxRect::getPointOutsideRect(QxPoint& outside, const QxPoint& toward) const noexcept {
    const QxPoint start = center();
    std::int64_t dx = std::int64_t{toward.x()} - start.x();
    const std::int64_t dy = std::int64_t{toward.y()} - start.y();
    if (dx == 0 && dy == 0) {
        dx = 1;
    }
    const std::int64_t outX = (dx < 0 ? m_left - std::int64_t{1} : m_right + std::int64_t{1});
    const std::int64_t outY = (dy < 0 ? m_bottom - std::int64_t{1} : m_top + std::int64_t{1});
    const Fraction leavesInX{std::abs(outX - start.x()), std::abs(dx)};
    const Fraction leavesInY{std::abs(outY - start.y()), std::abs(dy)};
    if (dy == 0 || (dx != 0 && !(leavesInY < leavesInX))) {
        outside.moveTo(qx::clampToInt32(outX), coordinateAt(leavesInX, start.y(), dy));
    } else {
        outside.moveTo(coordinateAt(leavesInY, start.x(), dx), qx::clampToInt32(outY));
    }
}

void QxRect::setPerMil(const QxPoint& p, QxPerMil& result) const noexcept {
    result.compute(qx::saturatingSub(p.x(), x()), qx::saturatingSub(p.y(), y()), *this);
}

void QxRect::setOffset(const QxPoint& p, QxSize& result) const noexcept {
    result.resize(qx::saturatingSub(p.x(), x()), qx::saturatingSub(p.y(), y()));
}

void QxRect::debugOutput(int depth) const {
    qxDebugIndent(depth) << "QxRect left " << m_left << " bottom " << m_bottom << " right "
                         << m_right << " top " << m_top << '\n';
}
