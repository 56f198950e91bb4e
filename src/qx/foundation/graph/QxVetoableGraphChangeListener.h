// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/util/QxVetoableChangeListener.h"

class QxGraphChangeEventData;

/// Is asked about each change of the graph before the plain listeners hear of it.
class QX_API QxVetoableGraphChangeListener : public QxVetoableChangeListener {
public:
    /// Nonzero: the plain listeners are not told. The change has been made and stands.
    virtual int vetoGraphChange(QxGraphChangeEventData* data) = 0;
};
