// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

#include "qx/foundation/util/QxText.h"

class QxChildGraphForestEdge;
class QxObject;

namespace qx::internal {

/// What few graph objects use: name, user fields, and the relation to a child graph. Classes with
/// more such state derive from it, so that all of it costs a plain object one pointer.
struct GraphObjectExtras {
    GraphObjectExtras() = default;
    GraphObjectExtras(const GraphObjectExtras&) = delete;
    GraphObjectExtras& operator=(const GraphObjectExtras&) = delete;
    virtual ~GraphObjectExtras() = default;

    QxText name;
    bool named = false;
    std::int64_t userField = 0;
    QxObject* userObject = nullptr;
    std::int64_t internalField = 0;
    QxObject* internalObject = nullptr;
    QxChildGraphForestEdge* forestEdge = nullptr;

    /// Whether nothing is kept here any more.
    virtual bool isIdle() const {
        return !named && userField == 0 && userObject == nullptr && internalField == 0 &&
               internalObject == nullptr && forestEdge == nullptr;
    }
};

}  // namespace qx::internal
