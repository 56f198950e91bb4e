// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

/// By which coordinates points are compared.
enum QxSortCoordinateEnum : int {
    QxSortByX = 0,
    QxSortByY = 1,
    QxSortByXThenY = 2,
    QxSortByYThenX = 3
};
