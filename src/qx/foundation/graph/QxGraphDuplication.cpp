// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Copying and duplicating the contents of graphs. The scratch field of every source object links
// it to its duplicate while the work runs.

#include "qx/foundation/graph/QxEdge.h"
#include "qx/foundation/graph/QxGraph.h"
#include "qx/foundation/graph/QxNode.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/foundation/graph/internal/GraphChange.h"
#include "qx/foundation/graph/internal/GraphObjectExtras.h"
#include "qx/foundation/graph/internal/Twins.h"

using qx::internal::each;
using qx::internal::Ref;
using qx::internal::Snapshot;

void QxGraph::copyGraph(const QxGraph* source, int deep) {
    if (source == nullptr || source == this) {
        return;
    }
    const Ref sourceAlive(*source);
    copyName(*source);
    if (deep != 0) {
        emptyTopology();
        // Only the scratch fields of the source are written, and cleared again.
        auto* scratched = const_cast<QxGraph*>(source);
        internalDuplicateTopology(scratched, 1, 1);
        scratched->nullInternalUserFields();
    }
}

void QxGraph::duplicateTopology(QxGraph* source, int disconnected, int deactivated) {
    if (source != nullptr && source != this) {
        const Ref sourceAlive(*source);
        internalDuplicateTopology(source, disconnected, deactivated);
        source->nullInternalUserFields();
    }
}

void QxGraph::internalDuplicateTopology(QxGraph* source, int disconnected, int deactivated) {
    if (source != nullptr && source != this) {
        const Ref sourceAlive(*source);
        Twins twins;
        duplicateNodesOf(source, twins);
        duplicateEdgesOf(source, disconnected, deactivated, twins);
        restoreIncidenceOrderOf(source);
        twins.unlinkUnless([&](const QxOwnedObject* owner) { return owner == source; });
    }
}

void QxGraph::duplicateNodesOf(const QxGraph* source, Twins& twins) {
    for (QxNode* node : Snapshot<QxNode>(&source->m_nodes)) {
        QxNode* twin = vNewNode(0);
        if (twin == nullptr) {
            continue;
        }
        twins.keep(twin);
        twin->copyNode(node, 0);
        if (vInsertNode(twin) == nullptr) {
            twin->vRelease();
            continue;
        }
        twin->internalDuplicateTopology(node);
        twins.link(node, twin);
    }
}

void QxGraph::duplicateEdgesOf(const QxGraph* source, int disconnected, int deactivated,
                               Twins& twins) {
    for (QxEdge* edge : Snapshot<QxEdge>(&source->m_edges)) {
        duplicateEdge(edge, twins);
    }
    if (disconnected != 0) {
        for (QxEdge* edge : Snapshot<QxEdge>(&source->m_disconnectedEdges)) {
            if (QxEdge* twin = duplicateEdge(edge, twins)) {
                twin->disconnect();
            }
        }
    }
    if (deactivated != 0) {
        for (QxEdge* edge : Snapshot<QxEdge>(&source->m_deactivatedEdges)) {
            if (QxEdge* twin = duplicateEdge(edge, twins)) {
                twin->deactivate();
            }
        }
    }
}

QxEdge* QxGraph::duplicateEdge(QxEdge* source, Twins& twins) {
    const auto twinOf = [](QxNode* node) {
        return node != nullptr ? static_cast<QxNode*>(node->pIUserField()) : nullptr;
    };
    QxNode* from = twinOf(source->pSourceNode());
    QxNode* to = twinOf(source->pTargetNode());
    QxEdge* twin = from != nullptr && to != nullptr ? vNewEdge(0) : nullptr;
    if (twin == nullptr) {
        return nullptr;  // an end lies outside what is being duplicated
    }
    twins.keep(twin);
    twin->copyEdge(source, 0);
    if (vInsertEdge(twin, from, to) == nullptr) {
        twin->vRelease();
        return nullptr;
    }
    twin->duplicateTopology(source);
    twins.link(source, twin);
    return twin;
}

void QxGraph::restoreIncidenceOrderOf(const QxGraph* source) {
    for (const QxNode* node : each<QxNode>(source->m_nodes)) {
        if (auto* twin = static_cast<QxNode*>(node->pIUserField())) {
            twin->orderEdgesLike(node);
        }
    }
}

void QxGraph::orderIntergraphEdgesLike(const QxGraph* source) {
    constexpr std::pair<QxEdgeDList QxGraph::*, QxGraphListEnum> Lists[] = {
        {&QxGraph::m_enteringIntergraphEdges, QxListOfEnteringEdges},
        {&QxGraph::m_leavingIntergraphEdges, QxListOfLeavingEdges},
        {&QxGraph::m_unconnectedIntergraphEdges, QxListOfUnconnectedEdges}};
    for (const auto& [list, which] : Lists) {
        QxEdgeDList& own = this->*list;
        const QxDListCell* cell = (source->*list).pFirstCell();
        for (; cell != nullptr; cell = cell->pNextCell()) {
            const auto* edge = static_cast<const QxEdge*>(cell->pObject());
            const auto* twin = static_cast<const QxEdge*>(edge->pIUserField());
            if (twin == nullptr || twin->pGraphCells() == nullptr) {
                continue;
            }
            qx::internal::GraphCells& cells = *twin->pGraphCells();
            const bool atTarget = cell == &edge->pGraphCells()->targetCell;
            if ((atTarget ? cells.targetList : cells.sourceList) == &own) {
                own.transferCell(atTarget ? &cells.targetCell : &cells.sourceCell, &own);
            }
        }
        if (own.count() > 1) {
            qx::internal::tellOrderChanged(*this, which, own);
        }
    }
}
