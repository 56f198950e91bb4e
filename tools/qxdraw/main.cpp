// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>

#include "commands/DrawCommand.h"
#include "commands/FindCommand.h"
#include "commands/InfoCommand.h"
#include "commands/Messages.h"
#include "import/ImportError.h"
#include "picture/PictureError.h"

namespace {

constexpr int WorkFailed = 1;
constexpr int WrongUsage = 2;

CLI::App* addInfoCommand(CLI::App& app, qxdraw::InfoOptions& options) {
    CLI::App* command = app.add_subcommand("info", "Tell what a graph file holds");
    command->add_option("FILE", options.input, "DOT, GraphML or GML")->required();
    command->add_flag("--json", options.json, "Write JSON");
    command->add_flag("-q,--quiet", options.quiet, "No warnings");
    command->footer("Example:\n  qxdraw info samples/order-process.dot");
    return command;
}

void addArrangingOptions(CLI::App& command, qxdraw::ArrangingOptions& options) {
    command
        .add_option("--layout", options.layout,
                    "none: nodes stay where the file has them; spring: a spring embedder "
                    "places them (default: spring when the file has no positions)")
        ->check(CLI::IsMember({"none", "spring"}));
    command
        .add_option("--edge-length", options.edgeLength,
                    "Length in pixels that the spring embedder aims at (default: one that suits "
                    "the nodes)")
        ->check(CLI::Range(1.0, 10000.0));
    command.add_flag("--keep-overlaps", options.keepOverlaps,
                     "Leave nodes that overlap after the spring embedder where they are");
}

CLI::App* addDrawCommand(CLI::App& app, qxdraw::DrawOptions& options) {
    CLI::App* command = app.add_subcommand("draw", "Draw a graph file as SVG or PNG");
    command->add_option("FILE", options.input, "DOT, GraphML or GML")->required();
    command->add_option("-o,--output", options.output, "The picture, .svg or .png")
        ->required()
        ->check([](const std::string& path) {
            return qxdraw::isPictureName(path) ? std::string()
                                               : "the picture's name must end in .svg or .png";
        });
    addArrangingOptions(*command, options.arranging);
    command->add_flag("--bends", options.showBends,
                      "Show how edges run: bends as dots, hollow where the edge is hidden, and "
                      "hidden parts as dashed lines up to the centers of the nodes");
    command->add_flag("-q,--quiet", options.quiet, "No warnings, notes, progress or summary");
    command->footer(
        "Examples:\n  qxdraw draw samples/graphviz-epl/unix.gv -o unix.svg\n"
        "  qxdraw draw samples/mixed.gml --bends -o mixed.png");
    return command;
}

CLI::App* addFindCommand(CLI::App& app, qxdraw::FindOptions& options) {
    CLI::App* command = app.add_subcommand(
        "find", "Tell what lies in a region or at a point of a drawing, the frontmost first");
    command->add_option("FILE", options.input, "DOT, GraphML or GML")->required();
    CLI::Option_group* where = command->add_option_group(
        "Where",
        "Coordinates are those of the drawing, as `draw` with the same layout options tells them "
        "of "
        "its page and `info` of a file with positions: pixels, y upward.");
    where
        ->add_option(
            "--region", options.region,
            "What has a point in common with this rectangle; nodes count by their bounding "
            "rectangles")
        ->type_name("LEFT,BOTTOM,RIGHT,TOP")
        ->check([](const std::string& text) { return qxdraw::regionFault(text); });
    where
        ->add_option("--at", options.at,
                     "What holds this point; edges count when they pass within 3 pixels")
        ->type_name("X,Y")
        ->check([](const std::string& text) { return qxdraw::pointFault(text); });
    where->require_option(1);
    addArrangingOptions(*command, options.arranging);
    command->add_flag("--json", options.json, "Write JSON");
    command->add_flag("-q,--quiet", options.quiet, "No warnings, notes and progress");
    command->footer(
        "Examples:\n  qxdraw find samples/mixed.gml --region -50,-50,150,50\n"
        "  qxdraw find samples/mixed.gml --at 0,0 --json");
    return command;
}

/// Runs the work of a command; what it throws becomes a message and an exit code.
template <class Work>
int finish(const std::string& input, const std::string& output, Work work) {
    try {
        work();
        std::cout.flush();
        if (!std::cout) {
            throw qxdraw::PictureError("cannot be written");
        }
        return 0;
    } catch (const qxdraw::ImportError& error) {
        qxdraw::tell(input, error.line(), error.what());
    } catch (const qxdraw::PictureError& error) {
        qxdraw::tell(output, 0, error.what());
    } catch (const std::bad_alloc&) {
        qxdraw::tell(input, 0, "not enough memory");
    }
    return WorkFailed;
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App app("Draws graphs and tells what is in graph files and drawings.", "qxdraw");
    app.require_subcommand(1);
    app.failure_message([](const CLI::App*, const CLI::Error& error) {
        return std::string("qxdraw: ") + error.what() + "\nRun with --help for more information.\n";
    });
    app.footer("Example:\n  qxdraw draw samples/graphviz-epl/unix.gv -o unix.svg");
    qxdraw::InfoOptions info;
    qxdraw::DrawOptions draw;
    qxdraw::FindOptions find;
    const CLI::App* infoCommand = addInfoCommand(app, info);
    addDrawCommand(app, draw);
    const CLI::App* findCommand = addFindCommand(app, find);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : WrongUsage;
    }
    if (infoCommand->parsed()) {
        return finish(info.input, "standard output", [&] { qxdraw::runInfo(info); });
    }
    if (findCommand->parsed()) {
        return finish(find.input, "standard output", [&] { qxdraw::runFind(find); });
    }
    return finish(draw.input, draw.output, [&] { qxdraw::runDraw(draw); });
}
