// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/util/QxVetoableChangeListener.h"

class QxDrawingChangeEventData;

/// Is asked about each change of the drawing before the plain listeners hear of it.
class QX_API QxVetoableDrawingChangeListener : public QxVetoableChangeListener {
public:
    /// Nonzero: the plain listeners are not told. The change has been made and stands.
    virtual int vetoDrawingChange(QxDrawingChangeEventData* data) = 0;
};
