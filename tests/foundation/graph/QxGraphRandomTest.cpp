// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Random operations, legal and illegal, on the managers of two factories, compared after every step
// with a naive model and with what a listener makes of the events. Copies now and then. And a world
// in which the listener itself edits what is being changed.

#include <gtest/gtest.h>

#include <functional>

#include "foundation/graph/GraphDescription.h"
#include "foundation/graph/GraphFollower.h"
#include "foundation/graph/TopologyDriver.h"

namespace {

using namespace qxtest;

class RandomWorld : public TopologyDriver {
public:
    explicit RandomWorld(std::uint32_t seed) : TopologyDriver(seed) {
        m_home.pEventManager()->addGraphChangeListener(&m_home, &m_follower);
        for (GraphFactory* factory : {&m_home, &m_home, &m_home, &m_foreign}) {
            addManager(factory->newManager(), factory);
        }
    }
    ~RandomWorld() override { releaseAll(); }

    /// Runs one operation; answers what went wrong, or nothing.
    std::string step() {
        const int kind = m_random.below(100);
        kind < 30   ? stepNode()
        : kind < 62 ? stepEdge()
        : kind < 88 ? stepState()
        : kind < 94 ? stepNesting()
                    : stepGraph();
        std::string wrong = m_complaint.empty() ? m_model.difference() : m_complaint;
        for (const ModelManager* manager : m_model.managers()) {
            wrong = wrong.empty() && manager->factory == &m_home
                        ? m_follower.differenceAt(*manager->object)
                        : wrong;
        }
        return wrong.empty() && m_random.chance(2) ? copyDifference() : wrong;
    }

private:
    std::string copyDifference() {
        QxGraphManager& source = *m_model.managers().front()->object;
        const std::string wanted = describe(source);
        const Ref<QxGraphManager> copy(m_home.newManager());
        copy->addGraph(0)->addNode(0);
        copy->copyObject(&source);
        const std::string found = m_follower.differenceAt(*copy);
        return describe(*copy) != wanted      ? "copy"
               : describe(source) != wanted   ? "source of a copy"
               : copy->checkInvariants() == 0 ? "invariants of a copy"
               : source.internalUserFieldsInUse() + copy->internalUserFieldsInUse() != 0
                   ? "scratch fields of a copy"
                   : found;
    }

    GraphFactory m_home;
    GraphFactory m_foreign;
    GraphFollower m_follower;
};

/// Lets somebody in at every hook.
class OpenGraph : public QxGraph {
public:
    OpenGraph(QxOwnedObject* owner, const std::function<void()>& hook)
        : QxGraph(owner), m_hook(hook) {}
    void actOnConnectEdge(QxEdge*) override { m_hook(); }
    void actOnDisconnectEdge(QxEdge*) override { m_hook(); }
    void actOnActivateEdge(QxEdge*) override { m_hook(); }
    void actOnDeactivateEdge(QxEdge*) override { m_hook(); }
    void actOnConnectIntergraphEdge(QxEdge*) override { m_hook(); }
    void actOnDisconnectIntergraphEdge(QxEdge*) override { m_hook(); }
    void actOnChangeTargetNodeAtIntergraphEdge(QxEdge*, QxNode*, QxNode*) override { m_hook(); }

private:
    const std::function<void()>& m_hook;
};

class OpenFactory : public GraphFactory {
public:
    std::function<void()> hook;

protected:
    QxGraph* vNewGraph(QxOwnedObject* owner, int) override { return new OpenGraph(owner, hook); }
    QxGraph* vNewIntergraph(QxOwnedObject* owner, int) override {
        return new OpenGraph(owner, hook);
    }
};

/// Edits at random, and again from inside the hooks and events of its own edits. Nobody can say
/// what comes out in the end; but it has to be sound, and no freed object may be touched.
class Saboteur : public QxGraphChangeListener {
public:
    explicit Saboteur(std::uint32_t seed) : m_random(seed) {
        m_factory.pEventManager()->addGraphChangeListener(&m_factory, this);
        m_factory.hook = [this] { disturb(); };
        for (Ref<QxGraphManager>& manager : m_managers) {
            manager.reset(m_factory.newManager());
            manager->addGraph(0)->addNode(0);
        }
        m_depth = 0;
    }

    ~Saboteur() override { m_depth = 3; }

    void graphChanged(QxGraphChangeEventData*) override { disturb(); }

    void disturb() {
        if (m_depth < 3 && m_random.chance(25)) {
            act();
        }
    }

    void act() {
        ++m_depth;
        QxGraphManager& manager = *m_managers[m_random.chance(80) ? 0 : 1];
        QxGraph* graph = pick<QxGraph>(*manager.pGraphList());
        QxNode* node = graph != nullptr ? pick<QxNode>(*graph->pNodeList()) : nullptr;
        if (graph == nullptr || m_random.chance(4)) {
            manager.addGraph(0);
        } else if (node == nullptr || m_random.chance(15)) {
            graph->addNode(0);
        } else {
            const Ref<QxNode> held = hold(node);
            edit(*graph, *node);
        }
        --m_depth;
    }

    bool isSound() const {
        return m_managers[0]->checkInvariants() != 0 && m_managers[1]->checkInvariants() != 0;
    }

private:
    template <class T>
    T* pick(const QxDList& list) {
        const auto objects = objectsOf<T>(list);
        return objects.empty() ? nullptr : m_random.pick(objects);
    }
    QxGraph* anyGraph() {
        return pick<QxGraph>(*m_managers[m_random.chance(80) ? 0 : 1]->pGraphList());
    }
    void run(std::initializer_list<std::function<void()>> edits) {
        edits.begin()[m_random.below(static_cast<int>(edits.size()))]();
    }

    void edit(QxGraph& graph, QxNode& node) {
        QxGraph* other = anyGraph();
        QxNode* peer = other != nullptr ? pick<QxNode>(*other->pNodeList()) : nullptr;
        if (m_random.chance(50)) {
            return editEdge(graph, node, peer);
        }
        const auto move = [&] {
            if (graph.removeNode(&node) != nullptr) {
                QxGraph* place = anyGraph();
                if (place == nullptr || place->insertNode(&node) == nullptr) {
                    m_spare.emplace_back(&node);
                }
            }
        };
        const auto copy = [&] {
            if (m_random.chance(10) && m_depth == 1) {
                const Ref<QxGraphManager> made(m_factory.newManager());
                made->copyObject(m_managers[0].get());
                m_managers[1]->transferTopology(made.get());
            }
        };
        run({[&] { graph.discardNode(&node); }, move, move, copy,
             [&] {
                 graph.transferSelectedPartOfGraph(other, other->pNodeList(), other->pEdgeList());
             },
             [&] { graph.transferTopology(other); }, [&] { node.transferInEdges(peer); },
             [&] { node.transferOutEdges(peer); }, [&] { node.disconnectEdges(); },
             [&] { node.connectDisconnectedEdges(); }, [&] { node.pChildGraph(other); },
             [&] {
                 if (m_random.chance(10) && graph.pOwnerGraphManager() != nullptr) {
                     graph.pOwnerGraphManager()->discardGraph(&graph);
                 }
             }});
    }

    void editEdge(QxGraph& graph, QxNode& node, QxNode* peer) {
        QxEdgeDList edges;
        (m_random.chance(60) ? &graph : m_managers[0]->pIntergraph())->buildAllEdgeList(&edges);
        QxEdge* edge = pick<QxEdge>(edges);
        if (edge == nullptr || m_random.chance(30)) {
            m_managers[0]->addEdge(&node, m_random.chance(20) ? &node : peer, 0);
            return;
        }
        const Ref<QxEdge> held = hold(edge);
        run({[&] { edge->pOwnerGraph()->discardEdge(edge); }, [&] { edge->disconnect(); },
             [&] { edge->connect(); }, [&] { edge->deactivate(); }, [&] { edge->activate(); },
             [&] { edge->reverse(); }, [&] { edge->changeTargetNode(peer); },
             [&] { edge->changeEndNodes(&node, peer); }});
    }

    OpenFactory m_factory;
    TestRandom m_random;
    std::vector<Ref<QxNode>> m_spare;
    Ref<QxGraphManager> m_managers[2];
    int m_depth = 3;  ///< closed, while the world is being made
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

TEST_P(QxGraphRandom, StaysSoundWhileAListenerEditsInTheMiddleOfEveryChange) {
    const std::uint32_t seed = testSeed(GetParam());
    SCOPED_TRACE(seedTrace(seed));
    Saboteur saboteur(seed);
    for (int step = 0; step < 1000; ++step) {
        saboteur.act();
        ASSERT_TRUE(saboteur.isSound()) << "at step " << step;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, QxGraphRandom, testing::Values(1U, 2U, 3U, 4U, 5U, 6U));

}  // namespace
