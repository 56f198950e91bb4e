// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

/// In which states edges are asked for.
enum QxEdgeConnectionEnum : int {
    QxEdgeConnectionConnected = 0,
    QxEdgeConnectionDisconnected = 1,
    QxEdgeConnectionNotDeactivated = 2,  ///< connected and disconnected ones
    QxEdgeConnectionDeactivated = 3,
    QxEdgeConnectionAll = 4
};
