// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/graph/QxChildGraphForest.h"

class QxDChildGraphForestEdge;
class QxDChildGraphForestNode;
class QxDGraph;
class QxDGraphManager;
class QxDNode;

/// The nesting forest of a drawing.
class QX_API QxDChildGraphForest : public QxChildGraphForest {
public:
    explicit QxDChildGraphForest(QxDGraphManager* manager);
    ~QxDChildGraphForest() override;

    QxDGraphManager* pGraphManager() const;
    /// The innermost forest node from which both lie, themselves included, through expanded nodes
    /// only; null when there is none. O(depth).
    QxDChildGraphForestNode* pLeastCommonNestedAncestor(QxDChildGraphForestNode* a,
                                                        QxDChildGraphForestNode* b) const;
    /// The steps of QxDNode::expand and collapse that concern the relation: gives the node its
    /// expanded look, and makes the child graph a nested one, or undoes that. With
    /// `adjustConnectors` nonzero the connectors of the node follow its size. 1, or 0 when there is
    /// no such relation or no extension can be made.
    int actOnExpand(QxDNode* node, QxDGraph* childGraph, int adjustConnectors);
    int actOnCollapse(QxDNode* node, int adjustConnectors);

    /// An expanded node is collapsed first.
    void actOnDiscardGraphMember(QxGraphMember* member) override;

protected:
    void vDiscardChildGraphForestEdge(QxChildGraphForestEdge* edge) override;
    QxNode* vNewNode(int type) override;
    QxEdge* vNewEdge(int type) override;
    QxGraph* vHidePartner(const QxGraph* graph) const override;

private:
    friend class QxDChildGraphForestEdge;

    void nestingChanged(const QxDChildGraphForestEdge& relation) const;
};
