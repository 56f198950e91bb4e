// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// What another shape of a node does to the connectors there: under control of a layout bundles are
// spread again, and edges along the axes end on the new outline; otherwise edges lose their
// calculated connectors.

#include <map>
#include <utility>

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/drawing/connectors/internal/ConnectorPlace.h"
#include "qx/drawing/internal/AskedCoordinates.h"
#include "qx/drawing/internal/CloneLinks.h"
#include "qx/update/internal/MoveReactions.h"

using qx::internal::Change;
using qx::internal::Snapshot;

namespace {

/// What another shape of a node does to the calculated connectors there. Bundles are looked for
/// once for each node at the other end and each direction: any number of parallel edges costs no
/// more each than a few.
class BundlesAt {
public:
    explicit BundlesAt(QxDNode& node) : m_node(node) {}

    void replaceConnector(const QxShape* shape, QxDEdge& edge, bool isTarget) {
        QxConnector* connector =
            isTarget ? edge.pInternalTargetConnector() : edge.pInternalSourceConnector();
        if (connector == nullptr || connector->pOwnerNode() != &m_node ||
            connector->specified() != 0 || edge.marked() != 0) {
            return;
        }
        const QxDGraphManager* manager = qx::internal::managerOf(m_node);
        if (manager == nullptr || manager->controlStarted() == 0) {
            edge.pTargetConnector(nullptr);
            edge.pSourceConnector(nullptr);
        } else if (!spread(edge) && edge.desiredOrthogonalRouting() != 0) {
            placeOnOutline(shape, edge, *connector);
        }
    }

private:
    /// Spreads the bundle of an edge, unless it has been; false when there is none.
    bool spread(QxDEdge& edge) {
        const auto [at, isNew] =
            m_isSpread.try_emplace({edge.pSourceNode(), edge.pTargetNode()}, false);
        QxDEdgeDList bundle;
        if (isNew && m_node.storeMultiEdgeList(&edge, bundle) != 0) {
            at->second = true;
            const Snapshot<QxDEdge> edges(&bundle);
            edge.reorganizeMultiEdgeBundle(QxMultiEdgeParallel, &bundle);
            for (QxDEdge* done : edges) {
                done->marked(1);
            }
        }
        return at->second;
    }
    void placeOnOutline(const QxShape* shape, QxDEdge& edge, QxConnector& connector) {
        QxPoint at;
        if (m_node.findProjection(&edge, &connector, at, shape) == 0 ||
            qx::internal::fromAsked(m_node, at, 0) == 0) {
            return;
        }
        const QxRect& rect = *m_node.pIRect();
        qx::internal::ConnectorPlace place;
        rect.setOffset(at, place.offset);
        if (edge.intergraphEdge() != 0) {
            place.perMil = qx::internal::proportionOf(place.offset, rect);
            place.offset = QxSize();
        }
        Change::run(connector, [&] { place.giveTo(connector); });
        if (edge.intergraphEdge() == 0) {
            qx::internal::noteNewOffset(connector, edge, place.offset);
        }
    }

    QxDNode& m_node;
    /// By the ends of the edges.
    std::map<std::pair<const QxNode*, const QxNode*>, bool> m_isSpread;
};

}  // namespace

void QxDNode::actOnChangeShape(const QxShape* shape) {
    const QxDGraphManager* manager = qx::internal::managerOf(*this);
    if (manager != nullptr && manager->isReading() == 0 &&
        numberOfAllConnectors() != numberOfConnectors()) {
        const Snapshot<QxDEdge> in(pInEdgeList());
        const Snapshot<QxDEdge> out(pOutEdgeList());
        BundlesAt bundles(*this);
        for (QxDEdge* edge : in) {
            bundles.replaceConnector(shape, *edge, true);
        }
        for (QxDEdge* edge : out) {
            bundles.replaceConnector(shape, *edge, false);
        }
        // Those, too, that listeners have carried off meanwhile.
        for (const auto* edges : {&in, &out}) {
            for (QxDEdge* edge : *edges) {
                edge->marked(0);
            }
        }
    }
    unmarkIncidentEdges();
}

void QxDNode::setConnectorOnChangeShape(const QxShape* shape, QxDEdge* edge, int isTarget) {
    if (edge != nullptr) {
        BundlesAt(*this).replaceConnector(shape, *edge, isTarget != 0);
    }
}
