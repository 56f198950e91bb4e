// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxDrawingNouns.h"

class QxConnector;
class QxConnectorLabel;
class QxDEdge;
class QxDGraph;
class QxDGraphManager;
class QxDNode;
class QxDNodePair;
class QxEdgeLabel;
class QxGEdge;
class QxGNode;
class QxGraphLabel;
class QxLabel;
class QxNodeLabel;
class QxPEdge;
class QxPNode;

/// The lists of drawing objects. They do not own what they hold.

class QX_API QxDNodeDList : public QxNodesOf<QxDNode, QxDNodeDList> {
public:
    using QxNodesOf::QxNodesOf;
};

class QX_API QxGNodeDList : public QxNodesOf<QxGNode, QxGNodeDList> {
public:
    using QxNodesOf::QxNodesOf;
};

class QX_API QxPNodeDList : public QxNodesOf<QxPNode, QxPNodeDList> {
public:
    using QxNodesOf::QxNodesOf;
};

class QX_API QxDEdgeDList : public QxEdgesOf<QxDEdge, QxDEdgeDList> {
public:
    using QxEdgesOf::QxEdgesOf;
};

class QX_API QxGEdgeDList : public QxEdgesOf<QxGEdge, QxGEdgeDList> {
public:
    using QxEdgesOf::QxEdgesOf;
};

class QX_API QxPEdgeDList : public QxEdgesOf<QxPEdge, QxPEdgeDList> {
public:
    using QxEdgesOf::QxEdgesOf;
};

class QX_API QxDGraphDList : public QxGraphsOf<QxDGraph, QxDGraphDList> {
public:
    using QxGraphsOf::QxGraphsOf;
};

class QX_API QxDGraphManagerDList
    : public QxGraphManagersOf<QxDGraphManager, QxDGraphManagerDList> {
public:
    using QxGraphManagersOf::QxGraphManagersOf;
};

class QX_API QxConnectorDList : public QxConnectorsOf<QxConnector, QxConnectorDList> {
public:
    using QxConnectorsOf::QxConnectorsOf;
};

class QX_API QxLabelDList : public QxLabelsOf<QxLabel, QxLabelDList> {
public:
    using QxLabelsOf::QxLabelsOf;
};

class QX_API QxNodeLabelDList : public QxLabelsOf<QxNodeLabel, QxNodeLabelDList> {
public:
    using QxLabelsOf::QxLabelsOf;
};

class QX_API QxEdgeLabelDList : public QxLabelsOf<QxEdgeLabel, QxEdgeLabelDList> {
public:
    using QxLabelsOf::QxLabelsOf;
};

class QX_API QxConnectorLabelDList : public QxLabelsOf<QxConnectorLabel, QxConnectorLabelDList> {
public:
    using QxLabelsOf::QxLabelsOf;
};

class QX_API QxGraphLabelDList : public QxLabelsOf<QxGraphLabel, QxGraphLabelDList> {
public:
    using QxLabelsOf::QxLabelsOf;
};

class QX_API QxDNodePairDList : public QxNodePairsOf<QxDNodePair, QxDNodePairDList> {
public:
    using QxNodePairsOf::QxNodePairsOf;
};
