// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// The built tool, run as a user runs it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
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

/// A picture drawn of a data file, and what the tool said.
struct Picture : Outcome {
    std::string text;
};

Picture draw(const std::string& name, const std::string& options = "-q",
             const std::string& picture = "a.svg") {
    const TemporaryFolder folder;
    Picture result{runOn("draw " + options, dataPath(name), "-o " + quoted(folder / picture)), {}};
    EXPECT_EQ(result.exitCode, 0) << name << ": " << result.err;
    result.text = contentOf(folder / picture);
    return result;
}

nlohmann::json infoOf(const std::string& name) {
    const Outcome info = runOn("info --json -q", dataPath(name));
    EXPECT_EQ(info.exitCode, 0) << info.err;
    return nlohmann::json::parse(info.out);
}

std::size_t count(const std::string& text, const std::string& part) {
    std::size_t found = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++found;
    }
    return found;
}

TEST(Tool, CountsAndDrawsEveryGoodFileAsTheManifestSays) {
    std::ifstream manifest(dataPath("MANIFEST.tsv"));
    std::string line;
    std::getline(manifest, line);
    std::istringstream head(line);
    const std::vector<std::string> columns{std::istream_iterator<std::string>(head), {}};
    int files = 0;
    for (std::string name; manifest >> name; ++files) {
        const nlohmann::json info = infoOf(name);
        for (std::size_t i = 1; i < columns.size(); ++i) {
            int expected = -1;
            manifest >> expected;
            EXPECT_TRUE(i == 1 || info.at(columns[i]) == expected) << name << ": " << columns[i];
        }
        const Picture picture = draw(name);
        EXPECT_THAT(picture.err, IsEmpty());
        EXPECT_THAT(picture.text, EndsWith("</svg>\n")) << name;
        const std::size_t outlines = count(picture.text, "<rect x=") +
                                     count(picture.text, "<ellipse") +
                                     count(picture.text, "<polygon");
        // In DOT a nested graph is no node, and has a box of its own.
        const std::size_t boxes =
            info.at("format") == "DOT" ? info.at("graphs_nested").get<std::size_t>() : 0;
        EXPECT_EQ(outlines, info.at("nodes").get<std::size_t>() + boxes) << name;
    }
    EXPECT_GE(files, 20);
}

TEST(Tool, InfoTellsBoundsOnlyWhereTheFileGivesPositions) {
    EXPECT_TRUE(infoOf("graphviz-epl/unix.gv").at("bounds").is_null());
    const nlohmann::json bounds = infoOf("made/mixed.gml").at("bounds");
    EXPECT_EQ(bounds,
              (nlohmann::json{{"left", -40}, {"right", 230}, {"bottom", -180}, {"top", 60}}))
        << "the bend reaches highest";
    EXPECT_THAT(runOn("info", dataPath("made/mixed.gml")).out, HasSubstr("x -40 to 230"));
}

nlohmann::json found(const std::string& name, const std::string& where) {
    const Outcome find = runOn("find --json -q", dataPath(name), where);
    EXPECT_EQ(find.exitCode, 0) << find.err;
    return nlohmann::json::parse(find.out).at("found");
}

TEST(Tool, FindsWhatLiesInARegionOrAtAPointFrontFirst) {
    const std::pair<const char*, const char*> rows[] = {
        {"--region -50,-45,150,50",
         "label 'straight' of edge 10 -> 20|label 'café & bar' of node 10|node 10|edge 30 -> 10|"
         "edge 10 -> 20|edge 10 -> 20|"},
        {"--at 0,0", "label 'café & bar' of node 10|node 10|"},
        {"--at 60,2", "edge 10 -> 20|"},
        {"--at 60,-178", "node 30|"},
        {"--at 57,-122", ""},  // in the rectangle of the triangle, not in it
        {"--at=-500,0", ""},
    };
    for (const auto& [where, expected] : rows) {
        std::string names;
        std::istringstream out(runOn("find", dataPath("made/mixed.gml"), where).out);
        for (std::string line; std::getline(out, line);) {
            names += line.find(": x ") == std::string::npos
                         ? ""
                         : line.substr(0, line.find(": x ")) + "|";
        }
        EXPECT_EQ(names, expected) << where;
    }
    const nlohmann::json bus = found("made/ports-nested.graphml", "--region 296,-98,304,-86");
    ASSERT_EQ(bus.size(), 4U);
    EXPECT_EQ(bus[0].at("port"), "bus");
    EXPECT_EQ(bus[1].at("kind"), "edge");
    EXPECT_EQ(bus[3].at("id"), "cpu") << "a node with others in it lies behind edges";
}

TEST(Tool, FindsInPartsOfADrawingWhatItFindsInTheWhole) {
    const nlohmann::json all = found("made/labels.dot", "--region=-9999,-9999,9999,9999");
    EXPECT_GT(all.size(), 40U);
    for (int left = -100; left < 500; left += 110) {
        for (int bottom = -600; bottom < 50; bottom += 130) {
            const std::string region = std::to_string(left) + "," + std::to_string(bottom) + "," +
                                       std::to_string(left + 60) + "," +
                                       std::to_string(bottom + 80);
            nlohmann::json expected = nlohmann::json::array();
            for (const nlohmann::json& one : all) {
                const nlohmann::json& bounds = one.at("bounds");
                if (one.at("kind") != "edge" && bounds.at("left") <= left + 60 &&
                    bounds.at("right") >= left && bounds.at("bottom") <= bottom + 80 &&
                    bounds.at("top") >= bottom) {
                    expected.push_back(one);
                }
            }
            nlohmann::json part = found("made/labels.dot", "--region=" + region);
            part.erase(std::remove_if(part.begin(), part.end(),
                                      [](const auto& one) { return one.at("kind") == "edge"; }),
                       part.end());
            EXPECT_EQ(part, expected) << region;
        }
    }
}

TEST(Tool, DrawsTheSameBytesInEveryRun) {
    for (const char* name : {"facts/lesmis.graphml", "gen/multiedge.dot", "made/mixed.gml",
                             "facts/xerces-headers.dot", "made/labels.dot"}) {
        EXPECT_EQ(draw(name).text, draw(name).text) << name;
    }
    EXPECT_THAT(draw("graphviz-epl/fsm.gv", "", "a.PNG").text, StartsWith("\x89PNG\r\n"));
}

TEST(Tool, KeepsNamesOfAnyScript) {
    const std::string svg = draw("made/i18n-labels.graphml").text;
    for (const char* name :
         {"Ελληνικά", "العربية", "עברית", "👩‍🔬 lab", "日本語のノード", "line 2"}) {
        EXPECT_THAT(svg, HasSubstr(std::string(">") + name + "</text>"));
    }
}

TEST(Tool, LeavesPlacesAloneUnlessALayoutIsAskedForAndTellsSo) {
    const Picture asGiven = draw("made/mixed.gml", "");
    const Picture moved = draw("made/mixed.gml", "--layout spring");
    EXPECT_EQ(asGiven.text, draw("made/mixed.gml", "--layout none").text);
    EXPECT_NE(asGiven.text, moved.text);
    EXPECT_THAT(asGiven.text, HasSubstr("width=\"80\" height=\"40\""));
    EXPECT_NE(moved.text, draw("made/mixed.gml", "--layout spring --edge-length 300").text);
    EXPECT_THAT(asGiven.out, HasSubstr("moved no nodes"));
    EXPECT_THAT(moved.out, AllOf(HasSubstr("read 3 nodes and 4 edges from"),
                                 HasSubstr("moved 3 nodes"), HasSubstr("a.svg, ")));
    EXPECT_THAT(draw("made/mixed.gml").out, IsEmpty());
    EXPECT_THAT(draw("graphviz-epl/unix.gv", "").err, IsEmpty());
}

TEST(Tool, ShowsBendsAndHiddenPartsOverTheSamePicture) {
    const auto added = [](const std::string& name, const std::string& options) {
        const std::string plain = draw(name, "-q " + options).text;
        const std::string detailed = draw(name, "-q --bends " + options).text;
        EXPECT_EQ(count(plain, "<circle") + count(plain, "dasharray"), 0U) << name;
        const std::size_t start = plain.find("</svg>");
        EXPECT_EQ(detailed.substr(0, start), plain.substr(0, start)) << name;
        return detailed.substr(start);
    };
    const std::string mixed = added("made/mixed.gml", "");
    EXPECT_EQ(count(mixed, "<circle"), 3U) << "one from the file, two of the loop";
    EXPECT_EQ(count(mixed, "<path"), 6U) << "both ends of all edges but the loop, on the outline";
    EXPECT_EQ(count(mixed, "stroke-dasharray"), 1U);
    EXPECT_EQ(count(added("made/mixed.gml", "--layout spring"), "<circle"), 2U)
        << "the bend of the file is gone, those of the loop stay";
    EXPECT_EQ(count(added("facts/karate.gml", ""), "<circle"), 0U) << "straight edges only";
}

TEST(Tool, ShowsPartsOfANestedDrawing) {
    const std::string shop = "made/shop-architecture.dot";
    const nlohmann::json all = infoOf(shop);
    EXPECT_EQ(all.at("inter_graph_edges"), 17);
    EXPECT_FALSE(all.contains("shown"));
    const auto shown = [&](const std::string& options) {
        const Outcome info = runOn("info --json -q", dataPath(shop), options);
        EXPECT_EQ(info.exitCode, 0) << options << info.err;
        const nlohmann::json json = nlohmann::json::parse(info.out).at("shown");
        std::string text;
        for (const char* key :
             {"nodes", "graphs_nested", "edges", "meta_edges", "edges_behind_meta_edges"}) {
            text += std::to_string(json.at(key).get<int>()) + " ";
        }
        return text;
    };
    EXPECT_EQ(shown("--collapse all"), "5 0 1 5 9 ");
    EXPECT_EQ(shown("--collapse depth:9"), "15 8 20 0 0 ");
    EXPECT_EQ(shown("--collapse Sales --collapse cluster_catalogue"), "10 4 9 4 6 ");
    EXPECT_EQ(shown("--fold user,staff"), "14 8 17 2 3 ");
    EXPECT_EQ(shown("--hide Core"), "7 2 3 0 0 ");
    EXPECT_EQ(shown("--only cart --depth 1 --children"), "2 2 1 0 0 ");

    const Picture folded = draw(shop, "-q --fold user,staff --hide Core");
    EXPECT_THAT(folded.text, HasSubstr(">Buyer, Staff</text>"));
    EXPECT_THAT(folded.text, HasSubstr(">2</text>"));
    EXPECT_THAT(folded.text, Not(HasSubstr(">Core</text>")));
    EXPECT_EQ(draw(shop, "-q --collapse Sales").text, draw(shop, "-q --collapse Sales").text);
}

TEST(Tool, ExplainsWhatIsNotShown) {
    const Outcome info = runOn("info", dataPath("made/shop-architecture.dot"),
                               "--collapse Core --hide mail --explain orders --explain Core "
                               "--explain mail --explain 'orders->bank' --explain cdn "
                               "--explain 'cart -> orders'");
    EXPECT_EQ(info.exitCode, 0) << info.err;
    for (const char* line :
         {"\nnode 'orders' is not shown: 'cluster_core' is collapsed; nested graph 'cluster_core' "
          "stands for it\n",
          "\nnested graph 'cluster_core' is shown, but not what is in it\n",
          "\nnode 'mail' is not shown: it is hidden; nothing stands for it\n",
          "\nedge 'orders -> bank' is not shown: 'cluster_core' is collapsed; meta-edge "
          "'cluster_core -> bank' stands for it\n",
          "\nnode 'cdn' is shown\n",
          "\nedge 'cart -> orders' is not shown: 'cluster_core' is collapsed; nested graph "
          "'cluster_core' stands for it\n"}) {
        EXPECT_THAT(info.out, HasSubstr(line));
    }
}

TEST(Tool, OffersTheNearestOfUnknownNames) {
    const std::string shop = dataPath("made/shop-architecture.dot");
    const std::pair<const char*, const char*> rows[] = {
        {"--collapse Catalog",
         "no nested graph 'Catalog'; did you mean 'Catalogue' or 'cluster_catalogue'?"},
        {"--collapse orders", "no nested graph 'orders'"},
        {"--fold cart,ordrs",
         "no node or nested graph 'ordrs'; did you mean 'Orders' or 'orders'?"},
        {"--hide xyzzyxyzzy", "no node or nested graph 'xyzzyxyzzy'\n"},
        {"--only gw2", "did you mean 'gw'"},
        {"--explain 'cart->oders'", "no node, nested graph or edge 'cart->oders'"},
    };
    for (const auto& [options, message] : rows) {
        const Outcome info = runOn("info", shop, options);
        EXPECT_EQ(info.exitCode, 2) << options;
        EXPECT_THAT(info.err,
                    AllOf(StartsWith("qxdraw: " + shop + ": there is "), HasSubstr(message)));
    }
}

TEST(Tool, RefusesEveryBadFileAtItsLineWithoutLeavingAPicture) {
    const TemporaryFolder folder;
    const std::map<std::string, std::string> lines = {
        {"truncated.graphml", ":3: "},    {"entities.graphml", ":2: "},
        {"outside-file.graphml", ":2: "}, {"numbers.gml", ":2: "},
        {"open-quote.dot", ":1: "},       {"empty.dot", ": there is nothing in it"}};
    int files = 0;
    for (const auto& entry : fs::directory_iterator(dataPath("bad"))) {
        const std::string file = entry.path().string();
        const auto line = lines.find(entry.path().filename());
        for (const Outcome& result :
             {runOn("info", file), runOn("draw", file, "-o " + quoted(folder / "a.svg"))}) {
            EXPECT_EQ(result.exitCode, 1) << file;
            EXPECT_THAT(result.out, IsEmpty());
            EXPECT_THAT(result.err,
                        MatchesRegex("qxdraw: .*/bad/[a-z0-9-]+\\.[a-z]+:([0-9]+:)? [^\n]+\n"));
            EXPECT_THAT(result.err, Not(HasSubstr("CANARY")));
            EXPECT_THAT(result.err,
                        HasSubstr(line != lines.end() ? line->first + line->second : ""));
        }
        ++files;
    }
    EXPECT_EQ(files, 10);
    EXPECT_EQ(folder.numberOfFiles(), 0);
}

TEST(Tool, ReportsWhatCannotBeReadOrWritten) {
    const TemporaryFolder folder;
    const std::string good = dataPath("graphviz-epl/fsm.gv");
    EXPECT_EQ(runOn("info", folder / "none.dot").exitCode, 1);
    const Outcome noFolder = runOn("draw", good, "-o " + quoted(folder / "none/a.svg"));
    EXPECT_EQ(noFolder.exitCode, 1);
    EXPECT_THAT(noFolder.err, AllOf(StartsWith("qxdraw: "), HasSubstr("none/a.svg: cannot be")));
    fs::create_symlink(good, folder / "same.svg");
    const Outcome onInput = runOn("draw", good, "-o " + quoted(folder / "same.svg"));
    EXPECT_EQ(onInput.exitCode, 1);
    EXPECT_THAT(onInput.err, HasSubstr("the file that is read"));
    fs::remove(folder / "same.svg");
    EXPECT_THAT(runOn("info", folder / "a\033[31mb").err, HasSubstr("a\\x1b[31mb: cannot be"));
    fs::create_symlink("/dev/full", folder / "full.svg");
    EXPECT_EQ(runOn("draw", good, "-o " + quoted(folder / "full.svg")).exitCode, 1);
    EXPECT_EQ(
        std::system((quoted(QXDRAW_TOOL) + " info " + quoted(good) + " >/dev/full 2>&1").c_str()) >>
            8,
        1)
        << "a full disk under the results";
    EXPECT_EQ(folder.numberOfFiles(), 1);
}

TEST(Tool, EditsAsAScriptSaysOrWritesNothing) {
    const TemporaryFolder folder;
    const std::string picture = "-o " + quoted(folder / "a.svg") + " <" + quoted(folder / "script");
    const std::string file = dataPath("../../samples/bundles.dot");
    const auto edit = [&](const std::string& script) {
        std::ofstream(folder / "script") << script;
        return runOn("edit", file, picture);
    };
    for (const char* bad : {"move nowhere 1 2", "paint server red", "move server 1", "label server",
                            "move server 1 x", "bend server->server#9 1,2", "expand server",
                            "hide \"server", "connector cache inside", "resize cache 0 5"}) {
        const Outcome result = edit("# first\nmove cache 0 0\n" + std::string(bad) + "\n");
        EXPECT_EQ(result.exitCode, 1) << bad;
        EXPECT_THAT(result.err, StartsWith("qxdraw: standard input:3: ")) << bad;
        EXPECT_EQ(folder.numberOfFiles(), 1) << "only the script";
    }
    const Outcome result = edit("move server by 10 0\nlabel cache \"two\\nlines\"\n");
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_THAT(result.out,
                AllOf(HasSubstr("1: move server by 10 0\n    server moved to (343, 80)"),
                      HasSubstr("1 label changed")));
    EXPECT_THAT(contentOf(folder / "a.svg"), HasSubstr(">lines<"));
}

TEST(Tool, AnswersWrongUsageWithTwo) {
    const std::string good = quoted(dataPath("graphviz-epl/fsm.gv"));
    for (const std::string& arguments :
         {std::string(), std::string("paint"), std::string("info"), "draw " + good,
          "draw " + good + " -o picture.gif", "draw " + good + " -o a.svg --layout circle",
          "draw " + good + " -o a.svg --edge-length -5", "find " + good,
          "find " + good + " --at 1,2 --region 1,2,3,4", "find " + good + " --at 1",
          "find " + good + " --at 1,nan", "find " + good + " --at 1e12,0",
          "find " + good + " --region 1,2,3", "find " + good + " --region 5,0,1,1",
          "find " + good + " --region 0,5,1,1", "info --no-such-option " + good,
          "info --collapse depth:x " + good, "info --depth 2 " + good,
          "info --only LR_0 --parents --both " + good}) {
        const Outcome result = run(arguments);
        EXPECT_EQ(result.exitCode, 2) << arguments;
        EXPECT_THAT(result.err, StartsWith("qxdraw: "));
    }
}

TEST(Tool, HelpsWithExamplesThatWork) {
    EXPECT_EQ(run("--help").exitCode, 0);
    for (const char* command : {"info", "draw", "find", "edit"}) {
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
