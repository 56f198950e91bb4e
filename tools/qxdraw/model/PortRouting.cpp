// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "model/PortRouting.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "qx/foundation/geometry/QxShape.h"

namespace qxdraw {

namespace {

/// An end of an edge: where the path starts, at which side of which rectangle.
struct End {
    DocumentPoint place;
    QxSideEnum side = QxSideNone;  ///< none: there is no port on the outline
    QxRect node;
};

/// Whether edges leave the port in the middle of the node, where it has no side.
bool isWithin(const QxConnector& port, const QxDNode& node) {
    const QxRect& rect = *node.pIRect();
    const QxPoint place = port.ntCenter();
    const bool isOutlineRect = node.pShape() == nullptr || node.pShape()->isRectangular() != 0;
    return isOutlineRect && place.x() > rect.left() && place.x() < rect.right() &&
           place.y() > rect.bottom() && place.y() < rect.top();
}

End endOf(const QxDEdge& edge, bool atSource) {
    const QxDNode& node = atSource ? *edge.pSourceNode() : *edge.pTargetNode();
    const QxConnector* port = atSource ? edge.pSourceConnector() : edge.pTargetConnector();
    End end{toPlace(atSource ? edge.ntFromPoint(0) : edge.ntToPoint(0)), QxSideNone,
            *node.pIRect()};
    if (port != nullptr && !isWithin(*port, node)) {
        end.side = node.closestSide(port);
    }
    return end;
}

DocumentPoint normalOf(QxSideEnum side) {
    constexpr std::array<DocumentPoint, 5> Normals = {{{-1, 0}, {0, -1}, {1, 0}, {0, 1}, {0, 0}}};
    return Normals[static_cast<std::size_t>(side)];
}

bool isUpright(QxSideEnum side) {
    return side == QxSideLeft || side == QxSideRight;
}

/// Where a side lies that has been moved out by `distance`.
double coordinateOf(const QxRect& rect, QxSideEnum side, double distance) {
    switch (side) {
        case QxSideLeft:
            return rect.left() - distance;
        case QxSideBottom:
            return rect.bottom() - distance;
        case QxSideRight:
            return rect.right() + distance;
        default:
            return rect.top() + distance;
    }
}

DocumentPoint inFrontOf(const End& end, double distance) {
    const double out = coordinateOf(end.node, end.side, distance);
    return isUpright(end.side) ? DocumentPoint{out, end.place.y} : DocumentPoint{end.place.x, out};
}

DocumentPoint cornerAt(const QxRect& rect, QxSideEnum a, QxSideEnum b, double distance) {
    const double first = coordinateOf(rect, a, distance);
    const double second = coordinateOf(rect, b, distance);
    return isUpright(a) ? DocumentPoint{first, second} : DocumentPoint{second, first};
}

/// From the port outward; around the next corner where the other end lies behind the node.
std::vector<DocumentPoint> wayOut(const End& end, const DocumentPoint& other, double distance) {
    constexpr double Shallow = 0.25;  // sine of the angle at which an edge hugs the node
    const DocumentPoint normal = normalOf(end.side);
    const auto ahead = [&](const DocumentPoint& from) {
        const double dx = other.x - from.x;
        const double dy = other.y - from.y;
        return (dx * normal.x + dy * normal.y) / std::max(std::hypot(dx, dy), 1.0);
    };
    if (end.side == QxSideNone || ahead(end.place) > Shallow) {
        return {};
    }
    std::vector<DocumentPoint> way{inFrontOf(end, distance)};
    if (ahead(way.back()) < 0) {
        const bool isUp = isUpright(end.side);
        const bool isPositive = isUp ? other.y > end.place.y : other.x > end.place.x;
        const QxSideEnum next = isUp ? (isPositive ? QxSideTop : QxSideBottom)
                                     : (isPositive ? QxSideRight : QxSideLeft);
        way.push_back(cornerAt(end.node, end.side, next, distance));
    }
    return way;
}

/// A small bow in front of a port that both ends share.
std::vector<DocumentPoint> bowAt(const End& end, double distance) {
    const DocumentPoint front = inFrontOf(end, 1.5 * distance);
    const double reach = distance / 2;
    return isUpright(end.side)
               ? std::vector<DocumentPoint>{{front.x, front.y + reach}, {front.x, front.y - reach}}
               : std::vector<DocumentPoint>{{front.x - reach, front.y}, {front.x + reach, front.y}};
}

}  // namespace

std::vector<DocumentPoint> wayAroundNodes(const QxDEdge& edge, double distance) {
    const End source = endOf(edge, true);
    const End target = endOf(edge, false);
    std::vector<DocumentPoint> way = wayOut(source, target.place, distance);
    std::vector<DocumentPoint> back =
        wayOut(target, way.empty() ? source.place : way.back(), distance);
    way.insert(way.end(), back.rbegin(), back.rend());
    return way;
}

std::vector<DocumentPoint> loopBetweenPorts(const QxDEdge& edge, double distance) {
    End source = endOf(edge, true);
    End target = endOf(edge, false);
    if (source.side != QxSideNone && source.place.x == target.place.x &&
        source.place.y == target.place.y) {
        return bowAt(source, distance);
    }
    if (source.side == QxSideNone) {
        source.side = target.side == QxSideTop ? QxSideRight : QxSideTop;
    }
    if (target.side == QxSideNone) {
        target.side = source.side == QxSideTop ? QxSideRight : QxSideTop;
    }
    // Sides are numbered in turn around the rectangle.
    const int turns = (static_cast<int>(target.side) - static_cast<int>(source.side) + 4) % 4;
    const int step = turns == 3 ? 3 : 1;
    std::vector<DocumentPoint> way{inFrontOf(source, distance)};
    for (int side = source.side; side != target.side; side = (side + step) % 4) {
        way.push_back(cornerAt(source.node, static_cast<QxSideEnum>(side),
                               static_cast<QxSideEnum>((side + step) % 4), distance));
    }
    way.push_back(inFrontOf(target, distance));
    return way;
}

}  // namespace qxdraw
