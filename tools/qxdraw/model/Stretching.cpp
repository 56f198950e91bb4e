// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "model/Stretching.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace qxdraw {

namespace {

constexpr double Gap = 4;  // that nodes should keep, world units
constexpr std::size_t NodesAnOverlap = 3;
/// Times the area of the nodes: on much larger paper their names could not be read any more.
constexpr double LargestPaper = 15;

struct Box {
    double x;
    double y;
    double width;
    double height;
};

std::vector<Box> boxesOf(const GraphDocument& document, const std::vector<int>& part) {
    std::vector<Box> boxes;
    for (const int index : part) {
        const DocumentNode& node = document.nodes[static_cast<std::size_t>(index)];
        boxes.push_back({node.center->x, node.center->y, node.width + Gap, node.height + Gap});
    }
    return boxes;
}

/// Counts overlaps of stretched boxes with a sweep from left to right, as long as there are not
/// too many.
bool hasMoreOverlaps(std::vector<Box>& boxes, std::size_t limit, double stretch) {
    const auto left = [stretch](const Box& box) { return box.x * stretch - box.width / 2; };
    std::sort(boxes.begin(), boxes.end(),
              [&](const Box& a, const Box& b) { return left(a) < left(b); });
    std::vector<const Box*> active;
    std::size_t overlaps = 0;
    for (const Box& box : boxes) {
        std::erase_if(active, [&](const Box* other) {
            return other->x * stretch + other->width / 2 <= left(box);
        });
        for (const Box* other : active) {
            const double dy = std::abs(other->y - box.y) * stretch;
            overlaps += dy < (other->height + box.height) / 2 ? 1 : 0;
        }
        if (overlaps > limit) {
            return true;
        }
        active.push_back(&box);
    }
    return false;
}

double areaOfNodes(const std::vector<Box>& boxes) {
    return std::accumulate(boxes.begin(), boxes.end(), 0.0,
                           [](double sum, const Box& box) { return sum + box.width * box.height; });
}

/// How far the drawing may be stretched before the paper gets too large.
double largestStretch(const std::vector<Box>& boxes) {
    const auto [left, right] = std::minmax_element(
        boxes.begin(), boxes.end(), [](const Box& a, const Box& b) { return a.x < b.x; });
    const auto [bottom, top] = std::minmax_element(
        boxes.begin(), boxes.end(), [](const Box& a, const Box& b) { return a.y < b.y; });
    const double area = (right->x - left->x) * (top->y - bottom->y);
    return area > 0 ? std::sqrt(areaOfNodes(boxes) * LargestPaper / area) : 1;
}

void stretchBy(GraphDocument& document, const std::vector<int>& part, double stretch) {
    for (const int index : part) {
        DocumentPoint& center = *document.nodes[static_cast<std::size_t>(index)].center;
        center = {std::round(center.x * stretch), std::round(center.y * stretch)};
    }
}

/// Gives the nodes even distances along one axis and keeps their order.
void spreadAlong(double DocumentPoint::*axis, GraphDocument& document, std::vector<int> part,
                 double length) {
    const auto coordinate = [&](int index) -> double& {
        return *document.nodes[static_cast<std::size_t>(index)].center.*axis;
    };
    std::stable_sort(part.begin(), part.end(),
                     [&](int a, int b) { return coordinate(a) < coordinate(b); });
    const double step = length / static_cast<double>(part.size());
    for (std::size_t i = 0; i < part.size(); ++i) {
        coordinate(part[i]) = std::round(step * static_cast<double>(i));
    }
}

}  // namespace

void stretchUntilRoomy(GraphDocument& document, const std::vector<int>& part) {
    constexpr int Steps = 8;
    const std::size_t limit = part.size() / NodesAnOverlap;
    std::vector<Box> boxes = boxesOf(document, part);
    if (!hasMoreOverlaps(boxes, limit, 1)) {
        return;
    }
    double tooLittle = 1;
    double enough = largestStretch(boxes);
    if (enough < 1 || hasMoreOverlaps(boxes, limit, enough)) {
        const double side = std::sqrt(areaOfNodes(boxes) * LargestPaper);
        spreadAlong(&DocumentPoint::x, document, part, side);
        spreadAlong(&DocumentPoint::y, document, part, side);
        return;
    }
    for (int i = 0; i < Steps; ++i) {
        const double middle = (tooLittle + enough) / 2;
        (hasMoreOverlaps(boxes, limit, middle) ? tooLittle : enough) = middle;
    }
    stretchBy(document, part, enough);
}

}  // namespace qxdraw
