// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/graph/QxGraphDLists.h"
#include "qx/foundation/graph/QxGraphObject.h"

class QxChildGraphForest;
class QxEdge;
class QxEventManager;
class QxNode;

namespace qx::internal {
template <class T>
class Snapshot;
class Twins;
}  // namespace qx::internal

/// The root of one drawing: it owns graphs, the intergraph with the edges between them, and the
/// forest that records which graph is nested in which node or edge.
class QX_API QxGraphManager : public QxGraphObject {
public:
    explicit QxGraphManager(QxOwnedObject* owner);
    ~QxGraphManager() override;

    int isGraphManager() const override;
    int userFieldsInUse() const override;
    void nullUserFields() override;
    int internalUserFieldsInUse() const override;
    void nullInternalUserFields() override;
    std::size_t sizeOf() const override;
    int checkInvariants() const override;
    void copyObject(const QxObject* source) override;
    void copyAttributes(const QxObject* source) override;
    void debugOutput(int depth) const override;

    /// Removes and destroys every graph, the intergraph included.
    virtual void emptyTopology();

protected:
    virtual QxChildGraphForest* vNewChildGraphForest();

public:
    /// A graph of the same factory, or of none, that no manager lists.
    virtual int canInsertGraph(const QxGraph* graph) const;
    /// Makes the contents of this manager a duplicate of those of `source`: graphs, nesting, edges
    /// between graphs, order included; then clears the scratch fields of the source.
    virtual void duplicateTopology(QxGraphManager* source);
    virtual void internalDuplicateTopology(QxGraphManager* source);
    virtual void innerDebugOutput(int depth) const;
    virtual void debugOutputGraphs(int depth) const;

protected:
    /// @name Steps behind the public operations of the same names
    /// @{
    virtual QxGraph* vAddGraph(int type);
    virtual QxGraph* vInsertGraph(QxGraph* graph);
    virtual int vDiscardGraph(QxGraph* graph);
    virtual QxGraph* vRemoveGraph(QxGraph* graph);
    virtual QxEdge* vAddEdge(QxNode* source, QxNode* target, int type);
    virtual QxEdge* vInsertEdge(QxEdge* edge, QxNode* source, QxNode* target);
    virtual int vDiscardEdge(QxEdge* edge);
    virtual QxEdge* vRemoveEdge(QxEdge* edge);
    virtual int vTransferTopology(QxGraphManager* manager);
    virtual QxGraph* vNewGraph(int type);
    virtual QxGraph* vNewIntergraph(int type);
    virtual QxEdge* vNewEdge(int type);
    /// @}
    /// The last step of internalDuplicateTopology, when all graphs, nodes and edges are there and
    /// the scratch fields of the source's lead to them: nests the duplicates of nested graphs.
    virtual void duplicateNesting(const QxGraphManager* source);

public:
    /// Append the graphs (the managers) whose derived state has to rest together.
    virtual void vBuildListOfGraphsForDeepDisable(QxGraphDList* list);
    virtual void vBuildListOfAttachedMgrsForDeepDisable(QxDList* list);
    /// Takes over the attributes of `source`; with `deep` nonzero its contents, too. Null or this
    /// manager: no change.
    virtual void copyGraphManager(const QxGraphManager* source, int deep);

    /// Creates a graph and inserts it; `type` is passed through to the factory.
    QxGraph* addGraph(int type) { return vAddGraph(type); }
    /// Appends a graph; the manager owns it from then on. Returns the graph.
    QxGraph* insertGraph(QxGraph* graph) { return vInsertGraph(graph); }
    /// Takes a graph out: the caller owns what is returned. Edges between it and other graphs stay
    /// in the intergraph, disconnected; its nesting relations end.
    QxGraph* removeGraph(QxGraph* graph) { return vRemoveGraph(graph); }
    int discardGraph(QxGraph* graph) { return vDiscardGraph(graph); }
    /// Adds an edge to the graph that holds both ends, or to the intergraph when they lie in
    /// different graphs of this manager.
    QxEdge* addEdge(QxNode* source, QxNode* target, int type) {
        return vAddEdge(source, target, type);
    }
    QxEdge* insertEdge(QxEdge* edge, QxNode* source, QxNode* target) {
        return vInsertEdge(edge, source, target);
    }
    /// Removes (discards) an edge of any graph of this manager.
    QxEdge* removeEdge(QxEdge* edge) { return vRemoveEdge(edge); }
    int discardEdge(QxEdge* edge) { return vDiscardEdge(edge); }
    /// Moves all graphs, and the edges between them, from `manager` here.
    int transferTopology(QxGraphManager* manager) { return vTransferTopology(manager); }

    const QxGraphDList* pGraphList() const { return &m_graphs; }
    std::int32_t numberOfGraphs() const { return m_graphs.count(); }
    QxGraph* pFirstGraph() const;
    QxGraph* pLastGraph() const;
    /// The graph of the edges between graphs, made on the first request.
    QxGraph* pIntergraph();
    /// The same, or null when nobody has asked for it.
    QxGraph* pQueryIntergraph() const { return m_intergraph; }
    /// The nesting forest, made on the first request.
    QxChildGraphForest* pChildGraphForest() const;
    /// The event manager of the factory; null without a factory.
    QxEventManager* pEventManager() const;

protected:
    /// Makes `graph` look like the intergraph of this manager, before it becomes it.
    void markAsIntergraph(QxGraph* graph);

private:
    friend class QxGraph;

    static bool detachBetweenGraphs(QxGraph* graph);
    void forgetGraph(QxGraph* graph);
    void duplicateGraphs(const qx::internal::Snapshot<QxGraph>& graphs, qx::internal::Twins& twins);
    void releaseForest();

    QxGraphDList m_graphs;
    QxGraph* m_intergraph = nullptr;
    mutable QxChildGraphForest* m_forest = nullptr;
};
