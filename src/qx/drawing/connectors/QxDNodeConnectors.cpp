// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// The connectors of a node: insertion, removal, copies, and what a resize or another shape of the
// node does to them.

#include <map>
#include <utility>

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxConnectorManager.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxDrawingIters.h"
#include "qx/drawing/QxFactory.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/drawing/connectors/internal/ConnectorPlace.h"
#include "qx/drawing/internal/AskedCoordinates.h"
#include "qx/drawing/internal/CloneLinks.h"
#include "qx/drawing/internal/Extras.h"
#include "qx/events/internal/FireDrawingChange.h"
#include "qx/foundation/geometry/QxPerMil.h"
#include "qx/update/internal/MoveReactions.h"

using qx::internal::Change;
using qx::internal::Ref;
using qx::internal::Snapshot;

QxConnectorManager* QxDNode::pConnectorManager() {
    auto& connectors = nodeExtras().connectors;
    if (!connectors) {
        connectors = std::make_unique<QxConnectorManager>(this);
    }
    return connectors.get();
}

QxConnectorManager* QxDNode::pQueryMadeManager() const {
    return pQueryNodeExtras()->connectors.get();
}

std::int32_t QxDNode::numberOfConnectors() const {
    const QxConnectorManager* manager = pQueryConnectorManager();
    return manager != nullptr ? manager->numberOfSpecifiedConnectors() : 0;
}

std::int32_t QxDNode::numberOfAllConnectors() const {
    const QxConnectorManager* manager = pQueryConnectorManager();
    return manager != nullptr ? manager->numberOfConnectors() : 0;
}

QxConnector* QxDNode::vNewConnector(int type) {
    auto* factory = static_cast<QxFactory*>(pUnverifiedFactory());
    return factory != nullptr ? factory->qxNewConnector(factory, type)
                              : new QxConnector(nullptr, type, nullptr);
}

QxConnector* QxDNode::vAddConnector(std::int16_t perMilX, std::int16_t perMilY,
                                    std::int32_t offsetX, std::int32_t offsetY, int inOwnGraph,
                                    int type) {
    QxSize offset(offsetX, offsetY);
    const QxDGraph* graph = inOwnGraph == 0 ? pOwnerGraph() : nullptr;
    if (graph != nullptr) {
        graph->inverseExpandedTransformSize(offset);
    }
    // Placed first, so that whoever hears of it finds it there.
    return insertNewConnector(vNewConnector(type), QxPerMil(perMilX, perMilY), offset);
}

QxConnector* QxDNode::ntAddConnector(std::int16_t perMilX, std::int16_t perMilY,
                                     std::int32_t offsetX, std::int32_t offsetY) {
    auto* factory = static_cast<QxFactory*>(pUnverifiedFactory());
    auto* connector = new QxConnector(factory, 0, factory);
    connector->specified(0);
    return insertNewConnector(connector, QxPerMil(perMilX, perMilY), QxSize(offsetX, offsetY));
}

QxConnector* QxDNode::insertNewConnector(QxConnector* connector, const QxPerMil& perMil,
                                         const QxSize& offset) {
    if (connector == nullptr) {
        return nullptr;
    }
    const Ref alive(*connector);
    connector->vSetPerMil(perMil);
    connector->vSetOffset(offset);
    if (vInsertConnector(connector) == nullptr) {
        connector->vRelease();
        return nullptr;
    }
    return ownsConnector(connector) ? connector : nullptr;
}

QxConnector* QxDNode::vInsertConnector(QxConnector* connector) {
    if (connector == nullptr || connector->ownerValid() != 0) {
        return nullptr;
    }
    const QxAFactory* factory = connector->pUnverifiedFactory();
    if (factory != nullptr && factory != pUnverifiedFactory()) {
        return nullptr;
    }
    const Ref alive(*this);
    const Ref inserted(*connector);
    if (pConnectorManager()->insertConnector(this, connector) == nullptr) {
        return nullptr;
    }
    if (connector->specified() != 0 && ownsConnector(connector)) {
        qx::internal::fireDrawingChange(*this, ConnectorInserted, [&] {
            return new QxDrawingChangeEventData(connector, nullptr, this);
        });
    }
    return connector;
}

QxConnector* QxDNode::vRemoveConnector(QxConnector* connector) {
    if (!ownsConnector(connector)) {
        return nullptr;
    }
    const Ref alive(*this);
    const Ref removed(*connector);
    if (pConnectorManager()->removeConnector(this, connector) == nullptr) {
        return nullptr;
    }
    const bool isGoing = connector->hasFlag(qx::flags::Discarding) != 0;
    if (connector->specified() != 0 && !isGoing && connector->ownerValid() == 0) {
        qx::internal::fireDrawingChange(*this, ConnectorRemoved, [&] {
            return new QxDrawingChangeEventData(connector, this, nullptr);
        });
    }
    return connector->ownerValid() == 0 ? connector : nullptr;
}

int QxDNode::vDiscardConnector(QxConnector* connector) {
    if (!ownsConnector(connector) || connector->inDiscard() != 0) {
        return 0;
    }
    const Ref alive(*this);
    const Ref discarded(*connector);
    bool isOut = false;
    connector->inDiscard(1);
    Change::run(*this, [&] {
        // Edges first, then what it carries, while all that still belongs to the drawing.
        pConnectorManager()->freeEnds(*connector);
        connector->emptyTopology();
        connector->setFlag(qx::flags::Discarding, 1);
        isOut = vRemoveConnector(connector) != nullptr;
        connector->setFlag(qx::flags::Discarding, 0);
    });
    if (!isOut || connector->ownerValid() != 0) {
        connector->inDiscard(0);
        return 0;  // a listener has been quicker
    }
    if (connector->specified() != 0) {
        qx::internal::fireDrawingChange(*this, ConnectorDiscarded, [&] {
            return new QxDrawingChangeEventData(connector, this, nullptr);
        });
    }
    if (connector->ownerValid() != 0) {
        connector->inDiscard(0);  // a listener has found a place for it
    } else {
        connector->actOnDiscard();
        connector->vRelease();
    }
    return 1;
}

bool QxDNode::ownsConnector(const QxConnector* connector) const {
    return connector != nullptr && connector->pOwnerNode() == this;
}

void QxDNode::discardAllConnectors(int) {
    if (numberOfAllConnectors() != 0) {
        Change::run(*this, [&] {
            for (QxConnector* connector : Snapshot<QxConnector>(pQueryConnectorManager())) {
                discardConnector(connector);
            }
        });
    }
}

void QxDNode::discardAllCalculatedConnectors() {
    if (numberOfAllConnectors() == numberOfConnectors()) {
        return;
    }
    Change::run(*this, [&] {
        for (QxConnector* connector : Snapshot<QxConnector>(pQueryConnectorManager())) {
            if (connector->specified() == 0) {
                discardConnector(connector);
            }
        }
    });
}

void QxDNode::releaseConnectors() {
    for (QxConnector* connector : Snapshot<QxConnector>(pQueryConnectorManager())) {
        connector->inDiscard(0);  // whoever has set it, it goes now
        QxDNode::vDiscardConnector(connector);
    }
}

void QxDNode::buildConnectorList(QxConnectorDList* list) const {
    if (list == nullptr) {
        return;
    }
    list->deleteAllCells();
    for (QxConnectorIter it(this); it; ++it) {
        list->appendConnector(it.pConnector());
    }
}

QxConnector* QxDNode::getClonedConnector(QxConnector* connector) const {
    if (connector == nullptr) {
        return nullptr;
    }
    auto* clone = static_cast<QxConnector*>(connector->pIUserField());
    if (clone == nullptr) {
        clone = connector->cloneAttributes();
        connector->pIUserField(clone);
    }
    return clone;
}

void QxDNode::duplicateConnectorsOf(const QxDNode& source) {
    for (QxConnector* model : Snapshot<QxConnector>(source.pQueryConnectorManager())) {
        QxConnector* clone = getClonedConnector(model);
        if (clone == nullptr || clone->ownerValid() != 0) {
            continue;
        }
        const Ref alive(*clone);
        if (insertConnector(clone) != nullptr) {
            clone->internalDuplicateTopology(model);
        } else {
            model->pIUserField(nullptr);
            clone->vRelease();
        }
    }
}

void QxDNode::convertConnectorToPerMilOffset(QxConnector* connector) {
    if (ownsConnector(connector)) {
        QxPerMil perMil;
        QxSize offset;
        m_rect.setPerMil(connector->ntCenter(), perMil);
        m_rect.setOffset(connector->ntCenter(), offset);
        placeConnector(*connector, perMil,
                       QxSize(qx::saturatingSub(offset.width(), perMil.getOffsetX(m_rect)),
                              qx::saturatingSub(offset.height(), perMil.getOffsetY(m_rect))));
    }
}

void QxDNode::convertConnectorToConstantOffset(QxConnector* connector) {
    if (ownsConnector(connector)) {
        QxSize offset;
        m_rect.setOffset(connector->ntCenter(), offset);
        placeConnector(*connector, QxPerMil(), offset);
    }
}

void QxDNode::placeConnector(QxConnector& connector, const QxPerMil& perMil, const QxSize& offset) {
    Change::run(connector, [&] {
        connector.vSetPerMil(perMil);
        connector.vSetOffset(offset);
    });
}

namespace {

/// The offset scaled as the half extents on its side have been; one that would come to nothing
/// stays.
std::int32_t scaledOffset(std::int32_t offset, std::int32_t before, std::int32_t now) {
    if (before == 0) {
        return offset;
    }
    const std::int32_t scaled = qx::floorHalfUp(static_cast<double>(offset) * now / before);
    return scaled != 0 ? scaled : offset;
}

QxSize scaledOffset(const QxSize& offset, const QxRect& before, const QxRect& now) {
    const bool isLeft = offset.width() < 0;
    const bool isBelow = offset.height() < 0;
    return {
        scaledOffset(offset.width(), isLeft ? before.leftHalfWidth() : before.rightHalfWidth(),
                     isLeft ? now.leftHalfWidth() : now.rightHalfWidth()),
        scaledOffset(offset.height(), isBelow ? before.bottomHalfHeight() : before.topHalfHeight(),
                     isBelow ? now.bottomHalfHeight() : now.topHalfHeight())};
}

using Basis = qx::internal::ConnectorExtras::Basis;

QxSize placeOf(const QxPerMil& perMil, const QxSize& offset, const QxRect& rect) {
    return {qx::saturatingAdd(perMil.getOffsetX(rect), offset.width()),
            qx::saturatingAdd(perMil.getOffsetY(rect), offset.height())};
}

/// Where a connector comes to stand, always reckoned from the same place, so that the node may
/// change its size back and forth and no rounding adds up.
QxSize placeFrom(const Basis& basis, const QxRect& rect) {
    const QxSize offset =
        basis.scales ? scaledOffset(basis.offset, basis.nodeRect, rect) : basis.offset;
    return placeOf(basis.perMil, offset, rect);
}

}  // namespace

void QxDNode::updateCalculatedConnectorsOnResize(const QxRect&, const QxRect& rectBefore,
                                                 const QxRect& rectNow) {
    const QxDGraph* graph = pOwnerGraph();
    if (graph != nullptr && graph->fileReadRunning() != 0) {
        return;
    }
    // Expanded nodes change their size at the library's will, and get their old one back.
    const auto followFromBasis = [&](QxConnector& connector) {
        QxPerMil perMil = connector.getPerMil();
        const QxSize at = placeOf(perMil, connector.ntOffset(), rectBefore);
        auto& basis = static_cast<qx::internal::ConnectorExtras&>(connector.extras()).basis;
        if (!basis || !(basis->lastPlace == at) || !(basis->lastNodeSize == rectBefore.size())) {
            basis = std::make_unique<Basis>(Basis{rectBefore, perMil, connector.ntOffset(),
                                                  connector.isUsedWithinGraph(), at, QxSize()});
        }
        const QxSize place = placeFrom(*basis, rectNow);
        basis->lastPlace = place;
        basis->lastNodeSize = rectNow.size();
        // As a proportion or as an offset, as it is kept now.
        if (!(perMil == basis->perMil) && !(perMil == QxPerMil())) {
            perMil.compute(place.width(), place.height(), rectNow);
        }
        const QxSize part = placeOf(perMil, QxSize(), rectNow);
        connector.vSetPerMil(perMil);
        connector.vSetOffset(QxSize(qx::saturatingSub(place.width(), part.width()),
                                    qx::saturatingSub(place.height(), part.height())));
        for (const QxConnector::User& user : connector.m_users) {
            qx::internal::noteNewOffset(connector, *user.edge, connector.ntOffset());
        }
        if (connector.isUsedWithinGraph()) {
            connector.setFlag(qx::flags::ConnectorRescaled, 1);
        }
    };
    for (QxConnector* connector : Snapshot<QxConnector>(pQueryConnectorManager())) {
        if (connector->specified() != 0) {
            continue;
        }
        if (expanded() != 0) {
            followFromBasis(*connector);
        } else if (connector->isUsedWithinGraph()) {
            rescaleConnector(*connector, rectBefore, rectNow);
        }
    }
}

void QxDNode::rescaleConnector(QxConnector& connector, const QxRect& before, const QxRect& now) {
    // During a move from what it was at first, so that many steps round no more than one does.
    QxSize offset = scaledOffset(connector.ntOffset(), before, now);
    for (const QxConnector::User& user : connector.m_users) {
        if (const auto atStart = qx::internal::offsetAtStart(connector, *user.edge)) {
            offset = scaledOffset(atStart->offset, atStart->nodeRect, now);
            qx::internal::noteNewOffset(connector, *user.edge, offset);
        }
    }
    connector.vSetOffset(offset);
    connector.setFlag(qx::flags::ConnectorRescaled, 1);
}

void QxDNode::actOnUpdateConnectors(const QxRect& rectAtStart, const QxRect& rectBefore) {
    if (pClonedNode() == nullptr && numberOfAllConnectors() != numberOfConnectors()) {
        updateCalculatedConnectorsOnResize(rectAtStart, rectBefore, m_rect);
    }
}

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
