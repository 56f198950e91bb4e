// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "drawing/EdgePathTesting.h"
#include "qx/drawing/QxGeometricUpdateInfo.h"
#include "qx/foundation/geometry/QxShape.h"
#include "qx/foundation/geometry/QxShapeResource.h"

namespace {

using namespace qxtest;
using testing::ElementsAre;
using testing::IsEmpty;

class QxDEdgeClipping : public testing::Test {
protected:
    QxPEdge* onlySegment() { return edge->pSourceOrPathEdge(); }
    /// Which segments and bends are flagged as seen: "s" and "b", "." for those that are not.
    std::string flags() {
        edge->updateVisiblePart();
        std::string all;
        for (QxPathIter it(edge); it; ++it) {
            all += it.pEdge()->inVisiblePart() != 0 ? 's' : '.';
            EXPECT_EQ(it.pEdge()->inVisiblePart(), it.pEdge()->inNewVisiblePart());
            if (it.pNode() != nullptr) {
                all += it.pNode()->inVisiblePart() != 0 ? 'b' : '.';
            }
        }
        return all;
    }

    QxFactory factory;
    EdgeDrawing drawing{factory};
    QxDNode* source = drawing.source;
    QxDNode* target = drawing.target;
    QxDEdge* edge = drawing.edge;
};

TEST_F(QxDEdgeClipping, BendsWithinAnEndNodeAreHidden) {
    reroute(edge, {{5, 5}, {50, 5}, {150, 5}, {195, 5}, {205, 0}});
    EXPECT_EQ(flags(), "..sbsbs....");
    EXPECT_EQ(edge->pFromClippingEdge(), segmentsOf(edge)[1]);
    EXPECT_THAT(visiblePointsOf(edge),
                ElementsAre(Place{10, 5}, Place{50, 5}, Place{150, 5}, Place{190, 5}));
    EXPECT_EQ(segmentsOf(edge)[0]->ntFromPoint(1), QxPoint(0, 0)) << "hidden, hence not clipped";
    EXPECT_EQ(edge->findClipPathEdge(1, 0), segmentsOf(edge)[0]);
    EXPECT_EQ(edge->findClipPathEdge(0, 1), segmentsOf(edge)[3]);
    edge->discardOverlappedBendsForClipping(1, 0);
    EXPECT_EQ(bendsOf(edge), (Places{{50, 5}, {150, 5}, {195, 5}, {205, 0}}));
    edge->discardOverlappedBendsForClipping(0, 1);
    EXPECT_EQ(bendsOf(edge), (Places{{50, 5}, {150, 5}}));
    EXPECT_EQ(flags(), "sbsbs");
}

TEST_F(QxDEdgeClipping, NodesThatTouchShowAPointSideBySideOnly) {
    target->moveTo(20, 0, 1);
    EXPECT_EQ(edge->hasVisiblePart(), 1);
    EXPECT_THAT(visiblePointsOf(edge), ElementsAre(Place{10, 0}, Place{10, 0}));
    target->moveTo(19, 0, 1);
    EXPECT_EQ(edge->hasVisiblePart(), 0);
    target->moveTo(20, 20, 1);
    EXPECT_EQ(edge->hasVisiblePart(), 0) << "a diagonal counts as upright";
    target->moveTo(0, 20, 1);
    EXPECT_EQ(edge->hasVisiblePart(), 0);
    target->moveTo(0, 21, 1);
    EXPECT_EQ(edge->hasVisiblePart(), 1);
    target->moveTo(0, -20, 1);
    EXPECT_EQ(edge->hasVisiblePart(), 0);
    target->moveTo(0, 0, 1);
    EXPECT_EQ(edge->hasVisiblePart(), 0);
}

TEST_F(QxDEdgeClipping, AClipPointIsComputedOnce) {
    source->resize(200, 100, 1);
    target->moveTo(300, 300, 1);
    source->pChangeableShapeResource();
    EXPECT_EQ(edge->ntFromPoint(1), QxPoint(50, 50));
    const QxShape oval(QxShapeTypeOval);
    source->pChangeableShapeResource()->shape(&oval);  // tells nobody
    EXPECT_EQ(edge->ntFromPoint(1), QxPoint(50, 50));
    EXPECT_EQ(onlySegment()->ntFromPoint(1), QxPoint(50, 50));
    edge->invalidateEndPoints();
    EXPECT_EQ(onlySegment()->ntFromPoint(1), QxPoint(45, 45));
    edge->hasVisiblePart(0);
    EXPECT_EQ(edge->ntFromPoint(1), QxPoint(0, 0)) << "the setter forgets the clip points";
}

TEST_F(QxDEdgeClipping, AMoveTouchesTheEdgesOfItsNodeOnly) {
    QxDEdge* other = drawing.addEdge(source, drawing.addNode(0, 1000));
    drawing.graph->updateVisiblePartOfEdges();
    target->ntMoveTo(200, 200);
    EXPECT_EQ(other->isUpdatedVisiblePart(), 1);
    EXPECT_EQ(edge->isUpdatedVisiblePart(), 0);
}

TEST_F(QxDEdgeClipping, BothStagesOfTheFlagsAreReported) {
    reroute(edge, {{50, 300}});
    ASSERT_EQ(flags(), "sbs");
    // Now the bend and the first segment will be hidden.
    source->ntMoveTo(50, 300);
    edge->updateNewVisiblePart();
    const auto segments = segmentsOf(edge);
    EXPECT_EQ(segments[0]->inVisiblePart(), 1);
    EXPECT_EQ(segments[0]->inNewVisiblePart(), 0);
    QxGeometricUpdateInfo record(drawing.graph, 0, 1);
    edge->updateVisiblePartAfterGeometryChanges(&record);
    EXPECT_EQ(segments[0]->inVisiblePart(), 0);
    EXPECT_EQ(record.hasOldBoundingRect(), 1) << "what is not seen any more";
    EXPECT_EQ(boxOf(*record.pOldBoundingRect()), (Box{50, 300, 50, 300}));
    EXPECT_EQ(boxOf(*record.pNewBoundingRect()), (Box{50, 0, 200, 300}));
    record.enableAndRestoreState();
}

TEST_F(QxDEdgeClipping, PartsThatAreNotSeenCannotBeUsed) {
    reroute(edge, {{5, 5}, {50, 5}});
    edge->updateVisiblePart();
    const auto segments = segmentsOf(edge);
    EXPECT_EQ(segments[0]->isUsable(), 0);
    EXPECT_EQ(segments[1]->isUsable(), 1);
    edge->isUpdatedVisiblePart(0);
    EXPECT_EQ(segments[0]->isUsable(), 1) << "nobody knows";
    segments[0]->marked(1);
    EXPECT_EQ(segments[0]->isUsable(), 0);
    edge->disconnect();
    EXPECT_EQ(segments[1]->isUsable(), 0);
    EXPECT_EQ(segments[1]->isVisible(), 0);
}

}  // namespace
