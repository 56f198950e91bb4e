// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/drawing/QxDGraph.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "drawing/DrawingTesting.h"
#include "qx/foundation/geometry/QxShape.h"

namespace {

using namespace qxtest;
using testing::ElementsAre;
using testing::IsEmpty;

class QxDGraphTest : public testing::Test {
protected:
    QxFactory factory;
    SmallDrawing drawing{factory};
    QxDGraph* graph = drawing.graph;
    EventRecorder& events = drawing.events;
};

using QxDGraphBounds = QxDGraphTest;

TEST_F(QxDGraphBounds, BeginWithTheFirstNodeAndEndWithTheLast) {
    EXPECT_EQ(graph->boundsInitialized(), 0);
    QxRect rect(1, 1, 1, 1);
    EXPECT_EQ(graph->calculateGraphBounds(rect), 0);
    EXPECT_EQ(boxOf(rect), (Box{1, 1, 1, 1})) << "nothing counts, nothing is touched";
    EXPECT_EQ(graph->calculateAndReturnGraphBounds(rect), 0);
    EXPECT_EQ(boxOf(rect), Box{});

    QxDNode* node = drawing.addNode(7, -3, 5, 4);
    EXPECT_EQ(graph->boundsInitialized(), 1);
    EXPECT_EQ(boundsOf(graph), boxOf(*node->pIRect()));
    EXPECT_THAT(events.take(),
                ElementsAre(HeardChange{GraphBoundsChanged, graph, Box{}, Box{5, -5, 10, -1}}));

    const Ref<QxDNode> removed(graph->removeNode(node));
    EXPECT_EQ(graph->boundsInitialized(), 0);
    EXPECT_EQ(graph->pBoundingRect()->width(), 0);
    EXPECT_EQ(graph->pBoundingRect()->height(), 0);
    graph->ntUpdatedBoundingRect(rect);
    EXPECT_EQ(boxOf(rect), Box{});
    EXPECT_EQ(events.takeTypes(), std::vector<std::int32_t>{GraphBoundsChanged});

    QxDEdge* edge = drawing.addEdge(drawing.addNode(0, 0), drawing.addNode(50, 0));
    drawing.addBend(edge, 25, 300);
    events.take();
    graph->discardNode(edge->pSourceNode());
    const auto types = events.takeTypes();
    EXPECT_EQ(std::count(types.begin(), types.end(), GraphBoundsChanged), 1) << "told once";
    EXPECT_EQ(boundsOf(graph), (Box{45, -5, 55, 5}));
}

TEST_F(QxDGraphBounds, AnswerWhatAMoveWouldMakeOfThem) {
    QxDNode* node = drawing.addNode(0, 0);
    drawing.addNode(100, 0);
    events.take();
    QxRect rect;
    graph->getGraphBoundsOnMoveResize(*node->pIRect(), QxRect(-60, -5, -50, 5), rect);
    EXPECT_EQ(boxOf(rect), (Box{-60, -5, 105, 5}));
    // What retreats is computed over what is there, the node at its old place included.
    graph->getGraphBoundsOnMoveResize(*node->pIRect(), QxRect(50, -5, 60, 5), rect);
    EXPECT_EQ(boxOf(rect), (Box{-5, -5, 105, 5}));
    EXPECT_THAT(events.take(), IsEmpty());
}

TEST_F(QxDGraphBounds, EventsOfTheIntergraphComeBeforeThoseOfTheGraph) {
    QxDNode* a = drawing.addNode(0, 0);
    QxDNode* b = drawing.addNode(100, 0);
    QxDGraph* between = drawing.manager->pIntergraph();
    between->addEdge(a, b, 0);
    events.take();
    a->moveTo(0, 200, 1);
    std::vector<const QxObject*> sources;
    for (const HeardChange& change : events.take()) {
        sources.push_back(change.source);
    }
    EXPECT_THAT(sources, ElementsAre(a, between, graph));
}

using QxDGraphMargins = QxDGraphTest;

/// Each has a value of its own, which below zero is zero or, of a proportion, no change.
template <class Value>
void expectSpacings(QxDGraph& graph, EventRecorder& events, bool clamps,
                    std::initializer_list<
                        std::tuple<Value (QxDGraph::*)() const, Value (QxDGraph::*)(Value), Value>>
                        all) {
    const auto set = [&](auto setter, int value, int stored, bool told) {
        EXPECT_EQ((graph.*setter)(static_cast<Value>(value)), stored);
        EXPECT_EQ(events.takeTypes(), std::vector<std::int32_t>(told ? 1 : 0, MarginsChanged));
    };
    int value = 100;
    for (const auto& [get, setter, initial] : all) {
        EXPECT_EQ((graph.*get)(), initial);
        ++value;
        set(setter, value, value, true);
        set(setter, value, value, false);
    }
    value = 100;
    for (const auto& [get, setter, initial] : all) {
        EXPECT_EQ((graph.*get)(), ++value);
        set(setter, -5, clamps ? 0 : value, clamps);
    }
}

TEST_F(QxDGraphMargins, SettersStoreWhatMakesSense) {
    using G = QxDGraph;
    expectSpacings<std::int32_t>(
        *graph, events, true,
        {{&G::leftMarginConstantSpacing, &G::leftMarginConstantSpacing, 20},
         {&G::rightMarginConstantSpacing, &G::rightMarginConstantSpacing, 20},
         {&G::bottomMarginConstantSpacing, &G::bottomMarginConstantSpacing, 20},
         {&G::topMarginConstantSpacing, &G::topMarginConstantSpacing, 20},
         {&G::nestedViewLeftConstantSpacing, &G::nestedViewLeftConstantSpacing, 0},
         {&G::nestedViewRightConstantSpacing, &G::nestedViewRightConstantSpacing, 0},
         {&G::nestedViewTopConstantSpacing, &G::nestedViewTopConstantSpacing, 0},
         {&G::nestedViewBottomConstantSpacing, &G::nestedViewBottomConstantSpacing, 0}});
    expectSpacings<std::int16_t>(
        *graph, events, false,
        {{&G::leftMarginProportionalSpacing, &G::leftMarginProportionalSpacing, 0},
         {&G::rightMarginProportionalSpacing, &G::rightMarginProportionalSpacing, 0},
         {&G::bottomMarginProportionalSpacing, &G::bottomMarginProportionalSpacing, 0},
         {&G::topMarginProportionalSpacing, &G::topMarginProportionalSpacing, 0},
         {&G::nestedViewLeftProportionalSpacing, &G::nestedViewLeftProportionalSpacing, 0},
         {&G::nestedViewRightProportionalSpacing, &G::nestedViewRightProportionalSpacing, 0},
         {&G::nestedViewTopProportionalSpacing, &G::nestedViewTopProportionalSpacing, 0},
         {&G::nestedViewBottomProportionalSpacing, &G::nestedViewBottomProportionalSpacing, 0}});
}

TEST_F(QxDGraphMargins, AMinimumSizeWidensThemAroundTheirCenter) {
    drawing.addNode(0, 0, 100, 40);
    graph->minWidthOfMarginBoundingRect(201);
    QxRect rect;
    graph->ntMarginBoundingRect(rect);
    EXPECT_EQ(boxOf(rect), (Box{-100, -40, 101, 40}));
    graph->setMinSizeOfMarginBoundingRect(QxSize(10, 80));
    graph->ntMarginBoundingRect(rect);
    EXPECT_EQ(boxOf(rect), (Box{-70, -40, 70, 40})) << "a smaller minimum changes nothing";
    EXPECT_EQ(graph->minHeightOfMarginBoundingRect(), 80);
}

using QxDGraphCopy = QxDGraphTest;

TEST_F(QxDGraphCopy, TakesOverAttributesAlone) {
    drawing.addNode(0, 0);
    graph->leftMarginConstantSpacing(1);
    graph->topMarginProportionalSpacing(2);
    graph->nestedViewBottomConstantSpacing(3);
    graph->setMinSizeOfMarginBoundingRect(QxSize(4, 5));
    graph->diagrammingMultiEdgeSpacing(6);
    graph->orthogonalRouting(1);
    graph->nameString(L"seven");
    graph->pChangeableTransform()->sourceOrigin(QxDTuple(8, 9));
    QxDGraph* copy = drawing.manager->addGraph(0);
    QxDNode* kept = copy->addNode(0);
    copy->hasNodeLabelsState(QxTriStateYes);
    copy->copyAttributes(graph);
    EXPECT_EQ(copy->leftMarginConstantSpacing(), 1);
    EXPECT_EQ(copy->topMarginProportionalSpacing(), 2);
    EXPECT_EQ(copy->nestedViewBottomConstantSpacing(), 3);
    EXPECT_EQ(copy->minHeightOfMarginBoundingRect(), 5);
    EXPECT_EQ(copy->diagrammingMultiEdgeSpacing(), 6);
    EXPECT_EQ(copy->orthogonalRouting(), 1);
    EXPECT_STREQ(copy->pNameString(), L"seven");
    EXPECT_EQ(*copy->pTransform(), *graph->pTransform());
    EXPECT_EQ(copy->hasNodeLabelsState(), QxTriStateNo);
    EXPECT_EQ(objectsOf<QxDNode>(*copy->pNodeList()), std::vector<QxDNode*>{kept});
}

TEST_F(QxDGraphTest, AnswersWhetherSomethingOverlaps) {
    QxDNode* a = drawing.addNode(0, 0);
    QxDEdge* edge = drawing.addEdge(a, drawing.addNode(100, 0));
    drawing.addBend(edge, 50, 50);
    const auto ask = [&](const QxRect& rect, int nodes, int bends, int segments) {
        return graph->overlaps(rect, nodes, bends, segments, 0, 0, 0, 0, 0);
    };
    const QxRect atNode(4, 4, 8, 8);
    EXPECT_EQ(ask(atNode, 0, 0, 0), 0);
    EXPECT_EQ(ask(atNode, 1, 0, 0), 1);
    EXPECT_EQ(ask(atNode, 0, 1, 0), 0);
    EXPECT_EQ(ask(QxRect(6, -6, 8, 4), 1, 0, 0), 0);
    EXPECT_EQ(ask(QxRect(49, 49, 51, 51), 0, 1, 0), 1);
    EXPECT_EQ(ask(QxRect(20, 10, 40, 30), 0, 0, 1), 1);
    EXPECT_EQ(ask(QxRect(20, 10, 40, 30), 1, 1, 0), 0);
    EXPECT_EQ(graph->overlaps(atNode, 0, 0, 0, 1, 1, 1, 1, 1), 0);
    EXPECT_EQ(graph->overlapsIntergraphEdges(atNode, 1, 1, 0, 1), 0);
    QxDEdge* outside = drawing.manager->pIntergraph()->addEdge(a, a, 0);
    drawing.addBend(outside, 300, 300);
    EXPECT_EQ(graph->overlapsIntergraphEdges(QxRect(299, 299, 301, 301), 1, 0, 0, 0), 1);
    EXPECT_EQ(ask(QxRect(299, 299, 301, 301), 1, 1, 1), 0);
}

TEST_F(QxDGraphTest, MapsCoordinatesOnlyWhereThereIsAWay) {
    QxPoint point(3, 4);
    EXPECT_EQ(graph->expandedTransformPoint(point), 1);
    EXPECT_EQ(point, QxPoint(3, 4));
    QxDGraph* other = drawing.manager->addGraph(0);
    EXPECT_EQ(other->expandedTransformPoint(point), 0) << "it is not nested in the anchor graph";
    EXPECT_EQ(graph->transformToGraphPoint(other, point), 0);
    EXPECT_EQ(graph->transformToGraphPoint(nullptr, point), 0);
    EXPECT_EQ(graph->transformToGraphPoint(graph, point), 1);
    EXPECT_EQ(point, QxPoint(3, 4));
    const Ref<QxDGraph> detached(factory.qxNewDGraph(&factory, 0));
    EXPECT_EQ(detached->expandedTransformPoint(point), 0);
    double offsetX = 5;
    double scaleX = 5;
    double offsetY = 5;
    double scaleY = 5;
    EXPECT_EQ(graph->getTransformCoef(other, offsetX, scaleX, offsetY, scaleY), 0);
    EXPECT_EQ((std::array{offsetX, scaleX, offsetY, scaleY}), (std::array{0., 1., 0., 1.}));
    QxRect view;
    EXPECT_EQ(graph->getViewRect(view, 0), 1);
    EXPECT_EQ(boxOf(view), (Box{-20, -20, 20, 20}));
}

/// Counts how often the geometry or the visibility of a node is asked for.
class AskedNode : public QxDNode {
public:
    using QxDNode::QxDNode;
    int vIsVisible() const override { return count(QxDNode::vIsVisible()); }
    QxPoint iCenter() const override { return count(QxDNode::iCenter()); }
    std::int32_t iX() const override { return count(QxDNode::iX()); }
    std::int32_t iY() const override { return count(QxDNode::iY()); }
    std::int32_t iWidth() const override { return count(QxDNode::iWidth()); }
    std::int32_t iHeight() const override { return count(QxDNode::iHeight()); }
    mutable int asked = 0;

private:
    template <class T>
    T count(T value) const {
        ++asked;
        return value;
    }
};

class AskedEdge : public QxDEdge {
public:
    using QxDEdge::QxDEdge;
    int vIsVisible() const override {
        ++asked;
        return QxDEdge::vIsVisible();
    }
    QxPoint ntFromPoint(int clipped) const override {
        ++asked;
        return QxDEdge::ntFromPoint(clipped);
    }
    QxPoint ntToPoint(int clipped) const override {
        ++asked;
        return QxDEdge::ntToPoint(clipped);
    }
    mutable int asked = 0;
};

class AskedFactory : public QxFactory {
protected:
    QxDNode* vNewDNode(QxOwnedObject* owner, int type) override {
        return new AskedNode(owner, type, this);
    }
    QxDEdge* vNewDEdge(QxOwnedObject* owner, int type) override {
        return new AskedEdge(owner, type, this);
    }
};

/// A chain of nodes whose last reaches out farthest, and a node on its own.
class AskedChain {
public:
    explicit AskedChain(int length) : m_drawing(m_factory), m_loner(m_drawing.addNode(0, 0)) {
        for (int i = 1; i <= length; ++i) {
            QxDNode* before = m_nodes.empty() ? nullptr : m_nodes.back();
            m_nodes.push_back(static_cast<AskedNode*>(m_drawing.addNode(-i * 20, i * 20)));
            if (before != nullptr) {
                m_drawing.addEdge(before, m_nodes.back());
            }
        }
    }
    /// How often the chain is asked about anything while `change` runs on a node.
    template <class Change>
    int askedDuring(QxDNode* node, const Change& change) {
        const int before = asked();
        change(node);
        return asked() - before;
    }
    QxDNode* loner() const { return m_loner; }
    QxDNode* last() const { return m_nodes.back(); }
    QxDGraph* graph() const { return m_drawing.graph; }

private:
    int asked() const {
        int sum = 0;
        for (const AskedNode* node : m_nodes) {
            sum += node->asked;
        }
        for (const QxDEdge* edge : QxDEdgeIter(m_drawing.graph)) {
            sum += static_cast<const AskedEdge*>(edge)->asked;
        }
        return sum;
    }

    AskedFactory m_factory;
    SmallDrawing m_drawing;
    QxDNode* m_loner;
    std::vector<AskedNode*> m_nodes;
};

TEST(QxDGraphCost, DoesNotGrowWithTheGraph) {
    const auto moves = [](QxDNode* node) {
        node->moveTo(9000, 9000, 0);
        node->moveTo(10, 10, 0);
        node->resize(300, 300, 0);
    };
    AskedChain small(10);
    AskedChain large(300);
    EXPECT_EQ(small.askedDuring(small.last(), moves), large.askedDuring(large.last(), moves));
    const auto comesAndGoes = [&](QxDNode* node) {
        moves(node);
        large.graph()->removeNode(node);
        large.graph()->insertNode(node);
        large.graph()->discardNode(node);
    };
    EXPECT_EQ(large.askedDuring(large.loner(), comesAndGoes), 0) << "others are not asked";
}

/// Notes in which order the steps of a change come, and whether the bounds rest meanwhile.
class NotedNode : public QxDNode {
public:
    NotedNode(QxOwnedObject* owner, std::vector<std::string>& notes)
        : QxDNode(owner, 0, nullptr), m_notes(notes) {}
    void actOnMoveTo(const QxPoint& oldCenter) override {
        note("actOnMoveTo " + std::to_string(oldCenter.x()));
    }

protected:
    void vMoveTo(const QxPoint& center) override {
        note("vMoveTo");
        QxDNode::vMoveTo(center);
    }
    void vResize(const QxSize& size) override {
        note("vResize");
        QxDNode::vResize(size);
    }
    void vResizeAdjustConnectors(const QxSize& size) override {
        note("vResizeAdjustConnectors");
        QxDNode::vResizeAdjustConnectors(size);
    }
    void actOnResize(const QxSize&) override { note("actOnResize"); }
    void actOnChangeOwner(QxOwnedObject* owner, int valid) override {
        QxDNode::actOnChangeOwner(owner, valid);
        note(valid != 0 ? "listed" : "unlisted");
    }

private:
    void note(const std::string& what) {
        const QxDGraph* graph = pOwnerGraph();
        const bool rests = graph != nullptr && graph->needsUpdateGraphBounds() == 0;
        m_notes.push_back(what + (rests ? ", bounds rest" : ""));
    }
    std::vector<std::string>& m_notes;
};

class NotedGraph : public QxDGraph {
public:
    NotedGraph(QxOwnedObject* owner, std::vector<std::string>& notes)
        : QxDGraph(owner, 0, nullptr), m_notes(notes) {}

protected:
    void vUpdateBoundingRect(const QxRect& rect, int fit) override {
        QxDGraph::vUpdateBoundingRect(rect, fit);
        m_notes.push_back("vUpdateBoundingRect");
    }
    void actAfterInsertEdgeBeforeConnect(QxEdge* edge) override {
        QxDGraph::actAfterInsertEdgeBeforeConnect(edge);
        m_notes.push_back(edge->connected() != 0 ? "connected too early" : "inserted");
    }
    void actOnConnectEdge(QxEdge* edge) override {
        QxDGraph::actOnConnectEdge(edge);
        m_notes.push_back(edge->isPathEdge() != 0 ? "segment connected" : "edge connected");
    }

public:
    void yield() override { m_notes.push_back("yield"); }

private:
    std::vector<std::string>& m_notes;
};

class NotedFactory : public QxFactory {
public:
    std::vector<std::string> take() { return std::exchange(m_notes, {}); }

protected:
    QxDNode* vNewDNode(QxOwnedObject* owner, int) override { return new NotedNode(owner, m_notes); }
    QxDGraph* vNewDGraph(QxOwnedObject* owner, int) override {
        return new NotedGraph(owner, m_notes);
    }

private:
    std::vector<std::string> m_notes;
};

TEST(QxDGraphOrder, ChangesRunBetweenTheRecords) {
    NotedFactory factory;
    SmallDrawing drawing(factory);
    factory.take();
    QxDNode* node = drawing.addNode(0, 0);
    EXPECT_THAT(factory.take(), ElementsAre("vMoveTo", "vResizeAdjustConnectors", "vResize",
                                            "listed, bounds rest", "vUpdateBoundingRect"));
    node->moveTo(50, 0, 1);
    EXPECT_THAT(factory.take(), ElementsAre("vMoveTo, bounds rest", "vUpdateBoundingRect"));
    node->resize(60, 60, 1);
    EXPECT_THAT(factory.take(),
                ElementsAre("vResizeAdjustConnectors, bounds rest", "vResize, bounds rest",
                            "actOnResize, bounds rest", "vUpdateBoundingRect"));
    drawing.addEdge(node, node);
    EXPECT_THAT(factory.take(), testing::IsSupersetOf({"inserted", "edge connected"}));
    drawing.graph->ntMove(1, 0, 1);
    EXPECT_THAT(factory.take(),
                ElementsAre("vMoveTo", "actOnMoveTo 50", "vUpdateBoundingRect", "yield"));
    drawing.graph->ntMove(1, 0, 0);
    EXPECT_THAT(factory.take(), ElementsAre("vMoveTo", "vUpdateBoundingRect", "yield"));
    const Ref<QxDNode> removed(drawing.graph->removeNode(node));
    EXPECT_THAT(factory.take(), ElementsAre("unlisted", "vUpdateBoundingRect"));
    removed->moveTo(0, 0, 1);
    EXPECT_THAT(factory.take(), ElementsAre("vMoveTo", "actOnMoveTo 52"));
}

}  // namespace
