// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/events/QxDrawingChangeEvent.h"

#include "qx/events/QxDrawingChangeEventData.h"

QxDrawingChangeEvent::QxDrawingChangeEvent(QxDrawingChangeEventTypeEnum type,
                                           QxDrawingChangeEventData* data)
    : QxEvent(type, data) {}

QxDrawingChangeEvent::QxDrawingChangeEvent(const QxDrawingChangeEvent& source, QxDeepFlagEnum deep)
    : QxEvent(source, deep) {}

std::int32_t QxDrawingChangeEvent::eventCategoryID() const {
    return CategoryID;
}

QxObject* QxDrawingChangeEvent::vCloneObject() const {
    return new QxDrawingChangeEvent(*this, QxDeepCopy);
}

QxObject* QxDrawingChangeEvent::vCloneAttributes() const {
    return new QxDrawingChangeEvent(*this, QxAttributeCopy);
}
