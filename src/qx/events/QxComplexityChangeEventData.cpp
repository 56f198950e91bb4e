// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/events/QxComplexityChangeEventData.h"

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDNode.h"
#include "qx/events/internal/ObjectOfKind.h"

using qx::internal::objectOfKind;

QxComplexityChangeEventData::QxComplexityChangeEventData(QxGraphObject* source)
    : QxSingleEventData(source) {}

QxComplexityChangeEventData::QxComplexityChangeEventData(const QxComplexityChangeEventData& source,
                                                         QxDeepFlagEnum deep)
    : QxSingleEventData(source, deep) {}

QxDNode* QxComplexityChangeEventData::pSourceNode() const {
    return objectOfKind<QxDNode>(static_cast<QxGraphObject*>(pSource()), &QxGraphObject::isNode);
}

QxDEdge* QxComplexityChangeEventData::pSourceEdge() const {
    return objectOfKind<QxDEdge>(static_cast<QxGraphObject*>(pSource()), &QxGraphObject::isEdge);
}

void QxComplexityChangeEventData::copyObject(const QxObject* source) {
    copyAttributes(source);
}

void QxComplexityChangeEventData::copyAttributes(const QxObject* source) {
    // The source of other data need not be a graph object.
    if (dynamic_cast<const QxComplexityChangeEventData*>(source) != nullptr) {
        QxSingleEventData::copyAttributes(source);
    }
}

QxObject* QxComplexityChangeEventData::vCloneObject() const {
    return new QxComplexityChangeEventData(*this, QxDeepCopy);
}

QxObject* QxComplexityChangeEventData::vCloneAttributes() const {
    return new QxComplexityChangeEventData(*this, QxAttributeCopy);
}
