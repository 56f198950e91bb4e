// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/events/QxDrawingChangeEventData.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "qx/events/QxDrawingChangeEvent.h"
#include "qx/foundation/geometry/QxShape.h"
#include "qx/foundation/graph/QxGraphObject.h"

namespace {

class Thing : public QxGraphObject {
public:
    Thing() : QxGraphObject(nullptr) {}
};

constexpr std::int32_t AllTypes[] = {AnchorGraphChanged, LabelInserted,      BendAdded,
                                     ConnectorInserted,  LabelRemoved,       PathNodeRemoved,
                                     ConnectorRemoved,   LabelDiscarded,     PathNodeDiscarded,
                                     ConnectorDiscarded, LabelTextChanged,   ConnectorNameChanged,
                                     NodeMoved,          LabelOffsetChanged, PathNodeMoved,
                                     ConnectorMoved,     NodeResized,        LabelResized,
                                     ConnectorResized,   NodeShapeChanged,   EdgeConnectorChanged,
                                     MarginsChanged,     GraphBoundsChanged, ConnectorShapeChanged};

class DrawingChangeData : public testing::Test {
protected:
    Thing source;
    Thing before;
    Thing after;
    QxShape shape{QxShapeTypeOval};
    const QxRect oldBounds{10, 20, 110, 60};
    const QxRect newBounds{15, 20, 116, 63};
};

TEST_F(DrawingChangeData, BoundsAnswerForMovesResizesAndGraphBoundsOnly) {
    QxDrawingChangeEventData data(&source, &oldBounds, &newBounds);
    for (const std::int32_t type : AllTypes) {
        data.type(type);
        const bool isMove = (type & 0xf000) != 0;
        const bool isResize = (type & 0xe0000) != 0;
        const bool hasBounds = isMove || isResize || type == 0x1000000;
        EXPECT_EQ(data.pOldBounds() != nullptr, hasBounds) << std::hex << type;
        EXPECT_EQ(data.pNewBounds() != nullptr, hasBounds) << std::hex << type;
        EXPECT_EQ(data.oldCenter(), isMove ? QxPoint(60, 40) : QxPoint()) << std::hex << type;
        EXPECT_EQ(data.newCenter(), isMove ? newBounds.center() : QxPoint()) << std::hex << type;
        EXPECT_EQ(data.oldSize(), isResize ? QxSize(100, 40) : QxSize()) << std::hex << type;
        EXPECT_EQ(data.newSize(), isResize ? QxSize(101, 43) : QxSize()) << std::hex << type;
        EXPECT_EQ(data.pNewShape(), nullptr);
        EXPECT_EQ(data.pOldNameString(), nullptr);
    }
}

TEST_F(DrawingChangeData, OtherFieldsAnswerForTheirTypesOnly) {
    QxDrawingChangeEventData shaped(&source, &shape);
    QxDrawingChangeEventData named(&source, L"before", nullptr);
    QxDrawingChangeEventData owned(&source, &before, &after);
    for (const std::int32_t type : AllTypes) {
        shaped.type(type);
        named.type(type);
        owned.type(type);
        EXPECT_EQ(shaped.pNewShape(), (type & 0x300000) != 0 ? &shape : nullptr);
        EXPECT_EQ(named.pOldNameString() != nullptr, (type & 0xc00) != 0) << std::hex << type;
        EXPECT_EQ(named.pNewNameString(), nullptr);
        EXPECT_EQ(owned.pFormerParentEventSource(), (type & 0x3f0) != 0 ? &before : nullptr)
            << std::hex << type;
        EXPECT_EQ(owned.pOldObject(), &before);
        EXPECT_EQ(owned.pNewObject(), &after);
    }
    named.type(LabelTextChanged);
    EXPECT_EQ(std::wstring(named.pOldNameString()), L"before");
}

TEST_F(DrawingChangeData, HoldsItsOwnCopiesOfBoundsAndNames) {
    std::wstring name = L"old";
    QxRect bounds = oldBounds;
    QxDrawingChangeEventData named(&source, name.c_str(), L"new");
    QxDrawingChangeEventData moved(&source, &bounds, nullptr);
    named.type(ConnectorNameChanged);
    moved.type(NodeMoved);
    name[0] = L'X';
    bounds.moveTo(0, 0);
    EXPECT_EQ(std::wstring(named.pOldNameString()), L"old");
    EXPECT_EQ(*moved.pOldBounds(), oldBounds);
    EXPECT_EQ(moved.pNewBounds(), nullptr);
    EXPECT_EQ(moved.newCenter(), QxPoint());
    moved.pNewBounds(&newBounds);
    moved.pOldBounds(nullptr);
    EXPECT_EQ(*moved.pNewBounds(), newBounds);
    EXPECT_EQ(moved.pOldBounds(), nullptr);
}

TEST_F(DrawingChangeData, CopiesKeepWhatTheTypeMakesMeaningful) {
    QxDrawingChangeEventData data(&source, L"old", L"new");
    data.pOldBounds(&oldBounds);
    data.type(LabelTextChanged);
    for (const bool isDeep : {true, false}) {
        const std::unique_ptr<QxDrawingChangeEventData> copy(isDeep ? data.cloneObject()
                                                                    : data.cloneAttributes());
        EXPECT_EQ(copy->pSource(), &source);
        EXPECT_EQ(copy->type(), LabelTextChanged);
        EXPECT_EQ(std::wstring(copy->pOldNameString()), L"old");
        EXPECT_EQ(std::wstring(copy->pNewNameString()), L"new");
        copy->type(NodeMoved);
        EXPECT_EQ(copy->pOldBounds(), nullptr) << "was not meaningful when it was copied";
    }
    QxDrawingChangeEventData other(&before, &oldBounds, &newBounds);
    other.copyObject(nullptr);
    other.copyObject(&source);
    other.copyObject(&other);
    EXPECT_EQ(other.pSource(), &before);
    other.copyAttributes(&data);
    EXPECT_EQ(other.pSource(), &source);
    EXPECT_EQ(std::wstring(other.pNewNameString()), L"new");
    other.type(NodeMoved);
    EXPECT_EQ(other.pNewBounds(), nullptr);
}

TEST_F(DrawingChangeData, EventsOwnTheirDataAndCopyThem) {
    QxDrawingChangeEvent event(NodeResized,
                               new QxDrawingChangeEventData(&source, &oldBounds, &newBounds));
    EXPECT_EQ(event.eventCategoryID(), 2);
    EXPECT_EQ(event.pData()->type(), NodeResized);
    QxDrawingChangeEvent copy(MarginsChanged, new QxDrawingChangeEventData(&before));
    copy = event;
    copy.copyObject(&copy);
    ASSERT_NE(copy.pData(), event.pData());
    EXPECT_EQ(copy.type(), NodeResized);
    const auto* data = static_cast<QxDrawingChangeEventData*>(copy.pData());
    EXPECT_EQ(data->newSize(), newBounds.size());
    EXPECT_EQ(data->pSource(), &source);
}

}  // namespace
