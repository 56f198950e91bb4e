// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

/// How the edges of a bundle, which join the same two nodes, are laid out.
enum QxMultiEdgeModeEnum : int {
    QxMultiEdgeUntouched = 0,  ///< as they are
    QxMultiEdgeOverlap = 1,    ///< straight, on top of each other
    QxMultiEdgeParallel = 2,   ///< straight, side by side, as far as the nodes are wide enough
    QxMultiEdgeOneBend = 3     ///< with a bend each, at growing distances from the straight line
};
