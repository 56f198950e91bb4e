// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "import/Shapes.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>
#include <set>
#include <string>

#include "import/SourceText.h"

namespace qxdraw {

namespace {

DocumentShape star() {
    constexpr int Tips = 5;
    constexpr double InnerRadius = 0.45;
    std::vector<DocumentPoint> corners;
    for (int i = 0; i < 2 * Tips; ++i) {
        const double angle = std::numbers::pi * (0.5 + static_cast<double>(i) / Tips);
        const double radius = i % 2 == 0 ? 1.0 : InnerRadius;
        corners.push_back({radius * std::cos(angle), radius * std::sin(angle)});
    }
    return polygonFromCorners(std::move(corners));
}

const std::map<std::string, std::vector<DocumentPoint>, std::less<>>& namedOutlines() {
    static const std::map<std::string, std::vector<DocumentPoint>, std::less<>> outlines = {
        {"diamond", {{0, -1}, {1, 0}, {0, 1}, {-1, 0}}},
        {"triangle", {{-1, -1}, {1, -1}, {0, 1}}},
        {"invtriangle", {{-1, 1}, {0, -1}, {1, 1}}},
        {"trapezium", {{-1, -1}, {1, -1}, {0.6, 1}, {-0.6, 1}}},
        {"invtrapezium", {{-0.6, -1}, {0.6, -1}, {1, 1}, {-1, 1}}},
        {"parallelogram", {{-1, -1}, {0.6, -1}, {1, 1}, {-0.6, 1}}},
        {"house", {{-1, -1}, {1, -1}, {1, 0.3}, {0, 1}, {-1, 0.3}}},
        {"invhouse", {{-1, -0.3}, {0, -1}, {1, -0.3}, {1, 1}, {-1, 1}}},
        {"hexagon", {{-0.7, -1}, {0.7, -1}, {1, 0}, {0.7, 1}, {-0.7, 1}, {-1, 0}}},
        {"octagon",
         {{-0.5, -1}, {0.5, -1}, {1, -0.5}, {1, 0.5}, {0.5, 1}, {-0.5, 1}, {-1, 0.5}, {-1, -0.5}}},
        {"rarrow", {{-1, -0.6}, {0.4, -0.6}, {0.4, -1}, {1, 0}, {0.4, 1}, {0.4, 0.6}, {-1, 0.6}}},
        {"larrow",
         {{1, -0.6}, {-0.4, -0.6}, {-0.4, -1}, {-1, 0}, {-0.4, 1}, {-0.4, 0.6}, {1, 0.6}}},
    };
    return outlines;
}

const std::map<std::string, std::string_view, std::less<>>& otherNames() {
    static const std::map<std::string, std::string_view, std::less<>> names = {
        {"mdiamond", "diamond"},      {"rhombus", "diamond"},     {"doubleoctagon", "octagon"},
        {"tripleoctagon", "octagon"}, {"trapezoid", "trapezium"}, {"trapezoid2", "invtrapezium"},
    };
    return names;
}

}  // namespace

DocumentShape regularPolygon(int sides) {
    constexpr int MostSides = 100;  // beyond that nobody can tell it from a circle
    const int count = std::clamp(sides, 3, MostSides);
    std::vector<DocumentPoint> corners;
    for (int i = 0; i < count; ++i) {
        const double angle = std::numbers::pi * (-0.5 + (2.0 * i + 1.0) / count);
        corners.push_back({std::cos(angle), std::sin(angle)});
    }
    return polygonFromCorners(std::move(corners));
}

DocumentShape polygonFromCorners(std::vector<DocumentPoint> corners) {
    if (corners.size() < 3) {
        return {};
    }
    const auto [minX, maxX] = std::minmax_element(
        corners.begin(), corners.end(), [](const auto& a, const auto& b) { return a.x < b.x; });
    const auto [minY, maxY] = std::minmax_element(
        corners.begin(), corners.end(), [](const auto& a, const auto& b) { return a.y < b.y; });
    const DocumentPoint low{minX->x, minY->y};
    const DocumentPoint high{maxX->x, maxY->y};
    if (!(high.x > low.x) || !(high.y > low.y)) {
        return {};
    }
    for (DocumentPoint& corner : corners) {
        corner.x = 2 * (corner.x - low.x) / (high.x - low.x) - 1;
        corner.y = 2 * (corner.y - low.y) / (high.y - low.y) - 1;
    }
    DocumentShape shape;
    shape.kind = ShapeKind::Polygon;
    shape.outline = std::move(corners);
    return shape;
}

DocumentShape shapeFromName(std::string_view name) {
    static const std::set<std::string, std::less<>> ovals = {"ellipse", "oval", "egg"};
    static const std::set<std::string, std::less<>> circles = {"circle", "doublecircle", "mcircle",
                                                               "point"};
    static const std::set<std::string, std::less<>> squares = {"square", "msquare"};
    std::string key = toLowerAscii(name);
    if (const auto other = otherNames().find(key); other != otherNames().end()) {
        key = other->second;
    }
    DocumentShape shape;
    if (ovals.contains(key) || circles.contains(key)) {
        shape.kind = ShapeKind::Oval;
    } else if (key == "star") {
        return star();
    } else if (key == "pentagon") {
        return regularPolygon(5);
    } else if (key == "septagon") {
        return regularPolygon(7);
    } else if (const auto outline = namedOutlines().find(key); outline != namedOutlines().end()) {
        shape.kind = ShapeKind::Polygon;
        shape.outline = outline->second;
    }
    shape.square = circles.contains(key) || squares.contains(key);
    return shape;
}

}  // namespace qxdraw
