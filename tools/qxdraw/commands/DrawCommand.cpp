// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "commands/DrawCommand.h"

#include <cmath>
#include <iostream>

#include "commands/Messages.h"
#include "commands/OpenDrawing.h"
#include "commands/Progress.h"
#include "import/SourceText.h"
#include "picture/OutputFile.h"
#include "picture/PictureError.h"
#include "picture/PngWriter.h"
#include "picture/SceneBuilder.h"
#include "picture/SvgWriter.h"

namespace qxdraw {

namespace {

bool endsIn(const std::string& path, std::string_view ending) {
    return toLowerAscii(path).ends_with(ending);
}

/// Says what was read, moved and written.
void tellResult(const DrawOptions& options, std::size_t nodes, std::size_t edges, bool spring,
                const Scene& scene) {
    std::cout << "read " << nodes << " nodes and " << edges << " edges from "
              << printable(options.input) << '\n';
    if (spring) {
        std::cout << "moved " << nodes << " nodes by the spring embedder"
                  << (options.arranging.keepOverlaps ? "" : " and apart where they overlapped")
                  << '\n';
    } else {
        std::cout << "moved no nodes\n";
    }
    std::cout << "wrote " << printable(options.output) << ", ";
    if (const PictureSize size = pngSize(scene.width(), scene.height());
        endsIn(options.output, ".png") && size.scale < 1) {
        std::cout << size.columns << " x " << size.rows << " pixels for ";
    }
    std::cout << std::lround(scene.width()) << " x " << std::lround(scene.height()) << " units: x "
              << std::lround(scene.left) << " to " << std::lround(scene.right) << ", y "
              << std::lround(scene.bottom) << " to " << std::lround(scene.top) << '\n';
}

}  // namespace

#ifndef QXDRAW_WITH_RSVG
std::string writePng(const std::string&, double, double) {
    throw PictureError("this qxdraw was built without librsvg and cannot write PNG; use .svg");
}
#endif

bool isPictureName(const std::string& path) {
    return endsIn(path, ".svg") || endsIn(path, ".png");
}

void requireOtherFile(const std::string& input, const std::string& output) {
    if (isSameFile(input, output)) {
        throw PictureError("is the file that is read: choose another name");
    }
}

void writePicture(const Scene& scene, const std::string& path) {
    const std::string svg = writeSvg(scene);
    writeOutputFile(path,
                    endsIn(path, ".svg") ? svg : writePng(svg, scene.width(), scene.height()));
}

void runDraw(const DrawOptions& options) {
    requireOtherFile(options.input, options.output);
    Progress progress(options.quiet);
    GraphDocument document = openDocument(options.input, options.quiet);
    const std::size_t nodes = document.nodes.size();
    const std::size_t edges = document.edges.size();
    const bool spring = usesSpring(options.arranging, document);
    const auto drawing = arrange(document, options.arranging, progress);
    Scene scene = buildScene(*drawing, document);
    if (options.showBends) {
        addPaths(scene, *drawing);
    }
    progress.report("writing", 1);
    writePicture(scene, options.output);
    if (!options.quiet) {
        tellResult(options, nodes, edges, spring, scene);
    }
}

}  // namespace qxdraw
