// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Moves and resizes of drawing nodes. The raw steps change the rectangle, outdate the incident
// edges and fire; the full ones bring the bounds of the graph up to date around them, and let what
// is attached follow.

#include <algorithm>

#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/bounds/internal/Coverage.h"
#include "qx/drawing/bounds/internal/ShiftedRect.h"
#include "qx/drawing/internal/AskedCoordinates.h"
#include "qx/events/internal/FireDrawingChange.h"
#include "qx/update/internal/MoveReactions.h"

using qx::internal::shiftedRect;

namespace {

/// A node's rectangle is never inverted: sizes below 0 count as 0.
QxSize usableSize(const QxSize& size) {
    return {std::max(size.width(), 0), std::max(size.height(), 0)};
}

void fireBoundsChange(QxDNode& node, QxDrawingChangeEventTypeEnum type, const QxRect& oldRect) {
    qx::internal::fireDrawingChange(
        node, type, [&] { return new QxDrawingChangeEventData(&node, &oldRect, node.pIRect()); });
}

}  // namespace

void QxDNode::placeRect(const QxRect& rect) {
    m_rect = rect;
    qx::internal::Coverage::changed(*this);
    invalidateIncidentEdgeEndPoints();
}

void QxDNode::place(const QxPoint& center, const QxSize& size) {
    vMoveTo(center);
    vResizeAdjustConnectors(size);
    if (!(m_rect == shiftedRect(center, iSize()))) {
        vMoveTo(center);  // near the ends of the coordinate range the old size stuck out
    }
}

void QxDNode::vMoveTo(const QxPoint& center) {
    const QxRect oldRect = m_rect;
    placeRect(shiftedRect(center, iSize()));
    fireBoundsChange(*this, NodeMoved, oldRect);
}

void QxDNode::updateForDiagramming(const QxRect& rect) {
    const QxRect target = shiftedRect(rect.center(), usableSize(rect.size()));
    if (target == m_rect) {
        return;
    }
    const qx::internal::Ref alive(*this);
    qx::internal::withReactions(*this, [&] {
        if (!(target.size() == iSize())) {
            vResizeAdjustConnectors(target.size());
        }
        const QxPoint oldCenter = iCenter();
        vMoveTo(target.center());
        followWithNestedGraph(oldCenter);
    });
    updateTouchingBits();
}

void QxDNode::restoreMovedNode() {
    const qx::internal::Ref alive(*this);
    const QxPoint oldCenter = iCenter();
    moveBack();
    followWithNestedGraph(oldCenter);
}

int QxDNode::resize(const QxSize& size, int inOwnGraph) {
    if (expanded() != 0) {
        return 0;
    }
    QxSize newSize = size;
    if (qx::internal::fromAsked(*this, newSize, inOwnGraph) == 0) {
        return 0;
    }
    newSize = usableSize(newSize);
    const QxSize oldSize = iSize();
    if (newSize == oldSize) {
        return 1;
    }
    qx::internal::withReactions(*this, [&] {
        vResizeAdjustConnectors(newSize);
        actOnResize(oldSize);
    });
    return 1;
}

void QxDNode::vResize(const QxSize& size) {
    const QxDGraph* graph = pOwnerGraph();
    if (graph == nullptr || graph->fileReadRunning() == 0) {
        originalSize(usableSize(size));
    }
    const QxSize newSize = usableSize(size);
    if (newSize == iSize()) {
        return;
    }
    const QxRect oldRect = m_rect;
    placeRect(shiftedRect(iCenter(), newSize));
    if (graph == nullptr || graph->fileReadRunning() == 0) {
        const QxRect* atStart = pRectBeforeMove();
        const QxRect* before = pRectBeforeMoveForSelfLoops();
        actOnUpdateConnectors(atStart != nullptr ? *atStart : oldRect,
                              before != nullptr ? *before : oldRect);
    }
    fireBoundsChange(*this, NodeResized, oldRect);
}

void QxDNode::vResizeAdjustConnectors(const QxSize& size) {
    vResize(size);
}

void QxDNode::internalResize(const QxSize& size) {
    const QxSize newSize = usableSize(size);
    if (newSize == iSize()) {
        return;
    }
    const QxRect oldRect = m_rect;
    placeRect(shiftedRect(iCenter(), newSize));
    fireBoundsChange(*this, NodeResized, oldRect);
}

void QxDNode::postLayoutReset() {}

void QxDNode::actOnResize(const QxSize&) {}

QxSize QxDNode::originalSize(const QxSize& value) {
    m_originalWidth = value.width();
    m_originalHeight = value.height();
    return value;
}
