// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Random edits of a drawing with labels on everything. A naive twin says after every step where
// each label lies and whose it is, what the graphs cover and how many labels they have, and what
// listeners have heard last of every label.

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <set>

#include "drawing/DrawingTesting.h"
#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxLabelIters.h"
#include "support/TestRandom.h"

namespace {

using namespace qxtest;

/// What a label is expected to be.
struct Tag {
    QxGraphObject* owner;
    std::array<int, 2> perMil;
    std::array<int, 2> offset;
    std::array<int, 2> size;
    bool isPinned = false;
    QxPoint pinnedAt;
};

int proportion(int perMil, std::int64_t extent) {
    const double half =
        static_cast<double>(perMil < 0 ? extent / 2 : extent - extent / 2);  // the odd unit last
    return static_cast<int>(std::lround(perMil * half / 1000));
}

Box boxAt(const QxPoint& center, const std::array<int, 2>& size) {
    const int left = center.x() - size[0] / 2;
    const int bottom = center.y() - size[1] / 2;
    return {left, bottom, left + size[0], bottom + size[1]};
}

/// Hears what becomes of labels, and whether what is told of them is true.
class LabelEvents : public QxDrawingChangeListener {
public:
    using QxDrawingChangeListener::drawingChanged;
    void drawingChanged(QxDrawingChangeEventData* data) override {
        QxLabel* label = data->pSourceLabel();
        if (label == nullptr) {
            return;
        }
        if (data->type() == LabelInserted) {
            inserted.insert(label);
        } else if (data->type() == LabelRemoved || data->type() == LabelDiscarded) {
            inserted.erase(label);
        } else if (data->pNewBounds() != nullptr) {
            QxRect rect;
            const bool isSeen = label->getBoundingRect(rect, 0) != 0;
            if (boxOf(*data->pNewBounds()) != boxOf(isSeen ? rect : *label->pIRect())) {
                fault = "a label tells what is not so";
            }
        }
    }

    std::set<const QxLabel*> inserted;
    std::string fault;
};

class World {
public:
    explicit World(std::uint32_t seed)
        : random(seed), manager(factory.newDGraphManager()), graphs{addGraph(), addGraph()} {
        factory.pEventManager()->addDrawingChangeListener(manager.get(), &events);
        for (int i = 0; i < 8; ++i) {
            addNode();
        }
    }

    std::string step() {
        edit();
        return difference();
    }
    void edit() {
        oneOf([&] { addNode(); }, [&] { addEdge(); }, [&] { editNode(*random.pick(nodes())); },
              [&] { editEdge(); }, [&] { editEdge(); }, [&] { addLabel(); }, [&] { addLabel(); },
              [&] { takeAway(); }, [&] { editLabel(); }, [&] { editLabel(); },
              [&] { editLabel(); });
    }

    TestRandom random;
    QxFactory factory;
    LabelEvents events;
    Ref<QxDGraphManager> manager;
    std::array<QxDGraph*, 2> graphs;

    std::vector<QxDNode*> nodes() const {
        std::vector<QxDNode*> all = objectsOf<QxDNode>(*graphs[0]->pNodeList());
        const auto more = objectsOf<QxDNode>(*graphs[1]->pNodeList());
        all.insert(all.end(), more.begin(), more.end());
        return all;
    }

private:
    template <class... Acts>
    void oneOf(const Acts&... acts) {
        int left = random.below(static_cast<int>(sizeof...(acts)));
        ((left-- == 0 ? static_cast<void>(acts()) : static_cast<void>(0)), ...);
    }
    QxDGraph* addGraph() { return manager->addGraph(0); }
    int any() { return random.below(400) - 200; }
    QxPoint anywhere() { return {any(), any()}; }
    template <class T>
    QxDEdge* pEdge(const T& edges) {
        return edges.empty() ? nullptr : random.pick(edges);
    }
    std::vector<QxDEdge*> edges() const {
        QxEdgeDList list;
        for (const QxDGraph* graph : {graphs[0], graphs[1], manager->pQueryIntergraph()}) {
            QxEdgeDList some;
            if (graph != nullptr) {
                graph->buildAllEdgeList(&some);
            }
            list.copyAppendList(&some);
        }
        return objectsOf<QxDEdge>(list);
    }
    QxLabel* pLabel() {
        return tags.empty()
                   ? nullptr
                   : std::next(tags.begin(), random.below(static_cast<int>(tags.size())))->first;
    }

    void addNode() {
        graphs[random.chance(25) ? 1 : 0]->addNodeWithCoordinates(any(), any(), random.below(61),
                                                                  random.below(61), 1, 0);
    }
    void addEdge() { manager->addEdge(random.pick(nodes()), random.pick(nodes()), 0); }
    void editNode(QxDNode& node) {
        auto* connector = static_cast<QxConnector*>(QxInternalConnectorIter(&node).pObject());
        QxDGraph* const graph = node.pOwnerGraph();
        const auto carryOver = [&] {
            if (graph->removeNode(&node) != nullptr && node.pOwnerGraph() == nullptr) {
                graphs[graph == graphs[0] ? 1 : 0]->insertNode(&node);
            }
        };
        if (connector != nullptr && random.chance(30)) {
            oneOf([&] { connector->specified(random.below(2)); },
                  [&] { connector->resize(random.below(20), random.below(20), 1); },
                  [&] { node.discardConnector(connector); });
            return;
        }
        oneOf([&] { node.addConnector(-700, 500, 0, 0, 1, 0); }, carryOver,
              [&] { nodes().size() > 6 ? graph->discardNode(&node) : 0; },
              [&] { node.resize(random.below(80), random.below(80), 1); },
              [&] { node.moveTo(anywhere(), 1); });
        readEdgeLabels();
    }
    void editEdge() {
        QxDEdge* edge = pEdge(edges());
        if (edge == nullptr) {
            return;
        }
        oneOf([&] { edge->pOwnerGraph()->discardEdge(edge); },
              [&] { edge->deactivated() != 0 ? edge->activate() : edge->deactivate(); },
              [&] { edge->connected() != 0 ? edge->disconnect() : edge->connect(); },
              [&] { edge->clipSourceSide(random.below(2)); }, [&] { edge->reverse(); },
              [&] { edge->discardBends(1, random.below(2)); },
              [&] { edge->addBend(edge->pTargetOrPathEdge(), anywhere(), 1); },
              [&] {
                  QxPNodeDList bends;
                  edge->buildPathNodeList(bends);
                  bends.count() != 0 ? bends.pFirstNode()->moveTo(anywhere(), 1) : 0;
                  readEdgeLabels();
              });
    }
    template <class Owner>
    void addTo(Owner& owner) {
        if (auto* label = random.chance(50) ? owner.addLabel(L"text", 0)
                                            : owner.addLabelWithCoordinates(
                                                  anywhere(), QxSize(30, 11), 1, nullptr, 0)) {
            read(label);
        }
    }
    void addLabel() {
        QxDNode& node = *random.pick(nodes());
        QxDEdge* edge = pEdge(edges());
        auto* connector = static_cast<QxConnector*>(QxInternalConnectorIter(&node).pObject());
        oneOf([&] { addTo(*node.pOwnerGraph()); }, [&] { addTo(node); },
              [&] { edge != nullptr ? addTo(*edge) : addTo(node); },
              [&] { connector != nullptr ? addTo(*connector) : addTo(node); });
    }
    void takeAway() {
        QxLabel* label = pLabel();
        if (label == nullptr) {
            return;
        }
        if (QxDEdge* edge = label->pOwnerEdge()) {
            edge->discardLabel(static_cast<QxEdgeLabel*>(label));
        } else if (QxDGraph* graph = label->pOwnerGraph()) {
            graph->discardLabel(static_cast<QxGraphLabel*>(label));
        } else if (QxConnector* connector = label->pOwnerConnector()) {
            connector->discardAllLabels();
        } else if (QxDNode* node = label->pOwnerNode()) {
            const auto own = hold(static_cast<QxNodeLabel*>(label));
            if (node->removeLabel(own.get()) != nullptr &&
                random.pick(nodes())->insertLabel(own.get()) != nullptr) {
                read(own.get());
            }
        }
    }
    void editLabel() {
        QxLabel* label = pLabel();
        if (label == nullptr) {
            return;
        }
        const auto alive = hold(label);
        oneOf([&] { label->resize(random.below(60), random.below(30), 1); },
              [&] { label->setOffset(random.below(40), -random.below(40), 1); },
              [&] { label->adjustOnOwnerOverlap(); },
              [&] {
                  if (label->isEdgeLabel() != 0) {
                      static_cast<QxEdgeLabel*>(label)->globalOffsetMode(random.below(2));
                  }
              },
              [&] {
                  const QxPoint to = anywhere();
                  label->moveTo(to, 1);
                  checkMoved(*label, to);
              });
        if (label->ownerValid() != 0) {
            read(label);
        }
    }
    /// A move lands where it was asked to, but for the rounding of a proportion.
    void checkMoved(const QxLabel& label, const QxPoint& to) {
        const QxPoint at = label.ntCenter();
        if (std::abs(at.x() - to.x()) > 1 || std::abs(at.y() - to.y()) > 1) {
            fault = "a label is not where it was moved to";
        }
    }

    /// Moves let the labels of edges follow their segments.
    void readEdgeLabels() {
        for (const QxDEdge* edge : edges()) {
            for (QxEdgeLabelIter label(edge); label; ++label) {
                read(label.pLabel());
            }
        }
    }
    /// What the label says of its place; from here on the twin remembers it.
    void read(QxLabel* label) {
        Tag tag{label->pOwnerGraphObject(), {}, {}, {}, false, {}};
        if (label->isEdgeLabel() != 0) {
            const auto* own = static_cast<QxEdgeLabel*>(label);
            tag.perMil = {own->perMilDistanceFromSource(), 0};
            tag.isPinned = own->globalOffsetMode() != 0;
            tag.pinnedAt = own->ntCenter();
        } else {
            const auto* own = static_cast<QxRectangularObjectLabel*>(label);
            tag.perMil = {own->perMilX(), own->perMilY()};
        }
        tag.offset = {label->ntOffsetX(), label->ntOffsetY()};
        tag.size = {label->ntWidth(), label->ntHeight()};
        tags[label] = tag;
    }
    static QxPoint placeOf(const QxLabel& label, const Tag& tag) {
        if (tag.isPinned) {
            return tag.pinnedAt;
        }
        QxPoint at;
        QxRect rect;
        if (label.isEdgeLabel() != 0) {
            static_cast<QxDEdge*>(tag.owner)->pointOnEdge(&at,
                                                          static_cast<std::int16_t>(tag.perMil[0]));
        } else {
            if (label.isNodeLabel() != 0) {
                rect = *static_cast<QxDNode*>(tag.owner)->pIRect();
            } else if (label.isConnectorLabel() != 0) {
                static_cast<QxConnector*>(tag.owner)->ntBoundingRect(rect);
            } else {
                rect = *static_cast<QxDGraph*>(tag.owner)->pBoundingRect();
            }
            at = QxPoint(rect.x() + proportion(tag.perMil[0], rect.width()),
                         rect.y() + proportion(tag.perMil[1], rect.height()));
        }
        return at + QxPoint(tag.offset[0], tag.offset[1]);
    }

    using Labels = std::vector<QxLabel*>;
    template <class Iter>
    static void append(Labels& all, Iter it) {
        for (; it; ++it) {
            all.push_back(it.pLabel());
        }
    }
    /// The labels of the graph by the long way: everybody's, and those that count for its bounds.
    static Labels walk(QxDGraph& graph, Labels& counting, int& connectorLabels) {
        Labels all;
        append(all, QxGraphLabelIter(&graph));
        QxEdgeDList edges;
        graph.buildAllEdgeList(&edges);
        for (const QxDEdge* edge : objectsOf<QxDEdge>(edges)) {
            append(all, QxEdgeLabelIter(edge));
            if (edge->connected() != 0 && edge->deactivated() == 0 &&
                (graph.isIntergraph() == 0 || edge->isVisible() != 0)) {
                append(counting, QxEdgeLabelIter(edge));
            }
        }
        for (const QxDNode* node : QxDNodeIter(&graph)) {
            append(all, QxNodeLabelIter(node));
            append(counting, QxNodeLabelIter(node));
            for (const QxConnector* connector : QxInternalConnectorIter(node)) {
                append(all, QxConnectorLabelIter(connector));
                if (connector->specified() != 0) {
                    append(counting, QxConnectorLabelIter(connector));
                    connectorLabels += connector->numberOfLabels();
                }
            }
        }
        return all;
    }

    std::string difference() {
        std::map<QxLabel*, Tag> alive;
        std::string wrong = events.fault + fault;
        for (QxDGraph* graph : {graphs[0], graphs[1], manager->pQueryIntergraph()}) {
            if (graph != nullptr && wrong.empty()) {
                wrong = differenceAt(*graph, alive);
            }
        }
        tags = std::move(alive);  // the others have gone with their owners
        return manager->checkInvariants() == 0 ? "the drawing is not sound" : wrong;
    }
    std::string differenceAt(QxDGraph& graph, std::map<QxLabel*, Tag>& alive) {
        Labels counting;
        int connectorLabels = 0;
        for (QxLabel* label : walk(graph, counting, connectorLabels)) {
            const auto tag = tags.find(label);
            if (tag == tags.end() || events.inserted.count(label) == 0) {
                return "a label that nobody has added, or told of";
            }
            alive[label] = tag->second;
            QxRect rect;
            label->ntBoundingRect(rect);
            if (label->pOwnerGraphObject() != tag->second.owner || label->pGraph() != &graph ||
                boxOf(rect) != boxAt(placeOf(*label, tag->second), tag->second.size)) {
                return "a label is not where its owner has it";
            }
        }
        if (graph.numberOfConnectorLabels() != connectorLabels ||
            (graph.isIntergraph() == 0 &&
             graph.numberOfLabels() !=
                 static_cast<int>(counting.size()) + graph.numberOfGraphLabels())) {
            return "the graph does not count its labels";
        }
        QxRect walked;
        const bool any = walkBounds(graph, walked);
        QxRect kept;
        if ((graph.calculateGraphBounds(kept) != 0) != any || (any && !(kept == walked)) ||
            (any && &graph == graphs[0] && boundsOf(&graph) != boxOf(walked))) {
            return "the bounds are not what the graph covers";
        }
        return {};
    }

    std::map<QxLabel*, Tag> tags;
    std::string fault;
};

TEST(LabelWorld, LabelsKeepTheirPlacesThroughRandomEdits) {
    for (std::uint32_t seed = testSeed(1); seed < testSeed(1) + 20; ++seed) {
        SCOPED_TRACE(seedTrace(seed));
        World world(seed);
        for (int i = 0; i < 400; ++i) {
            ASSERT_EQ(world.step(), "") << "step " << i;
        }
    }
}

}  // namespace
