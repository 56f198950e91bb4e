// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Random edits, legal and illegal, of the drawings of two factories, compared with naive twins
// after every step: place and look of everything, visibility, references, bounds, and the story
// that the events tell.

#include <gtest/gtest.h>

#include "drawing/EditWorld.h"

namespace {

using namespace qxtest;

class RandomEdit : public testing::TestWithParam<std::uint32_t> {};

TEST_P(RandomEdit, AgreesWithItsTwinsAfterEveryStep) {
    const std::uint32_t seed = testSeed(GetParam());
    SCOPED_TRACE(seedTrace(seed));
    EditWorld world(seed);
    for (int step = 0; step < 3000; ++step) {
        const std::string wrong = world.step();
        ASSERT_EQ(wrong, "") << "at step " << step << "; the last ones:\n"
                             << testing::PrintToString(world.lastSteps());
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomEdit, testing::Values(1U, 2U, 3U, 4U, 5U, 6U));

}  // namespace
