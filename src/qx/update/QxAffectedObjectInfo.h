// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>

#include "qx/drawing/QxDrawingDLists.h"
#include "qx/foundation/geometry/QxRect.h"
#include "qx/foundation/util/QxHashSet.h"

class QxDGraphManager;
class QxEdgeLabel;
class QxGraphObject;

namespace qx::internal {
struct AffectedState;
}

/// One move of a selection, step by step: what it moves, what has to follow, and where all of that
/// was at first.
///
/// The full moves of single objects react by themselves. A client that moves several objects
/// together, drags them, or wants to be able to go back brackets its own moves with such an object,
/// which lives on its stack:
///
///     QxAffectedObjectInfo move;
///     move.init(manager, &nodes, &edges, nullptr, nullptr, nullptr, nullptr, nullptr, 0);
///     move.actBeforeGeometryChange();
///     ...                              // move the nodes, and the bends of moved edges, as often
///                                      // as wanted; performRouting shows the edges meanwhile
///     move.actAfterGeometryChange(0);  // edges and labels follow, then the bounds and fits
///
/// Edges both of whose ends move are moved edges: the client moves their bends. Edges with one end
/// that moves are rerouted by the library. Full moves that are made meanwhile, by the client or by
/// listeners, join: what follows them follows at the end. Nothing is reported as an error: without
/// a manager, and for what is not visible, all operations do nothing. An object that is destroyed
/// before the end finishes.
class QX_API QxAffectedObjectInfo : public QxObject {
public:
    QxAffectedObjectInfo();
    QxAffectedObjectInfo(const QxAffectedObjectInfo&) = delete;
    QxAffectedObjectInfo& operator=(const QxAffectedObjectInfo&) = delete;
    ~QxAffectedObjectInfo() override;

    /// @name What moves (QxAffectedObjectInfo.cpp; what that affects: AffectedObjects.cpp)
    /// Each ends what was under way, notes what moves, and finds out what is affected. The lists
    /// stay the caller's, may be null, and are read here only. From here to the end of this object
    /// the manager's controlStarted is on.
    /// @{

    /// With `onlySelected` nonzero the edges at the nodes and connectors are left alone.
    void init(QxDGraphManager* manager, const QxDNodeDList* nodes, const QxDEdgeDList* edges,
              const QxConnectorDList* connectors, const QxEdgeLabelDList* edgeLabels,
              const QxNodeLabelDList* nodeLabels, const QxConnectorLabelDList* connectorLabels,
              const QxGraphLabelDList* graphLabels, int onlySelected);
    void init(QxDNode* node);
    void init(QxConnector* connector);
    /// A bend or a segment of an edge: the client drags it by moveBy of the edge's record.
    void init(QxPNode* bend);
    void init(QxPEdge* segment);
    void init(QxLabel* label);
    void init(QxDGraph* graph);
    /// @}

    /// @name The phases
    /// @{
    /// Suspends bounds and index of the affected graphs, and saves where everything is.
    void actBeforeGeometryChange();
    /// Lets edges and labels follow, brings the bounds of the affected graphs up to date, inner
    /// ones first, fits the nodes around them, and forgets what was saved. With `force` nonzero the
    /// nodes around are fitted to the margins, whether or not bounds have changed.
    void actAfterGeometryChange(int force);
    /// The same after objects have come or gone.
    void actAfterInsertRemove();
    /// The steps of the phases, for clients with phases of their own.
    void computeAffectedObjectLists();
    void allocateGeometricUpdateInfos();
    /// Release the records that this object has made.
    void deallocateGeometricUpdateInfos();
    void enableAndRestoreStateByGeometricUpdateInfos();
    /// During a drag the bounds of the affected graphs are off; see QxGeometricUpdateInfo.
    void notifyDraggingToGeometricUpdateInfos(int dragging);
    /// Report what moves, and edges that have followed, to records that a client keeps at the
    /// graphs; those of the library ask the extents.
    void actBeforeMove();
    void actAfterMove();
    void actAfterRoute();
    void updateAffectedGraphs(int force);
    void notifySpecChanges();
    /// @}

    /// @name Where everything was (AffectedPositions.cpp)
    /// @{
    void storeInitialPositions();
    /// Puts what moves back where it was, by raw moves: nodes with their sizes and nested graphs,
    /// connectors, bends of moved edges, labels. As often as wanted.
    void restoreInitialPositions();
    void deleteInitialPositions();
    void storeMovedEdges();
    void restoreMovedEdges();
    void storeReroutedEdges();
    /// Puts the edges that follow back, too.
    void restoreReroutedEdges();
    void storeGraphLabels(QxDGraph* graph);
    void storeAffectedGraphLabels();
    void deleteInfoAffectedGraphLabels();
    /// Lets the edges of the list follow what has moved so far.
    void performRouting(const QxDEdgeDList* edges);
    /// Takes an edge out of drawing and queries (nonzero), with its labels, bends and segments, or
    /// brings it back. Following brings it back, too.
    void setInvisibleEdge(QxDEdge* edge, int invisible);
    /// Refreshes what the labels of rerouted edges note about their edges; forgets it.
    void getInfoForLabelsEdgeMoved();
    void cleanUpLabelInfo();
    /// @}

    /// @name What is affected; the lists belong to this object
    /// @{
    QxDGraphManager* pGraphManager() const;
    /// The object of an init for one object, when it is of that kind; else null.
    QxGraphObject* pInputObject() const { return m_input; }
    QxDNode* pInputDNode() const { return m_inputNode; }
    QxConnector* pInputConnector() const { return m_inputConnector; }
    QxPNode* pInputPNode() const { return m_inputBend; }
    QxPEdge* pInputPEdge() const { return m_inputSegment; }
    QxLabel* pInputLabel() const { return m_inputLabel; }
    QxDGraph* pInputGraph() const { return m_inputGraph; }
    /// The lists that init was given; not owned, and not read any more.
    const QxDNodeDList* pInputDNodeList() const { return m_inputs.nodes; }
    const QxConnectorDList* pInputConnectorList() const { return m_inputs.connectors; }
    const QxDEdgeDList* pInputEdgeList() const { return m_inputs.edges; }
    const QxEdgeLabelDList* pInputEdgeLabelList() const { return m_inputs.edgeLabels; }
    const QxNodeLabelDList* pInputNodeLabelList() const { return m_inputs.nodeLabels; }
    const QxConnectorLabelDList* pInputConnectorLabelList() const {
        return m_inputs.connectorLabels;
    }
    const QxGraphLabelDList* pInputGraphLabelList() const { return m_inputs.graphLabels; }
    QxDNodeDList* pMovedNodeList() { return &m_movedNodes; }
    QxConnectorDList* pMovedConnectorList() { return &m_movedConnectors; }
    /// Edges both of whose ends move.
    QxDEdgeDList* pMovedEdgeList() { return &m_movedEdges; }
    QxEdgeLabelDList* pMovedEdgeLabelList() { return &m_movedEdgeLabels; }
    QxNodeLabelDList* pMovedNodeLabelList() { return &m_movedNodeLabels; }
    QxConnectorLabelDList* pMovedConnectorLabelList() { return &m_movedConnectorLabels; }
    QxGraphLabelDList* pMovedGraphLabelList() { return &m_movedGraphLabels; }
    /// The graph of the edges between graphs, when there is one; then the graphs that hold what
    /// moves and those around them, outer ones first.
    QxDGraphDList* pAffectedGraphList() { return &m_affectedGraphs; }
    /// Edges with one end that moves, and listed edges that are not moved ones.
    QxDEdgeDList* pReroutedEdgeList() { return &m_reroutedEdges; }
    /// Expanded nodes that the last update has given another rectangle.
    QxDNodeDList* pResizedNodeList() { return &m_resizedNodes; }
    QxHashSet* pProcessedDEdgeSet() { return &m_processed; }
    /// What the change covered before and covers now, in anchor coordinates: the edges that have
    /// followed (now only), the nodes that were fitted, the labels of graphs that have moved.
    const QxRect& pInitialAffectedRect() const { return m_initialRect; }
    const QxRect& pInitialAffectedRect(const QxRect& rect);
    const QxRect& pCurrentAffectedRect() const { return m_currentRect; }
    const QxRect& pCurrentAffectedRect(const QxRect& rect);
    int collectOnlySelected() const { return m_onlySelected; }
    int collectOnlySelected(int value) { return m_onlySelected = value; }
    int edgeChangeGeometry() const { return m_changesEdge; }
    int edgeChangeGeometry(int value) { return m_changesEdge = value; }
    /// @}

private:
    struct Inputs {
        const QxDNodeDList* nodes = nullptr;
        const QxDEdgeDList* edges = nullptr;
        const QxConnectorDList* connectors = nullptr;
        const QxEdgeLabelDList* edgeLabels = nullptr;
        const QxNodeLabelDList* nodeLabels = nullptr;
        const QxConnectorLabelDList* connectorLabels = nullptr;
        const QxGraphLabelDList* graphLabels = nullptr;
    };

    void begin(QxDGraph* graph, QxGraphObject* input, int changesEdge);
    void start(QxDGraphManager* manager);
    void finish();
    void forgetInputs();
    /// @name Finding out what is affected
    /// @{
    void clearLists();
    void clearStatuses();
    void markInputGraphs();
    void markGraph(QxDGraph* graph);
    void markSuccessors(QxDGraph& nested);
    void collectMoved();
    void collectEdges();
    void collectNestedEdges();
    void collectInputEdge(QxDEdge& edge);
    void testAndAddAffectedEdge(QxDEdge& edge);
    int endMoves(const QxDEdge& edge, bool atSource) const;
    void markGraphsAround();
    void computeAffectedGraphs();
    template <class List, class Label>
    void collectLabels(const QxDList* inputs, List& moved);
    /// Keeps what is listed alive.
    void hold(QxObject& object);
    /// @}
    void setDrag(QxDEdge& edge);
    void saveNode(QxDNode& node);
    void restoreNodes();
    template <class Act>
    void eachMovedLabel(const Act& act);
    void closeRecords();
    void noteFits();
    void forceFits();
    void tellAffectedRects();
    static void grow(QxRect& all, bool& has, const QxRect& rect);

    std::unique_ptr<qx::internal::AffectedState> m_state;
    QxGraphObject* m_input = nullptr;
    QxDNode* m_inputNode = nullptr;
    QxConnector* m_inputConnector = nullptr;
    QxPNode* m_inputBend = nullptr;
    QxPEdge* m_inputSegment = nullptr;
    QxLabel* m_inputLabel = nullptr;
    QxDGraph* m_inputGraph = nullptr;
    Inputs m_inputs;
    QxDNodeDList m_movedNodes;
    QxConnectorDList m_movedConnectors;
    QxDEdgeDList m_movedEdges;
    QxEdgeLabelDList m_movedEdgeLabels;
    QxNodeLabelDList m_movedNodeLabels;
    QxConnectorLabelDList m_movedConnectorLabels;
    QxGraphLabelDList m_movedGraphLabels;
    QxDGraphDList m_affectedGraphs;
    QxDEdgeDList m_reroutedEdges;
    QxDNodeDList m_resizedNodes;
    QxRect m_initialRect;
    QxRect m_currentRect;
    bool m_hasInitialRect = false;
    bool m_hasCurrentRect = false;
    int m_onlySelected = 0;
    int m_changesEdge = 0;
    QxHashSet m_processed{16};
};
