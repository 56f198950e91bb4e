// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <CLI/CLI.hpp>
#include <cerrno>
#include <cstring>
#include <exception>
#include <iostream>
#include <tuple>

#include "commands/CheckCommand.h"
#include "commands/ConvertCommand.h"
#include "commands/DrawCommand.h"
#include "commands/EditCommand.h"
#include "commands/FindCommand.h"
#include "commands/InfoCommand.h"
#include "commands/Messages.h"
#include "edit/Script.h"
#include "import/ImportError.h"
#include "model/Names.h"
#include "picture/PictureError.h"

namespace {

constexpr int WorkFailed = 1;
constexpr int WrongUsage = 2;

void addViewOptions(CLI::App& command, qxdraw::ViewOptions& view) {
    // An option may stand several times, each time with one value: FILE is none of them.
    const auto addNames = [&](const char* name, std::vector<std::string>& names, const char* text) {
        return command.add_option(name, names, text)->type_name("NAME")->allow_extra_args(false);
    };
    addNames("--collapse", view.collapse,
             "Show a nested graph as a closed node; all: all of them; depth:N: those that lie in N "
             "others or more")
        ->check([](const std::string& value) { return qxdraw::collapseFault(value); });
    addNames("--fold", view.fold, "Show these nodes as one closed node")
        ->type_name("NAME[,NAME...]");
    addNames("--hide", view.hide, "Leave out a node or nested graph, with its edges");
    CLI::Option* only =
        command
            .add_option("--only", view.only,
                        "Show only this node or nested graph and what lies around it")
            ->type_name("NAME");
    command.add_option("--depth", view.depth, "How many edges around it (default: 1)")
        ->check(CLI::Range(0, 1'000'000))
        ->needs(only);
    using Way = qxdraw::ViewOptions::Way;
    CLI::Option_group* ways = command.add_option_group("Ways around --only");
    for (const auto& [name, way, text] :
         {std::tuple("--parents", Way::Parents, "Follow edges against their direction"),
          std::tuple("--children", Way::Children, "Follow edges along their direction"),
          std::tuple("--both", Way::Both, "Follow edges both ways (default)")}) {
        ways->add_flag_callback(
                name, [&view, way = way] { view.way = way; }, text)
            ->needs(only);
    }
    ways->require_option(0, 1);
}

CLI::App* addInfoCommand(CLI::App& app, qxdraw::InfoOptions& options) {
    CLI::App* command = app.add_subcommand("info", "Tell what a graph file holds");
    command->add_option("FILE", options.input, "DOT, GraphML or GML")->required();
    addViewOptions(*command, options.view);
    command
        ->add_option("--explain", options.explain,
                     "Tell whether a node, nested graph or edge is shown, else why not, and what "
                     "is shown in its place")
        ->type_name("NAME|NAME->NAME")
        ->allow_extra_args(false);
    command->add_flag("--json", options.json, "Write JSON");
    command->add_flag("-q,--quiet", options.quiet, "No warnings and progress");
    command->footer(
        "Examples:\n  qxdraw info samples/order-process.dot\n"
        "  qxdraw info samples/order-process.dot --collapse all --explain pay");
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
    command.add_flag("--orthogonal", options.orthogonal,
                     "Draw edges along the axes; bends of the file go");
    command
        .add_option("--bundles", options.bundles,
                    "How edges between the same two nodes lie: on top of each other, side by side "
                    "(default), or with a bend each")
        ->check(CLI::IsMember({"overlap", "parallel", "bend"}));
}

void addPicture(CLI::App& command, std::string& output) {
    command.add_option("-o,--output", output, "The picture, .svg or .png")
        ->required()
        ->check([](const std::string& path) {
            return qxdraw::isPictureName(path) ? std::string()
                                               : "the picture's name must end in .svg or .png";
        });
}

CLI::App* addDrawCommand(CLI::App& app, qxdraw::DrawOptions& options) {
    CLI::App* command = app.add_subcommand("draw", "Draw a graph file as SVG or PNG");
    command->add_option("FILE", options.input, "DOT, GraphML or GML")->required();
    addPicture(*command, options.output);
    addArrangingOptions(*command, options.arranging);
    addViewOptions(*command, options.arranging.view);
    command->add_flag("--bends", options.showBends,
                      "Show how edges run: bends as dots, hollow where the edge is hidden, and "
                      "hidden parts as dashed lines up to the centers of the nodes");
    command->add_flag("-q,--quiet", options.quiet, "No warnings, notes, progress or summary");
    command->footer(
        "Examples:\n  qxdraw draw samples/graphviz-epl/unix.gv -o unix.svg\n"
        "  qxdraw draw samples/mixed.gml --bends -o mixed.png\n"
        "  qxdraw draw samples/order-process.dot --collapse cluster_shop -o order.svg");
    return command;
}

CLI::App* addEditCommand(CLI::App& app, qxdraw::EditOptions& options) {
    CLI::App* command =
        app.add_subcommand("edit", "Draw a graph file, change the drawing, and write the picture");
    command->add_option("FILE", options.input, "DOT, GraphML or GML")->required();
    addPicture(*command, options.output);
    command
        ->add_option("-s,--script", options.script,
                     "The commands, one a line; - or without this option: the standard input")
        ->default_str("-");
    addArrangingOptions(*command, options.arranging);
    command->add_flag("--bends", options.showBends, "Show how edges run, as draw does");
    command->add_flag("-q,--quiet", options.quiet,
                      "No warnings, nor what the commands have changed");
    command->footer(
        "Commands of a script:\n" + qxdraw::scriptCommands() +
        "Nodes have their names in the file; an EDGE is NODE->NODE (NODE->NODE#2: the second "
        "one). Names\nwith blanks stand in \"quotes\". Lines that start with # are passed over. "
        "The first bad line ends the\nscript, and nothing is written.\n"
        "Examples:\n  qxdraw edit samples/bundles.dot -o bundles.svg --script "
        "samples/bundles.edits\n"
        "  echo 'move server 400 100' | qxdraw edit samples/bundles.dot -o moved.svg");
    return command;
}

CLI::App* addConvertCommand(CLI::App& app, qxdraw::ConvertOptions& options) {
    CLI::App* command = app.add_subcommand(
        "convert", "Write a graph file, or a drawing document, as a drawing document");
    command->add_option("IN", options.input, "DOT, GraphML, GML or QXD")->required();
    command->add_option("OUT", options.output, "The drawing document, .qxd")
        ->required()
        ->check([](const std::string& path) {
            return qxdraw::isDocumentName(path) ? std::string() : "the name must end in .qxd";
        });
    addArrangingOptions(*command, options.arranging);
    command->add_flag("-q,--quiet", options.quiet, "No warnings, progress or summary");
    command->footer("Example:\n  qxdraw convert samples/mixed.gml mixed.qxd");
    return command;
}

CLI::App* addCheckCommand(CLI::App& app, qxdraw::CheckOptions& options) {
    CLI::App* command = app.add_subcommand(
        "check", "List what is wrong with a drawing document; exit code 1 when anything is");
    command->add_option("FILE", options.input, "QXD")->required();
    command->footer(
        "Example:\n  qxdraw convert samples/mixed.gml mixed.qxd && qxdraw check mixed.qxd");
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
    addViewOptions(*command, options.arranging.view);
    command->add_flag("--json", options.json, "Write JSON");
    command->add_flag("-q,--quiet", options.quiet, "No warnings, notes and progress");
    command->footer(
        "Examples:\n  qxdraw find samples/mixed.gml --region -50,-50,150,50\n"
        "  qxdraw find samples/mixed.gml --at 0,0 --json");
    return command;
}

/// Runs the work of a command; what it throws becomes a message and an exit code.
template <class Work>
int finish(const std::string& input, const std::string& output, Work work,
           const std::string& script = {}) {
    try {
        work();
        errno = 0;
        std::cout.flush();
        if (!std::cout) {
            qxdraw::tell("standard output", 0,
                         std::string("cannot be written") +
                             (errno != 0 ? std::string(": ") + std::strerror(errno) : ""));
            return WorkFailed;
        }
        return 0;
    } catch (const qxdraw::ImportError& error) {
        qxdraw::tell(input, error.line(), error.what());
    } catch (const qxdraw::NameError& error) {
        qxdraw::tell(input, 0, error.what());
        return WrongUsage;
    } catch (const qxdraw::ScriptError& error) {
        qxdraw::tell(script, error.line(), error.what());
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
    qxdraw::EditOptions edit;
    edit.script = "-";
    qxdraw::ConvertOptions convert;
    qxdraw::CheckOptions check;
    const CLI::App* infoCommand = addInfoCommand(app, info);
    addDrawCommand(app, draw);
    const CLI::App* findCommand = addFindCommand(app, find);
    const CLI::App* editCommand = addEditCommand(app, edit);
    const CLI::App* convertCommand = addConvertCommand(app, convert);
    const CLI::App* checkCommand = addCheckCommand(app, check);
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
    if (editCommand->parsed()) {
        const std::string script = edit.script == "-" ? "standard input" : edit.script;
        return finish(
            edit.input, edit.output, [&] { qxdraw::runEdit(edit); }, script);
    }
    if (convertCommand->parsed()) {
        return finish(convert.input, convert.output, [&] { qxdraw::runConvert(convert); });
    }
    if (checkCommand->parsed()) {
        bool isFaultless = false;
        const int code =
            finish(check.input, "standard output", [&] { isFaultless = qxdraw::runCheck(check); });
        return code == 0 && !isFaultless ? WorkFailed : code;
    }
    return finish(draw.input, draw.output, [&] { qxdraw::runDraw(draw); });
}
