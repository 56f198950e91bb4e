// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/nesting/QxExpandedNodeExtension.h"

#include <utility>

#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxFactory.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/drawing/internal/ShapeResourceDBOf.h"

QxExpandedNodeExtension* QxFactory::vNewExpandedNodeExtension(QxDNode* node,
                                                              QxDGraphManager* manager) {
    return new QxExpandedNodeExtension(node, manager);
}

QxExpandedNodeExtension::QxExpandedNodeExtension(QxDNode* node, QxDGraphManager* manager)
    : m_node(node), m_manager(manager) {
    if (node != nullptr) {
        m_preExpandSize = node->iSize();
        m_preExpandOriginalSize = node->originalSize();
        initShapeResource();
    }
}

QxExpandedNodeExtension::QxExpandedNodeExtension(const QxExpandedNodeExtension& source,
                                                 QxDeepFlagEnum)
    : m_node(nullptr), m_manager(source.m_manager) {
    copyCommon(source);
}

QxExpandedNodeExtension& QxExpandedNodeExtension::operator=(const QxExpandedNodeExtension& source) {
    copyObject(&source);
    return *this;
}

QxExpandedNodeExtension::~QxExpandedNodeExtension() {
    releaseShapeResource();
}

QxObject* QxExpandedNodeExtension::vCloneObject() const {
    return new QxExpandedNodeExtension(*this, QxDeepCopy);
}

QxObject* QxExpandedNodeExtension::vCloneAttributes() const {
    return new QxExpandedNodeExtension(*this, QxAttributeCopy);
}

void QxExpandedNodeExtension::copyObject(const QxObject* source) {
    if (source != nullptr && source != this) {
        copyCommon(static_cast<const QxExpandedNodeExtension&>(*source));
    }
}

void QxExpandedNodeExtension::copyAttributes(const QxObject* source) {
    copyObject(source);
}

void QxExpandedNodeExtension::copyCommon(const QxExpandedNodeExtension& source) {
    m_preExpandForceClipping = source.m_preExpandForceClipping;
    m_aspectRatio = source.m_aspectRatio;
    m_preExpandSize = source.m_preExpandSize;
    m_preExpandOriginalSize = source.m_preExpandOriginalSize;
    if (m_node != nullptr) {
        pPreExpandShape(source.pPreExpandShape());
    } else if (source.m_shapeResource != nullptr) {
        releaseShapeResource();
        m_shapeResource = source.m_shapeResource->cloneObject();
    }
}

QxDGraphManager* QxExpandedNodeExtension::pOwnerGraphManager() const {
    return m_manager;
}

const QxSize* QxExpandedNodeExtension::pPreExpandSize(const QxSize* size) {
    if (size != nullptr) {
        m_preExpandSize = *size;
    }
    return size;
}

const QxSize* QxExpandedNodeExtension::pPreExpandOriginalSize(const QxSize* size) {
    if (size != nullptr) {
        m_preExpandOriginalSize = *size;
    }
    return &m_preExpandOriginalSize;
}

const QxShape* QxExpandedNodeExtension::pPreExpandShape() const {
    return m_shapeResource != nullptr ? m_shapeResource->pShape() : nullptr;
}

const QxShape* QxExpandedNodeExtension::pPreExpandShape(const QxShape* shape) {
    initShapeResource();
    const QxShape wanted = shape != nullptr ? *shape : QxShape();
    if (m_shapeResource != nullptr && !(*m_shapeResource->pShape() == wanted)) {
        m_shapeResource = QxShapeResourceDB::madePrivate(m_shapeResource);
        m_shapeResource->shape(&wanted);
        m_shapeResource = QxShapeResourceDB::updated(m_shapeResource);
    }
    return shape;
}

void QxExpandedNodeExtension::initShapeResource() {
    if (m_shapeResource != nullptr || m_node == nullptr ||
        m_node->pQueryShapeResource() == nullptr) {
        return;
    }
    if (QxShapeResourceDB* db = qx::internal::shapeResourceDBOf(*m_node)) {
        m_shapeResource = db->insert(db->pDefaultResource());
    }
}

void QxExpandedNodeExtension::releaseShapeResource() {
    if (m_shapeResource != nullptr) {
        QxShapeResourceDB::dropped(std::exchange(m_shapeResource, nullptr));
    }
}

void QxExpandedNodeExtension::exchangeContents(int adjustConnectors, int shapeFirst) {
    if (m_node == nullptr) {
        return;
    }
    const auto exchange = [&] {
        const int forced = m_node->forceClipping();
        m_node->forceClipping(preExpandForceClipping());
        preExpandForceClipping(forced);
        if (shapeFirst == 0) {
            exchangeSizes(adjustConnectors);
        }
        exchangeShapes(adjustConnectors);
        if (shapeFirst != 0) {
            exchangeSizes(adjustConnectors);
        }
    };
    if (m_node->pClonedNode() != nullptr) {
        exchange();  // the bounds of a graph that is being duplicated are computed at its end
    } else {
        qx::internal::Change::ofGeometry(*m_node, exchange);
    }
}

void QxExpandedNodeExtension::exchangeSizes(int adjustConnectors) {
    const QxSize size = std::exchange(m_preExpandSize, m_node->iSize());
    const QxSize originalSize = std::exchange(m_preExpandOriginalSize, m_node->originalSize());
    if (adjustConnectors != 0) {
        m_node->ntResizeAdjustConnectors(size);
    } else {
        m_node->ntResize(size);
    }
    m_node->originalSize(originalSize);
}

void QxExpandedNodeExtension::exchangeShapes(int adjustConnectors) {
    initShapeResource();
    if (m_shapeResource == nullptr) {
        return;  // a node that was never given a shape shows the default one anyway
    }
    const QxShape shape = *m_shapeResource->pShape();
    pPreExpandShape(m_node->pShape());
    m_node->pChangeShape(&shape, adjustConnectors);
}
