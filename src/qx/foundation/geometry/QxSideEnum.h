// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

/// A side of a rectangle. (side + 2) % 4 is the opposite side; even sides are vertical lines.
/// The side s is the one through which a traveller in QxDirectionEnum s enters a rectangle.
enum QxSideEnum : int {
    QxSideLeft = 0,
    QxSideBottom = 1,
    QxSideRight = 2,
    QxSideTop = 3,
    QxSideNone = 4
};
