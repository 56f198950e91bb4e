// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

/// The side of a segment, seen in its direction.
enum QxEdgeLabelToWhichSideOfEdgeEnum : int { QxEdgeLabelRightSide = 0, QxEdgeLabelLeftSide = 1 };
