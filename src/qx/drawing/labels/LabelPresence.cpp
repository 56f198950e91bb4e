// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/drawing/labels/internal/LabelPresence.h"

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxDrawingIters.h"
#include "qx/drawing/internal/Extras.h"

namespace qx::internal {

void LabelPresence::settle(QxDGraph* graph, Kind kind, QxLabelManager* labels, std::int32_t count) {
    if (graph == nullptr || labels == nullptr || count == labels->m_counted) {
        return;
    }
    const QxTriStateEnum state = count > labels->m_counted ? QxTriStateYes : QxTriStateUnknown;
    GraphExtras& extras = graph->graphExtras();
    switch (kind) {
        case Kind::Node:
            extras.nodeLabels += count - labels->m_counted;
            graph->hasNodeLabelsState(state);
            break;
        case Kind::Edge:
            extras.edgeLabels += count - labels->m_counted;
            graph->hasEdgeLabelsState(state);
            break;
        case Kind::Connector:
            extras.connectorLabels += count - labels->m_counted;
            graph->hasConnectorLabelsState(state);
            break;
    }
    labels->m_counted = count;
}

void LabelPresence::ownChanged(const QxDNode& node) {
    settle(node.pOwnerGraph(), Kind::Node, node.pQueryLabelManager(), node.numberOfLabels());
}

void LabelPresence::changed(const QxDNode& node) {
    ownChanged(node);
    for (QxInternalConnectorIter it(&node); it; ++it) {
        changed(*it.pConnector());
    }
}

void LabelPresence::changed(QxDEdge& edge) {
    if (edge.pQueryExtras() == nullptr) {
        edge.setFlag(qx::flags::EdgeHasLabels, 0);
        return;
    }
    edge.setFlag(qx::flags::EdgeHasLabels, edge.hasLabels());
    const bool counts = edge.connected() != 0 && edge.deactivated() == 0;
    settle(edge.pOwnerGraph(), Kind::Edge, edge.pQueryLabelManager(),
           counts ? edge.numberOfLabels() : 0);
}

void LabelPresence::ended(const QxDNode& node) {
    settle(node.pOwnerGraph(), Kind::Node, node.pQueryLabelManager(), 0);
    for (QxInternalConnectorIter it(&node); it; ++it) {
        ended(*it.pConnector());
    }
}

void LabelPresence::changed(const QxConnector& connector) {
    settle(connector.pGraph(), Kind::Connector, connector.pQueryLabelManager(),
           connector.specified() != 0 ? connector.numberOfLabels() : 0);
}

void LabelPresence::ended(const QxConnector& connector) {
    settle(connector.pGraph(), Kind::Connector, connector.pQueryLabelManager(), 0);
}

void LabelPresence::ended(const QxDEdge& edge) {
    settle(edge.pOwnerGraph(), Kind::Edge, edge.pQueryLabelManager(), 0);
}

}  // namespace qx::internal
