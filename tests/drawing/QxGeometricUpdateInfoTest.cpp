// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/drawing/QxGeometricUpdateInfo.h"

#include <gtest/gtest.h>

#include "drawing/DrawingTesting.h"

namespace {

using namespace qxtest;

class QxGeometricUpdateInfoTest : public testing::Test {
protected:
    QxFactory factory;
    SmallDrawing drawing{factory};
};

TEST_F(QxGeometricUpdateInfoTest, ServesAVisibleGraphOrTheIntergraphOfItsManager) {
    QxDGraph* invisible = drawing.manager->addGraph(0);
    EXPECT_EQ(QxGeometricUpdateInfo(drawing.graph, 0, 1).pGraph(), drawing.graph);
    drawing.graph->needsUpdateGraphBounds(1);
    EXPECT_EQ(QxGeometricUpdateInfo(drawing.graph, 1, 1).pGraph(), nullptr);
    EXPECT_EQ(drawing.manager->pQueryIntergraph(), nullptr) << "the record must not create it";
    QxDGraph* between = drawing.manager->pIntergraph();
    EXPECT_EQ(QxGeometricUpdateInfo(drawing.graph, 1, 1).pGraph(), between);
    EXPECT_EQ(QxGeometricUpdateInfo(drawing.graph, 7, 1).pGraph(), between);

    QxGeometricUpdateInfo inert(nullptr, 0, 1);
    inert.updateBeforeRemove(nullptr, QxRect(0, 0, 1, 1));
    inert.enableAndRestoreState();
    EXPECT_EQ(inert.hasOldBoundingRect(), 0);
    QxGeometricUpdateInfo unseen(invisible, 0, 1);
    EXPECT_EQ(unseen.pGraph(), nullptr);
    EXPECT_EQ(invisible->needsUpdateGraphBounds(), 1);
    EXPECT_EQ(QxGeometricUpdateInfo(invisible, 1, 1).pGraph(), nullptr);
}

TEST_F(QxGeometricUpdateInfoTest, UpdatesTheBoundsByWhatWasReported) {
    drawing.addNode(0, 0);
    const auto close = [&](bool before, bool after) {
        QxGeometricUpdateInfo record(drawing.graph, 0, 1);
        if (before) {
            record.updateBeforeRemove(nullptr, QxRect(-100, -100, 100, 100));
        }
        if (after) {
            record.updateAfterInsert(nullptr, QxRect(0, 0, 100, 100));
        }
        record.enableAndRestoreState();
        EXPECT_EQ(drawing.graph->needsUpdateGraphBounds(), 1);
        return boundsOf(drawing.graph);
    };
    EXPECT_EQ(close(false, false), (Box{-5, -5, 5, 5}));
    EXPECT_EQ(close(false, true), (Box{-5, -5, 100, 100})) << "as on an insertion";
    EXPECT_EQ(close(true, true), (Box{-5, -5, 5, 5})) << "as on a move that retreats";
    close(false, true);
    EXPECT_EQ(close(true, false), (Box{-5, -5, 5, 5})) << "as on a removal";
}

TEST_F(QxGeometricUpdateInfoTest, ADragIgnoresReportsAndKeepsTheBoundsOff) {
    QxGeometricUpdateInfo record(drawing.graph, 0, 1);
    EXPECT_EQ(record.isDragging(1), 1);
    record.updateAfterInsert(nullptr, QxRect(0, 0, 1, 1));
    EXPECT_EQ(record.hasNewBoundingRect(), 0);
    record.enableAndRestoreState();
    EXPECT_EQ(drawing.graph->needsUpdateGraphBounds(), 0);
    record.isDragging(0);
    record.updateAfterInsert(nullptr, QxRect(0, 0, 1, 1));
    record.enableAndRestoreState();
    EXPECT_EQ(drawing.graph->needsUpdateGraphBounds(), 1);
    EXPECT_EQ(boundsOf(drawing.graph), (Box{0, 0, 1, 1}));
}

TEST_F(QxGeometricUpdateInfoTest, WhatAClientSwitchesByHandStands) {
    {
        QxGeometricUpdateInfo drag(drawing.graph, 0, 1);
        drag.isDragging(1);
        drawing.graph->needsUpdateGraphBounds(1);
        drawing.addNode(0, 0);
        EXPECT_EQ(boundsOf(drawing.graph), (Box{-5, -5, 5, 5})) << "at once";
    }
    EXPECT_EQ(drawing.graph->needsUpdateGraphBounds(), 1);
    QxGeometricUpdateInfo record(drawing.graph, 0, 1);
    record.needsUpdateGraphBounds(0);
    record.enableAndRestoreState();
    EXPECT_EQ(drawing.graph->needsUpdateGraphBounds(), 0);
    record.storeStateAndDisable(1);
    record.needsUpdateGraphBounds(1);
    record.enableAndRestoreState();
    EXPECT_EQ(drawing.graph->needsUpdateGraphBounds(), 1);
    QxGeometricUpdateInfo(drawing.graph, 0, 1).isDragging(1);
    EXPECT_EQ(drawing.graph->needsUpdateGraphBounds(), 0) << "left to who ends the drag";
}

}  // namespace
