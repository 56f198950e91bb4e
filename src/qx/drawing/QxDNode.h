// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxDrawingDLists.h"
#include "qx/drawing/QxDrawingFlags.h"
#include "qx/drawing/QxGNode.h"
#include "qx/drawing/QxGraphObjectStatusEnum.h"
#include "qx/drawing/QxLabelOwnerOf.h"
#include "qx/foundation/geometry/QxDirectionEnum.h"

class QxConnectorManager;
class QxExpandedNodeExtension;
class QxFactory;
class QxPerMil;
class QxShape;
class QxShapeResource;

namespace qx::internal {
class Collection;
class Coverage;
class IndexUpkeep;
struct IndexSlot;
template <class T>
class Ref;
enum class Moment : unsigned char;
}  // namespace qx::internal

/// The node that applications draw: a rectangle with a center, a size and a shape.
///
/// Coordinates and the coordinate flag are those of QxGNode. Sizes below 0 count as 0. Every full
/// change updates the graph bounds and fires a drawing change event; the raw operations (`nt...`)
/// fire, too, but leave the bounds to their caller.
class QX_API QxDNode : public QxGNode, public QxLabelOwnerOf<QxDNode, QxNodeLabel> {
public:
    /// Only the owner is used.
    QxDNode(QxOwnedObject* owner, int type, QxFactory* factory);
    /// A detached copy in the factory of `source`.
    QxDNode(const QxDNode& source, QxDeepFlagEnum depth);
    ~QxDNode() override;

    /// @name What every graph object answers
    /// @{
    int userFieldsInUse() const override;
    void nullUserFields() override;
    int internalUserFieldsInUse() const override;
    void nullInternalUserFields() override;
    std::size_t sizeOf() const override;
    int checkInvariants() const override;
    int levelNumber() const override;
    /// Discards what the node contains, its labels and connectors; its incident edges stay.
    void emptyTopology() override;
    void internalDuplicateTopology(QxNode* source) override;
    void innerDebugOutput(int depth) const override;
    /// Describes all connectors in their order.
    virtual void debugOutputConnectors(int depth) const;
    void actOnDiscard() override;
    /// Takes over place, size and clipping of `source`, and with `deep` nonzero its shape and
    /// copies of its labels and connectors in place of its own; without, the node shows the default
    /// shape afterwards. Nothing happens for null and the node itself.
    void copyNode(const QxNode* source, int deep) override;
    QxDNode* cloneObject() const { return static_cast<QxDNode*>(vCloneObject()); }
    QxDNode* cloneAttributes() const { return static_cast<QxDNode*>(vCloneAttributes()); }
    /// @}

    /// @name Stored geometry, in owner-graph coordinates
    /// @{
    QxPoint iCenter() const override { return m_rect.center(); }
    void iCenter(QxPoint& center) const override { center = m_rect.center(); }
    QxSize iSize() const override { return m_rect.size(); }
    void iSize(QxSize& size) const override { size = m_rect.size(); }
    std::int32_t iX() const override { return m_rect.x(); }
    std::int32_t iY() const override { return m_rect.y(); }
    std::int32_t iWidth() const override { return m_rect.width(); }
    std::int32_t iHeight() const override { return m_rect.height(); }
    const QxRect* pIRect() const { return &m_rect; }
    /// @}

    /// @name Moving (drawing/bounds/QxDNodeMoving.cpp)
    /// A move keeps the size: near the ends of the coordinate range the node stays inside it, and
    /// its center short of the one asked for.
    /// @{

    /// Moves the node by the raw move to the center that storeMovedNode saved, and forgets that
    /// place; its size stays. Nothing happens when none is saved.
    void restoreMovedNode() override;
    /// Makes the bounding rectangle equal to `rect`, repairing everything attached. Fires
    /// NodeMoved, after NodeResized when the size differs. Nothing happens, and nothing is fired,
    /// when it is equal already.
    void updateForDiagramming(const QxRect& rect);
    /// @}

    /// @name Resizing (drawing/bounds/QxDNodeMoving.cpp)
    /// @{

    /// Gives the node a size about its center and repairs what is attached. Returns 1, also when it
    /// has that size; 0 for an expanded node, and for anchor coordinates of an invisible one.
    int resize(const QxSize& size, int inOwnGraph);
    int resize(std::int32_t width, std::int32_t height, int inOwnGraph) {
        return resize(QxSize(width, height), inOwnGraph);
    }
    /// The raw resize, in owner-graph coordinates.
    void ntResize(const QxSize& size) { vResize(size); }
    void ntResize(std::int32_t width, std::int32_t height) { vResize(QxSize(width, height)); }
    void ntResizeAdjustConnectors(const QxSize& size) { vResizeAdjustConnectors(size); }
    /// Resizes without touching the original size or the connectors.
    virtual void internalResize(const QxSize& size);
    void internalResize(std::int32_t width, std::int32_t height) {
        internalResize(QxSize(width, height));
    }
    /// A hook for layouts to undo what they did to the node; does nothing.
    virtual void postLayoutReset();
    /// The size last set other than by reading a file; a setter returns its argument.
    std::int32_t originalWidth() const { return m_originalWidth; }
    std::int32_t originalHeight() const { return m_originalHeight; }
    QxSize originalSize() const { return {m_originalWidth, m_originalHeight}; }
    std::int32_t originalWidth(std::int32_t value) { return m_originalWidth = value; }
    std::int32_t originalHeight(std::int32_t value) { return m_originalHeight = value; }
    QxSize originalSize(const QxSize& value);
    /// @}

    /// @name Shape (drawing/QxDNodeShape.cpp)
    /// Nodes with equal shapes share one resource of their factory's database.
    /// @{

    /// The shape resource; a node without one takes its factory's default first. Null without one
    /// and without a factory.
    QxShapeResource* pShapeResource();
    QxShapeResource* pQueryShapeResource() const { return m_shapeResource; }
    /// Sets the pointer as it is; the reference that the caller holds becomes the node's.
    QxShapeResource* pShapeResource(QxShapeResource* resource) {
        return m_shapeResource = resource;
    }
    /// The shape shown; the factory's default before any was given, null without a factory.
    const QxShape* pShape() const;
    /// Gives the node a copy of `shape` (null: a rectangle) and repairs what is attached; with
    /// `quietly` nonzero without records, index and event. Nothing happens to an expanded node or
    /// when the shape is the same. Returns the node's shape afterwards.
    const QxShape* pShape(const QxShape* shape, int quietly);
    /// The light change used while building: no records and no event. With `hooks` nonzero the
    /// hooks around a change of shape run. Returns the node's shape afterwards.
    const QxShape* pChangeShape(const QxShape* shape, int hooks);
    /// Makes the resource this node's own, registered nowhere, and returns it.
    QxShapeResource* pChangeableShapeResource();
    /// Registers the resource when it is registered nowhere, so that equal shapes are shared.
    void updateShapeResource(QxShapeResource* resource);
    /// Drops the node's reference; the node shows the default again.
    void discardShapeResource();
    /// Told of the shape that pChangeShape is about to give the node; does nothing.
    void actBeforeChangeShape(const QxShape* shape);
    /// Told that pChangeShape gave the node its shape, outside of reading: discards the calculated
    /// connectors.
    void actAfterChangeShape();
    /// @}

    /// @name Tests and projections (drawing/clipping/QxDNodeProjection.cpp)
    /// @{

    /// Whether the point lies in the shape, its outline included.
    int within(const QxPoint& point, int inOwnGraph) const;
    /// Moves `from` to where the segment from there to `to` crosses the outline: of several
    /// crossings the nearest to `to` on a rectangle, the nearest to `from` on any other shape.
    /// Equal points ask whether the point lies on the outline. Nonzero when there is a crossing,
    /// else `from` keeps its value.
    int intersectsSegment(QxPoint& from, const QxPoint& to, int inOwnGraph) const;
    /// The side of the bounding rectangle that is closest to a point in owner-graph coordinates;
    /// QxSideNone for a node without an owner graph.
    QxSideEnum closestSide(const QxPoint& point) const;
    /// The same for the center of a connector; QxSideNone for null, too.
    QxSideEnum closestSide(const QxConnector* connector) const;
    /// Projects the point, in owner-graph coordinates, onto the outline from its closest side;
    /// returns the direction used, 4 (and no change) for a point outside both ranges of the node.
    QxDirectionEnum computeProjection(QxPoint& point) const;
    /// Projects the point onto the outline, travelling in `direction`: onto the side of a rectangle
    /// that is left last; onto any other shape where the way to the point meets it first, from the
    /// side that is entered first or, when that way misses, from the opposite one. 1 when the point
    /// was moved, 0 for one outside both ranges.
    int computeProjection(QxPoint& point, QxDirectionEnum direction) const;
    /// Moves an offset from the center that lies on a side of the bounding rectangle onto the
    /// outline; per-mil of the half extents or constant. Other offsets stay.
    void computeProjectionAtShapeBorder(std::int32_t& x, std::int32_t& y, int perMil) const;
    /// Where the edge, running straight in the routing direction of the connector at this node, to
    /// the next bend or its far end, leaves `shape` placed here (null: the bounding rectangle), in
    /// anchor coordinates; where it never does, the middle of the side in that direction. 1, or 0
    /// and no change for a connector without a direction and for an invisible node.
    int findProjection(QxDEdge* edge, const QxConnector* connector, QxPoint& point,
                       const QxShape* shape) const;
    /// Pushes a point out of the node in a direction, by at least the larger extent. In anchor
    /// coordinates of an invisible node the point stays.
    void moveOutside(QxPoint& point, QxDirectionEnum direction, int inOwnGraph) const;
    /// @}

    /// @name Labels (drawing/labels/QxDNodeLabels.cpp); see QxLabelOwnerOf
    /// @{
    virtual void debugOutputLabels(int depth) const;
    /// Discard the labels of the node, and of its connectors, too.
    void discardAllLabels();
    void discardAllNodeLabels();
    void discardAllConnectorLabels();
    /// Whether any of its connectors has a label.
    int hasConnectorLabels() const;
    /// Stacks those of the labels that are this node's, in the order of the list, in the middle of
    /// the node's inner rectangle, as one change.
    void centerLabels(const QxNodeLabelDList* labels);
    /// Gives the node the place and size at which its inner rectangle holds its labels (`all` 0:
    /// the first), which stay where they are. Nothing happens without labels.
    void resizeToLabels(int all);
    /// @}

    /// @name Extents with what hangs on the node
    /// The flags ask for the node labels, the specified connectors and their labels.
    /// @{

    /// In owner-graph coordinates.
    void ntBoundingRectWithSubObjects(QxRect& rect, int labels, int connectors,
                                      int connectorLabels) const;
    /// In the asked-for coordinates. 0, and no change, for anchor coordinates of an invisible node.
    int getBoundingRectWithSubObjects(QxRect& rect, int labels, int connectors, int connectorLabels,
                                      int inOwnGraph) const;
    /// The same with the connectors only.
    int getBoundingRectWithConnectors(QxRect& rect, int inOwnGraph) const;
    /// @}

    /// @name Connectors (drawing/connectors/QxDNodeConnectors.cpp)
    /// Places where edges end, in the order of insertion. Specified ones are made by clients,
    /// calculated ones for the ends of edges; see QxConnector.
    /// @{

    /// A new specified connector at that place of the node: thousandths of its half extents plus an
    /// offset, in the asked-for coordinates. `type` is passed to the factory. Fires
    /// ConnectorInserted. Null when the factory makes none, and when a listener has taken it away
    /// again.
    QxConnector* addConnector(std::int16_t perMilX, std::int16_t perMilY, std::int32_t offsetX,
                              std::int32_t offsetY, int inOwnGraph, int type) {
        return vAddConnector(perMilX, perMilY, offsetX, offsetY, inOwnGraph, type);
    }
    /// A new calculated connector, for the end of an edge; fires nothing.
    QxConnector* ntAddConnector(std::int16_t perMilX, std::int16_t perMilY, std::int32_t offsetX,
                                std::int32_t offsetY);
    /// Takes over a connector that no node owns; returns it. Null, and no change, for null and for
    /// a connector of a node or of another factory.
    QxConnector* insertConnector(QxConnector* connector) { return vInsertConnector(connector); }
    /// Unassigns the edges at a connector and detaches it; the caller owns what is returned. Fires
    /// ConnectorRemoved. Null for a connector of another node. O(its edges).
    QxConnector* removeConnector(QxConnector* connector) { return vRemoveConnector(connector); }
    /// The same, and destroys it; fires ConnectorDiscarded instead. 1, or 0 when it is not this
    /// node's.
    int discardConnector(QxConnector* connector) { return vDiscardConnector(connector); }
    /// The integer has no meaning to the library.
    void discardAllConnectors(int unused = 0);
    void discardAllCalculatedConnectors();
    /// Counted, not searched: the specified connectors, and all.
    int hasConnectors() const { return numberOfConnectors() != 0 ? 1 : 0; }
    std::int32_t numberOfConnectors() const;
    int hasInternalConnectors() const { return numberOfAllConnectors() != 0 ? 1 : 0; }
    std::int32_t numberOfAllConnectors() const;
    /// Clears the list, then lists the specified connectors.
    void buildConnectorList(QxConnectorDList* list) const;
    /// All connectors; made on first use, owned by the node. The query answers null before.
    QxConnectorManager* pConnectorManager();
    QxConnectorManager* pQueryConnectorManager() const {
        return pQueryExtras() != nullptr ? pQueryMadeManager() : nullptr;
    }
    /// The copy that the connector's scratch field names; without one a new copy of its attributes,
    /// which the field then names. Null for null.
    QxConnector* getClonedConnector(QxConnector* connector) const;
    /// Express the place of a connector of this node as a proportion of its extent, but for the
    /// rest that rounding leaves; as an offset from its center alone.
    void convertConnectorToPerMilOffset(QxConnector* connector);
    void convertConnectorToConstantOffset(QxConnector* connector);
    /// Lets the calculated connectors, and edges, follow a resize from these rectangles: the one
    /// before the move that the resize is part of, and the one before the resize. Nothing happens
    /// on a node with a copy linked to it.
    void actOnUpdateConnectors(const QxRect& rectAtStart, const QxRect& rectBefore);
    /// Scales the offsets of calculated connectors that edges of the node's own graph use, as the
    /// half extents on their side have been; one that would round to 0 stays. Nothing happens while
    /// a file is being read.
    void updateCalculatedConnectorsOnResize(const QxRect& rectAtStart, const QxRect& rectBefore,
                                            const QxRect& rectNow);
    /// Re-places the calculated connector at one end of the edge after a change of shape: for an
    /// edge along the axes, under control of a layout, onto the outline; outside such control the
    /// edge loses its connectors at both ends.
    void setConnectorOnChangeShape(const QxShape* shape, QxDEdge* edge, int isTarget);
    /// @}

    /// @name Self-loops, bundles and sides (drawing/bundles/QxDNodeBundles.cpp,
    /// drawing/orthogonal/SideDistribution.cpp)
    /// @{

    /// Lays the connected self-loops out above the node, one within the other: each leaves the top
    /// on the right, runs across and returns on the left, by calculated connectors. Those with a
    /// specified connector stay as they are. Nothing happens to a node without a graph. O(k log k)
    /// for k edges.
    void reorganizeReflexiveEdges();
    /// Fills the list with what a change of shape lays out together with this edge of the node: the
    /// straight edges of the same graph in its direction that need not run along the axes, which
    /// the running change has not touched, and all in the opposite direction. 1, or 0 and no edges
    /// when there are fewer than two.
    int storeMultiEdgeList(const QxDEdge* edge, QxDEdgeDList& list) const;
    /// Counts how many of the `added` segments go into the gap behind each of the `placed` ones,
    /// so that the gaps stay wide. The internal user field of a placed segment names its connector,
    /// whose constant offset is its position along the side; the answer for it is the width of a
    /// new QxSize in the internal user field of that connector, which the caller releases. Of
    /// `added` only the number counts. Nothing happens for an empty list, and for segments whose
    /// fields name none.
    void computeDistributionInOrthogonalMove(QxSideEnum side, const QxPEdgeDList* placed,
                                             const QxPEdgeDList* added);
    /// How much of a side is free of edges that are to run along the axes: the coordinate along it,
    /// in owner-graph coordinates, of the lowest (`high` 0: the highest) place where such an edge
    /// leaves in `direction`, but not beyond the upper (lower) end of the side, which is the answer
    /// when there is none. Edges that carry the processing mark do not count
    /// (update/QxDEdgeReactions.cpp).
    std::int32_t findFirstEdgeOnSide(QxDirectionEnum direction, int high) const;
    /// @}

    /// @name Nested graph (nesting/QxDNodeExpansion.cpp, nesting/QxDNodeFit.cpp)
    /// A node with a child graph is collapsed, or expanded: then it shows the graph in itself.
    /// @{

    QxDGraph* pChildGraph() const;
    QxDGraph* pChildGraph(QxDGraph* graph);
    /// Shows the child graph in the node, whose center stays, and whose size becomes what the graph
    /// needs; the node takes its factory's default shape and keeps its own for later. Fires
    /// NodeExpanded, and nothing else. 1, or 0, and no change, when there is no child graph, when
    /// it is shown already, and for a node without a managed graph, in a hide graph, or in a graph
    /// of another manager than the child graph's. O(edges between graphs that touch the child
    /// graph, and graphs nested there).
    virtual int expand();
    /// Hides the child graph again; size, original size, shape and clipping become those before the
    /// expansion. Fires NodeCollapsed, and nothing else. 1, or 0 for a node that is not expanded.
    virtual int collapse();
    int expanded() const { return pExpandedNodeExtension() != nullptr ? 1 : 0; }
    int collapsed() const;
    /// The child graph while the node is expanded; else null.
    QxDGraph* pNestedGraph() const { return expanded() != 0 ? pChildGraph() : nullptr; }
    /// What an expanded node remembers of its collapsed look; null for any other. It belongs to the
    /// nesting relation.
    QxExpandedNodeExtension* pExpandedNodeExtension() const;
    /// Gives an expanded node the size that its nested graph needs. With `keepNodeInPlace` nonzero
    /// its center stays and the nested drawing is shifted; else the nested drawing stays and the
    /// node moves. With `fitToMargins` nonzero the view area becomes the margin bounding rectangle;
    /// else a side of the view area follows the contents when it touches them, and when they stick
    /// out. `onlyTouchingBits` together with `keepNodeInPlace` only notes which sides touch. 1, or
    /// 0 for a node that is not expanded and when vFitToNestedGraph refuses.
    int fitToNestedGraph(int keepNodeInPlace, int onlyTouchingBits, int fitToMargins);
    /// The rectangle that the fit would give the node; no change, and no answer, for one that is
    /// not expanded. The first flag is not used.
    void getNewBoundingRectOnFitToNestedGraph(QxRect& result, int unused, int fitToMargins) const;
    /// The steps of a fit, for layouts: give the node the rectangle as in a drawing that a user
    /// edits, or as while a document is read; shift the nested drawing as if the node's center were
    /// `newCenter`; note which sides of the view area touch the contents.
    void updateExpandedNodeForDiagramming(const QxRect& rect, int keepNodeInPlace,
                                          int onlyTouchingBits);
    void updateExpandedNodeForLayout(const QxRect& rect);
    void updateTransformForExpandedNode(const QxPoint& newCenter);
    void updateTouchingBits();
    void actOnMoveTo(const QxPoint& oldCenter) override;
    /// The outermost collapsed node around this one below `graph`: the node itself when none is
    /// collapsed; null for null.
    QxDNode* pNearestCollapsedNode(const QxDGraph* graph);
    /// @}

    /// @name Neighbourhoods (nesting/QxDNodeNeighbours.cpp; those that hide and fold them:
    /// nesting/QxDNodeHiding.cpp)
    /// Successors (children), predecessors (parents), or both, up to `depth` steps away; -2: all
    /// that can be reached. Edges between graphs are not followed; the node itself is never among
    /// the results. Result lists may be null; the given ones are emptied first.
    /// @{
    /// In the node's graph only.
    void findChildren(QxDNodeDList* nodes, QxDEdgeDList* edges, std::int32_t depth,
                      int bothDirections) const;
    void findParents(QxDNodeDList* nodes, QxDEdgeDList* edges, std::int32_t depth,
                     int bothDirections) const;
    /// In the node's graph and among what is hidden from it.
    void findHiddenAndUnhiddenChildren(QxDNodeDList* nodes, QxDEdgeDList* edges, std::int32_t depth,
                                       int bothDirections) const;
    void findHiddenAndUnhiddenParents(QxDNodeDList* nodes, QxDEdgeDList* edges, std::int32_t depth,
                                      int bothDirections) const;
    /// The same search, of which only the hidden results are told; a graph without a hide graph
    /// leaves the lists as they are.
    void findHiddenChildren(QxDNodeDList* nodes, QxDEdgeDList* edges, std::int32_t depth,
                            int bothDirections) const;
    void findHiddenParents(QxDNodeDList* nodes, QxDEdgeDList* edges, std::int32_t depth,
                           int bothDirections) const;
    /// Hide what such a search finds; with `visibleOnly` 0 it goes on through what is hidden.
    void hideChildren(std::int32_t depth, QxDNodeDList* hiddenNodeList,
                      QxDEdgeDList* hiddenEdgeList, int visibleOnly, int bothDirections);
    void hideParents(std::int32_t depth, QxDNodeDList* hiddenNodeList, QxDEdgeDList* hiddenEdgeList,
                     int visibleOnly, int bothDirections);
    /// Bring back what a search through shown and hidden objects finds, with incident edges.
    void unhideChildren(std::int32_t depth, QxDNodeDList* unhiddenNodeList,
                        QxDEdgeDList* unhiddenEdgeList, int bothDirections);
    void unhideParents(std::int32_t depth, QxDNodeDList* unhiddenNodeList,
                       QxDEdgeDList* unhiddenEdgeList, int bothDirections);
    /// Brings back one hidden edge at this node, with its other end. The edge when it is not hidden
    /// afterwards; else null, also for an edge that does not end here.
    QxDEdge* unhideIncidentEdge(QxDEdge* edge);
    /// Empty the list, then list the hidden edges at this node; with `includeAll` 0 only those
    /// whose ends exist and lie in one graph or both in no hide graph.
    void buildIncidentHiddenEdgeList(QxDEdgeDList& list) const;
    void buildIncidentHiddenEdgeList(QxDEdgeDList& list, int includeAll) const;
    /// Fold what a search in the node's graph finds, with `includeSelf` nonzero the node, too: then
    /// the folder comes to stand where this node stood. Return what QxDGraph::fold does; 0 without
    /// a graph.
    int foldChildren(QxDNode* folderNode, QxDGraph* foldGraph, std::int32_t depth,
                     QxDNodeDList* foldedNodeList, QxDEdgeDList* foldedEdgeList, int includeSelf,
                     int keepHidden, int bothDirections);
    int foldParents(QxDNode* folderNode, QxDGraph* foldGraph, std::int32_t depth,
                    QxDNodeDList* foldedNodeList, QxDEdgeDList* foldedEdgeList, int includeSelf,
                    int keepHidden, int bothDirections);
    /// Unfolds this folder node; see QxDGraph::unfold. 0 without a graph.
    int unfold(QxDNodeDList* unfoldedNodeList, QxDEdgeDList* unfoldedEdgeList, int keepHidden);
    /// The child graph of a folder node; null for any other node.
    QxDGraph* pFoldGraph() const { return isFolderNode() != 0 ? pChildGraph() : nullptr; }
    /// @}

    /// @name State
    /// @{

    /// Whether edges are clipped here even when they do not ask for it.
    int forceClipping() const { return hasFlag(qx::flags::NodeForceClipping); }
    /// A change outdates the clip points of the incident edges. Returns what it stored.
    int forceClipping(int value);
    int isFolderNode() const { return hasFlag(qx::flags::NodeFolder); }
    /// Only keeps the mark; returns what it stored.
    int setFolderNode(int value) {
        setFlag(qx::flags::NodeFolder, value);
        return isFolderNode();
    }
    /// What the tracking of affected objects notes about the node; the setter returns its argument.
    QxGraphObjectStatusEnum graphObjectStatus() const { return qx::flags::status(flagWord()); }
    QxGraphObjectStatusEnum graphObjectStatus(QxGraphObjectStatusEnum value) {
        setFlag(qx::flags::Status, 0);
        setFlag(qx::flags::statusBits(value), 1);
        return value;
    }
    /// The copy made of this node while its manager stored clones.
    QxDNode* pClonedNode() const;
    QxDNode* pClonedNode(QxDNode* node);
    /// The rectangle saved for self-loops; owned by the node, like pRectBeforeMove.
    const QxRect* pRectBeforeMoveForSelfLoops() const;
    const QxRect* pRectBeforeMoveForSelfLoops(const QxRect* rect);
    /// @}

    /// @name Reports to the update records
    /// The flags ask for the node labels, connector labels, connectors and incident edges, too.
    /// They serve records that a client keeps; the library's own changes ask the extents of the
    /// graph.
    /// @{
    void actBeforeRemove(QxGeometricUpdateInfo* own, QxGeometricUpdateInfo* intergraph, int labels,
                         int connectorLabels, int connectors, int edges);
    void actAfterInsert(QxGeometricUpdateInfo* own, QxGeometricUpdateInfo* intergraph, int labels,
                        int connectorLabels, int connectors, int edges);
    void actBeforeGeometryChanges(QxGeometricUpdateInfo* own, QxGeometricUpdateInfo* intergraph,
                                  int labels, int connectorLabels, int connectors, int edges);
    void actAfterGeometryChanges(QxGeometricUpdateInfo* own, QxGeometricUpdateInfo* intergraph,
                                 int labels, int connectorLabels, int connectors, int edges);
    /// Forgets the clip points of the incident edges, and that their visible parts are current.
    void invalidateIncidentEdgeEndPoints();
    void fetchEdges() const;
    /// @}

protected:
    void vActBeforeGeometryChanges(QxGeometricUpdateInfo* own,
                                   QxGeometricUpdateInfo* intergraph) override;
    void vActAfterGeometryChanges(QxGeometricUpdateInfo* own,
                                  QxGeometricUpdateInfo* intergraph) override;
    void vMoveTo(const QxPoint& center) override;
    /// The steps behind the label operations.
    virtual QxNodeLabel* vAddLabel(const wchar_t* name, int flag);
    virtual QxNodeLabel* vInsertLabel(QxNodeLabel* label);
    virtual int vDiscardLabel(QxNodeLabel* label);
    virtual QxNodeLabel* vRemoveLabel(QxNodeLabel* label);
    virtual QxConnector* vAddConnector(std::int16_t perMilX, std::int16_t perMilY,
                                       std::int32_t offsetX, std::int32_t offsetY, int inOwnGraph,
                                       int type);
    virtual QxConnector* vInsertConnector(QxConnector* connector);
    virtual int vDiscardConnector(QxConnector* connector);
    virtual QxConnector* vRemoveConnector(QxConnector* connector);
    virtual void vResize(const QxSize& size);
    virtual void vResizeAdjustConnectors(const QxSize& size);
    /// A new connector of the node's factory, that no node owns yet.
    virtual QxConnector* vNewConnector(int type);
    /// A new label of the node's factory, in no list yet; null without a factory.
    virtual QxNodeLabel* vNewLabel(int flag);
    virtual void actOnResize(const QxSize& oldSize);
    /// Told of the rectangle that a fit is about to give the node: 0 refuses it. 1 here.
    virtual int vFitToNestedGraph(const QxRect& rect);
    void actOnChangeOwner(QxOwnedObject* owner, int valid) override;
    QxObject* vCloneObject() const override;
    QxObject* vCloneAttributes() const override;

private:
    friend class QxDGraph;
    friend class QxDGraphManager;
    friend class QxLabelOwnerOf<QxDNode, QxNodeLabel>;
    friend class qx::internal::Collection;
    friend class qx::internal::Coverage;
    friend struct qx::internal::IndexSlot;
    friend class qx::internal::IndexUpkeep;

    const qx::internal::Ref<QxLabelManager>* pQueryLabelSlot() const;
    qx::internal::Ref<QxLabelManager>& labelSlot();
    /// Moves, then resizes the node, by the raw steps.
    void place(const QxPoint& center, const QxSize& size);
    /// Gives the node its rectangle, and tells the graph's extents and the incident edges.
    void placeRect(const QxRect& rect);
    /// @name Connectors
    /// @{
    QxConnector* insertNewConnector(QxConnector* connector, const QxPerMil& perMil,
                                    const QxSize& offset);
    QxConnectorManager* pQueryMadeManager() const;
    bool ownsConnector(const QxConnector* connector) const;
    void placeConnector(QxConnector& connector, const QxPerMil& perMil, const QxSize& offset);
    void duplicateConnectorsOf(const QxDNode& source);
    static void rescaleConnector(QxConnector& connector, const QxRect& before, const QxRect& now);
    /// Discards all without running steps that a subclass may have overridden.
    void releaseConnectors();
    void actOnChangeShape(const QxShape* shape);
    /// @}
    void report(qx::internal::Moment moment, QxGeometricUpdateInfo* own,
                QxGeometricUpdateInfo* intergraph, int labels, int connectorLabels, int connectors,
                int edges) const;
    void reportEdges(qx::internal::Moment moment, QxGeometricUpdateInfo* own,
                     QxGeometricUpdateInfo* intergraph) const;
    void copyDiagrammingNode(const QxDNode& source);
    /// @name Nested graph
    /// @{
    bool showChildGraph(QxDGraph& child);
    bool hideChildGraph(QxDGraph& child);
    /// Shows the child graph as `original` shows that of which it is a copy.
    void expandLike(const QxDNode& original, QxDGraph& child);
    /// How the node looks while it is collapsed, or has no child graph.
    QxSize collapsedSize() const;
    int collapsedForceClipping() const;
    QxShapeResource* pCollapsedShapeResource() const;
    /// Exchanges the look of an expanded node with that.
    void exchangeLook();
    void shiftNestedGraph(std::int64_t dx, std::int64_t dy);
    /// The nested drawing moves as the node has moved, from `oldCenter`.
    void followWithNestedGraph(const QxPoint& oldCenter);
    /// The node has come to a graph or left one, and what is nested in it with it.
    void tellNestedGraphOfOwner();
    /// @}
    void shareShapeOf(QxDNode& source);
    void giveShape(const QxShape* shape);
    bool showsShape(const QxShape* shape) const;
    void unmarkIncidentEdges();

    QxRect m_rect{40, 40};
    std::int32_t m_originalWidth = 40;
    std::int32_t m_originalHeight = 40;
    QxShapeResource* m_shapeResource = nullptr;
    std::int32_t m_extentSlot = -1;
    std::int32_t m_indexSlot = -1;
};
