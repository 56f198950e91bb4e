// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxDGraph.h"
#include "qx/foundation/graph/QxGraphAlgorithm.h"

/// An algorithm on one drawing graph.
class QX_API QxDGraphAlgorithm : public QxGraphAlgorithm {
public:
    /// The graph is not owned and must outlive the run; null makes runs without effect.
    explicit QxDGraphAlgorithm(QxDGraph* graph) : QxGraphAlgorithm(graph) {}

    QxDGraph* pGraph() const { return static_cast<QxDGraph*>(QxGraphAlgorithm::pGraph()); }
};
