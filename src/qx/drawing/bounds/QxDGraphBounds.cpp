// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// The bounds of a graph, kept up to date change by change.
//
// A change reports what its objects covered before and after. Growth is a union. Only what touched
// a side of the bounds and goes away can make them shrink; then they are computed anew. That costs
// no walk: nodes and bends keep what they cover in a tree of unions (internal/ExtentTree.h), whose
// root is the answer. Straight edges need no entry of their own, since they end within the
// rectangles of their nodes. Only the intergraph, which holds no nodes and counts visible edges
// alone, is computed by a walk over its edges.

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/bounds/internal/ExtentTree.h"
#include "qx/events/internal/FireDrawingChange.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/foundation/util/internal/KeepAlive.h"

using qx::internal::each;

namespace {

/// The union of what is added one by one.
class Union {
public:
    explicit Union(QxRect& rect) : m_rect(rect) {}
    void add(const QxRect& rect) {
        if (m_any) {
            m_rect.updateBounds(&rect);
        } else {
            m_rect = rect;
            m_any = true;
        }
    }
    int any() const { return m_any ? 1 : 0; }

private:
    QxRect& m_rect;
    bool m_any = false;
};

struct Touching {
    Touching(const QxRect& r, const QxRect& bounds)
        : left(r.left() <= bounds.left()),
          right(r.right() >= bounds.right()),
          top(r.top() >= bounds.top()),
          bottom(r.bottom() <= bounds.bottom()) {}
    int count() const { return left + right + top + bottom; }
    /// Whether a touched side would move inward if `to` took the place of `from`.
    bool retreats(const QxRect& from, const QxRect& to) const {
        return (left && from.left() < to.left()) || (right && to.right() < from.right()) ||
               (bottom && from.bottom() < to.bottom()) || (top && to.top() < from.top());
    }

    bool left;
    bool right;
    bool top;
    bool bottom;
};

}  // namespace

int QxDGraph::calculateNodeBoundsWithLabelsAndConnectors(QxRect& rect) const {
    Union all(rect);
    for (const QxDNode* node : each<QxDNode>(*pNodeList())) {
        QxRect one;
        node->ntBoundingRectWithSubObjects(one, 1, 1, 1);
        all.add(one);
    }
    return all.any();
}

int QxDGraph::edgeBounds(QxRect& rect, int labels) const {
    Union all(rect);
    for (const QxDEdge* edge : each<QxDEdge>(*pEdgeList())) {
        if (isIntergraph() != 0 && edge->isVisible() == 0) {
            continue;
        }
        QxRect one;
        if (labels != 0) {
            edge->ntBoundingRectWithPathNodesAndLabels(one);
        } else {
            edge->ntBoundingRectWithPathNodes(one);
        }
        all.add(one);
    }
    return all.any();
}

int QxDGraph::calculateEdgeBoundsWithLabels(QxRect& rect) const {
    return edgeBounds(rect, 1);
}

int QxDGraph::calculateEdgeBoundsWithoutLabels(QxRect& rect) const {
    return edgeBounds(rect, 0);
}

int QxDGraph::calculateGraphBounds(QxRect& rect) const {
    if (isIntergraph() != 0) {
        return edgeBounds(rect, 1);
    }
    return m_extents->unite(rect) ? 1 : 0;
}

int QxDGraph::calculateAndReturnGraphBounds(QxRect& rect) const {
    rect = QxRect();
    return calculateGraphBounds(rect);
}

int QxDGraph::calculateGraphBoundsWithoutEdgeLabels(QxRect& rect) const {
    // Edge labels do not exist: what they would add is not there.
    return calculateAndReturnGraphBounds(rect);
}

void QxDGraph::calculateGraphBounds(int fit) {
    QxRect rect(0, 0);
    setFlag(qx::flags::GraphBoundsInitialized, calculateGraphBounds(rect));
    vUpdateBoundingRect(rect, fit);
}

void QxDGraph::refreshGraphBounds() {
    if (needsUpdateGraphBounds() != 0) {
        calculateGraphBounds(0);
    }
}

void QxDGraph::vUpdateBoundingRect(const QxRect& rect, int) {
    if (rect == m_bounds) {
        return;
    }
    const QxRect old = m_bounds;
    m_bounds = rect;
    qx::internal::fireDrawingChange(*this, GraphBoundsChanged, [&] {
        return new QxDrawingChangeEventData(this, &old, &m_bounds);
    });
}

void QxDGraph::ntUpdatedBoundingRect(QxRect& rect) const {
    rect = boundsInitialized() != 0 ? m_bounds : QxRect();
}

void QxDGraph::ntBoundingRect(QxRect& rect) const {
    if (isVisible() != 0) {
        ntUpdatedBoundingRect(rect);
    } else {
        rect = QxRect();
    }
}

void QxDGraph::ntUpdatedBoundingRectWithIntergraphEdges(QxRect& rect) const {
    Union all(rect);
    if (boundsInitialized() != 0) {
        all.add(m_bounds);
    }
    const QxDGraphManager* manager = pOwnerGraphManager();
    const QxDGraph* between =
        manager != nullptr && isAnchorGraph() != 0 ? manager->pQueryIntergraph() : nullptr;
    if (between != nullptr && between->boundsInitialized() != 0) {
        all.add(between->m_bounds);
    }
    if (all.any() == 0) {
        rect = QxRect();
    }
}

int QxDGraph::getBoundingRect(QxRect& rect, int inOwnGraph) const {
    ntBoundingRectWithIntergraphEdges(rect);
    const int visible = isVisible();
    if (inOwnGraph == 0 && visible != 0) {
        expandedTransformRect(rect);
    }
    return visible;
}

int QxDGraph::needsUpdateGraphBounds() const {
    return fileReadRunning() != 0 ? 0 : hasFlag(qx::flags::GraphNeedsBounds);
}

int QxDGraph::needsUpdateGraphBounds(int value) {
    setFlag(qx::flags::GraphNeedsBounds, value);
    m_editedByListener = false;
    return value;
}

int QxDGraph::fileReadRunning(int value) {
    const int running = QxGraph::fileReadRunning(value);
    refreshGraphBounds();
    return running;
}

int QxDGraph::disableGraphBounds(int disable, int fit) {
    if (disable != 0) {
        needsUpdateGraphBounds(0);
    } else if (hasFlag(qx::flags::GraphNeedsBounds) == 0) {
        // Switched on first: a listener that is told of the new bounds may edit the graph.
        const qx::internal::KeepAlive alive(*this);
        needsUpdateGraphBounds(1);
        calculateGraphBounds(fit);
    }
    return disable;
}

void QxDGraph::updateGraphBoundsOnInsert(const QxRect& rect) {
    if (boundsInitialized() == 0) {
        setFlag(qx::flags::GraphBoundsInitialized, 1);
        vUpdateBoundingRect(rect, 0);
        return;
    }
    QxRect grown = m_bounds;
    if (grown.updateBounds(&rect) != 0) {
        vUpdateBoundingRect(grown, 0);
    }
}

void QxDGraph::updateGraphBoundsOnRemove(const QxRect& rect) {
    const Touching touches(rect, m_bounds);
    if (touches.count() == 0) {
        return;
    }
    QxRect left;
    if (calculateGraphBounds(left) == 0) {
        setFlag(qx::flags::GraphBoundsInitialized, 0);
        QxRect none = m_bounds;
        none.resize(0, 0);
        vUpdateBoundingRect(none, 1);
    } else if (touches.count() > 1) {
        calculateGraphBounds(0);
    } else {
        QxRect shrunk = m_bounds;
        const int moved = touches.left    ? updateGraphBoundsLeftSide(shrunk)
                          : touches.right ? updateGraphBoundsRightSide(shrunk)
                          : touches.top   ? updateGraphBoundsTopSide(shrunk)
                                          : updateGraphBoundsBottomSide(shrunk);
        if (moved != 0) {
            vUpdateBoundingRect(shrunk, 0);
        }
    }
}

int QxDGraph::updateGraphBoundsLeftSide(QxRect& rect) const {
    QxRect all;
    const bool inward = calculateGraphBounds(all) != 0 && all.left() > rect.left();
    if (inward) {
        rect.setLeftRight(all.left(), rect.right());
    }
    return inward ? 1 : 0;
}

int QxDGraph::updateGraphBoundsRightSide(QxRect& rect) const {
    QxRect all;
    const bool inward = calculateGraphBounds(all) != 0 && all.right() < rect.right();
    if (inward) {
        rect.setLeftRight(rect.left(), all.right());
    }
    return inward ? 1 : 0;
}

int QxDGraph::updateGraphBoundsTopSide(QxRect& rect) const {
    QxRect all;
    const bool inward = calculateGraphBounds(all) != 0 && all.top() < rect.top();
    if (inward) {
        rect.setBottomTop(rect.bottom(), all.top());
    }
    return inward ? 1 : 0;
}

int QxDGraph::updateGraphBoundsBottomSide(QxRect& rect) const {
    QxRect all;
    const bool inward = calculateGraphBounds(all) != 0 && all.bottom() > rect.bottom();
    if (inward) {
        rect.setBottomTop(all.bottom(), rect.top());
    }
    return inward ? 1 : 0;
}

void QxDGraph::getGraphBoundsOnMoveResize(const QxRect& oldRect, const QxRect& newRect,
                                          QxRect& rect) const {
    if (Touching(oldRect, m_bounds).retreats(oldRect, newRect)) {
        rect = QxRect(0, 0);
        calculateGraphBounds(rect);
    } else {
        rect = m_bounds;
        rect.updateBounds(&newRect);
    }
}

void QxDGraph::updateGraphBoundsOnMoveResize(const QxRect& oldRect, const QxRect& newRect) {
    if (boundsInitialized() == 0 || Touching(oldRect, m_bounds).retreats(oldRect, newRect)) {
        calculateGraphBounds(0);
    } else {
        QxRect grown = m_bounds;
        if (grown.updateBounds(&newRect) != 0) {
            vUpdateBoundingRect(grown, 0);
        }
    }
}

void QxDGraph::noteEditByListener() {
    const QxAFactory* factory = pFactory();
    const QxEventManager* manager = factory != nullptr ? factory->pQueryEventManager() : nullptr;
    if (manager != nullptr && manager->isTelling() != 0) {
        m_editedByListener = true;
    }
}
