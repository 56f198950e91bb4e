// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// The built tool, run as a user runs it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "tool/import/ImportTesting.h"
#include "tool/support/TemporaryFolder.h"

namespace qxdraw::testing {
namespace {

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;
using ::testing::Not;
using ::testing::StartsWith;

struct Outcome {
    int exitCode;
    std::string out;
    std::string err;
};

std::string quoted(const std::string& argument) {
    return "'" + argument + "'";
}

/// Runs the tool; `arguments` is shell text.
Outcome run(const std::string& arguments) {
    const TemporaryFolder folder;
    const std::string command = quoted(QXDRAW_TOOL) + " " + arguments + " >" +
                                quoted(folder / "out") + " 2>" + quoted(folder / "err");
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contentOf(folder / "out"),
            contentOf(folder / "err")};
}

Outcome runOn(const std::string& command, const std::string& file, const std::string& rest = "") {
    return run(command + " " + quoted(file) + " " + rest);
}

std::vector<std::string> goodFiles() {
    std::vector<std::string> names;
    std::ifstream manifest(dataPath("MANIFEST.tsv"));
    std::string line;
    std::getline(manifest, line);
    while (std::getline(manifest, line)) {
        names.push_back(line.substr(0, line.find('\t')));
    }
    return names;
}

std::size_t count(const std::string& text, const std::string& part) {
    std::size_t found = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++found;
    }
    return found;
}

TEST(Tool, InfoAgreesWithTheManifest) {
    std::ifstream manifest(dataPath("MANIFEST.tsv"));
    std::string line;
    std::getline(manifest, line);
    std::vector<std::string> columns;
    for (std::istringstream head(line); std::getline(head, line, '\t');) {
        columns.push_back(line);
    }
    while (std::getline(manifest, line)) {
        std::istringstream row(line);
        std::string name;
        std::getline(row, name, '\t');
        const Outcome info = runOn("info --json", dataPath(name));
        ASSERT_EQ(info.exitCode, 0) << info.err;
        const nlohmann::json json = nlohmann::json::parse(info.out);
        std::string bytes;
        std::getline(row, bytes, '\t');
        for (std::size_t i = 2; i < columns.size(); ++i) {
            int expected = -1;
            row >> expected;
            EXPECT_EQ(json.at(columns[i]), expected) << name << ": " << columns[i];
        }
    }
}

TEST(Tool, InfoTellsBoundsOnlyWhereTheFileGivesPositions) {
    const auto bounds = [](const char* name) {
        return nlohmann::json::parse(runOn("info --json", dataPath(name)).out).at("bounds");
    };
    EXPECT_TRUE(bounds("graphviz-epl/unix.gv").is_null());
    const nlohmann::json mixed = bounds("made/mixed.gml");
    EXPECT_EQ(mixed.at("left"), -40);
    EXPECT_EQ(mixed.at("right"), 230);
    EXPECT_EQ(mixed.at("bottom"), -180);
    EXPECT_EQ(mixed.at("top"), 60) << "the bend reaches highest";
    EXPECT_THAT(runOn("info", dataPath("made/mixed.gml")).out, HasSubstr("x -40 to 230"));
}

TEST(Tool, DrawsEveryGoodFile) {
    const TemporaryFolder folder;
    for (const std::string& name : goodFiles()) {
        const std::string picture = folder / "picture.svg";
        const Outcome draw = runOn("draw -q", dataPath(name), "-o " + quoted(picture));
        ASSERT_EQ(draw.exitCode, 0) << name << ": " << draw.err;
        EXPECT_THAT(draw.err, IsEmpty());
        const std::string svg = contentOf(picture);
        EXPECT_THAT(svg, EndsWith("</svg>\n")) << name;
        const nlohmann::json info =
            nlohmann::json::parse(runOn("info --json -q", dataPath(name)).out);
        const std::size_t outlines =
            count(svg, "<rect x=") + count(svg, "<ellipse") + count(svg, "<polygon");
        EXPECT_EQ(outlines, info.at("nodes").get<std::size_t>()) << name;
        fs::remove(picture);
    }
}

TEST(Tool, WritesPngPictures) {
    const TemporaryFolder folder;
    const std::string picture = folder / "picture.PNG";
    ASSERT_EQ(runOn("draw", dataPath("graphviz-epl/fsm.gv"), "-o " + quoted(picture)).exitCode, 0);
    EXPECT_THAT(contentOf(picture), StartsWith("\x89PNG\r\n"));
}

TEST(Tool, DrawsTheSameBytesInEveryRun) {
    const TemporaryFolder folder;
    for (const char* name : {"facts/lesmis.graphml", "gen/multiedge.dot", "made/mixed.gml",
                             "facts/xerces-headers.dot"}) {
        for (const char* picture : {"a.svg", "b.svg"}) {
            ASSERT_EQ(runOn("draw -q", dataPath(name), "-o " + quoted(folder / picture)).exitCode,
                      0);
        }
        EXPECT_EQ(contentOf(folder / "a.svg"), contentOf(folder / "b.svg")) << name;
    }
}

TEST(Tool, KeepsNamesOfAnyScript) {
    const TemporaryFolder folder;
    ASSERT_EQ(runOn("draw", dataPath("made/i18n-labels.graphml"), "-o " + quoted(folder / "a.svg"))
                  .exitCode,
              0);
    const std::string svg = contentOf(folder / "a.svg");
    for (const char* name :
         {"Ελληνικά", "العربية", "עברית", "👩‍🔬 lab", "日本語のノード", "line 2"}) {
        EXPECT_THAT(svg, HasSubstr(std::string(">") + name + "</text>"));
    }
}

TEST(Tool, LeavesPlacesAloneUnlessALayoutIsAskedFor) {
    const TemporaryFolder folder;
    const std::string file = dataPath("made/mixed.gml");
    const auto draw = [&](const std::string& options) {
        const Outcome result = runOn("draw " + options, file, "-o " + quoted(folder / "a.svg"));
        EXPECT_EQ(result.exitCode, 0) << result.err;
        return contentOf(folder / "a.svg");
    };
    const std::string asGiven = draw("");
    EXPECT_EQ(asGiven, draw("--layout none"));
    EXPECT_NE(asGiven, draw("--layout spring"));
    EXPECT_THAT(asGiven, HasSubstr("width=\"80\" height=\"40\""));
    EXPECT_NE(draw("--layout spring"), draw("--layout spring --edge-length 300"));
}

TEST(Tool, TellsWhatItReadMovedAndWrote) {
    const TemporaryFolder folder;
    const std::string target = "-o " + quoted(folder / "a.svg");
    const Outcome moved = runOn("draw --layout spring", dataPath("made/mixed.gml"), target);
    EXPECT_THAT(moved.out, HasSubstr("read 3 nodes and 4 edges from"));
    EXPECT_THAT(moved.out, HasSubstr("moved 3 nodes"));
    EXPECT_THAT(moved.out, HasSubstr("a.svg, "));
    EXPECT_THAT(runOn("draw", dataPath("made/mixed.gml"), target).out, HasSubstr("moved no nodes"));
    EXPECT_THAT(runOn("draw -q", dataPath("made/mixed.gml"), target).out, IsEmpty());
}

TEST(Tool, ShowsBendsAndHiddenPartsOverTheSamePicture) {
    const TemporaryFolder folder;
    const auto draw = [&](const std::string& name, const std::string& options) {
        const Outcome result =
            runOn("draw -q " + options, dataPath(name), "-o " + quoted(folder / "a.svg"));
        EXPECT_EQ(result.exitCode, 0) << result.err;
        return contentOf(folder / "a.svg");
    };
    const auto added = [&](const std::string& name, const std::string& options) {
        const std::string plain = draw(name, options);
        const std::string detailed = draw(name, options + " --bends");
        EXPECT_EQ(count(plain, "<circle") + count(plain, "dasharray"), 0U) << name;
        const std::size_t start = plain.find("</svg>");
        EXPECT_EQ(detailed.substr(0, start), plain.substr(0, start)) << name;
        return detailed.substr(start);
    };
    const std::string mixed = added("made/mixed.gml", "");
    EXPECT_EQ(count(mixed, "<circle"), 3U) << "one from the file, two of the loop";
    EXPECT_EQ(count(mixed, "<path"), 8U) << "both ends of four edges";
    EXPECT_EQ(count(mixed, "stroke-dasharray"), 1U);
    EXPECT_EQ(count(added("made/mixed.gml", "--layout spring"), "<circle"), 4U)
        << "the bend of the file is gone, the two parallel edges have one each";
    EXPECT_EQ(count(added("facts/karate.gml", ""), "<circle"), 0U) << "straight edges only";
}

TEST(Tool, SaysThatNestedGraphsAreDrawnFlat) {
    const TemporaryFolder folder;
    const std::string output = "-o " + quoted(folder / "a.svg");
    EXPECT_THAT(runOn("draw", dataPath("made/order-process.dot"), output).err,
                EndsWith("order-process.dot: note: 3 nested graphs are drawn flat\n"));
    EXPECT_THAT(runOn("draw", dataPath("graphviz-epl/unix.gv"), output).err, IsEmpty());
}

TEST(Tool, RefusesEveryBadFileWithoutLeavingAPicture) {
    const TemporaryFolder folder;
    int files = 0;
    for (const auto& entry : fs::directory_iterator(dataPath("bad"))) {
        const std::string file = entry.path().string();
        for (const Outcome& result :
             {runOn("info", file), runOn("draw", file, "-o " + quoted(folder / "a.svg"))}) {
            EXPECT_EQ(result.exitCode, 1) << file;
            EXPECT_THAT(result.out, IsEmpty());
            EXPECT_THAT(result.err,
                        MatchesRegex("qxdraw: .*/bad/[a-z0-9-]+\\.[a-z]+:([0-9]+:)? [^\n]+\n"));
            EXPECT_THAT(result.err + result.out, Not(HasSubstr("CANARY")));
        }
        ++files;
    }
    EXPECT_EQ(files, 10);
    EXPECT_EQ(folder.numberOfFiles(), 0);
}

TEST(Tool, NamesTheLineOfABadFile) {
    const auto error = [](const char* name) { return runOn("info", dataPath(name)).err; };
    EXPECT_THAT(error("bad/truncated.graphml"), HasSubstr("truncated.graphml:3: "));
    EXPECT_THAT(error("bad/entities.graphml"), HasSubstr("entities.graphml:2: "));
    EXPECT_THAT(error("bad/outside-file.graphml"), HasSubstr("outside-file.graphml:2: "));
    EXPECT_THAT(error("bad/numbers.gml"), HasSubstr("numbers.gml:2: "));
    EXPECT_THAT(error("bad/open-quote.dot"), HasSubstr("open-quote.dot:1: "));
    EXPECT_THAT(error("bad/empty.dot"), HasSubstr("nothing in it"));
}

TEST(Tool, ReportsWhatCannotBeReadOrWritten) {
    const TemporaryFolder folder;
    const std::string good = dataPath("graphviz-epl/fsm.gv");
    EXPECT_EQ(runOn("info", folder / "none.dot").exitCode, 1);
    const Outcome noFolder = runOn("draw", good, "-o " + quoted(folder / "none/a.svg"));
    EXPECT_EQ(noFolder.exitCode, 1);
    EXPECT_THAT(noFolder.err, AllOf(StartsWith("qxdraw: "), HasSubstr("none/a.svg: cannot be")));
    fs::create_symlink("/dev/full", folder / "full.svg");
    EXPECT_EQ(runOn("draw", good, "-o " + quoted(folder / "full.svg")).exitCode, 1);
    EXPECT_EQ(run("info " + quoted(good) + " >/dev/full; true").exitCode, 0);
    EXPECT_EQ(
        std::system((quoted(QXDRAW_TOOL) + " info " + quoted(good) + " >/dev/full 2>&1").c_str()) >>
            8,
        1)
        << "a full disk under the results";
    EXPECT_EQ(folder.numberOfFiles(), 1);
}

TEST(Tool, AnswersWrongUsageWithTwo) {
    const std::string good = quoted(dataPath("graphviz-epl/fsm.gv"));
    for (const std::string& arguments :
         {std::string(), std::string("paint"), std::string("info"), "draw " + good,
          "draw " + good + " -o picture.gif", "draw " + good + " -o a.svg --layout circle",
          "draw " + good + " -o a.svg --edge-length -5", "info --no-such-option " + good}) {
        const Outcome result = run(arguments);
        EXPECT_EQ(result.exitCode, 2) << arguments;
        EXPECT_THAT(result.err, StartsWith("qxdraw: "));
    }
}

TEST(Tool, HelpsWithExamplesThatWork) {
    EXPECT_EQ(run("--help").exitCode, 0);
    for (const char* command : {"info", "draw"}) {
        const Outcome help = run(std::string(command) + " --help");
        EXPECT_EQ(help.exitCode, 0);
        const std::size_t at = help.out.find("\nExample");
        ASSERT_NE(at, std::string::npos) << help.out;
        const TemporaryFolder folder;
        fs::create_directory_symlink(fs::canonical(dataPath("../../samples")), folder / "samples");
        const std::string start = "  qxdraw ";
        int examples = 0;
        std::istringstream lines(help.out.substr(at));
        for (std::string line; std::getline(lines, line);) {
            if (line.starts_with(start)) {
                const std::string shell = "cd " + quoted(folder / ".") + " && " +
                                          quoted(QXDRAW_TOOL) + " " + line.substr(start.size()) +
                                          " >/dev/null";
                EXPECT_EQ(std::system(shell.c_str()), 0) << shell;
                ++examples;
            }
        }
        EXPECT_GE(examples, 1);
    }
}

}  // namespace
}  // namespace qxdraw::testing
