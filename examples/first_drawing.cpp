// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <iostream>

#include "qx/qxdraw.h"

struct Reporter : QxDrawingChangeListener {
    using QxDrawingChangeListener::drawingChanged;
    void drawingChanged(QxDrawingChangeEventData* data) override {
        const QxRect* now = data->pNewBounds();
        std::cout << (data->pSourceNode() != nullptr ? "node" : "graph") << " now at (" << now->x()
                  << ", " << now->y() << "), " << now->width() << " x " << now->height() << "\n";
    }
};

int main() {
    Reporter reporter;
    QxFactory factory;
    QxDGraphManager* drawing = factory.newDGraphManager();
    QxDGraph* graph = drawing->addGraph(0);
    QxDNode* a = graph->addNodeWithCoordinates(0, 0, 40, 40, 1, 0);
    QxDNode* b = graph->addNodeWithCoordinates(200, 0, 60, 40, 1, 0);
    QxDEdge* edge = graph->addEdge(a, b, 0);

    const int heard = NodeMoved | GraphBoundsChanged;
    factory.pEventManager()->addDrawingChangeListener(graph, &reporter, heard);
    b->moveTo(QxPoint(200, 300), 1);
    std::cout << "the edge is now " << edge->edgeLength() << " long\n";
    factory.pEventManager()->removeAllDrawingChangeListeners(graph);
    drawing->vRelease();
}
