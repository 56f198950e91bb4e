// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

/// An axis direction; numbered so that it is also the QxSideEnum side entered when travelling so.
enum QxDirectionEnum : int {
    QxDirectionRight = 0,  ///< toward larger x
    QxDirectionUp = 1,     ///< toward larger y
    QxDirectionLeft = 2,   ///< toward smaller x
    QxDirectionDown = 3,   ///< toward smaller y
    QxDirectionNone = 4
};
