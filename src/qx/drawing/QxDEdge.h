// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

#include "qx/drawing/QxDrawingDLists.h"
#include "qx/drawing/QxDrawingFlags.h"
#include "qx/drawing/QxGEdge.h"
#include "qx/drawing/QxGraphObjectStatusEnum.h"
#include "qx/drawing/QxLabelOwnerOf.h"
#include "qx/drawing/QxMultiEdgeModeEnum.h"
#include "qx/foundation/geometry/QxPointDList.h"
#include "qx/foundation/util/QxDListIter.h"

class QxConnector;
class QxDEdgeInitialGeometry;
class QxDNode;
class QxFactory;
class QxGeometricUpdateInfo;
class QxDisconnectedPathIter;
class QxPNode;

namespace qx::internal {
class Collection;
class Coverage;
struct IndexSlot;
class IndexUpkeep;
class LabelPresence;
class MovingEdge;
template <class T>
class Ref;
struct ConnectorUse;
enum class Moment : unsigned char;
}  // namespace qx::internal

/// The edge that applications draw: a polyline from its source to its target, cut off at the
/// outlines of its ends.
///
/// The polyline is a chain of segments (QxPEdge) and bends (QxPNode), which the edge owns: n bends
/// and n + 1 segments. They have the edge's graph as owner but are not listed there. The segment of
/// a straight edge is made when somebody asks for it. Coordinates and the coordinate flag are those
/// of QxGNode.
class QX_API QxDEdge : public QxGEdge, public QxLabelOwnerOf<QxDEdge, QxEdgeLabel> {
public:
    /// Only the owner is used.
    QxDEdge(QxOwnedObject* owner, int type, QxFactory* factory);
    /// A detached copy, without ends, in the factory of `source`.
    QxDEdge(const QxDEdge& source, QxDeepFlagEnum depth);
    ~QxDEdge() override;

    /// @name What every graph object answers
    /// @{
    int userFieldsInUse() const override;
    void nullUserFields() override;
    int internalUserFieldsInUse() const override;
    void nullInternalUserFields() override;
    std::size_t sizeOf() const override;
    int checkInvariants() const override;
    int levelNumber() const override;
    void actOnDiscard() override;
    void innerDebugOutput(int depth) const override;
    QxDEdge* cloneObject() const { return static_cast<QxDEdge*>(vCloneObject()); }
    QxDEdge* cloneAttributes() const { return static_cast<QxDEdge*>(vCloneAttributes()); }
    /// @}

    /// @name Connection (drawing/QxDEdgeConnection.cpp)
    /// @{
    int disconnect() override;
    /// The path follows the state of the edge: its bends count for graph bounds only while the
    /// edge is connected and active. `activate` is 1 for every edge, `deactivate` 0 for a
    /// disconnected one.
    int activate() override;
    int deactivate() override;
    int changeSourceNodeWithoutConnect(QxNode* node) override;
    int changeTargetNodeWithoutConnect(QxNode* node) override;
    /// Exchanges the ends and the order of the bends, which stay in place. 0 without two ends.
    int reverse() override;
    void nullEndNodes() override;
    /// An edge that was disconnected when it was hidden comes back so.
    int canConnect(const QxNode* node) const override;
    /// Removes what the edge contains: its bends and labels.
    void emptyTopology() override;
    /// Gives the edge copies of the bends of `source` in place of its own, copies of its labels,
    /// and assigns its ends to the copies of the connectors that the ends of `source` are assigned
    /// to, where its own nodes have them.
    void duplicateTopology(QxEdge* source) override;
    /// Takes over the clipping choices, status and routing of `source`; with `deep` nonzero copies
    /// of its bends and labels in place of its own, too.
    void copyEdge(const QxEdge* source, int deep) override;
    /// @}

    /// @name End points (drawing/path/QxDEdgePath.cpp)
    /// @{
    void ntFromPoint(QxPoint& point, int clipped) const override;
    QxPoint ntFromPoint(int clipped) const override;
    void ntToPoint(QxPoint& point, int clipped) const override;
    QxPoint ntToPoint(int clipped) const override;
    QxPEdge* pSourceOrPathEdge() override { return pEndSegment(m_sourcePathEdge); }
    const QxPEdge* pSourceOrPathEdge() const override { return pEndSegment(m_sourcePathEdge); }
    QxPEdge* pTargetOrPathEdge() override { return pEndSegment(m_targetPathEdge); }
    const QxPEdge* pTargetOrPathEdge() const override { return pEndSegment(m_targetPathEdge); }
    /// The innermost graph in which both ends lie, through expanded nodes only; null for none
    /// (nesting/MetaEdges.cpp).
    QxDGraph* pNearestCommonNestedGraph() const;
    /// The unclipped end points of the whole path; 1.
    int getSourcePoint(QxPoint& point, int inOwnGraph) const;
    int getTargetPoint(QxPoint& point, int inOwnGraph) const;
    QxDNode* pSourceNode() const;
    QxDNode* pTargetNode() const;
    /// @}

    /// @name Connectors (drawing/connectors/QxDEdgeConnectors.cpp)
    /// An end may be assigned to a connector of its node: the path starts (ends) at its center and
    /// is cut off at its outline. An end that changes to another node loses its connector. An edge
    /// that is removed remembers both: they are its connectors again when it is inserted at the
    /// nodes that still have them.
    /// @{

    /// The connectors of the ends, whoever made them; null for none. The unverified ones are those
    /// that a removed edge remembers, too.
    QxConnector* pInternalSourceConnector() const { return pConnectorAt(true); }
    QxConnector* pInternalTargetConnector() const { return pConnectorAt(false); }
    QxConnector* pUnverifiedFromConnector() const { return pNotedConnector(true); }
    QxConnector* pUnverifiedToConnector() const { return pNotedConnector(false); }
    /// The same when they are specified; else null.
    QxConnector* pSourceConnector() const;
    QxConnector* pTargetConnector() const;
    int hasSpecifiedSourceConnector() const { return pSourceConnector() != nullptr ? 1 : 0; }
    int hasSpecifiedTargetConnector() const { return pTargetConnector() != nullptr ? 1 : 0; }
    /// Assign the end to a connector of its node, or to none (null). A calculated connector that no
    /// edge uses any more is discarded. Return the connector of the end afterwards; nothing happens
    /// for a connector of another node, and for the one it has. Fire EdgeConnectorChanged for a
    /// connected edge when the old connector or the new one is specified; so does an end that loses
    /// its connector by changing to another node, in any state of the edge.
    QxConnector* pSourceConnector(QxConnector* connector) {
        return assignConnector(connector, true);
    }
    QxConnector* pTargetConnector(QxConnector* connector) {
        return assignConnector(connector, false);
    }
    /// Unassign the end; the connector stays, even a calculated one. Return null. A removed edge
    /// forgets its connector.
    QxConnector* resetFromConnector() { return resetConnector(true); }
    QxConnector* resetToConnector() { return resetConnector(false); }
    /// Set the routing directions of the calculated connectors; see QxConnector.
    void updateCalculatedConnectors();
    /// @}

    /// @name Bends (drawing/path/QxDEdgeBends.cpp)
    /// @{

    /// Splits a segment of this edge at `point`; returns the new bend, which lies between the two
    /// halves. Null, and no change, for a segment of another edge or an edge that is not connected;
    /// null, too, when a listener has taken the bend away again.
    ///
    /// `BendAdded` is fired, then graph bounds are brought up to date. As with every operation
    /// here, listeners may do anything, even discard the edge.
    virtual QxPNode* addBend(QxPEdge* segment, const QxPoint& point, int inOwnGraph);
    /// The same on the segment after `bend` (null: on the first).
    virtual QxPNode* addBendAfter(QxPNode* bend, const QxPoint& point, int inOwnGraph);
    /// The raw step, in owner-graph coordinates: graph bounds are left to the caller.
    QxPNode* ntAddBend(QxPEdge* segment, const QxPoint& point);
    /// The raw step behind the last bend, for an edge in any state.
    QxPNode* ntAppendBend(const QxPoint& point);
    /// Removes and destroys a bend; the segment that entered it stays. 0 when it is not this
    /// edge's.
    virtual int discardBend(QxPNode* bend);
    /// Whether segments are drawn as curves: 0, for subclasses to change.
    virtual int isCurvedEdge() const;
    /// Describes the bends and segments in their order.
    virtual void debugOutputPath(int depth) const;
    /// Removes the first (`fromSource` nonzero) or last n bends, or all when there are fewer.
    void discardBends(std::int32_t n, int fromSource);
    /// Removes every bend; the first segment stays and runs from source to target. For an edge in
    /// any state.
    void discardAllBends();
    /// -1 when the edge is not connected. Linear in the number of bends.
    std::int32_t numberOfBends() const;
    /// 0 for an edge that is not connected, whatever its path.
    int hasBends() const;
    /// Position from the source, counted from 1; 0 for null, the number of segments for one that is
    /// not on the path.
    std::int32_t indexOfPathEdge(const QxPEdge* segment) const;
    /// Appends the bends from source to target.
    void buildPathNodeList(QxPNodeDList& list) const;
    /// Append the points of the path from source to target: the unclipped ends and, between them,
    /// the bends, in owner-graph coordinates.
    void buildPointList(QxPointDList& list) const;
    /// The same into a list that is emptied first.
    void buildEdgePointList(QxPointDList& list) const;
    /// Replaces all bends by these points, in order. 0 without an owner graph or when the edge is
    /// not connected and active.
    int reroute(const QxPointDList& points, int inOwnGraph);
    /// Removes the bends next to an end that lie inside that end's node.
    void discardOverlappedBendsForClipping(int source, int target);
    /// @}

    /// @name Path objects (drawing/path/QxDEdgePath.cpp)
    /// The steps that the bend operations are made of. They may leave the path open in between; it
    /// has to be closed again before anything else is done with the edge.
    /// @{
    /// A new bend at the point, joined to no segment yet.
    QxPNode* addPNode(const QxPoint& point);
    /// Takes over a bend that is in no path; returns it. Null for null or a bend of some edge.
    QxPNode* insertPNode(QxPNode* node);
    /// Detaches a bend from its segments and the edge; the caller owns what is returned. Null for
    /// null or a bend of another edge.
    QxPNode* removePNode(QxPNode* node);
    /// Detaches and destroys a bend; nothing happens to one that is not this edge's.
    void discardPNode(QxPNode* node);
    /// A new segment between bends or end nodes of this edge; null where insertPEdge refuses.
    QxPEdge* addPEdge(QxNode* from, QxNode* to);
    /// Takes over a segment that is in no path; returns it. One that starts at a node becomes the
    /// first, one that ends at a node the last segment. Null, and no change, for null, a segment of
    /// some edge, an end that is neither an end node nor a bend of this edge with room for another
    /// segment, and when the edge has another first (last) segment.
    QxPEdge* insertPEdge(QxPEdge* segment, QxNode* from, QxNode* to);
    /// Detaches a segment from its ends and the edge; the caller owns what is returned. Null for
    /// null or a segment of another edge.
    QxPEdge* removePEdge(QxPEdge* segment);
    /// Detaches and destroys a segment; nothing happens to one that is not this edge's.
    void discardPEdge(QxPEdge* segment);
    /// 1 when the edge is connected and its path is sound; says what is wrong otherwise.
    int checkPath() const;
    /// Gives the path objects the owner, and the owner-valid state, of the edge.
    void updatePathOwnership();
    /// @}

    /// @name Measures (drawing/path/QxDEdgeMeasures.cpp)
    /// Lengths are sums over the segments, in whole units.
    /// @{
    std::int32_t ntEdgeLength() const override;
    std::int32_t edgeLength() const override;
    void projectionPoint(const QxPoint* point, QxPoint* nearest,
                         std::int32_t* distance) const override;
    void pointOnEdge(QxPoint* point, std::int16_t perMil) const override;
    /// The segment that far along the edge, and the thousandths along its segment of the point that
    /// is so many thousandths along the edge: those that pointOnEdge takes.
    QxPEdge* pPathEdgeAtDistance(std::int32_t distance) const;
    std::int16_t perMilOnSegmentAt(std::int16_t perMil) const;
    int ntIntersectsRect(const QxRect* rect, int clipped) const override;
    /// The rectangle of the ends, the bends and the labels, for any user.
    int getUserBoundingRect(QxRect& rect, int inOwnGraph) const override;
    /// The rectangle of the unclipped ends and all bends, in owner-graph coordinates.
    void ntBoundingRectWithPathNodes(QxRect& rect) const;
    /// The same with the labels.
    void ntBoundingRectWithPathNodesAndLabels(QxRect& rect) const;
    /// Both, `inOwnGraph` 0: in those of the anchor graph. 0, and no change, for an edge that
    /// is not visible there.
    int getBoundingRectWithPathNodes(QxRect& rect, int inOwnGraph) const;
    int getBoundingRectWithPathNodesAndLabels(QxRect& rect, int inOwnGraph) const;
    /// @}

    /// @name Clipping and the visible part (drawing/clipping/QxDEdgeClipping.cpp)
    /// The visible part is the run of segments between the clip points. Changes only mark it
    /// outdated; whoever reads it, here or at a segment or bend, finds it up to date while the edge
    /// is connected and active.
    /// @{

    /// Whether the edge asks to be cut off at its ends; both are 1 at first.
    int clipSourceSide() const { return hasFlag(qx::flags::EdgeClipSource); }
    int clipTargetSide() const { return hasFlag(qx::flags::EdgeClipTarget); }
    int clipSourceSide(int value);
    int clipTargetSide(int value);
    /// Whether it is cut off: it asks for it, or the node forces it.
    int useFromClipping() const;
    int useToClipping() const;
    /// The first segment, from one end, whose far end lies outside the object at that end; the end
    /// segment when `clip` is 0; null when there is none.
    QxPEdge* findClipPathEdge(int fromSource, int clip) const;
    /// The ends of the visible part without touching any flag; 1 when there is one. The last two
    /// arguments force clipping at an end.
    int getVisiblePart(QxPEdge*& first, QxPEdge*& last, int forceSource, int forceTarget) const;
    /// The first (last) segment of the visible part; null when there is none.
    QxPEdge* pFromClippingEdge() const;
    QxPEdge* pToClippingEdge() const;
    /// Compute the visible part into the "new" flags of the path objects; the second also on a path
    /// that is not connected. The current flags stay.
    void updateNewVisiblePart();
    void updateNewVisiblePartDisconnected();
    /// Computes the visible part into both flags of the path objects, in any state of the edge.
    void updateVisiblePart();
    /// Compute the visible part, take it over and report what shows and what has ceased to.
    void updateVisiblePartAfterGeometryChanges(QxGeometricUpdateInfo* info);
    void updateVisiblePartAfterInsert(QxGeometricUpdateInfo* info);
    /// Whether anything shows; 0 for an edge that is not connected and active, unless its visible
    /// part has been computed since. Setting this or one of the next two flags returns the argument
    /// and forgets the clipped end points.
    int hasVisiblePart() const;
    int hasVisiblePart(int value);
    /// Whether the visible part as computed last still holds.
    int isUpdatedVisiblePart() const { return hasFlag(qx::flags::EdgeVisiblePartUpdated); }
    int isUpdatedVisiblePart(int value);
    /// Whether reports may use a visible part that is only partly up to date.
    int usePartiallyUpdated() const { return hasFlag(qx::flags::EdgePartiallyUpdated); }
    int usePartiallyUpdated(int value);
    /// Forgets the clipped end points.
    void invalidateEndPoints() const {
        m_fromClip = ClipPoint();
        m_toClip = ClipPoint();
    }
    /// @}

    /// @name Routes along the axes (drawing/orthogonal/QxDEdgeOrthogonal.cpp)
    /// The library does not look for routes. It knows which edges are to run along the axes, and
    /// makes the path of such an edge do so: the ends come to lie on the outlines of the nodes,
    /// by calculated connectors, and corners are added to the bends where they are needed.
    /// @{

    /// Whether the path is to run along the axes: the edge asks for it, or the graph of one of its
    /// ends does, or, for a visible edge between graphs, one of those that lie around its ends, up
    /// to the innermost that holds both; so does such an edge that leads from a node into the graph
    /// nested there. 0 without two ends that have graphs. O(1); between graphs O(nesting depth).
    int desiredOrthogonalRouting() const;
    /// Whether it does: 0 when it is not to, and when a segment of the visible part is slanted.
    int orthogonalRouting() const;
    /// Makes the path of an edge that is to run along the axes do so. Ends without a connector, and
    /// those whose calculated connector lies outside its node, get a calculated one on the outline
    /// of the node; bends inside the end nodes and corners that turn nowhere go. Specified
    /// connectors stay where they are. Nothing happens to an edge that is not connected and active,
    /// to one that is not to run so, between graphs to an invisible one, and, but for the
    /// connectors, to one whose ends cannot have any. Bends that lie right already stay, unheard;
    /// else the path is rerouted. O(bends).
    void repairOrthogonalRouting();
    /// Completes a list of points, from the source to the target as buildEdgePointList makes it,
    /// into one whose segments all run along the axes, and drops what lies inside the end nodes;
    /// there calculated connectors follow. Nothing happens for an edge that is not to run so, or
    /// without connectors at both ends. Coordinates are those of the edge's path.
    void makePathOrthogonal(QxPointDList& points);
    /// @}

    /// @name Bundles of parallel edges (drawing/bundles/QxDEdgeBundles.cpp)
    /// Edges between the same two nodes, in either direction, form bundles: two edges are in one
    /// when at each node they end at the same connector, or both at no specified one. Connected
    /// edges count, in the order of their graph's list. An edge with a specified connector keeps
    /// its path. Operations on a bundle take edges between the nodes of this edge; others in the
    /// list are passed over.
    /// @{

    /// Lays out the bundles between the ends of this edge; of the listed edges alone, unless the
    /// list is null. Nothing happens for a self-loop and without an owner graph. O(k log k) for k
    /// edges at the end of lower degree.
    void reorganizeMultiEdgeBundle(QxMultiEdgeModeEnum mode, const QxDEdgeDList* edges);
    /// The modes: see QxMultiEdgeModeEnum. As one change of the graph.
    void reorganizeMultiEdgeBundleOverlap(const QxDEdgeDList* bundle);
    void reorganizeMultiEdgeBundleParallel(const QxDEdgeDList* bundle);
    void reorganizeMultiEdgeBundleOneBend(const QxDEdgeDList* bundle);
    /// Appends to `bundles` a list, which the caller owns, for each bundle of two or more edges.
    /// There are none between nodes whose centers are less than a unit apart.
    void collectMultiEdges(QxDList& bundles, const QxDEdgeDList* edges) const;
    /// Empties the list, then lists the edges between the ends of this edge, itself included, that
    /// have neither bends nor specified connectors and need not run along the axes; none when there
    /// are fewer than two.
    void collectStraightMultiEdges(QxDEdgeDList* list) const;
    /// The distance from one edge to the next at which `count` parallel edges fit between the
    /// nodes: at most what the graph wants; -1 where there is no room at all.
    std::int32_t multiEdgeSpacingForParallelBundles(int count) const;
    /// The room across the line between the centers of the nodes that both offer; -1 when one of
    /// them does not hold its own center.
    double maxAvailableMultiEdgeDiagonalLength() const;
    /// How far from that line the edge at position `index`, counted from 1, of a bundle of an odd
    /// (even) number of edges runs, for a step of half the spacing.
    static void computeOffsetPointsForMultiEdgesParallel(QxPoint& out, double stepX, double stepY,
                                                         int index, int odd);
    /// Gives both ends calculated connectors on that line shifted by `offset`, in the coordinates
    /// of the path. An end whose node the line does not meet stays without one.
    void assignConnectorsMultiEdgesParallel(const QxPoint* offset);
    /// A new calculated connector where the way `from` a point `toward` another, in the coordinates
    /// of the path, meets the node's shape; null where it does not. No end is assigned to it yet.
    QxConnector* setConnector(QxDNode* node, QxPoint from, QxPoint toward);
    /// @}

    /// @name Labels (drawing/labels/QxDEdgeLabels.cpp); see QxLabelOwnerOf
    /// @{
    virtual void debugOutputLabels(int depth) const;
    /// Lays those of the labels that are this edge's out in pairs about the middle of the edge, in
    /// the order of the list, each by its full move. 1 when there were any, else 0; 0, too, for
    /// null and an edge without an owner graph.
    int centerLabels(const QxEdgeLabelDList* labels);
    /// @}

    /// @name Moves of what the edge is attached to (update/QxDEdgeReactions.cpp)
    /// @{

    /// What the edge looked like when the running move began; null while none concerns it. The
    /// setter takes over a record made with new (null forgets it), which replaces and releases the
    /// former one; it returns its argument.
    QxDEdgeInitialGeometry* pEdgeInitialGeometry() const;
    QxDEdgeInitialGeometry* pEdgeInitialGeometry(QxDEdgeInitialGeometry* record);
    /// Save the places of the bends and labels of an edge that moves as a whole; put them back
    /// there by raw moves and forget them; forget them.
    void storeMovedEdge();
    void restoreMovedEdge();
    void deleteMovedEdgeInitialPosition();
    /// Forgets the record of an edge that had to follow, and the saved places of its labels.
    void deleteReroutedEdgeInitialPosition();
    /// @}

    /// @name State
    /// Setters return the argument and change nothing else.
    /// @{

    /// Whether the edge stands for others that are hidden.
    int isMetaEdge() const { return hasFlag(qx::flags::EdgeMeta); }
    int setMetaEdge(int value);
    /// Whether the edge belongs to a bundle that a move spreads, while it does.
    int multiEdge() const { return hasFlag(qx::flags::EdgeMulti); }
    int multiEdge(int value) {
        setFlag(qx::flags::EdgeMulti, value);
        return value;
    }
    /// Whether the edge itself asks for a path along the axes; see desiredOrthogonalRouting.
    int internalOrthogonalRouting() const { return hasFlag(qx::flags::EdgeOrthogonal); }
    int internalOrthogonalRouting(int value) {
        setFlag(qx::flags::EdgeOrthogonal, value);
        return value;
    }
    QxGraphObjectStatusEnum graphObjectStatus() const { return qx::flags::status(flagWord()); }
    QxGraphObjectStatusEnum graphObjectStatus(QxGraphObjectStatusEnum value) {
        setFlag(qx::flags::Status, 0);
        setFlag(qx::flags::statusBits(value), 1);
        return value;
    }
    /// The copy of this edge while a graph is copied, when its manager stores clones; else null.
    QxDEdge* pClonedEdge() const;
    QxDEdge* pClonedEdge(QxDEdge* edge);
    /// @}

    /// @name Reports to an update record; `recurse` also of path objects, `labels` of labels
    /// They do nothing for an edge that is not connected and active, and, between graphs, for one
    /// that is invisible.
    /// @{
    void actAfterInsert(QxGeometricUpdateInfo* info, int recurse, int labels);
    void actBeforeRemove(QxGeometricUpdateInfo* info, int recurse, int labels);
    void actBeforeGeometryChanges(QxGeometricUpdateInfo* info, int recurse, int labels);
    void actAfterGeometryChanges(QxGeometricUpdateInfo* info, int recurse, int labels);
    /// An end object has moved or changed: clip points and visible part are outdated.
    void actOnEndObjectChange() {
        invalidateEndPoints();
        setFlag(qx::flags::EdgeVisiblePartUpdated, 0);
        if (hasFlag(qx::flags::EdgeIsTracked) != 0) {
            tellCoverage();
        }
        tellOfLabels();
    }
    /// @}

protected:
    int vConnect() override;
    void vFollowState() override;
    void vFollowEnds() override;
    void vFollowReversal() override;
    void actOnChangeOwner(QxOwnedObject* owner, int valid) override;
    qx::internal::GraphObjectExtras* vNewExtras() const override;
    /// The steps behind the label operations.
    virtual QxEdgeLabel* vAddLabel(const wchar_t* name, int flag);
    virtual QxEdgeLabel* vInsertLabel(QxEdgeLabel* label);
    virtual int vDiscardLabel(QxEdgeLabel* label);
    virtual QxEdgeLabel* vRemoveLabel(QxEdgeLabel* label);
    /// A new label of the edge's factory, in no list yet; null without a factory.
    virtual QxEdgeLabel* vNewLabel(int flag);
    /// New path objects of the edge's factory, in no path yet.
    virtual QxPEdge* vNewPEdge();
    virtual QxPNode* vNewPNode();
    /// Whether the segment of a straight edge is made with the edge, not when it is asked for: 0,
    /// for subclasses to change.
    virtual int vNeedsPathAtOnce() const;
    QxObject* vCloneObject() const override;
    QxObject* vCloneAttributes() const override;

private:
    friend class QxConnector;
    friend class QxConnectorManager;
    friend class QxDGraph;
    friend class QxDNode;
    friend class QxPEdge;
    friend class QxPNode;
    friend class QxLabelOwnerOf<QxDEdge, QxEdgeLabel>;
    friend class qx::internal::Collection;
    friend class qx::internal::Coverage;
    friend struct qx::internal::IndexSlot;
    friend class qx::internal::IndexUpkeep;
    friend class QxQTree;
    friend class qx::internal::LabelPresence;
    friend class qx::internal::MovingEdge;

    /// The farthest corner stands for a point that is not known; one that really lies there is
    /// computed every time.
    struct ClipPoint {
        std::int32_t x = qx::MinInt32;
        std::int32_t y = qx::MinInt32;

        bool isKnown() const { return x != qx::MinInt32 || y != qx::MinInt32; }
    };
    /// The path objects from source to target.
    struct Path {
        std::vector<QxPEdge*> segments;
        std::vector<QxPNode*> bends;
    };

    /// @name State
    /// @{
    bool isActive() const { return connected() != 0 && deactivated() == 0; }
    /// Whether the edge has something to say to the record.
    bool reportsTo(const QxGeometricUpdateInfo* info) const;
    /// Whether it covers nothing but what its end nodes and their specified connectors cover.
    bool liesWithinItsEnds() const;
    /// Whether it is plain that the whole of a straight edge between its ends shows, wherever it is
    /// clipped: the rectangles of its ends lie apart along its main direction. A quick answer for
    /// most edges; false says nothing.
    bool showsWhole() const;
    bool canUsePart(const QxGraphObject& part, int inVisiblePart) const;
    /// @}

    /// @name Path
    /// @{

    /// Whether the edge is straight and its segment has not been made yet.
    bool isPathImplied() const { return hasFlag(qx::flags::EdgePathImplied) != 0; }
    void makePath();
    QxPEdge* pEndSegment(QxPEdge* const& segment) const;
    /// Walks the path objects that have been made, in any state of the edge.
    QxDisconnectedPathIter madeParts(QxIterDirectionEnum direction = QxIterForward) const;
    const QxDList* pParts() const;
    Path collectPath(QxIterDirectionEnum direction = QxIterForward) const;
    void connectPath();
    void disconnectPath();
    void destroyPath();
    /// Lets the path start (end) at these nodes, null for none; makes it when there is none yet.
    void attachPath(QxNode* source, QxNode* target);
    QxPEdge* linkNewSegment(QxNode* from, QxNode* to);
    void link(QxPEdge* segment, QxNode* from, QxNode* to);
    void takeOver(QxPEdge* segment, QxNode* from, QxNode* to);
    void detachPNode(QxPNode* node);
    void detachPEdge(QxPEdge* segment);
    void giveOwner(QxGraphMember& part);
    bool followsEdge(const QxGraphMember& part) const;
    /// Whether there is no path, or one chain leads from its first to its last segment.
    bool isPathWhole() const;
    int changeEnd(QxNode* node, bool atSource);
    void duplicatePath(const QxDEdge& source);
    void copyDiagramming(const QxDEdge& source);
    /// @}

    const qx::internal::Ref<QxLabelManager>* pQueryLabelSlot() const;
    qx::internal::Ref<QxLabelManager>& labelSlot();
    void reportLabels(qx::internal::Moment moment, QxGeometricUpdateInfo* info) const;
    /// @name Connectors
    /// @{
    bool hasConnectors() const {
        return hasFlag(qx::flags::EdgeFromConnectorValid | qx::flags::EdgeToConnectorValid) != 0;
    }
    QxConnector* pConnectorAt(bool atSource) const {
        return hasFlag(atSource ? qx::flags::EdgeFromConnectorValid
                                : qx::flags::EdgeToConnectorValid) != 0
                   ? pNotedConnector(atSource)
                   : nullptr;
    }
    /// The connector that the end is assigned to or, while it has no node, was assigned to.
    QxConnector* pNotedConnector(bool atSource) const;
    bool hasCalculatedConnector() const { return hasConnectors() && usesCalculatedConnector(); }
    bool usesCalculatedConnector() const;
    qx::internal::ConnectorUse& connectorUse(bool atSource);
    /// Whether the end is assigned to the connector, as its end of that number.
    bool isNumberedAt(const QxConnector& connector, bool atSource, std::size_t number) const;
    /// The raw step: says goodbye to the old connector and nothing else.
    void takeConnector(QxConnector* connector, bool atSource);
    QxConnector* assignConnector(QxConnector* connector, bool atSource);
    QxConnector* resetConnector(bool atSource);
    void tellConnectorChange(QxConnector* old, QxConnector* connector);
    /// Unassigns both ends without a word to listeners; the first leaves a note of them.
    void setConnectorsAside();
    void loseConnectors();
    /// Assigns an end to the connector noted there, or forgets one that is of another node.
    void settleConnector(bool atSource);
    void exchangeConnectors();
    void duplicateConnectors(const QxDEdge& source);
    /// @}

    int getEnd(QxPoint& point, int inOwnGraph, bool atSource) const;
    std::int64_t pathLength() const;
    /// The made segment that holds the point so far along the path, and how far along that it lies.
    struct PathSpot {
        QxPEdge* segment;
        std::int64_t along;
        std::int64_t length;
    };
    PathSpot spotAtDistance(std::int64_t distance) const;

    /// @name Bends
    /// @{
    QxPNode* splitSegment(QxPEdge* segment, const QxPoint& point);
    /// Puts a bend, and a new segment after it, behind a segment of any state; null, and no change,
    /// when the factory makes one of the two not.
    QxPNode* breakSegment(QxPEdge* segment, const QxPoint& point);
    bool canMergeAt(const QxPNode* bend) const;
    /// Takes a bend out of the path and makes one segment of the two at it.
    void mergeSegmentsAt(QxPNode* bend);
    /// Takes all bends out of the path; returns them.
    std::vector<QxPNode*> straighten();
    void tellBendAdded(QxPNode* bend);
    /// Tells that bends which have left the path are gone, and lets them go.
    void discardDetached(const std::vector<QxPNode*>& bends);
    /// @}

    /// @name Clipping
    /// @{
    bool isClippedAt(bool atSource) const;
    QxPEdge* pEndOfVisiblePart(QxIterDirectionEnum direction) const;
    /// Whether it is known already, and up to date, where the drawn part of a path of one segment
    /// starts and ends; false says nothing.
    bool isDrawnLineKnown() const {
        constexpr std::uint32_t Shown = qx::flags::EdgeConnected |
                                        qx::flags::EdgeVisiblePartUpdated |
                                        qx::flags::EdgeHasVisiblePart;
        return (flagWord() & (Shown | qx::flags::EdgeDeactivated)) == Shown &&
               m_fromClip.isKnown() && m_toClip.isKnown() && m_sourcePathEdge == m_targetPathEdge;
    }
    /// Where the line, the end segment or the straight edge that stands for it, is cut off.
    void readClipPoint(QxPoint& point, const QxGEdge& line, bool atSource) const;
    void readEnd(QxPoint& point, int clipped, bool atSource) const;
    int changeClipping(std::uint32_t bit, int value);
    /// Whether a straight line between the end objects shows outside them.
    bool showsBetweenEnds() const;
    /// Brings an outdated visible part up to date for a reader.
    void refreshVisiblePart() const;
    /// Whether anything shows of a straight edge that is cut off at these ends.
    bool showsStraight(bool clipSource, bool clipTarget) const;
    template <class Walk>
    void markVisiblePart(std::uint32_t segmentBits, std::uint32_t bendBits);
    void reportVisiblePart(qx::internal::Moment moment, QxGeometricUpdateInfo* info);
    void report(qx::internal::Moment moment, QxGeometricUpdateInfo* info, int labels = 1);
    /// @}

    /// Bring up to date what the graph's extents and index know: of the ends; of the labels.
    void tellCoverage();
    void outdateLabels();
    void tellOfLabels() {
        if (hasFlag(qx::flags::EdgeHasLabels) != 0) {
            outdateLabels();
        }
    }

    QxPEdge* m_sourcePathEdge = nullptr;
    QxPEdge* m_targetPathEdge = nullptr;
    /// The clipped end points, while they are known.
    mutable ClipPoint m_fromClip;
    mutable ClipPoint m_toClip;
    std::int32_t m_extentSlot = -1;
    /// In the spatial index: of a straight edge whose segment has not been made.
    std::int32_t m_indexSlot = -1;
};
