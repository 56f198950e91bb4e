// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/geometry/QxResource.h"
#include "qx/foundation/geometry/QxShape.h"

class QxShapeResourceDB;

/// A shape that nodes and connectors share.
class QX_API QxShapeResource : public QxResource {
public:
    /// A private resource with a rectangle.
    explicit QxShapeResource(QxShapeResourceDB* db) noexcept;
    QxShapeResource(QxShapeResourceDB* db, const QxShape& shape);
    QxShapeResource(const QxShapeResource& source, QxDeepFlagEnum) : QxShapeResource(source) {}
    QxShapeResource(const QxShapeResource&) = default;
    QxShapeResource& operator=(const QxShapeResource&) = default;

    /// The shape, owned by the resource; to be changed only while the resource is private.
    QxShape* pShape() noexcept { return &m_shape; }
    const QxShape* pShape() const noexcept { return &m_shape; }
    /// Takes over a copy of the shape, or the rectangle for null; refused (returns 0) while the
    /// resource is registered.
    int shape(const QxShape* shape);

    /// Null when the resource has no database.
    QxShapeResourceDB* pShapeResourceDB() const noexcept;

    int equals(const QxObject* other) const override;
    std::size_t hashCode() const override { return m_shape.valueHash(); }
    /// Take over the shape of another shape resource unless this one is registered.
    void copyObject(const QxObject* source) override;
    void copyAttributes(const QxObject* source) override { copyObject(source); }
    /// A private copy for the same database; the caller owns it.
    QxShapeResource* cloneObject() const { return static_cast<QxShapeResource*>(vCloneObject()); }
    QxShapeResource* cloneAttributes() const { return cloneObject(); }
    void debugOutput(int depth) const override;

protected:
    QxObject* vCloneObject() const override { return new QxShapeResource(*this); }
    QxObject* vCloneAttributes() const override { return new QxShapeResource(*this); }

private:
    QxShape m_shape;
};
