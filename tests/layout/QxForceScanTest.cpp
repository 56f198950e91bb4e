// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/layout/QxForceScan.h"

#include <gtest/gtest.h>

#include "layout/LayoutTestGraph.h"
#include "layout/PlainScan.h"
#include "support/TestRandom.h"

namespace {

QxRect rectOf(const QxDNode* node) {
    QxRect rect;
    node->getBoundingRect(rect, 1);
    return rect;
}

void expectClear(const LayoutTestGraph& drawing) {
    for (const QxDNode* node : drawing.nodes()) {
        for (const QxDNode* other : drawing.nodes()) {
            EXPECT_TRUE(node == other || rectOf(node).intersectsRect(rectOf(other)) == 0);
        }
    }
}

/// Where the scan puts the nodes, which work in coordinates relative to the corner of them all.
std::vector<QxRect> rectsAfterScan(const LayoutTestGraph& drawing) {
    QxRect bounds = rectOf(drawing.nodes()[0]);
    for (const QxDNode* node : drawing.nodes()) {
        bounds |= rectOf(node);
    }
    const auto cornerOf = [&](const QxDNode* node) {
        const QxRect rect = rectOf(node);
        return std::min(rect.left() - bounds.left(), rect.bottom() - bounds.bottom());
    };
    std::vector<QxDNode*> order = drawing.nodes();
    std::stable_sort(order.begin(), order.end(),
                     [&](const QxDNode* a, const QxDNode* b) { return cornerOf(a) < cornerOf(b); });
    PlainScan scan;
    std::vector<QxRect> rects(order.size());
    for (const QxDNode* node : order) {
        const QxRect r = rectOf(node);
        const auto placed = scan.place({r.left() - bounds.left(), r.bottom() - bounds.bottom(),
                                        r.right() - bounds.left(), r.top() - bounds.bottom()});
        const auto& all = drawing.nodes();
        rects[static_cast<std::size_t>(std::find(all.begin(), all.end(), node) - all.begin())] = {
            placed.left + bounds.left(), placed.bottom + bounds.bottom(),
            placed.right + bounds.left(), placed.top + bounds.bottom()};
    }
    return rects;
}

TEST(QxForceScan, PlacesNodesLikeThePlainScanWhereverTheDrawingLies) {
    for (std::uint32_t seed = qxtest::testSeed(1), last = seed + 30; seed < last; ++seed) {
        SCOPED_TRACE(qxtest::seedTrace(seed));
        qxtest::TestRandom random(seed);
        LayoutTestGraph drawing;
        const int x = random.below(140'000) - 70'000;
        const int y = random.below(140'000) - 70'000;
        const int extent = 100 + random.below(1'000);
        for (int i = 0; i < 80; ++i) {
            drawing.addNode(x + random.below(extent), y + random.below(extent), random.below(70),
                            random.below(70));
        }
        const std::vector<QxRect> expected = rectsAfterScan(drawing);
        QxForceScan(drawing.graph()).run();
        for (std::size_t i = 0; i < expected.size(); ++i) {
            ASSERT_EQ(rectOf(drawing.nodes()[i]), expected[i]) << "node " << i;
        }
        expectClear(drawing);
        QxRect bounds;
        drawing.graph()->getBoundingRect(bounds, 1);
        const std::vector<QxPoint> once = drawing.centers();
        QxForceScan(drawing.graph()).run();
        EXPECT_EQ(drawing.centers(), once) << "a clear drawing is left as it is";
        QxRect after;
        drawing.graph()->calculateAndReturnGraphBounds(after);
        EXPECT_EQ(bounds, after);
    }
}

/// A listener may discard any node at any move: of the drawing to the origin or of one node.
TEST(QxForceScan, NodesDiscardedByAListenerAreSkipped) {
    for (const std::int32_t offset : {0, 500}) {
        for (const std::size_t doomed : {1U, 2U, 3U}) {
            SCOPED_TRACE(testing::Message() << "offset " << offset << " node " << doomed);
            LayoutTestGraph drawing;
            LayoutTestGraph without;
            for (int i = 0; i < 4; ++i) {
                drawing.addNode(20 + 10 * i + offset, 20 + offset);
                without.addNode(20 + 10 * i + offset, 20 + offset);
            }
            without.discardNode(without.nodes()[doomed]);
            const OnFirstMove listener(
                drawing, [&](const QxGNode*) { drawing.discardNode(drawing.nodes()[doomed]); });
            QxForceScan(drawing.graph()).run();
            EXPECT_TRUE(listener.hasActed());
            ASSERT_EQ(drawing.graph()->numberOfNodes(), 3);
            expectClear(drawing);
            // Unless it had been placed, it is as if it had never been there.
            QxForceScan(without.graph()).run();
            EXPECT_TRUE(drawing.centers() == without.centers() || (offset == 0 && doomed == 1));
        }
    }
}

TEST(QxForceScan, EmptyGraphsAndExtremeDrawingsAreHarmless) {
    QxForceScan(nullptr).run();
    LayoutTestGraph drawing;
    QxForceScan(drawing.graph()).run();
    for (const std::int32_t coordinate : {qx::MinInt32, qx::MaxInt32}) {
        for (int i = 0; i < 3; ++i) {
            drawing.addNode(coordinate, coordinate);
        }
        QxForceScan(drawing.graph()).run();
    }
}

}  // namespace
