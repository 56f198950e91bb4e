// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

#include "import/GraphDocument.h"

namespace qxdraw {

/// Stretches a part of a drawing, its shape unchanged, until but few of its nodes overlap: pushing
/// every node off the others one by one would tear a crowded drawing apart. Where a few nodes far
/// out would make the drawing too large for that, the nodes keep their order along both axes only,
/// and get even distances. All nodes of the part have centers and sizes.
void stretchUntilRoomy(GraphDocument& document, const std::vector<int>& part);

}  // namespace qxdraw
