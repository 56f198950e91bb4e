// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "drawing/EditWorld.h"

#include "qx/foundation/geometry/QxPointDList.h"

namespace qxtest {

EditWorld::EditWorld(std::uint32_t seed) : m_random(seed) {
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
        ModelGraph& graph = m_model.addGraph(manager, newGraph(*real));
        m_attributes[graph.object];
        addNode(graph);
        addNode(graph);
    }
}

/// Some are seen wherever they are.
QxDGraph* EditWorld::newGraph(QxDGraphManager& manager) {
    return manager.addGraph(m_random.chance(40) ? WorldFactory::Shown : WorldFactory::Plain);
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

void EditWorld::stepGraph() {
    ModelGraph& graph = anyGraph();
    ModelManager& manager =
        graph.manager != nullptr && m_random.chance(80) ? *graph.manager : anyManager();
    const int kind = m_random.below(16);
    if (kind < 3 || m_model.graphs().size() < 8) {
        if (m_model.graphs().size() < 14) {
            note("addGraph");
            QxDGraph* real = newGraph(*drawn(manager));
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

}  // namespace qxtest
