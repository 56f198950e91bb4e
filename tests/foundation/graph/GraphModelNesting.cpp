// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <algorithm>

#include "foundation/graph/GraphModel.h"

namespace qxtest {

ModelMember* GraphModel::parentOf(const ModelGraph& graph) const {
    ModelMember* parent = nullptr;
    eachMember([&](ModelMember& member) {
        if (member.child == &graph) {
            parent = &member;
        }
    });
    return parent;
}

bool GraphModel::isNestedIn(const ModelGraph* graph, const ModelGraph& around) const {
    while (graph != nullptr && graph != &around) {
        const ModelMember* parent = parentOf(*graph);
        graph = parent != nullptr && parent->graph != nullptr ? parent->relationHome : nullptr;
    }
    return graph != nullptr;
}

void GraphModel::noteOwner(ModelMember& member) {
    if (member.child == nullptr) {
        return;
    }
    if (member.graph->manager == nullptr || member.graph->manager != member.child->manager ||
        isNestedIn(member.graph, *member.child)) {
        member.child = nullptr;
    }
    member.relationHome = member.graph;
}

void GraphModel::endRelationsAt(const ModelGraph& graph) {
    eachMember([&](ModelMember& member) {
        if (member.child == &graph || member.relationHome == &graph) {
            member.child = nullptr;
            member.relationHome = nullptr;
        }
    });
}

void GraphModel::setChild(ModelMember& member, ModelGraph* graph) {
    ModelManager* manager = member.graph != nullptr ? member.graph->manager : nullptr;
    if (manager == nullptr || graph == member.child) {
        return;
    }
    if (graph != nullptr && (graph->manager != manager || graph->isBetween ||
                             parentOf(*graph) != nullptr || isNestedIn(member.graph, *graph))) {
        return;
    }
    member.child = graph;
    member.relationHome = member.graph;
}

namespace {

template <class T>
bool sameObjects(std::vector<const QxObject*> wanted, const QxDList& list, bool ordered) {
    std::vector<const QxObject*> present;
    for (const T* object : objectsOf<T>(list)) {
        present.push_back(object);
    }
    if (!ordered) {
        std::sort(wanted.begin(), wanted.end());
        std::sort(present.begin(), present.end());
    }
    return wanted == present;
}

template <class M>
std::vector<const QxObject*> realOf(const std::vector<M*>& models) {
    std::vector<const QxObject*> objects;
    for (const M* model : models) {
        objects.push_back(model->object);
    }
    return objects;
}

constexpr auto Connected = static_cast<int>(EdgeState::Connected);
constexpr auto Disconnected = static_cast<int>(EdgeState::Disconnected);
constexpr auto Deactivated = static_cast<int>(EdgeState::Deactivated);

}  // namespace

std::string GraphModel::differenceAt(const ModelGraph& graph) const {
    const QxGraph& real = *graph.object;
    const auto matches = [](const auto& wanted, const QxDList& list, bool ordered) {
        return sameObjects<QxGraphMember>(realOf(wanted), list, ordered);
    };
    std::vector<const ModelEdge*> entering;
    std::vector<const ModelEdge*> leaving;
    std::vector<const ModelEdge*> unconnected;
    for (const auto& edge : m_edges) {
        if (edge->graph == nullptr || !edge->graph->isBetween) {
            continue;
        }
        const bool active = edge->state == EdgeState::Connected;
        if (edge->source != nullptr && edge->source->graph == &graph) {
            (active ? leaving : unconnected).push_back(edge.get());
        }
        if (edge->target != nullptr && edge->target->graph == &graph) {
            (active ? entering : unconnected).push_back(edge.get());
        }
    }
    const ModelMember* parent = parentOf(graph);
    return real.pOwnerGraphManager() != (graph.manager ? graph.manager->object : nullptr) ? "owner"
           : !matches(graph.nodes, *real.pNodeList(), true)            ? "node list"
           : !matches(graph.edges[Connected], *real.pEdgeList(), true) ? "edge list"
           : !matches(graph.edges[Disconnected], *real.pDisconnectedEdgeList(), false)
               ? "disconnected edges"
           : !matches(graph.edges[Deactivated], *real.pDeactivatedEdgeList(), false)
               ? "deactivated edges"
           : !matches(entering, *real.pEnteringIntergraphEdgeList(), false) ? "entering edges"
           : !matches(leaving, *real.pLeavingIntergraphEdgeList(), false)   ? "leaving edges"
           : !matches(unconnected, *real.pUnconnectedIntergraphEdgeList(), false)
               ? "unconnected edges"
           : real.pParentGraphMember() != (parent != nullptr ? parent->object : nullptr) ? "parent"
                                                                                         : "";
}

std::string GraphModel::differenceAt(const ModelNode& node) const {
    std::vector<const QxObject*> in;
    std::vector<const QxObject*> out;
    std::vector<const QxObject*> idle[3];
    for (const auto& edge : m_edges) {
        const bool active = edge->state == EdgeState::Connected;
        auto& idleEdges = idle[static_cast<int>(edge->state)];
        if (edge->source == &node) {
            (active ? out : idleEdges).push_back(edge->object);
        }
        if (edge->target == &node) {
            (active ? in : idleEdges).push_back(edge->object);
        }
    }
    const QxNode& real = *node.node();
    return real.pOwnerGraph() != (node.graph ? node.graph->object : nullptr)   ? "owner"
           : real.pUnverifiedFactory() != node.factory                         ? "factory"
           : real.pChildGraph() != (node.child ? node.child->object : nullptr) ? "child graph"
           : !sameObjects<QxEdge>(in, *real.pInEdgeList(), false)              ? "in-edges"
           : !sameObjects<QxEdge>(out, *real.pOutEdgeList(), false)            ? "out-edges"
           : !sameObjects<QxEdge>(idle[Disconnected], *real.pDisconnectedEdgeList(), false)
               ? "disconnected edges"
           : !sameObjects<QxEdge>(idle[Deactivated], *real.pDeactivatedEdgeList(), false)
               ? "deactivated edges"
           : real.checkInvariants() == 0 ? "invariants"
                                         : "";
}

std::string GraphModel::differenceAt(const ModelEdge& edge) const {
    const QxEdge& real = *edge.edge();
    const auto nodeOf = [](const ModelNode* node) { return node ? node->node() : nullptr; };
    const bool deactivated = edge.state == EdgeState::Deactivated;
    return real.pOwnerGraph() != (edge.graph ? edge.graph->object : nullptr)   ? "owner"
           : real.pUnverifiedFactory() != edge.factory                         ? "factory"
           : real.pChildGraph() != (edge.child ? edge.child->object : nullptr) ? "child graph"
           : real.pSourceNode() != nodeOf(edge.source)                         ? "source"
           : real.pTargetNode() != nodeOf(edge.target)                         ? "target"
           : (real.disconnected() != 0) != (edge.state == EdgeState::Disconnected) ||
                   (real.deactivated() != 0) != deactivated
               ? "state"
               : "";
}

std::string GraphModel::difference() const {
    for (const auto& manager : m_managers) {
        if (!sameObjects<QxGraph>(realOf(manager->graphs), *manager->object->pGraphList(), true)) {
            return "manager: graph list";
        }
        if (manager->object->checkInvariants() == 0) {
            return "manager: invariants";
        }
    }
    const auto firstOf = [this](const auto& models, const std::string& kind) -> std::string {
        for (std::size_t i = 0; i < models.size(); ++i) {
            const std::string what = differenceAt(*models[i]);
            if (!what.empty()) {
                return kind + " " + std::to_string(i) + ": " + what;
            }
        }
        return "";
    };
    std::string what = firstOf(m_graphs, "graph");
    what = what.empty() ? firstOf(m_nodes, "node") : what;
    return what.empty() ? firstOf(m_edges, "edge") : what;
}

}  // namespace qxtest
