// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/graph/QxGraph.h"

namespace qx::internal {

/// The owner of a bend, segment, connector or label that belongs to nothing yet, where `owner` was
/// named for it: its factory, which lives longer than any object that it makes, or null.
inline QxOwnedObject* ownerWhileFree(QxOwnedObject* owner) {
    while (owner != nullptr && (owner->flagWord() & qx::flags::IsFactory) == 0) {
        owner = owner->pOwner();
    }
    return owner;
}

}  // namespace qx::internal
