// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// A drawing under random edits whose indexes are asked the same as a walk over its lists, again and
// again: the index of a graph, that of another graph which takes over members, and that of the
// edges between both.

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>

#include "drawing/DrawingTesting.h"
#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxConnectorLabel.h"
#include "qx/drawing/QxEdgeLabel.h"
#include "qx/drawing/QxGraphLabel.h"
#include "qx/drawing/QxLabelIters.h"
#include "qx/drawing/QxNodeLabel.h"
#include "qx/drawing/QxPathIter.h"
#include "qx/foundation/util/internal/Ref.h"
#include "qx/spatial/QxQTree.h"
#include "support/TestRandom.h"

namespace qxtest {
namespace {

/// Graphs that are visible without being nested.
class ShownFactory : public QxFactory {
    struct Shown : QxDGraph {
        using QxDGraph::QxDGraph;
        int vIsVisible() const override { return 1; }
    };

protected:
    QxDGraph* vNewDGraph(QxOwnedObject* owner, int type) override {
        return new Shown(owner, type, this);
    }
};

using Objects = std::vector<const QxObject*>;

struct Found {
    Objects nodes;
    Objects bends;
    Objects segments;
    Objects labels;  // of nodes, connectors, edges and the graph, kind by kind
    bool operator==(const Found&) const = default;
};

template <class Iter>
void addLabels(Objects& labels, Iter label, const QxRect& rect) {
    for (; label; ++label) {
        QxRect box;
        label.pLabel()->getUserBoundingRect(box, 1);
        if (box.intersectsRect(rect) != 0) {
            labels.push_back(label.pLabel());
        }
    }
}

/// What shows in the rectangle, in the order of the graph.
Found walk(const QxDGraph& graph, const QxRect& rect) {
    Found found;
    for (const QxDNode* node : QxDNodeIter(&graph)) {
        if (node->marked() == 0 && node->pIRect()->intersectsRect(rect) != 0) {
            found.nodes.push_back(node);
        }
    }
    for (const QxDEdge* edge : QxDEdgeIter(&graph)) {
        if (edge->isVisible() == 0 || edge->hasVisiblePart() == 0) {
            continue;
        }
        for (QxPathIter part(edge); part; ++part) {
            if (part.pEdge()->isUsable() != 0 && part.pEdge()->ntIntersectsRect(&rect, 1) != 0) {
                found.segments.push_back(part.pEdge());
            }
            const QxPNode* bend = part.pNode();
            if (bend != nullptr && bend->isUsable() != 0 && rect.within(bend->iCenter()) != 0) {
                found.bends.push_back(bend);
            }
        }
    }
    addLabels(found.labels, QxAllNodeLabelIter(&graph), rect);
    addLabels(found.labels, QxAllConnectorLabelIter(&graph), rect);
    for (const QxDEdge* edge : QxDEdgeIter(&graph)) {
        if (edge->isVisible() != 0) {
            addLabels(found.labels, QxEdgeLabelIter(edge), rect);
        }
    }
    addLabels(found.labels, QxGraphLabelIter(&graph), rect);
    return found;
}

Found ask(QxQTree& tree, const QxRect& rect, int drawingOrder) {
    QxDNodeDList nodes;
    QxPNodeDList bends;
    QxPEdgeDList segments;
    QxNodeLabelDList nodeLabels;
    QxEdgeLabelDList edgeLabels;
    QxGraphLabelDList graphLabels;
    QxConnectorLabelDList connectorLabels;
    tree.buildLists(&rect, &nodes, &nodeLabels, &bends, &segments, &edgeLabels, &graphLabels,
                    nullptr, &connectorLabels, drawingOrder);
    const auto all = [](const QxDList& list) {
        const auto objects = objectsOf<const QxObject>(list);
        return Objects(objects.begin(), objects.end());
    };
    Objects labels;
    for (const QxDList* list : std::initializer_list<const QxDList*>{&nodeLabels, &connectorLabels,
                                                                     &edgeLabels, &graphLabels}) {
        const Objects some = all(*list);
        labels.insert(labels.end(), some.begin(), some.end());
    }
    return {all(nodes), all(bends), all(segments), labels};
}

void sort(Found& found) {
    for (Objects* objects : {&found.nodes, &found.bends, &found.segments, &found.labels}) {
        std::sort(objects->begin(), objects->end());
    }
}

class IndexWorld {
public:
    explicit IndexWorld(std::uint32_t seed)
        : m_random(seed), m_manager(m_factory.newDGraphManager()) {
        for (QxDGraph*& graph : m_graphs) {
            graph = m_manager->addGraph(0);
            graph->calculateQuadTree();
        }
    }

    void step() {
        QxDGraph* graph = m_graphs[m_random.below(2)];
        switch (m_random.below(25)) {
            case 0:
            case 1:
            case 2:
            case 3:
                m_nodes.push_back(graph->addNodeWithCoordinates(place(), size(), 1, 0));
                break;
            case 4:
            case 5:
            case 6:
            case 7:
                if (!m_nodes.empty()) {
                    keep(m_manager->addEdge(m_random.pick(m_nodes), m_random.pick(m_nodes), 0));
                }
                break;
            case 8:
                if (m_nodes.size() > 40) {
                    discardNode(m_random.pick(m_nodes));
                }
                break;
            case 9:
                onEdge([&](QxDEdge* edge) { discardEdge(edge); });
                break;
            case 10:
            case 11:
                onEdge(
                    [&](QxDEdge* edge) { edge->addBend(edge->pTargetOrPathEdge(), place(), 1); });
                break;
            case 12:
                onEdge([&](QxDEdge* edge) {
                    m_random.chance(50) ? edge->discardAllBends() : edge->discardBends(1, 1);
                });
                break;
            case 13:
                onEdge([&](QxDEdge* edge) {
                    QxPNodeDList bends;
                    edge->buildPathNodeList(bends);
                    for (QxPNode* bend : qx::internal::Snapshot<QxPNode>(&bends)) {
                        if (bend->pOwnerEdge() == edge) {  // a drag drops those that do not turn
                            m_random.chance(50) ? bend->ntMoveTo(place())
                                                : bend->updateForDiagramming(place());
                        }
                    }
                });
                break;
            case 14:
            case 15:
                onNode([&](QxDNode* node) { node->moveTo(place(), 1); });
                break;
            case 16:
                onNode([&](QxDNode* node) {
                    m_random.chance(50) ? node->ntMoveTo(place()) : node->ntResize(size());
                });
                break;
            case 17:
                onEdge([&](QxDEdge* edge) {
                    switch (m_random.below(5)) {
                        case 0:
                            edge->disconnect();
                            break;
                        case 1:
                            edge->connect();
                            break;
                        case 2:
                            edge->deactivate();
                            break;
                        case 3:
                            edge->activate();
                            break;
                        default:
                            edge->reverse();
                    }
                });
                break;
            case 18:
                onEdge([&](QxDEdge* edge) { edge->changeSourceNode(m_random.pick(m_nodes)); });
                break;
            case 19:
                onNode([&](QxDNode* node) {  // through the hands of the client to another graph
                    node->pOwnerGraph()->removeNode(node);
                    m_graphs[m_random.below(2)]->insertNode(node);
                    node->connectDisconnectedEdges();
                });
                break;
            case 20:
                graph->disableQuadTreeUpdates(m_random.chance(50) ? 1 : 0);
                break;
            case 21:
                onNode([&](QxDNode* node) {
                    m_random.chance(70) ? void(node->addLabel(L"n", 0)) : node->discardAllLabels();
                });
                break;
            case 22:
                onEdge([&](QxDEdge* edge) {
                    m_random.chance(70) ? void(edge->addLabel(L"e", 0)) : edge->discardAllLabels();
                });
                break;
            case 23:
                editConnectors(graph);
                break;
            default:
                graph->ntMove(m_random.below(200) - 100, m_random.below(200) - 100, 0);
        }
    }

    void check() {
        for (QxDGraph* graph : {m_graphs[0], m_graphs[1], m_manager->pIntergraph()}) {
            QxQTree* tree = graph->pQuadTree();
            ASSERT_NE(tree, nullptr);
            ASSERT_EQ(tree->isConsistent(), 1) << "suspended or not";
            graph->disableQuadTreeUpdates(0);
            for (int i = 0; i < 3; ++i) {
                const QxPoint corner = place();
                const QxPoint other = i == 0 ? corner : place();
                const QxRect rect(corner, other);
                const Found seen = walk(*graph, rect);
                ASSERT_EQ(ask(*tree, rect, 1), seen) << "in the order of the graph";
                Found any = ask(*tree, rect, 0);
                Found wanted = seen;
                sort(any);
                sort(wanted);
                ASSERT_EQ(any, wanted);
                ASSERT_EQ(tree->overlaps(&rect, 1, 0, 0, 0, 0, 0, 0, 0), !seen.nodes.empty());
                ASSERT_EQ(tree->overlaps(&rect, 0, 0, 1, 0, 0, 0, 0, 0), !seen.segments.empty());
            }
            ASSERT_EQ(tree->isConsistent(), 1);
            ASSERT_EQ(graph->checkInvariants(), 1);
        }
    }

private:
    QxPoint place() {
        const int spread = m_random.chance(95) ? 9000 : 900000;
        return {m_random.below(spread) - spread / 2, m_random.below(spread) - spread / 2};
    }
    QxSize size() { return {m_random.below(300), m_random.below(300)}; }
    void editConnectors(QxDGraph* graph) {
        onNode([&](QxDNode* node) {
            if (node->numberOfAllConnectors() > 3) {
                node->discardAllConnectors(0);
            } else if (QxConnector* connector = node->addConnector(
                           std::int16_t(m_random.below(2001) - 1000), 0, 0, 7, 1, 0)) {
                connector->addLabel(L"c", 0);
                onEdge([&](QxDEdge* edge) {
                    if (edge->pSourceNode() == node) {
                        edge->pSourceConnector(connector);
                    }
                });
            }
        });
        if (m_random.chance(20)) {
            graph->numberOfGraphLabels() < 4 ? void(graph->addLabel(L"g", 0))
                                             : graph->discardAllGraphLabels();
        }
    }
    void keep(QxDEdge* edge) {
        if (edge != nullptr) {
            m_edges.push_back(edge);
        }
    }
    template <class Act>
    void onEdge(const Act& act) {
        if (!m_edges.empty()) {
            act(m_random.pick(m_edges));
        }
    }
    template <class Act>
    void onNode(const Act& act) {
        if (!m_nodes.empty()) {
            act(m_random.pick(m_nodes));
        }
    }
    void discardEdge(QxDEdge* edge) {
        std::erase(m_edges, edge);
        edge->pOwnerGraph()->discardEdge(edge);
    }
    void discardNode(QxDNode* node) {
        std::erase_if(m_edges, [&](QxDEdge* edge) {
            return edge->pSourceNode() == node || edge->pTargetNode() == node;
        });
        std::erase(m_nodes, node);
        node->pOwnerGraph()->discardNode(node);
    }

    TestRandom m_random;
    ShownFactory m_factory;
    Ref<QxDGraphManager> m_manager;
    QxDGraph* m_graphs[2] = {};
    std::vector<QxDNode*> m_nodes;
    std::vector<QxDEdge*> m_edges;
};

TEST(IndexWorld, AnswersAsAWalkOverTheListsDoes) {
    for (std::uint32_t seed = 1; seed <= 12; ++seed) {
        const std::uint32_t used = testSeed(seed);
        SCOPED_TRACE(seedTrace(used));
        IndexWorld world(used);
        for (int i = 0; i < 1500; ++i) {
            world.step();
            if (i % 7 == 0) {
                ASSERT_NO_FATAL_FAILURE(world.check()) << "step " << i;
            }
        }
    }
}

TEST(SuspendedIndex, FindsAgainWhatHasOnlyBeenAway) {
    QxFactory factory;
    SmallDrawing drawing(factory);
    QxDEdge* edge = drawing.addEdge(drawing.addNode(0, 0), drawing.addNode(100, 0));
    drawing.addBend(edge, 50, 80);
    edge->addLabel(L"e", 0);
    drawing.graph->calculateQuadTree();
    QxQTree& tree = *drawing.graph->pQuadTree();
    const QxRect all(-500, -500, 500, 500);
    const Found before = ask(tree, all, 1);
    EXPECT_EQ(before, walk(*drawing.graph, all));
    drawing.graph->disableQuadTreeUpdates(1);
    edge->disconnect();
    EXPECT_EQ(ask(tree, all, 1), (Found{before.nodes, {}, {}, {}}));
    EXPECT_EQ(tree.isConsistent(), 1);
    edge->connect();
    EXPECT_EQ(ask(tree, all, 1), before);
    drawing.graph->discardEdge(edge);
    EXPECT_EQ(ask(tree, all, 1), (Found{before.nodes, {}, {}, {}}));
}

TEST(CurvedEdges, AreFoundWithinTheRectanglesOfTheirSegments) {
    struct Curved : QxDEdge {
        using QxDEdge::QxDEdge;
        int isCurvedEdge() const override { return 1; }
    };
    struct CurvedFactory : QxFactory {
        QxDEdge* vNewDEdge(QxOwnedObject* owner, int type) override {
            return new Curved(owner, type, this);
        }
    } factory;
    SmallDrawing drawing(factory);
    QxDEdge* edge = drawing.addEdge(drawing.addNode(0, 0), drawing.addNode(100, 100));
    edge->addLabelWithCoordinates(300, 300, 10, 10, 1, L"far", 0);
    drawing.graph->calculateQuadTree();
    for (int round = 0; round < 2; ++round) {
        QxQTree& tree = *drawing.graph->pQuadTree();
        const auto isFound = [&](const QxRect& rect) {
            return tree.overlaps(&rect, 0, 0, 1, 0, 0, 0, 0, 0) != 0;
        };
        EXPECT_TRUE(isFound(QxRect(80, 10, 90, 20))) << "beside the chord";
        EXPECT_FALSE(isFound(QxRect(110, 0, 120, 100)));
        EXPECT_EQ(tree.isConsistent(), 1);
        edge->pSourceOrPathEdge();  // which is made only now
        edge->pTargetNode()->moveTo(101, 101, 1);
    }
}

TEST(NestedIndex, NodesGoWhoseEdgesHaveTheirSlotsInALargerIndex) {
    QxFactory factory;
    QxDGraphManager* manager = factory.newDGraphManager();
    QxDGraph* outer = manager->addGraph(0);
    QxDGraph* inner = manager->addGraph(0);
    QxDNode* box = outer->addNodeWithCoordinates(500, 500, 40, 40, 1, 0);
    box->pChildGraph(inner);
    box->expand();
    QxDNode* node = inner->addNodeWithCoordinates(0, 0, 40, 40, 1, 0);
    QxDNode* far = outer->addNodeWithCoordinates(0, 0, 40, 40, 1, 0);
    for (int i = 0; i < 30; ++i) {
        manager->addEdge(far, node, 0);
    }
    const QxRect everything(-2000, -2000, 2000, 2000);
    for (QxDGraph* graph : {outer, inner, manager->pIntergraph()}) {
        graph->calculateQuadTree();
        EXPECT_EQ(graph->pQuadTree()->overlaps(&everything, 1, 0, 1, 0, 0, 0, 0, 0), 1);
    }
    inner->discardNode(node);
    EXPECT_EQ(manager->checkInvariants(), 1);
    manager->vRelease();
}

}  // namespace
}  // namespace qxtest
