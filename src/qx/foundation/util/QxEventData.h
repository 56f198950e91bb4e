// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "qx/foundation/util/QxObject.h"

namespace qx::internal {
template <class T>
class Snapshot;
}

/// What an event tells about a change. The data live as long as the event that owns them;
/// a listener that needs them longer clones them.
class QX_API QxEventData : public QxObject {
public:
    QxEventData() noexcept;
    QxEventData(const QxEventData& source, QxDeepFlagEnum deep = QxDeepCopy);
    QxEventData& operator=(const QxEventData& source);
    ~QxEventData() override;

    void copyObject(const QxObject* source) override;
    void copyAttributes(const QxObject* source) override;

    QxEventData* cloneObject() const { return static_cast<QxEventData*>(vCloneObject()); }
    QxEventData* cloneAttributes() const { return static_cast<QxEventData*>(vCloneAttributes()); }

    /// The type of the event that owns the data; 0 before an event took them.
    std::int32_t type() const noexcept { return m_type; }
    std::int32_t type(std::int32_t value) noexcept { return m_type = value; }

    /// Holds a reference on every object the data name until the data are destroyed, so that none
    /// of them can vanish before everybody has heard of the change. Returns 0 and holds nothing
    /// when one of them is already being destroyed. Copies of the data hold nothing.
    int retainObjects();

    /// The object the event is about; null for a group.
    virtual QxObject* pSource() const;
    /// The object that the source has just left, so that it no longer reports to it: those who
    /// listen there hear the event as well. Null when the source did not leave anything.
    virtual QxObject* pFormerParentEventSource() const;
    /// 1 when this is a QxGroupEventData.
    virtual int isGroup() const;

protected:
    /// Appends the objects that the data name without owning them; nulls may be among them.
    virtual void appendNamedObjects(std::vector<QxObject*>& objects) const;

private:
    std::int32_t m_type = 0;
    std::unique_ptr<const qx::internal::Snapshot<QxObject>> m_retained;
};
