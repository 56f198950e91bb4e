// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Bundles: edges between the same two nodes, laid out on top of each other, side by side, or with a
// bend each.
//
// Side by side, every edge runs along the line between the centers of the nodes, shifted across it:
// by 0, +1, -1, +2, ... spacings for an odd number of edges, by +-1/2, +-3/2, ... for an even one.
// The spacing is what the graph asks for, or less, so that all fit into the narrower node. Where
// the shifted line meets the outlines lie calculated connectors; where it misses a node the edge
// runs from center to center. With a bend each, the bends lie across the middle of that line.
//
// Everything is in the coordinates of the path: those of the edge's graph, between graphs those of
// the anchor graph. An edge costs the same whatever the number of the others.

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/drawing/bundles/internal/Siblings.h"
#include "qx/drawing/clipping/internal/ShownShape.h"
#include "qx/drawing/connectors/internal/ConnectorPlace.h"
#include "qx/drawing/connectors/internal/RoutingDirection.h"
#include "qx/drawing/path/internal/TakeBends.h"
#include "qx/foundation/graph/internal/EachObject.h"

using qx::internal::Change;
using qx::internal::each;
using qx::internal::Ref;
using qx::internal::Siblings;
using qx::internal::Snapshot;

namespace {

/// The node at one end of an edge, as it is seen in the coordinates of the path.
struct EndNode {
    EndNode(QxDNode& endNode, bool isBetweenGraphs) : node(endNode), rect(*endNode.pIRect()) {
        graph = isBetweenGraphs ? node.pOwnerGraph() : nullptr;
        if (graph != nullptr) {
            graph->expandedTransformRect(rect);
        }
    }

    bool clip(QxPoint& from, const QxPoint& toward) const {
        return clip(qx::internal::shownShape(node), from, toward);
    }
    /// Where the way from the center to a point leaves the rectangle; the center when it does not.
    QxPoint exitToward(const QxPoint& point) const {
        QxPoint exit = rect.center();
        if (rect.within(point) == 0) {
            clip(QxShape(), exit, point);
        }
        return exit;
    }
    /// Into the coordinates of the node's graph.
    QxPoint toNode(QxPoint point) const {
        if (graph != nullptr) {
            graph->inverseExpandedTransformPoint(point);
        }
        return point;
    }

    QxDNode& node;
    QxRect rect;
    const QxDGraph* graph;

private:
    bool clip(const QxShape& shape, QxPoint& from, const QxPoint& toward) const {
        return shape.intersectsSegment(from, from, toward, rect.center(), rect.size()) != 0;
    }
};

/// The ends of an edge and the line between their centers, which is horizontal where these are one.
struct Span {
    explicit Span(const QxDEdge& edge)
        : Span(*edge.pSourceNode(), *edge.pTargetNode(), edge.intergraphEdge() != 0) {}
    Span(QxDNode& sourceNode, QxDNode& targetNode, bool isBetweenGraphs)
        : source(sourceNode, isBetweenGraphs),
          target(targetNode, isBetweenGraphs),
          from(source.rect.center()),
          to(target.rect.center()) {
        if (from == to) {
            from.x(qx::saturatingSub(from.x(), 1));
            to.x(qx::saturatingAdd(to.x(), 1));
        }
    }
    std::int64_t dx() const { return std::int64_t{to.x()} - from.x(); }
    std::int64_t dy() const { return std::int64_t{to.y()} - from.y(); }

    EndNode source;
    EndNode target;
    QxPoint from;
    QxPoint to;
};

/// Half a spacing across the line of a bundle. The multiples of computeOffsetPoints... are added in
/// x and subtracted in y.
struct Step {
    Step(const Span& span, std::int32_t spacing) {
        const auto dx = static_cast<double>(std::abs(span.dx()));
        const auto dy = static_cast<double>(std::abs(span.dy()));
        const double twice = 2.0 * std::hypot(dx, dy);
        const double signX = span.dx() < 0 ? 1.0 : -1.0;
        const double signY = span.dy() < 0 ? 1.0 : -1.0;
        const double turn = signX == signY ? -1.0 : 1.0;
        // One rounding, the last: along an axis halves of units stay halves.
        x = spacing * dy / twice * signX * turn;
        y = spacing * dx / twice * signY * turn;
    }
    double x;
    double y;
};

bool meetsLine(const QxRect& rect, const QxPoint& a, const QxPoint& b) {
    std::int32_t fromX = a.x();
    std::int32_t fromY = a.y();
    std::int32_t toX = b.x();
    std::int32_t toY = b.y();
    return rect.intersectsLine(fromX, fromY, toX, toY) != 0;
}

/// A point on the way from a through b, beyond b and outside a rectangle that holds both.
QxPoint beyond(const QxRect& rect, const QxPoint& a, const QxPoint& b) {
    const std::int64_t dx = std::int64_t{b.x()} - a.x();
    const std::int64_t dy = std::int64_t{b.y()} - a.y();
    const std::int64_t step = std::max<std::int64_t>({std::abs(dx), std::abs(dy), 1});
    const std::int64_t times = (std::int64_t{rect.width()} + rect.height()) / step + 1;
    return {qx::clampToInt32(b.x() + dx * times), qx::clampToInt32(b.y() + dy * times)};
}

void freeEnds(QxDEdge& edge) {
    edge.pSourceConnector(nullptr);
    edge.pTargetConnector(nullptr);
}

/// Of the listed edges the siblings of one.
Siblings listedSiblings(const QxDEdge& edge, const QxDEdgeDList* listed) {
    Siblings found;
    if (listed != nullptr) {
        for (QxDEdge* other : each<QxDEdge>(*listed)) {
            if (qx::internal::isSibling(edge, *other)) {
                found.push_back(other);
            }
        }
    }
    return found;
}

/// The room across the line between the centers that both nodes offer; -1 without any.
double roomAcross(const Span& span) {
    const auto roomAt = [](const EndNode& end, const QxPoint& center, const QxPoint& other) {
        const QxShape& shape = qx::internal::shownShape(end.node);
        const QxSize size = end.rect.size();
        return shape.within(end.rect.center(), end.rect.center(), size) != 0
                   ? shape.maxAvailableDiagonalLengthAtShape(center, other, size)
                   : -1.0;
    };
    return std::min(roomAt(span.source, span.from, span.to),
                    roomAt(span.target, span.to, span.from));
}

/// How far apart that many edges run: as far as the graph wants, or as there is room; -1 without.
std::int32_t spacingAcross(const Span& span, const QxDGraph& graph, int count) {
    const double room = roomAcross(span) - 1.0;
    if (room < 0.0 || count <= 0) {
        return -1;
    }
    return std::min(graph.diagrammingMultiEdgeSpacing(), qx::truncToInt32(room / count));
}

/// What a layout works on: siblings that are free to be laid out, seen from the source of the
/// first. Listeners may carry off any of them, the nodes too: what counts is asked edge by edge.
class Bundle {
public:
    explicit Bundle(const Siblings& siblings) {
        for (QxDEdge* edge : siblings) {
            if (m_edges.isEmpty()) {
                m_graph = Ref(edge->pOwnerGraph());
                m_source = Ref(edge->pSourceNode());
                m_target = Ref(edge->pTargetNode());
                m_isBetweenGraphs = edge->intergraphEdge() != 0;
            }
            if (isFree(*edge)) {
                m_edges.add(edge);
            }
        }
    }

    void layOut(QxMultiEdgeModeEnum mode) {
        if (m_edges.isEmpty()) {
            return;
        }
        switch (mode) {
            case QxMultiEdgeOverlap:
                return overlap();
            case QxMultiEdgeParallel:
                return spread();
            case QxMultiEdgeOneBend:
                return bendEach();
            default:
                return;
        }
    }

private:
    void overlap();
    void spread();
    void bendEach();

    bool isFree(const QxDEdge& edge) const {
        const QxNode* from = edge.pSourceNode();
        const QxNode* to = edge.pTargetNode();
        const bool isBetween = (from == m_source.get() && to == m_target.get()) ||
                               (from == m_target.get() && to == m_source.get());
        return isBetween && edge.connected() != 0 && edge.deactivated() == 0 &&
               m_graph.get() == edge.pOwnerGraph() && !qx::internal::hasSpecifiedConnector(edge);
    }
    /// As one change of the graph; `act` gets the position in the bundle, counted from 1.
    template <class Act>
    void eachEdge(const Act& act) {
        Change::inGraph(*m_graph, [&] {
            int index = 0;
            for (QxDEdge* edge : m_edges) {
                ++index;
                if (isFree(*edge)) {
                    act(*edge, index);
                }
            }
        });
    }
    bool straighten(QxDEdge& edge) const {
        edge.discardAllBends();
        return isFree(edge);
    }

    Ref<QxDGraph> m_graph;
    Ref<QxDNode> m_source;
    Ref<QxDNode> m_target;
    bool m_isBetweenGraphs = false;
    Snapshot<QxDEdge> m_edges;
};

void Bundle::overlap() {
    eachEdge([this](QxDEdge& edge, int) {
        if (straighten(edge)) {
            freeEnds(edge);
        }
    });
}

void Bundle::spread() {
    const auto count = static_cast<int>(m_edges.size());
    const Span span(*m_source, *m_target, m_isBetweenGraphs);
    const std::int32_t room = spacingAcross(span, *m_graph, count);
    const Step step(span, std::max(room, 0));
    eachEdge([&](QxDEdge& edge, int index) {
        QxPoint offset;
        QxDEdge::computeOffsetPointsForMultiEdgesParallel(offset, step.x, step.y, index, count % 2);
        const QxPoint from = span.from + offset;
        const QxPoint to = span.to + offset;
        if (!straighten(edge)) {
            return;
        }
        if (room >= 0 && meetsLine(span.source.rect, from, to) &&
            meetsLine(span.target.rect, from, to)) {
            edge.assignConnectorsMultiEdgesParallel(&offset);
        } else {
            freeEnds(edge);
        }
    });
}

void Bundle::bendEach() {
    const EndNode source(*m_source, m_isBetweenGraphs);
    const EndNode target(*m_target, m_isBetweenGraphs);
    const QxPoint from = source.exitToward(target.rect.center());
    const QxPoint to = target.exitToward(source.rect.center());
    const auto middle = [](std::int32_t a, std::int32_t b) { return (std::int64_t{a} + b) / 2; };
    const std::int64_t x = middle(from.x(), to.x());
    const std::int64_t y = middle(from.y(), to.y());
    const auto hx = static_cast<double>(x - from.x());
    const auto hy = static_cast<double>(y - from.y());
    const double length = std::floor(std::hypot(hx, hy) + 0.5);
    const double spacing = m_graph->diagrammingMultiEdgeSpacing();
    const int odd = static_cast<int>(m_edges.size() % 2);
    eachEdge([&](QxDEdge& edge, int index) {
        freeEnds(edge);
        if (length <= 0) {
            edge.discardAllBends();
            return;
        }
        const int number = odd != 0 ? index : index + 1;
        const double distance = number / 2 * spacing;
        const std::int64_t ox = qx::truncToInt32(distance * hy / length);
        const std::int64_t oy = qx::truncToInt32(distance * hx / length);
        const int sign = number % 2 != 0 ? 1 : -1;
        qx::internal::takeBends(
            edge, {QxPoint(qx::clampToInt32(x - sign * ox), qx::clampToInt32(y + sign * oy))});
    });
}

bool haveSameCenter(const QxDEdge& edge) {
    const bool isBetweenGraphs = edge.intergraphEdge() != 0;
    const EndNode source(*edge.pSourceNode(), isBetweenGraphs);
    const EndNode target(*edge.pTargetNode(), isBetweenGraphs);
    return source.rect.center() == target.rect.center();
}

/// The bundles between the ends of an edge, of all edges there or (not null) of the listed ones.
std::vector<Siblings> bundlesBeside(const QxDEdge& edge, const QxDEdgeDList* listed) {
    if (edge.pOwnerGraph() == nullptr || edge.pSourceNode() == nullptr ||
        edge.pTargetNode() == nullptr || edge.reflexive() != 0 || haveSameCenter(edge)) {
        return {};
    }
    return qx::internal::bundlesOf(listed == nullptr ? qx::internal::siblingsOf(edge)
                                                     : listedSiblings(edge, listed));
}

}  // namespace

void qx::internal::layOutBundles(QxMultiEdgeModeEnum mode, const std::vector<Siblings>& bundles) {
    std::vector<Bundle> work;
    for (const Siblings& bundle : bundles) {
        if (!haveSameCenter(*bundle.front())) {
            work.emplace_back(bundle);
        }
    }
    for (Bundle& bundle : work) {
        bundle.layOut(mode);
    }
}

void QxDEdge::reorganizeMultiEdgeBundle(QxMultiEdgeModeEnum mode, const QxDEdgeDList* edges) {
    qx::internal::layOutBundles(mode, bundlesBeside(*this, edges));
}

void QxDEdge::reorganizeMultiEdgeBundleOverlap(const QxDEdgeDList* bundle) {
    Bundle(listedSiblings(*this, bundle)).layOut(QxMultiEdgeOverlap);
}

void QxDEdge::reorganizeMultiEdgeBundleParallel(const QxDEdgeDList* bundle) {
    const Siblings edges = listedSiblings(*this, bundle);
    if (!edges.empty() && !qx::internal::hasSpecifiedConnector(*edges.front())) {
        Bundle(edges).layOut(QxMultiEdgeParallel);
    }
}

void QxDEdge::reorganizeMultiEdgeBundleOneBend(const QxDEdgeDList* bundle) {
    Bundle(listedSiblings(*this, bundle)).layOut(QxMultiEdgeOneBend);
}

void QxDEdge::collectMultiEdges(QxDList& bundles, const QxDEdgeDList* edges) const {
    for (const Siblings& bundle : bundlesBeside(*this, edges)) {
        auto* list = new QxDEdgeDList;
        for (QxDEdge* edge : bundle) {
            list->appendEdge(edge);
        }
        bundles.appendObject(list);
    }
}

void QxDEdge::collectStraightMultiEdges(QxDEdgeDList* list) const {
    if (list == nullptr) {
        return;
    }
    list->deleteAllCells();
    for (QxDEdge* edge : qx::internal::siblingsOf(*this)) {
        if (edge->hasBends() == 0 && !qx::internal::hasSpecifiedConnector(*edge) &&
            edge->desiredOrthogonalRouting() == 0) {
            list->appendEdge(edge);
        }
    }
    if (list->count() < 2) {
        list->deleteAllCells();
    }
}

std::int32_t QxDEdge::multiEdgeSpacingForParallelBundles(int count) const {
    const QxDGraph* graph = pOwnerGraph();
    if (graph == nullptr || pSourceNode() == nullptr || pTargetNode() == nullptr) {
        return -1;
    }
    return spacingAcross(Span(*this), *graph, count);
}

double QxDEdge::maxAvailableMultiEdgeDiagonalLength() const {
    return pSourceNode() != nullptr && pTargetNode() != nullptr ? roomAcross(Span(*this)) : -1.0;
}

void QxDEdge::computeOffsetPointsForMultiEdgesParallel(QxPoint& out, double stepX, double stepY,
                                                       int index, int odd) {
    const std::int64_t pair = odd != 0 ? index / 2 : (std::int64_t{index} + 1) / 2;
    const auto away = static_cast<double>(odd != 0 ? 2 * pair : 2 * pair - 1);
    const double times = index % 2 != 0 ? -away : away;
    out.moveTo(qx::floorHalfUp(times * stepX), qx::floorHalfUp(-times * stepY));
}

void QxDEdge::assignConnectorsMultiEdgesParallel(const QxPoint* offset) {
    if (offset == nullptr || pSourceNode() == nullptr || pTargetNode() == nullptr) {
        return;
    }
    const Span span(*this);
    const QxPoint from = span.from + *offset;
    const QxPoint to = span.to + *offset;
    const Ref source(span.source.node);
    const Ref target(span.target.node);
    Change::run(*this, [&] {
        // A way that does not leave the node before the other center goes straight on until it
        // does.
        const auto hold = [&](const EndNode& end, bool atSource, const QxPoint& here,
                              const QxPoint& there) {
            QxPoint at = here;
            if (!end.clip(at, there)) {
                at = there;
                if (!end.clip(at, beyond(end.rect, here, there))) {
                    atSource ? pSourceConnector(nullptr) : pTargetConnector(nullptr);
                    return;
                }
            }
            const QxPoint own = end.toNode(at);
            const QxSideEnum side = end.node.pIRect()->closestSide(own);
            qx::internal::holdEnd(*this, atSource, own, qx::internal::directionThrough(side));
        };
        // Between a node and one that encloses it the edge takes the near way.
        const bool isInSource = span.source.rect.encloses(span.target.rect) != 0;
        const bool isInTarget = span.target.rect.encloses(span.source.rect) != 0;
        hold(span.source, true, from,
             isInTarget && !isInSource ? beyond(span.target.rect, to, from) : to);
        hold(span.target, false, to, isInSource ? beyond(span.source.rect, from, to) : from);
    });
}

QxConnector* QxDEdge::setConnector(QxDNode* node, QxPoint from, QxPoint toward) {
    if (node == nullptr) {
        return nullptr;
    }
    const EndNode end(*node, intergraphEdge() != 0);
    if (!end.clip(from, toward)) {
        return nullptr;
    }
    const QxPoint own = end.toNode(from);
    const QxRect& rect = *node->pIRect();
    QxConnector* connector =
        qx::internal::placeOnNode(*this, rect, own, qx::internal::Thousandths::Truncated)
            .newConnector(*node);
    if (connector != nullptr) {
        connector->routingDirection(qx::internal::directionThrough(rect.closestSide(own)));
    }
    return connector;
}
