// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// The shape of a connector. One that was never given a shape shows an oval without holding it, so
// that plain connectors cost the database nothing, and asking changes nothing.

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/drawing/internal/ShapeResourceDBOf.h"
#include "qx/events/internal/FireDrawingChange.h"

using qx::internal::shapeResourceDBOf;

namespace {

const QxShape& firstShape() {
    static const QxShape oval(QxShapeTypeOval);
    return oval;
}

}  // namespace

QxShapeResource* QxConnector::pShapeResource() {
    if (m_shapeResource == nullptr) {
        if (QxShapeResourceDB* db = shapeResourceDBOf(*this)) {
            m_shapeResource = db->insert(new QxShapeResource(db, firstShape()));
        }
    }
    return m_shapeResource;
}

const QxShape* QxConnector::pShape() const {
    if (const QxShapeResource* resource = m_shapeResource) {
        return resource->pShape();
    }
    return pUnverifiedFactory() != nullptr ? &firstShape() : nullptr;
}

const QxShape* QxConnector::outlineWithinRect() const {
    const QxShape* shape = pShape();
    return shape != nullptr && shape->isRectangular() == 0 ? shape : nullptr;
}

QxShapeResource* QxConnector::pChangeableShapeResource() {
    return m_shapeResource = QxShapeResourceDB::madePrivate(pShapeResource());
}

void QxConnector::updateShapeResource(QxShapeResource* resource) {
    if (resource != nullptr && resource->isRegistered() == 0) {
        m_shapeResource = QxShapeResourceDB::updated(resource);
    }
}

void QxConnector::discardShapeResource() {
    if (m_shapeResource != nullptr) {
        QxShapeResourceDB::dropped(m_shapeResource);
        m_shapeResource = nullptr;
        invalidateIncidentEdgeEndPoints();
    }
}

void QxConnector::shareShapeOf(const QxConnector& source) {
    QxShapeResource* shared = source.m_shapeResource;
    discardShapeResource();
    if (shared == nullptr) {
        return;
    }
    QxShapeResourceDB* db = shapeResourceDBOf(*this);
    m_shapeResource =
        db != nullptr && shared->isRegistered() != 0 ? db->insert(shared) : shared->cloneObject();
    invalidateIncidentEdgeEndPoints();
}

const QxShape* QxConnector::pShape(const QxShape* shape) {
    const QxShape* const shown = pShape();
    if (shown == nullptr || *shown == (shape != nullptr ? *shape : QxShape())) {
        return shown;
    }
    const qx::internal::Ref alive(*this);
    actBeforeChangeShape(shape);
    qx::internal::Change::run(*this, [&] {
        QxShapeResource* resource = pChangeableShapeResource();
        resource->shape(shape);
        updateShapeResource(resource);
        invalidateIncidentEdgeEndPoints();
    });
    actAfterChangeShape();
    if (specified() != 0) {
        qx::internal::fireDrawingChange(*this, ConnectorShapeChanged, [&] {
            return new QxDrawingChangeEventData(this, pShape(), m_shapeResource);
        });
    }
    return pShape();
}

void QxConnector::actBeforeChangeShape(const QxShape*) {}

void QxConnector::actAfterChangeShape() {}
