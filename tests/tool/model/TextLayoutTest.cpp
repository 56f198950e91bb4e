// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "model/TextLayout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace qxdraw {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<std::string> wrap(std::string_view text, double widest = 100) {
    return wrapText(text, 10, widest, 10);
}

TEST(TextLayout, BreaksAfterBlanksAndPunctuation) {
    EXPECT_THAT(wrap("a name of many words, all short", 80),
                ElementsAre("a name of", "many words, all", "short"));
    EXPECT_THAT(wrap("libsomething-common-dev", 80), ElementsAre("libsomething-", "common-dev"));
    EXPECT_THAT(wrap("first\nsecond\n\nthird"), ElementsAre("first", "second", "", "third"));
}

TEST(TextLayout, BreaksAnywhereWhereThereIsNoBetterPlace) {
    const std::vector<std::string> lines = wrap(std::string(50, 'A'));
    std::string joined;
    for (const std::string& line : lines) {
        EXPECT_LE(textWidth(line, 10), 100);
        EXPECT_TRUE(textWidth(line, 10) > 90 || line == lines.back()) << "lines are filled";
        joined += line;
    }
    EXPECT_EQ(joined, std::string(50, 'A'));
}

TEST(TextLayout, KeepsMarksAndJoinedEmojiTogether) {
    const std::string accented = "e\u0301";
    std::string text;
    for (int i = 0; i < 40; ++i) {
        text += accented;
    }
    for (const std::string& line : wrap(text)) {
        EXPECT_EQ(line.size() % accented.size(), 0U) << line;
    }
    const std::string scientist = "\U0001F469\u200D\U0001F52C";
    EXPECT_THAT(wrap(scientist, 5), ElementsAre(scientist));
}

TEST(TextLayout, DropsControlCharacters) {
    EXPECT_THAT(wrap("a\x01\x7F\u0085z\tb"), ElementsAre("az b"));
    EXPECT_THAT(wrap(""), IsEmpty());
}

TEST(TextLayout, CutsWhatDoesNotFitVisibly) {
    EXPECT_THAT(wrapText("a b c d e f", 10, 12, 3), ElementsAre("a", "b", "c…"));
}

TEST(TextLayout, MeasuresWideNarrowAndInvisibleCharacters) {
    EXPECT_LT(textWidth("iiii", 10), textWidth("mmmm", 10) / 3);
    EXPECT_DOUBLE_EQ(textWidth("日本", 10), 20);
    EXPECT_DOUBLE_EQ(textWidth("e\u0301", 10), textWidth("e", 10));
    EXPECT_DOUBLE_EQ(textWidth("abc", 20), 2 * textWidth("abc", 10));
}

}  // namespace
}  // namespace qxdraw
