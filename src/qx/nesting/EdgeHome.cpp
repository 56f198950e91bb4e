// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/nesting/internal/EdgeHome.h"

#include "qx/drawing/internal/CloneLinks.h"
#include "qx/foundation/graph/internal/EachObject.h"

namespace qx::internal {

namespace {

QxDGraph* graphAround(const QxDNode* node) {
    return node != nullptr ? node->pOwnerGraph() : nullptr;
}

bool hides(const QxDGraph* graph) {
    return graph != nullptr && graph->isHideGraph() != 0;
}

/// What the edge is or, while it is hidden, will be when it shows.
QxEdgeStateEnum stateOf(const QxDEdge& edge) {
    if (edge.deactivated() != 0) {
        return QxEdgeIsDeactivated;
    }
    if (edge.connected() != 0 || edge.hidden() == 0) {
        return edge.connected() != 0 ? QxEdgeIsConnected : QxEdgeIsDisconnected;
    }
    const auto returns = [&](std::uint32_t bit) { return (edge.flagWord() & bit) != 0; };
    return returns(flags::EdgeReturnsDeactivated)    ? QxEdgeIsDeactivated
           : returns(flags::EdgeReturnsDisconnected) ? QxEdgeIsDisconnected
                                                     : QxEdgeIsConnected;
}

}  // namespace

EdgeHome::EdgeHome(const QxDGraphManager* manager, const QxDNode* source, const QxDNode* target,
                   bool isHidden) {
    const auto placeOf = [manager](const QxDNode* end) {
        QxDGraph* const graph = graphAround(end);
        return graph != nullptr && graph->pOwnerGraphManager() == manager ? graph : nullptr;
    };
    QxDGraph* const first = placeOf(source);
    QxDGraph* const second = placeOf(target);
    if (manager == nullptr) {
        return;
    }
    if (isHidden) {
        m_at = hides(first) ? first : hides(second) ? second : first != nullptr ? first : second;
        m_which = hides(m_at) ? Itself : ItsHideGraph;
    } else if (first != nullptr && second != nullptr) {
        m_at = first;
        m_which = first == second && !hides(first) ? Itself : Between;
    }
}

EdgeHome::EdgeHome(const QxDEdge& edge)
    : EdgeHome(managerOf(edge), edge.pSourceNode(), edge.pTargetNode(), edge.hidden() != 0) {}

QxDGraph* EdgeHome::pQueryGraph() const {
    if (m_at == nullptr || m_which == Itself) {
        return m_at;
    }
    if (m_which == ItsHideGraph) {
        return m_at->pHideGraph();
    }
    const QxDGraphManager* manager = m_at->pOwnerGraphManager();
    return manager != nullptr ? manager->pQueryIntergraph() : nullptr;
}

QxDGraph* EdgeHome::pGraph() const {
    if (m_at == nullptr || m_which == Itself) {
        return m_at;
    }
    if (m_which == ItsHideGraph) {
        return m_at->pNewHideGraph();
    }
    QxDGraphManager* manager = m_at->pOwnerGraphManager();
    return manager != nullptr ? manager->pIntergraph() : nullptr;
}

MovingEdge::MovingEdge(QxDEdge& edge)
    : m_edge(edge),
      m_source(edge.pSourceNode()),
      m_target(edge.pTargetNode()),
      m_from(edge.pOwnerGraph()),
      m_state(stateOf(edge)) {
    noteBends();
}

/// That of the graph it was in or, when that has gone meanwhile, of the one its source is in.
const QxDGraphManager* MovingEdge::pManager() const {
    const QxDGraphManager* const manager = m_from->pOwnerGraphManager();
    return manager != nullptr ? manager : managerOf(*m_source);
}

void MovingEdge::noteBends() {
    QxPNodeDList bends;
    m_edge->buildPathNodeList(bends);
    for (QxPNode* bend : each<QxPNode>(bends)) {
        m_bends.emplace_back(Ref<QxPNode>(bend), bend->iCenter());
    }
}

void MovingEdge::noteReturn(QxDEdge& edge, QxEdgeStateEnum state) {
    edge.setFlag(flags::EdgeReturnsDisconnected, state == QxEdgeIsDisconnected ? 1 : 0);
    edge.setFlag(flags::EdgeReturnsDeactivated, state == QxEdgeIsDeactivated ? 1 : 0);
}

void MovingEdge::settleAsHidden(QxDEdge& edge) {
    noteReturn(edge, edge.deactivated() != 0 ? QxEdgeIsDeactivated
                     : edge.connected() != 0 ? QxEdgeIsConnected
                                             : QxEdgeIsDisconnected);
    edge.activate();  // refused here, which disconnects it
    edge.disconnect();
}

void MovingEdge::copyReturn(const QxDEdge& source, QxDEdge& copy) {
    noteReturn(copy, stateOf(source));
}

bool MovingEdge::take() {
    return m_from && m_source && m_target && m_edge->pOwnerGraph() == m_from.get() &&
           m_edge->pSourceNode() == m_source.get() && m_edge->pTargetNode() == m_target.get() &&
           m_from->removeEdge(m_edge.get()) != nullptr;
}

bool MovingEdge::put(bool isHidden) {
    if (m_edge->ownerValid() != 0) {
        return false;
    }
    QxDGraph* const graph = EdgeHome(pManager(), m_source.get(), m_target.get(), isHidden).pGraph();
    if (graph != nullptr && insertInto(*graph)) {
        return m_edge->ownerValid() != 0;
    }
    m_isStranded = true;
    if (m_edge->ownerValid() == 0 && !insertInto(*m_from)) {
        m_edge->actOnDiscard();
        const auto last = Ref<QxDEdge>::adopt(m_edge.get());  // what the removal left to us
    }
    return false;
}

bool MovingEdge::insertInto(QxDGraph& graph) {
    const Ref alive(graph);
    noteReturn(*m_edge, m_state);
    if (graph.insertEdge(m_edge.get(), m_source.get(), m_target.get()) == nullptr) {
        return false;
    }
    if (m_edge->pOwnerGraph() == &graph) {
        restoreBends(graph);
    }
    if (m_edge->pOwnerGraph() == &graph && graph.isHideGraph() == 0) {
        noteReturn(*m_edge, QxEdgeIsConnected);
        if (m_state == QxEdgeIsDeactivated) {
            m_edge->deactivate();
        }
    }
    return true;
}

/// When both ends have come along as they stand, the bends do.
void MovingEdge::restoreBends(const QxDGraph& graph) const {
    const auto shown = [](const QxDGraph* one) { return hides(one) ? one->pHideFromGraph() : one; };
    if (m_bends.empty() || m_from->isIntergraph() != 0 ||
        shown(graphAround(m_source.get())) != shown(&graph) ||
        shown(graphAround(m_target.get())) != shown(&graph)) {
        return;
    }
    for (const auto& [bend, center] : m_bends) {
        if (bend->pOwnerEdge() == m_edge.get() && !(bend->iCenter() == center)) {
            bend->ntMoveTo(center);
        }
    }
}

bool EdgeHome::bring(QxDEdge& edge) {
    const Ref from(edge.pOwnerGraph());
    if (!from) {
        return false;
    }
    const bool isHidden = from->isHideGraph() != 0;
    const EdgeHome home(edge);
    if (home.pQueryGraph() == from.get() || home.pGraph() == nullptr) {
        return false;
    }
    MovingEdge moving(edge);
    const bool moved = moving.take() && moving.put(isHidden);
    from->discardEmptyHideGraph();
    return moved;
}

void EdgeHome::bringEdgesAt(const Snapshot<QxDNode>& nodes) {
    std::vector<Ref<QxDEdge>> strays;
    for (const QxDNode* node : nodes) {
        for (const QxEdgeDList* list :
             {node->pInEdgeList(), node->pOutEdgeList(), node->pDisconnectedEdgeList(),
              node->pDeactivatedEdgeList()}) {
            for (QxDEdge* edge : each<QxDEdge>(*list)) {
                if (EdgeHome(*edge).pQueryGraph() != edge->pOwnerGraph()) {
                    strays.emplace_back(edge);
                }
            }
        }
    }
    for (const Ref<QxDEdge>& edge : strays) {
        bring(*edge);
    }
}

bool moveNode(QxDNode& node, QxDGraph& from, QxDGraph& to) {
    if (node.pOwnerGraph() != &from || from.removeNode(&node) == nullptr) {
        return false;
    }
    if (to.insertNode(&node) == nullptr && node.ownerValid() == 0 &&
        from.insertNode(&node) == nullptr && node.ownerValid() == 0) {
        node.actOnDiscard();
        const auto last = Ref<QxDNode>::adopt(&node);
    }
    return node.pOwnerGraph() == &to;
}

}  // namespace qx::internal
