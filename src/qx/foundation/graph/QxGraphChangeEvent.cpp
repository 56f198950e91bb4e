// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/graph/QxGraphChangeEvent.h"

#include "qx/foundation/graph/QxGraphChangeEventData.h"

QxGraphChangeEvent::QxGraphChangeEvent(QxGraphChangeEventTypeEnum type,
                                       QxGraphChangeEventData* data)
    : QxEvent(type, data) {}

QxGraphChangeEvent::QxGraphChangeEvent(const QxGraphChangeEvent& source, QxDeepFlagEnum deep)
    : QxEvent(source, deep) {}

std::int32_t QxGraphChangeEvent::eventCategoryID() const {
    return CategoryID;
}

QxObject* QxGraphChangeEvent::vCloneObject() const {
    return new QxGraphChangeEvent(*this, QxDeepCopy);
}

QxObject* QxGraphChangeEvent::vCloneAttributes() const {
    return new QxGraphChangeEvent(*this, QxAttributeCopy);
}
