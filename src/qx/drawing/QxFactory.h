// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxDrawingDLists.h"
#include "qx/foundation/geometry/QxShapeResourceDB.h"
#include "qx/foundation/geometry/QxShapeTypeEnum.h"
#include "qx/foundation/graph/QxAFactory.h"

class QxDEventManager;
class QxExpandedNodeExtension;
class QxHashMap;
class QxPoint;
class QxPointDList;
class QxRect;
class QxShape;
class QxSize;
class QxTransform;

/// The single source of drawing objects, and the place to begin:
///
///     QxFactory factory;
///     QxDGraphManager* manager = factory.newDGraphManager();
///     QxDGraph* graph = manager->addGraph(0);
///     ...
///     manager->vRelease();
///
/// It keeps the database of shapes and the event manager of everything it made, and has to outlive
/// that. A subclass makes other classes by overriding the creation slots.
class QX_API QxFactory : public QxAFactory {
public:
    QxFactory() = default;

    /// @name Creation for an owner: a graph's, manager's or edge's way to new objects
    /// The new object is the caller's until it is inserted; `type` is passed through.
    /// @{
    QxDGraphManager* qxNewDGraphManager(QxOwnedObject* owner, int type) {
        return vNewDGraphManager(owner, type);
    }
    QxDGraph* qxNewDGraph(QxOwnedObject* owner, int type) { return vNewDGraph(owner, type); }
    QxDGraph* qxNewInterDGraph(QxOwnedObject* owner, int type) {
        return vNewInterDGraph(owner, type);
    }
    QxDNode* qxNewDNode(QxOwnedObject* owner, int type) { return vNewDNode(owner, type); }
    QxDEdge* qxNewDEdge(QxOwnedObject* owner, int type) { return vNewDEdge(owner, type); }
    QxGraphLabel* qxNewGraphLabel(QxOwnedObject* owner, int type) {
        return vNewGraphLabel(owner, type);
    }
    QxNodeLabel* qxNewNodeLabel(QxOwnedObject* owner, int type) {
        return vNewNodeLabel(owner, type);
    }
    QxConnectorLabel* qxNewConnectorLabel(QxOwnedObject* owner, int type) {
        return vNewConnectorLabel(owner, type);
    }
    QxEdgeLabel* qxNewEdgeLabel(QxOwnedObject* owner, int type) {
        return vNewEdgeLabel(owner, type);
    }
    QxPNode* qxNewPNode(QxOwnedObject* owner) { return vNewPNode(owner); }
    QxPEdge* qxNewPEdge(QxOwnedObject* owner) { return vNewPEdge(owner); }
    QxConnector* qxNewConnector(QxOwnedObject* owner, int type) {
        return vNewConnector(owner, type);
    }
    QxExpandedNodeExtension* qxNewExpandedNodeExtension(QxDNode* node, QxDGraphManager* manager) {
        return vNewExpandedNodeExtension(node, manager);
    }
    /// @}

    /// The database of shapes; owned by the factory.
    QxShapeResourceDB* pShapeResourceDB() { return vpShapeResourceDB(); }
    /// The event manager; see QxAFactory.
    QxDEventManager* pEventManager();

    /// @name Convenience constructors: new objects that the caller owns and releases
    /// @{
    QxDGraphManager* newDGraphManager() { return vNewDGraphManager(this, 0); }
    QxDList* newList() const;
    QxDNodeDList* newNodeList() const;
    QxDEdgeDList* newEdgeList() const;
    QxDGraphDList* newGraphList() const;
    QxPNodeDList* newPNodeList() const;
    QxPEdgeDList* newPEdgeList() const;
    QxConnectorDList* newConnectorList() const;
    QxNodeLabelDList* newNodeLabelList() const;
    QxEdgeLabelDList* newEdgeLabelList() const;
    QxConnectorLabelDList* newConnectorLabelList() const;
    QxGraphLabelDList* newGraphLabelList() const;
    QxDNodePairDList* newNodePairList() const;
    QxHashMap* newObjectTable() const;
    QxPoint* newPoint(std::int32_t x, std::int32_t y) const;
    QxSize* newSize(std::int32_t width, std::int32_t height) const;
    /// The sides in field order, unlike the rectangle's own constructor.
    QxRect* newRect(std::int32_t left, std::int32_t top, std::int32_t right,
                    std::int32_t bottom) const;
    QxShape* newShape(QxShapeTypeEnum type) const;
    QxShape* newCustomShape(const QxPointDList& outline) const;
    QxTransform* newTransform() const;
    QxPointDList* newPointList() const;
    /// @}

protected:
    QxGraphManager* vNewGraphManager(QxOwnedObject* owner, int type) override;
    QxGraph* vNewGraph(QxOwnedObject* owner, int type) override;
    QxNode* vNewNode(QxOwnedObject* owner, int type) override;
    QxEdge* vNewEdge(QxOwnedObject* owner, int type) override;
    QxGraph* vNewIntergraph(QxOwnedObject* owner, int type) override;

    virtual QxDGraphManager* vNewDGraphManager(QxOwnedObject* owner, int type);
    virtual QxDGraph* vNewDGraph(QxOwnedObject* owner, int type);
    virtual QxDNode* vNewDNode(QxOwnedObject* owner, int type);
    virtual QxDEdge* vNewDEdge(QxOwnedObject* owner, int type);
    virtual QxPNode* vNewPNode(QxOwnedObject* owner);
    virtual QxPEdge* vNewPEdge(QxOwnedObject* owner);
    virtual QxGraphLabel* vNewGraphLabel(QxOwnedObject* owner, int type);
    virtual QxNodeLabel* vNewNodeLabel(QxOwnedObject* owner, int type);
    virtual QxConnectorLabel* vNewConnectorLabel(QxOwnedObject* owner, int type);
    virtual QxEdgeLabel* vNewEdgeLabel(QxOwnedObject* owner, int type);
    virtual QxConnector* vNewConnector(QxOwnedObject* owner, int type);
    virtual QxDGraph* vNewInterDGraph(QxOwnedObject* owner, int type);
    virtual QxShapeResourceDB* vpShapeResourceDB();
    QxEventManager* vNewEventManager() override;
    /// What an expanded node remembers; `node` is null for one without.
    virtual QxExpandedNodeExtension* vNewExpandedNodeExtension(QxDNode* node,
                                                               QxDGraphManager* manager);

private:
    QxShapeResourceDB m_shapes;
};
