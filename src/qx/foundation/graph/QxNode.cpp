// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/graph/QxNode.h"

#include <ostream>

#include "qx/foundation/graph/QxEdge.h"
#include "qx/foundation/graph/QxGraph.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/foundation/graph/internal/GraphChange.h"
#include "qx/foundation/graph/internal/GraphObjectExtras.h"
#include "qx/foundation/util/QxDebugStream.h"
#include "qx/foundation/util/internal/Ref.h"

using qx::internal::each;
using qx::internal::GraphChange;
using qx::internal::IdleEdges;
using qx::internal::Ref;
using qx::internal::Snapshot;

namespace {

const QxEdgeDList& emptyList() {
    static const QxEdgeDList none;
    return none;
}

}  // namespace

QxNode::QxNode(QxOwnedObject* owner) : QxGraphMember(owner) {}

QxNode::~QxNode() {
    endNesting();
    detachEdges();
    if (QxGraph* graph = pOwnerGraph()) {
        graph->removeNode(this);
    }
}

void QxNode::detachEdges() {
    if (isPlainlyBare()) {
        return;
    }
    for (const QxEdgeDList* list :
         {pInEdgeList(), pOutEdgeList(), pDisconnectedEdgeList(), pDeactivatedEdgeList()}) {
        while (const QxDListCell* cell = list->pFirstCell()) {
            const Ref edge(static_cast<QxEdge*>(cell->pObject()));
            if (edge->connected() != 0 || edge->deactivated() != 0) {
                edge->settleAsDisconnected();
            }
            GraphChange change(*edge, *edge, EdgeEndsChanged);
            edge->nullEndNodes();
            change.tell();
        }
    }
}

int QxNode::isNode() const {
    return 1;
}

std::size_t QxNode::sizeOf() const {
    return QxGraphMember::sizeOf() + sizeof(QxNode) - sizeof(QxGraphMember) +
           (pIdleEdges() != nullptr ? sizeof(IdleEdges) : 0);
}

int QxNode::checkInvariants() const {
    for (const QxEdge* edge : each<QxEdge>(m_inEdges)) {
        if (edge->pTargetNode() != this || edge->connected() == 0) {
            qxDebugStream() << "node: an in-edge does not end here or is not connected\n";
            return 0;
        }
    }
    for (const QxEdge* edge : each<QxEdge>(m_outEdges)) {
        if (edge->pSourceNode() != this || edge->connected() == 0) {
            qxDebugStream() << "node: an out-edge does not start here or is not connected\n";
            return 0;
        }
    }
    const auto endsHere = [this](const QxEdge* edge) {
        return edge->pSourceNode() == this || edge->pTargetNode() == this;
    };
    for (const QxEdge* edge : each<QxEdge>(*pDisconnectedEdgeList())) {
        if (!endsHere(edge) || edge->disconnected() == 0) {
            qxDebugStream() << "node: a disconnected edge has no end here or is in another state\n";
            return 0;
        }
    }
    for (const QxEdge* edge : each<QxEdge>(*pDeactivatedEdgeList())) {
        if (!endsHere(edge) || edge->deactivated() == 0) {
            qxDebugStream() << "node: a deactivated edge has no end here or is in another state\n";
            return 0;
        }
    }
    for (const QxEdgeDList* list :
         {pInEdgeList(), pOutEdgeList(), pDisconnectedEdgeList(), pDeactivatedEdgeList()}) {
        if (list->checkInvariants() == 0) {
            return 0;
        }
    }
    return 1;
}

void QxNode::copyObject(const QxObject* source) {
    if (source != nullptr && source != this) {
        copyNode(static_cast<const QxNode*>(source), 1);
    }
}

void QxNode::copyAttributes(const QxObject* source) {
    if (source != nullptr && source != this) {
        copyNode(static_cast<const QxNode*>(source), 0);
    }
}

void QxNode::debugOutput(int depth) const {
    innerDebugOutput(depth);
    debugOutputEdges(depth + 1);
}

void QxNode::innerDebugOutput(int depth) const {
    qxDebugIndent(depth) << "node: in " << inDegree() << ", out " << outDegree()
                         << ", disconnected " << pDisconnectedEdgeList()->count() << '\n';
}

void QxNode::debugOutputEdges(int depth) const {
    for (const QxEdge* edge : each<QxEdge>(m_inEdges)) {
        edge->debugOutput(depth);
    }
    for (const QxEdge* edge : each<QxEdge>(m_outEdges)) {
        edge->debugOutput(depth);
    }
}

void QxNode::emptyTopology() {}

void QxNode::duplicateTopology(QxNode* source) {
    if (source != nullptr && source != this) {
        internalDuplicateTopology(source);
        source->nullInternalUserFields();
    }
}

void QxNode::internalDuplicateTopology(QxNode*) {}

void QxNode::actOnInitEndNode(QxEdge*) {}

void QxNode::actOnChangeSourceNode(QxEdge*, QxNode*, QxNode*) {}

void QxNode::actOnChangeTargetNode(QxEdge*, QxNode*, QxNode*) {}

void QxNode::actOnConnectEdge(QxEdge*) {}

void QxNode::actOnDisconnectEdge(QxEdge*) {}

void QxNode::actOnActivateEdge(QxEdge*) {}

void QxNode::actOnDeactivateEdge(QxEdge*) {}

void QxNode::copyNode(const QxNode* source, int) {
    if (source != nullptr && source != this) {
        copyName(*source);
    }
}

int QxNode::intergraphNode() const {
    const QxGraph* graph = pUnverifiedOwnerGraph();
    return graph != nullptr ? graph->isIntergraph() : 0;
}

const QxEdgeDList* QxNode::pDisconnectedEdgeList() const {
    const IdleEdges* idle = pIdleEdges();
    return idle != nullptr ? &idle->disconnected : &emptyList();
}

const QxEdgeDList* QxNode::pDeactivatedEdgeList() const {
    const IdleEdges* idle = pIdleEdges();
    return idle != nullptr ? &idle->deactivated : &emptyList();
}

IdleEdges* QxNode::pIdleEdges() const {
    const qx::internal::GraphObjectExtras* extras = pQueryExtras();
    return extras != nullptr ? extras->idleEdges.get() : nullptr;
}

IdleEdges& QxNode::idleEdges() {
    std::unique_ptr<IdleEdges>& idle = extras().idleEdges;
    if (!idle) {
        idle = std::make_unique<IdleEdges>();
    }
    return *idle;
}

QxEdge* QxNode::pFirstInEdge() const {
    return static_cast<QxEdge*>(m_inEdges.pFirstObject());
}

QxEdge* QxNode::pFirstOutEdge() const {
    return static_cast<QxEdge*>(m_outEdges.pFirstObject());
}

QxEdge* QxNode::pDisconnectedInEdge() const {
    for (QxEdge* edge : each<QxEdge>(*pDisconnectedEdgeList())) {
        if (edge->pTargetNode() == this) {
            return edge;
        }
    }
    return nullptr;
}

std::int32_t QxNode::countDisconnected(bool incoming) const {
    // A self-loop has a cell for each of its ends here; only the one asked for counts.
    std::int32_t count = 0;
    const QxDListCell* cell = pDisconnectedEdgeList()->pFirstCell();
    for (; cell != nullptr; cell = cell->pNextCell()) {
        const QxEdge* edge = static_cast<QxEdge*>(cell->pObject());
        count += cell == (incoming ? &edge->m_targetCell : &edge->m_sourceCell) ? 1 : 0;
    }
    return count;
}

std::int32_t QxNode::disconnectedInDegree() const {
    return countDisconnected(true);
}

std::int32_t QxNode::disconnectedOutDegree() const {
    return countDisconnected(false);
}

QxEdge* QxNode::pDegreeTwoOrLessNodeOtherEdge(const QxEdge* edge) const {
    QxEdge* other = nullptr;
    std::int32_t ends = 0;
    for (const QxEdgeDList* list :
         {pInEdgeList(), pOutEdgeList(), pDisconnectedEdgeList(), pDeactivatedEdgeList()}) {
        ends += list->count();
        if (ends > 2) {
            return nullptr;
        }
        for (QxEdge* incident : each<QxEdge>(*list)) {
            if (incident != edge) {
                other = incident;
            }
        }
    }
    return other;
}

std::int32_t QxNode::connectDisconnectedEdges() {
    std::int32_t connected = 0;
    for (QxEdge* edge : Snapshot<QxEdge>(pDisconnectedEdgeList())) {
        if (edge->pSourceNode() == this || edge->pTargetNode() == this) {
            connected += edge->connect();
        }
    }
    return connected;
}

void QxNode::disconnectEdges() {
    const Ref alive(*this);
    for (QxEdge* edge : Snapshot<QxEdge>{&m_inEdges, &m_outEdges}) {
        if (edge->pSourceNode() == this || edge->pTargetNode() == this) {
            edge->disconnect();
        }
    }
}

std::int32_t QxNode::transferInEdges(QxNode* node) {
    std::int32_t moved = 0;
    if (node != nullptr && node != this) {
        const Ref alive(*this);
        const Ref nodeAlive(*node);
        for (QxEdge* edge : Snapshot<QxEdge>(&m_inEdges)) {
            moved += edge->pTargetNode() == this ? edge->changeTargetNode(node) : 0;
        }
    }
    return moved;
}

std::int32_t QxNode::transferOutEdges(QxNode* node) {
    std::int32_t moved = 0;
    if (node != nullptr && node != this) {
        const Ref alive(*this);
        const Ref nodeAlive(*node);
        for (QxEdge* edge : Snapshot<QxEdge>(&m_outEdges)) {
            moved += edge->pSourceNode() == this ? edge->changeSourceNode(node) : 0;
        }
    }
    return moved;
}

int QxNode::moveEndToBack(QxEdge* edge, int atTarget) {
    if (edge == nullptr || (atTarget != 0 ? edge->m_target : edge->m_source) != this ||
        !edge->listsAt(this)) {
        return 0;
    }
    QxDListCell& cell = atTarget != 0 ? edge->m_targetCell : edge->m_sourceCell;
    if (cell.isLinked() == 0) {
        return 0;
    }
    QxEdgeDList& list =
        edge->endList(this, atTarget != 0 ? &QxNode::m_inEdges : &QxNode::m_outEdges);
    list.transferCell(&cell, &list);
    return 1;
}

void QxNode::orderEdgesLike(const QxNode* source) {
    const auto reorder = [this](const QxEdgeDList& from, QxEdgeDList& to, QxGraphListEnum list) {
        const QxDListCell* cell = from.pFirstCell();
        for (; cell != nullptr; cell = cell->pNextCell()) {
            const QxEdge* edge = static_cast<QxEdge*>(cell->pObject());
            const bool atTarget = cell == &edge->m_targetCell;
            QxEdge* twin = static_cast<QxEdge*>(edge->pIUserField());
            const bool sameState = twin != nullptr && twin->connected() == edge->connected() &&
                                   twin->deactivated() == edge->deactivated();
            if (sameState && (atTarget ? twin->m_target : twin->m_source) == this) {
                to.transferCell(atTarget ? &twin->m_targetCell : &twin->m_sourceCell, &to);
            }
        }
        if (to.count() > 1) {
            qx::internal::tellOrderChanged(*this, list, to);
        }
    };
    reorder(source->m_inEdges, m_inEdges, QxListOfInEdges);
    reorder(source->m_outEdges, m_outEdges, QxListOfOutEdges);
    const IdleEdges* from = source->pIdleEdges();
    IdleEdges* to = pIdleEdges();
    if (from != nullptr && to != nullptr) {
        reorder(from->disconnected, to->disconnected, QxListOfDisconnectedEdges);
        reorder(from->deactivated, to->deactivated, QxListOfDeactivatedEdges);
    }
}
