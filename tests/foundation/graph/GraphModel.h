// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>
#include <string>
#include <vector>

#include "support/GraphTesting.h"

namespace qxtest {

enum class EdgeState { Connected, Disconnected, Deactivated };

struct ModelManager;
struct ModelNode;
struct ModelEdge;

struct ModelGraph {
    QxGraph* object;
    QxAFactory* factory;
    ModelManager* manager = nullptr;
    bool isBetween = false;
    std::vector<ModelNode*> nodes{};
    std::vector<ModelEdge*> edges[3]{};  ///< by state
};

struct ModelMember {
    QxGraphMember* object;
    QxAFactory* factory;
    ModelGraph* graph = nullptr;         ///< null while detached
    ModelGraph* child = nullptr;         ///< nested in the member
    ModelGraph* relationHome = nullptr;  ///< the graph of the member when that was noted last
};

struct ModelNode : ModelMember {
    QxNode* node() const { return static_cast<QxNode*>(object); }
};

struct ModelEdge : ModelMember {
    QxEdge* edge() const { return static_cast<QxEdge*>(object); }
    bool isAttached() const { return graph != nullptr && state != EdgeState::Disconnected; }

    ModelNode* source = nullptr;
    ModelNode* target = nullptr;
    EdgeState state = EdgeState::Disconnected;
};

struct ModelManager {
    QxGraphManager* object;
    QxAFactory* factory;
    std::vector<ModelGraph*> graphs{};
    ModelGraph* between = nullptr;
};

/// Who is where, kept in plain vectors and searched from end to end. Every operation answers
/// whether the real one has to succeed, and changes nothing when it has not.
class GraphModel {
public:
    ModelManager& addManager(QxGraphManager* object, QxAFactory* factory);
    ModelGraph& addGraph(ModelManager& manager, QxGraph* object);
    ModelNode& addNode(ModelGraph& graph, QxNode* object);
    ModelEdge& addDetachedEdge(QxEdge* object, QxAFactory* factory);

    bool insertNode(ModelGraph& graph, ModelNode& node);
    bool removeNode(ModelGraph& graph, ModelNode& node);
    bool discardNode(ModelGraph& graph, ModelNode& node);
    /// A detached node dies with the last reference; edges that still end there lose their ends.
    void destroyDetached(ModelNode& node);

    bool insertEdge(ModelGraph& graph, ModelEdge& edge, ModelNode& source, ModelNode& target);
    bool insertEdge(ModelManager& manager, ModelEdge& edge, ModelNode& source, ModelNode& target);
    bool removeEdge(ModelGraph& graph, ModelEdge& edge);
    bool discardEdge(ModelGraph& graph, ModelEdge& edge);
    void destroyDetached(ModelEdge& edge);

    bool connect(ModelEdge& edge);
    bool disconnect(ModelEdge& edge);
    bool deactivate(ModelEdge& edge);
    bool activate(ModelEdge& edge);
    bool reverse(ModelEdge& edge);
    bool changeEnds(ModelEdge& edge, ModelNode* source, ModelNode* target);
    bool changeSourceWithoutConnect(ModelEdge& edge, ModelNode* node);

    bool insertGraph(ModelManager& manager, ModelGraph& graph);
    bool removeGraph(ModelManager& manager, ModelGraph& graph);
    bool discardGraph(ModelManager& manager, ModelGraph& graph);
    void destroyDetached(ModelGraph& graph);
    void emptyGraph(ModelGraph& graph);
    bool transfer(ModelGraph& to, ModelGraph& from);
    bool transfer(ModelManager& to, ModelManager& from);
    void setChild(ModelMember& member, ModelGraph* graph);

    std::vector<ModelManager*> managers() const;
    std::vector<ModelGraph*> graphs() const;
    std::vector<ModelNode*> nodes() const;
    std::vector<ModelEdge*> edges() const;

    template <class Visit>
    void eachMember(Visit visit) const {
        for (const auto& node : m_nodes) {
            visit(*node);
        }
        for (const auto& edge : m_edges) {
            visit(*edge);
        }
    }

    /// Compares everything with the real objects; empty, or what differs first.
    std::string difference() const;

private:
    bool canEnd(const ModelEdge& edge, const ModelNode* node) const;
    bool canConnect(const ModelEdge& edge, const ModelNode* node) const;
    void setState(ModelEdge& edge, EdgeState state);
    void settleBetweenManagers(ModelEdge& edge);
    void syncBetween(ModelManager& manager);
    ModelMember* parentOf(const ModelGraph& graph) const;
    bool isNestedIn(const ModelGraph* graph, const ModelGraph& around) const;
    void noteOwner(ModelMember& member);
    void endRelationsAt(const ModelGraph& graph);
    std::string differenceAt(const ModelGraph& graph) const;
    std::string differenceAt(const ModelNode& node) const;
    std::string differenceAt(const ModelEdge& edge) const;

    std::vector<std::unique_ptr<ModelManager>> m_managers;
    std::vector<std::unique_ptr<ModelGraph>> m_graphs;
    std::vector<std::unique_ptr<ModelNode>> m_nodes;
    std::vector<std::unique_ptr<ModelEdge>> m_edges;
};

}  // namespace qxtest
