// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/util/QxDList.h"

/// Sorts lists in the order that a subclass defines by virtualCompare.
class QX_API QxDListSort : public QxObject {
public:
    /// Sorts the list in place, ascending: its cells are relinked, so that each keeps its object.
    /// Elements that compare equal keep their order. Nonzero `printElements` writes the result to
    /// the diagnostic stream. Null changes nothing.
    ///
    /// At most n log2 n comparisons. Contradictory comparisons give some order of the same cells.
    void quickSort(QxDList* list, int printElements);

protected:
    /// Negative when `first` comes before `second`, positive when after, 0 when either may.
    virtual int virtualCompare(const QxDListCell* first, const QxDListCell* second) = 0;
    /// Describes the object of the cell on the diagnostic stream.
    virtual void virtualDebugOutputElement(const QxDListCell* cell);
};
