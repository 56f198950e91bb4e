// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/geometry/QxRotatedRect.h"

#include <cmath>
#include <ostream>

#include "qx/foundation/util/QxDebugStream.h"

int QxRotatedRect::within(const QxPoint& p) const noexcept {
    if (m_from == m_to) {
        return p == m_from ? 1 : 0;
    }
    const double dx = static_cast<double>(m_to.x()) - m_from.x();
    const double dy = static_cast<double>(m_to.y()) - m_from.y();
    const double px = static_cast<double>(p.x()) - m_from.x();
    const double py = static_cast<double>(p.y()) - m_from.y();
    const double along = px * dx + py * dy;
    const double across = std::abs(px * dy - py * dx);
    return 0.0 <= along && along <= dx * dx + dy * dy &&
                   across <= m_width / 2.0 * std::hypot(dx, dy)
               ? 1
               : 0;
}

void QxRotatedRect::getBoundingRect(QxRect& rect) const noexcept {
    rect = QxRect(m_from, m_to);
    if (m_from == m_to || m_width <= 0) {
        return;
    }
    const double dx = static_cast<double>(m_to.x()) - m_from.x();
    const double dy = static_cast<double>(m_to.y()) - m_from.y();
    const double scale = m_width / 2.0 / std::hypot(dx, dy);
    const std::int32_t outX = qx::truncToInt32(std::ceil(std::abs(dy) * scale));
    const std::int32_t outY = qx::truncToInt32(std::ceil(std::abs(dx) * scale));
    rect.setCorners(qx::saturatingSub(rect.left(), outX), qx::saturatingSub(rect.bottom(), outY),
                    qx::saturatingAdd(rect.right(), outX), qx::saturatingAdd(rect.top(), outY));
}

void QxRotatedRect::debugOutput(int depth) const {
    qxDebugIndent(depth) << "QxRotatedRect " << m_from.x() << ' ' << m_from.y() << " to "
                         << m_to.x() << ' ' << m_to.y() << " width " << m_width << '\n';
}
