// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Labels are settled one after the other: ports first, whose labels have few places, then those
// beside nodes, then those of edges. Each tries its places in order of preference and asks the
// index what lies there; labels that are not settled yet do not count. A label costs as many
// questions as it has places, whatever the size of the drawing. Where everything lies on one heap
// there is no good place, and the answers are long: a label, and all of them together, give up
// after so many hits.

#include "model/LabelMoving.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <unordered_set>

#include "model/ShownObjects.h"
#include "qx/drawing/QxEdgeVisiblePointDListIter.h"
#include "qx/drawing/QxPEdge.h"

namespace qxdraw {

namespace {

constexpr double Gap = 1;  // between a label and what it belongs to

/// A center for a label. Places come by rising penalty: what it costs to be there anyhow.
struct Place {
    DocumentPoint center;
    double penalty;
};

struct Extent {
    double width;
    double height;
};

Extent extentOf(const QxLabel& label) {
    return {static_cast<double>(label.ntWidth()), static_cast<double>(label.ntHeight())};
}

/// Places along the drawn part of an edge.
class PathPlaces {
public:
    explicit PathPlaces(QxDEdge& edge) {
        QxPoint point;
        for (QxEdgeVisiblePointDListIter it(&edge, 1); it; ++it) {
            it.getPoint(point);
            m_points.push_back(toPlace(point));
        }
        for (std::size_t i = 1; i < m_points.size(); ++i) {
            m_length += lengthOf(i);
        }
    }

    double length() const { return m_length; }

    /// Centers for a label of that size on both sides of the point so far along the path, `out`
    /// away from touching the line there.
    void addBeside(double along, double out, const Extent& size, double penalty,
                   std::vector<Place>& places) const {
        for (std::size_t i = 1; i < m_points.size(); ++i) {
            const double length = lengthOf(i);
            if (length <= 0 || (along > length && i + 1 < m_points.size())) {
                along -= length;
                continue;
            }
            const DocumentPoint& from = m_points[i - 1];
            const double ux = (m_points[i].x - from.x) / length;
            const double uy = (m_points[i].y - from.y) / length;
            const double aside = out + (std::abs(uy) * size.width + std::abs(ux) * size.height) / 2;
            for (const double side : {1.0, -1.0}) {
                places.push_back({{from.x + ux * along + uy * aside * side,
                                   from.y + uy * along - ux * aside * side},
                                  penalty});
            }
            return;
        }
    }

    /// How far from an end a label of that size clears the outline there.
    double clearance(bool atSource, const Extent& size) const {
        const DocumentPoint& a = atSource ? m_points.front() : m_points.back();
        const DocumentPoint& b = atSource ? m_points[1] : m_points[m_points.size() - 2];
        const double length = std::max(std::hypot(b.x - a.x, b.y - a.y), 1.0);
        return Gap + (std::abs(b.x - a.x) * size.width + std::abs(b.y - a.y) * size.height) /
                         (2 * length);
    }

private:
    double lengthOf(std::size_t i) const {
        return std::hypot(m_points[i].x - m_points[i - 1].x, m_points[i].y - m_points[i - 1].y);
    }

    std::vector<DocumentPoint> m_points;
    double m_length = 0;
};

std::vector<Place> placesOf(QxEdgeLabel& label) {
    constexpr std::array<double, 9> Middle = {0.5, 0.42, 0.58, 0.34, 0.66, 0.26, 0.74, 0.18, 0.82};
    constexpr int StepsFromEnd = 12;
    constexpr double Step = 10;
    const PathPlaces path(*label.pOwnerEdge());
    const Extent size = extentOf(label);
    std::vector<Place> places;
    if (path.length() <= 0) {
        return places;
    }
    const std::int16_t perMil = label.perMilDistanceFromSource();
    if (perMil != 0 && perMil != 1000) {
        places.push_back({toPlace(label.ntCenter()), 0});
        for (const double out : {0.0, 10.0, 22.0, 40.0, 64.0}) {
            for (const double part : Middle) {
                // Far from its edge a label would seem to belong to another one.
                path.addBeside(part * path.length(), Gap + out, size, 2 * out, places);
            }
        }
        return places;
    }
    for (int i = 0; i < StepsFromEnd; ++i) {
        const double along =
            std::min(path.clearance(perMil == 0, size) + i * Step, path.length() / 2);
        path.addBeside(perMil == 0 ? along : path.length() - along, Gap, size, i, places);
    }
    return places;
}

/// Around the node, in the model's order: sides, then corners; then farther out.
std::vector<Place> placesOf(const QxNodeLabel& label) {
    constexpr std::array<DocumentPoint, 8> Around = {
        {{-1, 0}, {1, 0}, {0, 1}, {0, -1}, {-1, -1}, {1, 1}, {-1, 1}, {1, -1}}};
    constexpr int Rings = 3;
    constexpr double RingWidth = 12;
    const QxRect& node = *label.pOwnerNode()->pIRect();
    const Extent size = extentOf(label);
    std::vector<Place> places;
    for (int ring = 0; ring < Rings; ++ring) {
        const double out = Gap + ring * RingWidth;
        for (const DocumentPoint& side : Around) {
            places.push_back({{node.x() + side.x * ((node.width() + size.width) / 2 + out),
                               node.y() + side.y * ((node.height() + size.height) / 2 + out)},
                              ring * RingWidth});
        }
    }
    return places;
}

/// Inside the node next to the port, then outside beside the edges that leave there.
std::vector<Place> placesOf(const QxConnectorLabel& label) {
    const QxConnector& port = *label.pOwnerConnector();
    const QxSideEnum side = port.pOwnerNode()->closestSide(&port);
    const bool isUpright = side == QxSideLeft || side == QxSideRight;
    const double out = side == QxSideLeft || side == QxSideBottom ? -1 : 1;
    const Extent size = extentOf(label);
    const DocumentPoint at = toPlace(port.ntCenter());
    std::vector<Place> places;
    const auto add = [&](double away, double along) {
        const double across =
            away * ((isUpright ? size.width : size.height) / 2 + port.ntWidth() / 2.0 + Gap);
        const double aside =
            along * ((isUpright ? size.height : size.width) / 2 + port.ntWidth() / 2.0 + Gap);
        places.push_back({isUpright ? DocumentPoint{at.x + out * across, at.y + aside}
                                    : DocumentPoint{at.x + aside, at.y + out * across},
                          static_cast<double>(places.size())});
    };
    for (const auto& [away, along] : {std::pair(-1.0, 0.0),
                                      {-1, 1},
                                      {-1, -1},
                                      {1, 1},
                                      {1, -1},
                                      {1, 1.8},
                                      {1, -1.8},
                                      {1, 0},
                                      {2, 1},
                                      {2, -1}}) {
        add(away, along);
    }
    return places;
}

/// Answers what is in the way of a label at a place, as a number.
class Obstacles {
public:
    explicit Obstacles(const Drawing& drawing) : m_shown(drawing) {
        for (const DrawnLabel& label : drawing.labels()) {
            if (label.isInside || label.isTitle) {
                m_settled.insert(label.label);
            }
        }
    }

    void settle(const QxLabel& label) { m_settled.insert(&label); }

    /// How many objects have been looked at.
    std::int64_t hits() const { return m_hits; }

    /// Text or a node in the way makes a place a bad one, a line a worse one than another.
    double costAt(const QxLabel& label, const QxRect& rect) {
        constexpr double OwnLine = 40;
        constexpr double OtherLine = 12;
        constexpr double ManyLines = 48;  // no more than that: elsewhere it would not be better
        // What touches the border is not in the way.
        QxRect inner(rect.left() + 1, rect.bottom() + 1, rect.right() - 1, rect.top() - 1);
        m_shown.find(inner, false);
        m_hits += static_cast<std::int64_t>(m_shown.count());
        double cost = outOfTheBox(label, rect);
        for (const auto* labels : {&m_shown.nodeLabels, &m_shown.edgeLabels,
                                   &m_shown.connectorLabels, &m_shown.graphLabels}) {
            cost += labelCost(*labels, label, rect);
        }
        for (const QxDNode* node : m_shown.nodes) {
            cost += nodeCost(*node, label, rect);
        }
        for (const QxConnector* connector : m_shown.connectors) {
            QxRect port;
            connector->ntBoundingRect(port);
            cost += port.width() > 0 ? inTheWay(rect, port) : 0;
        }
        double others = 0;
        for (const QxPEdge* segment : m_shown.segments) {
            const bool isOwn = segment->pOwnerEdge() == label.pOwnerEdge();
            (isOwn ? cost : others) += isOwn ? OwnLine : OtherLine;
        }
        cost += std::min(others, ManyLines);
        return cost;
    }

private:
    /// A label of something in a nested graph belongs into its box, which it would stretch.
    static double outOfTheBox(const QxLabel& label, const QxRect& rect) {
        constexpr double Outside = 100;
        const QxGraphObject* owner = label.pOwnerGraphObject();
        const QxDGraph* graph = nullptr;
        if (const QxDEdge* edge = label.pOwnerEdge()) {
            graph = edge->pOwnerGraph();
        } else if (owner != nullptr && owner->isNode() != 0) {
            graph = static_cast<const QxDNode*>(owner)->pOwnerGraph();
        }
        const QxDNode* box = graph != nullptr ? graph->pNestedWithinNode() : nullptr;
        return box == nullptr || isWithin(rect, *box->pIRect()) ? 0 : Outside;
    }

    static bool isWithin(const QxRect& rect, const QxRect& around) {
        return rect.left() >= around.left() && rect.right() <= around.right() &&
               rect.bottom() >= around.bottom() && rect.top() <= around.top();
    }

    static double inTheWay(const QxRect& a, const QxRect& b) {
        constexpr double Hidden = 1000;
        const double width = std::min(a.right(), b.right()) - std::max(a.left(), b.left());
        const double height = std::min(a.top(), b.top()) - std::max(a.bottom(), b.bottom());
        return width > 0 && height > 0 ? Hidden + width * height : 0;
    }

    static double nodeCost(const QxDNode& node, const QxLabel& label, const QxRect& rect) {
        constexpr double AtBorder = 30;
        const QxRect& other = *node.pIRect();
        const QxConnector* port = label.pOwnerConnector();
        if (port != nullptr && port->pOwnerNode() == &node && isWithin(rect, other)) {
            return 0;
        }
        if (node.expanded() != 0) {
            return isWithin(rect, other) ? 0 : AtBorder;
        }
        return inTheWay(rect, other);
    }

    double labelCost(const std::vector<QxLabel*>& labels, const QxLabel& label,
                     const QxRect& rect) const {
        double cost = 0;
        for (const QxLabel* one : labels) {
            if (one != &label && m_settled.contains(one)) {
                QxRect other;
                one->getBoundingRect(other, 0);
                cost += inTheWay(rect, other);
            }
        }
        return cost;
    }

    ShownObjects m_shown;
    std::int64_t m_hits = 0;
    std::unordered_set<const QxLabel*> m_settled;
};

void settle(QxLabel& label, const std::vector<Place>& places, Obstacles& obstacles) {
    constexpr std::int64_t MostHitsOfALabel = 5000;
    constexpr std::int64_t MostHits = 4'000'000;
    const std::int64_t limit = std::min(obstacles.hits() + MostHitsOfALabel, MostHits);
    QxPoint best = label.ntCenter();
    double bestCost = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0;
         i < places.size() && bestCost > places[i].penalty && obstacles.hits() < limit; ++i) {
        const QxPoint center = toPoint(places[i].center);
        const double cost =
            places[i].penalty + obstacles.costAt(label, QxRect(center, label.ntSize()));
        if (cost < bestCost) {
            best = center;
            bestCost = cost;
        }
    }
    label.ntMoveTo(best);
    obstacles.settle(label);
}

}  // namespace

void moveLabelsApart(Drawing& drawing) {
    const BoundsRest rest(drawing);
    Obstacles obstacles(drawing);
    for (const DrawnLabel& drawn : drawing.labels()) {
        if (auto* label = dynamic_cast<QxConnectorLabel*>(drawn.label)) {
            settle(*label, placesOf(*label), obstacles);
        }
    }
    for (const DrawnLabel& drawn : drawing.labels()) {
        auto* label = dynamic_cast<QxNodeLabel*>(drawn.label);
        if (label != nullptr && !drawn.isInside) {
            settle(*label, placesOf(*label), obstacles);
        }
    }
    for (const DrawnLabel& drawn : drawing.labels()) {
        if (auto* label = dynamic_cast<QxEdgeLabel*>(drawn.label)) {
            settle(*label, placesOf(*label), obstacles);
        }
    }
}

}  // namespace qxdraw
