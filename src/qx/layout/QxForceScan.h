// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/graph/QxGraphAlgorithm.h"

class QxDGraph;

/// Removes overlaps between the nodes of one drawing graph: nodes are pushed right or up, with a
/// gap of 12 units to what they overlapped; the drawing stays as it is otherwise.
///
/// A node that is pushed moves once, to its final place. Deterministic. O(n^2) for n nodes that
/// lie close together, with a small constant; less where the drawing extends.
class QX_API QxForceScan : public QxGraphAlgorithm {
public:
    /// The graph is not owned; null makes runs without effect.
    explicit QxForceScan(QxDGraph* graph);

    QxDGraph* pGraph() const;

protected:
    void algorithmBody() override;
};
