// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/graph/QxGraphChangeListener.h"

#include "qx/foundation/graph/QxGraphChangeEvent.h"
#include "qx/foundation/graph/QxGraphChangeEventData.h"
#include "qx/foundation/util/internal/EachEventData.h"

void QxGraphChangeListener::graphChanged(QxGraphChangeEvent* event) {
    qx::internal::eachEventData<QxGraphChangeEventData>(
        *event, [this](QxGraphChangeEventData* data) { graphChanged(data); });
}

void QxGraphChangeListener::graphChanged(QxGraphChangeEventData*) {}
