// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "model/Ports.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <tuple>

#include "model/FieldLayout.h"

namespace qxdraw {

namespace {

constexpr std::int32_t MarkExtent = 8;
constexpr std::array<DocumentPoint, 4> Sides = {{{-1, 0}, {0, -1}, {1, 0}, {0, 1}}};
constexpr int NoSide = 4;

/// A place for a connector; of the places of one port, `side` tells which.
struct PortPlace {
    int side;
    DocumentPoint center;
    QxSize size;
    bool isInside;
};

class PortConnection {
public:
    PortConnection(Drawing& drawing, const GraphDocument& document)
        : m_drawing(drawing), m_document(document) {}

    void run() {
        noteOtherEnds();
        for (std::size_t i = 0; i < m_document.nodes.size(); ++i) {
            if (m_drawing.node(i).isVisible() == 0) {
                continue;
            }
            for (std::size_t port = 0; port < m_document.nodes[i].ports.size(); ++port) {
                if (m_document.nodes[i].ports[port].isMarked) {
                    connectorAt(i, port, {});
                }
            }
        }
        for (std::size_t i = 0; i < m_document.edges.size(); ++i) {
            const DocumentEdge& edge = m_document.edges[i];
            QxDEdge& drawn = m_drawing.edge(i);
            if (drawn.isVisible() == 0) {
                continue;
            }
            connectInside(drawn);
            if (edge.sourcePort >= 0) {
                drawn.pSourceConnector(&connectorAt(index(edge.source), index(edge.sourcePort),
                                                    centerOf(edge.target)));
            }
            if (edge.targetPort >= 0) {
                drawn.pTargetConnector(&connectorAt(index(edge.target), index(edge.targetPort),
                                                    centerOf(edge.source)));
            }
        }
    }

private:
    using PortKey = std::pair<std::size_t, std::size_t>;

    static std::size_t index(int value) { return static_cast<std::size_t>(value); }
    const DocumentPoint& centerOf(int node) const { return *m_document.nodes[index(node)].center; }

    /// For ports whose place is left open: where their edges lead, on the whole.
    void noteOtherEnds() {
        for (std::size_t i = 0; i < m_document.edges.size(); ++i) {
            const DocumentEdge& edge = m_document.edges[i];
            if (m_drawing.edge(i).isVisible() != 0) {
                noteOtherEnd(edge.source, edge.sourcePort, edge.target);
                noteOtherEnd(edge.target, edge.targetPort, edge.source);
            }
        }
    }

    /// An edge between a node and something that is shown in it ends at the border, near the other
    /// end; toward the middle of the node nothing of it would be seen.
    void connectInside(QxDEdge& edge) {
        QxDNode& source = *edge.pSourceNode();
        QxDNode& target = *edge.pTargetNode();
        if (isShownIn(target, source)) {
            edge.pSourceConnector(&borderConnector(source, *target.pIRect()));
        } else if (isShownIn(source, target)) {
            edge.pTargetConnector(&borderConnector(target, *source.pIRect()));
        }
    }

    QxConnector& borderConnector(QxDNode& node, const QxRect& inner) {
        const QxRect& rect = *node.pIRect();
        const DocumentPoint center = toPlace(inner.center());
        const std::array<DocumentPoint, 4> places = {{{1.0 * rect.left(), center.y},
                                                      {center.x, 1.0 * rect.bottom()},
                                                      {1.0 * rect.right(), center.y},
                                                      {center.x, 1.0 * rect.top()}}};
        const std::array<double, 4> gaps = {
            1.0 * inner.left() - rect.left(), 1.0 * inner.bottom() - rect.bottom(),
            1.0 * rect.right() - inner.right(), 1.0 * rect.top() - inner.top()};
        const auto nearest = std::min_element(gaps.begin(), gaps.end()) - gaps.begin();
        return m_drawing.addConnector(node, places[static_cast<std::size_t>(nearest)],
                                      QxSize(0, 0));
    }

    void noteOtherEnd(int node, int port, int other) {
        if (port >= 0) {
            DocumentPoint& sum = m_ways[{index(node), index(port)}];
            sum.x += centerOf(other).x - centerOf(node).x;
            sum.y += centerOf(other).y - centerOf(node).y;
        }
    }

    QxConnector& connectorAt(std::size_t node, std::size_t port, const DocumentPoint& other) {
        const PortPlace place = placeOf(node, port, other);
        QxConnector*& connector = m_connectors[{node, port, place.side}];
        if (connector == nullptr) {
            connector = &m_drawing.addPort(node, port, place.center, place.size, place.isInside);
        }
        return *connector;
    }

    PortPlace placeOf(std::size_t node, std::size_t port, const DocumentPoint& other) {
        const DocumentNode& owner = m_document.nodes[node];
        const DocumentPort& source = owner.ports[port];
        if (!source.field.empty()) {
            if (const PlacedField* field = findField(node, source.field)) {
                return placeAtField(owner, source, *field, other);
            }
        }
        DocumentPoint way = source.place.value_or(DocumentPoint{});
        way = {way.x * owner.width / 2, way.y * owner.height / 2};
        if (way.x == 0 && way.y == 0) {
            way = m_ways[{node, port}];
        }
        const std::int32_t extent = source.isMarked ? MarkExtent : 0;
        return {NoSide, outlineAt(m_drawing.node(node), way), QxSize(extent, extent), false};
    }

    /// Where the way from the center leaves the outline; without a way, on the right.
    static DocumentPoint outlineAt(const QxDNode& node, DocumentPoint way) {
        way = way.x == 0 && way.y == 0 ? DocumentPoint{1, 0} : way;
        const DocumentPoint center = toPlace(node.ntCenter());
        const double far = 2.0 * (node.ntWidth() + node.ntHeight() + 1) / std::hypot(way.x, way.y);
        QxPoint place = toPoint({center.x + way.x * far, center.y + way.y * far});
        return node.intersectsSegment(place, node.ntCenter(), 1) != 0 ? toPlace(place) : center;
    }

    const PlacedField* findField(std::size_t node, const std::string& name) {
        const auto [found, isNew] = m_fields.try_emplace(node);
        if (isNew) {
            for (const PlacedField& field : placeFields(m_document.nodes[node])) {
                found->second.emplace(field.field->port, field);  // the first of a name counts
            }
        }
        const auto field = found->second.find(name);
        return field == found->second.end() ? nullptr : &field->second;
    }

    static PortPlace placeAtField(const DocumentNode& node, const DocumentPort& port,
                                  const PlacedField& field, const DocumentPoint& other) {
        const DocumentPoint middle = field.center();
        const DocumentPoint half{(field.right - field.left) / 2, (field.top - field.bottom) / 2};
        const auto onField = [&](const DocumentPoint& side) {
            return DocumentPoint{node.center->x + middle.x + side.x * half.x,
                                 node.center->y + middle.y + side.y * half.y};
        };
        if (port.place) {
            const bool isInside = !isOnBorder(node, field, *port.place);
            return {NoSide, onField(*port.place), QxSize(0, 0), isInside};
        }
        int best = NoSide;
        double bestFacing = -2;
        for (int side = 0; side < NoSide; ++side) {
            const DocumentPoint& normal = Sides[static_cast<std::size_t>(side)];
            if (!isOnBorder(node, field, normal)) {
                continue;
            }
            const DocumentPoint from = onField(normal);
            const double dx = other.x - from.x;
            const double dy = other.y - from.y;
            const double facing =
                (dx * normal.x + dy * normal.y) / std::max(std::hypot(dx, dy), 1.0);
            if (facing > bestFacing) {
                best = side;
                bestFacing = facing;
            }
        }
        if (best == NoSide) {
            return {NoSide, onField({0, 0}),
                    QxSize(static_cast<std::int32_t>(std::lround(2 * half.x)),
                           static_cast<std::int32_t>(std::lround(2 * half.y))),
                    true};
        }
        return {best, onField(Sides[static_cast<std::size_t>(best)]), QxSize(0, 0), false};
    }

    /// Whether that side (or corner) of the field lies on the border of a rectangular node.
    static bool isOnBorder(const DocumentNode& node, const PlacedField& field,
                           const DocumentPoint& side) {
        constexpr double Same = 0.5;
        const auto onBorder = [](double low, double high, double half, double way) {
            return (way < 0 && low + half < Same) || (way > 0 && half - high < Same);
        };
        return node.shape.kind == ShapeKind::Rectangle &&
               (onBorder(field.left, field.right, node.width / 2, side.x) ||
                onBorder(field.bottom, field.top, node.height / 2, side.y));
    }

    Drawing& m_drawing;
    const GraphDocument& m_document;
    std::map<PortKey, DocumentPoint> m_ways;
    std::map<std::tuple<std::size_t, std::size_t, int>, QxConnector*> m_connectors;
    std::map<std::size_t, std::map<std::string, PlacedField>> m_fields;
};

}  // namespace

void connectPorts(Drawing& drawing, const GraphDocument& document) {
    const BoundsRest rest(drawing);
    PortConnection(drawing, document).run();
}

}  // namespace qxdraw
