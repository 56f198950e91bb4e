// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/util/QxHashSet.h"

#include <utility>

#include "qx/foundation/util/internal/Ref.h"

QxHashSet::QxHashSet(std::int32_t capacity) {
    if (capacity > 0) {
        m_members.reserve(static_cast<std::size_t>(capacity));
        m_order.reserve(static_cast<std::size_t>(capacity));
    }
}

int QxHashSet::add(QxObject* object) {
    if (object == nullptr || !m_members.insert(object).second) {
        return 0;
    }
    m_order.push_back(object);
    return 1;
}

int QxHashSet::contains(const QxObject* object) const {
    return m_members.count(object) != 0 ? 1 : 0;
}

void QxHashSet::clear(int releaseObjects) {
    m_members.clear();
    const std::vector<QxObject*> forgotten = std::exchange(m_order, {});
    if (releaseObjects != 0) {
        qx::internal::releaseOnce(forgotten);
    }
}
