// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "model/Stretching.h"

#include <numeric>

#include "tool/import/ImportTesting.h"

namespace qxdraw {
namespace {

GraphDocument boxesAt(const std::vector<DocumentPoint>& places) {
    GraphDocument document;
    for (const DocumentPoint& place : places) {
        DocumentNode& node = document.nodes.emplace_back();
        node.center = place;
        node.width = 40;
        node.height = 20;
    }
    return document;
}

std::vector<int> everyNode(const GraphDocument& document) {
    std::vector<int> part(document.nodes.size());
    std::iota(part.begin(), part.end(), 0);
    return part;
}

std::vector<DocumentPoint> grid(double distance) {
    constexpr int Side = 12;
    std::vector<DocumentPoint> places;
    for (int i = 0; i < Side * Side; ++i) {
        places.push_back({distance * (i % Side), distance * (i / Side)});
    }
    return places;
}

TEST(Stretching, LeavesARoomyDrawingAlone) {
    GraphDocument document = boxesAt(grid(50));
    stretchUntilRoomy(document, everyNode(document));
    EXPECT_EQ(document.nodes[1].center->x, 50);
    stretchUntilRoomy(document, {3});
    EXPECT_EQ(document.nodes[3].center->x, 150);
}

TEST(Stretching, KeepsTheShapeOfACrowdedDrawing) {
    GraphDocument document = boxesAt(grid(15));
    const auto before = static_cast<std::size_t>(testing::overlaps(document));
    ASSERT_GT(before, document.nodes.size());
    stretchUntilRoomy(document, everyNode(document));
    EXPECT_LE(static_cast<std::size_t>(testing::overlaps(document)), document.nodes.size() / 3);
    const double step = document.nodes[1].center->x;
    for (std::size_t i = 0; i < document.nodes.size(); ++i) {
        EXPECT_NEAR(document.nodes[i].center->x, step * static_cast<double>(i % 12), 12);
        EXPECT_NEAR(document.nodes[i].center->y, step * static_cast<double>(i / 12), 12);
    }
    EXPECT_LT(step, 60) << "no more than needed";
}

TEST(Stretching, KeepsTheOrderWhereOneNodeFarOutTakesThePaper) {
    std::vector<DocumentPoint> places = grid(5);
    places.push_back({100000, 100000});
    GraphDocument document = boxesAt(places);
    stretchUntilRoomy(document, everyNode(document));
    EXPECT_LT(document.nodes.back().center->x, 2000);
    for (std::size_t i = 0; i < places.size(); ++i) {
        for (std::size_t j = 0; j < places.size(); ++j) {
            if (places[i].x < places[j].x) {
                EXPECT_LT(document.nodes[i].center->x, document.nodes[j].center->x);
            }
        }
    }
}

}  // namespace
}  // namespace qxdraw
