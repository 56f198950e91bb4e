// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/spatial/internal/IndexUpkeep.h"

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxPEdge.h"
#include "qx/drawing/QxPNode.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/spatial/internal/IndexStore.h"

namespace qx::internal {

namespace {

QxQTree* treeOf(const QxDGraph* graph) {
    return graph != nullptr ? graph->pQuadTree() : nullptr;
}

}  // namespace

template <class Object>
void IndexUpkeep::tell(Object& object, IndexKind kind) {
    if (QxQTree* tree = treeOf(object.pOwnerGraph())) {
        tree->m_store->changed(object, kind, tree->follows());
    }
}

template <class Object>
void IndexUpkeep::tellEnded(Object& object, IndexKind kind) {
    if (QxQTree* tree = treeOf(object.pOwnerGraph())) {
        tree->m_store->ended(object, kind);
    }
}

void IndexUpkeep::changed(QxDNode& node) {
    tell(node, IndexKind::Node);
}

void IndexUpkeep::changed(QxPNode& bend) {
    if (treeOf(bend.pOwnerGraph()) == nullptr) {
        return;
    }
    tell(bend, IndexKind::PathNode);
    for (QxEdge* segment : {bend.pFirstInEdge(), bend.pFirstOutEdge()}) {
        if (segment != nullptr) {
            tell(*static_cast<QxPEdge*>(segment), IndexKind::PathEdge);
        }
    }
}

void IndexUpkeep::changed(QxPEdge& segment) {
    tell(segment, IndexKind::PathEdge);
}

void IndexUpkeep::endsChanged(QxDEdge& edge) {
    if (treeOf(edge.pOwnerGraph()) == nullptr) {
        return;
    }
    if (edge.isPathImplied()) {
        tell(edge, IndexKind::PathEdge);
        return;
    }
    QxPEdge* const first = edge.m_sourcePathEdge;
    QxPEdge* const last = edge.m_targetPathEdge;
    if (first != nullptr) {
        tell(*first, IndexKind::PathEdge);
    }
    if (last != nullptr && last != first) {
        tell(*last, IndexKind::PathEdge);
    }
}

void IndexUpkeep::countChanged(QxDEdge& edge) {
    if (treeOf(edge.pOwnerGraph()) == nullptr) {
        return;
    }
    if (edge.isPathImplied()) {
        tell(edge, IndexKind::PathEdge);
    }
    for (auto part = edge.madeParts(); part; ++part) {
        tell(*part.pEdge(), IndexKind::PathEdge);
        if (part.pNode() != nullptr) {
            tell(*part.pNode(), IndexKind::PathNode);
        }
    }
}

void IndexUpkeep::ended(QxDNode& node) {
    tellEnded(node, IndexKind::Node);
}

void IndexUpkeep::ended(QxPNode& bend) {
    tellEnded(bend, IndexKind::PathNode);
}

void IndexUpkeep::ended(QxPEdge& segment) {
    tellEnded(segment, IndexKind::PathEdge);
}

void IndexUpkeep::ended(QxDEdge& edge) {
    tellEnded(edge, IndexKind::PathEdge);
}

}  // namespace qx::internal
