// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/drawing/QxConnectorManager.h"

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/drawing/bounds/internal/Coverage.h"
#include "qx/drawing/labels/internal/LabelPresence.h"
#include "qx/foundation/graph/QxAFactory.h"

using qx::internal::Change;
using qx::internal::Coverage;
using qx::internal::LabelPresence;
using qx::internal::Ref;

QxConnector* QxConnectorManager::insertConnector(QxDNode* node, QxConnector* connector) {
    if (connector == nullptr || connector->ownerValid() != 0 || node != m_node) {
        return nullptr;
    }
    Change::run(*node, [&] {
        appendCell(&connector->m_ownerCell);
        connector->pOwner(node);
        connector->ownerValid(1);
        connector->inDiscard(0);
        m_specified += connector->specified();
        LabelPresence::changed(*connector);
        Coverage::changed(*connector);
    });
    return connector;
}

QxConnector* QxConnectorManager::removeConnector(QxDNode* node, QxConnector* connector) {
    if (connector == nullptr || node != m_node || connector->pOwnerNode() != node) {
        return nullptr;
    }
    const Ref alive(*connector);
    bool isRemoved = false;
    Change::run(*node, [&] {
        freeEnds(*connector);
        if (connector->pOwnerNode() != node) {
            return;
        }
        takeOut(*connector);
        isRemoved = true;
    });
    return isRemoved ? connector : nullptr;
}

void QxConnectorManager::takeOut(QxConnector& connector) {
    Coverage::ended(connector);
    LabelPresence::ended(connector);
    removeCell(&connector.m_ownerCell);
    m_specified -= connector.specified();
    connector.ownerValid(0);
    connector.pOwner(m_node->pUnverifiedFactory());  // the node may be gone before it
}

void QxConnectorManager::freeEnds(QxConnector& connector) {
    const std::vector<QxConnector::User> users = connector.m_users;
    qx::internal::Snapshot<QxDEdge> edges;
    for (const QxConnector::User& user : users) {
        edges.add(user.edge);
    }
    for (const QxConnector::User& user : users) {
        if (user.edge->pConnectorAt(user.atSource) == &connector) {
            user.edge->resetConnector(user.atSource);
        }
    }
    while (!connector.m_users.empty()) {  // a listener has assigned it again
        const QxConnector::User user = connector.m_users.back();
        user.edge->takeConnector(nullptr, user.atSource);
    }
}
