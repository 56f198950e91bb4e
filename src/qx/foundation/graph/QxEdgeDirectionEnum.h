// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

/// Which ends of edges are asked for.
enum QxEdgeDirectionEnum : int {
    QxEdgeDirectionIn = 0,   ///< edges that end there
    QxEdgeDirectionOut = 1,  ///< edges that start there
    QxEdgeDirectionBoth = 2
};
