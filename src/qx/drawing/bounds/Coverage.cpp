// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/drawing/bounds/internal/Coverage.h"

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxConnectorManager.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxEdgeLabel.h"
#include "qx/drawing/QxPNode.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/drawing/bounds/internal/ExtentTree.h"
#include "qx/drawing/internal/Extras.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/nesting/internal/MetaEdgeUpkeep.h"
#include "qx/spatial/internal/IndexUpkeep.h"

namespace qx::internal {

namespace {

template <class Act>
void eachConnectorOf(const QxDNode& node, const Act& act) {
    if (const QxConnectorManager* connectors = node.pQueryConnectorManager()) {
        for (QxConnector* connector : each<QxConnector>(*connectors)) {
            act(*connector);
        }
    }
}

}  // namespace

template <class Owner, class Act>
void Coverage::eachLabelOf(const Owner& owner, const Act& act) {
    if (const QxDList* labels = owner.pQueryExtras() != nullptr ? owner.pLabelList() : nullptr) {
        for (QxLabel* label : each<QxLabel>(*labels)) {
            act(*label);
        }
    }
}

void Coverage::place(QxDGraph& graph, QxLabel& label) {
    QxRect rect;
    label.ntBoundingRect(rect);
    graph.extents().set(label.m_extentSlot, rect);
}

void Coverage::changed(QxDNode& node) {
    if (QxDGraph* graph = node.pOwnerGraph()) {
        graph->extents().set(node.m_extentSlot, *node.pIRect());
        eachLabelOf(node, [&](QxLabel& label) { place(*graph, label); });
        IndexUpkeep::changed(node);
        eachConnectorOf(node, [](QxConnector& connector) { changed(connector); });
    }
}

void Coverage::changed(QxConnector& connector) {
    QxDGraph* graph = connector.specified() != 0 ? connector.pGraph() : nullptr;
    if (graph != nullptr) {
        QxRect rect;
        connector.ntBoundingRect(rect);
        graph->extents().set(connector.m_extentSlot, rect);
        eachLabelOf(connector, [&](QxLabel& label) { place(*graph, label); });
        IndexUpkeep::changed(connector);
    } else {
        ended(connector);
    }
}

void Coverage::changed(QxPNode& bend) {
    const QxDEdge* edge = bend.pOwnerEdge();
    if (edge != nullptr && counts(*edge)) {
        const QxPoint point = bend.iCenter();
        bend.pOwnerGraph()->extents().set(bend.m_extentSlot, QxRect(point, point));
    } else if (bend.m_extentSlot != ExtentTree::NoSlot) {
        bend.pOwnerGraph()->extents().clear(bend.m_extentSlot);
    }
    IndexUpkeep::changed(bend);
}

void Coverage::changed(QxPEdge& segment) {
    IndexUpkeep::changed(segment);
}

void Coverage::changed(QxDEdge& edge) {
    placeEnds(edge);
    IndexUpkeep::endsChanged(edge);
}

void Coverage::placeEnds(QxDEdge& edge) {
    const QxDGraph* graph = edge.pOwnerGraph();
    if (edge.m_extentSlot == ExtentTree::NoSlot && graph != nullptr && graph->isIntergraph() == 0 &&
        !edge.hasConnectors()) {
        edge.setFlag(flags::EdgeIsTracked, graph->pQuadTree() != nullptr ? 1 : 0);
        return;  // a plain edge
    }
    const bool isBetween = edge.intergraphEdge() != 0;
    const bool hasEnds = isBetween || edge.hasCalculatedConnector();
    const bool shows = hasEnds && counts(edge);
    if (isBetween && shows != (edge.m_extentSlot != ExtentTree::NoSlot)) {
        edge.isUpdatedVisiblePart(0);  // an end that nobody sees cuts nothing off
    }
    if (shows) {
        QxRect rect;
        edge.ntBoundingRect(rect, 0);
        graph->extents().set(edge.m_extentSlot, rect);
    } else {
        endsEnded(edge);
    }
    const bool isTracked = hasEnds || (graph != nullptr && graph->pQuadTree() != nullptr);
    edge.setFlag(flags::EdgeIsTracked, isTracked ? 1 : 0);
}

void Coverage::countChanged(QxDEdge& edge) {
    placeEnds(edge);
    if (edge.pQueryExtras() == nullptr) {
        IndexUpkeep::countChanged(edge);
        return;  // it has neither parts nor labels
    }
    for (auto part = edge.madeParts(); part && part.pNode() != nullptr; ++part) {
        changed(*part.pNode());
    }
    IndexUpkeep::countChanged(edge);
    labelsChanged(edge);
}

void Coverage::changed(QxLabel& label) {
    const QxConnector* connector = label.pOwnerConnector();
    if (QxDEdge* edge = label.pOwnerEdge()) {
        outdateLabels(*edge, &label);
    } else if (label.isGraphLabel() == 0 && label.pGraph() != nullptr &&
               (connector == nullptr || connector->specified() != 0)) {
        place(*label.pGraph(), label);
    }
    IndexUpkeep::changed(label);
    if (label.isGraphLabel() != 0 && label.pGraph() != nullptr) {
        ownLabelsChanged(*label.pGraph());
    }
}

void Coverage::ownLabelsChanged(QxDGraph& graph) {
    if (graph.isAnchorGraph() == 0) {
        const bool isEmpty = graph.numberOfNodes() == 0 && graph.numberOfEdges() == 0 &&
                             graph.numberOfGraphLabels() == 0;
        graph.refitAround(isEmpty ? 1 : 0);
    }
}

void Coverage::outdateLabels(QxDEdge& edge, QxLabel* one) {
    QxLabelManager* labels = edge.pQueryLabelManager();
    if (labels == nullptr || labels->m_labels.isEmpty() != 0 || !counts(edge)) {
        labelsEnded(edge);
    } else if (labels->m_outdatedCell.isLinked() == 0) {
        edge.pOwnerGraph()->graphExtras().outdatedLabelEdges.appendCell(&labels->m_outdatedCell);
        labels->m_outdated = one;
    } else if (labels->m_outdated != one) {
        labels->m_outdated = nullptr;
    }
}

void Coverage::labelsChanged(QxDEdge& edge) {
    if (edge.pQueryExtras() != nullptr) {  // or it is a plain edge
        outdateLabels(edge, nullptr);
        IndexUpkeep::labelsChanged(edge);
    }
}

void Coverage::labelsChanged(QxDGraph& graph) {
    IndexUpkeep::labelsChanged(graph);
}

void Coverage::refreshLabels(const QxDGraph& graph) {
    auto* extras = static_cast<GraphExtras*>(graph.pQueryExtras());
    QxDList* outdated = extras != nullptr ? &extras->outdatedLabelEdges : nullptr;
    while (outdated != nullptr && outdated->isEmpty() == 0) {
        auto& edge = *static_cast<QxDEdge*>(outdated->pFirstObject());
        if (!counts(edge)) {
            labelsEnded(edge);  // it has ceased to show, and nobody has said so
            continue;
        }
        edge.refreshVisiblePart();  // which may outdate the others, too
        outdated->removeCell(outdated->pFirstCell());
        QxDGraph& owner = *edge.pOwnerGraph();
        if (QxLabel* one = edge.pQueryLabelManager()->m_outdated) {
            place(owner, *one);
        } else {
            eachLabelOf(edge, [&](QxLabel& label) { place(owner, label); });
        }
    }
}

void Coverage::ended(QxLabel& label) {
    if (const QxDEdge* edge = label.pOwnerEdge()) {
        QxLabelManager& labels = *edge->pQueryLabelManager();
        if (labels.m_outdated == &label || labels.m_labels.count() == 1) {
            forgetOutdated(*edge, labels);
        }
    }
    if (label.m_extentSlot != ExtentTree::NoSlot) {
        label.pGraph()->extents().clear(label.m_extentSlot);
    }
    IndexUpkeep::ended(label);
}

void Coverage::labelsEnded(QxDEdge& edge) {
    QxLabelManager* labels = edge.pQueryExtras() != nullptr ? edge.pQueryLabelManager() : nullptr;
    if (labels == nullptr) {
        return;
    }
    forgetOutdated(edge, *labels);
    if (const QxDGraph* graph = edge.pOwnerGraph()) {
        eachLabelOf(edge, [&](QxLabel& label) { graph->extents().clear(label.m_extentSlot); });
    }
}

void Coverage::forgetOutdated(const QxDEdge& edge, QxLabelManager& labels) {
    labels.m_outdated = nullptr;
    if (labels.m_outdatedCell.isLinked() != 0) {
        edge.pOwnerGraph()->graphExtras().outdatedLabelEdges.removeCell(&labels.m_outdatedCell);
    }
}

void Coverage::ownerChanged(QxDNode& node) {
    for (const QxEdgeDList* list : {node.pInEdgeList(), node.pOutEdgeList()}) {
        for (QxDEdge* edge : each<QxDEdge>(*list)) {
            if (edge->intergraphEdge() != 0) {
                countChanged(*edge);
                MetaEdgeUpkeep::changed(*edge);
            }
        }
    }
}

void Coverage::allChanged(QxDGraph& between) {
    for (QxDEdge* edge : each<QxDEdge>(*between.pEdgeList())) {
        countChanged(*edge);
    }
}

void Coverage::ended(QxDNode& node) {
    if (node.m_extentSlot != ExtentTree::NoSlot) {
        node.pOwnerGraph()->extents().clear(node.m_extentSlot);
        IndexUpkeep::ended(node);
        eachLabelOf(node, [](QxLabel& label) { ended(label); });
        eachConnectorOf(node, [](QxConnector& connector) { ended(connector); });
    }
}

void Coverage::ended(QxConnector& connector) {
    if (connector.m_extentSlot != ExtentTree::NoSlot) {
        connector.pGraph()->extents().clear(connector.m_extentSlot);
    }
    IndexUpkeep::ended(connector);
    eachLabelOf(connector, [](QxLabel& label) { ended(label); });
}

void Coverage::ended(QxPNode& bend) {
    if (bend.m_extentSlot != ExtentTree::NoSlot) {
        bend.pOwnerGraph()->extents().clear(bend.m_extentSlot);
    }
    IndexUpkeep::ended(bend);
}

void Coverage::segmentMade(QxDEdge& edge, QxPEdge& segment) {
    IndexUpkeep::segmentMade(edge, segment);
}

void Coverage::impliedSegmentEnds(QxDEdge& edge) {
    IndexUpkeep::impliedSegmentEnded(edge);
}

void Coverage::ended(QxPEdge& segment) {
    IndexUpkeep::ended(segment);
}

void Coverage::endsEnded(QxDEdge& edge) {
    if (edge.m_extentSlot != ExtentTree::NoSlot) {
        edge.pOwnerGraph()->extents().clear(edge.m_extentSlot);
    }
}

void Coverage::ended(QxDEdge& edge) {
    endsEnded(edge);
    if (edge.pQueryExtras() != nullptr || (edge.flagWord() & flags::InQuadTree) != 0) {
        labelsEnded(edge);
        eachLabelOf(edge, [](QxLabel& label) { IndexUpkeep::ended(label); });
        IndexUpkeep::ended(edge);
    }
}

bool Coverage::counts(const QxDEdge& edge) {
    const QxDGraph* graph = edge.pOwnerGraph();
    if (graph == nullptr || edge.connected() == 0 || edge.deactivated() != 0) {
        return false;
    }
    return graph->isIntergraph() == 0 || edge.isVisible() != 0;
}

}  // namespace qx::internal
