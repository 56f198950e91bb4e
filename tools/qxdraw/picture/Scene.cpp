// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "picture/Scene.h"

#include <cmath>

namespace qxdraw {

DocumentPoint middleOf(const std::vector<DocumentPoint>& points) {
    double length = 0;
    for (std::size_t i = 1; i < points.size(); ++i) {
        length += std::hypot(points[i].x - points[i - 1].x, points[i].y - points[i - 1].y);
    }
    double rest = length / 2;
    for (std::size_t i = 1; i < points.size(); ++i) {
        const DocumentPoint& a = points[i - 1];
        const DocumentPoint& b = points[i];
        const double step = std::hypot(b.x - a.x, b.y - a.y);
        if (step > 0 && rest <= step) {
            return {a.x + (b.x - a.x) * rest / step, a.y + (b.y - a.y) * rest / step};
        }
        rest -= step;
    }
    return points.back();
}

}  // namespace qxdraw
