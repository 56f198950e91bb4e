// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/geometry/QxSize.h"

#include <ostream>

#include "qx/foundation/util/QxDebugStream.h"

void QxSize::debugOutput(int depth) const {
    qxDebugIndent(depth) << "QxSize " << m_width << ' ' << m_height << '\n';
}
