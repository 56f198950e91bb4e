// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "model/StartPlacement.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <numbers>
#include <set>
#include <unordered_map>
#include <utility>

#include "model/PivotScaling.h"
#include "model/TextLayout.h"

namespace qxdraw {

namespace {

DocumentNode& nodeAt(GraphDocument& document, int index) {
    return document.nodes[static_cast<std::size_t>(index)];
}

DocumentBox boxOf(const DocumentNode& node) {
    return {node.center->x - node.width / 2, node.center->y - node.height / 2,
            node.center->x + node.width / 2, node.center->y + node.height / 2};
}

DocumentBox united(const DocumentBox& a, const DocumentBox& b) {
    return {std::min(a.left, b.left), std::min(a.bottom, b.bottom), std::max(a.right, b.right),
            std::max(a.top, b.top)};
}

DocumentBox boxOf(GraphDocument& document, const std::vector<int>& part) {
    DocumentBox box = boxOf(nodeAt(document, part.front()));
    for (const int index : part) {
        box = united(box, boxOf(nodeAt(document, index)));
    }
    return box;
}

void movePart(GraphDocument& document, const std::vector<int>& part, double dx, double dy) {
    for (const int index : part) {
        DocumentPoint& center = *nodeAt(document, index).center;
        center.x += dx;
        center.y += dy;
    }
}

/// Edges from a node to itself and repeated ones do not count.
Adjacency adjacencyOf(const GraphDocument& document) {
    Adjacency adjacency(document.nodes.size());
    for (const DocumentEdge& edge : document.edges) {
        if (edge.source != edge.target) {
            adjacency[static_cast<std::size_t>(edge.source)].push_back(edge.target);
            adjacency[static_cast<std::size_t>(edge.target)].push_back(edge.source);
        }
    }
    for (std::vector<int>& neighbours : adjacency) {
        std::sort(neighbours.begin(), neighbours.end());
        neighbours.erase(std::unique(neighbours.begin(), neighbours.end()), neighbours.end());
    }
    return adjacency;
}

std::vector<std::vector<int>> partsOf(const Adjacency& adjacency) {
    std::vector<std::vector<int>> parts;
    std::vector<char> seen(adjacency.size(), 0);
    for (std::size_t start = 0; start < adjacency.size(); ++start) {
        if (seen[start] != 0) {
            continue;
        }
        std::vector<int>& part = parts.emplace_back(1, static_cast<int>(start));
        seen[start] = 1;
        for (std::size_t next = 0; next < part.size(); ++next) {
            for (const int neighbour : adjacency[static_cast<std::size_t>(part[next])]) {
                char& mark = seen[static_cast<std::size_t>(neighbour)];
                if (mark == 0) {
                    mark = 1;
                    part.push_back(neighbour);
                }
            }
        }
        std::sort(part.begin(), part.end());
    }
    return parts;
}

/// The same within one part, whose nodes are numbered by their places in it.
Adjacency adjacencyWithin(const Adjacency& adjacency, const std::vector<int>& part) {
    std::unordered_map<int, int> numberOf;
    for (std::size_t i = 0; i < part.size(); ++i) {
        numberOf.emplace(part[i], static_cast<int>(i));
    }
    Adjacency inner(part.size());
    for (std::size_t i = 0; i < part.size(); ++i) {
        for (const int neighbour : adjacency[static_cast<std::size_t>(part[i])]) {
            if (const auto number = numberOf.find(neighbour); number != numberOf.end()) {
                inner[i].push_back(number->second);
            }
        }
    }
    return inner;
}

/// The n-th seed of a sunflower head, whose seeds lie evenly around the middle.
DocumentPoint sunflowerSeed(std::size_t n, double spacing) {
    const double goldenAngle = std::numbers::pi * (3 - std::sqrt(5.0));
    const double radius = spacing * std::sqrt(static_cast<double>(n));
    const double angle = goldenAngle * static_cast<double>(n);
    return {radius * std::cos(angle), radius * std::sin(angle)};
}

/// Leaves, which have one neighbour, say nothing about the rest of the graph, and many of them
/// would hide it: they are placed last, around their neighbours.
class LeafPlacement {
public:
    LeafPlacement(const Adjacency& adjacency, std::vector<DocumentPoint>& places)
        : m_adjacency(adjacency), m_places(places) {}

    static bool isLeaf(const Adjacency& adjacency, std::size_t node) {
        return adjacency[node].size() == 1 &&
               adjacency[static_cast<std::size_t>(adjacency[node].front())].size() > 1;
    }

    void placeAll() {
        for (std::size_t node = 0; node < m_adjacency.size(); ++node) {
            std::vector<std::size_t> leaves;
            DocumentPoint others;
            for (const int neighbour : m_adjacency[node]) {
                const auto other = static_cast<std::size_t>(neighbour);
                if (isLeaf(m_adjacency, other)) {
                    leaves.push_back(other);
                } else {
                    others.x += m_places[other].x - m_places[node].x;
                    others.y += m_places[other].y - m_places[node].y;
                }
            }
            placeAround(m_places[node], leaves, std::atan2(-others.y, -others.x));
        }
    }

private:
    /// A few leaves form a fan, away from the other neighbours; many form a sunflower head.
    void placeAround(const DocumentPoint& center, const std::vector<std::size_t>& leaves,
                     double away) {
        constexpr std::size_t MostInFan = 12;
        constexpr double Step = 2 * std::numbers::pi / MostInFan;
        constexpr double Spacing = 0.5;
        constexpr std::size_t FirstSeed = 4;  // leaves the middle to the neighbour itself
        for (std::size_t i = 0; i < leaves.size(); ++i) {
            const double side = i % 2 == 0 ? 1 : -1;
            const double angle = away + side * Step * static_cast<double>((i + 1) / 2);
            const DocumentPoint offset = leaves.size() > MostInFan
                                             ? sunflowerSeed(i + FirstSeed, Spacing)
                                             : DocumentPoint{std::cos(angle), std::sin(angle)};
            m_places[leaves[i]] = {center.x + offset.x, center.y + offset.y};
        }
    }

    const Adjacency& m_adjacency;
    std::vector<DocumentPoint>& m_places;
};

/// Places for the nodes of a connected graph, in edge lengths.
std::vector<DocumentPoint> unfold(const Adjacency& adjacency) {
    std::vector<int> inner;
    for (std::size_t i = 0; i < adjacency.size(); ++i) {
        if (!LeafPlacement::isLeaf(adjacency, i)) {
            inner.push_back(static_cast<int>(i));
        }
    }
    const std::vector<DocumentPoint> scaled = scaleByPivots(adjacencyWithin(adjacency, inner));
    std::vector<DocumentPoint> places(adjacency.size());
    for (std::size_t i = 0; i < inner.size(); ++i) {
        places[static_cast<std::size_t>(inner[i])] = scaled[i];
    }
    LeafPlacement(adjacency, places).placeAll();
    return places;
}

/// Graphs in which few edges lead from anywhere to anywhere come out too small for their nodes;
/// they are stretched until each node has room of its own, on average.
void giveRoom(std::vector<DocumentPoint>& places) {
    constexpr double Room = 0.3;  // edge lengths from the middle, for the square root of a node
    double sum = 0;
    for (const DocumentPoint& place : places) {
        sum += place.x * place.x + place.y * place.y;
    }
    const auto count = static_cast<double>(places.size());
    const double spread = std::sqrt(sum / count);
    const double factor = spread > 0 ? std::max(1.0, Room * std::sqrt(count) / spread) : 1.0;
    for (DocumentPoint& place : places) {
        place.x *= factor;
        place.y *= factor;
    }
}

/// Mirrors the parts of a directed graph so that their edges lead right and down, on the whole.
void turnWithTheFlow(GraphDocument& document, const std::vector<std::vector<int>>& parts) {
    std::vector<std::size_t> partOf(document.nodes.size(), parts.size());
    for (std::size_t i = 0; i < parts.size(); ++i) {
        for (const int index : parts[i]) {
            partOf[static_cast<std::size_t>(index)] = i;
        }
    }
    std::vector<DocumentPoint> flow(parts.size());
    for (const DocumentEdge& edge : document.edges) {
        const std::size_t part = partOf[static_cast<std::size_t>(edge.source)];
        if (part < parts.size() && part == partOf[static_cast<std::size_t>(edge.target)]) {
            const DocumentPoint& from = *nodeAt(document, edge.source).center;
            const DocumentPoint& to = *nodeAt(document, edge.target).center;
            flow[part].x += to.x - from.x;
            flow[part].y += to.y - from.y;
        }
    }
    for (std::size_t i = 0; i < parts.size(); ++i) {
        for (const int index : parts[i]) {
            DocumentPoint& center = *nodeAt(document, index).center;
            center.x *= flow[i].x < 0 ? -1 : 1;
            center.y *= flow[i].y > 0 ? -1 : 1;
        }
    }
}

/// Nodes that came to lie on (nearly) the same place are spread around it.
void spreadCrowds(std::vector<DocumentPoint>& places) {
    constexpr double Cell = 0.25;  // of an edge length
    constexpr double Spacing = 0.35;
    std::map<std::pair<std::int64_t, std::int64_t>, std::size_t> crowds;
    for (DocumentPoint& place : places) {
        const std::pair cell(std::llround(place.x / Cell), std::llround(place.y / Cell));
        const DocumentPoint seed = sunflowerSeed(crowds[cell]++, Spacing);
        place.x += seed.x;
        place.y += seed.y;
    }
}

/// Edges without a label do not count.
double averageLabelWidth(const GraphDocument& document) {
    double sum = 0;
    double count = 0;
    for (const DocumentEdge& edge : document.edges) {
        if (!edge.label.empty()) {
            sum += widthOf(wrapEdgeLabel(edge.label), EdgeFontSize);
            count += 1;
        }
    }
    return count > 0 ? sum / count : 0;
}

/// Rounds centers to whole units and gives each a place of its own.
class DistinctPlaces {
public:
    void settle(DocumentPoint& center) {
        const DocumentPoint wanted{std::round(center.x), std::round(center.y)};
        center = wanted;
        for (std::size_t n = 1; !m_taken.emplace(center.x, center.y).second; ++n) {
            const DocumentPoint seed = sunflowerSeed(n, 1.0);
            center = {wanted.x + std::round(seed.x), wanted.y + std::round(seed.y)};
        }
    }

    void take(const DocumentPoint& center) {
        m_taken.emplace(std::round(center.x), std::round(center.y));
    }

private:
    std::set<std::pair<double, double>> m_taken;
};

}  // namespace

std::vector<std::vector<int>> connectedParts(const GraphDocument& document) {
    return partsOf(adjacencyOf(document));
}

void packParts(GraphDocument& document, const std::vector<std::vector<int>>& parts, double gap) {
    constexpr double Landscape = 1.5;  // width to height
    struct Item {
        std::size_t part;
        DocumentBox box;
    };
    std::vector<Item> items;
    double area = 0;
    double largest = 0;
    double widest = 0;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        items.push_back({i, boxOf(document, parts[i])});
        const DocumentBox& box = items.back().box;
        const double taken = (box.width() + gap) * (box.height() + gap);
        area += taken;
        largest = std::max(largest, taken);
        widest = std::max(widest, box.width());
    }
    std::stable_sort(items.begin(), items.end(),
                     [](const Item& a, const Item& b) { return a.box.height() > b.box.height(); });
    // One part that takes most of the room sets the width; the others go under it.
    const double rowWidth =
        largest > area / 2 ? widest : std::max(widest, std::sqrt(area * Landscape));
    double x = 0;
    double y = 0;
    double nextRow = 0;
    for (const Item& item : items) {
        if (x > 0 && x + item.box.width() > rowWidth) {
            x = 0;
            y = nextRow;
        }
        movePart(document, parts[item.part], std::round(x - item.box.left),
                 std::round(y - item.box.top));
        x += item.box.width() + gap;
        nextRow = std::min(nextRow, y - item.box.height() - gap);
    }
}

double comfortableEdgeLength(const GraphDocument& document) {
    constexpr double Least = 40;
    constexpr double MostEdges = 10;
    if (document.nodes.empty()) {
        return Least;
    }
    const auto count = static_cast<double>(document.nodes.size());
    double extents = 0;
    for (const DocumentNode& node : document.nodes) {
        extents += std::hypot(node.width, node.height);
    }
    const double extent = extents / count;
    // The more edges a node has, the closer they are pulled together, and the more room they need.
    const double edgesOfANode = 2 * static_cast<double>(document.edges.size()) / count;
    const double forNodes = extent * (0.7 + 0.06 * std::min(edgesOfANode, MostEdges));
    const double forLabels = extent * 0.8 + averageLabelWidth(document);
    return std::round(std::max({Least, forNodes, forLabels}));
}

void placeNodes(GraphDocument& document, double edgeLength) {
    const Adjacency adjacency = adjacencyOf(document);
    DistinctPlaces places;
    bool anyGiven = false;
    DocumentBox given;
    std::vector<char> isOpen(document.nodes.size(), 0);
    for (std::size_t i = 0; i < document.nodes.size(); ++i) {
        DocumentNode& node = document.nodes[i];
        if (node.center) {
            places.take(*node.center);
            given = anyGiven ? united(given, boxOf(node)) : boxOf(node);
            anyGiven = true;
        }
        isOpen[i] = node.center ? 0 : 1;
    }
    std::vector<std::vector<int>> openParts;
    for (const std::vector<int>& part : partsOf(adjacency)) {
        std::vector<DocumentPoint> scaled = unfold(adjacencyWithin(adjacency, part));
        giveRoom(scaled);
        spreadCrowds(scaled);
        std::vector<int> open;
        for (std::size_t i = 0; i < part.size(); ++i) {
            if (isOpen[static_cast<std::size_t>(part[i])] != 0) {
                nodeAt(document, part[i]).center =
                    DocumentPoint{scaled[i].x * edgeLength, scaled[i].y * edgeLength};
                open.push_back(part[i]);
            }
        }
        if (!open.empty()) {
            openParts.push_back(std::move(open));
        }
    }
    if (document.directed) {
        turnWithTheFlow(document, openParts);
    }
    packParts(document, openParts, edgeLength / 2);
    for (const std::vector<int>& part : openParts) {
        if (anyGiven) {
            movePart(document, part, given.right + edgeLength, given.top);
        }
        for (const int index : part) {
            places.settle(*nodeAt(document, index).center);
        }
    }
}

}  // namespace qxdraw
