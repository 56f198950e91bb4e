// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// What follows a move.
//
// Most edges follow by themselves: a straight edge between two nodes is nothing but its ends. So an
// edge gets a record only if it has bends, calculated connectors, labels that stay behind, or runs
// beside another one between the same nodes; a look at its state tells. A move costs the edges at
// what moves and, for an expanded node, the edges between graphs that lead into it.

#include "qx/update/internal/Reactions.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <utility>

#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxEdgeLabel.h"
#include "qx/drawing/QxPNode.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/drawing/bundles/internal/Siblings.h"
#include "qx/drawing/connectors/internal/RoutingDirection.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/foundation/util/internal/Suspension.h"
#include "qx/nesting/internal/ManagerExtras.h"
#include "qx/nesting/internal/NestedGraphs.h"
#include "qx/update/QxDEdgeInitialGeometry.h"
#include "qx/update/internal/EdgeEnds.h"

namespace qx::internal {

namespace {

constexpr std::uint32_t Connectors = flags::EdgeFromConnectorValid | flags::EdgeToConnectorValid;

/// Whether a label of the edge does not move with it.
bool hasStayingLabels(const QxDEdge& edge) {
    if ((edge.flagWord() & flags::EdgeHasLabels) == 0 || edge.pLabelList() == nullptr) {
        return false;
    }
    for (const QxEdgeLabel* label : each<QxEdgeLabel>(*edge.pLabelList())) {
        if (label->moveLabelOnOwnerMove() == 0) {
            return true;
        }
    }
    return false;
}

/// Whether a straight edge has connectors that a move may displace or drop.
bool hasLooseConnectors(const QxDEdge& edge) {
    return (edge.flagWord() & Connectors) != 0 &&
           (calculatedAt(edge, true) != nullptr || calculatedAt(edge, false) != nullptr ||
            edge.desiredOrthogonalRouting() != 0);
}

bool needsRecord(const QxDEdge& edge) {
    return edge.hasBends() != 0 || hasLooseConnectors(edge) || hasStayingLabels(edge);
}

/// Whether the edge is nothing but a line between its ends.
bool isBare(const QxDEdge& edge) {
    return edge.hasBends() == 0 && (edge.flagWord() & (Connectors | flags::EdgeHasLabels)) == 0;
}

/// Whether the edge may run beside others.
bool canBeBundled(const QxDEdge& edge) {
    return edge.hasBends() == 0 && edge.reflexive() == 0 && !hasSpecifiedConnector(edge) &&
           edge.desiredOrthogonalRouting() == 0;
}

/// Calls `act` with the other end of each connected edge of the node.
template <class Act>
void eachNeighbour(const QxDNode& node, const Act& act) {
    for (const QxDEdge* edge : each<QxDEdge>(*node.pInEdgeList())) {
        act(edge->QxEdge::pSourceNode());
    }
    for (const QxDEdge* edge : each<QxDEdge>(*node.pOutEdgeList())) {
        act(edge->QxEdge::pTargetNode());
    }
}

/// Whether several edges lead to one node, for a node of few edges; true for any other.
bool mayRepeatNeighbours(const QxDNode& node) {
    constexpr std::int32_t Few = 16;
    if (node.degree() > Few) {
        return true;
    }
    std::array<const QxNode*, Few> others{};
    std::size_t count = 0;
    bool repeats = false;
    eachNeighbour(node, [&](const QxNode* other) {
        const auto end = others.begin() + static_cast<std::ptrdiff_t>(count);
        repeats = repeats || std::find(others.begin(), end, other) != end;
        others[count++] = other;
    });
    return repeats;
}

/// Whether another edge joins the same nodes. O(degree) of the node that has fewer edges.
bool hasTwin(const QxDEdge& edge) {
    const QxDNode* source = edge.pSourceNode();
    const QxDNode* target = edge.pTargetNode();
    const bool looksAtSource = source->degree() <= target->degree();
    const QxNode* const other = looksAtSource ? target : source;
    int found = 0;
    eachNeighbour(looksAtSource ? *source : *target,
                  [&](const QxNode* one) { found += one == other ? 1 : 0; });
    return found > 1;
}

/// The nodes to which more than one edge leads, in an order of their own.
std::vector<const QxNode*> repeatedNeighbours(const QxDNode& node) {
    std::vector<const QxNode*> others;
    if (!mayRepeatNeighbours(node)) {
        return others;
    }
    others.reserve(static_cast<std::size_t>(node.degree()));
    eachNeighbour(node, [&](const QxNode* other) { others.push_back(other); });
    std::sort(others.begin(), others.end(), std::less<>());  // only to find equal ones
    std::vector<const QxNode*> repeated;
    for (std::size_t i = 1; i < others.size(); ++i) {
        if (others[i] == others[i - 1] && others[i] != &node &&
            (repeated.empty() || repeated.back() != others[i])) {
            repeated.push_back(others[i]);
        }
    }
    return repeated;
}

/// Of the edges between graphs; self-loops are known without.
bool isCarried(const QxDEdge& edge, const Reactions::Carried& carried) {
    return edge.intergraphEdge() != 0 &&
           std::any_of(carried.begin(), carried.end(),
                       [&](const Ref<QxDEdge>& one) { return one.get() == &edge; });
}

}  // namespace

Reactions::Reactions(QxDGraphManager& manager, Extent extent)
    : m_manager(manager),
      m_extent(extent),
      m_outer(std::exchange(manager.managerExtras().reactions, this)) {}

Reactions::~Reactions() {
    Reactions** link = &m_manager->managerExtras().reactions;
    while (*link != this) {
        link = &(*link)->m_outer;
    }
    *link = m_outer;
    for (const Ref<QxDEdge>& edge : m_edges) {
        forget(*edge);
    }
}

bool Reactions::concern(const QxDNode& node) {
    for (const QxEdgeDList* list : {node.pInEdgeList(), node.pOutEdgeList()}) {
        for (const QxDEdge* edge : each<QxDEdge>(*list)) {
            if (needsRecord(*edge)) {
                return true;
            }
        }
    }
    return mayRepeatNeighbours(node);
}

Reactions* Reactions::open(const QxDGraphManager& manager) {
    const ManagerExtras* extras = manager.pQueryManagerExtras();
    return extras != nullptr ? extras->reactions : nullptr;
}

Refits& Reactions::refitsOf(QxDGraphManager& manager) {
    return manager.managerExtras().refits;
}

bool Reactions::isHere(const QxDEdge& edge) const {
    const QxDEdgeInitialGeometry* record = edge.pEdgeInitialGeometry();
    return record != nullptr && record->m_reactions == this;
}

void Reactions::forget(QxDEdge& edge) const {
    if (isHere(edge)) {
        for (QxEdgeLabel* label : Snapshot<QxEdgeLabel>(edge.pLabelList())) {
            label->cleanUpLabelMoveControlInfo();
        }
        edge.deleteReroutedEdgeInitialPosition();
    }
}

// --- Before the move --------------------------------------------------------------------------

void Reactions::add(QxDEdge& edge) {
    if (!isActive(edge) || edge.isVisible() == 0 || edge.graphObjectStatus() == QxStatusMoved) {
        return;  // or it moves as a whole, with a selection
    }
    QxDEdgeInitialGeometry* const former = edge.pEdgeInitialGeometry();
    if (former != nullptr && former->m_reactions != nullptr) {
        former->m_reactions->ask(edge);
    } else {
        add(edge, new QxDEdgeInitialGeometry(&edge));
    }
}

void Reactions::add(QxDEdge& edge, QxDEdgeInitialGeometry* record) {
    note(edge, record);
    for (QxEdgeLabel* label : Snapshot<QxEdgeLabel>(edge.pLabelList())) {
        label->storeMovedLabel();
        label->cleanUpLabelMoveControlInfo();
        label->collectInitInfoOwnerEdgeMoved();
    }
    ask(edge);
}

void Reactions::note(QxDEdge& edge, QxDEdgeInitialGeometry* record) {
    record->m_reactions = this;
    edge.pEdgeInitialGeometry(record);
    record->m_isPlain = isBare(edge) && !hasTwin(edge);
    m_edges.emplace_back(edge);
}

void Reactions::ask(QxDEdge& edge) {
    QxDEdgeInitialGeometry& record = *edge.pEdgeInitialGeometry();
    if (record.m_isPlain && isBare(edge)) {
        return;
    }
    if (!std::exchange(record.m_isWaiting, true)) {
        m_waiting.emplace_back(edge);
    }
}

void Reactions::addAround(const QxDNode& node, Carried& carried) {
    if (node.degree() != 0) {
        const auto repeated = repeatedNeighbours(node);
        addListed(node, false, repeated, carried);
        addListed(node, true, repeated, carried);
    }
}

void Reactions::addListed(const QxDNode& node, bool atSource, const Neighbours& repeated,
                          Carried& carried) {
    for (QxDEdge* edge : each<QxDEdge>(atSource ? *node.pOutEdgeList() : *node.pInEdgeList())) {
        const QxDNode* other = nodeAt(*edge, !atSource);
        if (other == &node) {
            if (atSource && edge->graphObjectStatus() == QxStatusUnchanged) {
                carried.emplace_back(*edge);
            }
        } else if (!isCarried(*edge, carried) &&
                   (needsRecord(*edge) ||
                    (std::binary_search(repeated.begin(), repeated.end(), other, std::less<>()) &&
                     canBeBundled(*edge)))) {
            add(*edge);
        }
    }
}

void Reactions::addNested(const QxDNode& node, Carried& carried) {
    const QxDGraph* nested = node.pNestedGraph();
    const QxDGraph* between = nested != nullptr ? m_manager->pQueryIntergraph() : nullptr;
    if (between == nullptr || between->numberOfEdges() == 0) {
        return;
    }
    std::vector<QxDEdge*> found;
    {
        const NestedGraphs inside(*nested);
        inside.eachEdge([&](QxDEdge& edge, bool isInside) {
            if (!isInside) {
                found.push_back(&edge);
            }
        });
    }
    for (QxDEdge* edge : found) {
        if (edge->pSourceNode() == &node || edge->pTargetNode() == &node) {
            if (edge->graphObjectStatus() == QxStatusUnchanged) {
                carried.emplace_back(*edge);
            }
        } else if (needsRecord(*edge)) {
            add(*edge);
        }
    }
}

void Reactions::addAround(const QxConnector& connector) {
    QxDEdgeDList edges;
    connector.buildIncidentEdgeList(&edges, QxEdgeDirectionBoth, QxEdgeConnectionConnected);
    for (QxDEdge* edge : each<QxDEdge>(edges)) {
        if (needsRecord(*edge)) {
            add(*edge);
        }
    }
}

// --- After it ---------------------------------------------------------------------------------

void Reactions::askAgain() {
    for (const Ref<QxDEdge>& edge : m_edges) {
        if (isHere(*edge)) {
            ask(*edge);
        }
    }
}

void Reactions::run() {
    if (m_isRunning || m_waiting.empty()) {
        return;
    }
    m_isRunning = true;
    const Ref manager(*m_manager);
    {
        const auto updating = suspend(
            [manager](auto... value) { return manager->isUpdatingAffectedGraphs(value...); }, 1);
        while (m_next < m_waiting.size()) {
            const std::size_t first = m_next;
            m_next = m_waiting.size();
            followPaths(first, m_next);
            spreadBundles(first, m_next);
            placeLabels(first, m_next);
        }
    }
    m_waiting.clear();
    m_next = 0;
    m_isRunning = false;
}

bool Reactions::mayFollow(const QxDEdge& edge) const {
    return isHere(edge) && isActive(edge) && edge.pSourceNode() != nullptr &&
           edge.pTargetNode() != nullptr;
}

bool Reactions::isBack(const QxDEdge& edge) const {
    const QxDEdgeInitialGeometry& record = *edge.pEdgeInitialGeometry();
    // The path of an edge a part of which is dragged has been worked out already.
    return record.status() == QxGeometryOfEdge && record.isBack(true) && record.isBack(false);
}

void Reactions::followPath(QxDEdge& edge) const {
    const Ref record(*edge.pEdgeInitialGeometry());
    if (record->status() == QxGeometryOfEdge &&
        (m_extent == Whole || record->asOrthogonalRouted() != 0)) {
        record->reroute();
    }
}

void Reactions::followPaths(std::size_t from, std::size_t to) {
    for (std::size_t i = from; i < to; ++i) {
        const Ref edge(*m_waiting[i]);
        if (QxDEdgeInitialGeometry* record =
                isHere(*edge) ? edge->pEdgeInitialGeometry() : nullptr) {
            record->m_isWaiting = false;
        }
        if (!mayFollow(*edge)) {
            continue;
        }
        const Ref record(*edge->pEdgeInitialGeometry());
        if (record->m_isDrawnIn) {
            record->restorePath();
        } else if (!canBeBundled(*edge)) {
            followPath(*edge);
        }
    }
}

/// What runs straight comes after all bends have gone that are to go: then it is known beside what.
void Reactions::spreadBundles(std::size_t from, std::size_t to) {
    std::vector<Ref<QxDEdge>> marked;
    for (std::size_t i = from; i < to; ++i) {
        const Ref edge(*m_waiting[i]);
        if (!mayFollow(*edge) || !canBeBundled(*edge) || edge->multiEdge() != 0 ||
            edge->pEdgeInitialGeometry()->m_isDrawnIn) {
            continue;
        }
        QxDEdgeDList bundle;
        if (m_extent == Whole && hasTwin(*edge) && !isBack(*edge)) {
            edge->collectStraightMultiEdges(&bundle);
        }
        if (bundle.count() < 2) {
            followPath(*edge);
            continue;
        }
        for (QxDEdge* one : each<QxDEdge>(bundle)) {
            one->multiEdge(1);
            marked.emplace_back(*one);
            if (one->pEdgeInitialGeometry() == nullptr) {
                // So that it can be put back, too; its labels are not where they were at first.
                note(*one, new QxDEdgeInitialGeometry(one));
                one->pEdgeInitialGeometry()->m_isDrawnIn = true;
            }
        }
        edge->reorganizeMultiEdgeBundleParallel(&bundle);
    }
    for (const Ref<QxDEdge>& edge : marked) {
        edge->multiEdge(0);
    }
}

void Reactions::placeLabels(std::size_t from, std::size_t to) {
    for (std::size_t i = from; i < to; ++i) {
        const Ref edge(*m_waiting[i]);
        if (mayFollow(*edge)) {
            placeLabels(*edge, isBack(*edge));
        }
    }
}

void Reactions::placeLabels(QxDEdge& edge, bool isBack) const {
    const bool keepsPath =
        m_extent == RoomOnly && edge.pEdgeInitialGeometry()->asOrthogonalRouted() == 0;
    for (QxEdgeLabel* label : Snapshot<QxEdgeLabel>(edge.pLabelList())) {
        if (label->pOwnerEdge() != &edge || label->graphObjectStatus() == QxStatusMoved ||
            (keepsPath && label->moveLabelOnOwnerMove() != 0)) {
            continue;  // a client moves it, or it has its place on the path as before
        }
        if (isBack && label->pStoredCenter() != nullptr) {
            label->restoreMovedLabel(1);
            label->storeMovedLabel();
        } else {
            label->actOnLabelEdgeMoved();
        }
    }
}

void Reactions::restore() {
    for (std::size_t i = 0; i < m_edges.size(); ++i) {
        const Ref edge(*m_edges[i]);
        if (!isHere(*edge)) {
            continue;
        }
        const Ref record(*edge->pEdgeInitialGeometry());
        if (record->m_isPlain && isBare(*edge)) {
            continue;
        }
        if (record->isUsable()) {
            record->restorePath();
        }
        placeLabels(*edge, true);
    }
}

}  // namespace qx::internal
