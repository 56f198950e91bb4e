// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "import/FormatDetection.h"
#include "import/SourceText.h"
#include "tool/import/ImportTesting.h"

namespace qxdraw::testing {
namespace {

using ::testing::HasSubstr;

TEST(FormatDetection, LooksAtTheContentFirst) {
    const auto format = [](const std::string& text) { return detectFormat(text, "file.xyz"); };
    EXPECT_EQ(format("\xEF\xBB\xBF // c\n/* c */ strict digraph {"), DocumentFormat::Dot);
    EXPECT_EQ(format("graph {"), DocumentFormat::Dot);
    EXPECT_EQ(format("graph # comment\n ["), DocumentFormat::Gml);
    EXPECT_EQ(format("Creator \"x\""), DocumentFormat::Gml);
    EXPECT_EQ(format("  <graphml/>"), DocumentFormat::GraphML);
    EXPECT_EQ(format(std::string("\xFF\xFE<\0g\0", 6)), DocumentFormat::GraphML);
    EXPECT_EQ(format(" \n\t"), DocumentFormat::Empty);
    EXPECT_EQ(format("hello"), DocumentFormat::Unknown);
    EXPECT_EQ(detectFormat("graph [ ]", "file.dot"), DocumentFormat::Gml);
}

TEST(FormatDetection, LooksAtTheEndingWhereTheContentLeavesItOpen) {
    EXPECT_EQ(detectFormat("// only a comment", "a.b/file.GV"), DocumentFormat::Dot);
    EXPECT_EQ(detectFormat("comment \"x\"", "file.gml"), DocumentFormat::Gml);
    EXPECT_EQ(detectFormat("hello", "a.dot/file"), DocumentFormat::Unknown);
    EXPECT_EQ(detectFormat("{\"id\": 1}", "file.dot"), DocumentFormat::Unknown);
}

TEST(SourceText, FindsBytesThatAreNotUtf8) {
    const auto valid = [](const char* text) { return findInvalidUtf8(text) == std::string::npos; };
    EXPECT_TRUE(valid("a é 日 𝔘 \xF4\x8F\xBF\xBF"));
    EXPECT_FALSE(valid("\x80"));
    EXPECT_FALSE(valid("\xC0\xAF"));
    EXPECT_FALSE(valid("\xE0\x80\x80"));
    EXPECT_FALSE(valid("\xED\xA0\x80"));
    EXPECT_FALSE(valid("\xF4\x90\x80\x80"));
    EXPECT_FALSE(valid("\xE6\x97"));
}

TEST(DocumentReader, RefusesWhatIsNoGraphFile) {
    EXPECT_THROW(readDocument(dataPath("no-such-file.dot")), ImportError);
    EXPECT_THROW(readDocument(dataPath("made")), ImportError) << "a folder";
    EXPECT_THAT(errorOf("", "empty.dot"), HasSubstr("nothing in it"));
    EXPECT_THAT(errorOf(readSourceFile(dataPath("bad/nesting-ring.json")), "ring.json"),
                HasSubstr("not a format qxdraw reads"));
}

}  // namespace
}  // namespace qxdraw::testing
