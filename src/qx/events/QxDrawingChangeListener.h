// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/util/QxEventListener.h"

class QxDrawingChangeEvent;
class QxDrawingChangeEventData;

/// Hears what has changed in the drawing. Applications override the second form.
class QX_API QxDrawingChangeListener : public QxEventListener {
public:
    /// Called with each event, which is not null and may be a group: calls the second form for
    /// the data, or for all data of the group in their order.
    virtual void drawingChanged(QxDrawingChangeEvent* event);
    /// Called for each change; does nothing.
    virtual void drawingChanged(QxDrawingChangeEventData* data);
};
