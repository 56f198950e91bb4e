// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// What the random world does not see: who hears, when nothing is told, what the data answer.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "qx/foundation/graph/QxGraphChangeEvent.h"
#include "qx/foundation/graph/QxGraphChangeEventData.h"
#include "qx/foundation/graph/QxGraphChangeListener.h"
#include "qx/foundation/graph/QxVetoableGraphChangeListener.h"
#include "qx/foundation/util/internal/Suspension.h"
#include "support/GraphTesting.h"

namespace {

using namespace qxtest;
using testing::ElementsAre;
using testing::IsEmpty;

class Recorder : public QxGraphChangeListener {
public:
    using QxGraphChangeListener::graphChanged;
    void graphChanged(QxGraphChangeEventData* data) override {
        types.push_back(data->type());
        last.reset(data->cloneObject());
    }
    std::vector<std::int32_t> take() { return std::exchange(types, {}); }

    std::vector<std::int32_t> types;
    Ref<QxGraphChangeEventData> last;
};

class Vetoer : public QxVetoableGraphChangeListener {
public:
    int vetoGraphChange(QxGraphChangeEventData* data) override {
        return data->type() == NodeInserted ? 1 : 0;
    }
};

class QxGraphChangeEvents : public testing::Test {
protected:
    QxGraphChangeEvents() { events->addGraphChangeListener(&factory, &recorder); }

    GraphFactory factory;
    QxEventManager* events = factory.pEventManager();
    Ref<QxGraphManager> manager{factory.newManager()};
    QxGraph* g = manager->addGraph(0);
    QxGraph* h = manager->addGraph(0);
    QxNode* a = g->addNode(0);
    QxNode* b = g->addNode(0);
    QxEdge* edge = g->addEdge(a, b, 0);
    Recorder recorder;
};

TEST_F(QxGraphChangeEvents, TellAnOperationOnceByItsOwnTypeAfterWhatItDoesToOthers) {
    edge->changeTargetNode(a);
    EXPECT_THAT(recorder.take(), ElementsAre(EdgeDisconnected, EdgeEndsChanged, EdgeConnected));
    const Ref<QxNode> removed(g->removeNode(a));
    EXPECT_THAT(recorder.take(), ElementsAre(EdgeDisconnected, NodeRemoved));
    EXPECT_EQ(recorder.last->pOldOwnerGraph(), g);
    EXPECT_EQ(recorder.last->pOldNext(), b);
    g->insertNode(hold(removed.get()).release());
    EXPECT_EQ(recorder.last->pNewPrevious(), b);
    g->discardNode(a);
    EXPECT_THAT(recorder.take(), ElementsAre(NodeInserted, EdgeDiscarded, NodeDiscarded));
    manager->discardGraph(g);
    EXPECT_THAT(recorder.take(), ElementsAre(NodeDiscarded, GraphDiscarded));
    EXPECT_EQ(recorder.last->pOldOwnerManager(), manager.get());
}

TEST_F(QxGraphChangeEvents, AnswerWhatTheTypeMakesMeaningfulInCopiesToo) {
    a->nameString(L"new");
    EXPECT_STREQ(recorder.last->pNewNameString(), L"new");
    EXPECT_EQ(recorder.last->pOldNameString(), nullptr);
    EXPECT_EQ(recorder.last->pOldOwnerGraph(), nullptr);
    EXPECT_EQ(recorder.last->pSourceNode(), a);
    edge->deactivate();
    EXPECT_EQ(recorder.last->oldEdgeState(), QxEdgeIsConnected);
    EXPECT_EQ(recorder.last->newEdgeState(), QxEdgeIsDeactivated);
    EXPECT_EQ(recorder.last->pNewNameString(), nullptr);
    EXPECT_EQ(recorder.last->pOldSourceNode(), nullptr) << "the ends are the same";
    edge->reverse();
    EXPECT_EQ(recorder.last->pOldSourceNode(), a);
    EXPECT_EQ(recorder.last->pNewSourceNode(), b);
    recorder.take();
    a->nameString(L"new");
    EXPECT_THAT(recorder.take(), IsEmpty()) << "no change";
}

TEST_F(QxGraphChangeEvents, ReachFormerOwnersMasksVetoersAndGroups) {
    Recorder former;
    events->addGraphChangeListener(g, &former, NodeRemoved | NodeInserted);
    h->insertNode(g->removeNode(a));
    EXPECT_THAT(former.take(), ElementsAre(NodeRemoved));
    h->transferTopology(g);
    EXPECT_THAT(former.take(), ElementsAre(NodeInserted)) << "b has left for another graph";
    Vetoer vetoer;
    events->addGraphChangeListener(&factory, &vetoer);
    recorder.take();
    EXPECT_NE(g->addNode(0), nullptr);
    EXPECT_THAT(recorder.take(), IsEmpty());
    events->removeGraphChangeListener(&factory, &vetoer);
    events->coalesce(1);
    events->openBatch();
    h->discardNode(a);
    EXPECT_THAT(recorder.take(), IsEmpty());
    events->closeBatch();
    EXPECT_THAT(recorder.take(), ElementsAre(EdgeDiscarded, NodeDiscarded));
    EXPECT_EQ(recorder.last->pOldOwnerGraph(), h);
}

TEST_F(QxGraphChangeEvents, AreSilentUnderTheGuardAndOutsideAManager) {
    const auto suspendEvents = [this] {
        return qx::internal::suspend(
            [this](auto... value) { return events->fireEvents(value...); });
    };
    {
        const auto silent = suspendEvents();
        {
            const auto again = suspendEvents();
            EXPECT_EQ(again.found(), 0);
        }
        EXPECT_EQ(events->fireEvents(), 0) << "the outer guard holds";
        g->addNode(0);
    }
    EXPECT_NE(events->fireEvents(), 0);
    const Ref<QxGraph> alone(manager->removeGraph(h));
    recorder.take();
    alone->addNode(0);
    EXPECT_THAT(recorder.take(), IsEmpty());
    alone->transferTopology(g);
    EXPECT_THAT(recorder.take(), ElementsAre(NodeRemoved, NodeRemoved, NodeRemoved, EdgeRemoved));
}

}  // namespace
