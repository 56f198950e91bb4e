// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/geometry/QxTuple.h"

#include <ostream>

#include "qx/foundation/util/QxDebugStream.h"

void QxTuple::debugOutput(int depth) const {
    qxDebugIndent(depth) << "QxTuple " << m_x << ' ' << m_y << '\n';
}
