// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/util/QxNounDLists.h"

class QxNode;
class QxEdge;
class QxGraph;

/// Lists of the abstract graph objects. They do not own what they hold.
class QX_API QxNodeDList : public QxNodesOf<QxNode, QxNodeDList> {
public:
    using QxNodesOf::QxNodesOf;
};

class QX_API QxEdgeDList : public QxEdgesOf<QxEdge, QxEdgeDList> {
public:
    using QxEdgesOf::QxEdgesOf;
};

class QX_API QxGraphDList : public QxGraphsOf<QxGraph, QxGraphDList> {
public:
    using QxGraphsOf::QxGraphsOf;
};
