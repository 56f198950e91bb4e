// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/util/QxEventListener.h"

class QxGraphChangeEvent;
class QxGraphChangeEventData;

/// Hears how graphs, nodes and edges come, go and change their relations. Applications override the
/// second form.
class QX_API QxGraphChangeListener : public QxEventListener {
public:
    /// Called with each event, which is not null and may be a group: calls the second form for
    /// the data, or for all data of the group in their order.
    virtual void graphChanged(QxGraphChangeEvent* event);
    /// Called for each change; does nothing.
    virtual void graphChanged(QxGraphChangeEventData* data);
};
