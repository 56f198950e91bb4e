// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

/// The end of an edge that a change has moved.
enum QxEdgeEndPointMovedEnum : int {
    QxEdgeSourceMoved = 0,
    QxEdgeTargetMoved = 1,
    QxEdgeEndMovedUnknown = 2  ///< neither, or it cannot be told
};
