// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/util/QxDListSort.h"

/// Sorts lists of geometric nodes by their distance from the axes, ascending: by the left or the
/// bottom side in own graph coordinates, whichever is smaller.
class QX_API QxForceScanSort : public QxDListSort {
protected:
    int virtualCompare(const QxDListCell* first, const QxDListCell* second) override;
};
