// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/layout/QxForceScanSort.h"

#include <algorithm>

#include "qx/drawing/QxGNode.h"

namespace {

std::int32_t keyOf(const QxDListCell* cell) {
    const auto* const node = static_cast<const QxGNode*>(cell->pObject());
    return std::min(qx::saturatingSub(node->iX(), qx::lowerHalf(node->iWidth())),
                    qx::saturatingSub(node->iY(), qx::lowerHalf(node->iHeight())));
}

}  // namespace

int QxForceScanSort::virtualCompare(const QxDListCell* first, const QxDListCell* second) {
    return qx::saturatingSub(keyOf(first), keyOf(second));
}
