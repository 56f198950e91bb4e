// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// How edges that come to a side of a node share the gaps between those that are there: one by one,
// each takes the gap that it leaves widest. A heap holds the gaps by the width that another edge
// would leave, so that k edges and n gaps cost O((n + k) log n).

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxPEdge.h"
#include "qx/foundation/geometry/QxSize.h"
#include "qx/foundation/graph/internal/EachObject.h"

namespace {

/// The gap behind a placed connector.
struct Gap {
    std::int64_t width;
    std::size_t number;
    std::int64_t added = 0;

    std::int64_t widthWithOneMore() const { return width / (added + 2); }
    /// Ordered below gaps that stay wider, or as wide and come first.
    friend bool operator<(const Gap& a, const Gap& b) {
        return a.widthWithOneMore() != b.widthWithOneMore()
                   ? a.widthWithOneMore() < b.widthWithOneMore()
                   : a.number > b.number;
    }
};

}  // namespace

void QxDNode::computeDistributionInOrthogonalMove(QxSideEnum side, const QxPEdgeDList* placed,
                                                  const QxPEdgeDList* added) {
    if (placed == nullptr) {
        return;
    }
    std::vector<QxSize*> counters;
    std::vector<std::int64_t> positions;
    for (const QxPEdge* segment : qx::internal::each<QxPEdge>(*placed)) {
        if (auto* connector = static_cast<QxConnector*>(segment->pIUserField())) {
            const bool isAcross = side == QxSideLeft || side == QxSideRight;
            positions.push_back(isAcross ? connector->ntOffsetY() : connector->ntOffsetX());
            counters.push_back(new QxSize());
            connector->pIUserField(counters.back());
        }
    }
    if (counters.empty() || added == nullptr) {
        return;
    }
    std::vector<Gap> gaps;
    for (std::size_t i = 1; i < positions.size(); ++i) {
        gaps.push_back({positions[i] - positions[i - 1], i - 1});
    }
    std::make_heap(gaps.begin(), gaps.end());
    for (std::int32_t left = added->count(); left > 0; --left) {
        std::size_t taken = 0;  // where no gap has room
        if (!gaps.empty() && gaps.front().widthWithOneMore() > 0) {
            std::pop_heap(gaps.begin(), gaps.end());
            taken = gaps.back().number;
            ++gaps.back().added;
            std::push_heap(gaps.begin(), gaps.end());
        }
        counters[taken]->width(counters[taken]->width() + 1);
    }
}
