// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/util/QxDList.h"
#include "qx/foundation/util/QxEventData.h"

/// The data of a group: several events of one category, collected while a batch was open and told
/// to a listener at once. The type is the union of the types of its members.
class QX_API QxGroupEventData : public QxEventData {
public:
    QxGroupEventData() = default;
    /// A deep copy has copies of the members, an attribute copy has none.
    QxGroupEventData(const QxGroupEventData& source, QxDeepFlagEnum deep = QxDeepCopy);
    QxGroupEventData& operator=(const QxGroupEventData& source);
    ~QxGroupEventData() override;

    void copyObject(const QxObject* source) override;
    void copyAttributes(const QxObject* source) override;

    QxGroupEventData* cloneObject() const { return static_cast<QxGroupEventData*>(vCloneObject()); }
    QxGroupEventData* cloneAttributes() const {
        return static_cast<QxGroupEventData*>(vCloneAttributes());
    }

    int isGroup() const override;

    /// The QxEventData of the single events, in the order in which they were fired.
    const QxDList* pDataList() const noexcept { return &m_dataList; }
    /// Appends data (null is ignored), on which the group takes a reference of its own.
    void appendData(QxEventData* data);

protected:
    QxObject* vCloneObject() const override;
    QxObject* vCloneAttributes() const override;

private:
    void appendCopies(const QxDList& list);

    QxDList m_dataList;
};
