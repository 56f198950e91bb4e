// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxConnectorLabel.h"
#include "qx/drawing/QxDrawingIters.h"
#include "qx/drawing/QxEdgeLabel.h"
#include "qx/drawing/QxGraphLabel.h"
#include "qx/drawing/QxNodeLabel.h"

/// The labels of one owner, forward, backward or from a cell.
class QX_API QxNodeLabelIter
    : public QxLabelIterOf<QxNodeLabel, QxOwnerListIter<QxDNode, &QxDNode::pLabelList>> {
public:
    using QxLabelIterOf::QxLabelIterOf;
};

class QX_API QxEdgeLabelIter
    : public QxLabelIterOf<QxEdgeLabel, QxOwnerListIter<QxDEdge, &QxDEdge::pLabelList>> {
public:
    using QxLabelIterOf::QxLabelIterOf;
};

class QX_API QxConnectorLabelIter
    : public QxLabelIterOf<QxConnectorLabel,
                           QxOwnerListIter<QxConnector, &QxConnector::pLabelList>> {
public:
    using QxLabelIterOf::QxLabelIterOf;
};

class QX_API QxGraphLabelIter
    : public QxLabelIterOf<QxGraphLabel, QxOwnerListIter<QxDGraph, &QxDGraph::pLabelList>> {
public:
    using QxLabelIterOf::QxLabelIterOf;
};

/// The labels of all nodes (connected edges) of a graph, owner by owner, always forward.
class QX_API QxAllNodeLabelIter
    : public QxLabelIterOf<QxNodeLabel, QxNestedListIter<QxDNodeIter, &QxDNode::pLabelList>> {
public:
    using QxLabelIterOf::QxLabelIterOf;
};

class QX_API QxAllEdgeLabelIter
    : public QxLabelIterOf<QxEdgeLabel, QxNestedListIter<QxDEdgeIter, &QxDEdge::pLabelList>> {
public:
    using QxLabelIterOf::QxLabelIterOf;
};

namespace qx::internal {

/// Walks the specified connectors of all nodes of a graph.
class QX_API SpecifiedConnectorsOfGraph : public QxDListIter {
public:
    using Owner = QxDGraph;

    SpecifiedConnectorsOfGraph() noexcept = default;
    void init(const QxDGraph* graph, QxIterDirectionEnum = QxIterForward);
    SpecifiedConnectorsOfGraph& operator++() override;
    QxConnector* pElement() const { return static_cast<QxConnector*>(pObject()); }

private:
    void goOnToNextNode();

    QxDNodeIter m_nodes;
};

}  // namespace qx::internal

/// The labels of the specified connectors of a graph, node by node.
class QX_API QxAllConnectorLabelIter
    : public QxLabelIterOf<
          QxConnectorLabel,
          QxNestedListIter<qx::internal::SpecifiedConnectorsOfGraph, &QxConnector::pLabelList>> {
public:
    using QxLabelIterOf::QxLabelIterOf;
};

namespace qx::internal {

/// Walks the labels of a graph, then those of its edges, then those of its nodes, each followed by
/// those of the connectors of the node.
class QX_API AllLabelsWalk : public QxDListIter {
public:
    using Owner = QxDGraph;

    AllLabelsWalk() noexcept = default;
    explicit AllLabelsWalk(const QxDGraph* graph, QxIterDirectionEnum = QxIterForward) {
        init(graph);
    }
    /// The direction is taken for the sake of uniform calls and has no effect.
    void init(const QxDGraph* graph, QxIterDirectionEnum = QxIterForward);
    AllLabelsWalk& operator++() override;

private:
    void goOnToNextOwner();

    QxDEdgeIter m_edges;
    QxDNodeIter m_nodes;
    QxInternalConnectorIter m_connectors;
};

}  // namespace qx::internal

/// Every label of a graph: its own; those of its connected edges, edge by edge; those of its nodes
/// and, after each node, of its connectors, node by node.
class QX_API QxLabelIter : public QxLabelIterOf<QxLabel, qx::internal::AllLabelsWalk> {
public:
    using QxLabelIterOf::QxLabelIterOf;
};
