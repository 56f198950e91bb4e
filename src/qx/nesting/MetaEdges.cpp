// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Which edges stand for those that cannot be drawn, and which do so for nothing.
//
// An edge between graphs is drawn when both its ends show, that is, when nothing but expanded nodes
// lies between them and the innermost graph around both. Otherwise the outermost collapsed node on
// either side stands for the end there. What is needed and what is there are compared by what they
// join, four pointers, through a hash table: linear in the edges. The table keeps the first match
// of each kind in front, so that the results are those of a search from the beginning.

#include <unordered_set>
#include <vector>

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/foundation/util/internal/Ref.h"
#include "qx/nesting/QxDChildGraphForest.h"
#include "qx/nesting/QxDNodePair.h"
#include "qx/nesting/internal/MetaEdgeUpkeep.h"
#include "qx/nesting/internal/MetaEnds.h"

using qx::internal::each;
using qx::internal::MetaEnds;
using qx::internal::NeededMetaEnds;
using qx::internal::Ref;
using qx::internal::Snapshot;

namespace qx::internal {

MetaEnds endsOfMetaEdge(const QxDEdge& edge, const QxDGraphManager& manager) {
    MetaEnds ends{edge.pSourceNode(), edge.pTargetNode(), nullptr, nullptr};
    if (manager.ignoreConnectorsForMetaEdges() == 0) {
        ends.firstConnector = edge.pSourceConnector();
        ends.secondConnector = edge.pTargetConnector();
    }
    return ends;
}

std::size_t NeededMetaEnds::GraphsHash::operator()(const Graphs& graphs) const {
    const auto source = reinterpret_cast<std::uintptr_t>(graphs.source) >> 4;
    const auto target = reinterpret_cast<std::uintptr_t>(graphs.target) >> 4;
    return static_cast<std::size_t>((source * 0x9E3779B97F4A7C15U) ^ target);
}

MetaEnds NeededMetaEnds::of(const QxDEdge& edge) {
    QxDNode* const source = edge.pSourceNode();
    QxDNode* const target = edge.pTargetNode();
    const Graphs graphs{source != nullptr ? source->pOwnerGraph() : nullptr,
                        target != nullptr ? target->pOwnerGraph() : nullptr};
    if (graphs.source == nullptr || graphs.target == nullptr || graphs.source == graphs.target) {
        return {};
    }
    auto found = m_routes.find(graphs);
    if (found == m_routes.end()) {
        found = m_routes.emplace(graphs, routeBetween(graphs)).first;
    }
    const Route& route = found->second;
    if (!route.isNeeded) {
        return {};
    }
    MetaEnds ends{route.source != nullptr ? route.source : source,
                  route.target != nullptr ? route.target : target, nullptr, nullptr};
    if (m_manager.ignoreConnectorsForMetaEdges() == 0) {
        ends.firstConnector = ends.first == source ? edge.pSourceConnector() : nullptr;
        ends.secondConnector = ends.second == target ? edge.pTargetConnector() : nullptr;
    }
    return ends;
}

NeededMetaEnds::Route NeededMetaEnds::routeBetween(const Graphs& graphs) const {
    const QxGraph* const common =
        m_manager.pChildGraphForest()->pNearestCommonGraph(graphs.source, graphs.target);
    Route route;
    if (common == nullptr || common->isHideGraph() != 0) {
        return route;  // hidden, or in drawings apart
    }
    const auto climb = [&](const QxDGraph* graph, QxDNode*& outermost) {
        while (graph != common) {
            QxDNode* const parent = graph->pParentNode();
            if (parent == nullptr || parent->expanded() == 0) {
                route.isNeeded = true;
                outermost = parent != nullptr ? parent : outermost;
            }
            graph = static_cast<QxDGraph*>(graph->pParentGraphMember()->pOwnerGraph());
        }
    };
    climb(graphs.source, route.source);
    climb(graphs.target, route.target);
    return route;
}

}  // namespace qx::internal

QxDNode* QxDNode::pNearestCollapsedNode(const QxDGraph* graph) {
    if (graph == nullptr) {
        return nullptr;
    }
    QxDNode* nearest = this;
    const QxGraph* around = pOwnerGraph();
    while (around != nullptr && around != graph) {
        auto* parent = static_cast<QxDNode*>(around->pParentNode());
        if (parent != nullptr && parent->collapsed() != 0) {
            nearest = parent;
        }
        const QxGraphMember* member = around->pParentGraphMember();
        around = member != nullptr ? member->pOwnerGraph() : nullptr;
    }
    return nearest;
}

QxDGraph* QxDEdge::pNearestCommonNestedGraph() const {
    const QxDNode* source = pSourceNode();
    const QxDNode* target = pTargetNode();
    const QxDGraph* first = source != nullptr ? source->pOwnerGraph() : nullptr;
    const QxDGraph* second = target != nullptr ? target->pOwnerGraph() : nullptr;
    const QxDGraphManager* manager = first != nullptr ? first->pOwnerGraphManager() : nullptr;
    return manager != nullptr ? manager->pNearestCommonNestedGraph(first, second) : nullptr;
}

int QxDEdge::setMetaEdge(int value) {
    qx::internal::MetaEdgeUpkeep::leaves(*this);
    setFlag(qx::flags::EdgeMeta, value);
    qx::internal::MetaEdgeUpkeep::changed(*this);
    return value;
}

// --- What is there

namespace {

void appendMetaEdges(const QxDList& edges, QxDEdgeDList& list) {
    for (QxDEdge* edge : each<QxDEdge>(edges)) {
        if (edge->isMetaEdge() != 0) {
            list.appendEdge(edge);
        }
    }
}

}  // namespace

void QxDGraph::buildMetaEdges(QxDEdgeDList& list, int includeDisconnected,
                              int includeHidden) const {
    appendMetaEdges(*pEdgeList(), list);
    if (includeDisconnected != 0) {
        appendMetaEdges(*pDisconnectedEdgeList(), list);
    }
    const QxDGraph* hidden = includeHidden != 0 ? pHideGraph() : nullptr;
    if (hidden != nullptr && hidden->numberOfAllEdges() != 0) {
        appendMetaEdges(*hidden->pEdgeList(), list);
        appendMetaEdges(*hidden->pDisconnectedEdgeList(), list);
    }
}

void QxDGraphManager::buildAllMetaEdges(QxDEdgeDList& list, int includeDisconnected,
                                        int includeHidden) const {
    for (const QxDGraph* graph : each<QxDGraph>(*pGraphList())) {
        if (graph->isHideGraph() == 0) {  // what it holds is listed with what it hides from
            graph->buildMetaEdges(list, includeDisconnected, includeHidden);
        }
    }
    if (const QxDGraph* between = pQueryIntergraph()) {
        between->buildMetaEdges(list, includeDisconnected, includeHidden);
    }
}

// --- What is needed

namespace {

/// The meta-edges that are there, by what they join, in their order.
class Existing {
public:
    Existing(const QxDEdgeDList& edges, const QxDGraphManager& manager) {
        const auto count = static_cast<std::size_t>(edges.count());
        m_edges.reserve(count);
        m_first.reserve(count);
        for (const QxDListCell* cell = edges.pLastCell(); cell; cell = cell->pPreviousCell()) {
            auto* const edge = static_cast<QxDEdge*>(cell->pObject());
            const auto number = static_cast<std::int32_t>(m_edges.size());
            auto& first = m_first.try_emplace(qx::internal::endsOfMetaEdge(*edge, manager), None)
                              .first->second;
            m_edges.push_back({edge, first});
            first = number;
        }
    }

    /// Uses up the first edge that joins these; false when there is none left.
    bool take(const MetaEnds& ends) {
        const auto found = m_first.find(ends);
        if (found == m_first.end() || found->second == None) {
            return false;
        }
        Entry& entry = m_edges[static_cast<std::size_t>(found->second)];
        found->second = entry.next;
        entry.edge = nullptr;
        return true;
    }

    void appendRest(QxDEdgeDList& list) const {
        for (auto entry = m_edges.rbegin(); entry != m_edges.rend(); ++entry) {
            if (entry->edge != nullptr) {
                list.appendEdge(entry->edge);
            }
        }
    }

private:
    static constexpr std::int32_t None = -1;
    struct Entry {
        QxDEdge* edge;
        std::int32_t next;  ///< the next one, in their order, that joins the same
    };

    std::vector<Entry> m_edges;  ///< the last one first
    std::unordered_map<MetaEnds, std::int32_t, MetaEnds::Hash> m_first;
};

std::vector<MetaEnds> neededIn(const QxDGraphManager& manager, const QxDGraph& between) {
    std::vector<MetaEnds> needed;
    std::unordered_set<MetaEnds, MetaEnds::Hash> known;
    NeededMetaEnds ends(manager);
    for (const QxDEdge* edge : each<QxDEdge>(*between.pEdgeList())) {
        if (edge->isMetaEdge() != 0) {
            continue;
        }
        const MetaEnds pair = ends.of(*edge);
        const bool isLoop = pair.first == pair.second;
        if (!pair.isComplete() || (isLoop && manager.reflexiveMetaEdgeReplacement() == 0) ||
            (manager.compressMetaEdges() != 0 && !known.insert(pair).second)) {
            continue;
        }
        needed.push_back(pair);
    }
    return needed;
}

}  // namespace

void QxDGraphManager::checkMetaEdges(QxDNodePairDList& necessaryMetaEdgeNodePairList,
                                     QxDEdgeDList& shouldBeRemovedEdges) const {
    const QxDGraph* between = pQueryIntergraph();
    if (between == nullptr) {
        return;
    }
    QxDEdgeDList edges;
    buildAllMetaEdges(edges, 1, 0);
    Existing existing(edges, *this);
    necessaryMetaEdgeNodePairList.deleteAllCellsAndNodePairs();
    for (const MetaEnds& ends : neededIn(*this, *between)) {
        if (!existing.take(ends)) {
            auto* pair = new QxDNodePair(ends.first, ends.second);
            pair->pFirstConnector(ends.firstConnector);
            pair->pSecondConnector(ends.secondConnector);
            necessaryMetaEdgeNodePairList.appendNodePair(pair);
        }
    }
    shouldBeRemovedEdges.deleteAllCells();
    existing.appendRest(shouldBeRemovedEdges);
}

// --- Doing it

void QxDGraphManager::updateMetaEdges(QxDNodePairDList* necessaryMetaEdgeNodePairList,
                                      QxDEdgeDList* shouldBeRemovedEdges,
                                      QxDEdgeDList* insertedMetaEdges, int type) {
    // Listeners hear of each edge, and may discard what comes next.
    const Ref alive(*this);
    const qx::internal::MetaEdgeHold held(this, qx::internal::MetaEdgeHold::KeepsArrivals);
    std::vector<qx::internal::HeldMetaEnds> added;
    if (necessaryMetaEdgeNodePairList != nullptr) {
        for (const QxDNodePair* pair : each<QxDNodePair>(*necessaryMetaEdgeNodePairList)) {
            added.emplace_back(MetaEnds{pair->pFirstNode(), pair->pSecondNode(),
                                        pair->pFirstConnector(), pair->pSecondConnector()});
        }
        necessaryMetaEdgeNodePairList->deleteAllCellsAndNodePairs();
    }
    const Snapshot<QxDEdge> removed(shouldBeRemovedEdges);
    std::vector<QxObject*> detached;
    for (QxDEdge* edge : removed) {
        if (edge->ownerValid() == 0) {
            detached.push_back(edge);
        }
    }
    Snapshot<QxDEdge> inserted;
    for (const qx::internal::HeldMetaEnds& ends : added) {
        if (QxDEdge* edge = addMetaEdge(ends.ends(), type)) {
            inserted.add(edge);
        }
    }
    for (QxDEdge* edge : removed) {
        if (QxDGraph* graph = edge->pOwnerGraph()) {
            graph->discardEdge(edge);
        }
    }
    qx::internal::releaseOnce(detached);
    if (shouldBeRemovedEdges != nullptr) {
        shouldBeRemovedEdges->deleteAllCells();
    }
    for (QxDEdge* edge : inserted) {
        if (insertedMetaEdges != nullptr && edge->ownerValid() != 0) {
            insertedMetaEdges->appendEdge(edge);
        }
    }
}

QxDEdge* QxDGraphManager::addMetaEdge(const MetaEnds& ends, int type) {
    QxDEdge* const edge = addMetaEdge(ends.first, ends.second, type);
    if (edge != nullptr && ignoreConnectorsForMetaEdges() == 0) {
        const Ref alive(*edge);
        if (ends.firstConnector != nullptr) {
            edge->pSourceConnector(ends.firstConnector);
        }
        if (ends.secondConnector != nullptr) {
            edge->pTargetConnector(ends.secondConnector);
        }
        if (edge->ownerValid() == 0) {
            return nullptr;
        }
    }
    return edge;
}

QxDEdge* QxDGraphManager::vAddMetaEdge(QxDNode* source, QxDNode* target, int type) {
    auto* const edge =
        source != nullptr && target != nullptr ? static_cast<QxDEdge*>(vNewEdge(type)) : nullptr;
    if (edge == nullptr) {
        return nullptr;
    }
    const Ref alive(*edge);
    edge->setMetaEdge(1);  // before anybody hears of it
    if (insertEdge(edge, source, target) == nullptr) {
        edge->vRelease();
        return nullptr;
    }
    return edge->ownerValid() != 0 ? edge : nullptr;  // a listener may have discarded it
}
