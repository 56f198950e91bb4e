// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <algorithm>

#include "drawing/EditWorld.h"

namespace qxtest {

namespace {

/// Within these limits nothing is clamped, and the twin knows the result by plain arithmetic.
constexpr std::int64_t Plain = 1 << 30;

using WideBox = std::array<std::int64_t, 4>;

WideBox wide(const Box& box) {
    return {box[0], box[1], box[2], box[3]};
}

bool isPlain(const WideBox& box) {
    return std::all_of(box.begin(), box.end(),
                       [](std::int64_t side) { return side > -Plain && side < Plain; });
}

}  // namespace

/// Mostly near each other, so that sides of the bounds are shared and left; sometimes far out.
std::int32_t EditWorld::anyCoordinate() {
    static const std::vector<std::int32_t> extremes{
        qx::MinInt32, qx::MinInt32 + 1,  qx::MinInt32 + 39, -Plain,
        Plain,        qx::MaxInt32 - 40, qx::MaxInt32 - 1,  qx::MaxInt32};
    return m_random.chance(4) ? m_random.pick(extremes) : 10 * (m_random.below(40) - 20);
}

std::int32_t EditWorld::anyExtent() {
    static const std::vector<std::int32_t> extremes{qx::MinInt32,     -1,          0, 1, Plain,
                                                    qx::MaxInt32 - 1, qx::MaxInt32};
    return m_random.chance(8) ? m_random.pick(extremes) : m_random.below(60);
}

void EditWorld::expectBox(ModelNode& node, const WideBox& box) {
    const Box real = boxOf(*drawn(node)->pIRect());
    Box& expected = m_looks[node.object].box;
    if (isPlain(wide(expected)) && isPlain(box)) {
        for (std::size_t side = 0; side < 4; ++side) {
            expected[side] = static_cast<std::int32_t>(box[side]);
        }
    } else {
        expected = real;  // clamped somewhere; the events still have to tell how
    }
}

void EditWorld::expectMoved(ModelNode& node, std::int64_t x, std::int64_t y) {
    const WideBox old = wide(m_looks[node.object].box);
    const std::int64_t w = old[2] - old[0];
    const std::int64_t h = old[3] - old[1];
    expectBox(node, {x - w / 2, y - h / 2, x + w - w / 2, y + h - h / 2});
}

void EditWorld::expectResized(ModelNode& node, std::int64_t width, std::int64_t height) {
    const WideBox old = wide(m_looks[node.object].box);
    const std::int64_t x = old[0] + (old[2] - old[0]) / 2;
    const std::int64_t y = old[1] + (old[3] - old[1]) / 2;
    const std::int64_t w = std::max<std::int64_t>(width, 0);
    const std::int64_t h = std::max<std::int64_t>(height, 0);
    expectBox(node, {x - w / 2, y - h / 2, x + w - w / 2, y + h - h / 2});
}

void EditWorld::stepAttributes() {
    using SetConstant = std::int32_t (QxDGraph::*)(std::int32_t);
    using SetProportional = std::int16_t (QxDGraph::*)(std::int16_t);
    static constexpr std::array<SetConstant, 4> Constants{
        &QxDGraph::leftMarginConstantSpacing, &QxDGraph::bottomMarginConstantSpacing,
        &QxDGraph::rightMarginConstantSpacing, &QxDGraph::topMarginConstantSpacing};
    static constexpr std::array<SetProportional, 4> Proportionals{
        &QxDGraph::leftMarginProportionalSpacing, &QxDGraph::bottomMarginProportionalSpacing,
        &QxDGraph::rightMarginProportionalSpacing, &QxDGraph::topMarginProportionalSpacing};
    ModelGraph& graph = anyGraph();
    Attributes& wanted = m_attributes[graph.object];
    const auto side = static_cast<std::size_t>(m_random.below(4));
    const std::int32_t value = m_random.chance(10) ? qx::MaxInt32 : m_random.below(60) - 20;
    note("set a margin");
    if (m_random.chance(50)) {
        const std::int32_t stored = std::max(value, 0);
        wanted.changes += wanted.constant[side] != stored ? 1 : 0;
        wanted.constant[side] = stored;
        if ((drawn(graph)->*Constants[side])(value) != stored) {
            m_complaint = "a constant margin was not stored";
        }
    } else {
        const std::int16_t given = qx::clampToInt16(value);
        wanted.changes += given >= 0 && wanted.proportional[side] != given ? 1 : 0;
        wanted.proportional[side] = given >= 0 ? given : wanted.proportional[side];
        if ((drawn(graph)->*Proportionals[side])(given) != wanted.proportional[side]) {
            m_complaint = "a proportional margin was not stored";
        }
    }
}

void EditWorld::stepMove() {
    ModelNode& node = anyNode();
    const int inOwnGraph = m_random.below(2);
    const bool can = inOwnGraph != 0 || isVisible(node.graph);
    if (m_random.chance(60)) {
        const QxPoint to(anyCoordinate(), anyCoordinate());
        agree({"moveTo", drawn(node)->moveTo(to, inOwnGraph) != 0, can});
        if (can) {
            expectMoved(node, to.x(), to.y());
        }
    } else {
        const QxPoint from = drawn(node)->iCenter();
        const std::int32_t dx = m_random.chance(30) ? 0 : anyCoordinate();
        const std::int32_t dy = m_random.chance(30) ? 0 : anyCoordinate();
        agree({"move", drawn(node)->move(dx, dy, inOwnGraph) != 0, can});
        if (can) {
            expectMoved(node, std::int64_t{from.x()} + dx, std::int64_t{from.y()} + dy);
        }
    }
}

void EditWorld::stepResize() {
    ModelNode& node = anyNode();
    const int inOwnGraph = m_random.below(2);
    const bool can = inOwnGraph != 0 || isVisible(node.graph);
    const QxSize size(anyExtent(), anyExtent());
    agree({"resize", drawn(node)->resize(size, inOwnGraph) != 0, can});
    if (can) {
        expectResized(node, size.width(), size.height());
    }
}

void EditWorld::stepReshape() {
    ModelNode& node = anyNode();
    const int shape = m_random.below(static_cast<int>(m_shapes.size()));
    const int quietly = m_random.chance(25) ? 1 : 0;
    Look& look = m_looks[node.object];
    const bool told = look.shape != shape && quietly == 0 && node.graph != nullptr &&
                      node.graph->manager != nullptr;
    note("reshape");
    const QxShape* given = shape == 0 ? nullptr : &m_shapes[static_cast<std::size_t>(shape)];
    drawn(node)->pShape(given, quietly);
    look.shape = shape;
    if (m_random.chance(20)) {
        drawn(node)->discardShapeResource();
        look.shape = 0;
    } else if (m_random.chance(20)) {
        drawn(node)->pShapeResource();
    }
    m_complaint = m_story.hear(m_events.take());
    if (m_story.takeCount(node.object, NodeShapeChanged) != (told ? 1 : 0)) {
        m_complaint = "a change of shape was told falsely";
    }
}

/// The raw operations leave the bounds to their caller.
void EditWorld::stepRaw() {
    ModelNode& node = anyNode();
    const QxPoint to(anyCoordinate(), anyCoordinate());
    const QxSize size(anyExtent(), anyExtent());
    note("raw move and resize");
    drawn(node)->ntMoveTo(to);
    expectMoved(node, to.x(), to.y());
    drawn(node)->ntResize(size);
    expectResized(node, size.width(), size.height());
    if (node.graph == nullptr) {
        return;
    }
    drawn(*node.graph)->calculateGraphBounds(0);
    if (node.graph->manager != nullptr && node.graph->manager->between != nullptr) {
        drawn(*node.graph->manager->between)->calculateGraphBounds(0);
    }
}

void EditWorld::stepWholeGraph() {
    ModelGraph& graph = anyGraph();
    const std::int32_t dx = anyCoordinate();
    const std::int32_t dy = anyCoordinate();
    note("move a whole graph");
    std::vector<QxPoint> centers;
    for (const ModelNode* node : graph.nodes) {
        centers.push_back(drawn(*node)->iCenter());
    }
    drawn(graph)->ntMove(dx, dy, m_random.below(2));
    for (std::size_t i = 0; i < centers.size(); ++i) {
        expectMoved(*graph.nodes[i], std::int64_t{centers[i].x()} + dx,
                    std::int64_t{centers[i].y()} + dy);
    }
    for (const auto& edges : graph.edges) {
        for (const ModelEdge* edge : edges) {
            for (QxPoint& bend : m_bends[edge->object]) {
                bend = QxPoint(qx::saturatingAdd(bend.x(), dx), qx::saturatingAdd(bend.y(), dy));
            }
        }
    }
    if (graph.manager != nullptr && graph.manager->between != nullptr) {
        drawn(*graph.manager->between)->calculateGraphBounds(0);
    }
}

/// Switches the upkeep of the bounds of a graph off, or on again after a while.
void EditWorld::stepSuspended() {
    ModelGraph& graph = anyGraph();
    Attributes& attributes = m_attributes[graph.object];
    if (attributes.rests || !m_random.chance(30)) {
        note("bounds on");
        drawn(graph)->disableGraphBounds(0, 0);
        attributes.rests = false;
    } else {
        note("bounds off");
        drawn(graph)->disableGraphBounds(1, 0);
        attributes.rests = true;
    }
}

std::string EditWorld::copyDifference(const QxDGraph& copy, const QxDGraph& original) const {
    if (copy.numberOfNodes() != original.numberOfNodes() ||
        copy.numberOfEdges() != original.numberOfEdges()) {
        return "a copy has more or fewer contents";
    }
    QxDNodeIter twin(&copy);
    for (const QxDNode* node : QxDNodeIter(&original)) {
        // Where sides are clamped, a place and a size need not give the same rectangle again.
        const Box box = boxOf(*node->pIRect());
        if ((isPlain(wide(box)) && boxOf(*twin.pNode()->pIRect()) != box) ||
            !(*twin.pNode()->pShape() == *node->pShape())) {
            return "a copied node looks different";
        }
        ++twin;
    }
    QxDEdgeIter edgeTwin(&copy);
    for (const QxDEdge* edge : QxDEdgeIter(&original)) {
        if (bendsOf(*edgeTwin.pEdge()) != bendsOf(*edge)) {
            return "a copied edge runs differently";
        }
        ++edgeTwin;
    }
    QxRect walked;
    const bool any = walkBounds(copy, walked);
    return any && copy.needsUpdateGraphBounds() != 0 && copy.isVisible() != 0 &&
                   boundsOf(&copy) != boxOf(walked)
               ? "the bounds of a copy"
               : "";
}

/// A copy is like its original and takes nothing with it when it goes.
void EditWorld::stepCopy() {
    ModelManager& manager = anyManager();
    note("copy a drawing");
    const Ref<QxDGraphManager> copy(drawn(manager)->cloneObject());
    if (copy->checkInvariants() == 0 ||
        copy->numberOfGraphs() != manager.object->numberOfGraphs()) {
        m_complaint = "a copy of a drawing is not sound";
        return;
    }
    QxDGraphIter twin(copy.get());
    for (const ModelGraph* graph : manager.graphs) {
        const bool isAnchor = m_anchors[&manager] == graph;
        if ((copy->pAnchorGraph() == twin.pGraph()) != isAnchor) {
            m_complaint = "a copy has its anchor graph elsewhere";
        }
        const std::string what = copyDifference(*twin.pGraph(), *drawn(*graph));
        m_complaint = m_complaint.empty() ? what : m_complaint;
        ++twin;
    }
    for (QxDGraph* graph : QxDGraphIter(copy.get())) {
        graph->ntMove(3, 5, 0);
    }
}

}  // namespace qxtest
