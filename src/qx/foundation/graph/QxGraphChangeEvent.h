// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/graph/QxGraphChangeEventTypeEnum.h"
#include "qx/foundation/util/QxEvent.h"

class QxGraphChangeEventData;

/// Tells that graphs, nodes or edges came, went or changed their relations.
class QX_API QxGraphChangeEvent : public QxEvent {
public:
    /// The category under which listeners register for changes of the graph.
    static constexpr std::int32_t CategoryID = 1;

    /// Takes over the caller's reference to `data`.
    QxGraphChangeEvent(QxGraphChangeEventTypeEnum type, QxGraphChangeEventData* data);
    QxGraphChangeEvent(const QxGraphChangeEvent& source, QxDeepFlagEnum deep = QxDeepCopy);
    QxGraphChangeEvent& operator=(const QxGraphChangeEvent& source) = default;

    QxGraphChangeEvent* cloneObject() const {
        return static_cast<QxGraphChangeEvent*>(vCloneObject());
    }
    QxGraphChangeEvent* cloneAttributes() const {
        return static_cast<QxGraphChangeEvent*>(vCloneAttributes());
    }

    std::int32_t eventCategoryID() const override;

protected:
    QxObject* vCloneObject() const override;
    QxObject* vCloneAttributes() const override;
};
