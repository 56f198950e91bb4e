// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// A listener edits nodes, edges and connectors at random from inside the events of such edits. The
// drawing has to stay sound.

#include <gtest/gtest.h>

#include <functional>

#include "drawing/DrawingTesting.h"
#include "support/TestRandom.h"

namespace {

using namespace qxtest;

/// Edits a drawing without a twin, also from inside the events of its own edits.
class Meddler : public QxDrawingChangeListener {
public:
    explicit Meddler(std::uint32_t seed) : random(seed) {
        factory.pEventManager()->addDrawingChangeListener(&factory, this);
    }
    using QxDrawingChangeListener::drawingChanged;
    void drawingChanged(QxDrawingChangeEventData*) override {
        if (depth < 3 && random.chance(40)) {
            step();
        }
    }
    void step() {
        ++depth;
        edit();
        --depth;
    }

    QxFactory factory;
    SmallDrawing drawing{factory};

private:
    template <class T>
    T* pick(const QxDList* list) {
        const int count = list != nullptr ? list->count() : 0;
        return count == 0 ? nullptr
                          : objectsOf<T>(*list)[static_cast<std::size_t>(random.below(count))];
    }
    void edit() {
        auto* node = pick<QxDNode>(drawing.graph->pNodeList());
        auto* edge = pick<QxDEdge>(drawing.graph->pEdgeList());
        if (node == nullptr || drawing.graph->pNodeList()->count() < 4) {
            drawing.addNode(random.below(200), random.below(200));
            return;
        }
        if (edge == nullptr || random.chance(15)) {
            drawing.addEdge(node, pick<QxDNode>(drawing.graph->pNodeList()));
            return;
        }
        node = random.chance(70) ? edge->pSourceNode() : node;
        auto* connector = pick<QxConnector>(node->pQueryConnectorManager());
        if (connector == nullptr || random.chance(20)) {
            random.chance(30) ? node->ntAddConnector(0, 900, 0, 0)
                              : node->addConnector(500, 0, 0, 0, 1, 0);
            return;
        }
        const std::function<void()> edits[] = {
            [&] { drawing.graph->discardNode(node); },
            [&] { drawing.graph->discardEdge(edge); },
            [&] { node->discardConnector(connector); },
            [&] { qxtest::Ref<QxConnector>(node->removeConnector(connector)); },
            [&] { node->resize(random.below(80), random.below(80), 1); },
            [&] { connector->moveTo(random.below(300), random.below(300), 1); },
            [&] { connector->specified(1 - connector->specified()); },
            [&] { edge->reverse(); },
            [&] { takeOutAndIn(edge); },
            [&] { node->discardAllConnectors(); },
            [&] { edge->pSourceConnector(connector); },
            [&] { edge->pTargetConnector(connector); },
        };
        random.pick(std::vector(std::begin(edits), std::end(edits)))();
    }
    void takeOutAndIn(QxDEdge* edge) {
        const auto source = hold(edge->pSourceNode());
        const auto target = hold(edge->pTargetNode());
        const auto alive = hold(edge);
        if (drawing.graph->removeEdge(edge) != nullptr && edge->pOwnerGraph() == nullptr) {
            drawing.graph->insertEdge(edge, source.get(), target.get());
        }
    }
    TestRandom random;
    int depth = 0;
};

class ConnectorListeners : public testing::TestWithParam<std::uint32_t> {};

TEST_P(ConnectorListeners, LeaveASoundDrawingWhateverTheyDo) {
    const std::uint32_t seed = testSeed(GetParam());
    SCOPED_TRACE(seedTrace(seed));
    Meddler meddler(seed);
    for (int step = 0; step < 2500; ++step) {
        meddler.step();
        ASSERT_EQ(meddler.drawing.manager->checkInvariants(), 1) << "at step " << step;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, ConnectorListeners, testing::Values(1U, 2U, 3U, 4U));

}  // namespace
