// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxDGraph.h"
#include "qx/foundation/graph/QxGraphManager.h"

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
    /// The graph at the top of the visible nesting; null while there are no graphs.
    QxDGraph* pAnchorGraph() const { return m_anchor; }
    /// The graph that would take the anchor's place; null when there is none.
    QxDGraph* pFindNewAnchorGraph() const;
    /// Whether the graph is the anchor graph or lies, nested, somewhere in it.
    int nestedInAnchorGraph(const QxDGraph* graph) const;
    /// The innermost graph in whose nesting both lie, themselves included; null when there is none.
    QxDGraph* pNearestCommonAncestorGraph(const QxDGraph* first, const QxDGraph* second) const;
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
    int compressMetaEdges(int v) { return change(qx::flags::ManagerCompressMetaEdges, v); }
    /// Whether edges inside a folded group are stood for by self-loops; on at first.
    int reflexiveMetaEdgeReplacement() const { return hasFlag(qx::flags::ManagerReplaceReflexive); }
    int reflexiveMetaEdgeReplacement(int v) {
        return change(qx::flags::ManagerReplaceReflexive, v);
    }
    /// Whether such stand-ins attach to nodes rather than to connectors; on at first.
    int ignoreConnectorsForMetaEdges() const { return hasFlag(qx::flags::ManagerIgnoreConnectors); }
    int ignoreConnectorsForMetaEdges(int v) {
        return change(qx::flags::ManagerIgnoreConnectors, v);
    }
    /// Whether a move is being carried through the drawing right now.
    int isUpdatingAffectedGraphs() const { return hasFlag(qx::flags::ManagerUpdatingAffected); }
    int isUpdatingAffectedGraphs(int v) { return change(qx::flags::ManagerUpdatingAffected, v); }
    /// Whether an interactive host is in charge of the drawing; off at first.
    int controlStarted() const { return hasFlag(qx::flags::ManagerControlStarted); }
    int controlStarted(int v) { return change(qx::flags::ManagerControlStarted, v); }
    /// Whether copies are remembered by their sources.
    int storeClones() const { return hasFlag(qx::flags::ManagerStoreClones); }
    int storeClones(int v) { return change(qx::flags::ManagerStoreClones, v); }
    /// Whether a document is being read.
    int isReading() const { return hasFlag(qx::flags::ManagerReading); }
    /// @}

protected:
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
    void initSwitches();
    /// Makes `graph` the anchor graph. Invisible graphs let their bounds rest, so those of what is
    /// visible now are computed anew.
    void showAnchor(QxDGraph* graph);

    QxDGraph* m_anchor = nullptr;
};
