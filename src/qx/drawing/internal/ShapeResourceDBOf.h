// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxFactory.h"
#include "qx/foundation/geometry/QxShapeResourceDB.h"
#include "qx/foundation/graph/QxGraphObject.h"

namespace qx::internal {

/// The shapes in use by what the object's factory made; null for an object without a factory.
inline QxShapeResourceDB* shapeResourceDBOf(const QxGraphObject& object) {
    auto* factory = static_cast<QxFactory*>(object.pUnverifiedFactory());
    return factory != nullptr ? factory->pShapeResourceDB() : nullptr;
}

}  // namespace qx::internal
