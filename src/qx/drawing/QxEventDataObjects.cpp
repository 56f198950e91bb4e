// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// What event data answer with drawing classes: events know only the graph layer.

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxLabel.h"
#include "qx/events/QxComplexityChangeEventData.h"
#include "qx/events/QxDrawingChangeEventData.h"
#include "qx/foundation/graph/internal/ObjectOfKind.h"

using qx::internal::objectOfKind;

QxGNode* QxDrawingChangeEventData::pSourceNode() const {
    return objectOfKind<QxGNode>(pSourceObject(), &QxGraphObject::isNode);
}

QxDEdge* QxDrawingChangeEventData::pSourceEdge() const {
    return objectOfKind<QxDEdge>(pSourceObject(), &QxGraphObject::isEdge);
}

QxDGraph* QxDrawingChangeEventData::pSourceGraph() const {
    return objectOfKind<QxDGraph>(pSourceObject(), &QxGraphObject::isGraph);
}

QxDGraphManager* QxDrawingChangeEventData::pSourceGraphManager() const {
    return objectOfKind<QxDGraphManager>(pSourceObject(), &QxGraphObject::isGraphManager);
}

QxLabel* QxDrawingChangeEventData::pSourceLabel() const {
    return objectOfKind<QxLabel>(pSourceObject(), &QxGraphObject::isLabel);
}

QxConnector* QxDrawingChangeEventData::pSourceConnector() const {
    return objectOfKind<QxConnector>(pSourceObject(), &QxGraphObject::isConnector);
}

QxConnector* QxDrawingChangeEventData::pOldOwnerConnector() const {
    return objectOfKind<QxConnector>(pOldOwner(), &QxGraphObject::isConnector);
}

QxConnector* QxDrawingChangeEventData::pNewOwnerConnector() const {
    return objectOfKind<QxConnector>(pNewOwner(), &QxGraphObject::isConnector);
}

QxConnector* QxDrawingChangeEventData::pOldEndConnector() const {
    return isOfType(EdgeConnectorChanged)
               ? objectOfKind<QxConnector>(pOldObject(), &QxGraphObject::isConnector)
               : nullptr;
}

QxConnector* QxDrawingChangeEventData::pNewEndConnector() const {
    return isOfType(EdgeConnectorChanged)
               ? objectOfKind<QxConnector>(pNewObject(), &QxGraphObject::isConnector)
               : nullptr;
}

QxDGraph* QxDrawingChangeEventData::pOldOwnerGraph() const {
    return objectOfKind<QxDGraph>(pOldOwner(), &QxGraphObject::isGraph);
}

QxDNode* QxDrawingChangeEventData::pOldOwnerNode() const {
    return objectOfKind<QxDNode>(pOldOwner(), &QxGraphObject::isNode);
}

QxDEdge* QxDrawingChangeEventData::pOldOwnerEdge() const {
    return objectOfKind<QxDEdge>(pOldOwner(), &QxGraphObject::isEdge);
}

QxDGraph* QxDrawingChangeEventData::pNewOwnerGraph() const {
    return objectOfKind<QxDGraph>(pNewOwner(), &QxGraphObject::isGraph);
}

QxDNode* QxDrawingChangeEventData::pNewOwnerNode() const {
    return objectOfKind<QxDNode>(pNewOwner(), &QxGraphObject::isNode);
}

QxDEdge* QxDrawingChangeEventData::pNewOwnerEdge() const {
    return objectOfKind<QxDEdge>(pNewOwner(), &QxGraphObject::isEdge);
}

QxDGraph* QxDrawingChangeEventData::pOldAnchorGraph() const {
    return isOfType(AnchorGraphChanged)
               ? objectOfKind<QxDGraph>(pOldObject(), &QxGraphObject::isGraph)
               : nullptr;
}

QxDGraph* QxDrawingChangeEventData::pNewAnchorGraph() const {
    return isOfType(AnchorGraphChanged)
               ? objectOfKind<QxDGraph>(pNewObject(), &QxGraphObject::isGraph)
               : nullptr;
}

QxDNode* QxComplexityChangeEventData::pSourceNode() const {
    return objectOfKind<QxDNode>(static_cast<QxGraphObject*>(pSource()), &QxGraphObject::isNode);
}

QxDEdge* QxComplexityChangeEventData::pSourceEdge() const {
    return objectOfKind<QxDEdge>(static_cast<QxGraphObject*>(pSource()), &QxGraphObject::isEdge);
}
