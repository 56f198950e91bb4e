// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/util/QxGroupEventData.h"

#include "qx/foundation/util/QxDListIter.h"
#include "qx/foundation/util/internal/Ref.h"

QxGroupEventData::QxGroupEventData(const QxGroupEventData& source, QxDeepFlagEnum deep)
    : QxEventData(source, deep) {
    if (deep == QxDeepCopy) {
        appendCopies(source.m_dataList);
    }
}

QxGroupEventData& QxGroupEventData::operator=(const QxGroupEventData& source) {
    copyObject(&source);
    return *this;
}

QxGroupEventData::~QxGroupEventData() {
    m_dataList.deleteAllCellsAndObjects();
}

void QxGroupEventData::copyObject(const QxObject* source) {
    const auto* group = dynamic_cast<const QxGroupEventData*>(source);
    if (group == nullptr || group == this) {
        return;
    }
    copyAttributes(source);
    m_dataList.deleteAllCellsAndObjects();
    appendCopies(group->m_dataList);
}

void QxGroupEventData::copyAttributes(const QxObject* source) {
    QxEventData::copyAttributes(source);
}

int QxGroupEventData::isGroup() const {
    return 1;
}

void QxGroupEventData::appendData(QxEventData* data) {
    if (data != nullptr) {
        m_dataList.appendObject(qx::internal::Ref(data).handOver());
    }
}

void QxGroupEventData::appendCopies(const QxDList& list) {
    for (QxDListIter iter(&list); iter; ++iter) {
        if (QxObject* copy = iter.pObject()->cloneObject()) {
            m_dataList.appendObject(copy);
        }
    }
}

QxObject* QxGroupEventData::vCloneObject() const {
    return new QxGroupEventData(*this, QxDeepCopy);
}

QxObject* QxGroupEventData::vCloneAttributes() const {
    return new QxGroupEventData(*this, QxAttributeCopy);
}
