// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Copies and clones of all that a drawing consists of, and factories that make none of a kind: what
// cannot be made is left out, and what there is stays sound.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "drawing/EdgePathTesting.h"
#include "qx/foundation/geometry/QxShape.h"
#include "qx/foundation/util/QxDebugStream.h"

namespace {

using namespace qxtest;
using testing::IsEmpty;

/// Makes nothing of the kind that it is told to leave out.
class SparingFactory : public QxFactory {
public:
    std::string leftOut;

protected:
    QxDGraphManager* vNewDGraphManager(QxOwnedObject* owner, int type) override {
        return leftOut == "manager" ? nullptr : QxFactory::vNewDGraphManager(owner, type);
    }
    QxDGraph* vNewDGraph(QxOwnedObject* owner, int type) override {
        return leftOut == "graph" ? nullptr : QxFactory::vNewDGraph(owner, type);
    }
    QxDGraph* vNewInterDGraph(QxOwnedObject* owner, int type) override {
        return leftOut == "intergraph" ? nullptr : QxFactory::vNewInterDGraph(owner, type);
    }
    QxDNode* vNewDNode(QxOwnedObject* owner, int type) override {
        return leftOut == "node" ? nullptr : QxFactory::vNewDNode(owner, type);
    }
    QxDEdge* vNewDEdge(QxOwnedObject* owner, int type) override {
        return leftOut == "edge" ? nullptr : QxFactory::vNewDEdge(owner, type);
    }
    QxPNode* vNewPNode(QxOwnedObject* owner) override {
        return leftOut == "bend" ? nullptr : QxFactory::vNewPNode(owner);
    }
    QxPEdge* vNewPEdge(QxOwnedObject* owner) override {
        return leftOut == "segment" ? nullptr : QxFactory::vNewPEdge(owner);
    }
    QxShapeResourceDB* vpShapeResourceDB() override {
        return leftOut == "shape" ? nullptr : QxFactory::vpShapeResourceDB();
    }
};

const Places Bends{{50, 300}, {150, -300}};

/// An edge with two bends beyond its ends, one of which is an oval. Everything has a name.
class BentDrawing : public EdgeDrawing {
public:
    explicit BentDrawing(QxFactory& made) : EdgeDrawing(made) {
        source->pShape(&oval, 0);
        graph->leftMarginConstantSpacing(7);
        reroute(edge, Bends);
        bend = static_cast<QxPNode*>(edge->pSourceOrPathEdge()->QxEdge::pTargetNode());
        segment = edge->pSourceOrPathEdge();
        for (QxGraphObject* object : objects()) {
            object->nameString(L"named");
        }
    }
    std::vector<QxGraphObject*> objects() {
        return {manager.get(), graph, source, edge, bend, segment};
    }
    const QxShape oval{QxShapeTypeOval};
    QxPNode* bend = nullptr;
    QxPEdge* segment = nullptr;
};

/// All that there is to say about an object.
std::string told(const QxObject& object) {
    std::ostringstream text;
    qxSetDebugStream(&text);
    object.debugOutput(0);
    qxSetDebugStream(nullptr);
    return text.str();
}

TEST(Copies, ClonesOfEveryKindStandAlone) {
    QxFactory factory;
    BentDrawing drawing(factory);
    const std::string before = told(*drawing.manager);
    for (const QxGraphObject* object : drawing.objects()) {
        for (QxObject* clone : {object->cloneObject(), object->cloneAttributes()}) {
            ASSERT_NE(clone, nullptr);
            const Ref<QxObject> owned(clone);
            EXPECT_EQ(typeid(*clone), typeid(*object));
            const auto* copy = static_cast<QxGraphObject*>(clone);
            EXPECT_STREQ(copy->pNameString(), L"named");
            EXPECT_EQ(copy->ownerValid(), copy->isGraphManager()) << "listed nowhere";
            EXPECT_EQ(copy->pUnverifiedFactory(), &factory);
            EXPECT_EQ(copy->checkInvariants(), 1);
        }
    }
    const Ref<QxDGraph> graph(drawing.graph->cloneObject());
    EXPECT_EQ(boundsOf(graph.get()), boundsOf(drawing.graph));
    EXPECT_EQ(graph->leftMarginConstantSpacing(), 7);
    EXPECT_EQ(*graph->pFirstNode()->pShape(), drawing.oval);
    EXPECT_EQ(bendsOf(graph->pFirstEdge()), Bends);
    EXPECT_EQ(graph->pFirstEdge()->pSourceNode(), graph->pFirstNode());
    const Ref<QxDGraph> empty(drawing.graph->cloneAttributes());
    EXPECT_EQ(empty->leftMarginConstantSpacing(), 7);
    EXPECT_EQ(empty->numberOfNodes(), 0);
    EXPECT_EQ(empty->boundsInitialized(), 0);
    const Ref<QxPNode> bend(drawing.bend->cloneObject());
    EXPECT_EQ(placeOf(bend->iCenter()), Bends[0]);
    EXPECT_EQ(bend->pUnverifiedOwnerEdge(), nullptr);
    const Ref<QxPEdge> segment(drawing.segment->cloneObject());
    EXPECT_EQ(segment->QxEdge::pTargetNode(), nullptr);
    EXPECT_EQ(segment->pUnverifiedOwnerEdge(), nullptr);
    EXPECT_EQ(told(*drawing.manager), before);
}

TEST(Copies, OfNothingAndOfTheObjectItselfChangeNothing) {
    QxFactory factory;
    BentDrawing drawing(factory);
    const std::string before = told(*drawing.manager);
    const auto& [manager, graph, node, edge, bend, segment] =
        std::tie(drawing.manager, drawing.graph, drawing.source, drawing.edge, drawing.bend,
                 drawing.segment);
    drawing.events.take();
    for (QxGraphObject* object : drawing.objects()) {
        object->copyObject(nullptr);
        object->copyObject(object);
        object->copyAttributes(nullptr);
        object->copyAttributes(object);
    }
    for (const int deep : {0, 1}) {
        manager->copyGraphManager(nullptr, deep);
        manager->copyGraphManager(manager.get(), deep);
        graph->copyGraph(nullptr, deep);
        graph->copyGraph(graph, deep);
        node->copyNode(nullptr, deep);
        node->copyNode(node, deep);
        edge->copyEdge(nullptr, deep);
        edge->copyEdge(edge, deep);
        bend->copyNode(nullptr, deep);
        bend->copyNode(bend, deep);
        segment->copyEdge(nullptr, deep);
        segment->copyEdge(segment, deep);
    }
    manager->internalDuplicateTopology(nullptr);
    graph->internalDuplicateTopology(nullptr, 1, 1);
    node->internalDuplicateTopology(nullptr);
    node->internalDuplicateTopology(node);
    edge->duplicateTopology(nullptr);
    edge->duplicateTopology(edge);
    EXPECT_EQ(told(*manager), before);
    EXPECT_THAT(drawing.events.takeTypes(), IsEmpty());
}

TEST(Copies, ABendThatBecomesACopyIsDraggedThere) {
    QxFactory factory;
    BentDrawing drawing(factory);
    const Ref<QxPNode> far(drawing.bend->cloneObject());
    far->ntMoveTo(50, 900);
    drawing.bend->copyObject(far.get());
    EXPECT_EQ(boundsOf(drawing.graph), (Box{-10, -300, 210, 900}));
    far->ntMoveTo(50, 0);
    drawing.bend->copyAttributes(far.get());
    EXPECT_EQ(boundsOf(drawing.graph), (Box{-10, -300, 210, 10}));
}

/// What is left of a drawing, of its clone and of an edge's copy when one kind is not made any
/// more.
struct Left {
    const char* kind;
    int bendAdded;       ///< addBend on a straight edge
    Places rerouted;     ///< the bends of a straight edge that is given two
    std::int32_t nodes;  ///< in the clone of the graph
    std::int32_t edges;
    Places cloned;  ///< the bends of its first edge
};

TEST(SparingFactories, LeaveOutWhatTheyDoNotMake) {
    for (const Left& left :
         {Left{"", 1, Bends, 4, 2, Bends}, Left{"graph", 1, Bends, 4, 2, Bends},
          Left{"manager", 1, Bends, 4, 2, Bends}, Left{"intergraph", 1, Bends, 4, 2, Bends},
          Left{"node", 1, Bends, 0, 0, {}}, Left{"edge", 1, Bends, 4, 0, {}},
          Left{"bend", 0, {}, 4, 2, {}}, Left{"segment", 0, {}, 4, 2, {}},
          Left{"shape", 1, Bends, 4, 2, Bends}}) {
        SCOPED_TRACE(left.kind);
        SparingFactory factory;
        BentDrawing drawing(factory);
        const Ref<QxDGraphManager> fresh(factory.newDGraphManager());
        QxDNode* here = fresh->addGraph(0)->addNode(0);
        QxDNode* there = fresh->addGraph(0)->addNode(0);
        QxDNode* a = drawing.addNode(0, 500);
        QxDNode* b = drawing.addNode(300, 500);
        QxDEdge* straight = drawing.addEdge(a, b);
        const auto makes = [&](const char* kind) { return factory.leftOut != kind; };
        factory.leftOut = left.kind;

        // The clones.
        const Ref<QxDGraph> copy(drawing.graph->cloneObject());
        EXPECT_EQ(copy->numberOfNodes(), left.nodes);
        EXPECT_EQ(copy->numberOfAllEdges(), left.edges);
        if (left.edges > 0) {
            EXPECT_EQ(bendsOf(copy->pFirstEdge()), left.cloned);
        }
        EXPECT_EQ(copy->checkInvariants(), 1);
        const Ref<QxDEdge> edgeCopy(drawing.edge->cloneObject());
        EXPECT_EQ(bendsOf(edgeCopy.get()), makes("bend") && makes("segment") ? Bends : Places{});
        const Ref<QxDGraphManager> freshCopy(fresh->cloneObject());
        EXPECT_EQ(freshCopy->numberOfGraphs(), makes("graph") ? 2 : 0);
        EXPECT_EQ(freshCopy->checkInvariants(), 1);

        // A straight edge, read and bent.
        EXPECT_EQ(straight->pSourceOrPathEdge() != nullptr, makes("segment"));
        EXPECT_THAT(visiblePointsOf(straight), testing::SizeIs(makes("segment") ? 2 : 0));
        EXPECT_EQ(placeOf(straight->ntFromPoint(1)), (Place{5, 500}));
        straight->updateNewVisiblePart();
        const Ref<QxPEdge> spare(drawing.segment->cloneObject());
        EXPECT_EQ(straight->insertPEdge(spare.get(), a, b), nullptr) << "it has its first segment";
        EXPECT_EQ(straight->addBendAfter(nullptr, QxPoint(9, 9), 1) != nullptr,
                  left.bendAdded == 1);
        EXPECT_EQ(straight->addPNode(QxPoint(9, 9)) != nullptr, makes("bend"));
        EXPECT_EQ(reroute(straight, Bends), 1);
        EXPECT_EQ(bendsOf(straight), left.rerouted);
        straight->copyObject(drawing.edge);
        EXPECT_EQ(bendsOf(straight), left.rerouted);

        // An edge whose segments were made before.
        EXPECT_EQ(drawing.addBend(drawing.edge, 9, 9) != nullptr, left.bendAdded == 1);
        EXPECT_EQ(drawing.edge->checkPath(), 1);
        EXPECT_EQ(reroute(drawing.edge, Bends), 1);
        EXPECT_EQ(bendsOf(drawing.edge), left.rerouted);

        // What is added.
        EXPECT_EQ(drawing.manager->addGraph(0) != nullptr, makes("graph"));
        EXPECT_EQ(drawing.graph->addNode(0) != nullptr, makes("node"));
        EXPECT_EQ(drawing.addNode(1, 1) != nullptr, makes("node"));
        EXPECT_EQ(drawing.addEdge(a, b) != nullptr, makes("edge"));
        EXPECT_EQ(fresh->addEdge(here, there, 0) != nullptr,
                  makes("edge") && makes("intergraph") && makes("graph"));
        if (const Ref<QxDGraphManager> made{factory.newDGraphManager()}) {
            EXPECT_TRUE(makes("manager"));
        }
        EXPECT_EQ(b->pShape() != nullptr, makes("shape"));
        b->pShape(&drawing.oval, 0);
        EXPECT_EQ(b->pShapeResource() != nullptr, makes("shape"));
        EXPECT_EQ(drawing.manager->checkInvariants(), 1);
    }
}

TEST(Setters, ReturnWhatTheyStored) {
    QxFactory factory;
    EdgeDrawing drawing(factory);
    EXPECT_EQ(drawing.graph->isReadOnly(5), 1);
    EXPECT_EQ(drawing.graph->isReadOnly(0), 0);
    EXPECT_EQ(drawing.source->marked(5), 1);
    EXPECT_EQ(drawing.source->marked(0), 0);
    EXPECT_EQ(drawing.source->forceClipping(5), 1);
    EXPECT_EQ(drawing.source->setFolderNode(5), 1);
}

TEST(LabelStates, KeepTheAnswerOfASearch) {
    QxFactory factory;
    const SmallDrawing drawing(factory);
    QxDGraph& graph = *drawing.graph;
    graph.hasNodeLabelsState(QxTriStateUnknown);
    graph.hasEdgeLabelsState(QxTriStateUnknown);
    graph.hasConnectorLabelsState(QxTriStateYes);
    EXPECT_EQ(graph.hasNodeLabels(), 0);
    EXPECT_EQ(graph.hasNodeLabelsState(), QxTriStateNo);
    EXPECT_EQ(graph.hasEdgeLabelsState(), QxTriStateUnknown) << "nobody has asked";
    EXPECT_EQ(graph.hasEdgeLabels(), 0);
    EXPECT_EQ(graph.hasEdgeLabelsState(), QxTriStateNo);
    EXPECT_EQ(graph.hasConnectorLabels(), 1);
}

}  // namespace
