// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/geometry/QxShapeResource.h"

#include "qx/foundation/geometry/QxShapeResourceDB.h"

QxShapeResource::QxShapeResource(QxShapeResourceDB* db) noexcept : QxResource(db) {}

QxShapeResource::QxShapeResource(QxShapeResourceDB* db, const QxShape& shape)
    : QxResource(db), m_shape(shape) {}

int QxShapeResource::shape(const QxShape* shape) {
    if (isRegistered()) {
        return 0;
    }
    m_shape = shape != nullptr ? *shape : QxShape();
    return 1;
}

QxShapeResourceDB* QxShapeResource::pShapeResourceDB() const noexcept {
    return static_cast<QxShapeResourceDB*>(pResourceDB());
}

int QxShapeResource::equals(const QxObject* other) const {
    const auto* resource = dynamic_cast<const QxShapeResource*>(other);
    return resource != nullptr && resource->m_shape == m_shape ? 1 : 0;
}

void QxShapeResource::copyObject(const QxObject* source) {
    const auto* resource = dynamic_cast<const QxShapeResource*>(source);
    if (resource != nullptr && resource != this) {
        shape(&resource->m_shape);
    }
}

void QxShapeResource::debugOutput(int depth) const {
    QxObject::debugOutput(depth);
    m_shape.debugOutput(depth + 1);
}
