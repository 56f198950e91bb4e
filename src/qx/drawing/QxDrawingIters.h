// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxConnectorManager.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxDrawingNouns.h"
#include "qx/drawing/QxPEdge.h"
#include "qx/drawing/QxPNode.h"

/// Iterators over lists of drawing objects (`...DListIter`) and over what graphs, nodes and
/// managers hold. Each starts from its list or owner and a direction, or a starting cell, and is
/// true while it stands on an element; a null owner is walked like an empty one.

class QX_API QxDNodeDListIter : public QxNodeIterOf<QxDNode, QxTypedListIter<QxDNodeDList>> {
public:
    using QxNodeIterOf::QxNodeIterOf;
};

class QX_API QxGNodeDListIter : public QxNodeIterOf<QxGNode, QxTypedListIter<QxGNodeDList>> {
public:
    using QxNodeIterOf::QxNodeIterOf;
};

class QX_API QxPNodeDListIter : public QxNodeIterOf<QxPNode, QxTypedListIter<QxPNodeDList>> {
public:
    using QxNodeIterOf::QxNodeIterOf;
};

class QX_API QxDEdgeDListIter : public QxEdgeIterOf<QxDEdge, QxTypedListIter<QxDEdgeDList>> {
public:
    using QxEdgeIterOf::QxEdgeIterOf;
};

class QX_API QxGEdgeDListIter : public QxEdgeIterOf<QxGEdge, QxTypedListIter<QxGEdgeDList>> {
public:
    using QxEdgeIterOf::QxEdgeIterOf;
};

class QX_API QxPEdgeDListIter : public QxEdgeIterOf<QxPEdge, QxTypedListIter<QxPEdgeDList>> {
public:
    using QxEdgeIterOf::QxEdgeIterOf;
};

class QX_API QxDGraphDListIter : public QxGraphIterOf<QxDGraph, QxTypedListIter<QxDGraphDList>> {
public:
    using QxGraphIterOf::QxGraphIterOf;
};

class QX_API QxDGraphManagerDListIter
    : public QxGraphManagerIterOf<QxDGraphManager, QxTypedListIter<QxDGraphManagerDList>> {
public:
    using QxGraphManagerIterOf::QxGraphManagerIterOf;
};

class QX_API QxConnectorDListIter
    : public QxConnectorIterOf<QxConnector, QxTypedListIter<QxConnectorDList>> {
public:
    using QxConnectorIterOf::QxConnectorIterOf;
};

class QX_API QxLabelDListIter : public QxLabelIterOf<QxLabel, QxTypedListIter<QxLabelDList>> {
public:
    using QxLabelIterOf::QxLabelIterOf;
};

class QX_API QxNodeLabelDListIter
    : public QxLabelIterOf<QxNodeLabel, QxTypedListIter<QxNodeLabelDList>> {
public:
    using QxLabelIterOf::QxLabelIterOf;
};

class QX_API QxEdgeLabelDListIter
    : public QxLabelIterOf<QxEdgeLabel, QxTypedListIter<QxEdgeLabelDList>> {
public:
    using QxLabelIterOf::QxLabelIterOf;
};

class QX_API QxConnectorLabelDListIter
    : public QxLabelIterOf<QxConnectorLabel, QxTypedListIter<QxConnectorLabelDList>> {
public:
    using QxLabelIterOf::QxLabelIterOf;
};

class QX_API QxGraphLabelDListIter
    : public QxLabelIterOf<QxGraphLabel, QxTypedListIter<QxGraphLabelDList>> {
public:
    using QxLabelIterOf::QxLabelIterOf;
};

class QX_API QxDNodePairDListIter
    : public QxNodePairIterOf<QxDNodePair, QxTypedListIter<QxDNodePairDList>> {
public:
    using QxNodePairIterOf::QxNodePairIterOf;
};

/// What a graph lists.
class QX_API QxDNodeIter
    : public QxNodeIterOf<QxDNode, QxOwnerListIter<QxDGraph, &QxDGraph::pNodeList>> {
public:
    using QxNodeIterOf::QxNodeIterOf;
};

class QX_API QxDEdgeIter
    : public QxEdgeIterOf<QxDEdge, QxOwnerListIter<QxDGraph, &QxDGraph::pEdgeList>> {
public:
    using QxEdgeIterOf::QxEdgeIterOf;
};

class QX_API QxDisconnectedDEdgeIter
    : public QxEdgeIterOf<QxDEdge, QxOwnerListIter<QxDGraph, &QxDGraph::pDisconnectedEdgeList>> {
public:
    using QxEdgeIterOf::QxEdgeIterOf;
};

class QX_API QxDeactivatedDEdgeIter
    : public QxEdgeIterOf<QxDEdge, QxOwnerListIter<QxDGraph, &QxDGraph::pDeactivatedEdgeList>> {
public:
    using QxEdgeIterOf::QxEdgeIterOf;
};

/// The graphs of a manager.
class QX_API QxDGraphIter
    : public QxGraphIterOf<QxDGraph,
                           QxOwnerListIter<QxDGraphManager, &QxDGraphManager::pGraphList>> {
public:
    using QxGraphIterOf::QxGraphIterOf;
};

/// The specified connectors of a node.
class QX_API QxConnectorIter
    : public QxConnectorIterOf<
          QxConnector,
          QxFilteredIter<QxConnector, QxOwnerListIter<QxDNode, &QxDNode::pQueryConnectorManager>,
                         static_cast<int (QxConnector::*)() const>(&QxConnector::specified)>> {
public:
    using QxConnectorIterOf::QxConnectorIterOf;
};

/// All connectors of a node, the calculated ones, too.
class QX_API QxInternalConnectorIter
    : public QxConnectorIterOf<QxConnector,
                               QxOwnerListIter<QxDNode, &QxDNode::pQueryConnectorManager>> {
public:
    using QxConnectorIterOf::QxConnectorIterOf;
};

namespace qx::internal {

/// The far end of the edge that a walk over in-edges (out-edges) of a node stands on.
template <class N>
struct SourceOfCurrent {
    N* operator()(const QxDListIter& walk) const {
        auto* edge = static_cast<QxGEdge*>(walk.pObject());
        return edge != nullptr ? static_cast<N*>(edge->pSourceNode()) : nullptr;
    }
};
template <class N>
struct TargetOfCurrent {
    N* operator()(const QxDListIter& walk) const {
        auto* edge = static_cast<QxGEdge*>(walk.pObject());
        return edge != nullptr ? static_cast<N*>(edge->pTargetNode()) : nullptr;
    }
};
/// The same in a walk over both, by its phase.
template <class N, class Walk>
struct FarEndOfCurrent {
    N* operator()(const Walk& walk) const {
        return walk.phase() == 0 ? SourceOfCurrent<N>()(walk) : TargetOfCurrent<N>()(walk);
    }
};
/// The segment of the current edge at the node: the edge itself at a bend.
struct SegmentInOfCurrent {
    QxPEdge* operator()(const QxDListIter& walk) const {
        auto* edge = static_cast<QxGEdge*>(walk.pObject());
        return edge != nullptr ? edge->pTargetOrPathEdge() : nullptr;
    }
};
struct SegmentOutOfCurrent {
    QxPEdge* operator()(const QxDListIter& walk) const {
        auto* edge = static_cast<QxGEdge*>(walk.pObject());
        return edge != nullptr ? edge->pSourceOrPathEdge() : nullptr;
    }
};
template <class Walk>
struct SegmentAtCurrent {
    QxPEdge* operator()(const Walk& walk) const {
        return walk.phase() == 0 ? SegmentInOfCurrent()(walk) : SegmentOutOfCurrent()(walk);
    }
};

template <class N>
using InWalk = QxOwnerListIter<N, &N::pInEdgeList>;
template <class N>
using OutWalk = QxOwnerListIter<N, &N::pOutEdgeList>;
template <class N>
using InAndOutWalk = QxTwoListIter<N, &N::pInEdgeList, &N::pOutEdgeList>;

}  // namespace qx::internal

/// The edges at a drawing node. A self-loop is met twice by the combined walk.
class QX_API QxInDEdgeIter : public QxEdgeIterOf<QxDEdge, qx::internal::InWalk<QxDNode>> {
public:
    using QxEdgeIterOf::QxEdgeIterOf;
};

class QX_API QxOutDEdgeIter : public QxEdgeIterOf<QxDEdge, qx::internal::OutWalk<QxDNode>> {
public:
    using QxEdgeIterOf::QxEdgeIterOf;
};

class QX_API QxInAndOutDEdgeIter
    : public QxEdgeIterOf<QxDEdge, qx::internal::InAndOutWalk<QxDNode>> {
public:
    using QxEdgeIterOf::QxEdgeIterOf;
};

class QX_API QxDisconnectedInAndOutDEdgeIter
    : public QxEdgeIterOf<QxDEdge, QxOwnerListIter<QxDNode, &QxDNode::pDisconnectedEdgeList>> {
public:
    using QxEdgeIterOf::QxEdgeIterOf;
};

class QX_API QxDeactivatedInAndOutDEdgeIter
    : public QxEdgeIterOf<QxDEdge, QxOwnerListIter<QxDNode, &QxDNode::pDeactivatedEdgeList>> {
public:
    using QxEdgeIterOf::QxEdgeIterOf;
};

/// The nodes at the far ends of those edges.
class QX_API QxInDNodeIter : public QxNodeIterOf<QxDNode, qx::internal::InWalk<QxDNode>,
                                                 qx::internal::SourceOfCurrent<QxDNode>{}> {
public:
    using QxNodeIterOf::QxNodeIterOf;
};

class QX_API QxOutDNodeIter : public QxNodeIterOf<QxDNode, qx::internal::OutWalk<QxDNode>,
                                                  qx::internal::TargetOfCurrent<QxDNode>{}> {
public:
    using QxNodeIterOf::QxNodeIterOf;
};

class QX_API QxInAndOutDNodeIter
    : public QxNodeIterOf<
          QxDNode, qx::internal::InAndOutWalk<QxDNode>,
          qx::internal::FarEndOfCurrent<QxDNode, qx::internal::InAndOutWalk<QxDNode>>{}> {
public:
    using QxNodeIterOf::QxNodeIterOf;
};

class QX_API QxInGNodeIter : public QxNodeIterOf<QxGNode, qx::internal::InWalk<QxGNode>,
                                                 qx::internal::SourceOfCurrent<QxGNode>{}> {
public:
    using QxNodeIterOf::QxNodeIterOf;
};

class QX_API QxOutGNodeIter : public QxNodeIterOf<QxGNode, qx::internal::OutWalk<QxGNode>,
                                                  qx::internal::TargetOfCurrent<QxGNode>{}> {
public:
    using QxNodeIterOf::QxNodeIterOf;
};

class QX_API QxInAndOutGNodeIter
    : public QxNodeIterOf<
          QxGNode, qx::internal::InAndOutWalk<QxGNode>,
          qx::internal::FarEndOfCurrent<QxGNode, qx::internal::InAndOutWalk<QxGNode>>{}> {
public:
    using QxNodeIterOf::QxNodeIterOf;
};

/// The segments that end at, start at, or touch a bend or a drawing node.
class QX_API QxInPEdgeIter : public QxEdgeIterOf<QxPEdge, qx::internal::InWalk<QxGNode>,
                                                 qx::internal::SegmentInOfCurrent{}> {
public:
    using QxEdgeIterOf::QxEdgeIterOf;
};

class QX_API QxOutPEdgeIter : public QxEdgeIterOf<QxPEdge, qx::internal::OutWalk<QxGNode>,
                                                  qx::internal::SegmentOutOfCurrent{}> {
public:
    using QxEdgeIterOf::QxEdgeIterOf;
};

class QX_API QxInAndOutPEdgeIter
    : public QxEdgeIterOf<QxPEdge, qx::internal::InAndOutWalk<QxGNode>,
                          qx::internal::SegmentAtCurrent<qx::internal::InAndOutWalk<QxGNode>>{}> {
public:
    using QxEdgeIterOf::QxEdgeIterOf;
};
