// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

#include "qx/spatial/internal/IndexedObject.h"

namespace qx::internal {

/// An object that a question has found.
struct FoundObject {
    QxGraphObject* object;
    IndexKind kind;
};

/// Puts the objects, all of one graph, in the order in which the graph lists them: nodes and edges
/// by their lists, parts of a path along it.
void putInDrawingOrder(std::vector<FoundObject>& found);

}  // namespace qx::internal
