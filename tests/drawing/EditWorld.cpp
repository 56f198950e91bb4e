// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "drawing/EditWorld.h"

#include <algorithm>

#include "qx/foundation/geometry/QxPointDList.h"

namespace qxtest {

EditWorld::EditWorld(std::uint32_t seed) : TopologyDriver(seed) {
    QxPointDList arrow;
    for (const QxPoint& corner : {QxPoint(-5, -5), QxPoint(1, -5), QxPoint(1, -2), QxPoint(5, 1),
                                  QxPoint(-1, 5), QxPoint(-2, 2)}) {
        arrow.appendPoint(corner);
    }
    m_shapes = {QxShape(), QxShape(QxShapeTypeOval), QxShape::fromOutline(arrow)};
    for (WorldFactory* factory : {&m_home, &m_foreign}) {
        factory->onNew = [this](const QxObject* object) {
            m_story.forget(object);
            m_knownBends.erase(object);
        };
    }
    for (QxFactory* factory : {&m_home, &m_home, &m_home, &m_foreign}) {
        QxDGraphManager* manager = factory->newDGraphManager();
        factory->pEventManager()->addDrawingChangeListener(manager, &m_events);
        manager->isUpdatingAffectedGraphs(1);  // nothing follows moves: that has its own world
        addManager(manager, factory);
    }
    settleAnchors();
}

/// Some are seen wherever they are.
QxGraph* EditWorld::newGraph(QxGraphManager& manager) {
    return manager.addGraph(m_random.chance(40) ? WorldFactory::Shown : WorldFactory::Plain);
}

std::string EditWorld::step() {
    const int kind = m_random.below(100);
    kind < 12   ? stepNode()
    : kind < 24 ? stepEdge()
    : kind < 31 ? stepState()
    : kind < 34 ? stepClipping()
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

void EditWorld::reverse(ModelEdge& edge) {
    if (edge.source != nullptr && edge.target != nullptr) {
        std::reverse(m_bends[edge.object].begin(), m_bends[edge.object].end());
    }
    TopologyDriver::reverse(edge);
}

/// The anchor graph comes along when there is none yet.
void EditWorld::transfer(ModelManager& to, ModelManager& from) {
    ModelGraph* anchor = m_anchors[&from];
    TopologyDriver::transfer(to, from);
    if (m_anchors[&to] == nullptr && from.graphs.empty()) {
        m_anchors[&to] = anchor;
    }
}

}  // namespace qxtest
