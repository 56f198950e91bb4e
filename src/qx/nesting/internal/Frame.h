// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

#include "qx/foundation/geometry/QxDTuple.h"
#include "qx/foundation/geometry/QxPoint.h"

class QxDEdge;
class QxDGraph;

namespace qx::internal {

/// The graph in whose coordinates a graph keeps its contents: a hide graph in those of the graph
/// it hides from, the edges between graphs in those of the anchor graph. Null for null, and when
/// there is no anchor graph.
const QxDGraph* frameOf(const QxDGraph* graph);

/// How points of one graph lie in another. Unlike the mappings of QxDGraph it leads through
/// collapsed nodes, too, whose contents have the coordinates of the graph around: so nothing is
/// lost while they do not show. Between graphs that nothing holds together coordinates stay.
class FrameMap {
public:
    FrameMap() = default;
    FrameMap(const QxDGraph* from, const QxDGraph* to);

    bool isIdentity() const;
    /// Rounded so that a way out and back ends where it began, unless the map scales.
    QxPoint operator()(const QxPoint& point) const;
    QxDTuple exact(const QxDTuple& point) const {
        return {point.x() * m_scaleX + m_offsetX, point.y() * m_scaleY + m_offsetY};
    }
    double scaleX() const { return m_scaleX; }
    double scaleY() const { return m_scaleY; }

private:
    double m_offsetX = 0.0;
    double m_scaleX = 1.0;
    double m_offsetY = 0.0;
    double m_scaleY = 1.0;
};

/// Away from 0, so that a shift and its opposite undo each other.
std::int32_t roundedShift(double shift);

/// Places the bends, and the labels that are pinned to a place, of an edge anew.
void mapBends(QxDEdge& edge, const FrameMap& map);

}  // namespace qx::internal
