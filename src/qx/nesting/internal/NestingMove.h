// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/foundation/geometry/QxTransform.h"
#include "qx/foundation/util/internal/Ref.h"

namespace qx::internal {

/// Appends `graph` and all graphs in it: nested, collapsed, folded, and what is hidden from any of
/// them. For a hide graph: of the graph that it hides from.
void appendContents(QxDGraph& graph, std::vector<QxDGraph*>& graphs);

/// While it lives the transform of a graph changes, and with it the place of everything in the
/// graph. The edges between graphs come along at its end: those with both ends inside move as a
/// whole, their bends with them, those with one end inside only at this end.
class [[nodiscard]] NestingMove {
public:
    explicit NestingMove(QxDGraph& graph);
    ~NestingMove();
    NestingMove(const NestingMove&) = delete;
    NestingMove& operator=(const NestingMove&) = delete;

private:
    struct Part {
        Ref<QxDEdge> edge;
        bool isInside;
    };

    void collect();
    void moveBends(QxDEdge& edge) const;

    Ref<QxDGraph> m_graph;
    const QxDGraph* m_anchor;
    QxTransform m_before;
    BetweenHold m_held;
    std::vector<Part> m_edges;
};

}  // namespace qx::internal
