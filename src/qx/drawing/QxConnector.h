// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

#include "qx/drawing/QxDrawingDLists.h"
#include "qx/drawing/QxDrawingFlags.h"
#include "qx/drawing/QxGraphObjectStatusEnum.h"
#include "qx/drawing/QxLabelOwnerOf.h"
#include "qx/drawing/QxPlacedRectOf.h"
#include "qx/foundation/geometry/QxDirectionEnum.h"
#include "qx/foundation/geometry/QxPerMil.h"
#include "qx/foundation/geometry/QxRect.h"
#include "qx/foundation/graph/QxEdgeConnectionEnum.h"
#include "qx/foundation/graph/QxEdgeDirectionEnum.h"
#include "qx/foundation/graph/QxExtendableGraphObject.h"
#include "qx/foundation/util/QxDListCell.h"

class QxConnectorManager;
class QxFactory;
class QxGeometricUpdateInfo;
class QxShape;
class QxShapeResource;

namespace qx::internal {
class Coverage;
struct ConnectorExtras;
template <class T>
class Ref;
enum class Moment : unsigned char;
}  // namespace qx::internal

/// A place on a node where edges end: the path of an edge that is assigned to it starts (ends) at
/// its center instead of the node's, and is cut off at its outline instead of the node's.
///
/// Its center is a proportion of the node's half extents, in thousandths, plus a constant offset,
/// so that it follows the node through moves and resizes. Clients make specified connectors, which
/// live until they are removed, count for graph bounds and tell listeners what happens to them.
/// Calculated ones are made for the end of an edge and go, silently, when no edge uses them any
/// more.
///
/// Coordinates are those of the node's graph (own graph). The coordinate flag is that of QxGNode:
/// with 0, those of the anchor graph, and an invisible connector answers 0 and changes nothing. A
/// connector has no place while no node owns it: then, too, the answer is 0.
class QX_API QxConnector : public QxExtendableGraphObject,
                           public QxLabelOwnerOf<QxConnector, QxConnectorLabel>,
                           public QxPlacedRectOf<QxConnector> {
public:
    /// A specified connector of size 0 x 0 in the middle of the node that will own it. Of the
    /// owner, usually the factory, only the factory is used until then.
    QxConnector(QxOwnedObject* owner, int type, QxFactory* factory);
    /// A copy that no node owns yet, in the factory of `source`.
    QxConnector(const QxConnector& source, QxDeepFlagEnum depth);
    ~QxConnector() override;

    /// @name What every graph object answers
    /// @{
    void copyObject(const QxObject* source) override;
    void copyAttributes(const QxObject* source) override;
    void debugOutput(int depth) const override;
    int userFieldsInUse() const override;
    void nullUserFields() override;
    int internalUserFieldsInUse() const override;
    void nullInternalUserFields() override;
    int isConnector() const override;
    int vIsVisible() const override;
    std::size_t sizeOf() const override;
    int checkInvariants() const override;
    int levelNumber() const override;
    /// Called once before a discarded connector is released.
    void actOnDiscard();
    QxConnector* cloneObject() const { return static_cast<QxConnector*>(vCloneObject()); }
    QxConnector* cloneAttributes() const { return static_cast<QxConnector*>(vCloneAttributes()); }
    /// @}

    /// @name What the connector carries: its labels (drawing/labels/QxConnectorLabels.cpp)
    /// Discards it; makes it a duplicate of what `source` carries, and clears the scratch fields of
    /// the source; the same without clearing.
    /// @{
    virtual void emptyTopology();
    virtual void debugOutputLabels(int depth) const;
    virtual void duplicateTopology(QxConnector* source);
    virtual void internalDuplicateTopology(QxConnector* source);
    /// @}

    /// The node that owns the connector; null while none does.
    QxDNode* pOwnerNode() const;
    /// The graph of that node; null while there is none. pOwnerGraph is the same.
    QxDGraph* pGraph() const;
    QxDGraph* pOwnerGraph() const { return pGraph(); }

    /// @name Place and size, in own-graph coordinates
    /// @{

    /// The center, for the node as it stands; the point stays as it is while no node owns the
    /// connector. With a rectangle: for a node of that rectangle.
    void ntCenter(QxPoint& point) const;
    void ntCenter(const QxRect& nodeRect, QxPoint& point) const;
    QxPoint ntCenter() const;
    void ntBoundingRect(QxRect& rect) const;
    std::int32_t ntWidth() const { return m_width; }
    std::int32_t ntHeight() const { return m_height; }
    /// The constant part of the place.
    QxSize ntOffset() const { return {m_offsetX, m_offsetY}; }
    std::int32_t ntOffsetX() const { return m_offsetX; }
    std::int32_t ntOffsetY() const { return m_offsetY; }
    /// The proportional part of the place: thousandths of the node's half extents.
    QxPerMil getPerMil() const { return {m_perMilX, m_perMilY}; }
    void getPerMil(QxPerMil& perMil) const { perMil = getPerMil(); }
    std::int16_t perMilX() const { return m_perMilX; }
    std::int16_t perMilY() const { return m_perMilY; }
    /// @}

    /// @name Geometry in the asked-for coordinates
    /// Return 1, or 0 and no change where the connector has no such coordinates.
    /// @{
    int getCenter(QxPoint& center, int inOwnGraph) const;
    int getSize(QxSize& size, int inOwnGraph) const;
    int getOffset(QxSize& offset, int inOwnGraph) const;
    int getBoundingRect(QxRect& rect, int inOwnGraph) const;
    int getBoundingRectWithSubObjects(QxRect& rect, int inOwnGraph) const;
    /// The rectangle that a user would point at: the bounding rectangle.
    virtual int getUserBoundingRect(QxRect& rect, int inOwnGraph) const;
    /// Where the way from the node's center to the connector's meets the node's outline; the
    /// node's center where it does not. Returns whether the connector is visible.
    virtual int vGetAttachmentPoint(QxPoint& point, int inOwnGraph) const;
    /// Whether the point lies in the shape, its outline included.
    int within(const QxPoint& point, int inOwnGraph) const;
    /// Moves `from` to where the segment from there to `to` crosses the outline: of several
    /// crossings the nearest to `to` on a rectangle, the nearest to `from` on any other shape.
    /// Equal points ask whether the point lies on the outline. Nonzero when there is a crossing,
    /// else `from` keeps its value.
    int intersectsSegment(QxPoint& from, const QxPoint& to, int inOwnGraph) const;
    /// @}

    /// @name Changes (drawing/connectors/QxConnectorMoving.cpp)
    /// They bring the bounds of the graph up to date and outdate the clip points of the edges here.
    /// Each returns 1, also when nothing changes, and 0 where the connector has no such
    /// coordinates. Sizes below 0 count as 0. The forms named `nt...` are the raw changes, in
    /// own-graph coordinates, which leave the bounds to their caller.
    /// @{

    /// Moves the center. Within the node's extent the place becomes a proportion of it; what lies
    /// beyond a side becomes a constant distance from that side. Fires ConnectorMoved when the
    /// center changes.
    int moveTo(const QxPoint& center, int inOwnGraph);
    int move(const QxSize& offset, int inOwnGraph);
    void ntMoveTo(const QxPoint& center) { vMoveTo(center); }
    /// Gives the connector a size about its center. Fires ConnectorResized when it changes.
    int resize(const QxSize& size, int inOwnGraph);
    void ntResize(const QxSize& size) { vResize(size); }
    /// Change one part of the place; they fire nothing.
    int setOffset(const QxSize& offset, int inOwnGraph);
    int setPerMil(const QxPerMil& perMil);
    int setPerMil(std::int16_t x, std::int16_t y) { return setPerMil(QxPerMil(x, y)); }
    void ntSetOffset(const QxSize& offset) { vSetOffset(offset); }
    void ntSetPerMil(const QxPerMil& perMil) { vSetPerMil(perMil); }
    void ntSetPerMil(std::int16_t x, std::int16_t y) { vSetPerMil(QxPerMil(x, y)); }
    using QxPlacedRectOf::move;
    using QxPlacedRectOf::moveTo;
    using QxPlacedRectOf::ntMoveTo;
    using QxPlacedRectOf::ntResize;
    using QxPlacedRectOf::ntSetOffset;
    using QxPlacedRectOf::resize;
    using QxPlacedRectOf::setOffset;
    /// @}

    /// @name The place before a move
    /// The saved rectangle belongs to the connector; a new one replaces and frees the former.
    /// @{
    void storeMovedConnector();
    /// Moves back to the center of the saved rectangle by the raw move, and forgets it.
    virtual void restoreMovedConnector();
    const QxRect* pRectBeforeMove() const;
    /// Takes over a rectangle made with new (null forgets the place); returns it.
    const QxRect* pRectBeforeMove(const QxRect* rect);
    /// @}

    /// @name Shape (drawing/connectors/QxConnectorShape.cpp)
    /// Connectors with equal shapes share one resource of their factory's database. The first shape
    /// is an oval; without a factory there is none, and the outline is the bounding rectangle.
    /// @{

    /// The shape resource; a connector without one takes that of the oval first. Null without one
    /// and without a factory.
    QxShapeResource* pShapeResource();
    QxShapeResource* pQueryShapeResource() const { return m_shapeResource; }
    /// The shape shown: the oval before any was given; null without one and without a factory.
    const QxShape* pShape() const;
    /// Gives the connector a copy of `shape` (null: a rectangle). Fires ConnectorShapeChanged;
    /// nothing happens when the shape is the same. Returns the shape afterwards.
    const QxShape* pShape(const QxShape* shape);
    /// Makes the resource this connector's own, registered nowhere, and returns it.
    QxShapeResource* pChangeableShapeResource();
    /// Registers the resource when it is registered nowhere, so that equal shapes are shared.
    void updateShapeResource(QxShapeResource* resource);
    /// Drops the connector's reference; it shows the oval again.
    void discardShapeResource();
    /// Told of the shape that pShape is about to give the connector, and that it has; do nothing.
    void actBeforeChangeShape(const QxShape* shape);
    void actAfterChangeShape();
    /// @}

    /// @name State
    /// @{

    /// Whether a client keeps the connector; 0 for a calculated one. A change, which returns its
    /// argument, brings the graph bounds up to date.
    int specified() const { return hasFlag(qx::flags::ConnectorSpecified); }
    int specified(int value);
    /// Whether the connector is being discarded; the setter returns its argument.
    int inDiscard() const { return hasFlag(qx::flags::ConnectorInDiscard); }
    int inDiscard(int value) {
        setFlag(qx::flags::ConnectorInDiscard, value);
        return value;
    }
    /// The direction in which edges leave the connector; QxDirectionNone for any. The setter
    /// returns its argument.
    QxDirectionEnum routingDirection() const;
    QxDirectionEnum routingDirection(QxDirectionEnum direction);
    int hasRoutingDirection() const { return hasFlag(qx::flags::ConnectorHasDirection); }
    int hasRoutingDirection(int value) {
        setFlag(qx::flags::ConnectorHasDirection, value);
        return value;
    }
    /// Whether a resize of the node has scaled the offset of this calculated connector.
    int isRescaled() const {
        return specified() == 0 ? hasFlag(qx::flags::TemporarilyInvisible) : 0;
    }
    /// What the tracking of affected objects notes; the setter returns its argument.
    QxGraphObjectStatusEnum graphObjectStatus() const { return m_status; }
    QxGraphObjectStatusEnum graphObjectStatus(QxGraphObjectStatusEnum value) {
        return m_status = value;
    }
    /// Forgets status and saved rectangle, and sets no routing direction.
    void initDiagrammingConnector();
    /// @}

    /// @name Edges (drawing/connectors/QxConnectorEdges.cpp)
    /// @{

    /// Whether an edge, in whatever state, is assigned to the connector.
    int isUsed() const { return m_users.empty() ? 0 : 1; }
    /// Clears the list (null: nothing happens), then lists the edges that use the connector, in the
    /// order of the node's lists. QxEdgeDirectionOut leaves out self-loops that also end here.
    void buildIncidentEdgeList(QxDEdgeDList* list, QxEdgeDirectionEnum direction,
                               QxEdgeConnectionEnum connection) const;
    /// Clears the list, then lists the last segments of the connected edges that end here and the
    /// first segments of those that start here, each once.
    void buildIncidentPEdgeList(QxPEdgeDList* list) const;
    /// Forgets the clip points of the edges that use the connector, and that their visible parts
    /// are current. O(these edges).
    void invalidateIncidentEdgeEndPoints();
    /// The same for their visible parts alone.
    void actOnGeometryChanges();
    /// Sets the routing direction of a calculated connector from the segment that ends here: the
    /// way of a straight segment, the closest side of the node for a slanted one, where the edge is
    /// to run along the axes and no direction is set yet; none where it is not to.
    void updateCalculatedConnector(const QxPEdge* segment);
    /// @}

    /// @name Reports to the update records of the node's graph and of the edges between graphs
    /// The flags ask for the labels and the segments of the edges that use the connector. They
    /// serve records that a client keeps; the library's own changes ask the extents of the graph.
    /// @{
    void actBeforeGeometryChanges(QxGeometricUpdateInfo* own, QxGeometricUpdateInfo* intergraph,
                                  int labels, int pathEdges);
    void actAfterGeometryChanges(QxGeometricUpdateInfo* own, QxGeometricUpdateInfo* intergraph,
                                 int labels, int pathEdges);
    /// Reports the listed segments, too.
    void actAfterInsert(QxGeometricUpdateInfo* own, QxGeometricUpdateInfo* intergraph,
                        const QxPEdgeDList* segments, int labels, int recurse);
    /// Fills the list with the segments at the connector and reports them before the connector.
    void actBeforeRemove(QxGeometricUpdateInfo* own, QxGeometricUpdateInfo* intergraph,
                         QxPEdgeDList& segments, int labels, int recurse);
    /// Reports the listed segments after the connector has gone.
    void actAfterRemove(QxGeometricUpdateInfo* own, QxGeometricUpdateInfo* intergraph,
                        const QxPEdgeDList* segments, int labels, int recurse);
    /// @}

protected:
    /// The steps behind the label operations; see QxLabelOwnerOf.
    virtual QxConnectorLabel* vAddLabel(const wchar_t* name, int flag);
    virtual QxConnectorLabel* vInsertLabel(QxConnectorLabel* label);
    virtual int vDiscardLabel(QxConnectorLabel* label);
    virtual QxConnectorLabel* vRemoveLabel(QxConnectorLabel* label);
    /// A new label of the connector's factory, in no list yet; null without a factory.
    virtual QxConnectorLabel* vNewLabel(int flag);
    /// The raw changes, in own-graph coordinates.
    virtual void vMoveTo(const QxPoint& center);
    virtual void vResize(const QxSize& size);
    virtual void vSetOffset(const QxSize& offset);
    virtual void vSetPerMil(const QxPerMil& perMil);
    const wchar_t* vSetNameString(const wchar_t* name) override;
    QxObject* vCloneObject() const override;
    QxObject* vCloneAttributes() const override;
    qx::internal::GraphObjectExtras* vNewExtras() const override;

private:
    friend class QxConnectorManager;
    friend class QxDEdge;
    friend class QxDNode;
    friend class QxLabelOwnerOf<QxConnector, QxConnectorLabel>;
    friend class qx::internal::Coverage;
    friend struct qx::internal::IndexSlot;

    /// An end of an edge that is assigned to the connector.
    struct User {
        QxDEdge* edge;
        bool atSource;
    };

    const qx::internal::Ref<QxLabelManager>* pQueryLabelSlot() const;
    qx::internal::Ref<QxLabelManager>& labelSlot();
    void copyConnector(const QxConnector& source);
    void shareShapeOf(const QxConnector& source);
    /// Returns the number by which dropUser knows the end.
    std::size_t addUser(QxDEdge* edge, bool atSource);
    void dropUser(std::size_t index);
    /// Whether an edge that is connected and active, and not one between graphs, ends here.
    bool isUsedWithinGraph() const;
    /// Lets the node discard a calculated connector that no edge uses any more.
    void discardWhenUnused();
    /// Tells graph and edges that the connector covers something else.
    void tellPlaceChange();
    /// The shape when its outline differs from the bounding rectangle; else null.
    const QxShape* outlineWithinRect() const;
    void report(qx::internal::Moment moment, QxGeometricUpdateInfo* own,
                QxGeometricUpdateInfo* intergraph, const QxPEdgeDList* segments, int labels) const;

    QxDListCell m_ownerCell;
    std::vector<User> m_users;
    QxShapeResource* m_shapeResource = nullptr;
    std::int32_t m_width = 0;
    std::int32_t m_height = 0;
    std::int32_t m_offsetX = 0;
    std::int32_t m_offsetY = 0;
    std::int32_t m_extentSlot = -1;
    std::int32_t m_indexSlot = -1;
    std::int16_t m_perMilX = 0;
    std::int16_t m_perMilY = 0;
    QxGraphObjectStatusEnum m_status = QxStatusUnchanged;
};
