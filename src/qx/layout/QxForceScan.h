// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/layout/QxDGraphAlgorithm.h"

/// Removes overlaps between the nodes of one drawing graph: nodes are pushed right or up, with a
/// gap of 12 units to what they overlapped; the drawing stays as it is otherwise.
///
/// A node that is pushed moves once, to its final place. Listeners to the moves may take nodes out
/// of the graph or discard them. Deterministic. O(n log n) for n nodes that overlap few others, or
/// that lie on one spot and have few different extents; O(n^2) pushes at worst.
class QX_API QxForceScan : public QxDGraphAlgorithm {
public:
    using QxDGraphAlgorithm::QxDGraphAlgorithm;

protected:
    /// Moves the drawing to the origin, removes the overlaps and moves it back.
    void algorithmBody() override;
};
