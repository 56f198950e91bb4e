// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// The shape of a drawing node. A node that was never given one shows the default of its factory
// without holding it, so that plain nodes cost the database nothing.

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/drawing/internal/CloneLinks.h"
#include "qx/drawing/internal/ShapeResourceDBOf.h"
#include "qx/events/internal/FireDrawingChange.h"
#include "qx/foundation/graph/internal/EachObject.h"

using qx::internal::each;
using qx::internal::shapeResourceDBOf;

namespace {

bool isReading(const QxDNode& node) {
    const QxDGraphManager* manager = qx::internal::managerOf(node);
    return manager != nullptr && manager->isReading() != 0;
}

}  // namespace

QxShapeResource* QxDNode::pShapeResource() {
    if (m_shapeResource == nullptr) {
        if (QxShapeResourceDB* db = shapeResourceDBOf(*this)) {
            m_shapeResource = db->insert(db->pDefaultResource());
        }
    }
    return m_shapeResource;
}

const QxShape* QxDNode::pShape() const {
    const QxShapeResource* resource = m_shapeResource;
    if (resource == nullptr) {
        const QxShapeResourceDB* db = shapeResourceDBOf(*this);
        resource = db != nullptr ? db->pDefaultResource() : nullptr;
    }
    return resource != nullptr ? resource->pShape() : nullptr;
}

QxShapeResource* QxDNode::pChangeableShapeResource() {
    return m_shapeResource = QxShapeResourceDB::madePrivate(pShapeResource());
}

void QxDNode::updateShapeResource(QxShapeResource* resource) {
    if (resource != nullptr && resource->isRegistered() == 0) {
        m_shapeResource = QxShapeResourceDB::updated(resource);
    }
}

void QxDNode::discardShapeResource() {
    if (m_shapeResource != nullptr) {
        QxShapeResourceDB::dropped(m_shapeResource);
        m_shapeResource = nullptr;
        invalidateIncidentEdgeEndPoints();
    }
}

void QxDNode::shareShapeOf(QxDNode& source) {
    source.updateShapeResource(source.m_shapeResource);
    QxShapeResource* shared = source.pCollapsedShapeResource();
    if (shared == nullptr) {
        return;
    }
    QxShapeResourceDB* db = shapeResourceDBOf(*this);
    const bool canShare = db != nullptr && shared->isRegistered() != 0;
    QxShapeResource* resource = canShare ? db->insert(shared) : shared->cloneObject();
    discardShapeResource();
    m_shapeResource = resource;
    invalidateIncidentEdgeEndPoints();
}

bool QxDNode::showsShape(const QxShape* shape) const {
    return *pShape() == (shape != nullptr ? *shape : QxShape());
}

void QxDNode::giveShape(const QxShape* shape) {
    QxShapeResource* resource = pChangeableShapeResource();
    resource->shape(shape);
    updateShapeResource(resource);
    invalidateIncidentEdgeEndPoints();
}

const QxShape* QxDNode::pShape(const QxShape* shape, int quietly) {
    if (pShape() == nullptr || expanded() != 0 || showsShape(shape)) {
        return pShape();
    }
    const qx::internal::Ref alive(*this);
    if (quietly != 0) {
        giveShape(shape);
        return pShape();
    }
    qx::internal::Change::run(*this, [&] {
        giveShape(shape);
        actOnChangeShape(shape);
    });
    qx::internal::fireDrawingChange(*this, NodeShapeChanged, [&] {
        return new QxDrawingChangeEventData(this, pShape(), m_shapeResource);
    });
    return pShape();
}

const QxShape* QxDNode::pChangeShape(const QxShape* shape, int hooks) {
    if (pShape() == nullptr || showsShape(shape)) {
        return pShape();
    }
    if (hooks != 0) {
        actBeforeChangeShape(shape);
    }
    giveShape(shape);
    if (hooks != 0 && !isReading(*this)) {
        actAfterChangeShape();
    }
    return pShape();
}

void QxDNode::actBeforeChangeShape(const QxShape*) {}

void QxDNode::actAfterChangeShape() {
    discardAllCalculatedConnectors();
}

void QxDNode::unmarkIncidentEdges() {
    for (const QxEdgeDList* list : {pInEdgeList(), pOutEdgeList()}) {
        for (QxDEdge* edge : each<QxDEdge>(*list)) {
            edge->marked(0);
        }
    }
}
