// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// What shows, what stands for what does not, why something does not show, and what makes it show.
//
// All of it comes from one climb: from the graph of an object outward, through the nodes (and
// edges) whose child graph it is and through the graphs from which something is hidden, to the
// anchor graph. On the way there are collapsed nodes, folder nodes among them, and hidden ones.
// What a climb meets last is outermost: it is what a user sees, and has to open first. What opens a
// way starts inside, so that each node is fitted once.

#include <algorithm>
#include <unordered_set>
#include <vector>

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxLabel.h"
#include "qx/drawing/QxPEdge.h"
#include "qx/drawing/QxPNode.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/foundation/util/internal/Ref.h"
#include "qx/nesting/QxDChildGraphForestEdge.h"
#include "qx/nesting/QxDChildGraphForestNode.h"
#include "qx/nesting/internal/MetaEnds.h"

using qx::internal::each;
using qx::internal::MetaEnds;
using qx::internal::NeededMetaEnds;
using qx::internal::Ref;

namespace {

/// The node, edge or graph that a label, connector, bend or segment belongs to; the object itself
/// when it is none of these. Null when it belongs to nothing.
QxGraphObject* pCarrier(QxGraphObject* object) {
    while (object != nullptr) {
        if (object->isLabel() != 0) {
            object = static_cast<QxLabel*>(object)->pOwnerGraphObject();
        } else if (object->isConnector() != 0) {
            object = static_cast<QxConnector*>(object)->pOwnerNode();
        } else if (object->isPathNode() != 0) {
            object = static_cast<QxPNode*>(object)->pOwnerEdge();
        } else if (object->isPathEdge() != 0) {
            object = static_cast<QxPEdge*>(object)->pOwnerEdge();
        } else {
            break;
        }
    }
    return object;
}

bool isHidden(const QxGraphMember& member) {
    const QxGraph* graph = member.pOwnerGraph();
    return graph != nullptr && graph->isHideGraph() != 0;
}

/// Whether the child graph of the member is not shown: that of an edge never is.
bool isShut(const QxGraphMember& member) {
    return member.isNode() == 0 || static_cast<const QxDNode&>(member).expanded() == 0;
}

/// Climbs from `graph` to the anchor graph and calls `visit` with every node and edge whose child
/// graph it comes out of. Returns the graph where it ends: the anchor graph, or else an outermost
/// one.
template <class Visit>
QxDGraph* climb(const QxDGraphManager& manager, QxDGraph* graph, const Visit& visit) {
    QxDGraph* const anchor = manager.pAnchorGraph();
    while (true) {
        if (graph->isIntergraph() != 0 && anchor != nullptr) {
            return anchor;  // whose coordinates it shares
        }
        if (QxDGraph* around = graph->pHideFromGraph()) {
            graph = around;
        }
        QxGraphMember* const member = graph != anchor ? graph->pParentGraphMember() : nullptr;
        QxGraph* const around = member != nullptr ? member->pOwnerGraph() : nullptr;
        if (around == nullptr) {
            return graph;
        }
        visit(*member);
        graph = static_cast<QxDGraph*>(around);
    }
}

/// The graph of a node or edge, or the graph itself; null when the manager does not list it.
QxDGraph* pGraphIn(const QxDGraphManager& manager, QxGraphObject& carrier) {
    QxGraph* graph = nullptr;
    if (carrier.isGraph() != 0) {
        graph = static_cast<QxGraph*>(&carrier);
    } else if (carrier.isNode() != 0 || carrier.isEdge() != 0) {
        graph = static_cast<QxGraphMember&>(carrier).pOwnerGraph();
    }
    return graph != nullptr && graph->pOwnerGraphManager() == &manager
               ? static_cast<QxDGraph*>(graph)
               : nullptr;
}

// --- What stands for what

/// What stands for whatever lies in the graph; `inside` where nothing is in the way.
QxGraphObject* pStandInFor(const QxDGraphManager& manager, QxDGraph* graph, QxGraphObject* inside) {
    QxGraphObject* standIn = inside;
    bool meetsHidden = graph->isHideGraph() != 0;
    const QxDGraph* const end = climb(manager, graph, [&](QxGraphMember& member) {
        standIn = isShut(member) ? &member : standIn;
        meetsHidden = meetsHidden || isHidden(member);
    });
    if (meetsHidden || end != manager.pAnchorGraph() ||
        (standIn->isEdge() != 0 && standIn->isVisible() == 0)) {
        return nullptr;
    }
    return standIn;
}

QxGraphObject* pStandInFor(const QxDGraphManager& manager, QxDNode* node) {
    QxDGraph* const graph = node != nullptr ? pGraphIn(manager, *node) : nullptr;
    return graph != nullptr ? pStandInFor(manager, graph, node) : nullptr;
}

/// The visible meta-edge that joins these, the first of several; null for none.
QxDEdge* pMetaEdgeBetween(const QxDGraphManager& manager, const MetaEnds& ends) {
    if (!ends.isComplete()) {
        return nullptr;
    }
    const QxEdgeDList& leaving = *ends.first->pOutEdgeList();
    const QxEdgeDList& entering = *ends.second->pInEdgeList();
    const auto isBefore = [](const QxDEdge& a, const QxDEdge& b) {
        return a.intergraphEdge() != b.intergraphEdge() ? b.intergraphEdge() != 0
                                                        : a.listStamp() < b.listStamp();
    };
    QxDEdge* first = nullptr;
    for (QxDEdge* edge : each<QxDEdge>(leaving.count() < entering.count() ? leaving : entering)) {
        if (edge->isMetaEdge() != 0 && edge->isVisible() != 0 &&
            qx::internal::endsOfMetaEdge(*edge, manager) == ends &&
            (first == nullptr || isBefore(*edge, *first))) {
            first = edge;
        }
    }
    return first;
}

/// What a meta-edge in place of the edge joins; incomplete when there is none.
MetaEnds neededFor(const QxDEdge& edge, NeededMetaEnds& needed) {
    const bool isDrawn = edge.connected() != 0 && edge.deactivated() == 0;
    return isDrawn && edge.intergraphEdge() != 0 && edge.isMetaEdge() == 0 ? needed.of(edge)
                                                                           : MetaEnds();
}

QxGraphObject* pStandInFor(const QxDGraphManager& manager, QxDEdge* edge) {
    if (edge->isVisible() != 0) {
        return edge;
    }
    QxGraphObject* const source = pStandInFor(manager, edge->pSourceNode());
    if (source == nullptr) {
        return nullptr;
    }
    QxGraphObject* const target = pStandInFor(manager, edge->pTargetNode());
    if (target == nullptr || source == target) {
        return target;
    }
    NeededMetaEnds needed(manager);
    return pMetaEdgeBetween(manager, neededFor(*edge, needed));
}

}  // namespace

QxGraphObject* QxDGraphManager::pVisibleRepresentative(QxGraphObject* object) const {
    QxGraphObject* const carrier = pCarrier(object);
    QxDGraph* const graph = carrier != nullptr ? pGraphIn(*this, *carrier) : nullptr;
    if (graph == nullptr) {
        return nullptr;
    }
    QxGraphObject* const standIn = carrier->isEdge() != 0
                                       ? pStandInFor(*this, static_cast<QxDEdge*>(carrier))
                                       : pStandInFor(*this, graph, carrier);
    return standIn == carrier ? object : standIn;
}

namespace {

/// What one object stands for.
class Represented {
public:
    Represented(const QxDGraphManager& manager, QxDList& list) : m_manager(manager), m_list(list) {}

    /// The nodes in a collapsed node, and the edges that do not leave it.
    void appendContents(QxDNode& node) {
        std::vector<QxDNode*> nodes{&node};
        if (node.collapsed() != 0) {
            collectGraphs(*node.pChildGraph());
            for (const QxDGraph* graph : m_graphs) {
                for (QxDNode* inside : each<QxDNode>(*graph->pNodeList())) {
                    nodes.push_back(inside);
                    m_list.appendObject(inside);
                }
            }
        }
        for (const QxDNode* source : nodes) {
            for (const QxEdgeDList* edges :
                 {source->pOutEdgeList(), source->pDisconnectedEdgeList(),
                  source->pDeactivatedEdgeList()}) {
                appendInnerEdges(node, *source, *edges);
            }
        }
    }

    /// The edges that a meta-edge stands for, in their order; those that a self-loop is drawn for
    /// count as represented by its node.
    void appendReplaced(const QxDEdge& metaEdge) {
        const MetaEnds ends = qx::internal::endsOfMetaEdge(metaEdge, m_manager);
        if (!ends.isComplete() || ends.first == ends.second ||
            pMetaEdgeBetween(m_manager, ends) != &metaEdge) {
            return;
        }
        std::vector<QxDEdge*> replaced;
        NeededMetaEnds needed(m_manager);
        const auto take = [&](const QxEdgeDList& edges) {
            for (QxDEdge* edge : each<QxDEdge>(edges)) {
                if (neededFor(*edge, needed) == ends) {
                    replaced.push_back(edge);
                }
            }
        };
        take(*ends.first->pOutEdgeList());
        if (ends.first->collapsed() != 0) {
            collectGraphs(*ends.first->pChildGraph());
            for (const QxDGraph* graph : m_graphs) {
                take(*graph->pLeavingIntergraphEdgeList());
            }
        }
        std::sort(replaced.begin(), replaced.end(), [](const QxDEdge* a, const QxDEdge* b) {
            return a->listStamp() < b->listStamp();
        });
        for (QxDEdge* edge : replaced) {
            m_list.appendObject(edge);
        }
    }

private:
    void collectGraphs(const QxDGraph& outermost) {
        m_graphs.push_back(&outermost);
        for (std::size_t i = 0; i < m_graphs.size(); ++i) {
            for (const auto* relation : each<QxDChildGraphForestEdge>(
                     *m_graphs[i]->pChildGraphForestNode()->pOutEdgeList())) {
                m_graphs.push_back(relation->pChildGraph());
            }
        }
        m_isInside.insert(m_graphs.begin(), m_graphs.end());
    }

    void appendInnerEdges(const QxDNode& node, const QxDNode& source, const QxEdgeDList& edges) {
        const QxDEdge* previous = nullptr;
        for (QxDEdge* edge : each<QxDEdge>(edges)) {
            const QxDNode* const target = edge->pTargetNode();
            const bool isInner = target != nullptr &&
                                 (target == &node || m_isInside.count(target->pOwnerGraph()) != 0);
            // Idle self-loops stand twice in a row.
            if (isInner && edge->pSourceNode() == &source && edge != previous &&
                edge->isVisible() == 0) {
                m_list.appendObject(edge);
            }
            previous = edge;
        }
    }

    const QxDGraphManager& m_manager;
    QxDList& m_list;
    std::vector<const QxDGraph*> m_graphs;
    std::unordered_set<const QxDGraph*> m_isInside;
};

}  // namespace

void QxDGraphManager::buildRepresentedObjectList(QxGraphObject* representative,
                                                 QxDList& list) const {
    list.deleteAllCells();
    if (representative == nullptr || pVisibleRepresentative(representative) != representative) {
        return;
    }
    list.appendObject(representative);
    Represented represented(*this, list);
    if (pCarrier(representative) != representative) {
        return;
    }
    if (representative->isNode() != 0) {
        represented.appendContents(*static_cast<QxDNode*>(representative));
    } else if (representative->isEdge() != 0 &&
               static_cast<QxDEdge*>(representative)->isMetaEdge() != 0) {
        represented.appendReplaced(*static_cast<QxDEdge*>(representative));
    }
}

// --- Why something does not show

namespace {

struct Reason {
    QxInvisibilityEnum why = QxInvisibleNot;
    QxGraphObject* blame = nullptr;

    bool isNone() const { return why == QxInvisibleNot; }
};

/// The outermost thing in the way of what lies in the graph; `inside` when nothing is.
Reason reasonFor(const QxDGraphManager& manager, QxDGraph& graph, const Reason& inside) {
    Reason reason = inside;
    QxDGraph* const end = climb(manager, &graph, [&](QxGraphMember& member) {
        if (isShut(member)) {
            const bool isFolder =
                member.isNode() != 0 && static_cast<QxDNode&>(member).isFolderNode() != 0;
            reason = {isFolder ? QxInvisibleFolded : QxInvisibleCollapsed, &member};
        }
        if (isHidden(member)) {
            reason = {QxInvisibleHidden, &member};
        }
    });
    return end == manager.pAnchorGraph() ? reason : Reason{QxInvisibleOutsideAnchor, end};
}

Reason reasonForMember(const QxDGraphManager& manager, QxGraphMember& member) {
    QxDGraph* const graph = pGraphIn(manager, member);
    if (graph == nullptr) {
        return {QxInvisibleUnowned, &member};
    }
    return reasonFor(manager, *graph,
                     isHidden(member) ? Reason{QxInvisibleHidden, &member} : Reason());
}

Reason reasonForEdge(const QxDGraphManager& manager, QxDEdge& edge) {
    Reason reason = reasonForMember(manager, edge);
    if (reason.isNone() && edge.intergraphEdge() != 0) {
        for (QxDNode* node : {edge.pSourceNode(), edge.pTargetNode()}) {
            if (reason.isNone() && node != nullptr) {
                reason = reasonForMember(manager, *node);
            }
        }
    }
    if (!reason.isNone()) {
        return reason;
    }
    if (edge.connected() == 0 || edge.deactivated() != 0) {
        return {QxInvisibleNotConnected, &edge};
    }
    return edge.hasVisiblePart() != 0 ? Reason() : Reason{QxInvisibleEndsCoverEachOther, &edge};
}

Reason reasonForObject(const QxDGraphManager& manager, QxGraphObject* object) {
    QxGraphObject* const carrier = pCarrier(object);
    QxDGraph* const graph = carrier != nullptr ? pGraphIn(manager, *carrier) : nullptr;
    if (graph == nullptr) {
        return {QxInvisibleUnowned, object};
    }
    if (carrier->isEdge() != 0) {
        return reasonForEdge(manager, *static_cast<QxDEdge*>(carrier));
    }
    return carrier->isNode() != 0
               ? reasonForMember(manager, *static_cast<QxDNode*>(carrier))
               : reasonFor(manager, *graph,
                           graph->isHideGraph() != 0 ? Reason{QxInvisibleHidden, graph} : Reason());
}

}  // namespace

QxInvisibilityEnum QxDGraphManager::whyInvisible(QxGraphObject* object,
                                                 QxGraphObject** blame) const {
    const Reason reason = reasonForObject(*this, object);
    if (blame != nullptr) {
        *blame = reason.blame;
    }
    return reason.why;
}

// --- What makes something show

namespace {

/// Opens the way to objects and counts its steps. Listeners hear of each; where they stop one, the
/// way ends.
class Opening {
public:
    Opening(QxDGraphManager& manager, QxDList* touched) : m_manager(manager), m_touched(touched) {}

    int steps() const { return m_steps; }

    /// Whether nothing but hidden and collapsed nodes is in the way.
    bool canShow(QxDNode* node) const {
        QxDGraph* const graph = node != nullptr ? pGraphIn(m_manager, *node) : nullptr;
        return graph != nullptr && isReachable(*graph);
    }
    bool canShow(QxDEdge& edge) const {
        constexpr std::uint32_t ReturnsIdle =
            qx::flags::EdgeReturnsDisconnected | qx::flags::EdgeReturnsDeactivated;
        const bool isDrawn = edge.hidden() != 0 ? (edge.flagWord() & ReturnsIdle) == 0
                                                : edge.connected() != 0 && edge.deactivated() == 0;
        return isDrawn && canShow(edge.pSourceNode()) && canShow(edge.pTargetNode());
    }
    /// Whether the graph lies, in whatever nodes, in the anchor graph.
    bool isReachable(QxDGraph& graph) const {
        bool isInNodes = graph.isHideGraph() == 0 || graph.pHideFromGraph() != nullptr;
        const QxDGraph* const end = climb(m_manager, &graph, [&](const QxGraphMember& member) {
            isInNodes = isInNodes && member.isNode() != 0;
        });
        return isInNodes && end != nullptr && end == m_manager.pAnchorGraph();
    }

    bool show(QxDNode& node) {
        // The nodes around it first: unfolding takes what it unfolds out of one of them.
        std::vector<Ref<QxDNode>> around;
        climb(m_manager, node.pOwnerGraph(),
              [&](QxGraphMember& member) { around.emplace_back(static_cast<QxDNode*>(&member)); });
        bool isOpen = unhide(node);
        for (const Ref<QxDNode>& outer : around) {
            isOpen = isOpen && unhide(*outer) && openUp(*outer);
        }
        return isOpen;
    }
    bool show(QxDEdge& edge) {
        const Ref source(*edge.pSourceNode());
        const Ref target(*edge.pTargetNode());
        return show(*source) && canShow(target.get()) && show(*target) && unhide(edge);
    }
    bool show(QxDGraph& graph) {
        auto* const parent = static_cast<QxDNode*>(graph.pParentGraphMember());
        if (graph.isAnchorGraph() != 0 || parent == nullptr) {
            return graph.isVisible() != 0;
        }
        const Ref alive(*parent);
        // Unfolding would empty the graph, so a folder node is expanded, too.
        return unhide(*parent) && expand(*parent) && show(*parent);
    }

private:
    template <class Member>
    bool unhide(Member& member) {
        QxDGraph* const hidden = member.pOwnerGraph();
        QxDGraph* const graph = hidden != nullptr ? hidden->pHideFromGraph() : nullptr;
        if (graph == nullptr) {
            return hidden != nullptr;
        }
        unhideFrom(*graph, member);
        return count(member, member.ownerValid() != 0 && member.hidden() == 0);
    }
    static void unhideFrom(QxDGraph& graph, QxDNode& node) {
        QxDNodeDList nodes;
        nodes.appendNode(&node);
        graph.unhide(&nodes, nullptr, nullptr, nullptr, 0);
    }
    static void unhideFrom(QxDGraph& graph, QxDEdge& edge) {
        QxDEdgeDList edges;
        edges.appendEdge(&edge);
        graph.unhide(nullptr, &edges, nullptr, nullptr, 0);
    }

    bool openUp(QxDNode& node) {
        QxDGraph* const graph = node.pOwnerGraph();
        if (node.isFolderNode() == 0 || node.collapsed() == 0 || graph == nullptr) {
            return expand(node);
        }
        return count(node, graph->unfold(&node, nullptr, nullptr, 1) != 0);
    }
    bool expand(QxDNode& node) { return node.collapsed() == 0 || count(node, node.expand() != 0); }

    bool count(QxGraphObject& object, bool isDone) {
        if (isDone) {
            ++m_steps;
            if (m_touched != nullptr) {
                m_touched->appendObject(&object);
            }
        }
        return isDone;
    }

    QxDGraphManager& m_manager;
    QxDList* m_touched;
    int m_steps = 0;
};

}  // namespace

int QxDGraphManager::showObject(QxGraphObject* object, QxDList* touched) {
    QxGraphObject* const carrier = pCarrier(object);
    QxDGraph* const graph = carrier != nullptr ? pGraphIn(*this, *carrier) : nullptr;
    if (graph == nullptr) {
        return -1;
    }
    const Ref alive(*this);
    const Ref carrierAlive(*carrier);
    Opening opening(*this, touched);
    bool isShown = false;
    if (carrier->isEdge() != 0) {
        auto& edge = *static_cast<QxDEdge*>(carrier);
        isShown = opening.canShow(edge) && opening.show(edge);
    } else if (carrier->isNode() != 0) {
        auto& node = *static_cast<QxDNode*>(carrier);
        isShown = opening.canShow(&node) && opening.show(node);
    } else {
        isShown = graph->isHideGraph() == 0 && opening.isReachable(*graph) && opening.show(*graph);
    }
    return isShown && whyInvisible(object, nullptr) == QxInvisibleNot ? opening.steps() : -1;
}
