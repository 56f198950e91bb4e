// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <utility>
#include <vector>

#include "drawing/DrawingTesting.h"
#include "qx/drawing/QxEdgeVisiblePointDListIter.h"
#include "qx/drawing/QxPathIter.h"

namespace qxtest {

/// A point that prints and compares.
using Place = std::array<std::int32_t, 2>;
using Places = std::vector<Place>;

inline Place placeOf(const QxPoint& point) {
    return {point.x(), point.y()};
}

inline QxPoint pointAt(const Place& place) {
    return {place[0], place[1]};
}

inline Places bendsOf(const QxDEdge* edge) {
    QxPNodeDList bends;
    edge->buildPathNodeList(bends);
    Places places;
    for (const QxPNode* bend : QxPNodeDListIter(&bends)) {
        places.push_back(placeOf(bend->iCenter()));
    }
    return places;
}

/// The segments in order, whatever the state of the edge.
inline std::vector<QxPEdge*> segmentsOf(const QxDEdge* edge) {
    std::vector<QxPEdge*> segments;
    for (QxDisconnectedPathIter it(edge); it; ++it) {
        segments.push_back(it.pEdge());
    }
    return segments;
}

/// What is drawn of the edge.
inline Places visiblePointsOf(QxDEdge* edge, QxIterDirectionEnum direction = QxIterForward) {
    Places places;
    for (QxEdgeVisiblePointDListIter it(edge, 1, direction); it; ++it) {
        QxPoint point;
        it.getPoint(point);
        places.push_back(placeOf(point));
    }
    return places;
}

/// Gives the edge these bends.
inline int reroute(QxDEdge* edge, const Places& places) {
    QxPointDList points;
    for (const Place& place : places) {
        points.appendPoint(pointAt(place));
    }
    return edge->reroute(points, 1);
}

/// A source and a target of 20 by 20, 200 apart, and an edge between them.
class EdgeDrawing : public SmallDrawing {
public:
    explicit EdgeDrawing(QxFactory& made) : SmallDrawing(made) { events.take(); }

    QxDNode* source = addNode(0, 0, 20, 20);
    QxDNode* target = addNode(200, 0, 20, 20);
    QxDEdge* edge = addEdge(source, target);
};

}  // namespace qxtest
