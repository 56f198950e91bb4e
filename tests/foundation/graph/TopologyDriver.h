// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <deque>

#include "foundation/graph/GraphModel.h"
#include "support/TestRandom.h"

namespace qxtest {

/// Random operations on the topology, legal and illegal, done to real objects and then to a model
/// of them. Worlds of any layer drive theirs by it, for it calls what all layers have.
class TopologyDriver {
public:
    explicit TopologyDriver(std::uint32_t seed) : m_random(seed) {}
    TopologyDriver(const TopologyDriver&) = delete;
    TopologyDriver& operator=(const TopologyDriver&) = delete;
    virtual ~TopologyDriver() = default;

    const std::deque<std::string>& lastSteps() const { return m_log; }

protected:
    /// A manager of two graphs with two nodes each; those of the first one's factory are at home.
    void addManager(QxGraphManager* object, QxAFactory* factory);
    /// Releases what there is in random order, each owner before or after what it owned.
    void releaseAll();

    // What a world does in its own way.
    virtual ModelGraph& anyGraph() { return mostlyAtHome(m_model.graphs()); }
    virtual ModelNode& anyNode() { return mostlyAtHome(m_model.nodes()); }
    virtual QxGraph* newGraph(QxGraphManager& manager) { return manager.addGraph(0); }
    virtual void addNode(ModelGraph& graph);
    virtual void reverse(ModelEdge& edge);
    virtual void transfer(ModelManager& to, ModelManager& from);

    void note(const std::string& what);
    /// An operation, done for real and then in the model: braces keep that order.
    struct Outcome {
        std::string what;
        bool real;
        bool model;
    };
    /// Notes the operation, and complains when only one of model and reality let it pass.
    void agree(const Outcome& outcome);

    /// One of the objects that, unless it is given up after some tries, passes the test: legal
    /// operations have to be common, and illegal ones not absent.
    template <class T, class Test>
    T& mostly(const std::vector<T*>& objects, Test test) {
        T* picked = m_random.pick(objects);
        for (int tries = m_random.chance(10) ? 0 : 8; tries > 0 && !test(*picked); --tries) {
            picked = m_random.pick(objects);
        }
        return *picked;
    }
    template <class T>
    T& mostlyAtHome(const std::vector<T*>& objects) {
        return mostly(objects, [this](const T& object) {
            return object.factory == m_model.managers().front()->factory;
        });
    }
    ModelManager& anyManager() { return mostlyAtHome(m_model.managers()); }
    ModelMember& anyMember();
    /// Mostly where the member is, so that not nearly all calls are refused.
    ModelGraph& graphOf(const ModelMember& member) {
        return member.graph != nullptr && m_random.chance(80) ? *member.graph : anyGraph();
    }

    void addEdge();
    void insertEdge(ModelEdge& edge);
    void stepNode();
    void stepEdge();
    void stepState();
    void stepNesting();
    void stepGraph();

    GraphModel m_model;
    TestRandom m_random;
    std::string m_complaint;

private:
    std::deque<std::string> m_log;
};

}  // namespace qxtest
