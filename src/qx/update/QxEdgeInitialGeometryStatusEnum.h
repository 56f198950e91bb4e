// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

/// What a record of the initial geometry of an edge was made from.
enum QxEdgeInitialGeometryStatusEnum : int {
    QxGeometryOfBend = 0,
    QxGeometryOfSegment = 1,
    QxGeometryOfEdge = 2
};
