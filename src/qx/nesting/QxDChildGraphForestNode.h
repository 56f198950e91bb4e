// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/graph/QxChildGraphForestNode.h"

class QxDChildGraphForestEdge;
class QxDGraph;

/// Stands for one drawing graph in the nesting forest.
class QX_API QxDChildGraphForestNode : public QxChildGraphForestNode {
public:
    explicit QxDChildGraphForestNode(QxOwnedObject* owner) : QxChildGraphForestNode(owner) {}

    QxDGraph* pGraph() const;
    /// The relation that nests the graph, and the first of those that nest others in it; null when
    /// there is none.
    QxDChildGraphForestEdge* pInEdge() const;
    QxDChildGraphForestEdge* pOutEdge() const;
    /// The forest node of the graph around this one, and of the first graph nested in it.
    QxDChildGraphForestNode* pInNode() const;
    QxDChildGraphForestNode* pOutNode() const;
    /// The relation that nests the graph in a node that is out of its graph; null for none.
    QxDChildGraphForestEdge* pDisconnectedInEdge() const;
};
