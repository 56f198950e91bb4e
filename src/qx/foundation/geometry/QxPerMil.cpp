// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/geometry/QxPerMil.h"

#include <ostream>

#include "qx/foundation/util/QxDebugStream.h"

void QxPerMil::debugOutput(int depth) const {
    qxDebugIndent(depth) << "QxPerMil " << m_x << ' ' << m_y << '\n';
}
