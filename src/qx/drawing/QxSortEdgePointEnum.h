// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

/// By which points edges are compared; on a tie by the next named. "From" and "to" are the clipped
/// ends of the edge in own graph coordinates, "least" and "greatest" the corners of the rectangle
/// around the centers of its nodes.
enum QxSortEdgePointEnum : int {
    QxSortByMiddle = 0,           ///< halfway from the from to the to point
    QxSortByUnclippedMiddle = 1,  ///< of the unclipped ends, in anchor coordinates
    QxSortByFrom = 2,
    QxSortByTo = 3,
    QxSortByFromThenTo = 4,
    QxSortByToThenFrom = 5,
    QxSortByLeastThenGreatest = 6,  ///< the greatest in the opposite order
    QxSortByGreatestThenLeast = 7,  ///< the least in the opposite order
    QxSortByMiddleThenEnds = 8      ///< halfway, from, to
};
