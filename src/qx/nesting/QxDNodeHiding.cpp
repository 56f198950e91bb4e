// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Hiding, showing and folding what lies around a node.

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/foundation/util/internal/Ref.h"
#include "qx/nesting/internal/Collection.h"

using qx::internal::Collection;
using qx::internal::Ref;

namespace {

/// In no graph nothing is found; but the result lists are emptied all the same.
void hideIn(QxDGraph* graph, const QxDNodeDList& found, QxDNodeDList* nodes, QxDEdgeDList* edges) {
    if (graph != nullptr) {
        graph->hide(&found, nullptr, nodes, edges);
    } else {
        Collection().listInto(nodes, edges);
    }
}

void unhideIn(QxDGraph* graph, const QxDNodeDList& found, QxDNodeDList* nodes,
              QxDEdgeDList* edges) {
    if (graph != nullptr) {
        graph->unhide(&found, nullptr, nodes, edges, 1);
    } else {
        Collection().listInto(nodes, edges);
    }
}

struct Fold {
    QxDNode* folder;
    QxDGraph* foldGraph;
    QxDNodeDList* nodes;
    QxDEdgeDList* edges;
    int keepHidden;
};

/// Folds what was found around the node and, with `withNode`, the node, where the folder goes then.
int foldFound(QxDNode& node, QxDNodeDList& found, bool withNode, const Fold& fold) {
    QxDGraph* const graph = node.pOwnerGraph();
    if (graph == nullptr) {
        Collection().listInto(fold.nodes, fold.edges);
        return 0;
    }
    const Ref alive(node);
    const Ref<QxDNode> folder(fold.folder);
    if (withNode) {
        found.appendNode(&node);
    }
    const int isDone =
        graph->fold(fold.folder, fold.foldGraph, &found, fold.nodes, fold.edges, fold.keepHidden);
    if (isDone != 0 && withNode && folder->pOwnerGraph() != nullptr) {
        folder->moveTo(node.iCenter(), 1);
    }
    return isDone;
}

}  // namespace

void QxDNode::hideChildren(std::int32_t depth, QxDNodeDList* hiddenNodeList,
                           QxDEdgeDList* hiddenEdgeList, int visibleOnly, int bothDirections) {
    QxDNodeDList found;
    if (visibleOnly != 0) {
        findChildren(&found, nullptr, depth, bothDirections);
    } else {
        findHiddenAndUnhiddenChildren(&found, nullptr, depth, bothDirections);
    }
    hideIn(pOwnerGraph(), found, hiddenNodeList, hiddenEdgeList);
}

void QxDNode::hideParents(std::int32_t depth, QxDNodeDList* hiddenNodeList,
                          QxDEdgeDList* hiddenEdgeList, int visibleOnly, int bothDirections) {
    QxDNodeDList found;
    if (visibleOnly != 0) {
        findParents(&found, nullptr, depth, bothDirections);
    } else {
        findHiddenAndUnhiddenParents(&found, nullptr, depth, bothDirections);
    }
    hideIn(pOwnerGraph(), found, hiddenNodeList, hiddenEdgeList);
}

void QxDNode::unhideChildren(std::int32_t depth, QxDNodeDList* unhiddenNodeList,
                             QxDEdgeDList* unhiddenEdgeList, int bothDirections) {
    QxDNodeDList found;
    findHiddenAndUnhiddenChildren(&found, nullptr, depth, bothDirections);
    unhideIn(pOwnerGraph(), found, unhiddenNodeList, unhiddenEdgeList);
}

void QxDNode::unhideParents(std::int32_t depth, QxDNodeDList* unhiddenNodeList,
                            QxDEdgeDList* unhiddenEdgeList, int bothDirections) {
    QxDNodeDList found;
    findHiddenAndUnhiddenParents(&found, nullptr, depth, bothDirections);
    unhideIn(pOwnerGraph(), found, unhiddenNodeList, unhiddenEdgeList);
}

QxDEdge* QxDNode::unhideIncidentEdge(QxDEdge* edge) {
    if (edge == nullptr || edge->pOwnerGraph() == nullptr ||
        (edge->pSourceNode() != this && edge->pTargetNode() != this)) {
        return nullptr;
    }
    const Ref alive(*edge);
    const auto hiddenFrom = [](const QxDGraph* hideGraph) {
        return hideGraph != nullptr ? hideGraph->pHideFromGraph() : nullptr;
    };
    QxDNodeDList nodes;
    QxDEdgeDList edges;
    auto* const other = static_cast<QxDNode*>(edge->pOtherNode(this));
    QxDGraph* const nodesGraph = other != nullptr && other != this && hidden() == 0
                                     ? hiddenFrom(other->pOwnerGraph())
                                     : nullptr;
    QxDGraph* const edgesGraph = hidden() == 0 ? hiddenFrom(edge->pOwnerGraph()) : nullptr;
    if (nodesGraph != nullptr) {
        nodes.appendNode(other);
    }
    if (edgesGraph != nullptr) {
        edges.appendEdge(edge);
    }
    if (nodesGraph != nullptr && nodesGraph != edgesGraph) {
        nodesGraph->unhide(&nodes, nullptr, nullptr, nullptr, 0);
    }
    if (edgesGraph != nullptr) {
        edgesGraph->unhide(&nodes, &edges, nullptr, nullptr, 0);
    }
    return edge->ownerValid() != 0 && edge->hidden() == 0 ? edge : nullptr;
}

void QxDNode::buildIncidentHiddenEdgeList(QxDEdgeDList& list) const {
    buildIncidentHiddenEdgeList(list, 1);
}

void QxDNode::buildIncidentHiddenEdgeList(QxDEdgeDList& list, int includeAll) const {
    const auto isOpen = [](const QxDEdge& edge) {
        const QxDNode* const source = edge.pSourceNode();
        const QxDNode* const target = edge.pTargetNode();
        return source != nullptr && target != nullptr &&
               (source->pOwnerGraph() == target->pOwnerGraph() ||
                (source->hidden() == 0 && target->hidden() == 0));
    };
    Collection collected;
    for (const QxEdgeDList* edges : {pInEdgeList(), pOutEdgeList(), pDisconnectedEdgeList()}) {
        collected.addEdges(edges, [&](const QxDEdge& edge) {
            return edge.hidden() != 0 && (includeAll != 0 || isOpen(edge));
        });
    }
    collected.listInto(nullptr, &list);
}

int QxDNode::foldChildren(QxDNode* folderNode, QxDGraph* foldGraph, std::int32_t depth,
                          QxDNodeDList* foldedNodeList, QxDEdgeDList* foldedEdgeList,
                          int includeSelf, int keepHidden, int bothDirections) {
    QxDNodeDList found;
    findChildren(&found, nullptr, depth, bothDirections);
    return foldFound(*this, found, includeSelf != 0,
                     {folderNode, foldGraph, foldedNodeList, foldedEdgeList, keepHidden});
}

int QxDNode::foldParents(QxDNode* folderNode, QxDGraph* foldGraph, std::int32_t depth,
                         QxDNodeDList* foldedNodeList, QxDEdgeDList* foldedEdgeList,
                         int includeSelf, int keepHidden, int bothDirections) {
    QxDNodeDList found;
    findParents(&found, nullptr, depth, bothDirections);
    return foldFound(*this, found, includeSelf != 0,
                     {folderNode, foldGraph, foldedNodeList, foldedEdgeList, keepHidden});
}

int QxDNode::unfold(QxDNodeDList* unfoldedNodeList, QxDEdgeDList* unfoldedEdgeList,
                    int keepHidden) {
    if (QxDGraph* const graph = pOwnerGraph()) {
        return graph->unfold(this, unfoldedNodeList, unfoldedEdgeList, keepHidden);
    }
    Collection().listInto(unfoldedNodeList, unfoldedEdgeList);
    return 0;
}
