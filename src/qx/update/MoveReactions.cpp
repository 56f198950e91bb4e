// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/update/internal/MoveReactions.h"

#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxEdgeLabel.h"
#include "qx/drawing/QxPNode.h"
#include "qx/drawing/path/internal/TakeBends.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/foundation/util/internal/Ref.h"
#include "qx/update/QxDEdgeInitialGeometry.h"
#include "qx/update/internal/EdgeEnds.h"
#include "qx/update/internal/Reactions.h"

namespace qx::internal {

namespace {

/// The manager of a drawing in which a change of the graph's contents is reacted to; null
/// elsewhere.
QxDGraphManager* reactingManager(const QxDGraph* graph) {
    QxDGraphManager* manager = graph != nullptr ? graph->pOwnerGraphManager() : nullptr;
    return manager != nullptr && manager->isReading() == 0 && graph->fileReadRunning() == 0 &&
                   graph->isVisible() != 0
               ? manager
               : nullptr;
}

/// Calls `act` with the reactions that the change joins, or with new ones, which `own` keeps.
template <class Act>
void collect(QxDGraphManager& manager, Reactions::Extent extent, std::unique_ptr<Reactions>& own,
             const Act& act) {
    if (Reactions* open = Reactions::open(manager)) {
        act(*open);
    } else if (manager.isUpdatingAffectedGraphs() == 0) {
        own = std::make_unique<Reactions>(manager, extent);
        act(*own);
    }
}

/// Whether an edge at the node, or all of its graph, is asked to run along the axes: of others a
/// fit changes nothing.
bool hasEdgesAlongAxes(const QxDNode& node) {
    for (const QxEdgeDList* list : {node.pInEdgeList(), node.pOutEdgeList()}) {
        for (const QxDEdge* edge : each<QxDEdge>(*list)) {
            if (edge->internalOrthogonalRouting() != 0) {
                return true;
            }
        }
    }
    return node.pOwnerGraph() != nullptr && node.pOwnerGraph()->orthogonalRouting() != 0;
}

}  // namespace

MoveReactions::MoveReactions(QxDNode& node, MoveKind kind) : m_node(node), m_start(node.iCenter()) {
    if (kind != MoveKind::Wanted && !hasEdgesAlongAxes(node)) {
        return;
    }
    const bool movesNested = kind != MoveKind::FitAround && node.pChildGraphForestEdge() != nullptr;
    QxDGraphManager* manager =
        movesNested || Reactions::concern(node) ? reactingManager(node.pOwnerGraph()) : nullptr;
    if (manager == nullptr || node.graphObjectStatus() == QxStatusMoved) {
        return;  // or it moves with a selection, whose edges are known
    }
    collect(*manager, kind == MoveKind::Wanted ? Reactions::Whole : Reactions::RoomOnly, m_own,
            [&](Reactions& reactions) {
                if (movesNested) {
                    reactions.addNested(node, m_carried);
                }
                reactions.addAround(node, m_carried);
            });
}

MoveReactions::MoveReactions(QxConnector& connector) {
    QxDGraphManager* manager =
        connector.isUsed() != 0 ? reactingManager(connector.pOwnerGraph()) : nullptr;
    if (manager != nullptr && connector.graphObjectStatus() != QxStatusMoved) {
        collect(*manager, Reactions::Whole, m_own,
                [&](Reactions& reactions) { reactions.addAround(connector); });
    }
}

MoveReactions::~MoveReactions() {
    carry();
    if (m_own) {
        m_own->run();
    }
}

void MoveReactions::carry() const {
    for (const Ref<QxDEdge>& edge : m_carried) {
        QxPoint from = m_start;
        QxPoint to = m_node->iCenter();
        fromNode(*edge, *m_node, from);
        fromNode(*edge, *m_node, to);
        const QxPoint step = to - from;
        if (!isActive(*edge)) {
            continue;
        }
        for (QxPNode* bend : heldBends(*edge)) {
            if (bend->pOwnerEdge() == edge.get()) {
                bend->ntMove(step.x(), step.y());
            }
        }
    }
}

bool dragBend(QxPNode& bend, const QxPoint& center) {
    QxDEdge* const edge = bend.pOwnerEdge();
    QxDGraphManager* manager = edge != nullptr ? reactingManager(edge->pOwnerGraph()) : nullptr;
    if (manager == nullptr || !isActive(*edge) || edge->pEdgeInitialGeometry() != nullptr ||
        manager->isUpdatingAffectedGraphs() != 0) {
        return false;  // or it is noticed by those who are about to work the path out
    }
    const QxPoint step = center - bend.iCenter();
    if (bend.iCenter() + step != center) {
        return false;  // farther than a coordinate can tell
    }
    const Ref alive(*edge);
    const Ref dragged(bend);
    auto record = Ref<QxDEdgeInitialGeometry>::adopt(new QxDEdgeInitialGeometry(&bend));
    const Snapshot<QxEdgeLabel> labels(edge->pLabelList());
    for (QxEdgeLabel* label : labels) {
        label->cleanUpLabelMoveControlInfo();
        label->collectInitInfoOwnerEdgeMoved();
    }
    record->moveBy(step.x(), step.y());
    for (QxEdgeLabel* label : labels) {
        if (label->pOwnerEdge() == edge) {
            label->actOnLabelEdgeMoved();
        }
        label->cleanUpLabelMoveControlInfo();
    }
    return true;
}

namespace {

/// Of an edge whose record the running move has made, and whose end at the connector was there
/// then.
QxDEdgeInitialGeometry* recordAt(const QxConnector& connector, const QxDEdge& edge,
                                 bool& atSource) {
    QxDEdgeInitialGeometry* record = edge.pEdgeInitialGeometry();
    atSource = edge.pInternalSourceConnector() == &connector;
    const bool isSaved = record != nullptr &&
                         (atSource ? record->hasFromConnector() : record->hasToConnector()) != 0;
    return isSaved ? record : nullptr;
}

}  // namespace

std::optional<OffsetAtStart> offsetAtStart(const QxConnector& connector, const QxDEdge& edge) {
    bool atSource = false;
    const QxDEdgeInitialGeometry* record = recordAt(connector, edge, atSource);
    if (record == nullptr) {
        return std::nullopt;
    }
    return OffsetAtStart{atSource ? record->fromOffset() : record->toOffset(),
                         record->nodeRectAtStart(atSource)};
}

void noteNewOffset(const QxConnector& connector, const QxDEdge& edge, const QxSize& offset) {
    bool atSource = false;
    if (QxDEdgeInitialGeometry* record = recordAt(connector, edge, atSource)) {
        (atSource ? *record->pFromNewOffset() : *record->pToNewOffset()) = offset;
    }
}

void noteNewPlace(const QxConnector& connector, const QxDEdge& edge) {
    bool atSource = false;
    const QxDEdgeInitialGeometry* record = recordAt(connector, edge, atSource);
    if (record == nullptr || connector.pOwnerNode() == nullptr) {
        return;
    }
    const QxRect& rect = *connector.pOwnerNode()->pIRect();
    const QxPoint place = connector.ntCenter() - rect.center();
    const QxPerMil& perMil = atSource ? record->fromPerMil() : record->toPerMil();
    noteNewOffset(connector, edge,
                  QxSize(qx::saturatingSub(place.x(), perMil.getOffsetX(rect)),
                         qx::saturatingSub(place.y(), perMil.getOffsetY(rect))));
}

}  // namespace qx::internal
