// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/util/QxEventData.h"

#include <algorithm>

#include "qx/foundation/util/internal/Ref.h"

QxEventData::QxEventData() noexcept = default;

QxEventData::QxEventData(const QxEventData& source, QxDeepFlagEnum)
    : QxObject(source), m_type(source.m_type) {}

QxEventData& QxEventData::operator=(const QxEventData& source) {
    m_type = source.m_type;
    return *this;
}

QxEventData::~QxEventData() = default;

void QxEventData::copyObject(const QxObject* source) {
    QxEventData::copyAttributes(source);
}

void QxEventData::copyAttributes(const QxObject* source) {
    if (const auto* data = dynamic_cast<const QxEventData*>(source)) {
        m_type = data->m_type;
    }
}

int QxEventData::retainObjects() {
    if (m_retained) {
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
    auto retained = std::make_unique<qx::internal::Snapshot<QxObject>>();
    for (QxObject* object : objects) {
        retained->add(object);
    }
    m_retained = std::move(retained);
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
