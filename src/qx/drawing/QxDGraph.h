// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>

#include "qx/drawing/QxDrawingDLists.h"
#include "qx/drawing/QxDrawingFlags.h"
#include "qx/drawing/QxGraphObjectStatusEnum.h"
#include "qx/drawing/QxLabelOwnerOf.h"
#include "qx/drawing/QxMultiEdgeModeEnum.h"
#include "qx/drawing/QxTriStateEnum.h"
#include "qx/foundation/geometry/QxPoint.h"
#include "qx/foundation/geometry/QxRect.h"
#include "qx/foundation/geometry/QxSize.h"
#include "qx/foundation/geometry/QxSpacing.h"
#include "qx/foundation/geometry/QxTransform.h"
#include "qx/foundation/graph/QxGraph.h"

class QxDChildGraphForestNode;
class QxFactory;
class QxGeometricUpdateInfo;
class QxQTree;

namespace qx::internal {
class BoundsHold;
class Coverage;
class EdgeHome;
class ExtentTree;
class Folding;
class Hiding;
class LabelPresence;
class NestedGraphs;
class MetaEdgeUpkeep;
class NestingMove;
class Unfolding;
template <class T>
class Ref;
enum class Moment : unsigned char;
struct GraphExtras;
}  // namespace qx::internal

/// A graph of drawing nodes and edges with a geometry of its own: bounds kept up to date as its
/// contents change, margins around them, and, for a graph nested in a node, a transform into the
/// coordinates of the graph around it.
///
/// `nt...` operations use this graph's own coordinates. A coordinate flag of 0 asks for those of
/// the manager's anchor graph; then the graph must be visible. World units, y upward.
class QX_API QxDGraph : public QxGraph, public QxLabelOwnerOf<QxDGraph, QxGraphLabel> {
public:
    /// Only the owner is used.
    QxDGraph(QxOwnedObject* owner, int type, QxFactory* factory);
    /// A copy in the factory of `source` that no manager lists; nesting relations are not copied.
    QxDGraph(const QxDGraph& source, QxDeepFlagEnum depth);
    ~QxDGraph() override;

    /// @name What every graph answers
    /// @{
    int userFieldsInUse() const override;
    void nullUserFields() override;
    int internalUserFieldsInUse() const override;
    void nullInternalUserFields() override;
    int vIsVisible() const override;
    std::size_t sizeOf() const override;
    int checkInvariants() const override;
    int levelNumber() const override;
    void emptyTopology() override;
    int vNeedsGeometricUpdate() const override;
    void vSetNeedsGeometricUpdate(int value) override;
    int hasNodeLabels() const override;
    int hasConnectorLabels() const override;
    int hasEdgeLabels() const override;
    int hasGraphLabels() const override;
    int canBeChildGraph() const override;
    void actOnConnectEdge(QxEdge* edge) override;
    void actOnDisconnectEdge(QxEdge* edge) override;
    void actOnActivateEdge(QxEdge* edge) override;
    void actOnDeactivateEdge(QxEdge* edge) override;
    void actOnDiscard() override;
    void innerDebugOutput(int depth) const override;
    virtual void debugOutputLabels(int depth) const;
    virtual void debugOutputPathNodes(int depth) const;
    virtual void debugOutputPathEdges(int depth) const;
    /// A hook for diagnoses; does nothing.
    virtual void checkOneEdgePerConnector() const;
    /// When the reading ends, the bounds are computed.
    int fileReadRunning(int value) override;
    using QxGraph::fileReadRunning;
    void copyGraph(const QxGraph* source, int deep) override;
    QxDGraph* cloneObject() const { return static_cast<QxDGraph*>(vCloneObject()); }
    QxDGraph* cloneAttributes() const { return static_cast<QxDGraph*>(vCloneAttributes()); }
    void internalDuplicateTopology(QxGraph* source, int disconnected, int deactivated) override;
    /// @}

    /// @name Topology (drawing/QxDGraphTopology.cpp); as in QxGraph, with drawing classes
    /// @{
    QxDNode* addNode(int type);
    QxDNode* insertNode(QxDNode* node);
    QxDNode* removeNode(QxDNode* node);
    int discardNode(QxDNode* node);
    QxDEdge* addEdge(QxDNode* source, QxDNode* target, int type);
    QxDEdge* insertEdge(QxDEdge* edge, QxDNode* source, QxDNode* target);
    QxDEdge* removeEdge(QxDEdge* edge);
    int discardEdge(QxDEdge* edge);
    int transferTopology(QxDGraph* graph);
    /// Adds a node with a place and a size, in anchor coordinates when `inOwnGraph` is 0. Null for
    /// the intergraph.
    QxDNode* addNodeWithCoordinates(const QxPoint& center, const QxSize& size, int inOwnGraph,
                                    int type);
    QxDNode* addNodeWithCoordinates(std::int32_t x, std::int32_t y, std::int32_t width,
                                    std::int32_t height, int inOwnGraph, int type);
    QxDNode* pFirstNode() const;
    QxDNode* pLastNode() const;
    QxDEdge* pFirstEdge() const;
    QxDEdge* pLastEdge() const;
    QxDGraphManager* pOwnerGraphManager() const;

    /// Many objects report at once; any list may be null. Objects of other graphs are skipped.
    void actAfterInsert(QxGeometricUpdateInfo* own, QxGeometricUpdateInfo* intergraph,
                        const QxDNodeDList* nodes, const QxPNodeDList* pathNodes,
                        const QxDEdgeDList* edges, const QxPEdgeDList* pathEdges,
                        const QxNodeLabelDList* nodeLabels,
                        const QxConnectorLabelDList* connectorLabels,
                        const QxEdgeLabelDList* edgeLabels);
    void actBeforeRemove(QxGeometricUpdateInfo* own, QxGeometricUpdateInfo* intergraph,
                         const QxDNodeDList* nodes, const QxPNodeDList* pathNodes,
                         const QxDEdgeDList* edges, const QxPEdgeDList* pathEdges,
                         const QxNodeLabelDList* nodeLabels,
                         const QxConnectorLabelDList* connectorLabels,
                         const QxEdgeLabelDList* edgeLabels);
    /// @}

    /// @name Labels (drawing/labels/QxDGraphLabels.cpp)
    /// The operations of QxLabelOwnerOf are about the labels of the graph itself; those here about
    /// all labels of its objects. The labels of an edge count while it is connected and active.
    /// @{

    /// The numbers are kept: asking costs nothing. A kind that the graph says it has none of
    /// (has...LabelsState) counts 0.
    std::int32_t numberOfLabels() const;
    std::int32_t numberOfGraphLabels() const;
    std::int32_t numberOfNodeLabels() const;
    std::int32_t numberOfEdgeLabels() const;
    std::int32_t numberOfConnectorLabels() const;
    int hasLabels() const { return numberOfLabels() > 0 ? 1 : 0; }
    /// Discard all labels, or those of one kind; with the labels of nodes go those of connectors.
    void discardAllLabels();
    void discardAllGraphLabels();
    void discardAllNodeLabels();
    void discardAllEdgeLabels();
    void discardAllConnectorLabels();
    /// The union of the labels of the graph itself; 0, and no change, when there are none.
    int calculateGraphLabelBounds(QxRect& rect) const;
    /// @}

    /// @name Bounds (drawing/bounds/QxDGraphBounds.cpp), in this graph's coordinates
    /// The union of what the nodes and the connected edges cover; graph labels are not part of it.
    /// The functions that return int answer whether anything counted.
    /// @{
    int calculateNodeBoundsWithLabelsAndConnectors(QxRect& rect) const;
    int calculateEdgeBoundsWithLabels(QxRect& rect) const;
    int calculateEdgeBoundsWithoutLabels(QxRect& rect) const;
    int calculateGraphBounds(QxRect& rect) const;
    int calculateAndReturnGraphBounds(QxRect& rect) const;
    int calculateGraphBoundsWithoutEdgeLabels(QxRect& rect) const;
    /// Computes the bounds anew and stores them.
    void calculateGraphBounds(int fit);
    /// The same, for a graph that keeps its bounds up to date. Raw moves leave the bounds behind;
    /// the next full change of anything in the graph takes in what they have done, too.
    void refreshGraphBounds();
    /// The stored bounds, (0, 0, 0, 0) when there are none; ntBoundingRect also while invisible.
    void ntUpdatedBoundingRect(QxRect& rect) const;
    void ntBoundingRect(QxRect& rect) const;
    /// The same, united for the anchor graph with the bounds of the edges between graphs.
    void ntUpdatedBoundingRectWithIntergraphEdges(QxRect& rect) const;
    void ntBoundingRectWithIntergraphEdges(QxRect& rect) const {
        ntUpdatedBoundingRectWithIntergraphEdges(rect);
    }
    /// The same in the asked-for coordinates; returns the visibility.
    int getBoundingRect(QxRect& rect, int inOwnGraph) const;
    const QxRect* pBoundingRect() const { return &m_bounds; }
    int boundsInitialized() const { return hasFlag(qx::flags::GraphBoundsInitialized); }
    /// Whether changes update the bounds; 0 while a file is read, and in the middle of a change,
    /// which updates them at its end.
    int needsUpdateGraphBounds() const;
    int needsUpdateGraphBounds(int value);
    /// Switches the upkeep of the bounds off, or on with bounds computed anew. Returns `disable`.
    int disableGraphBounds(int disable, int fit);
    /// For clients that keep records of their own: something has come, gone, or moved from one
    /// rectangle to another. Bounds that have to shrink become what the graph covers.
    void updateGraphBoundsOnInsert(const QxRect& rect);
    void updateGraphBoundsOnRemove(const QxRect& rect);
    void updateGraphBoundsOnMoveResize(const QxRect& oldRect, const QxRect& newRect);
    /// Move one side of `rect` inward to where the contents end now; 1 when it moved, else 0.
    int updateGraphBoundsLeftSide(QxRect& rect) const;
    int updateGraphBoundsRightSide(QxRect& rect) const;
    int updateGraphBoundsTopSide(QxRect& rect) const;
    int updateGraphBoundsBottomSide(QxRect& rect) const;
    /// What the bounds would be after such a move, without storing them.
    void getGraphBoundsOnMoveResize(const QxRect& oldRect, const QxRect& newRect,
                                    QxRect& rect) const;
    /// @}

    /// @name Margins and spacings (drawing/bounds/QxDGraphMargins.cpp)
    /// Constants in world units, a negative one counts as 0; proportions in thousandths of the
    /// extent, a negative one is ignored. Setters return the value stored and fire MarginsChanged
    /// when it changed.
    /// @{
    std::int32_t leftMarginConstantSpacing() const;
    std::int32_t rightMarginConstantSpacing() const;
    std::int32_t bottomMarginConstantSpacing() const;
    std::int32_t topMarginConstantSpacing() const;
    std::int32_t leftMarginConstantSpacing(std::int32_t value);
    std::int32_t rightMarginConstantSpacing(std::int32_t value);
    std::int32_t bottomMarginConstantSpacing(std::int32_t value);
    std::int32_t topMarginConstantSpacing(std::int32_t value);
    std::int16_t leftMarginProportionalSpacing() const;
    std::int16_t rightMarginProportionalSpacing() const;
    std::int16_t bottomMarginProportionalSpacing() const;
    std::int16_t topMarginProportionalSpacing() const;
    std::int16_t leftMarginProportionalSpacing(std::int16_t value);
    std::int16_t rightMarginProportionalSpacing(std::int16_t value);
    std::int16_t bottomMarginProportionalSpacing(std::int16_t value);
    std::int16_t topMarginProportionalSpacing(std::int16_t value);
    std::int32_t nestedViewLeftConstantSpacing() const;
    std::int32_t nestedViewRightConstantSpacing() const;
    std::int32_t nestedViewTopConstantSpacing() const;
    std::int32_t nestedViewBottomConstantSpacing() const;
    std::int32_t nestedViewLeftConstantSpacing(std::int32_t value);
    std::int32_t nestedViewRightConstantSpacing(std::int32_t value);
    std::int32_t nestedViewTopConstantSpacing(std::int32_t value);
    std::int32_t nestedViewBottomConstantSpacing(std::int32_t value);
    std::int16_t nestedViewLeftProportionalSpacing() const;
    std::int16_t nestedViewRightProportionalSpacing() const;
    std::int16_t nestedViewTopProportionalSpacing() const;
    std::int16_t nestedViewBottomProportionalSpacing() const;
    std::int16_t nestedViewLeftProportionalSpacing(std::int16_t value);
    std::int16_t nestedViewRightProportionalSpacing(std::int16_t value);
    std::int16_t nestedViewTopProportionalSpacing(std::int16_t value);
    std::int16_t nestedViewBottomProportionalSpacing(std::int16_t value);
    /// The stored spacings; they belong to the graph.
    const QxSpacing* pLeftMarginSpacing() const { return &m_leftMargin; }
    const QxSpacing* pRightMarginSpacing() const { return &m_rightMargin; }
    const QxSpacing* pBottomMarginSpacing() const { return &m_bottomMargin; }
    const QxSpacing* pTopMarginSpacing() const { return &m_topMargin; }
    const QxSpacing* pNestedViewLeftSpacing() const { return &m_nestedViewLeft; }
    const QxSpacing* pNestedViewRightSpacing() const { return &m_nestedViewRight; }
    const QxSpacing* pNestedViewTopSpacing() const { return &m_nestedViewTop; }
    const QxSpacing* pNestedViewBottomSpacing() const { return &m_nestedViewBottom; }
    /// The least size of the margin bounding rectangle, (0, 0) at first.
    void getMinSizeOfMarginBoundingRect(QxSize& size) const { size = m_minSize; }
    void setMinSizeOfMarginBoundingRect(const QxSize& size) { m_minSize = size; }
    std::int32_t minWidthOfMarginBoundingRect() const { return m_minSize.width(); }
    std::int32_t minHeightOfMarginBoundingRect() const { return m_minSize.height(); }
    std::int32_t minWidthOfMarginBoundingRect(std::int32_t value);
    std::int32_t minHeightOfMarginBoundingRect(std::int32_t value);
    /// The bounds, extended by the labels of the graph, with margins around them, at least of the
    /// minimum size.
    void ntMarginBoundingRect(QxRect& rect) const;
    /// The same in the asked-for coordinates; returns the visibility.
    int getMarginBoundingRect(QxRect& rect, int inOwnGraph) const;
    void fireMarginsChangedEvent();
    /// @}

    /// @name Place in the nesting, coordinates (nesting/QxDGraphTransform.cpp)
    /// @{

    /// The expanded node that shows this graph; null when there is none.
    QxDNode* pNestedWithinNode() const;
    /// The graph that holds that node; null when there is none.
    QxDGraph* pNestedWithinGraph() const;
    int nested() const { return pNestedWithinNode() != nullptr ? 1 : 0; }
    /// The node whose child graph this is, expanded or not; null when there is none.
    QxDNode* pParentNode() const;
    /// The anchor graph of the manager, and whether this is it.
    QxDGraph* pAnchorGraph() const;
    int isAnchorGraph() const;
    /// Map from this graph's coordinates into those of `graph`, which lies around it. 1 when it was
    /// reached. Integers are rounded by floor(v + 0.5).
    int expandedTransformPoint(const QxDGraph* graph, QxPoint& point) const;
    int expandedTransformRect(const QxDGraph* graph, QxRect& rect) const;
    int expandedTransformSize(const QxDGraph* graph, QxSize& size) const;
    /// The same into the anchor graph's coordinates; 0 without an anchor.
    int expandedTransformPoint(QxPoint& point) const;
    int expandedTransformRect(QxRect& rect) const;
    int expandedTransformSize(QxSize& size) const;
    /// The inverse mappings.
    int inverseExpandedTransformPoint(const QxDGraph* graph, QxPoint& point) const;
    int inverseExpandedTransformRect(const QxDGraph* graph, QxRect& rect) const;
    int inverseExpandedTransformSize(const QxDGraph* graph, QxSize& size) const;
    int inverseExpandedTransformPoint(QxPoint& point) const;
    int inverseExpandedTransformRect(QxRect& rect) const;
    int inverseExpandedTransformSize(QxSize& size) const;
    /// The climb as coefficients: x' = x * scaleX + offsetX, y likewise.
    int getExpandedTransformCoef(const QxDGraph* graph, double& offsetX, double& scaleX,
                                 double& offsetY, double& scaleY) const;
    int getInverseExpandedTransformCoef(const QxDGraph* graph, double& offsetX, double& scaleX,
                                        double& offsetY, double& scaleY) const;
    /// The coefficients that map coordinates of `graph` into this graph's, through their nearest
    /// common ancestor. 0, and (0, 1, 0, 1), when there is none.
    int getTransformCoef(const QxDGraph* graph, double& offsetX, double& scaleX, double& offsetY,
                         double& scaleY) const;
    /// Map from this graph's coordinates into those of `graph`; 0, and no change, when there is no
    /// common ancestor.
    int transformToGraphPoint(const QxDGraph* graph, QxPoint& point) const;
    int transformToGraphRect(const QxDGraph* graph, QxRect& rect) const;
    const QxTransform* pTransform() const { return &m_transform; }
    QxTransform* pChangeableTransform() { return &m_transform; }
    /// Places a nested graph anew in its node's view area; nothing for any other graph.
    void updateTransform();
    void updateTransformForDiagramming() { updateTransform(); }
    /// The view area of a nested graph, in the coordinates of the graph around it.
    QxRect ntViewRectInNodeCoordSystem() const;
    /// What a view of the graph shows: the margin bounding rectangle; for a nested graph that is
    /// not the anchor graph, the view area of its node. getViewRect returns the visibility.
    int getViewRect(QxRect& rect, int inOwnGraph) const;
    QxRect ntViewRect() const;
    /// @}

    /// @name Nested graphs (nesting/QxDGraphNesting.cpp)
    /// @{

    /// The node that stands for this graph in the nesting forest; null without a manager.
    QxDChildGraphForestNode* pChildGraphForestNode() const;
    /// Whether the graph is `graph` or lies, through expanded nodes only, somewhere in it.
    int recursivelyNestedWithin(const QxDGraph* graph) const;
    /// Clears the list, then lists the graphs shown in expanded nodes of this one, in the order of
    /// the nesting relations.
    void buildNestedGraphList(QxDGraphDList& list) const;
    /// Appends the graphs nested directly in this one and then, for each of them, all that are
    /// nested in it at any depth.
    void buildAllNestedGraphList(QxDGraphDList& list) const;
    /// Expand every collapsed node of the graph (collapse every expanded one); one level only.
    void expandAll();
    void collapseAll();
    /// The edges between graphs that touch this graph, or one nested in it, report to `info`, when
    /// that record is active and the graph is not the anchor graph. Into `edges` (null: a list of
    /// their own) they are collected before a change; after it the same ones report again.
    void actBeforeNestingChange(QxGeometricUpdateInfo* info, QxDEdgeDList* edges);
    void actAfterNestingChange(QxGeometricUpdateInfo* info, QxDEdgeDList* edges);
    /// A hook for layouts after the node of a nested graph has been fitted; does nothing.
    void actAfterFit() {}
    /// Lets bounds and index of this graph and the graphs nested in it rest when they have become
    /// invisible, and resume, brought up to date, when they have become visible. Graphs whose
    /// visibility is `wasVisible` still are left alone, unless `force` is nonzero.
    void disableNestingGraphBoundsAndQuadTree(int wasVisible, int force);
    int hasExpandedNodes() const;
    /// @}

    /// @name Edges between graphs (nesting/QxDGraphBetween.cpp)
    /// @{

    /// Clears the list, then lists the visible edges between graphs at this graph and the graphs
    /// nested in it: those with both ends there (`inner`), those with one end there (`crossing`),
    /// each once. O(nested graphs and their edges). Nothing happens without an intergraph.
    void buildContainedIntergraphEdgeList(QxDEdgeDList& list, int inner, int crossing) const;
    void buildContainedIntergraphEdgeList(QxDEdgeDList& list) const {
        buildContainedIntergraphEdgeList(list, 1, 0);
    }
    /// Clears the list, then lists the edges between graphs that have an end in a graph nested in
    /// this one, in the order of the intergraph. Nothing happens without an intergraph.
    void buildAffectedIntergraphEdgeList(QxDEdgeDList& list) const;
    /// The bounds, and those of the edges between graphs that this graph contains, in anchor
    /// coordinates while the graph is visible; returns the visibility. The flag is that of the
    /// edges' rectangles.
    int getBoundingRectWithContainedIntergraphEdges(QxRect& rect, int inOwnGraph) const;
    /// @}

    /// @name Objects in a region (nesting/QxDGraphRegions.cpp)
    /// The rectangle is in anchor coordinates when `rectInOwnCoordinates` is 0. `inside` 1 lists
    /// what meets the rectangle, 0 exactly what does not. Lists may be null; the given ones are
    /// cleared first. Objects that are being rearranged or processed are left out.
    /// @{
    void buildLists(const QxRect& rect, QxDNodeDList* nodes, QxPNodeDList* pathNodes,
                    QxPEdgeDList* pathEdges, QxNodeLabelDList* nodeLabels,
                    QxConnectorLabelDList* connectorLabels, QxEdgeLabelDList* edgeLabels,
                    QxGraphLabelDList* graphLabels, int rectInOwnCoordinates, int inside) const;
    void buildNodeRelatedLists(const QxRect& rect, QxDNodeDList* nodes,
                               QxNodeLabelDList* nodeLabels, QxConnectorLabelDList* connectorLabels,
                               int rectInOwnCoordinates, int inside) const;
    void buildEdgeRelatedLists(const QxRect& rect, QxPNodeDList* pathNodes, QxPEdgeDList* pathEdges,
                               QxEdgeLabelDList* edgeLabels, int rectInOwnCoordinates,
                               int inside) const;
    void buildGraphLabelList(const QxRect& rect, QxGraphLabelDList* graphLabels,
                             int rectInOwnCoordinates, int inside) const;
    /// The same of the listed nodes (edges); the rectangle is in this graph's coordinates.
    void buildNodeRelatedListsSourceNodeList(const QxDNodeDList& sourceNodes, const QxRect& rect,
                                             QxDNodeDList* nodes, QxNodeLabelDList* nodeLabels,
                                             QxConnectorLabelDList* connectorLabels,
                                             int inside) const;
    void buildEdgeRelatedListsFromEdgeList(const QxDEdgeDList& sourceEdges, const QxRect& rect,
                                           QxPNodeDList* pathNodes, QxPEdgeDList* pathEdges,
                                           QxEdgeLabelDList* edgeLabels, int inside) const;
    /// The parts of the edges between graphs that this graph contains.
    void buildIntergraphEdgeRelatedLists(const QxRect& rect, QxPNodeDList* pathNodes,
                                         QxPEdgeDList* pathEdges, QxEdgeLabelDList* edgeLabels,
                                         int rectInOwnCoordinates, int inside) const;
    /// @}

    /// @name Hiding (nesting/QxDGraphHiding.cpp)
    /// Hidden objects lie in the graph's hide graph, a graph of the same manager that is never
    /// shown; it comes with the first and goes with the last of them. Result lists may be null; the
    /// given ones are emptied first. Nothing happens in a hide graph, the intergraph, and without a
    /// manager. Objects of other graphs are skipped.
    /// @{

    /// Hides nodes and edges of this graph, with the edges of this graph at these nodes. Fires
    /// EdgeHidden for each edge, then NodeHidden for each node, when all is done. Linear in the
    /// objects and their edges, with a logarithm for the order.
    void hide(const QxDNodeDList* nodes, const QxDEdgeDList* edges, QxDNodeDList* hiddenNodeList,
              QxDEdgeDList* hiddenEdgeList);
    /// Brings hidden nodes and edges back; with `withIncidentEdges` nonzero the hidden edges whose
    /// both ends show afterwards, too. Fires EdgeUnhidden and NodeUnhidden in the same way.
    void unhide(const QxDNodeDList* nodes, const QxDEdgeDList* edges,
                QxDNodeDList* unhiddenNodeList, QxDEdgeDList* unhiddenEdgeList,
                int withIncidentEdges);
    void unhideAll();
    /// Append what hide (unhide) would take, in its order; nothing is changed.
    void collectListsToBeHidden(const QxDNodeDList* nodes, const QxDEdgeDList* edges,
                                QxDNodeDList& hiddenNodes, QxDEdgeDList& hiddenEdges) const;
    void collectListsToBeUnhidden(const QxDNodeDList* nodes, const QxDEdgeDList* edges,
                                  QxDNodeDList& unhiddenNodes, QxDEdgeDList& unhiddenEdges,
                                  int withIncidentEdges) const;
    /// The hide graph of an ordinary graph, the graph that a hide graph hides from; else null.
    QxDGraph* pHideGraph() const { return isHideGraph() != 0 ? nullptr : m_hideLink; }
    QxDGraph* pHideFromGraph() const { return isHideGraph() != 0 ? m_hideLink : nullptr; }
    /// Makes `hideGraph` the hide graph of this one, which takes it over when no manager lists it.
    /// Nothing happens for null, this graph, the intergraph, a nested graph, one of another manager
    /// or factory, and when one of the two has such a link already or is a hide graph.
    void setHideLink(QxDGraph* hideGraph);
    int hasHiddenNodes() const;
    /// Edges in whatever state.
    int hasHiddenEdges() const;
    /// Whether this graph has a hide graph or, when it has none or is one, a graph nested in it.
    int containsHideGraphs() const;
    /// @}

    /// @name Folding (nesting/QxDGraphFolding.cpp)
    /// Folded nodes lie in the child graph of a folder node, with the edges among them; those to
    /// the nodes outside run between graphs. Result lists may be null; the given ones are emptied
    /// first.
    /// @{

    /// Moves nodes of this graph, other than the folder, into `foldGraph`, which becomes the child
    /// graph of `folderNode`, a node of this graph; the folder comes to stand in the middle of what
    /// it holds. Hidden edges at these nodes stay hidden when `keepHidden` is nonzero. Fires
    /// NodeFolded and EdgeFolded for each object as it moves. 1; 0, and no change, for nulls, no
    /// nodes, a fold graph that holds anything or cannot be nested there, and in a hide graph, the
    /// intergraph or a graph without a manager. Linear in the nodes and their edges, with a
    /// logarithm for the order; so is unfold.
    int fold(QxDNode* folderNode, QxDGraph* foldGraph, const QxDNodeDList* nodes,
             QxDNodeDList* foldedNodeList, QxDEdgeDList* foldedEdgeList, int keepHidden);
    /// Moves everything in the fold graph of `folderNode` back into this graph, around the folder,
    /// just as it stood around it if nothing has moved in there since the fold; out of an expanded
    /// folder to where it is seen. Hidden objects of the fold graph stay hidden when `keepHidden`
    /// is nonzero. Fires NodeUnfolded, then EdgeUnfolded, when all is done. The folder and its
    /// empty fold graph stay. 1; 0, and no change, for what is no folder node of this graph, and in
    /// a hide graph.
    int unfold(QxDNode* folderNode, QxDNodeDList* unfoldedNodeList, QxDEdgeDList* unfoldedEdgeList,
               int keepHidden);
    /// What fold would take: its nodes, the edges of this graph at them, and their hidden edges.
    void collectListsToBeFolded(const QxDNodeDList* nodes, QxDNodeDList& foldedNodes,
                                QxDEdgeDList& foldedEdges, QxDEdgeDList& hiddenEdges) const;
    /// The folder node whose fold graph this is; null when there is none.
    QxDNode* pFolderNode() const;
    int isFoldGraph() const { return pFolderNode() != nullptr ? 1 : 0; }
    int hasFolderNodes() const;
    /// Empties the list and lists the fold graphs of the folder nodes of this graph; a graph
    /// without folder nodes leaves it as it is.
    void buildFoldGraphList(QxDGraphDList& list) const;
    /// Appends the fold graphs of this graph and then, for each of them, all of theirs.
    void buildAllFoldGraphList(QxDGraphDList& list) const;
    /// @}

    /// Appends the meta-edges of this graph (nesting/MetaEdges.cpp): the connected ones, those that
    /// are not, and those that are hidden from it.
    void buildMetaEdges(QxDEdgeDList& list, int includeDisconnected, int includeHidden) const;

    /// @name Moving everything (drawing/bounds/QxDGraphMoving.cpp)
    /// @{

    /// Moves all nodes and bends, and the bounds, by an offset. With `hooks` nonzero each node's
    /// actOnMoveTo follows.
    void ntMove(std::int32_t dx, std::int32_t dy, int hooks);
    /// Moves everything so that the bounds are centered at (x, y).
    void ntMoveTo(std::int32_t x, std::int32_t y);
    /// Brings every visible part of an edge that is outdated up to date.
    void updateVisiblePartOfEdges();
    /// Sets the routing directions of the calculated connectors of all connected edges
    /// (drawing/connectors/QxDEdgeConnectors.cpp).
    void updateCalculatedConnectors();
    /// @}

    /// @name Parallel edges and self-loops (drawing/bundles/QxDGraphBundles.cpp)
    /// @{

    /// Lays out every bundle of edges between the same two nodes, once; see QxDEdge. O(n log n) in
    /// nodes and edges, however many of them are parallel.
    void reorganizeMultiEdges(QxMultiEdgeModeEnum mode);
    /// Lays out the self-loops of every node; see QxDNode.
    void reorganizeReflexiveEdges();
    /// @}

    /// @name Queries by rectangle (spatial/QxDGraphQueries.cpp)
    /// @{

    /// Whether an object of one of the asked-for kinds overlaps the rectangle.
    int overlaps(const QxRect& rect, int nodes, int pathNodes, int pathEdges, int nodeLabels,
                 int connectorLabels, int edgeLabels, int graphLabels, int inOwnGraph) const;
    /// The same for the edges between graphs, asked of the intergraph.
    int overlapsIntergraphEdges(const QxRect& rect, int pathNodes, int pathEdges, int edgeLabels,
                                int inOwnGraph) const;
    /// @}

    /// @name Spatial index (spatial/QxDGraphIndex.cpp)
    /// A graph starts without an index. One that it has follows every change of the graph.
    /// @{

    /// The index; null when there is none. It belongs to the graph.
    QxQTree* pQuadTree() const { return m_quadTree; }
    /// Makes an index that holds nothing in place of the present one; connectors stay out of it.
    void allocateQuadTree();
    /// Makes an index of everything in the graph, which is built when it is first asked.
    void calculateQuadTree();
    void discardQuadTree();
    /// Drops the index (nonzero), or brings one back. Returns the argument.
    int disableQuadTree(int disable);
    /// Whether an index may be used: not while a file or document is read.
    int useQuadTree() const;
    /// Whether queries use the index while its upkeep is suspended; returns the argument.
    int useQuadTree(int value);
    /// Whether queries can use the index.
    int canUseQuadTree() const;
    /// 0 without an index, while a file is read, and while an update record is open.
    int needsUpdateQuadTree() const;
    /// Suspends the upkeep of the index; the getter answers 1 without one. What has come or changed
    /// meanwhile is taken in at the next question after the upkeep has been resumed.
    void disableQuadTreeUpdates(int disable);
    int disableQuadTreeUpdates() const;
    /// Whether changes of geometry pass the index by; 1 without one.
    int isIgnoredGeometryChanges() const;
    void ignoreGeometryChanges(int ignore);
    /// Refresh what the index knows of everything, of a node with what hangs on it, of an edge. 1,
    /// or 0 without an index in use and for an object of another graph.
    int updateQuadTree();
    int updateQuadTree(QxDNode* node);
    int updateQuadTree(QxDEdge* edge);
    int updateQuadTree(QxLabel* label);
    /// Kept for symmetry: entries are refreshed one by one, there is nothing to mark.
    void markQuadTreeDirty() {}
    /// @}

    /// @name State
    /// @{
    /// What is known of labels in the graph. hasNodeLabels() and its kin search when it is not
    /// known, and store what they find.
    QxTriStateEnum hasNodeLabelsState() const { return labelState(qx::flags::GraphNodeLabels); }
    QxTriStateEnum hasNodeLabelsState(QxTriStateEnum s) {
        return labelState(qx::flags::GraphNodeLabels, s);
    }
    QxTriStateEnum hasEdgeLabelsState() const { return labelState(qx::flags::GraphEdgeLabels); }
    QxTriStateEnum hasEdgeLabelsState(QxTriStateEnum s) {
        return labelState(qx::flags::GraphEdgeLabels, s);
    }
    QxTriStateEnum hasConnectorLabelsState() const {
        return labelState(qx::flags::GraphConnectorLabels);
    }
    QxTriStateEnum hasConnectorLabelsState(QxTriStateEnum s) {
        return labelState(qx::flags::GraphConnectorLabels, s);
    }
    /// Whether edges of the graph ask for axis-parallel segments.
    int orthogonalRouting() const { return hasFlag(qx::flags::GraphOrthogonal); }
    /// Switching it off takes the wish from each edge of the graph, too, but while a file is read;
    /// paths stay as they are. Returns the argument. (drawing/orthogonal/QxDEdgeOrthogonal.cpp)
    int orthogonalRouting(int value);
    /// The distance between parallel edges of a bundle, in world units; 8 at first.
    std::int32_t diagrammingMultiEdgeSpacing() const { return m_multiEdgeSpacing; }
    std::int32_t diagrammingMultiEdgeSpacing(std::int32_t value) {
        return m_multiEdgeSpacing = value;
    }
    /// What the running change has done to the graph.
    QxGraphObjectStatusEnum graphObjectStatus() const { return m_status; }
    QxGraphObjectStatusEnum graphObjectStatus(QxGraphObjectStatusEnum value) {
        return m_status = value;
    }
    /// Edges collected by the running change; the list belongs to the graph, the edges do not.
    QxDEdgeDList* pAffectedEdgeList();
    /// A record that a longer change keeps at the graph; not owned.
    QxGeometricUpdateInfo* pGeometricUpdateInfo() const;
    QxGeometricUpdateInfo* pGeometricUpdateInfo(QxGeometricUpdateInfo* info);
    /// The copy made of this graph while its manager stored clones; not owned.
    QxDGraph* pClonedGraph() const;
    QxDGraph* pClonedGraph(QxDGraph* graph);
    /// @}

protected:
    QxObject* vCloneObject() const override;
    QxObject* vCloneAttributes() const override;
    qx::internal::GraphObjectExtras* vNewExtras() const override;
    QxNode* vNewNode(int type) override;
    QxEdge* vNewEdge(int type) override;
    QxNode* vInsertNode(QxNode* node) override;
    QxNode* vRemoveNode(QxNode* node) override;
    /// The last hidden object that is discarded takes its hide graph along.
    int vDiscardNode(QxNode* node) override;
    int vDiscardEdge(QxEdge* edge) override;
    QxEdge* vInsertEdge(QxEdge* edge, QxNode* source, QxNode* target) override;
    QxEdge* vRemoveEdge(QxEdge* edge) override;
    /// The steps behind the operations for labels of the graph.
    virtual QxGraphLabel* vAddLabel(const wchar_t* name, int flag);
    virtual QxGraphLabel* vInsertLabel(QxGraphLabel* label);
    virtual int vDiscardLabel(QxGraphLabel* label);
    virtual QxGraphLabel* vRemoveLabel(QxGraphLabel* label);
    /// A new label of the graph's factory, in no list yet; null without a factory.
    virtual QxGraphLabel* vNewLabel(int flag);
    int vTransferTopology(QxGraph* graph) override;
    void actAfterInsertEdgeBeforeConnect(QxEdge* edge) override;
    /// Stores new bounds: refits the node that shows the graph and fires GraphBoundsChanged.
    virtual void vUpdateBoundingRect(const QxRect& rect, int fit);
    /// Makes an index that leaves out these kinds (QxQTree::ExcludedEnum).
    virtual QxQTree* vNewQuadTree(unsigned short excluded);
    /// Takes over the values of a transform.
    virtual void vUpdateTransform(const QxTransform& transform);

private:
    friend class QxDGraphManager;
    friend class QxDNode;
    friend class QxGeometricUpdateInfo;
    friend class qx::internal::BoundsHold;
    friend class QxLabelOwnerOf<QxDGraph, QxGraphLabel>;
    friend class qx::internal::Coverage;
    friend class qx::internal::LabelPresence;
    friend class qx::internal::EdgeHome;
    friend class qx::internal::Folding;
    friend class qx::internal::Hiding;
    friend class qx::internal::NestedGraphs;
    friend class qx::internal::MetaEdgeUpkeep;
    friend class qx::internal::NestingMove;
    friend class qx::internal::Unfolding;

    /// @name Nesting
    /// @{
    /// The bounds have changed: the node that shows the graph follows.
    void refitAround(int keepNodeInPlace);
    /// The margins, or the spacings of the view area, have changed: the view area becomes what the
    /// margin bounding rectangle needs.
    void refitToMargins(int keepNodeInPlace);
    /// The edges between graphs at this graph, and at those nested in it, may have come into sight
    /// or gone out of it. O(these edges and graphs).
    void tellContainedEdges();
    /// The graph has come to a manager or left one: what it knew of being seen there is void.
    void forgetVisibility() {
        m_visibilityStamp = 0;
        setFlag(qx::flags::GraphResting, 0);
    }
    /// Lets bounds and index rest, or brings them up to date.
    void rest();
    void resume();
    /// The hide graph, made when there is none; null for a hide graph.
    QxDGraph* pNewHideGraph();
    /// Forgets the link to the hide graph (of a hide graph: to what it hides from), both ways.
    void endHideLink();
    /// Discards this graph, without a word to listeners, when it is a hide graph that holds nothing
    /// any more.
    void discardEmptyHideGraph();
    /// The graph goes: its hide graph goes with it, or the graph that it hides from forgets it.
    void partFromHideLink();
    /// @}
    /// For update records: clears the index's needsUpdate, returns whether it was set; sets it
    /// again.
    bool suspendQuadTree();
    void resumeQuadTree();
    void init();
    void initDiagramming();
    void copySpacings(const QxDGraph& source);
    void copyDiagramming(const QxDGraph& source);
    const qx::internal::Ref<QxLabelManager>* pQueryLabelSlot() const;
    qx::internal::Ref<QxLabelManager>& labelSlot();
    /// What the counts say, in place of what was known.
    void resetLabelStates();
    int answerLabels(std::uint32_t lowBit, std::int32_t count) const;
    std::int32_t countLabels(std::uint32_t lowBit, std::int32_t count) const;
    int takeOverGraphLabels(QxDGraph& other);
    int checkLabelCounts() const;
    QxTriStateEnum labelState(std::uint32_t lowBit) const;
    QxTriStateEnum labelState(std::uint32_t lowBit, QxTriStateEnum state);
    int hasLabels(std::uint32_t lowBit) const;
    qx::internal::GraphExtras& graphExtras();
    const qx::internal::GraphExtras* pQueryGraphExtras() const;
    /// What the objects of the graph cover, whatever the switches say; internal/Coverage.h keeps
    /// it.
    qx::internal::ExtentTree& extents() const { return *m_extents; }
    /// Changes that are being made: while there are any, the bounds rest.
    void holdBounds() { ++m_boundsHolds; }
    bool areBoundsHeld() const { return m_boundsHolds != 0; }
    void letGoOfBounds(const QxRect* reported = nullptr);
    /// Whether changes are to update the bounds once nobody holds them.
    bool keepsBounds() const;
    /// Brings the bounds to what the extents say, or to that united with what a record was told.
    void settleBounds(const QxRect* reported = nullptr);
    /// Whether a side of the bounds that rested on `from` moves inward when it becomes `to`.
    bool retreats(const QxRect& from, const QxRect& to) const;
    void report(qx::internal::Moment moment, QxGeometricUpdateInfo* own,
                QxGeometricUpdateInfo* between, const QxDNodeDList* nodes,
                const QxPNodeDList* bends, const QxDEdgeDList* edges, const QxPEdgeDList* segments);
    void reportLabels(qx::internal::Moment moment, QxGeometricUpdateInfo* own,
                      const QxDList* labels) const;
    std::int32_t setConstant(QxSpacing& spacing, std::int32_t value);
    std::int16_t setProportional(QxSpacing& spacing, std::int16_t value);
    void moveBounds(std::int32_t dx, std::int32_t dy);
    int edgeBounds(QxRect& rect, int labels) const;
    QxRect viewAreaOf(const QxRect& box) const;
    void collectNodeRelated(const QxDList& sourceNodes, const QxRect& rect, QxDNodeDList* nodes,
                            QxNodeLabelDList* nodeLabels, QxConnectorLabelDList* connectorLabels,
                            int inside) const;
    void collectEdgeRelated(const QxDList& sourceEdges, const QxRect& rect, QxPNodeDList* pathNodes,
                            QxPEdgeDList* pathEdges, QxEdgeLabelDList* edgeLabels,
                            int inside) const;
    int overlapsFromGraphLists(const QxRect& region, int nodes, int pathNodes, int pathEdges) const;

    QxRect m_bounds;
    QxGraphObjectStatusEnum m_status = QxStatusUnchanged;
    std::int32_t m_boundsHolds = 0;
    /// Whether the graph was visible when the nesting had that stamp.
    mutable std::uint32_t m_visibilityStamp = 0;
    mutable bool m_wasVisible = false;
    QxTransform m_transform;
    QxQTree* m_quadTree = nullptr;
    QxDGraph* m_hideLink = nullptr;
    std::int32_t m_multiEdgeSpacing = 8;
    QxSpacing m_leftMargin;
    QxSpacing m_rightMargin;
    QxSpacing m_bottomMargin;
    QxSpacing m_topMargin;
    QxSpacing m_nestedViewLeft;
    QxSpacing m_nestedViewRight;
    QxSpacing m_nestedViewTop;
    QxSpacing m_nestedViewBottom;
    QxSize m_minSize;
    std::unique_ptr<qx::internal::ExtentTree> m_extents;
};
