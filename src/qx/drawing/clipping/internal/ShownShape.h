// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxDNode.h"
#include "qx/foundation/geometry/QxShape.h"
#include "qx/foundation/geometry/QxShapeResource.h"

namespace qx::internal {

/// The shape in which edges end at the node; one that was given none shows a rectangle.
inline const QxShape& shownShape(const QxDNode& node) {
    static const QxShape rectangle;
    const QxShapeResource* resource = node.pQueryShapeResource();
    const QxShape* shape = resource != nullptr ? resource->pShape() : nullptr;
    return shape != nullptr ? *shape : rectangle;
}

}  // namespace qx::internal
