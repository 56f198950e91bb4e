// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/events/QxComplexityChangeEventData.h"

#include "qx/foundation/graph/QxGraphObject.h"

QxComplexityChangeEventData::QxComplexityChangeEventData(QxGraphObject* source)
    : QxSingleEventData(source) {}

QxComplexityChangeEventData::QxComplexityChangeEventData(const QxComplexityChangeEventData& source,
                                                         QxDeepFlagEnum deep)
    : QxSingleEventData(source, deep) {}

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
