// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/util/QxVetoableChangeListener.h"

class QxComplexityChangeEventData;

/// Is asked about each change of what is shown before the plain listeners hear of it.
class QX_API QxVetoableComplexityChangeListener : public QxVetoableChangeListener {
public:
    /// Nonzero: the plain listeners are not told. The change has been made and stands.
    virtual int vetoComplexityChange(QxComplexityChangeEventData* data) = 0;
};
