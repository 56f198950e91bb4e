// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/events/QxDrawingChangeListener.h"

#include "qx/events/QxDrawingChangeEvent.h"
#include "qx/events/QxDrawingChangeEventData.h"
#include "qx/foundation/util/internal/EachEventData.h"

void QxDrawingChangeListener::drawingChanged(QxDrawingChangeEvent* event) {
    qx::internal::eachEventData<QxDrawingChangeEventData>(
        *event, [this](QxDrawingChangeEventData* data) { drawingChanged(data); });
}

void QxDrawingChangeListener::drawingChanged(QxDrawingChangeEventData*) {}
