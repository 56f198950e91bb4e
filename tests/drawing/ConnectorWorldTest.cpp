// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Random edits of nodes with connectors and edges at them, in two graphs and between them. A naive
// twin says after every step where each connector lies, who uses it, what has gone, and what the
// graphs cover.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
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
        drawing.manager->isUpdatingAffectedGraphs(1);  // nothing follows moves
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
        const int end = random.below(2);
        const std::function<void()> edits[] = {
            [&] { nodes.size() < 8 ? addNode() : discardNode(node); },
            [&] { node->moveTo(any(300), any(300), 1); },
            [&] {
                resizeNode(node, {random.below(90), random.below(90)});
            },
            [&] {
                movePin(pin, {pin.node->iX() + any(60), pin.node->iY() + any(60)});
            },
            [&] { pin.real->resize(random.below(12), random.below(12), 1); },
            [&] { placePin(pin, any(1100), any(30)); },
            [&] { pin.real->specified((pin.specified = !pin.specified) ? 1 : 0); },
            [&] { random.chance(30) ? discardPin(pin) : carryOff(pin, node); },
            [&] { discardLine(line); },
            [&] { line.real->connected() != 0 ? line.real->disconnect() : line.real->connect(); },
            [&] { bend(line); },
            [&] { std::swap(line.pins[0], line.pins[line.real->reverse()]); },
            [&] { changeEnd(line, end, node); },
            [&] { reset(line, end); },
            [&] { carryLine(line, end, node); },
            [&] { carryLine(line, end, line.node(end)); },
            [&] { assign(line, end, node); },
            [&] { assign(line, end, node); },
            [&] { assign(line, end, node); },
        };
        random.pick(std::vector(std::begin(edits), std::end(edits)))();
    }

    std::string difference() {
        for (QxDNode* node : nodes) {
            std::vector<QxConnector*> all;
            std::int32_t specified = 0;
            for (const Pin& pin : pins) {
                if (pin.node == node) {
                    all.push_back(pin.real);
                    specified += pin.specified ? 1 : 0;
                }
            }
            const QxDList* list = node->pQueryConnectorManager();
            if ((list != nullptr ? objectsOf<QxConnector>(*list) : all) != all ||
                node->numberOfConnectors() != specified) {
                return "a node has other connectors";
            }
        }
        for (const Pin& pin : pins) {
            QxDEdgeDList users;
            pin.real->buildIncidentEdgeList(&users, QxEdgeDirectionBoth, QxEdgeConnectionAll);
            const auto count = std::count_if(lines.begin(), lines.end(), [&](const Line& line) {
                return line.uses(pin) && users.searchEdge(line.real) != nullptr;
            });
            if (count != users.count() || pin.real->ntCenter() != placeOf(pin)) {
                return "a connector lies elsewhere, or has other edges";
            }
        }
        for (const Line& line : lines) {
            const auto differs = [](const Pin* pin, const QxConnector* real) {
                return real != (pin != nullptr ? pin->real : nullptr);
            };
            if (differs(line.pins[0], line.real->pInternalSourceConnector()) ||
                differs(line.pins[1], line.real->pInternalTargetConnector())) {
                return "an end is assigned to something else";
            }
        }
        return coverDifference();
    }

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
                if (pin.node == node && !pin.specified && half > 0 && isUsedInGraph(*pin.real)) {
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
    /// Out of its graph and in again; while it is out, a connector of it may go.
    void carryLine(Line& line, int end, QxDNode* node) {
        QxDNode* ends[] = {line.node(0), line.node(1)};
        line.real->pOwnerGraph()->removeEdge(line.real);
        EXPECT_EQ(line.real->pInternalSourceConnector(), nullptr);
        EXPECT_EQ(drawing.manager->checkInvariants(), 1);
        if (line.pins[1] != nullptr && random.chance(20)) {
            random.chance(50) ? discardPin(*line.pins[1]) : reset(line, 1);
        }
        const bool stays = std::exchange(ends[end], node) == node;
        const bool isBetween = ends[0]->pOwnerGraph() != ends[1]->pOwnerGraph();
        QxDGraph* to = isBetween ? drawing.manager->pIntergraph() : ends[0]->pOwnerGraph();
        EXPECT_EQ(to->insertEdge(line.real, ends[0], ends[1]), line.real);
        if (!stays) {
            unassign(line, end);
        }
        for (Pin* pin : line.pins) {
            if (pin != nullptr && !pin->specified) {
                // Between graphs a calculated one stands by proportion, in a graph by offset.
                EXPECT_EQ(pin->real->ntCenter(), placeOf(*pin)) << "it stays where it is";
                pin->perMil = {pin->real->perMilX(), pin->real->perMilY()};
                const QxSize offset = pin->real->ntOffset();
                pin->offset = {offset.width(), offset.height()};
            }
        }
    }
    void assign(Line& line, int end, QxDNode* stranger) {
        std::vector<Pin*> choice{nullptr};
        for (Pin& pin : pins) {
            if (pin.node == line.node(end) || (pin.node == stranger && random.chance(15))) {
                choice.push_back(&pin);
            }
        }
        Pin* pin = random.pick(choice);
        QxConnector* real = pin != nullptr ? pin->real : nullptr;
        end == 0 ? line.real->pSourceConnector(real) : line.real->pTargetConnector(real);
        if ((pin == nullptr || pin->node == line.node(end)) && pin != line.pins[end]) {
            unassign(line, end);
            line.pins[end] = pin;
        }
    }
    void reset(Line& line, int end) {
        end == 0 ? line.real->resetFromConnector() : line.real->resetToConnector();
        line.pins[end] = nullptr;  // and a calculated one stays
    }
    void bend(Line& line) {
        line.real->addBend(line.real->pSourceOrPathEdge(), QxPoint(any(300), any(300)), 1);
    }
    void changeEnd(Line& line, int end, QxDNode* node) {
        const bool stays = line.node(end) == node;
        const int changed =
            end == 0 ? line.real->changeSourceNode(node) : line.real->changeTargetNode(node);
        if (changed != 0 && !stays) {
            unassign(line, end);
        }
    }
    void placePin(Pin& pin, int perMilX, int offsetY) {
        pin.perMil[0] = perMilX;
        pin.offset[1] = offsetY;
        pin.real->setPerMil(static_cast<std::int16_t>(perMilX), pin.real->perMilY());
        pin.real->setOffset(pin.offset[0], offsetY, 1);
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
    std::string coverDifference() {
        for (QxDGraph* graph : {drawing.graph, second}) {
            QxRect all;
            const bool any = walkBounds(*graph, all);
            QxRect kept;
            if (graph->calculateGraphBounds(kept) != (any ? 1 : 0) ||
                (any && boxOf(kept) != boxOf(all)) ||
                (any && graph == drawing.graph && boundsOf(graph) != boxOf(all))) {
                return "the bounds are not what the graph covers";
            }
        }
        return drawing.manager->checkInvariants() == 1 ? "" : "the drawing is not sound";
    }

    QxFactory factory;
    SmallDrawing drawing{factory};
    QxDGraph* second = drawing.manager->addGraph(0);
    std::vector<QxDNode*> nodes;
    std::list<Pin> pins;
    std::list<Line> lines;
    TestRandom random;
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

INSTANTIATE_TEST_SUITE_P(Seeds, ConnectorWorld, testing::Values(1U, 2U, 3U, 4U, 5U, 6U));

}  // namespace
