// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/util/QxDListSort.h"

#include <algorithm>
#include <vector>

// Merge sort from the bottom up over an array of the cells: stable, no recursion, n log n in the
// worst case. std::stable_sort would do but for comparisons that contradict themselves, which
// subclasses of applications may well make: std::merge stays within its ranges whatever they say.

namespace {

using Cells = std::vector<QxDListCell*>;

template <class Before>
void mergeSort(Cells& cells, Before before) {
    Cells merged(cells.size());
    const auto at = [&cells](std::size_t i) {
        return cells.begin() + static_cast<std::ptrdiff_t>(std::min(i, cells.size()));
    };
    for (std::size_t run = 1; run < cells.size(); run *= 2) {
        auto out = merged.begin();
        for (std::size_t i = 0; i < cells.size(); i += 2 * run) {
            out = std::merge(at(i), at(i + run), at(i + run), at(i + 2 * run), out, before);
        }
        cells.swap(merged);
    }
}

}  // namespace

void QxDListSort::quickSort(QxDList* list, int printElements) {
    if (list == nullptr) {
        return;
    }
    Cells cells;
    cells.reserve(static_cast<std::size_t>(list->count()));
    for (QxDListCell* cell = list->pFirstCell(); cell != nullptr; cell = cell->pNextCell()) {
        cells.push_back(cell);
    }
    mergeSort(cells, [this](const QxDListCell* a, const QxDListCell* b) {
        return virtualCompare(a, b) < 0;
    });
    for (QxDListCell* cell : cells) {
        list->transferCell(cell, list);
        if (printElements != 0) {
            virtualDebugOutputElement(cell);
        }
    }
}

void QxDListSort::virtualDebugOutputElement(const QxDListCell* cell) {
    cell->pObject()->debugOutput(0);
}
