// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/geometry/QxResourceDB.h"
#include "qx/foundation/geometry/QxShapeResource.h"

/// The shapes in use by what one factory made. Its default resource is the rectangle. See
/// QxResourceDB for who owns what.
class QX_API QxShapeResourceDB : public QxResourceDB {
public:
    QxShapeResourceDB() { registerDefault(new QxShapeResource(this)); }

    /// The resource for objects that have none; owned by the database. Insert it to hold it.
    QxShapeResource* pDefaultResource() const noexcept {
        return static_cast<QxShapeResource*>(pDefault());
    }

    QxShapeResource* insert(QxShapeResource* resource) {
        return static_cast<QxShapeResource*>(QxResourceDB::insert(resource));
    }
    QxShapeResource* remove(QxShapeResource* resource) {
        return static_cast<QxShapeResource*>(QxResourceDB::remove(resource));
    }
    static QxShapeResource* madePrivate(QxShapeResource* resource) {
        return static_cast<QxShapeResource*>(QxResourceDB::madePrivate(resource));
    }
    static QxShapeResource* updated(QxShapeResource* resource) {
        return static_cast<QxShapeResource*>(QxResourceDB::updated(resource));
    }
};
