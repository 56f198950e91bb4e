// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/events/QxComplexityChangeEventTypeEnum.h"
#include "qx/foundation/util/QxEvent.h"

class QxComplexityChangeEventData;

/// Tells that a node or edge was expanded, collapsed, folded, hidden or brought back.
class QX_API QxComplexityChangeEvent : public QxEvent {
public:
    /// The category under which listeners register for complexity changes.
    static constexpr std::int32_t CategoryID = 3;

    /// Takes over the caller's reference to `data`.
    QxComplexityChangeEvent(QxComplexityChangeEventTypeEnum type,
                            QxComplexityChangeEventData* data);
    QxComplexityChangeEvent(const QxComplexityChangeEvent& source,
                            QxDeepFlagEnum deep = QxDeepCopy);
    QxComplexityChangeEvent& operator=(const QxComplexityChangeEvent& source) = default;

    QxComplexityChangeEvent* cloneObject() const {
        return static_cast<QxComplexityChangeEvent*>(vCloneObject());
    }
    QxComplexityChangeEvent* cloneAttributes() const {
        return static_cast<QxComplexityChangeEvent*>(vCloneAttributes());
    }

    std::int32_t eventCategoryID() const override;

protected:
    QxObject* vCloneObject() const override;
    QxObject* vCloneAttributes() const override;
};
