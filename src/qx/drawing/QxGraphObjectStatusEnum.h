// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

/// What the running change has done to an object so far.
enum QxGraphObjectStatusEnum : int {
    QxStatusUnchanged = 0,
    QxStatusMoved = 1,
    QxStatusRerouted = 2,
    QxStatusGraphContentsMoved = 4,  ///< graphs only
    QxStatusGraphRefitted = 5        ///< graphs only
};
