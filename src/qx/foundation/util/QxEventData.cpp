// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/util/QxEventData.h"

#include <algorithm>

QxEventData::QxEventData(const QxEventData& source, QxDeepFlagEnum)
    : QxObject(source), m_type(source.m_type) {}

QxEventData& QxEventData::operator=(const QxEventData& source) {
    m_type = source.m_type;
    return *this;
}

QxEventData::~QxEventData() {
    for (QxObject* object : m_retained) {
        object->vRelease();
    }
}

void QxEventData::copyObject(const QxObject* source) {
    QxEventData::copyAttributes(source);
}

void QxEventData::copyAttributes(const QxObject* source) {
    if (const auto* data = dynamic_cast<const QxEventData*>(source)) {
        m_type = data->m_type;
    }
}

int QxEventData::retainObjects() {
    if (!m_retained.empty()) {
        return 1;
    }
    std::vector<QxObject*> objects;
    appendNamedObjects(objects);
    std::erase(objects, nullptr);
    // An object that is being destroyed has no references left; a new one would revive it.
    const auto isDying = [](const QxObject* object) { return object->referenceCount() == 0; };
    if (std::any_of(objects.begin(), objects.end(), isDying)) {
        return 0;
    }
    for (QxObject* object : objects) {
        object->vAddRef();
    }
    m_retained = std::move(objects);
    return 1;
}

QxObject* QxEventData::pSource() const {
    return nullptr;
}

QxObject* QxEventData::pFormerParentEventSource() const {
    return nullptr;
}

int QxEventData::isGroup() const {
    return 0;
}

void QxEventData::appendNamedObjects(std::vector<QxObject*>&) const {}
