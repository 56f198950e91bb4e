// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "model/EdgeSpreading.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

#include "qx/foundation/geometry/QxPointDList.h"

namespace qxdraw {

namespace {

constexpr double Spacing = 22;       // between the edges of a bundle: room for a label
constexpr double LeastSpacing = 12;  // of many edges on a short way: the label can be read still

using NodePair = std::pair<std::size_t, std::size_t>;

void bendAt(QxDEdge& edge, std::initializer_list<DocumentPoint> places) {
    QxPointDList bends;
    for (const DocumentPoint& place : places) {
        bends.appendPoint(toPoint(place));
    }
    edge.reroute(bends, 1);
}

DocumentPoint centerOf(const QxDNode& node) {
    return {static_cast<double>(node.ntX()), static_cast<double>(node.ntY())};
}

/// A fan: one bend an edge, on the line that halves the way, to both sides in turn.
void fanOut(const std::vector<QxDEdge*>& bundle) {
    const DocumentPoint a = centerOf(*bundle.front()->pSourceNode());
    const DocumentPoint b = centerOf(*bundle.front()->pTargetNode());
    const double length = std::hypot(b.x - a.x, b.y - a.y);
    if (length <= 0) {
        return;
    }
    const auto count = static_cast<double>(bundle.size());
    const double spacing = std::clamp(length / count, LeastSpacing, Spacing);
    for (std::size_t i = 0; i < bundle.size(); ++i) {
        const double offset = (static_cast<double>(i) - (count - 1) / 2) * spacing;
        if (offset != 0) {
            bendAt(*bundle[i], {{(a.x + b.x) / 2 - (b.y - a.y) / length * offset,
                                 (a.y + b.y) / 2 + (b.x - a.x) / length * offset}});
        }
    }
}

/// Loops inside each other above the node.
void makeLoops(const std::vector<QxDEdge*>& loops) {
    constexpr double Rise = 22;
    constexpr double Reach = 14;
    const QxDNode& node = *loops.front()->pSourceNode();
    const double step =
        std::max(Reach, node.ntWidth() / 2.0 / (static_cast<double>(loops.size()) + 1));
    for (std::size_t i = 0; i < loops.size(); ++i) {
        const double x = step * static_cast<double>(i + 1);
        const double y = node.ntTop() + Rise + Rise / 2 * static_cast<double>(i);
        bendAt(*loops[i], {{node.ntX() + x, y}, {node.ntX() - x, y}});
    }
}

}  // namespace

void spreadEdges(Drawing& drawing) {
    std::map<const QxDNode*, std::size_t> indexOf;
    for (std::size_t i = 0; i < drawing.numberOfNodes(); ++i) {
        indexOf.emplace(&drawing.node(i), i);
    }
    std::map<NodePair, std::vector<QxDEdge*>> bundles;
    for (std::size_t i = 0; i < drawing.numberOfEdges(); ++i) {
        QxDEdge& edge = drawing.edge(i);
        if (edge.hasBends() == 0) {
            bundles[std::minmax(indexOf.at(edge.pSourceNode()), indexOf.at(edge.pTargetNode()))]
                .push_back(&edge);
        }
    }
    for (const auto& [ends, bundle] : bundles) {
        if (ends.first == ends.second) {
            makeLoops(bundle);
        } else if (bundle.size() > 1) {
            fanOut(bundle);
        }
    }
}

}  // namespace qxdraw
