// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/graph/QxGraph.h"

class QxChildGraphForestEdge;
class QxChildGraphForestNode;
class QxGraphMember;

/// A graph whose edges form trees.
class QX_API QxTreeGraph : public QxGraph {
public:
    using QxGraph::QxGraph;
};

/// Which graph is nested in which node or edge: one node per graph of a manager, one edge per
/// relation. Relations keep the nesting a forest; those of a member that is out of its graph are
/// disconnected and come back with it.
class QX_API QxChildGraphForest : public QxTreeGraph {
public:
    explicit QxChildGraphForest(QxGraphManager* manager);
    /// Ends all relations.
    ~QxChildGraphForest() override;

    int checkInvariants() const override;

    /// @name Hooks: what the manager and its graphs report
    /// @{
    virtual void actOnInsertGraph(QxGraph* graph);
    /// The relations of the graph, upward and downward, end.
    virtual void actOnRemoveGraph(QxGraph* graph);
    virtual void actOnDiscardGraph(QxGraph* graph);
    virtual void actOnInsertGraphMember(QxGraphMember* member);
    virtual void actOnRemoveGraphMember(QxGraphMember* member);
    virtual void actOnDiscardGraphMember(QxGraphMember* member);
    /// Nests `graph` in `member`, or ends the relation (null). 0 when the graph belongs to another
    /// manager, cannot be a child graph, has a parent already or holds the member itself.
    virtual int actOnSetChildGraph(QxGraphMember* member, QxGraph* graph);
    virtual void actOnDestroyAllChildGraphRelations();

protected:
    virtual void vDiscardChildGraphForestEdge(QxChildGraphForestEdge* edge);

public:
    QxGraphManager* pGraphManager() const { return m_manager; }
    /// The member in which `graph` is nested; null when there is none.
    QxGraphMember* pParentGraphMember(const QxGraph* graph) const;
    /// The relation that nests `graph`, connected or, failing that, disconnected; null for none.
    QxChildGraphForestEdge* pParentRelation(const QxGraph* graph) const;
    /// Ends the relation of a member that is about to come into its own child graph, or into a
    /// graph that lies in that.
    void endCycle(QxGraphMember* member, const QxGraph* graph);
    /// The graph around `graph`; null at the top.
    QxGraph* pParentGraph(const QxGraph* graph) const;
    /// The innermost graph in which both lie, themselves included; null when there is none.
    QxGraph* pNearestCommonGraph(QxGraph* first, QxGraph* second) const;
    /// Appends the graphs nested directly in members of `graph`, in the order of the relations.
    void appendChildGraphs(const QxGraph* graph, QxGraphDList* list) const;

protected:
    QxNode* vNewNode(int type) override;
    QxEdge* vNewEdge(int type) override;
    /// The graph that belongs to the same place: of a hide graph what it hides from, of any other
    /// graph what hides from it. Null for none, and always in this layer.
    virtual QxGraph* vHidePartner(const QxGraph* graph) const;

private:
    friend class QxGraphManager;

    bool canNest(const QxGraphMember* member, const QxGraph* graph) const;
    bool isNestedIn(const QxGraph* graph, const QxGraph* around) const;
    bool isAcyclic() const;
    std::int32_t depthOf(const QxGraph* graph) const;
    void endRelation(QxGraphMember* member);
    static void discardRelation(QxGraphMember* member);
    void moveGraphsTo(QxChildGraphForest* forest);

    QxGraphManager* m_manager;
};
