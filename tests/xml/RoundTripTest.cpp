// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Drawings that are written and read again.

#include <gtest/gtest.h>

#include "xml/DocumentWorld.h"
#include "xml/DrawingText.h"

namespace {

using namespace qxtest;

/// Where two texts differ first: the lines there.
std::string difference(const std::string& a, const std::string& b) {
    std::istringstream left(a);
    std::istringstream right(b);
    std::string one;
    std::string other;
    int line = 0;
    while (true) {
        const bool isLeft = static_cast<bool>(std::getline(left, one));
        const bool isRight = static_cast<bool>(std::getline(right, other));
        ++line;
        if (!isLeft && !isRight) {
            return "";
        }
        if (isLeft != isRight || one != other) {
            return "line " + std::to_string(line) + "\n" + one + "\n" + other;
        }
    }
}

class RoundTrips : public testing::TestWithParam<std::uint32_t> {};

TEST_P(RoundTrips, NothingIsLost) {
    const std::uint32_t seed = testSeed(GetParam());
    SCOPED_TRACE(seedTrace(seed));
    QxFactory factory;
    DocumentWorld world(factory, seed);
    for (int i = 0; i < 12; ++i) {
        for (int k = 0; k < 25; ++k) {
            world.edit();
        }
        const std::string text = DrawingText(*world.manager).text();
        const std::string first = documentOf(*world.manager);
        ASSERT_EQ(DrawingText(*world.manager).text(), text) << "writing changed the drawing";
        std::string last = first;
        for (int generation = 1; generation <= 3; ++generation) {
            SCOPED_TRACE("generation " + std::to_string(generation) + " after " +
                         std::to_string(i));
            QxFactory home;
            const Ref<QxDGraphManager> again(home.newDGraphManager());
            QxDGraphManagerXMLReader reader(last.data(), last.size());
            ASSERT_EQ(reader.read(again.get()), 1) << toldBy(reader);
            ASSERT_EQ(again->checkInvariants(), 1);
            ASSERT_EQ(difference(text, DrawingText(*again).text()), "") << toldBy(reader);
            ASSERT_EQ(again->isReading(), 0);
            const std::string next = documentOf(*again);
            ASSERT_EQ(difference(last, next), "");
            last = next;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RoundTrips, testing::Range(1U, 9U));

}  // namespace
