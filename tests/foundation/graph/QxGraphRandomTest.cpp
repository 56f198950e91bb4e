// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Random operations, legal and illegal, on the managers of two factories, compared with a naive
// model after every step.

#include <gtest/gtest.h>

#include <deque>

#include "foundation/graph/GraphModel.h"
#include "support/TestRandom.h"

namespace {

using namespace qxtest;

class RandomWorld {
public:
    explicit RandomWorld(std::uint32_t seed) : m_random(seed) {
        for (GraphFactory* factory : {&m_home, &m_home, &m_home, &m_foreign}) {
            m_managers.emplace_back(factory->newManager());
            ModelManager& manager = m_model.addManager(m_managers.back().get(), factory);
            for (int i = 0; i < 2; ++i) {
                ModelGraph& graph = m_model.addGraph(manager, manager.object->addGraph(0));
                addNode(graph);
                addNode(graph);
            }
        }
    }

    /// The objects go in random order, each owner before or after what it owned.
    ~RandomWorld() {
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

    /// Runs one operation; answers what went wrong, or nothing.
    std::string step() {
        const int kind = m_random.below(100);
        kind < 30   ? stepNode()
        : kind < 62 ? stepEdge()
        : kind < 88 ? stepState()
        : kind < 94 ? stepNesting()
                    : stepGraph();
        return m_complaint.empty() ? m_model.difference() : m_complaint;
    }

    const std::deque<std::string>& lastSteps() const { return m_log; }

private:
    void note(const std::string& what) {
        m_log.push_back(what);
        if (m_log.size() > 6) {
            m_log.pop_front();
        }
    }

    /// An operation, done for real and then in the model: braces keep that order.
    struct Outcome {
        std::string what;
        bool real;
        bool model;
    };

    /// Notes the operation, and complains when only one of model and reality let it pass.
    void agree(const Outcome& outcome) {
        note(outcome.what + (outcome.model ? "" : " (refused)"));
        if (outcome.real != outcome.model) {
            m_complaint = outcome.what + (outcome.real ? " was not refused" : " was refused");
        }
    }

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
    /// Mostly where the member is, so that not nearly all calls are refused.
    ModelGraph& graphOf(const ModelMember& member) {
        return member.graph != nullptr && m_random.chance(80) ? *member.graph : anyGraph();
    }

    void addNode(ModelGraph& graph) {
        if (!graph.isBetween) {
            m_model.addNode(graph, graph.object->addNode(0));
        }
    }

    void stepNode() {
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

    void addEdge() {
        if (m_model.edges().size() < 60) {
            ModelGraph& maker = anyGraph();
            QxEdge* edge = static_cast<GraphFactory*>(maker.factory)->newEdge(maker.object, 0);
            insertEdge(m_model.addDetachedEdge(edge, maker.factory));
        }
    }

    void insertEdge(ModelEdge& edge) {
        ModelNode& source = mostly(m_model.nodes(), [&](const ModelNode& node) {
            return node.factory == edge.factory && node.graph != nullptr;
        });
        const auto canConnect = [&](const ModelNode& node) {
            return node.graph != nullptr && source.graph != nullptr &&
                   node.graph->manager == source.graph->manager;
        };
        ModelNode& target = m_random.chance(15) ? source : mostly(m_model.nodes(), canConnect);
        if (m_random.chance(60)) {
            ModelManager& manager = source.graph != nullptr && source.graph->manager != nullptr
                                        ? *source.graph->manager
                                        : anyManager();
            QxEdge* inserted =
                manager.object->insertEdge(edge.edge(), source.node(), target.node());
            agree({"insertEdge through the manager", inserted != nullptr,
                   m_model.insertEdge(manager, edge, source, target)});
        } else {
            ModelGraph& graph = graphOf(source);
            QxEdge* inserted = graph.object->insertEdge(edge.edge(), source.node(), target.node());
            agree({"insertEdge", inserted != nullptr,
                   m_model.insertEdge(graph, edge, source, target)});
        }
    }

    void stepEdge() {
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

    void stepState() {
        if (m_model.edges().empty()) {
            return;
        }
        ModelEdge& model = *m_random.pick(m_model.edges());
        QxEdge& edge = *model.edge();
        ModelNode& node = anyNode();
        switch (m_random.below(9)) {
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
                return agree({"reverse", edge.reverse() != 0, m_model.reverse(model)});
            case 6:
                return agree({"changeTargetNode", edge.changeTargetNode(node.node()) != 0,
                              m_model.changeEnds(model, model.source, &node)});
            case 7:
                return agree({"changeEndNodes",
                              edge.changeEndNodes(node.node(), edge.pSourceNode()) != 0,
                              m_model.changeEnds(model, &node, model.source)});
            default:
                return agree({"changeSourceNodeWithoutConnect",
                              edge.changeSourceNodeWithoutConnect(node.node()) != 0,
                              m_model.changeSourceWithoutConnect(model, &node)});
        }
    }

    void stepNesting() {
        ModelMember& member = m_model.edges().empty() || m_random.chance(70)
                                  ? static_cast<ModelMember&>(anyNode())
                                  : *m_random.pick(m_model.edges());
        ModelGraph* child = m_random.chance(85) ? &anyGraph() : nullptr;
        note("set child graph");
        member.object->pChildGraph(child != nullptr ? child->object : nullptr);
        m_model.setChild(member, child);
    }

    void stepGraph() {
        ModelGraph& graph = anyGraph();
        ModelManager& manager =
            graph.manager != nullptr && m_random.chance(80) ? *graph.manager : anyManager();
        const int kind = graph.manager == nullptr && m_random.chance(60) ? 7 : m_random.below(16);
        if (kind < 4 || m_model.graphs().size() < 8) {
            if (m_model.graphs().size() < 16) {
                ModelManager& owner = anyManager();
                addNode(m_model.addGraph(owner, owner.object->addGraph(0)));
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
            ModelGraph& from = anyGraph();
            agree({"transferTopology of a graph", graph.object->transferTopology(from.object) != 0,
                   m_model.transfer(graph, from)});
        } else {
            ModelManager& from = anyManager();
            agree({"transferTopology of a manager",
                   manager.object->transferTopology(from.object) != 0,
                   m_model.transfer(manager, from)});
        }
    }

    GraphFactory m_home;
    GraphFactory m_foreign;
    TestRandom m_random;
    GraphModel m_model;
    std::vector<Ref<QxGraphManager>> m_managers;
    std::deque<std::string> m_log;
    std::string m_complaint;
};

class QxGraphRandom : public testing::TestWithParam<std::uint32_t> {};

TEST_P(QxGraphRandom, AgreesWithTheNaiveModelAfterEveryStep) {
    const std::uint32_t seed = testSeed(GetParam());
    SCOPED_TRACE(seedTrace(seed));
    RandomWorld world(seed);
    for (int step = 0; step < 4000; ++step) {
        const std::string wrong = world.step();
        ASSERT_EQ(wrong, "") << "at step " << step << "; the last ones:\n"
                             << testing::PrintToString(world.lastSteps());
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, QxGraphRandom, testing::Values(1U, 2U, 3U, 4U, 5U, 6U));

}  // namespace
