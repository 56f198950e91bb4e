// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

#include "qx/foundation/graph/QxExtendableGraphObject.h"
#include "qx/foundation/graph/QxGraphDLists.h"

class QxChildGraphForestNode;
class QxGraphManager;
class QxGraphMember;

namespace qx::internal {
class GraphChange;
class Twins;
}  // namespace qx::internal

/// An abstract graph: it owns nodes and edges and runs every change of topology through its
/// virtual steps (`v...`) and hooks (`act...`), which drawing graphs override.
///
/// Public operations forward to the virtual step of the same name. An operation that cannot act
/// returns null or 0 and changes nothing.
class QX_API QxGraph : public QxExtendableGraphObject {
public:
    explicit QxGraph(QxOwnedObject* owner);
    /// Destroys what the graph still holds. Members that others keep alive become detached from it.
    ~QxGraph() override;

    int isGraph() const override;
    int userFieldsInUse() const override;
    void nullUserFields() override;
    int internalUserFieldsInUse() const override;
    void nullInternalUserFields() override;
    std::size_t sizeOf() const override;
    int checkInvariants() const override;
    void copyObject(const QxObject* source) override;
    void copyAttributes(const QxObject* source) override;
    void debugOutput(int depth) const override;

    /// Removes and destroys everything the graph holds. Linear in what that is.
    virtual void emptyTopology();
    /// Called now and then by long operations, so that a subclass can let its host breathe.
    virtual void yield();
    /// Whether geometry derived from the graph's contents is kept up to date.
    virtual int vNeedsGeometricUpdate() const;
    virtual void vSetNeedsGeometricUpdate(int value);
    virtual int hasNodeLabels() const;
    virtual int hasConnectorLabels() const;
    virtual int hasEdgeLabels() const;
    virtual int hasGraphLabels() const;
    /// Whether the graph may be nested in a node or edge.
    virtual int canBeChildGraph() const;
    /// Moves the listed nodes and edges of `graph` into this one; objects of other graphs are
    /// skipped one by one. Edges between a moved node and one that stays end up disconnected.
    /// Returns 1, or 0 when the graphs cannot exchange contents.
    virtual int transferSelectedPartOfGraph(QxGraph* graph, const QxNodeDList* nodes,
                                            const QxEdgeDList* edges);
    /// Fill the list with every node (every edge, in whatever state) of the graph.
    virtual void buildAllNodeList(QxNodeDList* list) const;
    virtual void buildAllEdgeList(QxEdgeDList* list) const;
    /// While a file is read into the graph, derived geometry rests.
    virtual int fileReadRunning(int value);
    virtual int fileReadRunning() const;

    /// An unlisted node (edge) of the same factory, or of none. An intergraph takes no nodes.
    virtual int canInsertNode(const QxNode* node) const;
    virtual int canInsertEdge(const QxEdge* edge) const;

    /// @name Hooks: the state of an edge of this graph has changed
    /// @{
    virtual void actOnConnectEdge(QxEdge* edge);
    virtual void actOnDisconnectEdge(QxEdge* edge);
    virtual void actOnActivateEdge(QxEdge* edge);
    virtual void actOnDeactivateEdge(QxEdge* edge);
    /// @}

    /// @name Hooks: an edge between graphs that has an end in this graph has changed
    /// @{
    virtual void actOnConnectIntergraphEdge(QxEdge* edge);
    virtual void actOnDisconnectIntergraphEdge(QxEdge* edge);
    virtual void actOnActivateIntergraphEdge(QxEdge* edge);
    virtual void actOnDeactivateIntergraphEdge(QxEdge* edge);
    virtual void actOnChangeSourceNodeAtIntergraphEdge(QxEdge* edge, QxNode* oldNode,
                                                       QxNode* newNode);
    virtual void actOnChangeTargetNodeAtIntergraphEdge(QxEdge* edge, QxNode* oldNode,
                                                       QxNode* newNode);
    /// `node`, an end of the edge, has just come into this graph.
    virtual void actOnInitNodeAtIntergraphEdge(QxEdge* edge, QxNode* node);
    /// @}

    /// Clear the processing mark of all nodes (edges).
    virtual void markAllNodesUnTouched();
    virtual void markAllEdgesUnTraversed();
    /// Called once before a discarded graph is released.
    virtual void actOnDiscard();
    /// Makes the contents of this graph a duplicate of those of `source`, order included, then
    /// clears the scratch fields of the source. `disconnected` and `deactivated` tell whether the
    /// edges in these states are duplicated, too.
    virtual void duplicateTopology(QxGraph* source, int disconnected, int deactivated);
    /// The duplicating itself: appends to what this graph holds and leaves in the scratch field
    /// of every source node and edge a pointer to its duplicate.
    virtual void internalDuplicateTopology(QxGraph* source, int disconnected, int deactivated);
    virtual void innerDebugOutput(int depth) const;
    virtual void debugOutputNodes(int depth) const;
    virtual void debugOutputEdges(int depth) const;

protected:
    /// @name Steps behind the public operations of the same names
    /// @{
    virtual QxNode* vAddNode(int type);
    virtual QxNode* vInsertNode(QxNode* node);
    virtual int vDiscardNode(QxNode* node);
    virtual QxNode* vRemoveNode(QxNode* node);
    virtual QxEdge* vAddEdge(QxNode* source, QxNode* target, int type);
    virtual QxEdge* vInsertEdge(QxEdge* edge, QxNode* source, QxNode* target);
    virtual int vDiscardEdge(QxEdge* edge);
    virtual QxEdge* vRemoveEdge(QxEdge* edge);
    virtual int vTransferTopology(QxGraph* graph);
    /// The edge is listed and has its ends but is not connected yet.
    virtual void actAfterInsertEdgeBeforeConnect(QxEdge* edge);
    virtual void actAfterRemoveEdge(QxEdge* edge);
    /// Create a node (an edge) that this graph owns but does not list yet.
    virtual QxNode* vNewNode(int type);
    virtual QxEdge* vNewEdge(int type);
    /// @}

public:
    /// Appends the graphs whose derived state has to rest together with that of this graph.
    virtual void vBuildListOfAttachedGraphsForDeepDisable(QxGraphDList* list);
    /// Takes over the attributes of `source`; with `deep` nonzero its contents, too. Null or this
    /// graph: no change.
    virtual void copyGraph(const QxGraph* source, int deep);

    /// @name Topology
    /// @{
    /// Creates a node and inserts it; `type` is passed through to the factory.
    QxNode* addNode(int type) { return vAddNode(type); }
    /// Appends a detached node; the graph owns it from then on. Returns the node.
    QxNode* insertNode(QxNode* node) { return vInsertNode(node); }
    /// Takes the node out, without destroying it: the caller owns what is returned. The edges of
    /// this graph at the node become disconnected and stay; edges between graphs stay attached.
    QxNode* removeNode(QxNode* node) { return vRemoveNode(node); }
    /// Removes the node and every edge at it, wherever it is listed, and releases them. 1, or 0 for
    /// a node that is not this graph's.
    int discardNode(QxNode* node) { return vDiscardNode(node); }
    QxEdge* addEdge(QxNode* source, QxNode* target, int type) {
        return vAddEdge(source, target, type);
    }
    /// Gives a detached edge its ends, lists it and connects it; where an end does not allow a
    /// connection (it lies in another graph, or this graph hides things), the edge is listed as
    /// disconnected. Returns the edge; the graph owns it from then on.
    QxEdge* insertEdge(QxEdge* edge, QxNode* source, QxNode* target) {
        return vInsertEdge(edge, source, target);
    }
    /// Takes the edge out, in whatever state, without destroying it, and clears its ends.
    QxEdge* removeEdge(QxEdge* edge) { return vRemoveEdge(edge); }
    int discardEdge(QxEdge* edge) { return vDiscardEdge(edge); }
    /// Moves all nodes and edges of `graph` here, states and order kept. 1, or 0 when the graph is
    /// null, this one, or of another factory.
    int transferTopology(QxGraph* graph) { return vTransferTopology(graph); }
    /// @}

    /// @name Contents, in insertion order
    /// @{
    const QxNodeDList* pNodeList() const { return &m_nodes; }
    const QxEdgeDList* pEdgeList() const { return &m_edges; }
    const QxEdgeDList* pDisconnectedEdgeList() const { return &m_disconnectedEdges; }
    const QxEdgeDList* pDeactivatedEdgeList() const { return &m_deactivatedEdges; }
    /// Edges between graphs that end here, that start here, and those at nodes of this graph that
    /// are not connected.
    const QxEdgeDList* pEnteringIntergraphEdgeList() const { return &m_enteringIntergraphEdges; }
    const QxEdgeDList* pLeavingIntergraphEdgeList() const { return &m_leavingIntergraphEdges; }
    const QxEdgeDList* pUnconnectedIntergraphEdgeList() const {
        return &m_unconnectedIntergraphEdges;
    }
    std::int32_t numberOfNodes() const { return m_nodes.count(); }
    std::int32_t numberOfEdges() const { return m_edges.count(); }
    /// Connected, disconnected and deactivated edges together.
    std::int32_t numberOfAllEdges() const;
    /// Fills the list with the connected and the disconnected edges between the two nodes, in
    /// either direction; null nodes match any node.
    void buildExistingEdgeList(QxEdgeDList* list, const QxNode* first, const QxNode* second) const;
    /// Fill the list with the graphs nested in members of this graph, directly or at any depth.
    void buildChildGraphList(QxGraphDList* list) const;
    void buildAllChildGraphList(QxGraphDList* list) const;
    /// Moves the objects of `list` that this graph owns to the end of `owned`, in order.
    void splitListIntoOwnedAndOthers(QxDList* list, QxDList* owned) const;
    /// @}

    /// @name Place in the drawing
    /// @{
    /// The manager that lists this graph (or whose intergraph it is); null without one.
    QxGraphManager* pOwnerGraphManager() const;
    /// The node or edge whose child graph this is; null when it is not nested in anything.
    QxGraphMember* pParentGraphMember() const;
    QxNode* pParentNode() const;
    QxEdge* pParentEdge() const;
    int isChildGraph() const { return pParentGraphMember() != nullptr ? 1 : 0; }
    int isIntergraph() const { return hasFlag(qx::flags::GraphIntergraph); }
    int isHideGraph() const { return hasFlag(qx::flags::GraphHide); }
    /// The node that stands for this graph in its manager's nesting forest; null without one.
    QxChildGraphForestNode* pChildGraphForestNode() const { return m_forestNode; }
    /// @}

protected:
    /// Asks the memory for the edges at a node and what they hang on, which is far away in a large
    /// drawing, all at once and before it is needed.
    static void fetchEdgesAt(const QxNode& node);

private:
    friend class qx::internal::GraphChange;
    friend class QxChildGraphForest;
    friend class QxEdge;
    friend class QxGraphManager;
    friend class QxGraphMember;

    std::uint64_t nextListStamp() { return ++m_lastListStamp; }
    QxEdgeDList& listOfState(const QxEdge* edge);
    bool endCycleThrough(QxGraphMember* member);
    void adopt(QxGraphMember* member, QxDList& list);
    void dismiss(QxGraphMember* member, QxDList& list);
    bool disconnectOwnEdgesAt(QxNode* node);
    void tellGraphsOfIntergraphEdgesAt(QxNode* node);
    static void discardEdgesAt(QxNode* node);
    void leaveMembersToHeir();
    template <class L>
    void takeOverMembers(QxGraph& former, L QxGraph::*list,
                         std::vector<qx::internal::GraphChange>& changes);
    using Twins = qx::internal::Twins;
    void duplicateNodesOf(const QxGraph* source, Twins& twins);
    void duplicateEdgesOf(const QxGraph* source, int disconnected, int deactivated, Twins& twins);
    QxEdge* duplicateEdge(QxEdge* source, Twins& twins);
    void restoreIncidenceOrderOf(const QxGraph* source);
    void orderIntergraphEdgesLike(const QxGraph* source);

    QxNodeDList m_nodes;
    QxEdgeDList m_edges;
    QxEdgeDList m_disconnectedEdges;
    QxEdgeDList m_deactivatedEdges;
    QxEdgeDList m_enteringIntergraphEdges;
    QxEdgeDList m_leavingIntergraphEdges;
    QxEdgeDList m_unconnectedIntergraphEdges;
    QxDList m_detachedMembers;
    QxChildGraphForestNode* m_forestNode = nullptr;
    QxDListCell m_managerCell;
    std::uint64_t m_lastListStamp = 0;
};
