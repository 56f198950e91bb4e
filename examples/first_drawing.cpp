// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <iostream>

#include "qx/qxdraw.h"

struct Reporter : QxDrawingChangeListener {
    using QxDrawingChangeListener::drawingChanged;
    void drawingChanged(QxDrawingChangeEventData* data) override {
        std::cout << "now at " << data->newCenter().x() << ", " << data->newCenter().y() << "\n";
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
    factory.pEventManager()->addDrawingChangeListener(graph, &reporter, NodeMoved);
    b->moveTo(200, 300, 1);
    std::cout << "the edge leaves a at " << edge->ntFromX() << ", " << edge->ntFromY() << "\n";
    std::cout << "the drawing is " << graph->pBoundingRect()->height() << " high\n";
    drawing->vRelease();
}
