// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "foundation/graph/TopologyDriver.h"

namespace qxtest {

void TopologyDriver::addManager(QxGraphManager* object, QxAFactory* factory) {
    ModelManager& manager = m_model.addManager(object, factory);
    for (int i = 0; i < 2; ++i) {
        ModelGraph& graph = m_model.addGraph(manager, newGraph(*object));
        addNode(graph);
        addNode(graph);
    }
}

void TopologyDriver::releaseAll() {
    std::vector<QxObject*> owned;
    for (const ModelManager* manager : m_model.managers()) {
        owned.push_back(manager->object);
    }
    for (const ModelGraph* graph : m_model.graphs()) {
        if (graph->manager == nullptr) {
            owned.push_back(graph->object);
        }
    }
    m_model.eachMember([&](const ModelMember& member) {
        if (member.graph == nullptr) {
            owned.push_back(member.object);
        }
    });
    while (!owned.empty()) {
        const auto at = owned.begin() + m_random.below(static_cast<int>(owned.size()));
        (*at)->vRelease();
        owned.erase(at);
    }
}

ModelMember& TopologyDriver::anyMember() {
    if (m_model.edges().empty() || m_random.chance(70)) {
        return anyNode();
    }
    return *m_random.pick(m_model.edges());
}

void TopologyDriver::note(const std::string& what) {
    m_log.push_back(what);
    if (m_log.size() > 6) {
        m_log.pop_front();
    }
}

void TopologyDriver::agree(const Outcome& outcome) {
    note(outcome.what + (outcome.model ? "" : " (refused)"));
    if (outcome.real != outcome.model) {
        m_complaint = outcome.what + (outcome.real ? " was not refused" : " was refused");
    }
}

void TopologyDriver::addNode(ModelGraph& graph) {
    if (!graph.isBetween) {
        m_model.addNode(graph, graph.object->addNode(0));
    }
}

void TopologyDriver::stepNode() {
    ModelNode& node = anyNode();
    ModelGraph& graph = graphOf(node);
    const int kind = node.graph == nullptr && m_random.chance(60) ? 3 : m_random.below(12);
    if (kind < 3 || m_model.nodes().size() < 8) {
        if (m_model.nodes().size() < 40) {
            addNode(anyGraph());
        }
    } else if (kind < 7) {
        agree({"insertNode", graph.object->insertNode(node.node()) != nullptr,
               m_model.insertNode(graph, node)});
    } else if (kind < 10) {
        agree({"removeNode", graph.object->removeNode(node.node()) != nullptr,
               m_model.removeNode(graph, node)});
    } else if (kind < 11) {
        agree({"discardNode", graph.object->discardNode(node.node()) != 0,
               m_model.discardNode(graph, node)});
    } else if (node.graph == nullptr) {
        note("release a detached node");
        node.object->vRelease();
        m_model.destroyDetached(node);
    }
}

void TopologyDriver::addEdge() {
    if (m_model.edges().size() < 60) {
        ModelGraph& maker = anyGraph();
        QxEdge* edge = maker.factory->newEdge(maker.object, 0);
        insertEdge(m_model.addDetachedEdge(edge, maker.factory));
    }
}

void TopologyDriver::insertEdge(ModelEdge& edge) {
    ModelNode& source = mostly(m_model.nodes(), [&](const ModelNode& node) {
        return node.factory == edge.factory && node.graph != nullptr;
    });
    const auto canConnect = [&](const ModelNode& node) {
        return node.graph != nullptr && source.graph != nullptr &&
               node.graph->manager == source.graph->manager;
    };
    const bool close = source.graph != nullptr && m_random.chance(40);
    ModelNode& target =
        close ? *m_random.pick(source.graph->nodes) : mostly(m_model.nodes(), canConnect);
    ModelManager& manager = source.graph != nullptr && source.graph->manager != nullptr
                                ? *source.graph->manager
                                : anyManager();
    if (m_random.chance(50)) {
        QxEdge* inserted = manager.object->insertEdge(edge.edge(), source.node(), target.node());
        agree({"insertEdge through the manager", inserted != nullptr,
               m_model.insertEdge(manager, edge, source, target)});
    } else {
        ModelGraph& graph =
            manager.between != nullptr && m_random.chance(30) ? *manager.between : graphOf(source);
        QxEdge* inserted = graph.object->insertEdge(edge.edge(), source.node(), target.node());
        agree({"insertEdge", inserted != nullptr, m_model.insertEdge(graph, edge, source, target)});
    }
}

void TopologyDriver::stepEdge() {
    if (m_model.edges().size() < 10 || m_random.chance(25)) {
        return addEdge();
    }
    ModelEdge& edge = *m_random.pick(m_model.edges());
    ModelGraph& graph = graphOf(edge);
    const int kind = edge.graph == nullptr && m_random.chance(60) ? 0 : m_random.below(12);
    if (kind < 5) {
        insertEdge(edge);
    } else if (kind < 9) {
        agree({"removeEdge", graph.object->removeEdge(edge.edge()) != nullptr,
               m_model.removeEdge(graph, edge)});
    } else if (kind < 10) {
        agree({"discardEdge", graph.object->discardEdge(edge.edge()) != 0,
               m_model.discardEdge(graph, edge)});
    } else if (kind < 11 && edge.graph == nullptr) {
        note("release a detached edge");
        edge.object->vRelease();
        m_model.destroyDetached(edge);
    }
}

void TopologyDriver::reverse(ModelEdge& edge) {
    agree({"reverse", edge.edge()->reverse() != 0, m_model.reverse(edge)});
}

void TopologyDriver::transfer(ModelManager& to, ModelManager& from) {
    agree({"transferTopology of a manager", to.object->transferTopology(from.object) != 0,
           m_model.transfer(to, from)});
}

void TopologyDriver::stepState() {
    if (m_model.edges().empty()) {
        return;
    }
    ModelEdge& model = *m_random.pick(m_model.edges());
    QxEdge& edge = *model.edge();
    ModelNode& node = anyNode();
    const int kind = m_random.below(9);
    kind < 1   ? agree({"disconnect", edge.disconnect() != 0, m_model.disconnect(model)})
    : kind < 3 ? agree({"connect", edge.connect() != 0, m_model.connect(model)})
    : kind < 4 ? agree({"deactivate", edge.deactivate() != 0, m_model.deactivate(model)})
    : kind < 5 ? agree({"activate", edge.activate() != 0, m_model.activate(model)})
    : kind < 6 ? reverse(model)
    : kind < 7 ? agree({"changeTargetNode", edge.changeTargetNode(node.node()) != 0,
                        m_model.changeEnds(model, model.source, &node)})
    : kind < 8 ? agree({"changeEndNodes", edge.changeEndNodes(node.node(), edge.pSourceNode()) != 0,
                        m_model.changeEnds(model, &node, model.source)})
               : agree({"changeSourceNodeWithoutConnect",
                        edge.changeSourceNodeWithoutConnect(node.node()) != 0,
                        m_model.changeSourceWithoutConnect(model, &node)});
}

void TopologyDriver::stepNesting() {
    ModelMember& member = anyMember();
    if (m_random.chance(25)) {
        note("name");
        member.object->nameString(m_random.chance(80) ? L"name" : nullptr);
        return;
    }
    ModelGraph* child = m_random.chance(85) ? &anyGraph() : nullptr;
    note("set child graph");
    member.object->pChildGraph(child != nullptr ? child->object : nullptr);
    m_model.setChild(member, child);
}

void TopologyDriver::stepGraph() {
    ModelGraph& graph = anyGraph();
    ModelManager& manager =
        graph.manager != nullptr && m_random.chance(80) ? *graph.manager : anyManager();
    const int kind = graph.manager == nullptr && m_random.chance(60) ? 7 : m_random.below(16);
    if (kind < 4 || m_model.graphs().size() < 8) {
        if (m_model.graphs().size() < 16) {
            ModelManager& owner = anyManager();
            addNode(m_model.addGraph(owner, newGraph(*owner.object)));
        }
    } else if (kind < 7) {
        agree({"removeGraph", manager.object->removeGraph(graph.object) != nullptr,
               m_model.removeGraph(manager, graph)});
    } else if (kind < 10) {
        agree({"insertGraph", manager.object->insertGraph(graph.object) != nullptr,
               m_model.insertGraph(manager, graph)});
    } else if (kind < 11) {
        agree({"discardGraph", manager.object->discardGraph(graph.object) != 0,
               m_model.discardGraph(manager, graph)});
    } else if (kind < 12) {
        note("empty or release a graph");
        if (graph.manager == nullptr) {
            graph.object->vRelease();
            m_model.destroyDetached(graph);
        } else if (m_random.chance(30)) {
            graph.object->emptyTopology();
            m_model.emptyGraph(graph);
        }
    } else if (kind < 15) {
        ModelGraph& from = !graph.isBetween && graph.manager != nullptr && m_random.chance(40)
                               ? *m_random.pick(graph.manager->graphs)
                               : anyGraph();
        agree({"transferTopology of a graph", graph.object->transferTopology(from.object) != 0,
               m_model.transfer(graph, from)});
    } else {
        transfer(manager, anyManager());
    }
}

}  // namespace qxtest
