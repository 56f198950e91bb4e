// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <algorithm>
#include <ctime>
#include <limits>
#include <vector>

#include "qx/drawing/QxDrawingNouns.h"

namespace utiltest {

/// An object with a number and a cell of its own, which counts how many of its kind are alive.
class Item : public QxObject {
public:
    explicit Item(int number = 0) : m_number(number) { ++alive; }
    Item(const Item& source) : QxObject(source), m_number(source.m_number) { ++alive; }
    ~Item() override { --alive; }

    int number() const { return m_number; }
    bool isOdd() const { return m_number % 2 != 0; }
    QxDListCell* pCell() { return &m_cell; }

    static inline int alive = 0;

protected:
    QxObject* vCloneObject() const override { return new Item(*this); }

private:
    QxDListCell m_cell{this};
    int m_number;
};

class ItemNodes : public QxNodesOf<Item, ItemNodes> {
public:
    using QxNodesOf::QxNodesOf;
};
class ItemEdges : public QxEdgesOf<Item, ItemEdges> {
public:
    using QxEdgesOf::QxEdgesOf;
};
class ItemGraphs : public QxGraphsOf<Item, ItemGraphs> {
public:
    using QxGraphsOf::QxGraphsOf;
};
class ItemManagers : public QxGraphManagersOf<Item, ItemManagers> {
public:
    using QxGraphManagersOf::QxGraphManagersOf;
};
class ItemConnectors : public QxConnectorsOf<Item, ItemConnectors> {
public:
    using QxConnectorsOf::QxConnectorsOf;
};
class ItemLabels : public QxLabelsOf<Item, ItemLabels> {
public:
    using QxLabelsOf::QxLabelsOf;
};
class ItemPairs : public QxNodePairsOf<Item, ItemPairs> {
public:
    using QxNodePairsOf::QxNodePairsOf;
};

class ItemNodesIter : public QxNodeIterOf<Item, QxTypedListIter<ItemNodes>> {
public:
    using QxNodeIterOf::QxNodeIterOf;
};

inline std::vector<int> numbersOf(const QxDList& list,
                                  QxIterDirectionEnum direction = QxIterForward) {
    std::vector<int> numbers;
    for (QxDListIter it(&list, direction); it; ++it) {
        numbers.push_back(static_cast<Item*>(it.pObject())->number());
    }
    return numbers;
}

/// How many times as much of the processor's time `work(16 * n)` takes as `work(n)`, the best of
/// some runs each: around 16 for work that is linear, around 256 for quadratic work.
template <class Work>
double growth(const Work& work, int n) {
    const auto best = [&](int size) {
        std::clock_t least = std::numeric_limits<std::clock_t>::max();
        for (int run = 0; run < 5; ++run) {
            const std::clock_t start = std::clock();
            work(size);
            least = std::min(least, std::clock() - start);
        }
        return static_cast<double>(std::max<std::clock_t>(least, 1));
    };
    const double small = best(n);
    return best(16 * n) / small;
}

}  // namespace utiltest
