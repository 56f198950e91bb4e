// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/events/QxDEventManager.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "qx/events/QxComplexityChangeEvent.h"
#include "qx/events/QxComplexityChangeEventData.h"
#include "qx/events/QxComplexityChangeListener.h"
#include "qx/events/QxDrawingChangeListener.h"
#include "qx/events/QxVetoableComplexityChangeListener.h"
#include "qx/events/QxVetoableDrawingChangeListener.h"
#include "qx/events/internal/FireDrawingChange.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Types = std::vector<std::int32_t>;

class Factory : public QxAFactory {
protected:
    QxGraphManager* vNewGraphManager(QxOwnedObject*, int) override { return nullptr; }
    QxGraph* vNewGraph(QxOwnedObject*, int) override { return nullptr; }
    QxNode* vNewNode(QxOwnedObject*, int) override { return nullptr; }
    QxEdge* vNewEdge(QxOwnedObject*, int) override { return nullptr; }
    QxGraph* vNewIntergraph(QxOwnedObject*, int) override { return nullptr; }
    QxEventManager* vNewEventManager() override { return new QxDEventManager; }
};

class Thing : public QxGraphObject {
public:
    explicit Thing(QxOwnedObject* owner) : QxGraphObject(owner) { ownerValid(1); }
};

class DrawingListener : public QxDrawingChangeListener {
public:
    using QxDrawingChangeListener::drawingChanged;
    void drawingChanged(QxDrawingChangeEventData* data) override { types.push_back(data->type()); }
    Types types;
};

class ComplexityListener : public QxComplexityChangeListener {
public:
    using QxComplexityChangeListener::complexityChanged;
    void complexityChanged(QxComplexityChangeEventData* data) override {
        types.push_back(data->type());
    }
    Types types;
};

class DrawingVetoer : public QxVetoableDrawingChangeListener {
public:
    int vetoDrawingChange(QxDrawingChangeEventData* data) override {
        return data->type() == vetoed ? 1 : 0;
    }
    std::int32_t vetoed = 0;
};

class ComplexityVetoer : public QxVetoableComplexityChangeListener {
public:
    int vetoComplexityChange(QxComplexityChangeEventData* data) override {
        return data->type() == vetoed ? 1 : 0;
    }
    std::int32_t vetoed = 0;
};

class DrawingEventManager : public testing::Test {
protected:
    int fire(QxDrawingChangeEventTypeEnum type) {
        return manager.fireEvent(
            new QxDrawingChangeEvent(type, new QxDrawingChangeEventData(&thing)), 0);
    }
    int fire(QxComplexityChangeEventTypeEnum type) {
        return manager.fireEvent(
            new QxComplexityChangeEvent(type, new QxComplexityChangeEventData(&thing)), 0);
    }

    QxDEventManager manager;
    Thing thing{nullptr};
    DrawingListener drawing;
    ComplexityListener complexity;
};

TEST_F(DrawingEventManager, KeepsTheTwoCategoriesApart) {
    manager.addDrawingChangeListener(&thing, &drawing);
    manager.addComplexityChangeListener(&thing, &complexity, NodeHidden | NodeFolded);
    fire(AnchorGraphChanged);
    fire(NodeExpanded);
    fire(NodeFolded);
    fire(NodeHidden);
    fire(EdgeHidden);
    EXPECT_THAT(drawing.types, ElementsAre(AnchorGraphChanged));
    EXPECT_THAT(complexity.types, ElementsAre(NodeFolded, NodeHidden));
    manager.removeComplexityChangeListener(&thing, &drawing);
    manager.removeAllComplexityChangeListeners(&thing, NodeHidden);
    manager.removeDrawingChangeListener(&thing, &drawing, AnchorGraphChanged);
    fire(AnchorGraphChanged);
    fire(NodeMoved);
    fire(NodeHidden);
    fire(NodeFolded);
    EXPECT_THAT(drawing.types, ElementsAre(AnchorGraphChanged, NodeMoved));
    EXPECT_THAT(complexity.types, ElementsAre(NodeFolded, NodeHidden, NodeFolded));
    manager.removeAllDrawingChangeListeners(&thing);
    EXPECT_EQ(manager.hears(2, -1), 0);
}

TEST_F(DrawingEventManager, AVetoStopsTheEventAndNothingElse) {
    DrawingVetoer drawingVetoer;
    ComplexityVetoer complexityVetoer;
    drawingVetoer.vetoed = NodeMoved;
    complexityVetoer.vetoed = NodeCollapsed;
    manager.addDrawingChangeListener(&thing, &drawing);
    manager.addDrawingChangeListener(&thing, &drawingVetoer);
    manager.addComplexityChangeListener(&thing, &complexity);
    manager.addComplexityChangeListener(&thing, &complexityVetoer);
    EXPECT_EQ(fire(NodeMoved), 0);
    EXPECT_EQ(fire(NodeResized), 1);
    EXPECT_EQ(fire(NodeCollapsed), 0);
    EXPECT_EQ(fire(NodeExpanded), 1);
    EXPECT_THAT(drawing.types, ElementsAre(NodeResized));
    EXPECT_THAT(complexity.types, ElementsAre(NodeExpanded));
}

TEST_F(DrawingEventManager, GroupsAreUnpackedInOrder) {
    class GroupListener : public DrawingListener {
    public:
        using DrawingListener::drawingChanged;
        void drawingChanged(QxDrawingChangeEvent* event) override {
            groups.push_back(event->isGroup() != 0 ? event->type() : 0);
            DrawingListener::drawingChanged(event);
        }
        Types groups;
    } whole;
    manager.addDrawingChangeListener(&thing, &whole);
    manager.addDrawingChangeListener(&thing, &drawing, NodeMoved);
    manager.addComplexityChangeListener(&thing, &complexity);
    manager.coalesce(1);
    manager.openBatch();
    fire(NodeMoved);
    fire(NodeHidden);
    fire(NodeResized);
    fire(EdgeHidden);
    fire(NodeMoved);
    EXPECT_THAT(whole.types, IsEmpty());
    manager.closeBatch();
    EXPECT_THAT(whole.types, ElementsAre(NodeMoved, NodeResized, NodeMoved));
    EXPECT_THAT(whole.groups, ElementsAre(NodeMoved | NodeResized));
    EXPECT_THAT(drawing.types, ElementsAre(NodeMoved, NodeMoved));
    EXPECT_THAT(complexity.types, ElementsAre(NodeHidden, EdgeHidden));
}

TEST_F(DrawingEventManager, BuildsNothingForNobody) {
    Factory factory;
    Thing made(&factory);
    int built = 0;
    const auto change = [&](const Thing& object) {
        qx::internal::fireDrawingChange(object, NodeMoved, [&] {
            ++built;
            return new QxDrawingChangeEventData(&made);
        });
        return std::exchange(built, 0);
    };
    EXPECT_EQ(change(made), 0);
    EXPECT_EQ(factory.pQueryEventManager(), nullptr) << "firing does not make the event manager";
    auto& own = static_cast<QxDEventManager&>(*factory.pEventManager());
    EXPECT_EQ(change(made), 0);
    own.addDrawingChangeListener(&factory, &drawing, NodeMoved | NodeResized);
    EXPECT_EQ(change(made), 1);
    EXPECT_THAT(drawing.types, ElementsAre(NodeMoved)) << "the factory stands on the way";
    EXPECT_EQ(change(thing), 0) << "an object without a factory";
    own.fireEvents(0);
    EXPECT_EQ(change(made), 0);
    own.fireEvents(1);
    own.removeDrawingChangeListener(&factory, &drawing, NodeMoved);
    EXPECT_EQ(change(made), 0);
}

}  // namespace
