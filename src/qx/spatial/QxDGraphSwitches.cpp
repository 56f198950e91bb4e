// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// The switches of the spatial index. A graph starts without one; the answers here are those of a
// graph without one until it can be built.

#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"

int QxDGraph::useQuadTree() const {
    const QxDGraphManager* manager = pOwnerGraphManager();
    return fileReadRunning() != 0 || (manager != nullptr && manager->isReading() != 0) ? 0 : 1;
}

int QxDGraph::useQuadTree(int) {
    return canUseQuadTree();
}

int QxDGraph::canUseQuadTree() const {
    return 0;
}

int QxDGraph::needsUpdateQuadTree() const {
    return 0;
}

void QxDGraph::disableQuadTree(int disable) {
    if (disable == 0) {
        updateVisiblePartOfEdges();
    }
}

void QxDGraph::disableQuadTreeUpdates(int) {}

int QxDGraph::disableQuadTreeUpdates() const {
    return 1;
}

int QxDGraph::isIgnoredGeometryChanges() const {
    return 1;
}

void QxDGraph::ignoreGeometryChanges(int) {}
