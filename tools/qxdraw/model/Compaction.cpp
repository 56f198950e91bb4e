// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "model/Compaction.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "model/SpringLayout.h"

namespace qxdraw {

namespace {

DocumentPoint centerOf(const GraphDocument& document, int node) {
    return *document.nodes[static_cast<std::size_t>(node)].center;
}

/// Whether the way between two points leads through the inner part of a node.
bool leadsThrough(const DocumentPoint& from, const DocumentPoint& to, const DocumentNode& node) {
    constexpr double Inner = 0.45;  // of the extent, from the center
    double first = 0;
    double last = 1;
    const auto clip = [&](double start, double way, double low, double high) {
        if (way == 0) {
            return start > low && start < high;
        }
        const double a = (low - start) / way;
        const double b = (high - start) / way;
        first = std::max(first, std::min(a, b));
        last = std::min(last, std::max(a, b));
        return first < last;
    };
    return clip(from.x, to.x - from.x, node.center->x - Inner * node.width,
                node.center->x + Inner * node.width) &&
           clip(from.y, to.y - from.y, node.center->y - Inner * node.height,
                node.center->y + Inner * node.height);
}

/// How many nodes stand in the way of an edge, on average.
double obstaclesOfAnEdge(const GraphDocument& document) {
    double obstacles = 0;
    for (const DocumentEdge& edge : document.edges) {
        const DocumentPoint from = centerOf(document, edge.source);
        const DocumentPoint to = centerOf(document, edge.target);
        for (std::size_t i = 0; i < document.nodes.size() && edge.source != edge.target; ++i) {
            const int node = static_cast<int>(i);
            const bool isEnd = node == edge.source || node == edge.target;
            obstacles += !isEnd && leadsThrough(from, to, document.nodes[i]) ? 1 : 0;
        }
    }
    return document.edges.empty() ? 0 : obstacles / static_cast<double>(document.edges.size());
}

/// What a layout costs: less is better.
double costOf(const GraphDocument& document, bool countsObstacles) {
    constexpr double Narrow = 2;          // times as long as wide: no worse than a square
    constexpr double CostOfObstacle = 3;  // for an average edge, in areas
    double left = INFINITY;
    double right = -INFINITY;
    double bottom = INFINITY;
    double top = -INFINITY;
    for (const DocumentNode& node : document.nodes) {
        left = std::min(left, node.center->x - node.width / 2);
        right = std::max(right, node.center->x + node.width / 2);
        bottom = std::min(bottom, node.center->y - node.height / 2);
        top = std::max(top, node.center->y + node.height / 2);
    }
    const double width = right - left;
    const double height = top - bottom;
    const double shape = std::max(width, height) / std::max(std::min(width, height), 1.0);
    return width * height * std::max(1.0, shape / Narrow) *
           (1 + (countsObstacles ? CostOfObstacle * obstaclesOfAnEdge(document) : 0));
}

GraphDocument changed(const GraphDocument& document, double angle, double scale) {
    GraphDocument result = document;
    const double c = std::cos(angle) * scale;
    const double s = std::sin(angle) * scale;
    for (DocumentNode& node : result.nodes) {
        const DocumentPoint at = *node.center;
        node.center = {std::round(c * at.x - s * at.y), std::round(s * at.x + c * at.y)};
    }
    return result;
}

}  // namespace

void compact(GraphDocument& document) {
    constexpr std::size_t Small = 300;
    const bool isSmall = document.nodes.size() <= Small;
    const int angles = document.nodes.size() < 4 ? 4 : isSmall ? 12 : 1;
    if (document.nodes.size() < 2) {
        return;
    }
    GraphDocument best = document;
    double bestCost = costOf(best, isSmall);
    for (int step = 0; step < angles; ++step) {
        for (const double scale : {1.0, 0.8, 0.62, 0.48, 0.36}) {
            if (step == 0 && scale == 1.0) {
                continue;  // what it is already
            }
            GraphDocument tried = changed(document, step * std::numbers::pi / angles, scale);
            pushApart(tried);
            const double cost = costOf(tried, isSmall);
            if (cost < bestCost) {
                bestCost = cost;
                best = std::move(tried);
            }
        }
    }
    for (std::size_t i = 0; i < document.nodes.size(); ++i) {
        document.nodes[i].center = best.nodes[i].center;
    }
}

}  // namespace qxdraw
