// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// The neighbourhoods of drawing nodes: searches in the node's graph, and in what is hidden from it.

#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/nesting/QxFindChilPar.h"

namespace {

/// A search that starts at a node; nothing happens, lists included, when nobody wants the results.
struct Search {
    const QxDNode& node;
    int direction;
    std::int32_t depth;
    int bothDirections;

    bool isWanted(const QxDList* nodes, const QxDList* edges) const {
        return node.pOwnerGraph() != nullptr && (nodes != nullptr || edges != nullptr);
    }

    void inGraph(QxDList* nodes, QxDList* edges) const {
        if (isWanted(nodes, edges)) {
            run(nodes, edges, nullptr);
        }
    }

    void inBothGraphs(QxDList* nodes, QxDList* edges) const {
        if (isWanted(nodes, edges)) {
            run(nodes, edges, node.pOwnerGraph()->pHideGraph());
        }
    }

    void amongHidden(QxDList* nodes, QxDList* edges) const {
        const QxDGraph* const hidden =
            isWanted(nodes, edges) ? node.pOwnerGraph()->pHideGraph() : nullptr;
        if (hidden == nullptr) {
            return;
        }
        QxDNodeDList foundNodes;
        QxDEdgeDList foundEdges;
        run(&foundNodes, edges != nullptr ? &foundEdges : nullptr, hidden);
        const auto give = [&](QxDList& found, QxDList* result) {
            if (result != nullptr) {
                result->deleteAllCells();
                hidden->splitListIntoOwnedAndOthers(&found, result);
            }
        };
        give(foundNodes, nodes);
        give(foundEdges, edges);
    }

private:
    void run(QxDList* nodes, QxDList* edges, const QxDGraph* secondGraph) const {
        // The search marks the node for as long as it runs; nothing else about it changes.
        QxFindChilPar search(node.pOwnerGraph(), const_cast<QxDNode*>(&node), nodes, edges, depth,
                             secondGraph, bothDirections != 0 ? QxFindChilPar::Both : direction);
        search.run();
    }
};

}  // namespace

void QxDNode::findChildren(QxDNodeDList* nodes, QxDEdgeDList* edges, std::int32_t depth,
                           int bothDirections) const {
    Search{*this, QxFindChilPar::Children, depth, bothDirections}.inGraph(nodes, edges);
}

void QxDNode::findParents(QxDNodeDList* nodes, QxDEdgeDList* edges, std::int32_t depth,
                          int bothDirections) const {
    Search{*this, QxFindChilPar::Parents, depth, bothDirections}.inGraph(nodes, edges);
}

void QxDNode::findHiddenAndUnhiddenChildren(QxDNodeDList* nodes, QxDEdgeDList* edges,
                                            std::int32_t depth, int bothDirections) const {
    Search{*this, QxFindChilPar::Children, depth, bothDirections}.inBothGraphs(nodes, edges);
}

void QxDNode::findHiddenAndUnhiddenParents(QxDNodeDList* nodes, QxDEdgeDList* edges,
                                           std::int32_t depth, int bothDirections) const {
    Search{*this, QxFindChilPar::Parents, depth, bothDirections}.inBothGraphs(nodes, edges);
}

void QxDNode::findHiddenChildren(QxDNodeDList* nodes, QxDEdgeDList* edges, std::int32_t depth,
                                 int bothDirections) const {
    Search{*this, QxFindChilPar::Children, depth, bothDirections}.amongHidden(nodes, edges);
}

void QxDNode::findHiddenParents(QxDNodeDList* nodes, QxDEdgeDList* edges, std::int32_t depth,
                                int bothDirections) const {
    Search{*this, QxFindChilPar::Parents, depth, bothDirections}.amongHidden(nodes, edges);
}
