// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>
#include <vector>

#include "qx/foundation/graph/QxAFactory.h"
#include "qx/foundation/graph/QxEdge.h"
#include "qx/foundation/graph/QxEventManager.h"
#include "qx/foundation/graph/QxGraph.h"
#include "qx/foundation/graph/QxGraphManager.h"
#include "qx/foundation/graph/QxNode.h"

namespace qxtest {

struct Release {
    void operator()(QxObject* object) const { object->vRelease(); }
};

/// Holds one reference of an object and drops it at the end.
template <class T>
using Ref = std::unique_ptr<T, Release>;

/// A further reference to an object that somebody else owns.
template <class T>
Ref<T> hold(T* object) {
    object->vAddRef();
    return Ref<T>(object);
}

/// Makes the plain abstract classes.
class GraphFactory : public QxAFactory {
public:
    QxGraphManager* newManager() { return newGraphManager(this, 0); }

protected:
    QxGraphManager* vNewGraphManager(QxOwnedObject* owner, int) override {
        return new QxGraphManager(owner);
    }
    QxGraph* vNewGraph(QxOwnedObject* owner, int) override { return new QxGraph(owner); }
    QxNode* vNewNode(QxOwnedObject* owner, int) override { return new QxNode(owner); }
    QxEdge* vNewEdge(QxOwnedObject* owner, int) override { return new QxEdge(owner); }
    QxGraph* vNewIntergraph(QxOwnedObject* owner, int) override { return new QxGraph(owner); }
    QxEventManager* vNewEventManager() override { return new QxEventManager; }
};

/// What a list holds, in order.
template <class T>
std::vector<T*> objectsOf(const QxDList& list) {
    std::vector<T*> objects;
    for (const QxDListCell* cell = list.pFirstCell(); cell != nullptr; cell = cell->pNextCell()) {
        objects.push_back(static_cast<T*>(cell->pObject()));
    }
    return objects;
}

using Nodes = std::vector<QxNode*>;
using Edges = std::vector<QxEdge*>;
using Graphs = std::vector<QxGraph*>;

inline Edges edgesOf(const QxDList* list) {
    return objectsOf<QxEdge>(*list);
}

}  // namespace qxtest
