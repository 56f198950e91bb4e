// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>

#include "drawing/DrawingTesting.h"

namespace qxtest {

/// A graph that is seen wherever it is, so that edges between two graphs are seen, too.
class ShownGraph : public QxDGraph {
public:
    using QxDGraph::QxDGraph;
    int vIsVisible() const override { return 1; }
};

/// Makes graphs of the type `Shown` such graphs, and tells of every object that is new: it may lie
/// where another one lay.
class WorldFactory : public QxFactory {
public:
    enum { Plain, Shown };

    std::function<void(const QxObject*)> onNew;

protected:
    QxDGraph* vNewDGraph(QxOwnedObject* owner, int type) override {
        return told(type == Shown ? new ShownGraph(owner, type, this)
                                  : QxFactory::vNewDGraph(owner, type));
    }
    QxDNode* vNewDNode(QxOwnedObject* owner, int type) override {
        return told(QxFactory::vNewDNode(owner, type));
    }
    QxPNode* vNewPNode(QxOwnedObject* owner) override { return told(QxFactory::vNewPNode(owner)); }

private:
    template <class T>
    T* told(T* object) {
        if (onNew) {
            onNew(object);
        }
        return object;
    }
};

}  // namespace qxtest
