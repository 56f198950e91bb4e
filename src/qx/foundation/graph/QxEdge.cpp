// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/graph/QxEdge.h"

#include <ostream>

#include "qx/foundation/graph/QxChildGraphForest.h"
#include "qx/foundation/graph/QxGraph.h"
#include "qx/foundation/graph/QxGraphManager.h"
#include "qx/foundation/graph/QxNode.h"
#include "qx/foundation/graph/internal/GraphChange.h"
#include "qx/foundation/graph/internal/GraphObjectExtras.h"
#include "qx/foundation/util/QxDebugStream.h"
#include "qx/foundation/util/internal/Ref.h"

using qx::internal::GraphCells;
using qx::internal::GraphChange;
using qx::internal::Ref;

QxEdge::QxEdge(QxOwnedObject* owner)
    : QxGraphMember(owner), m_sourceCell(this), m_targetCell(this) {}

QxEdge::~QxEdge() {
    endNesting();
    if (hasFlag(qx::flags::PathObject) == 0) {
        if (QxGraph* graph = pOwnerGraph()) {
            graph->removeEdge(this);
        }
    }
    leaveGraphLists();
    leaveEndLists();
}

int QxEdge::isEdge() const {
    return 1;
}

std::size_t QxEdge::sizeOf() const {
    return QxGraphMember::sizeOf() + sizeof(QxEdge) - sizeof(QxGraphMember) +
           (pGraphCells() != nullptr ? sizeof(GraphCells) : 0);
}

int QxEdge::checkInvariants() const {
    if (connected() != 0 && (m_source == nullptr || m_target == nullptr || ownerValid() == 0)) {
        qxDebugStream() << "edge: connected without two ends and an owner\n";
        return 0;
    }
    return 1;
}

void QxEdge::copyObject(const QxObject* source) {
    if (source != nullptr && source != this) {
        copyEdge(static_cast<const QxEdge*>(source), 1);
    }
}

void QxEdge::copyAttributes(const QxObject* source) {
    if (source != nullptr && source != this) {
        copyEdge(static_cast<const QxEdge*>(source), 0);
    }
}

void QxEdge::debugOutput(int depth) const {
    innerDebugOutput(depth);
}

void QxEdge::innerDebugOutput(int depth) const {
    const char* state = deactivated() != 0 ? "deactivated"
                        : connected() != 0 ? "connected"
                                           : "disconnected";
    qxDebugIndent(depth) << "edge: " << state << (reflexive() != 0 ? ", self-loop" : "") << '\n';
}

QxNode* QxEdge::pOtherNode(const QxNode* node) const {
    if (node == m_source) {
        return m_target;
    }
    return node == m_target ? m_source : nullptr;
}

int QxEdge::intergraphEdge() const {
    if (const QxGraph* graph = pOwnerGraph()) {
        return graph->isIntergraph();
    }
    return m_source != nullptr && m_target != nullptr &&
                   m_source->pOwnerGraph() != m_target->pOwnerGraph()
               ? 1
               : 0;
}

QxGraph* QxEdge::pNearestCommonGraph() const {
    if (m_source == nullptr || m_target == nullptr) {
        return nullptr;
    }
    QxGraph* first = m_source->pOwnerGraph();
    QxGraph* second = m_target->pOwnerGraph();
    if (first == second || first == nullptr || second == nullptr) {
        return first == second ? first : nullptr;
    }
    const QxGraphManager* manager = first->pOwnerGraphManager();
    return manager != nullptr ? manager->pChildGraphForest()->pNearestCommonGraph(first, second)
                              : nullptr;
}

int QxEdge::disconnect() {
    if (connected() == 0 || deactivated() != 0) {
        return 0;
    }
    GraphChange change(*this, *this, EdgeDisconnected);
    changeState(0, qx::flags::EdgeConnected);
    vFollowState();
    tellEnds(&QxGraph::actOnDisconnectEdge, &QxGraph::actOnDisconnectIntergraphEdge,
             &QxNode::actOnDisconnectEdge);
    change.tell();
    return 1;
}

int QxEdge::vConnect() {
    if (disconnected() == 0 || canConnect(m_source) == 0 || canConnect(m_target) == 0) {
        return 0;
    }
    // The insertion tells of itself.
    GraphChange change;
    if (hasFlag(BeingInserted) == 0) {
        change = GraphChange(*this, *this, EdgeConnected);
    }
    changeState(qx::flags::EdgeConnected, 0);
    vFollowState();
    tellEnds(&QxGraph::actOnConnectEdge, &QxGraph::actOnConnectIntergraphEdge,
             &QxNode::actOnConnectEdge);
    change.tell();
    return 1;
}

int QxEdge::deactivate() {
    if (deactivated() != 0) {
        return 1;
    }
    if (connected() == 0) {
        return 0;
    }
    GraphChange change(*this, *this, EdgeDeactivated);
    changeState(qx::flags::EdgeDeactivated, 0);
    vFollowState();
    tellEnds(&QxGraph::actOnDeactivateEdge, &QxGraph::actOnDeactivateIntergraphEdge,
             &QxNode::actOnDeactivateEdge);
    change.tell();
    return 1;
}

int QxEdge::activate() {
    if (deactivated() == 0) {
        return 1;
    }
    if (canConnect(m_source) == 0 || canConnect(m_target) == 0) {
        settleAsDisconnected();  // an end has left meanwhile
        return 0;
    }
    GraphChange change(*this, *this, EdgeActivated);
    changeState(0, qx::flags::EdgeDeactivated);
    vFollowState();
    tellEnds(&QxGraph::actOnActivateEdge, &QxGraph::actOnActivateIntergraphEdge,
             &QxNode::actOnActivateEdge);
    change.tell();
    return 1;
}

int QxEdge::connect(QxNode* source, QxNode* target) {
    for (const QxNode* node : {source, target}) {
        if (disconnected() == 0 || canEnd(node) == 0 || canConnect(node) == 0) {
            return 0;
        }
    }
    const Ref alive(*this);
    const Ref targetAlive(*target);
    if (changeSourceNodeWithoutConnect(source) == 0 ||
        changeTargetNodeWithoutConnect(target) == 0) {
        return 0;
    }
    return vConnect();
}

int QxEdge::changeSourceNodeWithoutConnect(QxNode* node) {
    return changeEnd(m_source, node, true);
}

int QxEdge::changeTargetNodeWithoutConnect(QxNode* node) {
    return changeEnd(m_target, node, false);
}

int QxEdge::changeEnd(QxNode*& end, QxNode* node, bool source) {
    if (end == node) {
        return 1;
    }
    if (ownerValid() == 0 && hasFlag(qx::flags::PathObject) == 0) {
        return 0;  // the node would not know of the edge, and could be gone before it
    }
    const bool attached = connected() != 0 || deactivated() != 0;
    if (canEnd(node) == 0 || (attached && canConnect(node) == 0)) {
        return 0;
    }
    const Ref alive(*this);
    const Ref oldNode(end);
    GraphChange change(*this, *this, EdgeEndsChanged);
    leaveEndLists();
    end = node;
    if (ownerValid() != 0) {
        enterEndLists();
        updateGraphCells();
    }
    vFollowEnds();
    tellOfChangedEnd(oldNode.get(), node, source);
    change.tell();
    return 1;
}

void QxEdge::tellOfChangedEnd(QxNode* oldNode, QxNode* node, bool source) {
    const QxNode* const& end = source ? m_source : m_target;
    const auto hook = source ? &QxNode::actOnChangeSourceNode : &QxNode::actOnChangeTargetNode;
    if (oldNode != nullptr) {
        (oldNode->*hook)(this, oldNode, node);
    }
    if (end == node) {
        (node->*hook)(this, oldNode, node);
    }
    if (end != node || intergraphEdge() == 0 || hasFlag(qx::flags::PathObject) != 0) {
        return;
    }
    const auto graphHook = source ? &QxGraph::actOnChangeSourceNodeAtIntergraphEdge
                                  : &QxGraph::actOnChangeTargetNodeAtIntergraphEdge;
    QxGraph* oldGraph = oldNode != nullptr ? oldNode->pOwnerGraph() : nullptr;
    if (oldGraph != nullptr) {
        (oldGraph->*graphHook)(this, oldNode, node);
    }
    QxGraph* newGraph = end == node ? node->pOwnerGraph() : nullptr;
    if (newGraph != nullptr && newGraph != oldGraph) {
        (newGraph->*graphHook)(this, oldNode, node);
    }
}

int QxEdge::changeEndNodes(QxNode* source, QxNode* target) {
    if (source == m_source && target == m_target) {
        return 1;
    }
    const bool attached = connected() != 0 || deactivated() != 0;
    const auto canChange = [&](const QxNode* end, const QxNode* node) {
        return (end == node || canEnd(node) != 0) && (!attached || canConnect(node) != 0);
    };
    if (!canChange(m_source, source) || !canChange(m_target, target)) {
        return 0;
    }
    const auto change = [&] {
        return changeSourceNodeWithoutConnect(source) != 0 &&
                       changeTargetNodeWithoutConnect(target) != 0
                   ? 1
                   : 0;
    };
    if (!attached || deactivated() != 0) {
        return change();
    }
    // Listeners hear of the edge while it is disconnected; they may discard any of the three.
    const Ref alive(*this);
    const Ref sourceAlive(*source);
    const Ref targetAlive(*target);
    const QxGraph* graph = pOwnerGraph();
    disconnect();
    if (pOwnerGraph() != graph) {
        return 0;
    }
    const int changed = canChange(m_source, source) && canChange(m_target, target) ? change() : 0;
    vConnect();
    return changed;
}

int QxEdge::reverse() {
    if (m_source == nullptr || m_target == nullptr) {
        return 0;
    }
    const Ref alive(*this);
    GraphChange change(*this, *this, EdgeReversed);
    leaveEndLists();
    std::swap(m_source, m_target);
    if (ownerValid() != 0) {
        enterEndLists();
        updateGraphCells();
    }
    vFollowReversal();
    const QxNode* const source = m_source;
    m_source->actOnChangeSourceNode(this, m_target, m_source);
    if (m_source == source && m_target != nullptr) {
        m_target->actOnChangeTargetNode(this, m_source, m_target);
    }
    change.tell();
    return 1;
}

void QxEdge::vFollowState() {}

void QxEdge::vFollowEnds() {}

void QxEdge::vFollowReversal() {}

QxEdge* QxEdge::pOriginalEdge() {
    return this;
}

const QxEdge* QxEdge::pOriginalEdge() const {
    return this;
}

void QxEdge::emptyTopology() {}

void QxEdge::duplicateTopology(QxEdge* source) {
    if (source != nullptr && source != this) {
        source->nullInternalUserFields();
    }
}

void QxEdge::copyEdge(const QxEdge* source, int) {
    if (source != nullptr && source != this) {
        copyName(*source);
    }
}

void QxEdge::nullEndNodes() {
    leaveGraphLists();
    leaveEndLists();
    m_source = nullptr;
    m_target = nullptr;
    if (connected() != 0 || deactivated() != 0) {
        changeState(0, qx::flags::EdgeConnected | qx::flags::EdgeDeactivated);
    }
}

int QxEdge::canEnd(const QxNode* node) const {
    if (node == nullptr) {
        return 0;
    }
    const bool pathNode = (node->flagWord() & qx::flags::PathObject) != 0;
    if (pathNode && hasFlag(qx::flags::PathObject) == 0) {
        return 0;  // only segments end at bends
    }
    return node->pOwner() == pOwner() || node->pUnverifiedFactory() == pUnverifiedFactory() ? 1 : 0;
}

int QxEdge::canConnect(const QxNode* node) const {
    const QxGraph* graph = pOwnerGraph();
    const QxGraph* nodeGraph = node != nullptr ? node->pOwnerGraph() : nullptr;
    if (graph == nullptr || nodeGraph == nullptr || graph->isHideGraph() != 0) {
        return 0;
    }
    if (graph->isIntergraph() != 0) {
        return nodeGraph->pOwnerGraphManager() == graph->pOwnerGraphManager() ? 1 : 0;
    }
    return nodeGraph == graph ? 1 : 0;
}

void QxEdge::initEndNodes(QxNode* source, QxNode* target) {
    m_source = source;
    m_target = target;
    source->actOnInitEndNode(this);
    target->actOnInitEndNode(this);
}

void QxEdge::placeEnds(QxNode* source, QxNode* target) {
    leaveEndLists();
    m_source = source;
    m_target = target;
    enterEndLists();
}

bool QxEdge::listsAt(const QxNode* node) const {
    // Bends list the segments at them, drawing nodes only whole edges.
    return node != nullptr && ((flagWord() ^ node->flagWord()) & qx::flags::PathObject) == 0;
}

QxEdgeDList& QxEdge::endList(QxNode* node, QxEdgeDList QxNode::*active) const {
    if (deactivated() != 0) {
        return node->idleEdges().deactivated;
    }
    return connected() != 0 ? node->*active : node->idleEdges().disconnected;
}

void QxEdge::enterEndLists() {
    if (listsAt(m_source)) {
        endList(m_source, &QxNode::m_outEdges).appendCell(&m_sourceCell);
    }
    if (listsAt(m_target)) {
        endList(m_target, &QxNode::m_inEdges).appendCell(&m_targetCell);
    }
}

void QxEdge::leaveEndLists() {
    if (m_sourceCell.isLinked() != 0) {
        endList(m_source, &QxNode::m_outEdges).removeCell(&m_sourceCell);
    }
    if (m_targetCell.isLinked() != 0) {
        endList(m_target, &QxNode::m_inEdges).removeCell(&m_targetCell);
    }
}

void QxEdge::changeState(std::uint32_t setBits, std::uint32_t clearBits, AtEnds atEnds) {
    leaveEndLists();
    const bool listed = hasFlag(qx::flags::PathObject) == 0;
    QxGraph* graph = pOwnerGraph();
    QxEdgeDList* oldList = listed ? &graph->listOfState(this) : nullptr;
    setFlag(setBits, 1);
    setFlag(clearBits | BeingInserted, 0);
    if (atEnds == AtEnds::Listed) {
        enterEndLists();
    }
    if (listed) {
        QxEdgeDList& list = graph->listOfState(this);
        if (&list != oldList || list.pLastCell() != pOwnerCell()) {
            list.transferCell(pOwnerCell(), oldList);
            m_listStamp = graph->nextListStamp();
        }
        updateGraphCells();
    }
}

void QxEdge::settleAsDisconnected() {
    if (deactivated() != 0) {
        GraphChange change(*this, *this, EdgeDisconnected);
        changeState(0, qx::flags::EdgeConnected | qx::flags::EdgeDeactivated);
        vFollowState();
        change.tell();
    } else {
        disconnect();
    }
}

void QxEdge::settleBetweenManagers() {
    const QxGraph* own = pOwnerGraph();
    const auto isElsewhere = [own](const QxNode* node) {
        const QxGraph* graph = node != nullptr ? node->pOwnerGraph() : nullptr;
        return graph != nullptr && graph->pOwnerGraphManager() != own->pOwnerGraphManager();
    };
    const bool attached = connected() != 0 || deactivated() != 0;
    if (own != nullptr && attached && (isElsewhere(m_source) || isElsewhere(m_target))) {
        settleAsDisconnected();
    }
}

void QxEdge::loseEnds() {
    const QxGraph* const graph = pOwnerGraph();
    // Its ends do not list it any more, since it would leave them again at once: they stay alive
    // until the edge has lost them, whatever the hooks do.
    const Ref sourceAlive(m_source);
    const Ref targetAlive(m_target);
    if (connected() != 0 && deactivated() == 0) {
        changeState(0, qx::flags::EdgeConnected, AtEnds::Unlisted);
        vFollowState();
        tellEnds(&QxGraph::actOnDisconnectEdge, &QxGraph::actOnDisconnectIntergraphEdge,
                 &QxNode::actOnDisconnectEdge);
    }
    if (pOwnerGraph() != graph) {
        enterEndLists();  // a hook has carried it off, with its ends
    } else {
        nullEndNodes();
        if (hasFlag(BeingInserted) != 0) {
            changeState(0, BeingInserted);
        }
    }
}

void QxEdge::tellEnds(GraphHook ownGraphHook, GraphHook endGraphHook, NodeHook nodeHook) {
    // A hook may change the edge again; the others have then been told of that, and the rest of
    // this story would come too late. While the ends are the same they are alive.
    const Ref alive(*this);
    QxGraph* const graph = pOwnerGraph();
    const auto stands = [this, graph, state = stateBits(), source = m_source, target = m_target] {
        return pOwnerGraph() == graph && stateBits() == state && m_source == source &&
               m_target == target;
    };
    if (graph->isIntergraph() != 0 && hasFlag(qx::flags::PathObject) == 0) {
        QxGraph* const sourceGraph = m_source->pOwnerGraph();
        if (sourceGraph != nullptr) {
            (sourceGraph->*endGraphHook)(this);
        }
        QxGraph* const targetGraph = stands() ? m_target->pOwnerGraph() : nullptr;
        if (targetGraph != nullptr && targetGraph != sourceGraph) {
            (targetGraph->*endGraphHook)(this);
        }
    } else {
        (graph->*ownGraphHook)(this);
    }
    if (stands()) {
        (m_source->*nodeHook)(this);
    }
    if (stands()) {
        (m_target->*nodeHook)(this);
    }
}

std::uint32_t QxEdge::stateBits() const {
    return flagWord() & (qx::flags::EdgeConnected | qx::flags::EdgeDeactivated);
}

void QxEdge::updateGraphCells() {
    if (intergraphEdge() == 0 || ownerValid() == 0 || hasFlag(qx::flags::PathObject) != 0) {
        return;
    }
    std::unique_ptr<GraphCells>& cells = extras().graphCells;
    if (!cells) {
        cells = std::make_unique<GraphCells>(this);
    }
    const bool active = connected() != 0 && deactivated() == 0;
    const auto place = [&](const QxNode* node, QxDListCell& cell, QxDList*& list,
                           QxEdgeDList QxGraph::*activeList) {
        QxGraph* graph = node != nullptr ? node->pOwnerGraph() : nullptr;
        QxDList* wanted =
            graph == nullptr
                ? nullptr
                : &(graph->*(active ? activeList : &QxGraph::m_unconnectedIntergraphEdges));
        if (wanted != list) {
            if (list != nullptr) {
                list->removeCell(&cell);
            }
            if (wanted != nullptr) {
                wanted->appendCell(&cell);
            }
            list = wanted;
        }
    };
    place(m_source, cells->sourceCell, cells->sourceList, &QxGraph::m_leavingIntergraphEdges);
    place(m_target, cells->targetCell, cells->targetList, &QxGraph::m_enteringIntergraphEdges);
}

GraphCells* QxEdge::pGraphCells() const {
    const qx::internal::GraphObjectExtras* extras = pQueryExtras();
    return extras != nullptr ? extras->graphCells.get() : nullptr;
}

void QxEdge::leaveGraphLists() {
    GraphCells* const cells = pGraphCells();
    if (cells == nullptr) {
        return;
    }
    const auto leave = [](QxDListCell& cell, QxDList*& list) {
        if (list != nullptr) {
            list->removeCell(&cell);
            list = nullptr;
        }
    };
    leave(cells->sourceCell, cells->sourceList);
    leave(cells->targetCell, cells->targetList);
}
