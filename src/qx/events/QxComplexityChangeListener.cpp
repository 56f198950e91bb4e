// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/events/QxComplexityChangeListener.h"

#include "qx/events/QxComplexityChangeEvent.h"
#include "qx/events/QxComplexityChangeEventData.h"
#include "qx/foundation/util/internal/EachEventData.h"

void QxComplexityChangeListener::complexityChanged(QxComplexityChangeEvent* event) {
    qx::internal::eachEventData<QxComplexityChangeEventData>(
        *event, [this](QxComplexityChangeEventData* data) { complexityChanged(data); });
}

void QxComplexityChangeListener::complexityChanged(QxComplexityChangeEventData*) {}
