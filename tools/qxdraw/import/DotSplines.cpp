// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "import/DotSplines.h"

#include <algorithm>
#include <cmath>

#include "import/Numbers.h"

namespace qxdraw {

namespace {

constexpr int PartsPerPiece = 6;
constexpr double Tolerance = 1.0;  // world units between the curve and its polyline

std::optional<DocumentPoint> parsePoint(std::string_view text) {
    const auto numbers = parseNumbers(text);
    if (!numbers || numbers->size() < 2) {
        return std::nullopt;
    }
    return DocumentPoint{(*numbers)[0] * DotPoint, (*numbers)[1] * DotPoint};
}

/// The control points, without the arrow tips that `s,` and `e,` give before them.
std::optional<std::vector<DocumentPoint>> controlPoints(std::string_view spline) {
    constexpr std::string_view Blanks = " \t\r\n\\";
    std::vector<DocumentPoint> points;
    for (;;) {
        const std::size_t first = spline.find_first_not_of(Blanks);
        if (first == std::string_view::npos) {
            return points;
        }
        spline.remove_prefix(first);
        const std::string_view word =
            spline.substr(0, std::min(spline.find_first_of(Blanks), spline.size()));
        spline.remove_prefix(word.size());
        if (word.starts_with("s,") || word.starts_with("e,")) {
            continue;
        }
        const auto point = parsePoint(word);
        if (!point) {
            return std::nullopt;
        }
        points.push_back(*point);
    }
}

DocumentPoint onCurve(const DocumentPoint* control, double t) {
    const double u = 1 - t;
    const double weights[] = {u * u * u, 3 * u * u * t, 3 * u * t * t, t * t * t};
    DocumentPoint point;
    for (int i = 0; i < 4; ++i) {
        point.x += weights[i] * control[i].x;
        point.y += weights[i] * control[i].y;
    }
    return point;
}

double distanceToSegment(const DocumentPoint& p, const DocumentPoint& a, const DocumentPoint& b) {
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double length2 = dx * dx + dy * dy;
    const double t =
        length2 > 0 ? std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / length2, 0.0, 1.0) : 0;
    return std::hypot(p.x - a.x - t * dx, p.y - a.y - t * dy);
}

/// Marks the points between `first` and `last` that a polyline needs (Douglas and Peucker), with
/// a stack of its own so that no spline is too long for the machine's.
void markNeeded(const std::vector<DocumentPoint>& points, std::vector<char>& needed) {
    std::vector<std::pair<std::size_t, std::size_t>> spans{{0, points.size() - 1}};
    while (!spans.empty()) {
        const auto [first, last] = spans.back();
        spans.pop_back();
        std::size_t furthest = first;
        double distance = Tolerance;
        for (std::size_t i = first + 1; i < last; ++i) {
            const double d = distanceToSegment(points[i], points[first], points[last]);
            if (d > distance) {
                distance = d;
                furthest = i;
            }
        }
        if (furthest != first) {
            needed[furthest] = 1;
            spans.emplace_back(first, furthest);
            spans.emplace_back(furthest, last);
        }
    }
}

}  // namespace

std::optional<std::vector<DocumentPoint>> bendsOfSpline(std::string_view pos) {
    const auto control = controlPoints(pos.substr(0, pos.find(';')));
    if (!control || control->size() % 3 != 1) {
        return std::nullopt;
    }
    std::vector<DocumentPoint> points{control->front()};
    for (std::size_t piece = 0; piece + 3 < control->size(); piece += 3) {
        for (int part = 1; part <= PartsPerPiece; ++part) {
            points.push_back(
                onCurve(&(*control)[piece], static_cast<double>(part) / PartsPerPiece));
        }
    }
    std::vector<char> needed(points.size(), 0);
    markNeeded(points, needed);
    std::vector<DocumentPoint> bends;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (needed[i] != 0) {
            bends.push_back(points[i]);
        }
    }
    return bends;
}

}  // namespace qxdraw
