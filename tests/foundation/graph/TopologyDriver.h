// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <deque>

#include "foundation/graph/GraphModel.h"
#include "support/TestRandom.h"

namespace qxtest {

/// Random operations on the topology, legal and illegal, done to the real objects of a model and
/// then to the model. Worlds of any layer drive theirs by it, for it calls what all layers have.
class TopologyDriver {
public:
    TopologyDriver(GraphModel& model, TestRandom& random, QxAFactory& home)
        : m_model(model), m_random(random), m_home(home) {}
    TopologyDriver(const TopologyDriver&) = delete;
    TopologyDriver& operator=(const TopologyDriver&) = delete;
    virtual ~TopologyDriver() = default;

    /// One operation; answers what went wrong, or nothing.
    std::string step();
    const std::deque<std::string>& lastSteps() const { return m_log; }
    /// Two graphs with two nodes each.
    void populate(ModelManager& manager);
    /// What no owner holds any more, for the end of the world.
    std::vector<QxObject*> detachedObjects() const;

protected:
    /// Called when an object has been made for the model.
    virtual void actOnNewNode(ModelNode&) {}

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
        return mostly(objects, [this](const T& object) { return object.factory == &m_home; });
    }
    ModelGraph& anyGraph() { return mostlyAtHome(m_model.graphs()); }
    ModelNode& anyNode() { return mostlyAtHome(m_model.nodes()); }
    ModelManager& anyManager() { return mostlyAtHome(m_model.managers()); }
    ModelMember& anyMember();
    /// Mostly where the member is, so that not nearly all calls are refused.
    ModelGraph& graphOf(const ModelMember& member) {
        return member.graph != nullptr && m_random.chance(80) ? *member.graph : anyGraph();
    }

    void addNode(ModelGraph& graph);
    void addEdge();
    void insertEdge(ModelEdge& edge);
    void stepNode();
    void stepEdge();
    void stepState();
    void stepNesting();
    void stepGraph();

    GraphModel& m_model;
    TestRandom& m_random;
    QxAFactory& m_home;

private:
    std::deque<std::string> m_log;
    std::string m_complaint;
};

}  // namespace qxtest
