// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "import/GraphDocument.h"
#include "model/Drawing.h"
#include "picture/Scene.h"

namespace qxdraw {

/// What is to be painted of a drawing: nodes, the visible parts of edges, names that fit. The
/// page is the graph's bounds with margins, and room for labels that reach beyond. `document` is
/// what the drawing was made of; it tells arrows and groups.
Scene buildScene(const Drawing& drawing, const GraphDocument& document);

/// Adds what lies behind the painted edges: their bends, and the parts of their paths that are
/// not painted, from the centers of the nodes on.
void addPaths(Scene& scene, const Drawing& drawing);

}  // namespace qxdraw
