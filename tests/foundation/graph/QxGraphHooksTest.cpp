// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Which hooks run, on whom, and in which order.

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>

#include "support/GraphTesting.h"

namespace {

using namespace qxtest;

/// What was called, in order: "G.connect a.connect". What it was about is left out when that is the
/// edge e.
class CallLog {
public:
    void name(const QxObject* object, const std::string& text) { m_names[object] = text; }
    void add(const QxObject* whom, const char* what, const QxObject* about = nullptr) {
        m_calls += (m_calls.empty() ? "" : " ") + m_names[whom] + "." + what;
        m_calls += about == nullptr || m_names[about] == "e" ? "" : "(" + m_names[about] + ")";
    }
    /// The calls since the last time.
    std::string take() { return std::exchange(m_calls, {}); }

private:
    std::map<const QxObject*, std::string> m_names;
    std::string m_calls;
};

/// The hooks that nodes and graphs have in common.
template <class Base>
class Recording : public Base {
public:
    Recording(QxOwnedObject* owner, CallLog& log) : Base(owner), m_log(log) {}
    ~Recording() override { this->isGraph() == 0 ? m_log.add(this, "destroyed") : void(); }
    void actOnDiscard() override { m_log.add(this, "actOnDiscard"); }

protected:
    CallLog& m_log;
};

class RecordingNode : public Recording<QxNode> {
public:
    using Recording::Recording;
    void actOnInitEndNode(QxEdge* e) override { m_log.add(this, "init", e); }
    void actOnChangeSourceNode(QxEdge* e, QxNode*, QxNode*) override {
        m_log.add(this, "changeSource", e);
    }
    void actOnChangeTargetNode(QxEdge* e, QxNode*, QxNode*) override {
        m_log.add(this, "changeTarget", e);
    }
    void actOnConnectEdge(QxEdge* e) override { m_log.add(this, "connect", e); }
    void actOnDisconnectEdge(QxEdge* e) override { m_log.add(this, "disconnect", e); }
    void actOnActivateEdge(QxEdge* e) override { m_log.add(this, "activate", e); }
    void actOnDeactivateEdge(QxEdge* e) override { m_log.add(this, "deactivate", e); }
};

class RecordingGraph : public Recording<QxGraph> {
public:
    using Recording::Recording;
    void actOnConnectEdge(QxEdge* e) override { m_log.add(this, "connect", e); }
    void actOnDisconnectEdge(QxEdge* e) override {
        m_log.add(this, pEdgeList()->searchObject(e) ? "disconnect when listed" : "disconnect", e);
    }
    void actOnActivateEdge(QxEdge* e) override { m_log.add(this, "activate", e); }
    void actOnDeactivateEdge(QxEdge* e) override { m_log.add(this, "deactivate", e); }
    void actOnConnectIntergraphEdge(QxEdge* e) override {
        m_log.add(this, "connectBetween", e);
        QxGraph::actOnConnectIntergraphEdge(e);
    }
    void actOnDisconnectIntergraphEdge(QxEdge* e) override {
        m_log.add(this, "disconnectBetween", e);
        QxGraph::actOnDisconnectIntergraphEdge(e);
    }
    void actOnActivateIntergraphEdge(QxEdge* e) override {
        m_log.add(this, "activateBetween", e);
        QxGraph::actOnActivateIntergraphEdge(e);
    }
    void actOnDeactivateIntergraphEdge(QxEdge* e) override {
        m_log.add(this, "deactivateBetween", e);
        QxGraph::actOnDeactivateIntergraphEdge(e);
    }
    void actOnChangeSourceNodeAtIntergraphEdge(QxEdge* e, QxNode* from, QxNode* to) override {
        m_log.add(this, "changeSourceBetween", e);
        QxGraph::actOnChangeSourceNodeAtIntergraphEdge(e, from, to);
    }
    void actOnChangeTargetNodeAtIntergraphEdge(QxEdge* e, QxNode* from, QxNode* to) override {
        m_log.add(this, "changeTargetBetween", e);
        QxGraph::actOnChangeTargetNodeAtIntergraphEdge(e, from, to);
    }
    void actOnInitNodeAtIntergraphEdge(QxEdge* e, QxNode* node) override {
        m_log.add(this, "initNodeBetween", e);
        QxGraph::actOnInitNodeAtIntergraphEdge(e, node);
    }

protected:
    QxNode* vNewNode(int) override { return new RecordingNode(this, m_log); }
    QxNode* vInsertNode(QxNode* node) override {
        m_log.add(this, "vInsertNode", node);
        return QxGraph::vInsertNode(node);
    }
    QxNode* vRemoveNode(QxNode* node) override {
        m_log.add(this, "vRemoveNode", node);
        return QxGraph::vRemoveNode(node);
    }
    int vDiscardNode(QxNode* node) override {
        m_log.add(this, "vDiscardNode", node);
        return QxGraph::vDiscardNode(node);
    }
    QxEdge* vInsertEdge(QxEdge* edge, QxNode* source, QxNode* target) override {
        m_log.add(this, "vInsertEdge", edge);
        return QxGraph::vInsertEdge(edge, source, target);
    }
    QxEdge* vRemoveEdge(QxEdge* edge) override {
        m_log.add(this, "vRemoveEdge", edge);
        return QxGraph::vRemoveEdge(edge);
    }
    int vDiscardEdge(QxEdge* edge) override {
        m_log.add(this, "vDiscardEdge", edge);
        return QxGraph::vDiscardEdge(edge);
    }
    void actAfterInsertEdgeBeforeConnect(QxEdge* edge) override {
        m_log.add(this, edge->connected() != 0 ? "inserted when connected" : "inserted", edge);
    }
    void actAfterRemoveEdge(QxEdge* edge) override {
        m_log.add(this, edge->ownerValid() != 0 ? "removed when owned" : "removed", edge);
    }
};

class RecordingFactory : public GraphFactory {
public:
    CallLog log;

protected:
    QxGraph* vNewGraph(QxOwnedObject* owner, int) override {
        return new RecordingGraph(owner, log);
    }
    QxGraph* vNewIntergraph(QxOwnedObject* owner, int) override {
        return new RecordingGraph(owner, log);
    }
};

/// Graph G with nodes a and b, graph H with node c; the intergraph is I.
class QxGraphHooks : public testing::Test {
protected:
    QxGraphHooks() {
        const std::pair<const QxObject*, const char*> names[] = {
            {g, "G"}, {h, "H"}, {manager->pIntergraph(), "I"}, {a, "a"}, {b, "b"}, {c, "c"}};
        for (const auto& [object, name] : names) {
            m_factory.log.name(object, name);
        }
        take();
    }
    std::string take() { return m_factory.log.take(); }
    QxEdge* newEdge(const char* name) {
        auto* edge = new Recording<QxEdge>(&m_factory, m_factory.log);
        m_factory.log.name(edge, name);
        return edge;
    }
    /// An edge that is in place already.
    QxEdge* place(const char* name, QxNode* source, QxNode* target) {
        QxEdge* edge = manager->insertEdge(newEdge(name), source, target);
        take();
        return edge;
    }

private:
    RecordingFactory m_factory;

protected:
    Ref<QxGraphManager> manager{m_factory.newManager()};
    QxGraph* g = manager->addGraph(0);
    QxGraph* h = manager->addGraph(0);
    QxNode* a = g->addNode(0);
    QxNode* b = g->addNode(0);
    QxNode* c = h->addNode(0);
};

TEST_F(QxGraphHooks, TellTheGraphAndThenBothEndsOfAnEdge) {
    QxEdge* e = newEdge("e");
    g->insertEdge(e, a, b);
    EXPECT_EQ(take(), "G.vInsertEdge a.init b.init G.inserted G.connect a.connect b.connect");
    e->disconnect();
    EXPECT_EQ(take(), "G.disconnect a.disconnect b.disconnect");
    e->connect();
    EXPECT_EQ(take(), "G.connect a.connect b.connect");
    e->deactivate();
    EXPECT_EQ(take(), "G.deactivate a.deactivate b.deactivate");
    e->activate();
    EXPECT_EQ(take(), "G.activate a.activate b.activate");
    e->changeTargetNode(a);
    EXPECT_EQ(take(),
              "G.disconnect a.disconnect b.disconnect b.changeTarget a.changeTarget "
              "G.connect a.connect a.connect");
    e->changeSourceNodeWithoutConnect(b);
    EXPECT_EQ(take(), "a.changeSource b.changeSource");
    e->reverse();
    EXPECT_EQ(take(), "a.changeSource b.changeTarget");
    e->disconnect();
    take();
    EXPECT_EQ(e->connect(a, c), 0);
    EXPECT_NE(e->connect(b, a), 0);
    EXPECT_EQ(e->pSourceNode(), b);
    EXPECT_NE(e->connected(), 0);
    take();
    const Ref<QxEdge> removed(g->removeEdge(e));
    EXPECT_EQ(take(), "G.vRemoveEdge G.disconnect b.disconnect a.disconnect G.removed");
    EXPECT_EQ(e->pSourceNode(), nullptr);
}

TEST_F(QxGraphHooks, TellTheGraphsOfTheEndsOfAnEdgeBetweenGraphs) {
    QxEdge* e = manager->insertEdge(newEdge("e"), a, c);
    EXPECT_EQ(take(),
              "I.vInsertEdge a.init c.init I.inserted "
              "G.connectBetween H.connectBetween a.connect c.connect");
    e->deactivate();
    EXPECT_EQ(take(), "G.deactivateBetween H.deactivateBetween a.deactivate c.deactivate");
    e->activate();
    EXPECT_EQ(take(), "G.activateBetween H.activateBetween a.activate c.activate");
    e->disconnect();
    EXPECT_EQ(take(), "G.disconnectBetween H.disconnectBetween a.disconnect c.disconnect");
    e->connect();
    take();
    e->changeTargetNodeWithoutConnect(b);
    EXPECT_EQ(take(), "c.changeTarget b.changeTarget H.changeTargetBetween G.changeTargetBetween");
    e->changeSourceNodeWithoutConnect(b);
    EXPECT_EQ(take(), "a.changeSource b.changeSource G.changeSourceBetween") << "once";
    e->disconnect();
    EXPECT_EQ(take(), "G.disconnectBetween b.disconnect b.disconnect");
}

TEST_F(QxGraphHooks, TellNobodyOfAChangeThatIsNoneOrIsRefused) {
    QxEdge* e = place("e", a, b);
    EXPECT_EQ(e->connect(), 0);
    EXPECT_NE(e->activate(), 0);
    EXPECT_EQ(e->changeTargetNode(c), 0);
    EXPECT_EQ(e->changeSourceNode(nullptr), 0);
    EXPECT_NE(e->changeEndNodes(a, b), 0);
    EXPECT_EQ(take(), "");
    e->deactivate();
    take();
    EXPECT_NE(e->deactivate(), 0);
    EXPECT_EQ(e->disconnect(), 0);
    EXPECT_EQ(e->connect(), 0);
    EXPECT_EQ(e->connect(b, a), 0) << "deactivated";
    EXPECT_EQ(e->changeEndNodes(b, c), 0) << "the first end would do, the second would not";
    EXPECT_EQ(take(), "");
}

TEST_F(QxGraphHooks, DiscardingRemovesThenTellsTheObjectThenDestroysIt) {
    g->discardEdge(place("e", a, b));
    EXPECT_EQ(take(),
              "G.vDiscardEdge G.vRemoveEdge G.disconnect a.disconnect b.disconnect G.removed "
              "e.actOnDiscard e.destroyed");
    const auto edgeGoes = [](const std::string& end) {
        return "I.vDiscardEdge I.vRemoveEdge G.disconnectBetween H.disconnectBetween " + end +
               ".disconnect c.disconnect I.removed e.actOnDiscard e.destroyed ";
    };
    place("e", a, c);
    g->discardNode(a);
    EXPECT_EQ(take(),
              "G.vDiscardNode(a) " + edgeGoes("a") + "G.vRemoveNode(a) a.actOnDiscard a.destroyed");
    place("e", b, c);
    manager->discardGraph(h);
    EXPECT_EQ(take(), "H.vDiscardNode(c) " + edgeGoes("b") +
                          "H.vRemoveNode(c) c.actOnDiscard c.destroyed H.actOnDiscard");
}

TEST_F(QxGraphHooks, RemovingANodeDisconnectsItsEdgesAndLeavesThoseBetweenGraphsAttached) {
    QxEdge* e = place("e", a, b);
    const QxEdge* f = place("f", c, a);
    g->removeNode(a);
    EXPECT_EQ(take(), "G.vRemoveNode(a) G.disconnect a.disconnect b.disconnect");
    EXPECT_NE(f->connected(), 0);
    g->insertNode(a);
    EXPECT_EQ(take(), "G.vInsertNode(a) G.initNodeBetween(f)");
    EXPECT_NE(e->connect(), 0);
}

TEST_F(QxGraphHooks, TransferKeepsStatesAndTellsOnlyOfEdgesThatLoseAnEnd) {
    QxEdge* e = place("e", a, b);
    Ref<QxGraph> alone(manager->removeGraph(h));
    EXPECT_NE(alone->transferTopology(g), 0);
    EXPECT_NE(e->connected(), 0);
    manager->insertGraph(alone.release());
    EXPECT_EQ(take(), "");
    QxEdge* f = place("f", a, g->addNode(0));
    alone.reset(manager->removeGraph(h));
    take();
    manager->insertGraph(alone.release());
    EXPECT_EQ(take(), "") << "the edges are ready, but nobody connects them";
    EXPECT_NE(f->connect(), 0);
}

}  // namespace
