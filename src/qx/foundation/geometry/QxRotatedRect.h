// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/geometry/QxRect.h"

/// The rectangle of a given width laid around a segment: as long as the segment, with half the
/// width on either side of it. Around a single point it is that point.
class QX_API QxRotatedRect : public QxValueObject<QxRotatedRect> {
public:
    /// The origin alone.
    QxRotatedRect() noexcept = default;
    /// Around the segment `from` to `to`; `width` counts across it, half of it on either side.
    QxRotatedRect(const QxPoint& from, const QxPoint& to, std::int32_t width) noexcept
        : m_from(from), m_to(to), m_width(width) {}
    QxRotatedRect(const QxRotatedRect& other, QxDeepFlagEnum) noexcept : QxRotatedRect(other) {}

    /// The ends of the segment, and the extent across it.
    const QxPoint& from() const noexcept { return m_from; }
    const QxPoint& to() const noexcept { return m_to; }
    std::int32_t width() const noexcept { return m_width; }

    /// 1 when the point lies in the rectangle, its border included.
    int within(const QxPoint& p) const noexcept;
    /// The smallest axis-parallel rectangle around it.
    void getBoundingRect(QxRect& rect) const noexcept;

    friend bool operator==(const QxRotatedRect& a, const QxRotatedRect& b) noexcept {
        return a.m_from == b.m_from && a.m_to == b.m_to && a.m_width == b.m_width;
    }
    std::size_t valueHash() const noexcept {
        return mixHash(mixHash(m_from.valueHash(), m_to.x()),
                       (std::int64_t{m_to.y()} << 32) ^ m_width);
    }

    void debugOutput(int depth) const override;

private:
    QxPoint m_from;
    QxPoint m_to;
    std::int32_t m_width = 0;
};
