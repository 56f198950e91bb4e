// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

#include "qx/foundation/geometry/QxDirectionEnum.h"

class QxDEdge;
class QxDNode;

namespace qx::internal {

/// What QxDNode::findFirstEdgeOnSide answers when one more edge does not count.
std::int32_t firstEdgeOnSide(const QxDNode& node, QxDirectionEnum direction, bool high,
                             const QxDEdge* except);

}  // namespace qx::internal
