// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/events/QxComplexityChangeEvent.h"

#include "qx/events/QxComplexityChangeEventData.h"

QxComplexityChangeEvent::QxComplexityChangeEvent(QxComplexityChangeEventTypeEnum type,
                                                 QxComplexityChangeEventData* data)
    : QxEvent(type, data) {}

QxComplexityChangeEvent::QxComplexityChangeEvent(const QxComplexityChangeEvent& source,
                                                 QxDeepFlagEnum deep)
    : QxEvent(source, deep) {}

std::int32_t QxComplexityChangeEvent::eventCategoryID() const {
    return CategoryID;
}

QxObject* QxComplexityChangeEvent::vCloneObject() const {
    return new QxComplexityChangeEvent(*this, QxDeepCopy);
}

QxObject* QxComplexityChangeEvent::vCloneAttributes() const {
    return new QxComplexityChangeEvent(*this, QxAttributeCopy);
}
