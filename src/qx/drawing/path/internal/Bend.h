// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxPNode.h"

namespace qx::internal {

/// Whether a node on the path of an edge is a bend, no end node; false for null.
inline bool isBend(const QxNode* node) {
    return node != nullptr && (node->flagWord() & qx::flags::PathObject) != 0;
}

}  // namespace qx::internal
