// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxDGraphManager.h"

namespace qx::internal {

/// Lets the source of a copy remember it while its manager stores clones; the copy, which may have
/// taken over the link of its source, remembers none. `link` sets the link of an object.
template <class T, class Link>
void linkClone(const T& source, T& copy, const QxDGraphManager* manager, const Link& link) {
    if (manager != nullptr && manager->storeClones() != 0) {
        link(const_cast<T&>(source), &copy);
    }
    link(copy, static_cast<T*>(nullptr));
}

/// The manager of the graph that a node or edge lies in; null when there is none.
template <class Member>
const QxDGraphManager* managerOf(const Member& member) {
    const QxDGraph* graph = member.pOwnerGraph();
    return graph != nullptr ? graph->pOwnerGraphManager() : nullptr;
}

}  // namespace qx::internal
