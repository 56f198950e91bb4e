// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// State and ends of an edge: what the graph layer does with the edge, its path follows. Copies.

#include <utility>

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/drawing/bounds/internal/GeometryBracket.h"
#include "qx/foundation/util/internal/KeepAlive.h"

using qx::internal::KeepAlive;
using qx::internal::replaceEdge;

int QxDEdge::vConnect() {
    int connected = 0;
    replaceEdge(*this, [&] {
        connected = QxGEdge::vConnect();
        if (connected != 0 && isActive()) {
            connectPath();
        }
    });
    return connected;
}

int QxDEdge::disconnect() {
    int disconnected = 0;
    replaceEdge(*this, [&] {
        disconnected = QxGEdge::disconnect();
        if (disconnected != 0 && !isActive()) {
            disconnectPath();
        }
    });
    return disconnected;
}

int QxDEdge::deactivate() {
    if (!isActive()) {
        return QxGEdge::deactivate();
    }
    replaceEdge(*this, [&] {
        QxGEdge::deactivate();
        if (!isActive()) {
            disconnectPath();
        }
    });
    return 1;
}

int QxDEdge::activate() {
    if (deactivated() == 0) {
        return 1;
    }
    int active = 0;
    replaceEdge(*this, [&] {
        active = QxGEdge::activate();
        if (isActive()) {
            connectPath();
        }
    });
    return active;
}

int QxDEdge::changeEnd(QxNode* node, bool atSource) {
    const int changed = atSource ? QxGEdge::changeSourceNodeWithoutConnect(node)
                                 : QxGEdge::changeTargetNodeWithoutConnect(node);
    QxPEdge* segment = atSource ? m_sourcePathEdge : m_targetPathEdge;
    if (changed == 0 || segment == nullptr) {
        return changed;
    }
    if (atSource) {
        segment->changeSourceNodeWithoutConnect(node);
    } else {
        segment->changeTargetNodeWithoutConnect(node);
    }
    return 1;
}

int QxDEdge::changeSourceNodeWithoutConnect(QxNode* node) {
    return node == pSourceNode() ? 1 : changeEnd(node, true);
}

int QxDEdge::changeTargetNodeWithoutConnect(QxNode* node) {
    return node == pTargetNode() ? 1 : changeEnd(node, false);
}

int QxDEdge::reverse() {
    if (pSourceNode() == nullptr || pTargetNode() == nullptr) {
        return 0;
    }
    replaceEdge(*this, [&] {
        const Path path = collectPath();
        QxGEdge::reverse();
        for (QxPEdge* segment : path.segments) {
            segment->reverse();
        }
        std::swap(m_sourcePathEdge, m_targetPathEdge);
        actOnEndObjectChange();
    });
    return 1;
}

void QxDEdge::nullEndNodes() {
    disconnectPath();
    if (m_sourcePathEdge != nullptr) {
        attachPath(nullptr, nullptr);
    }
    QxGEdge::nullEndNodes();
}

void QxDEdge::emptyTopology() {
    discardAllBends();
}

void QxDEdge::duplicateTopology(QxEdge* source) {
    if (source == nullptr || source == this) {
        return;
    }
    const KeepAlive alive(*this);
    const KeepAlive sourceAlive(*source);
    if (source->levelNumber() == levelNumber()) {
        discardAllBends();
        replaceEdge(*this, [&] { duplicatePath(*static_cast<QxDEdge*>(source)); });
    }
    QxGEdge::duplicateTopology(source);
}

void QxDEdge::copyEdge(const QxEdge* source, int deep) {
    if (source->levelNumber() != levelNumber()) {
        QxGEdge::copyEdge(source, deep);
        return;
    }
    const auto& drawn = *static_cast<const QxDEdge*>(source);
    const KeepAlive alive(*this);
    const KeepAlive sourceAlive(const_cast<QxDEdge&>(drawn));  // counting is no change
    if (deep != 0) {
        discardAllBends();
    }
    replaceEdge(*this, [&] {
        setFlag(qx::flags::EdgeClipSource, drawn.clipSourceSide());
        setFlag(qx::flags::EdgeClipTarget, drawn.clipTargetSide());
        if (deep != 0) {
            duplicatePath(drawn);
        }
        QxGEdge::copyEdge(source, deep);
        copyDiagramming(drawn);
        actOnEndObjectChange();
    });
}

void QxDEdge::copyDiagramming(const QxDEdge& source) {
    const QxDGraph* graph = source.pOwnerGraph();
    const QxDGraphManager* manager = graph != nullptr ? graph->pOwnerGraphManager() : nullptr;
    if (manager != nullptr && manager->storeClones() != 0) {
        const_cast<QxDEdge&>(source).pClonedEdge(this);
    }
    m_clonedEdge = nullptr;
    m_status = source.m_status;
    internalOrthogonalRouting(source.internalOrthogonalRouting());
}

void QxDEdge::duplicatePath(const QxDEdge& source) {
    destroyPath();
    const Path path = source.collectPath();
    QxNode* from = pSourceNode();
    for (std::size_t i = 0; i < path.segments.size(); ++i) {
        QxNode* to = pTargetNode();
        if (i < path.bends.size()) {
            QxPNode* bend = vNewPNode();
            bend->copyNode(path.bends[i], 1);
            to = insertPNode(bend);
        }
        QxPEdge* segment = vNewPEdge();
        segment->copyEdge(path.segments[i], 1);
        link(segment, from, to);
        from = to;
    }
    if (path.segments.empty() && from != nullptr) {
        attachPath(from, pTargetNode());
    }
}
