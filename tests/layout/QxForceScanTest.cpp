// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/layout/QxForceScan.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

#include "layout/LayoutTestGraph.h"
#include "qx/layout/QxForceScanSort.h"

namespace {

QxRect rectOf(const QxDNode* node) {
    QxRect rect;
    node->getBoundingRect(rect, 1);
    return rect;
}

/// The scan in its plainest form, over rectangles whose lower left corner is at the origin.
std::vector<QxPoint> centersAfterScan(const std::vector<QxRect>& rects) {
    std::vector<std::size_t> order(rects.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        order[i] = i;
    }
    const auto corner = [&](std::size_t i) { return std::min(rects[i].left(), rects[i].bottom()); };
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return corner(a) < corner(b); });
    std::vector<QxPoint> centers(rects.size());
    std::vector<QxRect> placed;
    for (const std::size_t i : order) {
        QxRect rect = rects[i];
        const std::int32_t limit = corner(i) - 12;
        for (bool moved = true; moved;) {
            moved = false;
            std::erase_if(placed,
                          [&](const QxRect& q) { return q.right() < limit || q.top() < limit; });
            for (const QxRect& q : placed) {
                if (rect.intersectsRect(q) == 0) {
                    continue;
                }
                const std::int32_t dx = q.right() - rect.left() + 12;
                const std::int32_t dy = q.top() - rect.bottom() + 12;
                if (dx <= dy) {
                    rect.moveTo(rect.x() + dx, rect.y());
                } else {
                    rect.moveTo(rect.x(), rect.y() + dy);
                }
                moved = true;
            }
        }
        placed.push_back(rect);
        centers[i] = rect.center();
    }
    return centers;
}

TEST(QxForceScan, PushesTheLaterNodeTheShorterWay) {
    LayoutTestGraph drawing;
    drawing.addNode(20, 20);
    drawing.addNode(55, 30);    // overlaps by 5 horizontally and 30 vertically
    drawing.addNode(500, 500);  // clear of all
    drawing.addNode(545, 500);  // nearer than the gap, but clear
    QxForceScan(drawing.graph()).run();
    EXPECT_EQ(rectOf(drawing.nodes()[0]), QxRect(0, 0, 40, 40));
    EXPECT_EQ(rectOf(drawing.nodes()[1]), QxRect(52, 10, 92, 50));
    EXPECT_EQ(drawing.nodes()[2]->iCenter(), QxPoint(500, 500));
    EXPECT_EQ(drawing.nodes()[3]->iCenter(), QxPoint(545, 500));
}

TEST(QxForceScan, PlacesNodesLikeThePlainScanAndKeepsTheCorner) {
    for (std::uint32_t seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        LayoutTestGraph drawing;
        drawing.addNode(20, 20);  // the corner: no node is pushed before it
        const auto extent = static_cast<std::int32_t>(100 + random() % 1'000);
        for (int i = 0; i < 80; ++i) {
            const auto width = static_cast<std::int32_t>(random() % 70);
            const auto height = static_cast<std::int32_t>(random() % 70);
            const auto x = static_cast<std::int32_t>(random() % static_cast<unsigned>(extent));
            const auto y = static_cast<std::int32_t>(random() % static_cast<unsigned>(extent));
            drawing.addNode(35 + x, 35 + y, width, height);
        }
        std::vector<QxRect> rects;
        for (const QxDNode* node : drawing.nodes()) {
            rects.push_back(rectOf(node));
        }
        QxForceScan(drawing.graph()).run();
        EXPECT_EQ(drawing.centers(), centersAfterScan(rects));
        EXPECT_EQ(rectOf(drawing.nodes()[0]), QxRect(0, 0, 40, 40));
        for (std::size_t i = 0; i < rects.size(); ++i) {
            for (std::size_t j = 0; j < i; ++j) {
                EXPECT_EQ(rectOf(drawing.nodes()[i]).intersectsRect(rectOf(drawing.nodes()[j])), 0);
            }
        }
        const std::vector<QxPoint> once = drawing.centers();
        QxForceScan(drawing.graph()).run();
        EXPECT_EQ(drawing.centers(), once) << "a clear drawing is left as it is";
    }
}

/// The scan works relative to the corner of the drawing, wherever that lies left of the origin.
TEST(QxForceScan, MovedDrawingsAreScannedAlike) {
    std::vector<std::vector<QxPoint>> results;
    for (const std::int32_t offset : {0, -1'000, -70'001}) {
        std::mt19937 random(9);
        LayoutTestGraph drawing;
        drawing.addNode(20 + offset, 20 + offset);
        for (int i = 0; i < 60; ++i) {
            const auto x = static_cast<std::int32_t>(random() % 300);
            const auto y = static_cast<std::int32_t>(random() % 300);
            drawing.addNode(20 + x + offset, 20 + y + offset);
        }
        QxForceScan(drawing.graph()).run();
        std::vector<QxPoint> centers = drawing.centers();
        for (QxPoint& center : centers) {
            center -= QxPoint(offset, offset);
        }
        results.push_back(centers);
        EXPECT_EQ(results.back(), results.front()) << "offset " << offset;
    }
}

/// A listener may discard any node at any move: of the drawing to the origin or of one node.
TEST(QxForceScan, NodesDiscardedByAListenerAreSkipped) {
    for (const std::int32_t offset : {0, 500}) {
        for (const std::size_t doomed : {1U, 2U, 3U}) {
            SCOPED_TRACE(testing::Message() << "offset " << offset << " node " << doomed);
            LayoutTestGraph drawing;
            for (int i = 0; i < 4; ++i) {
                drawing.addNode(20 + 10 * i + offset, 20 + offset);
            }
            const OnFirstMove listener(
                drawing, [&](const QxGNode*) { drawing.discardNode(drawing.nodes()[doomed]); });
            QxForceScan(drawing.graph()).run();
            EXPECT_TRUE(listener.hasActed());
            ASSERT_EQ(drawing.graph()->numberOfNodes(), 3);
            for (std::size_t i = 0; i < 3; ++i) {
                for (std::size_t j = 0; j < i; ++j) {
                    const QxRect rect = rectOf(drawing.nodes()[i]);
                    EXPECT_EQ(rect.intersectsRect(rectOf(drawing.nodes()[j])), 0);
                }
            }
        }
    }
}

TEST(QxForceScan, EmptyGraphsAndExtremeDrawingsAreHarmless) {
    QxForceScan(nullptr).run();
    LayoutTestGraph drawing;
    QxForceScan(drawing.graph()).run();
    for (const std::int32_t coordinate :
         {std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()}) {
        for (int i = 0; i < 3; ++i) {
            drawing.addNode(coordinate, coordinate);
        }
        QxForceScan(drawing.graph()).run();
    }
}

TEST(QxForceScanSort, OrdersByTheNearerOfLeftAndBottom) {
    LayoutTestGraph drawing;
    QxDNode* const low = drawing.addNode(100, 60);            // bottom 40
    QxDNode* const leftmost = drawing.addNode(0, 900);        // left -20
    QxDNode* const lower = drawing.addNode(500, 44, 10, 11);  // bottom 39: the odd unit is on top
    QxDNode* const asLow = drawing.addNode(60, 500);          // left 40, listed after `low`
    QxDNodeDList nodes;
    for (QxDNode* node : {low, leftmost, lower, asLow}) {
        nodes.appendNode(node);
    }
    QxForceScanSort().quickSort(&nodes, 0);
    EXPECT_EQ(nodes.pNodeInPosition(1), leftmost);
    EXPECT_EQ(nodes.pNodeInPosition(2), lower);
    EXPECT_EQ(nodes.pNodeInPosition(3), low);
    EXPECT_EQ(nodes.pNodeInPosition(4), asLow);
}

}  // namespace
