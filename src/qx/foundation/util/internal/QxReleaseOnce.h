// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <unordered_set>
#include <vector>

#include "qx/foundation/util/QxObject.h"

namespace qx::internal {

/// Drops one reference of each object, in order; nulls and repetitions are passed over.
inline void releaseOnce(const std::vector<QxObject*>& objects) {
    std::unordered_set<const QxObject*> released(objects.size());
    for (QxObject* object : objects) {
        if (object != nullptr && released.insert(object).second) {
            object->vRelease();
        }
    }
}

}  // namespace qx::internal
