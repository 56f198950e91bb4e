// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/util/QxEvent.h"

#include "qx/foundation/util/QxEventData.h"

namespace {

QxEventData* copyOf(const QxEventData* data, QxDeepFlagEnum deep) {
    if (data == nullptr) {
        return nullptr;
    }
    return deep == QxDeepCopy ? data->cloneObject() : data->cloneAttributes();
}

}  // namespace

QxEvent::QxEvent(std::int32_t type, QxEventData* data) : m_type(type), m_data(nullptr) {
    pData(data);
}

QxEvent::QxEvent(const QxEvent& source, QxDeepFlagEnum deep)
    : QxObject(source), m_type(source.m_type), m_data(copyOf(source.m_data, deep)) {}

QxEvent& QxEvent::operator=(const QxEvent& source) {
    copyFrom(&source, QxDeepCopy);
    return *this;
}

QxEvent::~QxEvent() {
    if (m_data != nullptr) {
        m_data->vRelease();
    }
}

void QxEvent::copyObject(const QxObject* source) {
    copyFrom(source, QxDeepCopy);
}

void QxEvent::copyAttributes(const QxObject* source) {
    copyFrom(source, QxAttributeCopy);
}

void QxEvent::copyFrom(const QxObject* source, QxDeepFlagEnum deep) {
    const auto* event = dynamic_cast<const QxEvent*>(source);
    if (event == nullptr || event == this) {
        return;
    }
    m_type = event->m_type;
    pData(copyOf(event->m_data, deep));
}

std::int32_t QxEvent::type(std::int32_t value) {
    m_type = value;
    if (m_data != nullptr) {
        m_data->type(value);
    }
    return m_type;
}

QxEventData* QxEvent::pData(QxEventData* data) {
    if (m_data != nullptr && m_data != data) {
        m_data->vRelease();
    }
    m_data = data;
    type(m_type);
    return m_data;
}

int QxEvent::isGroup() const {
    return m_data != nullptr ? m_data->isGroup() : 0;
}
