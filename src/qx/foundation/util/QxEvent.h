// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

#include "qx/foundation/util/QxObject.h"

class QxEventData;

/// Something that happened to an object: a type (one bit, so that listeners can ask for several
/// with a mask) and the data that belong to it. Each class of events has a category; listeners
/// register per category. Event classes can be cloned: groups of events are told by a clone.
class QX_API QxEvent : public QxObject {
public:
    /// Takes over the caller's reference to `data` (null is allowed) and notes `type` in it.
    QxEvent(std::int32_t type, QxEventData* data);
    /// The copy has its own copy of the data.
    QxEvent(const QxEvent& source, QxDeepFlagEnum deep = QxDeepCopy);
    QxEvent& operator=(const QxEvent& source);
    ~QxEvent() override;

    void copyObject(const QxObject* source) override;
    void copyAttributes(const QxObject* source) override;

    QxEvent* cloneObject() const { return static_cast<QxEvent*>(vCloneObject()); }
    QxEvent* cloneAttributes() const { return static_cast<QxEvent*>(vCloneAttributes()); }

    std::int32_t type() const noexcept { return m_type; }
    /// Changes the type, that of the data as well; returns it.
    std::int32_t type(std::int32_t value);
    /// The data, owned by the event.
    QxEventData* pData() const noexcept { return m_data; }
    /// Replaces the data, taking over the caller's reference; returns them.
    QxEventData* pData(QxEventData* data);
    /// 1 when the data are a QxGroupEventData: several events told at once.
    int isGroup() const;

    /// The category under which listeners register for events of this class.
    virtual std::int32_t eventCategoryID() const = 0;

private:
    void copyFrom(const QxObject* source, QxDeepFlagEnum deep);

    std::int32_t m_type;
    QxEventData* m_data;
};
