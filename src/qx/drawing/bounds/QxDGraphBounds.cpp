// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// The bounds of a graph.
//
// What the objects of a graph cover is kept in a tree of unions (internal/Coverage.h and
// ExtentTree.h), whose root is exact at every moment. While a change is being made the stored
// bounds rest; at its end they become what the root says. So growing, shrinking, and whatever
// listeners have done in the middle cost the same: reading the root, and one comparison.

#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/bounds/internal/Coverage.h"
#include "qx/drawing/bounds/internal/ExtentTree.h"
#include "qx/drawing/internal/Extras.h"
#include "qx/events/internal/FireDrawingChange.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/foundation/util/internal/Ref.h"
#include "qx/nesting/internal/MetaEdgeUpkeep.h"

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
    bool any() const { return left || right || top || bottom; }
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
    qx::internal::Coverage::refreshLabels(*this);
    return m_extents->unite(rect) ? 1 : 0;
}

int QxDGraph::calculateAndReturnGraphBounds(QxRect& rect) const {
    rect = QxRect();
    return calculateGraphBounds(rect);
}

int QxDGraph::calculateGraphBoundsWithoutEdgeLabels(QxRect& rect) const {
    const auto* extras = pQueryGraphExtras();
    if (extras == nullptr || extras->edgeLabels == 0) {
        return calculateAndReturnGraphBounds(rect);
    }
    rect = QxRect();
    Union all(rect);
    QxRect part;
    if (calculateNodeBoundsWithLabelsAndConnectors(part) != 0) {
        all.add(part);
    }
    if (calculateEdgeBoundsWithoutLabels(part) != 0) {
        all.add(part);
    }
    return all.any();
}

void QxDGraph::calculateGraphBounds(int fit) {
    if (isIntergraph() != 0) {
        qx::internal::Coverage::allChanged(*this);  // whoever asks may know what has come to show
    }
    QxRect rect(0, 0);
    setFlag(qx::flags::GraphBoundsInitialized, calculateGraphBounds(rect));
    vUpdateBoundingRect(rect, fit);
}

void QxDGraph::refreshGraphBounds() {
    if (keepsBounds()) {
        calculateGraphBounds(0);
    }
}

void QxDGraph::letGoOfBounds(const QxRect* reported) {
    if (--m_boundsHolds != 0) {
        return;
    }
    if (keepsBounds()) {
        settleBounds(reported);
    }
    if (isIntergraph() != 0) {
        qx::internal::MetaEdgeUpkeep::changeEnded(*this);
    }
}

bool QxDGraph::keepsBounds() const {
    return hasFlag(qx::flags::GraphNeedsBounds) != 0 && hasFlag(qx::flags::GraphResting) == 0 &&
           fileReadRunning() == 0;
}

void QxDGraph::settleBounds(const QxRect* reported) {
    QxRect rect = m_bounds;
    Union all(rect);
    if (QxRect covered; calculateGraphBounds(covered) != 0) {
        all.add(covered);
    }
    if (reported != nullptr) {
        all.add(*reported);
    }
    const int isCovered = all.any();
    const bool wasCovered = boundsInitialized() != 0;
    setFlag(qx::flags::GraphBoundsInitialized, isCovered);
    if (isCovered != 0) {
        vUpdateBoundingRect(rect, 0);
    } else if (wasCovered) {
        rect.resize(0, 0);
        vUpdateBoundingRect(rect, 1);
    }
}

void QxDGraph::vUpdateBoundingRect(const QxRect& rect, int fit) {
    if (rect == m_bounds) {
        return;
    }
    const qx::internal::Ref alive(*this);
    const QxRect old = m_bounds;
    m_bounds = rect;
    qx::internal::Coverage::labelsChanged(*this);  // they stand where the bounds put them
    if (isIntergraph() == 0) {
        refitAround(fit);
    } else if (QxDGraph* anchor = pAnchorGraph()) {
        anchor->refitAround(fit);  // whose margins hold the edges between graphs, too
    }
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
    return m_boundsHolds == 0 && keepsBounds() ? 1 : 0;
}

int QxDGraph::needsUpdateGraphBounds(int value) {
    setFlag(qx::flags::GraphNeedsBounds, value);
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
        const qx::internal::Ref alive(*this);
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
    if (Touching(rect, m_bounds).any() || m_extents->isEmpty()) {
        settleBounds();
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

bool QxDGraph::retreats(const QxRect& from, const QxRect& to) const {
    return Touching(from, m_bounds).retreats(from, to);
}

void QxDGraph::getGraphBoundsOnMoveResize(const QxRect& oldRect, const QxRect& newRect,
                                          QxRect& rect) const {
    if (retreats(oldRect, newRect)) {
        rect = QxRect(0, 0);
        calculateGraphBounds(rect);
    } else {
        rect = m_bounds;
        rect.updateBounds(&newRect);
    }
}

void QxDGraph::updateGraphBoundsOnMoveResize(const QxRect& oldRect, const QxRect& newRect) {
    if (boundsInitialized() != 0 && retreats(oldRect, newRect)) {
        settleBounds();
    } else {
        updateGraphBoundsOnInsert(newRect);
    }
}
