// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxLabel.h"
#include "qx/drawing/bounds/internal/Coverage.h"
#include "qx/events/internal/FireDrawingChange.h"

template <class Act>
void QxLabel::changeGeometry(QxDrawingChangeEventTypeEnum type, const Act& act) {
    const bool isHeard = qx::internal::drawingChangeManager(*this, type) != nullptr;
    const QxRect before = isHeard ? boundsToTell() : QxRect();
    act();
    qx::internal::Coverage::changed(*this);
    if (isHeard) {
        qx::internal::fireDrawingChange(*this, type, [&] {
            const QxRect after = boundsToTell();
            return new QxDrawingChangeEventData(this, &before, &after);
        });
    }
}
