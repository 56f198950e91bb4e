// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxGeometricUpdateInfo.h"
#include "qx/drawing/QxPNode.h"
#include "qx/foundation/util/internal/KeepAlive.h"

/// The one sequence that every change of a drawing runs through: records open, the objects report
/// what they cover, the change is made, they report again, the records close in reverse order and
/// update the bounds of their graphs. The entry in the spatial index follows, once there is one.
namespace qx::internal {

/// The records of a change at a node: for its graph and for the edges between graphs.
struct UpdateRecords {
    explicit UpdateRecords(QxDGraph* graph) : own(graph, 0, 1), intergraph(graph, 1, 1) {}
    ~UpdateRecords() {
        intergraph.enableAndRestoreState();
        own.enableAndRestoreState();
    }
    UpdateRecords(const UpdateRecords&) = delete;
    UpdateRecords& operator=(const UpdateRecords&) = delete;

    QxGeometricUpdateInfo own;
    QxGeometricUpdateInfo intergraph;
};

/// A change that takes the node out of what its graph covers and puts it back in.
template <class Change>
void replaceNode(QxDNode& node, const Change& change) {
    const KeepAlive alive(node);
    QxDGraph* const graph = node.pOwnerGraph();
    UpdateRecords records(graph);
    node.actBeforeRemove(&records.own, &records.intergraph, 1, 1, 1, 1);
    change();
    if (node.pOwnerGraph() == graph) {
        node.actAfterInsert(&records.own, &records.intergraph, 1, 1, 1, 1);
    }
}

/// A change of the node's place or size.
template <class Change>
void changeNodeGeometry(QxDNode& node, const Change& change) {
    const KeepAlive alive(node);
    QxDGraph* const graph = node.pOwnerGraph();
    UpdateRecords records(graph);
    node.actBeforeGeometryChanges(&records.own, &records.intergraph, 1, 1, 1, 1);
    change();
    if (node.pOwnerGraph() == graph) {
        node.actAfterGeometryChanges(&records.own, &records.intergraph, 1, 1, 1, 1);
    }
}

/// A move of a bend.
template <class Change>
void changeBendGeometry(QxPNode& bend, const Change& change) {
    const KeepAlive alive(bend);
    QxDGraph* const graph = bend.pOwnerGraph();
    QxGeometricUpdateInfo record(graph, 0, 1);
    bend.actBeforeGeometryChanges(&record, 1, 1);
    change();
    if (bend.pOwnerGraph() == graph) {
        bend.actAfterGeometryChanges(&record, 1, 1);
    }
    record.enableAndRestoreState();
}

/// A change of the edge's path or ends.
template <class Change>
void replaceEdge(QxDEdge& edge, const Change& change) {
    const KeepAlive alive(edge);
    QxDGraph* const graph = edge.pOwnerGraph();
    QxGeometricUpdateInfo record(graph, 0, 1);
    edge.actBeforeRemove(&record, 1, 1);
    change();
    edge.invalidateEndPoints();
    if (edge.pOwnerGraph() == graph) {
        edge.actAfterInsert(&record, 1, 1);
    }
    record.enableAndRestoreState();
}

}  // namespace qx::internal
