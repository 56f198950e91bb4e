// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <unordered_set>
#include <vector>

#include "qx/foundation/util/QxObject.h"

/// A set of objects by identity; it does not own them.
class QX_API QxHashSet : public QxObject {
public:
    /// Room for `capacity` objects without growing; it grows beyond.
    explicit QxHashSet(std::int32_t capacity = 0);

    /// 1 when the object is new to the set; 0 when it is there already or null.
    int add(QxObject* object);
    /// 1 when the object itself, not one equal to it, is in the set.
    int contains(const QxObject* object) const;
    /// Forgets all; nonzero drops one reference of each object, in the order they came.
    void clear(int releaseObjects);

    /// The number of objects in the set.
    std::int32_t count() const noexcept { return static_cast<std::int32_t>(m_order.size()); }

private:
    std::unordered_set<const QxObject*> m_members;
    std::vector<QxObject*> m_order;
};
