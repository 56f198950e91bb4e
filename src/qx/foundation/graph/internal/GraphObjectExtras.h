// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <memory>

#include "qx/foundation/graph/QxGraphDLists.h"
#include "qx/foundation/util/QxText.h"

class QxChildGraphForestEdge;
class QxObject;

namespace qx::internal {

/// What most nodes never have: edges that are not connected.
struct IdleEdges {
    QxEdgeDList disconnected;
    QxEdgeDList deactivated;
};

/// Where an edge between graphs is listed by the graphs of its ends.
struct GraphCells {
    explicit GraphCells(QxObject* edge) : sourceCell(edge), targetCell(edge) {}
    QxDListCell sourceCell;
    QxDListCell targetCell;
    QxDList* sourceList = nullptr;
    QxDList* targetList = nullptr;
};

/// What few graph objects use: name, user fields, the relation to a child graph, and the lists of
/// unusual edges. Classes with more such state derive from it, so that all of it costs a plain
/// object one pointer.
struct GraphObjectExtras {
    GraphObjectExtras() = default;
    GraphObjectExtras(const GraphObjectExtras&) = delete;
    GraphObjectExtras& operator=(const GraphObjectExtras&) = delete;
    virtual ~GraphObjectExtras() = default;

    QxText name;
    bool named = false;
    std::int64_t userField = 0;
    QxObject* userObject = nullptr;
    std::int64_t internalField = 0;
    QxObject* internalObject = nullptr;
    QxChildGraphForestEdge* forestEdge = nullptr;
    std::unique_ptr<IdleEdges> idleEdges;    ///< of a node
    std::unique_ptr<GraphCells> graphCells;  ///< of an edge

    /// Whether nothing is kept here any more.
    virtual bool isIdle() const {
        return !named && userField == 0 && userObject == nullptr && internalField == 0 &&
               internalObject == nullptr && forestEdge == nullptr && !idleEdges && !graphCells;
    }
};

}  // namespace qx::internal
