// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

#include "qx/foundation/util/QxText.h"

class QxChildGraphForestEdge;
class QxObject;

namespace qx::internal {

/// What few graph objects use: name, user fields, and the relation to a child graph.
struct GraphObjectExtras {
    QxText name;
    bool named = false;
    std::int64_t userField = 0;
    QxObject* userObject = nullptr;
    std::int64_t internalField = 0;
    QxObject* internalObject = nullptr;
    QxChildGraphForestEdge* forestEdge = nullptr;

    bool isIdle() const {
        return !named && userField == 0 && userObject == nullptr && internalField == 0 &&
               internalObject == nullptr && forestEdge == nullptr;
    }
};

}  // namespace qx::internal
