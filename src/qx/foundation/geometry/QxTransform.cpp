// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/geometry/QxTransform.h"

#include <functional>
#include <ostream>

#include "qx/foundation/util/QxDebugStream.h"

std::size_t QxTransform::valueHash() const noexcept {
    std::size_t hash = 4;
    for (const QxDTuple* pair :
         {&m_sourceOrigin, &m_targetOrigin, &m_sourceExtent, &m_targetExtent}) {
        // std::hash treats the two zeros, which are equal, alike.
        hash = mixHash(hash, static_cast<std::int64_t>(std::hash<double>{}(pair->x())));
        hash = mixHash(hash, static_cast<std::int64_t>(std::hash<double>{}(pair->y())));
    }
    return hash;
}

void QxTransform::debugOutput(int depth) const {
    qxDebugIndent(depth) << "QxTransform from " << m_sourceOrigin.x() << ' ' << m_sourceOrigin.y()
                         << " to " << m_targetOrigin.x() << ' ' << m_targetOrigin.y() << " scale "
                         << scaleX() << ' ' << scaleY() << '\n';
}
