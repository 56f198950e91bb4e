// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/util/QxSingleEventData.h"

QxSingleEventData::QxSingleEventData(const QxSingleEventData& source, QxDeepFlagEnum deep)
    : QxEventData(source, deep), m_source(source.m_source) {}

void QxSingleEventData::copyObject(const QxObject* source) {
    QxSingleEventData::copyAttributes(source);
}

void QxSingleEventData::copyAttributes(const QxObject* source) {
    if (const auto* data = dynamic_cast<const QxSingleEventData*>(source)) {
        *this = *data;
    }
}

QxObject* QxSingleEventData::pSource() const {
    return m_source;
}

void QxSingleEventData::appendNamedObjects(std::vector<QxObject*>& objects) const {
    objects.push_back(m_source);
}

QxObject* QxSingleEventData::vCloneObject() const {
    return new QxSingleEventData(*this, QxDeepCopy);
}

QxObject* QxSingleEventData::vCloneAttributes() const {
    return new QxSingleEventData(*this, QxAttributeCopy);
}
