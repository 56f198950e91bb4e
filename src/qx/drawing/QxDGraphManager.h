// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxInvisibilityEnum.h"
#include "qx/foundation/graph/QxGraphManager.h"

class QxDChildGraphForest;
class QxDNodePair;
class QxDNodePairDList;

namespace qx::internal {
struct ManagerExtras;
class MetaEdgeUpkeep;
struct MetaEnds;
class Reactions;
class Refits;
}  // namespace qx::internal

/// The root of one drawing: its graphs, the edges between them, their nesting, and the graph on top
/// of it, the anchor graph, in whose coordinates an application sees everything.
class QX_API QxDGraphManager : public QxGraphManager {
public:
    /// Only the owner, normally the factory, is used.
    QxDGraphManager(QxOwnedObject* owner, int type, QxFactory* factory);
    /// A copy in the factory of `source`.
    QxDGraphManager(const QxDGraphManager& source, QxDeepFlagEnum depth);
    ~QxDGraphManager() override;

    QxOwnedObject* pOwnerObject() const override;
    std::size_t sizeOf() const override;
    int checkInvariants() const override;
    int levelNumber() const override;
    void emptyTopology() override;
    void innerDebugOutput(int depth) const override;
    void copyGraphManager(const QxGraphManager* source, int deep) override;
    QxDGraphManager* cloneObject() const { return static_cast<QxDGraphManager*>(vCloneObject()); }
    QxDGraphManager* cloneAttributes() const {
        return static_cast<QxDGraphManager*>(vCloneAttributes());
    }

    /// @name Topology; as in QxGraphManager, with drawing classes
    /// The first graph that a manager gets becomes its anchor graph.
    /// @{
    QxDGraph* addGraph(int type);
    QxDGraph* insertGraph(QxDGraph* graph);
    QxDGraph* removeGraph(QxDGraph* graph);
    int discardGraph(QxDGraph* graph);
    QxDEdge* addEdge(QxDNode* source, QxDNode* target, int type);
    QxDEdge* insertEdge(QxDEdge* edge, QxDNode* source, QxDNode* target);
    QxDEdge* removeEdge(QxDEdge* edge);
    int discardEdge(QxDEdge* edge);
    int transferTopology(QxDGraphManager* manager);
    QxDGraph* pFirstGraph() const;
    QxDGraph* pLastGraph() const;
    /// The graph of the edges between graphs, made on the first request (pQuery...: null before).
    QxDGraph* pIntergraph();
    QxDGraph* pQueryIntergraph() const;
    QxDChildGraphForest* pChildGraphForest() const;
    /// @}

    /// @name Nesting (nesting/QxDGraphManagerNesting.cpp)
    /// @{

    /// The graph at the top of the visible nesting; null while there are no graphs.
    QxDGraph* pAnchorGraph() const { return m_anchor; }
    /// Makes `graph` (for a hide graph: what it hides from) the anchor graph, or none (null). What
    /// the edges between graphs look like in the coordinates of the former anchor they look like in
    /// those of the new one. Fires AnchorGraphChanged. Nothing happens for the intergraph and a
    /// graph of another manager. Returns the anchor graph afterwards.
    QxDGraph* pAnchorGraph(QxDGraph* graph);
    /// The graph that would take the anchor's place; null when there is none.
    QxDGraph* pFindNewAnchorGraph() const;
    /// Whether the graph is the anchor graph or lies, nested, somewhere in it.
    int nestedInAnchorGraph(const QxDGraph* graph) const;
    /// The innermost graph in which both lie, themselves included, through expanded nodes only;
    /// null when there is none.
    QxDGraph* pNearestCommonNestedGraph(const QxDGraph* first, const QxDGraph* second) const;
    QxDGraph* pNearestCommonAncestorGraph(const QxDGraph* first, const QxDGraph* second) const {
        return pNearestCommonNestedGraph(first, second);
    }
    /// Whether any node is expanded, any graph a hide graph, any node with a child graph a folder.
    int containsNestedGraphs() const;
    int containsHideGraphs() const;
    int containsFoldGraphs() const;
    /// Expand every collapsed node that has a child graph (collapse every expanded one), or those
    /// of `startGraph` and the child graphs below it. Nothing happens for a graph of another
    /// manager.
    void expandAll();
    void collapseAll();
    void expandAll(QxDGraph* startGraph);
    void collapseAll(QxDGraph* startGraph);
    /// @}

    /// @name Edges between graphs (nesting/QxDGraphManagerBetween.cpp)
    /// @{

    /// Express the bends and connectors of an edge, which stays where it is, in the coordinates of
    /// the edges between graphs (of `graph`, a graph of this manager). Return the edge.
    QxDEdge* convertToIntergraphEdge(QxDEdge* edge);
    QxDEdge* convertToNormalEdge(QxDEdge* edge, QxDGraph* graph);
    /// The same for an edge that has come from `oldGraph` to the graph that it is in now.
    QxDEdge* convertEdgeFromOldOwnerGraph(QxDEdge* edge, QxDGraph* oldGraph);
    /// Clears the list, then lists the edges that lead out of `graph` and the graphs nested in it,
    /// graph by graph.
    void buildOutgoingIntergraphEdgeList(QxDGraph* graph, QxDEdgeDList& list) const;
    /// @}

    /// @name Objects in a region (nesting/QxDGraphRegions.cpp)
    /// What meets the rectangle, in anchor coordinates (`inside` 0: exactly what does not), in the
    /// anchor graph and then in each graph nested in it. Lists may be null; the given ones are
    /// cleared first.
    /// @{
    void buildLists(const QxRect& rect, QxDNodeDList* nodes, QxPNodeDList* pathNodes,
                    QxPEdgeDList* pathEdges, QxNodeLabelDList* nodeLabels,
                    QxConnectorLabelDList* connectorLabels, QxEdgeLabelDList* edgeLabels,
                    QxGraphLabelDList* graphLabels, int inside) const;
    void buildNodeRelatedLists(const QxRect& rect, QxDNodeDList* nodes,
                               QxNodeLabelDList* nodeLabels, QxConnectorLabelDList* connectorLabels,
                               int inside) const;
    void buildEdgeRelatedLists(const QxRect& rect, QxPNodeDList* pathNodes, QxPEdgeDList* pathEdges,
                               QxEdgeLabelDList* edgeLabels, int inside) const;
    void buildGraphLabelList(const QxRect& rect, QxGraphLabelDList* graphLabels, int inside) const;
    /// Of the edges between graphs that the anchor graph contains.
    void buildIntergraphEdgeRelatedLists(const QxRect& rect, QxPEdgeDList* pathEdges,
                                         QxPNodeDList* pathNodes, QxEdgeLabelDList* edgeLabels,
                                         int inside) const;
    /// @}

    /// @name Meta-edges (nesting/MetaEdges.cpp)
    /// An edge with an end inside a collapsed node cannot be drawn; a meta-edge between the nodes
    /// that stand for its ends is drawn in its place.
    /// @{

    /// What is to be done: into the first list the pairs of nodes that need a meta-edge and have
    /// none, which the list then owns; into the second the meta-edges that nothing needs any more.
    /// Both are emptied first; without edges between graphs they stay as they are. Linear in the
    /// edges between graphs.
    void checkMetaEdges(QxDNodePairDList& necessaryMetaEdgeNodePairList,
                        QxDEdgeDList& shouldBeRemovedEdges) const;
    /// Does it: adds a meta-edge for each pair, appended to `insertedMetaEdges` (null: nobody is
    /// told), and discards the edges of the second list. The pairs are destroyed, both lists
    /// emptied; null lists count as empty. `type` is passed to the creation of edges.
    void updateMetaEdges(QxDNodePairDList* necessaryMetaEdgeNodePairList,
                         QxDEdgeDList* shouldBeRemovedEdges, QxDEdgeDList* insertedMetaEdges,
                         int type);
    /// Appends the meta-edges of all graphs, then those between graphs; see
    /// QxDGraph::buildMetaEdges. Hidden ones are listed once, with the graph they are hidden from.
    void buildAllMetaEdges(QxDEdgeDList& list, int includeDisconnected, int includeHidden) const;
    /// @}

    /// @name What shows, and why not (nesting/Visibility.cpp)
    /// @{

    /// The visible object that stands for a node, edge, label, connector, bend or segment: itself;
    /// for a node the outermost collapsed node around it; for an edge whose ends are stood for by
    /// one node that node, else the meta-edge between what stands for them. Null when nothing does.
    QxGraphObject* pVisibleRepresentative(QxGraphObject* object) const;
    /// Clears the list, then lists the nodes and edges that `representative` stands for, itself
    /// included.
    void buildRepresentedObjectList(QxGraphObject* representative, QxDList& list) const;
    /// Why an object does not show, and into `blame` (may be null) the object to look at: what is
    /// hidden, collapsed, disconnected, or the graph that lies outside the anchor graph.
    QxInvisibilityEnum whyInvisible(QxGraphObject* object, QxGraphObject** blame) const;
    /// Unhides, unfolds and expands no more than it takes to make the object visible; appends to
    /// `touched` (may be null) the objects acted on, in order. The number of steps; -1 when
    /// that is impossible. Nothing is changed then, unless the ends of an edge turn out to cover
    /// each other once they show.
    int showObject(QxGraphObject* object, QxDList* touched);
    /// @}

    /// Computes the bounds of all visible graphs anew, inner graphs first.
    void calculateGraphBounds();
    /// Refreshes the spatial index of every graph that has one.
    void updateQuadTrees();
    /// Suspends, or resumes, the upkeep of the spatial index of every graph.
    void disableQuadTreeUpdates(int disable);
    /// Forgets the copies that the anchor graph, the intergraph and their contents remember.
    void nullClonedObjectFields();

    /// @name Switches; a setter returns its argument
    /// @{
    /// Whether parallel stand-ins for hidden edges are merged into one; on at first.
    int compressMetaEdges() const { return hasFlag(qx::flags::ManagerCompressMetaEdges); }
    int compressMetaEdges(int v) { return changeMetaEdges(qx::flags::ManagerCompressMetaEdges, v); }
    /// Whether edges inside a folded group are stood for by self-loops; on at first.
    int reflexiveMetaEdgeReplacement() const { return hasFlag(qx::flags::ManagerReplaceReflexive); }
    int reflexiveMetaEdgeReplacement(int v) {
        return changeMetaEdges(qx::flags::ManagerReplaceReflexive, v);
    }
    /// Whether such stand-ins attach to nodes rather than to connectors; on at first.
    int ignoreConnectorsForMetaEdges() const { return hasFlag(qx::flags::ManagerIgnoreConnectors); }
    int ignoreConnectorsForMetaEdges(int v) {
        return changeMetaEdges(qx::flags::ManagerIgnoreConnectors, v);
    }
    /// Whether meta-edges follow every expansion, fold, hiding and change of edges by themselves;
    /// off at first. Switching it on brings them up to date.
    int updatesMetaEdges() const { return hasFlag(qx::flags::ManagerUpdatesMetaEdges); }
    int updatesMetaEdges(int value);
    /// Whether a move is being carried through the drawing right now.
    int isUpdatingAffectedGraphs() const { return hasFlag(qx::flags::ManagerUpdatingAffected); }
    int isUpdatingAffectedGraphs(int v) { return change(qx::flags::ManagerUpdatingAffected, v); }
    /// Whether an interactive host is in charge of the drawing; off at first.
    int controlStarted() const { return hasFlag(qx::flags::ManagerControlStarted); }
    int controlStarted(int v) { return change(qx::flags::ManagerControlStarted, v); }
    /// Whether copies are remembered by their sources.
    int storeClones() const { return hasFlag(qx::flags::ManagerStoreClones); }
    int storeClones(int v) { return change(qx::flags::ManagerStoreClones, v); }
    /// Whether a document is being read: indexes, meta-edges and the fits of expanded nodes rest.
    int isReading() const { return hasFlag(qx::flags::ManagerReading); }
    int isReading(int v) { return change(qx::flags::ManagerReading, v); }
    /// @}

protected:
    QxChildGraphForest* vNewChildGraphForest() override;
    qx::internal::GraphObjectExtras* vNewExtras() const override;
    /// A meta-edge between two nodes; null without both.
    QxDEdge* addMetaEdge(QxDNode* source, QxDNode* target, int type) {
        return vAddMetaEdge(source, target, type);
    }
    virtual QxDEdge* vAddMetaEdge(QxDNode* source, QxDNode* target, int type);
    QxGraph* vNewGraph(int type) override;
    QxGraph* vNewIntergraph(int type) override;
    QxGraph* vInsertGraph(QxGraph* graph) override;
    QxGraph* vRemoveGraph(QxGraph* graph) override;
    int vDiscardGraph(QxGraph* graph) override;
    int vTransferTopology(QxGraphManager* manager) override;
    void duplicateNesting(const QxGraphManager* source) override;
    QxObject* vCloneObject() const override;
    QxObject* vCloneAttributes() const override;

private:
    int change(std::uint32_t bit, int value) {
        setFlag(bit, value);
        return value;
    }
    friend class QxDChildGraphForest;
    friend class QxDGraph;
    int changeMetaEdges(std::uint32_t bit, int value);
    friend class QxDNode;
    friend class qx::internal::MetaEdgeUpkeep;
    friend class qx::internal::Reactions;

    /// The same with the connectors that it is to be attached to.
    QxDEdge* addMetaEdge(const qx::internal::MetaEnds& ends, int type);
    void translateIntergraphCoordinates(QxDGraph* newAnchor);
    /// When it has left the manager.
    void forgetFormerAnchor();
    /// Brings the bounds of the visible graphs that keep them up to date, inner graphs first.
    void refreshShownBounds();
    /// @name A graph and its hide graph come and go together (nesting/HideGraphs.cpp)
    /// @{
    /// What a hide graph of this manager hides from, when that is listed here; else null.
    QxDGraph* partnerHere(const QxDGraph& graph) const;
    void insertHideGraphOf(const QxDGraph& graph);
    void bringHiddenEdgesHome(const QxDGraph& graph);
    void removeHideGraphOf(const QxDGraph& graph);
    void discardHideGraphOf(const QxDGraph& graph);
    void duplicateHideLinks(const QxDGraphManager& source);
    /// @}
    void duplicateNestingRelations(const QxDGraphManager& source);
    qx::internal::ManagerExtras& managerExtras();
    const qx::internal::ManagerExtras* pQueryManagerExtras() const;
    void initSwitches();
    /// Makes `graph` the anchor graph. Invisible graphs let their bounds rest, so those of what is
    /// visible now are computed anew.
    void showAnchor(QxDGraph* graph);

    /// What is nested in what has changed: forget what graphs know of their visibility.
    void nestingChanged() { m_nestingStamp = m_nestingStamp + 1 != 0 ? m_nestingStamp + 1 : 1; }

    QxDGraph* m_anchor = nullptr;
    std::uint32_t m_nestingStamp = 1;
};
