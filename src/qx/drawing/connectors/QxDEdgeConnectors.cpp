// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// The connectors that the ends of an edge are assigned to. A flag for each end says whether there
// is one, so that other edges pay one test; which one stands with what few edges use.
//
// An edge that leaves its graph keeps the note of its connectors, and these keep theirs of the
// edge: a connector that goes meanwhile takes the note along. So an edge that comes back to its
// nodes, in whatever graph, comes back to its connectors, and a calculated one lives as long as an
// edge may come back to it.

#include <utility>

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/drawing/bounds/internal/Coverage.h"
#include "qx/drawing/internal/Extras.h"
#include "qx/events/internal/FireDrawingChange.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/nesting/internal/MetaEdgeUpkeep.h"

using qx::internal::Change;
using qx::internal::ConnectorUse;
using qx::internal::Coverage;
using qx::internal::EdgeExtras;
using qx::internal::Ref;

namespace {

constexpr std::uint32_t flagOfEnd(bool atSource) {
    return atSource ? qx::flags::EdgeFromConnectorValid : qx::flags::EdgeToConnectorValid;
}

QxConnector* ifSpecified(QxConnector* connector) {
    return connector != nullptr && connector->specified() != 0 ? connector : nullptr;
}

}  // namespace

QxConnector* QxDEdge::pNotedConnector(bool atSource) const {
    const auto* extras = static_cast<const EdgeExtras*>(pQueryExtras());
    if (extras == nullptr) {
        return nullptr;
    }
    return atSource ? extras->atSource.connector : extras->atTarget.connector;
}

ConnectorUse& QxDEdge::connectorUse(bool atSource) {
    auto& uses = static_cast<EdgeExtras&>(extras());
    return atSource ? uses.atSource : uses.atTarget;
}

bool QxDEdge::isNumberedAt(const QxConnector& connector, bool atSource, std::size_t number) const {
    const auto* uses = static_cast<const EdgeExtras*>(pQueryExtras());
    return pNotedConnector(atSource) == &connector &&
           (atSource ? uses->atSource : uses->atTarget).number == number;
}

QxConnector* QxDEdge::pSourceConnector() const {
    return ifSpecified(pConnectorAt(true));
}

QxConnector* QxDEdge::pTargetConnector() const {
    return ifSpecified(pConnectorAt(false));
}

bool QxDEdge::usesCalculatedConnector() const {
    return (pConnectorAt(true) != nullptr && pSourceConnector() == nullptr) ||
           (pConnectorAt(false) != nullptr && pTargetConnector() == nullptr);
}

void QxDEdge::takeConnector(QxConnector* connector, bool atSource) {
    if (connector == nullptr && pNotedConnector(atSource) == nullptr) {
        return;
    }
    ConnectorUse& use = connectorUse(atSource);
    if (QxConnector* old = std::exchange(use.connector, connector)) {
        old->dropUser(use.number);
    }
    if (connector != nullptr) {
        use.number = connector->addUser(this, atSource);
    }
    setFlag(flagOfEnd(atSource), connector != nullptr ? 1 : 0);
    actOnEndObjectChange();
    Coverage::changed(*this);
    qx::internal::MetaEdgeUpkeep::changed(*this);
}

QxConnector* QxDEdge::assignConnector(QxConnector* connector, bool atSource) {
    QxConnector* const old = pNotedConnector(atSource);
    if (connector == old) {
        return pConnectorAt(atSource);
    }
    const QxDNode* node = atSource ? pSourceNode() : pTargetNode();
    if (connector != nullptr &&
        (node == nullptr || connector->pOwnerNode() != node || connector->inDiscard() != 0)) {
        return pConnectorAt(atSource);
    }
    const Ref alive(*this);
    const Ref oldAlive(old);
    const Ref newAlive(connector);
    Change::run(*this, [&] {
        takeConnector(connector, atSource);
        if (old != nullptr) {
            old->discardWhenUnused();
        }
    });
    if (connected() != 0) {
        tellConnectorChange(old, connector);
    }
    return pConnectorAt(atSource);
}

QxConnector* QxDEdge::resetConnector(bool atSource) {
    if (QxConnector* const old = pNotedConnector(atSource)) {
        const Ref alive(*this);
        const Ref oldAlive(old);
        Change::run(*this, [&] { takeConnector(nullptr, atSource); });
        if (connected() != 0) {
            tellConnectorChange(old, nullptr);
        }
    }
    return pConnectorAt(atSource);
}

void QxDEdge::tellConnectorChange(QxConnector* old, QxConnector* connector) {
    if (ifSpecified(old) != nullptr || ifSpecified(connector) != nullptr) {
        qx::internal::fireDrawingChange(*this, EdgeConnectorChanged, [&] {
            return new QxDrawingChangeEventData(this, old, connector);
        });
    }
}

void QxDEdge::setConnectorsAside() {
    setFlag(flagOfEnd(true) | flagOfEnd(false), 0);
}

void QxDEdge::loseConnectors() {
    // Those that a removed edge has only notes of, too: they must not remember what has gone.
    for (const bool atSource : {true, false}) {
        if (QxConnector* const connector = pNotedConnector(atSource)) {
            const Ref alive(*connector);
            takeConnector(nullptr, atSource);
            connector->discardWhenUnused();
        }
    }
}

void QxDEdge::settleConnector(bool atSource) {
    QxConnector* const connector = pNotedConnector(atSource);
    if (connector == nullptr) {
        return;
    }
    const bool wasAssigned = pConnectorAt(atSource) != nullptr;
    if (connector->pOwnerNode() == (atSource ? pSourceNode() : pTargetNode())) {
        setFlag(flagOfEnd(atSource), 1);
        actOnEndObjectChange();
        return;
    }
    const Ref alive(*this);
    const Ref connectorAlive(*connector);
    Change::run(*this, [&] {
        takeConnector(nullptr, atSource);
        connector->discardWhenUnused();
    });
    if (wasAssigned) {
        tellConnectorChange(connector, nullptr);
    }
}

void QxDEdge::exchangeConnectors() {
    if (!hasConnectors()) {
        return;
    }
    const int fromSet = hasFlag(flagOfEnd(true));
    setFlag(flagOfEnd(true), hasFlag(flagOfEnd(false)));
    setFlag(flagOfEnd(false), fromSet);
    std::swap(connectorUse(true), connectorUse(false));
    for (const bool atSource : {true, false}) {
        const ConnectorUse& use = connectorUse(atSource);
        if (use.connector != nullptr) {
            use.connector->m_users[use.number].atSource = atSource;
        }
    }
}

void QxDEdge::duplicateConnectors(const QxDEdge& source) {
    for (const bool atSource : {true, false}) {
        QxConnector* const model = source.pConnectorAt(atSource);
        const QxDNode* node = atSource ? pSourceNode() : pTargetNode();
        if (model == nullptr || node == nullptr) {
            continue;
        }
        // A copied node has linked its connectors to their copies; one node's edge may share those
        // that clients keep.
        if (auto* copy = static_cast<QxConnector*>(model->pIUserField())) {
            assignConnector(copy, atSource);
        } else if (model->specified() != 0) {
            assignConnector(model, atSource);
        }
    }
}

void QxDEdge::updateCalculatedConnectors() {
    if (QxConnector* connector = pInternalSourceConnector()) {
        connector->updateCalculatedConnector(pSourceOrPathEdge());
    }
    if (QxConnector* connector = pInternalTargetConnector()) {
        connector->updateCalculatedConnector(pTargetOrPathEdge());
    }
}

void QxDGraph::updateCalculatedConnectors() {
    for (QxDEdge* edge : qx::internal::each<QxDEdge>(*pEdgeList())) {
        edge->updateCalculatedConnectors();
    }
}

void QxDGraph::checkOneEdgePerConnector() const {}
