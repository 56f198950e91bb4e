// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/events/QxDrawingChangeEventTypeEnum.h"
#include "qx/foundation/util/QxEvent.h"

class QxDrawingChangeEventData;

/// Tells that the geometry or the parts of an object of the drawing have changed.
class QX_API QxDrawingChangeEvent : public QxEvent {
public:
    /// The category under which listeners register for drawing changes.
    static constexpr std::int32_t CategoryID = 2;

    /// Takes over the caller's reference to `data`.
    QxDrawingChangeEvent(QxDrawingChangeEventTypeEnum type, QxDrawingChangeEventData* data);
    QxDrawingChangeEvent(const QxDrawingChangeEvent& source, QxDeepFlagEnum deep = QxDeepCopy);
    QxDrawingChangeEvent& operator=(const QxDrawingChangeEvent& source) = default;

    QxDrawingChangeEvent* cloneObject() const {
        return static_cast<QxDrawingChangeEvent*>(vCloneObject());
    }
    QxDrawingChangeEvent* cloneAttributes() const {
        return static_cast<QxDrawingChangeEvent*>(vCloneAttributes());
    }

    std::int32_t eventCategoryID() const override;

protected:
    QxObject* vCloneObject() const override;
    QxObject* vCloneAttributes() const override;
};
