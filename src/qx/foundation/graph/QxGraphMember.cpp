// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/graph/QxGraphMember.h"

#include "qx/foundation/graph/QxChildGraphForest.h"
#include "qx/foundation/graph/QxChildGraphForestEdge.h"
#include "qx/foundation/graph/QxGraphManager.h"
#include "qx/foundation/graph/internal/GraphObjectExtras.h"

QxGraphMember::QxGraphMember(QxOwnedObject* owner)
    : QxExtendableGraphObject(owner), m_ownerCell(this) {
    if (QxGraph* graph = pUnverifiedOwnerGraph()) {
        graph->m_detachedMembers.appendCell(&m_ownerCell);
    }
}

QxGraphMember::~QxGraphMember() {
    endNesting();
    if (m_ownerCell.isLinked() != 0 && ownerValid() == 0) {
        if (QxGraph* graph = pUnverifiedOwnerGraph()) {
            graph->m_detachedMembers.removeCell(&m_ownerCell);
        }
    }
}

void QxGraphMember::actOnDiscard() {}

void QxGraphMember::endNesting() {
    if (QxChildGraphForestEdge* relation = pChildGraphForestEdge()) {
        relation->pForest()->actOnDiscardGraphMember(this);
    }
}

QxChildGraphForestEdge* QxGraphMember::pChildGraphForestEdge() const {
    const qx::internal::GraphObjectExtras* extras = pQueryExtras();
    return extras != nullptr ? extras->forestEdge : nullptr;
}

QxGraph* QxGraphMember::pChildGraph() const {
    const QxChildGraphForestEdge* relation = pChildGraphForestEdge();
    return relation != nullptr ? relation->pChildGraph() : nullptr;
}

QxGraph* QxGraphMember::vSetChildGraph(QxGraph* graph) {
    const QxGraph* ownerGraph = pOwnerGraph();
    QxGraphManager* manager = ownerGraph != nullptr ? ownerGraph->pOwnerGraphManager() : nullptr;
    if (manager != nullptr) {
        manager->pChildGraphForest()->actOnSetChildGraph(this, graph);
    }
    return pChildGraph();
}

void QxGraphMember::actOnChangeOwner(QxOwnedObject* owner, int valid) {
    pOwner(owner);
    ownerValid(valid);
}
