// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "commands/EditCommand.h"

#include <fstream>
#include <iostream>
#include <sstream>

#include "commands/DrawCommand.h"
#include "commands/OpenDrawing.h"
#include "commands/Progress.h"
#include "edit/Editor.h"
#include "edit/Script.h"
#include "edit/Story.h"
#include "model/LabelMoving.h"
#include "picture/SceneBuilder.h"

namespace qxdraw {

namespace {

std::vector<ScriptLine> scriptOf(const std::string& name) {
    if (name == "-") {
        return readScript(std::cin);
    }
    std::ifstream file(name);
    std::vector<ScriptLine> lines;
    if (file) {
        lines = readScript(file);
    }
    if (!file.eof()) {
        throw ScriptError("cannot be read");
    }
    return lines;
}

}  // namespace

void runEdit(const EditOptions& options) {
    requireOtherFile(options.input, options.output);
    const std::vector<ScriptLine> script = scriptOf(options.script);
    Progress progress(options.quiet);
    GraphDocument document = openDocument(options.input, options.quiet);
    const auto drawing = arrange(document, options.arranging, progress);
    progress.clear();
    Editor editor(*drawing, document, options.arranging);
    Story story(*drawing, document);
    for (const ScriptLine& line : script) {
        try {
            editor.run(line.words);
        } catch (const ScriptError& error) {
            throw ScriptError(error.what(), line.number);
        }
        const std::string told = story.take();
        if (!options.quiet) {
            std::cout << line.number << ": " << line.text << "\n    " << told << '\n';
        }
    }
    moveLabelsApart(*drawing);
    Scene scene = buildScene(*drawing, document);
    if (options.showBends) {
        addPaths(scene, *drawing);
    }
    writePicture(scene, options.output);
    if (!options.quiet) {
        std::cout << "wrote " << options.output << '\n';
    }
}

std::string scriptCommands() {
    return Editor::help();
}

}  // namespace qxdraw
