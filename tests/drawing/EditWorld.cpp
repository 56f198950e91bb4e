// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "drawing/EditWorld.h"

#include <algorithm>

#include "qx/foundation/geometry/QxPointDList.h"

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

QxPNode* bendAt(const QxDEdge& edge, int index) {
    QxPNodeDList bends;
    edge.buildPathNodeList(bends);
    QxPNodeDListIter bend(&bends);
    for (; index > 0; --index) {
        ++bend;
    }
    return bend.pNode();
}

QxPNode* lastBend(const QxDEdge& edge) {
    QxPNodeDList bends;
    edge.buildPathNodeList(bends);
    return static_cast<QxPNode*>(bends.pLastObject());
}

}  // namespace

EditWorld::EditWorld(std::uint32_t seed) : m_random(seed) {
    QxPointDList triangle;
    for (const QxPoint& corner : {QxPoint(-1000, -1000), QxPoint(1000, -1000), QxPoint(0, 1000)}) {
        triangle.appendPoint(corner);
    }
    m_shapes = {QxShape(), QxShape(QxShapeTypeOval), QxShape::fromOutline(triangle)};
    for (QxFactory* factory : {&m_home, &m_home, &m_home, &m_foreign}) {
        addManager(*factory);
    }
    settleAnchors();
}

void EditWorld::addManager(QxFactory& factory) {
    m_managers.emplace_back(factory.newDGraphManager());
    QxDGraphManager* real = m_managers.back().get();
    factory.pEventManager()->addDrawingChangeListener(real, &m_events);
    ModelManager& manager = m_model.addManager(real, &factory);
    for (int i = 0; i < 2; ++i) {
        ModelGraph& graph = m_model.addGraph(manager, real->addGraph(0));
        m_attributes[graph.object];
        addNode(graph);
        addNode(graph);
    }
}

EditWorld::~EditWorld() {
    std::vector<QxObject*> owned;
    for (auto& manager : m_managers) {
        owned.push_back(manager.release());
    }
    for (const ModelGraph* graph : m_model.graphs()) {
        if (graph->manager == nullptr) {
            owned.push_back(graph->object);
        }
    }
    for (const ModelNode* node : m_model.nodes()) {
        if (node->graph == nullptr) {
            owned.push_back(node->object);
        }
    }
    for (const ModelEdge* edge : m_model.edges()) {
        if (edge->graph == nullptr) {
            owned.push_back(edge->object);
        }
    }
    while (!owned.empty()) {
        const auto at = owned.begin() + m_random.below(static_cast<int>(owned.size()));
        (*at)->vRelease();
        owned.erase(at);
    }
}

std::string EditWorld::step() {
    const int kind = m_random.below(100);
    kind < 12   ? stepNode()
    : kind < 24 ? stepEdge()
    : kind < 34 ? stepState()
    : kind < 40 ? stepGraph()
    : kind < 44 ? stepAttributes()
    : kind < 62 ? stepMove()
    : kind < 71 ? stepResize()
    : kind < 75 ? stepReshape()
    : kind < 90 ? stepBend()
    : kind < 94 ? stepRaw()
    : kind < 96 ? stepWholeGraph()
    : kind < 98 ? stepSuspended()
                : stepCopy();
    return m_complaint.empty() ? difference() : m_complaint;
}

void EditWorld::note(const std::string& what) {
    m_log.push_back(what);
    if (m_log.size() > 6) {
        m_log.pop_front();
    }
}

/// Notes the operation, and complains when only one of model and reality let it pass.
void EditWorld::agree(const Outcome& outcome) {
    note(outcome.what + (outcome.model ? "" : " (refused)"));
    if (outcome.real != outcome.model) {
        m_complaint = outcome.what + (outcome.real ? " was not refused" : " was refused");
    }
}

/// Anchor graphs and their nodes come often: there most is to be seen.
ModelGraph& EditWorld::anyGraph() {
    ModelGraph* anchor = m_random.chance(30) ? m_anchors[&anyManager()] : nullptr;
    return anchor != nullptr ? *anchor : *m_random.pick(m_model.graphs());
}

ModelNode& EditWorld::anyNode() {
    const ModelGraph* anchor = m_random.chance(40) ? m_anchors[&anyManager()] : nullptr;
    return anchor != nullptr && !anchor->nodes.empty() ? *m_random.pick(anchor->nodes)
                                                       : *m_random.pick(m_model.nodes());
}

/// Mostly where the member is, so that not nearly all calls are refused.
ModelGraph& EditWorld::graphOf(const ModelMember& member) {
    return member.graph != nullptr && m_random.chance(80) ? *member.graph : anyGraph();
}

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

void EditWorld::addNode(ModelGraph& graph) {
    const std::int32_t x = anyCoordinate();
    const std::int32_t y = anyCoordinate();
    const std::int32_t width = anyExtent();
    const std::int32_t height = anyExtent();
    QxDNode* real = drawn(graph)->addNodeWithCoordinates(x, y, width, height, 1, 0);
    agree({"addNodeWithCoordinates", real != nullptr, !graph.isBetween});
    if (real != nullptr) {
        ModelNode& node = m_model.addNode(graph, real);
        m_looks[real].box = {-20, -20, 20, 20};
        expectResized(node, width, height);
        expectMoved(node, x, y);
    }
}

void EditWorld::stepNode() {
    ModelNode& node = anyNode();
    ModelGraph& graph = graphOf(node);
    const int kind = m_random.below(12);
    if (kind < 3 || m_model.nodes().size() < 10) {
        if (m_model.nodes().size() < 40) {
            addNode(anyGraph());
        }
    } else if (kind < 7) {
        agree({"insertNode", drawn(graph)->insertNode(drawn(node)) != nullptr,
               m_model.insertNode(graph, node)});
    } else if (kind < 10) {
        agree({"removeNode", drawn(graph)->removeNode(drawn(node)) != nullptr,
               m_model.removeNode(graph, node)});
    } else if (kind < 11) {
        agree({"discardNode", drawn(graph)->discardNode(drawn(node)) != 0,
               m_model.discardNode(graph, node)});
    } else if (node.graph == nullptr) {
        note("release a detached node");
        node.object->vRelease();
        m_model.destroyDetached(node);
    }
}

void EditWorld::addEdge() {
    if (m_model.edges().size() < 50) {
        ModelGraph& maker = anyGraph();
        QxDEdge* real = static_cast<QxFactory*>(maker.factory)->qxNewDEdge(maker.object, 0);
        m_bends[real];
        insertEdge(m_model.addDetachedEdge(real, maker.factory));
    }
}

void EditWorld::insertEdge(ModelEdge& edge) {
    ModelNode& source = anyNode();
    // Ends in one graph are what makes visible edges, in the intergraph too.
    const bool close = source.graph != nullptr && m_random.chance(60);
    ModelNode& target = close ? *m_random.pick(source.graph->nodes) : anyNode();
    ModelManager& manager = source.graph != nullptr && source.graph->manager != nullptr
                                ? *source.graph->manager
                                : anyManager();
    if (m_random.chance(50)) {
        QxDEdge* real = drawn(manager)->insertEdge(drawn(edge), drawn(source), drawn(target));
        agree({"insertEdge through the manager", real != nullptr,
               m_model.insertEdge(manager, edge, source, target)});
        if (manager.between != nullptr) {
            m_attributes[manager.between->object];
        }
        return;
    }
    ModelGraph& graph =
        manager.between != nullptr && m_random.chance(40) ? *manager.between : graphOf(source);
    QxDEdge* real = drawn(graph)->insertEdge(drawn(edge), drawn(source), drawn(target));
    agree({"insertEdge", real != nullptr, m_model.insertEdge(graph, edge, source, target)});
}

void EditWorld::stepEdge() {
    if (m_model.edges().size() < 15 || m_random.chance(20)) {
        return addEdge();
    }
    ModelEdge& edge = anyEdge();
    ModelGraph& graph = graphOf(edge);
    const int kind = m_random.below(12);
    if (kind < 6) {
        insertEdge(edge);
    } else if (kind < 9) {
        agree({"removeEdge", drawn(graph)->removeEdge(drawn(edge)) != nullptr,
               m_model.removeEdge(graph, edge)});
    } else if (kind < 11) {
        agree({"discardEdge", drawn(graph)->discardEdge(drawn(edge)) != 0,
               m_model.discardEdge(graph, edge)});
    } else if (edge.graph == nullptr) {
        note("release a detached edge");
        edge.object->vRelease();
        m_model.destroyDetached(edge);
    }
}

void EditWorld::stepState() {
    if (m_model.edges().empty()) {
        return;
    }
    ModelEdge& model = anyEdge();
    QxDEdge& edge = *drawn(model);
    ModelNode& node = model.source != nullptr && model.source->graph != nullptr
                          ? *m_random.pick(model.source->graph->nodes)
                          : anyNode();
    std::vector<QxPoint>& bends = m_bends[&edge];
    switch (m_random.below(8)) {
        case 0:
            return agree({"disconnect", edge.disconnect() != 0, m_model.disconnect(model)});
        case 1:
        case 2:
            return agree({"connect", edge.connect() != 0, m_model.connect(model)});
        case 3:
            return agree({"deactivate", edge.deactivate() != 0, m_model.deactivate(model)});
        case 4:
            return agree({"activate", edge.activate() != 0, m_model.activate(model)});
        case 5:
            if (model.source != nullptr && model.target != nullptr) {
                std::reverse(bends.begin(), bends.end());
            }
            return agree({"reverse", edge.reverse() != 0, m_model.reverse(model)});
        case 6:
            return agree({"changeTargetNode", edge.changeTargetNode(drawn(node)) != 0,
                          m_model.changeEnds(model, model.source, &node)});
        default:
            return agree({"changeEndNodes",
                          edge.changeEndNodes(drawn(node), edge.pSourceNode()) != 0,
                          m_model.changeEnds(model, &node, model.source)});
    }
}

void EditWorld::stepGraph() {
    ModelGraph& graph = anyGraph();
    ModelManager& manager =
        graph.manager != nullptr && m_random.chance(80) ? *graph.manager : anyManager();
    const int kind = m_random.below(16);
    if (kind < 3 || m_model.graphs().size() < 8) {
        if (m_model.graphs().size() < 14) {
            note("addGraph");
            QxDGraph* real = drawn(manager)->addGraph(0);
            m_model.addGraph(manager, real);
            m_attributes[real];
        }
    } else if (kind < 6) {
        agree({"removeGraph", drawn(manager)->removeGraph(drawn(graph)) != nullptr,
               m_model.removeGraph(manager, graph)});
    } else if (kind < 10) {
        const bool inserted = drawn(manager)->insertGraph(drawn(graph)) != nullptr;
        agree({"insertGraph", inserted, m_model.insertGraph(manager, graph)});
        m_attributes[graph.object].rests &= !inserted;
    } else if (kind < 11) {
        agree({"discardGraph", drawn(manager)->discardGraph(drawn(graph)) != 0,
               m_model.discardGraph(manager, graph)});
    } else if (kind < 12) {
        note("empty or release a graph");
        if (graph.manager == nullptr) {
            graph.object->vRelease();
            m_model.destroyDetached(graph);
        } else if (m_random.chance(40)) {
            graph.object->emptyTopology();
            m_model.emptyGraph(graph);
        }
    } else if (kind < 15) {
        ModelGraph& from = !graph.isBetween && graph.manager != nullptr && m_random.chance(60)
                               ? *m_random.pick(graph.manager->graphs)
                               : anyGraph();
        agree({"transferTopology of a graph", drawn(graph)->transferTopology(drawn(from)) != 0,
               m_model.transfer(graph, from)});
    } else {
        ModelManager& from = anyManager();
        ModelGraph* anchor = m_anchors[&from];
        agree({"transferTopology of a manager", drawn(manager)->transferTopology(drawn(from)) != 0,
               m_model.transfer(manager, from)});
        if (m_anchors[&manager] == nullptr && from.graphs.empty()) {
            m_anchors[&manager] = anchor;
        }
        if (manager.between != nullptr) {
            m_attributes[manager.between->object];
        }
    }
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
    m_complaint = m_story.hear(m_events.take());
    if (m_story.takeCount(node.object, NodeShapeChanged) != (told ? 1 : 0)) {
        m_complaint = "a change of shape was told falsely";
    }
}

void EditWorld::stepBend() {
    if (m_model.edges().empty()) {
        return;
    }
    ModelEdge& model = anyEdge();
    QxDEdge& edge = *drawn(model);
    std::vector<QxPoint>& bends = m_bends[&edge];
    const bool active = model.graph != nullptr && model.state == EdgeState::Connected;
    const QxPoint place(anyCoordinate(), anyCoordinate());
    const int count = static_cast<int>(bends.size());
    const int at = count > 0 ? m_random.below(count) : 0;
    const int kind = m_random.below(10);
    if (kind < 3 && count < 6) {
        const bool first = count == 0 || m_random.chance(30);
        QxPNode* after = first ? nullptr : bendAt(edge, at);
        agree({"addBendAfter", edge.addBendAfter(after, place, 1) != nullptr, active});
        if (active) {
            bends.insert(bends.begin() + (first ? 0 : at + 1), place);
        }
    } else if (kind < 5 && count < 6) {
        QxPNode* bend = edge.addBend(edge.pTargetOrPathEdge(), place, 1);
        agree({"addBend", bend != nullptr, active});
        if (active) {
            bends.push_back(place);
        }
    } else if (kind < 7) {
        const bool foreign = m_random.chance(20);
        QxPNode* bend = foreign ? lastBend(*drawn(anyEdge())) : bendAt(edge, at);
        const bool own = bend != nullptr && bend->pUnverifiedOwnerEdge() == &edge;
        const int index = own && foreign ? count - 1 : at;
        agree({"discardBend", edge.discardBend(bend) != 0, active && own});
        if (active && own) {
            bends.erase(bends.begin() + index);
        }
    } else if (kind < 9 && count > 0) {
        const int inOwnGraph = m_random.below(2);
        const bool can = inOwnGraph != 0 || isVisible(model);
        agree({"moveTo of a bend", bendAt(edge, at)->moveTo(place, inOwnGraph) != 0, can});
        if (can) {
            bends[static_cast<std::size_t>(at)] = place;
        }
    } else {
        QxPointDList points;
        points.appendPoint(place);
        points.appendPoint(QxPoint(place.y(), place.x()));
        agree({"reroute", edge.reroute(points, 1) != 0, active});
        if (active) {
            bends = {place, QxPoint(place.y(), place.x())};
        }
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
