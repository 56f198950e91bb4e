// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "model/Drawing.h"

namespace qxdraw {

/// Makes the ports of a document connectors of its drawing, and lets edges end there. A port of a
/// node lies on its outline; that of a field on the border of the field that is a border of the
/// node, too, and faces the other end of the edge, or is the whole field where it has none.
void connectPorts(Drawing& drawing, const GraphDocument& document);

}  // namespace qxdraw
