// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/util/QxEventListener.h"

/// A listener that is asked about an event before the plain listeners hear of it. When one answers
/// nonzero, the plain listeners are not told; the change itself has been made and stands.
class QX_API QxVetoableChangeListener : public QxEventListener {
public:
    int isVetoableListener() const override;
};
