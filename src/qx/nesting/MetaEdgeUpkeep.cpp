// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// The balance: for each group of ends, as many meta-edges as there are edges that need one, or one
// for all where they are compressed. Missing ones are added in the order in which a full check
// lists them, that of the edges that they are for; of those that are too many the last ones go.

#include "qx/nesting/internal/MetaEdgeUpkeep.h"

#include <algorithm>
#include <limits>
#include <tuple>

#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/nesting/QxDChildGraphForestEdge.h"
#include "qx/nesting/QxDChildGraphForestNode.h"
#include "qx/nesting/internal/ManagerExtras.h"

namespace qx::internal {

// --- What the drawing tells

MetaEdgeUpkeep* MetaEdgeUpkeep::of(const QxDGraphManager* manager) {
    return manager != nullptr && manager->updatesMetaEdges() != 0
               ? manager->pQueryManagerExtras()->metaEdges.upkeep.get()
               : nullptr;
}

MetaEdgeUpkeep* MetaEdgeUpkeep::of(const QxDGraph* graph) {
    return graph != nullptr ? of(graph->pOwnerGraphManager()) : nullptr;
}

void MetaEdgeUpkeep::markChanged(QxDEdge& edge) {
    if (MetaEdgeUpkeep* upkeep = of(edge.pOwnerGraph())) {
        upkeep->note(edge);
    }
}

void MetaEdgeUpkeep::markGone(QxDEdge& edge) {
    if (MetaEdgeUpkeep* upkeep = of(edge.pOwnerGraph())) {
        upkeep->forget(edge);
        upkeep->m_isChanged.erase(&edge);
    }
}

void MetaEdgeUpkeep::nestingChanged(const QxDGraph* child) {
    if (MetaEdgeUpkeep* upkeep = of(child)) {
        upkeep->noteCrossing(*child);
    }
}

namespace {

template <class Act>
void eachMetaEdge(const QxDGraph& graph, const Act& act) {
    for (const QxEdgeDList* list :
         {graph.pEdgeList(), graph.pDisconnectedEdgeList(), graph.pDeactivatedEdgeList()}) {
        for (QxDEdge* edge : each<QxDEdge>(*list)) {
            if (edge->isMetaEdge() != 0) {
                act(*edge);
            }
        }
    }
}

}  // namespace

void MetaEdgeUpkeep::came(const QxDGraph& graph) {
    if (of(&graph) != nullptr) {
        eachMetaEdge(graph, [](QxDEdge& edge) { markChanged(edge); });
    }
}

void MetaEdgeUpkeep::leaves(const QxDGraph& graph) {
    if (of(&graph) != nullptr) {
        eachMetaEdge(graph, [](QxDEdge& edge) { leaves(edge); });
    }
}

void MetaEdgeUpkeep::everythingChanged(QxDGraphManager& manager) {
    if (MetaEdgeUpkeep* upkeep = of(&manager)) {
        upkeep->forgetAll();
    }
}

void MetaEdgeUpkeep::changeEnded(const QxDGraph& between) {
    if (of(&between) != nullptr) {
        settle(*between.pOwnerGraphManager(), false);
    }
}

MetaEdgeHold::MetaEdgeHold(QxDGraphManager* manager, ArrivalsEnum arrivals)
    : m_manager(manager), m_arrivals(arrivals) {
    if (m_manager) {
        ++MetaEdgeUpkeep::stateOf(*m_manager).holds;
    }
}

MetaEdgeHold::MetaEdgeHold(const QxDGraph& graph, ArrivalsEnum arrivals)
    : MetaEdgeHold(graph.pOwnerGraphManager(), arrivals) {}

MetaEdgeHold::~MetaEdgeHold() {
    if (m_manager) {
        --MetaEdgeUpkeep::stateOf(*m_manager).holds;
        MetaEdgeUpkeep::settle(*m_manager, m_arrivals == DropsArrivals);
    }
}

// --- The switch

MetaEdgeState& MetaEdgeUpkeep::stateOf(QxDGraphManager& manager) {
    return manager.managerExtras().metaEdges;
}

void MetaEdgeUpkeep::switchOn(QxDGraphManager& manager) {
    stateOf(manager).upkeep = std::make_shared<MetaEdgeUpkeep>(manager);
    manager.setFlag(flags::ManagerUpdatesMetaEdges, 1);
    settle(manager, true);
}

void MetaEdgeUpkeep::switchOff(QxDGraphManager& manager) {
    manager.setFlag(flags::ManagerUpdatesMetaEdges, 0);
    stateOf(manager).upkeep.reset();
}

bool MetaEdgeUpkeep::isOn() const {
    return of(&m_manager) == this;
}

// --- What is known

void MetaEdgeUpkeep::note(QxDEdge& edge) {
    if (!m_isStale && m_isChanged.insert(&edge).second) {
        m_changed.push_back(&edge);
    }
}

/// Where both ends lie in the graph, or in graphs within it, its place means nothing to an edge.
void MetaEdgeUpkeep::noteCrossing(const QxDGraph& child) {
    const QxDGraph* const between = m_manager.pQueryIntergraph();
    if (m_isStale || between == nullptr || between->pEdgeList()->isEmpty() != 0) {
        return;
    }
    std::vector<const QxDGraph*> inside{&child};
    for (std::size_t i = 0; i < inside.size(); ++i) {
        if (const QxDChildGraphForestNode* node = inside[i]->pChildGraphForestNode()) {
            for (const auto* relation : each<QxDChildGraphForestEdge>(*node->pOutEdgeList())) {
                inside.push_back(relation->pChildGraph());
            }
        }
    }
    const std::unordered_set<const QxDGraph*> isInside(inside.begin(), inside.end());
    for (const QxDGraph* graph : inside) {
        for (QxDEdge* edge : each<QxDEdge>(*graph->pLeavingIntergraphEdgeList())) {
            if (isInside.count(edge->pTargetNode()->pOwnerGraph()) == 0) {
                note(*edge);
            }
        }
        for (QxDEdge* edge : each<QxDEdge>(*graph->pEnteringIntergraphEdgeList())) {
            if (isInside.count(edge->pSourceNode()->pOwnerGraph()) == 0) {
                note(*edge);
            }
        }
    }
}

void MetaEdgeUpkeep::forgetAll() {
    m_isStale = true;
    m_entries.clear();
    m_groups.clear();
    m_isChanged.clear();
    m_changed.clear();
    m_open.clear();
    m_arrived.clear();
    m_left.clear();
}

MetaEdgeUpkeep::Group& MetaEdgeUpkeep::open(const MetaEnds& ends) {
    Group& group = m_groups[ends];
    if (!group.isOpen) {
        group.isOpen = true;
        m_open.push_back(ends);
    }
    return group;
}

void MetaEdgeUpkeep::enter(QxDEdge& edge, const MetaEnds& ends, bool isMeta, bool isNew) {
    Group& group = open(ends);
    m_entries.insert_or_assign(
        &edge, Entry{ends, edge.listStamp(), group.existing.size(), isMeta, isMeta && isNew});
    if (isMeta) {
        group.existing.push_back(&edge);
    } else {
        group.needing.insert(edge.listStamp());
    }
    if (isMeta && isNew) {
        m_arrived.push_back(&edge);
    }
}

void MetaEdgeUpkeep::forget(const QxDEdge& edge) {
    const auto found = m_entries.find(&edge);
    if (found == m_entries.end()) {
        return;
    }
    const Entry entry = found->second;
    m_entries.erase(found);
    Group& group = open(entry.ends);
    if (entry.isMeta) {
        QxDEdge* const last = group.existing.back();
        group.existing.pop_back();
        if (last != &edge) {
            group.existing[entry.place] = last;
            m_entries.at(last).place = entry.place;
        }
    } else {
        group.needing.erase(entry.stamp);
    }
}

/// Looks at what has changed.
void MetaEdgeUpkeep::look() {
    NeededMetaEnds needed(m_manager);
    if (m_isStale) {
        m_isStale = false;
        QxDEdgeDList meta;
        m_manager.buildAllMetaEdges(meta, 1, 0);
        for (QxDEdge* edge : each<QxDEdge>(meta)) {
            enter(*edge, endsOfMetaEdge(*edge, m_manager), true, false);
        }
        if (const QxDGraph* between = m_manager.pQueryIntergraph()) {
            for (QxDEdge* edge : each<QxDEdge>(*between->pEdgeList())) {
                if (edge->isMetaEdge() == 0) {
                    lookAt(*edge, needed);
                }
            }
        }
    }
    for (QxDEdge* edge : std::exchange(m_changed, {})) {
        if (m_isChanged.erase(edge) != 0) {
            lookAt(*edge, needed);
        }
    }
}

void MetaEdgeUpkeep::lookAt(QxDEdge& edge, NeededMetaEnds& needed) {
    const bool isNew = m_entries.count(&edge) == 0;
    forget(edge);
    const QxDGraph* graph = edge.pOwnerGraph();
    if (graph == nullptr || graph->isHideGraph() != 0 || edge.deactivated() != 0) {
        return;
    }
    if (edge.isMetaEdge() != 0) {
        enter(edge, endsOfMetaEdge(edge, m_manager), true, isNew);
    } else if (graph->isIntergraph() != 0 && edge.connected() != 0) {
        const MetaEnds ends = needed.of(edge);
        const bool isLoop = ends.first == ends.second;
        if (ends.isComplete() && (!isLoop || m_manager.reflexiveMetaEdgeReplacement() != 0)) {
            enter(edge, ends, false, isNew);
        }
    }
}

// --- The balance

void MetaEdgeUpkeep::settle(QxDGraphManager& manager, bool dropsArrivals) {
    const std::shared_ptr<MetaEdgeUpkeep> upkeep = stateOf(manager).upkeep;
    const QxDGraph* between = manager.pQueryIntergraph();
    if (upkeep == nullptr || !upkeep->hasWork() || upkeep->m_isSettling || between == nullptr ||
        between->areBoundsHeld() || stateOf(manager).holds != 0 || manager.isReading() != 0) {
        return;
    }
    const Ref alive(manager);
    upkeep->m_isSettling = true;
    for (const MetaEnds& ends : std::exchange(upkeep->m_left, {})) {
        upkeep->open(ends);
    }
    while (upkeep->isOn() && upkeep->hasWork()) {
        upkeep->look();
        Plan plan = upkeep->plan(dropsArrivals);
        upkeep->perform(plan);
    }
    upkeep->endSettling();
}

MetaEdgeUpkeep::Plan MetaEdgeUpkeep::plan(bool dropsArrivals) {
    Plan plan;
    for (const MetaEnds& ends : std::exchange(m_open, {})) {
        const auto found = m_groups.find(ends);
        Group& group = found->second;
        group.isOpen = false;
        if (group.needing.empty() && group.existing.empty()) {
            m_groups.erase(found);
            continue;
        }
        const std::size_t wanted = m_manager.compressMetaEdges() != 0
                                       ? std::min<std::size_t>(group.needing.size(), 1)
                                       : group.needing.size();
        if (group.existing.size() < wanted) {
            planAdditions(ends, group, wanted, plan);
        } else if (group.existing.size() > wanted) {
            planRemovals(ends, group, wanted, dropsArrivals, plan);
        }
    }
    std::sort(plan.additions.begin(), plan.additions.end(),
              [](const Addition& a, const Addition& b) { return a.stamp < b.stamp; });
    return plan;
}

void MetaEdgeUpkeep::planAdditions(const MetaEnds& ends, const Group& group, std::size_t wanted,
                                   Plan& plan) {
    if (!m_added.insert(ends).second) {
        m_left.push_back(ends);  // somebody has undone it
        return;
    }
    // The first ones have their meta-edges; one that stands for all is for the first.
    auto needing = group.needing.begin();
    if (wanted == group.needing.size()) {
        needing = std::prev(group.needing.end(),
                            static_cast<std::ptrdiff_t>(wanted - group.existing.size()));
    }
    for (std::size_t count = group.existing.size(); count < wanted; ++count, ++needing) {
        plan.additions.push_back({*needing, HeldMetaEnds(ends)});
    }
}

void MetaEdgeUpkeep::planRemovals(const MetaEnds& ends, Group& group, std::size_t wanted,
                                  bool dropsArrivals, Plan& plan) {
    std::vector<QxDEdge*> edges = group.existing;
    sortAsListed(edges);
    const bool isTried = !m_removed.insert(ends).second;
    bool isLeft = false;
    for (std::size_t i = wanted; i < edges.size(); ++i) {
        if (isTried || (m_entries.at(edges[i]).isNew && !dropsArrivals)) {
            isLeft = true;
        } else {
            plan.removals.emplace_back(edges[i]);
        }
    }
    if (isLeft) {
        m_left.push_back(ends);
    }
}

/// In the order in which all meta-edges are listed.
void MetaEdgeUpkeep::sortAsListed(std::vector<QxDEdge*>& edges) {
    if (edges.size() < 2) {
        return;
    }
    using Place = std::tuple<std::int32_t, int, std::uint64_t, QxDEdge*>;
    std::vector<Place> places;
    const QxDGraph* graph = nullptr;
    std::int32_t position = 0;
    for (QxDEdge* edge : edges) {
        if (edge->pOwnerGraph() != graph) {
            graph = edge->pOwnerGraph();
            position = graph->isIntergraph() != 0 ? std::numeric_limits<std::int32_t>::max()
                                                  : m_manager.pGraphList()->positionOfGraph(graph);
        }
        places.emplace_back(position, edge->disconnected(), edge->listStamp(), edge);
    }
    std::sort(places.begin(), places.end());
    std::transform(places.begin(), places.end(), edges.begin(),
                   [](const Place& place) { return std::get<QxDEdge*>(place); });
}

void MetaEdgeUpkeep::perform(Plan& plan) {
    for (const Addition& addition : plan.additions) {
        QxDEdge* const edge = isOn() ? m_manager.addMetaEdge(addition.ends.ends(), 0) : nullptr;
        if (edge != nullptr && m_isChanged.erase(edge) != 0) {
            forget(*edge);
            enter(*edge, endsOfMetaEdge(*edge, m_manager), true, false);
        } else if (edge == nullptr) {
            open(addition.ends.ends());
        }
    }
    for (const Ref<QxDEdge>& edge : plan.removals) {
        QxDGraph* const graph = edge->pOwnerGraph();
        if (isOn() && graph != nullptr && edge->isMetaEdge() != 0 &&
            graph->pOwnerGraphManager() == &m_manager) {
            graph->discardEdge(edge.get());
        }
    }
}

void MetaEdgeUpkeep::endSettling() {
    for (const QxDEdge* edge : std::exchange(m_arrived, {})) {
        if (const auto found = m_entries.find(edge); found != m_entries.end()) {
            found->second.isNew = false;
        }
    }
    m_added.clear();
    m_removed.clear();
    m_isSettling = false;
}

}  // namespace qx::internal

int QxDGraphManager::updatesMetaEdges(int value) {
    if ((value != 0) != (updatesMetaEdges() != 0)) {
        if (value != 0) {
            qx::internal::MetaEdgeUpkeep::switchOn(*this);
        } else {
            qx::internal::MetaEdgeUpkeep::switchOff(*this);
        }
    }
    return value;
}

int QxDGraphManager::changeMetaEdges(std::uint32_t bit, int value) {
    if (hasFlag(bit) != (value != 0 ? 1 : 0)) {
        const qx::internal::MetaEdgeHold held(updatesMetaEdges() != 0 ? this : nullptr);
        setFlag(bit, value);
        qx::internal::MetaEdgeUpkeep::everythingChanged(*this);
    }
    return value;
}
