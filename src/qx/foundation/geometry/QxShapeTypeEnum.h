// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

/// The kind of a shape. Any value other than the first two stands for a polygon.
enum QxShapeTypeEnum : int {
    QxShapeTypeRectangle = 0,
    QxShapeTypeOval = 1,
    QxShapeTypePolygon = 2
};
