// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Random edits of nodes with connectors and edges at them, in two graphs and between them. A naive
// twin says after every step where each connector lies, who uses it, what has gone, and what the
// graphs cover. In other runs a listener edits the drawing from inside the events: then the drawing
// has to stay sound.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <list>

#include "drawing/EdgePathTesting.h"
#include "support/TestRandom.h"

namespace {

using namespace qxtest;
using Pair = std::array<int, 2>;

struct Pin {
    QxConnector* real;
    QxDNode* node;
    bool specified;
    Pair perMil;
    Pair offset;
};
struct Line {
    QxDEdge* real;
    std::array<Pin*, 2> pins{};  ///< source, target

    bool uses(const Pin& pin) const { return pins[0] == &pin || pins[1] == &pin; }
    QxDNode* node(int end) const { return end == 0 ? real->pSourceNode() : real->pTargetNode(); }
};

Pair sizeOf(const QxDNode* node) {
    return {node->iWidth(), node->iHeight()};
}
double halfOf(int extent, int side) {
    return side < 0 ? extent / 2 : extent - extent / 2;
}
int proportion(int perMil, int extent) {
    return static_cast<int>(std::lround(perMil * halfOf(extent, perMil) / 1000));
}
QxPoint placeOf(const Pin& pin) {
    const Pair size = sizeOf(pin.node);
    return {pin.node->iX() + proportion(pin.perMil[0], size[0]) + pin.offset[0],
            pin.node->iY() + proportion(pin.perMil[1], size[1]) + pin.offset[1]};
}

class World {
public:
    explicit World(std::uint32_t seed) : random(seed) {
        for (int i = 0; i < 6; ++i) {
            addNode();
        }
    }

    void step() {
        QxDNode* node = random.pick(nodes);
        if (pins.empty() || random.chance(15)) {
            return addPin(node);
        }
        if (lines.empty() || random.chance(10)) {
            return addLine(node);
        }
        Pin& pin = pick(pins);
        Line& line = pick(lines);
        switch (random.below(13)) {
            case 0:
                return nodes.size() < 8 ? addNode() : discardNode(node);
            case 1:
                node->moveTo(any(300), any(300), 1);
                return;
            case 2:
                return resizeNode(node, {random.below(90), random.below(90)});
            case 3:
                return movePin(pin, QxPoint(pin.node->iX() + any(60), pin.node->iY() + any(60)));
            case 4:
                pin.real->resize(random.below(12), random.below(12), 1);
                return;
            case 5:
                pin.perMil[0] = any(1100);
                pin.offset[1] = any(30);
                pin.real->setPerMil(static_cast<std::int16_t>(pin.perMil[0]), pin.real->perMilY());
                pin.real->setOffset(pin.offset[0], pin.offset[1], 1);
                return;
            case 6:
                pin.specified = !pin.specified;
                pin.real->specified(pin.specified ? 1 : 0);
                return;
            case 7:
                return random.chance(30) ? discardPin(pin) : carryOff(pin, node);
            case 8:
                return discardLine(line);
            case 9:
                return editLine(line, random.below(2), node);
            default:
                return assign(line, random.below(2), node);
        }
    }

    std::string difference() {
        for (QxDNode* node : nodes) {
            std::vector<QxConnector*> all;
            std::int32_t specified = 0;
            for (Pin& pin : pins) {
                if (pin.node == node) {
                    all.push_back(pin.real);
                    specified += pin.specified ? 1 : 0;
                }
            }
            std::vector<QxConnector*> walked;
            for (QxConnector* connector : QxInternalConnectorIter(node)) {
                walked.push_back(connector);
            }
            if (walked != all || node->numberOfConnectors() != specified) {
                return "a node has other connectors";
            }
        }
        for (Pin& pin : pins) {
            if (pin.real->ntCenter() != placeOf(pin) ||
                (pin.real->specified() != 0) != pin.specified) {
                return "a connector lies elsewhere";
            }
            QxDEdgeDList users;
            pin.real->buildIncidentEdgeList(&users, QxEdgeDirectionBoth, QxEdgeConnectionAll);
            const auto count = std::count_if(lines.begin(), lines.end(), [&](const Line& line) {
                return line.uses(pin) && users.searchEdge(line.real) != nullptr;
            });
            if (count != users.count()) {
                return "a connector has other edges";
            }
        }
        for (const Line& line : lines) {
            const QxConnector* real[2] = {line.real->pInternalSourceConnector(),
                                          line.real->pInternalTargetConnector()};
            for (const int end : {0, 1}) {
                if (real[end] != (line.pins[end] != nullptr ? line.pins[end]->real : nullptr)) {
                    return "an end is assigned to something else";
                }
            }
        }
        return coverDifference();
    }

    QxFactory factory;
    SmallDrawing drawing{factory};
    QxDGraph* second = drawing.manager->addGraph(0);
    std::vector<QxDNode*> nodes;
    std::list<Pin> pins;
    std::list<Line> lines;
    TestRandom random;

private:
    template <class T>
    T& pick(std::list<T>& all) {
        return *std::next(all.begin(), random.below(static_cast<int>(all.size())));
    }
    template <class T>
    static void erase(std::list<T>& all, const T& one) {
        all.remove_if([&](const T& other) { return &other == &one; });
    }
    int any(int reach) { return random.below(2 * reach + 1) - reach; }

    void addNode() {
        QxDGraph* graph = random.chance(70) ? drawing.graph : second;
        nodes.push_back(graph->addNodeWithCoordinates(any(300), any(300), random.below(80),
                                                      random.below(80), 1, 0));
    }
    void discardNode(QxDNode* node) {
        std::erase(nodes, node);
        for (auto line = lines.begin(); line != lines.end();) {
            Line& gone = *line++;
            if (gone.node(0) == node || gone.node(1) == node) {
                unassign(gone, 0);
                unassign(gone, 1);
                erase(lines, gone);
            }
        }
        pins.remove_if([&](const Pin& pin) { return pin.node == node; });
        node->pOwnerGraph()->discardNode(node);
    }
    void resizeNode(QxDNode* node, const Pair& size) {
        const Pair before = sizeOf(node);
        for (Pin& pin : pins) {
            for (const int axis : {0, 1}) {
                const int offset = pin.offset[axis];
                const double half = halfOf(before[axis], offset);
                if (pin.node == node && !pin.specified && half > 0 && isUsedInGraph(pin)) {
                    const double scaled = offset * halfOf(size[axis], offset) / half;
                    const int rounded = static_cast<int>(std::floor(scaled + 0.5));
                    pin.offset[axis] = rounded != 0 ? rounded : offset;
                }
            }
        }
        node->resize(size[0], size[1], 1);
    }
    void addPin(QxDNode* node) {
        Pin pin{nullptr, node, random.chance(60), {any(1200), any(1200)}, {any(20), any(20)}};
        const auto x = static_cast<std::int16_t>(pin.perMil[0]);
        const auto y = static_cast<std::int16_t>(pin.perMil[1]);
        pin.real = pin.specified ? node->addConnector(x, y, pin.offset[0], pin.offset[1], 1, 0)
                                 : node->ntAddConnector(x, y, pin.offset[0], pin.offset[1]);
        pins.push_back(pin);
    }
    void movePin(Pin& pin, const QxPoint& to) {
        const bool moves = to != placeOf(pin);
        const Pair place{to.x() - pin.node->iX(), to.y() - pin.node->iY()};
        for (const int axis : moves ? std::vector{0, 1} : std::vector<int>{}) {
            const int extent = sizeOf(pin.node)[axis];
            const double half = halfOf(extent, place[axis]);
            const int side = place[axis] >= halfOf(extent, 1) ? 1000 : -1000;
            pin.perMil[axis] = std::abs(place[axis]) < half
                                   ? static_cast<int>(std::lround(place[axis] * 1000 / half))
                                   : side;
            pin.offset[axis] = place[axis] - proportion(pin.perMil[axis], extent);
        }
        pin.real->moveTo(to, 1);
    }
    void discardPin(Pin& pin) {
        EXPECT_EQ(pin.node->discardConnector(pin.real), 1);
        freeEnds(pin);
        erase(pins, pin);
    }
    void carryOff(Pin& pin, QxDNode* to) {
        EXPECT_EQ(to->insertConnector(pin.real), nullptr) << "it has an owner";
        EXPECT_EQ(pin.node->removeConnector(pin.real), pin.real);
        EXPECT_EQ(to->insertConnector(pin.real), pin.real);
        freeEnds(pin);
        pin.node = to;
        pins.splice(pins.end(), pins, std::find_if(pins.begin(), pins.end(), [&](const Pin& other) {
                        return &other == &pin;
                    }));
    }
    void addLine(QxDNode* node) {
        lines.push_back({drawing.manager->addEdge(node, random.pick(nodes), 0)});
    }
    void discardLine(Line& line) {
        line.real->pOwnerGraph()->discardEdge(line.real);
        unassign(line, 0);
        unassign(line, 1);
        erase(lines, line);
    }
    void assign(Line& line, int end, QxDNode* stranger) {
        std::vector<Pin*> choice{nullptr};
        for (Pin& pin : pins) {
            if (pin.node == line.node(end) || (pin.node == stranger && random.chance(15))) {
                choice.push_back(&pin);
            }
        }
        if (random.chance(10)) {
            end == 0 ? line.real->resetFromConnector() : line.real->resetToConnector();
            line.pins[end] = nullptr;  // and a calculated one stays
            return;
        }
        Pin* pin = random.pick(choice);
        QxConnector* real = pin != nullptr ? pin->real : nullptr;
        end == 0 ? line.real->pSourceConnector(real) : line.real->pTargetConnector(real);
        if ((pin == nullptr || pin->node == line.node(end)) && pin != line.pins[end]) {
            unassign(line, end);
            line.pins[end] = pin;
        }
    }
    void editLine(Line& line, int end, QxDNode* node) {
        const int what = random.below(4);
        if (what == 0) {
            line.real->reverse();
            std::swap(line.pins[0], line.pins[1]);
        } else if (what == 1) {
            line.real->connected() != 0 ? line.real->disconnect() : line.real->connect();
        } else if (what == 2) {
            line.real->addBend(line.real->pSourceOrPathEdge(), QxPoint(any(300), any(300)), 1);
        } else {
            const bool stays = line.node(end) == node;
            const int changed =
                end == 0 ? line.real->changeSourceNode(node) : line.real->changeTargetNode(node);
            if (changed != 0 && !stays) {
                unassign(line, end);
            }
        }
    }
    /// An unused calculated connector goes.
    void unassign(Line& line, int end) {
        Pin* pin = std::exchange(line.pins[end], nullptr);
        if (pin != nullptr && !pin->specified &&
            std::none_of(lines.begin(), lines.end(),
                         [&](const Line& other) { return other.uses(*pin); })) {
            erase(pins, *pin);
        }
    }
    void freeEnds(const Pin& pin) {
        for (Line& line : lines) {
            std::replace(line.pins.begin(), line.pins.end(), const_cast<Pin*>(&pin),
                         static_cast<Pin*>(nullptr));
        }
    }
    bool isUsedInGraph(const Pin& pin) {
        return std::any_of(lines.begin(), lines.end(), [&](const Line& line) {
            return line.uses(pin) && line.real->connected() != 0 &&
                   line.real->intergraphEdge() == 0;
        });
    }
    std::string coverDifference() {
        for (QxDGraph* graph : {drawing.graph, second}) {
            QxRect all;
            bool any = walkBounds(*graph, all);
            for (const Pin& pin : pins) {
                if (pin.node->pOwnerGraph() == graph && (pin.specified || isUsedInGraph(pin))) {
                    all |= QxRect(placeOf(pin), pin.specified ? pin.real->ntSize() : QxSize());
                }
            }
            QxRect kept;
            if (graph->calculateGraphBounds(kept) != (any ? 1 : 0) ||
                (any && boxOf(kept) != boxOf(all)) ||
                (any && graph == drawing.graph && boundsOf(graph) != boxOf(all))) {
                return "the bounds are not what the graph covers";
            }
        }
        return drawing.manager->checkInvariants() == 1 ? "" : "the drawing is not sound";
    }
};

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
        switch (random.below(10)) {
            case 0:
                drawing.graph->discardNode(node);
                return;
            case 1:
                drawing.graph->discardEdge(edge);
                return;
            case 2:
                node->discardConnector(connector);
                return;
            case 3:
                if (QxConnector* removed = node->removeConnector(connector)) {
                    removed->vRelease();
                }
                return;
            case 4:
                node->resize(random.below(80), random.below(80), 1);
                return;
            case 5:
                connector->moveTo(random.below(300), random.below(300), 1);
                return;
            case 6:
                edge->reverse();
                return;
            case 7:
                node->discardAllConnectors();
                return;
            default:
                edge->pSourceConnector(connector);
        }
    }
    TestRandom random;
    int depth = 0;
};

class ConnectorWorld : public testing::TestWithParam<std::uint32_t> {};

TEST_P(ConnectorWorld, AgreesWithItsTwinAfterEveryStep) {
    const std::uint32_t seed = testSeed(GetParam());
    SCOPED_TRACE(seedTrace(seed));
    World world(seed);
    for (int step = 0; step < 1500; ++step) {
        world.step();
        ASSERT_EQ(world.difference(), "") << "at step " << step;
    }
}

TEST_P(ConnectorWorld, StaysSoundWhateverListenersDo) {
    const std::uint32_t seed = testSeed(GetParam());
    SCOPED_TRACE(seedTrace(seed));
    Meddler meddler(seed);
    for (int step = 0; step < 2500; ++step) {
        meddler.step();
        ASSERT_EQ(meddler.drawing.manager->checkInvariants(), 1) << "at step " << step;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, ConnectorWorld, testing::Values(1U, 2U, 3U, 4U, 5U, 6U));

}  // namespace
