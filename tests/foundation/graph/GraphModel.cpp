// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "foundation/graph/GraphModel.h"

#include <algorithm>

namespace qxtest {

namespace {

template <class T>
std::vector<T*> pointersTo(const std::vector<std::unique_ptr<T>>& owned) {
    std::vector<T*> pointers;
    for (const auto& object : owned) {
        pointers.push_back(object.get());
    }
    return pointers;
}

template <class T>
void forget(std::vector<std::unique_ptr<T>>& owned, const T& object) {
    std::erase_if(owned, [&](const auto& candidate) { return candidate.get() == &object; });
}

template <class T>
void append(std::vector<T*>& to, std::vector<T*>& from) {
    to.insert(to.end(), from.begin(), from.end());
    from.clear();
}

}  // namespace

std::vector<ModelManager*> GraphModel::managers() const {
    return pointersTo(m_managers);
}

std::vector<ModelGraph*> GraphModel::graphs() const {
    return pointersTo(m_graphs);
}

std::vector<ModelNode*> GraphModel::nodes() const {
    return pointersTo(m_nodes);
}

std::vector<ModelEdge*> GraphModel::edges() const {
    return pointersTo(m_edges);
}

ModelManager& GraphModel::addManager(QxGraphManager* object, QxAFactory* factory) {
    m_managers.push_back(std::make_unique<ModelManager>(ModelManager{object, factory}));
    return *m_managers.back();
}

ModelGraph& GraphModel::addGraph(ModelManager& manager, QxGraph* object) {
    m_graphs.push_back(std::make_unique<ModelGraph>(ModelGraph{object, manager.factory, &manager}));
    manager.graphs.push_back(m_graphs.back().get());
    return *m_graphs.back();
}

ModelNode& GraphModel::addNode(ModelGraph& graph, QxNode* object) {
    m_nodes.push_back(std::make_unique<ModelNode>(ModelNode{{object, graph.factory, &graph}}));
    graph.nodes.push_back(m_nodes.back().get());
    return *m_nodes.back();
}

ModelEdge& GraphModel::addDetachedEdge(QxEdge* object, QxAFactory* factory) {
    m_edges.push_back(std::make_unique<ModelEdge>(ModelEdge{{object, factory}}));
    return *m_edges.back();
}

bool GraphModel::canEnd(const ModelEdge& edge, const ModelNode* node) const {
    return node != nullptr && node->factory == edge.factory;
}

bool GraphModel::canConnect(const ModelEdge& edge, const ModelNode* node) const {
    if (edge.graph == nullptr || node == nullptr || node->graph == nullptr) {
        return false;
    }
    return edge.graph->isBetween ? node->graph->manager == edge.graph->manager
                                 : node->graph == edge.graph;
}

void GraphModel::setState(ModelEdge& edge, EdgeState state) {
    for (auto& list : edge.graph->edges) {
        std::erase(list, &edge);
    }
    edge.state = state;
    edge.graph->edges[static_cast<int>(state)].push_back(&edge);
}

void GraphModel::settleBetweenManagers(ModelEdge& edge) {
    for (const ModelNode* end : {edge.source, edge.target}) {
        if (edge.isAttached() && end != nullptr && end->graph != nullptr &&
            end->graph->manager != edge.graph->manager) {
            setState(edge, EdgeState::Disconnected);
        }
    }
}

bool GraphModel::insertNode(ModelGraph& graph, ModelNode& node) {
    if (node.graph != nullptr || graph.isBetween || graph.factory != node.factory) {
        return false;
    }
    node.graph = &graph;
    graph.nodes.push_back(&node);
    for (const auto& edge : m_edges) {
        if (edge->source == &node || edge->target == &node) {
            settleBetweenManagers(*edge);
        }
    }
    noteOwner(node);
    return true;
}

bool GraphModel::removeNode(ModelGraph& graph, ModelNode& node) {
    if (node.graph != &graph) {
        return false;
    }
    for (const auto& edge : m_edges) {
        if ((edge->source == &node || edge->target == &node) && edge->isAttached() &&
            edge->graph == &graph) {
            setState(*edge, EdgeState::Disconnected);
        }
    }
    std::erase(graph.nodes, &node);
    node.graph = nullptr;
    return true;
}

bool GraphModel::discardNode(ModelGraph& graph, ModelNode& node) {
    if (node.graph != &graph) {
        return false;
    }
    for (ModelEdge* edge : edges()) {
        if (edge->source == &node || edge->target == &node) {
            discardEdge(*edge->graph, *edge);
        }
    }
    removeNode(graph, node);
    forget(m_nodes, node);
    return true;
}

void GraphModel::destroyDetached(ModelNode& node) {
    for (const auto& edge : m_edges) {
        if (edge->source == &node || edge->target == &node) {
            setState(*edge, EdgeState::Disconnected);
            edge->source = edge->target = nullptr;
        }
    }
    forget(m_nodes, node);
}

bool GraphModel::insertEdge(ModelGraph& graph, ModelEdge& edge, ModelNode& source,
                            ModelNode& target) {
    if (edge.graph != nullptr || graph.factory != edge.factory || !canEnd(edge, &source) ||
        !canEnd(edge, &target)) {
        return false;
    }
    edge.graph = &graph;
    edge.source = &source;
    edge.target = &target;
    const bool connects = canConnect(edge, &source) && canConnect(edge, &target);
    setState(edge, connects ? EdgeState::Connected : EdgeState::Disconnected);
    noteOwner(edge);
    return true;
}

/// The intergraph comes into being when somebody needs it.
void GraphModel::syncBetween(ModelManager& manager) {
    QxGraph* between = manager.object->pQueryIntergraph();
    if (manager.between == nullptr && between != nullptr) {
        m_graphs.push_back(
            std::make_unique<ModelGraph>(ModelGraph{between, manager.factory, &manager, true}));
        manager.between = m_graphs.back().get();
    }
}

bool GraphModel::insertEdge(ModelManager& manager, ModelEdge& edge, ModelNode& source,
                            ModelNode& target) {
    if (source.graph == nullptr || target.graph == nullptr || source.graph->manager != &manager ||
        target.graph->manager != &manager) {
        return false;
    }
    syncBetween(manager);
    ModelGraph* place = source.graph == target.graph ? source.graph : manager.between;
    return place != nullptr && insertEdge(*place, edge, source, target);
}

bool GraphModel::removeEdge(ModelGraph& graph, ModelEdge& edge) {
    if (edge.graph != &graph) {
        return false;
    }
    for (auto& list : graph.edges) {
        std::erase(list, &edge);
    }
    edge.graph = nullptr;
    edge.source = edge.target = nullptr;
    edge.state = EdgeState::Disconnected;
    return true;
}

bool GraphModel::discardEdge(ModelGraph& graph, ModelEdge& edge) {
    if (!removeEdge(graph, edge)) {
        return false;
    }
    forget(m_edges, edge);
    return true;
}

void GraphModel::destroyDetached(ModelEdge& edge) {
    forget(m_edges, edge);
}

bool GraphModel::connect(ModelEdge& edge) {
    if (edge.graph == nullptr || edge.state != EdgeState::Disconnected ||
        !canConnect(edge, edge.source) || !canConnect(edge, edge.target)) {
        return false;
    }
    setState(edge, EdgeState::Connected);
    return true;
}

bool GraphModel::disconnect(ModelEdge& edge) {
    if (edge.graph == nullptr || edge.state != EdgeState::Connected) {
        return false;
    }
    setState(edge, EdgeState::Disconnected);
    return true;
}

bool GraphModel::deactivate(ModelEdge& edge) {
    if (!edge.isAttached()) {
        return false;
    }
    if (edge.state == EdgeState::Connected) {
        setState(edge, EdgeState::Deactivated);
    }
    return true;
}

bool GraphModel::activate(ModelEdge& edge) {
    if (edge.graph == nullptr || edge.state != EdgeState::Deactivated) {
        return true;
    }
    const bool connects = canConnect(edge, edge.source) && canConnect(edge, edge.target);
    setState(edge, connects ? EdgeState::Connected : EdgeState::Disconnected);
    return connects;
}

bool GraphModel::reverse(ModelEdge& edge) {
    if (edge.source == nullptr || edge.target == nullptr) {
        return false;
    }
    std::swap(edge.source, edge.target);
    return true;
}

bool GraphModel::changeEnds(ModelEdge& edge, ModelNode* source, ModelNode* target) {
    if (source == edge.source && target == edge.target) {
        return true;
    }
    const auto refuses = [&](const ModelNode* end, const ModelNode* node) {
        return (end != node && !canEnd(edge, node)) ||
               (edge.isAttached() && !canConnect(edge, node));
    };
    if (edge.graph == nullptr || refuses(edge.source, source) || refuses(edge.target, target)) {
        return false;
    }
    edge.source = source;
    edge.target = target;
    if (edge.state == EdgeState::Connected) {
        setState(edge, EdgeState::Connected);  // it goes to the end of the list
    }
    return true;
}

bool GraphModel::changeSourceWithoutConnect(ModelEdge& edge, ModelNode* node) {
    if (node == edge.source) {
        return true;
    }
    if (edge.graph == nullptr || !canEnd(edge, node) ||
        (edge.isAttached() && !canConnect(edge, node))) {
        return false;
    }
    edge.source = node;
    return true;
}

bool GraphModel::insertGraph(ModelManager& manager, ModelGraph& graph) {
    if (graph.manager != nullptr || graph.factory != manager.factory) {
        return false;
    }
    graph.manager = &manager;
    manager.graphs.push_back(&graph);
    return true;
}

bool GraphModel::removeGraph(ModelManager& manager, ModelGraph& graph) {
    if (graph.manager != &manager || graph.isBetween) {
        return false;
    }
    for (const auto& edge : m_edges) {
        for (const ModelNode* end : {edge->source, edge->target}) {
            if (edge->isAttached() && edge->graph->isBetween && end->graph == &graph) {
                setState(*edge, EdgeState::Disconnected);
            }
        }
    }
    endRelationsAt(graph);
    std::erase(manager.graphs, &graph);
    graph.manager = nullptr;
    return true;
}

bool GraphModel::discardGraph(ModelManager& manager, ModelGraph& graph) {
    if (graph.manager != &manager || graph.isBetween) {
        return false;
    }
    emptyGraph(graph);
    removeGraph(manager, graph);
    forget(m_graphs, graph);
    return true;
}

void GraphModel::destroyDetached(ModelGraph& graph) {
    emptyGraph(graph);
    forget(m_graphs, graph);
}

void GraphModel::emptyGraph(ModelGraph& graph) {
    while (!graph.nodes.empty()) {
        discardNode(graph, *graph.nodes.front());
    }
    for (const auto& list : graph.edges) {
        while (!list.empty()) {
            discardEdge(graph, *list.front());
        }
    }
}

bool GraphModel::transfer(ModelGraph& to, ModelGraph& from) {
    if (&to == &from || to.factory != from.factory || to.isBetween != from.isBetween) {
        return false;
    }
    std::vector<ModelMember*> moved(from.nodes.begin(), from.nodes.end());
    for (const auto& list : from.edges) {
        moved.insert(moved.end(), list.begin(), list.end());
    }
    append(to.nodes, from.nodes);
    for (int state = 0; state < 3; ++state) {
        append(to.edges[state], from.edges[state]);
    }
    for (ModelMember* member : moved) {
        member->graph = &to;
        noteOwner(*member);
    }
    for (const auto& edge : m_edges) {
        settleBetweenManagers(*edge);
    }
    return true;
}

bool GraphModel::transfer(ModelManager& to, ModelManager& from) {
    if (&to == &from || to.factory != from.factory) {
        return false;
    }
    syncBetween(to);
    for (ModelGraph* graph : from.graphs) {
        graph->manager = &to;
    }
    append(to.graphs, from.graphs);
    if (from.between != nullptr) {
        transfer(*to.between, *from.between);
    }
    return true;
}

}  // namespace qxtest
