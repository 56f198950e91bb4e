// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

/// How the part of the drawing that is shown has changed: one bit each, so that a mask names
/// several. The source is the node or edge that was affected.
enum QxComplexityChangeEventTypeEnum : std::int32_t {
    NodeExpanded = 0x001,
    NodeCollapsed = 0x002,
    NodeFolded = 0x004,
    EdgeFolded = 0x008,
    NodeUnfolded = 0x010,
    EdgeUnfolded = 0x020,
    NodeHidden = 0x040,
    EdgeHidden = 0x080,
    NodeUnhidden = 0x100,
    EdgeUnhidden = 0x200
};
