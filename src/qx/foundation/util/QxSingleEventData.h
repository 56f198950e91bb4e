// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/util/QxEventData.h"

/// The data of one event about one object, the source, which is not owned.
class QX_API QxSingleEventData : public QxEventData {
public:
    explicit QxSingleEventData(QxObject* source) noexcept : m_source(source) {}
    QxSingleEventData(const QxSingleEventData& source, QxDeepFlagEnum deep = QxDeepCopy);
    QxSingleEventData& operator=(const QxSingleEventData& source) = default;

    void copyObject(const QxObject* source) override;
    void copyAttributes(const QxObject* source) override;

    QxSingleEventData* cloneObject() const {
        return static_cast<QxSingleEventData*>(vCloneObject());
    }
    QxSingleEventData* cloneAttributes() const {
        return static_cast<QxSingleEventData*>(vCloneAttributes());
    }

    QxObject* pSource() const override;

protected:
    void appendNamedObjects(std::vector<QxObject*>& objects) const override;
    QxObject* vCloneObject() const override;
    QxObject* vCloneAttributes() const override;

private:
    QxObject* m_source;
};
