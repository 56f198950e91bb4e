// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "edit/Editor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "edit/Story.h"
#include "import/DocumentReader.h"
#include "picture/SceneBuilder.h"
#include "tool/import/ImportTesting.h"

namespace qxdraw {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

/// A drawing, and what commands do with it.
class EditorTest : public ::testing::Test {
protected:
    explicit EditorTest(const std::string& dot = R"(digraph { node [shape=box width=1 height=0.5]
            a [pos="0,0"] b [pos="200,0"] a -> b; a -> b
            subgraph cluster_c { label=C; d [pos="0,150"]; e [pos="150,150"]; d -> e }
            a -> d; b -> e; a -> a })")
        : document(readDocumentText(dot, "text.dot")),
          drawing(arrange(document, {}, {})),
          editor(*drawing, document, {}),
          story(*drawing, document) {}

    std::string run(const std::string& commands) {
        std::istringstream in(commands);
        for (const ScriptLine& line : readScript(in)) {
            editor.run(line.words);
        }
        EXPECT_EQ(drawing->manager().checkInvariants(), 1);
        return story.take();
    }
    std::size_t shownEdges() { return buildScene(*drawing, document).edges.size(); }
    QxDNode& node(const char* name) {
        return drawing->node(static_cast<std::size_t>(Names(document).find(name).front()));
    }

    GraphDocument document;
    std::unique_ptr<Drawing> drawing;
    Editor editor;
    Story story;
};

TEST_F(EditorTest, MovesSizesAndBends) {
    EXPECT_THAT(run("move a 10 20\nmove a by -30 5"), HasSubstr("a moved to (-20, 25)"));
    EXPECT_EQ(node("a").iCenter(), QxPoint(-20, 25));
    EXPECT_THAT(run("resize a 80 60\nshape a diamond"), HasSubstr("a given another shape"));
    EXPECT_EQ(node("a").iSize(), QxSize(80, 60));
    EXPECT_EQ(run("bend a->b#2 50,-90 90,-95"),
              "bends of a->b: 2 added; bounds now x -60 to 315, "
              "y -95 to 242");
    EXPECT_THAT(run("connector b right a->b#2"), HasSubstr("a->b connected elsewhere"));
    EXPECT_EQ(drawing->edge(1).pTargetConnector()->ntCenter().x(), node("b").ntRight());
    EXPECT_EQ(run("# nothing\n\nmove a by 0 0"), "nothing changed");
}

TEST_F(EditorTest, ShowsAndHidesAndComesBack) {
    const std::size_t all = shownEdges();
    const auto labels = [&] { return buildScene(*drawing, document).labels.size(); };
    const std::size_t texts = labels();
    EXPECT_THAT(run("collapse c"), HasSubstr("collapsed"));
    EXPECT_EQ(shownEdges(), all - 1) << "two edges that stand for others, but none within";
    EXPECT_EQ(labels(), texts) << "a name and two numbers for a title and two names";
    run("expand c");
    EXPECT_EQ(shownEdges(), all);
    EXPECT_EQ(labels(), texts);
    EXPECT_THAT(run("hide a"), HasSubstr("hidden"));
    EXPECT_EQ(shownEdges(), 2U);
    run("unhide all");
    EXPECT_EQ(shownEdges(), all);
    EXPECT_THAT(run("fold \"a and b\" a b"), HasSubstr("folded"));
    EXPECT_NE(node("a and b").isFolderNode(), 0);
    run("move \"a and b\" 400 -100\nunfold \"a and b\"");
    EXPECT_EQ(shownEdges(), all);
    EXPECT_EQ((node("a").iX() + node("b").iX()) / 2, 400);
    EXPECT_THROW(run("fold f a d"), ScriptError) << "of two graphs";
    EXPECT_THROW(run("unfold a"), ScriptError);
}

TEST_F(EditorTest, RoutesAndLaysOut) {
    run("orthogonal on");
    for (std::size_t i = 0; i < drawing->numberOfEdges(); ++i) {
        EXPECT_EQ(drawing->edge(i).orthogonalRouting(), 1) << i;
    }
    run("orthogonal off\nlayout spring");
    EXPECT_EQ(shownEdges(), drawing->numberOfEdges());
    const QxRect inner = *node("d").pIRect();
    QxRect shown;
    node("d").getBoundingRect(shown, 0);
    EXPECT_NE(node("c").pIRect()->encloses(shown), 0);
}

TEST(Script, KnowsQuotesAndComments) {
    std::istringstream in("  # no\nlabel \"a b\" \"x\\n\\\"y\\\"\"\r\n\nhide c#2\n");
    const std::vector<ScriptLine> lines = readScript(in);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0].number, 2);
    EXPECT_THAT(lines[0].words, ElementsAre("label", "a b", "x\n\"y\""));
    EXPECT_THAT(lines[1].words, ElementsAre("hide", "c#2"));
    std::istringstream open("hide \"c");
    EXPECT_THROW(readScript(open), ScriptError);
}

}  // namespace
}  // namespace qxdraw
