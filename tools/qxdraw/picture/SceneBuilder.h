// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "import/GraphDocument.h"
#include "model/Drawing.h"
#include "picture/Scene.h"

namespace qxdraw {

/// What is to be painted of a drawing: nodes, the visible parts of edges, ports, labels where the
/// model has them. The page is the graph's bounds with margins. `document` is what the drawing was
/// made of; it tells arrows, groups and fields.
Scene buildScene(const Drawing& drawing, const GraphDocument& document);

/// Adds what lies behind the painted edges: their bends, and the parts of their paths that are
/// not painted, from the centers of the nodes on.
void addPaths(Scene& scene, const Drawing& drawing);

}  // namespace qxdraw
