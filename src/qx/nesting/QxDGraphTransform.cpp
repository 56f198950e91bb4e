// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// From graph to graph through the nesting: each nested graph's transform maps its coordinates into
// those of the graph around it.

#include <cstddef>

#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDGraphManager.h"
#include "qx/drawing/QxDNode.h"
#include "qx/foundation/graph/QxChildGraphForest.h"
#include "qx/nesting/internal/NestingMove.h"

namespace {

QxPoint rounded(const QxDTuple& p) {
    return {qx::floorHalfUp(p.x()), qx::floorHalfUp(p.y())};
}

QxDTuple exact(const QxPoint& p) {
    return {1.0 * p.x(), 1.0 * p.y()};
}

/// x' = x * scale + offset on each axis.
struct Coefficients {
    double offsetX = 0.0;
    double scaleX = 1.0;
    double offsetY = 0.0;
    double scaleY = 1.0;

    /// What comes of applying these first and then `step`.
    void follow(const QxTransform& step) {
        QxDTuple offset;
        step.transformPoint(QxDTuple(offsetX, offsetY), offset);
        offsetX = offset.x();
        offsetY = offset.y();
        scaleX *= step.scaleX();
        scaleY *= step.scaleY();
    }
    Coefficients inverse() const {
        return {-offsetX / scaleX, 1.0 / scaleX, -offsetY / scaleY, 1.0 / scaleY};
    }
};

/// The graph whose coordinates those of `graph` are mapped into; null when it is nested nowhere.
const QxDGraph* outward(const QxDGraph* graph) {
    return graph->pNestedWithinGraph();
}

/// Runs `act` with each graph from `graph` outward whose transform leads toward `last`, and tells
/// whether they reach it.
template <class Act>
int climb(const QxDGraph* graph, const QxDGraph* last, const Act& act) {
    while (graph != last && graph != nullptr) {
        const QxDGraph* const next = outward(graph);
        if (next == nullptr) {
            return 0;
        }
        act(*graph);
        graph = next;
    }
    return graph == last ? 1 : 0;
}

/// The same from `last` inward, outermost first. The way is remembered piece by piece, so that any
/// depth does without allocation and with little stack.
template <class Act>
int descend(const QxDGraph* graph, const QxDGraph* last, const Act& act) {
    constexpr std::size_t PieceLength = 64;
    const QxDGraph* piece[PieceLength];
    std::size_t length = 0;
    int reached = -1;
    while (reached < 0) {
        const QxDGraph* const next = graph != last ? outward(graph) : nullptr;
        if (next == nullptr) {
            reached = graph == last ? 1 : 0;
        } else {
            piece[length++] = graph;
            graph = next;
            if (length == PieceLength) {
                reached = descend(graph, last, act);
            }
        }
    }
    while (length > 0) {
        act(*piece[--length]);
    }
    return reached;
}

}  // namespace

QxDNode* QxDGraph::pParentNode() const {
    return static_cast<QxDNode*>(QxGraph::pParentNode());
}

QxDNode* QxDGraph::pNestedWithinNode() const {
    QxDNode* parent = pParentNode();
    return parent != nullptr && parent->expanded() != 0 ? parent : nullptr;
}

QxDGraph* QxDGraph::pNestedWithinGraph() const {
    const QxDNode* node = pNestedWithinNode();
    return node != nullptr ? node->pOwnerGraph() : nullptr;
}

QxDGraph* QxDGraph::pAnchorGraph() const {
    const QxDGraphManager* manager = pOwnerGraphManager();
    return manager != nullptr ? manager->pAnchorGraph() : nullptr;
}

int QxDGraph::isAnchorGraph() const {
    return pAnchorGraph() == this ? 1 : 0;
}

int QxDGraph::expandedTransformPoint(const QxDGraph* graph, QxPoint& point) const {
    QxDTuple p = exact(point);
    const int reached =
        climb(this, graph, [&](const QxDGraph& g) { g.m_transform.transformPoint(p, p); });
    point = rounded(p);
    return reached;
}

int QxDGraph::expandedTransformRect(const QxDGraph* graph, QxRect& rect) const {
    QxPoint lower = rect.bottomLeft();
    QxPoint upper = rect.topRight();
    expandedTransformPoint(graph, lower);
    const int reached = expandedTransformPoint(graph, upper);
    rect.setCorners(lower.x(), lower.y(), upper.x(), upper.y());
    return reached;
}

int QxDGraph::expandedTransformSize(const QxDGraph* graph, QxSize& size) const {
    QxDTuple s(1.0 * size.width(), 1.0 * size.height());
    const int reached =
        climb(this, graph, [&](const QxDGraph& g) { g.m_transform.transformSize(s, s); });
    const QxPoint result = rounded(s);
    size.resize(result.x(), result.y());
    return reached;
}

int QxDGraph::inverseExpandedTransformPoint(const QxDGraph* graph, QxPoint& point) const {
    QxDTuple p = exact(point);
    const int reached =
        descend(this, graph, [&](const QxDGraph& g) { g.m_transform.inverseTransformPoint(p, p); });
    point = rounded(p);
    return reached;
}

int QxDGraph::inverseExpandedTransformRect(const QxDGraph* graph, QxRect& rect) const {
    QxPoint lower = rect.bottomLeft();
    QxPoint upper = rect.topRight();
    inverseExpandedTransformPoint(graph, lower);
    const int reached = inverseExpandedTransformPoint(graph, upper);
    rect.setCorners(lower.x(), lower.y(), upper.x(), upper.y());
    return reached;
}

int QxDGraph::inverseExpandedTransformSize(const QxDGraph* graph, QxSize& size) const {
    QxDTuple s(1.0 * size.width(), 1.0 * size.height());
    const int reached =
        descend(this, graph, [&](const QxDGraph& g) { g.m_transform.inverseTransformSize(s, s); });
    const QxPoint result = rounded(s);
    size.resize(result.x(), result.y());
    return reached;
}

namespace {

/// Runs a mapping toward the anchor graph: 0 without an anchor, nothing to do at the anchor itself.
/// The intergraph shares the anchor graph's coordinates.
template <class Value>
int toAnchor(const QxDGraph& graph, Value& value,
             int (QxDGraph::*map)(const QxDGraph*, Value&) const) {
    const QxDGraph* anchor = graph.pAnchorGraph();
    if (anchor == nullptr) {
        return 0;
    }
    return anchor == &graph || graph.isIntergraph() != 0 ? 1 : (graph.*map)(anchor, value);
}

}  // namespace

int QxDGraph::expandedTransformPoint(QxPoint& point) const {
    return toAnchor<QxPoint>(*this, point, &QxDGraph::expandedTransformPoint);
}

int QxDGraph::expandedTransformRect(QxRect& rect) const {
    return toAnchor<QxRect>(*this, rect, &QxDGraph::expandedTransformRect);
}

int QxDGraph::expandedTransformSize(QxSize& size) const {
    return toAnchor<QxSize>(*this, size, &QxDGraph::expandedTransformSize);
}

int QxDGraph::inverseExpandedTransformPoint(QxPoint& point) const {
    return toAnchor<QxPoint>(*this, point, &QxDGraph::inverseExpandedTransformPoint);
}

int QxDGraph::inverseExpandedTransformRect(QxRect& rect) const {
    return toAnchor<QxRect>(*this, rect, &QxDGraph::inverseExpandedTransformRect);
}

int QxDGraph::inverseExpandedTransformSize(QxSize& size) const {
    return toAnchor<QxSize>(*this, size, &QxDGraph::inverseExpandedTransformSize);
}

namespace {

/// The whole climb; `reached` (may be null) tells whether it led to `last`.
Coefficients coefficients(const QxDGraph* graph, const QxDGraph* last, int* reached = nullptr) {
    Coefficients c;
    const int arrived = climb(graph, last, [&](const QxDGraph& g) { c.follow(*g.pTransform()); });
    if (reached != nullptr) {
        *reached = arrived;
    }
    return c;
}

void give(const Coefficients& c, double& offsetX, double& scaleX, double& offsetY, double& scaleY) {
    offsetX = c.offsetX;
    scaleX = c.scaleX;
    offsetY = c.offsetY;
    scaleY = c.scaleY;
}

}  // namespace

int QxDGraph::getExpandedTransformCoef(const QxDGraph* graph, double& offsetX, double& scaleX,
                                       double& offsetY, double& scaleY) const {
    int reached = 0;
    give(coefficients(this, graph, &reached), offsetX, scaleX, offsetY, scaleY);
    return reached;
}

int QxDGraph::getInverseExpandedTransformCoef(const QxDGraph* graph, double& offsetX,
                                              double& scaleX, double& offsetY,
                                              double& scaleY) const {
    int reached = 0;
    give(coefficients(this, graph, &reached).inverse(), offsetX, scaleX, offsetY, scaleY);
    return reached;
}

int QxDGraph::getTransformCoef(const QxDGraph* graph, double& offsetX, double& scaleX,
                               double& offsetY, double& scaleY) const {
    give(Coefficients(), offsetX, scaleX, offsetY, scaleY);
    if (graph == this) {
        return 1;
    }
    const QxDGraphManager* manager = pOwnerGraphManager();
    if (graph == nullptr || manager == nullptr || graph->pOwnerGraphManager() != manager) {
        return 0;
    }
    // The intergraph shares the anchor graph's coordinates.
    const QxDGraph* here = isIntergraph() != 0 ? manager->pAnchorGraph() : this;
    const QxDGraph* there = graph->isIntergraph() != 0 ? manager->pAnchorGraph() : graph;
    const QxDGraph* common = manager->pNearestCommonAncestorGraph(here, there);
    if (common == nullptr) {
        return 0;
    }
    Coefficients c = coefficients(there, common);
    const Coefficients down = coefficients(here, common).inverse();
    c.offsetX = c.offsetX * down.scaleX + down.offsetX;
    c.offsetY = c.offsetY * down.scaleY + down.offsetY;
    c.scaleX *= down.scaleX;
    c.scaleY *= down.scaleY;
    give(c, offsetX, scaleX, offsetY, scaleY);
    return 1;
}

int QxDGraph::transformToGraphPoint(const QxDGraph* graph, QxPoint& point) const {
    Coefficients c;
    if (graph == nullptr ||
        graph->getTransformCoef(this, c.offsetX, c.scaleX, c.offsetY, c.scaleY) == 0) {
        return 0;
    }
    point.moveTo(qx::floorHalfUp(point.x() * c.scaleX + c.offsetX),
                 qx::floorHalfUp(point.y() * c.scaleY + c.offsetY));
    return 1;
}

int QxDGraph::transformToGraphRect(const QxDGraph* graph, QxRect& rect) const {
    QxPoint lower = rect.bottomLeft();
    QxPoint upper = rect.topRight();
    if (transformToGraphPoint(graph, lower) == 0 || transformToGraphPoint(graph, upper) == 0) {
        return 0;
    }
    rect.setCorners(lower.x(), lower.y(), upper.x(), upper.y());
    return 1;
}

void QxDGraph::vUpdateTransform(const QxTransform& transform) {
    if (!(transform == m_transform)) {
        const qx::internal::NestingMove move(*this);
        m_transform = transform;
    }
    QxDGraphManager* manager = pOwnerGraphManager();
    QxDGraph* between =
        manager != nullptr && isAnchorGraph() != 0 ? manager->pQueryIntergraph() : nullptr;
    if (between != nullptr) {
        between->vUpdateTransform(transform);
    }
}

void QxDGraph::updateTransform() {
    if (nested() == 0) {
        return;
    }
    QxRect margins;
    ntMarginBoundingRect(margins);
    const QxRect view = ntViewRectInNodeCoordSystem();
    QxTransform placed = m_transform;
    placed.sourceOrigin(exact(margins.center()));
    placed.targetOrigin(exact(view.center()));
    vUpdateTransform(placed);
}

QxRect QxDGraph::viewAreaOf(const QxRect& box) const {
    const std::int32_t width = box.width();
    const std::int32_t height = box.height();
    return {qx::saturatingAdd(box.left(), m_nestedViewLeft.spacing(width)),
            qx::saturatingAdd(box.bottom(), m_nestedViewBottom.spacing(height)),
            qx::saturatingSub(box.right(), m_nestedViewRight.spacing(width)),
            qx::saturatingSub(box.top(), m_nestedViewTop.spacing(height))};
}

QxRect QxDGraph::ntViewRectInNodeCoordSystem() const {
    const QxDNode* node = pNestedWithinNode();
    return node != nullptr ? viewAreaOf(*node->pIRect()) : QxRect();
}

int QxDGraph::getViewRect(QxRect& rect, int inOwnGraph) const {
    const int visible = isVisible();
    const QxDNode* node = pNestedWithinNode();
    if (inOwnGraph != 0 || visible == 0) {
        rect = ntViewRect();
    } else if (node == nullptr || isAnchorGraph() != 0) {
        getMarginBoundingRect(rect, 0);
    } else {
        QxRect box;
        node->getBoundingRect(box, 0);
        rect = viewAreaOf(box);
    }
    return visible;
}

QxRect QxDGraph::ntViewRect() const {
    QxRect rect;
    const QxDNode* node = pNestedWithinNode();
    if (node == nullptr || isAnchorGraph() != 0) {
        ntMarginBoundingRect(rect);
    } else {
        rect = ntViewRectInNodeCoordSystem();
        inverseExpandedTransformRect(node->pOwnerGraph(), rect);
    }
    return rect;
}
