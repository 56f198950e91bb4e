// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <utility>
#include <vector>

#include "drawing/DrawingTesting.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxPNode.h"
#include "qx/events/QxComplexityChangeEventData.h"
#include "qx/events/QxComplexityChangeListener.h"

namespace qxtest {

/// Keeps what it hears, and may answer each event with an edit.
class ComplexityRecorder : public QxComplexityChangeListener {
public:
    using Heard = std::vector<std::pair<std::int32_t, const QxObject*>>;

    using QxComplexityChangeListener::complexityChanged;
    void complexityChanged(QxComplexityChangeEventData* data) override {
        heard.emplace_back(data->type(), data->pSource());
        if (react) {
            react();
        }
    }
    Heard take() { return std::exchange(heard, {}); }

    Heard heard;
    std::function<void()> react;
};

template <class List, class T>
List listOf(std::initializer_list<T*> objects) {
    List list;
    for (T* object : objects) {
        list.appendObject(object);
    }
    return list;
}

inline QxDNodeDList nodeList(std::initializer_list<QxDNode*> nodes) {
    return listOf<QxDNodeDList>(nodes);
}

inline QxDEdgeDList edgeList(std::initializer_list<QxDEdge*> edges) {
    return listOf<QxDEdgeDList>(edges);
}

inline std::pair<std::int32_t, std::int32_t> placeOf(const QxGNode* node) {
    return {node->iX(), node->iY()};
}

/// The place of the first bend.
inline std::pair<std::int32_t, std::int32_t> bendOf(const QxDEdge* edge) {
    QxPNodeDList bends;
    edge->buildPathNodeList(bends);
    return placeOf(static_cast<const QxPNode*>(bends.pFirstObject()));
}

using DNodes = std::vector<QxDNode*>;
using DEdges = std::vector<QxDEdge*>;

/// A graph, a folder in it and an empty graph to fold into; what changes in complexity is recorded.
struct FoldableDrawing {
    FoldableDrawing()
        : manager(factory.newDGraphManager()),
          graph(manager->addGraph(0)),
          folder(addNode(500, 500)),
          foldGraph(manager->addGraph(0)) {
        factory.pEventManager()->addComplexityChangeListener(manager.get(), &events);
    }
    QxDNode* addNode(std::int32_t x, std::int32_t y, QxDGraph* in = nullptr) {
        return (in != nullptr ? in : graph)->addNodeWithCoordinates(x, y, 10, 10, 1, 0);
    }
    QxDEdge* addEdge(QxDNode* source, QxDNode* target) {
        return manager->addEdge(source, target, 0);
    }
    QxDEdge* addBentEdge(QxDNode* source, QxDNode* target, std::int32_t x, std::int32_t y) {
        QxDEdge* edge = addEdge(source, target);
        edge->addBend(edge->pTargetOrPathEdge(), QxPoint(x, y), 1);
        return edge;
    }
    QxDEdge* addDisconnected(QxDNode* source, QxDNode* target) {
        QxDEdge* edge = addEdge(source, target);
        edge->disconnect();
        return edge;
    }
    QxDEdge* addDeactivated(QxDNode* source, QxDNode* target) {
        QxDEdge* edge = addEdge(source, target);
        edge->deactivate();
        return edge;
    }
    int fold(std::initializer_list<QxDNode*> nodes, int keepHidden = 0) {
        const QxDNodeDList list = nodeList(nodes);
        return graph->fold(folder, foldGraph, &list, nullptr, nullptr, keepHidden);
    }
    void hide(std::initializer_list<QxDNode*> nodes) {
        const QxDNodeDList list = nodeList(nodes);
        nodes.begin()[0]->pOwnerGraph()->hide(&list, nullptr, nullptr, nullptr);
    }
    void hide(std::initializer_list<QxDEdge*> edges) {
        const QxDEdgeDList list = edgeList(edges);
        edges.begin()[0]->pOwnerGraph()->hide(nullptr, &list, nullptr, nullptr);
    }

    QxFactory factory;
    ComplexityRecorder events;
    Ref<QxDGraphManager> manager;
    QxDGraph* graph;
    QxDNode* folder;
    QxDGraph* foldGraph;
};

}  // namespace qxtest
