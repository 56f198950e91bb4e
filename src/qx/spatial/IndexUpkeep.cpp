// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/spatial/internal/IndexUpkeep.h"

#include <array>

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxEdgeLabel.h"
#include "qx/drawing/QxNodeLabel.h"
#include "qx/drawing/QxPEdge.h"
#include "qx/drawing/QxPNode.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/spatial/internal/IndexStore.h"

namespace qx::internal {

namespace {

QxQTree* treeOf(const QxDGraph* graph) {
    return graph != nullptr ? graph->pQuadTree() : nullptr;
}

}  // namespace

template <class Object>
void IndexUpkeep::tell(Object& object, IndexKind kind) {
    if (QxQTree* tree = treeOf(indexGraphOf(object, kind))) {
        tree->m_store->changed(object, kind, tree->follows());
    }
}

template <class Object>
void IndexUpkeep::tellEnded(Object& object, IndexKind kind) {
    if (QxQTree* tree = treeOf(indexGraphOf(object, kind))) {
        tree->m_store->ended(object, kind);
    }
}

template <class Owner>
void IndexUpkeep::tellLabels(Owner& owner) {
    if (const auto* labels = owner.pLabelList()) {
        for (QxLabel* label : each<QxLabel>(*labels)) {
            changed(*label);
        }
    }
}

void IndexUpkeep::changed(QxDNode& node) {
    if (treeOf(node.pOwnerGraph()) != nullptr) {
        tell(node, IndexKind::Node);
        tellLabels(node);
    }
}

void IndexUpkeep::changed(QxConnector& connector) {
    if (treeOf(connector.pGraph()) != nullptr) {
        tell(connector, IndexKind::Connector);
        tellLabels(connector);
    }
}

void IndexUpkeep::changed(QxLabel& label) {
    if (treeOf(label.pGraph()) != nullptr) {
        tell(label, *indexKindOf(label));
    }
}

void IndexUpkeep::labelsChanged(QxDEdge& edge) {
    if (treeOf(edge.pOwnerGraph()) != nullptr) {
        tellLabels(edge);
    }
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

void IndexUpkeep::labelsChanged(QxDGraph& graph) {
    if (graph.pQuadTree() != nullptr) {
        tellLabels(graph);
    }
}

void IndexUpkeep::ended(QxDNode& node) {
    if (treeOf(node.pOwnerGraph()) == nullptr) {
        return;
    }
    tellEnded(node, IndexKind::Node);
}

void IndexUpkeep::ended(QxConnector& connector) {
    if (treeOf(connector.pGraph()) == nullptr) {
        return;
    }
    tellEnded(connector, IndexKind::Connector);
}

void IndexUpkeep::ended(QxLabel& label) {
    tellEnded(label, *indexKindOf(label));
}

void IndexUpkeep::ended(QxPNode& bend) {
    tellEnded(bend, IndexKind::PathNode);
}

void IndexUpkeep::ended(QxPEdge& segment) {
    tellEnded(segment, IndexKind::PathEdge);
}

void IndexUpkeep::ended(QxDEdge& edge) {
    if (treeOf(edge.pOwnerGraph()) == nullptr) {
        return;
    }
    tellEnded(edge, IndexKind::PathEdge);
}

void IndexUpkeep::fetchAt(const QxDNode& node) {
    const QxQTree* tree = treeOf(node.pOwnerGraph());
    if (tree == nullptr || tree->m_store->isPending()) {
        return;
    }
    node.fetchEdges();
    constexpr std::size_t Most = 16;
    std::array<std::int32_t, Most> slots{node.m_indexSlot};
    std::size_t count = 1;
    for (const QxEdgeDList* list : {node.pInEdgeList(), node.pOutEdgeList()}) {
        const QxDListCell* cell = list->pFirstCell();
        for (; cell != nullptr && count < Most; cell = cell->pNextCell(), ++count) {
            const auto& edge = *static_cast<const QxDEdge*>(cell->pObject());
            // An edge between graphs has its slot in the index of those.
            slots[count] =
                edge.pOwnerGraph() == tree->pOwnerGraph() ? edge.m_indexSlot : NoIndexSlot;
        }
    }
    const QuadEngine& engine = tree->m_store->engine();
    const auto eachSlot = [&](const auto& act) {
        for (std::size_t i = 0; i < count; ++i) {
            if (slots[i] != NoIndexSlot) {
                act(static_cast<std::uint32_t>(slots[i]));
            }
        }
    };
    eachSlot([&](std::uint32_t slot) { engine.fetchSlot(slot); });
    eachSlot([&](std::uint32_t slot) { engine.fetchRecord(slot); });
}

void IndexUpkeep::segmentMade(QxDEdge& edge, QxPEdge& segment) {
    if (QxQTree* tree = treeOf(edge.pOwnerGraph())) {
        tree->m_store->replace(edge, segment, IndexKind::PathEdge);
        if (edge.isCurvedEdge() != 0) {
            tell(segment, IndexKind::PathEdge);
        }
    }
}

void IndexUpkeep::impliedSegmentEnded(QxDEdge& edge) {
    tellEnded(edge, IndexKind::PathEdge);
}

}  // namespace qx::internal
