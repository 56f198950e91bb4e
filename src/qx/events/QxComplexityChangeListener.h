// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/util/QxEventListener.h"

class QxComplexityChangeEvent;
class QxComplexityChangeEventData;

/// Hears what was expanded, collapsed, folded, hidden or brought back. Applications override the
/// second form.
class QX_API QxComplexityChangeListener : public QxEventListener {
public:
    /// Called with each event, which is not null and may be a group: calls the second form for
    /// the data, or for all data of the group in their order.
    virtual void complexityChanged(QxComplexityChangeEvent* event);
    /// Called for each change; does nothing.
    virtual void complexityChanged(QxComplexityChangeEventData* data);
};
