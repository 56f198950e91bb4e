// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/util/QxVetoableChangeListener.h"

int QxVetoableChangeListener::isVetoableListener() const {
    return 1;
}
