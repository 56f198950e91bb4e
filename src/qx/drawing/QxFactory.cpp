// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/drawing/QxFactory.h"

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxConnectorLabel.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxEdgeLabel.h"
#include "qx/drawing/QxGraphLabel.h"
#include "qx/drawing/QxNodeLabel.h"
#include "qx/drawing/QxPEdge.h"
#include "qx/drawing/QxPNode.h"
#include "qx/events/QxDEventManager.h"
#include "qx/foundation/geometry/QxPointDList.h"
#include "qx/foundation/geometry/QxRect.h"
#include "qx/foundation/geometry/QxShape.h"
#include "qx/foundation/geometry/QxTransform.h"
#include "qx/foundation/util/QxHashMap.h"

QxDEventManager* QxFactory::pEventManager() {
    return static_cast<QxDEventManager*>(QxAFactory::pEventManager());
}

QxGraphManager* QxFactory::vNewGraphManager(QxOwnedObject* owner, int type) {
    return vNewDGraphManager(owner, type);
}

QxGraph* QxFactory::vNewGraph(QxOwnedObject* owner, int type) {
    return vNewDGraph(owner, type);
}

QxNode* QxFactory::vNewNode(QxOwnedObject* owner, int type) {
    return vNewDNode(owner, type);
}

QxEdge* QxFactory::vNewEdge(QxOwnedObject* owner, int type) {
    return vNewDEdge(owner, type);
}

QxGraph* QxFactory::vNewIntergraph(QxOwnedObject* owner, int type) {
    return vNewInterDGraph(owner, type);
}

QxDGraphManager* QxFactory::vNewDGraphManager(QxOwnedObject* owner, int type) {
    return new QxDGraphManager(owner, type, this);
}

QxDGraph* QxFactory::vNewDGraph(QxOwnedObject* owner, int type) {
    return new QxDGraph(owner, type, this);
}

QxDNode* QxFactory::vNewDNode(QxOwnedObject* owner, int type) {
    return new QxDNode(owner, type, this);
}

QxDEdge* QxFactory::vNewDEdge(QxOwnedObject* owner, int type) {
    return new QxDEdge(owner, type, this);
}

QxPNode* QxFactory::vNewPNode(QxOwnedObject* owner) {
    return new QxPNode(owner);
}

QxPEdge* QxFactory::vNewPEdge(QxOwnedObject* owner) {
    return new QxPEdge(owner);
}

QxGraphLabel* QxFactory::vNewGraphLabel(QxOwnedObject* owner, int) {
    return new QxGraphLabel(owner);
}

QxNodeLabel* QxFactory::vNewNodeLabel(QxOwnedObject* owner, int) {
    return new QxNodeLabel(owner);
}

QxConnectorLabel* QxFactory::vNewConnectorLabel(QxOwnedObject* owner, int) {
    return new QxConnectorLabel(owner);
}

QxEdgeLabel* QxFactory::vNewEdgeLabel(QxOwnedObject* owner, int) {
    return new QxEdgeLabel(owner);
}

QxConnector* QxFactory::vNewConnector(QxOwnedObject* owner, int type) {
    return new QxConnector(owner, type, this);
}

QxDGraph* QxFactory::vNewInterDGraph(QxOwnedObject* owner, int type) {
    return vNewDGraph(owner, type);
}

QxShapeResourceDB* QxFactory::vpShapeResourceDB() {
    return &m_shapes;
}

QxEventManager* QxFactory::vNewEventManager() {
    return new QxDEventManager;
}

QxDList* QxFactory::newList() const {
    return new QxDList;
}

QxDNodeDList* QxFactory::newNodeList() const {
    return new QxDNodeDList;
}

QxDEdgeDList* QxFactory::newEdgeList() const {
    return new QxDEdgeDList;
}

QxDGraphDList* QxFactory::newGraphList() const {
    return new QxDGraphDList;
}

QxPNodeDList* QxFactory::newPNodeList() const {
    return new QxPNodeDList;
}

QxPEdgeDList* QxFactory::newPEdgeList() const {
    return new QxPEdgeDList;
}

QxConnectorDList* QxFactory::newConnectorList() const {
    return new QxConnectorDList;
}

QxNodeLabelDList* QxFactory::newNodeLabelList() const {
    return new QxNodeLabelDList;
}

QxEdgeLabelDList* QxFactory::newEdgeLabelList() const {
    return new QxEdgeLabelDList;
}

QxConnectorLabelDList* QxFactory::newConnectorLabelList() const {
    return new QxConnectorLabelDList;
}

QxGraphLabelDList* QxFactory::newGraphLabelList() const {
    return new QxGraphLabelDList;
}

QxDNodePairDList* QxFactory::newNodePairList() const {
    return new QxDNodePairDList;
}

QxHashMap* QxFactory::newObjectTable() const {
    return new QxHashMap;
}

QxPoint* QxFactory::newPoint(std::int32_t x, std::int32_t y) const {
    return new QxPoint(x, y);
}

QxSize* QxFactory::newSize(std::int32_t width, std::int32_t height) const {
    return new QxSize(width, height);
}

QxRect* QxFactory::newRect(std::int32_t left, std::int32_t top, std::int32_t right,
                           std::int32_t bottom) const {
    return new QxRect(left, bottom, right, top);
}

QxShape* QxFactory::newShape(QxShapeTypeEnum type) const {
    return new QxShape(type);
}

QxShape* QxFactory::newCustomShape(const QxPointDList& outline) const {
    return new QxShape(outline);
}

QxTransform* QxFactory::newTransform() const {
    return new QxTransform;
}

QxPointDList* QxFactory::newPointList() const {
    return new QxPointDList;
}
